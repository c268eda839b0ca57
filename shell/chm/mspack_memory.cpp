#include "shell/chm/mspack_memory.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>

namespace tavo::chm {

namespace {

struct MemoryFile : mspack_file {
    MemorySystem* system = nullptr;
    bool writes = false;
    std::size_t position = 0;
};

// Stands before each block that the library allocates.
union BlockHeader {
    std::size_t size;
    std::max_align_t alignment;
};

// The library passes its own copy of the system when it asks for memory, so that the account is kept here.
thread_local std::size_t in_use = 0;

MemoryFile& memory_file(mspack_file* file) {
    return *static_cast<MemoryFile*>(file);
}

std::size_t size_of(const MemoryFile& file) {
    return file.writes ? file.system->target.size() : file.system->source.size();
}

mspack_file* open_file(mspack_system* self, const char*, int mode) {
    auto* file = new (std::nothrow) MemoryFile;
    if (file != nullptr) {
        file->system = static_cast<MemorySystem*>(self);
        file->writes = mode != MSPACK_SYS_OPEN_READ;
    }
    return file;
}

void close_file(mspack_file* file) {
    delete &memory_file(file);
}

int read_file(mspack_file* file, void* buffer, int bytes) {
    MemoryFile& f = memory_file(file);
    if (bytes < 0 || f.writes)
        return -1;
    const std::string_view source = f.system->source;
    const std::size_t count = std::min(static_cast<std::size_t>(bytes), source.size() - f.position);
    if (count > 0)
        std::memcpy(buffer, source.data() + f.position, count);
    f.position += count;
    return static_cast<int>(count);
}

int write_file(mspack_file* file, void* buffer, int bytes) {
    const MemoryFile& f = memory_file(file);
    MemorySystem& system = *f.system;
    if (bytes < 0 || !f.writes || static_cast<std::size_t>(bytes) > system.target_size - system.target.size())
        return -1;
    try {
        system.target.append(static_cast<const char*>(buffer), static_cast<std::size_t>(bytes));
    } catch (const std::exception&) {  // out of memory
        return -1;
    }
    return bytes;
}

int seek_file(mspack_file* file, off_t offset, int mode) {
    MemoryFile& f = memory_file(file);
    const auto size = static_cast<off_t>(size_of(f));
    const off_t base = mode == MSPACK_SYS_SEEK_START ? 0
                       : mode == MSPACK_SYS_SEEK_CUR ? static_cast<off_t>(f.position)
                                                     : size;
    if (offset < -base || offset > size - base)
        return -1;
    f.position = static_cast<std::size_t>(base + offset);
    return 0;
}

off_t tell_file(mspack_file* file) {
    return static_cast<off_t>(memory_file(file).position);
}

void no_message(mspack_file*, const char*, ...) {}

void* allocate(mspack_system*, std::size_t bytes) {
    if (bytes > MemorySystem::ALLOWANCE - in_use)
        return nullptr;
    auto* header = static_cast<BlockHeader*>(std::malloc(sizeof(BlockHeader) + bytes));
    if (header == nullptr)
        return nullptr;
    in_use += bytes;
    header->size = bytes;
    return header + 1;
}

void release(void* pointer) {
    if (pointer == nullptr)
        return;
    BlockHeader* header = static_cast<BlockHeader*>(pointer) - 1;
    in_use -= header->size;
    std::free(header);
}

void copy_bytes(void* from, void* to, std::size_t bytes) {
    std::memcpy(to, from, bytes);
}

}  // namespace

MemorySystem::MemorySystem(std::string_view bytes)
    : mspack_system{open_file,  close_file, read_file, write_file, seek_file, tell_file,
                    no_message, allocate,   release,   copy_bytes, nullptr},
      source(bytes) {}

}  // namespace tavo::chm

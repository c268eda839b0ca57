#include "core/file_system.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <fstream>
#include <system_error>
#include <utility>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace tavo {

namespace fs = std::filesystem;

namespace {

// The handful of calls that differ between systems: descriptors with the same meaning on both.
namespace native {
#ifdef _WIN32
constexpr int CREATE_EXCLUSIVE = _O_WRONLY | _O_BINARY | _O_CREAT | _O_EXCL;
constexpr int TRUNCATE = _O_WRONLY | _O_BINARY | _O_TRUNC;
constexpr int WRITE = _O_WRONLY | _O_BINARY;

int open(const fs::path& path, int how) {
    return _wopen(path.c_str(), how, _S_IREAD | _S_IWRITE);
}
int close(int file) {
    return _close(file);
}
int sync(int file) {
    return _commit(file);
}
std::int64_t write(int file, std::uint64_t offset, std::string_view bytes) {
    if (_lseeki64(file, static_cast<std::int64_t>(offset), SEEK_SET) < 0)
        return -1;
    return _write(file, bytes.data(), static_cast<unsigned>(std::min<std::size_t>(bytes.size(), 1u << 30)));
}
void sync_folder(const fs::path&) {}  // the system writes folder entries through
std::pair<std::int64_t, std::uintmax_t> time_and_identity(const fs::path& path) {
    const auto time = fs::last_write_time(path).time_since_epoch();
    return {std::chrono::duration_cast<std::chrono::nanoseconds>(time).count(), 0};
}
std::int64_t now() {
    const auto time = fs::file_time_type::clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
}
#else
constexpr int CREATE_EXCLUSIVE = O_WRONLY | O_CLOEXEC | O_CREAT | O_EXCL;
constexpr int TRUNCATE = O_WRONLY | O_CLOEXEC | O_TRUNC;
constexpr int WRITE = O_WRONLY | O_CLOEXEC;

int open(const fs::path& path, int how) {
    return ::open(path.c_str(), how, 0666);
}
int close(int file) {
    return ::close(file);
}
int sync(int file) {
    return ::fsync(file);
}
std::int64_t write(int file, std::uint64_t offset, std::string_view bytes) {
    return ::pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
}
// Makes a new entry of the folder last. Some file systems cannot; there is nothing better to do on them.
void sync_folder(const fs::path& folder) {
    const int file = ::open(folder.c_str(), O_RDONLY | O_CLOEXEC | O_DIRECTORY);
    if (file < 0)
        return;
    ::fsync(file);
    ::close(file);
}
std::int64_t nanoseconds(const timespec& t) {
    return std::int64_t{t.tv_sec} * 1'000'000'000 + t.tv_nsec;
}
std::pair<std::int64_t, std::uintmax_t> time_and_identity(const fs::path& path) {
    struct stat entry {};
    if (::stat(path.c_str(), &entry) != 0)
        throw fs::filesystem_error("stat", path, std::error_code(errno, std::generic_category()));
    return {nanoseconds(entry.st_mtim), entry.st_ino};
}
std::int64_t now() {
    const auto time = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
}
#endif
}  // namespace native

fs::path folder_of(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

[[noreturn]] void refuse(const char* what, const fs::path& path) {
    throw fs::filesystem_error(what, path, std::error_code(errno, std::generic_category()));
}

class RealOutputFile final : public OutputFile {
public:
    RealOutputFile(fs::path path, int how) : path_(std::move(path)), file_(native::open(path_, how)) {
        if (file_ < 0)
            refuse("open", path_);
    }
    RealOutputFile(const RealOutputFile&) = delete;
    RealOutputFile& operator=(const RealOutputFile&) = delete;
    ~RealOutputFile() override {
        if (file_ >= 0)
            native::close(file_);
    }

    void write_at(std::uint64_t offset, std::string_view bytes) override {
        while (!bytes.empty()) {
            const std::int64_t written = native::write(file_, offset, bytes);
            if (written < 0 && errno == EINTR)
                continue;
            if (written <= 0)
                refuse("write", path_);
            offset += static_cast<std::uint64_t>(written);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
    }
    void sync() override {
        if (native::sync(file_) != 0)
            refuse("sync", path_);
    }
    void close() override {
        if (native::close(std::exchange(file_, -1)) != 0)
            refuse("close", path_);
    }

private:
    fs::path path_;
    int file_;
};

class RealFileSystem final : public FileSystem {
public:
    bool exists(const fs::path& path) override { return fs::exists(path); }

    std::string read(const fs::path& path) override {
        std::string bytes(fs::file_size(path), '\0');
        std::ifstream file(path, std::ios::binary);
        if (!file)
            refuse("open", path);
        file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        if (file.bad())
            refuse("read", path);
        bytes.resize(static_cast<std::size_t>(file.gcount()));
        return bytes;
    }

    std::unique_ptr<OutputFile> create_exclusive(const fs::path& path) override {
        auto file = std::make_unique<RealOutputFile>(path, native::CREATE_EXCLUSIVE);
        native::sync_folder(folder_of(path));
        return file;
    }
    std::unique_ptr<OutputFile> truncate(const fs::path& path) override {
        return std::make_unique<RealOutputFile>(path, native::TRUNCATE);
    }
    void check_writable(const fs::path& path) override { RealOutputFile(path, native::WRITE).close(); }

    std::uintmax_t available(const fs::path& path) override {
        return fs::space(fs::exists(path) ? path : folder_of(path)).available;
    }
    void remove(const fs::path& path) override { fs::remove(path); }
};

// Times of files advance in ticks of up to 10 ms (2 s on some removable disks, where sizes have to tell).
constexpr std::int64_t TICK = 20'000'000;  // ns

}  // namespace

FileSystem& real_file_system() {
    static RealFileSystem files;
    return files;
}

std::optional<FileStamp> file_stamp(const fs::path& path) {
    try {
        const auto [time, identity] = native::time_and_identity(path);
        return FileStamp{time, fs::file_size(path), identity, native::now() - time > TICK};
    } catch (const fs::filesystem_error& e) {
        if (e.code() == std::errc::no_such_file_or_directory || e.code() == std::errc::not_a_directory)
            return std::nullopt;
        throw;
    }
}

}  // namespace tavo

#include "shell/chm/archive.h"

#include <mspack.h>

#include <algorithm>
#include <memory>

#include "shell/chm/mspack_memory.h"
#include "shell/chm/names.h"

namespace tavo::chm {

namespace {

constexpr std::size_t FRAME = 32768;  // the compressed section starts afresh at a multiple of this

// Some compilers write the first of the two identifiers in the header twice; the second differs in this byte alone.
constexpr std::size_t SECOND_IDENTIFIER = 0x28;
constexpr char WRITTEN_TWICE = 0x10, SECOND = 0x11;

std::string with_second_identifier(std::string bytes) {
    if (bytes.size() > SECOND_IDENTIFIER && bytes[SECOND_IDENTIFIER] == WRITTEN_TWICE)
        bytes[SECOND_IDENTIFIER] = SECOND;
    return bytes;
}

// Whether [offset, offset + length) lies in [0, size); nothing overflows.
bool inside(off_t offset, off_t length, std::size_t size) {
    const auto end = static_cast<off_t>(size);
    return offset >= 0 && length >= 0 && offset <= end && length <= end - offset;
}

}  // namespace

/// The library at work on one file.
class Archive::Reader {
public:
    explicit Reader(std::string_view file) : system_(file) {
        int fit = MSPACK_ERR_OK;
        MSPACK_SYS_SELFTEST(fit);
        if (fit != MSPACK_ERR_OK)
            throw DamagedHelp("the library that reads compiled help does not fit this program");
        library_.reset(mspack_create_chm_decompressor(&system_));
        if (!library_)
            throw DamagedHelp("too little memory to read compiled help");
        header_ = library_->open(library_.get(), "");
        if (header_ == nullptr)
            throw DamagedHelp(refusal(library_->last_error(library_.get())));
    }
    ~Reader() { library_->close(library_.get(), header_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    const mschmd_header& header() const { return *header_; }

    /// The compressed section from one place to another, or as much of it as can be unpacked.
    std::string unpack(std::size_t begin, std::size_t end) {
        mschmd_sec_mscompressed& section = header_->sec1;
        if (section.content == nullptr || section.control == nullptr || section.rtable == nullptr ||
            section.spaninfo == nullptr)
            return {};  // the library would look for them by a way that does not bear damaged files
        system_.target.clear();
        system_.target_size = end - begin;
        char name[] = "";
        mschmd_file stretch{nullptr, &section.base, static_cast<off_t>(begin), static_cast<off_t>(end - begin), name};
        library_->extract(library_.get(), &stretch, "");  // an error shows as too few bytes
        return std::move(system_.target);
    }

private:
    struct Destroy {
        void operator()(mschm_decompressor* library) const { mspack_destroy_chm_decompressor(library); }
    };

    static const char* refusal(int error) {
        switch (error) {
            case MSPACK_ERR_SIGNATURE:
                return "this is no compiled help file";
            case MSPACK_ERR_NOMEMORY:
                return "the list of entries in the help file is too large";
            default:
                return "the list of entries in the help file is damaged";
        }
    }

    MemorySystem system_;
    std::unique_ptr<mschm_decompressor, Destroy> library_;
    mschmd_header* header_ = nullptr;
};

Archive::Archive(std::string bytes, const Limits& limits) : file_(with_second_identifier(std::move(bytes))) {
    if (file_.size() > limits.file)
        throw DamagedHelp("the help file is too large");
    Reader reader(file_);
    list_entries(reader.header(), limits);
    unpack(reader, limits);
}

std::string_view Archive::bytes(const Entry& entry) const {
    if (!entry.sound || (entry.packed && !was_unpacked(entry)))
        throw DamagedHelp("the entry " + entry.name + " of the help file is damaged");
    if (entry.length == 0)
        return {};
    return std::string_view(entry.packed ? unpacked_ : file_).substr(entry.offset, entry.length);
}

Entry Archive::entry_of(const mschmd_file& file, std::size_t plain_start, const Limits& limits) const {
    Entry entry;
    entry.name = text_of(file.filename);
    entry.packed = file.section->id != 0;
    const std::size_t space = entry.packed ? limits.total : file_.size() - plain_start;
    entry.sound = inside(file.offset, file.length, space) && inside(0, file.length, limits.entry);
    if (entry.sound) {
        entry.offset = static_cast<std::size_t>(file.offset) + (entry.packed ? 0 : plain_start);
        entry.length = static_cast<std::size_t>(file.length);
    }
    return entry;
}

void Archive::list_entries(const mschmd_header& header, const Limits& limits) {
    if (!inside(header.sec0.offset, 0, file_.size()))
        throw DamagedHelp("the list of entries in the help file is damaged");
    std::size_t total = 0;
    for (const mschmd_file* file = header.files; file != nullptr; file = file->next) {
        if (entries_.size() == limits.entries)
            throw DamagedHelp("the help file has too many entries");
        entries_.push_back(entry_of(*file, static_cast<std::size_t>(header.sec0.offset), limits));
        total += entries_.back().length;
        if (total > limits.total)
            throw DamagedHelp("the entries of the help file are too large");
    }
}

void Archive::unpack(Reader& reader, const Limits& limits) {
    const std::size_t size = packed_size();
    std::size_t skipped = 0;  // bytes that going on may have cost at most, since the library starts further back
    for (std::size_t begin = 0; begin < size && skipped <= limits.total;) {
        const std::string stretch = reader.unpack(begin, size);
        const std::size_t end = begin + stretch.size();
        if (!stretch.empty()) {
            unpacked_.resize(begin);
            unpacked_ += stretch;
            stretches_.push_back({begin, end});
        }
        begin = end == size ? size : (end / FRAME + 1) * FRAME;
        skipped += begin;
    }
}

std::size_t Archive::packed_size() const {
    std::size_t size = 0;
    for (const Entry& entry : entries_) {
        if (entry.packed && entry.sound)
            size = std::max(size, entry.offset + entry.length);
    }
    return size;
}

bool Archive::was_unpacked(const Entry& entry) const {
    const auto after = std::upper_bound(stretches_.begin(), stretches_.end(), entry.offset,
                                        [](std::size_t offset, const Stretch& s) { return offset < s.begin; });
    return entry.length == 0 || (after != stretches_.begin() && entry.offset + entry.length <= std::prev(after)->end);
}

}  // namespace tavo::chm

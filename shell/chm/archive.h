#pragma once
// The entries of a compiled help file and their bytes.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "shell/chm/chm_file.h"

struct mschmd_file;
struct mschmd_header;

namespace tavo::chm {

struct Entry {
    std::string name;     // as the file spells it, UTF-8
    bool packed = false;  // in the compressed section
    bool sound = false;   // keeps to its section and to the limits; otherwise offset and length mean nothing
    std::size_t offset = 0;
    std::size_t length = 0;
};

/// Everything is unpacked at once, from the beginning to the end: that bounds the work however the entries of a damaged
/// file overlap. A damaged stretch costs the entries that touch it; unpacking goes on behind it.
class Archive {
public:
    /// Throws DamagedHelp where the bytes are no compiled help file or beyond the limits.
    Archive(std::string bytes, const Limits& limits);

    const std::vector<Entry>& entries() const { return entries_; }
    /// Throws DamagedHelp where the entry cannot be unpacked.
    std::string_view bytes(const Entry& entry) const;

private:
    struct Stretch {
        std::size_t begin, end;
    };
    class Reader;

    Entry entry_of(const mschmd_file& file, std::size_t plain_start, const Limits& limits) const;
    void list_entries(const mschmd_header& header, const Limits& limits);
    void unpack(Reader& reader, const Limits& limits);
    std::size_t packed_size() const;
    bool was_unpacked(const Entry& entry) const;

    std::string file_;
    std::string unpacked_;            // the compressed section; zeros where it is damaged
    std::vector<Stretch> stretches_;  // of it that are good: ascending, apart
    std::vector<Entry> entries_;
};

}  // namespace tavo::chm

#pragma once
// A compiled help file, read from memory whatever bytes it holds. Texts are UTF-8, names of entries begin with "/" and
// compare case-insensitively. Standard library and libmspack only.

#include <cstddef>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/errors.h"

namespace tavo::chm {

/// The file, or an entry of it, is damaged, or beyond the limits.
class DamagedHelp : public Error {
public:
    using Error::Error;
};

struct Limits {
    std::size_t file = std::size_t{64} << 20U;
    std::size_t entry = std::size_t{16} << 20U;   // bytes of one entry
    std::size_t total = std::size_t{256} << 20U;  // bytes of all entries together
    std::size_t entries = 10000;
    std::size_t topics = 10000;  // of contents and index each
    std::size_t depth = 32;      // of nested topics
};

/// A line of the contents: pages may be empty (a heading alone).
struct Topic {
    std::string title;
    std::string page;  // name of an entry, perhaps with "#anchor"; "" where none
    std::vector<Topic> topics;
};

/// A keyword of the index with the pages that it leads to.
struct Keyword {
    std::string word;
    std::vector<Topic> pages;
};

class ChmFile {
public:
    /// From the bytes of a file. Throws DamagedHelp.
    explicit ChmFile(std::string bytes, const Limits& limits = {});
    /// Throws FileNotFound, or DamagedHelp also where the file cannot be read.
    static ChmFile open(const std::filesystem::path& path, const Limits& limits = {});
    ChmFile(ChmFile&&) noexcept;
    ChmFile& operator=(ChmFile&&) noexcept;
    ~ChmFile();

    const std::string& title() const;         // "" where the file names none
    const std::string& default_page() const;  // an entry of the file; "" for a file without pages
    const std::vector<Topic>& contents() const;
    const std::vector<Keyword>& index() const;
    /// Names of all pages (entries ending in .html or .htm), in contents order first, each once.
    const std::vector<std::string>& pages() const;
    /// Names of all entries: pages, pictures, the file's own records.
    const std::vector<std::string>& entries() const;
    /// The entry's own spelling of a name, relative or absolute, with "." and ".." resolved; empty where it has none.
    std::optional<std::string> find(std::string_view name) const;
    /// Bytes of an entry; empty optional where there is none. Throws DamagedHelp where it cannot be unpacked.
    std::optional<std::string> read(std::string_view name) const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/// UTF-8 text of a page's bytes, decoded as its <meta charset> or byte-order mark says, else as Windows-1252.
std::string decode_page(std::string_view bytes);
/// <title> of a page (UTF-8 HTML); "" where it has none.
std::string page_title(std::string_view html);
/// What a reader sees of a page (UTF-8 HTML): tags gone, character references resolved, blanks joined.
std::string plain_text(std::string_view html);

}  // namespace tavo::chm

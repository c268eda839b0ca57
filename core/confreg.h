#pragma once
// Settings files: "[section]" headers and key=value lines, read and rewritten line by line.
// Names compare case-insensitively; a missing section or key reads as the empty text. In memory text is UTF-8; the
// file is Windows-1252, or UTF-8 when it begins with a byte-order mark.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/file_system.h"

namespace tavo::confreg {

/// Where rewriting happens: the temporary file fich.tmp lies in the program's folder, whatever file is rewritten.
struct Site {
    std::filesystem::path program_folder;
    FileSystem* files = &real_file_system();

    std::filesystem::path temporary() const { return program_folder / "fich.tmp"; }
};

/// The parsed text of one settings file. The seven operations below, and edits of many keys at once, act on it; nothing
/// is written until `rewrite`. After any sequence of edits, bytes() is what the same sequence of single file operations
/// would leave, but for files beyond 32767 lines, where those throw Overflow and a Text goes on. An edit that throws
/// changes nothing.
///
/// A line ends at a line feed, at a run of carriage returns before a line feed, or at a lone carriage return. The
/// operations that copy the file line by line end every line with CR LF; those that append leave the bytes before as
/// they are, a last line without an end getting one first. Lookups cost the same in a file of ten thousand sections as
/// in a small one.
///
/// InvalidArgument: a line without "=" in a section that is searched; a line break inside a text to be written.
/// Overflow: a header shorter than two characters where its name is looked at; a text of 4 GiB.
/// RewriteRefused: a text to be written holds a character outside the file's encoding.
class Text {
public:
    /// From the bytes of a file.
    explicit Text(std::string_view bytes);
    Text(Text&&) noexcept;
    Text& operator=(Text&&) noexcept;
    ~Text();

    /// Value of a key in the first section of that name, trimmed of blanks; "" when either is missing.
    std::string leerclave(std::string_view section, std::string_view key) const;
    /// Line number (from 1) of the section's header; 0 when missing.
    int lineaseccion(std::string_view section) const;
    std::vector<std::string> listasecciones() const;
    /// Every line without its end, headers included: for whoever must not lose what belongs to no key.
    std::vector<std::string> lines() const;
    /// The section's key lines in file order, keys as they stand, values trimmed. Lines without "=" throw
    /// InvalidArgument.
    std::vector<std::pair<std::string, std::string>> claves(std::string_view section) const;

    /// Sets a key, creating section and key as needed. Blank lines between the header and the key go. A new key stands
    /// before the next header, followed by a blank line; at the end of the file when the section is the last one, or
    /// when the next header is the file's last line (which puts the key into that section).
    void escribirclave(std::string_view section, std::string_view key, std::string_view value);
    /// Appends the section, after a line that holds a single carriage return, when it is missing.
    void asegurarseccion(std::string_view section);
    /// False, and nothing changed, when the section is missing.
    bool borrarseccion(std::string_view section);
    /// Replaces every line equal to the old one, case ignored. Number (from 1) of the last line replaced, or 0.
    int reemplazarlinea(std::string_view old_line, std::string_view new_line);

    /// Whether the file begins with the UTF-8 mark and so can hold any character.
    bool is_utf8() const;
    /// Turns the text into UTF-8 with the mark.
    void use_utf8();

    /// The complete file.
    std::string bytes() const;

private:
    class Impl;
    std::unique_ptr<Impl> impl_;
};

/// Reads a settings file; FileNotFound when it is missing.
Text read(const std::filesystem::path& path, FileSystem& files = real_file_system());
/// Replaces the whole file crash-safely through the temporary file. Throws RewriteRefused, the file unchanged.
void rewrite(const std::filesystem::path& path, const Text& text, const Site& site);
void rewrite(const std::filesystem::path& path, std::string_view bytes, const Site& site);
/// Reads, edits in memory, writes by one rewrite. False, and none, when nothing changed.
bool edit(const std::filesystem::path& path, const Site& site, const std::function<void(Text&)>& edits);

// The seven operations on a file. Each reads the whole file anew. FileNotFound, and the errors of Text under the file's
// name; Overflow also for a line number or count above 32767, nothing being written then.
std::string leerclave(const std::filesystem::path& path, std::string_view section, std::string_view key);
void escribirclave(const std::filesystem::path& path, std::string_view section, std::string_view key,
                   std::string_view value, const Site& site);
void asegurarseccion(const std::filesystem::path& path, std::string_view section, const Site& site);
std::int16_t lineaseccion(const std::filesystem::path& path, std::string_view section);
std::int16_t listasecciones(const std::filesystem::path& path, std::vector<std::string>& sections);
bool borrarseccion(const std::filesystem::path& path, std::string_view section, const Site& site);
std::int16_t reemplazarlinea(const std::filesystem::path& path, std::string_view old_line, std::string_view new_line,
                             const Site& site);

/// What start-up found: nothing, a left-over that was removed, or a settings file that was completed from it.
enum class Recovery { Nothing, Removed, Completed };
/// To be called once at start-up, before the first reading, with the settings files of the program.
Recovery recover(const std::vector<std::filesystem::path>& settings_files, const Site& site);

/// A settings file that is read again only when it has changed on the disk (time, size or identity).
class Watched {
public:
    explicit Watched(std::filesystem::path path);
    /// Current text. FileNotFound. The reference holds until the next call.
    const Text& text();
    const std::filesystem::path& path() const { return path_; }
    /// Reads anew at the next call, whatever the file's time says.
    void invalidate();

private:
    std::filesystem::path path_;
    std::unique_ptr<Text> text_;
    std::optional<FileStamp> stamp_;  // of the file as it was read
};

}  // namespace tavo::confreg

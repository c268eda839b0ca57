#include "core/confreg.h"

#include <algorithm>
#include <limits>
#include <system_error>

#include "core/encoding.h"
#include "core/errors.h"

namespace tavo::confreg {

namespace fs = std::filesystem;

namespace {

std::string shown(const fs::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

std::string reason(const fs::filesystem_error& e) {
    return e.code().message();
}

bool is_missing(const fs::filesystem_error& e) {
    return e.code() == std::errc::no_such_file_or_directory || e.code() == std::errc::not_a_directory;
}

std::string read_bytes(const fs::path& path, FileSystem& files) {
    try {
        return files.read(path);
    } catch (const fs::filesystem_error& e) {
        if (is_missing(e))
            throw FileNotFound("file " + shown(path) + " was not found");
        throw Error("file " + shown(path) + " cannot be read: " + reason(e));
    }
}

/// Runs an operation on the text of a file; its errors name the file.
template <class Operation>
auto naming(const fs::path& path, const Operation& operation) {
    try {
        return operation();
    } catch (const InvalidArgument& e) {
        throw InvalidArgument(shown(path) + ": " + e.what());
    } catch (const Overflow& e) {
        throw Overflow(shown(path) + ": " + e.what());
    } catch (const RewriteRefused& e) {
        throw RewriteRefused(shown(path) + ": " + e.what());
    }
}

std::int16_t as_16_bits(std::size_t number, std::string_view what) {
    if (number > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
        throw Overflow(std::string(what) + " " + std::to_string(number) + " is above 32767");
    return static_cast<std::int16_t>(number);
}

std::int16_t line_number(int number) {
    return as_16_bits(static_cast<std::size_t>(number), "line number");
}

/// The steps of one rewrite. Before and after each of them, `recover` finds the old or the new text:
/// fich.tmp begins with NUL until all of it is on the disk, then it holds the new text until the settings file does.
/// The settings file is empty or a part of the new text while it is written; it begins with NUL while the old text is
/// put back into it.
class Rewrite {
public:
    Rewrite(const fs::path& path, std::string_view text, const Site& site)
        : path_(path), text_(text), files_(*site.files), temporary_(site.temporary()) {}

    void run() {
        old_ = read_bytes(path_, files_);
        if (text_.starts_with('\0'))
            refuse("a settings file cannot begin with the character NUL");
        check_disk();
        write_temporary();
        write_settings();
        try {
            files_.remove(temporary_);
        } catch (const fs::filesystem_error& e) {
            throw Error(shown(path_) + " holds the new text, but " + shown(temporary_) +
                        " cannot be removed: " + reason(e) + "; the next start removes it");
        }
    }

private:
    [[noreturn]] void refuse(const std::string& why) const {
        throw RewriteRefused(shown(path_) + " was not changed: " + why);
    }

    void check_disk() const {
        try {
            files_.check_writable(path_);
            const std::uintmax_t growth = text_.size() > old_.size() ? text_.size() - old_.size() : 0;
            if (files_.available(path_) < growth || files_.available(temporary_) < text_.size() + growth)
                refuse("there is no space left on the disk");
        } catch (const fs::filesystem_error& e) {
            refuse("the file cannot be written: " + reason(e));
        }
    }

    void write_temporary() {
        std::unique_ptr<OutputFile> file;
        try {
            file = files_.create_exclusive(temporary_);
        } catch (const fs::filesystem_error& e) {
            if (e.code() == std::errc::file_exists)
                refuse("another rewrite is under way, " + shown(temporary_) + " exists");
            refuse(shown(temporary_) + " cannot be created: " + reason(e));
        }
        try {
            write_first_byte_last(*file, text_);
            file->close();
        } catch (const fs::filesystem_error& e) {
            file.reset();
            drop_temporary();
            refuse(shown(temporary_) + " cannot be written: " + reason(e));
        }
    }

    static void write_first_byte_last(OutputFile& file, std::string_view text) {
        if (text.empty())
            return;
        file.write_at(0, std::string(1, '\0').append(text.substr(1)));
        file.sync();
        file.write_at(0, text.substr(0, 1));
        file.sync();
    }

    void write_settings() {
        try {
            const auto file = files_.truncate(path_);
            file->write_at(0, text_);
            file->sync();
            file->close();
        } catch (const fs::filesystem_error& e) {
            if (!put_back()) {
                throw RewriteRefused(shown(path_) + " cannot be written: " + reason(e) +
                                     "; the next start completes it from " + shown(temporary_));
            }
            drop_temporary();
            refuse("it cannot be written: " + reason(e));
        }
    }

    bool put_back() const {
        try {
            if (files_.read(path_) == old_)
                return true;
            const auto file = files_.truncate(path_);
            write_first_byte_last(*file, old_);
            file->close();
            return true;
        } catch (const fs::filesystem_error&) {
            return false;
        }
    }

    // What stays is removed by the next start.
    void drop_temporary() const {
        try {
            files_.remove(temporary_);
        } catch (const fs::filesystem_error&) {
        }
    }

    const fs::path& path_;
    std::string_view text_;
    FileSystem& files_;
    fs::path temporary_;
    std::string old_;
};

/// Whether a settings file holds a part of the text that it was going to hold. A power cut leaves NULs where data did
/// not reach the disk; at the beginning they are also the mark of an old text that was being put back.
bool cut_short(std::string_view settings, std::string_view complete) {
    if (settings.starts_with('\0'))
        return true;
    return settings.size() <= complete.size() && settings != complete &&
           std::equal(settings.begin(), settings.end(), complete.begin(),
                      [](char found, char wanted) { return found == wanted || found == '\0'; });
}

/// First line that is not blank, in lower case: what kind of settings a text holds. Empty where nothing tells it.
std::string kind(std::string_view text) {
    if (text.starts_with(UTF8_MARK))
        text.remove_prefix(UTF8_MARK.size());
    if (text.starts_with('\0'))
        return {};
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    return lower(text.substr(0, text.find_first_of("\r\n")));
}

/// The settings file that a left-over belongs to and that it has to complete. A file that shows nothing of its text
/// could be the beginning of any: it is left alone when another one is of the left-over's kind.
const fs::path* file_to_complete(const std::vector<fs::path>& settings_files, std::string_view complete,
                                 FileSystem& files) {
    const fs::path* found = nullptr;
    std::size_t longest = 0;
    bool found_shows_kind = false;
    bool kind_is_taken = false;
    for (const fs::path& path : settings_files) {
        if (!files.exists(path))
            continue;
        const std::string settings = files.read(path);
        if (settings == complete)
            return nullptr;
        const std::string own_kind = kind(settings);
        const bool shows_kind = !own_kind.empty();
        kind_is_taken = kind_is_taken || (shows_kind && own_kind == kind(complete));
        if (cut_short(settings, complete) && (!found || settings.size() > longest)) {
            found = &path;
            longest = settings.size();
            found_shows_kind = shows_kind;
        }
    }
    return found_shows_kind || !kind_is_taken ? found : nullptr;
}

}  // namespace

Text read(const fs::path& path, FileSystem& files) {
    return Text(read_bytes(path, files));
}

void rewrite(const fs::path& path, const Text& text, const Site& site) {
    rewrite(path, text.bytes(), site);
}

void rewrite(const fs::path& path, std::string_view bytes, const Site& site) {
    Rewrite(path, bytes, site).run();
}

bool edit(const fs::path& path, const Site& site, const std::function<void(Text&)>& edits) {
    const std::string old = read_bytes(path, *site.files);
    Text text(old);
    naming(path, [&] { edits(text); });
    const std::string bytes = text.bytes();
    if (bytes == old)
        return false;
    rewrite(path, bytes, site);
    return true;
}

std::string leerclave(const fs::path& path, std::string_view section, std::string_view key) {
    return naming(path, [&] { return read(path).leerclave(section, key); });
}

void escribirclave(const fs::path& path, std::string_view section, std::string_view key, std::string_view value,
                   const Site& site) {
    edit(path, site, [&](Text& text) { text.escribirclave(section, key, value); });
}

void asegurarseccion(const fs::path& path, std::string_view section, const Site& site) {
    edit(path, site, [&](Text& text) { text.asegurarseccion(section); });
}

std::int16_t lineaseccion(const fs::path& path, std::string_view section) {
    return naming(path, [&] { return line_number(read(path).lineaseccion(section)); });
}

std::int16_t listasecciones(const fs::path& path, std::vector<std::string>& sections) {
    return naming(path, [&] {
        std::vector<std::string> found = read(path).listasecciones();
        const std::int16_t count = as_16_bits(found.size(), "number of sections");
        if (count > 0)
            sections = std::move(found);
        return count;
    });
}

bool borrarseccion(const fs::path& path, std::string_view section, const Site& site) {
    bool removed = false;
    edit(path, site, [&](Text& text) { removed = text.borrarseccion(section); });
    return removed;
}

std::int16_t reemplazarlinea(const fs::path& path, std::string_view old_line, std::string_view new_line,
                             const Site& site) {
    std::int16_t last = 0;
    edit(path, site, [&](Text& text) { last = line_number(text.reemplazarlinea(old_line, new_line)); });
    return last;
}

Recovery recover(const std::vector<fs::path>& settings_files, const Site& site) {
    FileSystem& files = *site.files;
    const fs::path temporary = site.temporary();
    try {
        if (!files.exists(temporary))
            return Recovery::Nothing;
        const std::string complete = files.read(temporary);
        const bool usable = !complete.starts_with('\0');
        const fs::path* const path = usable ? file_to_complete(settings_files, complete, files) : nullptr;
        if (path) {
            const auto file = files.truncate(*path);
            file->write_at(0, complete);
            file->sync();
            file->close();
        }
        files.remove(temporary);
        return path ? Recovery::Completed : Recovery::Removed;
    } catch (const fs::filesystem_error& e) {
        throw Error("the left-over " + shown(temporary) + " of an interrupted rewrite cannot be used: " + reason(e));
    }
}

Watched::Watched(fs::path path) : path_(std::move(path)) {}

const Text& Watched::text() {
    std::optional<FileStamp> stamp;
    try {
        stamp = file_stamp(path_);
    } catch (const fs::filesystem_error& e) {
        throw Error("file " + shown(path_) + " cannot be read: " + reason(e));
    }
    if (!text_ || !stamp || !stamp_ || !stamp_->settled || !(*stamp_ == *stamp)) {
        text_ = std::make_unique<Text>(read(path_));
        stamp_ = stamp;  // taken before reading: a change in between shows at the next call
    }
    return *text_;
}

void Watched::invalidate() {
    stamp_.reset();
}

}  // namespace tavo::confreg

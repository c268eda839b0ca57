#include "core/program_folder.h"

#include <cstdlib>
#include <string>
#include <system_error>
#include <vector>

#include "core/errors.h"

namespace tavo {

namespace {

namespace fs = std::filesystem;

constexpr const char* FOLDER_NAME = "tavo-gas";
constexpr const char* DATABASE = "data";
constexpr const char* LANGUAGES = "idioma.lng";
constexpr const char* HELP = ".chm";

bool holds(const fs::path& folder, const char* file) {
    std::error_code ignored;
    return !folder.empty() && fs::is_regular_file(folder / file, ignored);
}

std::optional<fs::path> environment(const char* name) {
    const char* value = std::getenv(name);  // NOLINT(concurrency-mt-unsafe): one thread
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return fs::path(value);
}

fs::path executable_folder(const char* argv0) {
    std::error_code error;
    fs::path program = fs::read_symlink("/proc/self/exe", error);
    if (error)
        program = fs::canonical(argv0, error);
    return error ? fs::path() : program.parent_path();
}

fs::path user_data_folder() {
#ifdef _WIN32
    const auto folder = environment("APPDATA");
    return folder ? *folder / FOLDER_NAME : fs::path();
#else
    if (const auto folder = environment("XDG_DATA_HOME"); folder && folder->is_absolute())
        return *folder / FOLDER_NAME;
    const auto home = environment("HOME");
    return home ? *home / ".local" / "share" / FOLDER_NAME : fs::path();
#endif
}

fs::path shipped_folder(const fs::path& executable) {
    fs::path installed = executable.parent_path() / "share" / FOLDER_NAME;
    if (holds(installed, DATABASE))
        return installed;
    for (fs::path above = executable; above != above.parent_path(); above = above.parent_path())
        if (fs::path folder = above / "data"; holds(folder, DATABASE) && holds(folder, LANGUAGES))
            return folder;
    return {};
}

/// What was asked for, or is a folder that carries its own files.
std::optional<fs::path> chosen(const Places& places) {
    if (places.home)
        return places.home;
    if (places.environment)
        return places.environment;
    if (holds(places.executable, LANGUAGES))
        return places.executable;
    return std::nullopt;
}

std::vector<fs::path> shipped_files(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const fs::path name = entry.path().filename();
        if (entry.is_regular_file() && (name == DATABASE || name == LANGUAGES || name.extension() == HELP))
            files.push_back(name);
    }
    return files;
}

/// Through a file of another name: a start that is cut short leaves no half copy under the real one.
void copy_writable(const fs::path& from, const fs::path& to) {
    fs::path half = to;
    half += ".new";
    fs::copy_file(from, half, fs::copy_options::overwrite_existing);
    fs::permissions(half, fs::perms::owner_read | fs::perms::owner_write, fs::perm_options::add);
    fs::rename(half, to);
}

/// The user writes no help: a newer one, or another, takes the place of the copy. Where it cannot, the old one serves.
void refresh_help(const fs::path& shipped, const fs::path& copy) {
    try {
        if (fs::file_size(shipped) != fs::file_size(copy) || fs::last_write_time(shipped) > fs::last_write_time(copy))
            copy_writable(shipped, copy);
    } catch (const fs::filesystem_error&) {  // NOLINT(bugprone-empty-catch): see above
    }
}

void fill(const fs::path& folder, const fs::path& shipped) {
    try {
        fs::create_directories(folder);
        if (shipped.empty())
            return;
        for (const fs::path& file : shipped_files(shipped))
            if (!fs::exists(folder / file))
                copy_writable(shipped / file, folder / file);
            else if (file.extension() == HELP)
                refresh_help(shipped / file, folder / file);
    } catch (const fs::filesystem_error& error) {
        throw RewriteRefused("the program's files cannot be put into " + folder.string() + ": " +
                             error.code().message());
    }
}

}  // namespace

Places places(const char* argv0, std::optional<fs::path> home) {
    const fs::path executable = executable_folder(argv0);
    return {std::move(home), environment("TAVO_GAS_HOME"), executable, user_data_folder(), shipped_folder(executable)};
}

fs::path program_folder(const Places& places) {
    if (const auto folder = chosen(places))
        return *folder;
    if (places.user_data.empty())
        return places.shipped;
    fill(places.user_data, places.shipped);
    return places.user_data;
}

fs::path reading_folder(const Places& places) {
    if (const auto folder = chosen(places))
        return *folder;
    return holds(places.user_data, DATABASE) ? places.user_data : places.shipped;
}

}  // namespace tavo

#pragma once
// Where the program's files lie: the gas database, the language table, the help files.

#include <filesystem>
#include <optional>

namespace tavo {

/// The folders that are looked at, in this order. An empty path stands for a folder that this system does not have.
struct Places {
    std::optional<std::filesystem::path> home;         // --home DIR
    std::optional<std::filesystem::path> environment;  // TAVO_GAS_HOME
    std::filesystem::path executable;                  // folder of the running program
    std::filesystem::path user_data;                   // the user's own copies: ~/.local/share/tavo-gas
    std::filesystem::path shipped;  // the read-only copies: PREFIX/share/tavo-gas, or the build folder's data
};

/// The places of this process. `argv0` finds the executable where the system cannot tell; `home` is the argument of
/// --home. shipped is the folder share/tavo-gas beside the executable's folder, else the folder "data" of the nearest
/// folder above it that has one with both files (the build folder, where the help files are made).
Places places(const char* argv0, std::optional<std::filesystem::path> home = std::nullopt);

/// Folder that everything is read from and written to: --home, else TAVO_GAS_HOME, else the executable's folder if it
/// holds idioma.lng, else the user's data folder. Into that one it first copies what it lacks of the shipped database,
/// language table and help files. Database and language table that are there stay; so does a help file, but for a
/// shipped one that is newer or of another size. Throws RewriteRefused where the folder or a missing copy cannot be
/// made.
std::filesystem::path program_folder(const Places& places);

/// The same for a program that only reads the database and leaves no trace: the user's data folder only if it holds a
/// database, else the shipped copies.
std::filesystem::path reading_folder(const Places& places);

}  // namespace tavo

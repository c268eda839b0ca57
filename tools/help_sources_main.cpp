// help_sources: makes projects of the help compiler from data/help, and completes what the compiler wrote.

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "core/errors.h"
#include "core/file_system.h"
#include "tools/help_sources.h"

namespace {

using namespace tavo;
namespace fs = std::filesystem;

constexpr const char* USAGE =
    "help_sources write HELP LANGUAGE PICTURES IDIOMA_LNG PROJECT   checks the help of a language, writes the "
    "project;\n"
    "                                                               PICTURES is \"\" for a help without pictures\n"
    "help_sources finish REPORT COMPILED FILE                       checks what the compiler said, completes its "
    "file\n";

int write(const std::vector<std::string>& words) {
    help::Problems problems;
    const help::Help help = help::read_help({words[0], words[1], words[2], words[3]}, problems);
    for (const help::Problem& problem : problems)
        std::cerr << (fs::path(words[0]) / problem.text()).string() << '\n';
    if (!problems.empty())
        return 1;
    help::write_project(help, words[4]);
    return 0;
}

int finish(const std::vector<std::string>& words) {
    const std::vector<std::string> complaints = help::complaints(real_file_system().read(words[0]));
    for (const std::string& line : complaints)
        std::cerr << "the help compiler says: " << line << '\n';
    if (!complaints.empty())
        return 1;
    if (!fs::exists(words[1]))
        throw FileNotFound("the help compiler wrote no " + words[1]);
    const std::string bytes = help::finished(real_file_system().read(words[1]));
    std::ofstream file(fs::path(words[2]), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        throw Error(words[2] + " cannot be written");
    return 0;
}

int run(std::vector<std::string> words) {
    const std::string command = words.empty() ? "" : words.front();
    if (!words.empty())
        words.erase(words.begin());
    if (command == "write" && words.size() == 5)
        return write(words);
    if (command == "finish" && words.size() == 3)
        return finish(words);
    std::cerr << USAGE;
    return 2;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run({argv + 1, argv + argc});
    } catch (const std::exception& error) {
        std::cerr << "help_sources: " << error.what() << '\n';
        return 1;
    }
}

// tavo-calc: the console program over core.

#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "core/encoding.h"
#include "core/program_folder.h"
#include "tavo_version.h"
#include "tools/calc_commands.h"

namespace {

using namespace tavo;

constexpr std::string_view HOME = "--home";
constexpr std::string_view HOME_IS = "--home=";

/// Takes "--home DIR" or "--home=DIR" off the front. False without a folder.
bool take_home(std::vector<std::string>& words, std::optional<std::filesystem::path>& home) {
    if (words.empty() || (words.front() != HOME && !words.front().starts_with(HOME_IS)))
        return true;
    std::size_t taken = 1;
    if (words.front() != HOME)
        home = words.front().substr(HOME_IS.size());
    else if (words.size() > 1)
        home = words[taken++];
    words.erase(words.begin(), words.begin() + static_cast<std::ptrdiff_t>(taken));
    return home && !home->empty();
}

/// Prints an answer at once: who drives the program through a pipe waits for it.
int print(const calc::Answer& answer) {
    std::cout << answer.text << std::endl;
    return answer.failed ? 1 : 0;
}

int batch(calc::Calculator& calculator) {
    int status = 0;
    bool first = true;
    for (std::string line; std::cout && std::getline(std::cin, line); first = false) {
        if (first && line.starts_with(UTF8_MARK))
            line.erase(0, UTF8_MARK.size());
        status |= print(calculator.answer(line));
    }
    return status;
}

/// The words that stand alone.
bool takes_no_arguments(std::string_view word) {
    return word == "--help" || word == "--version" || word == "batch";
}

int run(const char* program, std::vector<std::string> words) {
    std::optional<std::filesystem::path> home;
    if (!take_home(words, home))
        return print(calc::failure("--home needs a folder"));
    if (words.empty())
        return print(calc::failure("no command; tavo-calc --help lists them"));
    const std::string& first = words.front();
    if (takes_no_arguments(first) && words.size() > 1)
        return print(calc::failure(first + " takes no arguments"));
    if (first == "--help")
        return print({calc::help().erase(calc::help().size() - 1)});
    if (first == "--version")
        return print({"tavo-calc " TAVO_VERSION});
    if (first.starts_with("--"))
        return print(calc::failure("unknown option " + first + "; tavo-calc --help lists them"));
    calc::Calculator calculator(reading_folder(places(program, home)));
    return first == "batch" ? batch(calculator) : print(calculator.answer(words, '\n'));
}

}  // namespace

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    try {
        const int status = run(argv[0], {argv + 1, argv + argc});
        return std::cout ? status : 1;
    } catch (const std::exception& error) {
        std::cerr << "tavo-calc: " << error.what() << '\n';
        return 1;
    }
}

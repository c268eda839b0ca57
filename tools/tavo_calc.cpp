// tavo-calc: the console program over core.

#include <iostream>
#include <optional>
#include <string>
#include <vector>

#include "core/program_folder.h"
#include "tavo_version.h"
#include "tools/calc_commands.h"

namespace {

using namespace tavo;

/// Takes "--home DIR" or "--home=DIR" off the front. False without a folder.
bool take_home(std::vector<std::string>& words, std::optional<std::filesystem::path>& home) {
    constexpr std::string_view OPTION = "--home";
    if (words.empty() || !words.front().starts_with(OPTION))
        return true;
    std::size_t taken = 1;
    if (words.front().starts_with("--home="))
        home = words.front().substr(OPTION.size() + 1);
    else if (words.front() == OPTION && words.size() > 1)
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
    for (std::string line; std::cout && std::getline(std::cin, line);)
        status |= print(calculator.answer(line));
    return status;
}

int run(const char* program, std::vector<std::string> words) {
    std::optional<std::filesystem::path> home;
    if (!take_home(words, home))
        return print({"error: --home needs a folder", true});
    if (words == std::vector<std::string>{"--help"})
        return print({calc::help().erase(calc::help().size() - 1)});
    if (words == std::vector<std::string>{"--version"})
        return print({"tavo-calc " TAVO_VERSION});
    calc::Calculator calculator(reading_folder(places(program, home)));
    if (words == std::vector<std::string>{"batch"})
        return batch(calculator);
    if (words.empty())
        return print({"error: no command; tavo-calc --help lists them", true});
    return print(calculator.answer(words, '\n'));
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

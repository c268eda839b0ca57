#pragma once
// The commands of tavo-calc: from words to a line of numbers.

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/confreg.h"

namespace tavo::calc {

/// What a command prints, without the last line end; "error: SENTENCE" where it failed.
struct Answer {
    std::string text;
    bool failed = false;
};

/// "error: " and the sentence in one line: control characters become blanks.
Answer failure(std::string_view sentence);

/// Words of a command line: blanks and tabs separate them, double quotes hold a word together. Empty when a quote is
/// left open.
std::optional<std::vector<std::string>> split(std::string_view line);

/// Answers commands from one database, which is read when a command first needs it.
class Calculator {
public:
    explicit Calculator(std::filesystem::path folder) : folder_(std::move(folder)) {}

    /// One command. `between_rows` separates the rows of a table: a line end, or a tab where the answer has to be one
    /// line.
    Answer answer(std::span<const std::string> words, char between_rows);
    /// One line of a batch; a line without words is an error, since each line has its answer.
    Answer answer(std::string_view line);

    const confreg::Text& data();

private:
    std::filesystem::path folder_;
    std::optional<confreg::Text> data_;
};

/// The text of --help.
std::string help();

}  // namespace tavo::calc

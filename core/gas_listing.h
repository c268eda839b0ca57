#pragma once
// The gases of a database that somebody may have edited by hand: what can be listed, and what is wrong with the rest.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/confreg.h"

namespace tavo::Global {

enum class Flaw {
    Count,        // "n" is missing, no number, below 0 or above 32767; `number` sections are counted instead
    NotCounted,   // a section stands right beyond the count
    NoSection,    // a gap in the numbering, or "n" announces more gases than there are
    Unreachable,  // a header of one character stands before the section, or that of the count
    BadLine,      // that section holds a line without "="
    Missing,      // a key
    NotANumber,   // the text of a key, wholly or in part
    NotPositive,  // molar mass, critical temperature or critical pressure
};

/// The first thing that is wrong with one entry.
struct GasProblem {
    Flaw flaw;
    std::int16_t gas;    // 0: the count
    std::string key;     // where one is concerned
    std::string value;   // its text
    std::int16_t count;  // of gases
};

struct GasList {
    std::vector<std::string> names;    // of gases 1 to the count; "" where none can be read
    std::vector<GasProblem> problems;  // the count's first, then by gas
};

/// Throws for no content of the database. The count is "n"; where that is no count, the number of the last section
/// "G1", "G2" ... up to "G32767".
GasList list_gases(const confreg::Text& data);

/// What is wrong with one gas of the list; a gas without a problem loads for every model that takes its exponent.
std::optional<GasProblem> problem_of(const confreg::Text& data, std::int16_t gas);

/// The section cannot be read at all, so that the loader and the editor refuse it.
bool is_unreadable(const GasProblem& problem);

}  // namespace tavo::Global

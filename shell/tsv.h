#pragma once
// Blocks of cells as text, as spreadsheets put them on the clipboard.

#include <string>
#include <string_view>
#include <vector>

namespace tsv {

using Block = std::vector<std::vector<std::string>>;

/// A line per row, tabs between cells. A cell that holds a tab or a line break, or begins with a quotation mark, stands
/// in quotation marks, its own doubled.
std::string escribir(const Block& block);

/// Any line ends; the last one may be missing. A quotation mark that no other one closes before a tab, a line end or
/// the end is meant as it is.
Block leer(std::string_view text);

}  // namespace tsv

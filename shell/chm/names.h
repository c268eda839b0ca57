#pragma once
// Names of entries, and the texts of a compiled help file that do not say in which encoding they are.

#include <string>
#include <string_view>

namespace tavo::chm {

/// UTF-8 where the bytes are UTF-8, else read as Windows-1252.
std::string text_of(std::string_view bytes);
/// "/folder/page.html" of a name relative to the root or absolute, with "/" or "\", ".", ".." and "file.chm::".
std::string absolute_name(std::string_view name);
/// "%41" as "A".
std::string without_percent_signs(std::string_view name);

}  // namespace tavo::chm

#pragma once
// Languages: the sections of the language file, and the texts by number.

#include <string>
#include <string_view>
#include <vector>

#include "core/confreg.h"

namespace tavo::idiomas {

/// All languages, in file order; the section "idioma", which only names the active one, is left out.
std::vector<std::string> languages(const confreg::Text& table);
/// Name of the active language: key "idioma" of section "idioma".
std::string active(const confreg::Text& table);
/// Text number k of a language; "" when it is missing.
std::string text(const confreg::Text& table, std::string_view language, int k);
/// Same language, case ignored.
bool same_language(std::string_view a, std::string_view b);

}  // namespace tavo::idiomas

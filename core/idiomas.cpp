#include "core/idiomas.h"

#include <algorithm>

#include "core/encoding.h"

namespace tavo::idiomas {

namespace {
constexpr std::string_view SELECTION = "idioma";
}

std::vector<std::string> languages(const confreg::Text& table) {
    std::vector<std::string> names = table.listasecciones();
    std::erase_if(names, [](const std::string& name) { return same_language(name, SELECTION); });
    return names;
}

std::string active(const confreg::Text& table) {
    return table.leerclave(SELECTION, SELECTION);
}

std::string text(const confreg::Text& table, std::string_view language, int k) {
    return table.leerclave(language, std::to_string(k));
}

bool same_language(std::string_view a, std::string_view b) {
    return lower(a) == lower(b);
}

}  // namespace tavo::idiomas

#include "shell/chm/names.h"

#include <algorithm>
#include <charconv>
#include <vector>

#include "core/encoding.h"

namespace tavo::chm {

std::string text_of(std::string_view bytes) {
    std::string text = valid_utf8(bytes);
    return text == bytes ? text : utf8_from_windows1252(bytes);
}

std::string absolute_name(std::string_view name) {
    const std::size_t file_end = name.find("::");
    if (file_end != std::string_view::npos)
        name.remove_prefix(file_end + 2);
    std::vector<std::string_view> folders;
    while (!name.empty()) {
        const std::size_t end = std::min(name.find_first_of("/\\"), name.size());
        const std::string_view part = name.substr(0, end);
        if (part == ".." && !folders.empty())
            folders.pop_back();
        else if (!part.empty() && part != "." && part != "..")
            folders.push_back(part);
        name.remove_prefix(std::min(end + 1, name.size()));
    }
    std::string result;
    for (const std::string_view folder : folders)
        result.append("/").append(folder);
    return result;
}

std::string without_percent_signs(std::string_view name) {
    std::string result;
    for (std::size_t i = 0; i < name.size(); ++i) {
        unsigned char value = 0;
        const char* digits = name.data() + i + 1;
        if (name[i] == '%' && name.size() - i > 2 && std::from_chars(digits, digits + 2, value, 16).ptr == digits + 2) {
            result.push_back(static_cast<char>(value));
            i += 2;
        } else {
            result.push_back(name[i]);
        }
    }
    return result;
}

}  // namespace tavo::chm

#include "shell/tsv.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tsv {

namespace {

constexpr std::string_view SPECIAL = "\t\r\n";

std::string quoted(std::string_view cell) {
    if (cell.find_first_of(SPECIAL) == std::string_view::npos && !cell.starts_with('"'))
        return std::string(cell);
    std::string result = "\"";
    for (const char c : cell) {
        if (c == '"')
            result += c;
        result += c;
    }
    return result += '"';
}

struct Quoted {
    std::string cell;
    std::size_t length;  // with the marks
};

/// A cell in quotation marks at the beginning of a text; empty where it is none.
std::optional<Quoted> unquoted(std::string_view text) {
    if (!text.starts_with('"'))
        return std::nullopt;
    std::string cell;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != '"') {
            cell += text[i];
        } else if (text.substr(i + 1).starts_with('"')) {
            cell += text[i++];
        } else if (i + 1 == text.size() || SPECIAL.find(text[i + 1]) != std::string_view::npos) {
            return Quoted{std::move(cell), i + 1};
        } else {
            return std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace

std::string escribir(const Block& block) {
    std::string text;
    for (const std::vector<std::string>& row : block) {
        for (std::size_t i = 0; i < row.size(); ++i)
            text.append(i == 0 ? "" : "\t").append(quoted(row[i]));
        text += '\n';
    }
    return text;
}

Block leer(std::string_view text) {
    Block block;
    bool new_row = true;
    while (!text.empty()) {
        if (new_row)
            block.emplace_back();
        std::optional<Quoted> mark = unquoted(text);
        const std::size_t length = mark ? mark->length : std::min(text.find_first_of(SPECIAL), text.size());
        block.back().push_back(mark ? std::move(mark->cell) : std::string(text.substr(0, length)));
        text.remove_prefix(length);
        new_row = !text.starts_with('\t');
        if (text == "\t")
            block.back().emplace_back();  // the empty cell behind the last tab
        text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
    }
    return block;
}

}  // namespace tsv

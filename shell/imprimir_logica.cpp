#include "shell/imprimir_logica.h"

#include <algorithm>
#include <charconv>
#include <iterator>

#include "core/encoding.h"
#include "core/numtext.h"

namespace imprimir {

namespace {

using std::size_t;

struct Range {
    char32_t first, last;
};

/// Characters that stand on the one before them: combining marks, joiners, variation selectors, skin tones.
constexpr Range MARKS[] = {{0x00AD, 0x00AD}, {0x0300, 0x036F},   {0x0483, 0x0489},  {0x0591, 0x05BD}, {0x0610, 0x061A},
                           {0x064B, 0x065F}, {0x0670, 0x0670},   {0x06D6, 0x06DC},  {0x0E31, 0x0E31}, {0x0E34, 0x0E3A},
                           {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF},   {0x1DC0, 0x1DFF},  {0x200B, 0x200F}, {0x2060, 0x2064},
                           {0x20D0, 0x20FF}, {0x302A, 0x302D},   {0x3099, 0x309A},  {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F},
                           {0xFEFF, 0xFEFF}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF}};
/// Characters of two columns.
constexpr Range WIDE[] = {{0x1100, 0x115F},   {0x2E80, 0x303E},  {0x3041, 0x4DBF},   {0x4E00, 0xA4CF},
                          {0xA960, 0xA97C},   {0xAC00, 0xD7A3},  {0xF900, 0xFAFF},   {0xFE30, 0xFE6F},
                          {0xFF01, 0xFF60},   {0xFFE0, 0xFFE6},  {0x1F300, 0x1F64F}, {0x1F680, 0x1F6FF},
                          {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD}};
constexpr char32_t JOINER = 0x200D;

template <size_t N>
bool among(char32_t c, const Range (&ranges)[N]) {
    const auto* const found = std::ranges::lower_bound(ranges, c, {}, &Range::last);
    return found != std::end(ranges) && c >= found->first;
}

/// The character at a place; a byte that begins none stands for itself.
tavo::Utf8Character character_at(std::string_view text, size_t at) {
    const tavo::Utf8Character c = tavo::first_character(text.substr(at));
    return c.length > 0 ? c : tavo::Utf8Character{static_cast<unsigned char>(text[at]), 1};
}

/// Where the character at a place ends, with all that stands on it.
size_t end_of_character(std::string_view text, size_t at) {
    tavo::Utf8Character c = character_at(text, at);
    at += c.length;
    while (at < text.size()) {
        const bool joined = c.code == JOINER;
        c = character_at(text, at);
        if (!joined && !among(c.code, MARKS))
            break;
        at += c.length;
    }
    return at;
}

/// Tabs and other control characters as blanks, none at the end.
std::string with_blanks(std::string_view line) {
    std::string result;
    int column = 0;
    for (size_t at = 0; at < line.size();) {
        const size_t end = end_of_character(line, at);
        const std::string_view c = line.substr(at, end - at);
        const auto code = static_cast<unsigned char>(c.front());
        const int width = code == '\t' ? TAB_COLUMNS - column % TAB_COLUMNS : columnas(c);
        if (code < 0x20 || code == 0x7F)
            result.append(static_cast<size_t>(std::max(width, 1)), ' ');
        else
            result.append(c);
        column += width;
        at = end;
    }
    result.erase(result.find_last_not_of(' ') + 1);
    return result;
}

/// Longest beginning of a text that fits, at a boundary between characters. The number of characters measured
/// is proportional to its length, not to that of the text.
size_t fitting(std::string_view text, const std::function<bool(std::string_view)>& fits) {
    std::vector<size_t> ends{0};  // of the characters, as far as they have been looked at
    const auto extend = [&](size_t count) {
        while (ends.size() <= count && ends.back() < text.size())
            ends.push_back(end_of_character(text, ends.back()));
        return std::min(count, ends.size() - 1);
    };
    size_t good = 0, step = 32;
    size_t bad = extend(step);
    while (bad > good && fits(text.substr(0, ends[bad]))) {
        good = bad;
        step *= 2;
        bad = extend(good + step);
    }
    while (bad > good + 1) {
        const size_t middle = good + (bad - good) / 2;
        (fits(text.substr(0, ends[middle])) ? good : bad) = middle;
    }
    return ends[good];
}

/// End of the last word that ends in a blank within the first `length` bytes; 0 when there is none.
size_t last_word(std::string_view text, size_t length) {
    const size_t blank = text.substr(0, length).find_last_of(' ');
    return blank == std::string_view::npos ? 0 : text.substr(0, blank).find_last_not_of(' ') + 1;
}

size_t leading_blanks(std::string_view text) {
    return std::min(text.find_first_not_of(' '), text.size());
}

std::vector<std::string> lines_of(std::string_view text) {
    std::vector<std::string> result;
    for (size_t at = 0;;) {
        const size_t end = text.find_first_of("\r\n", at);
        result.emplace_back(text.substr(at, end - at));
        if (end == std::string_view::npos)
            return result;
        at = end + (text.substr(end, 2) == "\r\n" ? 2 : 1);
    }
}

bool is_number(std::string_view cell) {
    if (cell.empty() || cell == "-----")
        return true;
    double number = 0.0;
    const auto [end, error] = std::from_chars(cell.data(), cell.data() + cell.size(), number);
    return error == std::errc() && end == cell.data() + cell.size();
}

struct Column {
    int width = 0;
    bool numbers = true;
};

std::vector<Column> columns_of(std::span<const std::vector<std::string>> rows) {
    std::vector<Column> result;
    for (const auto& row : rows) {
        result.resize(std::max(result.size(), row.size()));
        for (size_t i = 0; i < row.size(); ++i) {
            result[i].width = std::max(result[i].width, columnas(row[i]));
            result[i].numbers = result[i].numbers && (&row == &rows.front() || is_number(row[i]));
        }
    }
    return result;
}

constexpr std::string_view BETWEEN = "  ";

std::string line_of(const std::vector<std::string>& row, const std::vector<Column>& columns) {
    std::string line;
    for (size_t i = 0; i < row.size(); ++i) {
        const std::string padding(static_cast<size_t>(columns[i].width - columnas(row[i])), ' ');
        line += columns[i].numbers ? padding + row[i] : row[i] + padding;
        line += BETWEEN;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    return line;
}

std::string rule(const std::vector<Column>& columns) {
    std::string line;
    for (const Column& column : columns)
        line.append(line.empty() ? "" : BETWEEN).append(static_cast<size_t>(column.width), '-');
    return line;
}

}  // namespace

int columnas(std::string_view texto) {
    int columns = 0;
    for (size_t at = 0; at < texto.size();) {
        const tavo::Utf8Character c = character_at(texto, at);
        columns += among(c.code, MARKS) ? 0 : among(c.code, WIDE) ? 2 : 1;
        at += c.length;
    }
    return columns;
}

std::vector<std::string> cortar(std::string_view linea, double ancho, const Medida& medida) {
    const std::string text = with_blanks(linea);
    const auto fits = [&](std::string_view piece) { return medida(piece) <= ancho; };
    const auto fits_marked = [&](std::string_view piece) { return fits(std::string(piece).append(SIGUE)); };
    std::vector<std::string> pieces;
    std::string_view rest = text;
    size_t whole = 0;
    while ((whole = fitting(rest, fits)) < rest.size()) {
        size_t length = fitting(rest, fits_marked);
        if (leading_blanks(rest) > 0 && leading_blanks(rest) >= length) {
            rest.remove_prefix(leading_blanks(rest));  // an indent that leaves no room
            continue;
        }
        std::string_view mark = SIGUE;
        std::string word_end;
        if (const size_t word = last_word(rest, length); word > 0) {
            length = word;
            word_end = " ";
        } else if (length == 0) {
            const size_t unmarked = last_word(rest, whole);
            length = unmarked > 0 ? unmarked : std::max(whole, end_of_character(rest, 0));
            mark = {};
        }
        pieces.push_back(std::string(rest.substr(0, length)).append(word_end).append(mark));
        rest.remove_prefix(length);
        rest.remove_prefix(leading_blanks(rest));
    }
    if (!rest.empty() || pieces.empty())
        pieces.emplace_back(rest);
    return pieces;
}

std::vector<std::string> cortar(std::span<const std::string> lineas, double ancho, const Medida& medida) {
    std::vector<std::string> result;
    for (const std::string& text : lineas)
        for (const std::string& line : lines_of(text))
            std::ranges::move(cortar(line, ancho, medida), std::back_inserter(result));
    return result;
}

std::size_t paginas(std::size_t lineas, std::size_t por_pagina) {
    por_pagina = std::max<size_t>(por_pagina, 1);
    return std::max<size_t>(1, (lineas + por_pagina - 1) / por_pagina);
}

std::span<const std::string> pagina(std::span<const std::string> lineas, std::size_t por_pagina, std::size_t numero) {
    por_pagina = std::max<size_t>(por_pagina, 1);
    const size_t first = std::min(numero * por_pagina, lineas.size());
    return lineas.subspan(first, std::min(por_pagina, lineas.size() - first));
}

std::string pie(std::string_view rotulo, std::size_t numero) {
    return std::string(rotulo).append(" ").append(tavo::Format(static_cast<double>(numero), "###"));
}

std::vector<std::string> alinear(std::span<const std::vector<std::string>> filas) {
    std::vector<std::vector<std::string>> rows(filas.begin(), filas.end());
    for (auto& row : rows)
        std::ranges::transform(row, row.begin(), with_blanks);
    const std::vector<Column> columns = columns_of(rows);
    std::vector<std::string> lines;
    for (const auto& row : rows) {
        lines.push_back(line_of(row, columns));
        if (lines.size() == 1)
            lines.push_back(rule(columns));
    }
    return lines;
}

}  // namespace imprimir

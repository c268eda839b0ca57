#include "controls/reglas_textextend.h"

#include <algorithm>

namespace reglas {

namespace {

constexpr std::int16_t BACKSPACE = 8, ENTER = 13;

bool is_digit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool is_sign(char16_t c) {
    return c == u'-' || c == u'+';
}

bool is_letter(std::int16_t key) {
    return (key >= 'a' && key <= 'z') || (key >= 'A' && key <= 'Z');
}

std::u16string_view without_blanks(std::u16string_view text) {
    constexpr std::u16string_view BLANKS = u" \t\r\n";
    const std::size_t first = text.find_first_not_of(BLANKS);
    return first == text.npos ? text.substr(0, 0) : text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

/// Takes the digits that `text` begins with off it; how many they were.
std::size_t take_digits(std::u16string_view& text) {
    const auto end = std::find_if_not(text.begin(), text.end(), is_digit);
    const auto count = static_cast<std::size_t>(end - text.begin());
    text.remove_prefix(count);
    return count;
}

/// Takes a character off the front of `text` if it is one of that kind.
template <class Kind>
bool take_one(std::u16string_view& text, Kind kind) {
    if (text.empty() || !kind(text.front()))
        return false;
    text.remove_prefix(1);
    return true;
}

bool is_exponent_letter(char16_t c) {
    return c == u'e' || c == u'E';
}

/// The part of `after` that is not also the beginning or the end of `before`.
std::u16string_view brought_in(std::u16string_view before, std::u16string_view after) {
    const std::size_t common = std::min(before.size(), after.size());
    std::size_t front = 0;
    while (front < common && before[front] == after[front])
        ++front;
    std::size_t back = 0;
    while (back < common - front && before[before.size() - 1 - back] == after[after.size() - 1 - back])
        ++back;
    return after.substr(front, after.size() - front - back);
}

}  // namespace

std::int16_t filter_key(Filtro mode, bool signo, std::int16_t key) {
    if (mode == Filtro::Letters)
        return is_letter(key) || key == ' ' || key == BACKSPACE || key == ENTER ? key : std::int16_t{0};
    if (!is_number(mode))
        return key;
    const bool dropped = (key == '-' && !signo) || key == ',' || (key == '.' && mode == Filtro::Integer);
    return dropped ? std::int16_t{0} : key;
}

bool may_enter(Filtro mode, bool signo, std::u16string_view text) {
    return std::all_of(text.begin(), text.end(), [=](char16_t c) {
        const bool exponent = mode == Filtro::Integer && is_exponent_letter(c);
        const bool command = mode == Filtro::Letters && c < u' ';  // the key of that code would type nothing
        return !exponent && !command && (c == 0 || filter_key(mode, signo, static_cast<std::int16_t>(c)) != 0);
    });
}

bool is_numeric(std::u16string_view text) {
    text = without_blanks(text);
    if (!take_one(text, is_sign) && !text.empty() && text.back() == u'-')
        text.remove_suffix(1);
    const std::size_t integer = take_digits(text);
    const bool point = take_one(text, [](char16_t c) { return c == u'.'; });
    const std::size_t digits = integer + take_digits(text);
    if (digits == 0)
        return point && text.empty();
    if (take_one(text, is_exponent_letter)) {
        take_one(text, is_sign);
        if (take_digits(text) == 0)
            return false;
    }
    return text.empty();
}

std::u16string_view change(Filtro mode, std::u16string_view text, std::u16string_view previous) {
    if (text.empty() || !is_number(mode))
        return text;
    if (!is_numeric(text))
        return text == u"-" ? text : previous;
    return text.back() == u'-' && text.size() > 2 ? previous : text;
}

bool may_become(Filtro mode, bool signo, std::u16string_view before, std::u16string_view after) {
    return may_enter(mode, signo, brought_in(before, after)) &&
           (after == before || change(mode, after, before) == after);
}

std::u16string_view on_leaving(Filtro mode, std::u16string_view text) {
    return is_number(mode) && (text.empty() || text == u"-") ? u"0" : text;
}

}  // namespace reglas

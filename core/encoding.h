#pragma once
// Windows-1252 and UTF-8. The five bytes without a character (81 8D 8F 90 9D) pass through as U+0081 and so on.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tavo {

inline constexpr std::string_view UTF8_MARK = "\xEF\xBB\xBF";

std::string utf8_from_windows1252(std::string_view bytes);
/// Empty when a character has no byte in Windows-1252 (or the text is not UTF-8).
std::optional<std::string> windows1252_from_utf8(std::string_view text);
struct Utf8Character {
    char32_t code;
    std::size_t length;  // in bytes; 0 where these are not UTF-8
};
/// The character at the beginning of a text that is not empty. Overlong forms, surrogates and values above U+10FFFF
/// are none.
Utf8Character first_character(std::string_view text);
/// Appends a character up to U+10FFFF.
void append_utf8(std::string& out, char32_t c);
/// The text itself where it is UTF-8; every byte that belongs to no character becomes U+FFFD.
std::string valid_utf8(std::string_view text);
/// Lower case of the Latin, Greek and Cyrillic letters of a UTF-8 text, for comparisons; other bytes unchanged.
std::string lower(std::string_view text);
/// A UTF-8 text that is not empty, shortened by one character (by one byte where the end is not UTF-8).
std::string_view without_last_character(std::string_view text);

}  // namespace tavo

#include "core/encoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace tavo {

namespace {

// Characters of the bytes 80 to 9F; all other bytes equal their code point.
constexpr std::array<char32_t, 32> HIGH_CONTROLS{0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                 0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                                 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char32_t REPLACEMENT = 0xFFFD;

// Every step-th code point from first to last is a capital; its small letter lies shift further on.
struct Capitals {
    char32_t first, last;
    std::int32_t shift;
    std::uint32_t step;
};

// Simple case mappings of Unicode 14 for Latin, Greek and Cyrillic, in ascending order.
constexpr Capitals CAPITALS[]{
    {0x00C0, 0x00D6, 32, 1},    {0x00D8, 0x00DE, 32, 1},    {0x0100, 0x012E, 1, 2},     {0x0130, 0x0130, -199, 1},
    {0x0132, 0x0136, 1, 2},     {0x0139, 0x0147, 1, 2},     {0x014A, 0x0176, 1, 2},     {0x0178, 0x0178, -121, 1},
    {0x0179, 0x017D, 1, 2},     {0x0181, 0x0181, 210, 1},   {0x0182, 0x0184, 1, 2},     {0x0186, 0x0186, 206, 1},
    {0x0187, 0x0187, 1, 1},     {0x0189, 0x018A, 205, 1},   {0x018B, 0x018B, 1, 1},     {0x018E, 0x018E, 79, 1},
    {0x018F, 0x018F, 202, 1},   {0x0190, 0x0190, 203, 1},   {0x0191, 0x0191, 1, 1},     {0x0193, 0x0193, 205, 1},
    {0x0194, 0x0194, 207, 1},   {0x0196, 0x0196, 211, 1},   {0x0197, 0x0197, 209, 1},   {0x0198, 0x0198, 1, 1},
    {0x019C, 0x019C, 211, 1},   {0x019D, 0x019D, 213, 1},   {0x019F, 0x019F, 214, 1},   {0x01A0, 0x01A4, 1, 2},
    {0x01A6, 0x01A6, 218, 1},   {0x01A7, 0x01A7, 1, 1},     {0x01A9, 0x01A9, 218, 1},   {0x01AC, 0x01AC, 1, 1},
    {0x01AE, 0x01AE, 218, 1},   {0x01AF, 0x01AF, 1, 1},     {0x01B1, 0x01B2, 217, 1},   {0x01B3, 0x01B5, 1, 2},
    {0x01B7, 0x01B7, 219, 1},   {0x01B8, 0x01B8, 1, 1},     {0x01BC, 0x01BC, 1, 1},     {0x01C4, 0x01C4, 2, 1},
    {0x01C5, 0x01C5, 1, 1},     {0x01C7, 0x01C7, 2, 1},     {0x01C8, 0x01C8, 1, 1},     {0x01CA, 0x01CA, 2, 1},
    {0x01CB, 0x01DB, 1, 2},     {0x01DE, 0x01EE, 1, 2},     {0x01F1, 0x01F1, 2, 1},     {0x01F2, 0x01F4, 1, 2},
    {0x01F6, 0x01F6, -97, 1},   {0x01F7, 0x01F7, -56, 1},   {0x01F8, 0x021E, 1, 2},     {0x0220, 0x0220, -130, 1},
    {0x0222, 0x0232, 1, 2},     {0x023A, 0x023A, 10795, 1}, {0x023B, 0x023B, 1, 1},     {0x023D, 0x023D, -163, 1},
    {0x023E, 0x023E, 10792, 1}, {0x0241, 0x0241, 1, 1},     {0x0243, 0x0243, -195, 1},  {0x0244, 0x0244, 69, 1},
    {0x0245, 0x0245, 71, 1},    {0x0246, 0x024E, 1, 2},     {0x0370, 0x0372, 1, 2},     {0x0376, 0x0376, 1, 1},
    {0x037F, 0x037F, 116, 1},   {0x0386, 0x0386, 38, 1},    {0x0388, 0x038A, 37, 1},    {0x038C, 0x038C, 64, 1},
    {0x038E, 0x038F, 63, 1},    {0x0391, 0x03A1, 32, 1},    {0x03A3, 0x03AB, 32, 1},    {0x03CF, 0x03CF, 8, 1},
    {0x03D8, 0x03EE, 1, 2},     {0x03F4, 0x03F4, -60, 1},   {0x03F7, 0x03F7, 1, 1},     {0x03F9, 0x03F9, -7, 1},
    {0x03FA, 0x03FA, 1, 1},     {0x03FD, 0x03FF, -130, 1},  {0x0400, 0x040F, 80, 1},    {0x0410, 0x042F, 32, 1},
    {0x0460, 0x0480, 1, 2},     {0x048A, 0x04BE, 1, 2},     {0x04C0, 0x04C0, 15, 1},    {0x04C1, 0x04CD, 1, 2},
    {0x04D0, 0x052E, 1, 2},     {0x1E00, 0x1E94, 1, 2},     {0x1E9E, 0x1E9E, -7615, 1}, {0x1EA0, 0x1EFE, 1, 2},
    {0x1F08, 0x1F0F, -8, 1},    {0x1F18, 0x1F1D, -8, 1},    {0x1F28, 0x1F2F, -8, 1},    {0x1F38, 0x1F3F, -8, 1},
    {0x1F48, 0x1F4D, -8, 1},    {0x1F59, 0x1F5F, -8, 2},    {0x1F68, 0x1F6F, -8, 1},    {0x1F88, 0x1F8F, -8, 1},
    {0x1F98, 0x1F9F, -8, 1},    {0x1FA8, 0x1FAF, -8, 1},    {0x1FB8, 0x1FB9, -8, 1},    {0x1FBA, 0x1FBB, -74, 1},
    {0x1FBC, 0x1FBC, -9, 1},    {0x1FC8, 0x1FCB, -86, 1},   {0x1FCC, 0x1FCC, -9, 1},    {0x1FD8, 0x1FD9, -8, 1},
    {0x1FDA, 0x1FDB, -100, 1},  {0x1FE8, 0x1FE9, -8, 1},    {0x1FEA, 0x1FEB, -112, 1},  {0x1FEC, 0x1FEC, -7, 1},
    {0x1FF8, 0x1FF9, -128, 1},  {0x1FFA, 0x1FFB, -126, 1},  {0x1FFC, 0x1FFC, -9, 1},
};

char32_t lower(char32_t c) {
    const auto* row = std::lower_bound(std::begin(CAPITALS), std::end(CAPITALS), c,
                                       [](const Capitals& r, char32_t value) { return r.last < value; });
    if (row == std::end(CAPITALS) || c < row->first || (c - row->first) % row->step != 0)
        return c;
    return static_cast<char32_t>(static_cast<std::int32_t>(c) + row->shift);
}

std::uint8_t byte(char c) {
    return static_cast<std::uint8_t>(c);
}

std::optional<char> windows1252(char32_t c) {
    if (c < 0x80 || (c >= 0xA0 && c < 0x100))
        return static_cast<char>(c);
    const auto found = std::find(HIGH_CONTROLS.begin(), HIGH_CONTROLS.end(), c);
    if (found == HIGH_CONTROLS.end())
        return std::nullopt;
    return static_cast<char>(0x80 + (found - HIGH_CONTROLS.begin()));
}

}  // namespace

Utf8Character first_character(std::string_view text) {
    const std::uint8_t lead = byte(text[0]);
    if (lead < 0x80)
        return {lead, 1};
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return {0, 0};
    char32_t c = lead & (0x7F >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(text[i]) & 0xC0) != 0x80)
            return {0, 0};
        c = c << 6 | (byte(text[i]) & 0x3F);
    }
    constexpr std::array<char32_t, 5> smallest{0, 0, 0x80, 0x800, 0x10000};
    if (c < smallest[length] || c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
        return {0, 0};
    return {c, length};
}

void append_utf8(std::string& out, char32_t c) {
    const auto put = [&out](char32_t value) { out.push_back(static_cast<char>(value)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | c >> 6);
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | c >> 12);
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | c >> 18);
        put(0x80 | (c >> 12 & 0x3F));
        put(0x80 | (c >> 6 & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

std::string valid_utf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const std::size_t length = first_character(text).length;
        if (length == 0)
            append_utf8(result, REPLACEMENT);
        else
            result += text.substr(0, length);
        text.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return result;
}

std::string utf8_from_windows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (char c : bytes) {
        const std::uint8_t b = byte(c);
        append_utf8(text, b >= 0x80 && b < 0xA0 ? HIGH_CONTROLS[b - 0x80u] : b);
    }
    return text;
}

std::optional<std::string> windows1252_from_utf8(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const Utf8Character d = first_character(text);
        const auto b = d.length == 0 ? std::nullopt : windows1252(d.code);
        if (!b)
            return std::nullopt;
        bytes.push_back(*b);
        text.remove_prefix(d.length);
    }
    return bytes;
}

std::string lower(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const char c = text[0];
        const Utf8Character d = first_character(text);
        if (d.length > 1)
            append_utf8(result, lower(d.code));
        else
            result.push_back(c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c);
        text.remove_prefix(std::max<std::size_t>(d.length, 1));
    }
    return result;
}

std::string_view without_last_character(std::string_view text) {
    std::size_t start = text.size() - 1;
    while (start > 0 && text.size() - start < 4 && (byte(text[start]) & 0xC0) == 0x80)
        --start;
    const bool whole = first_character(text.substr(start)).length == text.size() - start;
    return text.substr(0, whole ? start : text.size() - 1);
}

}  // namespace tavo

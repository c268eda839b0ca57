#include <algorithm>
#include <array>
#include <cstdint>

#include "core/encoding.h"
#include "shell/chm/chm_file.h"
#include "shell/chm/html_scanner.h"

namespace tavo::chm {

namespace {

constexpr std::size_t HEAD = 4096;  // bytes in which a page names its encoding
constexpr std::string_view NO_BREAK_SPACE = "\xC2\xA0";

// Tags that do not part words: H<sub>2</sub>O.
constexpr std::array<std::string_view, 24> INLINE_TAGS{
    "a", "abbr", "acronym", "b", "bdo",  "big",   "cite", "code",   "del", "dfn", "em", "font",
    "i", "ins",  "kbd",     "q", "samp", "small", "span", "strong", "sub", "sup", "tt", "u"};

bool parts_words(const Piece& tag) {
    return std::none_of(INLINE_TAGS.begin(), INLINE_TAGS.end(), [&](std::string_view name) { return tag.is(name); });
}

std::string utf8_from_utf16(std::string_view bytes, bool big_endian) {
    const auto unit = [&](std::size_t i) {
        const auto a = static_cast<std::uint8_t>(bytes[i]), b = static_cast<std::uint8_t>(bytes[i + 1]);
        return static_cast<char32_t>(big_endian ? a << 8 | b : b << 8 | a);
    };
    std::string text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        const bool paired = c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size() && (unit(i + 2) & 0xFC00) == 0xDC00;
        if (paired) {
            i += 2;
            c = 0x10000 + ((c & 0x3FF) << 10) + (unit(i) & 0x3FF);
        }
        append_utf8(text, !paired && c >= 0xD800 && c < 0xE000 ? 0xFFFD : c);
    }
    return text;
}

/// The charset that a page declares, "" where it declares none.
std::string declared_charset(std::string_view bytes) {
    HtmlScanner scanner(bytes.substr(0, HEAD));
    while (const auto piece = scanner.next()) {
        if (piece->is("body"))
            break;
        if (!piece->is("meta"))
            continue;
        if (const auto charset = piece->attribute("charset"))
            return *charset;
        const std::string content = lower(piece->attribute("content").value_or(""));
        const std::size_t found = content.find("charset=");
        if (found != std::string::npos)
            return content.substr(found + std::string_view("charset=").size());
    }
    return {};
}

/// Appends words with one blank between them.
class WordJoiner {
public:
    void append(std::string_view text) {
        while (!text.empty()) {
            if (text.starts_with(NO_BREAK_SPACE)) {
                part();
                text.remove_prefix(NO_BREAK_SPACE.size());
            } else {
                append(text.front());
                text.remove_prefix(1);
            }
        }
    }
    void part() { parted_ = true; }
    std::string take() { return std::move(text_); }

private:
    void append(char c) {
        if (is_blank(c)) {
            part();
            return;
        }
        if (parted_ && !text_.empty())
            text_.push_back(' ');
        parted_ = false;
        text_.push_back(c);
    }

    std::string text_;
    bool parted_ = false;
};

}  // namespace

std::string decode_page(std::string_view bytes) {
    if (bytes.starts_with(UTF8_MARK))
        return valid_utf8(bytes.substr(UTF8_MARK.size()));
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        return utf8_from_utf16(bytes.substr(2), bytes.starts_with("\xFE\xFF"));
    const std::string charset = lower(declared_charset(bytes));
    return charset.starts_with("utf-8") || charset.starts_with("utf8") ? valid_utf8(bytes)
                                                                       : utf8_from_windows1252(bytes);
}

std::string page_title(std::string_view html) {
    HtmlScanner scanner(html);
    while (const auto piece = scanner.next()) {
        if (!piece->is("title") || piece->closing)
            continue;
        WordJoiner title;
        for (auto text = scanner.next(); text && text->name.empty(); text = scanner.next())
            title.append(resolve_references(text->text));
        return title.take();
    }
    return {};
}

std::string plain_text(std::string_view html) {
    WordJoiner words;
    HtmlScanner scanner(html);
    bool in_title = false;
    while (const auto piece = scanner.next()) {
        if (piece->name.empty()) {
            if (!in_title)
                words.append(resolve_references(piece->text));
            continue;
        }
        in_title = piece->is("title") && !piece->closing;
        if (parts_words(*piece))
            words.part();
    }
    return words.take();
}

}  // namespace tavo::chm

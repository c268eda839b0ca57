#include "shell/chm/html_scanner.h"

#include <algorithm>

namespace tavo::chm {

namespace {

constexpr auto NONE = std::string_view::npos;

char lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool is_letter(char c) {
    return lower(c) >= 'a' && lower(c) <= 'z';
}

bool ends_name(char c) {
    return is_blank(c) || c == '/' || c == '>';
}

std::size_t skip_blanks(std::string_view text, std::size_t from) {
    while (from < text.size() && is_blank(text[from]))
        ++from;
    return from;
}

/// Reads the attributes of a tag one by one: name, name=value, name="value", name='value'.
class AttributeScanner {
public:
    explicit AttributeScanner(std::string_view text) : text_(text) {}

    bool next() {
        position_ = skip_blanks(text_, position_);
        if (position_ >= text_.size())
            return false;
        const std::size_t begin = position_++;
        while (position_ < text_.size() && !is_blank(text_[position_]) && text_[position_] != '=')
            ++position_;
        name = text_.substr(begin, position_ - begin);
        value = {};
        const std::size_t sign = skip_blanks(text_, position_);
        if (sign < text_.size() && text_[sign] == '=')
            read_value(skip_blanks(text_, sign + 1));
        return true;
    }

    std::string_view name, value;

private:
    void read_value(std::size_t begin) {
        const bool quoted = begin < text_.size() && (text_[begin] == '"' || text_[begin] == '\'');
        std::size_t end = quoted ? text_.find(text_[begin], begin + 1) : begin;
        if (quoted)
            ++begin;
        else
            while (end < text_.size() && !is_blank(text_[end]))
                ++end;
        end = std::min(end, text_.size());
        value = text_.substr(begin, end - begin);
        position_ = quoted ? end + 1 : end;
    }

    std::string_view text_;
    std::size_t position_ = 0;
};

}  // namespace

bool Piece::is(std::string_view tag_name) const {
    return same_word(name, tag_name);
}

std::optional<std::string> Piece::attribute(std::string_view attribute_name) const {
    for (AttributeScanner a(attributes); a.next();) {
        if (same_word(a.name, attribute_name))
            return resolve_references(a.value);
    }
    return std::nullopt;
}

std::optional<Piece> HtmlScanner::next() {
    while (position_ < html_.size()) {
        if (!starts_markup())
            return text();
        if (html_.substr(position_).starts_with("<!--"))
            pass("-->");
        else if (html_[position_ + 1] == '!' || html_[position_ + 1] == '?')
            pass(">");
        else if (const auto found = tag())
            return found;
    }
    return std::nullopt;
}

// Whether a tag, a comment or a declaration begins here: any other "<" is text.
bool HtmlScanner::starts_markup() const {
    if (html_[position_] != '<' || position_ + 1 >= html_.size())
        return false;
    const char after = html_[position_ + 1];
    return is_letter(after) || after == '!' || after == '?' ||
           (after == '/' && position_ + 2 < html_.size() && is_letter(html_[position_ + 2]));
}

Piece HtmlScanner::text() {
    const std::size_t end = std::min(html_.find('<', position_ + 1), html_.size());
    Piece piece;
    piece.text = html_.substr(position_, end - position_);
    position_ = end;
    return piece;
}

std::optional<Piece> HtmlScanner::tag() {
    Piece piece;
    piece.closing = html_[position_ + 1] == '/';
    const std::size_t begin = position_ + (piece.closing ? 2 : 1);
    std::size_t after_name = begin;
    while (after_name < html_.size() && !ends_name(html_[after_name]))
        ++after_name;
    piece.name = html_.substr(begin, after_name - begin);
    const std::size_t end = end_of_tag(after_name);
    position_ = std::min(end, html_.size());
    if (end == NONE)
        return std::nullopt;
    piece.attributes = html_.substr(after_name, end - after_name);
    ++position_;
    if (!piece.closing && piece.is("script"))
        pass_element("</script");
    else if (!piece.closing && piece.is("style"))
        pass_element("</style");
    return piece;
}

// Place of the ">"; one between the quotes of a value ends nothing.
std::size_t HtmlScanner::end_of_tag(std::size_t from) const {
    while ((from = html_.find_first_of(">=", from)) != NONE && html_[from] == '=') {
        from = skip_blanks(html_, from + 1);
        if (from < html_.size() && (html_[from] == '"' || html_[from] == '\''))
            from = html_.find(html_[from], from + 1);
        if (from == NONE)
            break;
    }
    return from;
}

void HtmlScanner::pass(std::string_view end) {
    const std::size_t found = html_.find(end, position_);
    position_ = found == NONE ? html_.size() : found + end.size();
}

void HtmlScanner::pass_element(std::string_view end_tag) {
    while ((position_ = html_.find("</", position_)) != NONE &&
           !same_word(html_.substr(position_, end_tag.size()), end_tag))
        ++position_;
    position_ = std::min(position_, html_.size());
}

bool same_word(std::string_view any_case, std::string_view lower_case) {
    return std::equal(any_case.begin(), any_case.end(), lower_case.begin(), lower_case.end(),
                      [](char a, char b) { return lower(a) == b; });
}

bool is_blank(char c) {
    return (c >= 0 && c <= ' ') || c == '\x7F';
}

}  // namespace tavo::chm

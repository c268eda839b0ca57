#pragma once
// HTML as a row of texts and tags, read once from front to back: whatever bytes it holds, the time grows with their
// number alone.

#include <optional>
#include <string>
#include <string_view>

namespace tavo::chm {

/// Text between tags, or a tag.
struct Piece {
    std::string_view text;  // as written; "" for a tag
    std::string_view name;  // of a tag, as written; "" for a text
    bool closing = false;
    std::string_view attributes;  // as written

    /// A tag of this name (lower case).
    bool is(std::string_view tag_name) const;
    /// Value of an attribute (name in lower case), character references resolved; empty where the tag has none.
    std::optional<std::string> attribute(std::string_view attribute_name) const;
};

class HtmlScanner {
public:
    explicit HtmlScanner(std::string_view html) : html_(html) {}

    /// The next piece; empty at the end. Comments, declarations, scripts and styles are passed over, and so is the rest
    /// of the page behind the beginning of one that never ends.
    std::optional<Piece> next();

private:
    bool starts_markup() const;
    Piece text();
    std::optional<Piece> tag();
    std::size_t end_of_tag(std::size_t from) const;
    void pass(std::string_view end);
    void pass_element(std::string_view end_tag);

    std::string_view html_;
    std::size_t position_ = 0;
};

/// A text with its character references resolved.
std::string resolve_references(std::string_view text);
/// Equal but for the case of ASCII letters; the second one is lower case.
bool same_word(std::string_view any_case, std::string_view lower_case);
/// A blank, a line break or another control character.
bool is_blank(char c);

}  // namespace tavo::chm

#include "tools/help_page.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include "core/encoding.h"
#include "core/errors.h"

namespace tavo::help {

namespace {

constexpr std::array<std::string_view, 62> ELEMENTS{
    "a",    "address", "b",     "big",   "blockquote", "body",  "br",      "caption", "center", "cite",   "code",
    "col",  "dd",      "dfn",   "div",   "dl",         "dt",    "em",      "font",    "h1",     "h2",     "h3",
    "h4",   "h5",      "h6",    "head",  "hr",         "html",  "i",       "img",     "kbd",    "li",     "link",
    "meta", "nobr",    "ol",    "p",     "pre",        "s",     "samp",    "small",   "span",   "strong", "style",
    "sub",  "sup",     "table", "tbody", "td",         "tfoot", "th",      "thead",   "title",  "tr",     "tt",
    "u",    "ul",      "var",   "del",   "ins",        "q",     "colgroup"};
constexpr std::array<std::string_view, 7> EMPTY_ELEMENTS{"br", "col", "hr", "img", "link", "meta", "input"};
/// Browsers end a paragraph before these.
constexpr std::array<std::string_view, 20> BLOCKS{"address", "blockquote", "center", "dd",    "div", "dl", "h1",
                                                  "h2",      "h3",         "h4",     "h5",    "h6",  "hr", "li",
                                                  "ol",      "p",          "pre",    "table", "ul",  "dt"};
constexpr std::array<std::pair<std::string_view, std::string_view>, 5> NAMED{
    {{"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"nbsp", "\u00A0"}}};

template <class List>
bool contains(const List& list, std::string_view word) {
    return std::find(list.begin(), list.end(), word) != list.end();
}

bool is_blank(char c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool is_letter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && is_blank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && is_blank(text.back()))
        text.remove_suffix(1);
    return text;
}

/// Blanks and line ends joined to one blank.
std::string one_line(std::string_view text) {
    std::string result;
    for (const char c : trimmed(text)) {
        if (!is_blank(c))
            result += c;
        else if (result.back() != ' ')
            result += ' ';
    }
    return result;
}

/// What the reference "&name;" stands for: "#937", "#x3A9" or one of the common names.
std::optional<std::string> referred(std::string_view name) {
    if (!name.starts_with('#')) {
        const auto* known = std::find_if(NAMED.begin(), NAMED.end(), [&](const auto& n) { return n.first == name; });
        return known == NAMED.end() ? std::nullopt : std::optional(std::string(known->second));
    }
    const bool hex = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
    const std::string_view digits = name.substr(hex ? 2 : 1);
    std::uint32_t code = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), code, hex ? 16 : 10);
    std::string character;
    if (error == std::errc() && stop == digits.data() + digits.size() && code >= 0x20 && code <= 0x10FFFF &&
        (code < 0xD800 || code > 0xDFFF))
        append_utf8(character, code);
    return character.empty() ? std::nullopt : std::optional(character);
}

struct Attribute {
    std::string name, value;
};

struct Tag {
    std::string name;  // in lower case
    bool closing = false;
    std::vector<Attribute> attributes;
    std::size_t begin = 0, end = 0;
    int line = 0;

    const std::string* find(std::string_view attribute) const {
        const auto found =
            std::find_if(attributes.begin(), attributes.end(), [&](const Attribute& a) { return a.name == attribute; });
        return found == attributes.end() ? nullptr : &found->value;
    }
};

/// Reads the page once, from front to back.
class Reader {
public:
    Reader(std::string_view html, const std::string& file, Problems& problems)
        : html_(html), file_(file), problems_(problems) {}

    Page read();

private:
    void problem(std::string sentence) { problems_.push_back({file_, line_, std::move(sentence)}); }
    void problem_at(int line, std::string sentence) { problems_.push_back({file_, line, std::move(sentence)}); }

    bool at_end() const { return at_ >= html_.size(); }
    bool at(std::string_view word) const { return html_.substr(at_).starts_with(word); }
    char peek() const { return at_end() ? '\0' : html_[at_]; }
    void step(std::size_t count = 1);
    void skip_blanks();
    void skip_behind(std::string_view word, const std::string& missing);
    std::string word();

    void read_text();
    void read_tag();
    bool read_attributes(Tag& tag);
    std::string attribute_value();
    std::string resolved(std::string_view text);
    void open(const Tag& tag);
    void close(const Tag& tag);
    void take(const Tag& tag);
    void take_link(const Tag& tag);
    void take_picture(const Tag& tag);
    void take_meta(const Tag& tag);
    void take_style(const Tag& tag);
    void take_anchor(const Tag& tag, std::string_view attribute);
    bool inside(std::string_view name) const;
    bool is_local(const std::string& target, int line);
    void check_whole();

    struct Open {
        std::string name;
        int line;
    };

    std::string_view html_;
    const std::string& file_;
    Problems& problems_;
    std::size_t at_ = 0;
    int line_ = 1;
    std::vector<Open> open_;
    std::map<std::string, int> count_;
    bool has_text_ = false;
    Page page_;
};

void Reader::step(std::size_t count) {
    for (; count > 0 && !at_end(); --count)
        if (html_[at_++] == '\n')
            ++line_;
}

void Reader::skip_blanks() {
    while (is_blank(peek()))
        step();
}

void Reader::skip_behind(std::string_view word, const std::string& missing) {
    const std::size_t found = html_.find(word, at_);
    if (found == std::string_view::npos)
        problem(missing);
    step(found == std::string_view::npos ? html_.size() - at_ : found + word.size() - at_);
}

std::string Reader::word() {
    const std::size_t begin = at_;
    while (is_letter(peek()) || is_digit(peek()) || peek() == '-' || peek() == ':')
        step();
    return lower(html_.substr(begin, at_ - begin));
}

/// Text from here on with its character references resolved; the wrong ones stay away and are named.
std::string Reader::resolved(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '&') {
            result += text[i];
            continue;
        }
        const int line =
            line_ + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(i), '\n'));
        const std::size_t end = std::min(text.find_first_of("; \n<&", i + 1), text.size());
        const std::string name(text.substr(i + 1, end - i - 1));
        if (name.empty() || end == text.size() || text[end] != ';') {
            problem_at(line, "a bare \"&\"; write \"&amp;\"");
            continue;
        }
        if (const auto character = referred(name))
            result += *character;
        else if (name.front() == '#')
            problem_at(line, "\"&" + name + ";\" is no character");
        else
            problem_at(line, "\"&" + name + ";\" is not used here; write the character itself");
        i = end;
    }
    return result;
}

void Reader::read_text() {
    const std::size_t end = std::min(html_.find('<', at_), html_.size());
    const std::string text = resolved(html_.substr(at_, end - at_));
    if (inside("title"))
        page_.title += text;
    else if (!trimmed(text).empty()) {
        if (!inside("body"))
            problem("text outside <body>");
        has_text_ = true;
    }
    step(end - at_);
}

std::string Reader::attribute_value() {
    const char quote = peek();
    if (quote != '"' && quote != '\'') {
        problem("an attribute without quotation marks");
        const std::size_t begin = at_;
        while (!at_end() && !is_blank(peek()) && peek() != '>')
            step();
        return resolved(html_.substr(begin, at_ - begin));
    }
    step();
    const std::size_t end = html_.find(quote, at_);
    if (end == std::string_view::npos) {
        problem("a quotation mark is not closed");
        step(html_.size() - at_);
        return {};
    }
    std::string value = resolved(html_.substr(at_, end - at_));
    step(end - at_ + 1);
    return value;
}

bool Reader::read_attributes(Tag& tag) {
    for (skip_blanks(); peek() != '>'; skip_blanks()) {
        if (at("/>")) {
            step();
            continue;
        }
        Attribute attribute{word(), {}};
        if (attribute.name.empty() || at_end()) {
            problem_at(tag.line, "<" + tag.name + "> is not ended by \">\"");
            return false;
        }
        skip_blanks();
        if (peek() == '=') {
            step();
            skip_blanks();
            attribute.value = attribute_value();
        }
        tag.attributes.push_back(std::move(attribute));
    }
    step();
    return true;
}

void Reader::read_tag() {
    if (at("<!--"))
        return skip_behind("-->", "a comment is not closed");
    if (at("<!") || at("<?"))
        return skip_behind(">", "a declaration is not closed");
    Tag tag;
    tag.begin = at_;
    tag.line = line_;
    step();
    tag.closing = peek() == '/';
    if (tag.closing)
        step();
    if (!is_letter(peek())) {
        problem("a bare \"<\"; write \"&lt;\"");
        return;
    }
    tag.name = word();
    if (!read_attributes(tag))
        return skip_blanks();
    tag.end = at_;
    if (tag.closing)
        close(tag);
    else
        open(tag);
}

bool Reader::inside(std::string_view name) const {
    return std::any_of(open_.begin(), open_.end(), [&](const Open& o) { return o.name == name; });
}

void Reader::open(const Tag& tag) {
    if (!contains(ELEMENTS, tag.name)) {
        problem_at(tag.line, "<" + tag.name + "> is not among the elements of the help");
        if (tag.name == "script")
            skip_behind("</script>", "<script> is not closed");
        return;
    }
    ++count_[tag.name];
    if (contains(BLOCKS, tag.name) && inside("p"))
        problem_at(tag.line, "<" + tag.name + "> inside a <p>, which browsers end before it");
    if (!contains(EMPTY_ELEMENTS, tag.name))
        open_.push_back({tag.name, tag.line});
    take(tag);
}

void Reader::close(const Tag& tag) {
    if (!inside(tag.name)) {
        problem_at(tag.line, "</" + tag.name + "> closes nothing");
        return;
    }
    for (; open_.back().name != tag.name; open_.pop_back())
        problem_at(open_.back().line, "<" + open_.back().name + "> is not closed before </" + tag.name + ">");
    open_.pop_back();
}

void Reader::take(const Tag& tag) {
    take_anchor(tag, "id");
    if (tag.name == "a")
        take_link(tag);
    else if (tag.name == "img")
        take_picture(tag);
    else if (tag.name == "meta")
        take_meta(tag);
    else if (tag.name == "style")
        take_style(tag);
    else if (tag.name == "head")
        page_.head = tag.end;
    else if (const std::string* sheet = tag.name == "link" ? tag.find("href") : nullptr; sheet != nullptr) {
        if (is_local(*sheet, tag.line))
            page_.sheets.push_back({*sheet, tag.line});
    }
    if (tag.find("background") != nullptr)
        problem_at(tag.line, "a background picture");
    if (const std::string* style = tag.find("style"); style != nullptr)
        check_style(*style, file_, tag.line, problems_);
}

void Reader::take_anchor(const Tag& tag, std::string_view attribute) {
    const std::string* name = tag.find(attribute);
    if (name != nullptr && (name->empty() || !page_.anchors.insert(*name).second))
        problem_at(tag.line, "the anchor \"" + *name + "\" is empty or there twice");
}

bool Reader::is_local(const std::string& target, int line) {
    const std::size_t colon = target.find(':');
    const bool outside = target.starts_with("/") || target.starts_with("\\") ||
                         (colon != std::string::npos && colon < std::min(target.find('#'), target.size()));
    if (outside)
        problem_at(line, "\"" + target + "\" lies outside the help");
    return !outside;
}

void Reader::take_link(const Tag& tag) {
    if (tag.find("id") == nullptr)
        take_anchor(tag, "name");
    const std::string* target = tag.find("href");
    if (target == nullptr && tag.find("name") == nullptr && tag.find("id") == nullptr)
        problem_at(tag.line, "<a> leads nowhere and names nothing");
    if (target != nullptr && is_local(*target, tag.line))
        page_.links.push_back({*target, tag.line});
}

void Reader::take_picture(const Tag& tag) {
    const std::string* file = tag.find("src");
    const std::string* words = tag.find("alt");
    if (words == nullptr || trimmed(*words).empty())
        problem_at(tag.line, "a picture without words for whoever cannot see it (alt=\"...\")");
    if (file == nullptr || file->empty())
        problem_at(tag.line, "<img> names no picture");
    else if (is_local(*file, tag.line))
        page_.pictures.push_back(
            {*file, tag.line, tag.find("width") != nullptr || tag.find("height") != nullptr, {tag.begin, tag.end}});
}

void Reader::take_meta(const Tag& tag) {
    const std::string* name = tag.find("name");
    const std::string* header = tag.find("http-equiv");
    const std::string* content = tag.find("content");
    if (name != nullptr && lower(*name) == "keywords" && content != nullptr) {
        for (std::size_t begin = 0; begin <= content->size();) {
            const std::size_t end = std::min(content->find(';', begin), content->size());
            const std::string keyword = one_line(std::string_view(*content).substr(begin, end - begin));
            if (!keyword.empty())
                page_.keywords.push_back(keyword);
            begin = end + 1;
        }
    }
    const std::string* charset = tag.find("charset");
    if (charset != nullptr || (header != nullptr && lower(*header) == "content-type")) {
        const std::string said = lower(charset != nullptr ? *charset : content != nullptr ? *content : "");
        if (said.find("utf-8") == std::string::npos)
            problem_at(tag.line, "the page says that it is not in UTF-8");
        page_.charsets.push_back({tag.begin, tag.end});
    }
}

void Reader::take_style(const Tag& tag) {
    const std::size_t end = std::min(html_.find("</style", at_), html_.size());
    check_style(html_.substr(at_, end - at_), file_, tag.line, problems_);
    step(end - at_);
}

void Reader::check_whole() {
    for (; !open_.empty(); open_.pop_back())
        problem_at(open_.back().line, "<" + open_.back().name + "> is not closed");
    for (const char* once : {"html", "head", "title", "body"})
        if (const int n = count_[once]; n != 1)
            problem_at(0, (n == 0 ? "there is no <" : "there is more than one <") + std::string(once) + ">");
    page_.title = one_line(page_.title);
    if (count_["title"] == 1 && page_.title.empty())
        problem_at(0, "the title is empty");
    if (!has_text_)
        problem_at(0, "the page is empty");
}

Page Reader::read() {
    if (!check_characters(html_, file_, problems_))
        return {};
    while (!at_end()) {
        if (peek() == '<')
            read_tag();
        else
            read_text();
    }
    check_whole();
    return page_;
}

}  // namespace

std::string Problem::text() const {
    std::string place = file;
    if (line > 0)
        place += ":" + std::to_string(line);
    return place + ": " + sentence;
}

bool check_characters(std::string_view text, const std::string& file, Problems& problems) {
    int line = 1;
    while (!text.empty()) {
        const auto [c, length] = first_character(text);
        const bool control = (c < 0x20 && !is_blank(static_cast<char>(c))) || (c >= 0x7F && c < 0xA0);
        if (length == 0 || c == 0xFFFD || control) {
            problems.push_back({file, line, length > 0 ? "a control character" : "not UTF-8"});
            return false;
        }
        if (c == '\n')
            ++line;
        text.remove_prefix(length);
    }
    return true;
}

void check_style(std::string_view css, const std::string& file, int first_line, Problems& problems) {
    for (const std::string_view asks : {"url(", "@import"}) {
        const std::size_t found = css.find(asks);
        if (found != std::string_view::npos)
            problems.push_back({file,
                                first_line + static_cast<int>(std::count(
                                                 css.begin(), css.begin() + static_cast<std::ptrdiff_t>(found), '\n')),
                                "a style that asks for another file (" + std::string(asks) + ")"});
    }
}

Page read_page(std::string_view html, const std::string& file, Problems& problems) {
    return Reader(html, file, problems).read();
}

std::string with_references(std::string_view utf8) {
    std::string result;
    while (!utf8.empty()) {
        const auto [c, length] = first_character(utf8);
        if (length == 0)
            throw InvalidArgument("a text that is not UTF-8");
        if (const auto byte = windows1252_from_utf8(utf8.substr(0, length)))
            result += *byte;
        else
            result += "&#" + std::to_string(static_cast<std::uint32_t>(c)) + ";";
        utf8.remove_prefix(length);
    }
    return result;
}

std::string compiled_page(std::string_view html, const Page& page, const std::map<std::string, Size>& sizes) {
    struct Edit {
        Place place;
        std::string text;
    };
    std::map<std::size_t, Edit> edits;  // by place
    for (const Place& charset : page.charsets)
        edits[charset.begin] = {charset, ""};
    Edit& head = edits.try_emplace(page.head, Edit{{page.head, page.head}, ""}).first->second;
    head.text = R"(<meta http-equiv="Content-Type" content="text/html; charset=windows-1252">)";
    for (const Picture& picture : page.pictures) {
        const std::size_t behind_name = picture.place.begin + std::string_view("<img").size();
        const auto size = sizes.find(picture.file);
        if (size == sizes.end())
            edits[picture.place.begin] = {picture.place, ""};
        else if (!picture.sized)
            edits[behind_name] = {{behind_name, behind_name},
                                  " width=\"" + std::to_string(size->second.width) + "\" height=\"" +
                                      std::to_string(size->second.height) + "\""};
    }
    std::string result;
    std::size_t at = 0;
    for (const auto& [begin, edit] : edits) {
        result += html.substr(at, begin - at);
        result += edit.text;
        at = edit.place.end;
    }
    result += html.substr(at);
    return with_references(result);
}

}  // namespace tavo::help

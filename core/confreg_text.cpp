#include <algorithm>
#include <array>
#include <deque>
#include <limits>
#include <unordered_map>

#include "core/confreg.h"
#include "core/encoding.h"
#include "core/errors.h"

namespace tavo::confreg {

namespace {

constexpr std::string_view CRLF = "\r\n";

/// A line and its end: a run of CRs with LF, a lone CR, or nothing at the end of the file. A file may have very many
/// lines, so it takes 16 bytes.
class Line {
public:
    /// No text holds more bytes than its lines can count.
    static constexpr std::size_t MOST_BYTES = std::numeric_limits<std::uint32_t>::max() - 1;

    Line() = default;
    /// As read: the end follows the text at once.
    Line(std::string_view text, std::size_t end)
        : text_(text.data()), size_(static_cast<std::uint32_t>(text.size())), end_(static_cast<std::uint32_t>(end)) {}
    /// That ends with CR LF, wherever the text stands.
    static Line even(std::string_view text) { return {text, EVEN}; }

    std::string_view text() const { return {text_, size_}; }
    std::string_view end() const { return end_ == EVEN ? CRLF : std::string_view(text_ + size_, end_); }
    void end_evenly() { end_ = EVEN; }
    bool is_header() const { return text().starts_with('['); }

private:
    static constexpr std::uint32_t EVEN = std::numeric_limits<std::uint32_t>::max();

    const char* text_ = "";
    std::uint32_t size_ = 0;
    std::uint32_t end_ = 0;  // bytes after the text, or EVEN
};

/// Where the keys of a long section stand.
struct KeyIndex {
    std::unordered_map<std::string, std::size_t> first;               // lower-cased key, its first line
    std::size_t first_bad = std::numeric_limits<std::size_t>::max();  // first line without "="
};

/// A header and the lines up to the next one. The first block of a text holds the lines before the first header.
struct Block {
    std::uint64_t place = 0;  // ascends in file order
    Line header{};
    std::vector<Line> lines{};
    int number = 0;         // line number of the header, from 1
    bool searched = false;  // for a key, at least once
    std::unique_ptr<KeyIndex> keys{};

    bool has_short_header() const { return header.text().size() == 1; }
};

/// Shorter sections are searched line by line; so is a longer one that is searched for the first time.
constexpr std::size_t INDEXED_LENGTH = 48;

bool before(const Block* a, const Block* b) {
    return a->place < b->place;
}

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// Lower case of the bytes of Windows-1252.
const std::array<char, 256>& lower_bytes() {
    static const auto table = [] {
        std::array<char, 256> result{};
        for (std::size_t b = 0; b < result.size(); ++b) {
            const char c = static_cast<char>(b);
            result[b] = windows1252_from_utf8(lower(utf8_from_windows1252({&c, 1}))).value_or(std::string(1, c))[0];
        }
        return result;
    }();
    return table;
}

char lower_byte(char c) {
    return lower_bytes()[static_cast<unsigned char>(c)];
}

void refuse_line_break(std::string_view text) {
    if (text.find_first_of(CRLF) != std::string_view::npos)
        throw InvalidArgument("a line break cannot be part of a section, key, value or line of a settings file");
}

void refuse_huge(std::string_view text) {
    if (text.size() > Line::MOST_BYTES)
        throw Overflow("a settings file cannot hold 4 GiB");
}

}  // namespace

class Text::Impl {
public:
    explicit Impl(std::string_view bytes) { read(bytes); }

    std::string leerclave(std::string_view section, std::string_view key) const;
    int lineaseccion(std::string_view section) const;
    std::vector<std::string> listasecciones() const;
    std::vector<std::string> lines() const;
    std::vector<std::pair<std::string, std::string>> claves(std::string_view section) const;
    void escribirclave(std::string_view section, std::string_view key, std::string_view value);
    void asegurarseccion(std::string_view section);
    bool borrarseccion(std::string_view section);
    int reemplazarlinea(std::string_view old_line, std::string_view new_line);

    bool is_utf8() const { return utf8_; }
    void use_utf8();
    std::string bytes() const { return (utf8_ ? std::string(UTF8_MARK) : std::string()).append(body()); }

private:
    // Texts of the caller are UTF-8; lines, and names compared with lines, stand in the file's encoding.
    std::optional<std::string> encoded(std::string_view text) const;
    std::string encoded_for_writing(std::string_view text) const;
    std::string decoded(std::string_view text) const;
    std::string folded(std::string_view text) const;
    std::optional<std::string> name(std::string_view text) const;
    bool same(std::string_view text, const std::string& folded_text) const;

    // The lines.
    void read(std::string_view bytes);
    void load(std::string body);
    std::string body() const;
    std::string_view store(std::string text);
    void add_lines(std::string_view buffer);
    void add_line(Line line);
    void append(std::string bytes);
    void end_lines_evenly();
    const Line* last_line() const;
    bool is_last_line(const Block& block) const { return &block == blocks_.back().get() && block.lines.empty(); }

    // The blocks and their names.
    std::string_view header_name(const Block& block) const;
    std::vector<Block*>& namesakes(const Block& block);
    void enter_name(Block& block);
    void remove_name(Block& block);
    Block* find(std::string_view section) const;
    std::size_t position(const Block& block) const;
    Block* next(const Block& block) const;
    void number_lines() const;

    // The keys of one block.
    std::optional<std::size_t> find_key(Block& block, const std::optional<std::string>& folded_key) const;
    void build_keys(Block& block) const;
    void enter_key(KeyIndex& keys, std::string_view line, std::size_t at) const;
    [[noreturn]] void refuse_bad_line(const Block& block, std::size_t at) const;
    [[noreturn]] void refuse_short_header(const Block& block) const;

    /// What rewriting a key does to one section.
    struct Change {
        Block* block;
        std::optional<std::size_t> key;  // the line that holds it
        bool insert;                     // before the next header
    };
    std::optional<std::vector<Change>> plan(const std::string& section, const std::string& key) const;
    void apply(const Change& change, std::string_view line);
    std::vector<Block*> scanned(const std::string& section) const;

    int replace_headers(const std::string& old_line, std::string_view new_line);
    int replace_other_lines(const std::string& old_line, std::string_view new_line);

    bool utf8_ = false;
    std::deque<std::string> buffers_;  // what the lines point into
    std::vector<std::unique_ptr<Block>> blocks_;
    std::unordered_map<std::string, std::vector<Block*>> by_name_;  // lower-cased name; in file order
    std::vector<Block*> short_headers_;                             // in file order
    std::uint64_t uneven_from_ = 0;                                 // lines of blocks before this place end with CR LF
    mutable bool numbered_ = false;
};

// ---- encoding -------------------------------------------------------------------------------------------------------

std::optional<std::string> Text::Impl::encoded(std::string_view text) const {
    return utf8_ ? std::string(text) : windows1252_from_utf8(text);
}

std::string Text::Impl::encoded_for_writing(std::string_view text) const {
    refuse_line_break(text);
    if (auto bytes = encoded(text))
        return *std::move(bytes);
    throw RewriteRefused("\"" + std::string(text) + "\" holds a character that Windows-1252 has no byte for");
}

std::string Text::Impl::decoded(std::string_view text) const {
    return utf8_ ? std::string(text) : utf8_from_windows1252(text);
}

std::string Text::Impl::folded(std::string_view text) const {
    if (utf8_)
        return lower(text);
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(), lower_byte);
    return result;
}

/// A name to look for; empty when no line of the file can hold it.
std::optional<std::string> Text::Impl::name(std::string_view text) const {
    const auto bytes = encoded(text);
    return bytes ? std::optional(folded(*bytes)) : std::nullopt;
}

bool Text::Impl::same(std::string_view text, const std::string& folded_text) const {
    if (utf8_)
        return lower(text) == folded_text;
    return text.size() == folded_text.size() &&
           std::equal(text.begin(), text.end(), folded_text.begin(), [](char a, char b) { return lower_byte(a) == b; });
}

// ---- lines ----------------------------------------------------------------------------------------------------------

void Text::Impl::read(std::string_view bytes) {
    utf8_ = bytes.starts_with(UTF8_MARK);
    load(std::string(bytes.substr(utf8_ ? UTF8_MARK.size() : 0)));
}

void Text::Impl::load(std::string body) {
    refuse_huge(body);
    blocks_.clear();
    by_name_.clear();
    short_headers_.clear();
    buffers_.clear();
    uneven_from_ = 0;
    blocks_.push_back(std::make_unique<Block>());
    add_lines(store(std::move(body)));
}

std::string_view Text::Impl::store(std::string text) {
    refuse_huge(text);
    return buffers_.emplace_back(std::move(text));
}

std::string Text::Impl::body() const {
    std::size_t size = 0;
    const auto each_line = [this](auto&& use) {
        for (const auto& block : blocks_) {
            use(block->header);
            for (const Line& line : block->lines)
                use(line);
        }
    };
    each_line([&size](const Line& line) { size += line.text().size() + line.end().size(); });
    std::string result;
    result.reserve(size);
    each_line([&result](const Line& line) { result.append(line.text()).append(line.end()); });
    return result;
}

void Text::Impl::add_lines(std::string_view buffer) {
    std::size_t feed = 0;  // the first line feed not before start
    std::size_t start = 0;
    while (start < buffer.size()) {
        if (feed != std::string_view::npos && feed < start + 1)
            feed = buffer.find('\n', start);
        const std::size_t end = std::min(buffer.substr(0, feed).find('\r', start), std::min(feed, buffer.size()));
        std::size_t after = end;
        while (after < buffer.size() && buffer[after] == '\r')
            ++after;
        if (after == feed) {
            add_line({buffer.substr(start, end - start), after + 1 - end});
            start = after + 1;
            continue;
        }
        // Lone carriage returns, or the end of the text.
        add_line({buffer.substr(start, end - start), std::min<std::size_t>(after - end, 1)});
        for (std::size_t i = end + 1; i < after; ++i)
            add_line({buffer.substr(i, 0), 1});
        start = after;
    }
    numbered_ = false;
}

void Text::Impl::add_line(Line line) {
    if (line.is_header()) {
        blocks_.push_back(std::make_unique<Block>(Block{.place = blocks_.back()->place + 1, .header = line}));
        enter_name(*blocks_.back());
        return;
    }
    Block& block = *blocks_.back();
    if (block.keys)
        enter_key(*block.keys, line.text(), block.lines.size());
    block.lines.push_back(line);
}

/// Bytes at the end of the file. A CR there joins the ones that are appended to it.
void Text::Impl::append(std::string bytes) {
    const Line* last = last_line();
    if (last && (last->end().empty() || (last->end().back() == '\r' && bytes.front() == '\r'))) {
        load(body() + bytes);
        return;
    }
    uneven_from_ = std::min(uneven_from_, blocks_.back()->place);
    add_lines(store(std::move(bytes)));
}

void Text::Impl::end_lines_evenly() {
    for (auto block = blocks_.rbegin(); block != blocks_.rend() && (*block)->place >= uneven_from_; ++block) {
        if (*block != blocks_.front())
            (*block)->header.end_evenly();
        for (Line& line : (*block)->lines)
            line.end_evenly();
    }
    uneven_from_ = std::numeric_limits<std::uint64_t>::max();
}

const Line* Text::Impl::last_line() const {
    const Block& block = *blocks_.back();
    if (!block.lines.empty())
        return &block.lines.back();
    return blocks_.size() > 1 ? &block.header : nullptr;
}

// ---- blocks ---------------------------------------------------------------------------------------------------------

/// Not for a short header.
std::string_view Text::Impl::header_name(const Block& block) const {
    const std::string_view name = block.header.text().substr(1);
    return utf8_ ? without_last_character(name) : name.substr(0, name.size() - 1);
}

std::vector<Block*>& Text::Impl::namesakes(const Block& block) {
    return block.has_short_header() ? short_headers_ : by_name_[folded(header_name(block))];
}

void Text::Impl::enter_name(Block& block) {
    std::vector<Block*>& list = namesakes(block);
    list.insert(std::upper_bound(list.begin(), list.end(), &block, before), &block);
}

void Text::Impl::remove_name(Block& block) {
    std::vector<Block*>& list = namesakes(block);
    list.erase(std::lower_bound(list.begin(), list.end(), &block, before));
}

/// The first section of a name; null when missing.
Block* Text::Impl::find(std::string_view section) const {
    const auto wanted = name(section);
    const auto found = wanted ? by_name_.find(*wanted) : by_name_.end();
    Block* const block = found == by_name_.end() || found->second.empty() ? nullptr : found->second.front();
    if (!short_headers_.empty() && (!block || before(short_headers_.front(), block)))
        refuse_short_header(*short_headers_.front());
    return block;
}

std::size_t Text::Impl::position(const Block& block) const {
    const auto at = std::lower_bound(blocks_.begin(), blocks_.end(), block.place,
                                     [](const auto& b, std::uint64_t place) { return b->place < place; });
    return static_cast<std::size_t>(at - blocks_.begin());
}

Block* Text::Impl::next(const Block& block) const {
    const std::size_t at = position(block) + 1;
    return at < blocks_.size() ? blocks_[at].get() : nullptr;
}

void Text::Impl::number_lines() const {
    if (numbered_)
        return;
    int number = 0;  // the lines before the first header have none above them
    for (const auto& block : blocks_) {
        block->number = number;
        number += static_cast<int>(block->lines.size()) + 1;
    }
    numbered_ = true;
}

// ---- keys -----------------------------------------------------------------------------------------------------------

/// Line of the first such key in a block. As for a reader who stops there, a bad line after it does not matter. A key
/// that no line can hold (empty) is looked for all the same: a bad line is an error for it too.
std::optional<std::size_t> Text::Impl::find_key(Block& block, const std::optional<std::string>& folded_key) const {
    if (block.lines.size() < INDEXED_LENGTH || !std::exchange(block.searched, true)) {
        for (std::size_t i = 0; i < block.lines.size(); ++i) {
            const std::string_view line = block.lines[i].text();
            const std::size_t sign = line.find('=');
            if (sign == std::string_view::npos && !line.empty())
                refuse_bad_line(block, i);
            if (!line.empty() && folded_key && same(line.substr(0, sign), *folded_key))
                return i;
        }
        return std::nullopt;
    }
    build_keys(block);
    const auto found = folded_key ? block.keys->first.find(*folded_key) : block.keys->first.end();
    const std::size_t end = found == block.keys->first.end() ? block.lines.size() : found->second;
    if (block.keys->first_bad < end)
        refuse_bad_line(block, block.keys->first_bad);
    return end < block.lines.size() ? std::optional(end) : std::nullopt;
}

void Text::Impl::build_keys(Block& block) const {
    if (block.keys)
        return;
    block.keys = std::make_unique<KeyIndex>();
    for (std::size_t i = 0; i < block.lines.size(); ++i)
        enter_key(*block.keys, block.lines[i].text(), i);
}

void Text::Impl::enter_key(KeyIndex& keys, std::string_view line, std::size_t at) const {
    const std::size_t sign = line.find('=');
    if (sign != std::string_view::npos)
        keys.first.try_emplace(folded(line.substr(0, sign)), at);
    else if (!line.empty())
        keys.first_bad = std::min(keys.first_bad, at);
}

void Text::Impl::refuse_bad_line(const Block& block, std::size_t at) const {
    number_lines();
    throw InvalidArgument("line " + std::to_string(block.number + static_cast<int>(at) + 1) + ", \"" +
                          decoded(block.lines[at].text()) + "\", in section " + decoded(block.header.text()) +
                          " has no \"=\"");
}

void Text::Impl::refuse_short_header(const Block& block) const {
    number_lines();
    throw Overflow("the section header in line " + std::to_string(block.number) + " is shorter than two characters");
}

// ---- reading --------------------------------------------------------------------------------------------------------

std::string Text::Impl::leerclave(std::string_view section, std::string_view key) const {
    Block* const block = find(section);
    if (!block)
        return {};
    const auto at = find_key(*block, name(key));
    if (!at)
        return {};
    const std::string_view line = block->lines[*at].text();
    return decoded(trimmed(line.substr(line.find('=') + 1)));
}

int Text::Impl::lineaseccion(std::string_view section) const {
    const Block* const block = find(section);
    if (!block)
        return 0;
    number_lines();
    return block->number;
}

std::vector<std::string> Text::Impl::listasecciones() const {
    if (!short_headers_.empty())
        refuse_short_header(*short_headers_.front());
    std::vector<std::string> sections;
    sections.reserve(blocks_.size() - 1);
    for (std::size_t i = 1; i < blocks_.size(); ++i)
        sections.push_back(decoded(header_name(*blocks_[i])));
    return sections;
}

std::vector<std::string> Text::Impl::lines() const {
    std::vector<std::string> result;
    for (const auto& block : blocks_) {
        if (block != blocks_.front())
            result.push_back(decoded(block->header.text()));
        for (const Line& line : block->lines)
            result.push_back(decoded(line.text()));
    }
    return result;
}

std::vector<std::pair<std::string, std::string>> Text::Impl::claves(std::string_view section) const {
    std::vector<std::pair<std::string, std::string>> keys;
    const Block* const block = find(section);
    if (!block)
        return keys;
    for (std::size_t i = 0; i < block->lines.size(); ++i) {
        const std::string_view line = block->lines[i].text();
        if (line.empty())
            continue;
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos)
            refuse_bad_line(*block, i);
        keys.emplace_back(decoded(line.substr(0, sign)), decoded(trimmed(line.substr(sign + 1))));
    }
    return keys;
}

// ---- writing --------------------------------------------------------------------------------------------------------

void Text::Impl::escribirclave(std::string_view section, std::string_view key, std::string_view value) {
    std::string header = encoded_for_writing(section);
    const std::string key_bytes = encoded_for_writing(key);
    const std::string line = key_bytes + "=" + encoded_for_writing(value);
    asegurarseccion(section);
    const auto changes = plan(folded(header), folded(key_bytes));
    if (!changes) {
        const Line* const last = last_line();
        append(std::string(last && last->end().empty() ? CRLF : "").append(line).append(CRLF));
        return;
    }
    const std::string_view stored = store(line);
    for (const Change& change : *changes)
        apply(change, stored);
    end_lines_evenly();
    numbered_ = false;
    if (line.starts_with('['))  // such a key is a header to whoever reads it
        load(body());
}

/// What rewriting a key of an existing section changes; empty when the key is to be appended at the end of the file
/// instead. Goes through the sections as somebody who reads the file once, from its beginning to its end.
std::optional<std::vector<Text::Impl::Change>> Text::Impl::plan(const std::string& section,
                                                                const std::string& key) const {
    std::vector<Change> changes;
    bool found = false;
    const Block* consumed = nullptr;  // its header ended the search in the section before and is not looked at again
    for (Block* block : scanned(section)) {
        if (block == consumed)
            continue;
        if (block->has_short_header())
            refuse_short_header(*block);
        const auto at = find_key(*block, key);
        const Block* const following = next(*block);
        if (at)
            found = true;
        else if (!found && (!following || is_last_line(*following)))
            return std::nullopt;
        else
            consumed = following;
        changes.push_back({block, at, !at && following});
    }
    return changes;
}

/// The sections of a name and the headers that are too short, in file order.
std::vector<Block*> Text::Impl::scanned(const std::string& section) const {
    const std::vector<Block*>& named = by_name_.at(section);
    std::vector<Block*> result;
    std::merge(named.begin(), named.end(), short_headers_.begin(), short_headers_.end(), std::back_inserter(result),
               before);
    return result;
}

void Text::Impl::apply(const Change& change, std::string_view line) {
    std::vector<Line>& lines = change.block->lines;
    const std::size_t count = lines.size();
    if (change.key)
        lines[*change.key] = Line::even(line);
    const auto searched_end = change.key ? lines.begin() + static_cast<std::ptrdiff_t>(*change.key) : lines.end();
    lines.erase(std::remove_if(lines.begin(), searched_end, [](const Line& l) { return l.text().empty(); }),
                searched_end);
    if (change.insert) {
        lines.push_back(Line::even(line));
        lines.push_back(Line::even({}));
    }
    if (change.insert || lines.size() != count)
        change.block->keys.reset();
}

void Text::Impl::asegurarseccion(std::string_view section) {
    refuse_line_break(section);
    if (!find(section))
        append("\r\r\n[" + encoded_for_writing(section) + "]\r\n");
}

bool Text::Impl::borrarseccion(std::string_view section) {
    Block* const block = find(section);
    if (!block)
        return false;
    remove_name(*block);
    blocks_.erase(blocks_.begin() + static_cast<std::ptrdiff_t>(position(*block)));
    end_lines_evenly();
    numbered_ = false;
    return true;
}

int Text::Impl::reemplazarlinea(std::string_view old_line, std::string_view new_line) {
    refuse_line_break(new_line);
    const auto wanted = name(old_line);
    int last = 0;
    if (wanted)
        last = wanted->starts_with('[') ? replace_headers(*wanted, new_line) : replace_other_lines(*wanted, new_line);
    end_lines_evenly();
    const std::vector<Line>& beginning = blocks_.front()->lines;
    const bool gained_mark = !utf8_ && !beginning.empty() && beginning.front().text().starts_with(UTF8_MARK);
    if (last > 0 && (gained_mark || wanted->starts_with('[') != new_line.starts_with('[')))
        read(bytes());  // as whoever reads the file next: headers came or went, or the encoding is another
    return last;
}

int Text::Impl::replace_headers(const std::string& old_line, std::string_view new_line) {
    const Block model{.header = Line(old_line, 0)};
    std::vector<Block*> matches = namesakes(model);
    std::erase_if(matches, [&](const Block* block) { return !same(block->header.text(), old_line); });
    if (matches.empty())
        return 0;
    const Line replacement = Line::even(store(encoded_for_writing(new_line)));
    number_lines();
    for (Block* block : matches) {
        remove_name(*block);
        block->header = replacement;
        if (replacement.is_header())
            enter_name(*block);
    }
    return matches.back()->number;
}

int Text::Impl::replace_other_lines(const std::string& old_line, std::string_view new_line) {
    std::optional<Line> replacement;
    int last = 0;
    number_lines();
    for (const auto& block : blocks_) {
        for (std::size_t i = 0; i < block->lines.size(); ++i) {
            if (!same(block->lines[i].text(), old_line))
                continue;
            if (!replacement)
                replacement = Line::even(store(encoded_for_writing(new_line)));
            block->lines[i] = *replacement;
            block->keys.reset();
            last = block->number + static_cast<int>(i) + 1;
        }
    }
    return last;
}

void Text::Impl::use_utf8() {
    if (utf8_)
        return;
    utf8_ = true;
    load(utf8_from_windows1252(body()));
}

// ---- Text -----------------------------------------------------------------------------------------------------------

Text::Text(std::string_view bytes) : impl_(std::make_unique<Impl>(bytes)) {}
Text::Text(Text&&) noexcept = default;
Text& Text::operator=(Text&&) noexcept = default;
Text::~Text() = default;

std::string Text::leerclave(std::string_view section, std::string_view key) const {
    return impl_->leerclave(section, key);
}
int Text::lineaseccion(std::string_view section) const {
    return impl_->lineaseccion(section);
}
std::vector<std::string> Text::listasecciones() const {
    return impl_->listasecciones();
}
std::vector<std::string> Text::lines() const {
    return impl_->lines();
}
std::vector<std::pair<std::string, std::string>> Text::claves(std::string_view section) const {
    return impl_->claves(section);
}
void Text::escribirclave(std::string_view section, std::string_view key, std::string_view value) {
    impl_->escribirclave(section, key, value);
}
void Text::asegurarseccion(std::string_view section) {
    impl_->asegurarseccion(section);
}
bool Text::borrarseccion(std::string_view section) {
    return impl_->borrarseccion(section);
}
int Text::reemplazarlinea(std::string_view old_line, std::string_view new_line) {
    return impl_->reemplazarlinea(old_line, new_line);
}
bool Text::is_utf8() const {
    return impl_->is_utf8();
}
void Text::use_utf8() {
    impl_->use_utf8();
}
std::string Text::bytes() const {
    return impl_->bytes();
}

}  // namespace tavo::confreg

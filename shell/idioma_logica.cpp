#include "shell/idioma_logica.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <map>
#include <utility>

#include "core/encoding.h"
#include "core/idiomas.h"
#include "core/text_rules.h"

namespace idioma {

namespace confreg = tavo::confreg;

namespace {

constexpr std::string_view SELECTION = "idioma";
constexpr std::string_view CRLF = "\r\n";

struct Section {
    std::string name;
    std::vector<std::string> lines{};  // that are not blank
};

struct File {
    std::vector<std::string> preamble{};
    std::vector<Section> sections{};
};

bool is_blank(std::string_view line) {
    return line.find_first_not_of(' ') == std::string_view::npos;
}

std::string_view trimmed(std::string_view text) {
    if (is_blank(text))
        return {};
    const std::size_t first = text.find_first_not_of(' ');
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

File sections_of(const confreg::Text& text) {
    File file;
    const std::vector<std::string> names = text.listasecciones();
    for (std::string& line : text.lines()) {
        if (line.starts_with('['))
            file.sections.push_back({names.at(file.sections.size())});
        else if (!is_blank(line))
            (file.sections.empty() ? file.preamble : file.sections.back().lines).push_back(std::move(line));
    }
    return file;
}

bool names_the_selection(const Section& section) {
    return tavo::idiomas::same_language(section.name, SELECTION);
}

/// What makes the languages of a file another file's.
std::string fingerprint_of(const File& file) {
    std::string print;
    for (const Section& section : file.sections) {
        if (names_the_selection(section))
            continue;
        print.append("[").append(section.name).append("\n");
        for (const std::string& line : section.lines)
            print.append(line).append("\n");
    }
    return print;
}

int number_of(std::string_view key) {
    int number = -1;
    const auto [end, error] = std::from_chars(key.data(), key.data() + key.size(), number);
    return error == std::errc() && end == key.data() + key.size() ? number : -1;
}

/// Tells the lines of one key apart.
std::string identity(const std::string& key, std::size_t occurrence) {
    return tavo::lower(key) + '\n' + std::to_string(occurrence);
}

class Occurrences {
public:
    std::string next(const std::string& key) { return identity(key, seen_[tavo::lower(key)]++); }

private:
    std::unordered_map<std::string, std::size_t> seen_;
};

/// The keys of a language's section, a row per line.
std::vector<Fila> leernumeracion(const Section& section) {
    std::vector<Fila> rows;
    std::unordered_map<std::string, int> seen;
    for (const std::string& line : section.lines) {
        const std::size_t sign = line.find('=');
        Fila row{.key = line.substr(0, sign), .malformed = sign == std::string::npos};
        row.repeated = seen[tavo::lower(row.key)]++ > 0;
        if (!row.repeated && !row.malformed)
            row.number = number_of(row.key);
        rows.push_back(std::move(row));
    }
    return rows;
}

/// The texts of a language's section, by row.
std::vector<std::string> leertodoidioma(const Section& section,
                                        const std::unordered_map<std::string, std::size_t>& row_of, std::size_t rows) {
    std::vector<std::string> texts(rows);
    Occurrences occurrences;
    for (const std::string& line : section.lines) {
        const std::size_t sign = line.find('=');
        const std::size_t row = row_of.at(occurrences.next(line.substr(0, sign)));
        if (sign != std::string::npos)
            texts[row] = trimmed(std::string_view(line).substr(sign + 1));
    }
    return texts;
}

std::unordered_map<std::string, std::size_t> identities(const std::vector<Fila>& rows) {
    std::unordered_map<std::string, std::size_t> row_of;
    Occurrences occurrences;
    for (std::size_t i = 0; i < rows.size(); ++i)
        row_of.emplace(occurrences.next(rows[i].key), i);
    return row_of;
}

std::string without_line_breaks(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.substr(i).starts_with(CRLF))
            continue;
        result.push_back(text[i] == '\r' || text[i] == '\n' ? ' ' : text[i]);
    }
    return result;
}

}  // namespace

// ---- reading --------------------------------------------------------------------------------------------------------

Tabla::Tabla(const confreg::Text& text, std::string_view running) : utf8_(text.is_utf8()) {
    File file = sections_of(text);
    fingerprint_ = fingerprint_of(file);
    preamble_ = std::move(file.preamble);
    bool active_found = false;
    std::vector<Section> languages;
    for (Section& section : file.sections) {
        if (!names_the_selection(section)) {
            languages.push_back(std::move(section));
            continue;
        }
        for (std::string& line : section.lines) {
            const bool active = !active_found && tavo::lower(line.substr(0, line.find('='))) == SELECTION;
            active_found = active_found || active;
            if (!active)
                settings_.push_back(std::move(line));
        }
    }
    for (std::size_t i = languages.size(); i-- > 0;) {
        if (tavo::idiomas::same_language(languages[i].name, running))
            source_ = i;
    }
    std::vector<std::vector<Fila>> keys;
    for (const Section& language : languages)
        keys.push_back(leernumeracion(language));
    number_rows(keys);

    const auto row_of = identities(rows_);
    for (Section& language : languages)
        columns_.push_back({language.name, leertodoidioma(language, row_of, rows())});
    known_.resize(rows());
    for (const Column& column : columns_) {
        for (std::size_t i = 0; i < rows(); ++i)
            known_[i] += !column.texts[i].empty();
    }
    states_.resize(columns());
}

/// The rows of the source in its order; what only other languages have comes behind the last smaller number, what is no
/// number at the end.
void Tabla::number_rows(const std::vector<std::vector<Fila>>& keys) {
    if (keys.empty())
        return;
    const std::vector<Fila>& own = keys[source_];
    std::unordered_map<std::string, std::size_t> known = identities(own);
    std::vector<Fila> foreign;
    for (const std::vector<Fila>& language : keys) {
        Occurrences occurrences;
        for (const Fila& row : language) {
            if (known.emplace(occurrences.next(row.key), 0).second)
                foreign.push_back(row);
        }
    }
    const auto order = [](const Fila& row) {
        const int number = row.malformed ? -1 : number_of(row.key);
        return number < 0 ? std::numeric_limits<int>::max() : number;
    };
    std::stable_sort(foreign.begin(), foreign.end(), [&](const Fila& a, const Fila& b) { return order(a) < order(b); });
    std::vector<int> least_after(own.size());  // smallest number of the source from a row on
    int least = std::numeric_limits<int>::max();
    for (std::size_t i = own.size(); i-- > 0;)
        least_after[i] = least = std::min(least, order(own[i]));
    auto next = foreign.begin();
    for (std::size_t i = 0; i < own.size(); ++i) {
        for (; next != foreign.end() && order(*next) < least_after[i]; ++next)
            rows_.push_back(*next);
        rows_.push_back(own[i]);
    }
    rows_.insert(rows_.end(), next, foreign.end());
    for (std::size_t i = 0; i < rows(); ++i) {
        if (rows_[i].number >= 0)
            row_of_number_.emplace(rows_[i].number, i);
    }
}

bool Tabla::shadowed(std::size_t column) const {
    for (std::size_t i = 0; i < column; ++i) {
        if (tavo::idiomas::same_language(name(i), name(column)))
            return true;
    }
    return false;
}

// ---- editing --------------------------------------------------------------------------------------------------------

/// Puts a text into a cell; the one before.
std::string Tabla::replace(Cell cell, std::string text) {
    std::string& stored = columns_.at(cell.column).texts.at(cell.row);
    const bool was_known = !stored.empty();
    std::swap(stored, text);
    if (!(pending_ && cell.column + 1 == columns())) {
        const auto saved = saved_texts_.try_emplace(place(cell), text).first;
        if (saved->second == stored)
            saved_texts_.erase(saved);
    }
    const bool known = !stored.empty();
    known_[cell.row] = known_[cell.row] + known - was_known;
    if (known != was_known || cell.column == source_) {
        for (State& state : states_)
            state.fresh = false;
    }
    states_[cell.column].fresh = false;
    return text;
}

bool Tabla::set_text(Cell cell, std::string_view wanted) {
    std::string clean = without_line_breaks(wanted);
    if (clean == text(cell))
        return false;
    undone_.clear();
    if (!std::exchange(step_open_, true))
        done_.emplace_back();
    Step& step = done_.back();
    std::string before = replace(cell, std::move(clean));
    if (step.empty() || step.back().cell != cell)  // a word typed into one cell is one change
        step.push_back({cell, std::move(before)});
    else if (step.back().other == text(cell))  // typed and taken back
        step.pop_back();
    return true;
}

bool Tabla::trim(Cell cell) {
    const std::string clean(trimmed(text(cell)));
    return set_text(cell, clean);
}

void Tabla::begin_step() {
    if (std::exchange(step_open_, false) && done_.back().empty())
        done_.pop_back();
}

std::vector<Cell> Tabla::undo() {
    return turn(done_, undone_);
}

std::vector<Cell> Tabla::redo() {
    return turn(undone_, done_);
}

std::vector<Cell> Tabla::turn(std::vector<Step>& from, std::vector<Step>& to) {
    begin_step();
    std::vector<Cell> cells;
    if (from.empty())
        return cells;
    Step step = std::move(from.back());
    from.pop_back();
    std::reverse(step.begin(), step.end());
    for (Change& change : step) {
        change.other = replace(change.cell, std::move(change.other));
        cells.push_back(change.cell);
    }
    to.push_back(std::move(step));
    return cells;
}

void Tabla::add_language(std::string_view name) {
    Column column{std::string(trimmed(name)), std::vector<std::string>(rows())};
    for (std::size_t i = 0; i < rows(); ++i) {
        if (!rows_[i].repeated && !rows_[i].malformed)
            column.texts[i] = columns_[source_].texts[i];
        known_[i] += !column.texts[i].empty();
    }
    columns_.push_back(std::move(column));
    states_.emplace_back();
    pending_ = true;
}

void Tabla::rename_pending(std::string_view name) {
    if (pending_)
        columns_.back().name = trimmed(name);
}

void Tabla::remove_pending() {
    if (!pending_)
        return;
    const std::size_t gone = columns() - 1;
    for (std::size_t i = 0; i < rows(); ++i)
        known_[i] -= !columns_[gone].texts[i].empty();
    columns_.pop_back();
    states_.assign(columns(), {});
    pending_ = false;
    begin_step();
    for (std::vector<Step>* steps : {&done_, &undone_}) {
        for (Step& step : *steps)
            std::erase_if(step, [gone](const Change& change) { return change.cell.column == gone; });
        std::erase_if(*steps, [](const Step& step) { return step.empty(); });
    }
}

std::optional<std::size_t> Tabla::pending() const {
    return pending_ ? std::optional(columns() - 1) : std::nullopt;
}

bool Tabla::pending_name_is_good() const {
    if (!pending_)
        return true;
    const std::string& name = columns_.back().name;
    return !name.empty() && name.find_first_of("[]\r\n") == std::string::npos &&
           !tavo::idiomas::same_language(name, SELECTION) && !shadowed(columns() - 1);
}

// ---- faults ---------------------------------------------------------------------------------------------------------

Faults Tabla::faults(Cell cell) const {
    return state(cell.column).faults.at(cell.row);
}

Progress Tabla::progress(std::size_t column) const {
    return state(column).progress;
}

const Tabla::State& Tabla::state(std::size_t column) const {
    State& state = states_.at(column);
    if (state.fresh)
        return state;
    const std::vector<std::string>& texts = columns_[column].texts;
    const std::vector<std::string>& source = columns_[source_].texts;
    state.faults.assign(rows(), 0);
    mark_letters(column, state.faults);
    Progress& progress = state.progress = {};
    for (std::size_t i = 0; i < rows(); ++i) {
        Faults& faults = state.faults[i];
        if (texts[i].empty() && known_[i] > 0 && !rows_[i].repeated)
            faults |= MISSING;
        if (!texts[i].empty() && rows_[i].repeated)
            faults |= REPEATED;
        if (!texts[i].empty() && !source[i].empty() && tavo::arguments(texts[i]) != tavo::arguments(source[i]))
            faults |= VALUES;
        progress.total += !source[i].empty();
        progress.translated += !source[i].empty() && !texts[i].empty() && texts[i] != source[i];
        progress.missing += (faults & MISSING) != 0;
        progress.letters += (faults & LETTERS) != 0;
        progress.values += (faults & VALUES) != 0;
    }
    state.fresh = true;
    return state;
}

/// The texts with these numbers that the language has, and their mnemonics.
std::vector<Tabla::Letter> Tabla::letters(std::size_t column, const std::vector<int>& numbers) const {
    std::vector<Letter> found;
    for (const int number : numbers) {
        const auto row = row_of_number_.find(number);
        if (row != row_of_number_.end() && !text({row->second, column}).empty())
            found.push_back({row->second, tavo::mnemonic(text({row->second, column}))});
    }
    return found;
}

void Tabla::mark_letters(std::size_t column, std::vector<Faults>& faults) const {
    for (const tavo::MnemonicGroup& group : tavo::mnemonic_groups()) {
        std::map<std::string, std::size_t> first;
        for (const auto& [row, letter] : letters(column, group.all())) {
            if (letter.empty()) {
                faults[row] |= NO_LETTER;
                continue;
            }
            const auto [taken, free] = first.emplace(letter, row);
            if (!free) {
                faults[row] |= CLASH;
                faults[taken->second] |= CLASH;
            }
        }
    }
}

std::vector<int> Tabla::clashes(Cell cell) const {
    std::vector<int> numbers;
    const std::string own = tavo::mnemonic(text(cell));
    const int number = row(cell.row).number;
    if (own.empty() || number < 0)
        return numbers;
    for (const tavo::MnemonicGroup& group : tavo::mnemonic_groups()) {
        const std::vector<int> all = group.all();
        if (std::find(all.begin(), all.end(), number) == all.end())
            continue;
        for (const auto& [row, letter] : letters(cell.column, all)) {
            if (letter == own && row != cell.row)
                numbers.push_back(rows_[row].number);
        }
    }
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers;
}

std::optional<Cell> Tabla::known_elsewhere(std::size_t row) const {
    if (source_ < columns() && !text({row, source_}).empty())
        return Cell{row, source_};
    for (std::size_t i = 0; i < columns(); ++i) {
        if (!text({row, i}).empty())
            return Cell{row, i};
    }
    return std::nullopt;
}

// ---- writing --------------------------------------------------------------------------------------------------------

std::string Tabla::bytes(std::string_view active, bool with_pending) const {
    std::string text;
    const auto line = [&text](std::string_view a, std::string_view b = {}, std::string_view c = {}) {
        text.append(a).append(b).append(c).append(CRLF);
    };
    for (const std::string& kept : preamble_)
        line(kept);
    line("[idioma]");
    line("idioma=", active);
    for (const std::string& kept : settings_)
        line(kept);
    line("");
    const std::size_t written = columns() - (pending_ && !with_pending);
    for (std::size_t column = 0; column < written; ++column) {
        line("[", columns_[column].name, "]");
        for (std::size_t i = 0; i < rows(); ++i)
            line(rows_[i].key, "=", columns_[column].texts[i]);
        line("");
    }
    if (!utf8_) {
        if (auto narrow = tavo::windows1252_from_utf8(text))
            return *std::move(narrow);
    }
    return std::string(tavo::UTF8_MARK) + text;
}

bool Tabla::same_as(const confreg::Text& file) const {
    return fingerprint_of(sections_of(file)) == fingerprint_;
}

void Tabla::saved(std::string_view bytes, bool with_pending) {
    const confreg::Text file(bytes);
    utf8_ = file.is_utf8();
    fingerprint_ = fingerprint_of(sections_of(file));
    saved_texts_.clear();
    pending_ = pending_ && !with_pending;
    begin_step();
}

Resultado guardar(Tabla& tabla, const std::filesystem::path& path, const confreg::Site& site,
                  std::string_view running) {
    const std::string active = tavo::idiomas::active(confreg::read(path, *site.files));
    const bool accepted = tabla.pending_name_is_good();
    const std::string bytes = tabla.bytes(active.empty() ? running : active, accepted);
    confreg::rewrite(path, bytes, site);
    tabla.saved(bytes, accepted);
    return accepted ? Resultado::Guardado : Resultado::NombreRechazado;
}

}  // namespace idioma

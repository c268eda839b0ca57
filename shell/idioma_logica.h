#pragma once
// The language table as the language editor holds it: a row per number, a column per language; what is wrong with a
// text; the file in the editor's layout. Nothing of a file is lost: numbers that only some languages define, repeated
// numbers, repeated languages and lines that are no number=text all have their rows and columns.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "core/confreg.h"

namespace idioma {

/// What is wrong with a text, as bits.
using Faults = std::uint8_t;
inline constexpr Faults MISSING = 1;    // empty, while another language has one
inline constexpr Faults CLASH = 2;      // its mnemonic is another's in the same menu or window
inline constexpr Faults NO_LETTER = 4;  // it has no mnemonic and should
inline constexpr Faults VALUES = 8;     // takes other values (%1 ...) than the source
inline constexpr Faults REPEATED = 16;  // the language has the number before: only that text is read
inline constexpr Faults LETTERS = CLASH | NO_LETTER;

struct Fila {
    std::string key;         // as it stands in the file, normally a number
    int number = -1;         // the key's value; -1 where the program reads no text by it
    bool repeated = false;   // a further line of the same key
    bool malformed = false;  // the line had no "="
};

struct Cell {
    std::size_t row;
    std::size_t column;
    bool operator==(const Cell&) const = default;
};

/// How far a language has come. A text counts as translated when it differs from the source's.
struct Progress {
    std::size_t translated = 0;
    std::size_t total = 0;  // texts of the source
    std::size_t missing = 0;
    std::size_t letters = 0;  // clashes and missing letters
    std::size_t values = 0;
};

/// All texts are UTF-8. Columns are the languages of the file in file order, then the pending one.
class Tabla {
public:
    /// `running` names the language of the running program, whose column is the source of translations; the first one
    /// is where the file has it not. Overflow: a header shorter than two characters.
    Tabla(const tavo::confreg::Text& file, std::string_view running);

    std::size_t rows() const { return rows_.size(); }
    std::size_t columns() const { return columns_.size(); }
    const Fila& row(std::size_t row) const { return rows_.at(row); }
    const std::string& name(std::size_t column) const { return columns_.at(column).name; }
    const std::string& text(Cell cell) const { return columns_.at(cell.column).texts.at(cell.row); }
    std::size_t source() const { return source_; }
    /// An earlier column has the same name, so that the program never reads this one.
    bool shadowed(std::size_t column) const;

    /// Line breaks become blanks. False where nothing changes.
    bool set_text(Cell cell, std::string_view text);
    /// Without the blanks at its ends, which no reader would see. False where there are none.
    bool trim(Cell cell);
    /// The edits from here on are one step to undo.
    void begin_step();
    /// The cells that changed; empty when nothing is left to undo or redo.
    std::vector<Cell> undo();
    std::vector<Cell> redo();

    /// A column at the right that copies the source. Only one is pending at a time.
    void add_language(std::string_view name);
    void rename_pending(std::string_view name);
    /// The pending column goes, and with it the edits of its cells.
    void remove_pending();
    std::optional<std::size_t> pending() const;
    /// Whether the pending name can be a section of its own: not empty, no bracket or line break, not "idioma", no
    /// other language's, case ignored.
    bool pending_name_is_good() const;
    /// Whether something differs from the file as it was read or saved.
    bool modified() const { return pending_ || !saved_texts_.empty(); }

    Faults faults(Cell cell) const;
    Progress progress(std::size_t column) const;
    /// Numbers of the texts whose mnemonic a text repeats, ascending.
    std::vector<int> clashes(Cell cell) const;
    /// The text of another language where one is missing.
    std::optional<Cell> known_elsewhere(std::size_t row) const;

    /// The whole file in its one layout, CRLF at the line ends: "[idioma]", "idioma=" and the active language, an empty
    /// line; for each language its header, number=text for each row, an empty line. Windows-1252, unless the file was
    /// UTF-8 or a character has no byte there: then UTF-8 with the mark.
    std::string bytes(std::string_view active, bool with_pending) const;
    /// Whether the languages of a file are still those that were read or saved. Which one is active does not matter.
    bool same_as(const tavo::confreg::Text& file) const;
    /// This text is in the file now.
    void saved(std::string_view bytes, bool with_pending);
    bool is_utf8() const { return utf8_; }

private:
    struct Column {
        std::string name;
        std::vector<std::string> texts{};
    };
    struct Change {
        Cell cell;
        std::string other;  // the text before, or after while undone
    };
    using Step = std::vector<Change>;
    struct State {  // of a column
        bool fresh = false;
        std::vector<Faults> faults{};
        Progress progress{};
    };
    struct Letter {
        std::size_t row;
        std::string letter;
    };

    void number_rows(const std::vector<std::vector<Fila>>& keys);
    const State& state(std::size_t column) const;
    void mark_letters(std::size_t column, std::vector<Faults>& faults) const;
    std::vector<Letter> letters(std::size_t column, const std::vector<int>& numbers) const;
    std::string replace(Cell cell, std::string text);
    std::vector<Cell> turn(std::vector<Step>& from, std::vector<Step>& to);
    std::uint64_t place(Cell cell) const { return cell.column * std::uint64_t{rows()} + cell.row; }

    std::vector<Fila> rows_;
    std::vector<Column> columns_;
    std::unordered_map<int, std::size_t> row_of_number_;
    std::vector<std::size_t> known_;  // languages that have a text, per row
    std::size_t source_ = 0;
    bool pending_ = false;
    bool utf8_ = false;
    std::vector<std::string> preamble_;  // lines before the first header
    std::vector<std::string> settings_;  // of the section "idioma" but the active language
    std::string fingerprint_;
    std::unordered_map<std::uint64_t, std::string> saved_texts_;  // of the cells that differ from the file
    std::vector<Step> done_, undone_;
    bool step_open_ = false;
    mutable std::vector<State> states_;
};

enum class Resultado { Guardado, NombreRechazado };

/// Writes the table into the file, crash-safely. The active language named there stays; where none is, `running` is.
/// A pending language whose name is no good stays pending and out of the file, the others are written.
/// Throws as confreg::rewrite, file and table as they were.
Resultado guardar(Tabla& tabla, const std::filesystem::path& path, const tavo::confreg::Site& site,
                  std::string_view running);

}  // namespace idioma

// Cutting lines for the printer, pages, and columns.

#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

#include "shell/imprimir_logica.h"

namespace {

using imprimir::alinear;
using imprimir::columnas;
using imprimir::cortar;
using Pieces = std::vector<std::string>;

double width(std::string_view text) {
    return columnas(text);
}

struct Cut {
    std::string line;
    double width;
    Pieces pieces;
};

TEST(Imprimir, LinesAreCutAtBlanks) {
    const Cut cuts[] = {
        {"", 20, {""}},
        {"   \t ", 20, {""}},
        {"exactamente veinte c", 20, {"exactamente veinte c"}},
        {"uno dos tres cuatro cinco", 20, {"uno dos tres .../...", "cuatro cinco"}},
        {"uno dos tresx cuatro cinco", 20, {"uno dos .../...", "tresx cuatro cinco"}},
        {"uno dos tres    cuatro cinco", 20, {"uno dos tres .../...", "cuatro cinco"}},
        {"  uno dos tres cuatro", 18, {"  uno dos .../...", "tres cuatro"}},
        {"abcdefghijklmnopqrstuvwxyz", 15, {"abcdefgh.../...", "ijklmnop.../...", "qrstuvwxyz"}},
        {"no abcdefghijklmnopqrs", 15, {"no .../...", "abcdefgh.../...", "ijklmnopqrs"}},
        {"a\tb", 20, {"a       b"}},
        {"\xC3\xA1\tb\x01"
         "c",
         20,
         {"\xC3\xA1       b c"}},
        // Two bytes, two columns, and letters with marks of their own are never torn.
        {"\xC3\xA1\xC3\xA9\xC3\xAD\xC3\xB3\xC3\xBA\xC3\xB1",
         5,
         {"\xC3\xA1\xC3\xA9\xC3\xAD\xC3\xB3\xC3\xBA", "\xC3\xB1"}},
        {"\xE6\xB0\x94\xE4\xBD\x93\xE6\xB0\x94\xE4\xBD\x93\xE6\xB0\x94\xE4\xBD\x93",
         11,
         {"\xE6\xB0\x94\xE4\xBD\x93.../...", "\xE6\xB0\x94\xE4\xBD\x93\xE6\xB0\x94\xE4\xBD\x93"}},
        {"e\xCC\x81"
         "e\xCC\x81"
         "e\xCC\x81",
         2,
         {"e\xCC\x81"
          "e\xCC\x81",
          "e\xCC\x81"}},
        // Narrower than the mark, than a character, than nothing.
        {"abc de", 4, {"abc", "de"}},
        {"ab", 0.5, {"a", "b"}},
        {"          indented", 12, {"indented"}},
    };
    for (const Cut& cut : cuts)
        EXPECT_EQ(cortar(cut.line, cut.width, width), cut.pieces) << '"' << cut.line << "\" in " << cut.width;
    EXPECT_EQ(cortar(Pieces{"a\r\nb\n", "", "c\rd"}, 20, width), (Pieces{"a", "b", "", "", "c", "d"}));
}

/// Every piece fits, all but the last are marked, and without the marks they are the line again. (Where a word fills a
/// narrow piece, no room is left for the blank before the mark.)
TEST(Imprimir, NothingIsLostWhateverTheWidth) {
    const std::string line =
        "El volumen debe ser mayor que %1 %2, el que ocupan las propias moléculas (covolumen), "
        "supercalifragilisticoespialidoso/quizá/también/más.";
    const auto without_blanks = [](std::string text) {
        std::erase(text, ' ');
        return text;
    };
    for (int room = 8; room < 150; ++room) {
        Pieces pieces = cortar(line, room, width);
        std::string joined;
        for (std::string& piece : pieces) {
            EXPECT_LE(width(piece), room) << piece;
            EXPECT_EQ(piece.ends_with(imprimir::SIGUE), &piece != &pieces.back()) << piece;
            if (&piece != &pieces.back())
                piece.resize(piece.size() - imprimir::SIGUE.size());
            joined += piece;
        }
        EXPECT_EQ(room < 20 ? without_blanks(joined) : joined, room < 20 ? without_blanks(line) : line) << room;
    }
}

/// A file without line breaks must not take minutes: what is measured grows with the text, not with its square.
TEST(Imprimir, LongLinesAreMeasuredPieceByPiece) {
    std::size_t measured = 0;
    const std::string line(100'000, 'x');
    const Pieces pieces = cortar(line, 87, [&](std::string_view text) {
        measured += text.size();
        return width(text);
    });
    EXPECT_EQ(pieces.size(), 1'250u);
    EXPECT_LT(measured, 30 * line.size());
}

TEST(Imprimir, Pages) {
    struct Case {
        std::size_t lines, per_page, pages, last_page;
    };
    for (const Case& c :
         {Case{0, 50, 1, 0}, {1, 50, 1, 1}, {50, 50, 1, 50}, {51, 50, 2, 1}, {120, 50, 3, 20}, {3, 0, 3, 1}}) {
        Pieces lines(c.lines);
        for (std::size_t i = 0; i < c.lines; ++i)
            lines[i] = std::to_string(i);
        ASSERT_EQ(imprimir::paginas(c.lines, c.per_page), c.pages) << c.lines;
        Pieces read;
        for (std::size_t i = 0; i < c.pages; ++i) {
            const auto page = imprimir::pagina(lines, c.per_page, i);
            read.insert(read.end(), page.begin(), page.end());
            EXPECT_EQ(page.size(), i + 1 < c.pages ? std::max<std::size_t>(c.per_page, 1) : c.last_page);
        }
        EXPECT_EQ(read, lines);
        EXPECT_TRUE(imprimir::pagina(lines, c.per_page, c.pages).empty());
    }
    EXPECT_EQ(imprimir::pie("Página:", 1), "Página: 1");
    EXPECT_EQ(imprimir::pie("Página:", 1234), "Página: 1234");
}

TEST(Imprimir, ColumnsStandUnderOneAnother) {
    const std::vector<Pieces> rows = {{"Gas", "Tc (K)", "Nota"},
                                      {"amoníaco", "405.5", "e\xCC\x81l"},
                                      {"\xE6\xB0\x94\xE4\xBD\x93", "-----", ""},
                                      {"H2", "-33.2", "1\t2"},
                                      {"x"}};
    EXPECT_EQ(alinear(rows), (Pieces{"Gas       Tc (K)  Nota",        //
                                     "--------  ------  ---------",   //
                                     "amoníaco   405.5  e\xCC\x81l",  //
                                     "\xE6\xB0\x94\xE4\xBD\x93       -----",
                                     "H2         -33.2  1       2",  //
                                     "x"}));
    EXPECT_TRUE(alinear({}).empty());
}

}  // namespace

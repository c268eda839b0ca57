// The language table as the editor holds, judges and writes it.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "core/encoding.h"
#include "core/errors.h"
#include "core/idiomas.h"
#include "shell/idioma_logica.h"
#include "shell/tsv.h"
#include "tests/support/test_disk.h"

namespace {

using namespace idioma;
using tavo::confreg::Text;

std::string shipped() {
    std::ifstream file(std::string(TAVO_SOURCE_DIR) + "/data/idioma.lng", std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A file from lines.
std::string lines(const std::vector<std::string>& all) {
    std::string text;
    for (const std::string& line : all)
        text += line + "\r\n";
    return text;
}

/// The rows of a column as key=text.
std::string column(const Tabla& table, std::size_t i) {
    std::string text;
    for (std::size_t row = 0; row < table.rows(); ++row)
        text += table.row(row).key + "=" + table.text({row, i}) + ";";
    return text;
}

std::size_t row_of(const Tabla& table, int number) {
    for (std::size_t row = 0; row < table.rows(); ++row)
        if (table.row(row).number == number)
            return row;
    throw std::out_of_range("no such number");
}

TEST(Idioma, ShippedFileIsWrittenAsItIsByteForByte) {
    const std::string bytes = shipped();
    const Tabla table(Text(bytes), "Español");
    EXPECT_EQ(table.bytes("Español", true), bytes);
    for (std::size_t i = 0; i < table.columns(); ++i) {
        const Progress p = table.progress(i);
        EXPECT_EQ(p.missing + p.letters + p.values, 0u) << table.name(i);
        EXPECT_EQ(p.total, table.rows());
        EXPECT_EQ(p.translated > p.total * 8 / 10, i != table.source()) << table.name(i);
    }
}

TEST(Idioma, LosesNothingOfAnOddFileAndReadsItsOwnFileBack) {
    struct Case {
        std::string what, file, running;
        std::vector<std::string> columns;
        std::string written;  // after "[idioma]" and the active language
    };
    const std::vector<Case> cases{
        {"numbers of some languages only, unsorted source",
         lines({"[idioma]", "idioma=B", "[A]", "2=a2", "3=a3", "5=a5", "[B]", "1=b1", "9=b9", "4=b4"}),
         "b",
         {"1=;2=a2;3=a3;9=;4=;5=a5;", "1=b1;2=;3=;9=b9;4=b4;5=;"},
         lines({"", "[A]", "1=", "2=a2", "3=a3", "9=", "4=", "5=a5", "", "[B]", "1=b1", "2=", "3=", "9=b9", "4=b4",
                "5=", ""})},
        {"repeated keys, keys that are no number, text outside the form",
         lines({"[idioma]", "idioma=B", "[B]", "1=x", "1=y", "k =z=z ", "loose", "  ", "[A]", "1=q", "=e"}),
         "B",
         {"1=x;1=y;k =z=z;loose=;=;", "1=q;1=;k =;loose=;=e;"},
         lines({"", "[B]", "1=x", "1=y", "k =z=z", "loose=", "=", "", "[A]", "1=q", "1=", "k =", "loose=", "=e", ""})},
        {"names that differ in case, an empty section, a nameless one, other settings",
         lines({"[B]", "1=x", "[b]", "1=y", "[E]", "[]", "[idioma]", "note=1", "idioma=B"}),
         "B",
         {"1=x;", "1=y;", "1=;", "1=;"},
         lines({"note=1", "", "[B]", "1=x", "", "[b]", "1=y", "", "[E]", "1=", "", "[]", "1=", ""})},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const Tabla table(Text(c.file), c.running);
        ASSERT_EQ(table.columns(), c.columns.size());
        for (std::size_t i = 0; i < table.columns(); ++i)
            EXPECT_EQ(column(table, i), c.columns[i]);
        const std::string written = table.bytes("B", true);
        EXPECT_EQ(written, lines({"[idioma]", "idioma=B"}) + c.written);
        EXPECT_EQ(Tabla(Text(written), c.running).bytes("B", true), written);
    }
    const Tabla twins(Text(cases[2].file), "B");
    EXPECT_FALSE(twins.shadowed(0));
    EXPECT_TRUE(twins.shadowed(1));
    EXPECT_EQ(Tabla(Text("; made by hand\r\n[idioma]\r\n[A]\r\n1=a\r\n"), "A").bytes("A", true),
              lines({"; made by hand", "[idioma]", "idioma=A", "", "[A]", "1=a", ""}));
    EXPECT_THROW(Tabla(Text("[idioma]\r\n[\r\n"), "A"), tavo::Overflow);
}

TEST(Idioma, MarksWhatIsMissingClashesOrTakesOtherValues) {
    Tabla table(Text(lines({"[S]", "9=&Nuevo", "10=&Salir", "14=&x", "61=v %1", "99=%2 %1 50 %", "[T]", "9=&Nou",
                            "10=&nada", "14=x", "61=", "99=%1 %1", "[U]", "9=a && b", "9=again", "61=%1 v"})),
                "S");
    const auto faults = [&](int number, std::size_t i) { return int{table.faults({row_of(table, number), i})}; };
    const std::vector<std::vector<int>> expected{
        {0, 0, 0, 0, 0}, {CLASH, CLASH, NO_LETTER, MISSING, VALUES}, {NO_LETTER, MISSING, MISSING, 0, MISSING}};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        const std::vector<int> found{faults(9, i), faults(10, i), faults(14, i), faults(61, i), faults(99, i)};
        EXPECT_EQ(found, expected[i]) << table.name(i);
    }
    EXPECT_EQ(table.clashes({row_of(table, 10), 1}), std::vector<int>{9});
    EXPECT_EQ(table.progress(1).letters, 3u);
    EXPECT_EQ(table.progress(1).translated, 4u);
    for (std::size_t row = 0; row < table.rows(); ++row)
        EXPECT_EQ(table.faults({row, 2}) == REPEATED, table.row(row).repeated);
    // Every edit is judged anew, the other languages with it.
    table.set_text({row_of(table, 10), 1}, "&Surt");
    EXPECT_EQ(faults(9, 1), 0);
    table.set_text({row_of(table, 99), 0}, "%1 %1");
    EXPECT_EQ(faults(99, 1), 0);
    table.set_text({row_of(table, 61), 0}, "");
    table.set_text({row_of(table, 61), 2}, "");
    EXPECT_EQ(faults(61, 1), 0);  // nobody has it
    table.set_text({row_of(table, 61), 2}, "v");
    EXPECT_EQ(faults(61, 1), MISSING);
    // Letters of any script, in either case.
    table.set_text({row_of(table, 9), 1}, "&Ñu");
    table.set_text({row_of(table, 10), 1}, "fi&ñ");
    EXPECT_EQ(faults(10, 1), CLASH);
    // The letters of the menu bar count in a window that lives inside the main window.
    Tabla bar(Text(lines({"[S]", "1=&Archivos", "9=&Nuevo", "37=&apunta", "38=&Guarda"})), "S");
    EXPECT_EQ(bar.clashes({2, 0}), std::vector<int>{1});
}

TEST(Idioma, EditsAreStepsThatCanBeUndone) {
    Tabla table(Text(lines({"[A]", "1=a", "2=b", "[B]", "1=c"})), "A");
    EXPECT_FALSE(table.set_text({0, 0}, "a"));
    EXPECT_FALSE(table.modified());
    table.begin_step();
    table.set_text({0, 0}, "aa");
    table.set_text({0, 0}, " one\r\ntwo\rthree ");
    EXPECT_TRUE(table.trim({0, 0}));
    EXPECT_EQ(table.text({0, 0}), "one two three");
    table.begin_step();
    table.set_text({1, 0}, "B");
    table.set_text({1, 1}, "C");
    EXPECT_EQ(table.undo().size(), 2u);
    EXPECT_EQ(column(table, 0), "1=one two three;2=b;");
    table.undo();
    EXPECT_FALSE(table.modified());
    EXPECT_TRUE(table.undo().empty());
    table.redo();
    table.redo();
    EXPECT_EQ(column(table, 0) + column(table, 1), "1=one two three;2=B;1=c;2=C;");
    EXPECT_TRUE(table.redo().empty());
    EXPECT_TRUE(table.modified());
    // What was typed and taken back is no step.
    table.undo();
    table.set_text({0, 1}, "cc");
    table.set_text({0, 1}, "c");
    EXPECT_EQ(table.undo(), (std::vector<Cell>{{0, 0}}));
    EXPECT_FALSE(table.modified());
}

TEST(Idioma, ARemovedLanguageLeavesNothingBehind) {
    Tabla table(Text(lines({"[A]", "1=a", "2=", "[B]", "1=c"})), "A");
    table.remove_pending();  // there is none
    ASSERT_EQ(table.columns(), 2u);
    table.set_text({0, 1}, "d");
    table.add_language("C");
    table.begin_step();
    table.set_text({1, 2}, "known here only");
    EXPECT_EQ(int{table.faults({1, 0})}, MISSING);
    table.remove_pending();
    EXPECT_EQ(table.columns(), 2u);
    EXPECT_EQ(int{table.faults({1, 0})}, 0);
    EXPECT_EQ(table.undo(), (std::vector<Cell>{{0, 1}}));
    EXPECT_FALSE(table.modified());
    EXPECT_TRUE(table.undo().empty());
}

TEST(Idioma, RefusesNamesThatCannotBeASection) {
    Tabla table(Text(shipped()), "Español");
    EXPECT_TRUE(table.pending_name_is_good());
    table.add_language("");
    for (const char* bad : {"", "  ", "ESPAÑOL", " français ", "Idioma", "a]b", "[a", "a\nb", "a\rb"}) {
        table.rename_pending(bad);
        EXPECT_FALSE(table.pending_name_is_good()) << bad;
    }
    table.rename_pending(" Català ");
    EXPECT_TRUE(table.pending_name_is_good());
    EXPECT_EQ(table.name(*table.pending()), "Català");
    EXPECT_EQ(column(table, *table.pending()), column(table, table.source()));
}

const std::filesystem::path FILE_PATH = "/home/idioma.lng";

struct Disk {
    tavo::crash::TestDisk disk;
    tavo::confreg::Site site{"/home", &disk};
    explicit Disk(const std::string& bytes) { disk.put(FILE_PATH, bytes); }
    std::string content() const { return disk.content(FILE_PATH); }
};

TEST(Idioma, SavingKeepsTheChosenLanguageAndTheEncodingThatTheTextsNeed) {
    struct Case {
        std::string file, running, typed, written;
    };
    const std::string mark(tavo::UTF8_MARK);
    const std::vector<Case> cases{
        {lines({"[idioma]", "idioma=B", "[A]", "1=a"}), "A", "\u00E0",
         lines({"[idioma]", "idioma=B", "", "[A]", "1=\xE0", ""})},
        {lines({"[A]", "1=a"}), "A", "b", lines({"[idioma]", "idioma=A", "", "[A]", "1=b", ""})},
        {lines({"[\xC9]", "1=\x81", "2=a"}), "A", "\u0391\u0645",
         mark + lines({"[idioma]", "idioma=A", "", "[É]", "1=\u0391\u0645", "2=a", ""})},
        {mark + lines({"[A]", "1=a", "2=\xFF"}), "A", "b",
         mark + lines({"[idioma]", "idioma=A", "", "[A]", "1=b", "2=\xFF", ""})},
    };
    for (const Case& c : cases) {
        Disk disk(c.file);
        Tabla table(Text(c.file), c.running);
        table.set_text({0, 0}, c.typed);
        EXPECT_EQ(guardar(table, FILE_PATH, disk.site, c.running), Resultado::Guardado);
        EXPECT_EQ(disk.content(), c.written);
        EXPECT_FALSE(table.modified());
        EXPECT_TRUE(table.same_as(Text(disk.content())));
    }
}

TEST(Idioma, ARefusedNameStaysPendingAndOutOfTheFile) {
    const std::string old = lines({"[idioma]", "idioma=A", "", "[A]", "1=a", ""});
    Disk disk(old);
    Tabla table(Text(old), "A");
    table.add_language("a");
    EXPECT_EQ(guardar(table, FILE_PATH, disk.site, "A"), Resultado::NombreRechazado);
    EXPECT_EQ(disk.content(), old);
    table.set_text({0, 0}, "b");  // the languages of the file are written all the same
    EXPECT_EQ(guardar(table, FILE_PATH, disk.site, "A"), Resultado::NombreRechazado);
    const std::string others = lines({"[idioma]", "idioma=A", "", "[A]", "1=b", ""});
    EXPECT_EQ(disk.content(), others);
    EXPECT_TRUE(table.modified());
    table.rename_pending("B");
    EXPECT_EQ(guardar(table, FILE_PATH, disk.site, "A"), Resultado::Guardado);
    EXPECT_EQ(disk.content(), others + lines({"[B]", "1=a", ""}));
    EXPECT_FALSE(table.pending());
}

TEST(Idioma, TellsWhetherSomebodyElseChangedTheLanguages) {
    const std::string old = lines({"[idioma]", "idioma=A", "", "[A]", "1=a", ""});
    const Tabla table(Text(old), "A");
    EXPECT_TRUE(table.same_as(Text(lines({"[idioma]", "idioma=B", "[A]", "1=a"}))));
    for (const std::string& other : {lines({"[A]", "1=b"}), lines({"[B]", "1=a"}), lines({"[A]", "1=a", "2="})})
        EXPECT_FALSE(table.same_as(Text(other))) << other;
}

TEST(Idioma, StoppedOrRefusedAtAnyStepTheFileHoldsTheOldOrTheNewText) {
    const std::string old = lines({"[idioma]", "idioma=A", "", "[A]", "1=a", ""});
    const std::string fresh = lines({"[idioma]", "idioma=A", "", "[A]", "1=b", "", "[C]", "1=a", ""});
    bool finished = false;
    for (int step = 0; !finished; ++step) {
        for (const bool stop : {true, false}) {
            Disk disk(old);
            (stop ? disk.disk.stop_at : disk.disk.refuse_from) = step;
            Tabla table(Text(old), "A");
            table.add_language("C");
            table.set_text({0, 0}, "b");
            try {
                guardar(table, FILE_PATH, disk.site, "A");
                EXPECT_FALSE(table.modified());
                EXPECT_EQ(disk.content(), fresh);
                finished = finished || stop;
            } catch (const tavo::crash::Stopped&) {
            } catch (const tavo::Error&) {
                EXPECT_TRUE(table.modified()) << "refused from step " << step;
            }
            disk.disk.restart(tavo::crash::Kept::Everything);
            tavo::confreg::recover({FILE_PATH}, disk.site);
            EXPECT_TRUE(disk.content() == old || disk.content() == fresh) << step << disk.content();
        }
        ASSERT_LT(step, 1000);
    }
}

TEST(Tsv, GoesThereAndBack) {
    const tsv::Block block{{"a", "b\tc", ""}, {"\"q\" r", "d\ne", "f\"g"}};
    EXPECT_EQ(tsv::leer(tsv::escribir(block)), block);
    struct Case {
        std::string text;
        tsv::Block block;
    };
    for (const Case& c : {Case{"a\tb\r\nc", {{"a", "b"}, {"c"}}}, Case{"\"x\" y\tz", {{"\"x\" y", "z"}}},
                          Case{"a\t", {{"a", ""}}}, Case{"a\n\nb\n", {{"a"}, {""}, {"b"}}}, Case{"", {}}})
        EXPECT_EQ(tsv::leer(c.text), c.block) << c.text;
}

}  // namespace

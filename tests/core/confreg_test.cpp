#include "core/confreg.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>

#include "core/encoding.h"
#include "core/errors.h"
#include "core/idiomas.h"
#include "tests/support/confreg_edits.h"

namespace {

using namespace tavo;
using confreg::Text;
using model::Edit;
using model::outcome;
using model::perform;
namespace fs = std::filesystem;

/// A folder of its own with a settings file in it; gone at the end.
class Folder {
public:
    Folder() : path_(fs::path(testing::TempDir()) / ("confreg" + std::to_string(std::random_device{}()))) {
        fs::create_directories(path_);
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { fs::remove_all(path_); }

    fs::path file() const { return path_ / "data"; }
    confreg::Site site() const { return {.program_folder = path_}; }
    void write(std::string_view bytes) const {
        std::ofstream(file(), std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    }
    std::string bytes() const { return real_file_system().read(file()); }
    bool has_temporary() const { return fs::exists(site().temporary()); }

private:
    fs::path path_;
};

TEST(Leerclave, FindsTheFirstKeyOfTheFirstSection) {
    const std::string file =
        "stray\r\n"
        "[General]\r\n"
        "\r\n"
        "n=3\r\n"
        "M = spaced \r\n"
        "eq=a=b\r\n"
        "N=4\r\n"
        "Ca\xF1"
        "a=\xC1rbol\r\n"
        "\r\n"
        "[other]\r\n"
        "k= 1  2 \t \r\n"
        "[GENERAL]\r\n"
        "later=1\r\n"
        "[last-\r\n"
        "empty=\r\n"
        "[\xF1\xF1\r\n"
        "x=y";
    const struct {
        std::string section, key, value;
    } cases[] = {
        {"general", "N", "3"},
        {"General", "M", ""},
        {"General", "m ", "spaced"},
        {"GENERAL", "eq", "a=b"},
        {"general", "CAÑA", "Árbol"},
        {"general", "later", ""},
        {"other", "k", "1  2 \t"},
        {"last", "empty", ""},
        {"Ñ", "x", "y"},
        {"missing", "x", ""},
        {"general", "missing", ""},
        {"general", "Ω", ""},
        {"Ω", "x", ""},
        {"general", "a\r\nb", ""},
        {"last-", "empty", ""},
        {"", "stray", ""},
    };
    const Text text(file);
    for (const auto& c : cases)
        EXPECT_EQ(text.leerclave(c.section, c.key), c.value) << c.section << "/" << c.key;
}

TEST(Leerclave, MeetsErrorsInTheOrderOfReading) {
    const struct {
        std::string file, section, key, error;
    } cases[] = {
        {"[a]\nx=1\nbad\n", "a", "x", ""},         {"[a]\nbad\nx=1\n", "a", "x", "argument"},
        {"[a]\nx=1\nbad\n", "a", "y", "argument"}, {"[a]\nx=1\nbad\n", "a", "Ω", "argument"},
        {"[a]\n \nx=1\n", "a", "x", "argument"},   {"bad\n[b]\nbad\n[a]\nx=1\n", "a", "x", ""},
        {"[\n[a]\nx=1\n", "a", "x", "overflow"},   {"[a]\nx=1\n[\n", "a", "x", ""},
        {"[a]\nx=1\n[\n", "a", "y", ""},           {"[a]\nx=1\n[\n", "b", "y", "overflow"},
        {"[a]\nx=1\n[\n", "Ω", "y", "overflow"},   {"\xEF\xBB\xBF[\xC3\xB1\n", "", "y", ""},
    };
    for (const auto& c : cases)
        EXPECT_EQ(outcome([&] { Text(c.file).leerclave(c.section, c.key); }), c.error)
            << testing::PrintToString(c.file);
}

TEST(Leerclave, LinesEndInManyWays) {
    for (const std::string end : {"\n", "\r\n", "\r", "\r\r\n", "\r\r\r\n"}) {
        const Text text("[a]" + end + "x=1" + end + "[b]" + end + "y=2");
        EXPECT_EQ(text.leerclave("a", "x"), "1") << testing::PrintToString(end);
        EXPECT_EQ(text.lineaseccion("b"), 3) << testing::PrintToString(end);
    }
    EXPECT_EQ(Text("[a]\r\r\r\nx=1\r\r[b]\n\n\r\n[c]").lineaseccion("b"), 4);
    EXPECT_EQ(Text("[a]\r\r\r\nx=1\r\r[b]\n\n\r\n[c]").lineaseccion("c"), 7);
}

TEST(Leerclave, ALongSectionReadsLikeAShortOne) {
    std::string file = "[a]\r\n";
    for (int i = 0; i < 200; ++i)
        file += "Key" + std::to_string(i % 150) + "=" + std::to_string(i) + "\r\n\r\n";
    EXPECT_EQ(Text(file).leerclave("A", "kEY149"), "149");
    const Text bad(file + "bad\r\nlast=1\r\n");
    EXPECT_EQ(bad.leerclave("a", "key7"), "7");
    EXPECT_THROW(bad.leerclave("a", "last"), InvalidArgument);
    EXPECT_THROW(bad.leerclave("a", "none"), InvalidArgument);
}

TEST(Escribirclave, LeavesExactlyTheseBytes) {
    const struct {
        const char* what;
        std::string file, section, key, value, result;
    } cases[] = {
        {"replaces, spelled as the caller does", "[A]\r\nX = 1\r\nx=2\r\n[b]\r\n", "a", "X", "9",
         "[A]\r\nX = 1\r\nX=9\r\n[b]\r\n"},
        {"drops the blank lines up to the key", "\n[a]\n\nw=0\n\nx=1\n\ny=2\n[b]\n\n", "a", "x", "3",
         "\r\n[a]\r\nw=0\r\nx=3\r\n\r\ny=2\r\n[b]\r\n\r\n"},
        {"a new key of a middle section", "[a]\n\nx=1\n\n[b]\ny=2", "a", "z", "3",
         "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n"},
        {"a new key of the last section is appended", "[a]\n\nx=1\n\n", "a", "z", "3", "[a]\n\nx=1\n\nz=3\r\n"},
        {"an open last line is ended first", "[a]\nx=1", "a", "z", "3", "[a]\nx=1\r\nz=3\r\n"},
        {"the next header is the last line", "[a]\nx=1\n[b]\n", "a", "z", "3", "[a]\nx=1\n[b]\nz=3\r\n"},
        {"the next header is the open last line", "[a]\n\n[b]", "a", "z", "3", "[a]\n\n[b]\r\nz=3\r\n"},
        {"a blank line after that header", "[a]\nx=1\n[b]\n\n", "a", "z", "3", "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\n\r\n"},
        {"a missing section", "[a]\nx=1\n", "c", "z", "3", "[a]\nx=1\n\r\r\n[c]\r\nz=3\r\n"},
        {"a missing section after an open line", "[a]\nx=1", "c", "z", "3", "[a]\nx=1\r\r\n[c]\r\nz=3\r\n"},
        {"an empty file", "", "c", "z", "3", "\r\r\n[c]\r\nz=3\r\n"},
        {"both sections of the name", "[a]\n\nx=1\n[b]\n[a]\n\nx=2\n", "a", "x", "3",
         "[a]\r\nx=3\r\n[b]\r\n[a]\r\nx=3\r\n"},
        {"found in the first, missing in the second", "[a]\nx=1\n[A]\n\ny=2\n\n", "a", "x", "3",
         "[a]\r\nx=3\r\n[A]\r\ny=2\r\n"},
        {"found in the first, missing before the last header", "[a]\nx=1\n[a]\ny=2\n[b]\n", "a", "x", "3",
         "[a]\r\nx=3\r\n[a]\r\ny=2\r\nx=3\r\n\r\n[b]\r\n"},
        {"a namesake right after is not searched", "[a]\ny=1\n[a]\n\nx=2\n", "a", "x", "3",
         "[a]\r\ny=1\r\nx=3\r\n\r\n[a]\r\n\r\nx=2\r\n"},
        {"missing in both: the end of the file alone", "[a]\n[b]\n\nq=1\n[a]\ny=2\n", "a", "x", "3",
         "[a]\n[b]\n\nq=1\n[a]\ny=2\nx=3\r\n"},
        {"a short header that ends the section", "[a]\ny=1\n[\nq\n", "a", "x", "3",
         "[a]\r\ny=1\r\nx=3\r\n\r\n[\r\nq\r\n"},
        {"a UTF-8 file", "\xEF\xBB\xBF[\xC3\x91]\nx=\xFF\n[b]\n\n", "ñ", "Ω", "中",
         "\xEF\xBB\xBF[\xC3\x91]\r\nx=\xFF\r\n\xCE\xA9=\xE4\xB8\xAD\r\n\r\n[b]\r\n\r\n"},
        {"Windows-1252", "[\xD1]\n\x81=\xF1\n[b]\n\n", "ñ", "é", "€\u0081",
         "[\xD1]\r\n\x81=\xF1\r\n\xE9=\x80\x81\r\n\r\n[b]\r\n\r\n"},
        {"a key that looks like a header", "[a]\nx=1\n[b]\n\n", "a", "[q", "3",
         "[a]\r\nx=1\r\n[q=3\r\n\r\n[b]\r\n\r\n"},
    };
    for (const auto& c : cases) {
        Text text(c.file);
        text.escribirclave(c.section, c.key, c.value);
        EXPECT_EQ(text.bytes(), c.result) << c.what;
    }
}

TEST(Escribirclave, RefusesAndChangesNothing) {
    const struct {
        std::string file, section, key, value, error;
    } cases[] = {
        {"[a]\nbad\nx=1\n", "a", "x", "3", "argument"},
        {"[a]\nx=1\nbad\n[b]\n", "a", "x", "3", ""},
        {"[a]\nx=1\n[a]\nbad\n", "a", "x", "3", "argument"},
        {"[\n[a]\nx=1\n", "a", "x", "3", "overflow"},
        {"[a]\nx=1\n[b]\n[\n", "a", "x", "3", "overflow"},
        {"[a]\nx=1\n[\n", "c", "x", "3", "overflow"},
        {"[a]\nx=1\n", "a", "x", "3\n", "argument"},
        {"[a]\nx=1\n", "a", "x\r", "3", "argument"},
        {"[a]\nx=1\n", "a\n", "x", "3", "argument"},
        {"[a]\nx=1\n", "a", "x", "Ω", "refused"},
        {"[a]\nx=1\n", "Ω", "x", "1", "refused"},
        {"[a]\nx=1\n", "c", "Ω", "1", "refused"},
    };
    for (const auto& c : cases) {
        Text text(c.file);
        EXPECT_EQ(outcome([&] { text.escribirclave(c.section, c.key, c.value); }), c.error)
            << testing::PrintToString(c.file);
        EXPECT_EQ(text.bytes() == c.file, !c.error.empty()) << testing::PrintToString(c.file);
    }
}

TEST(Asegurarseccion, AppendsWhatIsMissing) {
    const struct {
        std::string file, result;
    } cases[] = {
        {"[b]\n\n[SECTION-\nx", "[b]\n\n[SECTION-\nx"},
        {"", "\r\r\n[Section]\r\n"},
        {"x\n", "x\n\r\r\n[Section]\r\n"},
        {"x\r", "x\r\r\r\n[Section]\r\n"},
        {"x", "x\r\r\n[Section]\r\n"},
    };
    for (const auto& c : cases) {
        Text text(c.file);
        text.asegurarseccion("Section");
        EXPECT_EQ(text.bytes(), c.result);
        EXPECT_EQ(text.lineaseccion("section"), Text(c.result).lineaseccion("section"));
    }
    EXPECT_THROW(Text("[\n").asegurarseccion("a"), Overflow);
    EXPECT_THROW(Text("").asegurarseccion("a\n"), InvalidArgument);
}

TEST(Borrarseccion, DropsTheFirstSectionOfTheName) {
    const struct {
        std::string file, section, result;
        bool found;
    } cases[] = {
        {"p\n[a]\nx=1\n\n[b]\n\ny\n", "A", "p\r\n[b]\r\n\r\ny\r\n", true},
        {"p\n[a]\nx=1\n[b]\ny\n", "b", "p\r\n[a]\r\nx=1\r\n", true},
        {"[a]\nx=1\n[A]\ny\n", "a", "[A]\r\ny\r\n", true},
        {"[a]\n[\n", "a", "[\r\n", true},
        {"[a]\nx", "a", "", true},
        {"[a]\nx\r\r\n\n[b]", "c", "[a]\nx\r\r\n\n[b]", false},
    };
    for (const auto& c : cases) {
        Text text(c.file);
        EXPECT_EQ(text.borrarseccion(c.section), c.found);
        EXPECT_EQ(text.bytes(), c.result);
    }
    EXPECT_THROW(Text("[a]\n[\n").borrarseccion("c"), Overflow);
}

TEST(Reemplazarlinea, ReplacesEveryEqualLine) {
    const struct {
        std::string file, old_line, new_line, result;
        int last;
    } cases[] = {
        {"[G1]\nx\n[g1]\nX", "[g1]", "[G0]", "[G0]\r\nx\r\n[G0]\r\nX\r\n", 3},
        {"[G1]\nx\n[g1]\nX", "x", "", "[G1]\r\n\r\n[g1]\r\n\r\n", 4},
        {"[G1]\nx\n[G1-\n", "[G1]", "y", "y\r\nx\r\n[G1-\r\n", 1},
        {"a\r\r\n\n", "", "[b]", "a\r\n[b]\r\n", 2},
        {"[\n[]\n", "[", "[c]", "[c]\r\n[]\r\n", 1},
        {"\xD1\n", "ñ", "€", "\x80\r\n", 1},
        {"a\r\r\nb", "c", "d", "a\r\nb\r\n", 0},
        {"a\r\r\nb", "Ω", "Ω", "a\r\nb\r\n", 0},
    };
    for (const auto& c : cases) {
        Text text(c.file);
        EXPECT_EQ(text.reemplazarlinea(c.old_line, c.new_line), c.last);
        EXPECT_EQ(text.bytes(), c.result);
    }
    Text marked("first\n[\xC3\xB1]\nx=1\n");
    EXPECT_EQ(marked.reemplazarlinea("FIRST", "ï»¿"), 1);
    EXPECT_EQ(marked.leerclave("ñ", "x"), "1") << "the new line is the UTF-8 mark to whoever reads the file next";
    EXPECT_THROW(Text("a\n").reemplazarlinea("a", "Ω"), RewriteRefused);
    EXPECT_THROW(Text("a\n").reemplazarlinea("a", "b\r"), InvalidArgument);
}

TEST(Text, ListsSectionsAndKeys) {
    const Text text("x\n[General]\nn=3\n\nM = a=b \n[\xD1\x81\n[]\n[general]\nz=1");
    EXPECT_EQ(text.listasecciones(), (std::vector<std::string>{"General", "Ñ", "", "general"}));
    EXPECT_EQ(text.claves("GENERAL"), (std::vector<std::pair<std::string, std::string>>{{"n", "3"}, {"M ", "a=b"}}));
    EXPECT_TRUE(text.claves("none").empty());
    EXPECT_THROW(Text("[a]\nx=1\nbad").claves("a"), InvalidArgument);
    EXPECT_THROW(Text("[a]\n[").listasecciones(), Overflow);
}

TEST(Text, TurnsIntoUtf8ToHoldAnyCharacter) {
    Text text("[\xD1]\r\n\x81=\xF1\r\n");
    EXPECT_FALSE(text.is_utf8());
    text.use_utf8();
    text.escribirclave("Ñ", "Ω", "中");
    EXPECT_TRUE(text.is_utf8());
    EXPECT_EQ(text.bytes(), "\xEF\xBB\xBF[\xC3\x91]\r\n\xC2\x81=\xC3\xB1\r\n\xCE\xA9=\xE4\xB8\xAD\r\n");
    EXPECT_EQ(Text(text.bytes()).leerclave("ñ", "ω"), "中");
}

/// Random files and edits over few names, so that they meet. Everything in Windows-1252.
class Chaos {
public:
    explicit Chaos(unsigned seed) : random_(seed) {}

    std::string name() { return one_of({"a", "A", "b", "\xF1", "\xD1", "", "a ", "]"}); }
    std::string key_line() { return name() + one_of({"=", "= ", "=1", "=[a]", " =x "}); }
    std::string line() {
        switch (number(7)) {
            case 0:
                return "";
            case 1:
                return number(30) == 0 ? "[" : number(30) == 0 ? "bad" : "[" + name();
            case 2:
            case 3:
                return "[" + name() + "]";
            default:
                return key_line();
        }
    }
    std::string end() { return one_of({"\r\n", "\r\n", "\n", "\r", "\r\r\n", "\r\r", "\r\r\r\n"}); }
    std::string file() {
        std::string bytes;
        const bool long_sections = number(50) == 0;
        for (int i = number(long_sections ? 200 : 14); i > 0; --i)
            bytes += (long_sections && number(60) > 0 ? std::to_string(number(100)) + key_line() : line()) + end();
        return number(3) == 0 ? bytes + line() : bytes;
    }
    std::string value() { return one_of({"", "1", " 2 ", "[a]", "a=b", "\x81"}); }
    int number(int below) { return static_cast<int>(random_() % static_cast<unsigned>(below)); }

private:
    std::string one_of(std::vector<std::string> choices) {
        return choices[static_cast<std::size_t>(number(static_cast<int>(choices.size())))];
    }
    std::mt19937 random_;
};

Edit random_edit(Chaos& chaos) {
    Edit e{chaos.number(10), chaos.name(), chaos.name(), chaos.value()};
    if (e.operation == 2) {
        e.b = chaos.line();
        e.c = chaos.line();
    }
    return e;
}

TEST(Text, RandomEditsInOneBatchEqualSingleOperations) {
    Chaos chaos(20240229);
    for (int round = 0; round < 5000; ++round) {
        const std::string start = chaos.file();
        std::string expected = start;
        std::string single = start;
        Text batch(start);
        std::vector<Edit> done;
        for (int i = chaos.number(8); i >= 0; --i) {
            const Edit e = done.emplace_back(random_edit(chaos));
            const std::string result = perform(expected, e);
            Text one(single);
            const bool same_results = perform(one, e) == result && perform(batch, e) == result;
            single = one.bytes();
            if (same_results && single == expected && batch.bytes() == expected)
                continue;
            std::string edits;
            for (const Edit& d : done)
                edits += "\n" + std::to_string(d.operation) + testing::PrintToString(std::vector{d.a, d.b, d.c});
            FAIL() << testing::PrintToString(start) << edits << "\nwanted " << result << " "
                   << testing::PrintToString(expected) << "\nsingle " << testing::PrintToString(single) << "\nbatch "
                   << testing::PrintToString(batch.bytes());
        }
    }
}

TEST(Files, EveryOperationReportsAMissingFile) {
    const Folder folder;
    std::vector<std::string> sections;
    const fs::path file = folder.file();
    EXPECT_THROW(confreg::leerclave(file, "a", "x"), FileNotFound);
    EXPECT_THROW(confreg::escribirclave(file, "a", "x", "1", folder.site()), FileNotFound);
    EXPECT_THROW(confreg::asegurarseccion(file, "a", folder.site()), FileNotFound);
    EXPECT_THROW(confreg::lineaseccion(file, "a"), FileNotFound);
    EXPECT_THROW(confreg::listasecciones(file, sections), FileNotFound);
    EXPECT_THROW(confreg::borrarseccion(file, "a", folder.site()), FileNotFound);
    EXPECT_THROW(confreg::reemplazarlinea(file, "a", "b", folder.site()), FileNotFound);
    EXPECT_THROW(confreg::Watched(file).text(), FileNotFound);
    EXPECT_FALSE(fs::exists(file));
}

TEST(Files, EveryOperationActsOnTheFile) {
    const Folder folder;
    const fs::path file = folder.file();
    folder.write("[G1]\nx=1\n[G2]\n\nx=2\n");
    std::vector<std::string> sections;
    EXPECT_EQ(confreg::listasecciones(file, sections), 2);
    EXPECT_EQ(sections, (std::vector<std::string>{"G1", "G2"}));
    EXPECT_EQ(confreg::lineaseccion(file, "g2"), 3);
    EXPECT_EQ(confreg::leerclave(file, "g2", "X"), "2");
    EXPECT_TRUE(confreg::borrarseccion(file, "g1", folder.site()));
    EXPECT_EQ(confreg::reemplazarlinea(file, "[g2]", "[G1]", folder.site()), 1);
    confreg::asegurarseccion(file, "b", folder.site());
    confreg::escribirclave(file, "b", "y", "3", folder.site());
    EXPECT_EQ(folder.bytes(), "[G1]\r\n\r\nx=2\r\n\r\r\n[b]\r\ny=3\r\n");
    EXPECT_FALSE(folder.has_temporary());

    folder.write("no headers");
    EXPECT_EQ(confreg::listasecciones(file, sections), 0);
    EXPECT_EQ(sections.size(), 2u) << "left untouched";
}

TEST(Files, ErrorsNameTheFile) {
    const Folder folder;
    folder.write("[a]\nbad\n");
    try {
        confreg::leerclave(folder.file(), "a", "x");
        FAIL();
    } catch (const InvalidArgument& e) {
        EXPECT_EQ(std::string(e.what()), folder.file().string() + ": line 2, \"bad\", in section [a] has no \"=\"");
    }
}

TEST(Files, NumbersAbove16BitsOverflowAndNothingIsWritten) {
    const Folder folder;
    std::string file;
    for (int i = 1; i <= 32767; ++i)
        file += "[" + std::to_string(i) + "]\n";
    folder.write(file);
    std::vector<std::string> sections;
    EXPECT_EQ(confreg::listasecciones(folder.file(), sections), 32767);
    EXPECT_EQ(confreg::lineaseccion(folder.file(), "32767"), 32767);
    EXPECT_EQ(confreg::reemplazarlinea(folder.file(), "[32767]", "[x]", folder.site()), 32767);

    file += "[last]\n";
    folder.write(file);
    EXPECT_THROW(confreg::listasecciones(folder.file(), sections), Overflow);
    EXPECT_THROW(confreg::lineaseccion(folder.file(), "last"), Overflow);
    EXPECT_EQ(confreg::read(folder.file()).lineaseccion("last"), 32768) << "edits in memory know no such limit";
    EXPECT_THROW(confreg::reemplazarlinea(folder.file(), "[last]", "[x]", folder.site()), Overflow);
    EXPECT_EQ(folder.bytes(), file);
    EXPECT_EQ(confreg::reemplazarlinea(folder.file(), "[1]", "[x]", folder.site()), 1);
    EXPECT_TRUE(confreg::borrarseccion(folder.file(), "last", folder.site()));
}

TEST(Files, AnEditIsOneRewriteAndNoneWhenNothingChanged) {
    const Folder folder;
    folder.write("[a]\r\nx=1\r\n");
    confreg::edit(folder.file(), folder.site(), [](Text& text) {
        text.escribirclave("b", "y", "2");
        text.borrarseccion("a");
    });
    EXPECT_EQ(folder.bytes(), "[b]\r\ny=2\r\n");

    // With a rewrite under way elsewhere, only an edit without changes succeeds.
    std::ofstream(folder.site().temporary()) << "x";
    confreg::escribirclave(folder.file(), "b", "y", "2", folder.site());
    EXPECT_THROW(confreg::escribirclave(folder.file(), "b", "y", "3", folder.site()), RewriteRefused);
    EXPECT_EQ(folder.bytes(), "[b]\r\ny=2\r\n");
    EXPECT_TRUE(folder.has_temporary());
}

TEST(Watched, ReadsAgainWhatChanged) {
    const Folder folder;
    folder.write("[a]\r\nx=1\r\n");
    confreg::Watched watched(folder.file());
    EXPECT_EQ(watched.text().leerclave("a", "x"), "1");
    const auto tick = fs::last_write_time(folder.file());
    folder.write("[a]\r\nx=2\r\n");            // the same size
    fs::last_write_time(folder.file(), tick);  // and within one tick of the file's clock
    EXPECT_EQ(watched.text().leerclave("a", "x"), "2");

    const auto long_ago = fs::file_time_type::clock::now() - std::chrono::hours(1);
    fs::last_write_time(folder.file(), long_ago);
    const Text* const second = &watched.text();
    EXPECT_EQ(&watched.text(), second) << "an unchanged file is not read again";
    watched.invalidate();
    fs::last_write_time(folder.file(), long_ago);
    EXPECT_EQ(watched.text().leerclave("a", "x"), "2");

    // Another file of the same size and time in its place.
    std::ofstream(folder.site().temporary(), std::ios::binary) << "[a]\r\nx=3\r\n";
    fs::last_write_time(folder.site().temporary(), long_ago);
    fs::rename(folder.site().temporary(), folder.file());
    EXPECT_EQ(watched.text().leerclave("a", "x"), "3");
}

TEST(Idiomas, LanguagesAndTexts) {
    const Text table("[Idioma]\r\nidioma=ESPA\xD1OL\r\n\r\n[Espa\xF1ol]\r\n1=&Archivo\r\n\r\n[English]\r\n1=&File\r\n");
    EXPECT_EQ(idiomas::languages(table), (std::vector<std::string>{"Español", "English"}));
    EXPECT_TRUE(idiomas::same_language(idiomas::active(table), "español"));
    EXPECT_EQ(idiomas::text(table, idiomas::active(table), 1), "&Archivo");
    EXPECT_EQ(idiomas::text(table, "english", 1), "&File");
    EXPECT_EQ(idiomas::text(table, "english", 2), "");
    EXPECT_EQ(idiomas::text(table, "Klingon", 1), "");
}

}  // namespace

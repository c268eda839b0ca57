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

// The model is held to the same table: it is what random edits are compared with further below.
TEST(Text, OperationsGiveExactlyTheseResultsAndBytes) {
    using enum model::Operation;
    const std::string same = "(the same)", bom = "\xEF\xBB\xBF";
    const std::string reading =
        "stray\n[General]\n\nn=3\nM = spaced \neq=a=b\nN=4\nCa\xF1o=\xC1rbol\n\n[other]\nk= \t1  2 \t "
        "\n[GENERAL]\nlater=1\n"
        "[last-\nempty=\n[\xF1\xF1\nx=y";
    const struct {
        Edit edit;
        std::string file, outcome, bytes;
    } rows[] = {
        {{LEER, "general", "N"}, reading, "/3", same},  // of two keys the first
        {{LEER, "General", "M"}, reading, "/", same},
        {{LEER, "General", "m "}, reading, "/spaced", same},
        {{LEER, "GENERAL", "eq"}, reading, "/a=b", same},
        {{LEER, "general", "CA\xD1O"}, reading, "/Árbol", same},
        {{LEER, "general", "later"}, reading, "/", same},  // in a later section of the name
        {{LEER, "other", "k"}, reading, "/\t1  2 \t", same},
        {{LEER, "last", "empty"}, reading, "/", same},
        {{LEER, "last-", "empty"}, reading, "/", same},
        {{LEER, "\xD1", "x"}, reading, "/y", same},
        {{LEER, "missing", "x"}, reading, "/", same},
        {{LEER, "", "stray"}, reading, "/", same},
        {{LEER, "a", "x"}, "[a]\nx=1\nbad\n", "/1", same},  // errors are met in the order of reading
        {{LEER, "a", "x"}, "[a]\nbad\nx=1\n", "argument/", same},
        {{LEER, "a", "x"}, "[a]\n \nx=1\n", "argument/", same},
        {{LEER, "a", "x"}, "bad\n[b]\nbad\n[a]\nx=1\n", "/1", same},
        {{LEER, "a", "x"}, "[\n[a]\nx=1\n", "overflow/", same},
        {{LEER, "a", "y"}, "[a]\nx=1\n[\n", "/", same},
        {{LEER, "b", "y"}, "[a]\nx=1\n[\n", "overflow/", same},
        {{LINEA, "C"}, "[a]\r\r\r\nx=1\r\r[b]\n\n\r\n[c]", "/7", same},
        {{LINEA, "c"}, "[\n", "overflow/", same},
        {{ASEGURAR, "Section"}, "[b]\n\n[SECTION-\nx", "/", same},
        {{ASEGURAR, "Section"}, "x", "/", "x\r\r\n[Section]\r\n"},
        {{ASEGURAR, "Section"}, "[\n", "overflow/", same},
        {{ASEGURAR, "a\n"}, "", "argument/", same},
        {{ESCRIBIR, "a", "X", "9"}, "[A]\r\nX = 1\r\nx=2\r\n[b]\r\n", "/", "[A]\r\nX = 1\r\nX=9\r\n[b]\r\n"},
        {{ESCRIBIR, "a", "x", "3"},
         "\n[a]\n\nw=0\n\nx=1\n\ny=2\n[b]\n",
         "/",  // drops the blank lines up to the key
         "\r\n[a]\r\nw=0\r\nx=3\r\n\r\ny=2\r\n[b]\r\n"},
        {{ESCRIBIR, "a", "z", "3"}, "[a]\n\nx=1\n\n[b]\ny=2", "/", "[a]\r\nx=1\r\nz=3\r\n\r\n[b]\r\ny=2\r\n"},
        {{ESCRIBIR, "a", "z", "3"}, "[a]\n\nx=1\n\n", "/", "[a]\n\nx=1\n\nz=3\r\n"},    // appended
        {{ESCRIBIR, "a", "z", "3"}, "[a]\nx=1\n[b]\n", "/", "[a]\nx=1\n[b]\nz=3\r\n"},  // a header as the last line
        {{ESCRIBIR, "a", "z", "3"}, "[a]\n\n[b]", "/", "[a]\n\n[b]\r\nz=3\r\n"},
        {{ESCRIBIR, "c", "z", "3"}, "[a]\nx=1", "/", "[a]\nx=1\r\r\n[c]\r\nz=3\r\n"},
        {{ESCRIBIR, "c", "z", "3"}, "", "/", "\r\r\n[c]\r\nz=3\r\n"},
        {{ESCRIBIR, "a", "x", "3"}, "[a]\n\nx=1\n[b]\n[a]\n\nx=2\n", "/", "[a]\r\nx=3\r\n[b]\r\n[a]\r\nx=3\r\n"},
        {{ESCRIBIR, "a", "x", "3"}, "[a]\ny=1\n[a]\n\nx=2\n", "/", "[a]\r\ny=1\r\nx=3\r\n\r\n[a]\r\n\r\nx=2\r\n"},
        {{ESCRIBIR, "a", "[q", "3"}, "[a]\nx=1\n[b]\n\n", "/", "[a]\r\nx=1\r\n[q=3\r\n\r\n[b]\r\n\r\n"},
        {{ESCRIBIR, "ñ", "Ω", "中"},
         bom + "[\xC3\x91]\nx=\xFF\n[b]\n\n",
         "/",
         bom + "[\xC3\x91]\r\nx=\xFF\r\n\xCE\xA9=\xE4\xB8\xAD\r\n\r\n[b]\r\n\r\n"},
        {{ESCRIBIR, "\xF1", "\xE9", "\x80\x81"},
         "[\xD1]\n\x81=\xF1\n[b]\n\n",
         "/",
         "[\xD1]\r\n\x81=\xF1\r\n\xE9=\x80\x81\r\n\r\n[b]\r\n\r\n"},
        {{ESCRIBIR, "a", "x", "3"}, "[a]\nx=1\n[a]\nbad\n", "argument/", same},
        {{ESCRIBIR, "a", "x", "3"}, "[a]\nx=1\n[b]\n[\n", "overflow/", same},
        {{ESCRIBIR, "a", "x", "3\n"}, "[a]\nx=1\n", "argument/", same},
        {{ESCRIBIR, "a", "x\r", "3"}, "[a]\nx=1\n", "argument/", same},
        {{BORRAR, "A"}, "p\n[a]\nx=1\n\n[b]\n\ny\n", "/1", "p\r\n[b]\r\n\r\ny\r\n"},
        {{BORRAR, "b"}, "p\n[a]\nx=1\n[b]\ny\n", "/1", "p\r\n[a]\r\nx=1\r\n"},
        {{BORRAR, "a"}, "[a]\nx=1\n[A]\ny\n", "/1", "[A]\r\ny\r\n"},
        {{BORRAR, "c"}, "[a]\nx\r\r\n\n[b]", "/0", same},
        {{BORRAR, "c"}, "[a]\n[\n", "overflow/", same},
        {{REEMPLAZAR, "", "[g1]", "[G0]"}, "[G1]\nx\n[g1]\nX", "/3", "[G0]\r\nx\r\n[G0]\r\nX\r\n"},
        {{REEMPLAZAR, "", "", "[b]"}, "a\r\r\n\n", "/2", "a\r\n[b]\r\n"},
        {{REEMPLAZAR, "", "\xF1", "\x80"}, "\xD1\n", "/1", "\x80\r\n"},
        {{REEMPLAZAR, "", "c", "d"}, "a\r\r\nb", "/0", "a\r\nb\r\n"},
        {{REEMPLAZAR, "", "a", "b\r"}, "a\n", "argument/", same},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::PrintToString(std::vector{row.file, row.edit.a, row.edit.b, row.edit.c}));
        const std::string& expected = row.bytes == same ? row.file : row.bytes;
        Text text(row.file);
        EXPECT_EQ(perform(text, row.edit), row.outcome);
        EXPECT_EQ(text.bytes(), expected);
        if (text.is_utf8())
            continue;
        std::string literal = row.file;
        EXPECT_EQ(perform(literal, row.edit), row.outcome);
        EXPECT_EQ(literal, expected);
    }
}

TEST(Text, ALongSectionReadsLikeAShortOne) {
    std::string file = "[a]\r\n";
    for (int i = 0; i < 200; ++i)
        file += "Key" + std::to_string(i % 150) + "=" + std::to_string(i) + "\r\n\r\n";
    const Text bad(file + "bad\r\nlast=1\r\n");
    for (int search = 0; search < 2; ++search)  // line by line, then by the index
        EXPECT_EQ(bad.leerclave("A", "kEY7"), "7");
    EXPECT_THROW(bad.leerclave("a", "last"), InvalidArgument);
    EXPECT_THROW(bad.leerclave("a", "none"), InvalidArgument);
}

TEST(Text, FindsTheKeysOfALongSectionThatWasEdited) {
    std::string file = "[a]\r\n\r\n\r\n";
    for (int i = 0; i < 100; ++i)
        file += "k" + std::to_string(i) + "=" + std::to_string(i) + "\r\n";
    Text text(file + "[b]\r\nx=1\r\n");
    for (int search = 0; search < 2; ++search)
        EXPECT_EQ(text.leerclave("a", "k5"), "5");
    text.escribirclave("a", "new", "N");  // two blank lines go, the key and the blank line behind it come
    EXPECT_EQ(text.leerclave("a", "k5"), "5");
    EXPECT_EQ(text.leerclave("a", "new"), "N");
}

TEST(Text, KnowsNoNameThatItsEncodingCannotHold) {
    const std::string file = "[a]\nx=1\n";
    Text text(file);
    EXPECT_EQ(text.leerclave("a", "Ω") + text.leerclave("Ω", "x"), "");
    EXPECT_EQ(text.leerclave("a", "x\r\ny=2"), "");
    EXPECT_THROW(Text("[a]\nbad\n").leerclave("a", "Ω"), InvalidArgument);
    EXPECT_THROW(Text("[a]\nx=1\n[\n").leerclave("Ω", "y"), Overflow);
    EXPECT_EQ(Text("\xEF\xBB\xBF[\xC3\xB1\n").leerclave("", "y"), "");
    EXPECT_THROW(text.escribirclave("a", "x", "Ω"), RewriteRefused);
    EXPECT_THROW(text.escribirclave("Ω", "x", "1"), RewriteRefused);
    EXPECT_THROW(text.escribirclave("c", "Ω", "1"), RewriteRefused);
    EXPECT_THROW(text.reemplazarlinea("x=1", "Ω"), RewriteRefused);
    EXPECT_EQ(text.bytes(), file);
    EXPECT_EQ(text.reemplazarlinea("Ω", "Ω"), 0);

    Text marked("first\n[\xC3\xB1]\nx=1\n");
    EXPECT_EQ(marked.reemplazarlinea("FIRST", "ï»¿"), 1);
    EXPECT_EQ(marked.leerclave("ñ", "x"), "1") << "the new line is the UTF-8 mark to whoever reads the file next";
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

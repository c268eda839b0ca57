// The sample holds nested contents, an index with two pages for one word, accents, anchors, a style sheet, a picture.

#include "shell/chm/chm_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "shell/chm/sitemap.h"
#include "shell/chm/system_record.h"

using namespace tavo::chm;

namespace {

std::string sample() {
    std::ifstream file(TAVO_SAMPLE_CHM, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string outline(const std::vector<Topic>& topics) {
    std::string text;
    for (const Topic& topic : topics)
        text += topic.title + "=" + topic.page + "(" + outline(topic.topics) + ")";
    return text;
}

std::string outline(const std::vector<Keyword>& index) {
    std::string text;
    for (const Keyword& keyword : index)
        text += keyword.word + ":" + outline(keyword.pages) + ";";
    return text;
}

void replace(std::string& bytes, std::string_view from, std::string_view to) {
    const std::size_t place = bytes.find(from);
    ASSERT_NE(place, std::string::npos) << from;
    bytes.replace(place, from.size(), to);
}

constexpr std::string_view CONTENTS =
    "Inicio: gases & vapores=/inicio.html()"
    "Modelos=(Gas ideal=/modelos/modelo0.html()"
    "Van der Waals=/modelos/modelo1.html(\u00BFCu\u00E1ndo falla?=/modelos/modelo1.html#validez()))";

}  // namespace

TEST(ChmFile, ReadsTheSample) {
    const ChmFile file = ChmFile::open(TAVO_SAMPLE_CHM);
    EXPECT_EQ(file.title(), "Ayuda de prueba: presi\u00F3n");
    EXPECT_EQ(file.default_page(), "/inicio.html");
    EXPECT_EQ(outline(file.contents()), CONTENTS);
    EXPECT_EQ(outline(file.index()),
              "ecuaci\u00F3n de estado:Inicio: gases & vapores=/inicio.html();"
              "gas:Gas ideal=/modelos/modelo0.html()Van der Waals=/modelos/modelo1.html();"
              "gas, real:Inicio: gases & vapores=/inicio.html();"
              "presi\u00F3n:Van der Waals=/modelos/modelo1.html#validez();");
    EXPECT_EQ(file.pages(), (std::vector<std::string>{"/inicio.html", "/modelos/modelo0.html", "/modelos/modelo1.html",
                                                      "/suelta.htm"}));
    EXPECT_EQ(plain_text(decode_page(*file.read("/modelos/modelo1.html"))),
              "VAN DER WAALS Presi\u00F3n y volumen Validez \u00BFCu\u00E1ndo falla? Inicio");
    EXPECT_TRUE(file.read("punto.png")->ends_with("IEND\xAE\x42\x60\x82"));
    EXPECT_EQ(file.read("/modelos/modelo0.html")->size(), 130955u);
    EXPECT_FALSE(file.read("/falta.html"));
}

TEST(ChmFile, FindsEntriesHoweverTheyAreNamed) {
    const ChmFile file(sample());
    struct Case {
        const char *name, *found;
    };
    const Case cases[]{{"inicio.html", "/inicio.html"},
                       {"/MODELOS/Modelo1.HTML", "/modelos/modelo1.html"},
                       {"modelos\\..\\.\\inicio.html", "/inicio.html"},
                       {"../../inicio.html", "/inicio.html"},
                       {"modelos/modelo%31.html", "/modelos/modelo1.html"},
                       {"mk:@MSITStore:x.chm::/inicio.html", "/inicio.html"},
                       {"/#SYSTEM", "/#SYSTEM"},
                       {"", nullptr},
                       {"/", nullptr},
                       {"modelos/", nullptr},
                       {"%", nullptr},
                       {"http://x/inicio.html", nullptr},
                       {"inicio.html#a", nullptr}};
    for (const Case& c : cases)
        EXPECT_EQ(file.find(c.name), c.found != nullptr ? std::optional<std::string>(c.found) : std::nullopt) << c.name;
}

TEST(ChmFile, TakesTheIdentifierThatSomeCompilersWriteTwice) {
    std::string bytes = sample();
    ASSERT_EQ(bytes[0x28], 0x11);
    bytes[0x28] = 0x10;
    EXPECT_EQ(outline(ChmFile(bytes).contents()), CONTENTS);
}

TEST(ChmFile, DoesWithoutTheSystemRecord) {
    std::string bytes = sample();
    replace(bytes, "#SYSTEM", "#SYSTEN");
    const ChmFile file(bytes);
    EXPECT_EQ(file.title(), "");
    EXPECT_EQ(file.default_page(), "/inicio.html");
    EXPECT_EQ(outline(file.contents()), CONTENTS);
    EXPECT_EQ(file.index().size(), 4u);
}

TEST(ChmFile, RefusesWhatIsNoHelpOrBeyondTheLimits) {
    const std::string bytes = sample();
    EXPECT_THROW(ChmFile(""), DamagedHelp);
    EXPECT_THROW(ChmFile(std::string(100000, '\xFF')), DamagedHelp);
    for (std::size_t size = 0; size < 0x150; ++size)
        EXPECT_THROW(ChmFile(bytes.substr(0, size)), DamagedHelp) << size;
    Limits limits;
    limits.file = bytes.size() - 1;
    EXPECT_THROW(ChmFile(bytes, limits), DamagedHelp);
    EXPECT_THROW(ChmFile::open(TAVO_SAMPLE_CHM, limits), DamagedHelp);
    limits = {};
    limits.entries = 5;
    EXPECT_THROW(ChmFile(bytes, limits), DamagedHelp);
    limits = {};
    limits.total = 140000;
    EXPECT_THROW(ChmFile(bytes, limits), DamagedHelp);
    EXPECT_THROW(ChmFile::open("falta.chm"), tavo::FileNotFound);
    EXPECT_THROW(ChmFile::open("."), DamagedHelp);
}

TEST(ChmFile, ALargeEntryIsRefusedAndTheOthersAreRead) {
    Limits limits;
    limits.entry = 100000;
    limits.topics = 2;
    const ChmFile file(sample(), limits);
    EXPECT_THROW(file.read("/modelos/modelo0.html"), DamagedHelp);
    EXPECT_EQ(file.read("/modelos/modelo1.html")->size(), 290u);
    EXPECT_EQ(outline(file.contents()), "Inicio: gases & vapores=/inicio.html()Modelos=()");
}

TEST(ChmFile, DamageCostsTheEntriesInIt) {
    std::string cut = sample();
    cut.resize(cut.size() - 500);
    const ChmFile beginning(cut);
    EXPECT_EQ(beginning.read("/inicio.html")->size(), 317u);
    EXPECT_THROW(beginning.read("/sample.hhc"), DamagedHelp);
    EXPECT_EQ(beginning.contents().size(), 0u);
    EXPECT_EQ(beginning.pages().size(), 4u);

    std::string holed = sample();
    holed.replace(holed.size() - 4000, 1000, 1000, '\xFF');
    const ChmFile around(holed);
    EXPECT_EQ(around.read("/inicio.html")->size(), 317u);
    EXPECT_THROW(around.read("/modelos/modelo0.html"), DamagedHelp);
    EXPECT_EQ(outline(around.contents()), CONTENTS);
}

TEST(ChmSitemap, SurvivesWhatIsNoList) {
    struct Case {
        std::string_view html, read;
    };
    const Case cases[]{
        {"<ul><li><object type=text/sitemap><param name=name value=A><param name=LOCAL value=a.htm></object>",
         "1A:a.htm;"},
        {"<UL><OBJECT><param name=Name value=A><OBJECT><param name=Name value=B></UL></UL></UL>", "1A;1B;"},
        {"<param name=Name value=A></object></object>", ""},
        {"<object type='text/site properties'><param name=Name value=A></object>", ""},
        {"<object><param name=Local value=a><param name=Name></object>", ""},
        {"<ul><ul><object><param name=Name value='&lt;A&#62;'></object></ul><object><param name=Name value=B>",
         "2<A>;1B;"},
    };
    for (const Case& c : cases) {
        std::string read;
        for (const SitemapObject& object : read_sitemap(c.html, 100)) {
            read += std::to_string(object.depth) + object.name;
            for (const SitemapPage& page : object.pages)
                read += ":" + page.local;
            read += ";";
        }
        EXPECT_EQ(read, c.read) << c.html;
    }
}

TEST(ChmSitemap, DeepListsAreFlattened) {
    std::string hhc;
    for (int i = 0; i < 100000; ++i)
        hhc += "<ul><object><param name=name value=a>";
    EXPECT_EQ(read_sitemap(hhc, 10000).size(), 10000u);
}

TEST(ChmSystemRecord, ReadsWhatIsWhole) {
    using namespace std::string_literals;
    const SystemRecord read =
        read_system_record("\3\0\0\0\x03\0\x05\0ga\xF3\0x\x09\0\0\0\x02\0\x03\0a.h\0\0\xFF\xFF hhc"s);
    EXPECT_EQ(read.title, "ga\u00F3");
    EXPECT_EQ(read.default_page, "a.h");
    EXPECT_EQ(read.contents_file, "");
}

#include "tools/help_sources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "core/encoding.h"
#include "core/errors.h"
#include "core/file_system.h"

namespace {

namespace fs = std::filesystem;
using namespace tavo;
using namespace tavo::help;

/// Problems of a page, "line: sentence" each.
std::vector<std::string> problems_of(const std::string& html) {
    Problems problems;
    read_page(html, "p.html", problems);
    std::vector<std::string> lines;
    for (const Problem& problem : problems)
        lines.push_back(problem.text().substr(std::string("p.html:").size()));
    return lines;
}

/// A page with this body, which begins on line 1.
std::string page(const std::string& body, const std::string& title = "Title", const std::string& head = "") {
    return "<html><head><title>" + title + "</title>" + head + "</head><body>" + body + "</body></html>";
}

TEST(HelpPage, FaultsAreNamedWithTheirLine) {
    struct Case {
        std::string html, problem;
    };
    const Case cases[] = {
        {page("<p>a\n<b>b</p>"), "2: <b> is not closed before </p>"},
        {page("a</i>"), "1: </i> closes nothing"},
        {"<html><head><title>t</title></head>\n<body>a", "2: <body> is not closed"},
        {page("<p>a\n<ul><li>b</li></ul></p>"), "2: <ul> inside a <p>, which browsers end before it"},
        {page("<marquee>a"), "1: <marquee> is not among the elements of the help"},
        {page("a <script>if (a < b && c) x();</script>"), "1: <script> is not among the elements of the help"},
        {page("a\n<p class=\"n\"\n"), "2: <p> is not ended by \">\""},
        {page("a<p class=n>b</p>"), "1: an attribute without quotation marks"},
        {page("a\n<p class=\"n>b</p>"), "2: a quotation mark is not closed"},
        {page("1 < 2"), "1: a bare \"<\"; write \"&lt;\""},
        {page("<p>P\n& V</p>"), "2: a bare \"&\"; write \"&amp;\""},
        {page("&eacute;"), "1: \"&eacute;\" is not used here; write the character itself"},
        {page("&#xD800;"), "1: \"&#xD800;\" is no character"},
        {page("a\n<!-- b"), "2: a comment is not closed"},
        {page("a\n\xE9"), "2: not UTF-8"},
        {page("a\x01"), "1: a control character"},
        {page("a<br><img src=\"b.png\">"), "1: a picture without words for whoever cannot see it (alt=\"...\")"},
        {page("a<img alt=\"b\" src=\"http://x.org/b.png\">"), "1: \"http://x.org/b.png\" lies outside the help"},
        {page("a<a href=\"//x.org\">b</a>"), "1: \"//x.org\" lies outside the help"},
        {page("<a>b</a>"), "1: <a> leads nowhere and names nothing"},
        {page("<p id=\"b\">a</p>\n<a name=\"b\"></a>"), "2: the anchor \"b\" is empty or there twice"},
        {page("a", "t", "\n<style>p {\nbackground: url(x.png) }</style>"),
         "3: a style that asks for another file (url()"},
        {page("<p style=\"background: url(x.png)\">a</p>"), "1: a style that asks for another file (url()"},
        {page("a", "t", "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">"),
         "1: the page says that it is not in UTF-8"},
        {page("a", " "), " the title is empty"},
        {page("<p> <br></p>"), " the page is empty"},
        {"<html><head></head><body>a</body></html>", " there is no <title>"},
        {page("a", "t", "<title>u</title>"), " there is more than one <title>"},
        {"<html><head><title>t</title></head>a<body>b</body></html>", "1: text outside <body>"},
    };
    for (const Case& c : cases) {
        const std::vector<std::string> found = problems_of(c.html);
        EXPECT_NE(std::find(found.begin(), found.end(), c.problem), found.end())
            << c.html << "\ngives \"" << (found.empty() ? "nothing" : found.front()) << "\", not \"" << c.problem
            << '"';
    }
    EXPECT_EQ(problems_of(page("<!-- < & --><p>a &amp; b &#937; &lt;<br/>c</p><h1 id=\"b\">d</h1>")),
              std::vector<std::string>());
}

TEST(HelpPage, CompilesToWindows1252WithPicturesInTheirSizes) {
    const std::string html =
        "<html><head>\n<meta charset=\"utf-8\"><title>Ñandú &amp; Ω</title></head><body>"
        "<img src=\"a.png\" alt=\"a\"><img src=\"b.png\" alt=\"b\" width=\"9\">"
        "<img src=\"c.png\" alt=\"c\">é ≈ €</body></html>";
    Problems problems;
    const Page page = read_page(html, "p.html", problems);
    EXPECT_TRUE(problems.empty());
    EXPECT_EQ(page.title, "Ñandú & Ω");
    EXPECT_EQ(compiled_page(html, page, {{"a.png", {30, 20}}, {"b.png", {50, 40}}}),
              "<html><head><meta http-equiv=\"Content-Type\" content=\"text/html; charset=windows-1252\">\n"
              "<title>\xD1"
              "and\xFA &amp; &#937;</title></head><body><img width=\"30\" height=\"20\" src=\"a.png\" "
              "alt=\"a\"><img src=\"b.png\" alt=\"b\" width=\"9\">\xE9 &#8776; \x80</body></html>");
}

/// Sources in a folder of the test's own.
class HelpSources : public testing::Test {
protected:
    HelpSources() {
        std::string pattern = (fs::temp_directory_path() / "tavo-XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        write("idioma.lng", "[idioma]\r\nidioma=Español\r\n[Español]\r\n549=es\r\n[Deutsch]\r\n549=de\r\n");
        write("help/contents.txt", "inicio\nuno\n  dos\n");
        write("help/common/estilo.css", "p { margin: 0 }\n");
        write("pictures/gas.png", png(192, 96, 7559));
        write("pictures/list", "gas.png\n");
        write("help/Español/inicio.html",
              page("<a href=\"dos.html#x\">a</a><img src=\"gas.png\" alt=\"g\">", "Inicio"));
        write("help/Español/uno.html", page("a", "Uno", "<link rel=\"stylesheet\" href=\"estilo.css\">"));
        write("help/Español/dos.html", page("<a name=\"x\"></a>b", "Dos"));
    }
    ~HelpSources() override { fs::remove_all(root_); }

    void write(const std::string& file, const std::string& text) const {
        const fs::path path = root_ / fs::path(file);
        fs::create_directories(path.parent_path());
        // The language table is in Windows-1252.
        std::ofstream(path, std::ios::binary) << (file == "idioma.lng" ? *windows1252_from_utf8(text) : text);
    }
    std::string project(const std::string& file) const { return real_file_system().read(root_ / "project" / file); }
    Help read(Problems& problems) const {
        return read_help({root_ / "help", "Español", root_ / "pictures", root_ / "idioma.lng"}, problems);
    }
    /// Header and resolution of a picture, which is all that is read of it.
    static std::string png(unsigned width, unsigned height, unsigned dots_per_metre) {
        const auto number = [](unsigned n) {
            std::string bytes;
            for (int shift = 24; shift >= 0; shift -= 8)
                bytes += static_cast<char>(static_cast<unsigned char>(n >> shift));
            return bytes;
        };
        return "\x89PNG\r\n\x1A\n" + number(13) + "IHDR" + number(width) + number(height) + std::string(9, '\0') +
               number(9) + "pHYs" + number(dots_per_metre) + number(dots_per_metre) + "\x01" + number(0) + number(0) +
               "IDAT";
    }

    fs::path root_;
};

TEST_F(HelpSources, WhatDoesNotFitTogetherIsNamed) {
    struct Case {
        std::string file, text, problem;  // no text: the file is missing
    };
    const Case cases[] = {
        {"help/contents.txt", "inicio\nuno\n  dos\ntres\n", "contents.txt:4: there is no page Español/tres.html"},
        {"help/contents.txt", "inicio\nuno\n", "Español/dos.html: the page is not in contents.txt"},
        {"help/contents.txt", "inicio\n    uno\n",
         "contents.txt:2: \"uno\" stands two blanks further in than its chapter, or as far as the page before"},
        {"help/contents.txt", "uno\n", "contents.txt:1: the first page is \"inicio\""},
        {"help/contents.txt", "inicio\ninicio\n", "contents.txt:2: \"inicio\" is there twice"},
        {"help/contents.txt", "inicio\n\n", "contents.txt:2: \"\" is no name of a page"},
        {"help/contents.txt", "", "contents.txt: there are no pages"},
        {"help/Español/dos.html", "", "contents.txt:3: there is no page Español/dos.html"},
        {"help/Español/dos.html", page("b", "Dos"),
         "Español/inicio.html:1: there is no anchor \"dos.html#x\" to lead to"},
        {"help/Español/dos.html", page("<a name=\"x\"></a><a href=\"Uno.html\">b</a>", "Dos"),
         "Español/dos.html:1: there is no page \"Uno.html\" to lead to"},
        {"help/Español/dos.html", page("<a name=\"x\"></a>b", "Uno"),
         "Español/uno.html: has the title of dos.html, \"Uno\""},
        {"help/common/estilo.css", "", "Español/uno.html:1: there is no style sheet \"estilo.css\" in common/"},
        {"pictures/gas.png", "",
         "Español/inicio.html:1: there is no picture \"gas.png\": the build draws none of this name, and neither "
         "common/ nor Español/ holds it"},
        {"pictures/gas.png", "GIF89a", "pictures/gas.png: no PNG picture"},
        {"help/common/nota.doc", "x",
         "common/nota.doc: neither a page nor a style sheet (.css) nor a picture (.png) with a plain ASCII name"},
        {"idioma.lng", "[idioma]\r\nidioma=Deutsch\r\n[Deutsch]\r\n549=de\r\n",
         "Español: the language table has no language of this name"},
    };
    Problems none;
    read(none);
    EXPECT_TRUE(none.empty()) << none.front().text();
    for (const Case& c : cases) {
        const fs::path file = root_ / fs::path(c.file), kept = root_ / "kept";
        if (fs::exists(file))
            fs::copy_file(file, kept, fs::copy_options::overwrite_existing);
        if (c.text.empty() && c.file != "help/contents.txt")
            fs::remove(file);
        else
            write(c.file, c.text);
        Problems problems;
        read(problems);
        EXPECT_TRUE(
            std::any_of(problems.begin(), problems.end(), [&](const Problem& p) { return p.text() == c.problem; }))
            << (problems.empty() ? "nothing" : problems.front().text()) << ", not " << c.problem;
        fs::remove(file);
        if (fs::exists(kept))
            fs::rename(kept, file);
    }
}

TEST_F(HelpSources, TheProjectHoldsContentsIndexAndSizes) {
    const auto keywords = [](const std::string& words) { return "<meta name=\"keywords\" content=\"" + words + "\">"; };
    write("help/Español/uno.html", page("a", "Uno & \"otro\"", keywords("ñu; nz; Árbol; agua; ")));
    write("help/Español/dos.html", page("<a name=\"x\"></a>b", "Dos", keywords("agua; o; arbolado")));
    std::string uno = real_file_system().read(root_ / "help/Español/uno.html");
    uno.replace(uno.find(" & "), 3, " &amp; ");
    write("help/Español/uno.html", uno);
    Problems problems;
    const Help help = read(problems);
    ASSERT_TRUE(problems.empty()) << problems.front().text();
    std::string order;
    for (const auto& [word, pages] : index_of(help)) {
        order += word + ":";
        for (const std::string& name : pages)
            order += name + " ";
    }
    EXPECT_EQ(order, "agua:uno dos Árbol:uno arbolado:dos nz:uno ñu:uno o:dos ");

    write_project(help, root_ / "project");
    EXPECT_NE(project("help.hhp").find("Default topic=inicio.html\r\nTitle=TAVO-GAS\r\nLanguage=0x0c0a\r\n"),
              std::string::npos);
    EXPECT_NE(project("help.hhp").find("inicio.html\r\nuno.html\r\ndos.html\r\nestilo.css\r\ngas.png\r\n"),
              std::string::npos);
    const std::string contents = project("help.hhc");
    const std::size_t uno_at = contents.find("value=\"Uno &amp; &quot;otro&quot;\"");
    const std::size_t nested = contents.find("<UL>\r\n<LI>", uno_at);
    ASSERT_NE(nested, std::string::npos);
    EXPECT_LT(nested, contents.find("value=\"dos.html\""));
    EXPECT_NE(project("help.hhk").find("value=\"\xC1rbol\""), std::string::npos);
    EXPECT_NE(project("inicio.html").find("<img width=\"96\" height=\"48\" src=\"gas.png\""), std::string::npos);
}

TEST(HelpCompiler, ItsWordsDecideAndNotItsStatus) {
    EXPECT_EQ(complaints("Note: Index items:56\nWriting CHM help.chm\nchmcmd, a CHM compiler. (c) 2010-2019\n"),
              std::vector<std::string>());
    // What chmcmd 3.2.2 says of projects that lack something.
    const std::vector<std::string> said{
        "Error: Can't find TOC file /build/help.hhc",
        "Warning: Found file nada.png while scanning inicio.html, but couldn't find it on disk",
        "Warning: File uno.html does not exist",
        "An unhandled exception occurred at $0000000000416AC9:",
        "EFOpenError: Unable to open file \"/build/uno.html\": No such file or directory",
    };
    std::string report = "Writing CHM help.chm\n";
    for (const std::string& line : said)
        report += line + "\nNote: Index items:156\n";
    EXPECT_EQ(complaints(report), said);
    for (const char* bytes : {"", "MZ", "ITSF\x03", "ITSF\x03 and no more than these few bytes of a header"})
        EXPECT_THROW(finished(bytes), InvalidArgument) << bytes;
}

}  // namespace

// What is read out of pages, damaged ones among them.

#include <gtest/gtest.h>

#include "shell/chm/chm_file.h"

using namespace tavo::chm;
using namespace std::string_literals;

TEST(ChmHtml, PlainTextIsWhatAReaderSees) {
    struct Case {
        std::string html, text;
    };
    const Case cases[]{
        {"<html><head><title>T</title><style>p{}</style></head><body><p>a</p><p>b  c\r\n d</p></body>", "a b c d"},
        {"H<sub>2</sub>O<br>x<td>y</td>", "H2O x y"},
        {"<script>if (a < b) '<p>'</SCRIPT >shown", "shown"},
        {"<!-- > <p> -->a<!DOCTYPE x>b<?xml?>c", "abc"},
        {"<p title='a > b' alt=\"<x>\">c</p>", "c"},
        {"1 < 2 && 3 <4> </5>", "1 < 2 && 3 <4> </5>"},
        {"&aacute;&#225;&#xE1;&mu;&Omega;&lt;&euro;&#150;", "\u00E1\u00E1\u00E1\u03BC\u03A9<\u20AC\u2013"},
        {"a&nbsp;b &nbsp; c", "a b c"},
        {"&;&#;&#x;&nada;&thetasymx;&amp", "&;&#;&#x;&nada;&thetasymx;&amp"},
        {"&#0;&#xD800;&#99999999999;", "\uFFFD\uFFFD\uFFFD9;"},
        {"seen <p unfinished='", "seen"},
        {"seen <!-- for ever", "seen"},
        {"a<p =\"x\" = b='>'c>d", "a d"},
        {"a\0b"s, "a b"},
        {"", ""},
    };
    for (const Case& c : cases)
        EXPECT_EQ(plain_text(c.html), c.text) << c.html;
}

TEST(ChmHtml, TitleOfAPage) {
    EXPECT_EQ(page_title("<html><TITLE>\n Gas  ideal &amp; real </Title><p>x"), "Gas ideal & real");
    EXPECT_EQ(page_title("<!-- <title>no</title> --><p>x</p>"), "");
    EXPECT_EQ(page_title("<title>cut"), "cut");
}

TEST(ChmHtml, PagesAreDecodedAsTheySay) {
    struct Case {
        std::string bytes, text;
    };
    const Case cases[]{
        {"presi\xF3n \x80", "presi\u00F3n \u20AC"},
        {"<meta charset=\"UTF-8\">\xC3\xB3", "<meta charset=\"UTF-8\">\u00F3"},
        {"<META http-equiv=Content-Type content='text/html; charset=utf-8'>\xC3\xB3\xFF",
         "<META http-equiv=Content-Type content='text/html; charset=utf-8'>\u00F3\uFFFD"},
        {"<meta charset=iso-8859-1>\xF3", "<meta charset=iso-8859-1>\u00F3"},
        {"<body><meta charset=utf-8>\xF3", "<body><meta charset=utf-8>\u00F3"},
        {"\xEF\xBB\xBF\xC3\xB3\xC3", "\u00F3\uFFFD"},
        {"\xFF\xFE\xF3\x00\x3D\xD8\x00\xDE\x00\xD8\x41"s, "\u00F3\U0001F600\uFFFD"},
        {"\xFE\xFF\x00\xF3"s, "\u00F3"},
    };
    for (const Case& c : cases)
        EXPECT_EQ(decode_page(c.bytes), c.text);
}

// A reader that looks for each end again and again needs hours for these.
TEST(ChmHtml, TimeGrowsWithTheLengthAlone) {
    for (const std::string_view piece :
         {"<!--", "<a b='", "<a =", "<script>", "&#", "<title>", "</", "<ul><object><param"}) {
        std::string page;
        while (page.size() < (std::size_t{1} << 20U))
            page += piece;
        page_title(page);
        EXPECT_LE(plain_text(decode_page(page)).size(), page.size()) << piece;
    }
}

#include "core/encoding.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace tavo;

TEST(Encoding, EveryByteOfWindows1252ComesBack) {
    std::string all;
    for (int b = 0; b < 256; ++b)
        all.push_back(static_cast<char>(b));
    EXPECT_EQ(windows1252_from_utf8(utf8_from_windows1252(all)), all);
}

TEST(Encoding, BytesAndCharactersOfWindows1252) {
    const std::pair<std::string, std::string> cases[] = {
        {"A", "A"},
        {"\xF1\xD1\xBA\xB3", "ñÑº³"},
        {"\x80\x85\x8C\x99\x9F", "€…Œ™Ÿ"},
        {"\x81\x8D\x8F\x90\x9D", "\u0081\u008D\u008F\u0090\u009D"},
        {std::string("\0", 1), std::string("\0", 1)},
    };
    for (const auto& [bytes, text] : cases) {
        EXPECT_EQ(utf8_from_windows1252(bytes), text);
        EXPECT_EQ(windows1252_from_utf8(text), bytes);
    }
}

TEST(Encoding, RefusesWhatHasNoByteAndWhatIsNotUtf8) {
    for (const std::string text :
         {"\u0080", "Ω", "中", "\U0001F600", "\xF1", "\xC3", "\xC3(", "\xC0\xAF", "\xE0\x80\xAF", "\xED\xA0\x80",
          "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80", "\xE2\x82"})
        EXPECT_EQ(windows1252_from_utf8(text), std::nullopt) << testing::PrintToString(text);
}

TEST(Encoding, LowerCoversTheLettersOfThreeScripts) {
    const std::pair<std::string, std::string> cases[] = {
        {"[General] N=3", "[general] n=3"},
        {"ÀÉÎÑÖØÞ×ß÷ŒŠŽŸ", "àéîñöøþ×ß÷œšžÿ"},
        {"ĄĆŁŹŻ ŐŰ İI", "ąćłźż őű ii"},
        {"ΑΩΆΏΣ", "αωάώσ"},
        {"АЯЁЇ", "аяёї"},
        {"ẠỸẞ", "ạỹß"},
        {"日本 \xFF\xC3 \xF0\x9F\x98\x80", "日本 \xFF\xC3 \xF0\x9F\x98\x80"},
    };
    for (const auto& [text, small] : cases) {
        EXPECT_EQ(lower(text), small);
        EXPECT_EQ(lower(small), small);
    }
}

TEST(Encoding, TheLastCharacterIsNotALastByte) {
    EXPECT_EQ(without_last_character("a]"), "a");
    EXPECT_EQ(without_last_character("ñ"), "");
    EXPECT_EQ(without_last_character("a中"), "a");
    EXPECT_EQ(without_last_character("a\U0001F600"), "a");
    EXPECT_EQ(without_last_character("a\xC3"), "a");
    EXPECT_EQ(without_last_character("\xB1\xB1"), "\xB1");
}

}  // namespace

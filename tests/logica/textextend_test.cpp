// The key filter, the numeric test and the change rule of the entry box.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "controls/reglas_textextend.h"

namespace {

using enum Filtro;

TEST(TextExtend, drops_the_keys_that_the_mode_does_not_take) {
    const auto passed = [](Filtro mode, bool signo) {
        std::string keys;
        for (std::int16_t key = 1; key < 128; ++key)
            if (reglas::filter_key(mode, signo, key) == key)
                keys += static_cast<char>(key);
        return keys;
    };
    const auto all_but = [](std::string_view dropped) {
        std::string keys;
        for (char key = 1; key > 0 && key < 127; ++key)
            if (dropped.find(key) == dropped.npos)
                keys += key;
        return keys + '\x7F';
    };
    for (const bool signo : {false, true}) {
        EXPECT_EQ(passed(Free, signo), all_but(""));
        EXPECT_EQ(passed(Letters, signo), "\b\r ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
        EXPECT_EQ(passed(Integer, signo), all_but(signo ? ",." : ",.-"));
        EXPECT_EQ(passed(Decimal, signo), all_but(signo ? "," : ",-"));
    }
    EXPECT_EQ(reglas::filter_key(Letters, true, 0xF1), 0) << "n with tilde";
    EXPECT_EQ(reglas::filter_key(Letters, true, static_cast<std::int16_t>(0xFF21)), 0) << "full-width A";
}

TEST(TextExtend, knows_a_number) {
    for (const char16_t* text : {u"0", u"-5", u"+5", u"5-", u"12-", u" 7 ", u"\t7\n", u"1.", u".5", u".", u"-.", u"1e5",
                                 u"1.5E-07", u"-2e+3", u"00012345678901234567890"})
        EXPECT_TRUE(reglas::is_numeric(text)) << testing::PrintToString(std::u16string(text));
    for (const char16_t* text : {u"",    u" ",     u"-",    u"+",     u"--5", u"-5-",    u"5+",     u"5-3",    u"- 5",
                                 u"1 2", u"1.2.3", u"1,5",  u"1,000", u"1e",  u"1e+",    u"e5",     u".e5",    u"1d5",
                                 u"a",   u"12a",   u"0x1F", u"inf",   u"nan", u"\u0661", u"\uFF11", u"\u22125"})
        EXPECT_FALSE(reglas::is_numeric(text)) << testing::PrintToString(std::u16string(text));
}

TEST(TextExtend, keeps_or_undoes_a_change) {
    struct Row {
        Filtro mode;
        std::u16string before, after;
        bool host, user;  // whether it stands, with a minus sign allowed
    };
    const std::vector<Row> rows{
        {Free, u"a", u"a,\u00F1", true, true},  {Letters, u"ab", u"ab1", true, false},
        {Letters, u"1", u"1b", true, true},     {Integer, u"12", u"12a", false, false},
        {Integer, u"12", u"", true, true},      {Integer, u"", u"-", true, true},
        {Integer, u"5", u"5-", true, true},     {Integer, u"12", u"12-", false, false},
        {Integer, u"5-", u"5-3", false, false}, {Integer, u"15", u"1e5", true, false},
        {Integer, u"1", u"1.5", true, false},   {Integer, u"1.5", u"1.52", true, true},
        {Decimal, u"1", u"1.5", true, true},    {Decimal, u"1", u"1,5", false, false},
        {Decimal, u"1e5", u"1e", false, false}, {Decimal, u"1.5", u"1e-5", true, true},
        {Integer, u"abc", u"ab", false, false}, {Decimal, u"abc", u"", true, true},
    };
    for (const Row& row : rows) {
        const auto name = testing::PrintToString(row.before) + " -> " + testing::PrintToString(row.after);
        EXPECT_EQ(reglas::change(row.mode, row.after, row.before), row.host ? row.after : row.before) << name;
        EXPECT_EQ(reglas::may_become(row.mode, true, row.before, row.after), row.user) << name;
    }
    EXPECT_FALSE(reglas::may_become(Decimal, false, u"5", u"-5"));
    EXPECT_TRUE(reglas::may_become(Decimal, false, u"-5", u"-53"));
    EXPECT_EQ(reglas::on_leaving(Decimal, u"-"), u"0");
    EXPECT_EQ(reglas::on_leaving(Integer, u""), u"0");
    EXPECT_EQ(reglas::on_leaving(Integer, u"5-"), u"5-");
    EXPECT_EQ(reglas::on_leaving(Free, u"-"), u"-");
    EXPECT_EQ(reglas::on_leaving(Letters, u""), u"");
}

TEST(TextExtend, needs_a_tip_for_a_text_wider_than_the_box_less_100_twips) {
    EXPECT_FALSE(reglas::needs_tip(93, 100));  // 1395 of 1400 twips
    EXPECT_TRUE(reglas::needs_tip(94, 100));
}

}  // namespace

#include "core/numtext.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "core/errors.h"

namespace {

constexpr double LARGEST = std::numeric_limits<double>::max();
constexpr double INFINITE = std::numeric_limits<double>::infinity();
constexpr double NOT_A_NUMBER = std::numeric_limits<double>::quiet_NaN();

TEST(Val, ReadsTheLongestLeadingNumber) {
    const std::pair<std::string_view, double> cases[]{
        {"", 0.0},       {"   ", 0.0}, {"5", 5.0},         {"+7", 7.0},        {"-1", -1.0},
        {"-", 0.0},      {"+", 0.0},   {"+-2", 0.0},       {"- 2", 0.0},       {".", 0.0},
        {"-.", 0.0},     {".5", 0.5},  {"5.", 5.0},        {"1.2.3", 1.2},     {"1 2", 1.0},
        {"12abc", 12.0}, {"abc", 0.0}, {"3,5", 3.0},       {"1e3", 1000.0},    {"1.5E-07", 1.5e-7},
        {"1E+16", 1e16}, {"1e", 1.0},  {"1e+", 1.0},       {"2e-x", 2.0},      {"e5", 0.0},
        {".e5", 0.0},    {"1d3", 1.0}, {"0x10", 0.0},      {"inf", 0.0},       {"-infinity", 0.0},
        {"nan", 0.0},    {"0.1", 0.1}, {"5e-324", 5e-324}, {"1e400", LARGEST}, {"1e-400", 0.0}};
    for (const auto& [text, x] : cases)
        EXPECT_EQ(tavo::Val(text), x) << '"' << text << '"';
    EXPECT_EQ(tavo::Val(" \t\r\n 1.5"), 1.5);
    EXPECT_EQ(tavo::Val("304.1282ºK"), 304.1282);
    EXPECT_EQ(tavo::Val("123456789012345678901234567890"), 123456789012345678901234567890.0);
    EXPECT_EQ(tavo::Val("-1e400"), -LARGEST);
    EXPECT_EQ(tavo::Val("0.000001e999999999999999999999"), LARGEST);
    EXPECT_EQ(tavo::Val("-1e-99999999999999999999999"), 0.0);
    EXPECT_EQ(tavo::Val("0e999999999999999999999999"), 0.0);
    EXPECT_EQ(tavo::Val(std::string(400, '9')), LARGEST);
    EXPECT_EQ(tavo::Val("0." + std::string(400, '0') + "9"), 0.0);
    EXPECT_FALSE(std::signbit(tavo::Val("-0")));
}

TEST(Format, RoundsHalfAwayFromZeroOnTheDecimalValue) {
    struct Row {
        std::string_view pattern;
        std::vector<std::pair<double, std::string_view>> values;
    };
    const Row rows[]{
        {"####0.00", {{0.125, "0.13"}, {-0.125, "-0.13"}}},
        {"0.00", {{1.005, "1.01"}, {5e-324, "0.00"}, {NOT_A_NUMBER, ""}, {-INFINITE, ""}}},
        {"##0.00", {{2.675, "2.68"}, {2.674999, "2.67"}, {9.995, "10.00"}, {123456.7, "123456.70"}}},
        {"###", {{0.5, "1"}, {0.49, ""}, {-0.49, ""}, {0.0, ""}, {1.5, "2"}, {2.5, "3"}, {1234.0, "1234"}}},
        {"####0.0000", {{0.0, "0.0000"}, {-0.0, "0.0000"}, {-1e-5, "0.0000"}, {5e-5, "0.0001"}, {4.999e-5, "0.0000"}}},
        {"####0.0", {{0.05, "0.1"}, {0.049, "0.0"}, {1e22, "10000000000000000000000.0"}}},
        {"####0.000000", {{99999.9999996, "100000.000000"}, {1.5e-300, "0.000000"}}},
        {"##0.000", {{0.9996, "1.000"}, {300.0, "300.000"}}},
        {"###.00", {{0.5, ".50"}}},
        {"000.0", {{7.0, "007.0"}}},
        {"0.0##", {{1.25, "1.25"}, {1.0, "1.0"}}},
    };
    for (const Row& row : rows)
        for (const auto& [x, text] : row.values)
            EXPECT_EQ(tavo::Format(x, row.pattern), text) << x << " in " << row.pattern;
    EXPECT_EQ(tavo::Format(LARGEST, "0").size(), 309u);
    EXPECT_THROW(tavo::Format(1.0, "0.0.0"), tavo::InvalidArgument);
    EXPECT_THROW(tavo::Format(1.0, "0,000"), tavo::InvalidArgument);
}

TEST(NumberToText, HasFifteenDigitsInTheShortestForm) {
    const std::pair<double, std::string_view> cases[]{
        {0.0, "0"},           {-0.0, "0"},           {5.0, "5"},         {-3.0, "-3"},    {0.1, "0.1"},
        {0.1 + 0.2, "0.3"},   {120.0, "120"},        {1e-4, "0.0001"},   {1e15, "1E+15"}, {1e16, "1E+16"},
        {-273.16, "-273.16"}, {9.99e-5, "9.99E-05"}, {1.5e-7, "1.5E-07"}};
    for (const auto& [x, text] : cases)
        EXPECT_EQ(tavo::to_text(x), text);
    EXPECT_EQ(tavo::to_text(1.0 / 3.0), "0.333333333333333");
    EXPECT_EQ(tavo::significant(0.0432159, 4), "0.04322");
    EXPECT_EQ(tavo::significant(-1234567.0, 4), "-1235000");
    EXPECT_EQ(tavo::significant(0.99996, 4), "1");
    EXPECT_EQ(tavo::significant(2.50001e-7, 3), "2.5E-07");
    EXPECT_EQ(tavo::to_text(2.0 / 3.0), "0.666666666666667");
    EXPECT_EQ(tavo::to_text(0.00099999999999999999), "0.001");
    EXPECT_EQ(tavo::to_text(123456789012345.0), "123456789012345");
    EXPECT_EQ(tavo::to_text(999999999999999.0), "999999999999999");
    EXPECT_EQ(tavo::to_text(999999999999999.9), "1E+15");
    EXPECT_EQ(tavo::to_text(-1.25e300), "-1.25E+300");
    EXPECT_EQ(tavo::to_text(5e-324), "4.94065645841247E-324");
}

TEST(NumberToText, SeventeenDigitsReadBackAsTheSameNumber) {
    EXPECT_EQ(tavo::to_text17(0.1), "0.10000000000000001");
    EXPECT_EQ(tavo::to_text17(-2.0), "-2");
    EXPECT_EQ(tavo::to_text17(-0.0), "0");
    for (const double x : {1.0 / 3.0, 6.02e23, 5e-324, -1e-5, LARGEST})
        EXPECT_EQ(tavo::Val(tavo::to_text17(x)), x);
}

}  // namespace

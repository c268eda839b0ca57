// Tables of constants and thermometric scales.

#include <gtest/gtest.h>

#include <cmath>

#include "core/confreg.h"
#include "windows/reference/constantes.h"
#include "windows/reference/termometria.h"

namespace {

using namespace termometria;

TEST(Thermometry, ConvertsWithTheProgramsConstants) {
    struct Case {
        int from;
        double t;
        Values all;  // Celsius, Kelvin, Fahrenheit, Rankine, Réaumur
    };
    for (const auto& [from, t, all] : {
             Case{CELSIUS, 0.0, {0.0, 273.16, 32.0, 492.0, 0.0}},
             Case{CELSIUS, 100.0, {100.0, 373.16, 212.0, 672.0, 80.0}},
             Case{CELSIUS, -273.16, {-273.16, 0.0, -459.688, 0.312, -218.528}},
             Case{KELVIN, 273.16, {0.0, 273.16, 32.288, 492.288, 0.0}},
             Case{KELVIN, 0.0, {-273.16, 0.0, -459.4, 0.6, -218.528}},
             Case{FAHRENHEIT, 32.0, {0.0, 273.0, 32.0, 492.0, 0.0}},
             Case{FAHRENHEIT, -40.0, {-40.0, 233.0, -40.0, 420.0, -32.0}},
             Case{RANKINE, 492.0, {0.0, 273.0, 32.0, 492.0, 0.0}},
             Case{RANKINE, 0.0, {-820.0 / 3.0, -1.0 / 3.0, -460.0, 0.0, -656.0 / 3.0}},
             Case{REAUMUR, 80.0, {100.0, 373.16, 212.0, 672.0, 80.0}},
         }) {
        const Values found = convert_to_all(from, t);
        for (std::size_t to = 0; to < found.size(); ++to)
            EXPECT_NEAR(found[to], all[to], 1e-12 * 1000.0) << from << " -> " << to << ": " << t;
        EXPECT_EQ(convert(from, from, t), t);
    }
    for (const int wrong : {-1, SCALES, 32767}) {
        EXPECT_EQ(convert(wrong, CELSIUS, 20.0), 0.0);
        EXPECT_EQ(convert(CELSIUS, wrong, 20.0), 0.0);
    }
}

TEST(Thermometry, TheSameHeightIsTheSameTemperature) {
    const auto extent = [](int i) { return scale(i).maximum - scale(i).minimum; };
    const double fahrenheit = extent(FAHRENHEIT);
    EXPECT_DOUBLE_EQ(extent(CELSIUS), fahrenheit * 100.0 / 180.0);
    EXPECT_DOUBLE_EQ(extent(KELVIN), fahrenheit * 100.0 / 180.0);
    EXPECT_DOUBLE_EQ(extent(RANKINE), fahrenheit);
    EXPECT_DOUBLE_EQ(extent(REAUMUR), fahrenheit * 80.0 / 180.0);
    for (const Mark& mark : MARKS) {
        for (int i = 0; i < SCALES; ++i)
            EXPECT_NEAR(graduacion::place_of(scale(i), convert(CELSIUS, i, mark.celsius), 400.0),
                        graduacion::place_of(scale(CELSIUS), mark.celsius, 400.0), 1e-9);
    }
}

TEST(Thermometry, OnlyNumbersAreTemperatures) {
    for (const char* text : {"0", "-300", " +.5", "25 C", "1e3", "7."})
        EXPECT_TRUE(is_temperature(CELSIUS, text)) << text;
    for (const char* text : {"", " ", "-", ".", "- 5", "..5", "abc5", "1e15", "-1e300", "6e14"})
        EXPECT_FALSE(is_temperature(CELSIUS, text)) << text;
    EXPECT_FALSE(below_absolute_zero(convert_to_all(KELVIN, -0.004)));
    EXPECT_TRUE(below_absolute_zero(convert_to_all(KELVIN, -0.006)));
}

TEST(CriticalConstants, AreShownInTheirFormats) {
    struct Case {
        const char* name;
        const char* keys;
        std::array<const char*, 7> cells;  // Tc, Pc, Vc, Zc, Teb, Hv, M
    };
    const char* const none = "-----";
    for (const auto& [name, keys, cells] : {
             Case{"whole",
                  "pm=44.0095\ntc=304.128\npc=72.8\nvc=0.094\nteb=194.686\nhv=3.0\n",
                  {"304.1", "72.80", "0.0940", "0.274", "194.7", "3.000", "44.010"}},
             Case{"no volume",
                  "pm=2\ntc=30\npc=12\nvc=-1\nteb=20\nhv=0.2\n",
                  {"30.0", "12.00", none, none, "20.0", "0.200", "2.000"}},
             Case{"no boiling point",
                  "pm=2\ntc=30\npc=12\nvc=0.06\nteb=-1\nhv=-1.0\n",
                  {"30.0", "12.00", "0.0600", "0.292", none, none, "2.000"}},
             Case{"nearly unknown",
                  "pm=-1\ntc=-1\npc=-1\nvc=-1.5\nteb=-0.999\nhv=-2\n",
                  {"-1.0", "-1.00", "-1.5000", "-18.279", "-1.0", "-2.000", "-1.000"}},
             Case{"missing keys read as 0",
                  "tc=30\npc=12\nvc=-1\n",
                  {"30.0", "12.00", none, none, "0.0", "0.000", "0.000"}},
             Case{"refused by the loader",
                  "pm=2\npc=12\nvc=0.06\nteb=20\nhv=0.2\n",
                  {"0.0", "12.00", "0.0600", none, "20.0", "0.200", "2.000"}},
             Case{"line without =", "pm\ntc=30\n", {none, none, none, none, none, none, none}},
         }) {
        const tavo::confreg::Text data("[G1]\nnombre=X\n" + std::string(keys));
        const gridcrit::Row row = gridcrit::load(data, 1);
        for (std::size_t i = 0; i < cells.size(); ++i)
            EXPECT_EQ(row.text(static_cast<int>(i) + 1), cells[i]) << name << ", column " << i + 1;
    }
}

TEST(PhysicalConstants, HaveAMagnitude) {
    for (const auto& [text, value] : {std::pair("6.02214 10^23 part/mol", 6.02214e23),
                                      {"1.38066 10^-16 erg / K", 1.38066e-16},
                                      {"101325 Pa", 101325.0}})
        EXPECT_DOUBLE_EQ(gridtermo::magnitude(text).value_or(0.0), value);
    EXPECT_FALSE(gridtermo::magnitude(""));
}

}  // namespace

#include "core/units.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "core/errors.h"

namespace {

using namespace tavo;
using namespace tavo::Global;

using Conversion = double (*)(double, std::string_view, std::string_view);

/// y = (x * numerator + offset) / denominator, in whole numbers.
struct Rational {
    long numerator, offset, denominator;
};
using Rows = std::vector<std::vector<Rational>>;  // from, to

/// Conversions between units of which one base unit holds numerator/denominator.
Rows proportional(const std::vector<Rational>& in_base) {
    Rows rows(in_base.size());
    for (std::size_t from = 0; from < in_base.size(); ++from)
        for (const Rational& to : in_base)
            rows[from].push_back(
                {to.numerator * in_base[from].denominator, 0, to.denominator * in_base[from].numerator});
    return rows;
}

struct Table {
    Conversion convert;
    UnitFamily family;
    Rows rows;
};

const std::vector<Table>& tables() {
    static const std::vector<Table> all{
        {convertirenergia, UnitFamily::Energy,
         proportional({{1, 0, 1}, {101325, 0, 1000}, {101325, 0, 4180}, {101325, 0, 4180000}})},
        {convertirdensidad, UnitFamily::Density, proportional({{1, 0, 1}, {1, 0, 1}, {1, 0, 1000}})},
        {convertirpresion, UnitFamily::Pressure,
         proportional({{1, 0, 1}, {101325, 0, 1}, {101325, 0, 100000}, {760, 0, 1}})},
        {convertirvolumen, UnitFamily::Volume, proportional({{1, 0, 1}, {1, 0, 1}, {1, 0, 1000}, {1000, 0, 1}})},
        {convertirtemperatura,
         UnitFamily::Temperature,
         {{{1, 0, 1}, {100, -27316, 100}, {9, -2297, 5}, {9, 3, 5}, {400, -109264, 500}},
          {{100, 27316, 100}, {1, 0, 1}, {9, 160, 5}, {9, 2460, 5}, {4, 0, 5}},
          {{5, 2297, 9}, {5, -160, 9}, {1, 0, 1}, {1, 460, 1}, {4, -128, 9}},
          {{5, -3, 9}, {5, -2460, 9}, {1, -460, 1}, {1, 0, 1}, {4, -1968, 9}},
          {{500, 109264, 400}, {5, 0, 4}, {9, 128, 4}, {9, 1968, 4}, {1, 0, 1}}}}};
    return all;
}

TEST(Units, EveryFormulaAgreesWithExactFractions) {
    for (const Table& table : tables()) {
        const auto labels = unit_labels(table.family);
        ASSERT_EQ(labels.size(), table.rows.size());
        for (std::size_t from = 0; from < labels.size(); ++from)
            for (std::size_t to = 0; to < labels.size(); ++to) {
                const Rational& f = table.rows[from][to];
                for (const long x : {-40L, 0L, 1L, 7L, 300L, 1234567L}) {
                    const double exact =
                        static_cast<double>(x * f.numerator + f.offset) / static_cast<double>(f.denominator);
                    const double scale = std::fabs(exact) + 1.0;  // the offsets cancel
                    EXPECT_NEAR(table.convert(static_cast<double>(x), labels[from], labels[to]), exact, 1e-13 * scale)
                        << x << ' ' << labels[from] << " to " << labels[to];
                }
            }
    }
}

TEST(Units, ConstantsAreExact) {
    EXPECT_EQ(convertirpresion(1.0, "atm", "mmHg"), 760.0);
    EXPECT_EQ(convertirpresion(1.0, "atm", "Pa"), 101325.0);
    EXPECT_EQ(convertirpresion(1.0, "bar", "atm"), 1.0 / 1.01325);
    EXPECT_EQ(convertirenergia(1.0, "atm l", "cal"), 101.325 / 4.18);
    EXPECT_EQ(convertirtemperatura(0.0, "ºC", "ºK"), 273.16);
    EXPECT_EQ(convertirtemperatura(0.0, "ºC", "ºR"), 492.0);
}

TEST(Units, UnknownLabelsGiveZeroAndEqualLabelsTheValue) {
    EXPECT_EQ(convertirpresion(5.0, "atm ", "Pa"), 0.0);
    EXPECT_EQ(convertirpresion(5.0, "atm", "pa"), 0.0);
    EXPECT_EQ(convertirpresion(5.0, "furlong", "furlong"), 5.0);
    EXPECT_EQ(convertirtemperatura(5.0, "\xC2\xB0K", "ºC"), 0.0);  // degree sign
    EXPECT_EQ(convertirvolumen(5.0, "l", "atm"), 0.0);
    EXPECT_EQ(convertirdensidad(5.0, "", "g/l"), 0.0);
    EXPECT_EQ(convertircantidad(5.0, "mol", "kg", SlotTable()), 0.0);
}

TEST(Units, AmountUsesTheMolarMassOfSlotZero) {
    SlotTable table;
    EXPECT_THROW(convertircantidad(1.0, "g", "mol", table), FloatingPointError);
    EXPECT_EQ(convertircantidad(1.0, "mol", "g", table), 0.0);
    EXPECT_EQ(convertircantidad(1.0, "g", "g", table), 1.0);
    table[0].gas.pm = 44.0;
    table[1].gas.pm = 2.0;
    EXPECT_EQ(convertircantidad(2.0, "mol", "g", table), 88.0);
    EXPECT_EQ(convertircantidad(22.0, "g", "mol", table), 0.5);
}

TEST(Units, LabelsAreListedInOrderAndStepRound) {
    const std::pair<UnitFamily, std::vector<std::string>> families[]{
        {UnitFamily::Energy, {"atm l", "J", "cal", "Kcal"}},
        {UnitFamily::Amount, {"mol", "g"}},
        {UnitFamily::Density, {"g/l", "kg/m\xC2\xB3", "g/cm\xC2\xB3"}},
        {UnitFamily::Pressure, {"atm", "Pa", "bar", "mmHg"}},
        {UnitFamily::Temperature, {"\xC2\xBAK", "\xC2\xBA\x43", "\xC2\xBA\x46", "\xC2\xBAR", "\xC2\xBARe"}},
        {UnitFamily::Volume, {"l", "dm\xC2\xB3", "m\xC2\xB3", "cm\xC2\xB3"}},
    };
    for (const auto& [family, labels] : families) {
        const auto listed = unit_labels(family);
        EXPECT_EQ(std::vector<std::string>(listed.begin(), listed.end()), labels);
        for (std::size_t i = 0; i < labels.size(); ++i)
            EXPECT_EQ(next_unit(family, labels[i]), labels[(i + 1) % labels.size()]);
        EXPECT_EQ(next_unit(family, "?"), labels[0]);
    }
}

TEST(NumericKeys, OnlyANonNegativeNumberCanBeTyped) {
    struct Case {
        std::int16_t max_length, key;
        std::string_view text;
        bool passes;
    };
    const Case cases[]{{8, '0', "", true},   {8, '9', "12", true},   {8, '/', "1", false},    {8, ':', "1", false},
                       {8, '.', "15", true}, {8, '.', "1.5", false}, {8, '.', "", true},      {8, ',', "1", false},
                       {8, '-', "", false},  {8, '+', "", false},    {8, 'e', "1", false},    {8, ' ', "1", false},
                       {8, 8, "", true},     {8, 13, "1.5", true},   {8, '5', "1..5", false}, {8, 13, "1..5", false},
                       {3, '1', "12", true}, {3, '1', "123", false}, {3, '1', "1234", false}, {3, 13, "123", false},
                       {3, 8, "123", true},  {3, 8, "1..", false},   {3, '.', "123", false},  {0, '1', "", false},
                       {4, '1', "1²³", true}};
    for (const Case& c : cases) {
        std::int16_t key = c.key;
        teclanumerica(c.max_length, key, c.text);
        EXPECT_EQ(key, c.passes ? c.key : 0) << "key " << c.key << " after \"" << c.text << '"';
    }
}

}  // namespace

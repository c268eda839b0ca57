#include "windows/gasedit/parametros_logica.h"

#include <gtest/gtest.h>

#include <string>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace {

using namespace parametros;
using enum tavo::EquationOfState;
using tavo::EquationSlot;

constexpr double TC = 304.2, PC = 72.9, T = 300.0, MU = 1.5;

/// 1 complete, all coefficients automatic; 2 without critical constants; 3 with its own exponent and a, b; 4
/// unreadable.
const tavo::confreg::Text& database() {
    static const tavo::confreg::Text data = [] {
        std::string automatic = "vc=-1\r\n";
        for (const tavo::Model& model : tavo::models())
            for (int k = 1; k <= model.stored; ++k)
                automatic += "c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) +
                             ")=" + (k == 3 && model.number > FreeExponent ? "0.2" : "-1") + "\r\n";
        const std::string critical = "pm=44.01\r\ntc=304.2\r\npc=72.9\r\n";
        return tavo::confreg::Text("[general]\r\nn=4\r\n[g1]\r\nnombre=uno\r\n" + critical + automatic +
                                   "[g2]\r\nnombre=dos\r\n" + automatic + "[g3]\r\nnombre=tres\r\n" + critical +
                                   "vc=-1\r\nc(6,1)=4\r\nc(6,2)=0.03\r\nc(6,3)=1.8\r\n[g4]\r\nno value\r\n");
    }();
    return data;
}

Table table_of(tavo::EquationOfState model, double mu = MU) {
    Table table([]() -> const tavo::confreg::Text& { return database(); });
    table.forget(4);
    table.choose(model, T, mu);
    return table;
}

EquationSlot row_of(std::int16_t gas, tavo::EquationOfState model) {
    EquationSlot row;
    row.gas_number = gas;
    row.equation = model;
    tavo::Global::load_slot(database(), row, true);
    return row;
}

/// Labels and numbers as the grid shows them, the numbers worked out by hand from Tc and Pc.
TEST(ParametrosTable, LabelsAndFormatsFollowTheSet) {
    const std::string l = "l / mol]", a = "a [l ² atm / mol ²]", at = "a (T) [l ² atm / mol ²]", b = "b [" + l;
    struct Case {
        tavo::EquationOfState model;
        std::string labels, numbers;
    };
    const Case cases[]{
        {IdealGas, "", ""},
        {VanDerWaals, a + "|" + b, "3.60610|0.04280"},
        {Berthelot, "a [l ² atm / mol ² K]|" + b, "1096.97547|0.04280"},
        {Dieterici, a + "|" + b, "4.62727|0.04634"},
        {RedlichKwong, "a [l ² atm / mol ² K ½]|" + b, "63.73083|0.02967"},
        {Virial, "A|B [" + l + "|C [l ² / mol ²]|D [l ³ / mol ³]", "1.00000|-0.10368|0.001832|0.000078"},
        {FreeExponent, "a|b|µ", "6.94513|0.01427|1.500000"},
        {Soave, at + "|" + b + "|w", "3.69400|0.02967|0.200"},
        {PengRobinson, at + "|" + b + "|w", "3.94488|0.02664|0.200"},
        {DietericiSadus, a + "|" + b, "6.92743|0.13226"},
    };
    for (const Case& c : cases) {
        Table table = table_of(c.model);
        std::string labels, numbers;
        int k = 0;
        for (const std::string_view label : column_labels(c.model)) {
            labels += (k == 0 ? "" : "|") + std::string(label);
            numbers += (k == 0 ? "" : "|") +
                       tavo::Format(table.row(1).values.at(static_cast<std::size_t>(k)), column_format(c.model, k));
            ++k;
        }
        EXPECT_EQ(labels, c.labels) << static_cast<int>(c.model);
        EXPECT_EQ(numbers, c.numbers) << static_cast<int>(c.model);
    }
}

TEST(ParametrosTable, LoadsWhatIsAskedForOnceAndNamesWhatItCannotLoad) {
    Table table = table_of(VanDerWaals);
    EXPECT_EQ(table.loads(), 0U);
    table.row(1);
    table.row(1);
    EXPECT_EQ(table.loads(), 1U);
    EXPECT_FALSE(table.choose(VanDerWaals, 400.0, 2.0));  // neither temperature nor exponent matter
    EXPECT_TRUE(table.choose(PengRobinson, 400.0, 2.0));
    const double hot = table.row(1).values[0];
    EXPECT_TRUE(table.choose(PengRobinson, T, 2.0));
    EXPECT_GT(table.row(1).values[0], 1.05 * hot);
    EXPECT_EQ(table.loads(), 3U);

    Table exponents = table_of(FreeExponent, 0.9);
    EXPECT_EQ(exponents.row(1).fault, Fault::SmallMu);
    EXPECT_EQ(exponents.row(2).fault, Fault::BadGas);
    EXPECT_NE(exponents.row(2).detail.find("dos"), std::string::npos);
    EXPECT_EQ(exponents.row(3).fault, Fault::None);
    EXPECT_EQ(exponents.row(3).values[2], 1.8);
    EXPECT_EQ(exponents.row(4).fault, Fault::BadGas);
    EXPECT_EQ(table_of(IdealGas).row(2).fault, Fault::None);
}

TEST(ParametrosChoice, CoefficientsByHandReachTheSlotAndStayThere) {
    EquationSlot row = row_of(1, PengRobinson);
    row.moles = 2.0;
    Choice choice = choice_of(row);
    EXPECT_TRUE(choice.automatic);
    EXPECT_FALSE(pending(choice, row));
    set_automatic(choice, false, row, database());
    ASSERT_TRUE(choice.own);
    EXPECT_EQ((*choice.own)[0], row.gas.a);  // the loader's to begin with
    (*choice.own)[1] = 0.03;
    EXPECT_TRUE(pending(choice, row));
    apply(choice, row, database(), false);
    EXPECT_FALSE(pending(choice, row));
    EXPECT_TRUE(row.parameters);
    EXPECT_FALSE(row.active);  // it held a gas before
    EXPECT_DOUBLE_EQ(row.grams, 2.0 * 44.01);
    tavo::Global::load_slot(database(), row, false);
    EXPECT_EQ(row.gas.b, 0.03);

    // Another gas brings its own; back again, the row's are there.
    choice = choice_of(row);
    take_gas(choice, 2, row, database());
    EXPECT_FALSE(choice.own);  // nothing can be derived for it
    EXPECT_EQ(shown(choice, row, database()).complete, false);
    take_gas(choice, 1, row, database());
    EXPECT_EQ(choice.own, choice_of(row).own);

    // The automatic ones are shown meanwhile, and applied clear the flag.
    set_automatic(choice, true, row, database());
    EXPECT_NE(shown(choice, row, database()).slot.gas.b, 0.03);
    EXPECT_TRUE(choice.own);
    apply(choice, row, database(), false);
    EXPECT_FALSE(row.parameters);
    EXPECT_NE(row.gas.b, 0.03);
}

TEST(ParametrosChoice, ApplyingIsAllOrNothing) {
    EquationSlot row = row_of(0, IdealGas);
    row.grams = 88.02;
    Choice choice = choice_of(row);
    take_model(choice, VanDerWaals, row, database());
    take_gas(choice, 2, row, database());
    EXPECT_EQ(shown(choice, row, database()).fault, Fault::BadGas);
    EXPECT_THROW(apply(choice, row, database(), true), tavo::FloatingPointError);
    EXPECT_EQ(row.gas_number, 0);
    EXPECT_EQ(row.equation, IdealGas);

    // What lacks critical constants can be given its coefficients by hand.
    set_automatic(choice, false, row, database());
    choice.own = Coefficients{3.6, 0.04, 0.0, 0.0};
    EXPECT_TRUE(shown(choice, row, database()).complete);
    apply(choice, row, database(), true);
    EXPECT_TRUE(row.parameters && row.active);
    EXPECT_EQ(row.gas.name, "dos");
    take_gas(choice, 1, row, database());
    apply(choice, row, database(), true);
    EXPECT_DOUBLE_EQ(row.moles, 2.0);
    renumber(choice, 1);
    EXPECT_EQ(choice.gas, 0);
    row.gas_number = 0;  // the gas is deleted, and its coefficients with it
    EXPECT_TRUE(row.parameters && choice_of(row).automatic);
}

/// a and b put the critical point of the model at the gas's own whatever the exponent is.
TEST(ParametrosChoice, AnExponentBringsItsCoefficients) {
    EquationSlot row = row_of(1, FreeExponent);
    Choice choice = choice_of(row);
    take_exponent(choice, 2.0, row, database());
    EXPECT_TRUE(choice.automatic);  // the loader derives the same
    const Shown two = shown(choice, row, database());
    EXPECT_EQ(two.slot.mu, 2.0);
    EXPECT_NEAR(two.slot.gas.a, 27.0 * tavo::R * tavo::R * TC * TC / (64.0 * PC), 1e-12);  // van der Waals
    EXPECT_NEAR(two.slot.gas.b, tavo::R * TC / (8.0 * PC), 1e-15);
    EXPECT_TRUE(pending(choice, row));

    row = row_of(3, FreeExponent);  // its stored coefficients would win over the exponent
    EXPECT_EQ(row.mu, 1.8);
    choice = choice_of(row);
    take_exponent(choice, 2.0, row, database());
    EXPECT_FALSE(choice.automatic);
    apply(choice, row, database(), false);
    EXPECT_EQ(row.mu, 2.0);
    EXPECT_EQ(row.gas.c, 2.0);
    EXPECT_NEAR(row.gas.b, tavo::R * TC / (8.0 * PC), 1e-15);

    row = row_of(0, FreeExponent);
    choice = choice_of(row);
    choice.automatic = false;
    choice.gas = 2;
    choice.own = Coefficients{3.0, 0.05, 0.0, 0.0};
    take_exponent(choice, 1.7, row, database());
    EXPECT_EQ(choice.mu, 1.7);
    EXPECT_EQ((*choice.own)[0], 3.0);  // there are no constants to follow
}

}  // namespace

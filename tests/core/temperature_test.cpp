#include <gtest/gtest.h>

#include <cmath>

#include "core/calcnum.h"
#include "core/errors.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using enum EquationOfState;

constexpr int SLOT = 3;

struct Gas {
    const char* name;
    double tc, pc, w;
};
constexpr Gas GASES[]{{"helium", 5.1953, 2.2533, -0.3835},
                      {"carbon dioxide", 304.1282, 72.8083, 0.2239},
                      {"ethanol", 514.0, 60.5675, 0.644}};

SlotTable table_of(EquationOfState equation, const Gas& gas, double t, double n = 1.0) {
    SlotTable table;
    EquationSlot& slot = table[SLOT];
    slot = slot_of(equation, {0, 0, 0, 0, 1.5}, t, n);
    slot.gas.tc = gas.tc;
    slot.gas.pc = gas.pc;
    derive_slot(slot, gas.w);
    return table;
}

double covolume(const EquationSlot& slot) {
    return find_model(slot.equation)->covolume(coefficients(slot));
}

TEST(Temperature, ReproducesThePressureOfEveryModel) {
    for (const Model& model : models())
        for (const Gas& gas : GASES)
            for (const double n : {1.0, 0.02, 40.0})
                for (const double reduced : {0.6, 1.0, 1.3, 3.0})
                    for (const double volumes : {1.5, 4.0, 20.0, 3000.0}) {
                        const double t = reduced * gas.tc;
                        SlotTable there = table_of(model.number, gas, t, n);
                        const double b = std::max(covolume(there[SLOT]), 0.08 * gas.tc / gas.pc / 8.0);
                        const double v = n * b * volumes;
                        const double p = pressure(there, SLOT, v);
                        // The slot starts from another temperature, as a window does.
                        SlotTable table = table_of(model.number, gas, 0.9 * gas.tc, n);
                        const double found = calcnum::temperature(table, SLOT, v, p);
                        table[SLOT].temperature = found;
                        derive_slot(table[SLOT], gas.w);
                        const double scale = std::fabs(p) + 1e-6 * n * R * found / v;
                        EXPECT_NEAR(pressure(table, SLOT, v), p, 1e-9 * scale)
                            << model.name << ", " << gas.name << ", T/Tc " << reduced << ", V/b " << volumes;
                        // Where the pressure rises with T there is but one answer.
                        const bool rising = model.number != Soave && model.number != PengRobinson;
                        EXPECT_TRUE(!rising || std::fabs(found / t - 1.0) < 1e-6) << model.name << ", " << gas.name;
                    }
}

TEST(Temperature, CoefficientsSetByHandStayWhatTheyAre) {
    for (const Model& model : models()) {
        SlotTable table = table_of(model.number, GASES[1], 250.0);
        table[SLOT].parameters = true;
        table[SLOT].gas.a *= 0.9;
        const double p = 1.2 * pressure(table, SLOT, 0.7);
        table[SLOT].temperature = calcnum::temperature(table, SLOT, 0.7, p);
        EXPECT_NEAR(pressure(table, SLOT, 0.7) / p, 1.0, 1e-9) << model.name;
    }
    SlotTable table = table_of(Virial, GASES[1], 250.0);
    table[SLOT].gas.b = -0.1;  // stored in the database: constant
    EXPECT_NEAR(calcnum::temperature(table, SLOT, 0.9, 2.0 * pressure(table, SLOT, 0.9)), 500.0, 1e-9);
}

// Models 7 and 8 with a(Tc) and b from a record without critical pressure: a(T) follows the temperature all the same.
TEST(Temperature, StoredAttractionFollowsTheTemperature) {
    for (const EquationOfState equation : {Soave, PengRobinson}) {
        const auto at = [equation](double t) {
            SlotTable table = table_of(equation, GASES[1], t);
            table[SLOT].gas.a = 3.9 * Global::temperature_factor(equation, GASES[1].w, t / GASES[1].tc);
            table[SLOT].gas.pc = 0.0;
            return table;
        };
        const double p = pressure(at(400.0), SLOT, 0.4);
        EXPECT_NEAR(calcnum::temperature(at(250.0), SLOT, 0.4, p), 400.0, 1e-9) << find_model(equation)->name;
    }
}

// At Tc (1 + 1/m)^2 the slot's a(T) is 0 and says nothing about other temperatures.
TEST(Temperature, StartsWhereTheAttractionVanishes) {
    for (const EquationOfState equation : {Soave, PengRobinson}) {
        const Gas& gas = GASES[1];
        const double m = Global::acentric_slope(equation, gas.w);
        double t = gas.tc * (1.0 + 1.0 / m) * (1.0 + 1.0 / m) * (1.0 - 1e-13);
        double least = 1.0, vanishing = t;
        for (int i = 0; i < 4000; ++i, t = std::nextafter(t, 1e9)) {
            const double factor = Global::temperature_factor(equation, gas.w, t / gas.tc);
            if (factor < least) {
                least = factor;
                vanishing = t;
            }
        }
        ASSERT_LT(least, 1e-31);
        const double p = pressure(table_of(equation, gas, 400.0), SLOT, 0.4);
        EXPECT_NEAR(calcnum::temperature(table_of(equation, gas, vanishing), SLOT, 0.4, p), 400.0, 1e-9)
            << find_model(equation)->name << ", factor " << least;
    }
}

// Where P(T) has a maximum, the answer lies before it.
TEST(Temperature, OfTwoSolutionsThePressureRisesAtTheOneGiven) {
    const Gas& ethanol = GASES[2];
    for (const EquationOfState equation : {Soave, PengRobinson}) {
        SlotTable table = table_of(equation, ethanol, 400.0);
        const double v = 3.0 * table[SLOT].gas.b;
        const double p = pressure(table, SLOT, v);
        const double found = calcnum::temperature(table, SLOT, v, p);
        EXPECT_NEAR(found, 400.0, 1e-7) << find_model(equation)->name;
        EXPECT_THROW(calcnum::temperature(table, SLOT, v, 1e6), FloatingPointError);
    }
    // An attraction below zero: P = R T/(V - b) - a/(sqrt(T) V (V + b)) falls, then rises.
    SlotTable table = table_of(RedlichKwong, GASES[1], 300.0);
    table[SLOT].parameters = true;
    table[SLOT].gas.a = -60.0;
    EXPECT_NEAR(calcnum::temperature(table, SLOT, 0.5, pressure(table, SLOT, 0.5)), 300.0, 1e-8);
    EXPECT_THROW(calcnum::temperature(table, SLOT, 0.5, 1.0), FloatingPointError);
}

// The ideal-gas start lies so low that the exponential underflows there.
TEST(Temperature, SurvivesAVanishingStart) {
    for (const EquationOfState equation : {Dieterici, DietericiSadus}) {
        SlotTable table = table_of(equation, GASES[1], 60.0);
        const double v = 1.2 * covolume(table[SLOT]);
        const double p = pressure(table, SLOT, v);
        ASSERT_GT(p, 0.0);
        EXPECT_NEAR(calcnum::temperature(table, SLOT, v, p), 60.0, 1e-7) << find_model(equation)->name;
    }
}

// Exponential models with a repulsion, c = a/(R V) < 0: P = P' T exp(|c|/T) is smallest, e P' |c|, at T = |c|.
TEST(Temperature, OfARepulsiveExponentialLiesAboveTheMinimum) {
    for (const EquationOfState equation : {Dieterici, DietericiSadus}) {
        SlotTable table = table_of(equation, GASES[1], 300.0);
        EquationSlot& slot = table[SLOT];
        slot.parameters = true;
        slot.gas.a = -4.0;
        const double coldest = 4.0 / (R * 0.5);
        for (const double t : {1.0001 * coldest, 1.5 * coldest, 40.0 * coldest}) {
            slot.temperature = t;
            EXPECT_NEAR(calcnum::temperature(table, SLOT, 0.5, pressure(table, SLOT, 0.5)) / t, 1.0, 1e-8) << t;
        }
        slot.temperature = coldest;
        EXPECT_THROW(calcnum::temperature(table, SLOT, 0.5, 0.999 * pressure(table, SLOT, 0.5)), FloatingPointError);
    }
}

TEST(Temperature, ImpossibleStatesAreErrors) {
    for (const Model& model : models()) {
        SlotTable table = table_of(model.number, GASES[1], 300.0);
        const double edge = covolume(table[SLOT]);
        EXPECT_THROW(calcnum::temperature(table, SLOT, edge, 1.0), FloatingPointError) << model.name;
        if (model.number == RedlichKwong) {
            EXPECT_THROW(calcnum::temperature(table, SLOT, 1.0, 1e300), FloatingPointError) << "the residual overflows";
        }
        // Berthelot and Redlich-Kwong reach every negative pressure near 0 K.
        if (model.number != Berthelot && model.number != RedlichKwong) {
            EXPECT_THROW(calcnum::temperature(table, SLOT, 1.0, -1e6), FloatingPointError) << model.name;
        }
        EXPECT_THROW(calcnum::temperature(table, SLOT, 1.0, std::nan("")), FloatingPointError) << model.name;
        table[SLOT].moles = 0.0;
        EXPECT_THROW(calcnum::temperature(table, SLOT, 1.0, 1.0), FloatingPointError) << model.name;
    }
    SlotTable table;
    table[SLOT].equation = static_cast<EquationOfState>(10);
    EXPECT_THROW(calcnum::temperature(table, SLOT, 1.0, 1.0), FloatingPointError);
    EXPECT_THROW(calcnum::temperature(table, 9, 1.0, 1.0), SubscriptOutOfRange);
}

}  // namespace

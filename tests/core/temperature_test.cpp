#include <gtest/gtest.h>

#include <cmath>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"

namespace {

using namespace tavo;
using enum EquationOfState;

constexpr int SLOT = 3;

struct Gas {
    const char* name;
    double tc, pc, w;
};
constexpr Gas GASES[]{{"helium", 5.1953, 2.2533, -0.3835},
                      {"carbon dioxide", 304.1282, 72.8083, 0.2239},
                      {"ethanol", 514.0, 60.5675, 0.644}};

/// Coefficients from the critical constants at the slot's temperature.
void derive_slot(EquationSlot& slot, double w) {
    const auto k = Global::derive(slot.equation, slot.gas.tc, slot.gas.pc, w, slot.mu, slot.temperature);
    slot.gas.a = k.a;
    slot.gas.b = k.b;
    slot.gas.c = k.c;
    slot.gas.d = k.d;
}

SlotTable table_of(EquationOfState equation, const Gas& gas, double t, double n = 1.0) {
    SlotTable table;
    EquationSlot& slot = table[SLOT];
    slot.equation = equation;
    slot.gas.tc = gas.tc;
    slot.gas.pc = gas.pc;
    slot.temperature = t;
    slot.moles = n;
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
        const Gas& gas = GASES[1];
        SlotTable table = table_of(model.number, gas, 250.0);
        table[SLOT].parameters = true;
        table[SLOT].gas.a *= 0.9;
        const double p = pressure(table, SLOT, 0.7);
        const double found = calcnum::temperature(table, SLOT, 0.7, 1.2 * p);
        table[SLOT].temperature = found;
        EXPECT_NEAR(pressure(table, SLOT, 0.7) / (1.2 * p), 1.0, 1e-9) << model.name;
    }
}

TEST(Temperature, StoredVirialCoefficientIsConstant) {
    SlotTable table = table_of(Virial, GASES[1], 250.0);
    table[SLOT].gas.b = -0.1;
    const double p = pressure(table, SLOT, 0.9);
    EXPECT_NEAR(calcnum::temperature(table, SLOT, 0.9, 2.0 * p), 500.0, 1e-9);
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

TEST(Temperature, ImpossibleStatesAreErrors) {
    for (const Model& model : models()) {
        SlotTable table = table_of(model.number, GASES[1], 300.0);
        const double edge = covolume(table[SLOT]);
        EXPECT_THROW(calcnum::temperature(table, SLOT, edge, 1.0), FloatingPointError) << model.name;
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

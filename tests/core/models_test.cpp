#include "core/models.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "core/errors.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using enum EquationOfState;

// Values of the formulas in 50-digit decimal arithmetic for exactly these binary numbers.
TEST(Pressure, AgreesWithHighPrecisionValues) {
    struct Case {
        EquationOfState equation;
        Coefficients k;
        double t, vm, p;
    };
    const Case cases[]{
        {IdealGas, {0, 0, 0, 0, 1.5}, 300, 2.5, 9.8471999999999993},
        {VanDerWaals, {3.61, 0.0428, 0, 0, 1.5}, 280, 0.15, 53.891376451077928},
        {VanDerWaals, {3.61, 0.0428, 0, 0, 1.5}, 280, 0.0429, 227806.48055595648},
        {Berthelot, {1100, 0.0428, 0, 0, 1.5}, 250, 0.2, 20.502544529262078},
        {Dieterici, {4.63, 0.0463, 0, 0, 1.5}, 290, 0.12, 63.815954639962045},
        {Dieterici, {4.63, 0.0463, 0, 0, 1.5}, 50, 0.05, 1.7513457007437944e-7},
        {RedlichKwong, {63.8, 0.0297, 0, 0, 1.5}, 310, 0.09, 85.508237609986368},
        {Virial, {1, -0.118, 0.0018, 8e-05, 1.5}, 300, 0.5, 38.002314239999998},
        {Virial, {0.9, -0.118, 0.0018, 8e-05, 1.5}, 300, 0.02, 11693.549999999999},
        {FreeExponent, {4.2, 0.03, 0, 0, 1.7}, 300, 0.1, 141.18707616225990},
        {FreeExponent, {4.2, 0.03, 0, 0, 2.6}, 300, 11.5, 2.1389590942162647},
        {Soave, {3.5, 0.0297, 0.2239, 0, 1.5}, 270, 0.08, 41.666163456816054},
        {PengRobinson, {3.9, 0.0266, 0.2239, 0, 1.5}, 270, 0.08, 22.888850734612344},
        {DietericiSadus, {5.2, 0.086, 0, 0, 1.5}, 300, 0.03, 58.807181421025069},
        {DietericiSadus, {5.2, 0.086, 0, 0, 1.5}, 300, 0.0216, 1300744.4317669359},
    };
    for (const Case& c : cases) {
        const double scale = std::fabs(c.p) + R * c.t / c.vm;  // attraction and repulsion nearly cancel
        EXPECT_NEAR(pressure(slot_of(c.equation, c.k, c.t), c.vm), c.p, 1e-13 * scale) << find_model(c.equation)->name;
        // The pressure is intensive.
        EXPECT_NEAR(pressure(slot_of(c.equation, c.k, c.t, 7.5), 7.5 * c.vm), c.p, 1e-11 * scale);
    }
}

TEST(Pressure, IsZeroOutsideTheDomain) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const Model& model : models()) {
        const Coefficients k = plausible(model.number);
        for (const double n : {0.0, -1.0, nan})
            EXPECT_EQ(pressure(slot_of(model.number, k, 300.0, n), 1.0), 0.0) << model.name;
        const EquationSlot slot = slot_of(model.number, k, 300.0);
        const double edge = model.covolume(k);
        EXPECT_EQ(edge, model.number == IdealGas || model.number == Virial ? 0.0
                        : model.number == DietericiSadus                   ? k.b / 4.0
                                                                           : k.b);
        for (const double v : {edge, edge / 2.0, -1.0, nan})
            EXPECT_EQ(pressure(slot, v), 0.0) << model.name;
        EXPECT_GT(pressure(slot, edge + 1e-9), 1e7) << model.name;
        EXPECT_TRUE(edge == 0.0 || pressure(slot, std::nextafter(edge, 1.0)) > 1e15 || model.number == Dieterici);
    }
    EXPECT_EQ(pressure(slot_of(static_cast<EquationOfState>(10), plausible(VanDerWaals), 300.0), 1.0), 0.0);
    EXPECT_EQ(pressure(slot_of(static_cast<EquationOfState>(-1), plausible(VanDerWaals), 300.0), 1.0), 0.0);
    // No amount is looked at before the temperature would divide by zero.
    EXPECT_EQ(pressure(slot_of(Dieterici, plausible(Dieterici), 0.0, 0.0), 1.0), 0.0);
    // A negative co-volume does not open the volumes below zero.
    EXPECT_EQ(pressure(slot_of(VanDerWaals, {1.0, -2.0, 0.0, 0.0, 1.5}, 300.0), -1.0), 0.0);
}

TEST(Pressure, FaultsOfTheArithmeticAreErrors) {
    struct Case {
        EquationOfState equation;
        Coefficients k;
        double t, v;
    };
    const Case cases[]{
        {Berthelot, plausible(Berthelot), 0.0, 1.0},
        {Dieterici, plausible(Dieterici), 0.0, 1.0},  // exp(-infinity) would be 0
        {RedlichKwong, plausible(RedlichKwong), 0.0, 1.0},
        {RedlichKwong, plausible(RedlichKwong), -1.0, 1.0},
        {DietericiSadus, plausible(DietericiSadus), 0.0, 1.0},
        {Dieterici, {-1e6, 0.03, 0.0, 0.0, 1.5}, 10.0, 0.1},        // exp overflows
        {FreeExponent, {4.0, 0.03, 0.0, 0.0, 400.0}, 300.0, 10.0},  // vm^mu overflows: a/infinity would be 0
        {FreeExponent, {4.0, 0.03, 0.0, 0.0, 400.0}, 300.0, 0.1},   // vm^mu underflows
        {VanDerWaals, {1.0, -0.1, 0.0, 0.0, 1.5}, 300.0, 0.0},
        {VanDerWaals, plausible(VanDerWaals), std::numeric_limits<double>::infinity(), 1.0},
        {IdealGas, plausible(IdealGas), 300.0, 1e-308},
    };
    for (const Case& c : cases)
        EXPECT_THROW(pressure(slot_of(c.equation, c.k, c.t), c.v), FloatingPointError) << find_model(c.equation)->name;
    EXPECT_THROW(pressure(slot_of(IdealGas, plausible(IdealGas), 300.0, 1e-300), 1e300), FloatingPointError);
    // No division by T in these.
    EXPECT_NEAR(pressure(slot_of(VanDerWaals, {3.6, 0.04, 0.0, 0.0, 1.5}, 0.0), 2.0), -0.9, 1e-15);
    EXPECT_LT(pressure(slot_of(Soave, plausible(Soave), 0.0), 2.0), 0.0);
    try {
        pressure(slot_of(Dieterici, plausible(Dieterici), 0.0), 0.5);
    } catch (const FloatingPointError& error) {
        EXPECT_STREQ(error.what(), "dieterici: no finite pressure at 0 K and 0.5 l/mol");
    }
}

TEST(Pressure, SpecialCasesCoincideBitForBit) {
    for (int i = 0; i < 750; ++i) {  // 0.03 to 800 l/mol
        const double vm = 0.0301 * std::pow(1.0137, i);
        const Coefficients ideal{1.0, 0.0, 0.0, 0.0, 1.5};
        EXPECT_EQ(pressure(slot_of(Virial, ideal, 273.15), vm), pressure(slot_of(IdealGas, {}, 273.15), vm));
        const Coefficients k{3.61, 0.03, 0.0, 0.0, 2.0};
        EXPECT_EQ(pressure(slot_of(FreeExponent, k, 273.15), vm), pressure(slot_of(VanDerWaals, k, 273.15), vm));
    }
}

TEST(Models, TableHoldsCaptionsAndCoefficientLabels) {
    const int stored[]{0, 2, 2, 2, 2, 4, 3, 3, 3, 2};
    for (std::size_t i = 0; i < 10; ++i) {
        const Model& model = models()[i];
        EXPECT_EQ(model.stored, stored[i]) << model.name;
        EXPECT_EQ(model.texts.size(), model.number == FreeExponent ? 2 : stored[i]) << model.name;
        EXPECT_EQ(model.caption.empty(), model.caption_string != 0) << model.name;
    }
    EXPECT_EQ(models()[7].caption, "REDLICH-KWONG-SOAVE");
    EXPECT_EQ(models()[6].caption_string, 86);
    EXPECT_EQ(models()[2].texts[0].label, "a [l \xC2\xB2 atm / mol \xC2\xB2 K]");
    EXPECT_EQ(models()[4].texts[0].unit,
              "l \xC2\xB2"
              "atm/mol \xC2\xB2K \xC2\xBD");
    EXPECT_EQ(models()[5].texts[3].label, "D [l \xC2\xB3 / mol \xC2\xB3]");
    EXPECT_EQ(models()[8].texts[0].label, "a (T) [l \xC2\xB2 atm / mol \xC2\xB2]");
    EXPECT_EQ(models()[9].texts[1].label, "b [l / mol]");
}

}  // namespace

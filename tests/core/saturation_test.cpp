#include <gtest/gtest.h>

#include <cstdint>
#include <fstream>
#include <limits>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"
#include "tests/core/saturation_checks.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using enum EquationOfState;

void expect_relative(double value, double expected, double tolerance, const std::string& what) {
    EXPECT_LE(std::abs(value - expected), tolerance * std::abs(expected))
        << what << ": " << value << ", not " << expected;
}

TEST(Saturation, AgreesWithHighPrecisionValues) {
    std::ifstream file(TAVO_SOURCE_DIR "/tests/core/data/saturation.tsv");
    std::string line;
    std::getline(file, line);
    int rows = 0;
    for (; std::getline(file, line); ++rows) {
        std::vector<std::string> field;
        std::istringstream stream(line);
        for (std::string text; std::getline(stream, text, '\t');)
            field.push_back(text);
        ASSERT_EQ(field.size(), 10U) << line;
        const auto data = one_gas(field[1], field[2], field[3], field[4] == "-" ? "1.5" : field[4]);
        const double t = Val(field[5]);
        SlotTable table;
        table[0] = loaded(data, static_cast<EquationOfState>(Val(field[0])), 1, t);
        double vl = 0.0;
        double vg = 0.0;
        expect_relative(calcnum::vapour_pressure(table, 0, t, vl, vg), Val(field[6]), 1e-13, "Pv in " + line);
        expect_relative(vl, Val(field[7]), 1e-13, "vl in " + line);
        expect_relative(vg, Val(field[8]), 1e-13, "vg in " + line);
        const auto reload = [&data](EquationSlot& slot) { Global::load_slot(data, slot, false); };
        expect_relative(calcnum::vaporisation_enthalpy(table, t, vl, vg, reload), Val(field[9]), 1e-11, "H in " + line);
    }
    EXPECT_EQ(rows, 108);
}

EquationSlot by_hand(int equation, double a, double b, double c, double d, double mu, double t) {
    EquationSlot slot = slot_of(static_cast<EquationOfState>(equation), {a, b, c, d, mu}, t);
    slot.gas.tc = 1e9;
    return slot;
}

void expect_coexistence(const EquationSlot& slot, const calcnum::Saturation& s, const std::string& what) {
    const Residuals r = residuals(slot, slot.temperature, s);
    EXPECT_TRUE(r.stable) << what;
    // An ulp of the attraction moves the pressure of a cold gas by the logarithm of the volume ratio as many ulps.
    const double rounding = 1e-15 * (30.0 + std::log(s.vg / s.vl));
    EXPECT_LT(r.liquid, rounding) << what;
    EXPECT_LT(r.gas, rounding) << what;
    EXPECT_LT(r.area, rounding) << what;
    EXPECT_LT(r.loop, 1e-6) << what;
}

// Roots of the equal-area conditions found with 60 to 500 digits (mpmath), from the very coefficients below.
TEST(Saturation, HoldsForCoefficientsSetByHandFromTheCriticalPointToTheColdestGas) {
    struct Row {
        int equation;
        double a, b, c, d, mu, t, pv, vl, vg;
    };
    constexpr Row ROWS[] = {
        {1, 3.6, 0.0427, 0.0, 0.0, 1.5, 304.1, 72.8233672608355275, 0.120285081523047752, 0.136878831734116437},
        {1, 3.6, 0.0427, 0.0, 0.0, 1.5, 20.0, 9.48270951823864678e-20, 0.0435652454786283051, 1.7307289618472278e+19},
        {1, 3.6, 0.0427, 0.0, 0.0, 1.5, 2.0, 1.56927769133525147e-220, 0.0427834469660067199, 1.04583147333443061e+219},
        {2, 1100.0, 0.0428, 0.0, 0.0, 1.5, 60.0, 1.62952850465147287e-34, 0.0433036042878789002,
         3.02148749527586203e+34},
        {2, 1100.0, 0.0428, 0.0, 0.0, 1.5, 304.0, 71.9569967776872325, 0.113626907807853383, 0.147029636044477342},
        {3, 4.6, 0.0463, 0.0, 0.0, 1.5, 15.0, 0.0944078078782369929, 0.0463000000000000009, 8.4041855789984307},
        {3, 4.6, 0.0463, 0.0, 0.0, 1.5, 120.0, 7.02108842029980485, 0.046358982774701025, 0.862090846434243273},
        {3, 4.6, 0.0463, 0.0, 0.0, 1.5, 302.0, 72.112912485278085, 0.0855054042579969662, 0.100781178181863279},
        {4, 63.8, 0.0297, 0.0, 0.0, 1.5, 304.0, 72.5547702539195725, 0.106614994279263151, 0.122843451808132877},
        {4, 63.8, 0.0297, 0.0, 0.0, 1.5, 30.0, 7.20511348200175005e-45, 0.0300800382314113918, 3.4167400779315052e+44},
        {5, 1.0, -0.12, 0.002, 5e-05, 1.5, 300.0, 34.8113231104545003, 0.039486502959821647, 0.560476404751026492},
        {5, 0.9, -0.3, 0.01, 0.0004, 1.5, 250.0, 4.35472578380942197, 0.0664365683617195842, 3.87866436202581036},
        {5, 1.0, -0.12, 0.0036, 0.0, 1.5, 250.0, 40.452006068157429, 0.0461006422125126466, 0.346872064324928166},
        {5, 1.0, -0.2, 0.009, -2e-06, 1.5, 250.0, 20.6640558802350324, 0.0640083609963519068, 0.74114068185584023},
        {5, 1.0, -0.07, -0.0012, 9e-05, 1.5, 250.0, 46.6548459567042882, 0.03561075219006019, 0.347795981378465747},
        {6, 22.0, 0.02, 0.0, 0.0, 1.1, 150.0, 6.1571612846893808e-8, 0.0332258612716006499, 145363314.39589776},
        {6, 60.0, 0.02, 0.0, 0.0, 1.1, 200.0, 1.76947858913243485e-20, 0.0246575181438640275, 9.00286133489020592e+20},
        {6, 0.4, 0.03, 0.0, 0.0, 2.5, 200.0, 103.588567069899893, 0.0502924981614097432, 0.115906993038196555},
        {6, 0.03, 0.05, 0.0, 0.0, 5.0, 150.0, 4.36769046169074626e-38, 0.0501298928963004161, 2.8181942168207469e+38},
        {6, 1.6, 0.0106, 0.0, 0.0, 1.5, 60.0, 3.51983139482232462, 0.0179797206819704213, 0.947697388263017075},
        {7, 5.2, 0.0297, 0.0, 0.0, 1.5, 150.0, 0.137466130002557076, 0.0350785659865398226, 89.1477154592551393},
        {8, 4.1, 0.0267, 0.0, 0.0, 1.5, 300.0, 58.5086482275598264, 0.0631960951198982673, 0.21842832137698401},
        {8, 4.1, 0.0267, 0.0, 0.0, 1.5, 50.0, 2.016575082695399e-7, 0.0283004384228424369, 20346377.5739508983},
        {9, 5.0, 0.114, 0.0, 0.0, 1.5, 8.0, 0.0246733493490875768, 0.028500000000000001, 17.2024363297548203},
        {9, 5.0, 0.114, 0.0, 0.0, 1.5, 60.0, 1.56360365912162371, 0.0285011973870803576, 2.01289869351555458},
        {9, 5.0, 0.114, 0.0, 0.0, 1.5, 200.0, 29.2223853869509082, 0.0339046409758232408, 0.306862315069566922},
        {9, 5.0, 0.114, 0.0, 0.0, 1.5, 253.0, 68.8174602917895805, 0.0600843706493567946, 0.0952658657913612019},
    };
    for (const Row& row : ROWS) {
        const auto slot = by_hand(row.equation, row.a, row.b, row.c, row.d, row.mu, row.t);
        const auto s = calcnum::saturation(slot, row.t);
        const std::string what = "model " + std::to_string(row.equation) + " at " + to_text(row.t) + " K";
        ASSERT_TRUE(s) << what;
        // At 1e-220 atm an ulp of alpha = a/(bRT) = 514 moves the pressure by 1e-13.
        expect_relative(s->pv, row.pv, row.pv < 1e-100 ? 1e-12 : 1e-13, "Pv, " + what);
        expect_relative(s->vl, row.vl, 1e-13, "vl, " + what);
        expect_relative(s->vg, row.vg, row.pv < 1e-100 ? 1e-12 : 1e-13, "vg, " + what);
    }
}

TEST(Saturation, EveryGasOfTheDatabaseCoexistsInEveryModel) {
    const confreg::Text data = confreg::read(TAVO_SOURCE_DIR "/data/data");
    const int gases = Global::gas_count(data);
    ASSERT_EQ(gases, 60);
    for (const Model& model : models()) {
        for (int gas = 1; gas <= gases && model.number != IdealGas; ++gas) {
            const double tc = loaded(data, model.number, gas, 300.0).gas.tc;
            double last = 0.0;
            for (const double below : {0.7 * tc, 0.45 * tc, 0.2 * tc, 0.05 * tc, 0.002 * tc, 0.0051}) {
                const auto slot = loaded(data, model.number, gas, tc - below);
                const std::string what = std::string(model.name) + ", " + slot.gas.name + ", Tc - " + to_text(below);
                const auto s = calcnum::saturation(slot, slot.temperature);
                // The constants of this equation have five digits: its own critical point lies a little lower.
                const double own_ratio = slot.gas.a / (slot.gas.b * R * slot.temperature);
                if (model.number == PengRobinson && own_ratio < 5.877359948604403) {
                    EXPECT_FALSE(s) << what;
                    EXPECT_LT(below, 1e-4 * tc) << what;
                    continue;
                }
                ASSERT_TRUE(s) << what;
                expect_coexistence(slot, *s, what);
                EXPECT_GT(s->pv, last) << what;
                last = s->pv;
            }
        }
    }
}

/// Coefficients of either sign over many orders of magnitude, from a generator that is the same everywhere.
class RandomCoefficients {
public:
    double between(double low, double high) {
        state_ = state_ * 6364136223846793005U + 1442695040888963407U;
        return low + (high - low) * static_cast<double>(state_ >> 11U) * 0x1p-53;
    }
    double size(double low, double high) { return std::exp(between(low, high)); }
    double sign(double negative) { return between(0.0, 1.0) < negative ? -1.0 : 1.0; }

    EquationSlot virial() {
        const double volume = size(-5.0, 0.0);
        const double a = sign(0.2) * size(-2.0, 1.0);
        const double b = sign(0.75) * volume * size(-1.0, 3.0);
        const double c = sign(0.3) * volume * volume * size(-3.0, 3.0);
        const double d = sign(0.3) * volume * volume * volume * size(-5.0, 4.0);
        return by_hand(5, a, b, c, between(0.0, 1.0) < 0.1 ? 0.0 : d, 1.5, size(0.0, 7.0));
    }
    EquationSlot of(int equation) {
        if (equation == 5) {
            return virial();
        }
        const double t = size(0.0, 7.0);
        const double b = size(-6.0, 1.0);
        const double mu = 1.0 + size(-4.0, 3.0);
        const double strength = size(0.5, 4.5) * R * t;
        const double power = equation == 6 ? std::pow(b, mu - 1.0) : b;
        const double factor = equation == 2 ? t : equation == 4 ? std::sqrt(t) : equation == 9 ? 0.25 : 1.0;
        return by_hand(equation, strength * power * factor, b, 0.0, 0.0, mu, t);
    }

private:
    std::uint64_t state_ = 20;
};

TEST(Saturation, RandomCoefficientsGiveACoexistenceOrNone) {
    RandomCoefficients random;
    for (int equation = 1; equation <= 9; ++equation) {
        int found = 0;
        for (int i = 0; i < 150; ++i) {
            const auto slot = random.of(equation);
            const auto& k = slot.gas;
            const std::string what = "model " + std::to_string(equation) + ", " + to_text(k.a) + ", " + to_text(k.b) +
                                     ", " + to_text(k.c) + ", " + to_text(k.d) + ", mu " + to_text(slot.mu) + ", " +
                                     to_text(slot.temperature) + " K";
            if (const auto s = calcnum::saturation(slot, slot.temperature)) {
                ++found;
                expect_coexistence(slot, *s, what);
            }
        }
        EXPECT_GT(found, 30) << equation;
    }
}

TEST(Saturation, IsEmptyWhereTheLoopIsMissingAndLeavesTheVolumesAlone) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    struct Case {
        const char* why;
        EquationSlot slot;
    };
    std::vector<Case> cases{
        {"ideal gas", by_hand(0, 3.6, 0.0427, 0, 0, 1.5, 250.0)},
        {"unknown model", by_hand(10, 3.6, 0.0427, 0, 0, 1.5, 250.0)},
        {"above the critical point of the equation itself", by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 305.0)},
        {"pressure below the smallest number", by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 1.4)},
        {"absolute zero", by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 0.0)},
        {"negative temperature", by_hand(3, 3.6, 0.0427, 0, 0, 1.5, -5.0)},
        {"temperature not a number", by_hand(9, 3.6, 0.0427, 0, 0, 1.5, nan)},
        {"smallest temperature", by_hand(3, 3.6, 0.0427, 0, 0, 1.5, 5e-324)},
        {"exponent 1 has one extremum only", by_hand(6, 3.6, 0.0427, 0, 0, 1.0, 20.0)},
        {"exponent below 1", by_hand(6, 3.6, 0.0427, 0, 0, 0.5, 20.0)},
        {"exponent not a number", by_hand(6, 3.6, 0.0427, 0, 0, nan, 20.0)},
        {"exponent infinite", by_hand(6, 3.6, 0.0427, 0, 0, infinity, 20.0)},
        {"virial without attraction", by_hand(5, 1, 0.1, 0.01, 0.001, 1.5, 20.0)},
        {"virial of an ideal gas", by_hand(5, 1, 0, 0, 0, 1.5, 20.0)},
        {"virial that never rises again", by_hand(5, 1, -0.1, 0, 0, 1.5, 20.0)},
        {"virial with a negative gas only", by_hand(5, -1, -0.1, 0.001, 0.001, 1.5, 20.0)},
        {"virial not a number", by_hand(5, 1, -0.12, nan, 5e-5, 1.5, 20.0)},
        {"virial infinite", by_hand(5, 1, -infinity, 0.002, 5e-5, 1.5, 20.0)},
    };
    for (const int equation : {1, 2, 3, 4, 6, 7, 8, 9}) {
        for (const double wrong : {0.0, -3.0, nan, infinity}) {
            cases.push_back({"attraction", by_hand(equation, wrong, 0.04, 0, 0, 1.5, 20.0)});
            cases.push_back({"co-volume", by_hand(equation, 3.0, wrong, 0, 0, 1.5, 20.0)});
        }
        cases.push_back({"strong attraction", by_hand(equation, 1e300, 1e-300, 0, 0, 1.5, 20.0)});
        cases.push_back({"weak attraction", by_hand(equation, 1e-300, 1e300, 0, 0, 1.5, 20.0)});
    }
    for (const double moles : {0.0, -1.0, nan}) {
        cases.push_back({"amount", by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 250.0)});
        cases.back().slot.moles = moles;
    }
    for (const double tc : {250.0, 250.005, nan}) {
        cases.push_back({"critical temperature", by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 250.0)});
        cases.back().slot.gas.tc = tc;
    }
    SlotTable table;
    for (const Case& c : cases) {
        table[3] = c.slot;
        double vl = 7.0;
        double vg = 8.0;
        EXPECT_EQ(calcnum::vapour_pressure(table, 3, c.slot.temperature, vl, vg), -1.0)
            << c.why << ", model " << static_cast<int>(c.slot.equation);
        EXPECT_EQ(std::pair(vl, vg), std::pair(7.0, 8.0)) << c.why;
    }
}

TEST(Spinodals, AreWhereThePressureIsStationary) {
    RandomCoefficients random;
    for (int equation = 1; equation <= 9; ++equation) {
        const auto slot = equation == 5 ? by_hand(5, 1, -0.12, 0.002, 5e-5, 1.5, 300.0) : random.of(equation);
        const auto s = calcnum::spinodals(slot, slot.temperature);
        if (equation == 5 || calcnum::saturation(slot, slot.temperature)) {
            ASSERT_TRUE(s) << equation;
            for (const double v : {s->liquid, s->gas}) {
                const Real free = v - covolume(slot);
                const Real scale = static_cast<Real>(R) * slot.temperature / v;
                EXPECT_LT(std::abs(exact_slope(slot, slot.temperature, free)), 1e-8L * scale) << equation;
            }
        }
    }
    // Dieterici's spinodals are the roots of v^2 = alpha b (v - b).
    const auto slot = by_hand(3, 5.0 * 0.05 * R * 300.0, 0.05, 0, 0, 1.5, 300.0);
    const auto s = calcnum::spinodals(slot, 300.0);
    ASSERT_TRUE(s);
    expect_relative(s->liquid, 0.05 * (5.0 - std::sqrt(5.0)) / 2.0, 1e-14, "liquid spinodal");
    expect_relative(s->gas, 0.05 * (5.0 + std::sqrt(5.0)) / 2.0, 1e-14, "gas spinodal");
}

class Enthalpy : public ::testing::Test {
protected:
    double of(EquationOfState equation, double t) {
        data = std::make_unique<confreg::Text>(one_gas("126.2", "33.5", "0.039"));
        table[0] = loaded(*data, equation, 1, t);
        double vl = 0.0;
        double vg = 0.0;
        calcnum::vapour_pressure(table, 0, t, vl, vg);
        difference = vg - vl;
        return calcnum::vaporisation_enthalpy(table, t, vl, vg, [this](EquationSlot& slot) {
            asked.push_back(slot.temperature);
            Global::load_slot(*data, slot, false);
        });
    }
    double pressure_at(EquationOfState equation, double t) const {
        const auto s = calcnum::saturation(loaded(*data, equation, 1, t), t);
        return s ? s->pv : -1.0;
    }

    std::unique_ptr<confreg::Text> data;
    SlotTable table;
    std::vector<double> asked;  // temperatures at which the coefficients were loaded
    double difference = 0.0;
};

TEST_F(Enthalpy, AsksAtBothSidesOfTheTemperatureAndHalvesTowardsIt) {
    const double tc = 126.2;
    struct Case {
        double t, colder, warmer;
    };
    for (const auto& [t, colder, warmer] :
         {Case{100.0, 99.5, 100.5}, {0.3, 0.05, 0.8}, {0.5, 0.25, 1.0}, {tc - 0.2, tc - 0.7, tc - 0.075}}) {
        asked.clear();
        const double h = of(Dieterici, t);
        ASSERT_EQ(asked.size(), 3U);
        EXPECT_NEAR(asked[0], colder, 1e-12);
        EXPECT_NEAR(asked[1], warmer, 1e-12);
        EXPECT_EQ(asked[2], t);
        EXPECT_EQ(table[0].temperature, t);
        // The factors stay those of T - 0.5 and T + 0.5 where one of them was moved.
        const double p1 = pressure_at(Dieterici, asked[0]);
        const double p2 = pressure_at(Dieterici, asked[1]);
        const double expected = (t * t - 0.25) * std::log(p2 / p1) * difference * pressure_at(Dieterici, t) / t;
        expect_relative(h, expected, 1e-13, "enthalpy at " + to_text(t));
    }
}

TEST_F(Enthalpy, CannotBeFormedAtTheCriticalPointAboveItOrWithoutTemperature) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    for (const double t : {126.2 - 0.004, 126.2, 150.0, -3.0, 5e-324, nan}) {
        EXPECT_EQ(of(VanDerWaals, t), -1.0) << t;
        EXPECT_TRUE(table[0].temperature == t || std::isnan(t)) << t;
    }
    // Within the band, but the warmer neighbour falls outside it.
    EXPECT_EQ(of(VanDerWaals, 126.2 - 0.0051), -1.0);
}

TEST_F(Enthalpy, LeavesTheTemperatureWhenLoadingFailsOrNothingFiniteComesOut) {
    const double infinite = std::numeric_limits<double>::infinity();
    const auto refuse = [](EquationSlot&) { throw std::runtime_error("no database"); };
    of(VanDerWaals, 100.0);
    EXPECT_THROW(calcnum::vaporisation_enthalpy(table, 100.0, 0.05, 1.0, refuse), std::runtime_error);
    EXPECT_EQ(table[0].temperature, 100.0);
    for (const double vg : {infinite, -infinite, std::nan("")}) {
        EXPECT_THROW(calcnum::vaporisation_enthalpy(table, 100.0, 0.05, vg, {}), FloatingPointError) << vg;
        EXPECT_EQ(table[0].temperature, 100.0);
    }
}

TEST(WorkIntegral, IsTheAreaUnderTheIsotherm) {
    const confreg::Text data = one_gas("304.1282", "72.8083", "0.2239", "1.7");
    for (const Model& model : models()) {
        auto slot = loaded(data, model.number, 1, 250.0);
        slot.moles = 2.5;  // the integral is that of one mole
        for (const auto& [v1, v2] : {std::pair{0.06, 0.09}, {0.09, 0.06}, {0.08, 3.0}, {0.5, 0.50001}}) {
            const Real core = model.number == IdealGas ? 0.0L : covolume(slot);
            const Real expected = exact_area(slot, 250.0L, v1 - core, v2 - core, 0.0L);
            // Simpson's rule with its 1000 steps is what models 3 and 9 have; its error grows with the range.
            const bool simpson = model.number == Dieterici || model.number == DietericiSadus;
            const double tolerance = v2 - v1 > 1.0 && simpson ? 1e-5 : simpson ? 1e-9 : 1e-13;
            const double scale = R * 250.0 * std::abs(std::log(v2 / v1));  // areas of both signs cancel
            EXPECT_NEAR(calcnum::work_integral(slot, v1, v2), static_cast<double>(expected), tolerance * scale)
                << model.name << " from " << v1 << " to " << v2;
        }
    }
    auto slot = loaded(data, FreeExponent, 1, 250.0);
    slot.mu = 1.0;
    const double expected = R * 250.0 * std::log((0.5 - slot.gas.b) / (0.1 - slot.gas.b)) - slot.gas.a * std::log(5.0);
    expect_relative(calcnum::work_integral(slot, 0.1, 0.5), expected, 1e-14, "logarithm at mu = 1");
}

TEST(WorkIntegral, ReportsAVolumeInsideTheCovolumeAndWhatIsNotFinite) {
    const auto slot = by_hand(1, 3.6, 0.0427, 0, 0, 1.5, 250.0);
    EXPECT_THROW(calcnum::work_integral(slot, 0.0427, 0.1), FloatingPointError);
    EXPECT_THROW(calcnum::work_integral(slot, 0.02, 0.03), FloatingPointError);
    EXPECT_THROW(calcnum::work_integral(by_hand(5, 1, -0.1, 0.002, 5e-5, 1.5, 250.0), 0.0, 0.1), FloatingPointError);
    for (int model = 0; model <= 9; ++model) {
        const auto any = by_hand(model, 3.6, 0.0427, 0.002, 5e-5, 1.5, 250.0);
        EXPECT_THROW(calcnum::work_integral(any, std::nan(""), 0.1), FloatingPointError) << model;
        EXPECT_THROW(calcnum::work_integral(any, 0.1, std::nan("")), FloatingPointError) << model;
    }
}

}  // namespace

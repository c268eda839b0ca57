#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <tuple>
#include <utility>

#include "core/calcnum.h"
#include "core/numtext.h"
#include "tests/core/saturation_checks.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using calcnum::critical_point;
using enum EquationOfState;

/// First and second derivative of P over Vm by differences, in units of RT and the free volume.
std::pair<double, double> derivatives(const EquationSlot& slot, double t, double v) {
    const Real free = v - covolume(slot);
    const Real h = 1e-4L * free;
    const Real low = exact_pressure(slot, t, free - h);
    const Real middle = exact_pressure(slot, t, free);
    const Real high = exact_pressure(slot, t, free + h);
    const Real unit = static_cast<Real>(R) * t / free;
    return {static_cast<double>((high - low) / (2e-4L * unit)),
            static_cast<double>((high - 2 * middle + low) / (1e-8L * unit))};
}

/// What automatic coefficients miss the gas's own Tc and Pc by.
struct Case {
    EquationOfState equation;
    double t_error, p_error;
};
constexpr Case CASES[]{{VanDerWaals, 1e-12, 1e-12},  {Berthelot, 1e-12, 1e-12},      {Dieterici, 1e-12, 1e-12},
                       {RedlichKwong, 1e-12, 1e-12}, {FreeExponent, 1e-12, 1e-12},   {Soave, 1e-6, 1e-6},
                       {PengRobinson, 1e-4, 2e-4},   {DietericiSadus, 0.0024, 0.01}, {Virial, 0.065, 0.22}};
constexpr struct {
    const char *tc, *pc, *w;
} GASES[]{{"5.1953", "2.2533", "-0.3835"},
          {"32.98", "12.76", "-0.216"},
          {"304.1282", "72.8083", "0.2239"},
          {"647.1", "217.75", "0.344"},
          {"900", "9", "0.9"}};

/// A point of the slot that `at` gives for the temperature: horizontal inflection, and the end of the loop.
template <class Slot>
void expect_end_of_loop(const calcnum::CriticalPoint& point, const Slot& at) {
    const auto [first, second] = derivatives(at(point.t), point.t, point.v);
    EXPECT_NEAR(first, 0.0, 1e-7);
    EXPECT_NEAR(second, 0.0, 1e-6);
    EXPECT_NEAR(pressure(at(point.t), point.v) / point.p, 1.0, 1e-12);
    EXPECT_TRUE(calcnum::spinodals(at(0.999 * point.t), 0.999 * point.t));
    EXPECT_FALSE(calcnum::spinodals(at(1.001 * point.t), 1.001 * point.t));
}

TEST(CriticalPoint, OfAutomaticCoefficientsFollowsThem) {
    for (const auto& gas : GASES) {
        const confreg::Text data = one_gas(gas.tc, gas.pc, gas.w);
        for (const Case& c : CASES)
            for (const double t : {298.15, 0.7 * Val(gas.tc)}) {
                SCOPED_TRACE(std::string(find_model(c.equation)->name) + ", Tc " + gas.tc);
                const EquationSlot slot = loaded(data, c.equation, 1, t);
                const auto point = critical_point(slot);
                ASSERT_TRUE(point);
                expect_end_of_loop(*point, [&](double at) { return loaded(data, c.equation, 1, at); });
                EXPECT_NEAR(point->t / slot.gas.tc, 1.0, c.t_error);
                EXPECT_NEAR(point->p / slot.gas.pc, 1.0, c.p_error);
            }
    }
}

TEST(CriticalPoint, OfCoefficientsSetByHandIsTheirOwn) {
    for (const Model& model : models()) {
        SCOPED_TRACE(model.name);
        const auto at = [&](double t) {
            EquationSlot slot = slot_of(model.number, plausible(model.number), t);
            slot.gas.tc = 500.0;
            slot.gas.pc = 20.0;
            slot.parameters = true;
            slot.temperature = t;
            return slot;
        };
        const auto point = critical_point(at(300.0));
        ASSERT_EQ(point.has_value(), model.number != IdealGas && model.number != Virial);
        if (point)
            expect_end_of_loop(*point, at);
    }
    const auto co2 = critical_point(slot_of(VanDerWaals, {3.592, 0.04267, 0, 0, 0}, 300.0));
    ASSERT_TRUE(co2);
    EXPECT_NEAR(co2->t, 8.0 * 3.592 / (27.0 * R * 0.04267), 1e-10);
    EXPECT_NEAR(co2->p, 3.592 / (27.0 * 0.04267 * 0.04267), 1e-10);
    EXPECT_NEAR(co2->v, 3.0 * 0.04267, 1e-15);
}

TEST(CriticalPoint, OfOddCoefficients) {
    for (const double mu : {1.02, 1.2, 2.0, 7.0, 60.0}) {
        const auto at = [mu](double t) { return slot_of(FreeExponent, {1.0, 0.8, 0, 0, mu}, t); };
        const auto point = critical_point(at(300.0));
        ASSERT_TRUE(point) << mu;
        expect_end_of_loop(*point, at);
    }
    // With such an acentric factor a(T) falls to 0 far below Tc.
    const confreg::Text data = one_gas("300", "50", "-1.2");
    for (const EquationOfState equation : {Soave, PengRobinson}) {
        const auto at = [&](double t) { return loaded(data, equation, 1, t); };
        const auto point = critical_point(at(298.15));
        ASSERT_TRUE(point);
        EXPECT_LT(point->t, 30.0);
        expect_end_of_loop(*point, at);
    }
    constexpr double NAN_VALUE = std::numeric_limits<double>::quiet_NaN();
    for (const Coefficients& none : {Coefficients{0, 0.04, 0, 0, 2},
                                     {-1, 0.04, 0, 0, 2},
                                     {3, 0, 0, 0, 2},
                                     {3, -0.04, 0, 0, 2},
                                     {NAN_VALUE, 0.04, 0, 0, 2},
                                     {1e308, 1e-308, 0, 0, 2}})
        for (const Model& model : models())
            EXPECT_FALSE(critical_point(slot_of(model.number, none, 300.0))) << model.name << ' ' << none.a;
    EXPECT_FALSE(critical_point(slot_of(FreeExponent, {3, 0.04, 0, 0, 1.0}, 300.0)));
    // a(T) that grows with T, stored so large that the loop never ends.
    EquationSlot ever = slot_of(PengRobinson, {0, 0.03, -0.5, 0, 1.5}, 300.0);
    ever.gas.tc = ever.temperature;
    ever.gas.a = 6.0 * 5.8774 * ever.gas.b * R * ever.gas.tc;
    EXPECT_FALSE(critical_point(ever));
}

TEST(CriticalPoint, OfVirialCoefficientsStoredInPart) {
    // C and D stored, B automatic: {C/b^2, D/b^3}, and whether the loop ends.
    for (const auto& [c, d, ends] : {std::tuple{1.0, 1.0, true},
                                     {5.0, 0.0, true},
                                     {0.0, 0.0, false},
                                     {0.0, 2.0, true},
                                     {-3.0, 9.0, true},
                                     {-4.0, 1.0, false},
                                     {4.0, -0.5, true},
                                     {0.1, -1.0, false}}) {
        SCOPED_TRACE(std::to_string(c) + ' ' + std::to_string(d));
        const auto at = [c = c, d = d](double t) {
            EquationSlot slot = slot_of(Virial, {0, 0, 0, 0, 1.5}, t);
            slot.gas.tc = 300.0;
            slot.gas.pc = 50.0;
            derive_slot(slot, 0.0);
            slot.gas.c *= c;
            slot.gas.d *= d;
            return slot;
        };
        const auto point = critical_point(at(250.0));
        ASSERT_EQ(point.has_value(), ends);
        if (point)
            expect_end_of_loop(*point, at);
    }
}

}  // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <initializer_list>
#include <string>
#include <vector>

#include "core/calcnum.h"
#include "tests/core/saturation_checks.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using enum EquationOfState;

/// Pressures on a fine grid of the free volume, in long double.
std::vector<Real> isotherm(const EquationSlot& slot, double t) {
    std::vector<Real> pressures;
    for (Real step = 0; step < 4000; ++step)
        pressures.push_back(exact_pressure(slot, t, 1e-6L * std::pow(10.0L, step * 2.5e-3L)));
    return pressures;
}

void expect_roots(const EquationSlot& slot, double t, std::initializer_list<double> pressures) {
    const auto grid = isotherm(slot, t);
    for (const double p : pressures) {
        const std::string what = std::string(find_model(slot.equation)->name) + " at " + std::to_string(t) + " K and " +
                                 std::to_string(p) + " atm";
        std::size_t crossings = 0;
        for (std::size_t i = 1; i < grid.size(); ++i)
            crossings += (grid[i] > p) != (grid[i - 1] > p) ? 1U : 0U;
        const auto roots = calcnum::volume_roots(slot, t, p);
        EXPECT_EQ(roots.size(), crossings) << what;
        const double core = static_cast<double>(covolume(slot));
        double last = core;
        for (const double v : roots) {
            EXPECT_GT(v, last) << what;
            last = v;
            EXPECT_NEAR(static_cast<double>(exact_pressure(slot, t, v - covolume(slot))), p,
                        1e-10 * (std::fabs(p) + R * t / (v - core)))
                << what;
        }
    }
}

TEST(VolumeRoots, AreAllThatADenseScanFinds) {
    const auto data = one_gas("304.2", "72.9", "0.225");
    for (const Model& model : models())
        for (const double reduced : {0.5, 0.7, 0.9, 0.99, 1.2})
            expect_roots(loaded(data, model.number, 1, reduced * 304.2), reduced * 304.2,
                         {-2000.0, -40.0, -1.0, 0.0, 0.05, 1.0, 20.0, 45.0, 60.0, 72.0, 100.0, 3000.0});
}

TEST(VolumeRoots, OfCoefficientsSetByHand) {
    const Coefficients odd[]{{0, 0.04, 0, 0, 1.5},         {4, 0, 0, 0, 1.5},          {-4, 0.04, 0, 0, 1.5},
                             {4, 0.03, 0, 0, 0.7},         {40, 0.03, 0, 0, 1.0},      {4, 0, 0, 0, 0.7},
                             {4, 0.03, 0, 0, -0.3},        {1, -0.3, 0.01, -1e-4, 2},  {-1, 0.3, -0.01, 2e-4, 1.5},
                             {1, -0.12, 0.0018, -5e-5, 2}, {1, -0.3, 0.03, -1.2e-3, 2}};
    for (const Model& model : models()) {
        for (const Coefficients& k : odd)
            if (model.number == Virial || (k.b >= 0.0 && model.number != IdealGas))
                expect_roots(slot_of(model.number, k, 260.0), 260.0, {-30.0, -0.4, 0.3, 8.0, 50.0, 400.0});
        if (model.number != Virial && model.number != IdealGas) {
            EXPECT_TRUE(calcnum::volume_roots(slot_of(model.number, {4, -0.03, 0, 0, 1.5}, 260.0), 260.0, 9.0).empty());
        }
    }
}

}  // namespace

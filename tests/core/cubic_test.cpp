#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/calcnum.h"
#include "core/errors.h"

namespace {

using namespace tavo;
using calcnum::cubic_roots;
using calcnum::CubicRoots;

struct Case {
    double a2, a1, a0;
    CubicRoots roots;
};

void expect_roots(const Case& c, double tolerance) {
    const auto [x1, x2, x3] = cubic_roots(c.a2, c.a1, c.a0);
    EXPECT_NEAR(x1, c.roots.x1, tolerance) << c.a2 << ' ' << c.a1 << ' ' << c.a0;
    EXPECT_NEAR(x2, c.roots.x2, tolerance) << c.a2 << ' ' << c.a1 << ' ' << c.a0;
    EXPECT_NEAR(x3, c.roots.x3, tolerance) << c.a2 << ' ' << c.a1 << ' ' << c.a0;
}

TEST(CubicRoots, EveryBranch) {
    const Case cases[]{
        {-7.0, 14.0, -8.0, {2.0, 1.0, 4.0}},                      // three roots, q < 0; two exchanges do not sort fully
        {-8.0, 19.0, -12.0, {4.0 / 3.0, 7.0 / 3.0, 13.0 / 3.0}},  // q > 0: shifted away from 1, 3, 4
        {0.0, 0.0, -8.0, {2.0, 2.0, 2.0}},                        // one real root in all three
        {0.0, 0.0, 8.0, {-2.0, -2.0, -2.0}},                      //
        {-3.0, 4.0, -12.0, {3.0, 3.0, 3.0}},                      // (x - 3)(x^2 + 4)
        {3.0, 1.0, 3.0, {-3.0, -3.0, -3.0}},                      // (x + 3)(x^2 + 1)
        {0.0, -3.0, -2.0, {-1.0, -1.0, 2.0}},                     // double root, D = 0
        {-3.0, 0.0, 0.0, {0.0, 0.0, 3.0}},                        //
        {0.0, 0.0, 0.0, {0.0, 0.0, 0.0}},                         // triple roots
        {-3.0, 3.0, -1.0, {1.0, 1.0, 1.0}},                       //
    };
    for (const Case& c : cases)
        expect_roots(c, 1e-9);
}

// The value of pi with ten decimals leaves its trace: 1 is missed by 1e-11, not by 1e-16.
TEST(CubicRoots, UsesTheRoundedPi) {
    const double error = std::fabs(cubic_roots(-7.0, 14.0, -8.0).x2 - 1.0);
    EXPECT_GT(error, 1e-12);
    EXPECT_LT(error, 1e-10);
}

TEST(CubicRoots, FaultsOfTheArithmeticAreErrors) {
    EXPECT_THROW(cubic_roots(-6.0, 11.0, -6.0), FloatingPointError);  // roots 1, 2, 3: q = 0
    EXPECT_THROW(cubic_roots(0.0, -3.0, 2.0), FloatingPointError);    // double root with -q/2 < 0
    EXPECT_THROW(cubic_roots(1e200, 0.0, 0.0), FloatingPointError);
    EXPECT_THROW(cubic_roots(0.0, -1e110, 1.0), FloatingPointError);
    EXPECT_THROW(cubic_roots(std::nan(""), 0.0, 1.0), FloatingPointError);
}

TEST(CubicRoots, ChosenRootsComeBack) {
    std::mt19937 random(7);
    std::uniform_real_distribution<double> number(-5.0, 5.0);
    int three = 0;
    for (int i = 0; i < 2000; ++i) {
        const double r1 = number(random), r2 = number(random), r3 = number(random);
        const double mean = (r1 + r2 + r3) / 3.0;
        if ((r1 - mean) * (r2 - mean) * (r3 - mean) < 1e-3)  // -q: only q < 0 has the right branch
            continue;
        const CubicRoots found = cubic_roots(-(r1 + r2 + r3), r1 * r2 + r2 * r3 + r3 * r1, -r1 * r2 * r3);
        EXPECT_NEAR(found.x3, std::max({r1, r2, r3}), 1e-6);
        EXPECT_NEAR(std::min(found.x1, found.x2), std::min({r1, r2, r3}), 1e-6);
        EXPECT_NEAR(found.x1 + found.x2 + found.x3, r1 + r2 + r3, 1e-8);
        ++three;
    }
    EXPECT_GT(three, 500);
}

}  // namespace

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "core/calcnum.h"
#include "core/errors.h"
#include "tests/support/slots.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using calcnum::newton;
using calcnum::newton_trace;
using enum EquationOfState;

SlotTable table_of(const Coefficients& k) {
    SlotTable table;
    table[2] = slot_of(IdealGas, k, 300.0);
    return table;
}

// The same iteration in 60-digit decimal arithmetic, with differences of F in place of F' (but for Redlich-Kwong "t",
// whose slope is another function). So the numbers of steps check the derivatives.
TEST(Newton, TakesTheStepsOfAHighPrecisionIteration) {
    struct Case {
        const char* unknown;
        EquationOfState equation;
        double p, known, x0, x;
        long steps;
    };
    const Case cases[]{
        {"v", VanDerWaals, 20, 400, 1.6412, 1.5436531016534378, 3},
        {"v", VanDerWaals, 150, 320, 0.17506133333333332, 0.034089959028149909, 6},
        {"v", VanDerWaals, 60, 280, 0.3829466666666666, 0.032856093861612853, 7},
        {"v", Berthelot, 20, 400, 1.6412, 1.6003806762752912, 3},
        {"v", Berthelot, 150, 320, 0.17506133333333332, 0.08404794555530834, 6},
        {"v", Berthelot, 60, 280, 0.3829466666666666, 0.068197196445748468, 9},
        {"v", Dieterici, 20, 400, 1.6412, 1.5464251854804492, 3},
        {"v", Dieterici, 60, 280, 0.3829466666666666, 0.12370953778589294, 6},
        {"v", RedlichKwong, 20, 400, 1.6412, 1.5732759613217562, 3},
        {"v", RedlichKwong, 150, 320, 0.17506133333333332, 0.067733470018304709, 6},
        {"v", RedlichKwong, 60, 280, 0.3829466666666666, 0.058330622317581744, 10},
        {"v", Virial, 20, 400, 1.6412, 1.5146679772969334, 4},
        {"v", Virial, 150, 320, 0.17506133333333332, 0.042825505804160925, 7},
        {"v", Virial, 60, 280, 0.3829466666666666, 0.045665583160546981, 9},
        {"v", FreeExponent, 20, 400, 1.6412, 1.5174682173164669, 4},
        {"v", FreeExponent, 150, 320, 0.17506133333333332, 0.10942678044931684, 5},
        {"v", FreeExponent, 60, 280, 0.3829466666666666, 0.2506045030022932, 5},
        {"v", Soave, 20, 400, 1.6412, 1.5459296754184635, 3},
        {"v", Soave, 150, 320, 0.17506133333333332, 0.047426629720572731, 5},
        {"v", Soave, 60, 280, 0.3829466666666666, 0.044173249489223736, 10},
        {"v", PengRobinson, 20, 400, 1.6412, 1.5480807776281085, 3},
        {"v", PengRobinson, 150, 320, 0.17506133333333332, 0.059139876281322244, 6},
        {"v", PengRobinson, 60, 280, 0.3829466666666666, 0.056071160564375347, 10},
        {"v", DietericiSadus, 20, 400, 1.6412, 1.5676952937690178, 3},
        {"t", Berthelot, 20, 1.2, 292.4689251767, 316.1146250024957, 3},
        {"t", Berthelot, 60, 0.3, 219.35169388252498, 311.16793334895374, 4},
        {"t", Berthelot, 100, 0.08, 97.489641725566671, 302.71868081652946, 6},
        {"t", Dieterici, 20, 1.2, 292.4689251767, 323.26098625055823, 2},
        {"t", Dieterici, 60, 0.3, 219.35169388252498, 325.31764111544169, 3},
        {"t", Dieterici, 100, 0.08, 97.489641725566671, 351.95014069971842, 6},
        {"t", RedlichKwong, 5, 0.1, 290, 263.77671228901477, 16},
        {"t", RedlichKwong, 5, 0.1, 320, 263.78376498371597, 22},
        {"t", RedlichKwong, 10, 0.1, 500, 266.63603937132541, 22},
        {"t", RedlichKwong, 5, 0.15, 290, 234.20422793646927, 36},
        {"t", DietericiSadus, 20, 1.2, 292.4689251767, 320.75744413325174, 3},
        {"t", DietericiSadus, 60, 0.3, 219.35169388252498, 317.25886254719927, 3},
        {"t", DietericiSadus, 100, 0.08, 97.489641725566671, 326.45648273475035, 7},
    };
    for (const Case& c : cases) {
        const std::string what = std::string(c.unknown) + ' ' + std::string(find_model(c.equation)->name);
        const SlotTable table = table_of(plausible(c.equation));
        const auto [x, steps] = newton_trace(c.unknown, c.equation, table, 2, c.p, c.known, c.x0);
        EXPECT_NEAR(x / c.x, 1.0, 1e-11) << what;
        EXPECT_EQ(steps, c.steps) << what;
        EXPECT_EQ(newton(c.unknown, c.equation, table, 2, c.p, c.known, c.x0), x);
    }
}

TEST(Newton, CombinationsWithoutAResidualFail) {
    const SlotTable table = table_of(plausible(VanDerWaals));
    for (const int number : {0, 10, -1})
        EXPECT_THROW(newton("v", static_cast<EquationOfState>(number), table, 2, 1.0, 300.0, 24.0), FloatingPointError);
    for (const int number : {0, 1, 5, 6, 7, 8, 10})
        EXPECT_THROW(newton("t", static_cast<EquationOfState>(number), table, 2, 1.0, 24.0, 300.0), FloatingPointError);
    EXPECT_THROW(newton("p", VanDerWaals, table, 2, 1.0, 24.0, 300.0), FloatingPointError);
    EXPECT_THROW(newton("v", VanDerWaals, table, 6, 1.0, 300.0, 24.0), SubscriptOutOfRange);
}

TEST(Newton, FaultsOfTheArithmeticEndIt) {
    struct Case {
        const char* unknown;
        EquationOfState equation;
        double p, known, x0;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[]{
        {"v", VanDerWaals, 0.0, 300.0, 1.0},       // P divides
        {"v", RedlichKwong, 1.0, -300.0, 1.0},     // root of a negative number
        {"v", Berthelot, 1.0, 0.0, 1.0},           // T divides
        {"v", VanDerWaals, 1.0, 300.0, nan},       //
        {"v", FreeExponent, 1.0, 300.0, -1.0},     // power of a negative number
        {"v", Dieterici, 150.0, 320.0, 0.175},     // jumps into the co-volume and away
        {"v", DietericiSadus, 60.0, 280.0, 0.38},  //
        {"t", Dieterici, 1.0, 1.0, 0.0},           // starts at 0 K
        {"t", Dieterici, 1.0, 0.0266, 300.0},      // at the co-volume
        {"t", RedlichKwong, 20.0, 1.2, 292.0},     // the borrowed slope points away from the root
    };
    for (const Case& c : cases)
        EXPECT_THROW(newton(c.unknown, c.equation, table_of(plausible(c.equation)), 2, c.p, c.known, c.x0),
                     FloatingPointError)
            << c.unknown << ' ' << find_model(c.equation)->name;
}

// x^3 - 6x^2 + 10x - 2 attracts the iteration to the cycle 2, 3, 2, ...
TEST(Newton, ACycleIsAnErrorInsteadOfAnEndlessLoop) {
    const SlotTable table = table_of({10.0, 0.2, 0.0, 0.0, 1.5});
    for (const double x0 : {2.0, 2.01, 3.02}) {
        try {
            newton("v", VanDerWaals, table, 2, 1.0, 5.8 / R, x0);
            ADD_FAILURE() << "no error from " << x0;
        } catch (const FloatingPointError& error) {
            EXPECT_NE(std::string(error.what()).find("cycle"), std::string::npos) << error.what();
        }
    }
}

TEST(Newton, EndsAtTheBoundOfItsSteps) {
    const SlotTable table = table_of(plausible(Soave));
    const auto solve = [&](long most) {
        return newton_trace("v", Soave, table, 2, 60, 280, 0.3829466666666666, most).steps;
    };
    EXPECT_EQ(solve(10), 10);
    try {
        solve(9);
        ADD_FAILURE() << "no error";
    } catch (const FloatingPointError& error) {
        EXPECT_NE(std::string(error.what()).find("no convergence after 9 steps"), std::string::npos) << error.what();
    }
}

}  // namespace

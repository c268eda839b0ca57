// Temperature as the unknown. Each model's P(T) at constant volume is solved on its branch of dP/dT > 0.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "core/automatic.h"
#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::calcnum {

namespace {

/// The slot's record and model with the state that is asked for.
struct State {
    const SlotTable& table;
    int number;
    const EquationSlot& slot;
    const Model& model;
    Coefficients k;
    double vm;  // l/mol
    double p;   // atm
};

constexpr double NO_ROOT = std::numeric_limits<double>::quiet_NaN();

/// Root of A s^2 + B s + C at which the polynomial rises, without cancellation; NaN if it has none.
double rising_root(double a, double b, double c) {
    const double root = std::sqrt(b * b - 4.0 * a * c);
    return b > 0.0 ? -2.0 * c / (b + root) : (root - b) / (2.0 * a);
}

/// Pressure of the hard bodies alone per kelvin, P = T x this at a = 0 [atm/K].
double thermal_pressure(const State& s) {
    Coefficients spheres = s.k;
    spheres.a = 0.0;
    return s.model.pressure(spheres, 1.0, s.vm);
}

/// P = P(0) + T P': two evaluations give the line. The second one lies where the repulsion has its usual weight.
double linear(const State& s) {
    constexpr double REFERENCE = 1000.0;
    const double cold = s.model.pressure(s.k, 0.0, s.vm);
    const double warm = s.model.pressure(s.k, REFERENCE, s.vm);
    return REFERENCE * (s.p - cold) / (warm - cold);
}

/// T^2 R/(vm - b) - T P - a/vm^2 = 0.
double berthelot(const State& s) {
    return rising_root(thermal_pressure(s), -s.p, -s.k.a / (s.vm * s.vm));
}

/// s^3 R/(vm - b) - s P - a/(vm (vm + b)) = 0 with s = sqrt(T): the largest root, by Newton from above, where the
/// polynomial is convex and every step falls short of the root.
double redlich_kwong(const State& s) {
    const double c3 = thermal_pressure(s);
    const double c0 = s.k.a / (s.vm * (s.vm + s.k.b));
    double x = std::max(std::sqrt(std::max(2.0 * s.p / c3, 0.0)), std::cbrt(std::max(2.0 * c0 / c3, 0.0)));
    for (;;) {
        const double next = x - (x * (c3 * x * x - s.p) - c0) / (3.0 * c3 * x * x - s.p);
        if (!(next < x) || !(next > 0.0))
            break;
        x = next;
    }
    // A root, or the point where an attraction below zero let the iteration pass all roots by.
    const double residual = x * (c3 * x * x - s.p) - c0;
    const double scale = c3 * x * x * x + std::fabs(s.p) * x + std::fabs(c0);
    return std::isfinite(scale) && std::fabs(residual) <= 1e-12 * scale ? x * x : NO_ROOT;
}

/// With an automatic B the pressure is linear too: its attraction a/vm^2 does not depend on T.
double virial(const State& s) {
    const auto behind = behind_automatic_b(s.slot);
    if (!behind)
        return linear(s);
    Coefficients k = s.k;
    k.b = behind->b;
    return (s.p + behind->a / (s.vm * s.vm)) / s.model.pressure(k, 1.0, s.vm);
}

/// Models 7 and 8: with s = sqrt(T), a(T) = ac ((1 + m) - m s/sqrt(Tc))^2 makes P a quadratic in s.
double soave(const State& s) {
    const auto& gas = s.slot.gas;
    const double m = Global::acentric_slope(s.model.number, gas.c);
    // At T = 0 only the attraction is left: -a(Tc)/(vm (vm + b) ...).
    Coefficients k = s.k;
    k.a = attraction_at_tc(s.slot);
    const double attraction = -s.model.pressure(k, 0.0, s.vm);
    const double slope = m / std::sqrt(gas.tc);
    const double root = rising_root(thermal_pressure(s) - attraction * slope * slope,
                                    2.0 * attraction * (1.0 + m) * slope, -attraction * (1.0 + m) * (1.0 + m) - s.p);
    return root > 0.0 ? root * root : NO_ROOT;
}

/// Models 3 and 9, P = P' T exp(-c/T). P(T) is convex, so Newton converges from every point above the rising root. One
/// such point is P/P' + c, since exp(-x) >= 1 - x; it is needed where the pressure at the usual start underflows.
/// With c below zero P(T) falls down to e P' |c| at T = |c|, and rises from there; P/P' lies above its root.
double exponential(const State& s) {
    constexpr long MOST_STEPS = 1'000'000;  // some dozens are usual
    const double c = s.k.a / (R * s.vm);
    const double repulsive = s.p / thermal_pressure(s);
    if (!(s.p > 0.0) || repulsive < -std::numbers::e * c)
        return NO_ROOT;
    const auto solve = [&s](double x0) {
        return newton("t", s.model.number, s.table, s.number, s.p, s.vm, x0, MOST_STEPS);
    };
    double t = 0.0;
    try {
        t = solve(c < 0.0 ? repulsive : s.p * s.vm / R);
    } catch (const FloatingPointError&) {
        t = solve(c < 0.0 ? repulsive : repulsive + c);
    }
    // The solver ends at steps of 1e-4: each step in ln P squares the error, and resolves volumes at the co-volume.
    for (int step = 0; step < 4; ++step)
        t -= t * (std::log(t / repulsive) - c / t) / (1.0 + c / t);
    return t;
}

using Solve = double (*)(const State&);
constexpr std::array<Solve, 10> AUTOMATIC{linear, linear, berthelot, exponential, redlich_kwong,
                                          virial, linear, soave,     soave,       exponential};
/// With coefficients that do not follow the temperature: set by hand, or without a critical temperature behind them.
constexpr std::array<Solve, 10> BY_HAND{linear, linear, berthelot, exponential, redlich_kwong,
                                        linear, linear, linear,    linear,      exponential};

}  // namespace

double temperature(const SlotTable& table, int slot, double v, double p) {
    const EquationSlot& own = table[slot];
    const Model* model = find_model(own.equation);
    if (model == nullptr)
        throw FloatingPointError("temperature: no model " + std::to_string(static_cast<int>(own.equation)));
    const Coefficients k = coefficients(own);
    const double vm = v / own.moles;
    if (!(own.moles > 0.0) || !(vm > model->covolume(k)) || !(vm > 0.0))
        throw FloatingPointError(std::string(model->name) + ": " + to_text(own.moles) + " mol have no pressure in " +
                                 to_text(v) + " l");
    const bool loaded = !own.parameters && own.gas.tc > 0.0;
    const auto& solvers = loaded ? AUTOMATIC : BY_HAND;
    const double t = solvers[static_cast<std::size_t>(own.equation)]({table, slot, own, *model, k, vm, p});
    if (!std::isfinite(t) || !(t > 0.0))
        throw FloatingPointError(std::string(model->name) + ": no temperature above 0 K gives " + to_text(p) +
                                 " atm at " + to_text(vm) + " l/mol");
    return t;
}

}  // namespace tavo::calcnum

#pragma once
// Liquid-vapour coexistence on one isotherm in reduced form, for any equation of state.
//
// A loop is an isotherm with v the reduced molar volume and p the reduced pressure. Volumes are handled as
// t = ln(v - core), where core is the reduced co-volume (1, or 0 without one): t resolves both a cold liquid, which
// comes within 1e-16 of the co-volume, and a gas of 1e300 co-volumes. Pressures are handled through a level, an
// increasing function of p that the loop chooses (p itself, or ln p where p is positive everywhere).
//
// A loop type L provides
//   double level(double t) const, slope(double t) const      level of the pressure and its derivative by t
//   double interior() const                                   a t where the pressure rises with volume
//   double liquid_end() const, gas_end() const                where the branches cease to fall (+-LIMIT: never)
//   bool rises() const                                        whether there is an interior at all, beyond rounding
//   Imbalance imbalance(const Pair&) const                    see there
//   std::optional<Pair> estimate() const                      starting point of Newton's method, if one is known
//   static constexpr bool LOGARITHMIC                         whether the level is ln p, else p

#include <algorithm>
#include <cmath>
#include <optional>

namespace tavo::calcnum::coexistence {

/// Bound of |t|: exp(t) stays a normal number.
inline constexpr double LIMIT = 708.0;
/// Smallest reduced pressure that is told from 0.
inline constexpr double SMALLEST = 1e-307;

/// Two states by their t. Half their distance is kept as a number of its own: near the critical point it has full
/// precision, where the difference of the states has not; far from it the states have, where their sum has not.
struct Pair {
    double liquid, gas, half;

    static Pair of(double liquid, double gas) { return {liquid, gas, 0.5 * (gas - liquid)}; }
    static Pair around(double middle, double half) { return {middle - half, middle + half, half}; }

    double middle() const { return 0.5 * (liquid + gas); }
    void move(double liquid_step, double gas_step) {
        liquid += liquid_step;
        gas += gas_step;
        half += 0.5 * (gas_step - liquid_step);
    }
};

/// How far a pair is from coexistence, all differences free of cancellation:
/// the equal-area pressure P* = (1/(vg - vl)) Int P dv between the two volumes, compared with the pressures there.
struct Imbalance {
    double gas_excess;      // level(P*) - level(gas)
    double gas_difference;  // level(gas) - level(liquid)
    double liquid_slope;    // d level/dt at the liquid
    double gas_slope;       // d level/dt at the gas
};

/// Spinodals as t.
struct Extrema {
    double liquid, gas;
};

/// Where f turns from positive (at `inside`) to negative (at `outside`), by bisection.
template <class Function>
double sign_change(double inside, double outside, const Function& f) {
    for (int i = 0; i < 200; ++i) {
        const double t = 0.5 * (inside + outside);
        if (t == inside || t == outside) {
            break;
        }
        (f(t) > 0.0 ? inside : outside) = t;
    }
    return 0.5 * (inside + outside);
}

/// A t between `start` and `end` where f is not positive, found in growing steps.
template <class Function>
std::optional<double> step_out(double start, double end, const Function& f) {
    const double reach = std::abs(end - start);
    const double direction = end > start ? 1.0 : -1.0;
    double step = std::min(0.125, reach);
    while (step > 0.0) {
        const double t = start + direction * step;
        if (f(t) <= 0.0) {
            return t;
        }
        step = step < reach ? std::min(2.0 * step, reach) : 0.0;
    }
    return std::nullopt;
}

/// Both spinodals, or empty without a loop.
template <class Loop>
std::optional<Extrema> extrema(const Loop& loop) {
    if (!loop.rises()) {
        return std::nullopt;
    }
    const auto slope = [&loop](double t) { return loop.slope(t); };
    const double inside = loop.interior();
    const auto liquid = step_out(inside, loop.liquid_end(), slope);
    const auto gas = step_out(inside, loop.gas_end(), slope);
    if (!liquid || !gas) {
        return std::nullopt;
    }
    return Extrema{sign_change(inside, *liquid, slope), sign_change(inside, *gas, slope)};
}

/// Where the branch that begins at `spinodal` and runs towards `end` reaches a level: Newton kept inside a bracket that
/// shrinks by half at least every other step. Empty where the branch ends before.
template <class Loop>
std::optional<double> branch_root(const Loop& loop, double target, double spinodal, double end) {
    const double sign = end > spinodal ? 1.0 : -1.0;  // the level falls outwards on the gas side, rises on the other
    const auto outer = step_out(spinodal, end, [&](double t) { return sign * (loop.level(t) - target); });
    if (!outer) {
        return std::nullopt;
    }
    double low = std::min(spinodal, *outer);
    double high = std::max(spinodal, *outer);
    double t = *outer;
    double last_step = high - low;
    for (int i = 0; i < 200; ++i) {
        const double excess = loop.level(t) - target;
        (excess > 0.0 ? low : high) = t;
        double next = t - excess / loop.slope(t);
        if (!(next > low && next < high) || std::abs(next - t) > 0.5 * last_step) {
            next = 0.5 * (low + high);
        }
        last_step = std::abs(next - t);
        t = next;
        if (last_step <= 2e-16 * (1.0 + std::abs(t))) {
            break;
        }
    }
    return t;
}

/// Newton's method from a pair: both states move along their tangents to the equal-area pressure. Empty when it leaves
/// the region of two stable states or does not settle.
template <class Loop>
std::optional<Pair> newton(const Loop& loop, Pair pair) {
    constexpr int MAX_STEPS = 12;
    const double inside = loop.interior();
    for (int i = 0; i < MAX_STEPS; ++i) {
        const Imbalance imbalance = loop.imbalance(pair);
        if (!(imbalance.liquid_slope < 0.0 && imbalance.gas_slope < 0.0)) {
            return std::nullopt;
        }
        const double gas_step = imbalance.gas_excess / imbalance.gas_slope;
        const double liquid_step = (imbalance.gas_excess + imbalance.gas_difference) / imbalance.liquid_slope;
        pair.move(liquid_step, gas_step);
        if (!(pair.liquid < inside && pair.gas > inside && pair.gas < LIMIT)) {
            return std::nullopt;
        }
        // Convergence is quadratic: what remains after a step of 1e-8 is below the rounding. Near the critical point
        // the rounding itself moves half by eps / half^2, far from it a liquid by eps |t|.
        const double settled = std::max(1e-8 * std::min(1.0, pair.half), 4e-15 / pair.half);
        if (std::abs(gas_step) < settled && std::abs(liquid_step) < std::max(settled, 1e-14 * std::abs(pair.liquid))) {
            return pair;
        }
    }
    return std::nullopt;
}

/// The method that always ends: the equal-area pressure lies between the spinodal pressures, and the area left over
/// falls steadily with the pressure. Empty where no positive pressure balances the areas.
template <class Loop>
std::optional<Pair> bracketed(const Loop& loop) {
    const auto spinodal = extrema(loop);
    if (!spinodal) {
        return std::nullopt;
    }
    double high = loop.level(spinodal->gas);
    double low = std::max(loop.level(spinodal->liquid), Loop::LOGARITHMIC ? -LIMIT : SMALLEST);
    if (!(high > low)) {
        return std::nullopt;
    }
    double level = 0.5 * (low + high);
    for (int i = 0; i < 300; ++i) {
        const auto liquid = branch_root(loop, level, spinodal->liquid, loop.liquid_end());
        const auto gas = branch_root(loop, level, spinodal->gas, loop.gas_end());
        if (!liquid) {  // the liquid branch ends below this level
            high = level;
        } else if (!gas) {  // the gas branch ends above it
            low = level;
        } else {
            const Pair pair = Pair::of(*liquid, *gas);
            const double excess = loop.imbalance(pair).gas_excess;
            if (std::abs(excess) <= 1e-13 * (Loop::LOGARITHMIC ? 1.0 : level)) {
                return pair;
            }
            (excess > 0.0 ? low : high) = level;
            // A step in ln p: one suffices where the gas is ideal.
            level = Loop::LOGARITHMIC ? level + excess : level * std::exp(excess / level);
        }
        if (!(level > low && level < high)) {
            const bool decades = !Loop::LOGARITHMIC && high > 4.0 * low;
            level = decades ? std::sqrt(low) * std::sqrt(high) : 0.5 * (low + high);
        }
        if (!(level > low && level < high)) {
            break;
        }
    }
    return std::nullopt;
}

/// The coexisting states, or empty where there are none.
template <class Loop>
std::optional<Pair> coexist(const Loop& loop) {
    if (!loop.rises()) {
        return std::nullopt;
    }
    if (const auto start = loop.estimate()) {
        if (const auto pair = newton(loop, *start)) {
            return pair;
        }
    }
    const auto pair = bracketed(loop);
    if (!pair) {
        return std::nullopt;
    }
    const auto polished = newton(loop, *pair);
    return polished ? polished : pair;
}

}  // namespace tavo::calcnum::coexistence

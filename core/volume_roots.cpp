// All volumes at a given pressure: bisection on each stretch on which the isotherm only falls or only rises.

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "core/calcnum.h"
#include "core/models.h"
#include "core/polynomial.h"

namespace tavo::calcnum {

namespace {

/// Where the search begins without a co-volume, and where it ends [l/mol].
constexpr double SMALLEST = 1e-100;
constexpr double LARGEST = 1e300;

/// Factor of the attraction in the pressure of one mole, a/(v ...): a, a/T or a/sqrt(T).
double attraction(const EquationSlot& slot, double t) {
    switch (slot.equation) {
        case EquationOfState::Berthelot:
            return slot.gas.a / t;
        case EquationOfState::RedlichKwong:
            return slot.gas.a / std::sqrt(t);
        default:
            return slot.gas.a;
    }
}

/// Without a co-volume an attraction leaves one maximum, RT/v = a mu/v^mu; the two exponential models have it at
/// v = a/RT.
std::vector<double> maximum_of_points(const EquationSlot& slot, double t) {
    const double reduced = attraction(slot, t) / (R * t);
    switch (slot.equation) {
        case EquationOfState::Dieterici:
        case EquationOfState::DietericiSadus:
            return {reduced};
        case EquationOfState::FreeExponent:
            return slot.mu == 1.0 ? std::vector<double>{}
                                  : std::vector<double>{std::pow(reduced * slot.mu, 1.0 / (slot.mu - 1.0))};
        default:
            return {2.0 * reduced};
    }
}

/// RT/(v - b) - a/v^mu with 0 < mu <= 1: the attraction wins at large volumes, so that the pressure has a minimum
/// where RT v^(mu + 1) = a mu (v - b)^2.
std::vector<double> minimum_of_long_range(const EquationSlot& slot, double t) {
    const double b = slot.gas.b;
    const auto falls = [&](double v) {
        return std::log(R * t / (slot.gas.a * slot.mu)) + (slot.mu + 1.0) * std::log(v) - 2.0 * std::log(v - b);
    };
    const double low = std::nextafter(b, LARGEST);
    if (!(falls(low) > 0.0) || !(falls(LARGEST) < 0.0))
        return {};
    return {crossing(b, low, LARGEST, falls)};
}

/// Molar volumes at which the isotherm turns from falling to rising or back, ascending.
std::vector<double> turning_points(const EquationSlot& slot, double t) {
    const GasRecord& k = slot.gas;
    if (slot.equation == EquationOfState::Virial) {
        std::vector<double> points = positive_roots({k.a, 2.0 * k.b, 3.0 * k.c, 4.0 * k.d});  // dP/d(density) = 0
        std::reverse(points.begin(), points.end());
        std::transform(points.begin(), points.end(), points.begin(), [](double density) { return 1.0 / density; });
        return points;
    }
    const bool free_exponent = slot.equation == EquationOfState::FreeExponent;
    if (slot.equation == EquationOfState::IdealGas || !(k.a > 0.0) || (free_exponent && !(slot.mu > 0.0)))
        return {};
    if (k.b == 0.0)
        return maximum_of_points(slot, t);
    if (free_exponent && slot.mu <= 1.0)
        return minimum_of_long_range(slot, t);
    const auto loop = spinodals(slot, t);
    return loop ? std::vector<double>{loop->liquid, loop->gas} : std::vector<double>{};
}

}  // namespace

std::vector<double> volume_roots(const EquationSlot& slot, double t, double p) {
    const Model* model = find_model(slot.equation);
    const Coefficients k = coefficients(slot);
    const double core = model ? model->covolume(k) : 0.0;
    if (!model || !(t > 0.0) || !std::isfinite(t) || !std::isfinite(p) || !(core >= 0.0))
        return {};
    const auto excess = [&](double v) { return model->pressure(k, t, v) - p; };
    std::vector<double> roots;
    double low = core > 0.0 ? std::nextafter(core, LARGEST) : SMALLEST;
    const auto search = [&](double high) {
        const double there = excess(high);
        if (!(high > low) || std::isnan(there))  // a power overflows
            return false;
        const bool found = (excess(low) > 0.0) != (there > 0.0);
        if (found)
            roots.push_back(crossing(core, low, high, excess));
        low = high;
        return found;
    };
    for (const double turn : turning_points(slot, t))
        search(turn);
    // Towards large volumes the pressure only approaches a limit.
    double high = std::max(2.0 * low, core + R * t / std::max(std::abs(p), std::numeric_limits<double>::min()));
    while (high < LARGEST && !search(high))
        high *= 16.0;
    return roots;
}

}  // namespace tavo::calcnum

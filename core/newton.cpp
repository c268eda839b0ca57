#include <array>
#include <cmath>
#include <cstdint>
#include <string>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::calcnum {

namespace {

/// Residual and its derivative at x.
struct Residual {
    double f, slope;
};

/// What an iteration works on: the model's coefficients and the two known variables.
struct Problem {
    Coefficients k;
    double p;      // atm
    double known;  // T [K] for the unknown volume, vm [l/mol] for the unknown temperature
    long most_steps;
};

[[noreturn]] void fault(const std::string& what, double x0, long steps) {
    throw FloatingPointError("newton: " + what + " after " + std::to_string(steps) + " steps from " + to_text(x0));
}

/// x <- x - F/F' until the step is below 1e-4 of x; nothing but the count of steps limits it. The map has no
/// memory, so a value that comes back proves that the iteration never ends; R. P. Brent's method (BIT 20 (1980) 176)
/// finds that with one comparison per step.
template <class Function>
NewtonTrace iterate(Function residual, double x0, long most_steps) {
    double x = x0;
    double landmark = x0;
    std::int64_t landmark_moves_at = 1;
    for (long steps = 1;; ++steps) {
        const double old = x;
        const auto [f, slope] = residual(old);
        x = old - f / slope;
        const double change = std::fabs((x - old) / x);
        if (!std::isfinite(f) || !std::isfinite(slope) || !std::isfinite(x) || !std::isfinite(change))
            fault("floating-point fault at x = " + to_text(old), x0, steps);
        if (change < 0.0001)
            return {x, steps};
        if (x == landmark)
            fault("the iteration runs in a cycle through x = " + to_text(x), x0, steps);
        if (steps >= most_steps)
            fault("no convergence", x0, steps);
        if (steps == landmark_moves_at) {
            landmark = x;
            landmark_moves_at *= 2;
        }
    }
}

/// x^3 + c2 x^2 + c1 x + c0.
NewtonTrace iterate_cubic(double c2, double c1, double c0, double x0, long most_steps) {
    const auto residual = [=](double x) -> Residual {
        return {x * x * x + c2 * (x * x) + c1 * x + c0, 3.0 * (x * x) + 2.0 * c2 * x + c1};
    };
    return iterate(residual, x0, most_steps);
}

// Unknown molar volume, T and P known.

/// van der Waals' cubic with the attraction a/vm^2.
NewtonTrace van_der_waals_cubic(double a, const Problem& s, double x0) {
    const double b = s.k.b;
    return iterate_cubic(-(R * s.known / s.p + b), a / s.p, -(a * b / s.p), x0, s.most_steps);
}

/// Redlich and Kwong's cubic with the attraction a/(vm (vm + b)).
NewtonTrace redlich_kwong_cubic(double a, const Problem& s, double x0) {
    const double b = s.k.b;
    const double c1 = a / s.p - b * b - R * s.known * b / s.p;
    return iterate_cubic(-(R * s.known / s.p), c1, -(a * b / s.p), x0, s.most_steps);
}

NewtonTrace volume_van_der_waals(const Problem& s, double x0) {
    return van_der_waals_cubic(s.k.a, s, x0);
}

NewtonTrace volume_berthelot(const Problem& s, double x0) {
    return van_der_waals_cubic(s.k.a / s.known, s, x0);
}

NewtonTrace volume_dieterici(const Problem& s, double x0) {
    const auto residual = [&s, a = s.k.a, b = s.k.b, rt = R * s.known](double x) -> Residual {
        const double p = rt * std::exp(-a / (rt * x)) / (x - b);
        return {p - s.p, p / (x - b) * ((x - b) * a / (rt * (x * x)) - 1.0)};
    };
    return iterate(residual, x0, s.most_steps);
}

NewtonTrace volume_redlich_kwong(const Problem& s, double x0) {
    return redlich_kwong_cubic(s.k.a / std::sqrt(s.known), s, x0);
}

NewtonTrace volume_virial(const Problem& s, double x0) {
    const auto residual = [k = s.k, density = s.p / (R * s.known)](double x) -> Residual {
        const double x2 = x * x;
        return {x2 * x2 * density - k.a * (x2 * x) - k.b * x2 - k.c * x - k.d,
                4.0 * (x2 * x) * density - 3.0 * k.a * x2 - 2.0 * k.b * x - k.c};
    };
    return iterate(residual, x0, s.most_steps);
}

NewtonTrace volume_free_exponent(const Problem& s, double x0) {
    const auto residual = [&s, mu = s.k.mu, volume = R * s.known / s.p + s.k.b](double x) -> Residual {
        const double power = std::pow(x, mu);
        return {std::pow(x, mu + 1.0) - power * volume + s.k.a / s.p * x - s.k.a * s.k.b / s.p,
                (mu + 1.0) * power - mu * std::pow(x, mu - 1.0) * volume + s.k.a / s.p};
    };
    return iterate(residual, x0, s.most_steps);
}

NewtonTrace volume_soave(const Problem& s, double x0) {
    return redlich_kwong_cubic(s.k.a, s, x0);
}

NewtonTrace volume_peng_robinson(const Problem& s, double x0) {
    const double a = s.k.a, b = s.k.b, rt = R * s.known;
    const double c1 = a / s.p - 3.0 * (b * b) - 2.0 * rt * b / s.p;
    const double c0 = b * b * b + rt * (b * b) / s.p - a * b / s.p;
    return iterate_cubic(b - rt / s.p, c1, c0, x0, s.most_steps);
}

/// 4 R as the residuals of Dieterici-Sadus hold it, and 2 R.
constexpr double FOUR_R = 0.32824;
constexpr double TWO_R = 0.16412;

NewtonTrace volume_dieterici_sadus(const Problem& s, double x0) {
    const auto residual = [&s, a = s.k.a, b = s.k.b](double x) -> Residual {
        const double y = b / (4.0 * x), free = 1.0 - y;
        const double spheres = 1.0 + y + y * y - y * y * y;
        const double kappa = 4.0 * a / (R * s.known * b);
        const double common = FOUR_R * s.known * std::exp(-kappa * y) / (free * free * free * b);
        // d/dy of spheres y exp(-kappa y)/(1 - y)^3 without the common factor; dy/dx = -y/x.
        const double slope = (1.0 + 2.0 * y - 3.0 * (y * y)) * y + spheres * (1.0 - kappa * y + 3.0 * y / free);
        return {common * spheres * y - s.p, common * slope * (-y / x)};
    };
    return iterate(residual, x0, s.most_steps);
}

// Unknown temperature, molar volume V and P known.

NewtonTrace temperature_berthelot(const Problem& s, double x0) {
    const double v = s.known, free = v - s.k.b;
    const auto residual = [=, p = s.p, a = s.k.a](double x) -> Residual {
        return {x * x - free * p * x / R - free * a / (R * (v * v)), 2.0 * x - free * p / R};
    };
    return iterate(residual, x0, s.most_steps);
}

NewtonTrace temperature_dieterici(const Problem& s, double x0) {
    const double v = s.known, free = v - s.k.b;
    const auto residual = [=, p = s.p, a = s.k.a](double x) -> Residual {
        const double factor = R * std::exp(-a / (R * x * v)) / free;
        return {x * factor - p, (1.0 + a / (R * x * v)) * factor};
    };
    return iterate(residual, x0, s.most_steps);
}

/// The slope is that of the cubic in the volume at temperature x, not that of F: it sets the pace of the iteration.
NewtonTrace temperature_redlich_kwong(const Problem& s, double x0) {
    const auto residual = [v = s.known, p = s.p, a = s.k.a, b = s.k.b](double x) -> Residual {
        const double root = std::sqrt(x);
        return {p * v * (v * v - b * b) * root - R * x * v * (v + b) * root + a * (v - b),
                3.0 * (v * v) - TWO_R * x * v / p + a / (root * p) - b * b};
    };
    return iterate(residual, x0, s.most_steps);
}

NewtonTrace temperature_dieterici_sadus(const Problem& s, double x0) {
    const double b = s.k.b, y = b / (4.0 * s.known), free = 1.0 - y;
    const double spheres = (1.0 + y + y * y - y * y * y) * FOUR_R * y / (free * free * free * b);
    const double kappa = 4.0 * s.k.a * y / (R * b);
    const auto residual = [=, p = s.p](double x) -> Residual {
        const double pressure = spheres * x * std::exp(-kappa / x);
        return {pressure - p, pressure * (1.0 + kappa / x) / x};
    };
    return iterate(residual, x0, s.most_steps);
}

using Solve = NewtonTrace (*)(const Problem&, double x0);

/// Solvers by model number; nullptr where there is no residual.
constexpr std::array<Solve, 10> VOLUME{
    nullptr,       volume_van_der_waals, volume_berthelot, volume_dieterici,     volume_redlich_kwong,
    volume_virial, volume_free_exponent, volume_soave,     volume_peng_robinson, volume_dieterici_sadus};
constexpr std::array<Solve, 10> TEMPERATURE{
    nullptr, nullptr, temperature_berthelot,      temperature_dieterici, temperature_redlich_kwong, nullptr, nullptr,
    nullptr, nullptr, temperature_dieterici_sadus};

Solve solver(std::string_view unknown, EquationOfState equation) {
    const auto index = static_cast<std::size_t>(equation);
    if (index >= VOLUME.size())
        return nullptr;
    if (unknown == "v")
        return VOLUME[index];
    return unknown == "t" ? TEMPERATURE[index] : nullptr;
}

}  // namespace

NewtonTrace newton_trace(std::string_view unknown, EquationOfState equation, const SlotTable& table, int slot, double p,
                         double known, double x0, long most_steps) {
    const Problem problem{coefficients(table[slot]), p, known, most_steps};
    const Solve solve = solver(unknown, equation);
    if (solve == nullptr)
        throw FloatingPointError("newton: no residual for the unknown \"" + std::string(unknown) + "\" with model " +
                                 std::to_string(static_cast<int>(equation)));
    return solve(problem, x0);
}

double newton(std::string_view unknown, EquationOfState equation, const SlotTable& table, int slot, double p,
              double known, double x0, long most_steps) {
    return newton_trace(unknown, equation, table, slot, p, known, x0, most_steps).x;
}

}  // namespace tavo::calcnum

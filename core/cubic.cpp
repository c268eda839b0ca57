#include <cmath>
#include <string>
#include <utility>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/numtext.h"

namespace tavo::calcnum {

namespace {

constexpr double PI = 3.1415926536;
constexpr double THIRD = 1.0 / 3.0;

/// y^3 + p y + q with y = x + shift.
struct Depressed {
    double p, q, shift;
};

CubicRoots double_root(const Depressed& f) {
    if (-f.q / 2.0 < 0.0)
        throw FloatingPointError("cubic: fractional power of the negative number " + to_text(-f.q / 2.0));
    const double u = std::pow(-f.q / 2.0, THIRD);
    return {2.0 * u - f.shift, -u - f.shift, -u - f.shift};
}

/// G. Cardano, Ars magna (1545).
CubicRoots single_root(const Depressed& f, double discriminant) {
    const double s = std::sqrt(discriminant);
    const auto signed_root = [](double z) { return std::copysign(std::pow(std::fabs(z), THIRD), z); };
    const double x = signed_root(-f.q / 2.0 + s) + signed_root(-f.q / 2.0 - s) - f.shift;
    return {x, x, x};
}

CubicRoots three_roots(const Depressed& f) {
    if (f.q == 0.0)
        throw FloatingPointError("cubic: division by q = 0 with three real roots");
    // Rounding may leave a negative number where the discriminant was just below zero.
    const double radicand = std::fmax(-(4.0 * (f.p * f.p * f.p) + 27.0 * (f.q * f.q)) / 27.0, 0.0);
    const double angle = std::atan(-std::sqrt(radicand) / f.q) / 3.0;
    const double r = 2.0 * std::sqrt(-f.p / 3.0);
    return {r * std::cos(angle) - f.shift, -r * std::cos(PI / 3.0 + angle) - f.shift,
            -r * std::cos(PI / 3.0 - angle) - f.shift};
}

/// Two exchanges and no more: the largest value comes last, the first two may be in either order.
void order(CubicRoots& roots) {
    if (roots.x1 > roots.x2)
        std::swap(roots.x1, roots.x2);
    if (roots.x2 > roots.x3)
        std::swap(roots.x2, roots.x3);
}

}  // namespace

CubicRoots cubic_roots(double a2, double a1, double a0) {
    const double p = a1 - a2 * a2 / 3.0;
    const double q = a0 - a2 * a2 * a2 / 27.0 - p * a2 / 3.0;
    const double discriminant = (q / 2.0) * (q / 2.0) + (p / 3.0) * (p / 3.0) * (p / 3.0);
    if (!std::isfinite(discriminant))
        throw FloatingPointError("cubic: overflow with the coefficients " + to_text(a2) + ", " + to_text(a1) + ", " +
                                 to_text(a0));
    const Depressed f{p, q, a2 / 3.0};
    CubicRoots roots = discriminant == 0.0  ? double_root(f)
                       : discriminant > 0.0 ? single_root(f, discriminant)
                                            : three_roots(f);
    order(roots);
    return roots;
}

}  // namespace tavo::calcnum

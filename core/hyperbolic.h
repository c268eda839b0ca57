#pragma once
// Differences of hyperbolic functions that keep their relative accuracy at small arguments.

#include <cmath>

namespace tavo::calcnum {

/// sinh(x)/x - 1.
inline double sinhc_excess(double x) {
    const double s = x * x;
    if (s > 4.0) {
        return std::sinh(x) / x - 1.0;
    }
    // Maclaurin: s/3! + s^2/5! + ..., each term the previous one times s / (2k (2k + 1)).
    double sum = 1.0 + s / 506.0;
    sum = 1.0 + s / 420.0 * sum;
    sum = 1.0 + s / 342.0 * sum;
    sum = 1.0 + s / 272.0 * sum;
    sum = 1.0 + s / 210.0 * sum;
    sum = 1.0 + s / 156.0 * sum;
    sum = 1.0 + s / 110.0 * sum;
    sum = 1.0 + s / 72.0 * sum;
    sum = 1.0 + s / 42.0 * sum;
    sum = 1.0 + s / 20.0 * sum;
    return s / 6.0 * sum;
}

/// atanh(q)/q - 1 of s = q^2 < 1.
inline double atanhc_excess(double s) {
    if (s > 0.02) {
        const double q = std::sqrt(s);
        return std::atanh(q) / q - 1.0;
    }
    double sum = 1.0 / 17.0;
    for (int k = 15; k >= 3; k -= 2) {
        sum = 1.0 / k + s * sum;
    }
    return s * sum;
}

}  // namespace tavo::calcnum

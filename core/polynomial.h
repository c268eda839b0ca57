#pragma once
// Sign changes of a function, and the positive roots of polynomials.

#include <cmath>
#include <numeric>
#include <vector>

namespace tavo::calcnum {

/// Where f changes its sign between low and high, both above core: one of two neighbouring numbers, the one nearer to
/// 0. Distances from the core are halved on a logarithmic scale until they are of one size.
template <class Function>
double crossing(double core, double low, double high, const Function& f) {
    const bool sign = f(low) > 0.0;
    for (;;) {
        const double near = low - core;
        const double far = high - core;
        const double middle = far > 4.0 * near ? core + std::sqrt(near) * std::sqrt(far) : std::midpoint(low, high);
        if (!(middle > low && middle < high))
            break;
        ((f(middle) > 0.0) == sign ? low : high) = middle;
    }
    return std::abs(f(low)) < std::abs(f(high)) ? low : high;
}

/// c0 + c1 x + c2 x^2 + ...
using Polynomial = std::vector<double>;

/// Roots above 0 where the sign changes, ascending: one at most between neighbouring roots of the derivative.
std::vector<double> positive_roots(Polynomial f);

}  // namespace tavo::calcnum

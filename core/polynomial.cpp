#include "core/polynomial.h"

#include <algorithm>
#include <limits>

namespace tavo::calcnum {

namespace {

double value(const Polynomial& f, double x) {
    return std::accumulate(f.rbegin(), f.rend(), 0.0, [x](double sum, double c) { return sum * x + c; });
}

}  // namespace

std::vector<double> positive_roots(Polynomial f) {
    while (!f.empty() && f.back() == 0.0)
        f.pop_back();
    if (f.size() < 2)
        return {};
    Polynomial derivative;
    double bound = 0.0;  // A.-L. Cauchy's
    for (std::size_t i = 0; i + 1 < f.size(); ++i) {
        derivative.push_back(static_cast<double>(i + 1) * f[i + 1]);
        bound = std::max(bound, std::abs(f[i] / f.back()));
    }
    std::vector<double> edges = positive_roots(derivative);
    edges.push_back(std::max(1.0 + bound, edges.empty() ? 0.0 : 2.0 * edges.back()));
    std::vector<double> roots;
    const auto at = [&f](double x) { return value(f, x); };
    double low = std::numeric_limits<double>::min();
    for (const double high : edges) {
        if ((at(low) > 0.0) != (at(high) > 0.0))
            roots.push_back(crossing(0.0, low, high, at));
        low = high;
    }
    return roots;
}

}  // namespace tavo::calcnum

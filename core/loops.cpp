#include "core/loops.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>

#include "core/hyperbolic.h"

namespace tavo::calcnum {

using coexistence::Imbalance;
using coexistence::Pair;

namespace {

/// alpha must exceed the critical value by more than the rounding of its own computation.
constexpr double CRITICAL_MARGIN = 1e-13;

/// From here on (half the logarithm of the volume ratio) the areas are compared with the gas pressure; below, with the
/// mean of both pressures, which cancels to second order.
constexpr double FAR_APART = 1.0;

/// The fits of the families hold for 1 - alpha_c/alpha up to this value.
constexpr double COLDEST_FITTED = 0.74;

double polynomial(std::span<const double> coefficients, double x) {
    double sum = 0.0;
    for (std::size_t i = coefficients.size(); i-- > 0;) {
        sum = sum * x + coefficients[i];
    }
    return sum;
}

bool supercooled(double alpha, double critical) {
    return std::isfinite(alpha) && alpha > critical * (1.0 + CRITICAL_MARGIN);
}

/// The family's fit, or empty where it is too cold for it.
std::optional<Pair> fitted(const Family& family, double alpha) {
    const double warm = family.critical_attraction / alpha;
    const double cold = 1.0 - warm;
    if (!(cold <= COLDEST_FITTED)) {
        return std::nullopt;
    }
    return Pair::around(polynomial(family.middle_fit, cold) / warm,
                        std::sqrt(cold) * polynomial(family.half_fit, cold) / warm);
}

/// Everything that follows from a pair around the co-volume 1: x = vl - 1, y = vg - 1, difference = vg - vl.
struct Volumes {
    double x, y, difference;

    explicit Volumes(const Pair& pair) : x(std::exp(pair.liquid)), y(std::exp(pair.gas)), difference(y - x) {
        if (pair.half < FAR_APART) {
            difference = 2.0 * std::sqrt(x * y) * pair.half * (1.0 + sinhc_excess(pair.half));
        }
    }
};

constexpr std::array VDW_HALF{3.0, -1.375759, -0.2664068, 0.5850769, -1.656807, 2.345464, -0.9072409};
constexpr std::array VDW_MIDDLE{0.69314718056, 0.2094331, 0.06104146, 0.4157755, -0.698429, 0.969761, -0.006473426};
constexpr std::array RK_HALF{3.053621576, -1.431365, -0.2516812, 0.6163556, -1.747429, 2.499569, -0.9950388};
constexpr std::array RK_MIDDLE{1.04637893919, -0.1330005, 0.05799955, 0.4505512, -0.7934995, 1.126781, -0.09042012};
constexpr std::array PR_HALF{3.355301398, -1.786492, -0.07547248, 0.6746301, -2.098194, 3.207887, -1.429401};
constexpr std::array PR_MIDDLE{1.08227049786, -0.111955, 0.04495377, 0.6232378, -1.251815, 1.917138, -0.5303721};
constexpr std::array DIETERICI_HALF{3.464101615, -1.657825, -0.3975325, 0.9186328, -2.523263, 4.471095, -2.297554};
constexpr std::array DIETERICI_MIDDLE{0.0, -0.80342, -0.4651139, -0.7051852, 1.261618, -1.627292, 0.406579};
constexpr std::array SADUS_HALF{3.901556048, -2.615348, -0.5063616, 0.1215442, 2.290906, -2.830392, 1.108271};
constexpr std::array SADUS_MIDDLE{0.48050923976, -0.8515087, -1.198988, -0.3898775, 3.356961, -3.755706, 0.97573};
constexpr std::array<std::array<double, 5>, 3> POWER_HALF{{
    {1.0, -0.461543, -0.761376, 1.3586, -0.618817},
    {0.0, 0.000435144, 0.707198, -1.40072, 0.748484},
    {0.0, 0.0162057, -0.115435, 0.212633, -0.117299},
}};
constexpr std::array<std::array<double, 5>, 3> POWER_MIDDLE{{
    {0.0, -0.0259131, -0.248359, 0.853858, 0.287183},
    {0.0, 0.879152, 0.803576, -1.9789, 1.05192},
    {0.0, 0.0190842, -0.138472, 0.233747, -0.151038},
}};

constexpr double SQRT2 = std::numbers::sqrt2;

}  // namespace

const CubicFamily VAN_DER_WAALS_FAMILY{0.0, 0.0, {3.375, 3.0, VDW_HALF, VDW_MIDDLE}};
const CubicFamily REDLICH_KWONG_FAMILY{0.0, 1.0, {4.93396245182803, 3.8473221018630728, RK_HALF, RK_MIDDLE}};
const CubicFamily PENG_ROBINSON_FAMILY{
    1.0 - SQRT2, 1.0 + SQRT2, {5.877359948604403, 3.951373035591441, PR_HALF, PR_MIDDLE}};

const Family DIETERICI_FAMILY{4.0, 2.0, DIETERICI_HALF, DIETERICI_MIDDLE};
const Family DIETERICI_SADUS_FAMILY{8.373028781932307, 2.616897581113762, SADUS_HALF, SADUS_MIDDLE};

// Cubic equations ------------------------------------------------------------------------------------------------

bool CubicLoop::rises() const {
    return supercooled(alpha_, k_.family.critical_attraction);
}

double CubicLoop::interior() const {
    return std::log(k_.family.critical_volume - 1.0);
}

double CubicLoop::level(double t) const {
    const double x = std::exp(t);
    return 1.0 / x - alpha_ / (x + (1.0 + k_.d1)) / (x + (1.0 + k_.d2));
}

double CubicLoop::slope(double t) const {
    const double x = std::exp(t);
    const double r1 = 1.0 / (x + (1.0 + k_.d1));
    const double r2 = 1.0 / (x + (1.0 + k_.d2));
    return alpha_ * (x * r1) * r2 * (r1 + r2) - 1.0 / x;
}

// With g = 1/((v + d1)(v + d2)) and its integral G between the volumes, in one logarithm and free of cancellation:
//   gl - gg = difference * chord,  chord = (vl + vg + d1 + d2) gl gg
//   G = log1p((d2 - d1) difference / ((vl + d1)(vg + d2))) / (d2 - d1)
//     = (2 difference / n) atanh(q)/q,  n = (vl + d1)(vg + d2) + (vg + d1)(vl + d2),  q = (d2 - d1) difference / n
//   difference (gl + gg) / 2 = (2 difference / n) (1 + difference^2 / n) / (1 - q^2)
Imbalance CubicLoop::imbalance(const Pair& pair) const {
    const Volumes v(pair);
    const double e1 = 1.0 + k_.d1;
    const double e2 = 1.0 + k_.d2;
    const double l1 = v.x + e1;
    const double l2 = v.x + e2;
    const double g1 = v.y + e1;
    const double g2 = v.y + e2;
    const double rx = 1.0 / v.x;
    const double ry = 1.0 / v.y;
    const double rl = 1.0 / (l1 * l2);
    const double rg1 = 1.0 / g1;
    const double rg2 = 1.0 / g2;
    const double gas = rg1 * rg2;
    Imbalance i{};
    i.gas_difference = v.difference * (alpha_ * rl * ((g1 + l2) * rg1) * rg2 - rx * ry);
    i.liquid_slope = alpha_ * v.x * (l1 + l2) * (rl * rl) - rx;
    i.gas_slope = alpha_ * (v.y * rg1) * rg2 * (rg1 + rg2) - ry;
    const double spread = k_.d2 - k_.d1;
    if (pair.half < FAR_APART) {
        const double n = l1 * g2 + g1 * l2;
        const double rn = 1.0 / n;
        const double q = spread * v.difference * rn;
        const double s = q * q;
        const double bulge = (v.difference * v.difference * rn + s) / (1.0 - s) - atanhc_excess(s);
        const double attraction = 2.0 * rn * alpha_ * bulge;
        const double repulsion = 2.0 * pair.half * sinhc_excess(2.0 * pair.half) / v.difference;
        i.gas_excess = attraction - repulsion - 0.5 * i.gas_difference;
    } else {
        const double u = v.difference / l1 * rg2;
        const double integral = spread > 0.0 ? std::log1p(spread * u) / spread : u;
        i.gas_excess = (2.0 * pair.half - alpha_ * integral) / v.difference - ry + alpha_ * gas;
    }
    return i;
}

std::optional<Pair> CubicLoop::estimate() const {
    if (const auto pair = fitted(k_.family, alpha_)) {
        return pair;
    }
    // Cold: the liquid has zero pressure, alpha x = (x + e1)(x + e2), and the gas is ideal.
    const double e1 = 1.0 + k_.d1;
    const double e2 = 1.0 + k_.d2;
    const double half_sum = 0.5 * (alpha_ - e1 - e2);
    const double x = e1 * e2 / (half_sum + std::sqrt(half_sum * half_sum - e1 * e2));
    const double spread = k_.d2 - k_.d1;
    const double integral = spread > 0.0 ? std::log1p(spread / (x + e1)) / spread : 1.0 / (x + e1);
    const double two_halves = alpha_ * integral + 1.0;
    return Pair::of(std::log(x), std::log(x) + two_halves);
}

// Free exponent --------------------------------------------------------------------------------------------------

/// dp/dv = 0: alpha = v^(mu + 1) / (mu (v - 1)^2), smallest at the critical volume.
double PowerLoop::critical_attraction(double mu) {
    const double v = critical_volume(mu);
    return std::pow(v, mu + 1.0) / (mu * (v - 1.0) * (v - 1.0));
}

PowerLoop::PowerLoop(double mu, double alpha)
    : mu_(mu),
      alpha_(alpha),
      critical_(mu > 1.0 ? critical_attraction(mu) : std::numeric_limits<double>::quiet_NaN()) {}

bool PowerLoop::rises() const {
    return supercooled(alpha_, critical_);
}

double PowerLoop::interior() const {
    return std::log(2.0 / (mu_ - 1.0));
}

double PowerLoop::level(double t) const {
    const double x = std::exp(t);
    return 1.0 / x - alpha_ * std::exp(-mu_ * std::log1p(x));
}

double PowerLoop::slope(double t) const {
    const double x = std::exp(t);
    return alpha_ * mu_ * (x / (1.0 + x)) * std::exp(-mu_ * std::log1p(x)) - 1.0 / x;
}

// With h half the logarithm of vg/vl and m the geometric mean of the volumes, the integral of v^-mu is
// m^(1 - mu) 2 sinh((mu - 1) h)/(mu - 1), and the trapezoid over it
// m^(1 - mu) (sinh((mu + 1) h) - sinh((mu - 1) h)); their difference in terms of sinh(z)/z - 1 cancels nothing.
Imbalance PowerLoop::imbalance(const Pair& pair) const {
    const Volumes v(pair);
    const double h = 0.5 * std::log1p(v.difference / (1.0 + v.x));
    const double log_liquid = std::log1p(v.x);
    const double liquid = alpha_ * std::exp(-mu_ * log_liquid);
    const double fall = -std::expm1(-2.0 * mu_ * h);
    const double gas = liquid * std::exp(-2.0 * mu_ * h);
    const double rx = 1.0 / v.x;
    const double ry = 1.0 / v.y;
    Imbalance i{};
    i.gas_difference = liquid * fall - v.difference * rx * ry;
    i.liquid_slope = mu_ * liquid * (v.x / (1.0 + v.x)) - rx;
    i.gas_slope = mu_ * gas * (v.y / (1.0 + v.y)) - ry;
    if (pair.half < FAR_APART) {
        const double bulge = (mu_ + 1.0) * h * (sinhc_excess((mu_ + 1.0) * h) - sinhc_excess((mu_ - 1.0) * h));
        const double attraction = liquid * (1.0 + v.x) * std::exp((1.0 - mu_) * h) * bulge;
        const double repulsion = 2.0 * pair.half * sinhc_excess(2.0 * pair.half);
        i.gas_excess = (attraction - repulsion) / v.difference - 0.5 * i.gas_difference;
    } else {
        const double integral = liquid * (1.0 + v.x) * -std::expm1(-2.0 * (mu_ - 1.0) * h) / (mu_ - 1.0);
        i.gas_excess = (2.0 * pair.half - integral) / v.difference - ry + gas;
    }
    return i;
}

// Near the critical point middle = ln(2 k), k = 1/(mu - 1), and half = sqrt((3 + 6 k)(1 - alpha_c/alpha)). The fits
// beyond are polynomials in 1 - alpha_c/alpha whose coefficients are quadratic in k, within 0.02 for mu >= 1.2.
std::optional<Pair> PowerLoop::estimate() const {
    const double k = 1.0 / (mu_ - 1.0);
    const double warm = critical_ / alpha_;
    const double cold = 1.0 - warm;
    if (k > 5.0) {
        return std::nullopt;
    }
    if (cold <= COLDEST_FITTED) {
        const auto blend = [k, cold](const std::array<std::array<double, 5>, 3>& fit) {
            return polynomial(fit[0], cold) + k * (polynomial(fit[1], cold) + k * polynomial(fit[2], cold));
        };
        return Pair::around(std::log(2.0 * k) + blend(POWER_MIDDLE) / warm,
                            std::sqrt((3.0 + 6.0 * k) * cold) * blend(POWER_HALF) / warm);
    }
    // Cold: the liquid has zero pressure, alpha x = (1 + x)^mu, and the gas is ideal.
    double x = 0.0;
    for (int i = 0; i < 6; ++i) {
        x = std::exp(mu_ * std::log1p(x)) / alpha_;
    }
    const double two_halves = 1.0 + (1.0 + x) * k / x;
    return Pair::of(std::log(x), std::log(x) + two_halves);
}

// Exponential attraction -----------------------------------------------------------------------------------------

namespace {

struct Node {
    double x, weight;
};
/// Positive half of the 16-point Gauss-Legendre rule.
constexpr std::array<Node, 8> GAUSS{{
    {0.0950125098376374402, 0.189450610455068496},
    {0.281603550779258913, 0.182603415044923589},
    {0.458016777657227386, 0.169156519395002538},
    {0.617876244402643748, 0.149595988816576732},
    {0.755404408355003034, 0.124628971255533872},
    {0.865631202387831744, 0.0951585116824927848},
    {0.944575023073232576, 0.0622535239386478929},
    {0.989400934991649933, 0.0271524594117540949},
}};

/// Integral of f(t, exp(t)) from low to high by `panels` panels of the Gauss rule. The exponentials of the nodes are
/// shared by both sides of a panel and by all panels.
template <class Function>
double gauss(double low, double high, int panels, const Function& f) {
    const double half = 0.5 * (high - low) / panels;
    std::array<double, GAUSS.size()> stretch;
    std::transform(GAUSS.begin(), GAUSS.end(), stretch.begin(),
                   [half](const Node& node) { return std::exp(half * node.x); });
    double sum = 0.0;
    for (int panel = 0; panel < panels; ++panel) {
        const double middle = low + (2 * panel + 1) * half;
        const double centre = std::exp(middle);
        for (std::size_t i = 0; i < GAUSS.size(); ++i) {
            const double offset = half * GAUSS[i].x;
            sum +=
                GAUSS[i].weight * (f(middle - offset, centre / stretch[i]) + f(middle + offset, centre * stretch[i]));
        }
    }
    return half * sum;
}

constexpr double PANEL_LENGTH = 2.5;
/// Parts of the areas below this fraction of the gas pressure, as an exponent, are left out.
constexpr double NEGLIGIBLE = 45.0;

/// The equal-area pressure of a loop p = f(v) exp(-alpha/v), relative to the gas, as ln(P*/pg).
/// Of t and v - 1: `weight` is p (v - 1), up to a factor, whose integral over t is that of p over v; `excess` is
/// p/pg - 1 without cancellation.
template <class Weight, class Excess>
double equal_area_level(const Pair& pair, double alpha, const Weight& weight, const Excess& excess) {
    const double liquid = pair.liquid;
    const double gas = pair.gas;
    if (pair.half < FAR_APART) {
        const double difference = 2.0 * std::exp(pair.middle()) * std::sinh(pair.half);
        const double area = gauss(liquid, gas, 1, [&](double t, double x) { return excess(t, x) * x; });
        return std::log1p(area / difference);
    }
    // Where alpha (u - ug) exceeds the negligible exponent, nothing is added: u < ug + NEGLIGIBLE / alpha.
    const double densest = 1.0 / (1.0 + std::exp(gas)) + NEGLIGIBLE / alpha;
    const double begin = densest < 1.0 ? std::max(liquid, std::log(1.0 / densest - 1.0)) : liquid;
    double area = gauss(begin, gas, 1 + static_cast<int>((gas - begin) / PANEL_LENGTH), weight);
    if (begin > liquid && 2.0 * pair.half < NEGLIGIBLE) {  // the rise towards the co-volume
        const double end = std::min(begin, liquid + 0.25 * NEGLIGIBLE);
        area += gauss(liquid, end, 1 + static_cast<int>((end - liquid) / PANEL_LENGTH), weight);
    }
    return std::log(area / (weight(gas, std::exp(gas)) * -std::expm1(-2.0 * pair.half)));
}

/// Gas of a cold loop with exponential attraction: the whole area is the gas's own, alpha/vg tends to the root of
/// exp(s) E1(s) = 1, and two terms in 1/alpha follow.
double cold_gas(double alpha, double first, double second) {
    const double s = 0.43481820438490376 + first / alpha;
    return std::log(alpha / s - 1.0) - second / (alpha * alpha);
}

}  // namespace

bool DietericiLoop::rises() const {
    return supercooled(alpha_, DIETERICI_FAMILY.critical_attraction);
}

double DietericiLoop::interior() const {
    return 0.0;
}

double DietericiLoop::level(double t) const {
    return -t - alpha_ / (1.0 + std::exp(t));
}

double DietericiLoop::slope(double t) const {
    const double u = 1.0 / (1.0 + std::exp(t));
    return alpha_ * u * (1.0 - u) - 1.0;
}

double DietericiLoop::pressure(double t) const {
    return std::exp(level(t));
}

Imbalance DietericiLoop::imbalance(const Pair& pair) const {
    const Volumes v(pair);
    const double x = v.x;
    const double y = v.y;
    const double ul = 1.0 / (1.0 + x);
    const double ug = 1.0 / (1.0 + y);
    const double fall = v.difference * ul * ug;
    Imbalance i{};
    i.gas_difference = alpha_ * fall - 2.0 * pair.half;
    i.liquid_slope = alpha_ * ul * (x * ul) - 1.0;
    i.gas_slope = alpha_ * ug * (y * ug) - 1.0;
    const auto weight = [this, ug](double, double v1) { return std::exp(-alpha_ * (1.0 / (1.0 + v1) - ug)); };
    const auto excess = [this, ug, y, gas = pair.gas](double t, double v1) {
        const double u = 1.0 / (1.0 + v1);
        return std::expm1((gas - t) + alpha_ * y * std::expm1(t - gas) * u * ug);
    };
    i.gas_excess = equal_area_level(pair, alpha_, weight, excess);
    return i;
}

std::optional<Pair> DietericiLoop::estimate() const {
    if (const auto pair = fitted(DIETERICI_FAMILY, alpha_)) {
        return pair;
    }
    const double gas = cold_gas(alpha_, 0.77, 4.9);
    const double rough = gas + alpha_ / (1.0 + std::exp(gas)) - alpha_;  // ln p is the same for both
    const double liquid = rough + alpha_ * std::exp(rough);
    return Pair::of(liquid, gas);
}

bool DietericiSadusLoop::rises() const {
    return supercooled(alpha_, DIETERICI_SADUS_FAMILY.critical_attraction);
}

double DietericiSadusLoop::interior() const {
    return std::log(DIETERICI_SADUS_FAMILY.critical_volume - 1.0);
}

namespace {
/// Carnahan-Starling numerator.
double hard_sphere(double y) {
    return 1.0 + y + y * y - y * y * y;
}
}  // namespace

double DietericiSadusLoop::level(double t) const {
    const double x = std::exp(t);
    const double y = 1.0 / (1.0 + x);
    return 2.0 * std::log1p(x) - 3.0 * t + std::log(hard_sphere(y)) - alpha_ * y;
}

double DietericiSadusLoop::slope(double t) const {
    const double x = std::exp(t);
    const double y = 1.0 / (1.0 + x);
    return -1.0 - 2.0 * y + x * y * y * (alpha_ - (1.0 + y * (2.0 - 3.0 * y)) / hard_sphere(y));
}

double DietericiSadusLoop::pressure(double t) const {
    return std::exp(level(t));
}

Imbalance DietericiSadusLoop::imbalance(const Pair& pair) const {
    const Volumes v(pair);
    const double x = v.x;
    const double y = v.y;
    const double ul = 1.0 / (1.0 + x);
    const double ug = 1.0 / (1.0 + y);
    const double ql = hard_sphere(ul);
    const double qg = hard_sphere(ug);
    const double fall = v.difference * ul * ug;
    const double numerator = -fall * (1.0 + (ul + ug) - (ul * ul + ul * ug + ug * ug)) / ql;
    Imbalance i{};
    i.gas_difference = 2.0 * std::log1p(v.difference * ul) - 6.0 * pair.half + std::log1p(numerator) + alpha_ * fall;
    const auto slope_at = [this](double v1, double u, double q) {
        return -1.0 - 2.0 * u + v1 * u * u * (alpha_ - (1.0 + u * (2.0 - 3.0 * u)) / q);
    };
    i.liquid_slope = slope_at(x, ul, ql);
    i.gas_slope = slope_at(y, ug, qg);
    const auto weight = [this, ug](double, double v1) {
        const double volume = 1.0 + v1;
        const double u = 1.0 / volume;
        return std::exp(-alpha_ * (u - ug)) * hard_sphere(u) * (volume / v1) * (volume / v1);
    };
    const auto excess = [this, ug, qg, y, gas = pair.gas](double t, double v1) {
        const double u = 1.0 / (1.0 + v1);
        const double denser = -y * std::expm1(t - gas) * u * ug;  // u - ug
        const double a = std::expm1(3.0 * (gas - t) - alpha_ * denser);
        const double b = denser * (1.0 + (u + ug) - (u * u + u * ug + ug * ug)) / qg;
        const double c = -denser * (u + ug) / (u * u);
        return a + (1.0 + a) * (b + c + b * c);
    };
    i.gas_excess = equal_area_level(pair, alpha_, weight, excess);
    return i;
}

std::optional<Pair> DietericiSadusLoop::estimate() const {
    if (const auto pair = fitted(DIETERICI_SADUS_FAMILY, alpha_)) {
        return pair;
    }
    const double gas = cold_gas(alpha_, 2.07, 29.2);
    const double rough = (std::numbers::ln2 - alpha_ - level(gas)) / 3.0;
    const double liquid = rough + alpha_ * std::exp(rough) / 3.0;
    return Pair::of(liquid, gas);
}

// Virial ---------------------------------------------------------------------------------------------------------

VirialLoop::VirialLoop(double a, double b, double c, double d) : a_(a), b_(b), c_(c), d_(d) {
    // The pressure rises with volume around the minimum of A + 2 B r + 3 C r^2 + 4 D r^3, if that is below 0.
    const double discriminant = 9.0 * c * c - 24.0 * b * d;
    if (!(discriminant >= 0.0)) {
        return;
    }
    const double root = std::sqrt(discriminant);
    const double middle = c > 0.0 ? -2.0 * b / (3.0 * c + root) : (root - 3.0 * c) / (12.0 * d);
    if (!(middle > 0.0) || !std::isfinite(middle)) {
        return;
    }
    scale_ = 1.0 / middle;
    b_ *= middle;
    c_ *= middle * middle;
    d_ *= middle * middle * middle;
    const double size = std::abs(a_) + std::abs(b_) + std::abs(c_) + std::abs(d_);
    rises_ = std::isfinite(size) && compressibility_slope(1.0) < -CRITICAL_MARGIN * size;
    if (!rises_ || (a_ >= 0.0 && d_ >= 0.0)) {
        return;
    }
    // With A or D negative a branch ends where the slope changes sign once more, beyond the other extremum.
    const double other = -(3.0 * c_ + root * middle * middle) / (12.0 * d_);
    const auto slope = [this](double r) { return compressibility_slope(r); };
    const bool between = other > 0.0 && slope(other) > 0.0;
    if (between && a_ < 0.0 && other < 1.0) {
        gas_end_ = -std::log(coexistence::sign_change(other, 0.0, slope));
    } else if (between && d_ < 0.0 && other > 1.0) {
        double dense = 2.0 * other;
        while (slope(dense) > 0.0) {
            dense *= 2.0;
        }
        liquid_end_ = -std::log(coexistence::sign_change(other, dense, slope));
    } else {
        rises_ = false;
    }
}

double VirialLoop::compressibility_slope(double r) const {
    return a_ + r * (2.0 * b_ + r * (3.0 * c_ + r * 4.0 * d_));
}

double VirialLoop::level(double t) const {
    const double r = std::exp(-t);
    return r * (a_ + r * (b_ + r * (c_ + r * d_)));
}

double VirialLoop::slope(double t) const {
    const double r = std::exp(-t);
    return -r * compressibility_slope(r);
}

// With rl = w e^z, rg = w e^-z, s = sinh z, c = cosh z, the factor s divides the pressure difference and s^3 the
// excess of the area over the trapezoid:
//   pg - pl = -2 w s (A + 2 B w c + C w^2 (4 c^2 - 1) + D w^3 (8 c^3 - 4 c))
//   area - (vg - vl)(pl + pg)/2 = -2 (A (s c - z) + s^3 (2 B w + 4 C w^2 c + D w^3 (8 s^2 + 20/3)))
Imbalance VirialLoop::imbalance(const Pair& pair) const {
    const double z = pair.half;
    const double w = std::exp(-pair.middle());
    const double ratio = std::exp(z);
    const double liquid = w * ratio;
    const double gas = w / ratio;
    const bool near = z < FAR_APART;
    const double s = near ? z * (1.0 + sinhc_excess(z)) : 0.5 * (ratio - 1.0 / ratio);
    const double difference = 2.0 * s / w;
    Imbalance i{};
    i.liquid_slope = -liquid * compressibility_slope(liquid);
    i.gas_slope = -gas * compressibility_slope(gas);
    // In the densities themselves: rl + rg = 2 w c, rl^2 + rl rg + rg^2 = w^2 (4 c^2 - 1), and so on.
    const double sum = liquid + gas;
    const double square = liquid * liquid + gas * gas;
    i.gas_difference = -2.0 * w * s * (a_ + b_ * sum + c_ * (square + w * w) + d_ * sum * square);
    if (near) {
        const double cubic = 2.0 * b_ * w + 2.0 * c_ * w * sum + d_ * w * w * w * (8.0 * s * s + 20.0 / 3.0);
        const double logarithm = a_ * z * sinhc_excess(2.0 * z) / s;
        i.gas_excess = -w * (logarithm + s * s * cubic) - 0.5 * i.gas_difference;
    } else {
        const double inner = liquid - gas;
        const double area = a_ * 2.0 * z + inner * (b_ + 0.5 * c_ * sum + d_ / 3.0 * (square + w * w));
        i.gas_excess = area / difference - gas * (a_ + gas * (b_ + gas * (c_ + gas * d_)));
    }
    return i;
}

// In units of the middle density and of A: 3 C + 8 D = A (1 + cold) and B = -(3 C + 6 D), with cold = 0 at the critical
// point; quartic is the part of D in the sum. Eliminating B from the two conditions of `imbalance` leaves
//   C w^2 + (8/3) D w^3 cosh z = A (z coth z - 1) / sinh^2 z.
std::optional<Pair> VirialLoop::estimate() const {
    const double c = c_ / a_;
    const double d = d_ / a_;
    const double cold = 3.0 * c + 8.0 * d - 1.0;
    const double quartic = 8.0 * d / (1.0 + cold);
    if (!(a_ > 0.0 && cold > 0.0)) {
        return std::nullopt;
    }
    if (cold > 2.5) {
        // The liquid has zero pressure, 1 + B r + C r^2 + D r^3 = 0, and the gas is ideal.
        const double b = b_ / a_;
        double r = 3.0;
        for (int i = 0; i < 5; ++i) {
            r -= (1.0 + r * (b + r * (c + r * d))) / (b + r * (2.0 * c + r * 3.0 * d));
        }
        const double two_halves = 1.0 - r * (b + r * (c / 2.0 + r * d / 3.0));
        return Pair::of(-std::log(r), two_halves - std::log(r));
    }
    // Exact to first order in cold, then fitted to solutions with 0 <= quartic <= 1.
    const double bend = 0.055 + quartic * (0.007 + 0.064 * quartic) + cold * (0.02 - 0.016 * quartic);
    const double z = std::sqrt(6.0 * cold / (2.0 + quartic) * (1.0 + cold * bend));
    const double s = std::sinh(z);
    const double right = z < 0.01 ? (1.0 - 0.4 * z * z) / 3.0 : (z / std::tanh(z) - 1.0) / (s * s);
    const double cubic = 8.0 / 3.0 * d * std::cosh(z);
    double w = std::sqrt(3.0 * right / (1.0 + cold));
    for (int i = 0; i < 4; ++i) {
        w -= (w * w * (c + cubic * w) - right) / (w * (2.0 * c + 3.0 * cubic * w));
    }
    return Pair::around(-std::log(w), z);
}

}  // namespace tavo::calcnum

#include <cmath>
#include <numbers>
#include <string>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::calcnum {

namespace {

constexpr int INTERVALS = 1000;
constexpr double SQRT2 = std::numbers::sqrt2;

/// Composite Simpson rule.
template <class Function>
double simpson(double v1, double v2, const Function& f) {
    const double h = (v2 - v1) / INTERVALS;
    double even = 0.0;
    double odd = 0.0;
    for (int i = 1; i < INTERVALS; ++i) {
        (i % 2 == 0 ? even : odd) += f(v1 + i * h);
    }
    return (f(v1) + f(v2) + 2.0 * even + 4.0 * odd) * h / 3.0;
}

double simpson_area(const EquationSlot& slot, double v1, double v2) {
    EquationSlot one_mole = slot;
    one_mole.moles = 1.0;
    return simpson(v1, v2, [&one_mole](double v) { return pressure(one_mole, v); });
}

/// ln(x2 / x1), also for close values.
double log_ratio(double x1, double x2, double difference) {
    return std::abs(difference) < 0.5 * x1 ? std::log1p(difference / x1) : std::log(x2 / x1);
}

/// Int dv / ((v + d1)(v + d2)) from v1 to v2 for d2 > d1.
double between_poles(double d1, double d2, double v1, double v2) {
    const double ratio = (d2 - d1) * (v2 - v1) / ((v1 + d1) * (v2 + d2));
    return std::log1p(ratio) / (d2 - d1);
}

/// Int v^-mu dv from v1 to v2.
double power_area(double mu, double v1, double v2) {
    const double stretch = log_ratio(v1, v2, v2 - v1);
    if (mu == 1.0) {
        return stretch;
    }
    return std::pow(v1, 1.0 - mu) * std::expm1((1.0 - mu) * stretch) / (1.0 - mu);
}

/// Int (A/v + B/v^2 + C/v^3 + D/v^4) dv from v1 to v2, in the densities.
double virial_area(const Coefficients& k, double v1, double v2) {
    const double r1 = 1.0 / v1;
    const double r2 = 1.0 / v2;
    const double series = k.b + k.c / 2.0 * (r1 + r2) + k.d / 3.0 * (r1 * r1 + r1 * r2 + r2 * r2);
    return k.a * log_ratio(v1, v2, v2 - v1) + (v2 - v1) * (r1 * r2) * series;
}

/// The antiderivatives' differences; not finite where a volume lies at or inside the co-volume.
double closed_form(const EquationSlot& slot, const Coefficients& k, double v1, double v2) {
    const double rt = R * slot.temperature;
    const auto repulsion = [&] { return rt * log_ratio(v1 - k.b, v2 - k.b, v2 - v1); };
    switch (slot.equation) {
        case EquationOfState::IdealGas:
            return rt * log_ratio(v1, v2, v2 - v1);
        case EquationOfState::VanDerWaals:
            return repulsion() - k.a * (v2 - v1) / (v1 * v2);
        case EquationOfState::Berthelot:
            return repulsion() - k.a / slot.temperature * (v2 - v1) / (v1 * v2);
        case EquationOfState::RedlichKwong:
            return repulsion() - k.a / std::sqrt(slot.temperature) * between_poles(0.0, k.b, v1, v2);
        case EquationOfState::Virial:
            return rt * virial_area(k, v1, v2);
        case EquationOfState::FreeExponent:
            return repulsion() - k.a * power_area(k.mu, v1, v2);
        case EquationOfState::Soave:
            return repulsion() - k.a * between_poles(0.0, k.b, v1, v2);
        default:
            return repulsion() - k.a * between_poles((1.0 - SQRT2) * k.b, (1.0 + SQRT2) * k.b, v1, v2);
    }
}

}  // namespace

double work_integral(const EquationSlot& slot, double v1, double v2) {
    const Model* model = find_model(slot.equation);
    if (!model) {
        return 0.0;  // the pressure is 0 everywhere
    }
    const bool by_simpson =
        slot.equation == EquationOfState::Dieterici || slot.equation == EquationOfState::DietericiSadus;
    const Coefficients k = coefficients(slot);
    const double covolume = model->covolume(k);
    const double area = by_simpson ? simpson_area(slot, v1, v2) : closed_form(slot, k, v1, v2);
    const bool inside = by_simpson || (v1 > covolume && v2 > covolume);
    if (!inside || !std::isfinite(area)) {
        throw FloatingPointError(std::string(model->name) + ": no work integral from " + to_text(v1) + " to " +
                                 to_text(v2) + " l/mol");
    }
    return area;
}

}  // namespace tavo::calcnum

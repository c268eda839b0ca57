// Critical point of a slot's model: the horizontal inflection dP/dVm = d2P/dVm2 = 0 at the upper end of a range of
// temperatures with a loop.

#include <cmath>
#include <optional>

#include "core/automatic.h"
#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/loops.h"
#include "core/models.h"
#include "core/polynomial.h"

namespace tavo::calcnum {

namespace {

/// Whether the loader derives the coefficients anew at each temperature.
bool follows_temperature(const EquationSlot& slot) {
    return !slot.parameters && slot.gas.tc > 0.0;
}

/// The reduced attraction as a function of T, ratio/T^power, with its critical value and the critical volume
/// [units of the co-volume].
struct Reduced {
    double ratio;
    double power;
    double attraction;
    double volume;

    double temperature() const { return std::pow(ratio / attraction, 1.0 / power); }
};

/// Of coefficients that stay as they are. Empty where the model has no loop by their signs, and for model 5.
std::optional<Reduced> reduced(const EquationSlot& slot) {
    const GasRecord& k = slot.gas;
    if (!(k.a > 0.0 && k.b > 0.0))
        return std::nullopt;
    const double ratio = k.a / k.b / R;
    const auto of = [](const Family& family, double own_ratio, double power) {
        return Reduced{own_ratio, power, family.critical_attraction, family.critical_volume};
    };
    switch (slot.equation) {
        case EquationOfState::VanDerWaals:
            return of(VAN_DER_WAALS_FAMILY.family, ratio, 1.0);
        case EquationOfState::Berthelot:
            return of(VAN_DER_WAALS_FAMILY.family, ratio, 2.0);
        case EquationOfState::Dieterici:
            return of(DIETERICI_FAMILY, ratio, 1.0);
        case EquationOfState::RedlichKwong:
            return of(REDLICH_KWONG_FAMILY.family, ratio, 1.5);
        case EquationOfState::Soave:
            return of(REDLICH_KWONG_FAMILY.family, ratio, 1.0);
        case EquationOfState::PengRobinson:
            return of(PENG_ROBINSON_FAMILY.family, ratio, 1.0);
        case EquationOfState::DietericiSadus:
            return of(DIETERICI_SADUS_FAMILY, 4.0 * ratio, 1.0);
        case EquationOfState::FreeExponent:
            if (!(slot.mu > 1.0))
                return std::nullopt;
            return Reduced{ratio * std::pow(k.b, 2.0 - slot.mu), 1.0, PowerLoop::critical_attraction(slot.mu),
                           PowerLoop::critical_volume(slot.mu)};
        default:
            return std::nullopt;
    }
}

/// Models 7 and 8 with a(T) = a(Tc) (1 + m - m s)^2, s = sqrt(T/Tc): the loop ends where |1 + m - m s| has fallen to
/// k s, with k^2 the critical a at Tc over a(Tc). NaN if it never does.
double soave_temperature(const EquationSlot& slot, const Reduced& family) {
    const GasRecord& gas = slot.gas;
    const double m = Global::acentric_slope(slot.equation, gas.c);
    const double k = std::sqrt(family.attraction * gas.b * R * gas.tc / attraction_at_tc(slot));
    const double s = 1.0 + m > 0.0 ? (1.0 + m) / (k + m) : -(1.0 + m) / (k - m);
    return s > 0.0 ? gas.tc * s * s : std::numeric_limits<double>::quiet_NaN();
}

CriticalPoint at(const EquationSlot& slot, Coefficients k, double t, double vm) {
    return {t, vm, find_model(slot.equation)->pressure(k, t, vm)};
}

std::optional<CriticalPoint> of_family(const EquationSlot& slot) {
    const auto family = reduced(slot);
    if (!family)
        return std::nullopt;
    Coefficients k = coefficients(slot);
    double t = family->temperature();
    const bool soave = slot.equation == EquationOfState::Soave || slot.equation == EquationOfState::PengRobinson;
    if (soave && follows_temperature(slot)) {
        t = soave_temperature(slot, *family);
        k.a = family->attraction * k.b * R * t;
    }
    return at(slot, k, t, family->volume * find_model(slot.equation)->covolume(k));
}

/// With B = b - a/(RT) the spinodal is RT (A + 2 b r + 3 C r^2 + 4 D r^3) = 2 a r over the density r. Its first
/// maximum, 3 C r^2 + 8 D r^3 = A, ends the loop; there RT (b + 3 C r + 6 D r^2) = a. This T is negative where the
/// spinodal has gone to infinity before, and a loop stays at any temperature. With a constant B the loop does not
/// depend on T.
std::optional<CriticalPoint> of_virial(const EquationSlot& slot) {
    if (!follows_temperature(slot))
        return std::nullopt;
    const auto behind = behind_automatic_b(slot);
    if (!behind)
        return std::nullopt;
    Coefficients k = coefficients(slot);
    const auto maxima = positive_roots({-k.a, 0.0, 3.0 * k.c, 8.0 * k.d});
    if (!(k.a > 0.0) || maxima.empty())
        return std::nullopt;
    const double r = maxima.front();
    const double t = behind->a / (R * (behind->b + r * (3.0 * k.c + r * 6.0 * k.d)));
    k.b = behind->b - behind->a / (R * t);
    return at(slot, k, t, 1.0 / r);
}

bool is_above_0(double x) {
    return std::isfinite(x) && x > 0.0;
}

}  // namespace

std::optional<CriticalPoint> critical_point(const EquationSlot& slot) {
    try {
        const auto point = slot.equation == EquationOfState::Virial ? of_virial(slot) : of_family(slot);
        if (point && is_above_0(point->t) && is_above_0(point->v) && is_above_0(point->p))
            return point;
    } catch (const FloatingPointError&) {  // critical constants out of all proportion
    }
    return std::nullopt;
}

}  // namespace tavo::calcnum

#include <algorithm>
#include <cmath>
#include <limits>
#include <type_traits>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/loops.h"
#include "core/numtext.h"

namespace tavo::calcnum {

namespace {

/// Below this distance from the critical temperature no coexistence is given [K].
constexpr double CRITICAL_BAND = 0.005;

/// Molar volume at t = ln(v - 1), in units of the co-volume [l/mol]; never the co-volume itself, where a cold liquid
/// ends up by rounding.
double around_covolume(double covolume, double t) {
    return std::max(covolume * (1.0 + std::exp(t)), std::nextafter(covolume, 2.0 * covolume));
}

/// Calls visit(loop, unit) with the reduced loop of a slot at temperature t and its unit of volume [l/mol]; gives an
/// empty result for coefficients that have no loop by their signs.
template <class Result, class Visitor>
std::optional<Result> with_loop(const EquationSlot& slot, double t, const Visitor& visit) {
    const GasRecord& k = slot.gas;
    if (!(t > 0.0)) {
        return std::nullopt;
    }
    if (slot.equation == EquationOfState::Virial) {
        const VirialLoop loop(k.a, k.b, k.c, k.d);
        return visit(loop, loop.scale());
    }
    if (!(k.a > 0.0 && k.b > 0.0)) {
        return std::nullopt;
    }
    const double attraction = k.a / k.b / (R * t);  // b R t may underflow
    switch (slot.equation) {
        case EquationOfState::VanDerWaals:
            return visit(CubicLoop(VAN_DER_WAALS_FAMILY, attraction), k.b);
        case EquationOfState::Berthelot:
            return visit(CubicLoop(VAN_DER_WAALS_FAMILY, attraction / t), k.b);
        case EquationOfState::RedlichKwong:
            return visit(CubicLoop(REDLICH_KWONG_FAMILY, attraction / std::sqrt(t)), k.b);
        case EquationOfState::Soave:
            return visit(CubicLoop(REDLICH_KWONG_FAMILY, attraction), k.b);
        case EquationOfState::PengRobinson:
            return visit(CubicLoop(PENG_ROBINSON_FAMILY, attraction), k.b);
        case EquationOfState::Dieterici:
            return visit(DietericiLoop(attraction), k.b);
        case EquationOfState::DietericiSadus:
            return visit(DietericiSadusLoop(4.0 * attraction), 0.25 * k.b);
        case EquationOfState::FreeExponent:
            return visit(PowerLoop(slot.mu, attraction * std::pow(k.b, 2.0 - slot.mu)), k.b);
        default:
            return std::nullopt;
    }
}

/// Molar volume of a loop's t [l/mol].
template <class Loop>
double molar_volume(double unit, double t) {
    if constexpr (std::is_same_v<Loop, VirialLoop>) {
        return unit * std::exp(t);
    } else {
        return around_covolume(unit, t);
    }
}

/// Sets the temperature of a slot and loads the coefficients that belong to it.
void bring_to(EquationSlot& slot, double t, const Reload& reload) {
    slot.temperature = t;
    if (reload) {
        reload(slot);
    }
}

}  // namespace

std::optional<Saturation> saturation(const EquationSlot& slot, double t) {
    if (!(slot.moles > 0.0) || !(t < slot.gas.tc - CRITICAL_BAND)) {
        return std::nullopt;
    }
    return with_loop<Saturation>(slot, t, [t](const auto& loop, double unit) -> std::optional<Saturation> {
        using Loop = std::decay_t<decltype(loop)>;
        const auto pair = coexistence::coexist(loop);
        if (!pair) {
            return std::nullopt;
        }
        const Saturation s{loop.pressure(pair->gas) * (R * t / unit), molar_volume<Loop>(unit, pair->liquid),
                           molar_volume<Loop>(unit, pair->gas)};
        if (!(s.pv >= std::numeric_limits<double>::min()) || !std::isfinite(s.pv) || !std::isfinite(s.vg) ||
            !(s.vl > 0.0)) {
            return std::nullopt;
        }
        return s;
    });
}

double vapour_pressure(const SlotTable& table, int slot, double t, double& vl, double& vg) {
    const auto state = saturation(table[slot], t);
    if (!state) {
        return -1.0;
    }
    vl = state->vl;
    vg = state->vg;
    return state->pv;
}

double vaporisation_enthalpy(SlotTable& table, double t, double vl, double vg, const Reload& reload) {
    EquationSlot& slot = table[0];
    double colder = t - 0.5;
    double warmer = t + 0.5;
    // Halving ends at once for a temperature that has no two-phase state anyway: it would never pass t.
    const bool possible = t > 0.0 && t < slot.gas.tc;
    while (possible && colder <= 0.0 && colder + (t - colder) / 2.0 > colder) {
        colder += (t - colder) / 2.0;
    }
    while (possible && warmer >= slot.gas.tc && warmer - (warmer - t) / 2.0 < warmer) {
        warmer -= (warmer - t) / 2.0;
    }
    const auto pressure_at = [&](double temperature) {
        bring_to(slot, temperature, reload);
        const auto state = saturation(slot, temperature);
        return state ? state->pv : -1.0;
    };
    double p1 = -1.0;
    double p2 = -1.0;
    if (possible) {
        try {
            p1 = pressure_at(colder);
            p2 = pressure_at(warmer);
        } catch (...) {
            slot.temperature = t;
            throw;
        }
    }
    const double pv = pressure_at(t);
    if (!(p1 > 0.0 && p2 > 0.0 && pv > 0.0)) {
        return -1.0;
    }
    // T1 T2 and T2 - T1 of the unmoved pair, also where one of them was moved.
    const double enthalpy = (t * t - 0.25) / 1.0 * std::log(p2 / p1) * (vg - vl) * pv / t;
    if (!std::isfinite(enthalpy)) {
        throw FloatingPointError("no finite enthalpy of vaporisation at " + to_text(t) + " K from " + to_text(vl) +
                                 " and " + to_text(vg) + " l/mol");
    }
    return enthalpy;
}

std::optional<Spinodals> spinodals(const EquationSlot& slot, double t) {
    return with_loop<Spinodals>(slot, t, [](const auto& loop, double unit) -> std::optional<Spinodals> {
        using Loop = std::decay_t<decltype(loop)>;
        const auto at = coexistence::extrema(loop);
        if (!at) {
            return std::nullopt;
        }
        return Spinodals{molar_volume<Loop>(unit, at->liquid), molar_volume<Loop>(unit, at->gas)};
    });
}

}  // namespace tavo::calcnum

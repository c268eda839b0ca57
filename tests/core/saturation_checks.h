#pragma once
// What a saturated state must fulfil, evaluated independently of the code under test: the equations in long double as
// they are printed, the areas by quadrature.

#include <array>
#include <cmath>
#include <limits>
#include <string>

#include "core/calcnum.h"
#include "core/confreg.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/slots.h"

namespace tavo::testing {

/// A database of one gas with automatic coefficients (models 7, 8: acentric factor w; 6: exponent mu).
inline confreg::Text one_gas(const std::string& tc, const std::string& pc, const std::string& w,
                             const std::string& mu = "1.5") {
    std::string text = "[general]\r\nn=1\r\n[g1]\r\nnombre=gas\r\ntc=" + tc + "\r\npc=" + pc + "\r\nvc=-1\r\n";
    for (const Model& model : models())
        for (int k = 1; k <= model.stored && (k < 3 || model.number == EquationOfState::Virial); ++k)
            text += "c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) + ")=-1\r\n";
    return confreg::Text(text + "c(6,3)=" + mu + "\r\nc(7,3)=" + w + "\r\nc(8,3)=" + w + "\r\n");
}

/// One mole of a gas of the database, loaded for a model at temperature t.
inline EquationSlot loaded(const confreg::Text& data, EquationOfState equation, int gas, double t) {
    EquationSlot slot;
    slot.equation = equation;
    slot.gas_number = static_cast<std::int16_t>(gas);
    slot.temperature = t;
    Global::load_slot(data, slot, true);
    return slot;
}

using Real = long double;

/// Co-volume: the smallest molar volume of the model.
inline Real covolume(const EquationSlot& slot) {
    switch (slot.equation) {
        case EquationOfState::Virial:
            return 0.0L;
        case EquationOfState::DietericiSadus:
            return static_cast<Real>(slot.gas.b) / 4;
        default:
            return slot.gas.b;
    }
}

/// Pressure of one mole at covolume + free [atm], as the equations are printed.
inline Real exact_pressure(const EquationSlot& slot, Real t, Real free) {
    const Real a = slot.gas.a;
    const Real b = slot.gas.b;
    const Real v = covolume(slot) + free;
    const Real rt = static_cast<Real>(R) * t;
    switch (slot.equation) {
        case EquationOfState::VanDerWaals:
            return rt / free - a / (v * v);
        case EquationOfState::Berthelot:
            return rt / free - a / (t * v * v);
        case EquationOfState::Dieterici:
            return rt / free * std::exp(-a / (rt * v));
        case EquationOfState::RedlichKwong:
            return rt / free - a / (std::sqrt(t) * v * (v + b));
        case EquationOfState::Virial:
            return rt / v * (a + b / v + slot.gas.c / (v * v) + slot.gas.d / (v * v * v));
        case EquationOfState::FreeExponent:
            return rt / free - a / std::pow(v, static_cast<Real>(slot.mu));
        case EquationOfState::Soave:
            return rt / free - a / (v * (v + b));
        case EquationOfState::PengRobinson:
            return rt / free - a / (v * (v + b) + b * free);
        case EquationOfState::DietericiSadus: {
            const Real y = b / (4 * v);
            const Real rest = free / v;
            return rt * (1 + y + y * y - y * y * y) / (v * rest * rest * rest) * std::exp(-a / (rt * v));
        }
        default:
            return rt / v;
    }
}

/// d P / d ln(free) by central differences [atm].
inline Real exact_slope(const EquationSlot& slot, Real t, Real free) {
    const Real h = 1e-5L;
    return (exact_pressure(slot, t, free * std::exp(h)) - exact_pressure(slot, t, free * std::exp(-h))) / (2 * h);
}

/// Int (P - p) dv from covolume + from to covolume + to, by Gauss panels in ln(free volume); `absolute`: of |P - p|.
inline Real exact_area(const EquationSlot& slot, Real t, Real from, Real to, Real p, bool absolute = false) {
    static constexpr std::array<std::array<Real, 2>, 5> GAUSS{{
        {0.148874338981631210884826001129720L, 0.295524224714752870173815619188769L},
        {0.433395394129247190799265943165784L, 0.269266719309996355091226921569469L},
        {0.679409568299024406234327365114874L, 0.219086362515982043995534934228163L},
        {0.865063366688984510732096688423493L, 0.149451349150580593145863396957700L},
        {0.973906528517171720077964012084452L, 0.066671344308688137593568809893332L},
    }};
    const Real length = std::log(to / from);
    const int panels = 4 + static_cast<int>(std::abs(length) * 4);
    const Real half = length / panels / 2;
    Real sum = 0;
    for (int i = 0; i < panels; ++i) {
        for (const auto& [x, weight] : GAUSS) {
            for (const Real side : {-x, x}) {
                const Real free = from * std::exp((2 * i + 1 + side) * half);
                const Real height = exact_pressure(slot, t, free) - p;
                sum += weight * half * free * (absolute ? std::abs(height) : height);
            }
        }
    }
    return sum;
}

/// How far a state is from coexistence; all relative.
struct Residuals {
    double liquid;  // pressure at vl against Pv, on the scale on which the volume moves it
    double gas;     // the same at vg
    double area;    // area left over, against Pv (vg - vl)
    double loop;    // area left over, against the area of the loop between the curve and Pv
    bool stable;    // vl < liquid spinodal < gas spinodal < vg
};

inline Residuals residuals(const EquationSlot& slot, double t, const calcnum::Saturation& s) {
    const Real core = covolume(slot);
    const Real p = s.pv;
    const Real liquid = s.vl - core;
    const Real gas = s.vg - core;
    const auto mismatch = [&](Real free) {
        // A liquid within rounding of the co-volume: Pv lies between the pressures at the neighbouring volumes.
        const Real ulp = std::numeric_limits<double>::epsilon() * (core + free);
        if (free < 1e4L * ulp && exact_pressure(slot, t, free + ulp) <= p &&
            (free <= ulp || exact_pressure(slot, t, free - ulp) >= p)) {
            return 0.0;
        }
        const Real slope = exact_slope(slot, t, free) * (core + free) / free;
        return static_cast<double>(std::abs(exact_pressure(slot, t, free) - p) / (p + std::abs(slope)));
    };
    const Real area = std::abs(exact_area(slot, t, liquid, gas, p));
    const auto spinodal = calcnum::spinodals(slot, t);
    return {mismatch(liquid), mismatch(gas), static_cast<double>(area / (p * (gas - liquid))),
            static_cast<double>(area / exact_area(slot, t, liquid, gas, p, true)),
            spinodal && s.vl < spinodal->liquid && spinodal->liquid < spinodal->gas && spinodal->gas < s.vg};
}

}  // namespace tavo::testing

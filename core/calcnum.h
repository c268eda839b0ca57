#pragma once
// Numerics over a slot: root finding, the work integral, and liquid-vapour equilibrium.
// Molar volumes in l/mol, temperatures in K, pressures in atm.

#include <cstdint>
#include <functional>
#include <limits>
#include <optional>
#include <string_view>
#include <vector>

#include "core/slots.h"

namespace tavo::calcnum {

/// Where the 32-bit count of steps ends.
inline constexpr long ALL_STEPS = std::numeric_limits<std::int32_t>::max();

/// Newton iteration x <- x - F/F' from x0 until |dx/x| < 1e-4, for the unknown "v" (molar volume, `known` is T) or
/// "t" (temperature, `known` is the molar volume). There is no damping. FloatingPointError: a fault of the arithmetic;
/// a combination without a residual (model 0; "t" with models 1, 5, 6, 7, 8); an iteration that does not converge, once
/// its orbit closes, that is, a value comes back, or after `most_steps` steps. Short cycles are found at once; a
/// chaotic orbit may take up to some 1e8 steps to close, so that whoever keeps a user waiting gives a smaller bound.
double newton(std::string_view unknown, EquationOfState equation, const SlotTable& table, int slot, double p,
              double known, double x0, long most_steps = ALL_STEPS);

/// How a converged Newton solve ended, for tests and measurements.
struct NewtonTrace {
    double x;
    long steps;
};
NewtonTrace newton_trace(std::string_view unknown, EquationOfState equation, const SlotTable& table, int slot, double p,
                         double known, double x0, long most_steps = ALL_STEPS);

/// Roots of x^3 + a2 x^2 + a1 x + a0 by Cardano's and the arctangent form; a single real root is returned in all three.
/// x3 is the largest value. The arctangent form picks the branch of q < 0 (for q > 0 the three values are shifted away
/// from the roots). Throws FloatingPointError for a double root with -q/2 < 0 and for q = 0 with three real roots.
struct CubicRoots {
    double x1, x2, x3;
};
CubicRoots cubic_roots(double a2, double a1, double a0);

/// Temperature at which the slot's n moles have pressure p in volume v, following temperature-dependent automatic
/// coefficients (models 5, 7, 8) unless the slot's coefficients were set by hand. Model 0, 1, 5, 6 linear, 2 quadratic,
/// 7 and 8 quadratic and 4 cubic in sqrt(T), 3 and 9 the Newton solver. The slot's coefficients have to be those loaded
/// at the slot's temperature. Of several solutions it is the one at which the pressure rises with the temperature.
/// Throws FloatingPointError where no positive temperature exists.
double temperature(const SlotTable& table, int slot, double v, double p);

/// Integral of P dVm between molar volumes v1 and v2 at the slot's T [atm l/mol]: composite Simpson rule with exactly
/// 1000 subintervals for models 3 and 9, the difference of the antiderivative for the others. Throws FloatingPointError
/// for a volume that is not above the co-volume (models 3 and 9: pressure 0 there) or a result that is not finite. 0
/// for an unknown model.
double work_integral(const EquationSlot& slot, double v1, double v2);

/// Coexisting liquid and gas.
struct Saturation {
    double pv;  // vapour pressure [atm]
    double vl;  // molar volume of the saturated liquid [l/mol]
    double vg;  // molar volume of the saturated gas [l/mol]
};

/// Equal-area (Maxwell) state of the slot's model and coefficients at temperature t, to rounding. Empty where
/// t >= Tc - 0.005 K, the amount is not above 0 (the slot has no pressure then), the coefficients give no loop with a
/// positive maximum, or the pressure underflows. Throws nothing.
std::optional<Saturation> saturation(const EquationSlot& slot, double t);

/// The fixed interface: Pv, or -1 leaving vl and vg alone.
double vapour_pressure(const SlotTable& table, int slot, double t, double& vl, double& vg);

/// Loads slot 0's coefficients again at the temperature it now holds.
using Reload = std::function<void(EquationSlot&)>;

/// Enthalpy of vaporisation of slot 0 [atm l/mol] by the two-point Clapeyron rule with T +- 0.5 K, or -1. vl and vg are
/// those of T. `reload` is called after each change of the slot's temperature; at the end the slot holds t again, also
/// when `reload` throws. FloatingPointError for a result that is not finite, as from such a vl or vg.
double vaporisation_enthalpy(SlotTable& table, double t, double vl, double vg, const Reload& reload);

/// The two volumes where dP/dVm = 0 (liquid side, gas side), or empty without a loop.
struct Spinodals {
    double liquid, gas;
};
std::optional<Spinodals> spinodals(const EquationSlot& slot, double t);

/// All molar volumes above the co-volume at which the slot's model and coefficients have pressure p at temperature t,
/// ascending: neighbouring numbers there have pressures on either side of p. One or three at positive pressures, two in
/// a stretched liquid, none where the model does not reach p; other counts are possible with coefficients set by hand.
/// Bisection between the turning points of the isotherm: it always ends, and throws nothing.
std::vector<double> volume_roots(const EquationSlot& slot, double t, double p);

/// Critical point that the model itself has with the slot's coefficients.
struct CriticalPoint {
    double t, v, p;  // K, l/mol, atm
};
/// From the coefficients alone, not from the record's critical constants; those only tell how automatic coefficients of
/// models 5, 7 and 8 follow the temperature (the slot's have to be those loaded at its own). Empty where the model has
/// none: ideal gas, coefficients without a loop, a loop at any temperature. Throws nothing.
std::optional<CriticalPoint> critical_point(const EquationSlot& slot);

}  // namespace tavo::calcnum

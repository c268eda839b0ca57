#pragma once
// What stays the same behind automatic coefficients that follow the temperature. The slot's coefficients have to be
// those loaded at the slot's temperature, from critical constants above 0.

#include <optional>

#include "core/slots.h"

namespace tavo::calcnum {

/// a(Tc) of models 7 and 8 behind the slot's a(T) [l2 atm/mol2]. FloatingPointError where only the critical constants
/// tell it and they give no finite number.
double attraction_at_tc(const EquationSlot& slot);

/// a [l2 atm/mol2] and b [l/mol] of B = b - a/(RT), model 5; empty if the slot's B is not the automatic one.
/// FloatingPointError where the critical constants give no finite number.
struct SecondVirial {
    double a, b;
};
std::optional<SecondVirial> behind_automatic_b(const EquationSlot& slot);

}  // namespace tavo::calcnum

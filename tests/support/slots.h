#pragma once
// Slots with coefficients of the test's own choice.

#include "core/gas_database.h"
#include "core/models.h"

namespace tavo::testing {

template <class Values>
void set_coefficients(EquationSlot& slot, const Values& k) {
    slot.gas.a = k.a;
    slot.gas.b = k.b;
    slot.gas.c = k.c;
    slot.gas.d = k.d;
}

inline EquationSlot slot_of(EquationOfState equation, const Coefficients& k, double t, double n = 1.0) {
    EquationSlot slot;
    slot.equation = equation;
    set_coefficients(slot, k);
    slot.mu = k.mu;
    slot.temperature = t;
    slot.moles = n;
    return slot;
}

/// Coefficients from the slot's critical constants at its temperature.
inline void derive_slot(EquationSlot& slot, double w) {
    set_coefficients(slot, Global::derive(slot.equation, slot.gas.tc, slot.gas.pc, w, slot.mu, slot.temperature));
}

/// Plausible coefficients of a carbon dioxide for each model.
inline Coefficients plausible(EquationOfState equation) {
    switch (equation) {
        case EquationOfState::Berthelot:
            return {1100, 0.0428, 0, 0, 1.5};
        case EquationOfState::RedlichKwong:
            return {63.8, 0.0297, 0, 0, 1.5};
        case EquationOfState::Virial:
            return {1, -0.118, 0.0018, 8e-5, 1.5};
        case EquationOfState::FreeExponent:
            return {4.2, 0.03, 0, 0, 1.7};
        case EquationOfState::DietericiSadus:
            return {5.2, 0.086, 0, 0, 1.5};
        default:
            return {3.9, 0.0266, 0.2239, 0, 1.5};
    }
}

}  // namespace tavo::testing

#pragma once
// The ten models of the gas, one table row each; every list of models is built from this table.
// Volumes in litres, pressures in atm, temperatures in K, amounts in mol.

#include <array>
#include <optional>
#include <span>
#include <string_view>

#include "core/slots.h"

namespace tavo {

/// Coefficients of a model as plain values: what a formula needs, and nothing else.
struct Coefficients {
    double a, b, c, d, mu;
};

inline Coefficients coefficients(const EquationSlot& slot) {
    return {slot.gas.a, slot.gas.b, slot.gas.c, slot.gas.d, slot.mu};
}

/// One coefficient as the user sees it.
struct CoefficientText {
    std::string_view label;  // beside a box, with the unit: "a [l ² atm / mol ²]"
    std::string_view name;   // short: "a"
    std::string_view unit;   // short unit text: "l ²atm/mol ²"; empty where it has none
};

struct Model {
    EquationOfState number;
    std::string_view caption;                // literal caption; empty where the language table names it
    std::string_view name;                   // in error sentences: "van der waals"
    std::string_view formula;                // the equation as plain text, UTF-8: "P = R T/(Vm − b) − a/Vm²"
    int caption_string;                      // number in the language table (85, 86), or 0
    int stored;                              // how many c(e,k) the gas record holds
    std::span<const CoefficientText> texts;  // as shown beside the boxes, in the order a, b, c, d (mu apart)
    /// Pressure of one mole at molar volume vm, inside the domain [atm]. May give a value that is not finite.
    double (*pressure)(const Coefficients& k, double t, double vm);
    /// Molar volume that vm must exceed [l/mol]: b, b/4 (Dieterici-Sadus) or 0.
    double (*covolume)(const Coefficients& k);
};

/// The ten rows, in the order of EquationOfState.
const std::array<Model, 10>& models();

/// Row of a model, or nullptr for a number outside 0..9.
const Model* find_model(EquationOfState number);

/// Pressure P(n, V, T) of a slot [atm] at total volume v [l]. 0 for n <= 0 or NaN, a volume outside the
/// model's domain, or an unknown model. Throws FloatingPointError where the formula divides by zero, overflows or gives
/// no finite number.
double pressure(const EquationSlot& slot, double v);
/// The same for a slot number; throws SubscriptOutOfRange outside 0..5.
double pressure(const SlotTable& table, int slot, double v);

}  // namespace tavo

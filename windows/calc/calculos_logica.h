#pragma once
// What the calculations window and the laboratory compute: one of P, V and T from the other two, what kind of state
// that is, and the coexistence at its temperature. Standard library only; litres, atm, kelvin and moles throughout.

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "core/calcnum.h"
#include "core/confreg.h"
#include "core/errors.h"
#include "core/slots.h"
#include "core/units.h"

namespace calculos {

using tavo::EquationSlot;
using tavo::SlotTable;

/// The four variables of a state, in the order of their entries and spin buttons.
enum class Variable { Amount, Temperature, Volume, Pressure };
inline constexpr std::array VARIABLES{Variable::Amount, Variable::Temperature, Variable::Volume, Variable::Pressure};

/// Unknown of a calculation mode: 1 P(T,V), 2 V(T,P), 3 T(P,V); empty for 0, which leaves the unknown as it is.
std::optional<Variable> unknown_of_mode(int mode);

tavo::Global::UnitFamily family(Variable variable);
/// From a unit of the variable's family to the base unit and back; amounts with the molar mass of slot 0.
double to_base(Variable variable, double value, std::string_view unit, const SlotTable& table);
double from_base(Variable variable, double value, std::string_view unit, const SlotTable& table);

/// What every entry has to exceed, in the unit shown: 0, or 0 K expressed in the unit.
double minimum(Variable variable, std::string_view unit);
/// Whether an entry does not exceed it, by its value in K, l or atm (amounts as shown). Texts cannot be compared: the
/// formulas that take a temperature from unit to unit disagree about 0 K.
bool too_small(Variable variable, double value);

/// State as entered; the unknown's own value is not looked at.
struct Input {
    Variable unknown;
    double n, t, v, p;  // mol, K, l (total), atm
};

/// What kind of state (T, Vm) is.
enum class Phase {
    IdealGas,              // the model knows no phases
    Gas,                   // below Tc at or above vg, or above Tc at a pressure below Pc
    Liquid,                // below Tc, at or below vl
    Supercritical,         // at or above Tc and Pc
    Fluid,                 // below Tc, but the model shows no coexistence there
    SuperheatedLiquid,     // between vl and the liquid spinodal: metastable
    Unstable,              // between the spinodals
    SupersaturatedVapour,  // between the gas spinodal and vg: metastable
};
/// Coexisting liquid and gas are the stable state.
bool two_phase(Phase phase);

/// Which root of P(Vm) = p a volume is, where there are three.
enum class Root { Only, Liquid, Middle, Gas };

struct Output {
    double t, v, p;  // all three, the unknown among them
    Phase phase;
    std::optional<tavo::calcnum::Saturation> saturation;  // at t
    std::optional<double> enthalpy;                       // of vaporisation at t [atm l/mol]
    double liquid_fraction = 0.0;                         // of the amount, by the lever rule; two-phase states
    Root root = Root::Only;                               // of v at t and p
    std::optional<double> stable_volume;                  // total volume [l] of the stable root, if v is another one
};

/// Why there is no answer.
enum class Reason {
    NoGas,             // a real-gas model without a gas
    BadGas,            // the gas's constants do not give the model's coefficients, or cannot be read
    SmallMu,           // mu has to be greater than 1
    NoMolarMass,       // grams cannot be turned into moles
    InsideCovolume,    // the given volume is not above what the molecules themselves take up
    NoVolume,          // no volume gives the pressure
    VolumeNotReached,  // a volume exists, but the iteration from the ideal gas's volume does not reach it
    NoTemperature,     // no temperature above 0 K gives the pressure
    NotFinite,         // a formula overflows
};

/// A calculation without an answer. what() is the detail in English.
class Unsolvable : public tavo::FloatingPointError {
public:
    Unsolvable(Reason reason, const std::string& detail, std::optional<double> value = {})
        : FloatingPointError(detail), reason_(reason), value_(value) {}
    Reason reason() const { return reason_; }
    /// The co-volume of the amount [l] (InsideCovolume), a volume that would fit [l] (VolumeNotReached).
    std::optional<double> value() const { return value_; }

private:
    Reason reason_;
    std::optional<double> value_;
};

// ---- Slot 0: gas, model, coefficients

/// A window's own record in slot 0 for as long as this lives: two windows work there without disturbing each other.
class InSlot0 {
public:
    InSlot0(SlotTable& table, EquationSlot& own) : slot_(table[0]), own_(own) { slot_ = own_; }
    ~InSlot0() { own_ = slot_; }
    InSlot0(const InSlot0&) = delete;
    InSlot0& operator=(const InSlot0&) = delete;

private:
    EquationSlot& slot_;
    EquationSlot& own_;
};

/// A new gas or model: the coefficients are loaded anew, those set by hand are gone. Throws Unsolvable (the slot then
/// holds the choice, and no coefficients).
void choose(const tavo::confreg::Text& data, EquationSlot& slot, std::int16_t gas, tavo::EquationOfState model);
/// The same gas and model after the database has changed: coefficients set by hand stay. Throws as choose.
void reload(const tavo::confreg::Text& data, EquationSlot& slot);
/// Coefficients 1 to 4 by hand: they stay until the next choice.
void set_coefficients(EquationSlot& slot, double a, double b, double c, double d);
/// Another exponent: automatic coefficients follow it. Throws Unsolvable (SmallMu) and leaves the slot for mu <= 1.
void set_mu(const tavo::confreg::Text& data, EquationSlot& slot, double mu);
/// Back to the automatic coefficients of the slot's gas and model; an exponent set by hand stays.
void set_automatic(const tavo::confreg::Text& data, EquationSlot& slot);

/// Moles of an amount in "mol" or "g". Throws Unsolvable (NoMolarMass).
double moles(double amount, std::string_view unit, const EquationSlot& slot);

// ---- The calculation

/// Longest iteration that is waited for. Solves that converge have never needed a hundredth of it.
inline constexpr long MOST_STEPS = 100'000;

/// Stores n and T in slot 0, loads its coefficients for T and solves for the unknown; then coexistence at the
/// temperature. The volume is found by Newton's method from RT/P, and refined to rounding. Throws Unsolvable: the slot
/// then has the temperature and coefficients that it had.
Output solve(const tavo::confreg::Text& data, SlotTable& table, const Input& input);

/// The unknown alone, without coexistence and kind of state: what a drag needs to follow the hand.
double solve_unknown(const tavo::confreg::Text& data, SlotTable& table, const Input& input);

// ---- All models

/// One model's answer for the same gas and state.
struct ModelRow {
    tavo::EquationOfState model;
    std::optional<double> unknown;                        // base unit; empty: see reason
    std::optional<tavo::calcnum::Saturation> saturation;  // at the state's temperature
    std::optional<double> enthalpy;                       // atm l/mol
    std::optional<Reason> reason;
    std::optional<double> reason_value = {};  // as Unsolvable::value()
};

/// The ten models for slot 0's gas, each with its automatic coefficients; the slot's own model with those it holds.
std::vector<ModelRow> all_models(const tavo::confreg::Text& data, const SlotTable& table, const Input& input);

}  // namespace calculos

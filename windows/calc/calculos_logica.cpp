#include "windows/calc/calculos_logica.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "core/gas_database.h"
#include "core/gas_listing.h"
#include "core/models.h"
#include "core/numtext.h"

namespace calculos {

using tavo::EquationOfState;
using tavo::FloatingPointError;
using tavo::InvalidArgument;
using tavo::Model;
using tavo::R;
using tavo::to_text;
namespace calcnum = tavo::calcnum;
namespace Global = tavo::Global;

// ---- Variables and units

std::optional<Variable> unknown_of_mode(int mode) {
    switch (mode) {
        case 1:
            return Variable::Pressure;
        case 2:
            return Variable::Volume;
        case 3:
            return Variable::Temperature;
        default:
            return std::nullopt;
    }
}

Global::UnitFamily family(Variable variable) {
    switch (variable) {
        case Variable::Amount:
            return Global::UnitFamily::Amount;
        case Variable::Temperature:
            return Global::UnitFamily::Temperature;
        case Variable::Volume:
            return Global::UnitFamily::Volume;
        default:
            return Global::UnitFamily::Pressure;
    }
}

namespace {

double convert(Variable variable, double value, std::string_view from, std::string_view to) {
    switch (variable) {
        case Variable::Temperature:
            return Global::convertirtemperatura(value, from, to);
        case Variable::Volume:
            return Global::convertirvolumen(value, from, to);
        default:
            return Global::convertirpresion(value, from, to);
    }
}

std::string_view base_unit(Variable variable) {
    return Global::unit_labels(family(variable)).front();
}

}  // namespace

double to_base(Variable variable, double value, std::string_view unit, const SlotTable& table) {
    return variable == Variable::Amount ? moles(value, unit, table[0])
                                        : convert(variable, value, unit, base_unit(variable));
}

double from_base(Variable variable, double value, std::string_view unit, const SlotTable& table) {
    return variable == Variable::Amount ? Global::convertircantidad(value, base_unit(variable), unit, table)
                                        : convert(variable, value, base_unit(variable), unit);
}

double minimum(Variable variable, std::string_view unit) {
    return variable == Variable::Temperature ? convert(variable, 0.0, base_unit(variable), unit) : 0.0;
}

bool too_small(Variable variable, double value) {
    constexpr double ROUNDING = 1e-12;  // of 0 K in another unit
    return !(value > (variable == Variable::Temperature ? ROUNDING : 0.0));
}

bool two_phase(Phase phase) {
    return phase == Phase::SuperheatedLiquid || phase == Phase::Unstable || phase == Phase::SupersaturatedVapour;
}

// ---- Slot 0

namespace {

/// Loads the coefficients for the slot's temperature, unless they were set by hand.
void load(const tavo::confreg::Text& data, EquationSlot& slot, bool reload) {
    if (slot.gas_number <= 0 && slot.equation != EquationOfState::IdealGas)
        throw Unsolvable(Reason::NoGas, "a real-gas model needs a gas");
    try {
        Global::load_slot(data, slot, reload);
    } catch (const InvalidArgument& error) {
        const auto problem = Global::problem_of(data, slot.gas_number);
        throw Unsolvable(problem && is_unreadable(*problem) ? Reason::BadGas : Reason::SmallMu, error.what());
    } catch (const tavo::Error& error) {
        throw Unsolvable(Reason::BadGas, error.what());
    }
}

/// The gas's constants as far as it has them, without coefficients but for those set by hand.
void load_constants(const tavo::confreg::Text& data, EquationSlot& slot) {
    EquationSlot constants;
    constants.gas_number = slot.gas_number;
    try {
        Global::load_slot(data, constants, true);
    } catch (const tavo::Error&) {
        constants.gas = {};
    }
    const tavo::GasRecord before = std::exchange(slot.gas, constants.gas);
    if (slot.parameters)
        set_coefficients(slot, before.a, before.b, before.c, before.d);
}

/// Runs a change of the slot that may fail; the slot then is what it was.
template <class Change>
auto or_restore(EquationSlot& slot, const Change& change) {
    const EquationSlot before = slot;
    try {
        return change();
    } catch (...) {
        slot = before;
        throw;
    }
}

}  // namespace

void choose(const tavo::confreg::Text& data, EquationSlot& slot, std::int16_t gas, EquationOfState model) {
    slot.gas_number = gas;
    slot.equation = model;
    slot.parameters = false;
    reload(data, slot);
}

void reload(const tavo::confreg::Text& data, EquationSlot& slot) {
    try {
        load(data, slot, false);
    } catch (const Unsolvable&) {
        load_constants(data, slot);
        throw;
    }
    slot.grams = slot.moles * slot.gas.pm;
}

void set_coefficients(EquationSlot& slot, double a, double b, double c, double d) {
    slot.gas.a = a;
    slot.gas.b = b;
    slot.gas.c = c;
    slot.gas.d = d;
    slot.parameters = true;
}

void set_mu(const tavo::confreg::Text& data, EquationSlot& slot, double mu) {
    if (!(mu > 1.0) || !std::isfinite(mu))
        throw Unsolvable(Reason::SmallMu, "the exponent has to be a number above 1, not " + to_text(mu));
    or_restore(slot, [&] {
        slot.mu = mu;
        if (slot.equation != EquationOfState::FreeExponent)
            return;
        load(data, slot, false);
        slot.parameters = slot.parameters || slot.mu != mu;  // the database holds an exponent with its a and b
        slot.mu = mu;
        slot.gas.c = mu;
    });
}

void set_automatic(const tavo::confreg::Text& data, EquationSlot& slot) {
    or_restore(slot, [&] { load(data, slot, true); });
}

double moles(double amount, std::string_view unit, const EquationSlot& slot) {
    if (unit != "g")
        return amount;
    if (!(slot.gas.pm > 0.0))
        throw Unsolvable(Reason::NoMolarMass, "grams to moles: no molar mass");
    return amount / slot.gas.pm;
}

// ---- The unknown

namespace {

const Model& model_of(const EquationSlot& slot) {
    const Model* model = tavo::find_model(slot.equation);
    if (!model)
        throw Unsolvable(Reason::NotFinite, "no model " + std::to_string(static_cast<int>(slot.equation)));
    return *model;
}

double covolume(const EquationSlot& slot) {
    return std::max(model_of(slot).covolume(coefficients(slot)), 0.0);
}

double finite(double x, const char* what) {
    if (!std::isfinite(x))
        throw Unsolvable(Reason::NotFinite, std::string("no finite ") + what);
    return x;
}

/// Molar volume of a total one. Throws Unsolvable (InsideCovolume).
double molar_volume(const EquationSlot& slot, double v) {
    const double vm = finite(v / slot.moles, "molar volume");
    if (!(vm > covolume(slot)) || !(vm > 0.0))
        throw Unsolvable(Reason::InsideCovolume,
                         std::string(model_of(slot).name) + ": " + to_text(vm) + " l/mol is not above the co-volume",
                         slot.moles * covolume(slot));
    return vm;
}

double solve_pressure(const EquationSlot& slot, double v) {
    molar_volume(slot, v);
    try {
        return tavo::pressure(slot, v);
    } catch (const FloatingPointError& error) {
        throw Unsolvable(Reason::NotFinite, error.what());
    }
}

/// Of the molar volumes at pressure p, ascending, the one that a real gas takes.
double stable_root(const std::vector<double>& roots, double p, const std::optional<calcnum::Saturation>& saturation) {
    return saturation && p > saturation->pv ? roots.front() : roots.back();
}

/// Newton's answer where it is a state of the model.
std::optional<double> newton_volume(const SlotTable& table, double p) {
    const EquationSlot& slot = table[0];
    try {
        const double vm =
            calcnum::newton("v", slot.equation, table, 0, p, slot.temperature, R * slot.temperature / p, MOST_STEPS);
        return vm > covolume(slot) ? std::optional(vm) : std::nullopt;
    } catch (const FloatingPointError&) {
        return std::nullopt;
    }
}

/// Whether one mole has pressure p at vm.
bool has_pressure(const EquationSlot& slot, double vm, double p) {
    constexpr double TOLERANCE = 1e-6;
    const double found = model_of(slot).pressure(coefficients(slot), slot.temperature, vm);
    return std::abs(found - p) <= TOLERANCE * std::abs(p);
}

/// Molar volume by Newton's method. It ends at steps of 1e-4: the root that it was near to is taken.
double real_volume(const SlotTable& table, double p) {
    constexpr double NEAR = 1e-3;  // a threefold root leaves 2e-4
    const EquationSlot& slot = table[0];
    const auto roots = calcnum::volume_roots(slot, slot.temperature, p);
    const auto iterated = newton_volume(table, p);
    if (iterated) {
        const auto distance = [vm = *iterated](double root) { return std::abs(root - vm); };
        const auto nearest = std::min_element(
            roots.begin(), roots.end(), [&](double one, double other) { return distance(one) < distance(other); });
        if (nearest != roots.end() && distance(*nearest) <= NEAR * *nearest)
            return *nearest;
        if (has_pressure(slot, *iterated, p))
            return *iterated;
    }
    const std::string asked =
        std::string(model_of(slot).name) + ": " + to_text(p) + " atm at " + to_text(slot.temperature) + " K";
    if (roots.empty())
        throw Unsolvable(Reason::NoVolume, asked + " has no volume");
    const double fitting = stable_root(roots, p, calcnum::saturation(slot, slot.temperature));
    throw Unsolvable(Reason::VolumeNotReached, asked + " is not reached from the ideal gas", slot.moles * fitting);
}

double solve_volume(const SlotTable& table, double p) {
    const EquationSlot& slot = table[0];
    const bool ideal = slot.equation == EquationOfState::IdealGas;
    if (ideal && !(p > 0.0))
        throw Unsolvable(Reason::NoVolume, "ideal gas: " + to_text(p) + " atm has no volume");
    const double vm = ideal ? R * slot.temperature / p : real_volume(table, p);
    return finite(slot.moles * vm, "volume");
}

double solve_temperature(const SlotTable& table, double v, double p) {
    molar_volume(table[0], v);
    try {
        return calcnum::temperature(table, 0, v, p);
    } catch (const FloatingPointError& error) {
        throw Unsolvable(Reason::NoTemperature, error.what());
    }
}

void check(const Input& input) {
    const bool by_temperature = input.unknown != Variable::Temperature;
    const bool sound = input.n > 0.0 && std::isfinite(input.n) && (!by_temperature || input.t > 0.0) &&
                       (!by_temperature || std::isfinite(input.t)) &&
                       (input.unknown == Variable::Volume || std::isfinite(input.v)) &&
                       (input.unknown == Variable::Pressure || std::isfinite(input.p));
    if (!sound)
        throw Unsolvable(Reason::NotFinite, "an amount and a temperature above 0 and finite numbers are needed");
}

/// Stores n and T in the slot, loads its coefficients and gives the unknown; the slot ends at the state's temperature.
double store_and_solve(const tavo::confreg::Text& data, SlotTable& table, const Input& input) {
    check(input);
    EquationSlot& slot = table[0];
    slot.moles = input.n;
    if (input.unknown != Variable::Temperature)
        slot.temperature = input.t;
    load(data, slot, false);
    slot.grams = slot.moles * slot.gas.pm;
    switch (input.unknown) {
        case Variable::Volume:
            return solve_volume(table, input.p);
        case Variable::Temperature:
            slot.temperature = solve_temperature(table, input.v, input.p);
            load(data, slot, false);
            return slot.temperature;
        default:
            return solve_pressure(slot, input.v);
    }
}

// ---- The kind of state

/// A volume that is the saturated one to rounding counts as it.
constexpr double SATURATED = 1e-9;

Phase between_saturated_volumes(double vm, const std::optional<calcnum::Spinodals>& spinodal) {
    if (spinodal && vm <= spinodal->liquid)
        return Phase::SuperheatedLiquid;
    return spinodal && vm >= spinodal->gas ? Phase::SupersaturatedVapour : Phase::Unstable;
}

Phase phase_of(const EquationSlot& slot, double vm, double p, const std::optional<calcnum::Saturation>& saturation) {
    if (slot.equation == EquationOfState::IdealGas)
        return Phase::IdealGas;
    const auto spinodal = calcnum::spinodals(slot, slot.temperature);
    const bool unstable = spinodal && vm > spinodal->liquid && vm < spinodal->gas;
    if (!(slot.temperature < slot.gas.tc)) {
        // Coefficients set by hand may leave a loop above the gas's critical temperature.
        const Phase hot = p >= slot.gas.pc ? Phase::Supercritical : Phase::Gas;
        return unstable ? Phase::Unstable : hot;
    }
    if (saturation) {
        if (vm <= saturation->vl * (1.0 + SATURATED))
            return Phase::Liquid;
        return vm >= saturation->vg * (1.0 - SATURATED) ? Phase::Gas : between_saturated_volumes(vm, spinodal);
    }
    if (!spinodal)
        return Phase::Fluid;
    if (unstable)
        return Phase::Unstable;
    return vm <= spinodal->liquid ? Phase::Liquid : Phase::Gas;
}

std::optional<double> enthalpy_of(const tavo::confreg::Text& data, SlotTable& table,
                                  const calcnum::Saturation& saturation) {
    const EquationSlot at_state = table[0];
    std::optional<double> enthalpy;
    try {
        const double found = calcnum::vaporisation_enthalpy(table, at_state.temperature, saturation.vl, saturation.vg,
                                                            [&](EquationSlot& slot) { load(data, slot, false); });
        if (found >= 0.0)
            enthalpy = found;
    } catch (const FloatingPointError&) {  // half a degree away the gas has no coefficients, or the result overflows
        table[0] = at_state;
    }
    return enthalpy;
}

/// Which of several volumes with the same pressure the state has, and whether another one is the stable one.
void compare_roots(const EquationSlot& slot, Output& output) {
    const auto roots = calcnum::volume_roots(slot, output.t, output.p);
    if (roots.size() != 3)
        return;
    const double vm = output.v / slot.moles;
    const auto nearest = std::min_element(roots.begin(), roots.end(), [vm](double one, double other) {
        return std::abs(one - vm) < std::abs(other - vm);
    });
    output.root = std::array{Root::Liquid, Root::Middle, Root::Gas}[static_cast<std::size_t>(nearest - roots.begin())];
    if (!output.saturation || std::abs(output.p / output.saturation->pv - 1.0) < SATURATED)
        return;
    const double stable = stable_root(roots, output.p, output.saturation);
    if (stable != *nearest)
        output.stable_volume = slot.moles * stable;
}

Output describe(const tavo::confreg::Text& data, SlotTable& table, Output output) {
    const EquationSlot& slot = table[0];
    const double vm = output.v / slot.moles;
    output.saturation = calcnum::saturation(slot, slot.temperature);
    output.phase = phase_of(slot, vm, output.p, output.saturation);
    if (output.saturation) {
        output.enthalpy = enthalpy_of(data, table, *output.saturation);
        const auto& [pv, vl, vg] = *output.saturation;
        output.liquid_fraction = two_phase(output.phase) ? std::clamp((vg - vm) / (vg - vl), 0.0, 1.0) : 0.0;
    }
    if (slot.equation != EquationOfState::IdealGas)
        compare_roots(slot, output);
    return output;
}

}  // namespace

Output solve(const tavo::confreg::Text& data, SlotTable& table, const Input& input) {
    return or_restore(table[0], [&] {
        const double unknown = store_and_solve(data, table, input);
        Output output{};
        output.t = input.t;
        output.v = input.v;
        output.p = input.p;
        switch (input.unknown) {
            case Variable::Temperature:
                output.t = unknown;
                break;
            case Variable::Volume:
                output.v = unknown;
                break;
            default:
                output.p = unknown;
                break;
        }
        return describe(data, table, output);
    });
}

double solve_unknown(const tavo::confreg::Text& data, SlotTable& table, const Input& input) {
    return or_restore(table[0], [&] { return store_and_solve(data, table, input); });
}

// ---- All models

namespace {

ModelRow row_of(const tavo::confreg::Text& data, SlotTable table, const Input& input, const Model& model) {
    ModelRow row{model.number, {}, {}, {}, {}};
    EquationSlot& slot = table[0];
    const bool known_temperature = input.unknown != Variable::Temperature;
    try {
        if (slot.equation != model.number)
            choose(data, slot, slot.gas_number, model.number);
        row.unknown = solve_unknown(data, table, input);
    } catch (const Unsolvable& error) {
        row.reason = error.reason();
        row.reason_value = error.value();
    }
    if (!row.unknown && known_temperature && input.t > 0.0 && std::isfinite(input.t)) {
        slot.temperature = input.t;
        try {
            load(data, slot, false);
        } catch (const Unsolvable&) {
            return row;
        }
    } else if (!row.unknown) {
        return row;
    }
    row.saturation = calcnum::saturation(slot, slot.temperature);
    if (row.saturation)
        row.enthalpy = enthalpy_of(data, table, *row.saturation);
    return row;
}

}  // namespace

std::vector<ModelRow> all_models(const tavo::confreg::Text& data, const SlotTable& table, const Input& input) {
    std::vector<ModelRow> rows;
    for (const Model& model : tavo::models())
        rows.push_back(row_of(data, table, input, model));
    return rows;
}

}  // namespace calculos

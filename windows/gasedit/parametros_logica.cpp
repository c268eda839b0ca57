#include "windows/gasedit/parametros_logica.h"

#include <utility>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"

namespace parametros {

using tavo::EquationSlot;
using tavo::GasRecord;
using tavo::confreg::Text;

namespace {

constexpr std::string_view MU = "µ";

std::size_t coefficient_count(EquationOfState model) {
    const tavo::Model* row = tavo::find_model(model);
    return row ? row->texts.size() : 0;
}

Coefficients coefficients_of(const GasRecord& gas, EquationOfState model) {
    Coefficients all{gas.a, gas.b, gas.c, gas.d};
    for (std::size_t k = coefficient_count(model); k < all.size(); ++k)
        all[k] = 0.0;
    return all;
}

void set_coefficients(EquationSlot& slot, const Coefficients& c) {
    slot.gas.a = c[0];
    slot.gas.b = c[1];
    slot.gas.c = slot.equation == EquationOfState::FreeExponent ? slot.mu : c[2];
    slot.gas.d = c[3];
}

/// A gas as the loader gives it.
struct Loaded {
    GasRecord gas;
    double mu;
    Fault fault = Fault::None;
    std::string detail;
};

Loaded load(const Text& data, EquationOfState model, std::int16_t gas, double temperature, double mu) {
    Loaded result{{}, mu, Fault::None, {}};
    try {
        tavo::Global::cargargas(data, model, gas, true, false, temperature, result.mu, result.gas);
    } catch (const tavo::Error& error) {
        result.mu = mu;  // the record stays as it was: empty
        result.fault = Fault::BadGas;
        result.detail = error.what();
    }
    // The exponent is the only thing that a readable gas with critical constants can lack.
    if (result.fault != Fault::None && model == EquationOfState::FreeExponent) {
        const Loaded constants = load(data, EquationOfState::IdealGas, gas, temperature, mu);
        if (constants.fault == Fault::None && constants.gas.tc != 0.0 && constants.gas.pc != 0.0)
            result.fault = Fault::SmallMu;
    }
    return result;
}

bool of_row(const Choice& choice, const EquationSlot& row) {
    return choice.gas == row.gas_number && choice.model == row.equation;
}

/// Coefficients without a gas are nobody's.
bool by_hand(const EquationSlot& row) {
    return row.parameters && row.gas_number > 0;
}

bool by_hand(const Choice& choice) {
    return !choice.automatic && coefficient_count(choice.model) > 0;
}

/// Coefficients to begin with: those set by hand in the row, else the loader's.
void begin_by_hand(Choice& choice, const EquationSlot& row, const Text& data) {
    if (choice.own || !by_hand(choice))
        return;
    if (of_row(choice, row) && by_hand(row)) {
        choice.own = coefficients_of(row.gas, row.equation);
        choice.mu = row.mu;
        return;
    }
    const Loaded loaded = load(data, choice.model, choice.gas, row.temperature, choice.mu);
    if (choice.gas > 0 && loaded.fault == Fault::None) {
        choice.own = coefficients_of(loaded.gas, choice.model);
        choice.mu = loaded.mu;
    }
}

}  // namespace

bool follows_temperature(EquationOfState model) {
    return model == EquationOfState::Virial || tavo::Global::has_acentric_factor(model);
}

// ---- The table of all gases

std::vector<std::string_view> column_labels(EquationOfState model) {
    std::vector<std::string_view> labels;
    if (const tavo::Model* row = tavo::find_model(model))
        for (const tavo::CoefficientText& text : row->texts)
            labels.push_back(text.label);
    if (model == EquationOfState::FreeExponent)
        labels.push_back(MU);
    return labels;
}

const char* column_format(EquationOfState model, int k) {
    if (k < 2)
        return "####0.00000";
    return k == 2 && tavo::Global::has_acentric_factor(model) ? "####0.000" : "####0.000000";
}

Table::Table(Source database) : database_(std::move(database)) {}

bool Table::choose(EquationOfState model, double temperature, double mu) {
    const bool same = model == model_ && (temperature == temperature_ || !follows_temperature(model)) &&
                      (mu == mu_ || model != EquationOfState::FreeExponent);
    model_ = model;
    temperature_ = temperature;
    mu_ = mu;
    if (!same)
        forget(gases());
    return !same;
}

void Table::forget(std::int16_t gases) {
    rows_.assign(static_cast<std::size_t>(gases), std::nullopt);
}

const Row& Table::row(std::int16_t gas) {
    std::optional<Row>& row = rows_.at(static_cast<std::size_t>(gas - 1));
    if (row)
        return *row;
    ++loads_;
    try {
        const Loaded loaded = load(database_(), model_, gas, temperature_, mu_);
        const GasRecord& k = loaded.gas;
        const double third = model_ == EquationOfState::FreeExponent ? loaded.mu : k.c;
        row = Row{{k.a, k.b, third, k.d}, loaded.fault, loaded.detail};
    } catch (const tavo::Error& error) {  // the file itself
        row = Row{{}, Fault::BadGas, error.what()};
    }
    return *row;
}

// ---- The choice for one isotherm row

Choice choice_of(const EquationSlot& row) {
    Choice choice{row.gas_number, row.equation, !by_hand(row), std::nullopt, row.mu};
    if (by_hand(choice))
        choice.own = coefficients_of(row.gas, row.equation);
    return choice;
}

void take_gas(Choice& choice, std::int16_t gas, const EquationSlot& row, const Text& data) {
    if (gas == choice.gas)
        return;
    choice.gas = gas;
    choice.own.reset();
    begin_by_hand(choice, row, data);
}

void take_model(Choice& choice, EquationOfState model, const EquationSlot& row, const Text& data) {
    if (model == choice.model)
        return;
    choice.model = model;
    choice.own.reset();
    begin_by_hand(choice, row, data);
}

void set_automatic(Choice& choice, bool automatic, const EquationSlot& row, const Text& data) {
    choice.automatic = automatic;
    begin_by_hand(choice, row, data);
}

void take_exponent(Choice& choice, double mu, const EquationSlot& row, const Text& data) {
    constexpr auto MODEL = EquationOfState::FreeExponent;
    choice.mu = mu;
    const GasRecord gas = load(data, EquationOfState::IdealGas, choice.gas, row.temperature, mu).gas;
    Coefficients wanted{};
    try {
        const auto k = tavo::Global::derive(MODEL, gas.tc, gas.pc, 0.0, mu, row.temperature);
        wanted = {k.a, k.b, 0.0, 0.0};
    } catch (const tavo::FloatingPointError&) {
        return;  // no critical constants: there is nothing to follow
    }
    if (choice.automatic) {
        const Loaded loaded = load(data, MODEL, choice.gas, row.temperature, mu);
        choice.automatic = loaded.mu == mu && coefficients_of(loaded.gas, MODEL) == wanted;
    }
    if (!choice.automatic)
        choice.own = wanted;
}

Shown shown(const Choice& choice, const EquationSlot& row, const Text& data) {
    Shown result;
    result.slot = row;
    EquationSlot& slot = result.slot;
    slot.gas_number = choice.gas;
    slot.equation = choice.model;
    slot.mu = choice.mu;
    slot.parameters = by_hand(choice);
    slot.gas = {};
    const EquationOfState loads = slot.parameters ? EquationOfState::IdealGas : choice.model;
    if (choice.gas > 0) {
        Loaded loaded = load(data, loads, choice.gas, row.temperature, choice.mu);
        slot.gas = std::move(loaded.gas);
        slot.mu = loaded.mu;
        result.fault = loaded.fault;
        result.detail = std::move(loaded.detail);
    }
    if (slot.parameters && choice.own)
        set_coefficients(slot, *choice.own);
    result.complete = coefficient_count(choice.model) > 0 &&
                      (slot.parameters ? choice.own.has_value() : choice.gas > 0 && result.fault == Fault::None);
    return result;
}

bool pending(const Choice& choice, const EquationSlot& row) {
    if (!of_row(choice, row) || by_hand(choice) != by_hand(row))
        return true;
    if (choice.model == EquationOfState::FreeExponent && choice.mu != row.mu)
        return true;
    return by_hand(choice) && choice.own != coefficients_of(row.gas, row.equation);
}

bool holds_typed_numbers(const Choice& choice, const EquationSlot& row, const Text& data) {
    if (choice.gas < 1 || !pending(choice, row))
        return false;
    if (!by_hand(choice))
        return choice.model == EquationOfState::FreeExponent && choice.mu != row.mu;
    if (!choice.own)
        return false;
    const Loaded loaded = load(data, choice.model, choice.gas, row.temperature, choice.mu);
    return loaded.fault != Fault::None || loaded.mu != choice.mu ||
           coefficients_of(loaded.gas, choice.model) != *choice.own;
}

void apply(const Choice& choice, EquationSlot& row, const Text& data, bool grams) {
    EquationSlot next = row;
    next.active = row.active || (row.gas_number < 1 && choice.gas > 0);
    next.gas_number = choice.gas;
    next.equation = choice.model;
    next.mu = choice.mu;
    next.parameters = by_hand(choice) && choice.own;
    tavo::Global::load_slot(data, next, !next.parameters);
    if (next.parameters)
        set_coefficients(next, *choice.own);
    if (!grams)
        next.grams = next.moles * next.gas.pm;
    else if (next.gas.pm > 0.0)
        next.moles = next.grams / next.gas.pm;
    row = std::move(next);
}

void renumber(Choice& choice, std::int16_t removed) {
    choice.gas = tavo::Global::renumbered(choice.gas, removed);
}

}  // namespace parametros

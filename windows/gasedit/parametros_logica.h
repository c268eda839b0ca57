#pragma once
// The equation-parameter window without its widgets: the coefficients of every gas for one model, and what is chosen
// for one isotherm row until it is applied. Standard library only.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/confreg.h"
#include "core/slots.h"

namespace parametros {

using tavo::EquationOfState;

/// a, b, c, d. The exponent of model 6 stands beside them, not in c; those that the model does not have are 0.
using Coefficients = std::array<double, 4>;

/// Models 5, 7 and 8: automatic coefficients follow the temperature.
bool follows_temperature(EquationOfState model);

// ---- The table of all gases

/// Headers of the coefficients' columns with their units, µ as the third one of model 6. None for the ideal gas.
std::vector<std::string_view> column_labels(EquationOfState model);

/// Number format of column k (from 0): a and b with five decimals, the others with six, but an acentric factor with
/// three.
const char* column_format(EquationOfState model, int k);

/// Why the loader gives no coefficients.
enum class Fault {
    None,
    BadGas,   // its entry in the database cannot be read, or lacks what the model needs
    SmallMu,  // automatic coefficients of model 6 need an exponent above 1
};

/// Coefficients of one gas as the loader derives them.
struct Row {
    std::array<double, 4> values{};  // by column
    Fault fault = Fault::None;
    std::string detail;  // the loader's own sentence where there is a fault
};

/// All gases for one model at one temperature, each loaded when it is first asked for.
class Table {
public:
    using Source = std::function<const tavo::confreg::Text&()>;
    explicit Table(Source database);

    /// Chooses what rows hold; `mu` is the exponent of gases that store none. True when rows loaded so far no longer
    /// hold.
    bool choose(EquationOfState model, double temperature, double mu);
    /// The database has changed, and has so many gases.
    void forget(std::int16_t gases);
    /// Gas 1 to gases(). Throws nothing: a gas that cannot be loaded has a fault.
    const Row& row(std::int16_t gas);

    std::int16_t gases() const { return static_cast<std::int16_t>(rows_.size()); }
    EquationOfState model() const { return model_; }
    /// Gases loaded since the table was made.
    std::size_t loads() const { return loads_; }

private:
    Source database_;
    EquationOfState model_ = EquationOfState::IdealGas;
    double temperature_ = 300.0, mu_ = 1.5;
    std::vector<std::optional<Row>> rows_;
    std::size_t loads_ = 0;
};

// ---- The choice for one isotherm row

/// Gas, model and coefficients that the window shows for a row.
struct Choice {
    std::int16_t gas = 0;  // 0: none
    EquationOfState model = EquationOfState::IdealGas;
    bool automatic = true;            // coefficients as the loader derives them
    std::optional<Coefficients> own;  // set by hand; kept while the automatic ones are shown
    double mu = 1.5;
};

/// What the row's slot holds.
Choice choice_of(const tavo::EquationSlot& row);

// What the user changes. Another gas or model brings its own coefficients: those set by hand for it in the row, else
// the loader's.
void take_gas(Choice& choice, std::int16_t gas, const tavo::EquationSlot& row, const tavo::confreg::Text& data);
void take_model(Choice& choice, EquationOfState model, const tavo::EquationSlot& row, const tavo::confreg::Text& data);
void set_automatic(Choice& choice, bool automatic, const tavo::EquationSlot& row, const tavo::confreg::Text& data);
/// An exponent above 1 with the a and b that put the critical point of model 6 at the gas's own. They count as set by
/// hand where the database stores others. a and b stay where the gas has no critical constants.
void take_exponent(Choice& choice, double mu, const tavo::EquationSlot& row, const tavo::confreg::Text& data);

/// What a choice comes to at the row's temperature.
struct Shown {
    tavo::EquationSlot slot;  // constants of the gas, coefficients, exponent; as it would be applied
    bool complete = false;    // it holds coefficients
    Fault fault = Fault::None;
    std::string detail;
};
Shown shown(const Choice& choice, const tavo::EquationSlot& row, const tavo::confreg::Text& data);

/// Whether applying the choice would change the row.
bool pending(const Choice& choice, const tavo::EquationSlot& row);

/// Whether numbers that were typed for the row would be lost with the choice.
bool holds_typed_numbers(const Choice& choice, const tavo::EquationSlot& row, const tavo::confreg::Text& data);

/// Takes the choice into the row's slot: by hand with the parameter flag set, else loaded anew with the flag cleared. A
/// row that held no gas and gets one is switched on. The amount stays in the unit in which it is entered. Throws as the
/// loader, the row as before.
void apply(const Choice& choice, tavo::EquationSlot& row, const tavo::confreg::Text& data, bool grams);

/// After gas `removed` was deleted; a choice of that gas holds none.
void renumber(Choice& choice, std::int16_t removed);

}  // namespace parametros

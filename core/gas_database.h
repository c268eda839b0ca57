#pragma once
// The gas database "data" and the loader that turns one of its sections into a GasRecord.

#include <cstdint>
#include <string>
#include <vector>

#include "core/confreg.h"
#include "core/slots.h"

namespace tavo::Global {

/// Key "n" of section "general". Throws Overflow when it does not fit 16 bits; below 0 or missing reads as 0.
std::int16_t gas_count(const confreg::Text& data);

/// Names of gases 1..count in one pass ("" for a gas whose section or name is missing or cannot be read).
std::vector<std::string> gas_names(const confreg::Text& data, std::int16_t count);

/// Number of a gas after gas `removed` was deleted; 0 for that gas itself.
constexpr std::int16_t renumbered(std::int16_t number, std::int16_t removed) {
    if (number == removed)
        return 0;
    return static_cast<std::int16_t>(number > removed ? number - 1 : number);
}

/// Leaves a slot without gas, coefficients and parameter flag.
void drop_gas(EquationSlot& slot);
/// After gas `removed` was deleted: a slot of a later gas follows it to its new number, one of that gas drops it.
void follow_removal(EquationSlot& slot, std::int16_t removed);

/// Loads gas `gas` for model `equation` into `record`.
/// Name and critical constants are always read; zc = pc vc / (R tc), or -1 for an unknown vc. The coefficients are
/// read, and each one stored as -1 derived from the critical constants, when the model is not 0 and (reload or not
/// keep); otherwise the record keeps those it has. `temperature` [K] is set to 1e-05 when it is exactly 0; so is `mu`.
/// Model 6: a stored third coefficient becomes `mu`, -1 takes `mu` as it is. Throws FloatingPointError where a formula
/// divides by zero (Tc or Pc 0) or gives no finite number, InvalidArgument for an automatic model 6 with mu <= 1; the
/// record then stays as it was.
void cargargas(const confreg::Text& data, EquationOfState equation, std::int16_t gas, bool reload, bool keep,
               double& temperature, double& mu, GasRecord& record);

/// Coefficients of one model: c(e,1) to c(e,4) as stored, -1 for "to be derived", or as a formula gives them.
struct DerivedCoefficients {
    double a, b, c, d;
};

/// What cargargas makes of values that are in memory: `record` holds name and critical constants, `stored` what the
/// database holds, or is going to hold, for the model. Sets zc and the coefficients of `record`. The acentric factors
/// known by gas number serve for `gas` 1 to 28; 0 stands for a gas without a number. Temperature, mu and errors as
/// cargargas.
void complete(EquationOfState equation, std::int16_t gas, const DerivedCoefficients& stored, double& temperature,
              double& mu, GasRecord& record);

/// cargargas for a slot: its gas number, model, temperature, mu and parameter flag (as keep).
/// reload: the row's gas or model changed; it also clears the parameter flag. Without a gas (number 0) the record is
/// emptied, unless its coefficients were set by hand.
void load_slot(const confreg::Text& data, EquationSlot& slot, bool reload);

/// Coefficients that the critical constants give for a model, as the loader derives them for values stored as -1.
/// c is w (7, 8), mu (6) or C (5); 0 where the model has none.
/// w: acentric factor (7, 8), mu (6). Sources: see derive.cpp. Throws as cargargas.
DerivedCoefficients derive(EquationOfState equation, double tc, double pc, double w, double mu, double temperature);

/// Models 7 and 8: the third coefficient is the acentric factor, and a follows the temperature.
constexpr bool has_acentric_factor(EquationOfState equation) {
    return equation == EquationOfState::Soave || equation == EquationOfState::PengRobinson;
}

/// The acentric factor that the loader takes for a stored one: -1 means, in gases 1 to 28, the one known by number.
double acentric_factor(double stored, std::int16_t gas);

/// m of models 7 and 8, the slope of sqrt(a(T)) with w: 0.48 + ... (Soave), 0.37464 + ... (Peng, Robinson).
double acentric_slope(EquationOfState equation, double w);

/// a(T) / a(Tc) of models 7 and 8, (1 + m (1 - sqrt(T/Tc)))^2.
double temperature_factor(EquationOfState equation, double w, double reduced_temperature);

}  // namespace tavo::Global

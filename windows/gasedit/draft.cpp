#include "windows/gasedit/draft.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"

namespace editor {

namespace {

using tavo::EquationOfState;

constexpr double NOTHING = std::numeric_limits<double>::quiet_NaN();
constexpr int VIRIAL = 5, FREE_EXPONENT = 6, SOAVE = 7, PENG_ROBINSON = 8;
constexpr std::size_t W = 2, MU = 2;  // third coefficients

std::size_t row(int set) {
    return static_cast<std::size_t>(set);
}

bool has_acentric_factor(int set) {
    return tavo::Global::has_acentric_factor(static_cast<EquationOfState>(set));
}

/// Coefficients that "automatic" speaks of.
std::size_t derived_coefficients(int set) {
    return set == VIRIAL ? 4 : 2;
}

std::size_t stored_coefficients(int set) {
    return static_cast<std::size_t>(tavo::models().at(row(set)).stored);
}

std::array<double, 4> coefficients(const tavo::GasRecord& record) {
    return {record.a, record.b, record.c, record.d};
}

}  // namespace

Draft::Draft(const StoredGas& gas, std::int16_t number) : gas_(gas), stored_(gas), number_(number) {
    for (int set = 1; set <= SETS; ++set)
        by_hand_[row(set)] = !gas.automatic(set);
}

bool Draft::automatic(int set) const {
    return set > 0 && !by_hand_.at(row(set));
}

void Draft::set_automatic(int set) {
    by_hand_.at(row(set)) = false;
    std::fill_n(gas_.c[row(set)].begin(), derived_coefficients(set), AUTOMATIC);
}

void Draft::set_by_hand(int set, const tavo::GasRecord& constants) {
    by_hand_.at(row(set)) = true;
    double mu = tavo::EquationSlot{}.mu;
    try {
        const double t = stored_temperature(set, constants);
        const auto c = coefficients(derived(to_store(constants), set, t, mu, number_));
        std::copy_n(c.begin(), stored_coefficients(set), gas_.c[row(set)].begin());
    } catch (const tavo::Error&) {
        // Nothing to start from: the user types.
    }
}

void Draft::set_mu(double mu) {
    gas_.c[row(FREE_EXPONENT)][MU] = mu;
}

void Draft::type(int set, int k, double value) {
    gas_.c.at(row(set)).at(static_cast<std::size_t>(k)) = value;
}

double Draft::stored_temperature(int set, const tavo::GasRecord& constants) const {
    return by_hand_.at(row(set)) && has_acentric_factor(set) ? constants.tc : SHOWN_TEMPERATURE;
}

ShownSet Draft::shown(int set, const tavo::GasRecord& constants) const {
    ShownSet result;
    result.slot.equation = static_cast<EquationOfState>(set);
    result.slot.temperature = SHOWN_TEMPERATURE;
    result.slot.parameters = set == VIRIAL && !automatic(set);  // typed B, C, D are constants
    result.slot.gas = constants;
    result.mu = result.slot.mu;
    result.c.fill(NOTHING);
    if (set == 0)
        return result;

    const StoredGas gas = to_store(constants);
    std::array<double, 4> found = result.c;
    try {
        result.slot.gas = derived(gas, set, SHOWN_TEMPERATURE, result.slot.mu, number_);
        double mu = result.mu;
        found = coefficients(derived(gas, set, stored_temperature(set, constants), mu, number_));
    } catch (const tavo::Error& error) {
        result.obstacle = error.what();
    }
    const auto& stored = gas.c[row(set)];
    for (std::size_t k = 0; k < stored_coefficients(set); ++k)
        result.c[k] = stored[k] == AUTOMATIC ? found[k] : stored[k];
    if (set == FREE_EXPONENT && stored[MU] != AUTOMATIC)
        result.mu = stored[MU];
    if (has_acentric_factor(set))
        result.acentric = acentric(set, constants).origin;
    return result;
}

StoredGas Draft::to_store(const tavo::GasRecord& constants) const {
    StoredGas gas = gas_;
    gas.constants = constants;
    for (const int set : {SOAVE, PENG_ROBINSON})
        gas.c[row(set)][W] = acentric(set, constants).value;
    return gas;
}

Draft::Acentric Draft::acentric(int set, const tavo::GasRecord& constants) const {
    const double own = gas_.c[row(set)][W];
    const double known = own == AUTOMATIC ? tavo::Global::acentric_factor(own, number_) : own;
    if (known != AUTOMATIC)
        return {known, AcentricFactor::Given};
    const double other = gas_.c[row(SOAVE + PENG_ROBINSON - set)][W];  // the factor is the gas's own
    if (other != AUTOMATIC)
        return {other, AcentricFactor::Given};
    if (const auto estimate = estimated_acentric_factor(constants.tc, constants.pc, constants.teb))
        return {*estimate, AcentricFactor::Estimated};
    return {0.0, AcentricFactor::Unknown};
}

}  // namespace editor

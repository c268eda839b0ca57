#pragma once
// The coefficients of the gas in the editor while they are being edited. Standard library only.

#include <array>
#include <cstdint>
#include <string>

#include "windows/gasedit/editor_logica.h"

namespace editor {

/// Temperature at which coefficients that depend on it are shown [K].
inline constexpr double SHOWN_TEMPERATURE = 298.15;

/// Where the acentric factor of sets 7 and 8 comes from.
enum class AcentricFactor { Given, Estimated, Unknown };

/// What the boxes of a set hold.
struct ShownSet {
    std::array<double, 4> c{};  // NaN: nothing to show
    double mu = 0.0;
    AcentricFactor acentric = AcentricFactor::Given;
    std::string obstacle;     // why the loader could not derive its coefficients; empty when it can
    tavo::EquationSlot slot;  // the gas with this set at SHOWN_TEMPERATURE; no coefficients with an obstacle
};

/// The coefficient table of one gas. A coefficient that was never given is automatic; a set is switched between
/// automatic and by hand as a whole. The critical constants are those of the boxes at the moment of each call.
class Draft {
public:
    Draft() = default;  // a gas that is not in the database yet: every set automatic
    Draft(const StoredGas& gas, std::int16_t number);

    bool automatic(int set) const;
    void set_automatic(int set);
    /// Takes what is derived now as if it had been typed: from Tc for a of sets 7 and 8, which the loader multiplies by
    /// the temperature factor; at SHOWN_TEMPERATURE for set 5, whose typed coefficients are constants. Coefficients
    /// that cannot be derived stay automatic.
    void set_by_hand(int set, const tavo::GasRecord& constants);
    /// Exponent of set 6.
    void set_mu(double mu);
    /// Coefficient c(set,k+1) as typed; k from 0. -1 is "not given".
    void type(int set, int k, double value);

    ShownSet shown(int set, const tavo::GasRecord& constants) const;
    /// With an acentric factor in any case: the loader would take the "not given" of a new gas as the factor -1, or as
    /// that of another gas.
    StoredGas to_store(const tavo::GasRecord& constants) const;
    /// Something was typed or switched that is not in the database.
    bool changed() const { return gas_.c != stored_.c; }

private:
    struct Acentric {
        double value;
        AcentricFactor origin;
    };
    Acentric acentric(int set, const tavo::GasRecord& constants) const;
    /// Temperature of the coefficients in the boxes.
    double stored_temperature(int set, const tavo::GasRecord& constants) const;

    StoredGas gas_, stored_;
    std::int16_t number_ = 0;
    std::array<bool, SETS + 1> by_hand_{};
};

}  // namespace editor

#pragma once
// The gas editor without its widgets: what the boxes mean, what is written to the database, how the numbers of gases
// move. Standard library only.

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/confreg.h"
#include "core/slots.h"

namespace editor {

/// Models 1 to 9, each with a set of at most four coefficients c(e,k).
inline constexpr int SETS = 9;
/// Stored in place of a value that the loader derives.
inline constexpr double AUTOMATIC = -1.0;

/// One gas as the database stores it.
struct StoredGas {
    tavo::GasRecord constants;                        // name, pm, tc, vc, pc, teb, hv; the coefficients are not used
    std::array<std::array<double, 4>, SETS + 1> c{};  // c[e][k - 1]; row 0 unused

    StoredGas();  // every coefficient automatic
    /// a and b (and C, D of the virial set) of a set are all derived from the critical constants.
    bool automatic(int set) const;
};

/// Texts of the seven boxes.
struct Boxes {
    std::string name, pm, pc, tc, vc, teb, hv;
};

enum class Box { Name, MolarMass, CriticalPressure, CriticalTemperature, CriticalVolume, BoilingPoint, Enthalpy };

/// What a validation found wrong: language string 200 to 203 and the box concerned.
struct Refusal {
    int text;
    Box box;
};

/// Takes the boxes into `gas` in the order name, molar mass, critical pressure, critical temperature; the first one
/// that is empty or not above 0 ends it, those before it are stored already. Then critical volume, boiling point and
/// enthalpy, which never fail: empty or not above 0 becomes "0" in the box and 0 in the gas. A name of blanks alone is
/// empty, as it would read back so. A box that shows the gas's own number in "####0.0000" leaves it all its digits.
std::optional<Refusal> take(Boxes& boxes, StoredGas& gas);

/// The gas as stored, every c(i,k) as it stands in the file. Throws as Text::leerclave.
StoredGas read(const tavo::confreg::Text& data, std::int16_t number);

/// Every key of the gas's section, in the order of the file. The text is then what confreg::escribirclave would leave,
/// called for one key after the other. A number that the gas holds already stays in its own digits. Throws
/// RewriteRefused, InvalidArgument for a name that the file cannot hold; part of the keys may be in the text then.
void write(tavo::confreg::Text& data, std::int16_t number, const StoredGas& gas);
/// Writes the gas under count + 1, then "n" of section "General". Returns the new gas's number. Throws Overflow beyond
/// 32767 gases, nothing changed, and as write; RewriteRefused where that number has a section already.
std::int16_t add(tavo::confreg::Text& data, std::int16_t count, const StoredGas& gas);
/// Removes the gas's section, heads those of the gases up to `count` anew and lowers "n". False, and nothing changed,
/// when the section is missing.
bool remove(tavo::confreg::Text& data, std::int16_t number, std::int16_t count);

/// The record that the loader will make of the gas for a set at a temperature [K]: automatic values computed, others as
/// stored, a(T) in sets 7 and 8. mu: exponent for an automatic third coefficient of set 6; a stored one replaces it.
/// number: the gas's own, by which the loader knows some acentric factors; 0 for none. Throws FloatingPointError,
/// InvalidArgument (mu not above 1) as the loader.
tavo::GasRecord derived(const StoredGas& gas, int set, double temperature, double& mu, std::int16_t number = 0);

/// Acentric factor estimated from the boiling point: (3/7) theta/(1 - theta) log10(Pc/atm) - 1, theta = Tb/Tc.
/// W. C. Edmister, Petroleum Refiner 37 (1958) 173. In K and atm. Empty unless 0 < Tb < Tc and Pc > 1 atm, without
/// which there is no normal boiling point below the critical one.
std::optional<double> estimated_acentric_factor(double tc, double pc, double teb);

}  // namespace editor

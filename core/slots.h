#pragma once
// The working records of the program: a loaded gas with its model and state, six of them in one table.

#include <array>
#include <cstdint>
#include <string>

namespace tavo {

/// R [atm l / (mol K)], the one value used in every formula of the program.
inline constexpr double R = 0.08206;

/// Number of a model of the gas: the item index of every model list. Any 16-bit value may be held; the
/// pressure of a number outside 0..9 is 0.
enum class EquationOfState : std::int16_t {
    IdealGas = 0,
    VanDerWaals = 1,
    Berthelot = 2,
    Dieterici = 3,
    RedlichKwong = 4,
    Virial = 5,
    FreeExponent = 6,  // van der Waals repulsion, attraction a/Vm^mu
    Soave = 7,
    PengRobinson = 8,
    DietericiSadus = 9,
};

/// One gas as stored in the gas database, loaded for one model. -1 means "not known" in vc, zc, teb, hv.
struct GasRecord {
    std::string name;  // UTF-8
    double a = 0.0;    // coefficient 1; a(T) for Soave and Peng-Robinson; A (dimensionless) for the virial model
    double b = 0.0;    // coefficient 2 [l/mol]; B [l/mol] for the virial model
    double c = 0.0;    // coefficient 3: C [l2/mol2] (virial), mu (free exponent), acentric factor w (Soave, PR)
    double d = 0.0;    // coefficient 4: D [l3/mol3] (virial)
    double pm = 0.0;   // molar mass [g/mol]
    double tc = 0.0;   // critical temperature [K]
    double vc = 0.0;   // critical molar volume [l/mol]
    double pc = 0.0;   // critical pressure [atm]
    double zc = 0.0;   // pc vc / (R tc)
    double teb = 0.0;  // normal boiling temperature [K]
    double hv = 0.0;   // enthalpy of vaporisation at teb [kcal/mol]
};

/// One equation slot: what a window evaluates.
struct EquationSlot {
    bool active = false;          // switched on in the conditions window; only active rows are plotted
    std::int16_t gas_number = 0;  // 1-based number in the database; 0: no gas chosen
    GasRecord gas;
    EquationOfState equation = EquationOfState::IdealGas;
    double temperature = 300.0;  // K
    double moles = 1.0;          // n [mol]
    double grams = 0.0;          // n times the molar mass [g]
    bool parameters = false;     // coefficients were set by hand: a reload keeps them
    double mu = 1.5;             // attraction exponent of the free-exponent model
    int colour = 0;              // index into the 16-colour palette
};

/// Six slots: 0 belongs to calculations and laboratory, 1 to 5 to the isotherm rows.
class SlotTable {
public:
    static constexpr int size = 6;
    /// Throws SubscriptOutOfRange for a number outside 0..5.
    EquationSlot& operator[](int number);
    const EquationSlot& operator[](int number) const;

private:
    std::array<EquationSlot, size> slots_{};
};

}  // namespace tavo

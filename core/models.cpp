#include "core/models.h"

#include <cmath>
#include <limits>
#include <string>

#include "core/errors.h"
#include "core/numtext.h"

namespace tavo {

namespace {

constexpr double FAULT = std::numeric_limits<double>::quiet_NaN();

// Terms that several equations share.

/// RT/(vm - b): hard spheres that take the volume b.
double repulsion(const Coefficients& k, double t, double vm) {
    return R * t / (vm - k.b);
}

/// exp(-a/(RT vm)): the attraction of C. Dieterici (1899). An infinite argument is a fault, although exp() would give
/// 0.
double dieterici_factor(const Coefficients& k, double t, double vm) {
    const double argument = -k.a / (R * t * vm);
    return std::isfinite(argument) ? std::exp(argument) : FAULT;
}

/// vm^mu. The square is formed by a product: exactly van der Waals for mu = 2, whatever pow() rounds to.
double attraction_volume(double vm, double mu) {
    if (mu == 2.0)
        return vm * vm;
    const double power = std::pow(vm, mu);
    return std::isinf(power) ? FAULT : power;
}

// The equations, P(T, vm) of one mole [atm; K, l/mol].

/// RT/vm.
double ideal_gas(const Coefficients&, double t, double vm) {
    return R * t / vm;
}

/// RT/(vm - b) - a/vm^2. J. D. van der Waals, thesis, Leiden 1873.
double van_der_waals(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / (vm * vm);
}

/// RT/(vm - b) - a/(T vm^2). D. Berthelot, 1899.
double berthelot(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / (t * (vm * vm));
}

/// RT/(vm - b) exp(-a/(RT vm)). C. Dieterici, Ann. Phys. 305 (1899) 685.
double dieterici(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) * dieterici_factor(k, t, vm);
}

/// RT/(vm - b) - a/(sqrt(T) vm (vm + b)). O. Redlich, J. N. S. Kwong, Chem. Rev. 44 (1949) 233.
double redlich_kwong(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / (std::sqrt(t) * (vm * (vm + k.b)));
}

/// (RT/vm)(A + B/vm + C/vm^2 + D/vm^3). H. Kamerlingh Onnes, 1901, in powers of 1/vm.
double virial(const Coefficients& k, double t, double vm) {
    const double density = 1.0 / vm;
    return R * t / vm * (k.a + density * (k.b + density * (k.c + density * k.d)));
}

/// RT/(vm - b) - a/vm^mu.
double free_exponent(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / attraction_volume(vm, k.mu);
}

/// RT/(vm - b) - a(T)/(vm (vm + b)). G. Soave, Chem. Eng. Sci. 27 (1972) 1197.
double soave(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / (vm * (vm + k.b));
}

/// RT/(vm - b) - a(T)/(vm (vm + b) + b (vm - b)). D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59.
double peng_robinson(const Coefficients& k, double t, double vm) {
    return repulsion(k, t, vm) - k.a / (vm * (vm + k.b) + k.b * (vm - k.b));
}

/// RT (1 + y + y^2 - y^3)/(vm (1 - y)^3) exp(-a/(RT vm)), y = b/(4 vm): the hard spheres of N. F. Carnahan and
/// K. E. Starling (1969) with Dieterici's attraction. R. J. Sadus, J. Chem. Phys. 115 (2001) 1460.
double dieterici_sadus(const Coefficients& k, double t, double vm) {
    const double y = k.b / (4.0 * vm);
    const double free = (4.0 * vm - k.b) / (4.0 * vm);  // 1 - y without its cancellation near y = 1
    return R * t * (1.0 + y * (1.0 + y * (1.0 - y))) / (vm * (free * free * free)) * dieterici_factor(k, t, vm);
}

double no_covolume(const Coefficients&) {
    return 0.0;
}

double whole_covolume(const Coefficients& k) {
    return k.b;
}

double quarter_covolume(const Coefficients& k) {
    return k.b / 4.0;
}

constexpr CoefficientText COVOLUME{"b [l / mol]", "b", "l / mol"};
constexpr CoefficientText ACENTRIC{"w", "w", ""};

constexpr std::array VAN_DER_WAALS_TEXTS{CoefficientText{"a [l ² atm / mol ²]", "a", "l ²atm/mol ²"}, COVOLUME};
constexpr std::array BERTHELOT_TEXTS{CoefficientText{"a [l ² atm / mol ² K]", "a", "l ²atm/mol ²K"}, COVOLUME};
constexpr std::array REDLICH_KWONG_TEXTS{CoefficientText{"a [l ² atm / mol ² K ½]", "a", "l ²atm/mol ²K ½"}, COVOLUME};
constexpr std::array VIRIAL_TEXTS{CoefficientText{"A", "A", ""}, CoefficientText{"B [l / mol]", "B", "l / mol"},
                                  CoefficientText{"C [l ² / mol ²]", "C", "l ² / mol ²"},
                                  CoefficientText{"D [l ³ / mol ³]", "D", "l ³ / mol ³"}};
// The unit of a depends on mu, which has an entry of its own.
constexpr std::array FREE_EXPONENT_TEXTS{CoefficientText{"a", "a", ""}, CoefficientText{"b", "b", "l / mol"}};
constexpr std::array SOAVE_TEXTS{CoefficientText{"a (T) [l ² atm / mol ²]", "a (T)", "l ² atm / mol ²"}, COVOLUME,
                                 ACENTRIC};

using enum EquationOfState;
constexpr std::array<Model, 10> MODELS{{
    {IdealGas, "", "ideal gas", "P = R T/Vm", 85, 0, {}, ideal_gas, no_covolume},
    {VanDerWaals, "VAN DER WAALS", "van der waals", "P = R T/(Vm − b) − a/Vm²", 0, 2, VAN_DER_WAALS_TEXTS,
     van_der_waals, whole_covolume},
    {Berthelot, "BERTHELOT", "berthelot", "P = R T/(Vm − b) − a/(T Vm²)", 0, 2, BERTHELOT_TEXTS, berthelot,
     whole_covolume},
    {Dieterici, "DIETERICI", "dieterici", "P = R T/(Vm − b) exp(−a/(R T Vm))", 0, 2, VAN_DER_WAALS_TEXTS, dieterici,
     whole_covolume},
    {RedlichKwong, "REDLICH-KWONG", "redlich-kwong", "P = R T/(Vm − b) − a/(√T Vm (Vm + b))", 0, 2, REDLICH_KWONG_TEXTS,
     redlich_kwong, whole_covolume},
    {Virial, "VIRIAL", "virial", "P = (R T/Vm) (A + B/Vm + C/Vm² + D/Vm³)", 0, 4, VIRIAL_TEXTS, virial, no_covolume},
    {FreeExponent, "", "free exponent", "P = R T/(Vm − b) − a/Vm^µ", 86, 3, FREE_EXPONENT_TEXTS, free_exponent,
     whole_covolume},
    {Soave, "REDLICH-KWONG-SOAVE", "redlich-kwong-soave",
     "P = R T/(Vm − b) − a(T)/(Vm (Vm + b)), a(T) = ac (1 + m (1 − √(T/Tc)))²", 0, 3, SOAVE_TEXTS, soave,
     whole_covolume},
    {PengRobinson, "PENG-ROBINSON", "peng-robinson",
     "P = R T/(Vm − b) − a(T)/(Vm (Vm + b) + b (Vm − b)), a(T) = ac (1 + m (1 − √(T/Tc)))²", 0, 3, SOAVE_TEXTS,
     peng_robinson, whole_covolume},
    {DietericiSadus, "DIETERICI-SADUS", "dieterici-sadus",
     "P = R T (1 + y + y² − y³)/(Vm (1 − y)³) exp(−a/(R T Vm)), y = b/(4 Vm)", 0, 2, VAN_DER_WAALS_TEXTS,
     dieterici_sadus, quarter_covolume},
}};

constexpr bool in_order() {
    for (std::size_t i = 0; i < MODELS.size(); ++i)
        if (static_cast<std::size_t>(MODELS[i].number) != i)
            return false;
    return true;
}
static_assert(in_order(), "MODELS must be in the order of EquationOfState");

[[noreturn]] void fault(const Model& model, double t, double vm) {
    throw FloatingPointError(std::string(model.name) + ": no finite pressure at " + to_text(t) + " K and " +
                             to_text(vm) + " l/mol");
}

}  // namespace

const std::array<Model, 10>& models() {
    return MODELS;
}

const Model* find_model(EquationOfState number) {
    const auto index = static_cast<std::size_t>(number);  // negative numbers wrap round and are out of range too
    return index < MODELS.size() ? &MODELS[index] : nullptr;
}

double pressure(const EquationSlot& slot, double v) {
    if (!(slot.moles > 0.0))
        return 0.0;
    const Model* model = find_model(slot.equation);
    if (model == nullptr)
        return 0.0;
    const Coefficients k = coefficients(slot);
    const double vm = v / slot.moles;
    // A co-volume below zero, set by hand, does not admit volumes below zero.
    if (!(vm > model->covolume(k)) || vm < 0.0)
        return 0.0;
    const double p = model->pressure(k, slot.temperature, vm);
    if (!std::isfinite(p) || std::isinf(vm))
        fault(*model, slot.temperature, vm);
    return p;
}

double pressure(const SlotTable& table, int slot, double v) {
    return pressure(table[slot], v);
}

}  // namespace tavo

// Coefficients of the models from the critical constants.

#include <cmath>
#include <string>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::Global {

namespace {

struct Critical {
    double tc, pc;
};

/// a and b put the critical point of the isotherm, where its first and second derivative vanish, at (Tc, Pc).
/// The products of R are written out: 27 R^2, 81 R^2, 3 R, 4 R^2, R^2.
DerivedCoefficients van_der_waals(const Critical& g) {
    return {0.1818137772 * (g.tc * g.tc) / (64.0 * g.pc), R * g.tc / (8.0 * g.pc), 0.0, 0.0};
}

DerivedCoefficients berthelot(const Critical& g) {
    return {0.5454413316 * (g.tc * g.tc * g.tc) / (192.0 * g.pc), 0.24618 * g.tc / (24.0 * g.pc), 0.0, 0.0};
}

DerivedCoefficients dieterici(const Critical& g) {
    const double e2 = std::exp(2.0);
    return {0.0269353744 * (g.tc * g.tc) / (e2 * g.pc), R * g.tc / (e2 * g.pc), 0.0, 0.0};
}

double redlich_kwong_covolume(const Critical& g) {
    return (std::pow(2.0, 1.0 / 3.0) - 1.0) * R * g.tc / (3.0 * g.pc);
}

DerivedCoefficients redlich_kwong(const Critical& g) {
    const double a = 0.0067338436 * std::pow(g.tc, 5.0 / 2.0) / (9.0 * (std::pow(2.0, 1.0 / 3.0) - 1.0) * g.pc);
    return {a, redlich_kwong_covolume(g), 0.0, 0.0};
}

/// The van der Waals equation expanded in powers of 1/vm.
DerivedCoefficients virial(const Critical& g, double temperature) {
    const auto [a, b, c, d] = van_der_waals(g);
    return {1.0, b - a / (R * temperature), b * b, b * b * b};
}

/// Critical point of RT/(vm - b) - a/vm^mu: vm = v = b (mu + 1)/(mu - 1).
DerivedCoefficients free_exponent(const Critical& g, double mu) {
    if (!(mu > 1.0))
        throw InvalidArgument("automatic coefficients need an exponent above 1, not " + to_text(mu));
    const double v = R * g.tc * (mu * mu - 1.0) / (4.0 * mu * g.pc);
    const double a = R * g.tc * ((mu + 1.0) * (mu + 1.0)) * std::pow(v, mu - 1.0) / (4.0 * mu);
    const double b = R * g.tc * ((mu - 1.0) * (mu - 1.0)) / (4.0 * mu * g.pc);
    return {a, b, mu, 0.0};
}

/// G. Soave, Chem. Eng. Sci. 27 (1972) 1197.
DerivedCoefficients soave(const Critical& g, double w, double temperature) {
    const double rtc = R * g.tc;
    const double factor = temperature_factor(EquationOfState::Soave, w, temperature / g.tc);
    return {0.42748 * (rtc * rtc) / g.pc * factor, redlich_kwong_covolume(g), w, 0.0};
}

/// D.-Y. Peng, D. B. Robinson, Ind. Eng. Chem. Fundam. 15 (1976) 59. b is 0.0778 R Tc/Pc, premultiplied.
DerivedCoefficients peng_robinson(const Critical& g, double w, double temperature) {
    const double rtc = R * g.tc;
    const double factor = temperature_factor(EquationOfState::PengRobinson, w, temperature / g.tc);
    return {0.45724 * (rtc * rtc) / g.pc * factor, 0.006384268 * g.tc / g.pc, w, 0.0};
}

/// 0.810435 (R Tc)^2/Pc and 0.386242 R Tc/Pc, premultiplied: the critical conditions solved to a few digits. The
/// isotherm with a horizontal inflection lies at 1.0024 Tc.
DerivedCoefficients dieterici_sadus(const Critical& g) {
    return {0.0054573425379659994 * (g.tc * g.tc) / g.pc, 0.03169501851999999 * g.tc / g.pc, 0.0, 0.0};
}

DerivedCoefficients evaluate(EquationOfState equation, const Critical& g, double w, double mu, double temperature) {
    switch (equation) {
        case EquationOfState::VanDerWaals:
            return van_der_waals(g);
        case EquationOfState::Berthelot:
            return berthelot(g);
        case EquationOfState::Dieterici:
            return dieterici(g);
        case EquationOfState::RedlichKwong:
            return redlich_kwong(g);
        case EquationOfState::Virial:
            return virial(g, temperature);
        case EquationOfState::FreeExponent:
            return free_exponent(g, mu);
        case EquationOfState::Soave:
            return soave(g, w, temperature);
        case EquationOfState::PengRobinson:
            return peng_robinson(g, w, temperature);
        case EquationOfState::DietericiSadus:
            return dieterici_sadus(g);
        case EquationOfState::IdealGas:
            break;
    }
    return {0.0, 0.0, 0.0, 0.0};
}

}  // namespace

double acentric_slope(EquationOfState equation, double w) {
    if (equation == EquationOfState::Soave)
        return 0.48 + 1.574 * w - 0.176 * (w * w);
    return 0.37464 + 1.54226 * w - 0.26992 * (w * w);
}

double temperature_factor(EquationOfState equation, double w, double reduced_temperature) {
    const double root = 1.0 + acentric_slope(equation, w) * (1.0 - std::sqrt(reduced_temperature));
    return root * root;
}

DerivedCoefficients derive(EquationOfState equation, double tc, double pc, double w, double mu, double temperature) {
    const Model* model = find_model(equation);
    if (model == nullptr || model->stored == 0)
        return {0.0, 0.0, 0.0, 0.0};
    if (tc == 0.0 || pc == 0.0)
        throw FloatingPointError(std::string(model->name) + ": no coefficients from a critical " +
                                 (tc == 0.0 ? "temperature" : "pressure") + " of 0");
    const DerivedCoefficients k = evaluate(equation, {tc, pc}, w, mu, temperature);
    if (!std::isfinite(k.a) || !std::isfinite(k.b) || !std::isfinite(k.c) || !std::isfinite(k.d))
        throw FloatingPointError(std::string(model->name) + ": no finite coefficients from Tc " + to_text(tc) +
                                 " K and Pc " + to_text(pc) + " atm at " + to_text(temperature) + " K");
    return k;
}

}  // namespace tavo::Global

#include "core/gas_database.h"

#include <array>
#include <cmath>
#include <limits>

#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::Global {

namespace {

constexpr double UNKNOWN = -1.0;
constexpr double SMALLEST = 1e-05;  // stands for a 0 that formulas divide by

/// Acentric factors of the gases numbered 1 to 28.
constexpr std::array<double, 28> ACENTRIC_FACTORS{
    -0.365, -0.029, 0.001, 0.005, 0.008, -0.216, -0.216, 0.054, 0.039, 0.025, 0.09,  0.108, 0.229, -0.216,
    0.329,  0.133,  0.066, 0.25,  0.344, 0.344,  0.239,  0.011, 0.177, 0.193, 0.556, 0.644, 0.299, 0.263};

void guard(double& divisor) {
    if (divisor == 0.0)
        divisor = SMALLEST;
}

/// The section of one gas.
class Section {
public:
    Section(const confreg::Text& data, std::int16_t gas) : data_(data), name_("g" + std::to_string(gas)) {}

    std::string text(const std::string& key) const { return data_.leerclave(name_, key); }
    double number(const std::string& key) const { return Val(text(key)); }
    double coefficient(int equation, int k) const {
        return number("c(" + std::to_string(equation) + "," + std::to_string(k) + ")");
    }

private:
    const confreg::Text& data_;
    std::string name_;
};

void read_constants(const Section& section, GasRecord& record) {
    record.name = section.text("nombre");
    record.pm = section.number("pm");
    record.tc = section.number("tc");
    record.pc = section.number("pc");
    record.vc = section.number("vc");
    record.teb = section.number("teb");
    record.hv = section.number("hv");
}

void set_compressibility(GasRecord& record) {
    if (record.vc == UNKNOWN) {
        record.zc = UNKNOWN;
        return;
    }
    if (record.tc == 0.0)
        throw FloatingPointError("the critical temperature is 0, so pc vc/(R tc) divides by 0");
    record.zc = record.pc * record.vc / (R * record.tc);
    if (!std::isfinite(record.zc))
        throw FloatingPointError("no finite pc vc/(R tc) from Tc " + to_text(record.tc) + " K, Pc " +
                                 to_text(record.pc) + " atm and vc " + to_text(record.vc) + " l/mol");
}

/// The coefficients as stored, those that the model does not have as 0.
DerivedCoefficients read_coefficients(const Section& section, const Model& model) {
    std::array<double, 4> stored{};
    for (int k = 1; k <= model.stored; ++k)
        stored[static_cast<std::size_t>(k - 1)] = section.coefficient(static_cast<int>(model.number), k);
    return {stored[0], stored[1], stored[2], stored[3]};
}

/// a(T) of models 7 and 8 from a stored a(Tc), which needs no critical pressure.
double at_temperature(double a, double w, const Model& model, double tc, double temperature) {
    if (tc == 0.0)
        throw FloatingPointError(std::string(model.name) + ": no a(T) with a critical temperature of 0");
    const double result = a * temperature_factor(model.number, w, temperature / tc);
    if (!std::isfinite(result))
        throw FloatingPointError(std::string(model.name) + ": no finite a(T) from a " + to_text(a) + " and Tc " +
                                 to_text(tc) + " K at " + to_text(temperature) + " K");
    return result;
}

/// Replaces every -1 by what the critical constants give, and a of models 7 and 8 by a(T).
DerivedCoefficients completed(const DerivedCoefficients& stored, const Model& model, const GasRecord& gas,
                              double temperature, double mu) {
    const bool all_known = stored.a != UNKNOWN && stored.b != UNKNOWN &&
                           (model.number != EquationOfState::Virial || (stored.c != UNKNOWN && stored.d != UNKNOWN));
    DerivedCoefficients result = stored;
    if (has_acentric_factor(model.number) && stored.a != UNKNOWN)
        result.a = at_temperature(stored.a, stored.c, model, gas.tc, temperature);
    if (all_known)
        return result;
    const DerivedCoefficients k = derive(model.number, gas.tc, gas.pc, stored.c, mu, temperature);
    if (stored.a == UNKNOWN)
        result.a = k.a;
    if (stored.b == UNKNOWN)
        result.b = k.b;
    if (model.number == EquationOfState::Virial) {
        result.c = stored.c == UNKNOWN ? k.c : stored.c;
        result.d = stored.d == UNKNOWN ? k.d : stored.d;
    }
    return result;
}

void set_coefficients(DerivedCoefficients k, const Model& model, std::int16_t gas, double temperature, double& mu,
                      GasRecord& record) {
    if (has_acentric_factor(model.number))
        k.c = acentric_factor(k.c, gas);
    if (model.number == EquationOfState::FreeExponent) {
        if (k.c != UNKNOWN)
            mu = k.c;
        guard(mu);
        k.c = mu;
    }
    k = completed(k, model, record, temperature, mu);
    record.a = k.a;
    record.b = k.b;
    record.c = k.c;
    record.d = k.d;
}

std::string prefix(std::int16_t gas, const GasRecord& record) {
    return (gas > 0 ? "gas " + std::to_string(gas) : std::string("gas")) +
           (record.name.empty() ? "" : " (" + record.name + ")") + ": ";
}

/// Runs `step` on a copy of the record and on mu, which take its results only when all went well. Errors name the gas.
template <class Step>
void load(std::int16_t gas, double& mu, GasRecord& record, const Step& step) {
    GasRecord loaded = record;
    double exponent = mu;
    try {
        step(loaded, exponent);
    } catch (const FloatingPointError& error) {
        throw FloatingPointError(prefix(gas, loaded) + error.what());
    } catch (const InvalidArgument& error) {
        throw InvalidArgument(prefix(gas, loaded) + error.what());
    }
    record = std::move(loaded);
    mu = exponent;
}

}  // namespace

double acentric_factor(double stored, std::int16_t gas) {
    const bool listed = gas >= 1 && gas <= static_cast<int>(ACENTRIC_FACTORS.size());
    return stored == UNKNOWN && listed ? ACENTRIC_FACTORS[static_cast<std::size_t>(gas - 1)] : stored;
}

std::int16_t gas_count(const confreg::Text& data) {
    const double n = std::trunc(Val(data.leerclave("general", "n")));
    if (n > std::numeric_limits<std::int16_t>::max())
        throw Overflow("the database announces " + to_text(n) + " gases, more than 32767");
    return n > 0.0 ? static_cast<std::int16_t>(n) : std::int16_t{0};
}

std::vector<std::string> gas_names(const confreg::Text& data, std::int16_t count) {
    std::vector<std::string> names;
    for (int gas = 1; gas <= count; ++gas) {
        std::string& name = names.emplace_back();
        try {
            name = data.leerclave("g" + std::to_string(gas), "nombre");
        } catch (const Error&) {
            // One bad section takes no other gas away.
        }
    }
    return names;
}

void drop_gas(EquationSlot& slot) {
    slot.gas_number = 0;
    slot.gas = {};
    slot.parameters = false;
}

void follow_removal(EquationSlot& slot, std::int16_t removed) {
    if (slot.gas_number == 0)
        return;
    slot.gas_number = renumbered(slot.gas_number, removed);
    if (slot.gas_number == 0)
        drop_gas(slot);
}

void cargargas(const confreg::Text& data, EquationOfState equation, std::int16_t gas, bool reload, bool keep,
               double& temperature, double& mu, GasRecord& record) {
    guard(temperature);
    guard(mu);
    const Section section(data, gas);
    const Model* model = find_model(equation);
    load(gas, mu, record, [&](GasRecord& loaded, double& exponent) {
        read_constants(section, loaded);
        set_compressibility(loaded);
        if (model != nullptr && model->stored > 0 && (reload || !keep))
            set_coefficients(read_coefficients(section, *model), *model, gas, temperature, exponent, loaded);
    });
}

void complete(EquationOfState equation, std::int16_t gas, const DerivedCoefficients& stored, double& temperature,
              double& mu, GasRecord& record) {
    guard(temperature);
    guard(mu);
    const Model* model = find_model(equation);
    load(gas, mu, record, [&](GasRecord& loaded, double& exponent) {
        set_compressibility(loaded);
        if (model != nullptr && model->stored > 0)
            set_coefficients(stored, *model, gas, temperature, exponent, loaded);
    });
}

void load_slot(const confreg::Text& data, EquationSlot& slot, bool reload) {
    if (reload)
        slot.parameters = false;
    if (slot.gas_number > 0) {
        cargargas(data, slot.equation, slot.gas_number, reload, slot.parameters, slot.temperature, slot.mu, slot.gas);
        return;
    }
    guard(slot.temperature);
    guard(slot.mu);
    if (!slot.parameters)
        slot.gas = {};
}

}  // namespace tavo::Global

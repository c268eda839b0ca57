#include "core/automatic.h"

#include "core/gas_database.h"

namespace tavo::calcnum {

/// The loader multiplied by the same factor, so that dividing by it is exact to rounding, however small it is. At
/// Tc (1 + 1/m)^2 it is 0, and only the critical constants tell a(Tc).
double attraction_at_tc(const EquationSlot& slot) {
    const GasRecord& gas = slot.gas;
    const double factor = Global::temperature_factor(slot.equation, gas.c, slot.temperature / gas.tc);
    if (factor != 0.0)
        return gas.a / factor;
    return Global::derive(slot.equation, gas.tc, gas.pc, gas.c, slot.mu, gas.tc).a;
}

std::optional<SecondVirial> behind_automatic_b(const EquationSlot& slot) {
    const GasRecord& gas = slot.gas;
    if (!(gas.pc > 0.0))  // so that B is stored
        return std::nullopt;
    const auto automatic = Global::derive(EquationOfState::Virial, gas.tc, gas.pc, 0.0, 0.0, slot.temperature);
    if (gas.b != automatic.b)
        return std::nullopt;
    const auto [a, b, c, d] = Global::derive(EquationOfState::VanDerWaals, gas.tc, gas.pc, 0.0, 0.0, 0.0);
    return SecondVirial{a, b};
}

}  // namespace tavo::calcnum

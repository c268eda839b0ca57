// Solves for P, V and T over many states of twelve gases with every model, puts each answer back into the equation and
// prints, per model and unknown, how it went. Run by hand: state_sweep [DATABASE].

#include <algorithm>
#include <array>
#include <cmath>
#include <ctime>
#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

#include "core/calcnum.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "tests/core/saturation_checks.h"
#include "windows/calc/calculos_logica.h"

namespace {

using namespace calculos;
namespace calcnum = tavo::calcnum;
using tavo::Model;

constexpr int GASES = 12;
constexpr std::array REASONS{"no gas",    "bad gas",     "small mu",       "no molar mass", "inside covolume",
                             "no volume", "not reached", "no temperature", "not finite"};

struct State {
    double t, v, p;  // K, l/mol, atm
};

struct Tally {
    int states = 0, solved = 0, unsound = 0;
    std::array<int, REASONS.size()> failed{};
    double residual = 0.0;  // largest |P(answer)/p - 1|
    double raw = 0.0;       // the same where Newton's method ends
    long steps = 0;         // its longest way
    double longest = 0.0;   // of the processor [s]
};

SlotTable loaded(const tavo::confreg::Text& data, const Model& model, int gas, double t) {
    SlotTable table;
    table[0].temperature = t;
    choose(data, table[0], static_cast<std::int16_t>(gas), model.number);
    return table;
}

/// The stable state of a model at T and P; empty where there is none.
std::optional<State> stable_state(const EquationSlot& slot, double t, double p) {
    const auto roots = calcnum::volume_roots(slot, t, p);
    const auto saturation = calcnum::saturation(slot, t);
    if (roots.empty())
        return std::nullopt;
    return State{t, saturation && p > saturation->pv ? roots.front() : roots.back(), p};
}

/// Gas and liquid on both sides of the vapour pressure, the dense gas above the critical temperature, the supercritical
/// fluid; `extreme`: any temperature with any pressure.
std::vector<State> states_of(const tavo::confreg::Text& data, const Model& model, int gas, bool extreme) {
    std::vector<State> states;
    const auto add = [&](double t, const std::vector<double>& pressures, bool of_saturation) {
        const SlotTable table = loaded(data, model, gas, t);
        const auto saturation = calcnum::saturation(table[0], t);
        const auto& constants = table[0].gas;
        const double unit = of_saturation && saturation ? saturation->pv : constants.pc;
        for (const double p : pressures)
            if (const auto state = stable_state(table[0], t, p * unit))
                states.push_back(*state);
    };
    const double tc = loaded(data, tavo::models()[0], gas, 300.0)[0].gas.tc;
    if (extreme) {
        for (double t = 0.05; t < 60.0; t *= 1.5)
            add(t * tc, {1e-6, 1e-4, 0.01, 0.1, 0.3, 0.6, 1.0, 2.0, 5.0, 20.0, 100.0, 1e4}, false);
        return states;
    }
    for (const double t : {0.5, 0.6, 0.7, 0.8, 0.9, 0.95, 0.99})
        add(t * tc, {0.01, 0.1, 0.5, 0.9, 0.99, 1.01, 1.1, 2.0, 10.0, 100.0}, true);
    for (const double t : {1.01, 1.1, 1.3, 2.0, 4.0})
        add(t * tc, {0.001, 0.1, 0.3, 0.5, 0.7, 0.9, 1.0, 1.2, 2.0, 5.0, 20.0}, false);
    return states;
}

double relative(double found, double wanted) {
    return std::abs(found / wanted - 1.0);
}

/// The pressure of one mole at T and v, by the equation as it is printed and in long double.
double pressure_at(const tavo::confreg::Text& data, EquationSlot slot, double t, double v) {
    slot.temperature = t;
    tavo::Global::load_slot(data, slot, false);
    if (slot.equation == tavo::EquationOfState::IdealGas)
        return tavo::R * t / v;
    return static_cast<double>(tavo::testing::exact_pressure(slot, t, v - tavo::testing::covolume(slot)));
}

/// Whether the pressure crosses p on a fine logarithmic grid of x; `rising`: upwards only.
template <class Pressure>
bool crosses(double low, double high, bool rising, double p, const Pressure& pressure) {
    constexpr int POINTS = 20'000;
    double last = pressure(low) - p;
    for (int i = 1; i <= POINTS; ++i) {
        const double next = pressure(low * std::pow(high / low, static_cast<double>(i) / POINTS)) - p;
        if (last < 0.0 ? next >= 0.0 : !rising && next < 0.0)
            return true;
        last = next;
    }
    return false;
}

/// Whether v is a root to rounding: beside the co-volume of a cold liquid neighbouring numbers differ a lot in
/// pressure.
bool fits(const tavo::confreg::Text& data, const EquationSlot& slot, const State& s, double v) {
    const auto excess = [&](double there) { return pressure_at(data, slot, s.t, there) - s.p; };
    const double here = excess(v);
    return std::abs(here) < 1e-6 * s.p || excess(std::nextafter(v, 0.0)) * here <= 0.0 ||
           excess(std::nextafter(v, 1e9)) * here <= 0.0;
}

/// A failure is sound where the scan finds no answer, or the reason says that there is one out of reach.
bool sound(const tavo::confreg::Text& data, const EquationSlot& slot, const State& s, const Unsolvable& error) {
    switch (error.reason()) {
        case Reason::NoTemperature:
            return !crosses(1e-3, 1e6, true, s.p, [&](double t) { return pressure_at(data, slot, t, s.v); });
        case Reason::NoVolume: {
            EquationSlot there = slot;
            there.temperature = s.t;
            tavo::Global::load_slot(data, there, false);
            const double core = tavo::find_model(slot.equation)->covolume(coefficients(there));
            return !crosses(1e-9 * s.v, 1e9 * s.v, false, s.p,
                            [&](double free) { return pressure(there, core + free); });
        }
        case Reason::VolumeNotReached:
            return error.value() && fits(data, slot, s, *error.value());
        default:
            return false;
    }
}

void measure_newton(const SlotTable& table, const State& s, Tally& tally) {
    if (table[0].equation == tavo::EquationOfState::IdealGas)
        return;
    const auto [vm, steps] = calcnum::newton_trace("v", table[0].equation, table, 0, s.p, s.t, tavo::R * s.t / s.p);
    tally.raw = std::max(tally.raw, relative(tavo::pressure(table[0], vm), s.p));
    tally.steps = std::max(tally.steps, steps);
}

void run(const tavo::confreg::Text& data, const SlotTable& before, Variable unknown, const State& s, Tally& tally) {
    SlotTable table = before;
    ++tally.states;
    const std::clock_t begin = std::clock();
    const auto stop = [&] {
        const double taken = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
        tally.longest = std::max(tally.longest, taken);
    };
    try {
        const Output output = solve(data, table, {unknown, 1.0, s.t, s.v, s.p});
        stop();
        ++tally.solved;
        const double wanted = unknown == Variable::Pressure ? output.p : s.p;
        tally.residual = std::max(tally.residual, relative(pressure_at(data, before[0], output.t, output.v), wanted));
        if (unknown == Variable::Volume)
            measure_newton(table, s, tally);
    } catch (const Unsolvable& error) {
        stop();
        ++tally.failed[static_cast<std::size_t>(error.reason())];
        tally.unsound += sound(data, before[0], s, error) ? 0 : 1;
    }
}

void print(const Model& model, const char* unknown, const Tally& tally) {
    std::cout << std::left << std::setw(20) << model.name << std::setw(4) << unknown << std::right << std::setw(7)
              << tally.states << std::setw(8) << tally.solved << std::scientific << std::setprecision(1) << "   "
              << tally.residual << "   " << tally.raw << std::setw(7) << tally.steps << std::fixed
              << std::setprecision(3) << std::setw(9) << 1e3 * tally.longest << " ms" << std::setw(5) << tally.unsound;
    for (std::size_t i = 0; i < tally.failed.size(); ++i)
        if (tally.failed[i] > 0)
            std::cout << "  " << REASONS[i] << ' ' << tally.failed[i];
    std::cout << '\n';
}

/// Prints one table. False where an answer misses its tolerance or a failure is not one.
bool sweep(const tavo::confreg::Text& data, bool extreme) {
    constexpr std::array UNKNOWNS{std::pair{Variable::Pressure, "P"}, std::pair{Variable::Volume, "V"},
                                  std::pair{Variable::Temperature, "T"}};
    const int gases = tavo::Global::gas_count(data);
    bool good = true;
    std::cout << "model               of   states  solved   worst     Newton   steps  longest solve  false failures\n";
    for (const Model& model : tavo::models()) {
        std::array<Tally, UNKNOWNS.size()> tallies;
        for (int i = 0; i < GASES; ++i) {
            const int gas = 1 + i * gases / GASES;
            const SlotTable table = loaded(data, model, gas, 300.0);
            for (const State& state : states_of(data, model, gas, extreme))
                for (std::size_t k = 0; k < UNKNOWNS.size(); ++k)
                    run(data, table, UNKNOWNS[k].first, state, tallies[k]);
        }
        for (std::size_t k = 0; k < UNKNOWNS.size(); ++k) {
            const double tolerance = UNKNOWNS[k].first == Variable::Volume ? 1e-6 : 1e-9;
            good = good && tallies[k].unsound == 0 && (extreme || tallies[k].residual < tolerance);
            print(model, UNKNOWNS[k].second, tallies[k]);
        }
    }
    return good;
}

}  // namespace

int main(int argc, char** argv) {
    const tavo::confreg::Text data = tavo::confreg::read(argc > 1 ? argv[1] : TAVO_SOURCE_DIR "/data/data");
    std::cout << "Gas, dense gas, liquid and supercritical fluid. worst: |P(answer)/P - 1|; Newton: that of the plain "
                 "iteration\n";
    const bool usual = sweep(data, false);
    std::cout << "\nAny temperature (0.05 to 50 Tc) with any pressure (1e-6 to 1e4 Pc)\n";
    const bool extreme = sweep(data, true);
    return usual && extreme ? 0 : 1;
}

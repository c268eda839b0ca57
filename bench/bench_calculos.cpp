// What a user of the calculations window and the laboratory waits for: a full calculation, the unknown alone during a
// drag, the table of all models.

#include <benchmark/benchmark.h>

#include <string>

#include "core/models.h"
#include "windows/calc/calculos_logica.h"

namespace {

using namespace calculos;

constexpr std::int16_t WATER = 19;
/// A vapour not far from saturation, so that there are coexistence, enthalpy and three volumes.
constexpr double T = 373.0, V = 30.0, P = 0.95;

const tavo::confreg::Text& database() {
    static const tavo::confreg::Text data = tavo::confreg::read(TAVO_SOURCE_DIR "/data/data");
    return data;
}

SlotTable loaded(std::int64_t model) {
    SlotTable table;
    choose(database(), table[0], WATER, static_cast<tavo::EquationOfState>(model));
    return table;
}

Variable unknown_of(const benchmark::State& state) {
    return *unknown_of_mode(static_cast<int>(state.range(1)));
}

void label(benchmark::State& state) {
    constexpr std::array NAMES{"", ", P", ", V", ", T"};
    state.SetLabel(std::string(tavo::models()[static_cast<std::size_t>(state.range(0))].name) +
                   NAMES[static_cast<std::size_t>(state.range(1))]);
}

void full_calculation(benchmark::State& state) {
    SlotTable table = loaded(state.range(0));
    const Input input{unknown_of(state), 1.0, T, V, P};
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(solve(database(), table, input));
    label(state);
}
BENCHMARK(full_calculation)->ArgsProduct({benchmark::CreateDenseRange(0, 9, 1), {1, 2, 3}});

void unknown_alone(benchmark::State& state) {
    SlotTable table = loaded(state.range(0));
    const Input input{unknown_of(state), 1.0, T, V, P};
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(solve_unknown(database(), table, input));
    label(state);
}
BENCHMARK(unknown_alone)->ArgsProduct({benchmark::CreateDenseRange(0, 9, 1), {1, 2, 3}});

/// 1, 2, 3: P, V, T unknown; the last pressure is one that Dieterici's model does not reach.
void every_model(benchmark::State& state) {
    const SlotTable table = loaded(7);
    const Input input{unknown_of(state), 1.0, T, V, static_cast<double>(state.range(0))};
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(all_models(database(), table, input));
}
BENCHMARK(every_model)->ArgsProduct({{1, 200}, {1, 2, 3}});

}  // namespace

// Pressures, volume and temperature solves, and a load of a gas.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "core/calcnum.h"
#include "core/gas_database.h"
#include "core/models.h"

namespace {

using namespace tavo;

constexpr std::int16_t CARBON_DIOXIDE = 21;

const confreg::Text& database() {
    static const confreg::Text data = confreg::read(std::filesystem::path(TAVO_SOURCE_DIR) / "data" / "data");
    return data;
}

SlotTable loaded(const benchmark::State& state) {
    SlotTable table;
    table[0].gas_number = CARBON_DIOXIDE;
    table[0].equation = static_cast<EquationOfState>(state.range(0));
    table[0].temperature = 350.0;
    Global::load_slot(database(), table[0], true);
    return table;
}

void label(benchmark::State& state) {
    state.SetLabel(std::string(models()[static_cast<std::size_t>(state.range(0))].name));
}

void pressure_call(benchmark::State& state) {
    const SlotTable table = loaded(state);
    double v = 0.2;
    for (auto _ : state) {
        benchmark::DoNotOptimize(v);
        benchmark::DoNotOptimize(pressure(table[0], v));
    }
    label(state);
}
BENCHMARK(pressure_call)->DenseRange(0, 9);

void newton_volume(benchmark::State& state) {
    const SlotTable table = loaded(state);
    double p = 40.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(calcnum::newton("v", table[0].equation, table, 0, p, 350.0, R * 350.0 / p));
    }
    state.counters["steps"] =
        static_cast<double>(calcnum::newton_trace("v", table[0].equation, table, 0, p, 350.0, R * 350.0 / p).steps);
    label(state);
}
BENCHMARK(newton_volume)->DenseRange(1, 9);

void temperature_solve(benchmark::State& state) {
    const SlotTable table = loaded(state);
    double p = 40.0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(p);
        benchmark::DoNotOptimize(calcnum::temperature(table, 0, 0.6, p));
    }
    label(state);
}
BENCHMARK(temperature_solve)->DenseRange(0, 9);

void load_gas(benchmark::State& state) {
    SlotTable table = loaded(state);
    for (auto _ : state)
        Global::load_slot(database(), table[0], true);
    label(state);
}
BENCHMARK(load_gas)->Arg(1)->Arg(5)->Arg(8);

}  // namespace

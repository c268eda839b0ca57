// Saturation: vapour pressure with both volumes, per model at four reduced temperatures of one gas, over a random mix
// of the database, and the enthalpy of vaporisation.

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "core/calcnum.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace {

using namespace tavo;

const confreg::Text& database() {
    static const confreg::Text text = confreg::read(TAVO_SOURCE_DIR "/data/data");
    return text;
}

EquationSlot loaded(const Model& model, int gas, double reduced_temperature) {
    EquationSlot slot;
    slot.equation = model.number;
    slot.gas_number = static_cast<std::int16_t>(gas);
    Global::load_slot(database(), slot, true);
    slot.temperature = reduced_temperature * slot.gas.tc;
    Global::load_slot(database(), slot, true);
    return slot;
}

void run(benchmark::State& state, const std::vector<EquationSlot>& slots) {
    std::size_t i = 0;
    for ([[maybe_unused]] auto _ : state) {
        benchmark::DoNotOptimize(calcnum::saturation(slots[i], slots[i].temperature));
        i = i + 1 < slots.size() ? i + 1 : 0;
    }
}

/// Coefficients set by hand: no starting point is known, so the pressure is bracketed.
std::vector<EquationSlot> by_hand() {
    std::vector<EquationSlot> slots;
    for (const double c : {0.0015, 0.002, 0.0025}) {
        EquationSlot slot;
        slot.equation = EquationOfState::Virial;
        slot.gas.tc = 1000.0;
        slot.gas.a = 1.0;
        slot.gas.b = -0.12;
        slot.gas.c = c;
        slot.gas.d = 5e-5;
        slots.push_back(slot);
    }
    return slots;
}

void register_model(const Model& model) {
    const std::string name = "saturation/" + std::string(model.name) + "/";
    for (const double tr : {0.35, 0.6, 0.9, 0.999}) {
        benchmark::RegisterBenchmark((name + "Tr " + Format(tr, "0.000")).c_str(),
                                     [&model, tr](benchmark::State& state) { run(state, {loaded(model, 21, tr)}); });
    }
    benchmark::RegisterBenchmark((name + "mix").c_str(), [&model](benchmark::State& state) {
        std::mt19937 random(1);
        std::uniform_int_distribution<int> gas(1, Global::gas_count(database()));
        std::uniform_real_distribution<double> tr(0.3, 0.999);
        std::vector<EquationSlot> slots;
        slots.reserve(1000);
        for (int i = 0; i < 1000; ++i) {
            slots.push_back(loaded(model, gas(random), tr(random)));
        }
        run(state, slots);
    });
}

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    for (const Model& model : models()) {
        if (model.number != EquationOfState::IdealGas) {
            register_model(model);
        }
    }
    benchmark::RegisterBenchmark("saturation/virial/by hand", [](benchmark::State& state) { run(state, by_hand()); });
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

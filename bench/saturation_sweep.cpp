// Sweeps every gas of the database, every real-gas model and many temperatures, and prints the largest residuals of
// each model. Run by hand: saturation_sweep [DATABASE [TEMPERATURES]].

#include <fstream>
#include <iomanip>
#include <iostream>
#include <iterator>

#include "core/models.h"
#include "core/numtext.h"
#include "tests/core/saturation_checks.h"

namespace {

using namespace tavo;
using namespace tavo::testing;

struct Tally {
    int states = 0, empty = 0, unstable = 0, falling = 0;
    double hottest_empty = 0.0, coldest_empty = 2.0;  // T/Tc
    double margin = 1e9;                              // smallest Tc - T of an empty result [K]
    double far_margin = 0.0;                          // largest
    double liquid = 0.0, gas = 0.0, area = 0.0, loop = 0.0;
    double lowest_pressure = 1e300;
};

void add(Tally& tally, const EquationSlot& slot, double t, double& last) {
    const auto state = calcnum::saturation(slot, t);
    if (!state) {
        ++tally.empty;
        tally.hottest_empty = std::max(tally.hottest_empty, t / slot.gas.tc);
        tally.coldest_empty = std::min(tally.coldest_empty, t / slot.gas.tc);
        tally.margin = std::min(tally.margin, slot.gas.tc - t);
        tally.far_margin = std::max(tally.far_margin, slot.gas.tc - t);
        return;
    }
    ++tally.states;
    const Residuals r = residuals(slot, t, *state);
    tally.liquid = std::max(tally.liquid, r.liquid);
    tally.gas = std::max(tally.gas, r.gas);
    tally.area = std::max(tally.area, r.area);
    tally.loop = std::max(tally.loop, r.loop);
    tally.unstable += r.stable ? 0 : 1;
    tally.falling += state->pv > last ? 0 : 1;
    tally.lowest_pressure = std::min(tally.lowest_pressure, state->pv);
    last = state->pv;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : TAVO_SOURCE_DIR "/data/data";
    const int temperatures = argc > 2 ? static_cast<int>(Val(argv[2])) : 200;
    const confreg::Text data = confreg::read(path);
    const int gases = Global::gas_count(data);
    bool sound = true;
    std::cout << gases << " gases, " << temperatures << " temperatures from 0.3 Tc to Tc - 0.00501 K\n"
              << std::left << std::setw(22) << "model" << std::right
              << "  states  empty  liquid     gas        area       loop       unstable falling lowest Pv\n";
    for (const Model& model : models()) {
        if (model.number == EquationOfState::IdealGas) {
            continue;
        }
        Tally tally;
        for (int gas = 1; gas <= gases; ++gas) {
            const double tc = loaded(data, model.number, gas, 300.0).gas.tc;
            double last = 0.0;
            for (int i = 0; i < temperatures; ++i) {
                // Half of the temperatures evenly, half crowding towards the critical one.
                const double even = 0.7 * tc * (1.0 - (i + 0.5) / temperatures);
                const double crowded = 0.00501 * std::pow(0.7 * tc / 0.00501, 1.0 - (i + 1.0) / temperatures);
                const double t = tc - (i < temperatures / 2 ? even : crowded);
                add(tally, loaded(data, model.number, gas, t), t, last);
            }
        }
        std::cout << std::left << std::setw(22) << model.name << std::right << std::setw(8) << tally.states
                  << std::setw(7) << tally.empty << std::scientific << std::setprecision(1) << "  " << tally.liquid
                  << "    " << tally.gas << "    " << tally.area << "    " << tally.loop << std::setw(10)
                  << tally.unstable << std::setw(8) << tally.falling << "  " << tally.lowest_pressure << '\n';
        if (tally.empty > 0) {
            std::cout << "    empty between " << std::defaultfloat << std::setprecision(6) << tally.coldest_empty
                      << " Tc and " << tally.hottest_empty << " Tc, " << tally.margin << " to " << tally.far_margin
                      << " K below it\n";
        }
        sound = sound && tally.unstable == 0 && tally.falling == 0 && tally.area < 1e-12;
    }
    return sound ? 0 : 1;
}

#include "windows/lab/laboratorio_logica.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>

namespace laboratorio {

namespace {

struct Row {
    Variable variable;
    int text;
    Scale scale;
};

/// In the order of Instrument.
constexpr std::array ROWS{
    Row{Variable::Volume, 90, {0.0, 10.0, 0.2, 5}},         Row{Variable::Temperature, 91, {273.16, 373.16, 2.0, 5}},
    Row{Variable::Temperature, 92, {0.0, 1000.0, 20.0, 5}}, Row{Variable::Pressure, 94, {0.0, 2.0, 0.05, 4}},
    Row{Variable::Pressure, 95, {0.0, 500.0, 10.0, 5}},
};

const Row& row(Instrument instrument) {
    return ROWS.at(static_cast<std::size_t>(instrument));
}

double random_part(std::mt19937& source) {
    return static_cast<double>(source()) / 4294967296.0;
}

double distance_squared(const Particle& p, const Particle& q) {
    return (p.x - q.x) * (p.x - q.x) + (p.y - q.y) * (p.y - q.y);
}

/// Mitchell's best candidates (SIGGRAPH 1991): each particle is the one of several random places that lies farthest
/// from those before it. So every beginning of the list is spread evenly, without a pattern.
std::vector<Particle> best_candidates() {
    constexpr int CANDIDATES = 20;
    constexpr double TURN = 6.283185307179586;
    std::mt19937 source(1873);  // the engine's numbers are the same everywhere
    std::vector<Particle> chosen;
    for (int i = 0; i < MOST_PARTICLES; ++i) {
        Particle best{};
        double farthest = -1.0;
        for (int k = 0; k < CANDIDATES; ++k) {
            const double x = random_part(source);
            const double y = random_part(source);
            const Particle candidate{x, y, 0.0, 0.0};
            double nearest = 2.0;
            for (const Particle& other : chosen)
                nearest = std::min(nearest, distance_squared(candidate, other));
            if (nearest > farthest) {
                farthest = nearest;
                best = candidate;
            }
        }
        const double angle = TURN * random_part(source);
        best.dx = std::cos(angle);
        best.dy = std::sin(angle);
        chosen.push_back(best);
    }
    return chosen;
}

}  // namespace

const Scale& scale(Instrument instrument) {
    return row(instrument).scale;
}

Variable variable(Instrument instrument) {
    return row(instrument).variable;
}

int range_text(Instrument instrument) {
    return row(instrument).text;
}

bool inside(Instrument instrument, double value) {
    return graduacion::inside(scale(instrument), value);
}

double pinned(Instrument instrument, double value) {
    return graduacion::pinned(scale(instrument), value);
}

double value_at(Instrument instrument, double y, double height) {
    return pinned(instrument, graduacion::value_at(scale(instrument), y, height));
}

double place_of(Instrument instrument, double value, double height) {
    return graduacion::place_of(scale(instrument), value, height);
}

Variable unknown_after_drag(Instrument dragged, Variable unknown) {
    switch (variable(dragged)) {
        case Variable::Temperature:
            return unknown == Variable::Volume ? Variable::Volume : Variable::Pressure;
        case Variable::Volume:
            return unknown == Variable::Pressure ? Variable::Pressure : Variable::Temperature;
        default:
            return unknown == Variable::Volume ? Variable::Volume : Variable::Temperature;
    }
}

const Limits& limits(Variable variable) {
    static constexpr std::array LIMITS{
        Limits{0.0, 1000.0, 77, 78},
        Limits{0.0, 1000.0, 79, 80},
        Limits{0.0, 2000.0, 81, 82},
        Limits{0.0, 1000.0, 83, 84},
    };
    return LIMITS.at(static_cast<std::size_t>(variable));
}

std::optional<Refusal> refusal(Variable variable, double shown, std::string_view unit) {
    const Limits& given = limits(variable);
    const double least = calculos::minimum(variable, unit);
    if (shown <= least)
        return Refusal{given.below, least};
    // Amounts are limited in whatever unit they are shown, the others by the same state in every unit.
    const double most =
        variable == Variable::Amount ? given.maximum : calculos::from_base(variable, given.maximum, unit, {});
    if (shown > most)
        return Refusal{given.above, most};
    return {};
}

std::vector<Tick> ticks(Instrument instrument) {
    return ticks(scale(instrument));
}

std::vector<Particle> particles(int count) {
    static const std::vector<Particle> all = best_candidates();
    return {all.begin(), all.begin() + std::clamp(count, 0, MOST_PARTICLES)};
}

int particle_count(double moles) {
    // Logarithmic, so that a tenth of a mole and the greatest amount of the entry both say something.
    constexpr double SPREAD = 4.0;
    if (!(moles > 0.0))
        return 0;
    const double most = limits(Variable::Amount).maximum;
    const double part = std::log1p(SPREAD * std::min(moles, most)) / std::log1p(SPREAD * most);
    return static_cast<int>(std::ceil(MOST_PARTICLES * part));
}

double trail(double kelvin) {
    return kelvin > 0.0 ? std::sqrt(kelvin / 300.0) : 0.0;
}

}  // namespace laboratorio

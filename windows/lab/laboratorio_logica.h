#pragma once
// The laboratory's instruments without their drawing: scales, graduations, what a drag makes the unknown, where the
// particles stand. Standard library only; litres, kelvin and atm.

#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "controls/graduacion.h"
#include "windows/calc/calculos_logica.h"

namespace laboratorio {

using calculos::Variable;
using graduacion::Scale;
using graduacion::Tick;
using graduacion::ticks;

enum class Instrument { Piston, Thermometer, Thermocouple, Barometer, Manometer };

const Scale& scale(Instrument instrument);
Variable variable(Instrument instrument);
/// Language string that says that the value is outside the scale: 90, 91, 92, 94, 95.
int range_text(Instrument instrument);

bool inside(Instrument instrument, double value);  // limits included
double pinned(Instrument instrument, double value);

/// Value at a height y (0 .. height, clamped) below the top of the instrument's surface, and back.
double value_at(Instrument instrument, double y, double height);
double place_of(Instrument instrument, double value, double height);

/// The unknown after an instrument was dragged.
Variable unknown_after_drag(Instrument dragged, Variable unknown);

/// What the entries accept: above `minimum`, up to `maximum` (K, l, atm; amounts in the unit shown).
struct Limits {
    double minimum, maximum;
    int below, above;  // language strings 77 to 84
};
const Limits& limits(Variable variable);

/// Why an entry is refused: the language string, and the limit in the unit shown.
struct Refusal {
    int text;
    double limit;
};
/// Empty for a value, in the unit shown, that is above the least and not above the greatest.
std::optional<Refusal> refusal(Variable variable, double shown, std::string_view unit);

std::vector<Tick> ticks(Instrument instrument);

/// A particle in the unit square of the gas space (y from the bottom), with the direction of its motion.
struct Particle {
    double x, y;
    double dx, dy;  // a unit vector
};
/// Fixed places and directions: the first k of more particles stay where they were.
std::vector<Particle> particles(int count);
/// How many particles hint at an amount, between 0 and MOST_PARTICLES.
inline constexpr int MOST_PARTICLES = 240;
int particle_count(double moles);
/// Length of a particle's trail in units of that at 300 K: sqrt(T/300), like the mean speed.
double trail(double kelvin);

}  // namespace laboratorio

#pragma once
// Five thermometric scales: conversions, and the thermometers' scales. Standard library only.

#include <array>
#include <string_view>

#include "controls/graduacion.h"

namespace termometria {

inline constexpr int SCALES = 5;
enum Index { CELSIUS, KELVIN, FAHRENHEIT, RANKINE, REAUMUR };
inline constexpr std::array<std::string_view, SCALES> UNITS{"ºC", "ºK", "ºF", "ºR", "ºRe"};
inline constexpr std::string_view FORMAT = "###0.00";
using Values = std::array<double, SCALES>;

/// A temperature of one scale on another, by the program's rules for the units of temperature: their constants do not
/// agree to the last digit (273 and 273.16, 460 and 459.4). 0 for an index outside 0 to 4.
double convert(int from, int to, double t);
/// On all scales.
Values convert_to_all(int from, double t);

/// The thermometer of a scale, -50 ºC to 110 ºC: 180 degrees Fahrenheit or Rankine, 100 Celsius or kelvin, 80 Réaumur
/// are as high, and by the way over Celsius the same height is the same temperature. A tick each degree.
graduacion::Scale scale(int index);

/// Temperatures that everybody knows, in ºC, and the one that two scales share.
struct Mark {
    double celsius;
    int text;  // language string; 0: the literal serves everywhere
    std::string_view literal;
};
inline constexpr std::array MARKS{
    Mark{100.0, 782, "Ebullición del agua"},
    Mark{37.0, 784, "Cuerpo humano"},
    Mark{0.0, 783, "Fusión del hielo"},
    Mark{-40.0, 0, "ºC = ºF"},
};

/// What the entry of a scale says: a number; none for a text that does not begin with one, or that some scale cannot
/// hold.
bool is_temperature(int scale, std::string_view text);

/// Whether the kelvin shown, with two decimals, is below 0.
bool below_absolute_zero(const Values& values);

}  // namespace termometria

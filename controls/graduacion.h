#pragma once
// Graduated scales of drawn instruments. Standard library only.

#include <vector>

namespace graduacion {

struct Scale {
    double minimum, maximum;
    double graduation;  // between two ticks: an arrow key's step
    int numbered;       // every so many ticks carry a number
};

bool inside(const Scale& scale, double value);  // limits included
double pinned(const Scale& scale, double value);

/// A surface whose top is the scale's maximum and whose height is minimum - maximum: value at a height y below the top,
/// beyond the surface beyond the scale; and the place of a value, pinned to the surface. A surface without height shows
/// the minimum.
double value_at(const Scale& scale, double y, double height);
double place_of(const Scale& scale, double value, double height);

struct Tick {
    double value;
    bool numbered;
};
std::vector<Tick> ticks(const Scale& scale);  // multiples of the graduation, limits included

}  // namespace graduacion

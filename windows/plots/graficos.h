#pragma once
// What a plot of isotherms consists of, without a screen: ranges, curves, tie lines, ticks, the place of the legend.
// Total volumes in l, pressures in atm.

#include <array>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/plot_range.h"
#include "core/slots.h"

namespace graficos {

using tavo::EquationSlot;
using tavo::PlotRange;
using tavo::SlotTable;

/// A point of the P-V plane, or of the sheet in pixels.
struct Point {
    double x, y;

    friend bool operator==(const Point&, const Point&) = default;
};

// ---- Ranges

/// Language string of the first thing wrong with a range.
enum class RangeFault { None = 0, NoHeight = 162, NoWidth = 164, TooHigh = 165, TooWide = 166 };

/// Tests in this order: no height, no width, pressures more than 1e8 apart, volumes more than 1e8 apart. An inverted
/// range passes.
RangeFault check(const PlotRange& range);

/// Range between two corners of a rectangle, in whatever order they come.
PlotRange between(Point a, Point b);

/// Range enlarged (factor > 1) or shrunk about a point that keeps its place.
PlotRange scaled(const PlotRange& range, Point about, double factor);

struct PressureRange {
    double min, max;
};

/// Pressures that a picture of the slot between two volumes should show: the loop with its tie line and the gas
/// branch. The spike is left out: what lies left of the saturated liquid, without a loop what lies left of three
/// co-volumes and of a 25th of the larger volume. Volumes inside the
/// co-volume are never looked at. Empty where the slot shows nothing there.
std::optional<PressureRange> pressure_range(const EquationSlot& slot, double v1, double v2);

/// The smallest range around [min, max] whose tenths are multiples of 1, 2, 2.5 or 5 times a power of ten.
PressureRange readable(PressureRange range);

/// Pressure range of a first plot: smallest and largest over the active slots, made readable; 0 to 100 atm where
/// nothing is to be shown.
PressureRange default_pressure_range(const SlotTable& table, double v1, double v2);

/// Widens the pressures of `range` to readable tenths where the slot's isotherm over the range's volumes does not fit;
/// never narrows them.
void widen(const EquationSlot& slot, PlotRange& range);

// ---- Curves

/// Number of straight pieces of every isotherm.
inline constexpr int SEGMENTS = 100;

/// Volume that the slot's molecules take up [l]; at and below it a curve is not shown. n b; n b/4 for
/// Dieterici-Sadus, 0 for the ideal gas.
double excluded_volume(const EquationSlot& slot);

/// Ends of the two-phase stretch [l] and the vapour pressure [atm]; 0, 0 and -1 without one.
struct Bounds {
    double lower = 0.0, upper = 0.0, pv = -1.0;

    bool tie_line() const { return pv >= 0.0; }
};

/// At the slot's temperature. None for coefficients set by hand.
Bounds two_phase_bounds(const EquationSlot& slot);

struct Segment {
    Point from, to;
    bool visible;  // false: in the colour of the sheet
    bool dotted;   // inside the two-phase stretch
    bool defined;  // false: a pressure at one of its ends is not a finite number
};

/// Isotherm from v1 to v2 in exactly SEGMENTS pieces.
std::vector<Segment> isotherm(const EquationSlot& slot, double v1, double v2, const Bounds& bounds);

/// Part of a straight line inside a range, or empty.
std::optional<std::array<Point, 2>> clip(Point a, Point b, const PlotRange& range);

/// A run of connected segments of one look, clipped.
struct Stroke {
    bool dotted;
    std::vector<Point> points;
};

/// Longest polyline that is drawn in one piece; longer ones are slow.
inline constexpr std::size_t LONGEST_STROKE = 64;

std::vector<Stroke> strokes(std::span<const Segment> segments, const PlotRange& range);

/// Where a curve carries its line marks: flat parts every `spacing` in x, steep parts every `spacing` in y, from
/// `phase` on. Curves of different phases then keep their marks apart where they run together. `last` is the mark
/// before, of which the next one stays clear; it serves from one polyline of a curve to the next.
std::vector<Point> marks(std::span<const Point> line, double spacing, double phase, std::optional<Point>& last);

// ---- Axes

struct Ticks {
    double step;                 // 1, 2 or 5 times a power of ten
    std::vector<double> values;  // multiples of the step inside the range, ascending
};

/// At most `most` intervals (2 or more) of readable length over a range, inverted or not.
Ticks ticks(double from, double to, int most);

/// A multiple of the step in as few digits as tell it from its neighbours.
std::string tick_text(double value, double step);

// ---- The scene

/// One isotherm as it is drawn.
struct Curve {
    int row;                  // 1 to 5: chooses the mark
    int colour;               // index into the palette
    std::string description;  // for the legend
    Bounds bounds;
    std::vector<Segment> segments;
    bool complete;  // false: pressures of some points could not be computed
};

/// Everything that is on the sheet.
struct Escena {
    PlotRange range;
    std::array<std::string, 4> end_labels;  // volume and pressure at the origin, greatest volume, greatest pressure
    std::vector<Curve> curves;
};

/// Axes without curves.
Escena empty_scene(const PlotRange& range);

/// Active slots 1 to 5 that can be drawn; `descriptions` holds a legend text for each of the five.
Escena scene(const SlotTable& table, const PlotRange& range, const std::array<std::string, 5>& descriptions);

/// Why an active slot is left out of every plot.
enum class Obstacle { None, NoGas, NoCoefficients, NoAmount };

/// A model of a real gas needs a gas, and one that could be loaded; every model needs an amount above 0.
Obstacle obstacle(const EquationSlot& slot);

/// "CO2 (dióxido de carbono), PENG-ROBINSON, 260 K, 1 mol".
std::string describe(const EquationSlot& slot, std::string_view model_caption);

/// A description without the words in brackets of the gas's name: "CO2, PENG-ROBINSON, 260 K, 1 mol".
std::string abbreviated(const std::string& description);

struct Rectangle {
    double x, y, width, height;
};

struct Placement {
    Rectangle place;
    double hidden;  // length of the lines that run through it
};

/// Where a legend of this size hides as little as possible of the lines: the first free place from the top right
/// corner on, else the one that covers the shortest length of them, so that a loop counts for more than a flat branch.
/// All in pixels; `margin` keeps it off the edges.
Placement place_legend(double width, double height, const Rectangle& area, std::span<const std::vector<Point>> lines,
                       double margin);

}  // namespace graficos

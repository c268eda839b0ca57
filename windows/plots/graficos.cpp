#include "windows/plots/graficos.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "core/calcnum.h"
#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"

namespace graficos {

using tavo::EquationOfState;

namespace {

constexpr double WIDEST = 1e8;           // greatest span of an axis
constexpr double PRESSURE_LIMIT = 4e7;   // keeps automatic ranges inside WIDEST
constexpr double SPIKE_COVOLUMES = 3.0;  // the critical volume of van der Waals
constexpr double SPIKE_FRACTION = 1.0 / 25.0;
constexpr double HEADROOM = 0.1;  // above the loop, to see the liquid branch rise

std::optional<double> pressure_at(const EquationSlot& slot, double v) {
    try {
        return tavo::pressure(slot, v);
    } catch (const tavo::FloatingPointError&) {
        return std::nullopt;
    }
}

std::optional<tavo::calcnum::Saturation> saturation_of(const EquationSlot& slot) {
    if (slot.parameters || slot.equation == EquationOfState::IdealGas)
        return std::nullopt;
    try {
        return tavo::calcnum::saturation(slot, slot.temperature);
    } catch (const tavo::FloatingPointError&) {
        return std::nullopt;
    }
}

std::optional<tavo::calcnum::Spinodals> spinodals_of(const EquationSlot& slot) {
    if (slot.equation == EquationOfState::IdealGas)
        return std::nullopt;
    try {
        return tavo::calcnum::spinodals(slot, slot.temperature);
    } catch (const tavo::FloatingPointError&) {
        return std::nullopt;
    }
}

/// Smallest and largest of the pressures put in.
class Extent {
public:
    void add(double p) {
        min_ = std::min(min_, std::clamp(p, -PRESSURE_LIMIT, PRESSURE_LIMIT));
        max_ = std::max(max_, std::clamp(p, -PRESSURE_LIMIT, PRESSURE_LIMIT));
    }
    void add(const EquationSlot& slot, double v) {
        if (const auto p = pressure_at(slot, v))
            add(*p);
    }
    std::optional<PressureRange> range() const {
        if (min_ > max_)
            return std::nullopt;
        return PressureRange{min_, max_};
    }

private:
    double min_ = std::numeric_limits<double>::infinity();
    double max_ = -std::numeric_limits<double>::infinity();
};

/// The two-phase stretch that a picture should show: between the saturated volumes, or between the extremes of the
/// loop where there are no saturated volumes.
struct Loop {
    double left, right;  // l
    std::optional<double> pv;
    std::optional<tavo::calcnum::Spinodals> extremes;
};

std::optional<Loop> loop_of(const EquationSlot& slot) {
    const auto extremes = spinodals_of(slot);
    if (const auto state = saturation_of(slot))
        return Loop{state->vl * slot.moles, state->vg * slot.moles, state->pv, extremes};
    if (extremes)
        return Loop{extremes->liquid * slot.moles, extremes->gas * slot.moles, std::nullopt, extremes};
    return std::nullopt;
}

void add_loop(Extent& extent, const EquationSlot& slot, const Loop& loop, double low, double high) {
    if (loop.pv && loop.left < high)
        extent.add(*loop.pv);
    if (!loop.extremes)
        return;
    for (const double v : {loop.extremes->liquid * slot.moles, loop.extremes->gas * slot.moles})
        if (v > low && v < high)
            extent.add(slot, v);
}

bool drawn(const EquationSlot& slot) {
    return slot.active && obstacle(slot) == Obstacle::None;
}

/// Left end of what is worth showing of a curve without a loop, up to the volume `high`.
double spike_end(const EquationSlot& slot, double high) {
    return std::max(SPIKE_COVOLUMES * excluded_volume(slot), high * SPIKE_FRACTION);
}

}  // namespace

// ---- Ranges

RangeFault check(const PlotRange& range) {
    const double height = std::abs(range.pmin - range.pmax);
    const double width = std::abs(range.vmin - range.vmax);
    if (height == 0.0)
        return RangeFault::NoHeight;
    if (width == 0.0)
        return RangeFault::NoWidth;
    if (!(height <= WIDEST))
        return RangeFault::TooHigh;
    if (!(width <= WIDEST))
        return RangeFault::TooWide;
    return RangeFault::None;
}

PlotRange between(Point a, Point b) {
    return {std::min(a.x, b.x), std::min(a.y, b.y), std::max(a.x, b.x), std::max(a.y, b.y)};
}

PlotRange scaled(const PlotRange& range, Point about, double factor) {
    const auto move = [factor](double bound, double centre) { return centre + (bound - centre) * factor; };
    return {move(range.vmin, about.x), move(range.pmin, about.y), move(range.vmax, about.x), move(range.pmax, about.y)};
}

std::optional<PressureRange> pressure_range(const EquationSlot& slot, double v1, double v2) {
    const double low = std::min(v1, v2);
    const double high = std::max(v1, v2);
    const double outside = std::max({low, excluded_volume(slot), 0.0});
    if (!(slot.moles > 0.0) || outside >= high)
        return std::nullopt;

    Extent extent;
    const double step = (high - low) / SEGMENTS;
    auto loop = loop_of(slot);
    if (loop && loop->right < low + 2.0 * step && low < loop->left)
        loop.reset();  // too narrow to be seen: the gas branch is the picture
    double start = loop ? loop->left : spike_end(slot, high);
    if (start >= high)
        start = 0.5 * (outside + high);
    start = std::max(start, outside);
    if (loop)
        add_loop(extent, slot, *loop, low, high);
    for (int k = 0; k <= SEGMENTS; ++k)
        extent.add(slot, start + (high - start) * k / SEGMENTS);

    auto result = extent.range();
    if (result && loop)
        result->max += HEADROOM * (result->max - result->min);
    return result;
}

PressureRange readable(PressureRange range) {
    auto [min, max] = range;
    if (min > 0.0 && min < 0.5 * max)
        min = 0.0;
    if (!(max > min))
        max = min + std::max(1.0, std::abs(min));
    const double decade = std::pow(10.0, std::floor(std::log10((max - min) / 10.0)));
    for (const double mantissa : {1.0, 2.0, 2.5, 5.0, 10.0, 20.0}) {
        const double step = mantissa * decade;
        const double bottom = std::floor(min / step) * step;
        if (bottom + 10.0 * step >= max)
            return {bottom, bottom + 10.0 * step};
    }
    return {min, max};
}

PressureRange default_pressure_range(const SlotTable& table, double v1, double v2) {
    Extent extent;
    for (int i = 1; i < SlotTable::size; ++i) {
        if (!drawn(table[i]))
            continue;
        if (const auto range = pressure_range(table[i], v1, v2)) {
            extent.add(range->min);
            extent.add(range->max);
        }
    }
    return readable(extent.range().value_or(PressureRange{0.0, 100.0}));
}

void widen(const EquationSlot& slot, PlotRange& range) {
    if (!drawn(slot))
        return;
    const auto own = pressure_range(slot, range.vmin, range.vmax);
    if (!own || (own->min >= range.pmin && own->max <= range.pmax))
        return;
    const PressureRange both = readable({std::min(own->min, range.pmin), std::max(own->max, range.pmax)});
    range.pmin = both.min;
    range.pmax = both.max;
}

// ---- Curves

double excluded_volume(const EquationSlot& slot) {
    switch (slot.equation) {
        case EquationOfState::IdealGas:
            return 0.0;  // its record may hold the coefficients of the model before
        case EquationOfState::DietericiSadus:
            return slot.moles * slot.gas.b / 4.0;
        default:
            return slot.moles * slot.gas.b;
    }
}

Bounds two_phase_bounds(const EquationSlot& slot) {
    const auto state = saturation_of(slot);
    if (!state)
        return {};
    return {state->vl * slot.moles, state->vg * slot.moles, state->pv};
}

std::vector<Segment> isotherm(const EquationSlot& slot, double v1, double v2, const Bounds& bounds) {
    std::vector<Segment> segments;
    segments.reserve(SEGMENTS);
    const double covolume = excluded_volume(slot);
    const double step = (v2 - v1) / SEGMENTS;
    double v = v1;
    auto p = pressure_at(slot, v);
    for (int k = 1; k <= SEGMENTS; ++k) {
        const double next_v = v1 + k * step;
        const auto next_p = pressure_at(slot, next_v);
        const bool solid = v <= bounds.lower || next_v >= bounds.upper;
        segments.push_back({{v, p.value_or(0.0)}, {next_v, next_p.value_or(0.0)}, covolume < v, !solid, p && next_p});
        v = next_v;
        p = next_p;
    }
    return segments;
}

std::optional<std::array<Point, 2>> clip(Point a, Point b, const PlotRange& range) {
    const auto [left, right] = std::minmax(range.vmin, range.vmax);
    const auto [bottom, top] = std::minmax(range.pmin, range.pmax);
    // Liang and Barsky: the parameters at which the line enters and leaves, edge by edge. The end on an edge is put
    // exactly there: next to a pole of the pressure its parameter has no digits left for it.
    struct End {
        double t;
        Point exact;
    };
    constexpr double FREE = std::numeric_limits<double>::quiet_NaN();
    End enter{0.0, {FREE, FREE}}, leave{1.0, {FREE, FREE}};
    const double dx = b.x - a.x, dy = b.y - a.y;
    struct Edge {
        double direction, distance;
        Point exact;
    };
    const std::array<Edge, 4> edges{{{-dx, a.x - left, {left, FREE}},
                                     {dx, right - a.x, {right, FREE}},
                                     {-dy, a.y - bottom, {FREE, bottom}},
                                     {dy, top - a.y, {FREE, top}}}};
    for (const Edge& edge : edges) {
        if (edge.direction == 0.0) {
            if (edge.distance < 0.0)
                return std::nullopt;
            continue;
        }
        const double t = edge.distance / edge.direction;
        if (edge.direction < 0.0 && t > enter.t)
            enter = {t, edge.exact};
        if (edge.direction > 0.0 && t < leave.t)
            leave = {t, edge.exact};
    }
    if (enter.t > leave.t)
        return std::nullopt;
    const auto at = [&](const End& end, Point whole) {
        if (end.t == 0.0 || (end.t == 1.0 && std::isnan(end.exact.x) && std::isnan(end.exact.y)))
            return whole;
        return Point{std::isnan(end.exact.x) ? a.x + end.t * dx : end.exact.x,
                     std::isnan(end.exact.y) ? a.y + end.t * dy : end.exact.y};
    };
    return std::array<Point, 2>{at(enter, a), at(leave, b)};
}

std::vector<Stroke> strokes(std::span<const Segment> segments, const PlotRange& range) {
    std::vector<Stroke> result;
    for (const Segment& s : segments) {
        if (!s.visible || !s.defined)
            continue;
        const auto piece = clip(s.from, s.to, range);
        if (!piece)
            continue;
        const bool continues = !result.empty() && result.back().dotted == s.dotted &&
                               result.back().points.back() == piece->front() &&
                               result.back().points.size() <= LONGEST_STROKE;
        if (!continues)
            result.push_back({s.dotted, {piece->front()}});
        result.back().points.push_back(piece->back());
    }
    return result;
}

std::vector<Point> marks(std::span<const Point> line, double spacing, double phase, std::optional<Point>& last) {
    std::vector<Point> result;
    const auto try_at = [&](Point p) {
        if (last && std::hypot(p.x - last->x, p.y - last->y) < 0.5 * spacing)
            return;
        result.push_back(p);
        last = p;
    };
    for (std::size_t i = 1; i < line.size(); ++i) {
        const Point a = line[i - 1], b = line[i];
        const bool flat = std::abs(b.x - a.x) >= std::abs(b.y - a.y);
        const double from = ((flat ? a.x : a.y) - phase) / spacing, to = ((flat ? b.x : b.y) - phase) / spacing;
        if (from == to)
            continue;
        const auto at = [&](double k) {
            const double t = (k - from) / (to - from);
            try_at({a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)});
        };
        const int direction = from < to ? 1 : -1;
        const double first = from < to ? std::ceil(from) : std::floor(from);
        const int count = static_cast<int>(std::ceil(std::abs(to - first)));  // `to` belongs to the next piece
        for (int j = 0; j < count && (to - first) * direction > 0.0; ++j)
            at(first + j * direction);
    }
    return result;
}

// ---- Axes

Ticks ticks(double from, double to, int most) {
    const auto [low, high] = std::minmax(from, to);
    const double least = (high - low) / most;
    const double decade = std::pow(10.0, std::floor(std::log10(least)));
    double step = 10.0 * decade;
    for (const double mantissa : {5.0, 2.0, 1.0})
        if (mantissa * decade >= least * (1.0 - 1e-9))
            step = mantissa * decade;
    Ticks result{step, {}};
    const double slack = 1e-9 * step;
    const double first = std::ceil((low - slack) / step);
    const double last = std::floor((high + slack) / step);
    // Far from zero a narrow range runs out of digits: then the multiples are no numbers of their own any more.
    if (!(std::abs(first) < 1e15 && std::abs(last) < 1e15))
        return result;
    const int count = static_cast<int>(last - first) + 1;
    for (int k = 0; k < count; ++k)
        result.values.push_back((first + k) * step);
    return result;
}

std::string tick_text(double value, double step) {
    const double digits = std::floor(std::log10(step) + 1e-9);
    if (digits < -6.0 || digits > 6.0) {
        const double unit = std::pow(10.0, digits);
        return tavo::to_text(std::round(value / unit) * unit);
    }
    std::string pattern = "0";
    if (digits < 0.0)
        pattern += "." + std::string(static_cast<std::size_t>(-digits), '0');
    return tavo::Format(value, pattern);
}

// ---- The scene

Escena empty_scene(const PlotRange& range) {
    const auto text = [](double x) { return tavo::Format(x, "####0.00"); };
    return {range, {text(range.vmin), text(range.pmin), text(range.vmax), text(range.pmax)}, {}};
}

Escena scene(const SlotTable& table, const PlotRange& range, const std::array<std::string, 5>& descriptions) {
    Escena result = empty_scene(range);
    for (int i = 1; i < SlotTable::size; ++i) {
        const EquationSlot& slot = table[i];
        if (!drawn(slot))
            continue;
        const Bounds bounds = two_phase_bounds(slot);
        auto segments = isotherm(slot, range.vmin, range.vmax, bounds);
        const bool complete = std::ranges::all_of(segments, &Segment::defined);
        result.curves.push_back(
            {i, slot.colour, descriptions[static_cast<std::size_t>(i - 1)], bounds, std::move(segments), complete});
    }
    return result;
}

Obstacle obstacle(const EquationSlot& slot) {
    const tavo::GasRecord& gas = slot.gas;
    const bool real = slot.equation != EquationOfState::IdealGas;
    if (real && slot.gas_number < 1)
        return Obstacle::NoGas;
    if (real && gas.a == 0.0 && gas.b == 0.0 && gas.c == 0.0 && gas.d == 0.0)
        return Obstacle::NoCoefficients;
    return slot.moles > 0.0 ? Obstacle::None : Obstacle::NoAmount;
}

std::string describe(const EquationSlot& slot, std::string_view model_caption) {
    std::string text = slot.gas_number > 0 ? slot.gas.name + ", " : std::string();
    text.append(model_caption);
    text +=
        ", " + tavo::to_text(slot.temperature) + " K, " + tavo::to_text(std::round(slot.moles * 1e4) / 1e4) + " mol";
    return text;
}

std::string abbreviated(const std::string& description) {
    const auto name_end = description.find(", ");
    const auto bracket = description.find(" (");
    if (name_end == std::string::npos || bracket >= name_end)
        return description;
    return description.substr(0, bracket) + description.substr(name_end);
}

namespace {

/// Length of the lines inside a rectangle, counted until it reaches `give_up`.
double length_inside(const Rectangle& r, std::span<const std::vector<Point>> lines, double give_up) {
    const PlotRange window{r.x, r.y, r.x + r.width, r.y + r.height};
    double length = 0.0;
    for (const auto& line : lines)
        for (std::size_t i = 1; i < line.size() && length < give_up; ++i)
            if (const auto part = clip(line[i - 1], line[i], window))
                length += std::hypot((*part)[1].x - (*part)[0].x, (*part)[1].y - (*part)[0].y);
    return length;
}

}  // namespace

Placement place_legend(double width, double height, const Rectangle& area, std::span<const std::vector<Point>> lines,
                       double margin) {
    constexpr int ROWS = 8, COLUMNS = 8;
    const double free_x = std::max(0.0, area.width - width - 2.0 * margin);
    const double free_y = std::max(0.0, area.height - height - 2.0 * margin);
    Placement best{{area.x + margin + free_x, area.y + margin, width, height}, std::numeric_limits<double>::infinity()};
    for (int row = 0; row <= ROWS; ++row) {
        for (int column = COLUMNS; column >= 0; --column) {
            const Rectangle place{area.x + margin + free_x * column / COLUMNS, area.y + margin + free_y * row / ROWS,
                                  width, height};
            const Rectangle guarded{place.x - margin, place.y - margin, width + 2.0 * margin, height + 2.0 * margin};
            const double hidden = length_inside(guarded, lines, best.hidden);
            if (hidden < best.hidden)
                best = {place, hidden};
            if (best.hidden == 0.0)
                return best;
        }
    }
    return best;
}

}  // namespace graficos

#include "windows/plots/graficos.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <tuple>

#include "core/calcnum.h"
#include "tests/support/slots.h"

namespace {

using namespace graficos;
using tavo::EquationOfState;
using enum tavo::EquationOfState;

constexpr double TC = 304.13, PC = 72.8, W = 0.2239;  // CO2

EquationSlot co2(EquationOfState model, double t, double n = 1.0) {
    EquationSlot slot = tavo::testing::slot_of(model, {0, 0, 0, 0, 1.5}, t, n);
    slot.active = true;
    slot.gas_number = 1;
    slot.gas.name = "CO2";
    slot.gas.tc = TC;
    slot.gas.pc = PC;
    tavo::testing::derive_slot(slot, W);
    return slot;
}
EquationSlot co2(double t, double n = 1.0) {
    return co2(PengRobinson, t, n);
}

EquationSlot ideal(double t = 300.0, double n = 1.0) {
    EquationSlot slot = tavo::testing::slot_of(IdealGas, {0, 0, 0, 0, 1.5}, t, n);
    slot.active = true;
    return slot;
}

/// Whether the pressures at some volumes fit into a range.
void expect_inside(const PressureRange& range, const EquationSlot& slot, const std::vector<double>& volumes) {
    for (const double v : volumes) {
        EXPECT_LE(range.min, tavo::pressure(slot, v)) << v;
        EXPECT_GE(range.max, tavo::pressure(slot, v)) << v;
    }
}

TEST(Range, IsCheckedInTheStatedOrder) {
    const std::vector<std::pair<PlotRange, RangeFault>> rows{
        {{0, 0, 5, 100}, RangeFault::None},
        {{5, 100, 0, -100}, RangeFault::None},  // inverted
        {{0, 0, 1e8, 1e8}, RangeFault::None},   // exactly the greatest span
        {{2, 7, 2, 7}, RangeFault::NoHeight},   // both: pressures first
        {{2, 7, 2, 8}, RangeFault::NoWidth},
        {{2, 0, 2, 2e8}, RangeFault::NoWidth},    // before the span of the pressures
        {{0, 0, 2e8, 2e8}, RangeFault::TooHigh},  // before the span of the volumes
        {{0, 0, 2e8, 1}, RangeFault::TooWide},
        {{0, -6e7, 1, 6e7}, RangeFault::TooHigh},
        {{0, 0, 1, 1.7976931348623157e308}, RangeFault::TooHigh},
    };
    for (const auto& [range, fault] : rows)
        EXPECT_EQ(check(range), fault) << range.vmin << " " << range.vmax;
    EXPECT_EQ(static_cast<int>(RangeFault::NoHeight), 162);
    EXPECT_EQ(static_cast<int>(RangeFault::TooWide), 166);
}

TEST(Range, OfADraggedRectangleAndOfAScaledOne) {
    for (const auto& [a, b] : {std::pair{Point{1, -5}, Point{3, 8}}, {{3, 8}, {1, -5}}, {{1, 8}, {3, -5}}})
        EXPECT_EQ(between(a, b), (PlotRange{1, -5, 3, 8}));
    EXPECT_EQ(scaled({0, -10, 4, 30}, {1, 0}, 0.5), (PlotRange{0.5, -5, 2.5, 15})) << "the centre stays";
}

TEST(Range, ReadableDividesIntoTenRoundSteps) {
    for (const auto& [min, max] : std::vector<std::pair<double, double>>{
             {-74.5, 161.4}, {0, 123}, {3, 4}, {-1e-3, 2e-3}, {-39999999, 1}, {5, 5}, {0, 0}, {-3, -3}, {99, 1e6}}) {
        const PressureRange r = readable({min, max});
        EXPECT_LE(r.min, min);
        EXPECT_GE(r.max, max);
        EXPECT_LT(r.min, r.max);
        const double mantissa = std::fmod(std::log10((r.max - r.min) / 10.0) + 20.0, 1.0);
        EXPECT_TRUE(std::ranges::any_of(std::array{1.0, 2.0, 2.5, 5.0, 10.0},
                                        [=](double m) { return std::abs(mantissa - std::log10(m)) < 1e-6; }))
            << min << " " << max << " to " << r.min << " " << r.max;
        if (max > min) {
            EXPECT_LE(r.max - r.min, 3.0 * (max - std::min(min, 0.0))) << min << " " << max;
        }
    }
}

TEST(PressureRange, ShowsTheWholeLoopTheTieLineAndTheGasBranchButNoSpike) {
    for (const auto model : {VanDerWaals, PengRobinson, Soave, RedlichKwong, Dieterici, DietericiSadus}) {
        for (const double t : {220.0, 260.0, 290.0}) {
            const EquationSlot slot = co2(model, t);
            const auto state = tavo::calcnum::saturation(slot, t);
            const auto extremes = tavo::calcnum::spinodals(slot, t);
            ASSERT_TRUE(state && extremes);
            const auto range = pressure_range(slot, 0.0, 5.0);
            ASSERT_TRUE(range);
            expect_inside(*range, slot, {extremes->liquid, extremes->gas, state->vl, state->vg, 5.0});
            // The loop fills most of the height: nothing of the spike has been taken in.
            const double loop = tavo::pressure(slot, extremes->gas) - tavo::pressure(slot, extremes->liquid);
            const double useful = std::max(loop, tavo::pressure(slot, extremes->gas));
            EXPECT_LT(range->max - range->min, 1.5 * useful) << static_cast<int>(model) << " at " << t;
        }
    }
}

TEST(PressureRange, NeverDependsOnVolumesInsideTheCovolume) {
    const EquationSlot slot = co2(260.0, 2.0);
    const double covolume = excluded_volume(slot);
    const auto whole = pressure_range(slot, 0.0, 5.0);
    ASSERT_TRUE(whole);
    for (const double from : {-1.0, 0.5 * covolume, covolume}) {
        const auto part = pressure_range(slot, from, 5.0);
        ASSERT_TRUE(part);
        EXPECT_DOUBLE_EQ(part->min, whole->min);
        EXPECT_DOUBLE_EQ(part->max, whole->max);
    }
    EXPECT_FALSE(pressure_range(slot, 0.0, covolume));
    EXPECT_FALSE(pressure_range(co2(260.0, 0.0), 0.0, 5.0));
}

TEST(PressureRange, LooksAtTheBranchThatTheVolumesShow) {
    // Supercritical: not the spike, which is a thin line at the left of a wide range and broad in a dense gas.
    for (const double n : {1.0, 10.0}) {
        const EquationSlot hot = co2(340.0, n);
        const PressureRange range = pressure_range(hot, 0.0, 5.0).value();
        EXPECT_NEAR(range.max, tavo::pressure(hot, std::max(3.0 * n * hot.gas.b, 0.2)), 1e-9);
        EXPECT_NEAR(range.min, tavo::pressure(hot, 5.0), 1e-9);
    }

    // A trace of gas: the loop is narrower than the first step, the hyperbola is the picture.
    const PressureRange thin = pressure_range(co2(260.0, 0.001), 0.0, 5.0).value();
    EXPECT_GT(thin.min, 0.0);
    EXPECT_LT(thin.max, 1.0);

    // Nothing but compressed liquid in sight.
    const EquationSlot dense = co2(260.0, 100.0);
    const double vl = tavo::calcnum::saturation(dense, 260.0)->vl * 100.0;
    const PressureRange liquid = pressure_range(dense, 0.0, 0.95 * vl).value();
    EXPECT_GT(liquid.min, 0.0);
    EXPECT_LT(liquid.max, 1e4);

    // Volumes chosen inside the two-phase stretch: all of the curve there fits.
    const EquationSlot slot = co2(280.0);
    expect_inside(pressure_range(slot, 0.1, 0.3).value(), slot, {0.1, 0.12, 0.15, 0.18, 0.2, 0.23, 0.26, 0.28, 0.3});

    // Equal or exchanged volumes do no harm.
    EXPECT_FALSE(pressure_range(slot, 1.0, 1.0));
    EXPECT_DOUBLE_EQ(pressure_range(slot, 3.0, 1.0)->max, pressure_range(slot, 1.0, 3.0)->max);
}

TEST(PressureRange, OfAFirstPlotSpansTheDrawnRows) {
    SlotTable table;
    EXPECT_EQ(default_pressure_range(table, 0.0, 5.0).min, 0.0);
    EXPECT_EQ(default_pressure_range(table, 0.0, 5.0).max, 100.0);
    table[1] = co2(260.0);
    table[2] = co2(340.0);
    table[3] = co2(1000.0, 50.0);
    table[3].active = false;
    const PressureRange both = default_pressure_range(table, 0.0, 5.0);
    EXPECT_EQ(both.min, -80.0);
    EXPECT_EQ(both.max, 120.0);
}

TEST(PressureRange, WidensTheCurrentOneAndNeverNarrowsIt) {
    const EquationSlot slot = co2(260.0);
    PlotRange range{0.0, 0.0, 5.0, 10.0};
    widen(slot, range);
    EXPECT_LT(range.pmin, -74.0);
    EXPECT_GT(range.pmax, 30.0);
    EXPECT_LT(range.pmax, 200.0);
    const double tenth = (range.pmax - range.pmin) / 10.0;
    EXPECT_DOUBLE_EQ(range.pmin / tenth, std::round(range.pmin / tenth)) << "a grid line runs through 0";
    PlotRange wide{0.0, -1000.0, 5.0, 1000.0};
    const PlotRange before = wide;
    widen(slot, wide);
    EXPECT_EQ(wide, before);
}

TEST(Isotherm, HasExactlyAHundredSegmentsWhateverTheRange) {
    for (const auto& [v1, v2] :
         std::vector<std::pair<double, double>>{{0, 5}, {-3, -1}, {1e-9, 2e-9}, {5, 0}, {2, 2}, {0, 1e8}}) {
        const auto segments = isotherm(co2(VanDerWaals, 280.0), v1, v2, {});
        ASSERT_EQ(segments.size(), 100U);
        EXPECT_EQ(segments.front().from.x, v1);
        EXPECT_DOUBLE_EQ(segments.back().to.x, v2);
        for (std::size_t i = 1; i < segments.size(); ++i)
            EXPECT_EQ(segments[i].from, segments[i - 1].to);
    }
}

TEST(Isotherm, IsInvisibleWhereTheVolumeIsNotAboveTheExcludedOne) {
    const std::vector<std::tuple<EquationOfState, double, double, double>> rows{{VanDerWaals, 0.5, 2.0, 1.0},
                                                                                {PengRobinson, 0.25, 4.0, 1.0},
                                                                                {DietericiSadus, 0.5, 2.0, 0.25},
                                                                                {Virial, -0.1, 1.0, -0.1},
                                                                                {IdealGas, 0.5, 2.0, 0.0}};
    for (const auto& [model, b, n, excluded] : rows) {
        EquationSlot slot = co2(VanDerWaals, 500.0, n);
        slot.equation = model;
        slot.gas.b = b;
        EXPECT_DOUBLE_EQ(excluded_volume(slot), excluded);
        for (const Segment& s : isotherm(slot, 0.0, 5.0, {}))
            EXPECT_EQ(s.visible, s.from.x > excluded) << s.from.x;
    }
}

TEST(Isotherm, IsDottedBetweenTheBoundsOnly) {
    const auto segments = isotherm(ideal(), 0.0, 100.0, {10.0, 20.0, 1.0});
    for (std::size_t i = 0; i < segments.size();
         ++i)  // from i to i + 1, solid up to the lower bound and from the upper
        EXPECT_EQ(segments[i].dotted, i > 10 && i < 19) << i;
    for (const Segment& s : isotherm(ideal(), 0.0, 5.0, {}))
        EXPECT_FALSE(s.dotted);
}

TEST(Isotherm, LeavesOutPointsWithoutAFinitePressureAndDrawsTheRest) {
    SlotTable table;
    table[2] = co2(Dieterici, 300.0);
    table[2].gas.a = -1e6;  // the exponential overflows up to 0.06 l
    table[2].parameters = true;
    const Escena drawn = scene(table, {0.0, 0.0, 100.0, 10.0}, {});
    ASSERT_EQ(drawn.curves.size(), 1U);
    EXPECT_FALSE(drawn.curves.front().complete);
    EXPECT_TRUE(drawn.curves.front().segments.back().defined);
    EXPECT_FALSE(drawn.curves.front().segments.front().defined);
}

TEST(TwoPhase, BoundsScaleWithTheAmountAndVanishForParametersSetByHand) {
    const Bounds one = two_phase_bounds(co2(280.0));
    const Bounds two = two_phase_bounds(co2(280.0, 2.0));
    ASSERT_TRUE(one.tie_line());
    EXPECT_DOUBLE_EQ(two.lower, 2.0 * one.lower);
    EXPECT_DOUBLE_EQ(two.upper, 2.0 * one.upper);
    EXPECT_EQ(two.pv, one.pv);
    EXPECT_NEAR(one.pv, 41.0, 1.5);  // CO2 at 280 K: 41.0 atm

    EquationSlot by_hand = co2(280.0);
    by_hand.parameters = true;
    for (const EquationSlot& slot : {by_hand, co2(TC), ideal(100.0)}) {
        const Bounds none = two_phase_bounds(slot);
        EXPECT_TRUE(!none.tie_line() && none.lower == 0.0 && none.upper == 0.0);
    }
}

TEST(Clip, KeepsThePartOfALineInsideTheRange) {
    const PlotRange range{0, 0, 10, 10};
    using Line = std::array<Point, 2>;
    const std::vector<std::tuple<Point, Point, std::optional<Line>>> rows{
        {{1, 1}, {9, 9}, Line{{{1, 1}, {9, 9}}}},
        {{-5, 5}, {15, 5}, Line{{{0, 5}, {10, 5}}}},
        {{5, 20}, {5, -20}, Line{{{5, 10}, {5, 0}}}},
        {{-5, -5}, {5, 5}, Line{{{0, 0}, {5, 5}}}},
        {{-5, 12}, {15, 12}, std::nullopt},
        {{-1, 9.5}, {3, 14.5}, std::nullopt},  // passes the corner outside
        {{4, 1e300}, {4, 5}, Line{{{4, 10}, {4, 5}}}},
        {{3, 3}, {3, 3}, Line{{{3, 3}, {3, 3}}}},
    };
    for (const auto& [a, b, expected] : rows) {
        for (const PlotRange& r : {range, PlotRange{10, 10, 0, 0}}) {
            const auto kept = clip(a, b, r);
            ASSERT_EQ(kept.has_value(), expected.has_value()) << a.x << "," << a.y;
            for (std::size_t i = 0; kept && i < 2; ++i)
                EXPECT_LT(std::hypot((*kept)[i].x - (*expected)[i].x, (*kept)[i].y - (*expected)[i].y), 1e-12);
        }
    }
}

TEST(Strokes, AreConnectedRunsOfOneLookInShortPieces) {
    const EquationSlot slot = co2(260.0);
    const PlotRange range{0.0, -75.0, 5.0, 175.0};
    const Bounds bounds = two_phase_bounds(slot);
    const auto pieces = strokes(isotherm(slot, range.vmin, range.vmax, bounds), range);
    ASSERT_GE(pieces.size(), 2U);
    std::size_t drawn = 0;
    for (const auto& [dotted, points] : pieces) {
        EXPECT_TRUE(points.size() >= 2U && points.size() <= LONGEST_STROKE + 1) << points.size();
        drawn += points.size() - 1;
        for (const Point& p : points)
            EXPECT_TRUE(p.x > excluded_volume(slot) && p.y >= range.pmin - 1e-9 && p.y <= range.pmax + 1e-9) << p.y;
    }
    EXPECT_EQ(drawn, 99U);  // only the segment from the axis is hidden
    EXPECT_TRUE(pieces.front().dotted);
    EXPECT_FALSE(pieces.back().dotted);
}

TEST(Marks, StandAtFixedDistancesInTheDirectionThatTheCurveRuns) {
    std::optional<Point> last;
    const std::vector<Point> flat{{0, 0}, {25, 5}}, steep{{25, 5}, {27, 45}};
    const auto a = marks(flat, 10.0, 2.0, last);
    ASSERT_EQ(a.size(), 3U);
    EXPECT_DOUBLE_EQ(a[0].x, 2.0);
    EXPECT_DOUBLE_EQ(a[2].x, 22.0);
    EXPECT_DOUBLE_EQ(a[2].y, 4.4);
    const auto b = marks(steep, 10.0, 2.0, last);
    ASSERT_EQ(b.size(), 4U);  // y = 12, 22, 32, 42
    EXPECT_DOUBLE_EQ(b[0].y, 12.0);

    // Curves that run together, drawn in opposite directions too: no two marks on each other.
    std::optional<Point> other;
    const auto c = marks(std::vector<Point>{{25, 5}, {0, 0}}, 10.0, 6.0, other);
    for (const Point& p : a)
        for (const Point& q : c)
            EXPECT_GT(std::hypot(p.x - q.x, p.y - q.y), 3.0);
    // A corner does not bunch them.
    std::optional<Point> corner;
    const auto d = marks(std::vector<Point>{{0, 0}, {13, 0}, {13, 13}}, 10.0, 2.0, corner);
    ASSERT_EQ(d.size(), 3U);
    EXPECT_DOUBLE_EQ(d[1].x, 12.0);
    EXPECT_DOUBLE_EQ(d[2].y, 12.0);
}

TEST(Ticks, AreRoundNumbersInsideTheRange) {
    const std::vector<std::tuple<double, double, int, double, std::vector<std::string>>> rows{
        {0, 5, 10, 0.5, {"0.0", "0.5", "1.0", "1.5", "2.0", "2.5", "3.0", "3.5", "4.0", "4.5", "5.0"}},
        {0, 5, 4, 2, {"0", "2", "4"}},
        {-75, 175, 10, 50, {"-50", "0", "50", "100", "150"}},
        {175, -75, 10, 50, {"-50", "0", "50", "100", "150"}},
        {0.071, 0.112, 5, 0.01, {"0.08", "0.09", "0.10", "0.11"}},
        {0, 3e-9, 3, 1e-9, {"0", "1E-09", "2E-09", "3E-09"}},
        {0, 1e8, 2, 5e7, {"0", "50000000", "100000000"}},
    };
    for (const auto& [from, to, most, step, expected] : rows) {
        const Ticks marks = ticks(from, to, most);
        EXPECT_NEAR(marks.step, step, 1e-9 * step);
        std::vector<std::string> texts;
        for (const double value : marks.values)
            texts.push_back(tick_text(value, marks.step));
        EXPECT_EQ(texts, expected);
    }
    EXPECT_TRUE(ticks(1e8, 1e8 + 1e-8, 5).values.size() < 10);  // no endless list where digits run out
}

TEST(Legend, GoesWhereNoCurveRuns) {
    const Rectangle area{100, 50, 800, 600};
    const Rectangle corner = place_legend(200, 100, area, {}, 6).place;
    EXPECT_EQ(corner.x + corner.width, 894.0);
    EXPECT_EQ(corner.y, 56.0);

    const auto expect_in_area = [&area](const Rectangle& r) {
        EXPECT_TRUE(r.x >= area.x && r.x + r.width <= area.x + area.width);
        EXPECT_TRUE(r.y >= area.y && r.y + r.height <= area.y + area.height);
    };
    const std::vector<std::vector<Point>> lines{{{100, 60}, {900, 60}}, {{850, 50}, {850, 650}}};
    const auto [free, crossed] = place_legend(200, 100, area, lines, 6);
    EXPECT_EQ(crossed, 0.0);
    EXPECT_GT(free.y, 60.0);
    EXPECT_LT(free.x + free.width, 850.0);
    expect_in_area(free);

    // Everything is crossed: still inside the area.
    std::vector<std::vector<Point>> hatch;
    for (int k = 0; k < 40; ++k)
        hatch.push_back({{100.0 + 20.0 * k, 50}, {100.0 + 20.0 * k, 650}});
    const auto [least, hidden] = place_legend(200, 100, area, hatch, 6);
    EXPECT_TRUE(hidden == 10 * 112.0 || hidden == 11 * 112.0) << hidden;  // 200 of width, a line every 20
    expect_in_area(least);

    // A low sheet: many short pieces of a flat branch hide less than the few long ones of a loop.
    std::vector<Point> isotherm{{110, 50}, {115, 150}, {140, 60}, {180, 95}};
    for (int k = 0; k <= 700; ++k)
        isotherm.push_back({200.0 + k, 100.0});
    EXPECT_EQ(place_legend(300, 80, {100, 50, 800, 100}, std::span(&isotherm, 1), 6).place.x, 594.0);
}

TEST(Scene, HoldsTheRowsThatCanBeDrawn) {
    SlotTable table;
    for (int row = 1; row <= 4; ++row)
        table[row] = co2(260.0);
    table[1].colour = 9;
    table[2].active = false;
    table[3].gas_number = 0;
    tavo::testing::set_coefficients(table[4], tavo::Coefficients{});
    table[5] = ideal();
    EXPECT_EQ(obstacle(table[3]), Obstacle::NoGas);
    EXPECT_EQ(obstacle(table[4]), Obstacle::NoCoefficients);
    EXPECT_EQ(obstacle(ideal(300.0, 0.0)), Obstacle::NoAmount);

    const Escena drawn = scene(table, {0, 0, 5, 1234.5678}, {"one", "", "", "", "five"});
    ASSERT_EQ(drawn.curves.size(), 2U);
    EXPECT_EQ(drawn.curves[0].row, 1);
    EXPECT_EQ(drawn.curves[0].colour, 9);
    EXPECT_TRUE(drawn.curves[0].bounds.tie_line());
    EXPECT_EQ(drawn.curves[1].row, 5);
    EXPECT_EQ(drawn.curves[1].description, "five");
    EXPECT_EQ(drawn.end_labels, (std::array<std::string, 4>{"0.00", "0.00", "5.00", "1234.57"}));
}

TEST(Scene, DescribesARow) {
    EquationSlot slot = co2(260.5, 100.0 / 44.01);
    EXPECT_EQ(describe(slot, "PENG-ROBINSON"), "CO2, PENG-ROBINSON, 260.5 K, 2.2722 mol");
    EXPECT_EQ(describe(ideal(), "GAS IDEAL"), "GAS IDEAL, 300 K, 1 mol");
    EXPECT_EQ(abbreviated("CF3CH2F (1,1,1,2-tetrafluoroetano (R134a)), VAN DER WAALS GENERALIZADA (µ), 280 K, 1 mol"),
              "CF3CH2F, VAN DER WAALS GENERALIZADA (µ), 280 K, 1 mol");
    EXPECT_EQ(abbreviated("GAS IDEAL (uno), 300 K"), "GAS IDEAL, 300 K");
    EXPECT_EQ(abbreviated("aire, VIRIAL (4), 300 K"), "aire, VIRIAL (4), 300 K");
}

}  // namespace

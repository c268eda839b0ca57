#include "windows/lab/laboratorio_logica.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace laboratorio;
using enum Instrument;
using enum calculos::Variable;

constexpr std::array INSTRUMENTS{Piston, Thermometer, Thermocouple, Barometer, Manometer};

TEST(Laboratorio, ADragMovesTheUnknownOfItsTable) {
    struct Row {
        Instrument dragged;
        Variable from_temperature, from_volume, from_pressure;  // unknown afterwards, by the unknown before
    };
    for (const Row& row : {Row{Piston, Temperature, Temperature, Pressure},
                           {Thermometer, Pressure, Volume, Pressure},
                           {Thermocouple, Pressure, Volume, Pressure},
                           {Barometer, Temperature, Volume, Temperature},
                           {Manometer, Temperature, Volume, Temperature}}) {
        EXPECT_EQ(unknown_after_drag(row.dragged, Temperature), row.from_temperature);
        EXPECT_EQ(unknown_after_drag(row.dragged, Volume), row.from_volume);
        EXPECT_EQ(unknown_after_drag(row.dragged, Pressure), row.from_pressure);
        EXPECT_NE(unknown_after_drag(row.dragged, variable(row.dragged)), variable(row.dragged));
    }
}

TEST(Laboratorio, EntriesAreRefusedBeyondTheirLimitsInTheUnitShown) {
    struct Row {
        calculos::Variable variable;
        const char* unit;
        double least, most;  // in the unit
        int below, above;
    };
    for (const Row& row : {Row{Amount, "mol", 0, 1000, 77, 78},
                           {Amount, "g", 0, 1000, 77, 78},
                           {Temperature, "ºK", 0, 1000, 79, 80},
                           {Temperature, "ºC", -273.16, 726.84, 79, 80},
                           {Temperature, "ºF", -459.4, 1340.6, 79, 80},
                           {Volume, "l", 0, 2000, 81, 82},
                           {Volume, "cm³", 0, 2e6, 81, 82},
                           {Pressure, "atm", 0, 1000, 83, 84},
                           {Pressure, "Pa", 0, 101325000, 83, 84}}) {
        const auto below = refusal(row.variable, row.least - 1e-6, row.unit);
        const auto above = refusal(row.variable, row.most + 1e-6, row.unit);
        ASSERT_TRUE(below && above) << row.unit;
        EXPECT_EQ(below->text, row.below);
        EXPECT_EQ(above->text, row.above);
        EXPECT_NEAR(below->limit, row.least, 1e-9);
        EXPECT_NEAR(above->limit, row.most, 1e-9);
        EXPECT_TRUE(refusal(row.variable, below->limit, row.unit));   // not the least itself
        EXPECT_FALSE(refusal(row.variable, above->limit, row.unit));  // but the greatest
        EXPECT_FALSE(refusal(row.variable, row.least + 1e-6, row.unit));
    }
}

TEST(Laboratorio, ScalesHoldTheirLimitsAndPinTheRest) {
    struct Row {
        Instrument instrument;
        double minimum, maximum;
        int text;
        std::size_t ticks, numbers;
    };
    for (const Row& row : {Row{Piston, 0, 10, 90, 51, 11},
                           {Thermometer, 273.16, 373.16, 91, 50, 10},  // 274 to 372, numbers from 280 to 370
                           {Thermocouple, 0, 1000, 92, 51, 11},
                           {Barometer, 0, 2, 94, 41, 11},
                           {Manometer, 0, 500, 95, 51, 11}}) {
        EXPECT_EQ(range_text(row.instrument), row.text);
        EXPECT_TRUE(inside(row.instrument, row.minimum) && inside(row.instrument, row.maximum));
        EXPECT_FALSE(inside(row.instrument, std::nextafter(row.maximum, 1e9)));
        EXPECT_FALSE(inside(row.instrument, std::nextafter(row.minimum, -1.0)));
        EXPECT_EQ(pinned(row.instrument, -5.0), row.minimum);
        EXPECT_EQ(pinned(row.instrument, 1e6), row.maximum);
        const auto marks = ticks(row.instrument);
        EXPECT_EQ(marks.size(), row.ticks);
        EXPECT_EQ(std::count_if(marks.begin(), marks.end(), [](const Tick& t) { return t.numbered; }),
                  static_cast<std::ptrdiff_t>(row.numbers));
        for (const Tick& tick : marks)
            EXPECT_TRUE(inside(row.instrument, tick.value)) << tick.value;
    }
}

TEST(Laboratorio, ASurfaceReadsTheMaximumAtItsTopAndStaysOnTheScale) {
    for (const Instrument instrument : INSTRUMENTS) {
        const Scale& s = scale(instrument);
        EXPECT_EQ(value_at(instrument, 0.0, 317.0), s.maximum);
        EXPECT_EQ(value_at(instrument, 317.0, 317.0), s.minimum);
        EXPECT_EQ(value_at(instrument, -40.0, 317.0), s.maximum);
        EXPECT_EQ(value_at(instrument, 900.0, 317.0), s.minimum);
        EXPECT_EQ(value_at(instrument, 0.0, 0.0), s.minimum);
        for (const double y : {0.0, 1.0, 100.5, 317.0})
            EXPECT_NEAR(place_of(instrument, value_at(instrument, y, 317.0), 317.0), y, 1e-10);
        EXPECT_EQ(place_of(instrument, 1e9, 317.0), 0.0);
    }
    EXPECT_DOUBLE_EQ(value_at(Piston, 25.0, 100.0), 7.5);
}

TEST(Laboratorio, ParticlesHintAtAmountAndTemperature) {
    const auto few = particles(40);
    const auto many = particles(MOST_PARTICLES + 5);
    ASSERT_EQ(few.size(), 40U);
    ASSERT_EQ(many.size(), static_cast<std::size_t>(MOST_PARTICLES));
    for (std::size_t i = 0; i < many.size(); ++i) {
        const Particle& p = many[i];
        EXPECT_TRUE(p.x >= 0 && p.x < 1 && p.y >= 0 && p.y < 1);
        EXPECT_NEAR(std::hypot(p.dx, p.dy), 1.0, 1e-12);
        EXPECT_TRUE(i >= few.size() || (p.x == few[i].x && p.y == few[i].y && p.dx == few[i].dx)) << i << " moved";
        for (std::size_t k = 0; k < i; ++k)  // an even spread: a quarter of the mean distance
            EXPECT_GT(std::hypot(p.x - many[k].x, p.y - many[k].y), 0.25 / std::sqrt(MOST_PARTICLES));
    }
    EXPECT_TRUE(particles(-1).empty());
    const std::array amounts{0.001, 0.1, 1.0, 2.0, 10.0, 100.0, 1000.0};
    for (std::size_t i = 1; i < amounts.size(); ++i)
        EXPECT_GT(particle_count(amounts[i]), particle_count(amounts[i - 1]));
    EXPECT_EQ(particle_count(0.0), 0);
    EXPECT_EQ(particle_count(-1.0), 0);
    EXPECT_EQ(particle_count(std::nan("")), 0);
    EXPECT_EQ(particle_count(1e-9), 1);
    EXPECT_EQ(particle_count(1e9), MOST_PARTICLES);
    EXPECT_DOUBLE_EQ(trail(300.0), 1.0);
    EXPECT_DOUBLE_EQ(trail(1200.0), 2.0);
    EXPECT_EQ(trail(-1.0), 0.0);
}

}  // namespace

#include "core/units.h"

#include <algorithm>
#include <optional>
#include <string>

#include "core/errors.h"

namespace tavo::Global {

namespace {

using Formula = double (*)(double);

constexpr double same(double x) {
    return x;
}

/// Labels of a family and its formulas, row from, column to. No formula is derived from another: those of the
/// temperatures do not agree with each other, and are meant not to.
template <std::size_t N>
struct Family {
    std::array<std::string_view, N> labels;
    std::array<std::array<Formula, N>, N> formulas;

    constexpr std::optional<std::size_t> index(std::string_view label) const {
        const auto found = std::find(labels.begin(), labels.end(), label);
        if (found == labels.end())
            return std::nullopt;
        return static_cast<std::size_t>(found - labels.begin());
    }

    double convert(double x, std::string_view from, std::string_view to) const {
        if (from == to)
            return x;
        const auto row = index(from), column = index(to);
        return row && column ? formulas[*row][*column](x) : 0.0;
    }
};

// 101.325 J per atm l, 4.18 J per cal, 1000 cal per Kcal.
constexpr Family<4> ENERGY{
    {"atm l", "J", "cal", "Kcal"},
    {{
        {same, [](double x) { return x * 101.325; }, [](double x) { return x * 101.325 / 4.18; },
         [](double x) { return x * 0.101325 / 4.18; }},
        {[](double x) { return x / 101.325; }, same, [](double x) { return x / 4.18; },
         [](double x) { return x / 4180; }},
        {[](double x) { return x * 4.18 / 101.325; }, [](double x) { return x * 4.18; }, same,
         [](double x) { return x / 1000; }},
        {[](double x) { return x * 4180 / 101.325; }, [](double x) { return x * 4180; },
         [](double x) { return x * 1000; }, same},
    }},
};

constexpr Family<3> DENSITY{
    {"g/l", "kg/m³", "g/cm³"},
    {{
        {same, same, [](double x) { return x * 0.001; }},
        {same, same, [](double x) { return x * 0.001; }},
        {[](double x) { return x * 1000; }, [](double x) { return x * 1000; }, same},
    }},
};

// 101325 Pa, 1.01325 bar and 760 mmHg per atm, 100000 Pa per bar.
constexpr Family<4> PRESSURE{
    {"atm", "Pa", "bar", "mmHg"},
    {{
        {same, [](double x) { return x * 101325; }, [](double x) { return x * 1.01325; },
         [](double x) { return x * 760; }},
        {[](double x) { return x / 101325; }, same, [](double x) { return x / 100000; },
         [](double x) { return x * 760 / 101325; }},
        {[](double x) { return x / 1.01325; }, [](double x) { return x * 100000; }, same,
         [](double x) { return x * 760 / 1.01325; }},
        {[](double x) { return x / 760; }, [](double x) { return x * 101325 / 760; },
         [](double x) { return x * 1.01325 / 760; }, same},
    }},
};

// Kelvin, Celsius, Fahrenheit, Rankine, Réaumur.
constexpr Family<5> TEMPERATURE{
    {"ºK", "ºC", "ºF", "ºR", "ºRe"},
    {{
        {same, [](double x) { return x - 273.16; }, [](double x) { return (9 * x - 2297) / 5; },
         [](double x) { return (3 * x + 1) * 3 / 5; }, [](double x) { return (x - 273.16) * 4 / 5; }},
        {[](double x) { return x + 273.16; }, same, [](double x) { return 9 * x / 5 + 32; },
         [](double x) { return 9 * x / 5 + 492; }, [](double x) { return 4 * x / 5; }},
        {[](double x) { return (5 * x + 2297) / 9; }, [](double x) { return (x - 32) * 5 / 9; }, same,
         [](double x) { return x + 460; }, [](double x) { return (x - 32) * 4 / 9; }},
        {[](double x) { return 5 * x / 9 - 1.0 / 3; }, [](double x) { return (x - 492) * 5 / 9; },
         [](double x) { return x - 460; }, same, [](double x) { return (x - 492) * 4 / 9; }},
        {[](double x) { return 5 * x / 4 + 273.16; }, [](double x) { return 5 * x / 4; },
         [](double x) { return 9 * x / 4 + 32; }, [](double x) { return 9 * x / 4 + 492; }, same},
    }},
};

constexpr Family<4> VOLUME{
    {"l", "dm³", "m³", "cm³"},
    {{
        {same, same, [](double x) { return x / 1000; }, [](double x) { return x * 1000; }},
        {same, same, [](double x) { return x / 1000; }, [](double x) { return x * 1000; }},
        {[](double x) { return x * 1000; }, [](double x) { return x * 1000; }, same,
         [](double x) { return x * 1000000; }},
        {[](double x) { return x / 1000; }, [](double x) { return x / 1000; }, [](double x) { return x / 1000000; },
         same},
    }},
};

constexpr std::array<std::string_view, 2> AMOUNT{"mol", "g"};

constexpr std::int16_t BACKSPACE = 8;
constexpr std::int16_t RETURN = 13;

/// Characters of a UTF-8 text.
std::ptrdiff_t length(std::string_view text) {
    return std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; });
}

}  // namespace

std::span<const std::string_view> unit_labels(UnitFamily family) {
    switch (family) {
        case UnitFamily::Energy:
            return ENERGY.labels;
        case UnitFamily::Amount:
            return AMOUNT;
        case UnitFamily::Density:
            return DENSITY.labels;
        case UnitFamily::Pressure:
            return PRESSURE.labels;
        case UnitFamily::Temperature:
            return TEMPERATURE.labels;
        case UnitFamily::Volume:
            break;
    }
    return VOLUME.labels;
}

std::string_view next_unit(UnitFamily family, std::string_view label) {
    const auto labels = unit_labels(family);
    const auto found = std::find(labels.begin(), labels.end(), label);
    const bool last = found == labels.end() || found + 1 == labels.end();
    return last ? labels.front() : found[1];
}

double convertirenergia(double x, std::string_view from, std::string_view to) {
    return ENERGY.convert(x, from, to);
}

double convertirdensidad(double x, std::string_view from, std::string_view to) {
    return DENSITY.convert(x, from, to);
}

double convertirpresion(double x, std::string_view from, std::string_view to) {
    return PRESSURE.convert(x, from, to);
}

double convertirtemperatura(double x, std::string_view from, std::string_view to) {
    return TEMPERATURE.convert(x, from, to);
}

double convertirvolumen(double x, std::string_view from, std::string_view to) {
    return VOLUME.convert(x, from, to);
}

double convertircantidad(double x, std::string_view from, std::string_view to, const SlotTable& table) {
    if (from == to)
        return x;
    const double molar_mass = table[0].gas.pm;
    if (from == "mol" && to == "g")
        return x * molar_mass;
    if (from != "g" || to != "mol")
        return 0.0;
    if (molar_mass == 0.0)
        throw FloatingPointError("grams to moles: the molar mass of the gas in slot 0 is 0");
    return x / molar_mass;
}

void teclanumerica(std::int16_t max_length, std::int16_t& key_code, std::string_view text) {
    const bool full = length(text) >= max_length && key_code != BACKSPACE;
    const auto points = std::count(text.begin(), text.end(), '.') + (key_code == '.' ? 1 : 0);
    const bool digit = key_code >= '0' && key_code <= '9';
    const bool numeric = digit || key_code == BACKSPACE || key_code == '.' || key_code == RETURN;
    if (full || !numeric || points >= 2)
        key_code = 0;
}

}  // namespace tavo::Global

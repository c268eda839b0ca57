#include "windows/gasedit/editor_logica.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace editor {

using namespace tavo;

namespace {

constexpr const char* SHOWN = "####0.0000";  // the six constants in their boxes

/// The constants of a gas under their keys, in the order of the file.
constexpr std::array<std::pair<const char*, double GasRecord::*>, 6> CONSTANTS{{{"pm", &GasRecord::pm},
                                                                                {"tc", &GasRecord::tc},
                                                                                {"pc", &GasRecord::pc},
                                                                                {"vc", &GasRecord::vc},
                                                                                {"teb", &GasRecord::teb},
                                                                                {"hv", &GasRecord::hv}}};

std::size_t row(int set) {
    return static_cast<std::size_t>(set);
}

/// How many coefficients the database holds for a set.
std::size_t stored(int set) {
    return row(find_model(static_cast<EquationOfState>(set))->stored);
}

std::string section(int number) {
    return "G" + std::to_string(number);
}

/// k from 0.
std::string key(int set, std::size_t k) {
    return "c(" + std::to_string(set) + "," + std::to_string(k + 1) + ")";
}

void write_count(confreg::Text& data, int count) {
    data.escribirclave("General", "n", std::to_string(count));
}

/// A number that stands there already keeps the digits it is written in.
void write_number(confreg::Text& data, const std::string& section, const std::string& key, double value) {
    const std::string old = data.leerclave(section, key);
    double number = 0.0;
    const auto [end, error] = std::from_chars(old.data(), old.data() + old.size(), number);
    const bool says_it = error == std::errc{} && end == old.data() + old.size() && number == value;
    data.escribirclave(section, key, says_it ? old : to_text(value));
}

/// Stores the number of a box. False, and nothing stored, when it is not above 0.
bool take_number(const std::string& box, double& value) {
    if (value > 0.0 && box == Format(value, SHOWN))
        return true;
    const double number = Val(box);
    if (!(number > 0.0))
        return false;
    value = number;
    return true;
}

}  // namespace

StoredGas::StoredGas() {
    for (auto& set : c)
        set.fill(AUTOMATIC);
}

bool StoredGas::automatic(int set) const {
    const auto& k = c.at(row(set));
    const std::ptrdiff_t derived = set == static_cast<int>(EquationOfState::Virial) ? 4 : 2;
    return std::all_of(k.begin(), k.begin() + derived, [](double value) { return value == AUTOMATIC; });
}

std::optional<Refusal> take(Boxes& boxes, StoredGas& gas) {
    GasRecord& g = gas.constants;
    if (boxes.name.find_first_not_of(' ') == std::string::npos)
        return Refusal{200, Box::Name};
    g.name = boxes.name;
    if (!take_number(boxes.pm, g.pm))
        return Refusal{201, Box::MolarMass};
    if (!take_number(boxes.pc, g.pc))
        return Refusal{202, Box::CriticalPressure};
    if (!take_number(boxes.tc, g.tc))
        return Refusal{203, Box::CriticalTemperature};
    for (const auto& [box, value] : {std::pair{&boxes.vc, &g.vc}, {&boxes.teb, &g.teb}, {&boxes.hv, &g.hv}}) {
        if (take_number(*box, *value))
            continue;
        *box = "0";
        *value = 0.0;
    }
    return std::nullopt;
}

StoredGas read(const confreg::Text& data, std::int16_t number) {
    const std::string name = section(number);
    StoredGas gas;
    gas.constants.name = data.leerclave(name, "nombre");
    for (const auto& [constant, member] : CONSTANTS)
        gas.constants.*member = Val(data.leerclave(name, constant));
    for (int set = 1; set <= SETS; ++set) {
        for (std::size_t k = 0; k < stored(set); ++k)
            gas.c[row(set)][k] = Val(data.leerclave(name, key(set, k)));
    }
    return gas;
}

void write(confreg::Text& data, std::int16_t number, const StoredGas& gas) {
    const std::string name = section(number);
    data.escribirclave(name, "nombre", gas.constants.name);
    for (const auto& [constant, member] : CONSTANTS)
        write_number(data, name, constant, gas.constants.*member);
    for (int set = 1; set <= SETS; ++set) {
        for (std::size_t k = 0; k < stored(set); ++k)
            write_number(data, name, key(set, k), gas.c[row(set)][k]);
    }
}

std::int16_t add(confreg::Text& data, std::int16_t count, const StoredGas& gas) {
    if (count == std::numeric_limits<std::int16_t>::max())
        throw Overflow("the database cannot hold more than " + std::to_string(count) + " gases");
    const auto number = static_cast<std::int16_t>(count + 1);
    if (data.lineaseccion(section(number)) > 0)
        throw RewriteRefused("section [" + section(number) + "] exists already, beyond the " + std::to_string(count) +
                             " gases that \"n\" of section [General] counts");
    write(data, number, gas);
    write_count(data, number);
    return number;
}

bool remove(confreg::Text& data, std::int16_t number, std::int16_t count) {
    if (!data.borrarseccion(section(number)))
        return false;
    for (int later = number + 1; later <= count; ++later)
        data.reemplazarlinea("[" + section(later) + "]", "[" + section(later - 1) + "]");
    write_count(data, count - 1);
    return true;
}

GasRecord derived(const StoredGas& gas, int set, double temperature, double& mu, std::int16_t number) {
    GasRecord record = gas.constants;
    std::array<double, 4> k{};
    std::copy_n(gas.c.at(row(set)).begin(), stored(set), k.begin());
    Global::complete(static_cast<EquationOfState>(set), number, {k[0], k[1], k[2], k[3]}, temperature, mu, record);
    return record;
}

std::optional<double> estimated_acentric_factor(double tc, double pc, double teb) {
    if (!(teb > 0.0 && teb < tc && pc > 1.0))
        return std::nullopt;
    const double theta = teb / tc;
    const double w = 3.0 / 7.0 * theta / (1.0 - theta) * std::log10(pc) - 1.0;
    return std::isfinite(w) ? std::optional(w) : std::nullopt;
}

}  // namespace editor

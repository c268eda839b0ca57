#include "core/gas_listing.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "core/encoding.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"

namespace tavo::Global {

namespace {

constexpr int MOST_GASES = std::numeric_limits<std::int16_t>::max();

std::string section(int gas) {
    std::string name("g");
    return name += std::to_string(gas);
}

bool has_section(const confreg::Text& data, int gas) {
    try {
        return data.lineaseccion(section(gas)) > 0;
    } catch (const Overflow&) {
        return false;
    }
}

std::optional<double> whole_number(std::string_view text) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    return error == std::errc{} && stop == end && std::isfinite(value) ? std::optional(value) : std::nullopt;
}

/// The keys that hold numbers; the first three have to be above 0.
const std::vector<std::string>& number_keys() {
    static const std::vector<std::string> keys = [] {
        std::vector<std::string> result{"pm", "tc", "pc", "vc", "teb", "hv"};
        for (const Model& model : models()) {
            for (int k = 1; k <= model.stored; ++k)
                result.push_back("c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) + ")");
        }
        return result;
    }();
    return keys;
}
constexpr std::size_t POSITIVE_KEYS = 3;

GasProblem problem(Flaw flaw, int gas, std::string key = {}, std::string value = {}) {
    return {flaw, static_cast<std::int16_t>(gas), std::move(key), std::move(value), 0};
}

using Keys = std::unordered_map<std::string, std::string>;  // the first one of a name counts, as for the loader

Keys keys_of(const confreg::Text& data, int gas) {
    Keys keys;
    for (auto& [key, value] : data.claves(section(gas)))
        keys.try_emplace(lower(key), std::move(value));
    return keys;
}

std::optional<GasProblem> problem_in(const Keys& keys, int gas) {
    const auto value_of = [&keys](const std::string& key) {
        const auto found = keys.find(key);
        return found == keys.end() ? std::string() : found->second;
    };
    if (value_of("nombre").empty())
        return problem(Flaw::Missing, gas, "nombre");
    for (std::size_t i = 0; i < number_keys().size(); ++i) {
        const std::string& key = number_keys()[i];
        const std::string value = value_of(key);
        if (value.empty())
            return problem(Flaw::Missing, gas, key);
        const std::optional<double> number = whole_number(value);
        if (!number)
            return problem(Flaw::NotANumber, gas, key, value);
        if (i < POSITIVE_KEYS && !(*number > 0.0))
            return problem(Flaw::NotPositive, gas, key, value);
    }
    return std::nullopt;
}

std::int16_t last_section(const confreg::Text& data) {
    int gas = MOST_GASES;
    while (gas > 0 && !has_section(data, gas))
        --gas;
    return static_cast<std::int16_t>(gas);
}

struct Count {
    std::string text;                   // of "n"
    std::optional<std::int16_t> value;  // empty where the text does not begin with a count
    Flaw flaw = Flaw::Count;            // why there is none
};

Count read_count(const confreg::Text& data) {
    try {
        Count count{data.leerclave("general", "n"), {}};
        const double n = std::trunc(Val(count.text));
        if (n > 0.0 ? n <= MOST_GASES : n == 0.0 && whole_number(count.text))
            count.value = static_cast<std::int16_t>(n);
        return count;
    } catch (const Overflow&) {
        return {{}, {}, Flaw::Unreachable};
    } catch (const InvalidArgument&) {
        return {{}, {}, Flaw::BadLine};
    }
}

}  // namespace

GasList list_gases(const confreg::Text& data) {
    GasList list;
    const Count n = read_count(data);
    const std::int16_t count = n.value ? *n.value : last_section(data);
    if (!n.value)
        list.problems.push_back({n.flaw, 0, "n", n.text, count});
    list.names = gas_names(data, count);
    for (int gas = 1; gas <= count; ++gas) {
        if (auto found = problem_of(data, static_cast<std::int16_t>(gas)))
            list.problems.push_back(*std::move(found));
    }
    if (count < MOST_GASES && has_section(data, count + 1))
        list.problems.push_back({Flaw::NotCounted, static_cast<std::int16_t>(count + 1), "n", n.text, count});
    return list;
}

std::optional<GasProblem> problem_of(const confreg::Text& data, std::int16_t gas) {
    try {
        if (data.lineaseccion(section(gas)) == 0)
            return problem(Flaw::NoSection, gas);
        return problem_in(keys_of(data, gas), gas);
    } catch (const Overflow&) {
        return problem(Flaw::Unreachable, gas);
    } catch (const InvalidArgument&) {
        return problem(Flaw::BadLine, gas);
    }
}

bool is_unreadable(const GasProblem& problem) {
    return problem.flaw == Flaw::BadLine || problem.flaw == Flaw::Unreachable;
}

}  // namespace tavo::Global

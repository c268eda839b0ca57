#include "windows/plots/plot_request.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "core/errors.h"
#include "core/palette.h"
#include "windows/plots/graficos.h"

namespace graficos {

using tavo::EquationOfState;
using tavo::InvalidArgument;

namespace {

constexpr double VOLUME_DEFAULT = 5.0;  // l
constexpr double GREATEST_TEMPERATURE = 1000.0;
constexpr double GREATEST_AMOUNT = 100.0;
constexpr int SMALLEST_SIDE = 100, GREATEST_SIDE = 10000;  // pixels

std::string quoted(std::string_view word) {
    return "\"" + std::string(word) + "\"";
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    for (std::size_t at = 0;;) {
        const auto end = text.find(separator, at);
        parts.push_back(trimmed(text.substr(at, end - at)));
        if (end == std::string_view::npos)
            return parts;
        at = end + 1;
    }
}

/// Lower case without accents, for the letters of the languages that the program speaks (UTF-8).
std::string folded(std::string_view text) {
    // Base letters of U+00C0 to U+00FF; '*' marks a character that stays as it is.
    constexpr std::string_view BASE = "aaaaaa*ceeeeiiii*nooooo*ouuuuy**aaaaaa*ceeeeiiii*nooooo*ouuuuy*y";
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool latin = byte == 0xC3 && i + 1 < text.size();
        const std::size_t letter = latin ? static_cast<unsigned char>(text[i + 1]) - 0x80U : BASE.size();
        if (letter < BASE.size() && BASE[letter] != '*') {
            result += BASE[letter];
            ++i;
        } else {
            result += byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + ('a' - 'A')) : text[i];
        }
    }
    return result;
}

template <class Number>
std::optional<Number> number(std::string_view text) {
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

double real_number(std::string_view text, std::string_view meaning) {
    const auto value = number<double>(text);
    if (!value || !std::isfinite(*value))
        throw InvalidArgument(std::string(meaning) + " " + quoted(text) + " is not a number");
    return *value;
}

/// What a gas is called: whole name, formula, and the words in its brackets.
std::vector<std::string> aliases(const std::string& name) {
    std::vector<std::string> result{folded(name)};
    const auto bracket = name.find(" (");
    if (bracket == std::string::npos)
        return result;
    result.push_back(folded(std::string_view(name).substr(0, bracket)));
    const auto end = name.find_last_of(')');
    if (end != std::string::npos && end > bracket + 2)
        result.push_back(folded(std::string_view(name).substr(bracket + 2, end - bracket - 2)));
    return result;
}

template <class Match>
std::vector<std::size_t> matching(std::span<const std::string> names, Match match) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < names.size(); ++i)
        if (std::ranges::any_of(aliases(names[i]), match))
            found.push_back(i);
    return found;
}

/// Index of the one name that a word means; the whole name counts before its beginning.
std::size_t find_name(std::string_view word, std::span<const std::string> names, std::string_view kind) {
    const std::string wanted = folded(word);
    auto found = matching(names, [&](const std::string& alias) { return alias == wanted; });
    if (found.empty())
        found = matching(names, [&](const std::string& alias) { return alias.starts_with(wanted); });
    if (word.empty() || found.empty())
        throw InvalidArgument("there is no " + std::string(kind) + " " + quoted(word));
    if (found.size() > 1)
        throw InvalidArgument(std::string(kind) + " " + quoted(word) + " could be " + quoted(names[found[0]]) + " or " +
                              quoted(names[found[1]]));
    return found.front();
}

RowRequest parse_row(const std::string& text, std::span<const std::string> gas_names,
                     std::span<const std::string> model_captions) {
    const auto fields = split(text, ';');
    if (fields.size() != 4)
        throw InvalidArgument("row " + quoted(text) + " is not GAS;MODEL;T;N");
    const RowRequest row{find_gas(fields[0], gas_names), find_model_named(fields[1], model_captions),
                         real_number(fields[2], "temperature"), real_number(fields[3], "amount")};
    if (row.temperature < 0.0 || row.temperature > GREATEST_TEMPERATURE)
        throw InvalidArgument("temperature " + quoted(fields[2]) + " is outside 0 to 1000 K");
    if (row.moles <= 0.0 || row.moles > GREATEST_AMOUNT)
        throw InvalidArgument("amount " + quoted(fields[3]) + " is not above 0 and at most 100 mol");
    return row;
}

void parse_range(const std::string& text, PlotRequest& request) {
    const auto fields = split(text, ',');
    if (fields.size() != 2 && fields.size() != 4)
        throw InvalidArgument("range " + quoted(text) + " is not VMIN,VMAX or VMIN,VMAX,PMIN,PMAX");
    tavo::PlotRange range;
    range.vmin = real_number(fields[0], "volume");
    range.vmax = real_number(fields[1], "volume");
    if (!(range.vmax > range.vmin))
        throw InvalidArgument("range " + quoted(text) + ": the greatest volume must be above the smallest");
    request.automatic_pressures = fields.size() == 2;
    if (!request.automatic_pressures) {
        range.pmin = real_number(fields[2], "pressure");
        range.pmax = real_number(fields[3], "pressure");
        if (!(range.pmax > range.pmin))
            throw InvalidArgument("range " + quoted(text) + ": the greatest pressure must be above the smallest");
    }
    request.range = range;
}

int side(std::string_view text, const std::string& whole) {
    const auto value = number<int>(text);
    if (!value)
        throw InvalidArgument("size " + quoted(whole) + " is not WIDTHxHEIGHT");
    if (*value < SMALLEST_SIDE || *value > GREATEST_SIDE)
        throw InvalidArgument("size " + quoted(whole) + " is outside 100 to 10000 pixels");
    return *value;
}

void parse_size(const std::string& text, PlotRequest& request) {
    const auto fields = split(text, text.find('X') == std::string::npos ? 'x' : 'X');
    if (fields.size() != 2)
        throw InvalidArgument("size " + quoted(text) + " is not WIDTHxHEIGHT");
    request.width = side(fields[0], text);
    request.height = side(fields[1], text);
}

}  // namespace

std::optional<PictureFormat> picture_format(std::string_view file) {
    const std::string name = folded(file);
    if (name.ends_with(".png"))
        return PictureFormat::Png;
    if (name.ends_with(".svg"))
        return PictureFormat::Svg;
    if (name.ends_with(".pdf"))
        return PictureFormat::Pdf;
    return std::nullopt;
}

std::int16_t find_gas(std::string_view word, std::span<const std::string> gas_names) {
    if (const auto value = number<long>(word)) {
        if (*value < 1 || *value > static_cast<long>(gas_names.size()))
            throw InvalidArgument("gas " + std::string(word) + " is outside 1 to " + std::to_string(gas_names.size()));
        return static_cast<std::int16_t>(*value);
    }
    return static_cast<std::int16_t>(find_name(word, gas_names, "gas") + 1);
}

EquationOfState find_model_named(std::string_view word, std::span<const std::string> model_captions) {
    if (const auto value = number<long>(word)) {
        if (*value < 0 || *value >= static_cast<long>(model_captions.size()))
            throw InvalidArgument("model " + std::string(word) + " is outside 0 to " +
                                  std::to_string(model_captions.size() - 1));
        return static_cast<EquationOfState>(*value);
    }
    return static_cast<EquationOfState>(find_name(word, model_captions, "model"));
}

PlotRequest parse_plot_request(const PlotArguments& arguments, std::span<const std::string> gas_names,
                               std::span<const std::string> model_captions) {
    PlotRequest request;
    request.file = arguments.file;
    const auto format = picture_format(arguments.file);
    if (!format)
        throw InvalidArgument("picture " + quoted(arguments.file) + " does not end in .png, .svg or .pdf");
    request.format = *format;
    if (arguments.rows.empty())
        throw InvalidArgument("a plot needs at least one row: --row \"GAS;MODEL;T;N\"");
    if (arguments.rows.size() > 5)
        throw InvalidArgument("a plot has at most five rows, not " + std::to_string(arguments.rows.size()));
    for (const std::string& row : arguments.rows)
        request.rows.push_back(parse_row(row, gas_names, model_captions));
    if (arguments.range)
        parse_range(*arguments.range, request);
    if (arguments.size)
        parse_size(*arguments.size, request);
    return request;
}

void fill_slots(const PlotRequest& request, tavo::SlotTable& table) {
    for (std::size_t i = 0; i < request.rows.size(); ++i) {
        tavo::EquationSlot& slot = table[static_cast<int>(i) + 1];
        slot = {};
        slot.active = true;
        slot.gas_number = request.rows[i].gas;
        slot.equation = request.rows[i].model;
        slot.temperature = request.rows[i].temperature;
        slot.moles = request.rows[i].moles;
        slot.colour = tavo::CURVE_COLOURS[i];
    }
}

tavo::PlotRange range_of(const PlotRequest& request, const tavo::SlotTable& table) {
    tavo::PlotRange range = request.range.value_or(tavo::PlotRange{0.0, 0.0, VOLUME_DEFAULT, 0.0});
    if (request.automatic_pressures) {
        const PressureRange pressures = default_pressure_range(table, range.vmin, range.vmax);
        range.pmin = pressures.min;
        range.pmax = pressures.max;
    }
    return range;
}

}  // namespace graficos

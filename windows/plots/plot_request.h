#pragma once
// A plot asked for on the command line: what the words mean.

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/plot_range.h"
#include "core/slots.h"

namespace graficos {

enum class PictureFormat { Png, Svg, Pdf };

/// The words after --plot, --row, --range and --size.
struct PlotArguments {
    std::string file;
    std::vector<std::string> rows;  // "GAS;MODEL;T;N"
    std::optional<std::string> range;
    std::optional<std::string> size;
};

struct RowRequest {
    std::int16_t gas;  // number in the database
    tavo::EquationOfState model;
    double temperature;  // K
    double moles;
};

struct PlotRequest {
    std::string file;
    PictureFormat format = PictureFormat::Png;
    std::vector<RowRequest> rows;  // 1 to 5
    std::optional<tavo::PlotRange> range;
    bool automatic_pressures = true;  // only the volumes of `range` are meant
    int width = 1200, height = 800;   // pixels
};

/// Format by the ending of a file name, case ignored.
std::optional<PictureFormat> picture_format(std::string_view file);

/// Gases by number or name: the whole name, its formula ("CO2"), the words in its brackets, or the only name, formula
/// or bracket that begins so; case and accents ignored. Models by number 0 to 9 or caption, the same way. Every
/// refusal is an InvalidArgument whose sentence quotes the word.
std::int16_t find_gas(std::string_view word, std::span<const std::string> gas_names);
tavo::EquationOfState find_model_named(std::string_view word, std::span<const std::string> model_captions);

PlotRequest parse_plot_request(const PlotArguments& arguments, std::span<const std::string> gas_names,
                               std::span<const std::string> model_captions);

/// Slots 1 to 5 as the request has them, not yet loaded; the colours are those of the rows.
void fill_slots(const PlotRequest& request, tavo::SlotTable& table);

/// Range to draw: what the request says, the rest chosen for the loaded slots.
tavo::PlotRange range_of(const PlotRequest& request, const tavo::SlotTable& table);

}  // namespace graficos

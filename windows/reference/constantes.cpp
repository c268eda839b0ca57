#include "windows/reference/constantes.h"

#include <cmath>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/numtext.h"

namespace gridcrit {

namespace {

constexpr double NOT_KNOWN = -1.0;

Row row_of(const tavo::GasRecord& gas) {
    Row row{{std::nullopt, gas.tc, gas.pc, gas.vc, gas.zc, gas.teb, gas.hv, gas.pm}};
    for (std::size_t i = 0; i < COLUMNS.size(); ++i)
        if (COLUMNS[i].may_be_unknown && row.values[i] == NOT_KNOWN)
            row.values[i].reset();
    return row;
}

tavo::GasRecord as_stored(const tavo::confreg::Text& data, std::int16_t gas) {
    const auto number = [&](const char* key) { return tavo::Val(data.leerclave("g" + std::to_string(gas), key)); };
    tavo::GasRecord record;
    record.pm = number("pm");
    record.tc = number("tc");
    record.pc = number("pc");
    record.vc = number("vc");
    record.zc = NOT_KNOWN;
    record.teb = number("teb");
    record.hv = number("hv");
    return record;
}

}  // namespace

std::string Row::text(int column) const {
    const auto i = static_cast<std::size_t>(column);
    return values.at(i) ? tavo::Format(*values[i], COLUMNS[i].format) : std::string(UNKNOWN);
}

Row load(const tavo::confreg::Text& data, std::int16_t gas) {
    try {
        double temperature = 300.0, mu = 1.5;  // the ideal gas asks for neither
        tavo::GasRecord record;
        tavo::Global::cargargas(data, tavo::EquationOfState::IdealGas, gas, false, false, temperature, mu, record);
        return row_of(record);
    } catch (const tavo::FloatingPointError&) {
        return row_of(as_stored(data, gas));
    } catch (const tavo::Error&) {
        return {};
    }
}

const Row& Table::row(std::int16_t gas) {
    std::optional<Row>& row = rows_.at(static_cast<std::size_t>(gas - 1));
    if (!row) {
        try {
            row = load(database_(), gas);
        } catch (const tavo::Error&) {
            row.emplace();  // the database has gone
        }
    }
    return *row;
}

}  // namespace gridcrit

namespace gridtermo {

std::optional<double> magnitude(std::string_view text) {
    constexpr std::string_view POWER = " 10^";
    if (text.empty())
        return std::nullopt;
    const std::size_t power = text.find(POWER);
    const double exponent = power == std::string_view::npos ? 0.0 : tavo::Val(text.substr(power + POWER.size()));
    return tavo::Val(text) * std::pow(10.0, exponent);
}

}  // namespace gridtermo

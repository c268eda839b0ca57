#pragma once
// What the two tables of constants hold, without their grids. Standard library only.

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/confreg.h"

/// Critical constants and other data of every gas.
namespace gridcrit {

struct Column {
    int header;  // language string
    std::string_view literal;
    std::string_view format;
    bool may_be_unknown;  // -1 stands for it
};
inline constexpr int NAME = 0;
inline constexpr std::array COLUMNS{
    Column{430, "GAS", "", false},
    Column{431, "Tc (K)", "####0.0", false},
    Column{432, "Pc (atm)", "####0.00", false},
    Column{433, "Vc (l/mol)", "####0.0000", true},
    Column{434, "Zc", "####0.000", true},
    Column{435, "Teb (K)", "####0.0", true},
    Column{436, "Hv (Kcal/mol)", "####0.000", true},
    Column{437, "M (g/mol)", "####0.000", false},
};
inline constexpr std::string_view UNKNOWN = "-----";

/// One gas: K, atm, l/mol, Kcal/mol, g/mol; no value where it is unknown. That of the name's column stays empty.
struct Row {
    std::array<std::optional<double>, COLUMNS.size()> values{};

    /// Value in its column's format, or UNKNOWN.
    std::string text(int column) const;
};

/// As the gas-record loader gives them. Throws nothing: of a gas that the loader refuses, what stands in the database
/// is shown without Zc, and nothing where its section cannot be read.
Row load(const tavo::confreg::Text& data, std::int16_t gas);

/// All gases, each loaded when it is first asked for.
class Table {
public:
    using Source = std::function<const tavo::confreg::Text&()>;
    explicit Table(Source database) : database_(std::move(database)) {}

    /// The database has changed, and has so many gases.
    void forget(std::int16_t gases) { rows_.assign(static_cast<std::size_t>(gases), std::nullopt); }
    std::int16_t gases() const { return static_cast<std::int16_t>(rows_.size()); }
    /// Gas 1 to gases().
    const Row& row(std::int16_t gas);

private:
    Source database_;
    std::vector<std::optional<Row>> rows_;
};

}  // namespace gridcrit

/// Physical constants in several units.
namespace gridtermo {

struct Row {
    int name;  // language string
    std::array<std::string_view, 3> values;
};
/// Texts to be shown as they are written: the Boltzmann constant in eV / K has no power of ten, and both rows of the
/// gas constant bear its name.
inline constexpr std::array ROWS{
    Row{100, {"6.02214 10^23 part/mol"}},
    Row{101, {"1.38066 10^-23 J / K", "1.38066 10^-16 erg / K", "8.61739 eV / K"}},
    Row{102, {"0.0820578 atm l / K mol", "8.31441 J / K mol", "1.98721 cal / K mol"}},
    Row{102, {"0.0831451 bar l / K mol", "62.3640 mmHg l / K mol"}},
    Row{103, {"4.1840 J"}},
    Row{104, {"1.01325 bar", "760 mmHg", "101325 Pa"}},
    Row{105, {"6.62608 10^-34 J s"}},
    Row{106, {"1.66054 10^-27 Kg"}},
    Row{107, {"9.10939 10^-31 Kg"}},
    Row{108, {"1.672623 10^-27 Kg"}},
};

/// "6.02214 10^23 part/mol" -> 6.02214e23; none for an empty text.
std::optional<double> magnitude(std::string_view text);

}  // namespace gridtermo

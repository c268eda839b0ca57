#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <vector>

#include "core/models.h"
#include "core/numtext.h"
#include "tests/core/saturation_checks.h"

namespace {

using namespace tavo;
using namespace tavo::testing;
using enum EquationOfState;

std::vector<std::string> split(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '\t');) {
        fields.push_back(field);
    }
    return fields;
}

void expect_relative(double value, double expected, double tolerance, const std::string& what) {
    EXPECT_LE(std::abs(value - expected), tolerance * std::abs(expected))
        << what << ": " << value << ", not " << expected;
}

TEST(Saturation, AgreesWithHighPrecisionValues) {
    std::ifstream file(TAVO_SOURCE_DIR "/tests/core/data/saturation.tsv");
    std::string line;
    std::getline(file, line);
    int rows = 0;
    while (std::getline(file, line)) {
        const auto field = split(line);
        ASSERT_EQ(field.size(), 10U) << line;
        const auto data = one_gas(field[1], field[2], field[3], field[4] == "-" ? "1.5" : field[4]);
        const double t = Val(field[5]);
        SlotTable table;
        table[0] = loaded(data, static_cast<EquationOfState>(Val(field[0])), 1, t);
        double vl = 0.0;
        double vg = 0.0;
        expect_relative(calcnum::vapour_pressure(table, 0, t, vl, vg), Val(field[6]), 1e-13, "Pv in " + line);
        expect_relative(vl, Val(field[7]), 1e-13, "vl in " + line);
        expect_relative(vg, Val(field[8]), 1e-13, "vg in " + line);
        const auto reload = [&data](EquationSlot& slot) { Global::load_slot(data, slot, false); };
        expect_relative(calcnum::vaporisation_enthalpy(table, t, vl, vg, reload), Val(field[9]), 1e-11, "H in " + line);
        ++rows;
    }
    EXPECT_EQ(rows, 108);
}

}  // namespace

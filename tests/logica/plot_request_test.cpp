#include "windows/plots/plot_request.h"

#include <gtest/gtest.h>

#include "core/errors.h"
#include "core/palette.h"

namespace {

using namespace graficos;
using tavo::EquationOfState;

const std::vector<std::string> GASES{"CO (monóxido de carbono)",
                                     "CO2 (dióxido de carbono)",
                                     "N2 (nitrógeno)",
                                     "H2O (agua)",
                                     "He (helio)",
                                     "C2H6 (etano)",
                                     "aire"};
const std::vector<std::string> MODELS{"GAS IDEAL",
                                      "VAN DER WAALS",
                                      "BERTHELOT",
                                      "DIETERICI",
                                      "REDLICH-KWONG",
                                      "VIRIAL",
                                      "VAN DER WAALS GENERALIZADA (µ)",
                                      "REDLICH-KWONG-SOAVE",
                                      "PENG-ROBINSON",
                                      "DIETERICI-SADUS"};

TEST(PlotRequest, FindsAGasByNumberNameFormulaOrBeginning) {
    const std::vector<std::pair<std::string_view, int>> rows{
        {"2", 2},         {"CO2", 2},        {"co2", 2}, {"CO", 1},   {"dióxido", 2}, {"DIOXIDO DE CARBONO", 2},
        {"Nitrogeno", 3}, {"h2o (agua)", 4}, {"agu", 4}, {"aire", 7}, {"HELIO", 5}};
    for (const auto& [word, gas] : rows)
        EXPECT_EQ(find_gas(word, GASES), gas) << word;
    for (const std::string_view word : {"0", "8", "-1", "99999999999", "", "x", "C", "H", "1.5"})
        EXPECT_THROW(find_gas(word, GASES), tavo::InvalidArgument) << word;
}

TEST(PlotRequest, FindsAModelByNumberOrCaption) {
    const std::vector<std::pair<std::string_view, int>> rows{{"0", 0},
                                                             {"9", 9},
                                                             {"Peng", 8},
                                                             {"gas ideal", 0},
                                                             {"dieterici", 3},
                                                             {"peng-robinson", 8},
                                                             {"VAN DER WAALS", 1},
                                                             {"REDLICH-KWONG", 4},
                                                             {"redlich-kwong-s", 7}};
    for (const auto& [word, model] : rows)
        EXPECT_EQ(find_model_named(word, MODELS), static_cast<EquationOfState>(model)) << word;
    for (const std::string_view word : {"10", "-1", "", "VAN", "REDLICH", "SRK"})
        EXPECT_THROW(find_model_named(word, MODELS), tavo::InvalidArgument) << word;
}

TEST(PlotRequest, ReadsRowsRangeAndSize) {
    const PlotRequest request = parse_plot_request(
        {"out/Isotermas.SVG", {"CO2;PENG-ROBINSON;260;1", " 3 ; 1 ; 300.5 ; 0.25 "}, "0.05, 1,-20,80", "640x480"},
        GASES, MODELS);
    EXPECT_EQ(request.format, PictureFormat::Svg);
    ASSERT_EQ(request.rows.size(), 2U);
    EXPECT_EQ(request.rows[0].gas, 2);
    EXPECT_EQ(request.rows[0].model, EquationOfState::PengRobinson);
    EXPECT_EQ(request.rows[1].gas, 3);
    EXPECT_EQ(request.rows[1].temperature, 300.5);
    EXPECT_EQ(request.rows[1].moles, 0.25);
    EXPECT_EQ(request.range, (tavo::PlotRange{0.05, -20, 1, 80}));
    EXPECT_FALSE(request.automatic_pressures);
    EXPECT_EQ(request.width, 640);
    EXPECT_EQ(request.height, 480);

    tavo::SlotTable table;
    fill_slots(request, table);
    EXPECT_TRUE(table[2].active);
    EXPECT_EQ(table[2].gas_number, 3);
    EXPECT_EQ(table[2].colour, tavo::CURVE_COLOURS[1]);
    EXPECT_FALSE(table[3].active);
    EXPECT_EQ(range_of(request, table), *request.range);
}

TEST(PlotRequest, ChoosesThePressuresWhenOnlyVolumesAreGiven) {
    const PlotRequest request = parse_plot_request({"a.png", {"1;0;300;1"}, "1,3", {}}, GASES, MODELS);
    EXPECT_TRUE(request.automatic_pressures);
    EXPECT_EQ(request.width, 1200);
    tavo::SlotTable table;
    fill_slots(request, table);
    const tavo::PlotRange range = range_of(request, table);
    EXPECT_EQ(range.vmin, 1.0);
    EXPECT_EQ(range.vmax, 3.0);
    EXPECT_LE(range.pmin, 8.2);
    EXPECT_GE(range.pmax, 24.6);
    EXPECT_LT(range.pmax, 60.0);
}

TEST(PlotRequest, RefusesWhatItDoesNotUnderstandQuotingIt) {
    const std::string good = "1;0;300;1";
    const std::vector<std::pair<PlotArguments, std::string>> rows{
        {{"plot.gif", {good}, {}, {}}, "plot.gif"},
        {{"plot.png", {}, {}, {}}, "--row"},
        {{"plot.png", {good, good, good, good, good, good}, {}, {}}, "6"},
        {{"plot.png", {"1;0;300"}, {}, {}}, "1;0;300"},
        {{"plot.png", {"1;0;300;1;1"}, {}, {}}, "1;0;300;1;1"},
        {{"plot.png", {"1;0;warm;1"}, {}, {}}, "warm"},
        {{"plot.png", {"1;0;300K;1"}, {}, {}}, "300K"},
        {{"plot.png", {"1;0;-5;1"}, {}, {}}, "-5"},
        {{"plot.png", {"1;0;1000.5;1"}, {}, {}}, "1000.5"},
        {{"plot.png", {"1;0;300;0"}, {}, {}}, "0"},
        {{"plot.png", {"1;0;300;101"}, {}, {}}, "101"},
        {{"plot.png", {"1;0;nan;1"}, {}, {}}, "nan"},
        {{"plot.png", {"Xe;0;300;1"}, {}, {}}, "Xe"},
        {{"plot.png", {good}, "1", {}}, "1"},
        {{"plot.png", {good}, "1,2,3", {}}, "1,2,3"},
        {{"plot.png", {good}, "2,1", {}}, "2,1"},
        {{"plot.png", {good}, "0,5,7,7", {}}, "0,5,7,7"},
        {{"plot.png", {good}, {}, "1200"}, "1200"},
        {{"plot.png", {good}, {}, "12x800"}, "12x800"},
        {{"plot.png", {good}, {}, "1200x99999"}, "1200x99999"},
    };
    for (const auto& [arguments, quoted] : rows) {
        try {
            parse_plot_request(arguments, GASES, MODELS);
            ADD_FAILURE() << "accepted " << quoted;
        } catch (const tavo::InvalidArgument& error) {
            EXPECT_NE(std::string(error.what()).find(quoted), std::string::npos) << error.what();
        }
    }
}

}  // namespace

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "core/calcnum.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "tools/calc_commands.h"

namespace {

using namespace tavo;

/// Answers from the shipped database.
std::string ask(std::string_view line) {
    static calc::Calculator calculator{std::filesystem::path(TAVO_SOURCE_DIR) / "data"};
    return calculator.answer(line).text;
}

std::vector<std::string> fields(const std::string& text) {
    std::vector<std::string> result{""};
    for (const char c : text)
        if (c == '\t' || c == '\n')
            result.emplace_back();
        else
            result.back() += c;
    return result;
}

double number(const std::string& text) {
    EXPECT_FALSE(text.starts_with("error")) << text;
    return Val(text);
}

TEST(TavoCalc, SplitsLinesIntoWords) {
    const std::vector<std::string> words{"convert", "energia", "1", "atm l", "J"};
    EXPECT_EQ(calc::split("convert  energia\t1 \"atm l\" J\r"), words);
    EXPECT_EQ(calc::split(" convert energia 1 atm\" \"l \"J\""), words);
    EXPECT_EQ(calc::split("a \"\" b"), (std::vector<std::string>{"a", "", "b"}));
    EXPECT_EQ(calc::split(" \t\r"), std::vector<std::string>());
    EXPECT_EQ(calc::split("a \"b c"), std::nullopt);
}

TEST(TavoCalc, AnswersOneLineForEachCommand) {
    EXPECT_EQ(ask("pressure 21 0 300 2 4"), to_text17(0.08206 * 300.0 / 2.0));
    EXPECT_EQ(ask("pressure 21 1 300 0 4"), "0");
    EXPECT_EQ(ask("pressure 21 1 300 1 0.001"), "0");
    EXPECT_EQ(ask("volume 21 0 300 2 3"), to_text17(0.08206 * 300.0 / 2.0 * 3.0));
    EXPECT_EQ(ask("convert presion 1 atm mmHg"), "760");
    EXPECT_EQ(ask("convert presion 5 \"atm \" Pa"), "0");
    EXPECT_EQ(ask("convert energia 1 \"atm l\" J"), "101.325");
    EXPECT_EQ(ask("convert temperatura 0 \xC2\xBA\x43 \xC2\xBAK"), "273.16000000000003");
    EXPECT_EQ(ask("convert cantidad 2 mol g 21"), "88.018000000000001");
    EXPECT_EQ(ask("convert cantidad 2 mol g +21"), "88.018000000000001");
    EXPECT_EQ(ask("saturation 21 8 304.2"), "-1");
    EXPECT_EQ(ask("saturation 21 0 250"), "-1");
    const auto state = fields(ask("saturation 21 8 270"));
    ASSERT_EQ(state.size(), 4u);
    EXPECT_NEAR(number(ask("pressure 21 8 270 1 " + state[1])) / number(state[0]), 1.0, 1e-8);
    EXPECT_NEAR(number(ask("pressure 21 8 270 1 " + state[2])) / number(state[0]), 1.0, 1e-8);
    EXPECT_GT(number(state[3]), 0.0);
    EXPECT_EQ(fields(ask("roots 0 0 -8")), (std::vector<std::string>{"2", "2", "2"}));
    const auto gas = fields(ask("gas 21 8 250"));
    ASSERT_EQ(gas.size(), 12u);
    EXPECT_EQ(gas[0], "CO2 (di\xC3\xB3xido de carbono)");
    EXPECT_EQ(gas[3], "0.22389999999999999");
    EXPECT_EQ(gas[6], "304.12819999999999");
}

TEST(TavoCalc, AGasWithoutNameOrCriticalTemperatureKeepsItsColumns) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / "tavo-calc-odd-gases";
    fs::create_directories(folder);
    std::ofstream(folder / "data", std::ios::binary)
        << "[General]\r\nn=3\r\n[G1]\r\ntc=300\r\npc=50\r\nvc=0.1\r\n"
        << "[G2]\r\nnombre=a\tb\r\ntc=300\r\npc=50\r\nvc=0.1\r\n[G3]\r\ntc=0\r\nvc=0.1\r\n";
    calc::Calculator calculator(folder);
    const auto nameless = fields(calculator.answer("gas 1 0 300").text);
    ASSERT_EQ(nameless.size(), 12u);
    EXPECT_EQ(nameless[0], "");
    EXPECT_EQ(nameless[6], "300");
    EXPECT_EQ(fields(calculator.answer("gas 2 0 300").text).front(), "a b");
    EXPECT_TRUE(calculator.answer("gas 3 0 300").failed);
    EXPECT_EQ(calculator.answer("convert cantidad 5 g g 3").text, "5");
    fs::remove_all(folder);
}

TEST(TavoCalc, CompletesADatabaseThatWasCutShort) {
    namespace fs = std::filesystem;
    const fs::path folder = fs::temp_directory_path() / "tavo-calc-cut-short";
    fs::remove_all(folder);
    fs::create_directory(folder);
    const fs::path shipped = fs::path(TAVO_SOURCE_DIR) / "data" / "data";
    fs::copy_file(shipped, folder / "fich.tmp");
    fs::copy_file(shipped, folder / "data");
    fs::resize_file(folder / "data", 1000);
    EXPECT_EQ(calc::Calculator(folder).answer("gas 60 0 300").text, ask("gas 60 0 300"));
    EXPECT_EQ(fs::file_size(folder / "data"), fs::file_size(shipped));
    EXPECT_FALSE(fs::exists(folder / "fich.tmp"));
    fs::remove_all(folder);
}

TEST(TavoCalc, VolumeTemperatureAndPressureAgree) {
    for (const Model& model : models()) {
        const std::string head = "21 " + std::to_string(static_cast<int>(model.number)) + " ";
        const double p = number(ask("pressure " + head + "350 2 3"));
        EXPECT_NEAR(number(ask("volume " + head + "350 " + to_text17(p) + " 2")), 3.0, 1e-5) << model.name;
        EXPECT_NEAR(number(ask("temperature " + head + "3 " + to_text17(p) + " 2")), 350.0, 1e-9) << model.name;
    }
    EXPECT_NE(ask("pressure 21 6 350 2 3"), ask("pressure 21 6 350 2 3 1.8"));
    EXPECT_EQ(ask("pressure 21 6 350 2 3"), ask("pressure 21 6 350 2 3 1.5"));
}

TEST(TavoCalc, IsothermHas101Points) {
    const auto line = fields(ask("isotherm 21 1 300 1 0.1 1.1"));
    ASSERT_EQ(line.size(), 202u);
    EXPECT_EQ(line[0], "0.10000000000000001");
    EXPECT_EQ(line[200], "1.1000000000000001");
    EXPECT_NEAR(number(line[100]), 0.6, 1e-15);
    EXPECT_EQ(line[101], ask("pressure 21 1 300 1 " + line[100]));
    calc::Calculator calculator{std::filesystem::path(TAVO_SOURCE_DIR) / "data"};
    const std::vector<std::string> words{"isotherm", "21", "1", "300", "1", "0.1", "1.1"};
    const std::string rows = calculator.answer(words, '\n').text;
    EXPECT_EQ(std::count(rows.begin(), rows.end(), '\n'), 100);
    EXPECT_EQ(fields(rows), line);
}

TEST(TavoCalc, BadArgumentsAreErrorsWithASentence) {
    const std::pair<const char*, const char*> cases[]{
        {"", "no command"},
        {"presure 1 1 1 1 1", "no command presure"},
        {"batch", "no command batch"},
        {"roots 1 \"2", "a quote is left open"},
        {"roots 1 2", "the command is roots A2 A1 A0"},
        {"roots 1 2 3,5", "A0 is not a number: 3,5"},
        {"roots nan 2 3", "A2 is not a number: nan"},
        {"roots 1 -inf 3", "A1 is not a number: -inf"},
        {"roots +-1 2 3", "A2 is not a number: +-1"},
        {"roots \"\" 2 3", "A2 is not a number: "},
        {"roots 1e999 2 3", "A2 1e999 is outside the range of numbers"},
        {"roots -6 11 -6", "cubic: division by q = 0 with three real roots"},
        {"pressure 0 1 300 1 1", "GAS 0 is outside 1 to 60"},
        {"pressure 61 1 300 1 1", "GAS 61 is outside 1 to 60"},
        {"pressure 99999999999999999999 1 300 1 1", "GAS 99999999999999999999 is outside 1 to 60"},
        {"pressure CO2 1 300 1 1", "GAS is not a whole number: CO2"},
        {"pressure 1 10 300 1 1", "MODEL 10 is outside 0 to 9"},
        {"pressure 1 -1 300 1 1", "MODEL -1 is outside 0 to 9"},
        {"pressure 1 1 300 1 1 1.5 7", "the command is pressure GAS MODEL T N V [MU]"},
        {"volume 1 1 300 1 0", "N 0 is not an amount above 0 mol"},
        {"volume 8 0 300 -1 1", "ideal gas: the molar volume at -1 atm would be -24.618 l/mol, which is not above 0"},
        {"pressure 1 1 -300 1 1", "T -300 is below 0 K"},
        {"volume 1 1 -300 1 1", "T -300 is below 0 K"},
        {"saturation 1 1 -1e-9", "T -1E-09 is below 0 K"},
        {"isotherm 1 1 -300 1 0.1 1", "T -300 is below 0 K"},
        {"gas 1 8 -300", "T -300 is below 0 K"},
        {"pressure +-1 1 300 1 1", "GAS is not a whole number: +-1"},
        {"convert energia 1e308 Kcal J", "the result is not a finite number"},
        {"convert \"a\x1B[1m\tb\xC2\x85\x7F\" 1 g kg",
         "no family a [1m b  ; there are energia, cantidad, densidad, presion, temperatura, volumen"},
        {"volume 1 1 300 0 1", "the ideal gas has no volume at 0 atm"},
        {"isotherm 1 1 300 1 2 1", "VMIN 2 is not below VMAX 1"},
        {"convert masa 1 g kg", "no family masa; there are energia, cantidad, densidad, presion, temperatura, volumen"},
        {"convert cantidad 1 g mol", "cantidad needs the gas number as its last argument"},
        {"convert presion 1 atm Pa 3", "only cantidad takes a gas number"},
    };
    for (const auto& [line, sentence] : cases)
        EXPECT_EQ(ask(line), "error: " + std::string(sentence)) << line;
    EXPECT_TRUE(ask("pressure 1 6 300 1 1 0.5").starts_with("error: gas 1 (He (helio)): "))
        << ask("pressure 1 6 300 1 1 0.5");
}

TEST(TavoCalc, DatabaseIsReadOnlyWhenItIsNeeded) {
    calc::Calculator nowhere{std::filesystem::path("/nonexistent")};
    EXPECT_EQ(nowhere.answer("roots 0 0 -8").text, "2\t2\t2");
    EXPECT_TRUE(nowhere.answer("pressure 1 1 300 1 1").failed);
    EXPECT_NE(nowhere.answer("pressure 1 1 300 1 1").text.find("nonexistent"), std::string::npos);
    EXPECT_EQ(nowhere.answer("pressure 1 1 300 1 1").text.find('\n'), std::string::npos);
}

TEST(TavoCalc, HelpNamesEveryCommand) {
    for (const char* name : {"pressure", "volume", "temperature", "saturation", "isotherm", "gas", "roots", "convert"})
        EXPECT_NE(calc::help().find(std::string("\n  ") + name + " "), std::string::npos) << name;
}

}  // namespace

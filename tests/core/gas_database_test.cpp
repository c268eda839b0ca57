#include "core/gas_database.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "core/encoding.h"
#include "core/errors.h"
#include "core/gas_listing.h"
#include "core/models.h"
#include "core/numtext.h"

namespace {

using namespace tavo;
using namespace tavo::Global;
using enum EquationOfState;

/// A database of one gas, number `gas`: carbon dioxide as in old tables, everything else as given.
confreg::Text database(const std::string& lines, int gas = 1,
                       const std::string& constants = "pm=44\r\ntc=304.2\r\npc=72.9\r\nvc=0.094\r\n") {
    std::string text = "[General]\r\nn=60\r\n[G" + std::to_string(gas) + "]\r\nnombre=CO2\r\n" + constants;
    for (const Model& model : models())
        for (int k = 1; k <= model.stored; ++k) {
            const std::string key =
                "c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) + ")=";
            if (lines.find(key) == std::string::npos)
                text += key + "-1\r\n";
        }
    return confreg::Text(text + lines);
}

GasRecord load(const confreg::Text& data, EquationOfState equation, std::int16_t gas = 1, double t = 250.0,
               double mu = 1.5) {
    GasRecord record;
    cargargas(data, equation, gas, true, false, t, mu, record);
    return record;
}

void expect_close(double value, double expected, const std::string& what) {
    EXPECT_NEAR(value, expected, 1e-13 * std::fabs(expected)) << what;
}

// Values of the formulas in 40-digit decimal arithmetic for Tc 304.2 K, Pc 72.9 atm, T 250 K, w 0.239.
TEST(GasLoader, DerivesWhatIsStoredAsMinusOne) {
    struct Case {
        EquationOfState equation;
        double mu, a, b, c, d;
    };
    const Case cases[]{
        {VanDerWaals, 1.5, 3.6060995073674989, 0.042802901234567893, 0, 0},
        {Berthelot, 1.5, 1096.9754701411931, 0.042802901234567893, 0, 0},
        {Dieterici, 1.5, 4.6272710941296826, 0.046341942095432039, 0, 0},
        {RedlichKwong, 1.5, 63.730827748406061, 0.029667666739827865, 0, 0},
        {Virial, 1.5, 1.0, -0.13297577326543207, 0.0018320883540961737, 7.8418696873380572e-05},
        {FreeExponent, 1.5, 6.9451314120008513, 0.014267633744855964, 1.5, 0},
        {FreeExponent, 2.0, 3.6060995073674989, 0.042802901234567893, 2.0, 0},
        {FreeExponent, 1.2, 12.596496584475742, 0.0028535267489711917, 1.2, 0},
        {Soave, 1.5, 4.2547277720119203, 0.029667666739827865, 0.239, 0},
        {PengRobinson, 1.5, 4.4581481455225642, 0.026640525728395060, 0.239, 0},
        {DietericiSadus, 1.5, 6.9274293434154172, 0.13225822542913576, 0, 0},
    };
    const confreg::Text data = database("", 21);
    for (const Case& c : cases) {
        const std::string name(find_model(c.equation)->name);
        const GasRecord gas = load(data, c.equation, 21, 250.0, c.mu);
        expect_close(gas.a, c.a, name + " a");
        expect_close(gas.b, c.b, name + " b");
        expect_close(gas.c, c.c, name + " c");
        expect_close(gas.d, c.d, name + " d");
    }
    expect_close(load(data, VanDerWaals, 21).a, 0.1818137772 * (304.2 * 304.2) / (64 * 72.9), "van der waals a");
}

TEST(GasLoader, StoredCoefficientsStandAndEachMinusOneIsDerivedByItself) {
    const confreg::Text data = database(
        "c(1,1)=3.5\r\nc(5,3)=0.002\r\nc(7,1)=3.9\r\nc(7,3)=0.1\r\nc(8,2)=0.03\r\nc(8,3)=0.2\r\nc(9,2)=0.1\r\n");
    EXPECT_EQ(load(data, VanDerWaals).a, 3.5);
    expect_close(load(data, VanDerWaals).b, 0.042802901234567893, "b");
    EXPECT_EQ(load(data, Virial).c, 0.002);
    expect_close(load(data, Virial).d, 7.8418696873380572e-05, "D");
    // A stored a of models 7 and 8 is a(Tc): it is turned into a(T) too.
    const double root = 1.0 + (0.48 + 0.1574 - 0.00176) * (1.0 - std::sqrt(250.0 / 304.2));
    expect_close(load(data, Soave).a, 3.9 * root * root, "a(T)");
    EXPECT_EQ(load(data, PengRobinson).b, 0.03);
    EXPECT_EQ(load(data, PengRobinson).c, 0.2);
    EXPECT_EQ(load(data, DietericiSadus).b, 0.1);
    expect_close(load(data, DietericiSadus).a, 6.9274293434154172, "a");
}

TEST(GasLoader, AcentricFactorComesFromTheRecordElseFromTheTable) {
    const double table[]{-0.365, -0.029, 0.001, 0.005,  0.008, -0.216, -0.216, 0.054, 0.039, 0.025,
                         0.09,   0.108,  0.229, -0.216, 0.329, 0.133,  0.066,  0.25,  0.344, 0.344,
                         0.239,  0.011,  0.177, 0.193,  0.556, 0.644,  0.299,  0.263};
    for (std::int16_t gas = 1; gas <= 28; ++gas)
        for (const EquationOfState equation : {Soave, PengRobinson})
            EXPECT_EQ(load(database("", gas), equation, gas).c, table[gas - 1]) << gas;
    EXPECT_EQ(load(database("", 29), Soave, 29).c, -1.0);
    EXPECT_EQ(load(database("c(8,3)=0.5\r\n", 3), PengRobinson, 3).c, 0.5);
    EXPECT_EQ(load(database("c(8,3)=0\r\n", 3), PengRobinson, 3).c, 0.0);
}

TEST(GasLoader, CriticalCompressibilityNeedsTheCriticalVolume) {
    const GasRecord known = load(database(""), IdealGas);
    expect_close(known.zc, 72.9 * 0.094 / (0.08206 * 304.2), "zc");
    const GasRecord unknown = load(database("", 1, "tc=304.2\r\npc=72.9\r\nvc=-1\r\n"), IdealGas);
    EXPECT_EQ(unknown.vc, -1.0);
    EXPECT_EQ(unknown.zc, -1.0);
    EXPECT_EQ(unknown.pm, 0.0);  // a missing key
}

TEST(GasLoader, ReloadAndKeepDecideAboutTheCoefficients) {
    const confreg::Text data = database("");
    struct Case {
        EquationOfState equation;
        bool reload, keep, loads;
    };
    const Case cases[]{{VanDerWaals, true, true, true},
                       {VanDerWaals, true, false, true},
                       {VanDerWaals, false, false, true},
                       {VanDerWaals, false, true, false},
                       {IdealGas, true, false, false}};
    for (const Case& c : cases) {
        GasRecord record;
        record.a = 7.0;
        double t = 300.0, mu = 1.5;
        cargargas(data, c.equation, 1, c.reload, c.keep, t, mu, record);
        EXPECT_EQ(record.a != 7.0, c.loads);
        EXPECT_EQ(record.tc, 304.2);  // the constants are read in any case
        EXPECT_EQ(record.name, "CO2");
    }
}

TEST(GasLoader, ZeroTemperatureAndExponentAreGuarded) {
    GasRecord record;
    double t = 0.0, mu = 0.0;
    cargargas(database(""), Virial, 1, true, false, t, mu, record);
    EXPECT_EQ(t, 1e-05);
    EXPECT_EQ(mu, 1e-05);
    EXPECT_LT(record.b, -1e6);
    t = -0.0;
    cargargas(database(""), VanDerWaals, 1, false, true, t, mu, record);
    EXPECT_EQ(t, 1e-05);
}

TEST(GasLoader, StoredExponentBecomesMu) {
    GasRecord record;
    double t = 300.0, mu = 1.5;
    cargargas(database("c(6,3)=1.8\r\n"), FreeExponent, 1, true, false, t, mu, record);
    EXPECT_EQ(mu, 1.8);
    EXPECT_EQ(record.c, 1.8);
    // Without automatic coefficients any exponent will do.
    cargargas(database("c(6,1)=4\r\nc(6,2)=0.03\r\nc(6,3)=0.5\r\n"), FreeExponent, 1, true, false, t, mu, record);
    EXPECT_EQ(mu, 0.5);
    // Automatic ones need an exponent above 1; nothing changes then.
    const GasRecord before = record;
    for (double exponent : {1.0, 0.5, 0.0, -2.0}) {
        const double given = exponent == 0.0 ? 1e-05 : exponent;
        EXPECT_THROW(cargargas(database(""), FreeExponent, 1, true, false, t, exponent, record), InvalidArgument);
        EXPECT_EQ(exponent, given);
    }
    EXPECT_EQ(record.a, before.a);
    double above = 1.0001;
    EXPECT_NO_THROW(cargargas(database(""), FreeExponent, 1, true, false, t, above, record));
}

TEST(GasLoader, DivisionsByZeroAreErrorsThatNameTheGas) {
    const confreg::Text no_tc = database("", 4, "tc=0\r\npc=50\r\nvc=-1\r\n");
    const confreg::Text no_pc = database("", 4, "tc=300\r\npc=0\r\nvc=0.1\r\n");
    for (const Model& model : models()) {
        if (model.stored == 0) {
            EXPECT_NO_THROW(load(no_tc, model.number, 4));
            continue;
        }
        EXPECT_THROW(load(no_tc, model.number, 4), FloatingPointError) << model.name;
        EXPECT_THROW(load(no_pc, model.number, 4), FloatingPointError) << model.name;
    }
    try {
        load(no_pc, Dieterici, 4);
    } catch (const FloatingPointError& error) {
        EXPECT_STREQ(error.what(), "gas 4 (CO2): dieterici: no coefficients from a critical pressure of 0");
    }
    EXPECT_THROW(load(no_pc, VanDerWaals, 5), FloatingPointError);  // no such section: all zero
    EXPECT_THROW(load(database("", 4, "tc=1e-300\r\npc=1e300\r\nvc=1\r\n"), IdealGas, 4), FloatingPointError);
}

TEST(GasLoader, StoredAttractionNeedsNoCriticalPressure) {
    for (const EquationOfState equation : {Soave, PengRobinson}) {
        const std::string c = "c(" + std::to_string(static_cast<int>(equation)) + ",";
        const auto stored = [&c](const char* a, const char* tc) {
            return database(c + "1)=" + a + "\r\n" + c + "2)=0.03\r\n" + c + "3)=0.2\r\n", 4,
                            std::string("pc=0\r\nvc=-1\r\ntc=") + tc + "\r\n");
        };
        const GasRecord gas = load(stored("3.9", "300"), equation, 4);
        EXPECT_EQ(gas.a, 3.9 * temperature_factor(equation, 0.2, 250.0 / 300.0));
        EXPECT_EQ(gas.b, 0.03);
        EXPECT_THROW(load(stored("3.9", "0"), equation, 4), FloatingPointError);
        EXPECT_THROW(load(stored("3.9", "-300"), equation, 4), FloatingPointError);
        EXPECT_THROW(load(stored("1e308", "1e-300"), equation, 4), FloatingPointError);
    }
}

TEST(LoadSlot, ReloadClearsTheParameterFlagAndARefreshKeepsIt) {
    const confreg::Text data = database("c(6,3)=1.8\r\n");
    EquationSlot slot;
    slot.gas_number = 1;
    slot.equation = FreeExponent;
    slot.parameters = true;
    slot.gas.a = 7.0;
    slot.temperature = 0.0;
    for (const bool reload : {false, true}) {
        load_slot(data, slot, reload);
        EXPECT_EQ(slot.parameters, !reload);
        EXPECT_EQ(slot.gas.a == 7.0, !reload);
        EXPECT_EQ(slot.mu, reload ? 1.8 : 1.5);
        EXPECT_EQ(slot.temperature, 1e-05);
    }
    slot.gas_number = 0;
    load_slot(data, slot, true);
    EXPECT_EQ(slot.gas.name, "");
    EXPECT_EQ(slot.gas.a, 0.0);
}

TEST(GasDatabase, CountAndNames) {
    const auto count = [](const std::string& n) { return gas_count(confreg::Text("[GENERAL]\r\nn=" + n + "\r\n")); };
    EXPECT_EQ(count("60"), 60);
    EXPECT_EQ(count("32767"), 32767);
    EXPECT_EQ(count("-3"), 0);
    EXPECT_EQ(count("abc"), 0);
    EXPECT_EQ(gas_count(confreg::Text("")), 0);
    EXPECT_THROW(count("32768"), Overflow);
    EXPECT_THROW(count("1e9"), Overflow);
    const confreg::Text data("[g2]\r\nnombre = no\r\nnombre= neón \r\n[G3]\r\npm=1\r\n[g1]\r\nnombre=helio\r\n");
    EXPECT_EQ(gas_names(data, 3).front(), "helio");
    EXPECT_EQ(gas_names(data, 3).back(), "");
    EXPECT_EQ(gas_names(data, 3).size(), 3u);
}

TEST(GasListing, CountsAndProblems) {
    struct Case {
        std::string text;
        std::size_t count;
        std::vector<std::pair<int, Flaw>> problems;
    };
    const std::string two = "[G1]\nnombre=a\n[g3]\nnombre=c\n";
    const std::pair<int, Flaw> one{1, Flaw::Missing}, gap{2, Flaw::NoSection}, three{3, Flaw::Missing};
    const std::pair<int, Flaw> no_count{0, Flaw::Count};
    const Case cases[] = {
        {"", 0, {no_count}},
        {"[General]\nn=0\n", 0, {}},
        {"[General]\nn=3.9\n" + two, 3, {one, gap, three}},
        {"[General]\nn=-1\n" + two, 3, {no_count, one, gap, three}},
        {"[General]\nn=1e9\n" + two, 3, {no_count, one, gap, three}},
        {"[General]\nn=2\n" + two, 2, {one, gap, {3, Flaw::NotCounted}}},
        {"[General]\nn\n" + two, 3, {{0, Flaw::BadLine}, one, gap, three}},
        {"[General]\nn=3\n[G1]\nx\nnombre=a\n[\n" + two,
         3,
         {{1, Flaw::BadLine}, {2, Flaw::Unreachable}, {3, Flaw::Unreachable}}},
        {"[\n[General]\nn=2\n" + two, 0, {{0, Flaw::Unreachable}}},
        {"[General]\nn=0\n[G1]\n", 0, {{1, Flaw::NotCounted}}},
    };
    for (const Case& c : cases) {
        const GasList list = list_gases(confreg::Text(c.text));
        EXPECT_EQ(list.names.size(), c.count) << c.text;
        std::vector<std::pair<int, Flaw>> found;
        for (const GasProblem& problem : list.problems)
            found.emplace_back(problem.gas, problem.flaw);
        EXPECT_EQ(found, c.problems) << c.text;
    }
    EXPECT_EQ(list_gases(confreg::Text("[G32767]\n")).names.size(), 32767u);
}

// ---- the shipped file -----------------------------------------------------------------------------------------------

std::string shipped_bytes() {
    return real_file_system().read(std::filesystem::path(TAVO_SOURCE_DIR) / "data" / "data");
}

TEST(ShippedDatabase, HasTheLayoutThatTheEditorWrites) {
    const std::string bytes = shipped_bytes();
    EXPECT_EQ(windows1252_from_utf8(utf8_from_windows1252(bytes)), bytes);
    EXPECT_NE(bytes.find("\r\nnombre=CO2 (di\xF3xido de carbono)\r\n"), std::string::npos);
    const confreg::Text data(bytes);
    ASSERT_EQ(gas_count(data), 60);
    const auto sections = data.listasecciones();
    ASSERT_EQ(sections.size(), 61u);
    EXPECT_EQ(sections[0], "General");
    std::vector<std::string> keys{"nombre", "pm", "tc", "pc", "vc", "teb", "hv"};
    for (const Model& model : models())
        for (int k = 1; k <= model.stored; ++k)
            keys.push_back("c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) + ")");
    std::string layout = "[General]\r\nn=60\r\n";  // as the editor writes it, with its line ends and without a mark
    for (std::size_t gas = 1; gas <= 60; ++gas) {
        EXPECT_EQ(sections[gas], "G" + std::to_string(gas));
        layout += "\r\n[" + sections[gas] + "]\r\n";
        const auto entries = data.claves(sections[gas]);
        ASSERT_EQ(entries.size(), keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const auto& [key, value] = entries[i];
            EXPECT_EQ(key, keys[i]) << "gas " << gas;
            const bool acentric = key == "c(7,3)" || key == "c(8,3)";
            EXPECT_TRUE(!key.starts_with("c(") || acentric || value == "-1") << "gas " << gas << ' ' << key;
            layout.append(key).append("=").append(value).append("\r\n");
        }
    }
    EXPECT_EQ(utf8_from_windows1252(bytes), layout);
}

TEST(ShippedDatabase, EveryGasIsPhysicallySound) {
    const confreg::Text data(shipped_bytes());
    for (std::int16_t number = 1; number <= 60; ++number) {
        const GasRecord gas = load(data, PengRobinson, number);
        SCOPED_TRACE(gas.name);
        EXPECT_GT(gas.zc, 0.11);  // hydrogen fluoride, which associates; else above 0.22
        EXPECT_LT(gas.zc, 0.36);
        // W. C. Edmister's estimate of the acentric factor (1958).
        const double ratio = gas.teb / gas.tc;
        const double tolerance = gas.name.starts_with("CO2") ? 0.2 : 0.1;  // carbon dioxide sublimes
        EXPECT_NEAR(gas.c, 3.0 / 7.0 * ratio / (1.0 - ratio) * std::log10(gas.pc) - 1.0, tolerance);
        for (const Model& model : models())
            EXPECT_NO_THROW(load(data, model.number, number));
    }
}

TEST(ShippedDatabase, HoldsTheTabulatedNumbers) {
    struct Case {
        std::int16_t number;
        const char* name;
        double pm, tc, pc, vc, teb, hv, w;
    };
    const Case cases[]{
        {1, "He (helio)", 4.0026, 5.1953, 2.2533, 0.05753, 4.224, 0.0197, -0.3835},
        {9, "N2 (nitrógeno)", 28.014, 126.192, 33.5139, 0.08941, 77.355, 1.3336, 0.0372},
        {14, "HD (deuteruro de hidrógeno)", 3.0221, 36, 14.6, 0.0628, 22.13, -1, -0.181},
        {19, "H2O (agua)", 18.015, 647.096, 217.7547, 0.05595, 373.124, 9.7158, 0.3443},
        {21, "CO2 (dióxido de carbono)", 44.009, 304.1282, 72.8083, 0.09412, 194.67, 3.6855, 0.2239},
        {31, "NO (óxido nítrico)", 30.006, 180.15, 63.9526, 0.058, 121.41, 3.3054, 0.5829},
        {46, "C7H16 (n-heptano)", 100.205, 540.2, 27.0417, 0.428, 371.533, 7.589, 0.349},
        {59, "CF3CH2F (1,1,1,2-tetrafluoroetano (R-134a))", 102.0316, 374.21, 40.062, 0.19932, 247.076, 5.291, 0.3268},
        {60, "N2/O2/Ar (aire)", 28.9655, 132.5306, 37.3649, 0.08453, 78.903, 1.4179, 0.0335},
    };
    const confreg::Text data(shipped_bytes());
    for (const Case& c : cases) {
        const GasRecord gas = load(data, Soave, c.number);
        EXPECT_EQ(gas.name, c.name);
        EXPECT_EQ((std::array{gas.pm, gas.tc, gas.pc, gas.vc, gas.teb, gas.hv, gas.c}),
                  (std::array{c.pm, c.tc, c.pc, c.vc, c.teb, c.hv, c.w}))
            << c.name;
    }
}

}  // namespace

#include "windows/gasedit/editor_logica.h"

#include <gtest/gtest.h>

#include <functional>
#include <limits>

#include "core/errors.h"
#include "core/gas_database.h"
#include "core/numtext.h"
#include "tests/support/test_disk.h"

namespace {

using namespace tavo;
using namespace editor;
using confreg::Text;
using crash::TestDisk;
namespace fs = std::filesystem;

const fs::path DATA = "home/data";

/// 1,1-difluoroethane; w of sets 7 and 8 by hand.
StoredGas difluoroethane() {
    StoredGas gas;
    gas.constants = {.name = "C2H4F2 (1,1-difluoroetano)", .pm = 66.051, .tc = 386.41, .vc = -1, .pc = 44.61};
    gas.constants.teb = 249.13;
    gas.constants.hv = 5.1;
    gas.c[7][2] = gas.c[8][2] = 0.275;
    return gas;
}

const std::string DIFLUOROETHANE =
    "nombre=C2H4F2 (1,1-difluoroetano)\r\npm=66.051\r\ntc=386.41\r\npc=44.61\r\nvc=-1\r\nteb=249.13\r\nhv=5.1\r\n"
    "c(1,1)=-1\r\nc(1,2)=-1\r\nc(2,1)=-1\r\nc(2,2)=-1\r\nc(3,1)=-1\r\nc(3,2)=-1\r\nc(4,1)=-1\r\nc(4,2)=-1\r\n"
    "c(5,1)=-1\r\nc(5,2)=-1\r\nc(5,3)=-1\r\nc(5,4)=-1\r\nc(6,1)=-1\r\nc(6,2)=-1\r\nc(6,3)=-1\r\n"
    "c(7,1)=-1\r\nc(7,2)=-1\r\nc(7,3)=0.275\r\nc(8,1)=-1\r\nc(8,2)=-1\r\nc(8,3)=0.275\r\nc(9,1)=-1\r\nc(9,2)=-1\r\n";

/// Another one, each coefficient a number of its own.
StoredGas by_hand() {
    StoredGas gas = difluoroethane();
    gas.constants.name = "[G2]=Ñ";
    gas.constants.tc = 1.0 / 3.0;
    for (std::size_t e = 1; e < gas.c.size(); ++e) {
        for (std::size_t k = 0; k < 4; ++k)
            gas.c[e][k] = static_cast<double>(e) + static_cast<double>(k + 1) / 10.0;
    }
    return gas;
}

std::string shipped() {
    return real_file_system().read(fs::path(TAVO_SOURCE_DIR) / "data" / "data");
}

/// One change of a database, by the editor and by one operation on the file after the other.
struct Change {
    const char* what;
    std::function<void(Text&)> at_once;
    std::function<void(const confreg::Site&)> one_by_one;
};

void write_one_by_one(int number, const StoredGas& gas, const confreg::Site& site) {
    const GasRecord& g = gas.constants;
    const auto set = [&](const std::string& key, const std::string& value) {
        confreg::escribirclave(DATA, "G" + std::to_string(number), key, value, site);
    };
    set("nombre", g.name);
    for (const auto& [key, value] :
         {std::pair{"pm", g.pm}, {"tc", g.tc}, {"pc", g.pc}, {"vc", g.vc}, {"teb", g.teb}, {"hv", g.hv}})
        set(key, to_text(value));
    for (const char* key : {"11", "12", "21", "22", "31", "32", "41", "42", "51", "52", "53", "54",
                            "61", "62", "63", "71", "72", "73", "81", "82", "83", "91", "92"}) {
        const auto e = static_cast<std::size_t>(key[0] - '0'), k = static_cast<std::size_t>(key[1] - '0');
        set(std::string("c(") + key[0] + "," + key[1] + ")", to_text(gas.c[e][k - 1]));
    }
}

std::vector<Change> changes(int count) {
    std::vector<Change> all{
        {"add", [=](Text& t) { EXPECT_EQ(add(t, static_cast<std::int16_t>(count), difluoroethane()), count + 1); },
         [=](const auto& s) {
             write_one_by_one(count + 1, difluoroethane(), s);
             confreg::escribirclave(DATA, "General", "n", std::to_string(count + 1), s);
         }}};
    for (int k = 1; k <= count; ++k) {
        const auto gas = static_cast<std::int16_t>(k);
        all.push_back({"change", [=](Text& t) { write(t, gas, by_hand()); },
                       [=](const auto& s) { write_one_by_one(k, by_hand(), s); }});
        all.push_back({"delete", [=](Text& t) { EXPECT_TRUE(remove(t, gas, static_cast<std::int16_t>(count))); },
                       [=](const auto& s) {
                           EXPECT_TRUE(confreg::borrarseccion(DATA, "G" + std::to_string(k), s));
                           for (int i = k + 1; i <= count; ++i)
                               confreg::reemplazarlinea(DATA, "[G" + std::to_string(i) + "]",
                                                        "[G" + std::to_string(i - 1) + "]", s);
                           confreg::escribirclave(DATA, "General", "n", std::to_string(count - 1), s);
                       }});
    }
    return all;
}

TEST(Editor, LeavesTheBytesOfTheSingleOperations) {
    const struct {
        const char* what;
        std::string bytes;
        int count;
    } databases[] = {
        {"plain", "[General]\r\nn=2\r\n\r\n[G1]\r\nnombre=a\r\npm=1\r\n\r\n[G2]\r\nnombre=b\r\n", 2},
        {"of another order and other line ends", "\n[g2]\nTC=2\n\n x = 1\nNOMBRE= b \n[G1]\nc(9,2)=3\r\r[general]\nN=2",
         2},
        {"sections of no gas, a section twice", "junk\r\n[x]\r\nno sign\r\n[G1]\r\n[G2]\r\n[G1]\r\npm=3\r\n[G4]\r\n",
         2},
        {"empty", "", 0},
        {"with a mark", "\xEF\xBB\xBF[General]\r\nn=1\r\n[G1]\r\nnombre=\xCE\xB1\r\n", 1},
    };
    for (const auto& database : databases) {
        for (const Change& change : changes(database.count)) {
            TestDisk disk;
            disk.put(DATA, database.bytes);
            change.one_by_one({.program_folder = "home", .files = &disk});
            Text text(database.bytes);
            change.at_once(text);
            EXPECT_EQ(text.bytes(), disk.content(DATA)) << change.what << " in a database " << database.what;
        }
    }
}

// A teacher adds a gas, changes it, and removes it and another one.
TEST(Editor, TouchesNoByteOfTheOtherGases) {
    const std::string before = shipped();
    const std::string counted = std::string(before).replace(before.find("n=60"), 4, "n=61");
    Text text(before);
    EXPECT_EQ(add(text, 60, difluoroethane()), 61);
    EXPECT_EQ(text.bytes(), counted + "\r\n[G61]\r\n" + DIFLUOROETHANE);
    StoredGas gas = read(text, 61);
    gas.constants.hv = 5.2;
    write(text, 61, gas);
    std::string changed = DIFLUOROETHANE;
    changed.replace(changed.find("hv=5.1"), 6, "hv=5.2");
    EXPECT_EQ(text.bytes(), counted + "\r\n[G61]\r\n" + changed);

    EXPECT_TRUE(remove(text, 61, 61));
    EXPECT_EQ(text.bytes(), before + "\r\n");
    EXPECT_TRUE(remove(text, 2, 60));
    const std::size_t second = before.find("[G2]"), third = before.find("[G3]");
    std::string renumbered = before.substr(0, second) + before.substr(third) + "\r\n";
    renumbered.replace(renumbered.find("n=60"), 4, "n=59");
    for (int i = 3; i <= 60; ++i) {
        const std::string header = "[G" + std::to_string(i) + "]";
        renumbered.replace(renumbered.find(header), header.size(), "[G" + std::to_string(i - 1) + "]");
    }
    EXPECT_EQ(text.bytes(), renumbered);
}

TEST(Editor, LeavesTheDatabaseWhereItCannotDoItsWork) {
    const std::string bytes = "[General]\r\nn=2\r\n[G1]\r\nnombre=a\r\n[G2]\nnombre=b\r\n";
    Text text(bytes);
    EXPECT_FALSE(remove(text, 3, 3));
    EXPECT_THROW(add(text, std::numeric_limits<std::int16_t>::max(), difluoroethane()), Overflow);
    EXPECT_EQ(text.bytes(), bytes);
    for (const auto& [name, refused] :
         {std::pair{"β", true}, {"two\nlines", true}, {"[G1]", false}, {"n=\"é\"", false}}) {
        StoredGas gas = difluoroethane();
        gas.constants.name = name;
        TestDisk disk;
        disk.put(DATA, bytes);
        const auto edit = [&] {
            confreg::edit(DATA, {.program_folder = "home", .files = &disk}, [&](Text& t) { add(t, 2, gas); });
        };
        if (refused) {
            EXPECT_THROW(edit(), Error) << name;
            EXPECT_EQ(disk.content(DATA), bytes) << name;
            continue;
        }
        edit();
        Text written(disk.content(DATA));
        EXPECT_TRUE(remove(written, 1, 3));
        EXPECT_EQ(read(written, 2).constants.name, name);
    }
}

TEST(Editor, TakesTheBoxesUpToTheFirstThatIsWrong) {
    const Boxes good{"CO2", "44", "72.8", "304.1", "0.0941", "194.7", "6"};
    struct Row {
        std::string Boxes::*box;
        const char* text;
        int refusal;             // 0: none
        Box where;               // of the refusal
        const char* afterwards;  // text of the box
        double molar_mass, critical_pressure, critical_temperature, critical_volume;
    };
    for (const Row& row : {
             Row{&Boxes::name, "", 200, Box::Name, "", 1, 3, 2, 4},
             Row{&Boxes::name, "  ", 200, Box::Name, "  ", 1, 3, 2, 4},
             Row{&Boxes::pm, "", 201, Box::MolarMass, "", 1, 3, 2, 4},
             Row{&Boxes::pm, "-", 201, Box::MolarMass, "-", 1, 3, 2, 4},
             Row{&Boxes::pm, "0", 201, Box::MolarMass, "0", 1, 3, 2, 4},
             Row{&Boxes::pc, "-1", 202, Box::CriticalPressure, "-1", 44, 3, 2, 4},
             Row{&Boxes::tc, "0.0", 203, Box::CriticalTemperature, "0.0", 44, 72.8, 2, 4},
             Row{&Boxes::tc, "1e3", 0, Box::Name, "1e3", 44, 72.8, 1000, 0.0941},
             Row{&Boxes::vc, "", 0, Box::Name, "0", 44, 72.8, 304.1, 0},
             Row{&Boxes::vc, "-1.0000", 0, Box::Name, "0", 44, 72.8, 304.1, 0},
             Row{&Boxes::vc, "4.0000", 0, Box::Name, "4.0000", 44, 72.8, 304.1, 4},
             Row{&Boxes::teb, "-", 0, Box::Name, "0", 44, 72.8, 304.1, 0.0941},
             Row{&Boxes::hv, "x", 0, Box::Name, "0", 44, 72.8, 304.1, 0.0941},
         }) {
        SCOPED_TRACE(row.text);
        Boxes boxes = good;
        boxes.*row.box = row.text;
        StoredGas gas;
        gas.constants = {.name = "before", .pm = 1, .tc = 2, .vc = 4.00001, .pc = 3, .teb = 5, .hv = 6};
        const auto refusal = take(boxes, gas);
        EXPECT_EQ(refusal ? refusal->text : 0, row.refusal);
        EXPECT_EQ(refusal ? refusal->box : Box::Name, row.where);
        EXPECT_EQ(boxes.*row.box, row.afterwards);
        const GasRecord& g = gas.constants;
        EXPECT_EQ(g.name, row.refusal == 200 ? "before" : "CO2");
        EXPECT_EQ(g.pm, row.molar_mass);
        EXPECT_EQ(g.pc, row.critical_pressure);
        EXPECT_EQ(g.tc, row.critical_temperature);
        EXPECT_EQ(g.vc, row.critical_volume == 4 ? 4.00001 : row.critical_volume);  // as shown: all digits stay
    }
}

TEST(Editor, ShowsWhatTheLoaderWillMakeOfTheGas) {
    StoredGas without_w = difluoroethane(), half = difluoroethane();
    without_w.c[7][2] = without_w.c[8][2] = AUTOMATIC;
    for (auto& set : half.c)
        set = {AUTOMATIC, 0.05, AUTOMATIC, 1e-4};
    half.c[6][2] = 1.3;
    for (const StoredGas& gas : {difluoroethane(), without_w, half, by_hand()}) {
        for (const std::int16_t number : {std::int16_t{12}, std::int16_t{61}}) {
            Text text("");
            write(text, number, gas);
            const StoredGas stored = read(text, number);
            for (int set = 1; set <= SETS; ++set) {
                SCOPED_TRACE(gas.constants.name + ", set " + std::to_string(set));
                double t = 298.15, mu = 1.7, loaders_mu = mu;
                GasRecord loaded;
                Global::cargargas(text, static_cast<EquationOfState>(set), number, true, false, t, loaders_mu, loaded);
                const GasRecord r = derived(stored, set, t, mu, number);
                EXPECT_EQ(mu, loaders_mu);
                EXPECT_EQ(r.name, loaded.name);
                for (double GasRecord::*field :
                     {&GasRecord::a, &GasRecord::b, &GasRecord::c, &GasRecord::d, &GasRecord::pm, &GasRecord::tc,
                      &GasRecord::vc, &GasRecord::pc, &GasRecord::zc, &GasRecord::teb, &GasRecord::hv})
                    EXPECT_EQ(r.*field, loaded.*field);
                const bool all = gas.c[1][0] == AUTOMATIC && gas.c[1][1] == AUTOMATIC;
                EXPECT_EQ(stored.automatic(set), all);
            }
        }
    }
    StoredGas virial;
    virial.c[5][3] = 0.1;
    EXPECT_FALSE(virial.automatic(5));
    double mu = 1.0;
    EXPECT_THROW(derived(difluoroethane(), 6, 298.15, mu), InvalidArgument);
    EXPECT_THROW(derived({}, 1, 298.15, mu), FloatingPointError);
}

// Acentric factors of the literature; the estimate is good to some 0.01 for such gases.
TEST(Editor, EstimatesTheAcentricFactor) {
    struct Row {
        double tc, pc, teb, w;
    };
    for (const Row& row :
         {Row{190.56, 45.39, 111.67, 0.011}, {507.6, 29.85, 341.88, 0.301}, {386.41, 44.61, 249.13, 0.275}})
        EXPECT_NEAR(estimated_acentric_factor(row.tc, row.pc, row.teb).value_or(9), row.w, 0.01);
    for (const Row& row : {Row{300, 50, 0, 0}, {300, 50, 300, 0}, {300, 1, 200, 0}, {0, 50, 200, 0}, {300, 50, -1, 0}})
        EXPECT_FALSE(estimated_acentric_factor(row.tc, row.pc, row.teb)) << row.teb;
}

TEST(Editor, StoppedAtAnyStepLeavesTheOldOrTheNewDatabase) {
    const std::string old_text = "[General]\r\nn=2\r\n[G1]\r\nnombre=CO2\r\n\r\n[G2]\r\nnombre=H2O\r\n";
    for (const Change& change : changes(2)) {
        Text edited(old_text);
        change.at_once(edited);
        const std::string wanted = edited.bytes();
        for (const crash::Kept kept : crash::ALL_KEPT) {
            bool old_found = false, new_found = false;
            for (int stop = 0, stopped = true; stopped; ++stop) {
                TestDisk disk;
                disk.put(DATA, old_text);
                disk.stop_at = stop;
                const confreg::Site site{.program_folder = "home", .files = &disk};
                try {
                    confreg::edit(DATA, site, change.at_once);
                    stopped = false;
                } catch (const crash::Stopped&) {
                }
                disk.restart(kept);
                confreg::recover({DATA}, site);
                const std::string found = disk.content(DATA);
                EXPECT_TRUE(found == old_text || found == wanted) << change.what << " stopped at " << stop;
                old_found = old_found || found == old_text;
                new_found = new_found || found == wanted;
            }
            EXPECT_TRUE(old_found && new_found) << change.what;
        }
    }
}

}  // namespace

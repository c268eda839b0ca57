#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "core/gas_database.h"
#include "core/models.h"
#include "windows/calc/calculos_logica.h"

namespace {

using namespace calculos;
using enum tavo::EquationOfState;
using tavo::EquationOfState;
using tavo::R;

constexpr double TC = 304.2, PC = 72.9, M = 44.01;
constexpr double NAN_ = std::numeric_limits<double>::quiet_NaN();
constexpr double INF = std::numeric_limits<double>::infinity();

/// 1 complete, all coefficients automatic; 2 without critical constants and molar mass; 3 with its own exponent.
const tavo::confreg::Text& database() {
    static const tavo::confreg::Text data = [] {
        std::string automatic = "vc=-1\r\n";
        for (const tavo::Model& model : tavo::models())
            for (int k = 1; k <= model.stored; ++k)
                automatic += "c(" + std::to_string(static_cast<int>(model.number)) + "," + std::to_string(k) +
                             ")=" + (k == 3 && model.number != Virial && model.number != FreeExponent ? "0.2" : "-1") +
                             "\r\n";
        const std::string critical = "tc=304.2\r\npc=72.9\r\n";
        return tavo::confreg::Text("[general]\r\nn=3\r\n[g1]\r\nnombre=uno\r\npm=44.01\r\n" + critical + automatic +
                                   "[g2]\r\nnombre=dos\r\n" + automatic + "[g3]\r\nnombre=tres\r\n" + critical +
                                   "c(6,1)=4\r\nc(6,2)=0.03\r\nc(6,3)=1.8\r\n");
    }();
    return data;
}

SlotTable chosen(EquationOfState model, std::int16_t gas = 1) {
    SlotTable table;
    choose(database(), table[0], gas, model);
    return table;
}

std::optional<Reason> reason_of(SlotTable& table, const Input& input, std::optional<double>* value = nullptr) {
    try {
        solve(database(), table, input);
        return std::nullopt;
    } catch (const Unsolvable& error) {
        if (value)
            *value = error.value();
        return error.reason();
    }
}

void expect_near(double found, double wanted, double tolerance, const std::string& what) {
    EXPECT_NEAR(found, wanted, tolerance * std::abs(wanted)) << what;
}

TEST(CalculosUnits, EveryDoorLeadsToTheBaseUnitAndBack) {
    struct Case {
        Variable variable;
        const char* unit;
        double shown, base, least;
    };
    const Case cases[]{
        {Variable::Amount, "g", 88.02, 2.0, 0.0},
        {Variable::Amount, "mol", 2.0, 2.0, 0.0},
        {Variable::Temperature, "ºC", 26.84, 300.0, -273.16},
        {Variable::Temperature, "ºF", 80.6, 300.0, -459.4},
        {Variable::Temperature, "ºR", 540.6, 300.0, 0.6},
        {Variable::Temperature, "ºRe", 21.472, 300.0, -218.528},
        {Variable::Volume, "cm³", 500.0, 0.5, 0.0},
        {Variable::Pressure, "mmHg", 1520.0, 2.0, 0.0},
    };
    const SlotTable table = chosen(VanDerWaals);
    for (const Case& c : cases) {
        EXPECT_NEAR(to_base(c.variable, c.shown, c.unit, table), c.base, 1e-12) << c.unit;
        EXPECT_NEAR(from_base(c.variable, c.base, c.unit, table), c.shown, 1e-10) << c.unit;
        EXPECT_NEAR(minimum(c.variable, c.unit), c.least, 1e-10) << c.unit;
    }
    const SlotTable no_gas;
    EXPECT_EQ(to_base(Variable::Amount, 2.0, "mol", no_gas), 2.0);
    EXPECT_THROW(to_base(Variable::Amount, 2.0, "g", no_gas), Unsolvable);
    EXPECT_EQ(unknown_of_mode(0), std::nullopt);
    EXPECT_EQ(unknown_of_mode(1), Variable::Pressure);
    EXPECT_EQ(unknown_of_mode(2), Variable::Volume);
    EXPECT_EQ(unknown_of_mode(3), Variable::Temperature);
}

// From a T and V the pressure, from it the volume, from both the temperature: the state comes back.
TEST(CalculosSolve, EveryUnknownLeadsBackToTheState) {
    struct Case {
        double t, v;
    };
    for (const tavo::Model& model : tavo::models())
        for (const Case& c : {Case{280.0, 4.0}, {310.0, 0.35}, {400.0, 0.2}, {900.0, 60.0}})
            for (const double n : {1.0, 0.02, 25.0}) {
                const std::string what = std::string(model.name) + " at " + std::to_string(c.t);
                SlotTable table = chosen(model.number);
                const Output first = solve(database(), table, {Variable::Pressure, n, c.t, n * c.v, NAN_});
                const Output second = solve(database(), table, {Variable::Volume, n, c.t, NAN_, first.p});
                expect_near(second.v, n * c.v, 1e-12, what);
                const Output third = solve(database(), table, {Variable::Temperature, n, NAN_, n * c.v, first.p});
                expect_near(third.t, c.t, 1e-10, what);
                EXPECT_EQ(table[0].temperature, third.t);
                EXPECT_EQ(table[0].moles, n);
                EXPECT_DOUBLE_EQ(table[0].grams, n * M);
                expect_near(tavo::pressure(table[0], third.v), first.p, 1e-9, what);
                EXPECT_EQ(solve_unknown(database(), table, {Variable::Pressure, n, c.t, n * c.v, NAN_}), first.p);
            }
}

// Van der Waals in reduced form at T = 0.9 Tc: p = 7.2/(3v - 1) - 3/v^2, coexistence at 0.64699835 between 0.60340190
// and 2.34884238, spinodals at 0.71859719 and 1.52850496. The other roots are those of the same cubic.
TEST(CalculosPhase, FollowsTheIsothermThroughTheCoexistence) {
    struct Case {
        double v, p;  // reduced
        Phase phase;
        double liquid;
        Root root;
        double stable;  // reduced volume of the stable root, 0: this one
    };
    const Case cases[]{
        {0.55, 1.1595677050, Phase::Liquid, 0.0, Root::Only, 0.0},
        {0.5962317484, 0.69, Phase::Liquid, 0.0, Root::Liquid, 0.0},
        {0.603401903178, 0.646998351872, Phase::Liquid, 0.0, Root::Liquid, 0.0},
        {0.65, 0.4783556524, Phase::SuperheatedLiquid, 0.97330296, Root::Liquid, 3.8693319070},
        {0.7185, 0.4198435481, Phase::SuperheatedLiquid, 0.93405785, Root::Liquid, 4.61255401},
        {0.72, 0.4198595147, Phase::Unstable, 0.93319847, Root::Middle, 4.61232567},
        {1.0, 0.6, Phase::Unstable, 0.77278051, Root::Middle, 2.7207592201},
        {1.2153624545, 0.69, Phase::Unstable, 0.64939477, Root::Middle, 0.5962317484},
        {2.0, 0.69, Phase::SupersaturatedVapour, 0.19985922, Root::Gas, 0.5962317484},
        {2.3488423762, 0.646998351872, Phase::Gas, 0.0, Root::Gas, 0.0},
        {3.0, 0.5666666667, Phase::Gas, 0.0, Root::Gas, 0.0},
        {40.0, 0.0586292017, Phase::Gas, 0.0, Root::Only, 0.0},
    };
    const double n = 3.0, t = 0.9 * TC, vc = 3.0 * R * TC / (8.0 * PC);
    for (const Case& c : cases) {
        SlotTable table = chosen(VanDerWaals);
        const std::string what = "v/vc " + std::to_string(c.v);
        const Output out = solve(database(), table, {Variable::Pressure, n, t, n * c.v * vc, 0.0});
        expect_near(out.p / PC, c.p, 1e-9, what);
        EXPECT_EQ(out.phase, c.phase) << what;
        EXPECT_EQ(two_phase(out.phase), c.liquid > 0.0) << what;
        EXPECT_NEAR(out.liquid_fraction, c.liquid, 1e-8) << what;
        EXPECT_EQ(out.root, c.root) << what;
        EXPECT_NEAR(out.stable_volume.value_or(0.0) / n / vc, c.stable, 1e-7) << what;
        ASSERT_TRUE(out.saturation && out.enthalpy) << what;
        expect_near(out.saturation->pv / PC, 0.6469983518722509, 1e-8, what);
        expect_near(out.saturation->vg / vc, 2.3488423762, 1e-7, what);
    }
    // The same volumes as answers: Newton's method comes from the gas.
    SlotTable table = chosen(VanDerWaals);
    const Output vapour = solve(database(), table, {Variable::Volume, n, t, 0.0, 0.69 * PC});
    expect_near(vapour.v / n / vc, 2.0, 1e-8, "supersaturated");
    expect_near(vapour.stable_volume.value_or(0.0) / n / vc, 0.5962317484, 1e-8, "supersaturated");
    // Stretched: below 0 the liquid is metastable, although the vapour has no pressure like it.
    const double cold = 0.7 * TC;
    const Output stretched = solve(database(), table, {Variable::Pressure, n, cold, n * 0.52 * vc, 0.0});
    EXPECT_LT(stretched.p, 0.0);
    EXPECT_EQ(stretched.phase, Phase::SuperheatedLiquid);
    EXPECT_EQ(stretched.root, Root::Only);
}

TEST(CalculosPhase, OutsideTheCoexistence) {
    struct Case {
        EquationOfState model;
        double t, p;
        Phase phase;
    };
    const Case cases[]{
        {IdealGas, 250.0, 1.0, Phase::IdealGas},
        {VanDerWaals, TC, PC, Phase::Supercritical},
        {PengRobinson, TC + 50.0, PC - 0.1, Phase::Gas},
        {PengRobinson, TC + 50.0, PC, Phase::Supercritical},
        {VanDerWaals, TC - 0.004, 1.0, Phase::Gas},  // no coexistence is given there, but the loop is
        {VanDerWaals, TC - 0.004, 2.0 * PC, Phase::Liquid},
    };
    for (const Case& c : cases) {
        SlotTable table = chosen(c.model);
        const Output out = solve(database(), table, {Variable::Volume, 1.0, c.t, 0.0, c.p});
        EXPECT_EQ(out.phase, c.phase) << tavo::find_model(c.model)->name << ' ' << c.t << ' ' << c.p;
        EXPECT_FALSE(out.saturation || out.enthalpy || out.stable_volume);
    }
    // Coefficients by hand: no loop below the gas's Tc, one above it.
    SlotTable table = chosen(VanDerWaals);
    set_coefficients(table[0], 0.1, 0.04, 0.0, 0.0);
    EXPECT_EQ(solve(database(), table, {Variable::Pressure, 1.0, 250.0, 0.1, 0.0}).phase, Phase::Fluid);
    set_coefficients(table[0], 8.0, 0.04, 0.0, 0.0);
    EXPECT_EQ(solve(database(), table, {Variable::Pressure, 1.0, 350.0, 0.12, 0.0}).phase, Phase::Unstable);
    EXPECT_EQ(solve(database(), table, {Variable::Pressure, 1.0, 350.0, 9.0, 0.0}).phase, Phase::Gas);
    // All of its loop lies at negative pressures, so that nothing coexists.
    SlotTable virial = chosen(Virial);
    set_coefficients(virial[0], -1.0, 0.1, -0.003, 5e-5);
    const Output odd = solve(database(), virial, {Variable::Pressure, 1.0, 250.0, 5.0, 0.0});
    EXPECT_FALSE(odd.saturation);
    EXPECT_LT(odd.p, 0.0);
}

TEST(CalculosReasons, NameWhatIsWrongAndLeaveTheSlot) {
    const double b = R * TC / (8.0 * PC);
    const auto with_mu = [](double mu) {
        SlotTable table = chosen(FreeExponent);
        table[0].mu = mu;
        return table;
    };
    SlotTable no_gas, bad_gas, repulsive = chosen(Dieterici), attractive = chosen(Dieterici);
    EXPECT_THROW(choose(database(), no_gas[0], 0, Soave), Unsolvable);
    EXPECT_THROW(choose(database(), bad_gas[0], 2, Soave), Unsolvable);
    EXPECT_EQ(bad_gas[0].equation, Soave);
    EXPECT_EQ(bad_gas[0].gas.name, "dos");
    set_coefficients(repulsive[0], -4.0, 0.03, 0.0, 0.0);
    set_coefficients(attractive[0], 400.0, 0.03, 0.0, 0.0);
    struct Case {
        SlotTable table;
        Input input;
        Reason reason;
        double value;
    };
    const Case cases[]{
        {no_gas, {Variable::Pressure, 1, 300, 1, 0}, Reason::NoGas, 0},
        {bad_gas, {Variable::Pressure, 1, 300, 1, 0}, Reason::BadGas, 0},
        {with_mu(0.9), {Variable::Volume, 1, 300, 0, 1}, Reason::SmallMu, 0},
        {chosen(VanDerWaals), {Variable::Pressure, 2, 300, 2 * b, 0}, Reason::InsideCovolume, 2 * b},
        {chosen(VanDerWaals), {Variable::Temperature, 2, 0, b, 5}, Reason::InsideCovolume, 2 * b},
        {chosen(Virial), {Variable::Pressure, 1, 300, 0, 0}, Reason::InsideCovolume, 0},
        {chosen(VanDerWaals), {Variable::Volume, 1, 300, 0, -1e4}, Reason::NoVolume, 0},
        {chosen(IdealGas), {Variable::Volume, 1, 300, 0, 0}, Reason::NoVolume, 0},
        {chosen(Dieterici), {Variable::Volume, 1, 250, 0, 200}, Reason::VolumeNotReached, 1},
        {chosen(IdealGas), {Variable::Temperature, 1, 0, 1, -1}, Reason::NoTemperature, 0},
        {chosen(VanDerWaals), {Variable::Temperature, 1, 0, 1, -1e3}, Reason::NoTemperature, 0},
        {repulsive, {Variable::Temperature, 1, 0, 0.5, 1}, Reason::NoTemperature, 0},
        {chosen(IdealGas), {Variable::Pressure, 1, 300, 1e-320, 0}, Reason::NotFinite, 0},
    };
    for (const Case& c : cases) {
        SlotTable table = c.table;
        table[0].temperature = 277.0;
        table[0].moles = 7.0;
        const tavo::GasRecord before = table[0].gas;
        const std::string what = std::string(tavo::find_model(table[0].equation)->name) + ", reason " +
                                 std::to_string(static_cast<int>(c.reason));
        std::optional<double> value;
        const auto reason = reason_of(table, c.input, &value);
        ASSERT_TRUE(reason) << what;
        EXPECT_EQ(*reason, c.reason) << what;
        EXPECT_EQ(table[0].temperature, 277.0) << what;
        EXPECT_EQ(table[0].moles, 7.0) << what;
        EXPECT_EQ(table[0].gas.a, before.a) << what;
        if (c.reason == Reason::VolumeNotReached) {
            table[0].moles = 1.0;
            table[0].temperature = c.input.t;
            expect_near(tavo::pressure(table[0], value.value_or(0.0)), c.input.p, 1e-9, what);
        } else if (c.reason == Reason::InsideCovolume) {
            EXPECT_NEAR(value.value_or(-1.0), c.value, 1e-12) << what;
        }
    }
    SlotTable grams = chosen(IdealGas, 2);
    EXPECT_THROW(moles(1.0, "g", grams[0]), Unsolvable);
}

TEST(CalculosReasons, NoInputBreaksAModel) {
    const double odd[]{NAN_, INF, -INF, 0.0, -1.0, 1e-300, 1e300};
    const double usual[]{1.0, 300.0, 1.0, 20.0};
    for (const tavo::Model& model : tavo::models())
        for (const Variable unknown : {Variable::Temperature, Variable::Volume, Variable::Pressure})
            for (std::size_t place = 0; place < 4; ++place)
                for (const double x : odd) {
                    std::array<double, 4> k{usual[0], usual[1], usual[2], usual[3]};
                    k[place] = x;
                    SlotTable table = chosen(model.number);
                    const Input input{unknown, k[0], k[1], k[2], k[3]};
                    try {
                        const Output out = solve(database(), table, input);
                        EXPECT_TRUE(std::isfinite(out.t) && std::isfinite(out.v) && std::isfinite(out.p))
                            << model.name << ' ' << place << ' ' << x;
                    } catch (const Unsolvable&) {  // a reason is an answer too
                    }
                    EXPECT_EQ(all_models(database(), table, input).size(), 10U);
                }
}

TEST(CalculosSlot, CoefficientsStayOrFollow) {
    SlotTable table = chosen(Soave);
    EquationSlot& slot = table[0];
    const Input at_250{Variable::Pressure, 1.0, 250.0, 2.0, 0.0}, at_280{Variable::Pressure, 1.0, 280.0, 2.0, 0.0};
    solve(database(), table, at_250);
    const double cold = slot.gas.a;
    EXPECT_EQ(cold, tavo::Global::derive(Soave, TC, PC, 0.2, 1.5, 250.0).a) << "the enthalpy left its own temperature";
    solve(database(), table, at_280);
    EXPECT_LT(slot.gas.a, cold) << "automatic coefficients follow the temperature";
    set_coefficients(slot, 5.0, 0.03, 0.2, 0.0);
    solve(database(), table, at_250);
    EXPECT_EQ(slot.gas.a, 5.0) << "those set by hand stay";
    set_automatic(database(), slot);
    EXPECT_EQ(slot.gas.a, cold);
    set_coefficients(slot, 5.0, 0.03, 0.2, 0.0);
    choose(database(), slot, 1, Soave);
    EXPECT_EQ(slot.gas.a, cold) << "a choice ends them";

    SlotTable free = chosen(FreeExponent);
    const double a = free[0].gas.a;
    set_mu(database(), free[0], 2.0);
    EXPECT_NE(free[0].gas.a, a);
    EXPECT_DOUBLE_EQ(free[0].gas.b, R * TC / (8.0 * PC)) << "van der waals";
    for (const double small : {1.0, 0.0, NAN_, INF})
        EXPECT_THROW(set_mu(database(), free[0], small), Unsolvable);
    EXPECT_EQ(free[0].mu, 2.0);
    solve(database(), free, at_280);
    EXPECT_EQ(free[0].mu, 2.0);
    set_automatic(database(), free[0]);
    EXPECT_EQ(free[0].mu, 2.0);

    SlotTable stored = chosen(FreeExponent, 3);
    EXPECT_EQ(stored[0].mu, 1.8);
    set_mu(database(), stored[0], 1.6);
    solve(database(), stored, at_280);
    EXPECT_EQ(stored[0].mu, 1.6) << "the database's exponent does not come back by itself";
    EXPECT_EQ(stored[0].gas.a, 4.0);
}

TEST(CalculosAllModels, EachHasItsOwnCoefficientsButTheSlotsModel) {
    SlotTable table = chosen(VanDerWaals);
    set_coefficients(table[0], 3.0, 0.03, 0.0, 0.0);
    const Input input{Variable::Volume, 2.0, 260.0, 0.0, 15.0};
    const auto rows = all_models(database(), table, input);
    ASSERT_EQ(rows.size(), 10U);
    for (const ModelRow& row : rows) {
        SlotTable own = row.model == VanDerWaals ? table : chosen(row.model);
        const std::string what(tavo::find_model(row.model)->name);
        const Output out = solve(database(), own, input);
        EXPECT_EQ(row.unknown, out.v) << what;
        EXPECT_EQ(row.enthalpy, out.enthalpy) << what;
        EXPECT_EQ(row.saturation.has_value(), row.model != IdealGas) << what;
    }
    EXPECT_EQ(table[0].gas.a, 3.0);
    // What does not depend on the unknown is there without it.
    const auto failed = all_models(database(), table, {Variable::Volume, 2.0, 260.0, 0.0, 200.0})[3];
    EXPECT_EQ(failed.reason, Reason::VolumeNotReached);
    EXPECT_TRUE(failed.saturation && failed.enthalpy && !failed.unknown);
    const auto without_gas = all_models(database(), SlotTable(), input);
    EXPECT_TRUE(without_gas[0].unknown);
    EXPECT_EQ(without_gas[8].reason, Reason::NoGas);
}

}  // namespace

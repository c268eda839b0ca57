// The calculations window, driven by keys and clicks.

#include <QClipboard>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <cmath>
#include <memory>

#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/calc/frmcalculos.h"

namespace {

using tavo::EquationOfState;
using tavo::Global::UnitFamily;

constexpr int WATER = 19;  // checked in init()
const QString NONE = QStringLiteral("no existe");
const char* const RESULTS[] = {"txtpv", "txtvl", "txtvg", "txtdl", "txtdg", "txtdh"};
const char* const ENTRIES[] = {"txtmol", "txttemp", "txtvol", "txtpress"};

QString format(double x, const char* pattern = "####0.0000") {
    return QString::fromStdString(tavo::Format(x, pattern));
}

/// As the state line gives its text, without no-break spaces.
QString plain(QString text) {
    return text.replace(QChar::Nbsp, u' ');
}

/// What core alone says of a gas's model at a temperature.
struct Expected {
    tavo::SlotTable table;
    tavo::calcnum::Saturation saturation{};
    double enthalpy = 0.0;

    Expected(const tavo::confreg::Text& data, int gas, EquationOfState model, double t) {
        table[0].gas_number = static_cast<std::int16_t>(gas);
        table[0].equation = model;
        table[0].temperature = t;
        const auto load = [&](tavo::EquationSlot& slot) { tavo::Global::load_slot(data, slot, true); };
        load(table[0]);
        saturation.pv = tavo::calcnum::vapour_pressure(table, 0, t, saturation.vl, saturation.vg);
        if (saturation.pv > 0.0)
            enthalpy = tavo::calcnum::vaporisation_enthalpy(table, t, saturation.vl, saturation.vg, load);
        load(table[0]);
    }
    double pressure(double v) { return tavo::pressure(table, 0, v); }
};

}  // namespace

class tst_frmcalculos : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void a_fresh_window_shows_its_defaults_and_waits();
    void a_mode_chooses_the_unknown_and_calculates();
    void water_is_as_core_alone_says_in_every_unit();
    void the_enthalpy_waits_for_digits_of_the_pressure();
    void an_entry_that_is_too_small_is_refused_once();
    void the_button_leaves_the_focus_in_its_entry();
    void a_negative_result_that_becomes_given_is_refused_once();
    void what_is_half_typed_counts();
    void units_that_disagree_about_0_K_refuse_nothing();
    void the_unknown_follows_the_markers();
    void grams_are_converted_by_the_molar_mass();
    void a_failed_solve_leaves_the_entries_and_says_why();
    void coefficients_set_by_hand_stay_until_the_next_choice();
    void two_models_bring_a_notice();
    void the_table_shows_all_models_and_is_copied();
    void a_gas_without_critical_constants_gets_a_sentence();
    void everything_is_seen_in_every_language();

private:
    void open(int mode = 0);  // anew
    void close() { delete window_.data(); }
    template <class Control = QLineEdit>
    Control* control(const char* name) const {
        auto* found = window_->findChild<Control*>(QLatin1String(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    QString text(const char* box) const { return control<>(box)->text(); }
    QString state() const { return control<LineaEstado>("txtestado")->toPlainText(); }
    void half_type(const char* entry, const QString& text) const {
        control<>(entry)->setFocus(Qt::TabFocusReason);
        control<>(entry)->selectAll();
        if (text.isEmpty())
            QTest::keyClick(control<>(entry), Qt::Key_Delete);
        QTest::keyClicks(control<>(entry), text);
    }
    void type(const char* entry, const QString& text, Qt::Key leave = Qt::Key_Tab) const {
        half_type(entry, text);
        QTest::keyClick(control<>(entry), leave);
    }
    void click(const char* name) const { QTest::mouseClick(control<QWidget>(name), Qt::LeftButton); }
    void choose(int gas, EquationOfState model) const {
        control<QComboBox>("cmbgas")->setCurrentIndex(gas - 1);
        control<QComboBox>("cmbecu")->setCurrentIndex(static_cast<int>(model));
    }
    void water(const QString& t) const {
        choose(WATER, EquationOfState::Soave);
        type("txttemp", t);
    }
    int shown_boxes(const QString& text) const {
        return static_cast<int>(std::count_if(std::begin(RESULTS), std::end(RESULTS),
                                              [&](const char* box) { return this->text(box) == text; }));
    }

    std::unique_ptr<HogarTemporal> home_;
    MensajesPrueba messages_;
    std::unique_ptr<ApplicationState> estado_;
    QPointer<frmcalculos> window_;
    QStringList status_;
};

void tst_frmcalculos::init() {
    home_ = std::make_unique<HogarTemporal>();
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
    estado_->load_gases();
    estado_->register_window("frmcalculos", [this] { return new frmcalculos(*estado_, messages_); });
    connect(estado_.get(), &ApplicationState::status_changed, this,
            [this](const QString& sentence) { status_ << sentence; });
    QVERIFY(estado_->gas_names()->index(WATER - 1, 0).data().toString().startsWith("H2O"));
    messages_.vistos.clear();
    status_.clear();
    open();
}

void tst_frmcalculos::cleanup() {
    close();
    estado_.reset();
    home_.reset();
}

void tst_frmcalculos::open(int mode) {
    close();
    estado_->calculation_mode = mode;
    window_ = qobject_cast<frmcalculos*>(estado_->window("frmcalculos"));
    window_->show();
    window_->activateWindow();
    if (!QTest::qWaitForWindowActive(window_))
        qFatal("the window is not active");
}

void tst_frmcalculos::a_fresh_window_shows_its_defaults_and_waits() {
    QCOMPARE(window_->windowTitle(), "Calcular f (P,V,T), Pv y Hvap");
    const char* const texts[] = {"1.000", "300.0000", "6.1460", "1.0000"};
    for (std::size_t i = 0; i < std::size(ENTRIES); ++i)
        QCOMPARE(text(ENTRIES[i]), texts[i]);
    QCOMPARE(control<QComboBox>("cmbgas")->currentIndex(), 0);
    QCOMPARE(control<QComboBox>("cmbgas")->count(), 60);
    QCOMPARE(control<QComboBox>("cmbecu")->currentIndex(), 0);
    QCOMPARE(control<QComboBox>("cmbecu")->count(), 10);
    QCOMPARE(control<QLabel>("lbmasa")->text(), "mol");
    QCOMPARE(control<QLabel>("Labelest")->text(), "Equilibrio líquido-vapor");
    QCOMPARE(control<QLabel>("lbbvl")->text(), "Volumen molar del líquido:");
    QCOMPARE(control<QLabel>("lbbvg")->text(), "Volumen molar del gas:");
    QCOMPARE(shown_boxes(QString()), 6);
    QVERIFY(state().contains("«Calcular»"));
    QVERIFY(messages_.vistos.empty());
    click("btcalcular");
    QCOMPARE(text("txtpress"), format(tavo::R * 300.0 / 6.146));
    QCOMPARE(shown_boxes(NONE), 6);
}

void tst_frmcalculos::a_mode_chooses_the_unknown_and_calculates() {
    struct Row {
        int mode;
        const char* unknown;
        double value;
    };
    for (const Row& row : {Row{1, "txtpress", tavo::R * 300.0 / 6.146}, Row{2, "txtvol", tavo::R * 300.0},
                           Row{3, "txttemp", 6.146 / tavo::R}})
        for (const bool opened_before : {false, true}) {
            open(opened_before ? 0 : row.mode);
            if (opened_before)
                emit estado_->calculation_mode_changed(estado_->calculation_mode = row.mode);
            QCOMPARE(text(row.unknown), format(row.value));
            for (const char* entry : ENTRIES)
                QCOMPARE(control<>(entry)->isReadOnly(), QLatin1String(row.unknown) == QLatin1String(entry));
            emit estado_->calculation_mode_changed(estado_->calculation_mode = 0);
            QVERIFY(control<>(row.unknown)->isReadOnly());
        }
}

void tst_frmcalculos::water_is_as_core_alone_says_in_every_unit() {
    water("373");
    Expected core(estado_->data(), WATER, EquationOfState::Soave, 373.0);
    const auto [pv, vl, vg] = core.saturation;
    const double mass = core.table[0].gas.pm;
    QVERIFY(pv > 0.85 && pv < 0.95 && core.enthalpy > 0.0);
    QCOMPARE(text("txtpress"), format(core.pressure(6.146)));
    QVERIFY(state().startsWith("Vapor sobresaturado"));
    QVERIFY(!estado_->calculating);

    namespace global = tavo::Global;
    struct Row {
        const char *box, *label;
        double value;
        UnitFamily family;
        double (*convert)(double, std::string_view, std::string_view);
    };
    for (const Row& row : {Row{"txtpv", "lbpv", pv, UnitFamily::Pressure, global::convertirpresion},
                           Row{"txtvl", "lbvl", vl, UnitFamily::Volume, global::convertirvolumen},
                           Row{"txtvg", "lbvg", vg, UnitFamily::Volume, global::convertirvolumen},
                           Row{"txtdl", "lbdl", mass / vl, UnitFamily::Density, global::convertirdensidad},
                           Row{"txtdg", "lbdg", mass / vg, UnitFamily::Density, global::convertirdensidad},
                           Row{"txtdh", "lbdh", core.enthalpy, UnitFamily::Energy, global::convertirenergia}}) {
        const auto labels = global::unit_labels(row.family);
        for (std::size_t i = 0; i <= labels.size(); ++i) {
            const std::string unit(labels[i % labels.size()]);
            const double shown = row.convert(row.value, labels[0], unit);
            QCOMPARE(control<QLabel>(row.label)->text(), QString::fromStdString(unit));
            QCOMPARE(text(row.box), format(shown, row.family == UnitFamily::Energy ? "###0.00" : "####0.0000"));
            QCOMPARE(control<>(row.box)->toolTip(), QString::fromStdString(tavo::to_text(shown) + ' ' + unit));
            click(row.label);
        }
    }
    water("700");  // no coexistence, in no unit
    QCOMPARE(shown_boxes(NONE), 6);
    for (const char* label : {"lbpv", "lbvl", "lbvg", "lbdl", "lbdg", "lbdh"})
        click(label);
    QCOMPARE(shown_boxes(NONE), 6);
}

void tst_frmcalculos::the_enthalpy_waits_for_digits_of_the_pressure() {
    water("250");
    const Expected core(estado_->data(), WATER, EquationOfState::Soave, 250.0);
    QVERIFY(core.saturation.pv > 0.0 && core.saturation.pv < 0.005);
    QCOMPARE(text("txtpv"), format(core.saturation.pv));
    QCOMPARE(text("txtdh"), QString());
    QVERIFY(control<>("txtdh")->toolTip().contains("0.005 atm"));
    click("lbdh");
    QCOMPARE(text("txtdh"), QString());
    click("lbpv");
    QCOMPARE(text("txtdh"), format(tavo::Global::convertirenergia(core.enthalpy, "atm l", "J"), "###0.00"));
}

void tst_frmcalculos::an_entry_that_is_too_small_is_refused_once() {
    struct Row {
        int mode;
        const char *entry, *label;
        int clicks;
        const char *typed, *message;
    };
    const Row rows[] = {
        {0, "txtmol", "lbmasa", 1, "", "Valor mínimo de la cantidad de materia: 0.00 g"},
        {0, "txttemp", "lbtemp", 3, "0.6", "Valor mínimo de la temperatura: 0.6 ºR"},
        {3, "txtvol", "lbvol", 2, "0", "Valor mínimo del volumen: 0 m³"},
        {2, "txtpress", "lbpress", 0, "0", "Valor mínimo de la presión: 0 atm"},
        {3, "txtpress", "lbpress", 3, ".", "Valor mínimo de la presión: 0 mmHg"},
    };
    for (const Row& row : rows) {
        open(row.mode);
        messages_.vistos.clear();
        choose(WATER, EquationOfState::Soave);
        for (int i = 0; i < row.clicks; ++i)
            click(row.label);
        const auto* entry = control<EntradaNumerica>(row.entry);
        const auto told = [&](std::size_t boxes) {
            QCOMPARE(messages_.vistos.size(), boxes);
            QCOMPARE(messages_.vistos.back().texto, QString::fromUtf8(row.message));
            QCOMPARE(messages_.vistos.back().estilo, 64);
            QVERIFY(entry->hasFocus());
            QCOMPARE(entry->selectedText(), entry->text());
        };
        const double before = estado_->slot_table()[0].temperature;
        type(row.entry, row.typed);
        told(1);
        QCOMPARE(state(), QString::fromUtf8(row.message));
        QCOMPARE(shown_boxes(QString()), 6);
        QCOMPARE(estado_->slot_table()[0].temperature, before);
        QCOMPARE(entry->value(), tavo::Val(row.typed));
        // Each wish to calculate gets one answer: the button, with the entry left and unleft, and the return key.
        click("btcalcular");
        told(2);
        type(row.entry, "7", Qt::Key_Return);
        QCOMPARE(messages_.vistos.size(), 2U);
        half_type(row.entry, "0");
        click("btcalcular");
        told(3);
        type(row.entry, "0", Qt::Key_Return);
        told(4);
        // Other changes do not repeat what has been told.
        choose(WATER, EquationOfState::PengRobinson);
        QCOMPARE(messages_.vistos.size(), 4U);
    }
}

void tst_frmcalculos::the_button_leaves_the_focus_in_its_entry() {
    QMdiArea area;  // whose frames take the focus at a click
    area.addSubWindow(window_)->showMaximized();
    area.resize(1200, 500);
    area.show();
    area.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&area));
    auto* entry = control<>("txttemp");
    QTest::mouseClick(entry, Qt::LeftButton);
    QTest::keyClicks(entry, "0");
    QTest::mousePress(control<QWidget>("btcalcular"), Qt::LeftButton);
    QVERIFY(entry->hasFocus() && messages_.vistos.empty());
    QTest::mouseRelease(control<QWidget>("btcalcular"), Qt::LeftButton);
    QCOMPARE(messages_.vistos.size(), 1U);
    QVERIFY(entry->hasFocus());
    close();
}

void tst_frmcalculos::a_negative_result_that_becomes_given_is_refused_once() {
    choose(WATER, EquationOfState::VanDerWaals);
    type("txttemp", "300");
    type("txtvol", "0.06");  // inside the loop
    QVERIFY(text("txtpress").startsWith('-'));
    click("lbbvol");
    QCOMPARE(messages_.vistos.size(), 1U);
    QCOMPARE(messages_.vistos.back().texto, "Valor mínimo de la presión: 0 atm");
    QVERIFY(control<>("txtpress")->hasFocus());
}

void tst_frmcalculos::what_is_half_typed_counts() {
    choose(WATER, EquationOfState::VanDerWaals);
    const double b = estado_->slot_table()[0].gas.b;
    const auto pressure = [b](double v) { return format(tavo::R * 300.0 / (v - b) - 9.0 / (v * v)); };
    half_type("txta", "9");
    click("btcalcular");  // which takes no focus, nor does a label
    QCOMPARE(text("txtpress"), pressure(6.146));
    half_type("txtvol", "12");
    click("lbvol");
    QCOMPARE(text("txtpress"), pressure(12.0));
    half_type("txtvol", "0");
    click("lbbtemp");
    QTest::keyClick(control<>("txtvol"), Qt::Key_Tab);  // the refusal has been told
    QCOMPARE(messages_.vistos.size(), 1U);
    click("lbvol");
    QCOMPARE(state(), "Valor mínimo del volumen: 0 m³");
}

void tst_frmcalculos::units_that_disagree_about_0_K_refuse_nothing() {
    type("txttemp", "0.1");
    const QString pressure = text("txtpress");
    for (int unit = 0; unit < 5; ++unit) {
        click("lbtemp");
        control<>("txtpress")->clear();
        click("btcalcular");
        QCOMPARE(text("txtpress"), pressure);
    }
    QVERIFY(messages_.vistos.empty());
}

void tst_frmcalculos::the_unknown_follows_the_markers() {
    water("700");
    // Around the circle by whole values: what four decimals leave would not come back.
    type("txtvol", "0.3");
    const QString pressure = text("txtpress");
    click("lbbvol");
    QCOMPARE(text("txtvol"), "0.3000");
    click("lbbtemp");
    QCOMPARE(text("txttemp"), "700.0000");
    QCOMPARE(control<QLabel>("lbbtemp")->palette().color(QPalette::WindowText), QColor(255, 0, 0));
    QVERIFY(control<QLabel>("lbbvol")->palette().color(QPalette::WindowText) != QColor(255, 0, 0));
    click("lbbpress");
    QCOMPARE(text("txtpress"), pressure);
    // The spin buttons calculate too.
    QTest::keyClick(control<>("txttemp"), Qt::Key_Up);
    QVERIFY(text("txtpress") != pressure);
}

void tst_frmcalculos::grams_are_converted_by_the_molar_mass() {
    water("373");
    const Expected core(estado_->data(), WATER, EquationOfState::Soave, 373.0);
    const QString one_mole = text("txtpress");
    click("lbmasa");
    QCOMPARE(text("txtmol"), "1.000");  // now grams: another state
    QVERIFY(text("txtpress") != one_mole);
    type("txtmol", QString::fromStdString(tavo::to_text(core.table[0].gas.pm)));
    QCOMPARE(text("txtpress"), one_mole);
    QCOMPARE(estado_->slot_table()[0].moles, 1.0);
}

void tst_frmcalculos::a_failed_solve_leaves_the_entries_and_says_why() {
    water("373");
    const QString pressure = text("txtpress");
    status_.clear();
    type("txtvol", "0.01");  // less than the molecules take up
    QCOMPARE(text("txtvol"), "0.0100");
    QCOMPARE(text("txtpress"), pressure);
    QCOMPARE(shown_boxes(QString()), 6);
    QVERIFY(state().contains("covolumen"));
    QVERIFY(control<LineaEstado>("txtestado")->is_fault());
    QCOMPARE(status_.size(), 1);
    QCOMPARE(plain(status_[0]), state());
    click("lbvol");  // in the unit shown
    click("lbvol");
    QVERIFY(state().contains("m³"));
    type("txtvol", "0.006");
    QCOMPARE(status_.last(), QString());
    QVERIFY(!control<LineaEstado>("txtestado")->is_fault());
    QVERIFY(!text("txtpv").isEmpty());
    // Nothing but a number or nothing is ever shown.
    control<QComboBox>("cmbgas")->setCurrentIndex(-1);
    for (const char* entry : ENTRIES)
        QVERIFY(std::isfinite(control<>(entry)->text().toDouble()));
    QVERIFY(messages_.vistos.empty());
}

void tst_frmcalculos::coefficients_set_by_hand_stay_until_the_next_choice() {
    water("373");
    const QString automatic = text("txta"), pressure = text("txtpress"), enthalpy = text("txtdh");
    type("txta", "7.5");
    QVERIFY(text("txtpress") != pressure);
    type("txttemp", "400");
    QCOMPARE(text("txta"), "7.50000");
    type("txttemp", "373");
    click("btautomatico");
    QCOMPARE(text("txta"), automatic);
    estado_->slot_table()[0] = {};  // by another window
    click("btcalcular");
    QCOMPARE(text("txtpress"), pressure);
    QCOMPARE(text("txtdh"), enthalpy);
    QCOMPARE(estado_->slot_table()[0].gas_number, WATER);
    type("txta", "7.5");
    choose(WATER, EquationOfState::PengRobinson);
    choose(WATER, EquationOfState::Soave);
    QCOMPARE(text("txta"), automatic);
}

void tst_frmcalculos::two_models_bring_a_notice() {
    choose(WATER, EquationOfState::Virial);
    QCOMPARE(messages_.vistos.size(), 1U);
    QCOMPARE(messages_.vistos[0].texto, estado_->texto(87) + '\r' + estado_->texto(88) + '\r' + estado_->texto(89));
    QCOMPARE(messages_.vistos[0].estilo, 64);
    QCOMPARE(text("txtpress"),
             format(Expected(estado_->data(), WATER, EquationOfState::Virial, 300.0).pressure(6.146)));
    choose(WATER, EquationOfState::FreeExponent);
    const QString pressure = text("txtpress");
    type("txtmu", "1", Qt::Key_Return);  // not above 1
    QCOMPARE(messages_.vistos.size(), 2U);
    QCOMPARE(messages_.vistos[1].texto, estado_->texto(93));
    QCOMPARE(text("txtmu"), "1.5000");
    type("txtmu", "1.7");
    QVERIFY(text("txtpress") != pressure);
    QCOMPARE(messages_.vistos.size(), 2U);
}

void tst_frmcalculos::the_table_shows_all_models_and_is_copied() {
    water("373");
    auto* table = control<QTableWidget>("gridmodelos");
    QVERIFY(!table->isVisible());
    control<QWidget>("bttabla")->setFocus();
    QTest::keyClick(control<QWidget>("bttabla"), Qt::Key_Space);
    QVERIFY(table->isVisible());
    QCOMPARE(table->rowCount(), 10);
    const int own = static_cast<int>(EquationOfState::Soave);
    const auto cell = [table](int row, int column) { return table->item(row, column)->text(); };
    const char* const same[] = {"txtpress", "txtpv", "txtvl", "txtvg", "txtdh"};
    for (int column = 1; column <= 5; ++column)
        QCOMPARE(cell(own, column), text(same[column - 1]));
    QVERIFY(table->item(own, 0)->font().bold() && !table->item(own - 1, 0)->font().bold());
    QCOMPARE(cell(0, 2), NONE);
    for (const auto& [row, model] : {std::pair{1, EquationOfState::VanDerWaals}, {8, EquationOfState::PengRobinson}}) {
        Expected core(estado_->data(), WATER, model, 373.0);
        QCOMPARE(cell(row, 1), format(core.pressure(6.146)));
        QCOMPARE(cell(row, 2), format(core.saturation.pv));
        QCOMPARE(cell(row, 5), format(core.enthalpy, "###0.00"));
    }
    click("lbpv");
    click("lbtemp");
    QCOMPARE(table->horizontalHeaderItem(2)->text(), "Pv (Pa)");
    QCOMPARE(cell(own, 2), text("txtpv"));
    QVERIFY(control<QLabel>("lbexperimental")->text().contains("ºC"));

    click("btcopiar");
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 12);
    QCOMPARE(lines[0].split('\t').size(), 6);
    QCOMPARE(lines[own + 1].split('\t')[2] + " Pa", control<>("txtpv")->toolTip());
    QCOMPARE(status_.last(), "Tabla copiada");
    table->setRangeSelected({own, 1, own + 1, 2}, true);
    table->setFocus();
    QTest::keyClick(table, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts)[0],
             lines[own + 1].section('\t', 1, 2));

    // A volume that no model but some can have: each of the others says why.
    type("txtvol", "0.02");
    QCOMPARE(cell(own, 1), "-----");
    QVERIFY(plain(table->item(own, 1)->toolTip()).contains(state()));
    QCOMPARE(cell(own, 3), format(Expected(estado_->data(), WATER, EquationOfState::Soave, 373.0).saturation.vl));
    type("txtvol", "0");
    QCOMPARE(cell(own, 1), QString());
}

void tst_frmcalculos::a_gas_without_critical_constants_gets_a_sentence() {
    water("373");
    // Without critical constants there is a sentence and no result; with another gas it goes on.
    QByteArray data = home_->read("data");
    const qsizetype section = data.indexOf("[G" + QByteArray::number(WATER) + "]");
    const qsizetype line = data.indexOf("tc=", section);
    QVERIFY(section > 0 && line > section);
    data.replace(line, data.indexOf('\r', line) - line, "tc=0");
    home_->write("data", data);
    estado_->reload_gases();
    QVERIFY(control<LineaEstado>("txtestado")->is_fault());
    QCOMPARE(shown_boxes(QString()), 6);
    choose(WATER + 1, EquationOfState::Soave);
    QVERIFY(!control<LineaEstado>("txtestado")->is_fault());
    QVERIFY(messages_.vistos.empty());
    // With such a gas at the head of the list the window opens all the same.
    close();
    home_->write("data", "[General]\r\nn=1\r\n[G1]\r\nnombre=X\r\ntc=0\r\npc=0\r\nvc=1\r\n");
    estado_->reload_gases();
    open(1);
    choose(1, EquationOfState::VanDerWaals);
    QVERIFY(control<LineaEstado>("txtestado")->is_fault());
    QCOMPARE(status_.last(), state());
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    window_->close();
    QCOMPARE(status_.last(), QString());
}

void tst_frmcalculos::everything_is_seen_in_every_language() {
    const QByteArray table = home_->read("idioma.lng");
    for (const char* language : {"Espa\361ol", "English", "Fran\347ais", "Deutsch", "Italiano", "Portugu\352s"}) {
        QByteArray active = table;
        home_->write("idioma.lng", active.replace("idioma=Espa\xF1ol", QByteArray("idioma=") + language));
        estado_->invalidate_languages();
        estado_->load_languages();
        open();
        water("373");
        const auto* scrolled = window_->findChild<QScrollArea*>();
        window_->resize(window_->sizeHint());
        QTRY_COMPARE(scrolled->verticalScrollBar()->maximum(), 0);
        QCOMPARE(scrolled->horizontalScrollBar()->maximum(), 0);
        QVERIFY2(window_->width() <= 1340 && window_->height() <= 580, language);
        for (const QSize& small : {QSize(680, 250), QSize(480, 300)}) {
            window_->resize(small);
            QTRY_COMPARE(scrolled->horizontalScrollBar()->maximum(), 0);  // a small window scrolls one way only
        }
        for (const QLabel* label : window_->findChildren<QLabel*>())
            if (label->isVisible() && !label->wordWrap())
                QVERIFY2(label->width() >= label->minimumSizeHint().width(), qPrintable(label->text()));
    }
}

QTEST_MAIN(tst_frmcalculos)
#include "tst_frmcalculos.moc"

// The laboratory, driven by drags, keys and clicks.

#include <QComboBox>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <cmath>
#include <memory>

#include "core/slots.h"
#include "shell/application_state.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/lab/frmoperaciones.h"

namespace {

using calculos::Variable;
using calculos::VARIABLES;
using laboratorio::Instrument;

constexpr int VIRIAL = 5, FREE_EXPONENT = 6, PENG_ROBINSON = 8;
constexpr const char* ENTRIES[] = {"txtmol", "txttemp", "txtvol", "txtpress"};
constexpr const char* UNITS[] = {"lbmasa", "lbtemp", "lbvol", "lbpress"};
constexpr const char* MARKERS[] = {nullptr, "lbbtemp", "lbbvol", "lbbpress"};
constexpr const char* SPINS[] = {"UpDown0", "UpDown1", "UpDown2", "UpDown3"};

constexpr std::size_t at(Variable variable) {
    return static_cast<std::size_t>(variable);
}

}  // namespace

class tst_frmoperaciones : public QObject {
    Q_OBJECT
private slots:
    void init() { open(false, false); }
    void cleanup();

    void a_fresh_window_shows_a_state_that_agrees_with_itself();
    void a_drag_follows_its_table();
    void the_end_of_a_scale_survives_the_conversion();
    void a_value_off_the_scale_is_pinned_and_told();
    void the_other_instrument_takes_the_value_over();
    void an_entry_beyond_its_limits_is_refused_once();
    void nothing_is_calculated_while_an_entry_is_empty();
    void boxes_wait_for_the_hand_to_let_go();
    void a_press_that_leaves_an_entry_does_what_it_pressed();
    void a_drag_to_zero_is_answered_after_the_drag();
    void keys_tell_once_that_they_leave_the_scale();
    void a_held_spin_button_tells_once_after_its_release();
    void units_change_the_numbers_and_not_the_state();
    void gas_model_and_exponent_are_loaded();

private:
    void open(bool with_thermocouple, bool with_manometer);
    template <class Control>
    Control* control(const char* name) const {
        auto* found = window_->findChild<Control*>(QLatin1String(name));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    Instrumento* instrument(Instrument kind) const {
        static constexpr const char* NAMES[] = {"pctpiston", "termometro", "termopar", "barometro1", "Manometro"};
        return control<Instrumento>(NAMES[static_cast<std::size_t>(kind)]);
    }
    /// The one in use.
    Instrumento* instrument(Variable variable) const {
        return instrument(variable == Variable::Volume ? Instrument::Piston
                          : variable == Variable::Temperature
                              ? (estado_->thermocouple_in_use ? Instrument::Thermocouple : Instrument::Thermometer)
                              : (estado_->manometer_in_use ? Instrument::Manometer : Instrument::Barometer));
    }
    QLineEdit* entry(Variable variable) const { return control<QLineEdit>(ENTRIES[at(variable)]); }
    Variable unknown() const {
        for (const Variable v : {Variable::Temperature, Variable::Volume})
            if (control<MarcaIncognita>(MARKERS[at(v)])->is_unknown())
                return v;
        return Variable::Pressure;
    }
    void click(const char* name) { QTest::mouseClick(control<QWidget>(name), Qt::LeftButton); }
    void type(Variable variable, const char* text) {
        entry(variable)->setFocus(Qt::TabFocusReason);
        entry(variable)->selectAll();
        if (*text)
            QTest::keyClicks(entry(variable), text);
        else
            QTest::keyClick(entry(variable), Qt::Key_Delete);
        QTest::keyClick(entry(variable), Qt::Key_Return);
    }
    /// A quarter of a mole of ideal gas at 300 K in 6.146 l: about 1 atm, inside every scale.
    void mild_state(Variable its_unknown) {
        type(Variable::Amount, "0.25");
        if (its_unknown != Variable::Pressure)
            click(MARKERS[at(its_unknown)]);
        messages_.vistos.clear();
    }
    static QPoint place(Instrumento* instrument, double value) {
        const double y = laboratorio::place_of(instrument->kind(), value, instrument->height());
        return {instrument->width() / 2, static_cast<int>(std::lround(y))};
    }
    void press(Instrumento* on, double value) { QTest::mousePress(on, Qt::LeftButton, {}, place(on, value)); }
    void release(Instrumento* on, double value) { QTest::mouseRelease(on, Qt::LeftButton, {}, place(on, value)); }
    void drag(Instrumento* on, double value) {
        press(on, value);
        QTest::mouseMove(on, place(on, value) + QPoint(1, 0));
        release(on, value);
    }
    void model(int number) { control<QComboBox>("cmbecu")->setCurrentIndex(number); }
    QString state_line() const { return control<LineaEstado>("lbestado")->toPlainText(); }
    QString last_message() const { return messages_.vistos.empty() ? QString() : messages_.vistos.back().texto; }
    std::size_t boxes() const { return messages_.vistos.size(); }

    HogarTemporal home_;
    MensajesPrueba messages_;
    std::unique_ptr<ApplicationState> estado_;
    std::unique_ptr<frmoperaciones> window_;
};

void tst_frmoperaciones::open(bool with_thermocouple, bool with_manometer) {
    window_.reset();
    messages_.vistos.clear();
    estado_ = std::make_unique<ApplicationState>(home_.path());
    estado_->load_languages();
    estado_->load_gases();
    estado_->thermocouple_in_use = with_thermocouple;
    estado_->manometer_in_use = with_manometer;
    window_ = std::make_unique<frmoperaciones>(*estado_, messages_);
    window_->resize(1350, 620);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_frmoperaciones::cleanup() {
    window_.reset();
    estado_.reset();
}

void tst_frmoperaciones::a_fresh_window_shows_a_state_that_agrees_with_itself() {
    QCOMPARE(window_->windowTitle(), "Operaciones");
    QCOMPARE(unknown(), Variable::Pressure);
    QCOMPARE(entry(Variable::Amount)->text(), "1.000");
    QCOMPARE(entry(Variable::Temperature)->text(), "300.00");
    QCOMPARE(entry(Variable::Volume)->text(), "6.15");
    QCOMPARE(entry(Variable::Pressure)->text(), "4.0055");  // above the barometer: the entry keeps its decimals
    QCOMPARE(instrument(Variable::Temperature)->value(), 300.0);
    QCOMPARE(instrument(Variable::Volume)->value(), 6.146);
    QVERIFY(instrument(Variable::Pressure)->pinned());
    QCOMPARE(boxes(), 0U);  // opening a window is no reason for a box
    QVERIFY(control<QToolButton>("bttermometro")->isChecked() && control<QToolButton>("btbarometro")->isChecked());
    QCOMPARE(control<Instrumento>("pctpiston")->accessibleName(), "Volumen");
    QCOMPARE(control<Instrumento>("pctpiston")->spoken_value(), "6.15 l");
    window_->resize(1366, 600);  // of a small screen
    QCoreApplication::processEvents();
    for (const QScrollArea* area : window_->findChildren<QScrollArea*>())
        QVERIFY(!area->horizontalScrollBar()->isVisible() && !area->verticalScrollBar()->isVisible());
}

void tst_frmoperaciones::a_drag_follows_its_table() {
    using enum calculos::Variable;
    for (const auto& [kind, value] : {std::pair{Instrument::Piston, 4.0},
                                      {Instrument::Thermometer, 330.0},
                                      {Instrument::Thermocouple, 700.0},
                                      {Instrument::Barometer, 1.5},
                                      {Instrument::Manometer, 250.0}}) {
        for (const Variable before : {Temperature, Volume, Pressure}) {
            open(kind == Instrument::Thermocouple, kind == Instrument::Manometer);
            mild_state(before);
            Instrumento* hand = instrument(kind);
            const Variable dragged = laboratorio::variable(kind);
            const Variable after = laboratorio::unknown_after_drag(kind, before);
            const auto third =
                static_cast<Variable>(at(Temperature) + at(Volume) + at(Pressure) - at(dragged) - at(after));
            const double kept = instrument(third)->value();
            tavo::EquationSlot& shared = estado_->slot_table()[0];  // as another window left it
            shared = {};
            shared.equation = tavo::EquationOfState::PengRobinson;
            shared.gas_number = 7;
            drag(hand, value);
            QCOMPARE(unknown(), after);
            QVERIFY(std::abs(hand->value() - value) < laboratorio::scale(kind).graduation);
            QCOMPARE(entry(dragged)->text(), QString::number(hand->value(), 'f', 2));
            QCOMPARE(instrument(third)->value(), kept);
            const double t = instrument(Temperature)->value();
            const double ratio = instrument(Pressure)->value() * instrument(Volume)->value() / (0.25 * tavo::R * t);
            QVERIFY2(std::abs(ratio - 1.0) < 1e-12, qPrintable(QString::number(ratio)));
            QCOMPARE(boxes(), instrument(after)->pinned() ? 1U : 0U);
        }
    }
}

void tst_frmoperaciones::the_end_of_a_scale_survives_the_conversion() {
    mild_state(Variable::Pressure);
    click("lbtemp");  // ºC
    Instrumento* thermometer = instrument(Instrument::Thermometer);
    press(thermometer, 300.0);
    QTest::mouseMove(thermometer, QPoint(5, -200));
    QCOMPARE(entry(Variable::Temperature)->text(), "100.00");
    QTest::mouseMove(thermometer, QPoint(5, thermometer->height() + 200));
    QCOMPARE(entry(Variable::Temperature)->text(), "0.00");
    release(thermometer, 273.16);
    QCOMPARE(boxes(), 0U);
}

void tst_frmoperaciones::a_value_off_the_scale_is_pinned_and_told() {
    using enum calculos::Variable;
    struct Row {
        Variable variable;
        const char* text;
        bool coarse;  // thermocouple, manometer
        int message;
        const char* shown;
    };
    for (const Row& row : {Row{Temperature, "400", true, 0, "400.00"}, Row{Temperature, "373.16", false, 0, "373.16"},
                           Row{Temperature, "273.15", false, 91, "273.1500"}, Row{Volume, "10", true, 0, "10.00"},
                           Row{Volume, "10.5", true, 90, "10.5000"}, Row{Pressure, "3", false, 94, "3.0000"},
                           Row{Pressure, "3", true, 0, "3.00"}, Row{Pressure, "501", true, 95, "501.0000"}}) {
        open(row.coarse, row.coarse);
        mild_state(row.variable == Pressure ? Volume : Pressure);
        type(row.variable, row.text);
        QCOMPARE(boxes(), row.message ? 1U : 0U);
        QCOMPARE(last_message(), row.message ? estado_->texto(row.message) : QString());
        QCOMPARE(entry(row.variable)->text(), row.shown);
        QCOMPARE(instrument(row.variable)->value(), QByteArray(row.text).toDouble());
        QCOMPARE(instrument(row.variable)->pinned(), row.message != 0);
        if (row.message) {
            QCOMPARE(messages_.vistos.back().estilo, 64);
            QVERIFY(state_line().endsWith('\n' + estado_->texto(row.message)));
        }
    }
}

void tst_frmoperaciones::the_other_instrument_takes_the_value_over() {
    mild_state(Variable::Volume);
    type(Variable::Temperature, "400");
    type(Variable::Pressure, "3");
    messages_.vistos.clear();
    click("bttermopar");
    click("btmanometro");
    QVERIFY(estado_->thermocouple_in_use && estado_->manometer_in_use);
    QVERIFY(!control<QToolButton>("bttermometro")->isChecked());
    QVERIFY(instrument(Instrument::Thermocouple)->isVisible() && !instrument(Instrument::Thermometer)->isVisible());
    QCOMPARE(instrument(Instrument::Thermocouple)->value(), 400.0);
    QCOMPARE(instrument(Instrument::Manometer)->value(), 3.0);
    QCOMPARE(boxes(), 0U);
    QVERIFY(!state_line().contains('\n'));
    click("bttermometro");
    QCOMPARE(last_message(), estado_->texto(91));
    click("btbarometro");
    QCOMPARE(last_message(), estado_->texto(94));
    QCOMPARE(boxes(), 2U);
}

void tst_frmoperaciones::an_entry_beyond_its_limits_is_refused_once() {
    using enum calculos::Variable;
    struct Row {
        Variable variable;
        int unit_clicks;
        const char* text;
        int message;
        const char* limit;
    };
    for (const Row& row : {Row{Amount, 0, "", 77, "0 mol"}, Row{Amount, 1, "1001", 78, "1000 g"},
                           Row{Temperature, 0, "0", 79, "0 ºK"}, Row{Temperature, 2, "2000", 80, "1340.6 ºF"},
                           Row{Volume, 0, "2000.1", 82, "2000 l"}, Row{Volume, 3, "0", 81, "0 cm³"},
                           Row{Pressure, 0, "0", 83, "0 atm"}, Row{Pressure, 2, "2000", 84, "1013.25 bar"}}) {
        open(false, false);
        mild_state(row.variable == Pressure ? Volume : Pressure);
        for (int i = 0; i < row.unit_clicks; ++i)
            click(UNITS[at(row.variable)]);
        messages_.vistos.clear();
        const double answer = instrument(unknown())->value();
        const QLineEdit* box = entry(row.variable);
        type(row.variable, row.text);
        QCOMPARE(boxes(), 1U);  // not a second one of the instrument
        QCOMPARE(last_message(), estado_->texto(row.message) + ' ' + QString::fromUtf8(row.limit));
        QCOMPARE(messages_.vistos.back().estilo, 64);
        QVERIFY(box->hasFocus());
        QCOMPARE(box->selectedText(), box->text());
        QCOMPARE(box->text().toDouble(), QByteArray(row.text).toDouble());
        QVERIFY(control<LineaEstado>("lbestado")->is_fault());
        QCOMPARE(instrument(unknown())->value(), answer);
        type(row.variable, "0.5");
        QVERIFY(!control<LineaEstado>("lbestado")->is_fault() || row.variable == Temperature);
    }
}

void tst_frmoperaciones::nothing_is_calculated_while_an_entry_is_empty() {
    mild_state(Variable::Pressure);
    const QString pressure = entry(Variable::Pressure)->text();
    entry(Variable::Volume)->clear();
    type(Variable::Temperature, "350");
    QCOMPARE(entry(Variable::Pressure)->text(), pressure);
    QCOMPARE(entry(Variable::Volume)->text(), QString());
    QVERIFY(control<LineaEstado>("lbestado")->is_fault());
    QCOMPARE(boxes(), 0U);
    // A fault elsewhere does not keep a value off its scale that has come back.
    type(Variable::Volume, "12");
    type(Variable::Temperature, "0");
    QVERIFY(state_line().contains(estado_->texto(90)));
    type(Variable::Volume, "5");
    QVERIFY(!state_line().contains(estado_->texto(90)));
    QVERIFY(state_line().contains(estado_->texto(79)));
}

void tst_frmoperaciones::boxes_wait_for_the_hand_to_let_go() {
    mild_state(Variable::Pressure);
    Instrumento* piston = instrument(Instrument::Piston);
    press(piston, 4.0);
    for (const double litres : {2.5, 2.0, 1.5})
        QTest::mouseMove(piston, place(piston, litres));
    QVERIFY(instrument(Instrument::Barometer)->pinned());
    QVERIFY(state_line().endsWith(estado_->texto(94)));
    QCOMPARE(boxes(), 0U);
    release(piston, 1.5);
    QCOMPARE(boxes(), 1U);
    QCOMPARE(last_message(), estado_->texto(94));
    // Back inside before the hand lets go: nothing to tell.
    press(piston, 1.5);
    QTest::mouseMove(piston, place(piston, 6.0));
    release(piston, 6.0);
    QCOMPARE(boxes(), 1U);
    QVERIFY(!state_line().contains('\n'));
}

void tst_frmoperaciones::a_press_that_leaves_an_entry_does_what_it_pressed() {
    mild_state(Variable::Pressure);
    const auto type_only = [this](const char* kelvin) {
        entry(Variable::Temperature)->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(entry(Variable::Temperature), kelvin);
    };
    // As the screen sends it: only so does the program know that a button is down.
    QWindow* screen = window_->windowHandle();
    const auto place_of = [this](QWidget* control) { return control->mapTo(window_.get(), control->rect().center()); };
    type_only("400");
    Instrumento* piston = instrument(Instrument::Piston);
    QTest::mousePress(screen, Qt::LeftButton, {}, place_of(piston));
    QVERIFY(instrument(Instrument::Thermometer)->pinned());
    QVERIFY(std::abs(piston->value() - 5.0) < 0.1);
    QCOMPARE(boxes(), 0U);
    QTest::mouseRelease(screen, Qt::LeftButton, {}, place_of(piston));
    QTRY_COMPARE(boxes(), 1U);
    QCOMPARE(last_message(), estado_->texto(91));
    // The press on the button that takes the better instrument: nothing is off its scale any more.
    type_only("410");
    QTest::mouseClick(screen, Qt::LeftButton, {}, place_of(control<QToolButton>("bttermopar")));
    QCOMPARE(instrument(Variable::Temperature)->value(), 410.0);
    QVERIFY(estado_->thermocouple_in_use);
    QTest::qWait(10);
    QCOMPARE(boxes(), 1U);
}

void tst_frmoperaciones::a_drag_to_zero_is_answered_after_the_drag() {
    for (const Instrument kind : {Instrument::Piston, Instrument::Thermocouple, Instrument::Manometer}) {
        open(true, kind != Instrument::Piston);
        mild_state(kind == Instrument::Manometer ? Variable::Volume : Variable::Pressure);
        Instrumento* hand = instrument(kind);
        const Variable answer = unknown();
        press(hand, hand->value());
        QTest::mouseMove(hand, QPoint(4, hand->height() - 2));
        QCOMPARE(instrument(answer)->pinned(), kind == Instrument::Piston);
        const double before = instrument(answer)->value();
        for (int i = 0; i < 3; ++i)
            QTest::mouseMove(hand, QPoint(4 + i, hand->height() + 50));
        QCOMPARE(hand->value(), 0.0);
        QCOMPARE(instrument(answer)->value(), before);
        const int message = laboratorio::limits(laboratorio::variable(kind)).below;
        QVERIFY(state_line().startsWith(estado_->texto(message)));
        QCOMPARE(boxes(), 0U);
        release(hand, 0.0);
        QCOMPARE(boxes(), 1U);  // not of the last answer's scale as well
        QVERIFY(last_message().startsWith(estado_->texto(message)));
        QVERIFY(!entry(laboratorio::variable(kind))->hasFocus());
        QVERIFY(!estado_->calculating);
        drag(hand, hand->kind() == Instrument::Piston ? 6.0 : 400.0);
        QVERIFY(!control<LineaEstado>("lbestado")->is_fault());
    }
}

void tst_frmoperaciones::keys_tell_once_that_they_leave_the_scale() {
    mild_state(Variable::Pressure);
    Instrumento* piston = instrument(Instrument::Piston);
    piston->setFocus();
    QTest::keyClick(piston, Qt::Key_Up);
    QVERIFY(std::abs(piston->value() - 6.346) < 1e-9);
    QTest::keyClick(piston, Qt::Key_Down, Qt::ShiftModifier);
    QVERIFY(std::abs(piston->value() - 6.326) < 1e-9);
    QTest::keyClick(piston, Qt::Key_PageDown);
    QVERIFY(std::abs(piston->value() - 4.326) < 1e-9);
    QCOMPARE(unknown(), Variable::Pressure);
    QCOMPARE(boxes(), 0U);
    for (int i = 0; i < 8; ++i)
        QTest::keyClick(piston, Qt::Key_Down);
    QVERIFY(instrument(Instrument::Barometer)->pinned());
    QCOMPARE(boxes(), 1U);
    QTest::keyClick(piston, Qt::Key_PageUp);
    QTest::keyClick(piston, Qt::Key_PageDown);  // out again
    QCOMPARE(boxes(), 2U);
    QTest::keyClick(piston, Qt::Key_Home);  // 0 l
    QTest::keyClick(piston, Qt::Key_Down);
    QCOMPARE(boxes(), 3U);
    QVERIFY(last_message().startsWith(estado_->texto(81)));
    QVERIFY(piston->hasFocus());
    type(Variable::Volume, "9.5");
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(entry(Variable::Volume), Qt::Key_Up);
    QVERIFY(piston->pinned());
    QCOMPARE(boxes(), 4U);
    QCOMPARE(last_message(), estado_->texto(90));
}

void tst_frmoperaciones::a_held_spin_button_tells_once_after_its_release() {
    mild_state(Variable::Pressure);
    type(Variable::Temperature, "371");
    QToolButton* up = control<UpDown>(SPINS[at(Variable::Temperature)])->findChildren<QToolButton*>().front();
    up->setAutoRepeatDelay(1);
    up->setAutoRepeatInterval(1);
    QTest::mousePress(up, Qt::LeftButton);
    QTRY_VERIFY(entry(Variable::Temperature)->text().toDouble() > 380.0);
    QVERIFY(instrument(Instrument::Thermometer)->pinned());
    QCOMPARE(boxes(), 0U);
    QTest::mouseRelease(up, Qt::LeftButton);
    QTRY_COMPARE(boxes(), 1U);
    QCOMPARE(last_message(), estado_->texto(91));
    QTest::mouseClick(up, Qt::LeftButton);  // still outside
    QTest::qWait(10);
    QCOMPARE(boxes(), 1U);
}

void tst_frmoperaciones::units_change_the_numbers_and_not_the_state() {
    mild_state(Variable::Pressure);
    const double p = instrument(Variable::Pressure)->value();
    using enum calculos::Variable;
    for (const auto& [variable, first, unit, shown] :
         {std::tuple{Temperature, 2, "ºF", 80.312}, {Volume, 3, "cm³", 6146.0}, {Pressure, 1, "Pa", p * 101325}}) {
        for (int i = 1; i <= (variable == Temperature ? 5 : 4); ++i) {
            click(UNITS[at(variable)]);
            const QString label = control<QLabel>(UNITS[at(variable)])->text();
            QVERIFY(instrument(variable)->spoken_value().endsWith(' ' + label));
            if (i == first) {
                QCOMPARE(label, QString::fromUtf8(unit));
                QVERIFY(std::abs(entry(variable)->text().toDouble() - shown) < 1e-4);
            }
            QCOMPARE(instrument(Temperature)->value(), 300.0);
            QCOMPARE(instrument(Volume)->value(), 6.146);
            QCOMPARE(instrument(Pressure)->value(), p);
        }
    }
    click("lbmasa");  // so many grams
    QCOMPARE(entry(Variable::Amount)->text().toDouble(), 0.25);
    QVERIFY(instrument(Variable::Pressure)->value() < 0.6 * p);
    click("lbmasa");
    QCOMPARE(instrument(Variable::Pressure)->value(), p);
    QCOMPARE(boxes(), 0U);
}

void tst_frmoperaciones::gas_model_and_exponent_are_loaded() {
    mild_state(Variable::Pressure);
    const double ideal = instrument(Variable::Pressure)->value();
    auto* gases = control<QComboBox>("cmbgas");
    gases->setCurrentIndex(gases->findText("CO2 ", Qt::MatchStartsWith));
    model(PENG_ROBINSON);
    const double real = instrument(Variable::Pressure)->value();
    QVERIFY(real < 0.999 * ideal && real > 0.98 * ideal);
    QCOMPARE(boxes(), 0U);
    // A coefficient counts although its box still has the focus.
    auto* b = control<QLineEdit>("txtb");
    b->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(b, "2");
    QTest::mouseClick(control<UpDown>(SPINS[at(Variable::Temperature)])->findChildren<QToolButton*>().front(),
                      Qt::LeftButton);
    QVERIFY(instrument(Variable::Pressure)->value() > 1.05 * ideal);  // 0.25 mol of it take up half a litre
    QCOMPARE(boxes(), 0U);
    model(VIRIAL);
    QCOMPARE(boxes(), 1U);
    QCOMPARE(last_message(), estado_->texto(87) + '\r' + estado_->texto(88) + '\r' + estado_->texto(89));
    model(FREE_EXPONENT);
    auto* mu = control<QLineEdit>("txtmu");
    const QString before = mu->text();
    mu->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(mu, "0.9");
    QTest::keyClick(mu, Qt::Key_Return);
    QCOMPARE(boxes(), 2U);
    QCOMPARE(last_message(), estado_->texto(93));
    QCOMPARE(mu->text(), before);
    // A gas that is taken away leaves a window that can be used.
    home_.write("data", "[general]\r\nn=0\r\n");
    estado_->reload_gases();
    QVERIFY(control<LineaEstado>("lbestado")->is_fault());
    QCOMPARE(boxes(), 2U);
    model(0);
    QVERIFY(!control<LineaEstado>("lbestado")->is_fault());
}

QTEST_MAIN(tst_frmoperaciones)
#include "tst_frmoperaciones.moc"

// The rows of a state that two windows share, driven by keys and clicks.

#include <QDialog>
#include <QGridLayout>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <memory>

#include "controls/filas_estado.h"
#include "core/numtext.h"
#include "shell/application_state.h"
#include "shell/paletas.h"
#include "tests/windows/support/hogar_temporal.h"

namespace {

using Variable = calculos::Variable;
using calculos::VARIABLES;
constexpr Variable AMOUNT = Variable::Amount, TEMPERATURE = Variable::Temperature, VOLUME = Variable::Volume,
                   PRESSURE = Variable::Pressure;

/// The rows above a default button, as in a window.
struct Window : QWidget {
    Window() : estado(hogar.path()) {
        estado.load_languages();
        auto* column = new QVBoxLayout(this);
        rows = new FilasEstado([this](int number, const QString& literal) { return estado.texto(number, literal); },
                               estado.slot_table(), this);
        button = new QPushButton(QStringLiteral("Calcular"), this);
        column->addWidget(rows);
        column->addWidget(button);
        rows->show_text(AMOUNT, QStringLiteral("1.000"));
        rows->show_text(TEMPERATURE, QStringLiteral("300.0000"));
        rows->show_text(VOLUME, QStringLiteral("6.1460"));
        rows->show_text(PRESSURE, QStringLiteral("1.0000"));
        connect(rows, &FilasEstado::edited, this, [this](Variable variable) { edited << variable; });
        connect(rows, &FilasEstado::unknown_chosen, this, [this](Variable variable) { chosen << variable; });
        connect(rows, &FilasEstado::unit_changed, this, [this](Variable variable) { units << variable; });
        show();
        activateWindow();
    }

    void keyPressEvent(QKeyEvent* event) override { returns += event->key() == Qt::Key_Return; }

    template <class Control = QLabel>
    Control* at(const char* name) const {
        return findChild<Control*>(QLatin1String(name));
    }
    void click(const char* name) const { QTest::mouseClick(at<QWidget>(name), Qt::LeftButton); }
    QToolButton* spin_button(Variable variable, bool down) const {
        return rows->spin(variable)->findChildren<QToolButton*>()[down ? 1 : 0];
    }
    void type(Variable variable, const char* text) const {
        rows->entry(variable)->setFocus(Qt::TabFocusReason);
        QTest::keyClicks(rows->entry(variable), QLatin1String(text));
    }

    HogarTemporal hogar;
    ApplicationState estado;
    FilasEstado* rows;
    QPushButton* button;
    QList<Variable> edited, chosen, units;
    int returns = 0;
};

}  // namespace

class tst_filas_estado : public QObject {
    Q_OBJECT
private slots:
    void init() {
        w_ = std::make_unique<Window>();
        QVERIFY(QTest::qWaitForWindowActive(w_.get()));
    }
    void cleanup() {
        w_.reset();
        QApplication::setPalette(paleta_clara());
    }

    void a_click_on_a_unit_steps_it_and_keeps_the_value_data();
    void a_click_on_a_unit_steps_it_and_keeps_the_value();
    void a_text_that_was_typed_is_converted_in_full();
    void keys_step_a_unit_both_ways();
    void the_number_of_an_amount_stays_in_the_other_unit();
    void an_untouched_entry_keeps_its_whole_value();
    void leaving_an_entry_announces_another_value_once();
    void the_return_key_announces_or_reaches_the_window();
    void numbers_too_long_for_the_entry_take_an_exponent();
    void a_marker_makes_its_variable_the_unknown();
    void the_unknown_cannot_be_typed_or_stepped();
    void silent_rows_do_not_answer();
    void the_colours_follow_the_desktop();
    void steps_follow_the_order_of_the_value_data();
    void steps_follow_the_order_of_the_value();
    void a_button_held_down_repeats_and_never_reaches_zero();
    void a_box_that_opens_ends_the_repetition();
    void limits_hold_in_every_unit();
    void nothing_moves_when_units_and_the_unknown_change();
    void mnemonics_lead_to_the_entries();

private:
    std::unique_ptr<Window> w_;
};

void tst_filas_estado::a_click_on_a_unit_steps_it_and_keeps_the_value_data() {
    QTest::addColumn<int>("variable");
    QTest::addColumn<QString>("label");
    QTest::addColumn<double>("value");
    QTest::addColumn<QStringList>("texts");
    const auto add = [](const char* label, Variable variable, double value, const QStringList& texts) {
        QTest::newRow(label) << static_cast<int>(variable) << label << value << texts;
    };
    add("lbtemp", TEMPERATURE, 300.0,
        {"26.8400 ºC", "80.3120 ºF", "540.3120 ºR", "21.4720 ºRe", "300.0000 ºK", "26.8400 ºC"});
    add("lbvol", VOLUME, 6.14604321, {"6.1460 dm³", "0.0061 m³", "6146.0432 cm³", "6.1460 l"});
    add("lbpress", PRESSURE, 1.0 / 3.0, {"33775.0000 Pa", "0.3378 bar", "253.3333 mmHg", "0.3333 atm"});
}

void tst_filas_estado::a_click_on_a_unit_steps_it_and_keeps_the_value() {
    QFETCH(int, variable);
    QFETCH(QString, label);
    QFETCH(double, value);
    QFETCH(QStringList, texts);
    const auto which = static_cast<Variable>(variable);
    const QByteArray name = label.toLatin1();
    for (const Variable unknown : {which, which == PRESSURE ? VOLUME : PRESSURE}) {  // the answer's unit steps too
        w_->rows->set_unknown(unknown);
        auto* unit = w_->at<EtiquetaUnidad>(name);
        while (unit->unit() != texts.at(texts.size() - 1 - (which == TEMPERATURE)).section(u' ', 1))
            QTest::mouseClick(unit, Qt::LeftButton);
        w_->rows->show_value(which, value);
        w_->units.clear();
        for (const QString& text : texts) {
            w_->click(name);
            QCOMPARE(w_->rows->entry(which)->text() + u' ' + unit->unit(), text);
            QCOMPARE(w_->rows->unit(which), unit->unit());
            QVERIFY(w_->rows->value(which) == value);  // to the last bit
            QCOMPARE(unit->accessibleName().section(u' ', -1), unit->unit());
        }
        QCOMPARE(w_->units, QList<Variable>(texts.size(), which));
        QVERIFY(w_->edited.isEmpty());
    }
}

void tst_filas_estado::a_text_that_was_typed_is_converted_in_full() {
    w_->type(VOLUME, "0.02468135");
    w_->click("lbvol");  // the focus stays in the entry
    w_->click("lbvol");
    w_->click("lbvol");
    QCOMPARE(w_->rows->entry(VOLUME)->text(), "24.6814");
    QCOMPARE(w_->rows->shown_value(VOLUME), 24.68135);
    QCOMPARE(w_->rows->value(VOLUME), 0.02468135);
}

void tst_filas_estado::keys_step_a_unit_both_ways() {
    auto* unit = w_->at<EtiquetaUnidad>("lbtemp");
    QVERIFY(unit->focusPolicy() & Qt::TabFocus);
    unit->setFocus(Qt::TabFocusReason);
    QVERIFY(unit->font().underline());
    struct Step {
        Qt::Key key;
        const char* unit;
    };
    for (const Step& step : {Step{Qt::Key_Up, "ºRe"}, Step{Qt::Key_Down, "ºK"}, Step{Qt::Key_Space, "ºC"},
                             Step{Qt::Key_Return, "ºF"}, Step{Qt::Key_Up, "ºC"}}) {
        QTest::keyClick(unit, step.key);
        QCOMPARE(unit->unit(), QString::fromUtf8(step.unit));
    }
    QCOMPARE(w_->returns, 0);
    w_->rows->entry(AMOUNT)->setFocus();
    QVERIFY(!unit->font().underline());
    QTest::mouseClick(unit, Qt::RightButton);
    QTest::mousePress(unit, Qt::LeftButton);
    QTest::mouseRelease(unit, Qt::LeftButton, {}, QPoint(-20, -20));  // let go elsewhere
    QCOMPARE(unit->unit(), "ºC");
}

void tst_filas_estado::the_number_of_an_amount_stays_in_the_other_unit() {
    w_->rows->show_value(AMOUNT, 2.0 / 3.0);
    for (const char* unit : {"g", "mol"}) {
        w_->click("lbmasa");
        QCOMPARE(w_->rows->unit(AMOUNT), unit);
        QCOMPARE(w_->rows->entry(AMOUNT)->text(), "0.6667");
        QVERIFY(w_->rows->value(AMOUNT) == 2.0 / 3.0);
    }
    QCOMPARE(w_->units, (QList<Variable>{AMOUNT, AMOUNT}));
}

void tst_filas_estado::an_untouched_entry_keeps_its_whole_value() {
    const double third = 1.0 / 3.0;
    EntradaNumerica* entry = w_->rows->entry(VOLUME);
    w_->rows->show_value(VOLUME, third, "###0.00");
    QCOMPARE(entry->text(), "0.33");
    entry->setFocus(Qt::TabFocusReason);
    QTest::keyClick(entry, Qt::Key_Tab);
    QCOMPARE(entry->text(), "0.3333");
    QVERIFY(w_->rows->value(VOLUME) == third);
    QVERIFY(w_->edited.isEmpty());
    // The same digits typed mean themselves.
    w_->type(VOLUME, "0.3333");
    QCOMPARE(w_->rows->value(VOLUME), 0.3333);
    QTest::keyClick(entry, Qt::Key_Tab);
    QCOMPARE(w_->edited, QList<Variable>{VOLUME});
    // So does one digit added and taken away again.
    w_->rows->show_value(VOLUME, third);
    entry->setFocus(Qt::TabFocusReason);
    QTest::keyClick(entry, Qt::Key_End);
    QTest::keyClicks(entry, "5");
    QTest::keyClick(entry, Qt::Key_Backspace);
    QCOMPARE(w_->rows->value(VOLUME), 0.3333);
}

void tst_filas_estado::leaving_an_entry_announces_another_value_once() {
    struct Case {
        const char *typed, *text;
        double value;
        bool announced;
    };
    for (const Case& c :
         {Case{"350.123456", "350.1235", 350.123456, true}, Case{"350.123456", "350.1235", 350.123456, false},
          Case{".", "0.0000", 0.0, true}, Case{"7", "7.0000", 7.0, true}}) {
        w_->edited.clear();
        w_->type(TEMPERATURE, c.typed);
        QVERIFY(w_->edited.isEmpty());
        for (int i = 0; i < 2; ++i) {
            QTest::keyClick(w_->rows->entry(TEMPERATURE), Qt::Key_Tab);
            w_->rows->entry(TEMPERATURE)->setFocus(Qt::TabFocusReason);
        }
        QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), c.text);
        QCOMPARE(w_->rows->value(TEMPERATURE), c.value);
        QCOMPARE(w_->edited, c.announced ? QList<Variable>{TEMPERATURE} : QList<Variable>{});
    }
}

void tst_filas_estado::the_return_key_announces_or_reaches_the_window() {
    EntradaNumerica* entry = w_->rows->entry(VOLUME);
    w_->type(VOLUME, "5");
    QTest::keyClick(entry, Qt::Key_Return);
    QCOMPARE(entry->text(), "5.0000");
    QCOMPARE(w_->edited, QList<Variable>{VOLUME});
    QCOMPARE(w_->returns, 0);  // one calculation, not two
    QTest::keyClick(entry, Qt::Key_Return);
    QCOMPARE(w_->edited.size(), 1);
    QCOMPARE(w_->returns, 1);
}

void tst_filas_estado::numbers_too_long_for_the_entry_take_an_exponent() {
    w_->rows->show_value(VOLUME, 1.25e30);
    QCOMPARE(w_->rows->entry(VOLUME)->text(), "1.25E+30");
    w_->rows->entry(VOLUME)->setFocus(Qt::TabFocusReason);
    QTest::keyClick(w_->rows->entry(VOLUME), Qt::Key_Tab);
    QCOMPARE(w_->rows->value(VOLUME), 1.25e30);
}

void tst_filas_estado::a_marker_makes_its_variable_the_unknown() {
    const auto choose = [this](const char* marker, int way) {
        auto* label = w_->at<MarcaIncognita>(marker);
        if (way == 0)
            return w_->click(marker);
        label->setFocus(Qt::TabFocusReason);
        QTest::keyClick(label, way == 1 ? Qt::Key_Space : Qt::Key_Return);
    };
    struct Row {
        Variable variable;
        const char *marker, *unit;
    };
    const Row rows[] = {
        {TEMPERATURE, "lbbtemp", "lbtemp"}, {VOLUME, "lbbvol", "lbvol"}, {PRESSURE, "lbbpress", "lbpress"}};
    for (int way = 0; way < 3; ++way)
        for (const Row& chosen : rows) {
            w_->chosen.clear();
            choose(chosen.marker, way);
            choose(chosen.marker, way);  // again: the window calculates again
            QCOMPARE(w_->chosen, (QList<Variable>{chosen.variable, chosen.variable}));
            QCOMPARE(w_->rows->unknown(), chosen.variable);
            for (const Row& row : rows) {
                const bool red = row.variable == chosen.variable;
                auto* marker = w_->at<MarcaIncognita>(row.marker);
                EntradaNumerica* entry = w_->rows->entry(row.variable);
                QCOMPARE(marker->is_unknown(), red);
                QCOMPARE(marker->font().bold(), red);
                QCOMPARE(marker->accessibleDescription().isEmpty(), !red);
                QCOMPARE(marker->palette().color(QPalette::WindowText) == QColor(255, 0, 0), red);
                QCOMPARE(w_->at(row.unit)->palette().color(QPalette::WindowText) == QColor(255, 0, 0), red);
                QCOMPARE(entry->palette().color(QPalette::Text) == QColor(255, 0, 0), red);
                QCOMPARE(entry->isReadOnly(), red);
                QCOMPARE(w_->rows->spin(row.variable)->isEnabled(), !red);
            }
        }
    QCOMPARE(w_->returns, 0);
}

void tst_filas_estado::the_unknown_cannot_be_typed_or_stepped() {
    w_->rows->show_value(PRESSURE, 2.0 / 3.0, "##0.00");
    w_->type(PRESSURE, "9");
    QTest::keyClick(w_->rows->entry(PRESSURE), Qt::Key_Up);
    QTest::mouseClick(w_->spin_button(PRESSURE, false), Qt::LeftButton);
    QCOMPARE(w_->rows->entry(PRESSURE)->selectedText(), "0.67");  // can be copied
    QTest::keyClick(w_->rows->entry(PRESSURE), Qt::Key_Tab);
    QCOMPARE(w_->rows->entry(PRESSURE)->text(), "0.67");
    QVERIFY(w_->rows->value(PRESSURE) == 2.0 / 3.0);
    QVERIFY(w_->edited.isEmpty());
}

void tst_filas_estado::silent_rows_do_not_answer() {
    for (const bool silent : {true, false}) {
        w_->rows->set_silent(silent);
        w_->click("lbbvol");
        w_->click("lbtemp");
        QTest::keyClick(w_->at("lbmasa"), Qt::Key_Space);
        QCOMPARE(w_->rows->unknown(), silent ? PRESSURE : VOLUME);
        QCOMPARE(w_->units.size(), silent ? 0 : 2);
        QCOMPARE(w_->at("lbtemp")->cursor().shape(), silent ? Qt::ArrowCursor : Qt::PointingHandCursor);
    }
}

void tst_filas_estado::the_colours_follow_the_desktop() {
    for (const QPalette& palette : {paleta_oscura(), paleta_clara()}) {
        QApplication::setPalette(palette);
        QCoreApplication::processEvents();
        for (const char* name : {"lbbtemp", "lbtemp", "Label6"})
            QCOMPARE(w_->at(name)->palette().color(QPalette::WindowText), palette.color(QPalette::WindowText));
        QCOMPARE(w_->rows->entry(VOLUME)->palette().color(QPalette::Text), palette.color(QPalette::Text));
        QCOMPARE(w_->rows->entry(PRESSURE)->palette().color(QPalette::Text), QColor(255, 0, 0));
        QCOMPARE(w_->rows->entry(PRESSURE)->palette().color(QPalette::Base), palette.color(QPalette::Base));
    }
}

void tst_filas_estado::steps_follow_the_order_of_the_value_data() {
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("steps");
    QTest::addColumn<QString>("then");
    QTest::newRow("litres") << 6.146 << 1 << "6.246";
    QTest::newRow("pascals") << 101325.0 << -1 << "91325";
    QTest::newRow("after a power of ten") << 91325.0 << -1 << "90325";
    QTest::newRow("below one") << 0.9 << 1 << "0.91";
    QTest::newRow("across ten upwards") << 9.9 << 2 << "11";
    QTest::newRow("across ten downwards") << 11.0 << -2 << "9.9";
    QTest::newRow("a thousand is exact") << 1000.0 << -1 << "990";
    QTest::newRow("a page key from small") << 0.0012 << -10 << "0.00092";
    QTest::newRow("from nothing") << 0.0 << 1 << "1";
    QTest::newRow("nothing stays") << 0.0 << -1 << "0";
    QTest::newRow("the limit") << 999999.0 << 1 << "1000000";
    QTest::newRow("above the limit") << 3e6 << 1 << "3000000";
    QTest::newRow("whole values keep their digits") << 2.0 / 3.0 << 1 << "0.67666666667";
}

void tst_filas_estado::steps_follow_the_order_of_the_value() {
    QFETCH(double, value);
    QFETCH(int, steps);
    QFETCH(QString, then);
    EntradaNumerica entry;
    UpDown spin;
    spin.bind(&entry);
    spin.set_range(0.0, 1e6);
    spin.set_adaptive();
    entry.set_exact(value, QStringLiteral("shown"));
    spin.step(steps);
    QCOMPARE(entry.text(), then);
}

void tst_filas_estado::a_button_held_down_repeats_and_never_reaches_zero() {
    QSignalSpy steps(w_->rows->spin(VOLUME), &UpDown::Change);
    w_->rows->show_value(VOLUME, 0.02);
    QToolButton* down = w_->spin_button(VOLUME, true);
    QTest::mousePress(down, Qt::LeftButton);
    QTRY_VERIFY(steps.size() >= 15);
    QTest::mouseRelease(down, Qt::LeftButton);
    QVERIFY(w_->rows->value(VOLUME) > 0.0 && w_->rows->value(VOLUME) < 0.01);
    QCOMPARE(w_->edited.size(), steps.size());
    QCOMPARE(w_->edited.back(), VOLUME);
    QTest::mouseClick(w_->spin_button(TEMPERATURE, false), Qt::LeftButton);
    QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), "301.0000");
}

void tst_filas_estado::a_box_that_opens_ends_the_repetition() {
    QToolButton* up = w_->spin_button(TEMPERATURE, false);
    QDialog box;
    int most = 0;
    connect(w_->rows, &FilasEstado::edited, this, [&] {
        QTimer::singleShot(4 * up->autoRepeatInterval(), &box, &QDialog::accept);
        box.exec();
        most = static_cast<int>(w_->edited.size());
    });
    QTest::mousePress(up, Qt::LeftButton);
    QTRY_VERIFY(most > 0);
    QCOMPARE(most, 1);
    QVERIFY(!up->isDown());
}

void tst_filas_estado::limits_hold_in_every_unit() {
    w_->rows->set_range(TEMPERATURE, 0.0, 1000.0);
    w_->rows->show_value(TEMPERATURE, 270.0);
    w_->click("lbtemp");
    QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), "-3.1600");
    QTest::mouseClick(w_->spin_button(TEMPERATURE, true), Qt::LeftButton);
    QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), "-4.1600");  // not pulled up to 0
    w_->rows->spin(TEMPERATURE)->step(-1000);
    QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), "-273.1600");
    w_->rows->spin(TEMPERATURE)->step(5000);
    QCOMPARE(w_->rows->value(TEMPERATURE), 1000.0);
}

void tst_filas_estado::nothing_moves_when_units_and_the_unknown_change() {
    const auto places = [this] {
        QCoreApplication::processEvents();
        QList<QRect> all;
        for (const auto* widget : w_->rows->findChildren<QWidget*>())
            all << widget->geometry();
        return all;
    };
    const QList<QRect> before = places();
    for (const char* name : {"lbbtemp", "lbbvol", "lbmasa", "lbtemp", "lbtemp", "lbpress", "lbpress", "lbpress"}) {
        w_->click(name);
        QCOMPARE(places(), before);
    }
    for (const Variable variable : VARIABLES) {
        QCOMPARE(w_->rows->entry(variable)->x(), w_->rows->entry(AMOUNT)->x());
        QCOMPARE(w_->rows->entry(variable)->width(), w_->rows->entry(AMOUNT)->width());
    }
}

void tst_filas_estado::mnemonics_lead_to_the_entries() {
    const char letters[] = {'n', 'm', 'v', 'r'};
    for (const Variable variable : {PRESSURE, AMOUNT, VOLUME, TEMPERATURE}) {
        QTest::keyClick(w_->windowHandle(), letters[static_cast<std::size_t>(variable)], Qt::AltModifier);
        QVERIFY2(w_->rows->entry(variable)->hasFocus(), qPrintable(w_->rows->entry(variable)->objectName()));
    }
    QCOMPARE(w_->at("Label6")->text(), "Ca&ntidad:");
    QVERIFY(w_->chosen.isEmpty());
}

QTEST_MAIN(tst_filas_estado)
#include "tst_filas_estado.moc"

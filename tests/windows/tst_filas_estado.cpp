// The rows of a state that two windows share, driven by keys and clicks.

#include <QAccessible>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

#include <memory>

#include "controls/filas_estado.h"
#include "shell/application_state.h"
#include "shell/paletas.h"
#include "tests/windows/support/hogar_temporal.h"

namespace {

using Variable = calculos::Variable;
constexpr Variable AMOUNT = Variable::Amount, TEMPERATURE = Variable::Temperature, VOLUME = Variable::Volume,
                   PRESSURE = Variable::Pressure;

/// The rows in a window that counts what reaches it.
struct Window : QWidget {
    Window() : estado(hogar.path()) {
        estado.load_languages();
        auto* column = new QVBoxLayout(this);
        rows = new FilasEstado([this](int number, const QString& literal) { return estado.texto(number, literal); },
                               [] { return 0.0; }, this);
        column->addWidget(rows);
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

    void a_click_on_a_unit_steps_it_and_keeps_the_value();
    void a_text_that_was_typed_is_converted_in_full();
    void keys_and_screen_readers_step_a_unit();
    void an_untouched_entry_keeps_its_whole_value();
    void an_entry_announces_another_value_once();
    void a_marker_makes_its_variable_the_unknown();
    void the_unknown_cannot_be_typed_or_stepped();
    void silent_rows_do_not_answer();
    void the_colours_follow_the_desktop();
    void steps_follow_the_order_of_the_value();
    void a_button_held_down_repeats_and_never_reaches_zero();
    void a_box_that_opens_ends_the_repetition();
    void limits_hold_in_every_unit();
    void nothing_moves_when_units_and_the_unknown_change();
    void mnemonics_lead_to_the_entries();

private:
    void leave(Variable variable) const { QTest::keyClick(w_->rows->entry(variable), Qt::Key_Tab); }
    std::unique_ptr<Window> w_;
};

void tst_filas_estado::a_click_on_a_unit_steps_it_and_keeps_the_value() {
    struct Case {
        Variable variable;
        const char* label;
        double value;
        QStringList texts;
    };
    const Case cases[] = {
        {TEMPERATURE, "lbtemp", 300.0, {"26.8400 ºC", "80.3120 ºF", "540.3120 ºR", "21.4720 ºRe", "300.0000 ºK"}},
        {VOLUME, "lbvol", 6.14604321, {"6.1460 dm³", "0.0061 m³", "6146.0432 cm³", "6.1460 l"}},
        {PRESSURE, "lbpress", 1.0 / 3.0, {"33775.0000 Pa", "0.3378 bar", "253.3333 mmHg", "0.3333 atm"}},
        {AMOUNT, "lbmasa", 2.0 / 3.0, {"0.6667 g", "0.6667 mol"}},
    };
    for (const Variable unknown : {VOLUME, PRESSURE}) {  // the answer's unit steps too
        w_->rows->set_unknown(unknown);
        for (const Case& c : cases) {
            w_->units.clear();
            w_->rows->show_value(c.variable, c.value);
            for (const QString& text : c.texts) {
                w_->click(c.label);
                QCOMPARE(w_->rows->entry(c.variable)->text() + u' ' + w_->rows->unit(c.variable), text);
                QVERIFY(w_->rows->value(c.variable) == c.value);  // to the last bit
                QVERIFY(w_->at(c.label)->accessibleName().endsWith(u' ' + w_->rows->unit(c.variable)));
            }
            QCOMPARE(w_->units, QList<Variable>(c.texts.size(), c.variable));
        }
    }
    QVERIFY(w_->edited.isEmpty());
}

void tst_filas_estado::a_text_that_was_typed_is_converted_in_full() {
    w_->type(VOLUME, "0.02468135");
    for (int i = 0; i < 3; ++i)
        w_->click("lbvol");  // the focus stays in the entry
    QCOMPARE(w_->rows->entry(VOLUME)->text(), "24.6814");
    QCOMPARE(w_->rows->shown_value(VOLUME), 24.68135);
    QCOMPARE(w_->rows->value(VOLUME), 0.02468135);
    QCOMPARE(w_->edited, QList{VOLUME});  // told at the first click, and not again by whatever comes after
    w_->click("lbvol");
    w_->type(TEMPERATURE, "350");
    w_->click("lbbvol");
    leave(TEMPERATURE);
    QCOMPARE(w_->edited, QList{VOLUME});
}

void tst_filas_estado::keys_and_screen_readers_step_a_unit() {
    auto* unit = w_->at<EtiquetaUnidad>("lbtemp");
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
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(unit);
    QCOMPARE(spoken->role(), QAccessible::Button);
    QCOMPARE(spoken->text(QAccessible::Name), "Temperatura: ºC");
    spoken->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    QCOMPARE(unit->unit(), "ºF");
    w_->rows->entry(AMOUNT)->setFocus();
    QVERIFY(!unit->font().underline());
    QTest::mouseClick(unit, Qt::RightButton);
    QTest::mousePress(unit, Qt::LeftButton);
    QTest::mouseRelease(unit, Qt::LeftButton, {}, QPoint(-20, -20));  // let go elsewhere
    QCOMPARE(unit->unit(), "ºF");
}

void tst_filas_estado::an_untouched_entry_keeps_its_whole_value() {
    EntradaNumerica* entry = w_->rows->entry(VOLUME);
    for (const auto& [value, shown, left] :
         {std::tuple{1.0 / 3.0, "0.33", "0.3333"}, {1.25e30, "1.25E+30", "1.25E+30"}}) {
        w_->rows->show_value(VOLUME, value, "###0.00");
        QCOMPARE(entry->text(), shown);
        entry->setFocus(Qt::TabFocusReason);
        leave(VOLUME);
        QCOMPARE(entry->text(), left);
        QVERIFY(w_->rows->value(VOLUME) == value);
    }
    QVERIFY(w_->edited.isEmpty());
    // A digit added and taken away again: the digits mean themselves.
    w_->rows->show_value(VOLUME, 1.0 / 3.0);
    entry->setFocus(Qt::TabFocusReason);
    QTest::keyClick(entry, Qt::Key_End);
    QTest::keyClicks(entry, "5");
    QTest::keyClick(entry, Qt::Key_Backspace);
    QCOMPARE(w_->rows->value(VOLUME), 0.3333);
    leave(VOLUME);
    QCOMPARE(w_->edited, QList<Variable>{VOLUME});
}

void tst_filas_estado::an_entry_announces_another_value_once() {
    EntradaNumerica* entry = w_->rows->entry(TEMPERATURE);
    struct Case {
        const char *typed, *text;
        double value;
        bool announced;
    };
    for (const Qt::Key end : {Qt::Key_Tab, Qt::Key_Return})
        for (const Case& c :
             {Case{"350.123456", "350.1235", 350.123456, true}, Case{"350.123456", "350.1235", 350.123456, false},
              Case{".", "0.0000", 0.0, true}, Case{"7", "7.0000", 7.0, true}}) {
            w_->edited.clear();
            w_->returns = 0;
            w_->type(TEMPERATURE, c.typed);
            QVERIFY(w_->edited.isEmpty());
            QTest::keyClick(entry, end);
            QCOMPARE(entry->text(), c.text);
            QCOMPARE(entry->hasSelectedText(), end == Qt::Key_Return);  // the next number replaces it
            QCOMPARE(w_->rows->value(TEMPERATURE), c.value);
            QCOMPARE(w_->edited, c.announced ? QList<Variable>{TEMPERATURE} : QList<Variable>{});
            QCOMPARE(w_->returns, end == Qt::Key_Return && !c.announced);  // one calculation, not two
        }
}

void tst_filas_estado::a_marker_makes_its_variable_the_unknown() {
    struct Row {
        Variable variable;
        const char *marker, *unit;
    };
    const Row rows[] = {
        {TEMPERATURE, "lbbtemp", "lbtemp"}, {VOLUME, "lbbvol", "lbvol"}, {PRESSURE, "lbbpress", "lbpress"}};
    const QColor red(255, 0, 0);
    for (const Row& chosen : rows) {
        w_->chosen.clear();
        w_->click(chosen.marker);
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return})  // again: the window calculates again
            QTest::keyClick(w_->at(chosen.marker), key);
        QCOMPARE(w_->chosen, QList<Variable>(3, chosen.variable));
        QCOMPARE(w_->rows->unknown(), chosen.variable);
        for (const Row& row : rows) {
            const bool unknown = row.variable == chosen.variable;
            const QLabel* marker = w_->at(row.marker);
            QCOMPARE(marker->font().bold(), unknown);
            QCOMPARE(!marker->accessibleDescription().isEmpty(), unknown);
            QCOMPARE(marker->palette().color(QPalette::WindowText) == red, unknown);
            QCOMPARE(w_->at(row.unit)->palette().color(QPalette::WindowText) == red, unknown);
            QCOMPARE(w_->rows->entry(row.variable)->palette().color(QPalette::Text) == red, unknown);
        }
    }
    QCOMPARE(w_->returns, 0);
}

void tst_filas_estado::the_unknown_cannot_be_typed_or_stepped() {
    EntradaNumerica* entry = w_->rows->entry(PRESSURE);
    w_->rows->show_value(PRESSURE, 2.0 / 3.0, "##0.00");
    w_->type(PRESSURE, "9");
    QTest::keyClick(entry, Qt::Key_Up);
    QTest::mouseClick(w_->spin_button(PRESSURE, false), Qt::LeftButton);
    QCOMPARE(entry->selectedText(), "0.67");  // can be copied
    leave(PRESSURE);
    QCOMPARE(entry->text(), "0.67");
    QVERIFY(w_->rows->value(PRESSURE) == 2.0 / 3.0);
    QVERIFY(w_->edited.isEmpty());
    w_->click("lbbvol");
    w_->type(PRESSURE, "9");
    QCOMPARE(entry->text(), "9");
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

void tst_filas_estado::steps_follow_the_order_of_the_value() {
    EntradaNumerica entry;
    UpDown spin;
    spin.bind(&entry);
    spin.set_range(0.0, 1e6);
    spin.set_adaptive();
    struct Case {
        double value;
        int steps;
        const char* then;
    };
    for (const Case& c : {Case{6.146, 1, "6.246"}, Case{101325.0, -1, "91325"}, Case{91325.0, -1, "90325"},
                          Case{0.9, 1, "0.91"}, Case{9.9, 2, "11"}, Case{11.0, -2, "9.9"}, Case{1000.0, -1, "990"},
                          Case{0.0012, -10, "0.00092"}, Case{0.0, 1, "1"}, Case{0.0, -1, "0"},
                          Case{999999.0, 1, "1000000"}, Case{3e6, 1, "3000000"}, Case{2.0 / 3.0, 1, "0.67666666667"}}) {
        entry.set_exact(c.value, QStringLiteral("shown"));
        spin.step(c.steps);
        QCOMPARE(entry.text(), c.then);
    }
}

void tst_filas_estado::a_button_held_down_repeats_and_never_reaches_zero() {
    w_->rows->show_value(VOLUME, 0.02);
    QToolButton* down = w_->spin_button(VOLUME, true);
    QTest::mousePress(down, Qt::LeftButton);
    QTRY_VERIFY(w_->edited.size() >= 15);
    QTest::mouseRelease(down, Qt::LeftButton);
    QVERIFY(w_->rows->value(VOLUME) > 0.0 && w_->rows->value(VOLUME) < 0.01);
    QCOMPARE(w_->edited, QList<Variable>(w_->edited.size(), VOLUME));
    QTest::mouseClick(w_->spin_button(TEMPERATURE, false), Qt::LeftButton);
    QCOMPARE(w_->rows->entry(TEMPERATURE)->text(), "301.0000");
}

void tst_filas_estado::a_box_that_opens_ends_the_repetition() {
    QToolButton* up = w_->spin_button(TEMPERATURE, false);
    QDialog box;
    connect(w_->rows, &FilasEstado::edited, &box, [&] {
        QTimer::singleShot(4 * up->autoRepeatInterval(), &box, &QDialog::accept);
        box.exec();
    });
    QTest::mousePress(up, Qt::LeftButton);
    QTRY_VERIFY(!w_->edited.isEmpty() && !box.isVisible());
    QCOMPARE(w_->edited.size(), 1);
    QVERIFY(!up->isDown());
}

void tst_filas_estado::limits_hold_in_every_unit() {
    EntradaNumerica* entry = w_->rows->entry(TEMPERATURE);
    w_->rows->set_range(TEMPERATURE, 0.0, 1000.0);
    w_->rows->show_value(TEMPERATURE, 270.0);
    w_->click("lbtemp");
    QTest::mouseClick(w_->spin_button(TEMPERATURE, true), Qt::LeftButton);
    QCOMPARE(entry->text(), "-4.1600");  // not pulled up to 0
    w_->rows->spin(TEMPERATURE)->step(-1000);
    QCOMPARE(entry->text(), "-273.1600");
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
    w_->adjustSize();
    const QList<QRect> before = places();
    for (const char* name : {"lbbtemp", "lbbvol", "lbmasa", "lbtemp", "lbtemp", "lbpress", "lbpress", "lbpress"}) {
        w_->click(name);
        QCOMPARE(places(), before);
    }
}

void tst_filas_estado::mnemonics_lead_to_the_entries() {
    const char letters[] = {'n', 'm', 'v', 'r'};
    for (const Variable variable : {PRESSURE, AMOUNT, VOLUME, TEMPERATURE}) {
        QTest::keyClick(w_->windowHandle(), letters[static_cast<std::size_t>(variable)], Qt::AltModifier);
        QVERIFY(w_->rows->entry(variable)->hasFocus());
    }
    QVERIFY(w_->chosen.isEmpty());
}

QTEST_MAIN(tst_filas_estado)
#include "tst_filas_estado.moc"

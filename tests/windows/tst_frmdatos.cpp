// Gases and conditions, driven by keys and clicks.

#include <QClipboard>
#include <QTest>
#include <QWheelEvent>

#include "core/models.h"
#include "tests/windows/support/plot_windows.h"

namespace {

constexpr int VIRIAL = 5, PENG_ROBINSON = 8;

template <class Control>
Control* control(QWidget* window, const char* name, int i = 0) {
    return VentanasGrafico::control<Control>(window, name, i);
}

QLineEdit* box(QWidget* window, const char* name, int i) {
    return control<QLineEdit>(window, name, i);
}

void type(QLineEdit* into, const QString& text) {
    into->setFocus(Qt::TabFocusReason);
    QTest::keyClicks(into, text);
}

const char* const ROW_CONTROLS[] = {"cmbgas", "cmbecu", "txttemp", "UpDown", "txtmol", "UpDown1"};

}  // namespace

class tst_frmdatos : public QObject {
    Q_OBJECT
private slots:
    void init() { w_ = std::make_unique<VentanasGrafico>(); }
    void cleanup() { w_.reset(); }

    void the_defaults_come_at_first_and_when_one_starts_afresh();
    void a_check_box_switches_its_row();
    void a_choice_loads_the_row();
    void the_virial_equation_brings_its_notice();
    void entries_are_kept_inside_their_limits();
    void leaving_a_box_without_an_amount_is_answered();
    void the_spin_buttons_step_their_boxes();
    void keys_and_pastes_that_are_no_number_are_swallowed();
    void the_window_shows_the_slots_again_when_it_is_reopened();
    void the_unit_of_amounts_changes_back_and_forth();
    void the_button_shows_the_plot_and_names_the_rows_left_out();
    void the_return_key_shows_the_plot_but_in_a_list_or_button();
    void the_wheel_chooses_only_where_the_focus_is();
    void the_window_fits_a_small_screen_in_every_language();
    void a_gas_that_cannot_be_loaded_is_named_and_the_row_stays();
    void a_gas_is_found_by_typing_part_of_its_name();
    void a_gas_beyond_the_end_of_a_changed_database_is_given_up();

private:
    QString last_message() const { return w_->mensajes.vistos.empty() ? QString() : w_->mensajes.vistos.back().texto; }
    std::unique_ptr<VentanasGrafico> w_;
};

void tst_frmdatos::the_defaults_come_at_first_and_when_one_starts_afresh() {
    frmdatos* window = w_->datos();
    QVERIFY(w_->estado.slots_initialised);
    QCOMPARE(window->windowTitle(), "Gases y condiciones");
    QCOMPARE(control<QLabel>(window, "Label2")->text(), "Ecuación");
    QVERIFY(control<QWidget>(window, "shpmarca") && control<QFrame>(window, "Line1"));
    for (const int on : {1, 0}) {  // starting afresh: no row
        for (int i = 1; i <= 5; ++i) {
            QCOMPARE(control<QCheckBox>(window, "Check", i)->isChecked(), i == on);
            QCOMPARE(w_->slot(i).active, i == on);
            QCOMPARE(control<QComboBox>(window, "cmbgas", i)->currentIndex(), -1);
            QVERIFY(control<QComboBox>(window, "cmbgas", i)->currentText().isEmpty());
            QCOMPARE(control<QComboBox>(window, "cmbgas", i)->count(), 60);
            QCOMPARE(control<QComboBox>(window, "cmbecu", i)->count(), 10);
            QCOMPARE(control<QComboBox>(window, "cmbecu", i)->currentIndex(), 0);
            QCOMPARE(control<QComboBox>(window, "cmbecu", i)->itemText(0), w_->estado.texto(85));
            QCOMPARE(control<QComboBox>(window, "cmbecu", i)->itemText(8), "PENG-ROBINSON");
            QCOMPARE(box(window, "txttemp", i)->text(), "300.000");
            QCOMPARE(box(window, "txtmol", i)->text(), "1.000");
            for (const char* name : ROW_CONTROLS)
                QCOMPARE(control<QWidget>(window, name, i)->isEnabled(), i == on);
        }
        QVERIFY(w_->mensajes.vistos.empty());
        w_->row(1, "CO2 ", PENG_ROBINSON, "280", "2");
        w_->row(5, "N2 ", 1, "77", "0.5");
        const int colour = w_->slot(5).colour;
        window->limpiar_filas();
        QCOMPARE(w_->slot(5).colour, colour);
    }
}

void tst_frmdatos::a_check_box_switches_its_row() {
    frmdatos* window = w_->datos();
    auto* check = control<QCheckBox>(window, "Check", 3);
    for (const bool on : {true, false}) {
        QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
        QCOMPARE(w_->slot(3).active, on);
        for (const char* name : ROW_CONTROLS)
            QCOMPARE(control<QWidget>(window, name, 3)->isEnabled(), on);
    }
}

void tst_frmdatos::a_choice_loads_the_row() {
    w_->row(2, "CO2 ", PENG_ROBINSON, "280", "2");
    const tavo::EquationSlot& slot = w_->slot(2);
    QVERIFY(slot.gas_number > 0);
    QVERIFY(QString::fromStdString(slot.gas.name).startsWith("CO2 "));
    QCOMPARE(slot.equation, tavo::EquationOfState::PengRobinson);
    QVERIFY(slot.gas.a > 3.0 && slot.gas.a < 5.0);
    QVERIFY(slot.gas.b > 0.026 && slot.gas.b < 0.027);
    const double cold = slot.gas.a;
    box(w_->datos(), "txttemp", 2)->setText("360");
    QVERIFY(slot.gas.a < 0.95 * cold);
    // A choice of gas or model does away with coefficients set by hand; a refresh keeps them.
    w_->slot(2).parameters = true;
    w_->slot(2).gas.b = 0.5;
    box(w_->datos(), "txtmol", 2)->setText("3");
    QCOMPARE(slot.gas.b, 0.5);
    control<QComboBox>(w_->datos(), "cmbecu", 2)->setCurrentIndex(1);
    QVERIFY(!slot.parameters);
    QVERIFY(slot.gas.b < 0.1);
}

void tst_frmdatos::the_virial_equation_brings_its_notice() {
    frmdatos* window = w_->datos();
    control<QComboBox>(window, "cmbecu", 1)->setCurrentIndex(VIRIAL);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    const Caja& notice = w_->mensajes.vistos.front();
    QCOMPARE(notice.texto, w_->estado.texto(87) + '\r' + w_->estado.texto(88) + '\r' + w_->estado.texto(89));
    QCOMPARE(notice.estilo, 64);
    QVERIFY(notice.titulo.isEmpty());
}

void tst_frmdatos::entries_are_kept_inside_their_limits() {
    frmdatos* window = w_->datos();
    struct Row {
        const char *box, *entered, *text, *message;
    };
    const char* const none = "Debes introducir alguna cantidad de gas";
    for (const Row& row : {Row{"txttemp", "-5", "0", "Mínima temperatura = 0"}, Row{"txttemp", "1000", "1000", ""},
                           Row{"txttemp", "1000.5", "1000", "Máxima temperatura = 1000"}, Row{"txttemp", "", "", ""},
                           Row{"txttemp", "273.16", "273.16", ""}, Row{"txtmol", "100", "100", ""},
                           Row{"txtmol", "150", "100", "Valor máximo: 100"}, Row{"txtmol", "-3", "0", none},
                           Row{"txtmol", "0", "0", ""}, Row{"txtmol", "", "", ""}, Row{"txtmol", "2.5", "2.5", ""}}) {
        w_->mensajes.vistos.clear();
        QLineEdit* entry = box(window, row.box, 1);
        entry->setText(row.entered);
        QCOMPARE(entry->text(), row.text);
        if (QLatin1String(row.box) == QLatin1String("txttemp"))
            QCOMPARE(w_->slot(1).temperature, QByteArray(row.text).toDouble());
        QCOMPARE(last_message(), QString::fromUtf8(row.message));
        if (*row.message) {
            QCOMPARE(w_->mensajes.vistos.size(), 1U);
            QCOMPARE(w_->mensajes.vistos.back().estilo, 64);
            QCOMPARE(entry->selectedText(), entry->text());
        }
    }
    // The limit is that of the unit shown.
    w_->row(1, "CO2 ", PENG_ROBINSON, "300", "1");
    window->cambiar_unidad(AmountUnit::Moles, AmountUnit::Grams);
    w_->estado.set_amount_unit(AmountUnit::Grams);
    w_->mensajes.vistos.clear();
    box(window, "txtmol", 1)->setText("1000");
    QVERIFY(w_->mensajes.vistos.empty());
    box(window, "txtmol", 1)->setText("1000.1");
    QCOMPARE(box(window, "txtmol", 1)->text(), "1000");
    QCOMPARE(last_message(), "Valor máximo: 1000");
}

void tst_frmdatos::leaving_a_box_without_an_amount_is_answered() {
    frmdatos* window = w_->datos();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    QLineEdit* entry = box(window, "txtmol", 1);
    type(entry, "0");
    QVERIFY(w_->mensajes.vistos.empty());
    QTest::keyClick(entry, Qt::Key_Tab);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QCOMPARE(last_message(), "Debes introducir alguna cantidad de gas");
    QCOMPARE(entry->selectedText(), "0");
    type(entry, "2");
    QTest::keyClick(entry, Qt::Key_Tab);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);

    // A window that is closed does not hold its user back; the focus goes to what lies beside it.
    QWidget frame;
    QPushButton beside(&frame);
    window->setParent(&frame);
    window->show();
    frame.show();
    frame.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&frame));
    type(entry, "0");
    QVERIFY(entry->hasFocus());
    window->close();
    QVERIFY(beside.hasFocus());
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
}

void tst_frmdatos::the_spin_buttons_step_their_boxes() {
    frmdatos* window = w_->datos();
    QLineEdit* amount = box(window, "txtmol", 1);
    QLineEdit* temperature = box(window, "txttemp", 1);
    const auto buttons = control<UpDown>(window, "UpDown1", 1)->findChildren<QToolButton*>();
    QCOMPARE(buttons.size(), 2);
    QTest::mouseClick(buttons[0], Qt::LeftButton);
    QCOMPARE(amount->text(), "2.000");
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QTest::mouseClick(buttons[1], Qt::LeftButton);
    QCOMPARE(amount->text(), "0.000");
    control<UpDown>(window, "UpDown1", 1)->step(500);
    QCOMPARE(amount->text(), "100.000");
    QVERIFY(w_->mensajes.vistos.empty());
    QTest::keyClick(temperature, Qt::Key_Up);
    QCOMPARE(temperature->text(), "301");
    QTest::keyClick(temperature, Qt::Key_PageDown);
    QCOMPARE(temperature->text(), "291");
    QCOMPARE(w_->slot(1).temperature, 291.0);
}

void tst_frmdatos::keys_and_pastes_that_are_no_number_are_swallowed() {
    frmdatos* window = w_->datos();
    QLineEdit* entry = box(window, "txttemp", 1);
    entry->clear();
    type(entry, "-1,2.a5.3e");
    QCOMPARE(entry->text(), "12.53");
    entry->selectAll();
    QTest::keyClicks(entry, ".5");  // the point that is typed over does not count
    QCOMPARE(entry->text(), ".5");

    for (const auto& [pasted, text] :
         {std::pair{" 250.5 ", "250.5"}, {"1,5", "12.53"}, {"hot", "12.53"}, {"-5", "0"}, {"12 K", "12.53"}}) {
        entry->setText("12.53");
        entry->selectAll();
        QGuiApplication::clipboard()->setText(pasted);
        QTest::keySequence(entry, QKeySequence::Paste);
        QCOMPARE(entry->text(), text);
    }
}

void tst_frmdatos::the_window_shows_the_slots_again_when_it_is_reopened() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "280.5", "2.25");
    w_->row(4, "N2 ", VIRIAL, "77", "0.5");
    w_->datos()->close();
    QVERIFY(!w_->estado.open_window("frmdatos"));
    QCOMPARE(w_->slot(1).moles, 2.25);
    QCOMPARE(w_->slot(1).grams, 2.25 * w_->slot(1).gas.pm);
    frmdatos* again = w_->datos();
    QCOMPARE(box(again, "txttemp", 1)->text(), "280.500");
    QCOMPARE(box(again, "txtmol", 1)->text(), "2.250");
    QVERIFY(control<QComboBox>(again, "cmbgas", 4)->currentText().startsWith("N2 "));
    QCOMPARE(control<QComboBox>(again, "cmbecu", 1)->currentIndex(), PENG_ROBINSON);
    QVERIFY(control<QCheckBox>(again, "Check", 4)->isChecked());
    QVERIFY(!control<QCheckBox>(again, "Check", 2)->isChecked());
    QVERIFY(!control<QWidget>(again, "txttemp", 2)->isEnabled());
    QCOMPARE(w_->mensajes.vistos.size(), 1U);  // the notice of the choice, not again
}

void tst_frmdatos::the_unit_of_amounts_changes_back_and_forth() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "300", "2");
    w_->row(2, "CO2 ", PENG_ROBINSON, "300", "50");
    frmdatos* window = w_->datos();
    box(window, "txtmol", 3)->setText("3.5");  // a row without a gas keeps its number
    const double mass = w_->slot(1).gas.pm;
    QVERIFY(mass > 44.0 && mass < 44.02);
    QCOMPARE(control<QLabel>(window, "Label4")->text(), "Moles");
    window->cambiar_unidad(AmountUnit::Moles, AmountUnit::Grams);
    w_->estado.set_amount_unit(AmountUnit::Grams);
    QCOMPARE(control<QLabel>(window, "Label4")->text(), "Gramos");
    QCOMPARE(box(window, "txtmol", 1)->text(), QString::number(2.0 * mass, 'f', 3));
    QCOMPARE(w_->slot(1).grams, 2.0 * mass);
    QCOMPARE(box(window, "txtmol", 2)->text(), "1000");  // 2200 g are more than a row may hold
    QCOMPARE(box(window, "txtmol", 3)->text(), "3.5");
    QCOMPARE(control<UpDown>(window, "UpDown1", 1)->maximum(), 1000.0);

    window->copiar_filas();
    QCOMPARE(w_->slot(2).moles, 1000.0 / mass);
    QCOMPARE(w_->slot(3).moles, 0.0);  // no molar mass: not an amount yet
    window->close();
    window = w_->datos();
    QCOMPARE(control<QLabel>(window, "Label4")->text(), "Gramos");
    QCOMPARE(box(window, "txtmol", 2)->text(), "1000.000");
    QCOMPARE(box(window, "txtmol", 3)->text(), "3.500");

    window->cambiar_unidad(AmountUnit::Grams, AmountUnit::Moles);
    QCOMPARE(w_->slot(3).moles, 3.5);
    w_->estado.set_amount_unit(AmountUnit::Moles);
    window->copiar_filas();
    QCOMPARE(control<QLabel>(window, "Label4")->text(), "Moles");
    QCOMPARE(box(window, "txtmol", 1)->text(), "2.000");
    QCOMPARE(box(window, "txtmol", 3)->text(), "3.500");
    QCOMPARE(w_->slot(3).moles, 3.5);
    QCOMPARE(control<UpDown>(window, "UpDown1", 1)->maximum(), 100.0);
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmdatos::the_button_shows_the_plot_and_names_the_rows_left_out() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "280", "1");
    frmdatos* window = w_->datos();
    auto* button = control<QPushButton>(window, "btactualiza");
    QCOMPARE(button->text(), w_->estado.texto(55));
    QTest::mouseClick(button, Qt::LeftButton);
    auto* plot = qobject_cast<frmgraficos*>(w_->estado.open_window("frmgraficos"));
    QVERIFY(plot && plot->isVisible());
    QVERIFY(w_->mensajes.vistos.empty());
    QCOMPARE(plot->escena().curves.size(), 1U);
    QCOMPARE(button->text(), w_->estado.texto(58));

    control<QCheckBox>(window, "Check", 2)->setChecked(true);
    control<QComboBox>(window, "cmbecu", 2)->setCurrentIndex(1);  // a real gas, none chosen
    box(window, "txtmol", 1)->setText("0");
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QCOMPARE(w_->mensajes.vistos.back().estilo, 64);
    QVERIFY(last_message().contains("fila 1") && last_message().contains("fila 2"));
    QVERIFY(plot->escena().curves.empty());

    plot->close();
    QCOMPARE(button->text(), w_->estado.texto(55));
}

void tst_frmdatos::the_return_key_shows_the_plot_but_in_a_list_or_button() {
    w_->estado.register_window("frmcompuestos", [] { return new QWidget; });
    QTest::keyClick(w_->estado.window("frmdatos"), Qt::Key_Return);  // nothing has the focus yet
    QVERIFY(w_->estado.open_window("frmgraficos"));
    w_->estado.open_window("frmgraficos")->close();
    frmdatos* window = w_->datos();
    const auto shows_plot = [&](QWidget* at) {
        at->setFocus();
        QTest::keyClick(at, Qt::Key_Return);
        QWidget* plot = w_->estado.open_window("frmgraficos");
        const bool shown = plot && plot->isVisible();
        if (shown)
            plot->close();
        return shown;
    };
    QVERIFY(shows_plot(control<QCheckBox>(window, "Check", 1)));
    QVERIFY(shows_plot(box(window, "txttemp", 1)));
    QVERIFY(shows_plot(box(window, "txtmol", 1)));
    QVERIFY(!shows_plot(control<QComboBox>(window, "cmbgas", 1)->lineEdit()));
    QVERIFY(!shows_plot(control<QComboBox>(window, "cmbecu", 1)));
    QVERIFY(!shows_plot(control<QPushButton>(window, "btparametros")));
    QVERIFY(w_->estado.open_window("frmcompuestos"));
}

void tst_frmdatos::the_wheel_chooses_only_where_the_focus_is() {
    frmdatos* window = w_->datos();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    auto* models = control<QComboBox>(window, "cmbecu", 1);
    const auto turn = [&] {
        const QPointF at = models->rect().center();
        QWheelEvent event(at, models->mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(models, &event);
        return models->currentIndex();
    };
    control<QCheckBox>(window, "Check", 1)->setFocus();
    QCOMPARE(turn(), 0);
    models->setFocus();
    QCOMPARE(turn(), 1);
}

void tst_frmdatos::the_window_fits_a_small_screen_in_every_language() {
    constexpr int WIDTH = 683, HEIGHT = 280;  // half of 1366, and what menus and bars leave of half of 768
    const QStringList languages = w_->estado.languages();
    for (const QString& language : languages) {
        tavo::confreg::escribirclave(w_->estado.language_path(), "idioma", "idioma", language.toStdString(),
                                     w_->estado.site());
        w_->estado.load_languages();
        frmdatos* window = w_->datos();
        const QSize least = window->minimumSizeHint();
        QVERIFY2(least.width() <= WIDTH && least.height() <= HEIGHT,
                 qPrintable(QStringLiteral("%1: %2x%3").arg(language).arg(least.width()).arg(least.height())));
        window->close();
    }
}

void tst_frmdatos::a_gas_that_cannot_be_loaded_is_named_and_the_row_stays() {
    w_ = std::make_unique<VentanasGrafico>(
        "[general]\r\nn=2\r\n\r\n[G1]\r\nnombre=Malo\r\npm=10\r\ntc=0\r\npc=0\r\nvc=-1\r\nc(1,1)=-1\r\nc(1,2)=-1\r\n"
        "\r\n[G2]\r\nnombre=Bueno\r\npm=10\r\ntc=300\r\npc=50\r\nvc=-1\r\nc(1,1)=-1\r\nc(1,2)=-1\r\n");
    w_->row(1, "Malo", 1, "300", "1");
    QVERIFY(!w_->mensajes.vistos.empty());
    QVERIFY(last_message().contains("fila 1"));
    frmdatos* window = w_->datos();
    QCOMPARE(control<QComboBox>(window, "cmbgas", 1)->currentText(), "Malo");
    w_->mensajes.vistos.clear();
    box(window, "txttemp", 1)->setText("310");  // no box with every key
    QVERIFY(w_->mensajes.vistos.empty());
    QTest::mouseClick(control<QPushButton>(window, "btactualiza"), Qt::LeftButton);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QVERIFY(last_message().contains("fila 1"));
    control<QComboBox>(window, "cmbgas", 1)->setCurrentIndex(1);
    w_->mensajes.vistos.clear();
    QTest::mouseClick(control<QPushButton>(window, "btactualiza"), Qt::LeftButton);
    QVERIFY(w_->mensajes.vistos.empty());
    // Nothing of the gas before is left in the row.
    QCOMPARE(QString::fromStdString(w_->slot(1).gas.name), "Bueno");
    control<QComboBox>(window, "cmbgas", 1)->setCurrentIndex(0);
    QCOMPARE(QString::fromStdString(w_->slot(1).gas.name), "");
    QCOMPARE(w_->slot(1).gas.pm, 0.0);
}

void tst_frmdatos::a_gas_is_found_by_typing_part_of_its_name() {
    frmdatos* window = w_->datos();
    window->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(window));
    auto* gases = control<QComboBox>(window, "cmbgas", 1);
    // Keys go to the list of proposals as soon as it is there.
    const auto press = [&](const QString& text, Qt::Key last) {
        gases->lineEdit()->setFocus(Qt::TabFocusReason);
        gases->lineEdit()->selectAll();
        const auto target = [&]() -> QWidget* {
            QWidget* proposals = QApplication::activePopupWidget();
            return proposals ? proposals : gases->lineEdit();
        };
        for (const QChar c : text)
            QTest::keyClick(target(), c.toLatin1());
        QTest::keyClick(target(), last);
        if (QWidget* proposals = QApplication::activePopupWidget())
            proposals->hide();
        control<QCheckBox>(window, "Check", 1)->setFocus(Qt::TabFocusReason);
    };
    press("c2h4", Qt::Key_Tab);
    QVERIFY2(gases->currentText().startsWith("C2H4 ("), qPrintable(gases->currentText()));
    QCOMPARE(w_->slot(1).gas_number, gases->currentIndex() + 1);
    const QString chosen = gases->currentText();
    press("no such gas", Qt::Key_Tab);
    QCOMPARE(gases->currentText(), chosen);
    press("(", Qt::Key_Tab);  // many
    QCOMPARE(gases->currentText(), chosen);
    // A list that is left shows the beginning of its name, the formula.
    gases->setCurrentIndex(12);
    gases->lineEdit()->setFocus(Qt::TabFocusReason);
    gases->lineEdit()->end(false);
    control<QCheckBox>(window, "Check", 1)->setFocus(Qt::TabFocusReason);
    QCOMPARE(gases->lineEdit()->cursorPosition(), 0);
}

void tst_frmdatos::a_gas_beyond_the_end_of_a_changed_database_is_given_up() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "280", "1");
    w_->hogar.write("data", "[general]\r\nn=1\r\n\r\n[G1]\r\nnombre=Uno\r\ntc=300\r\npc=50\r\nvc=-1\r\n");
    w_->estado.reload_gases();
    QCOMPARE(control<QComboBox>(w_->datos(), "cmbgas", 1)->currentIndex(), -1);
    QCOMPARE(w_->slot(1).gas_number, 0);
}

QTEST_MAIN(tst_frmdatos)
#include "tst_frmdatos.moc"

// The scale dialog over the plot.

#include <QTest>

#include "tests/windows/support/plot_windows.h"

class tst_frmescala : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { w_.reset(); }

    void it_opens_on_the_current_range_with_the_automatic_scale();
    void it_takes_the_defaults_when_no_range_is_set();
    void the_check_box_enables_the_pressures();
    void it_applies_volumes_and_widens_the_pressures();
    void it_applies_pressures_set_by_hand();
    void a_greatest_value_below_the_smallest_is_refused();
    void empty_boxes_are_ignored_in_silence();
    void equal_values_reach_the_range_check();
    void cancelling_changes_nothing();
    void it_goes_with_the_plot();

private:
    QLineEdit* box(int i) { return VentanasGrafico::control<QLineEdit>(dialog_, "txtmm", i); }
    void set(const char* vmin, const char* vmax, const char* pmin = nullptr, const char* pmax = nullptr) {
        box(1)->setText(vmin);
        box(2)->setText(vmax);
        if (pmin) {
            box(3)->setText(pmin);
            box(4)->setText(pmax);
        }
    }
    void click(const char* name) {
        QTest::mouseClick(VentanasGrafico::control<QPushButton>(dialog_, name), Qt::LeftButton);
    }
    void automatic(bool on) {
        auto* check = VentanasGrafico::control<QCheckBox>(dialog_, "chky");
        if (check->isChecked() != on)
            QTest::mouseClick(check, Qt::LeftButton, {}, QPoint(6, check->height() / 2));
    }
    PlotRange& range() { return w_->estado.current_range; }

    std::unique_ptr<VentanasGrafico> w_;
    frmgraficos* plot_ = nullptr;
    frmescala* dialog_ = nullptr;
};

void tst_frmescala::init() {
    w_ = std::make_unique<VentanasGrafico>();
    w_->row(1, "CO2 ", 8, "280", "1");
    plot_ = w_->graficos();
    dialog_ = w_->escala();
}

void tst_frmescala::it_opens_on_the_current_range_with_the_automatic_scale() {
    QCOMPARE(dialog_->windowTitle(), "Escala");
    QCOMPARE(VentanasGrafico::control<QPushButton>(dialog_, "btaceptar")->text(), w_->estado.texto(65));
    QCOMPARE(VentanasGrafico::control<QLabel>(dialog_, "Label4")->text(), w_->estado.texto(154));
    QCOMPARE(box(1)->text(), "0");
    QCOMPARE(box(2)->text(), "5");
    QCOMPARE(box(3)->text().toDouble(), range().pmin);
    QCOMPARE(box(4)->text().toDouble(), range().pmax);
    QVERIFY(VentanasGrafico::control<QCheckBox>(dialog_, "chky")->isChecked());
    QVERIFY(!box(3)->isEnabled() && !box(4)->isEnabled());
    QVERIFY(!plot_->isEnabled());

    automatic(false);
    dialog_->close();
    dialog_ = w_->escala();
    QVERIFY(VentanasGrafico::control<QCheckBox>(dialog_, "chky")->isChecked());
}

void tst_frmescala::it_takes_the_defaults_when_no_range_is_set() {
    dialog_->close();
    range() = {};
    dialog_ = w_->escala();
    QVERIFY(range() == w_->estado.default_range);
    QCOMPARE(box(2)->text(), "5");
}

void tst_frmescala::the_check_box_enables_the_pressures() {
    for (const bool on : {false, true}) {
        automatic(on);
        for (const char* name : {"Label3", "Label4"})
            QCOMPARE(VentanasGrafico::control<QLabel>(dialog_, name)->isEnabled(), !on);
        for (int i = 1; i <= 4; ++i)
            QCOMPARE(box(i)->isEnabled(), i < 3 || !on);
    }
}

void tst_frmescala::it_applies_volumes_and_widens_the_pressures() {
    range().pmin = 10.0;
    range().pmax = 11.0;
    set("0.05", "1", "9", "1");  // the pressures are not read
    click("btaceptar");
    QVERIFY(w_->mensajes.vistos.empty());
    QVERIFY(plot_->isEnabled());
    QVERIFY(dialog_->isVisible());
    QCOMPARE(range().vmin, 0.05);
    QCOMPARE(range().vmax, 1.0);
    QVERIFY(range().pmin <= 6.7);   // the bottom of the loop
    QVERIFY(range().pmax >= 49.7);  // its top
    QVERIFY(range().pmax < 200.0);  // not the spike
    QVERIFY(plot_->escena().range == range());
    QCOMPARE(plot_->escena().curves.size(), 1U);
    QCOMPARE(box(3)->text().toDouble(), range().pmin);
    QCOMPARE(box(4)->text().toDouble(), range().pmax);

    const PlotRange wide = range();
    set("1", "2");
    click("btaceptar");
    QCOMPARE(range().pmax, wide.pmax);  // widened, never narrowed
}

void tst_frmescala::it_applies_pressures_set_by_hand() {
    automatic(false);
    set("0.1", "0.9", "-20", "80.5");
    click("btaceptar");
    QVERIFY((range() == PlotRange{0.1, -20.0, 0.9, 80.5}));
    QVERIFY(plot_->escena().range == range());
}

void tst_frmescala::a_greatest_value_below_the_smallest_is_refused() {
    const PlotRange before = range();
    set("2", "1");
    click("btaceptar");
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QCOMPARE(w_->mensajes.vistos[0].texto, "El valor de V máximo debe ser mayor que V mínimo");
    QCOMPARE(w_->mensajes.vistos[0].estilo, 0);
    QVERIFY(w_->mensajes.vistos[0].titulo.isEmpty());
    automatic(false);
    set("1", "2", "5", "4");
    click("btaceptar");
    QCOMPARE(w_->mensajes.vistos.size(), 2U);
    QCOMPARE(w_->mensajes.vistos[1].texto, "El valor de P máxima debe ser mayor que P mínima");
    QVERIFY(range() == before);
    QVERIFY(!plot_->isEnabled());
    QVERIFY(dialog_->isVisible());
}

void tst_frmescala::empty_boxes_are_ignored_in_silence() {
    const PlotRange before = range();
    set("", "1");
    click("btaceptar");
    set("1", "");
    click("btaceptar");
    automatic(false);
    set("1", "2", "", "5");
    click("btaceptar");
    set("1", "2", "5", "");
    click("btaceptar");
    QVERIFY(w_->mensajes.vistos.empty());
    QVERIFY(range() == before);
    QVERIFY(!plot_->isEnabled());
    automatic(true);  // then the empty pressure does not matter
    click("btaceptar");
    QCOMPARE(range().vmax, 2.0);
}

void tst_frmescala::equal_values_reach_the_range_check() {
    set("2", "2");
    click("btaceptar");
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QVERIFY(w_->mensajes.vistos[0].texto.startsWith(w_->estado.texto(164)));
    QCOMPARE(w_->mensajes.vistos[0].titulo, "Advertencia");
    QCOMPARE(range().vmin, 2.0);
    QVERIFY(plot_->isEnabled());
    QVERIFY(plot_->escena().curves.empty());
    automatic(false);
    set("1", "2", "7", "7");
    click("btaceptar");
    QVERIFY(w_->mensajes.vistos.back().texto.startsWith(w_->estado.texto(162)));
}

void tst_frmescala::cancelling_changes_nothing() {
    const PlotRange before = range();
    const auto ways = {+[](tst_frmescala& t) { t.click("btcancelar"); },
                       +[](tst_frmescala& t) { QTest::keyClick(t.dialog_, Qt::Key_Escape); },
                       +[](tst_frmescala& t) { t.dialog_->close(); }};
    for (const auto& way : ways) {
        set("1", "2", "3", "4");
        way(*this);
        QVERIFY(range() == before);
        QVERIFY(plot_->isEnabled());
        QVERIFY(!w_->estado.open_window("frmescala"));
        dialog_ = w_->escala();
        QVERIFY(!plot_->isEnabled());
    }
}

void tst_frmescala::it_goes_with_the_plot() {
    plot_->close();
    QVERIFY(!w_->estado.open_window("frmescala"));
}

QTEST_MAIN(tst_frmescala)
#include "tst_frmescala.moc"

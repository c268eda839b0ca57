// The window of the equations' parameters, beside the rows and the plot that it works for.

#include <QClipboard>
#include <QHeaderView>
#include <QTest>

#include "core/numtext.h"
#include "tests/windows/support/plot_windows.h"
#include "windows/gasedit/frmcompuestos.h"

namespace {

constexpr int VAN_DER_WAALS = 1, VIRIAL = 5, FREE_EXPONENT = 6, PENG_ROBINSON = 8;

template <class Control>
Control* control(QWidget* window, const char* name, int i = 0) {
    return VentanasGrafico::control<Control>(window, name, i);
}

QString digits(double x) {
    return QString::fromStdString(tavo::to_text(x));
}

}  // namespace

class tst_frmcompuestos : public QObject {
    Q_OBJECT
private slots:
    void init() { start(std::make_unique<VentanasGrafico>()); }
    void cleanup() { w_.reset(); }

    void it_opens_with_the_current_row();
    void the_set_relabels_hides_and_refills();
    void a_gas_is_taken_by_click_and_keys();
    void applying_loads_the_row_and_draws_the_plot();
    void default_coefficients_come_back();
    void closing_asks_about_typed_numbers();
    void an_exponent_recomputes_a_and_b();
    void the_chooser_goes_through_the_rows_and_keeps_what_waits();
    void the_rows_are_followed();
    void a_changed_database_is_followed();
    void empty_boxes_and_bad_gases_are_told();
    void ten_thousand_gases_are_loaded_as_they_come_into_view();

private:
    void start(std::unique_ptr<VentanasGrafico> windows) {
        w_ = std::move(windows);
        w_->estado.register_window("frmcompuestos", [this] { return new frmcompuestos(w_->estado, w_->mensajes); });
    }
    frmcompuestos* open() { return w_->show<frmcompuestos>("frmcompuestos"); }
    template <class Control>
    Control* part(const char* name) {
        return control<Control>(open(), name);
    }
    QString box(const char* name) { return part<QLineEdit>(name)->text(); }
    void choose_model(int model) { part<QComboBox>("cmbecu")->setCurrentIndex(model); }
    void choose_row(int row) { part<QComboBox>("cmbfila")->setCurrentIndex(row - 1); }
    QRect cell(int gas, int column = 0) {
        auto* grid = part<QTableView>("grid");
        grid->scrollTo(grid->model()->index(gas - 1, column));
        return grid->visualRect(grid->model()->index(gas - 1, column));
    }
    void click_gas(int gas, int column = 0, Qt::KeyboardModifiers keys = {}) {
        const QPoint at = cell(gas, column).center();
        QTest::mouseClick(part<QTableView>("grid")->viewport(), Qt::LeftButton, keys, at);
    }
    void untick() { QTest::keyClick(part<QCheckBox>("chkdp"), Qt::Key_Space); }
    void type(const char* name, const QString& text) {
        auto* into = part<QLineEdit>(name);
        into->setFocus(Qt::TabFocusReason);
        into->selectAll();
        QTest::keyClicks(into, text);
        QTest::keyClick(into, Qt::Key_Tab);
    }
    void accept() { QTest::mouseClick(part<QPushButton>("btaceptar"), Qt::LeftButton); }
    QString last_message() const { return w_->mensajes.vistos.empty() ? QString() : w_->mensajes.vistos.back().texto; }

    std::unique_ptr<VentanasGrafico> w_;
};

void tst_frmcompuestos::it_opens_with_the_current_row() {
    w_->row(3, "CO2 ", PENG_ROBINSON, "280", "1");
    w_->estado.current_row = 3;
    frmcompuestos* window = open();
    const tavo::GasRecord& gas = w_->slot(3).gas;
    QCOMPARE(window->windowTitle(), w_->estado.texto(140));
    QCOMPARE(part<QLabel>("Label1")->text(), w_->estado.texto(141));
    QCOMPARE(part<QCheckBox>("chkdp")->text(), w_->estado.texto(142));
    QCOMPARE(part<QPushButton>("btaceptar")->text(), w_->estado.texto(65));
    QCOMPARE(part<QComboBox>("cmbfila")->currentText(), w_->estado.texto(144) + " 3");
    QVERIFY(part<QLabel>("lbgas")->text().contains("CO2 "));
    QCOMPARE(part<QComboBox>("cmbecu")->currentIndex(), PENG_ROBINSON);
    QVERIFY(part<QCheckBox>("chkdp")->isChecked() && part<QLineEdit>("txta")->isReadOnly());
    QCOMPARE(box("txta"), QString::fromStdString(tavo::Format(gas.a, "####0.00000")));
    QCOMPARE(box("txtc"), QString::fromStdString(tavo::Format(gas.c, "####0.000000")));
    QCOMPARE(part<QTableView>("grid")->currentIndex().row() + 1, int(w_->slot(3).gas_number));
    QVERIFY(part<QLabel>("lbtemperatura")->text().contains("280"));
    QVERIFY(part<QLabel>("lbpendiente")->text().isEmpty());

    window->close();
    w_->estado.current_row = 0;
    open();
    QCOMPARE(w_->estado.current_row, 1);
}

void tst_frmcompuestos::the_set_relabels_hides_and_refills() {
    open();
    click_gas(1);
    const QAbstractItemModel* model = part<QTableView>("grid")->model();
    QCOMPARE(model->rowCount(), 60);
    for (const auto& [set, first] : {std::pair{0, ""},
                                     {VAN_DER_WAALS, "a [l ² atm / mol ²]"},
                                     {VIRIAL, "A"},
                                     {FREE_EXPONENT, "a"},
                                     {PENG_ROBINSON, "a (T) [l ² atm / mol ²]"}}) {
        choose_model(set);
        QStringList shown, headers;
        for (const char* name : {"lba", "lbb", "lbc", "lbd", "lbmu"})
            if (const auto* label = part<QLabel>(name); label->isVisible())
                shown << label->text();
        QCOMPARE(shown.value(0), QString::fromUtf8(first));
        // The grid has the same coefficients under the same labels, in the formats of the boxes but for w.
        QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), w_->estado.texto(143));
        for (int column = 1; column < model->columnCount(); ++column)
            headers << model->headerData(column, Qt::Horizontal).toString();
        QCOMPARE(headers, shown);
        QCOMPARE(model->index(0, 0).data().toString(), w_->estado.gas_names()->index(0, 0).data().toString());
        if (set != 0)
            QCOMPARE(model->index(0, 1).data().toString(), box("txta"));
        if (set == PENG_ROBINSON)
            QCOMPARE(model->index(0, 3).data().toString().section('.', 1).size(), 3);
        if (set == VIRIAL)
            QCOMPARE(model->index(0, 3).data().toString(), box("txtc"));
    }
}

void tst_frmcompuestos::a_gas_is_taken_by_click_and_keys() {
    open();
    choose_model(VAN_DER_WAALS);
    auto* grid = part<QTableView>("grid");
    const auto gas = [this] { return part<QLabel>("lbgas")->text().section(": ", 1); };
    const auto name = [grid](int number) { return grid->model()->index(number - 1, 0).data().toString(); };
    click_gas(7, 2);
    QCOMPARE(gas(), name(7));
    QCOMPARE(box("txtb"), grid->model()->index(6, 2).data().toString());
    QCOMPARE(w_->slot(1).gas_number, std::int16_t(0));  // waits to be applied
    click_gas(9, 0, Qt::ShiftModifier);                 // extends the selection
    QCOMPARE(gas(), name(7));
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
    const QStringList lines = QGuiApplication::clipboard()->text().split('\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines[0].section('\t', 0, 0), name(7));
    QCOMPARE(lines[0].section('\t', 2, 2), part<QLineEdit>("txtb")->toolTip());  // all digits

    QTest::keyClick(grid, Qt::Key_Down);
    QTest::keyClick(grid, Qt::Key_Space);
    QCOMPARE(gas(), name(10));
    QTest::keyClicks(grid, "SO2");
    QTest::keyClick(grid, Qt::Key_Return);
    QVERIFY(gas().startsWith("SO2"));
}

void tst_frmcompuestos::applying_loads_the_row_and_draws_the_plot() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "280", "1");
    frmgraficos* plot = w_->graficos();
    QCOMPARE(plot->escena().curves.size(), 1U);
    QVERIFY(plot->escena().curves.front().bounds.tie_line());
    const auto pressure = [plot] { return plot->escena().curves.front().segments.back().to.y; };
    const double before = pressure();

    open();
    untick();
    type("txtb", "0.1");
    const auto zoom = w_->estado.current_range = {0.1, 0.0, 0.9, 80.0};
    type("txtc", "-0.2");  // a minus sign can be typed
    accept();
    QVERIFY(w_->slot(1).parameters);
    QCOMPARE(w_->slot(1).gas.b, 0.1);
    QCOMPARE(w_->slot(1).gas.c, -0.2);
    QVERIFY(w_->slot(1).gas.a > 3.0);  // in full behind its text
    QVERIFY(pressure() > before);
    QVERIFY(!plot->escena().curves.front().bounds.tie_line());
    QCOMPARE(w_->estado.current_range, zoom);  // only the coefficients are others

    // The rows keep coefficients set by hand while they are copied and their temperature changes.
    w_->datos()->copiar_filas();
    control<QLineEdit>(w_->datos(), "txttemp", 1)->setText("290");
    QCOMPARE(w_->slot(1).gas.b, 0.1);

    // A row without a gas gets it, and is switched on; the conditions window shows it.
    QSignalSpy status(&w_->estado, &ApplicationState::status_changed);
    choose_row(2);
    choose_model(VAN_DER_WAALS);
    click_gas(5);
    accept();
    QCOMPARE(control<QComboBox>(w_->datos(), "cmbgas", 2)->currentIndex(), 4);
    QCOMPARE(control<QComboBox>(w_->datos(), "cmbecu", 2)->currentIndex(), VAN_DER_WAALS);
    QVERIFY(control<QCheckBox>(w_->datos(), "Check", 2)->isChecked());
    QVERIFY(control<QComboBox>(w_->datos(), "cmbgas", 2)->isEnabled());
    QVERIFY(!w_->slot(2).parameters);
    QCOMPARE(plot->escena().curves.size(), 2U);
    QCOMPARE(status.last()[0].toString(), w_->estado.texto(731).arg(2));
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmcompuestos::default_coefficients_come_back() {
    w_->row(1, "CO2 ", VAN_DER_WAALS, "300", "1");
    const double derived = w_->slot(1).gas.a;
    open();
    QCOMPARE(part<QLabel>("lbtcmodelo")->text(), part<QLabel>("lbtcgas")->text());  // where the model has it
    untick();
    type("txta", "5");
    QVERIFY(part<QLabel>("lbtcmodelo")->text().toDouble() > 400.0);  // 8a/(27 R b)
    accept();
    QVERIFY(!part<QCheckBox>("chkdp")->isChecked());
    untick();  // ticks it
    QCOMPARE(part<QLineEdit>("txta")->toolTip(), digits(derived));
    QVERIFY(!part<QLabel>("lbpendiente")->text().isEmpty());
    QCOMPARE(w_->slot(1).gas.a, 5.0);
    untick();
    QCOMPARE(box("txta"), "5.00000");
    untick();
    accept();
    QVERIFY(!w_->slot(1).parameters);
    QCOMPARE(w_->slot(1).gas.a, derived);
}

void tst_frmcompuestos::closing_asks_about_typed_numbers() {
    const auto closes = [this](Respuesta answer, std::size_t asked) {
        w_->mensajes.respuestas = {answer};
        const std::size_t before = w_->mensajes.vistos.size();
        const bool closed = open()->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        w_->mensajes.respuestas.clear();
        return closed == (asked == 0 || answer == Respuesta::Si) && w_->mensajes.vistos.size() == before + asked;
    };
    w_->row(1, "CO2 ", VAN_DER_WAALS, "300", "1");
    open();
    untick();
    choose_model(FREE_EXPONENT);
    click_gas(5);
    QVERIFY(closes(Respuesta::No, 0));  // nothing was typed
    open();
    untick();
    auto* a = part<QLineEdit>("txta");
    a->setFocus(Qt::TabFocusReason);
    a->selectAll();
    QTest::keyClicks(a, "7");  // and the box is not left
    QVERIFY(closes(Respuesta::No, 1));
    QVERIFY(last_message().contains("isoterma 1"));
    QCOMPARE(box("txta"), "7");
    QTest::keyClick(part<QLineEdit>("txta"), Qt::Key_Tab);
    choose_row(2);
    choose_model(FREE_EXPONENT);
    click_gas(5);
    type("txtmu", "1.8");
    QVERIFY(closes(Respuesta::No, 1));
    QVERIFY(last_message().contains("isoterma 1, 2"));
    accept();
    choose_row(1);
    accept();
    QCOMPARE(w_->slot(1).gas.a, 7.0);
    QVERIFY(closes(Respuesta::No, 0));
}

void tst_frmcompuestos::an_exponent_recomputes_a_and_b() {
    w_->row(1, "CO2 ", VAN_DER_WAALS, "300", "1");
    const double a = w_->slot(1).gas.a, b = w_->slot(1).gas.b;
    open();
    choose_model(FREE_EXPONENT);
    QCOMPARE(box("txtmu"), "1.5000");
    const QString before = box("txta");
    type("txtmu", "1");
    QCOMPARE(last_message(), w_->estado.texto(93));
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QCOMPARE(w_->mensajes.vistos.back().estilo, 64);
    QCOMPARE(box("txtmu"), "1.5000");
    QCOMPARE(box("txta"), before);
    auto* mu = part<QLineEdit>("txtmu");
    mu->selectAll();
    QTest::keyClicks(mu, "2");
    QTest::keyClick(mu, Qt::Key_Return);
    QVERIFY(std::abs(part<QLineEdit>("txta")->toolTip().toDouble() - a) < 1e-9);  // van der Waals
    QVERIFY(std::abs(part<QLineEdit>("txtb")->toolTip().toDouble() - b) < 1e-12);
    accept();
    QCOMPARE(w_->slot(1).mu, 2.0);
    QVERIFY(!w_->slot(1).parameters);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
}

void tst_frmcompuestos::the_chooser_goes_through_the_rows_and_keeps_what_waits() {
    w_->row(1, "CO2 ", VAN_DER_WAALS, "300", "1");
    w_->row(4, "N2 ", PENG_ROBINSON, "150", "1");
    w_->estado.current_row = 1;
    open();
    untick();
    type("txta", "7");
    choose_row(4);
    QCOMPARE(w_->estado.current_row, 4);
    QVERIFY(part<QLabel>("lbgas")->text().contains("N2 "));
    QVERIFY(part<QCheckBox>("chkdp")->isChecked());
    // The focus in the conditions window chooses too.
    control<QLineEdit>(w_->datos(), "txttemp", 1)->setFocus();
    QApplication::setActiveWindow(w_->datos());
    QTRY_COMPARE(w_->estado.current_row, 1);
    QCOMPARE(part<QComboBox>("cmbfila")->currentIndex(), 0);
    QCOMPARE(box("txta"), "7.00000");
    accept();
    QCOMPARE(w_->slot(1).gas.a, 7.0);
    QVERIFY(!w_->slot(4).parameters);
}

void tst_frmcompuestos::the_rows_are_followed() {
    w_->row(1, "CO2 ", PENG_ROBINSON, "280", "1");
    w_->estado.current_row = 1;
    auto* grid = part<QTableView>("grid");
    const auto a_of_first = [grid] { return grid->model()->index(0, 1).data().toString(); };
    const QString cold = a_of_first(), own = box("txta");
    control<QLineEdit>(w_->datos(), "txttemp", 1)->setText("340");
    QVERIFY(a_of_first() != cold && box("txta") != own);
    untick();
    type("txta", "9");
    control<QComboBox>(w_->datos(), "cmbecu", 1)->setCurrentIndex(VAN_DER_WAALS);  // what waited was for another model
    QCOMPARE(part<QComboBox>("cmbecu")->currentIndex(), VAN_DER_WAALS);
    QVERIFY(part<QCheckBox>("chkdp")->isChecked() && box("txta") != "9.00000");
    w_->datos()->limpiar_filas();
    QVERIFY(part<QLabel>("lbgas")->text().endsWith("-----"));
    QVERIFY(box("txta").isEmpty());
}

void tst_frmcompuestos::a_changed_database_is_followed() {
    open();
    choose_model(VAN_DER_WAALS);
    click_gas(4);
    const QString name = part<QLabel>("lbgas")->text(), a = box("txta");
    w_->estado.remove_gas(2, [](tavo::confreg::Text& data) {
        data.borrarseccion("g2");
        for (int i = 3; i <= 60; ++i)
            data.reemplazarlinea("[G" + std::to_string(i) + "]", "[G" + std::to_string(i - 1) + "]");
        data.escribirclave("General", "n", "59");
    });
    QCOMPARE(part<QLabel>("lbgas")->text(), name);
    QCOMPARE(box("txta"), a);
    const QAbstractItemModel* model = part<QTableView>("grid")->model();
    QCOMPARE(model->rowCount(), 59);
    QCOMPARE(model->index(2, 1).data().toString(), a);
    accept();
    QCOMPARE(w_->slot(1).gas_number, std::int16_t(3));
}

void tst_frmcompuestos::empty_boxes_and_bad_gases_are_told() {
    w_ = nullptr;
    start(
        std::make_unique<VentanasGrafico>(QByteArray("[General]\r\nn=2\r\n[G1]\r\nnombre=uno\r\npm=44\r\ntc=304.2\r\n"
                                                     "pc=72.9\r\nvc=-1\r\nc(1,1)=-1\r\nc(1,2)=-1\r\n[G2]\r\n"
                                                     "nombre=dos\r\ntc=0\r\npc=72.9\r\nvc=-1\r\nc(1,1)=-1\r\n"
                                                     "c(1,2)=-1\r\n")));
    open();
    choose_model(VAN_DER_WAALS);
    accept();
    QVERIFY(last_message().startsWith("Elija un gas"));
    const QModelIndex bad = part<QTableView>("grid")->model()->index(1, 1);
    QCOMPARE(bad.data().toString(), "-----");
    QVERIFY(bad.data(Qt::ToolTipRole).toString().contains("dos"));
    click_gas(2);
    QVERIFY(part<QLabel>("lbnota")->text().startsWith(w_->estado.texto(613)));
    accept();
    QVERIFY(last_message().startsWith(w_->estado.texto(553).arg(1)));
    QCOMPARE(w_->slot(1).gas_number, std::int16_t(0));
    untick();
    type("txta", "3.6");
    accept();
    QVERIFY(last_message().contains(" b."));
    QCOMPARE(box("txta"), "3.6");
    type("txtb", "0.04");
    accept();
    QCOMPARE(w_->mensajes.vistos.size(), 3U);
    QCOMPARE(w_->slot(1).gas.b, 0.04);
    QVERIFY(w_->slot(1).parameters);
}

void tst_frmcompuestos::ten_thousand_gases_are_loaded_as_they_come_into_view() {
    QByteArray database = "[General]\r\nn=10000\r\n";
    for (int i = 1; i <= 10000; ++i)
        database += "[G" + QByteArray::number(i) + "]\r\nnombre=gas " + QByteArray::number(i) +
                    "\r\ntc=300\r\npc=50\r\nvc=-1\r\nc(1,1)=-1\r\nc(1,2)=-1\r\n";
    w_ = nullptr;
    start(std::make_unique<VentanasGrafico>(database));
    open();
    choose_model(VAN_DER_WAALS);
    auto* grid = part<QTableView>("grid");
    const auto* model = qobject_cast<const TablaGases*>(grid->model());
    const auto on_the_screen = static_cast<std::size_t>(grid->height() / grid->rowHeight(0) + 2);
    grid->grab();
    QVERIFY2(model->loads() <= 2 * on_the_screen, qPrintable(QString::number(model->loads())));
    click_gas(9990);
    grid->grab();
    QCOMPARE(box("txta"), grid->model()->index(9989, 1).data().toString());
    QVERIFY2(model->loads() <= 4 * on_the_screen, qPrintable(QString::number(model->loads())));
}

QTEST_MAIN(tst_frmcompuestos)
#include "tst_frmcompuestos.moc"

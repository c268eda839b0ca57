// The windows that show a gas, while the database is changed behind them.

#include <QTest>

#include <memory>

#include "controls/linea_estado.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "tests/windows/support/plot_windows.h"
#include "windows/calc/frmcalculos.h"
#include "windows/gasedit/editor_logica.h"
#include "windows/lab/frmoperaciones.h"

namespace {

using tavo::EquationSlot;
using tavo::confreg::Text;

constexpr int VAN_DER_WAALS = 1;
constexpr std::int16_t CHOSEN = 3, COUNT = 5;
constexpr double VOLUME = 6.146;  // l, of a fresh calculation
const PlotRange ZOOMED{0.2, 2.0, 1.0, 60.0};

editor::StoredGas gas(const std::string& name, double tc) {
    editor::StoredGas result;
    result.constants.name = name;
    result.constants.pm = 44.0;
    result.constants.tc = tc;
    result.constants.pc = 72.9;
    result.constants.vc = -1.0;
    return result;
}

QByteArray database() {
    Text text("[General]\r\nn=0\r\n");
    for (std::int16_t i = 0; i < COUNT; ++i)
        editor::add(text, i, gas(std::string("Gas ") + static_cast<char>('A' + i), 250.0 + 40.0 * i));
    return QByteArray::fromStdString(text.bytes());
}

/// A database with its four windows open; gas 3 by van der Waals in each.
class Ventanas : public VentanasGrafico {
public:
    Ventanas() : VentanasGrafico(database()) {
        row(1, QStringLiteral("Gas C"), VAN_DER_WAALS, QStringLiteral("300"), QStringLiteral("1"));
        graficos()->dibuja();
        estado.register_window(QStringLiteral("frmcalculos"), [this] { return new frmcalculos(estado, mensajes); });
        estado.register_window(QStringLiteral("frmoperaciones"),
                               [this] { return new frmoperaciones(estado, mensajes); });
        estado.manometer_in_use = true;  // the barometer's scale ends below the pressure
        calculos = show<frmcalculos>("frmcalculos");
        laboratorio = show<frmoperaciones>("frmoperaciones");
        for (QWidget* window : {calculos, laboratorio}) {
            control<QComboBox>(window, "cmbgas")->setCurrentIndex(CHOSEN - 1);
            control<QComboBox>(window, "cmbecu")->setCurrentIndex(VAN_DER_WAALS);
        }
    }

    /// The gas as the database now holds it, in the state that the calculations and the laboratory began with.
    EquationSlot fresh(std::int16_t number) {
        EquationSlot slot;
        slot.gas_number = number;
        slot.equation = tavo::EquationOfState::VanDerWaals;
        tavo::Global::load_slot(estado.data(), slot, true);
        return slot;
    }

    QWidget* calculos = nullptr;
    QWidget* laboratorio = nullptr;
};

}  // namespace

class tst_cambio_de_gases : public QObject {
    Q_OBJECT

private slots:
    void every_window_follows_data();
    void every_window_follows();
    void coefficients_set_by_hand_stay_with_their_gas();
    void a_plot_without_its_conditions_follows();
};

void tst_cambio_de_gases::every_window_follows_data() {
    QTest::addColumn<int>("removed");  // 0: none
    QTest::addColumn<int>("changed");
    QTest::addColumn<bool>("added");
    QTest::addColumn<int>("number");  // of the chosen gas afterwards
    QTest::addColumn<QString>("name");
    QTest::newRow("delete the neighbour before") << 2 << 0 << false << 2 << "Gas C";
    QTest::newRow("delete it") << 3 << 0 << false << 0 << "";
    QTest::newRow("delete after") << 4 << 0 << false << 3 << "Gas C";
    QTest::newRow("change it") << 0 << 3 << false << 3 << "Gas nuevo";
    QTest::newRow("change another") << 0 << 2 << false << 3 << "Gas C";
    QTest::newRow("add") << 0 << 0 << true << 3 << "Gas C";
}

void tst_cambio_de_gases::every_window_follows() {
    QFETCH(int, removed);
    QFETCH(int, changed);
    QFETCH(bool, added);
    QFETCH(int, number);
    QFETCH(QString, name);
    Ventanas w;
    w.estado.current_range = ZOOMED;
    w.graficos()->dibuja();

    const auto edits = [&](Text& text) {
        if (removed > 0)
            QVERIFY(editor::remove(text, static_cast<std::int16_t>(removed), COUNT));
        if (changed > 0)
            editor::write(text, static_cast<std::int16_t>(changed), gas("Gas nuevo", 222.0));
        if (added)
            QCOMPARE(editor::add(text, COUNT, gas("Gas nuevo", 222.0)), std::int16_t{COUNT + 1});
    };
    if (removed > 0)
        QVERIFY(w.estado.remove_gas(static_cast<std::int16_t>(removed), edits));
    else
        w.estado.edit_gases(edits);
    QCOMPARE(w.estado.gas_count(), static_cast<std::int16_t>(COUNT - (removed > 0 ? 1 : 0) + (added ? 1 : 0)));

    for (const auto& [window, row] : {std::pair<QWidget*, int>{w.datos(), 1}, {w.calculos, 0}, {w.laboratorio, 0}}) {
        auto* gases = Ventanas::control<QComboBox>(window, "cmbgas", row);
        QCOMPARE(gases->count(), w.estado.gas_count());
        QCOMPARE(gases->currentIndex(), number - 1);
        QCOMPARE(gases->currentText(), name);
    }
    QCOMPARE(w.slot(1).gas_number, number);
    QCOMPARE(QString::fromStdString(w.slot(1).gas.name), name);
    QCOMPARE(w.estado.current_range, ZOOMED);
    const auto& curves = w.graficos()->escena().curves;
    const auto* state = Ventanas::control<LineaEstado>(w.calculos, "txtestado");
    const auto* stand = Ventanas::control<LineaEstado>(w.laboratorio, "lbestado");
    QCOMPARE(state->is_fault(), number == 0);
    QCOMPARE(stand->is_fault(), number == 0);
    QCOMPARE(curves.size(), number == 0 ? 0U : 1U);
    QVERIFY(w.mensajes.vistos.empty());
    if (number == 0)
        return;

    const EquationSlot expected = w.fresh(static_cast<std::int16_t>(number));
    QCOMPARE(w.slot(1).gas.a, expected.gas.a);
    const double pressure = tavo::pressure(expected, VOLUME);
    for (const auto& [window, pattern] : {std::pair{w.calculos, "####0.0000"}, {w.laboratorio, "####0.00"}})
        QCOMPARE(Ventanas::control<QLineEdit>(window, "txtpress")->text(),
                 QString::fromStdString(tavo::Format(pressure, pattern)));
    QVERIFY(curves[0].description.starts_with(name.toStdString() + ","));
    const auto& end = curves[0].segments.back().to;
    QCOMPARE(end.y, tavo::pressure(expected, end.x));
}

void tst_cambio_de_gases::coefficients_set_by_hand_stay_with_their_gas() {
    Ventanas w;
    w.slot(1).gas.a = 7.5;
    w.slot(1).parameters = true;
    for (QWidget* window : {w.calculos, w.laboratorio}) {
        auto* a = Ventanas::control<QLineEdit>(window, "txta");
        a->setFocus();
        a->setText(QStringLiteral("7.5"));
        QTest::keyClick(a, Qt::Key_Return);
    }
    const auto remove = [&](int number, int count) {
        w.estado.remove_gas(static_cast<std::int16_t>(number), [&](Text& text) {
            editor::remove(text, static_cast<std::int16_t>(number), static_cast<std::int16_t>(count));
        });
    };
    w.estado.edit_gases([](Text& text) { editor::write(text, CHOSEN, gas("Gas nuevo", 222.0)); });
    remove(1, COUNT);
    QCOMPARE(w.slot(1).gas.a, 7.5);
    QCOMPARE(w.slot(1).gas.tc, 222.0);
    for (QWidget* window : {w.calculos, w.laboratorio})
        QCOMPARE(Ventanas::control<QLineEdit>(window, "txta")->text(), "7.50000");
    remove(CHOSEN - 1, COUNT - 1);
    QCOMPARE(w.slot(1).gas.a, 0.0);
    for (QWidget* window : {w.calculos, w.laboratorio}) {
        Ventanas::control<QComboBox>(window, "cmbgas")->setCurrentIndex(0);
        QCOMPARE(Ventanas::control<QLineEdit>(window, "txta")->text(),
                 QString::fromStdString(tavo::Format(w.fresh(1).gas.a, "####0.00000")));
    }
}

void tst_cambio_de_gases::a_plot_without_its_conditions_follows() {
    Ventanas w;
    w.datos()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const PlotRange before = w.estado.default_range;
    w.estado.edit_gases([](Text& text) { editor::write(text, CHOSEN, gas("Gas nuevo", 600.0)); });
    const auto& scene = w.graficos()->escena();
    QCOMPARE(scene.curves.size(), 1U);
    QVERIFY(scene.curves[0].description.starts_with("Gas nuevo,"));
    QVERIFY(w.estado.default_range != before);
    QCOMPARE(scene.range, w.estado.default_range);  // nobody had chosen another
}

QTEST_MAIN(tst_cambio_de_gases)
#include "tst_cambio_de_gases.moc"

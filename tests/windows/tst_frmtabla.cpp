// The two tables of constants: what they show, in which order, and what leaves them.

#include <QClipboard>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTest>

#include <memory>

#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"
#include "windows/reference/frmtabla.h"
#include "windows/reference/frmtablaay.h"

namespace {

QByteArray gas(const char* name, const char* tc, const char* vc, const char* hv) {
    return QByteArray("nombre=") + name + "\r\npm=2\r\ntc=" + tc + "\r\npc=10\r\nvc=" + vc + "\r\nteb=20\r\nhv=" + hv +
           "\r\nc(1,1)=-1\r\n";
}

QByteArray database(const QList<QByteArray>& gases) {
    QByteArray text = "[General]\r\nn=" + QByteArray::number(gases.size()) + "\r\n";
    for (qsizetype i = 0; i < gases.size(); ++i)
        text += "\r\n[G" + QByteArray::number(i + 1) + "]\r\n" + gases[i];
    return text;
}

}  // namespace

class tst_frmtabla : public QObject {
    Q_OBJECT
private slots:
    void init() {
        start({gas("C10 decano", "90", "0.06", "2"), gas("Amon\355aco", "100", "-1", "-1"),
               gas("C2 etano", "9.5", "0.05", "10")});
    }
    void cleanup();

    void a_header_sorts_and_gives_the_stored_order_back();
    void tables_are_copied_and_printed_as_shown();
    void a_gas_is_found_while_one_types();
    void the_table_follows_the_database();
    void names_are_whole_and_stay_in_sight();
    void physical_constants_are_texts();

private:
    void start(const QList<QByteArray>& gases);
    void show(QWidget* window, const char* grid, QSize size);
    QAbstractItemModel* model() const { return grid_->model(); }
    QString column(int at) const {
        QStringList texts;
        for (int row = 0; row < model()->rowCount(); ++row)
            texts << model()->index(row, at).data().toString();
        return texts.join(u'|');
    }
    void click_header(int at) const {
        QHeaderView* header = grid_->horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(at) + 20, header->height() / 2});
    }
    static QString clipboard() { return QGuiApplication::clipboard()->text(); }

    std::unique_ptr<HogarTemporal> home_;
    std::unique_ptr<ApplicationState> estado_;
    ImpresoraPrueba impresora_;
    std::unique_ptr<QWidget> window_;
    QTableView* grid_ = nullptr;
};

void tst_frmtabla::cleanup() {
    window_.reset();
    estado_.reset();
    impresora_.impresos.clear();
}

void tst_frmtabla::start(const QList<QByteArray>& gases) {
    cleanup();
    home_ = std::make_unique<HogarTemporal>();
    home_->write("data", database(gases));
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
    estado_->load_gases();
    show(new frmtabla(*estado_, impresora_), "gridcrit", {900, 400});
}

void tst_frmtabla::show(QWidget* window, const char* grid, QSize size) {
    window_.reset(window);
    grid_ = window_->findChild<QTableView*>(grid);
    window_->resize(size);
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window));
}

void tst_frmtabla::a_header_sorts_and_gives_the_stored_order_back() {
    struct Case {
        int column;
        const char *ascending, *descending;
    };
    const QByteArray before = home_->read("data");
    const QString stored = column(0);
    QCOMPARE(stored, "C10 decano|Amoníaco|C2 etano");
    for (const Case& c :
         {Case{0, "Amoníaco|C2 etano|C10 decano", "C10 decano|C2 etano|Amoníaco"},
          Case{1, "9.5|90.0|100.0", "100.0|90.0|9.5"},
          Case{3, "0.0500|0.0600|-----", "0.0600|0.0500|-----"},  // unknown last
          Case{6, "2.000|10.000|-----", "10.000|2.000|-----"}, Case{2, "10.00|10.00|10.00", "10.00|10.00|10.00"}}) {
        click_header(c.column);
        QCOMPARE(column(c.column), QString::fromUtf8(c.ascending));
        click_header(c.column);
        QCOMPARE(column(c.column), QString::fromUtf8(c.descending));
        click_header(c.column);
        QCOMPARE(column(0), stored);
    }
    QCOMPARE(estado_->gas_names()->index(0, 0).data().toString(), "C10 decano");
    QVERIFY(home_->read("data") == before);
}

void tst_frmtabla::tables_are_copied_and_printed_as_shown() {
    QCOMPARE(window_->windowTitle(), estado_->texto(35));
    click_header(1);
    const QString whole =
        "GAS\tTc (K)\tPc (atm)\tVc (l/mol)\tZc\tTeb (K)\tHv (Kcal/mol)\tM (g/mol)\n"
        "C2 etano\t9.5\t10.00\t0.0500\t0.641\t20.0\t10.000\t2.000\n"
        "C10 decano\t90.0\t10.00\t0.0600\t0.081\t20.0\t2.000\t2.000\n"
        "Amoníaco\t100.0\t10.00\t-----\t-----\t20.0\t-----\t2.000\n";
    grid_->setFocus();
    grid_->clearSelection();
    QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(clipboard(), whole);

    QTest::mouseClick(window_->findChild<QPushButton*>("btimprimir"), Qt::LeftButton);
    QCOMPARE(impresora_.impresos.size(), std::size_t{1});
    const auto& printed = impresora_.impresos.front();
    QCOMPARE(printed.titulo, window_->windowTitle());
    QVERIFY(printed.apaisado);
    const QString text = printed.paginas.front().textos().join(u'\n');
    QVERIFY2(QRegularExpression("Zc.*C2 etano.*C10 decano.*Amoníaco", QRegularExpression::DotMatchesEverythingOption)
                 .match(text)
                 .hasMatch(),
             qPrintable(text));

    const auto choose = [this](int row, int at) {
        grid_->selectionModel()->select(model()->index(row, at), QItemSelectionModel::Select);
    };
    choose(0, 0);
    choose(2, 3);
    choose(2, 0);
    QTest::mouseClick(window_->findChild<QPushButton*>("btcopiar"), Qt::LeftButton);
    QCOMPARE(clipboard(), "C2 etano\t\nAmoníaco\t-----\n");
    QVERIFY(!model()->setData(model()->index(0, 1), 5.0));
    QVERIFY(!model()->flags(model()->index(0, 0)).testFlag(Qt::ItemIsEditable));
}

void tst_frmtabla::a_gas_is_found_while_one_types() {
    QString told;
    connect(estado_.get(), &ApplicationState::status_changed, this, [&told](const QString& text) { told = text; });
    auto* search = window_->findChild<QLineEdit*>("txtbuscar");
    const auto current = [this] { return grid_->currentIndex().data().toString(); };
    grid_->setFocus();
    QTest::keyClick(grid_, Qt::Key_E);  // letters typed in the grid search too
    QVERIFY(search->hasFocus());
    QTest::keyClicks(search, "TA");
    QCOMPARE(current(), "C2 etano");
    search->clear();
    QTest::keyClicks(search, "moniaco");  // accents may be left out
    QCOMPARE(current(), "Amoníaco");
    QVERIFY2(told.isEmpty(), qPrintable(told));
    search->clear();
    QTest::keyClicks(search, "an");
    QCOMPARE(current(), "C2 etano");
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(current(), "C10 decano");
    QTest::keyClick(search, Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(current(), "C2 etano");
    QTest::keyClicks(search, "x");
    QCOMPARE(current(), "C2 etano");
    QVERIFY2(told.contains("«anx»"), qPrintable(told));
    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(grid_->hasFocus() && search->text().isEmpty() && told.isEmpty());
}

void tst_frmtabla::the_table_follows_the_database() {
    estado_->edit_gases([](tavo::confreg::Text& text) { text.escribirclave("G1", "tc", "91"); });
    QCOMPARE(column(1), "91.0|100.0|9.5");

    // In order, and with the same gas chosen.
    const auto chosen = [this] { return grid_->selectionModel()->selectedIndexes().value(0).data().toString(); };
    click_header(1);
    grid_->setCurrentIndex(model()->index(1, 0));
    QCOMPARE(chosen(), "C10 decano");
    estado_->edit_gases([](tavo::confreg::Text& text) { text.escribirclave("G1", "tc", "101"); });
    QCOMPARE(column(1), "9.5|100.0|101.0");
    QCOMPARE(chosen(), "C10 decano");
    const QList<QByteArray> kept{gas("C10 decano", "101", "1", "1"), gas("C2 etano", "9.5", "1", "1")};
    home_->write("data", database(kept));
    emit estado_->gas_removed(2);
    estado_->reload_gases();
    QCOMPARE(column(1), "9.5|101.0");
    QCOMPARE(chosen(), "C10 decano");
    home_->write("data", database(kept + QList{gas("Neon", "44", "1", "1")}));
    estado_->reload_gases();
    QCOMPARE(column(1), "9.5|44.0|101.0");
    QCOMPARE(chosen(), "C10 decano");

    home_->write("data", "[General]\r\nn=0\r\n");
    estado_->reload_gases();
    QCOMPARE(model()->rowCount(), 0);
    QCOMPARE(model()->columnCount(), 8);
    QCOMPARE(model()->headerData(7, Qt::Horizontal).toString(), "M (g/mol)");
    grid_->clearSelection();
    QTest::mouseClick(window_->findChild<QPushButton*>("btcopiar"), Qt::LeftButton);
    QCOMPARE(clipboard().count(u'\n'), 1);
}

void tst_frmtabla::names_are_whole_and_stay_in_sight() {
    const char* const name = "C60F18 (octadecafluorofulereno-C60 de referencia)";
    start({gas("He", "5", "-1", "-1"), gas(name, "5", "-1", "-1")});
    window_->resize(1100, 300);
    QVERIFY(grid_->columnWidth(0) > grid_->fontMetrics().horizontalAdvance(name) + 6);
    QCOMPARE(grid_->horizontalHeader()->length(), grid_->width() - qRound(250.0 * grid_->logicalDpiX() / 1440));
    QVERIFY(std::abs(grid_->columnWidth(1) - grid_->columnWidth(7)) <= 1);

    window_->resize(500, 300);
    QVERIFY(grid_->horizontalScrollBar()->maximum() > 0);
    grid_->horizontalScrollBar()->setValue(grid_->horizontalScrollBar()->maximum());
    auto* fixed = grid_->findChild<QTableView*>();
    QVERIFY(fixed && fixed->isVisible());
    QCOMPARE(fixed->columnWidth(0), grid_->columnWidth(0));
    QTest::mouseClick(fixed->viewport(), Qt::LeftButton, {}, fixed->visualRect(model()->index(1, 0)).center());
    QCOMPARE(grid_->currentIndex(), model()->index(1, 0));
    grid_->horizontalHeader()->resizeSection(0, 120);
    window_->resize(1000, 300);
    QCOMPARE(grid_->columnWidth(0), 120);
    QVERIFY(!fixed->isVisible());
}

void tst_frmtabla::physical_constants_are_texts() {
    show(new frmtablaay(*estado_, impresora_), "gridtermo", {800, 400});
    QCOMPARE(window_->windowTitle(), "Constantes Termodinámicas");
    for (int at = 0; at < 4; ++at)  // equal shares
        QVERIFY(std::abs(grid_->columnWidth(at) - (grid_->width() - 250.0 * grid_->logicalDpiX() / 1440) / 4) < 1.5);
    QCOMPARE(model()->rowCount(), 10);
    QCOMPARE(model()->columnCount(), 4);
    const QString avogadro = estado_->texto(100), gases = estado_->texto(102), proton = estado_->texto(108);
    QVERIFY(column(0).startsWith(avogadro) && column(0).endsWith(proton) && column(0).count(gases) == 2);
    QCOMPARE(column(1),
             "6.02214 10^23 part/mol|1.38066 10^-23 J / K|0.0820578 atm l / K mol|0.0831451 bar l / K mol|"
             "4.1840 J|1.01325 bar|6.62608 10^-34 J s|1.66054 10^-27 Kg|9.10939 10^-31 Kg|"
             "1.672623 10^-27 Kg");
    QCOMPARE(column(2), "|1.38066 10^-16 erg / K|8.31441 J / K mol|62.3640 mmHg l / K mol||760 mmHg||||");
    QCOMPARE(column(3), "|8.61739 eV / K|1.98721 cal / K mol|||101325 Pa||||");
    click_header(1);
    QVERIFY(column(1).startsWith("6.62608 10^-34 J s|9.10939") && column(1).endsWith("part/mol"));
    click_header(1);
    click_header(1);
    QVERIFY(column(0).startsWith(avogadro));
}

QTEST_MAIN(tst_frmtabla)
#include "tst_frmtabla.moc"

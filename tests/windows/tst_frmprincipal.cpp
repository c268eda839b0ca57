// The main window: menus, toolbar, units, languages, child windows.

#include <QAction>
#include <QCloseEvent>
#include <QDialog>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <optional>
#include <stdexcept>

#include "shell/application_state.h"
#include "shell/frmprincipal.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"

namespace {

/// A table whose text k reads "k-th", in two languages; the active one is written in other letters than its section.
QByteArray numbered_table(const QByteArray& active = "ALFA") {
    QByteArray table = "[idioma]\r\nidioma=" + active + "\r\n\r\n";
    for (const char* language : {"Alfa", "Beta & Co"}) {
        table += "[" + QByteArray(language) + "]\r\n";
        for (int k = 1; k <= 600; ++k)
            table += QByteArray::number(k) + "=&" + QByteArray::number(k) + "-th" +
                     (k == 508 || k == 522 ? " %1" : "") + "\r\n";
        table += "\r\n";
    }
    return table;
}

class Condiciones final : public QWidget, public ConditionsView {
public:
    explicit Condiciones(QStringList& calls) : calls_(calls) { resize(400, 300); }
    void copiar_filas() override {}
    void cambiar_unidad(AmountUnit from, AmountUnit to) override {
        calls_.append(QStringLiteral("unit %1>%2").arg(static_cast<int>(from)).arg(static_cast<int>(to)));
        if (calls_.contains("fail"))
            throw std::runtime_error("molar mass 0");
    }
    void limpiar_filas() override { calls_.append("clear"); }
    QSize sizeHint() const override { return {400, 300}; }

private:
    QStringList& calls_;
};

class Hija final : public QWidget {
public:
    QSize sizeHint() const override { return {320, 200}; }
};

const QStringList WINDOWS{"frmgases",   "frmgraficos",   "frmcalculos", "frmoperaciones", "frmtabla",
                          "frmtablaay", "frmtermometro", "frmIdioma",   "frmAbout"};

}  // namespace

class tst_frmprincipal : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void menus_hold_their_entries();
    void toolbar_positions_and_tips();
    void entries_open_their_windows_data();
    void entries_open_their_windows();
    void plot_entries_follow_the_plot_window();
    void state_at_start();
    void start_afresh();
    void units_back_and_forth();
    void language_menu();
    void choosing_a_language();
    void a_choice_that_cannot_be_kept_changes_nothing();
    void first_steps_come_and_go();
    void children_are_seen_whole_and_remember_their_place();
    void a_large_child_leaves_the_title_below_it_free();
    void keys_close_the_child_in_front();
    void status_line();
    void leaving_ends_the_program();

private:
    void start(const QByteArray& table = numbered_table());
    void start_with_all_windows();
    QAction* entry(const QString& name) const { return principal_->findChild<QAction*>(name); }
    QAction* key(const QString& name) const {
        return principal_->findChild<QToolBar*>("Toolbar1")->findChild<QAction*>(name);
    }
    /// One box, which is forgotten then.
    void told(const char* begin, int style) {
        QCOMPARE(mensajes_->vistos.size(), 1U);
        QVERIFY(mensajes_->vistos[0].texto.startsWith(QLatin1String(begin)));
        QCOMPARE(mensajes_->vistos[0].estilo, style);
        QCOMPARE(mensajes_->vistos[0].titulo, "7-th");
        mensajes_->vistos.clear();
    }
    QMdiArea* area() const { return principal_->findChild<QMdiArea*>("area"); }

    std::optional<HogarTemporal> home_;
    std::optional<ApplicationState> estado_;
    std::optional<MensajesPrueba> mensajes_;
    std::optional<frmprincipal> principal_;
    QStringList calls_;
    QStringList helps_;
};

void tst_frmprincipal::init() {
    home_.emplace();
    estado_.emplace(home_->path());
    mensajes_.emplace();
    calls_.clear();
    helps_.clear();
}

void tst_frmprincipal::cleanup() {
    principal_.reset();
    mensajes_.reset();
    estado_.reset();
    home_.reset();
}

void tst_frmprincipal::start(const QByteArray& table) {
    home_->write("idioma.lng", table);
    estado_->load_languages();
    principal_.emplace(*estado_, *mensajes_, [this](const QString& window) { helps_.append(window); });
    principal_->mostrar_idiomas();
    principal_->MDIForm_Load();
    principal_->show();
}

void tst_frmprincipal::start_with_all_windows() {
    for (const QString& name : WINDOWS)
        estado_->register_window(name, [] { return new Hija; });
    estado_->register_window("frmescala", [] { return new QDialog; });
    estado_->register_window("frmdatos", [this] { return new Condiciones(calls_); });
    start();
}

void tst_frmprincipal::menus_hold_their_entries() {
    start();
    const auto entries = [](const QWidget* menu) {
        QStringList list;
        for (const QAction* action : menu->actions())
            list.append((action->menu() ? action->menu()->objectName() : action->objectName()) + ' ' + action->text());
        return list;
    };
    QCOMPARE(entries(principal_->menuBar()),
             (QStringList{"mnuarchivos &1-th", "mnudatos &2-th", "mnugraficos &3-th", "mnucalcular &4-th",
                          "mnusimulaciones &5-th", "mnutablas &6-th", "mnuidioma &7-th", "mnuayudas &8-th"}));
    const QList<QStringList> menus{
        {"mnuarchivos", "mnunuevo &9-th", "mnusalir &10-th"},
        {"mnudatos", "mnuunidades &11-th", "mnudato &14-th", "mnugases &190-th"},
        {"mnuunidades", "mnumoles &12-th", "mnugramos &13-th"},
        {"mnugraficos", "mnudibujos &15-th", "mnuescala &16-th"},
        {"mnucalcular", "mnup &17-th", "mnuv &18-th", "mnut &19-th", "mnuf &20-th"},
        {"mnusimulaciones", "mnuoperaciones &21-th"},
        {"mnutablas", "mnucrit &22-th", "mnutermo &23-th", "mnutermosc &24-th"},
        {"mnuidioma", "mnuidiomas(1) Alfa", "mnuidiomas(2) Beta && Co", "mnuidiomas(3) ", "mnuidiomas(4) &29-th"},
        {"mnuayudas", "mnuayuda &30-th...", "mnuacercade &31-th ..."},
    };
    for (const QStringList& menu : menus)
        QCOMPARE(entries(principal_->findChild<QMenu*>(menu.first())), menu.mid(1));
    QVERIFY(entry("mnuidiomas(3)")->isSeparator());
}

void tst_frmprincipal::toolbar_positions_and_tips() {
    start();
    const QStringList expected{"nuevo 32",   "datos 14",      "|", "mol 33",   "gramo 34",       "|",
                               "graficas 3", "escala 16",     "|", "f 20",     "operaciones 21", "tabla 23",
                               "tabla1 35",  "termometro 24", "|", "ayuda 30", "acercade 31",    "salir 10"};
    QStringList found;
    auto* bar = principal_->findChild<QToolBar*>("Toolbar1");
    for (QAction* action : bar->actions()) {
        if (action->isSeparator()) {
            found.append("|");
            continue;
        }
        QVERIFY2(!action->icon().isNull(), qPrintable(action->objectName()));
        QCOMPARE(bar->widgetForAction(action)->objectName(), action->objectName());
        found.append(action->objectName() + ' ' + action->toolTip().section("-th", 0, 0));
    }
    QCOMPARE(found, expected);
    QCOMPARE(key("nuevo")->toolTip(),
             "32-th (" + entry("mnunuevo")->shortcut().toString(QKeySequence::NativeText) + ')');
}

void tst_frmprincipal::entries_open_their_windows_data() {
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("window");
    QTest::addColumn<int>("mode");
    const auto row = [](const char* entry, const char* button, const char* window, int mode = -1) {
        QTest::newRow(entry) << QString(button) << QString(window) << mode;
    };
    row("mnudato", "datos", "frmdatos");
    row("mnugases", "", "frmgases");
    row("mnudibujos", "graficas", "frmgraficos");
    row("mnuescala", "escala", "frmescala");
    row("mnup", "p", "frmcalculos", 1);  // keys without a button
    row("mnuv", "v", "frmcalculos", 2);
    row("mnut", "t", "frmcalculos", 3);
    row("mnuf", "f", "frmcalculos", 0);
    row("mnuoperaciones", "operaciones", "frmoperaciones");
    row("mnutermo", "tabla", "frmtablaay");
    row("mnucrit", "tabla1", "frmtabla");
    row("mnutermosc", "termometro", "frmtermometro");
    row("mnuacercade", "acercade", "frmAbout");
    row("mnuidiomas(4)", "", "frmIdioma");
    row("mnuayuda", "ayuda", "");
}

void tst_frmprincipal::entries_open_their_windows() {
    QFETCH(QString, button);
    QFETCH(QString, window);
    QFETCH(int, mode);
    start_with_all_windows();
    emit estado_->plot_window_changed(true);
    const QSignalSpy modes(&*estado_, &ApplicationState::calculation_mode_changed);
    const auto check = [&] {
        if (window.isEmpty()) {
            QCOMPARE(helps_, QStringList{QString()});
            return;
        }
        QWidget* shown = estado_->open_window(window);
        QVERIFY(shown && shown->isVisible());
        QCOMPARE(shown->isWindow() && shown->parentWidget() == &*principal_, window == "frmescala");  // a dialog
        QCOMPARE(area()->subWindowList().isEmpty(), window == "frmescala");
        if (mode >= 0) {
            QCOMPARE(estado_->calculation_mode, mode);
            QCOMPARE(modes.last().first().toInt(), mode);
        } else {
            QVERIFY(modes.isEmpty());
        }
        shown->close();
    };
    estado_->calculation_mode = 9;
    entry(QTest::currentDataTag())->trigger();
    check();
    if (button.isEmpty() || QTest::currentTestFailed())
        return;
    helps_.clear();
    estado_->calculation_mode = 9;
    if (mode > 0)
        principal_->Toolbar1_ButtonClick(button);
    else
        QTest::mouseClick(principal_->findChild<QToolButton*>(button), Qt::LeftButton);
    check();
    const QSignalSpy others(&*estado_, &ApplicationState::show_requested);
    for (const char* unknown : {"", "P", "nada"})
        principal_->Toolbar1_ButtonClick(unknown);
    QVERIFY(others.isEmpty());
}

void tst_frmprincipal::plot_entries_follow_the_plot_window() {
    start_with_all_windows();
    for (const bool open : {false, true, false}) {
        if (open != entry("mnudibujos")->isEnabled())
            emit estado_->plot_window_changed(open);
        for (const char* name : {"mnudibujos", "mnuescala", "graficas", "escala"})
            QCOMPARE(entry(name)->isEnabled(), open);
    }
    auto* menu = principal_->findChild<QMenu*>("mnugraficos");
    menu->popup(principal_->pos());
    QTest::mouseMove(menu, menu->actionGeometry(entry("mnuescala")).center());
    QTRY_COMPARE(principal_->statusBar()->currentMessage(), "&515-th");  // though it is disabled
    menu->close();
}

void tst_frmprincipal::state_at_start() {
    estado_->plot_shown = 7;
    estado_->current_row = 4;
    home_->write("data", "[General]\r\nn=3\r\n[G1]\r\nnombre=a\r\n[G2]\r\nnombre=b\r\n[G3]\r\nnombre=c\r\n");
    start();
    QCOMPARE(estado_->plot_shown, 0);
    QCOMPARE(estado_->current_row, 1);
    QCOMPARE(estado_->gas_count(), std::int16_t{3});
    QCOMPARE(estado_->amount_unit(), AmountUnit::Moles);
    QVERIFY(entry("mnumoles")->isChecked() && !entry("mnugramos")->isChecked());
    const std::array expected{9, 2, 12, 13, 6};
    for (int slot = 1; slot <= 5; ++slot)
        QCOMPARE(estado_->slot_table()[slot].colour, expected[static_cast<std::size_t>(slot) - 1]);
}

void tst_frmprincipal::start_afresh() {
    start_with_all_windows();
    estado_->plot_shown = 1;
    QTest::mouseClick(principal_->findChild<QToolButton*>("nuevo"), Qt::LeftButton);
    QCOMPARE(estado_->plot_shown, 0);
    QCOMPARE(calls_, QStringList{"clear"});
    QVERIFY(!estado_->open_window("frmdatos")->isVisible());
}

void tst_frmprincipal::units_back_and_forth() {
    start_with_all_windows();
    const QSignalSpy announced(&*estado_, &ApplicationState::amount_unit_changed);
    const auto ticks = [&] {
        return QList<bool>{entry("mnumoles")->isChecked(), entry("mnugramos")->isChecked(), key("mol")->isChecked(),
                           key("gramo")->isChecked()};
    };
    const QList<bool> moles{true, false, true, false}, grams{false, true, false, true};
    QCOMPARE(ticks(), moles);
    entry("mnumoles")->trigger();  // already: the rows stay, the limits are set again
    QCOMPARE(calls_, QStringList());
    QCOMPARE(announced.count(), 1);
    QTest::mouseClick(principal_->findChild<QToolButton*>("gramo"), Qt::LeftButton);
    QCOMPARE(ticks(), grams);
    QCOMPARE(calls_, QStringList{"unit 0>1"});
    QTest::mouseClick(principal_->findChild<QToolButton*>("gramo"), Qt::LeftButton);
    QCOMPARE(ticks(), grams);
    QCOMPARE(calls_.size(), 1);
    entry("mnumoles")->trigger();
    QCOMPARE(ticks(), moles);
    QCOMPARE(calls_, (QStringList{"unit 0>1", "unit 1>0"}));
    QCOMPARE(announced.count(), 4);
    calls_.append("fail");
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, principal_->mnugramos_Click());
    QCOMPARE(estado_->amount_unit(), AmountUnit::Moles);
    QCOMPARE(ticks(), moles);
}

void tst_frmprincipal::language_menu() {
    start();
    QVERIFY(entry("mnuidiomas(1)")->isChecked() && !entry("mnuidiomas(2)")->isChecked());
    home_->write("idioma.lng", numbered_table() + "[Gamma]\r\n");
    estado_->invalidate_languages();
    QCOMPARE(entry("mnuidiomas(3)")->text(), "Gamma");
    QCOMPARE(entry("mnuidiomas(5)")->text(), "&29-th");
    cleanup();
    init();
    start(numbered_table("Gamma"));  // active without a section
    QCOMPARE(principal_->findChild<QMenu*>("mnuarchivos")->title(), "");
    QCOMPARE(entry("mnunuevo")->text(), "");
    QVERIFY(!entry("mnuidiomas(1)")->isChecked() && !entry("mnuidiomas(2)")->isChecked());
}

void tst_frmprincipal::choosing_a_language() {
    start();
    for (const auto& [chosen, written] : {std::pair{"mnuidiomas(2)", "Beta & Co"}, {"mnuidiomas(1)", "Alfa"}}) {
        entry(chosen)->trigger();
        told("&168-th", 64);
        QVERIFY(home_->read("idioma.lng").startsWith("[idioma]\r\nidioma=" + QByteArray(written) + "\r\n"));
        // The running program keeps its language.
        QCOMPARE(estado_->language(), "ALFA");
        QVERIFY(entry("mnuidiomas(1)")->isChecked() && !entry("mnuidiomas(2)")->isChecked());
        QCOMPARE(entry("mnunuevo")->text(), "&9-th");
    }
}

void tst_frmprincipal::a_choice_that_cannot_be_kept_changes_nothing() {
    start();
    QByteArray cut = numbered_table();
    cut.replace("[Beta & Co]", "[Otro]");
    home_->write("idioma.lng", cut);
    QVERIFY(!principal_->seleccionar_idioma("Beta & Co"));
    told("&167-th", 16);
    QCOMPARE(home_->read("idioma.lng"), cut);
    home_->write("idioma.lng", numbered_table());
    home_->write("fich.tmp", "another rewrite under way");
    QVERIFY(!principal_->seleccionar_idioma("Beta & Co"));
    told("&528-th\n", 16);
    QCOMPARE(home_->read("idioma.lng"), numbered_table());
    QVERIFY(entry("mnuidiomas(1)")->isChecked());
}

void tst_frmprincipal::first_steps_come_and_go() {
    start_with_all_windows();
    auto* link = principal_->findChild<QAbstractButton*>("enlace(1)");
    QCOMPARE(link->text(), "14-th");
    QVERIFY(link->isVisible());
    QTRY_VERIFY(link->hasFocus());
    QTest::keyClick(link, Qt::Key_Return);
    QWidget* child = estado_->open_window("frmdatos");
    QVERIFY(child && child->isVisible());
    QVERIFY(!link->isVisible());
    area()->subWindowList().first()->close();
    QTRY_VERIFY(link->isVisible());
    QTRY_VERIFY(area()->subWindowList().isEmpty());
    // A child that closes itself takes its frame along.
    QTest::keyClick(principal_->findChild<QAbstractButton*>("enlace(2)"), Qt::Key_Space);
    estado_->open_window("frmcalculos")->close();
    QTRY_VERIFY(link->isVisible());
}

void tst_frmprincipal::children_are_seen_whole_and_remember_their_place() {
    start_with_all_windows();
    for (const char* name : {"mnudato", "mnugases", "mnucrit", "mnutermo"})
        entry(name)->trigger();
    QList<QPoint> corners;
    for (const QMdiSubWindow* sub : area()->subWindowList()) {
        QVERIFY(area()->viewport()->rect().contains(sub->geometry()));
        QVERIFY(!corners.contains(sub->pos()));
        corners.append(sub->pos());
    }
    auto* frame = qobject_cast<QMdiSubWindow*>(estado_->open_window("frmgases")->parentWidget());
    const QRect place(97, 61, 402, 255);
    frame->setGeometry(place);
    estado_->open_window("frmgases")->close();
    QTRY_COMPARE(area()->subWindowList().size(), 3);
    entry("mnugases")->trigger();
    QCOMPARE(estado_->open_window("frmgases")->parentWidget()->geometry(), place);
    // Showing an open window brings it forward and makes no second one.
    entry("mnudato")->trigger();
    QCOMPARE(area()->activeSubWindow()->widget(), estado_->open_window("frmdatos"));
    QCOMPARE(area()->subWindowList().size(), 4);
}

void tst_frmprincipal::a_large_child_leaves_the_title_below_it_free() {
    class Grande final : public QWidget {
        QSize sizeHint() const override { return {5000, 5000}; }
    };
    estado_->register_window("frmgraficos", [] { return new Grande; });
    estado_->register_window("frmdatos", [this] { return new Condiciones(calls_); });
    start();
    estado_->show_window("frmdatos");
    estado_->show_window("frmgraficos");
    const QWidget* below = estado_->open_window("frmdatos")->parentWidget();
    const QWidget* large = estado_->open_window("frmgraficos")->parentWidget();
    QVERIFY(large->y() >= below->y() + 20);
    QVERIFY(area()->viewport()->rect().contains(large->geometry()));
    estado_->open_window("frmgraficos")->close();
    estado_->register_window("frmgases", [] {
        auto* window = new QWidget;
        window->setMinimumSize(3000, 200);  // larger than the area
        return window;
    });
    estado_->show_window("frmgases");
    QVERIFY(estado_->open_window("frmgases")->parentWidget()->isMaximized());
}

void tst_frmprincipal::keys_close_the_child_in_front() {
    start_with_all_windows();
    principal_->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&*principal_));
    for (const bool maximised : {false, true}) {
        for (const Qt::Key key : {Qt::Key_F4, Qt::Key_W}) {
            entry("mnucrit")->trigger();
            entry("mnudato")->trigger();
            if (maximised)
                area()->activeSubWindow()->showMaximized();
            principal_->findChild<QToolButton*>("nuevo")->setFocus();  // wherever the focus is
            QTest::keyClick(&*principal_, key, Qt::ControlModifier);
            QVERIFY(!estado_->open_window("frmdatos"));
            QVERIFY(estado_->open_window("frmtabla"));
        }
    }
}

void tst_frmprincipal::status_line() {
    start();
    const auto text = [&](const char* name) { return principal_->findChild<QLabel*>(name)->text(); };
    estado_->set_status("hecho");
    estado_->set_coordinates("(1.0000,2.0000)");
    QCOMPARE(text("lbestado"), "hecho");
    QCOMPARE(text("lbcoordenadas"), "(1.0000,2.0000)");
    QCOMPARE(text("lbunidad"), "&506-th");
    entry("mnugramos")->trigger();
    QCOMPARE(text("lbunidad"), "&507-th");
    estado_->set_status("breve", 1);
    QTRY_COMPARE(text("lbestado"), "");
}

void tst_frmprincipal::leaving_ends_the_program() {
    for (const char* way : {"mnusalir", "salir", ""}) {  // the last: the window's own button
        cleanup();
        init();
        start_with_all_windows();
        estado_->show_window("frmescala");  // a dialog left open does not hold the program back
        QTimer::singleShot(0, &*principal_, [&] { *way ? entry(way)->trigger() : void(principal_->close()); });
        QTimer::singleShot(5000, &*principal_, [] { QCoreApplication::exit(9); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }
    class Terca final : public QWidget {
        void closeEvent(QCloseEvent* event) override { event->ignore(); }  // its data are not saved
    };
    for (const char* asks : {"frmgases", "frmcompuestos", "frmIdioma"}) {
        cleanup();
        init();
        estado_->register_window(asks, [] { return new Terca; });
        start();
        estado_->show_window(asks);
        QVERIFY2(!principal_->close() && principal_->isVisible(), asks);
    }
}

QTEST_MAIN(tst_frmprincipal)
#include "tst_frmprincipal.moc"

// The help entry and F1: which page of which file in which viewer, and what is said when there is none.

#include <QDialog>
#include <QMdiArea>
#include <QTest>

#include <optional>

#include "shell/HTMLHelp.h"
#include "shell/frmayuda.h"
#include "shell/frmprincipal.h"
#include "tests/windows/support/ayuda_de_prueba.h"
#include "tests/windows/support/elegir_prueba.h"
#include "tests/windows/support/exterior_prueba.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/impresora_prueba.h"
#include "tests/windows/support/mensajes_prueba.h"
#include "windows/ventanas.h"

namespace {

const QStringList WINDOWS{"frmdatos",      "frmgases", "frmgraficos", "frmescala",     "frmcalculos", "frmoperaciones",
                          "frmcompuestos", "frmtabla", "frmtablaay",  "frmtermometro", "frmIdioma",   "frmAbout"};

}  // namespace

class tst_HTMLHelp : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void f1_opens_the_page_of_the_window_data();
    void f1_opens_the_page_of_the_window();
    void f1_in_a_modal_dialog();
    void what_cannot_be_opened_is_told();
    void a_file_that_changes_while_it_is_read();
    void the_platforms_viewer();

private:
    QString shown() const {
        return help_->visor() && help_->visor()->isVisible() ? help_->visor()->pagina() : QString();
    }
    void f1(QWidget* window) const {
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window->windowHandle(), Qt::Key_F1);
    }

    QByteArray whole_, without_pages_;
    std::optional<HogarTemporal> home_;
    MensajesPrueba boxes_;
    ElegirPrueba files_;
    ImpresoraPrueba printer_;
    ExteriorPrueba outside_;
    std::optional<ApplicationState> estado_;
    std::optional<HTMLHelp> help_;
    std::optional<frmprincipal> principal_;
};

void tst_HTMLHelp::initTestCase() {
    QList<PaginaDePrueba> pages{{"inicio.html", "Inicio", "<p>Hola</p>"}, {"frmayuda.html", "Visor", "<p>Visor</p>"}};
    for (const QString& name : WINDOWS)
        pages.append({name + ".html", name, "<p>" + name + "</p>"});
    pages.removeIf([](const PaginaDePrueba& page) { return page.name == "frmgases.html"; });  // a page that is missing
    const HogarTemporal home;
    compilar_ayuda(home.path() / "help.chm", pages);
    whole_ = home.read("help.chm");
    without_pages_ = whole_;
    without_pages_.replace(".html", ".text");  // in the list of names, which is not packed
}

void tst_HTMLHelp::init() {
    home_.emplace();
    home_->write("Español.chm", whole_);
    boxes_.vistos.clear();
    outside_ = {};
    estado_.emplace(home_->path());
    estado_->load_languages();
    register_windows(*estado_, {boxes_, files_, printer_, outside_});
    help_.emplace(*estado_, boxes_, printer_, outside_);
    principal_.emplace(*estado_, boxes_, [this](const QString& window) { help_->mostrar(window); });
    principal_->MDIForm_Load();
    principal_->show();
}

void tst_HTMLHelp::cleanup() {
    principal_.reset();
    help_.reset();
    estado_.reset();
    home_.reset();
}

void tst_HTMLHelp::f1_opens_the_page_of_the_window_data() {
    QTest::addColumn<QString>("page");
    QTest::newRow("") << "/inicio.html";
    QTest::newRow("frmayuda") << "/frmayuda.html";
    for (const QString& name : WINDOWS)
        QTest::newRow(qPrintable(name)) << (name == "frmgases" ? "/inicio.html" : '/' + name + ".html");
}

void tst_HTMLHelp::f1_opens_the_page_of_the_window() {
    QFETCH(QString, page);
    const QString name = QTest::currentDataTag();
    if (name == "frmescala")
        estado_->show_window("frmgraficos");  // the dialog belongs to the plot
    if (name == "frmayuda") {
        help_->mostrar();
        f1(help_->visor());
    } else if (name.isEmpty()) {
        f1(&*principal_);
    } else {
        estado_->show_window(name);
        f1(estado_->open_window(name)->window());
    }
    QCOMPARE(shown(), page);
    QVERIFY(!help_->visor()->parentWidget());
}

void tst_HTMLHelp::f1_in_a_modal_dialog() {
    help_->mostrar();
    QDialog outer(&*principal_);
    outer.setObjectName("frmAbout");
    outer.setModal(true);
    outer.show();
    f1(&outer);
    QCOMPARE(shown(), "/frmAbout.html");
    QTest::keyClick(help_->visor()->windowHandle(), Qt::Key_Home, Qt::AltModifier);
    QCOMPARE(shown(), "/inicio.html");  // the dialog does not hold it back
    outer.close();
    QVERIFY(help_->visor()->isVisible());
}

void tst_HTMLHelp::what_cannot_be_opened_is_told() {
    const QByteArray file = "Español.chm";
    for (const QByteArray& bytes : {QByteArray(), QByteArray(""), whole_.first(3000), without_pages_}) {
        home_->write(file, bytes);
        if (bytes.isNull())
            std::filesystem::remove(home_->path() / file.toStdString());
        boxes_.vistos.clear();
        f1(&*principal_);
        QCOMPARE(boxes_.vistos.size(), std::size_t{1});
        QCOMPARE(boxes_.vistos[0].estilo, bytes.isNull() ? 64 : 0);
        QVERIFY(boxes_.vistos[0].texto.startsWith(
            bytes.isNull() ? "No se encuentra el archivo de ayuda de este idioma."
                           : "El archivo de ayuda Español.chm está dañado y no se puede leer."));
        QVERIFY(!help_->visor());
    }
}

void tst_HTMLHelp::a_file_that_changes_while_it_is_read() {
    help_->mostrar("frmdatos");
    home_->write("Español.chm", "bad");
    help_->mostrar("frmgraficos");
    QCOMPARE(boxes_.vistos.size(), std::size_t{1});
    QCOMPARE(shown(), "/frmdatos.html");
    help_->visor()->abrir("/inicio.html");  // the whole file is still at hand
    QCOMPARE(shown(), "/inicio.html");
    home_->write("Español.chm", whole_);
    help_->mostrar("frmgraficos");
    QCOMPARE(shown(), "/frmgraficos.html");
    QCOMPARE(boxes_.vistos.size(), std::size_t{1});
}

void tst_HTMLHelp::the_platforms_viewer() {
    outside_.instalados = QStringList{"hh.exe"};
    HTMLHelp help(*estado_, boxes_, printer_, outside_, "hh.exe");
    const QString file = QDir::toNativeSeparators(estado_->help_path());
    help.mostrar("frmdatos");
    help.mostrar("frmnada");
    QCOMPARE(outside_.iniciado,
             (QStringList{"/bin/hh.exe " + file + "::/frmdatos.html", "/bin/hh.exe " + file + "::/inicio.html"}));
    QVERIFY(!help.visor());
    outside_.arranca = false;  // then the program's own
    help.mostrar("frmdatos");
    QVERIFY(help.visor() && help.visor()->pagina() == "/frmdatos.html");
}

QTEST_MAIN(tst_HTMLHelp)
#include "tst_HTMLHelp.moc"

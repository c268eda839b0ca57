// The About window, and the program's way to a browser.

#include <QClipboard>
#include <QGuiApplication>
#include <QPushButton>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include "controls/exterior_qt.h"
#include "shell/creditos.h"
#include "shell/frmAbout.h"
#include "tests/windows/support/exterior_prueba.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"

namespace {

/// Holds one value.
class RegistroPrueba final : public sysinfo::Registro {
public:
    std::optional<Clave> abrir(sysinfo::Raiz, const std::string&) override { return 1; }
    std::optional<sysinfo::Valor> consultar(Clave, const std::string& nombre) override {
        if (nombre != "PATH")
            return std::nullopt;
        return sysinfo::Valor{sysinfo::Valor::Tipo::Texto, "C:\\msinfo.exe", 0};
    }
    void cerrar(Clave) override {}
};

}  // namespace

class tst_frmAbout : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void captions();
    void system_information_data();
    void system_information();
    void system_information_from_the_registry();
    void the_link_by_mouse_and_key();
    void without_a_browser_the_address_can_be_copied();
    void it_closes();
    void a_browser_is_looked_for();

private:
    frmAbout* about() {
        auto* window = qobject_cast<frmAbout*>(estado_->window("frmAbout"));
        window->show();
        return window;
    }
    QLabel* label(const char* name) { return about()->findChild<QLabel*>(name); }
    void click(const char* name) { QTest::mouseClick(about()->findChild<QPushButton*>(name), Qt::LeftButton); }
    void make(std::unique_ptr<sysinfo::Registro> (*registro)());

    std::unique_ptr<HogarTemporal> home_;
    std::unique_ptr<ApplicationState> estado_;
    std::unique_ptr<MensajesPrueba> mensajes_;
    ExteriorPrueba exterior_;
};

void tst_frmAbout::init() {
    make([]() -> std::unique_ptr<sysinfo::Registro> { return nullptr; });
}

void tst_frmAbout::cleanup() {
    delete estado_->open_window("frmAbout");
    estado_.reset();
}

void tst_frmAbout::make(std::unique_ptr<sysinfo::Registro> (*registro)()) {
    home_ = std::make_unique<HogarTemporal>();
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
    mensajes_ = std::make_unique<MensajesPrueba>();
    exterior_ = {};
    estado_->register_window("frmAbout",
                             [this, registro] { return new frmAbout(*estado_, *mensajes_, exterior_, registro()); });
}

void tst_frmAbout::captions() {
    QCOMPARE(about()->windowTitle(), estado_->texto(60));
    QVERIFY(label("lblVersion")->text().startsWith("Versión ") && !label("lblVersion")->text().contains('%'));
    QCOMPARE(label("lblDescription")->text(), estado_->texto(62));
    QCOMPARE(label("lblDisclaimer")->text(), estado_->texto(63));
    QCOMPARE(about()->findChild<QPushButton*>("cmdSysInfo")->text(), estado_->texto(64));
    QCOMPARE(label("Label1")->text(), estado_->texto(535));
    QCOMPARE(label("Label2")->text(), estado_->texto(536));
    QCOMPARE(label("Label3")->text(), estado_->texto(830));
    QCOMPARE(label("Label4")->text(), creditos::DIRECCION);
    QCOMPARE(label("Label4")->toolTip(), estado_->texto(831));
}

void tst_frmAbout::system_information_data() {
    QTest::addColumn<QString>("desktop");
    QTest::addColumn<QStringList>("installed");
    QTest::addColumn<bool>("starts");
    QTest::addColumn<QString>("started");  // "" for the box
    QTest::newRow("desktop's own") << "GNOME" << QStringList{"hardinfo", "gnome-control-center"} << true
                                   << "/bin/gnome-control-center info-overview";
    QTest::newRow("any desktop") << "XFCE" << QStringList{"gnome-control-center", "hardinfo"} << true
                                 << "/bin/hardinfo";
    QTest::newRow("none") << "KDE" << QStringList() << true << "";
    QTest::newRow("none starts") << "KDE" << QStringList{"kinfocenter"} << false << "";
}

void tst_frmAbout::system_information() {
    QFETCH(QString, desktop);
    QFETCH(QStringList, installed);
    QFETCH(bool, starts);
    QFETCH(QString, started);
    qputenv("XDG_CURRENT_DESKTOP", desktop.toUtf8());
    exterior_.instalados = installed;
    exterior_.arranca = starts;
    click("cmdSysInfo");
    QCOMPARE(exterior_.iniciado.join('|'), started);
    QCOMPARE(mensajes_->vistos.size(), started.isEmpty() ? 1U : 0U);
    if (started.isEmpty()) {
        QCOMPARE(mensajes_->vistos[0].texto, estado_->texto(184));
        QCOMPARE(mensajes_->vistos[0].estilo, 0);
    }
}

void tst_frmAbout::system_information_from_the_registry() {
    make([]() -> std::unique_ptr<sysinfo::Registro> { return std::make_unique<RegistroPrueba>(); });
    click("cmdSysInfo");
    QCOMPARE(exterior_.iniciado, QStringList("C:\\msinfo.exe"));
    QVERIFY(mensajes_->vistos.empty());
}

void tst_frmAbout::the_link_by_mouse_and_key() {
    QTest::mouseClick(label("Label4"), Qt::LeftButton);
    QTest::keyClick(label("Label4"), Qt::Key_Space);
    QCOMPARE(exterior_.iniciado, QStringList({creditos::DIRECCION, creditos::DIRECCION}));
    QVERIFY(about()->isVisible());
}

void tst_frmAbout::without_a_browser_the_address_can_be_copied() {
    exterior_.navegador = false;
    QGuiApplication::clipboard()->setText("antes");
    mensajes_->respuestas = {Respuesta::No, Respuesta::Si};
    QTest::mouseClick(label("Label4"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), "antes");
    QTest::mouseClick(label("Label4"), Qt::LeftButton);
    QCOMPARE(QGuiApplication::clipboard()->text(), creditos::DIRECCION);
    QVERIFY(mensajes_->vistos[0].texto.contains(creditos::DIRECCION));
    QVERIFY(es_pregunta(mensajes_->vistos[0].estilo));
}

void tst_frmAbout::it_closes() {
    for (const int key : {0, int(Qt::Key_Return), int(Qt::Key_Escape)}) {  // 0: by a click
        frmAbout* window = about();
        if (key == 0)
            click("cmdOK");
        else
            QTest::keyClick(window, Qt::Key(key));
        QVERIFY(!window->isVisible());
        QVERIFY(!estado_->open_window("frmAbout"));
        delete window;
    }
}

// Programs are shell scripts in a folder of the test's own, the only one on the path.
void tst_frmAbout::a_browser_is_looked_for() {
#ifdef Q_OS_UNIX
    QTemporaryDir folder;
    const QByteArray path = qgetenv("PATH");
    const auto restore = qScopeGuard([&] { qputenv("PATH", path); });
    qputenv("PATH", folder.path().toUtf8());
    qunsetenv("BROWSER");
    const auto install = [&](const char* name, const QByteArray& script) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QFile::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(file.permissions() | QFile::ExeOwner);
    };
    const QByteArray record = "echo \"$1\" > " + folder.filePath("opened.part").toUtf8() + "\n/bin/mv " +
                              folder.filePath("opened.part").toUtf8() + " " + folder.filePath("opened").toUtf8();
    ExteriorQt exterior;
    QVERIFY(!exterior.abrir_direccion(creditos::DIRECCION));
    install("xdg-open", record);
    QVERIFY(!exterior.abrir_direccion(creditos::DIRECCION));
    install("xdg-mime", "");
    QVERIFY(!exterior.abrir_direccion(creditos::DIRECCION));
    install("xdg-mime", "echo some.desktop");
    QVERIFY(exterior.abrir_direccion(creditos::DIRECCION));
    QTRY_VERIFY(QFile::exists(folder.filePath("opened")));
    QFile::remove(folder.filePath("opened"));
    QFile::remove(folder.filePath("xdg-open"));
    QVERIFY(!exterior.abrir_direccion(creditos::DIRECCION));
    install("firefox", record);
    QVERIFY(exterior.abrir_direccion(creditos::DIRECCION));
    QTRY_VERIFY(QFile::exists(folder.filePath("opened")));
#endif
}

QTEST_MAIN(tst_frmAbout)
#include "tst_frmAbout.moc"

// The order of the start: recovery, languages, splash, main window.

#include <QSignalSpy>
#include <QTest>

#include "core/errors.h"
#include "shell/inicio.h"
#include "tests/windows/support/hogar_temporal.h"
#include "tests/windows/support/mensajes_prueba.h"

Q_DECLARE_METATYPE(std::exception_ptr)

class tst_inicio : public QObject {
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void without_splash_the_main_window_comes_at_once();
    void the_splash_is_followed_by_the_main_window();
    void a_missing_language_file_stops_the_start();
    void a_missing_database_stops_the_start();
    void a_half_written_file_is_completed_before_it_is_read();

private:
    frmSplash* splash() const {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (auto* found = qobject_cast<frmSplash*>(window))
                return found;
        }
        return nullptr;
    }

    std::optional<HogarTemporal> home_;
    std::optional<ApplicationState> estado_;
    MensajesPrueba mensajes_;
};

void tst_inicio::init() {
    home_.emplace();
    estado_.emplace(home_->path());
}

void tst_inicio::cleanup() {
    estado_.reset();
    home_.reset();
}

void tst_inicio::without_splash_the_main_window_comes_at_once() {
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    Inicio inicio(*estado_, mensajes_);
    inicio.empezar(false);
    QVERIFY(inicio.principal()->isVisible());
    QVERIFY(!splash());
    QCOMPARE(QLocale().decimalPoint(), ".");  // whatever the system's
}

void tst_inicio::the_splash_is_followed_by_the_main_window() {
    Inicio inicio(*estado_, mensajes_);
    inicio.empezar(true);
    QVERIFY(splash() && splash()->isVisible());
    QVERIFY(!inicio.principal()->isVisible());
    QTest::keyClick(splash(), Qt::Key_Escape);
    QVERIFY(inicio.principal()->isVisible());
    QVERIFY(!splash()->isVisible());
    QVERIFY(estado_->gas_count() > 0);
}

void tst_inicio::a_missing_language_file_stops_the_start() {
    std::filesystem::remove(home_->path() / "idioma.lng");
    Inicio inicio(*estado_, mensajes_);
    QVERIFY_THROWS_EXCEPTION(tavo::FileNotFound, inicio.empezar(true));
    QVERIFY(!splash());
}

void tst_inicio::a_missing_database_stops_the_start() {
    std::filesystem::remove(home_->path() / "data");
    for (const bool with_splash : {true, false}) {
        estado_.emplace(home_->path());
        Inicio inicio(*estado_, mensajes_);
        const QSignalSpy failed(&inicio, &Inicio::fallido);
        if (with_splash) {
            inicio.empezar(true);
            QTest::keyClick(splash(), Qt::Key_Escape);
            QCOMPARE(failed.count(), 1);
            QVERIFY_THROWS_EXCEPTION(tavo::FileNotFound,
                                     std::rethrow_exception(failed.first().first().value<std::exception_ptr>()));
        } else {
            QVERIFY_THROWS_EXCEPTION(tavo::FileNotFound, inicio.empezar(false));
        }
        QVERIFY(!inicio.principal()->isVisible());
    }
}

void tst_inicio::a_half_written_file_is_completed_before_it_is_read() {
    const QByteArray whole = home_->read("data");
    home_->write("fich.tmp", whole);
    home_->write("data", whole.left(whole.size() / 2));
    Inicio inicio(*estado_, mensajes_);
    inicio.empezar(false);
    QCOMPARE(home_->read("data"), whole);
    QVERIFY(!std::filesystem::exists(home_->path() / "fich.tmp"));
}

QTEST_MAIN(tst_inicio)
#include "tst_inicio.moc"

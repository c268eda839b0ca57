// What a handler throws must neither end the program nor go unseen.

#include <QTest>
#include <QTimer>

#include <stdexcept>

#include "shell/aplicacion.h"

class tst_aplicacion : public QObject {
    Q_OBJECT

private slots:
    void a_throwing_handler_is_shown_and_the_loop_goes_on();
};

void tst_aplicacion::a_throwing_handler_is_shown_and_the_loop_goes_on() {
    QStringList seen;
    auto* application = static_cast<Aplicacion*>(qApp);
    application->al_fallar = [&](const std::exception& error) { seen.append(error.what()); };
    bool later = false;
    QTimer::singleShot(0, application, [] { throw std::runtime_error("no gas"); });
    QTimer::singleShot(0, application, [] { throw 1; });
    QTimer::singleShot(1, application, [&] { later = true; });
    QTRY_VERIFY(later);
    QCOMPARE(seen, (QStringList{"no gas", "unknown error"}));
    application->al_fallar = {};
}

int main(int argc, char** argv) {
    Aplicacion application(argc, argv);
    tst_aplicacion test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_aplicacion.moc"

// The splash: its captions, and the three ways in which it ends.

#include <QLabel>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "shell/application_state.h"
#include "shell/frmSplash.h"
#include "tests/windows/support/hogar_temporal.h"

class tst_frmSplash : public QObject {
    Q_OBJECT

private slots:
    void init();
    void captions();
    void ends_at_the_fifth_tick();
    void a_key_or_a_click_anywhere_ends_it();

private:
    std::unique_ptr<HogarTemporal> home_;
    std::unique_ptr<ApplicationState> estado_;
};

void tst_frmSplash::init() {
    home_ = std::make_unique<HogarTemporal>();
    home_->write("idioma.lng",
                 "[idioma]\r\nidioma=Alfa\r\n[Alfa]\r\n63=aviso\r\n180=empresa\r\n181=linea uno\r\n182=linea dos\r\n"
                 "183=version %1\r\n");
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
}

void tst_frmSplash::captions() {
    const frmSplash splash(*estado_);
    const auto text = [&](const char* name) { return splash.findChild<QLabel*>(name)->text(); };
    QCOMPARE(text("lblCompanyProduct"), "empresa");
    QCOMPARE(text("lblProductName"), "TAVO-GAS");
    QCOMPARE(text("lblProductDescription"), "linea uno\nlinea dos");
    QCOMPARE(text("lblPlatform"), "Windows 98, NT, XP");
    QCOMPARE(text("lblWarning"), "aviso");
    QVERIFY(text("lblVersion").startsWith("version ") && !text("lblVersion").contains('%'));
    QVERIFY(!text("Label1").isEmpty() && !text("Label2").isEmpty());
}

void tst_frmSplash::ends_at_the_fifth_tick() {
    frmSplash splash(*estado_);
    auto* timer = splash.findChild<QTimer*>("Timer1");
    QVERIFY(timer->isActive());
    QCOMPARE(timer->interval(), 250);
    const QSignalSpy ticks(timer, &QTimer::timeout), ended(&splash, &frmSplash::terminado);
    splash.show();
    timer->setInterval(1);
    QTRY_COMPARE(ended.count(), 1);
    QCOMPARE(ticks.count(), 5);
    QVERIFY(!splash.isVisible());
    QVERIFY(!timer->isActive());
}

void tst_frmSplash::a_key_or_a_click_anywhere_ends_it() {
    for (const char* part : {"", "fraMainFrame", "Image1", "Image2", "lblCompanyProduct", "lblProductName",
                             "lblProductDescription", "lblPlatform", "lblWarning", "lblVersion", "Label1", "Label2"}) {
        frmSplash splash(*estado_);
        const QSignalSpy ended(&splash, &frmSplash::terminado);
        splash.show();
        for (int twice = 0; twice < 2; ++twice)
            if (*part)
                QTest::mouseClick(splash.findChild<QWidget*>(part), Qt::LeftButton, Qt::NoModifier, QPoint(2, 2));
            else
                QTest::keyClick(&splash, Qt::Key_Space);
        QVERIFY2(ended.count() == 1 && !splash.isVisible(), part);
    }
}

QTEST_MAIN(tst_frmSplash)
#include "tst_frmSplash.moc"

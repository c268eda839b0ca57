// Icons take their ink from the palette of the moment.

#include <QApplication>
#include <QPalette>
#include <QTest>

#include "controls/iconos.h"

class tst_iconos : public QObject {
    Q_OBJECT

private slots:
    void ink_follows_the_palette();
    void disabled_is_fainter();
    void two_inks_on_paper_and_on_slate();
    void unknown_names_have_no_icon();
};

namespace {

QImage drawn(QIcon::Mode mode = QIcon::Normal) {
    return icono(QStringLiteral("tabla1")).pixmap(QSize(24, 24), mode).toImage();
}

void use_palette(const QColor& window, const QColor& ink) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, ink);
    QApplication::setPalette(palette);
}

int strongest_alpha(const QImage& image) {
    int strongest = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            strongest = qMax(strongest, qAlpha(image.pixel(x, y)));
    }
    return strongest;
}

/// Whether an almost opaque pixel of about this colour is there.
bool holds(const QImage& image, const QColor& colour) {
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor here = image.pixelColor(x, y);
            if (here.alpha() > 200 && qAbs(here.red() - colour.red()) < 12 &&
                qAbs(here.green() - colour.green()) < 12 && qAbs(here.blue() - colour.blue()) < 12)
                return true;
        }
    }
    return false;
}

}  // namespace

void tst_iconos::ink_follows_the_palette() {
    const QIcon kept = icono(QStringLiteral("tabla1"));
    use_palette(Qt::white, QColor(10, 20, 30));
    QVERIFY(holds(kept.pixmap(24, 24).toImage(), QColor(10, 20, 30)));
    use_palette(Qt::black, QColor(250, 240, 230));
    QVERIFY(holds(kept.pixmap(24, 24).toImage(), QColor(250, 240, 230)));
    QVERIFY(!holds(kept.pixmap(24, 24).toImage(), QColor(10, 20, 30)));
}

void tst_iconos::disabled_is_fainter() {
    use_palette(Qt::white, Qt::black);
    QVERIFY(strongest_alpha(drawn()) > 200);
    QVERIFY(strongest_alpha(drawn(QIcon::Disabled)) < 128);
}

void tst_iconos::two_inks_on_paper_and_on_slate() {
    use_palette(Qt::white, Qt::black);
    const bool blue_on_paper = holds(drawn(), QColor(0x0B, 0x6B, 0xCB));
    use_palette(Qt::black, Qt::white);
    const bool blue_on_slate = holds(drawn(), QColor(0x5A, 0xB4, 0xFF));
    QVERIFY(blue_on_paper && blue_on_slate);
}

void tst_iconos::unknown_names_have_no_icon() {
    QVERIFY(icono(QStringLiteral("nada")).isNull());
    QVERIFY(!icono_del_programa().isNull());
}

QTEST_MAIN(tst_iconos)
#include "tst_iconos.moc"

// The five thermometers, driven by keys and by hand.

#include <QAccessible>
#include <QLabel>
#include <QTest>

#include <memory>

#include "tests/windows/support/hogar_temporal.h"
#include "windows/reference/frmtermometro.h"

class tst_frmtermometro : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void it_opens_at_25_degrees();
    void return_converts_what_was_typed();
    void what_is_no_temperature_changes_nothing();
    void the_height_on_a_thermometer_is_the_temperature();
    void keys_step_by_the_scales_own_degrees();
    void beyond_its_scale_the_mercury_is_marked();
    void all_is_seen_when_the_window_is_small();

private:
    template <class Control>
    Control* control(const char* name, int i) const {
        auto* found = window_->findChild<Control*>(QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i));
        if (!found)
            qFatal("no control %s", name);
        return found;
    }
    QLineEdit* entry(int i) const { return control<QLineEdit>("txttemp", i); }
    Indicador* pct(int i) const { return control<Indicador>("pct", i); }
    QString texts() const {
        QStringList all;
        for (int i = 0; i < termometria::SCALES; ++i)
            all << entry(i)->text();
        return all.join(u' ');
    }
    QString told() const { return window_->findChild<LineaEstado*>("txtestado")->toPlainText(); }
    void type(int i, const QString& keys, bool taken = true) const {
        entry(i)->setFocus();
        entry(i)->selectAll();
        QTest::keyClick(entry(i), Qt::Key_Delete);
        QTest::keyClicks(entry(i), keys);
        if (taken)
            QTest::keyClick(entry(i), Qt::Key_Return);
    }

    std::unique_ptr<HogarTemporal> home_;
    std::unique_ptr<ApplicationState> estado_;
    std::unique_ptr<frmtermometro> window_;
};

namespace {
const QString INITIAL = QStringLiteral("25.00 298.16 77.00 537.00 20.00");
}

void tst_frmtermometro::init() {
    home_ = std::make_unique<HogarTemporal>();
    estado_ = std::make_unique<ApplicationState>(home_->path());
    estado_->load_languages();
    window_ = std::make_unique<frmtermometro>(*estado_);
    window_->resize(window_->sizeHint());
    window_->show();
    QVERIFY(QTest::qWaitForWindowActive(window_.get()));
}

void tst_frmtermometro::cleanup() {
    window_.reset();
    estado_.reset();
}

void tst_frmtermometro::it_opens_at_25_degrees() {
    QCOMPARE(window_->windowTitle(), "Escalas Termométricas");
    QCOMPARE(texts(), INITIAL);
    const char* const titles[]{"Escala Centígrada", "Escala Kelvin", "Escala Fahrenheit", "Escala Rankine",
                               "Escala Reaumur"};
    for (int i = 0; i < termometria::SCALES; ++i) {
        QCOMPARE(control<QLabel>("txttit", i)->text(), QString::fromUtf8(titles[i]));
        QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(pct(i));
        QCOMPARE(spoken->text(QAccessible::Name), QString::fromUtf8(titles[i]));
        QCOMPARE(spoken->text(QAccessible::Value), entry(i)->text() + u' ' + control<QLabel>("lbgrado", i)->text());
    }
}

void tst_frmtermometro::return_converts_what_was_typed() {
    struct Row {
        int index;
        const char *keys, *all;
    };
    QString before = INITIAL;
    for (const Row& row :
         {Row{0, "100", "100.00 373.16 212.00 672.00 80.00"}, Row{1, "273.16", "0.00 273.16 32.29 492.29 0.00"},
          Row{2, "32", "0.00 273.00 32.00 492.00 0.00"}, Row{3, "492.5", "0.28 273.28 32.50 492.50 0.22"},
          Row{4, "-32", "-40.00 233.16 -40.00 420.00 -32.00"},
          Row{0, "999999.5", "999999.50 1000272.66 1800031.10 1800491.10 799999.60"}}) {
        type(row.index, row.keys, false);
        QStringList typed = before.split(u' ');
        typed[row.index] = entry(row.index)->text();
        QCOMPARE(texts(), typed.join(u' '));  // the others wait
        QTest::keyClick(entry(row.index), Qt::Key_Enter);
        QCOMPARE(texts(), row.all);
        for (int i = 0; i < termometria::SCALES; ++i)
            QVERIFY(std::abs(pct(i)->value() - entry(i)->text().toDouble()) < 0.0051);
        before = texts();
    }
}

void tst_frmtermometro::what_is_no_temperature_changes_nothing() {
    const QString hint = told();
    for (const QString text : {"", "-", ".", "1e300"}) {
        entry(2)->setFocus();
        entry(2)->setText(text);
        QTest::keyClick(entry(2), Qt::Key_Return);
        QCOMPARE(entry(2)->text(), text);
        QVERIFY2(told().contains(u'«' + text + u'»'), qPrintable(told()));
        QCOMPARE(pct(2)->value(), 77.0);
        QTest::keyClick(entry(2), Qt::Key_Escape);
        QCOMPARE(texts(), INITIAL);
        QCOMPARE(told(), hint);
    }
}

void tst_frmtermometro::the_height_on_a_thermometer_is_the_temperature() {
    for (int i = 0; i < termometria::SCALES; ++i) {
        Indicador* surface = pct(i);
        const graduacion::Scale scale = termometria::scale(i);
        const int height = surface->height(), x = surface->width() / 2;
        const auto value_at = [&](int y) { return scale.maximum - (scale.maximum - scale.minimum) * y / height; };
        const auto shows = [&](int y) {
            for (int j = 0; j < termometria::SCALES; ++j)
                QVERIFY(std::abs(pct(j)->value() - termometria::convert(i, j, value_at(y))) < 1e-9);
            QCOMPARE(entry(i)->text(), QString::number(value_at(y), 'f', 2));
        };
        const double before = surface->value();
        QTest::mouseClick(surface, Qt::RightButton, {}, {x, height / 2});
        QTest::mouseMove(surface, {x, height / 3});
        QCOMPARE(surface->value(), before);
        QTest::mousePress(surface, Qt::LeftButton, {}, {x, height / 4});
        shows(height / 4);
        for (const int y : {height / 2, height + 40, -40}) {  // the hand may leave the surface
            QTest::mouseMove(surface, {x, y});
            shows(y);
        }
        QTest::mouseRelease(surface, Qt::LeftButton, {}, {x, -40});
    }
}

void tst_frmtermometro::keys_step_by_the_scales_own_degrees() {
    pct(2)->setFocus();
    QTest::keyClick(pct(2), Qt::Key_Up);
    QTest::keyClick(pct(2), Qt::Key_PageDown);
    QTest::keyClick(pct(2), Qt::Key_Down, Qt::ShiftModifier);
    QCOMPARE(texts(), "19.94 292.94 67.90 527.90 15.96");
    entry(0)->setFocus();
    QTest::keyClick(entry(0), Qt::Key_PageUp);
    QCOMPARE(entry(0)->text(), "29.94");
    type(0, "200");
    QTest::keyClick(entry(0), Qt::Key_Up);  // beyond the scale's end as within it
    QCOMPARE(pct(1)->value(), 201.0 + 273.16);
}

void tst_frmtermometro::beyond_its_scale_the_mercury_is_marked() {
    QWidget* sheet = window_->findChild<QWidget*>("frmescala");
    const auto red = [&](int i) {
        const QImage image = sheet->grab(control<QWidget>("pct", i)->geometry().adjusted(0, -24, 0, 24)).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += QColor(image.pixel(x, y)) == QColor(0xD0, 0x1C, 0x1C);
        return count;
    };
    const QString hint = told();
    for (const auto& [keys, marked, sentence] :
         {std::tuple("109", false, ""), std::tuple("110.5", true, ""), std::tuple("-273.16", true, ""),
          std::tuple("-274", true, "-0.84"), std::tuple("20", false, "")}) {
        type(0, keys);
        for (int i = 0; i < termometria::SCALES; ++i)
            QCOMPARE(red(i) > 40, marked);
        QVERIFY2(*sentence ? told().startsWith(sentence) : told() == hint, qPrintable(told()));
    }
}

void tst_frmtermometro::all_is_seen_when_the_window_is_small() {
    for (const QSize size : {QSize(660, 560), QSize(900, 420), QSize(1200, 700)}) {
        window_->resize(size);
        QCoreApplication::processEvents();
        const QWidget* sheet = window_->findChild<QWidget*>("frmescala");
        for (int i = 0; i < termometria::SCALES; ++i) {
            for (const char* name : {"txttit", "lbt", "lbt0", "pct"}) {
                const auto* shown = control<QWidget>(name, i);
                QVERIFY2(sheet->rect().contains(shown->geometry()), name);
                if (const auto* label = qobject_cast<const QLabel*>(shown))
                    QVERIFY2(label->width() >= label->fontMetrics().horizontalAdvance(label->text()), name);
            }
            const int entry_middle = entry(i)->mapTo(window_.get(), entry(i)->rect().center()).x();
            const QRect column(pct(i)->mapTo(window_.get(), QPoint()), pct(i)->size());
            QVERIFY(column.left() < entry_middle && entry_middle < column.right());
            QVERIFY(entry(i)->width() > entry(i)->fontMetrics().horizontalAdvance("-000000.00"));
        }
    }
}

QTEST_MAIN(tst_frmtermometro)
#include "tst_frmtermometro.moc"

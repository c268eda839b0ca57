// The drawn instruments of the laboratory: what a hand, keys and a screen reader get from them, and what they show.

#include <QAccessible>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <cmath>
#include <memory>

#include "windows/lab/instrumentos.h"

using laboratorio::Instrument;

namespace {

struct Escala {
    Instrument kind;
    QString name;
    double minimum, maximum;
    QString middle;  // as the tool tip says it
};

/// The three sheets side by side, as the laboratory shows them.
class Banco : public QWidget {
public:
    Banco() {
        resize(900, 480);
        piston.setGeometry(0, 0, 300, 480);
        termometros.setGeometry(300, 0, 300, 480);
        barometros.setGeometry(600, 0, 300, 480);
    }
    Instrumento* take(Instrument kind) {
        termometros.use(kind);
        barometros.use(kind);
        for (Lamina* sheet : std::initializer_list<Lamina*>{&piston, &termometros, &barometros})
            if (sheet->in_use()->kind() == kind)
                return sheet->in_use();
        return nullptr;
    }

    MarcoPiston piston{this};
    MarcoTermometros termometros{this};
    MarcoBarometros barometros{this};
};

double said(const QSignalSpy& spy) {
    return spy.isEmpty() ? std::nan("") : spy.last().first().toDouble();
}

/// First and last row in which two pictures differ, or -1.
std::pair<int, int> rows_that_differ(const QImage& a, const QImage& b) {
    std::pair<int, int> rows{-1, -1};
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (a.pixel(x, y) != b.pixel(x, y)) {
                rows = {rows.first < 0 ? y : rows.first, y};
                break;
            }
    return rows;
}

QImage picture(QWidget& widget) {
    return widget.grab().toImage();
}

}  // namespace

class tst_instrumentos : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { banco_.reset(); }

    void the_hand_tells_the_value_data() { instruments(); }
    void the_hand_tells_the_value();
    void keys_and_wheel();
    void a_screen_reader_hears_and_moves_it_data() { instruments(); }
    void a_screen_reader_hears_and_moves_it();
    void it_is_drawn_at_its_height_data() { instruments(); }
    void it_is_drawn_at_its_height();
    void a_change_leaves_nothing_behind_data() { instruments(); }
    void a_change_leaves_nothing_behind();
    void a_value_beyond_the_scale_shows_at_its_end_data() { instruments(); }
    void a_value_beyond_the_scale_shows_at_its_end();
    void the_piston_goes_with_the_volume();
    void the_handle_above_the_cylinder_can_be_held();
    void the_gas_stays_in_its_space();
    void the_instrument_in_use_takes_place_and_focus();

private:
    static void instruments();
    std::unique_ptr<Banco> banco_;
};

void tst_instrumentos::init() {
    banco_ = std::make_unique<Banco>();
    banco_->show();
    QVERIFY(QTest::qWaitForWindowActive(banco_.get()));
}

void tst_instrumentos::instruments() {
    QTest::addColumn<Escala>("is");
    QTest::newRow("piston") << Escala{Instrument::Piston, "pctpiston", 0.0, 10.0, "5.00 l"};
    QTest::newRow("thermometer") << Escala{Instrument::Thermometer, "termometro", 273.16, 373.16, "323.16 ºK"};
    QTest::newRow("thermocouple") << Escala{Instrument::Thermocouple, "termopar", 0.0, 1000.0, "500.00 ºK"};
    QTest::newRow("barometer") << Escala{Instrument::Barometer, "barometro1", 0.0, 2.0, "1.00 atm"};
    QTest::newRow("manometer") << Escala{Instrument::Manometer, "Manometro", 0.0, 500.0, "250.00 atm"};
}

void tst_instrumentos::the_hand_tells_the_value() {
    QFETCH(const Escala, is);
    Instrumento* instrument = banco_->take(is.kind);
    QCOMPARE(instrument->objectName(), is.name);
    // An even height, so that its middle is a pixel.
    instrument->resize(instrument->width(), instrument->height() / 2 * 2);
    const int x = instrument->width() / 2, height = instrument->height();
    QSignalSpy down(instrument, &Instrumento::MouseDown), moved(instrument, &Instrumento::MouseMove),
        up(instrument, &Instrumento::MouseUp);

    QTest::mouseMove(instrument, QPoint(x, height / 2));
    QCOMPARE(instrument->toolTip(), is.middle);
    QTest::mousePress(instrument, Qt::RightButton, {}, QPoint(x, 5));
    QTest::mouseRelease(instrument, Qt::RightButton, {}, QPoint(x, 5));
    QVERIFY(down.isEmpty() && moved.isEmpty() && up.isEmpty());

    for (const int y : {0, height / 4, height / 2, height - 1}) {
        QTest::mousePress(instrument, Qt::LeftButton, {}, QPoint(x, y));
        QVERIFY(std::abs(said(down) - (is.maximum - (is.maximum - is.minimum) * y / height)) < 1e-9 * is.maximum);
        QTest::mouseRelease(instrument, Qt::LeftButton, {}, QPoint(x, y));
    }
    QVERIFY(instrument->hasFocus());
    QCOMPARE(up.count(), 4);

    QTest::mousePress(instrument, Qt::LeftButton, {}, QPoint(x, height / 2));
    for (const auto& [y, value] :
         {std::pair(height / 4, is.maximum - (is.maximum - is.minimum) * (height / 4) / height),
          std::pair(-300, is.maximum), std::pair(height + 300, is.minimum)}) {
        QTest::mouseMove(instrument, QPoint(x - 500, y));
        QVERIFY(std::abs(said(moved) - value) < 1e-9 * is.maximum);
    }
    QTest::mouseRelease(instrument, Qt::LeftButton, {}, QPoint(x, height / 2));
    moved.clear();
    QTest::mouseMove(instrument, QPoint(x, 3));
    QVERIFY(moved.isEmpty());
}

void tst_instrumentos::keys_and_wheel() {
    constexpr Qt::Key WHEEL{};  // a notch of it
    const double nothing = std::nan("");
    struct Row {
        double from;
        Qt::Key key;
        bool shift;
        double to;  // NaN: nothing is said
    };
    Instrumento* piston = banco_->piston.pctpiston;
    for (const Row& row :
         {Row{4.0, Qt::Key_Up, false, 4.2}, Row{4.0, Qt::Key_Right, false, 4.2}, Row{4.0, Qt::Key_Down, true, 3.98},
          Row{4.0, Qt::Key_PageUp, false, 6.0}, Row{1.5, Qt::Key_PageDown, false, 0.0},
          Row{4.0, Qt::Key_Home, false, 0.0}, Row{4.0, Qt::Key_End, false, 10.0}, Row{10.0, Qt::Key_Up, false, nothing},
          Row{13.0, Qt::Key_Down, false, 9.8}, Row{13.0, Qt::Key_Up, false, 10.0}, Row{4.0, Qt::Key_A, false, nothing},
          Row{4.0, WHEEL, false, 4.2}, Row{4.0, WHEEL, true, 4.02}}) {
        piston->set_value(row.from);
        QSignalSpy stepped(piston, &Instrumento::key_step);
        const Qt::KeyboardModifiers modifiers = row.shift ? Qt::ShiftModifier : Qt::NoModifier;
        const auto wheel = [&] {
            QWheelEvent notch({5, 5}, piston->mapToGlobal(QPointF(5, 5)), {}, {0, 120}, Qt::NoButton, modifiers,
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(piston, &notch);
            return notch.isAccepted();
        };
        piston->clearFocus();
        QVERIFY(!wheel() && stepped.isEmpty());
        piston->setFocus();
        if (row.key == WHEEL)
            QVERIFY(wheel());
        else
            QTest::keyClick(piston, row.key, modifiers);
        QCOMPARE(said(stepped), row.to);
    }
}

void tst_instrumentos::a_screen_reader_hears_and_moves_it() {
    QFETCH(const Escala, is);
    Instrumento* instrument = banco_->take(is.kind);
    instrument->set_value((is.minimum + is.maximum) / 2.0);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(instrument);
    QVERIFY(spoken && spoken->valueInterface());
    QCOMPARE(spoken->role(), is.kind == Instrument::Manometer ? QAccessible::Dial : QAccessible::Slider);
    QCOMPARE(spoken->text(QAccessible::Value), is.middle);
    instrument->set_spoken(QStringLiteral("Variable"), QStringLiteral("12 u"));
    QCOMPARE(spoken->text(QAccessible::Name), "Variable");
    QCOMPARE(spoken->text(QAccessible::Value), "12 u");

    QAccessibleValueInterface* value = spoken->valueInterface();
    QCOMPARE(value->minimumValue().toDouble(), is.minimum);
    QCOMPARE(value->maximumValue().toDouble(), is.maximum);
    QSignalSpy stepped(instrument, &Instrumento::key_step);
    value->setCurrentValue(is.maximum + 1.0);
    QCOMPARE(said(stepped), is.maximum);

    instrument->set_value(is.maximum + 1.0);
    QCOMPARE(value->currentValue().toDouble(), is.maximum);
    qobject_cast<Lamina*>(instrument->parentWidget())->set_texts([](int number, const QString&) {
        return number == 650 ? QStringLiteral("%1!") : QStringLiteral("%1?");
    });
    QCOMPARE(spoken->text(QAccessible::Value), "12 u!");
}

/// What is drawn for a value differs from the picture of the scale's end from the value's height on.
void tst_instrumentos::it_is_drawn_at_its_height() {
    QFETCH(const Escala, is);
    Instrumento* instrument = banco_->take(is.kind);
    banco_->piston.set_gas(1.0, 300.0);
    instrument->set_value(is.minimum);
    const QImage lowest = picture(*instrument);
    for (const double part : {0.03, 0.25, 0.5, 0.9, 1.0}) {
        instrument->set_value(is.minimum + part * (is.maximum - is.minimum));
        const double expected = instrument->height() * (1.0 - part);
        const auto [first, last] = rows_that_differ(lowest, picture(*instrument));
        QVERIFY(first >= 0);
        if (is.kind == Instrument::Thermocouple || is.kind == Instrument::Manometer)
            QVERIFY2(first <= expected + 1.0, "the pointer's middle is at the value, not its top");
        else
            QVERIFY2(std::abs(first - expected) <= 1.0, qPrintable(QString::number(first - expected)));
    }
}

/// The screen after partial repaints is the screen drawn anew.
void tst_instrumentos::a_change_leaves_nothing_behind() {
    QFETCH(const Escala, is);
    Instrumento* instrument = banco_->take(is.kind);
    banco_->piston.set_gas(1.0, 300.0);
    const auto screen = [this] {
        QCoreApplication::processEvents();
        return banco_->screen()->grabWindow(banco_->winId()).toImage();
    };
    for (const double part : {0.2, 0.7, 1.1, -0.1, 0.9, -0.1, 0.0, 0.45, 0.451}) {
        instrument->set_value(is.minimum + part * (is.maximum - is.minimum));
        const QImage partly = screen();
        banco_->repaint();
        for (QWidget* child : banco_->findChildren<QWidget*>())
            child->update();
        QCOMPARE(rows_that_differ(partly, screen()), (std::pair{-1, -1}));
    }
    QVERIFY(!screen().isNull());
}

void tst_instrumentos::a_value_beyond_the_scale_shows_at_its_end() {
    QFETCH(const Escala, is);
    Instrumento* instrument = banco_->take(is.kind);
    QWidget& sheet = *instrument->parentWidget();
    const auto red_beyond = [&](bool above) {
        const QImage image = picture(sheet);
        const int from = above ? 0 : instrument->geometry().bottom() - 2;
        const int to = above ? instrument->y() + 2 : image.height() - 1;
        int count = 0;
        for (int y = from; y <= to; ++y)
            for (int x = 0; x < image.width(); ++x)
                count += QColor(image.pixel(x, y)) == QColor(0xD0, 0x1C, 0x1C);
        return count;
    };
    for (const bool above : {true, false}) {
        const double end = above ? is.maximum : is.minimum;
        instrument->set_value(end);
        QVERIFY(!instrument->pinned());
        QCOMPARE(red_beyond(above), 0);
        instrument->set_value(above ? end + 0.01 : end - 0.01);
        QVERIFY(instrument->pinned());
        QVERIFY(red_beyond(above) > 20);
    }
    instrument->set_value(std::nan(""));
    QCOMPARE(instrument->value(), is.minimum - 0.01);
}

void tst_instrumentos::the_piston_goes_with_the_volume() {
    const MarcoPiston& sheet = banco_->piston;
    const Instrumento* space = sheet.pctpiston;
    int last = space->geometry().bottom() + 2;
    for (const double volume : {0.0, 0.3, 1.0, 5.0, 9.9, 10.0, 10.01}) {
        sheet.pctpiston->set_value(volume);
        const double place = space->y() + space->height() * (1.0 - std::min(volume, 10.0) / 10.0);
        const int face = sheet.piston1->geometry().bottom() + 1;
        QVERIFY(std::abs(face - place) <= 0.5);
        QVERIFY(face < last || volume > 10.0);
        QCOMPARE(sheet.piston2->geometry().bottom() + 1, sheet.piston1->y());
        QCOMPARE(sheet.pistonn->geometry().bottom() + 1, sheet.piston2->y());
        QVERIFY(sheet.rect().contains(sheet.pistonn->geometry()));
        last = face;
    }
    for (const char* name : {"piston1", "piston2", "pistonn"})
        QVERIFY(sheet.findChild<QWidget*>(QLatin1String(name)));
}

void tst_instrumentos::the_handle_above_the_cylinder_can_be_held() {
    MarcoPiston& sheet = banco_->piston;
    Instrumento* piston = sheet.pctpiston;
    connect(piston, &Instrumento::MouseMove, piston, &Instrumento::set_value);
    piston->set_value(10.0);
    QSignalSpy down(piston, &Instrumento::MouseDown);
    const QPoint handle = sheet.pistonn->geometry().center();
    QVERIFY(handle.y() < piston->y());
    QTest::mousePress(&sheet, Qt::LeftButton, {}, handle);
    QCOMPARE(said(down), 10.0);
    const int lower = piston->height() / 4;
    const double volume = 10.0 - 10.0 * lower / piston->height();
    QTest::mouseMove(&sheet, handle + QPoint(0, lower));
    QVERIFY(std::abs(piston->value() - volume) < 1e-9);
    QTest::mouseRelease(&sheet, Qt::LeftButton, {}, handle);
    QTest::mouseMove(&sheet, handle);
    QVERIFY(std::abs(piston->value() - volume) < 1e-9);
}

void tst_instrumentos::the_gas_stays_in_its_space() {
    MarcoPiston& sheet = banco_->piston;
    for (const double volume : {0.0, 0.01, 0.1, 2.0, 10.0}) {
        sheet.pctpiston->set_value(volume);
        sheet.set_gas(0.0, 0.0);
        const QImage empty = picture(sheet);
        sheet.set_gas(500.0, 1000.0);
        const auto [first, last] = rows_that_differ(empty, picture(sheet));
        const QRect space = sheet.pctpiston->geometry();
        const int face = sheet.piston1->geometry().bottom() + 1;
        QVERIFY(first < 0 ? volume < 0.02 : first >= face && last <= space.bottom());
    }
    const auto gas_at = [&](double moles, double kelvin) {
        sheet.set_gas(moles, kelvin);
        return picture(sheet);
    };
    QVERIFY(gas_at(1.0, 300.0) != gas_at(1.0, 600.0));
    QVERIFY(gas_at(1.0, 300.0) != gas_at(2.0, 300.0));
}

void tst_instrumentos::the_instrument_in_use_takes_place_and_focus() {
    const auto seen = [&] {
        QStringList names;
        for (const char* name : {"termometro", "lbtsmin", "lbtsmax", "termopar", "lbtpsmin", "lbtpsmax", "barometro0",
                                 "barometro1", "lbpsmin", "lbpsmax", "Manometro", "lbppsmin", "lbppsmax"}) {
            const auto* widget = banco_->findChild<QWidget*>(QLatin1String(name));
            const auto* label = qobject_cast<const QLabel*>(widget);
            if (widget && widget->isVisible())
                names += label ? label->text() : widget->objectName();
        }
        return names.join(QStringLiteral(", "));
    };
    QCOMPARE(seen(), QStringLiteral("termometro, 273.16 ºK, 373.16 ºK, barometro0, barometro1, 0.00 atm, 2.00 atm"));
    banco_->termometros.termometro->setFocus();
    banco_->termometros.use(Instrument::Thermocouple);
    QVERIFY(banco_->termometros.termopar->hasFocus());
    banco_->barometros.use(Instrument::Manometer);
    QVERIFY(banco_->termometros.termopar->hasFocus());
    QCOMPARE(seen(), QStringLiteral("termopar, 0.00 ºK, 1000.00 ºK, Manometro, 0.00 atm, 500.00 atm"));
}

QTEST_MAIN(tst_instrumentos)
#include "tst_instrumentos.moc"

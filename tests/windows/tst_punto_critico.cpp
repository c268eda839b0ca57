// The two critical points side by side.

#include <QTest>

#include "controls/punto_critico.h"

class tst_punto_critico : public QObject {
    Q_OBJECT
private slots:
    void shows_both_points_and_marks_a_difference();
};

void tst_punto_critico::shows_both_points_and_marks_a_difference() {
    using Point = tavo::calcnum::CriticalPoint;
    struct Case {
        double tc, pc, vc;
        std::optional<Point> model;  // t, v, p
        QString shown;               // Tc, Pc, Vc of the gas, then of the model
        bool t_differs, p_differs;
    };
    const Case cases[]{
        {304.13, 72.808, 0.0941, Point{304.13, 0.12853, 72.808}, "304.13 72.81 0.0941 304.13 72.81 0.1285", false,
         false},
        {304.13, 72.808, -1.0, std::nullopt, "304.13 72.81 — — — —", false, false},
        {100.0, 50.0, 0.1, Point{101.9, 0.1, 49.1}, "100.00 50.00 0.1000 101.90 49.10 0.1000", false, false},
        {100.0, 50.0, 0.1, Point{102.1, 0.1, 50.0}, "100.00 50.00 0.1000 102.10 50.00 0.1000", true, false},
        {100.0, 50.0, 0.1, Point{100.0, 0.1, 48.9}, "100.00 50.00 0.1000 100.00 48.90 0.1000", false, true},
        {5.1953, 2.2533, 0.0575, Point{3.5e7, 4e-6, 1.2e-5}, "5.20 2.25 0.0575 35000000 1.2E-05 4E-06", true, true},
        {0.0, -1.0, 0.0, Point{300.0, 0.1, 50.0}, "— — — 300.00 50.00 0.1000", false, false},
    };
    PuntoCritico widget([](int, const QString& literal) { return literal; });
    widget.show();
    const QSize size = widget.sizeHint();
    const auto label = [&](const char* name) { return widget.findChild<QLabel*>(QLatin1String(name)); };
    for (const Case& c : cases) {
        tavo::GasRecord gas;
        gas.tc = c.tc;
        gas.pc = c.pc;
        gas.vc = c.vc;
        widget.show_point(gas, c.model);
        QStringList shown;
        for (const char* name : {"lbtcgas", "lbpcgas", "lbvcgas", "lbtcmodelo", "lbpcmodelo", "lbvcmodelo"})
            shown << label(name)->text();
        QCOMPARE(shown.join(' '), c.shown);
        const auto inked = [&](const char* name) {
            return label(name)->palette().color(QPalette::WindowText) != widget.palette().color(QPalette::WindowText);
        };
        QCOMPARE(inked("lbtcmodelo"), c.t_differs);
        QCOMPARE(inked("lbpcmodelo"), c.p_differs);
        QCOMPARE(widget.findChild<QWidget*>("lbdifiere")->isVisible(), c.t_differs || c.p_differs);
        QCOMPARE(widget.sizeHint(), size);
    }
}

QTEST_MAIN(tst_punto_critico)
#include "tst_punto_critico.moc"

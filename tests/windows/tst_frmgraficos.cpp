// The plot: ranges, mouse, keyboard, what is drawn, pictures in files.

#include <QClipboard>
#include <QImage>
#include <QTest>

#include <set>

#include "core/numtext.h"
#include "tests/windows/support/plot_windows.h"
#include "windows/plots/picture_file.h"

namespace {

constexpr int PENG_ROBINSON = 8;

template <class Control>
Control* control(QWidget* window, const char* name, int i = 0) {
    return VentanasGrafico::control<Control>(window, name, i);
}

/// Palette colours of the five curves that are seen in a picture.
std::set<int> curve_colours(const QImage& image) {
    std::set<QRgb> seen;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            seen.insert(image.pixel(x, y) | 0xFF000000U);
    std::set<int> rows;
    for (int row = 1; row <= 5; ++row)
        if (seen.contains(graficos::palette_colour(tavo::CURVE_COLOURS[static_cast<std::size_t>(row - 1)]).rgb()))
            rows.insert(row);
    return rows;
}

}  // namespace

class tst_frmgraficos : public QObject {
    Q_OBJECT
private slots:
    void init();
    void cleanup() { w_.reset(); }

    void loading_takes_the_rows_and_sets_the_default_ranges();
    void opening_and_closing_is_announced();
    void the_layout_keeps_its_proportions();
    void curves_of_all_rows_are_on_the_sheet();
    void dragging_zooms_and_the_right_button_goes_back();
    void zooming_into_the_two_phase_region_shows_the_tie_line();
    void the_first_corner_is_the_current_minimum_while_dragging();
    void a_click_a_line_and_escape_restore_the_range();
    void the_coordinates_under_the_pointer_are_shown();
    void refused_ranges_leave_the_plot_and_warn();
    void the_keyboard_moves_zooms_and_goes_back();
    void updating_keeps_the_current_smallest_volume();
    void points_without_a_pressure_are_told();
    void pictures_are_copied_and_saved();
    void the_command_line_draws_through_the_same_painting();

private:
    PlotRange& range() { return w_->estado.current_range; }
    QPoint pixel(double v, double p) const {
        return graficos::to_surface({v, p}, QRectF(surface_->rect()), plot_->escena().range).toPoint();
    }
    void drag(QPoint from, QPoint to) {
        QTest::mousePress(surface_, Qt::LeftButton, {}, from);
        QTest::mouseMove(surface_, (from + to) / 2);
        QTest::mouseMove(surface_, to);
        QTest::mouseRelease(surface_, Qt::LeftButton, {}, to);
    }

    std::unique_ptr<VentanasGrafico> w_;
    frmgraficos* plot_ = nullptr;
    QWidget* surface_ = nullptr;
};

void tst_frmgraficos::init() {
    w_ = std::make_unique<VentanasGrafico>();
    for (int i = 1; i <= 5; ++i)
        w_->row(i, "CO2 ", PENG_ROBINSON, QString::number(240 + 20 * i), "1");
    plot_ = w_->graficos();
    plot_->resize(1000, 700);
    QCoreApplication::processEvents();
    surface_ = control<QWidget>(plot_, "pctgrafico");
    w_->datos()->hide();  // it would lie over the plot
}

void tst_frmgraficos::loading_takes_the_rows_and_sets_the_default_ranges() {
    const PlotRange expected{0.0, -80.0, 5.0, 120.0};
    QVERIFY(w_->estado.default_range == expected);
    QVERIFY(range() == expected);
    QCOMPARE(control<QLabel>(plot_, "x0y0x")->text(), "0.00");
    QCOMPARE(control<QLabel>(plot_, "x0y0y")->text(), "-80.00");
    QCOMPARE(control<QLabel>(plot_, "x1y0")->text(), "5.00");
    QCOMPARE(control<QLabel>(plot_, "x0y1")->text(), "120.00");
    QCOMPARE(control<QLabel>(plot_, "lbx")->text(), "V (l)");
    QCOMPARE(control<QLabel>(plot_, "lby")->text(), "P (atm.)");
    QCOMPARE(plot_->windowTitle(), QString(w_->estado.texto(3)).remove('&'));
    QCOMPARE(plot_->escena().curves.size(), 5U);
    for (const graficos::Curve& curve : plot_->escena().curves)
        QCOMPARE(curve.segments.size(), 100U);
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmgraficos::opening_and_closing_is_announced() {
    QSignalSpy spy(&w_->estado, &ApplicationState::plot_window_changed);
    QCOMPARE(w_->estado.plot_shown, 1);
    plot_->close();
    QVERIFY(w_->slot(1).active);
    QVERIFY(!w_->estado.plot());
    w_->graficos();
    QCOMPARE(spy, (QList<QVariantList>{{false}, {true}}));
}

void tst_frmgraficos::the_layout_keeps_its_proportions() {
    const auto* frame = control<QFrame>(plot_, "frmgrafico");
    for (const int width : {1000, 400, 1366}) {
        plot_->resize(width, 500);
        QVERIFY(std::abs(frame->width() - 0.9 * width) <= 1.0);
        QVERIFY(std::abs(frame->x() - 0.1 * width / 3.0) <= 1.0);
        QVERIFY(frame->rect().contains(surface_->geometry()));
        QVERIFY(frame->geometry().bottom() < plot_->height());
        for (int i = 0; i <= 10; ++i) {
            const double x = surface_->x() + surface_->width() * i / 10.0;
            const auto* vertical = plot_->findChild<LineaRejilla*>(QStringLiteral("Linev(%1)").arg(i));
            const auto* horizontal = plot_->findChild<LineaRejilla*>(QStringLiteral("Lineh(%1)").arg(i));
            if (!vertical || !horizontal)
                QFAIL("a grid line is missing");
            QVERIFY(std::abs(vertical->line.x1() - x) <= 1.0);
            QVERIFY(horizontal->line.y1() <= surface_->geometry().bottom() + 1.5);
        }
    }
}

void tst_frmgraficos::curves_of_all_rows_are_on_the_sheet() {
    QCOMPARE(curve_colours(plot_->grab().toImage()), (std::set{1, 2, 3, 4, 5}));
    w_->slot(3).active = false;
    plot_->dibuja();
    QCOMPARE(curve_colours(plot_->grab().toImage()), (std::set{1, 2, 4, 5}));
    plot_->limpiar();
    QCOMPARE(curve_colours(plot_->grab().toImage()), std::set<int>());
}

void tst_frmgraficos::dragging_zooms_and_the_right_button_goes_back() {
    const QPoint low(100, 80), high(400, 300);
    const auto at = [&](bool x, bool y) { return QPoint((x ? high : low).x(), (y ? high : low).y()); };
    const auto corner = [&](QPoint p) { return graficos::to_data(p, QRectF(surface_->rect()), plot_->escena().range); };
    QTest::keyClick(surface_, Qt::Key_Plus);
    QTest::keyClick(surface_, Qt::Key_Plus);
    for (const auto& [right, down] : {std::pair{true, true}, {false, false}, {true, false}, {false, true}}) {
        const graficos::Point a = corner(low), b = corner(high);
        QTest::mousePress(surface_, Qt::LeftButton, {}, at(!right, !down));
        QTest::mouseMove(surface_, at(right, down));
        for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Plus, Qt::Key_Backspace})  // not under a drag
            QTest::keyClick(surface_, key);
        QTest::mouseRelease(surface_, Qt::LeftButton, {}, at(right, down));
        QVERIFY((range() == PlotRange{a.x, b.y, b.x, a.y}));
        QVERIFY(plot_->escena().range == range());
        QCOMPARE(control<QLabel>(plot_, "x0y0x")->text(), QString::fromStdString(tavo::Format(a.x, "####0.00")));
        QTest::mouseClick(surface_, Qt::RightButton);
        QVERIFY(range() == w_->estado.default_range && plot_->escena().range == range());
    }
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmgraficos::zooming_into_the_two_phase_region_shows_the_tie_line() {
    drag(pixel(0.03, 80.0), pixel(0.6, -75.0));
    QVERIFY(range().vmin < 0.05 && range().vmax < 0.62);
    const graficos::Curve& cold = plot_->escena().curves[0];
    QVERIFY(cold.bounds.tie_line());
    // The tie line runs unbroken through the sheet at its pressure.
    const QImage picture = plot_->grab(QRect(surface_->mapTo(plot_, QPoint()), surface_->size())).toImage();
    const auto close = [](QRgb c) { return qBlue(c) > 200 && qRed(c) < 140 && qGreen(c) < 140; };
    for (const double v : {0.2, 0.3, 0.4, 0.5}) {
        bool found = false;
        const QPoint where = pixel(v, cold.bounds.pv);
        for (int dy = -2; dy <= 2; ++dy)
            found = found || close(picture.pixel(where + QPoint(0, dy)));
        QVERIFY2(found, qPrintable(QString::number(v)));
    }
}

void tst_frmgraficos::the_first_corner_is_the_current_minimum_while_dragging() {
    const PlotRange before = range();
    const graficos::Point first = graficos::to_data(QPointF(200, 150), QRectF(surface_->rect()), before);
    QTest::mousePress(surface_, Qt::LeftButton, {}, QPoint(200, 150));
    QCOMPARE(range().vmin, first.x);
    QCOMPARE(range().pmin, first.y);
    QCOMPARE(range().vmax, before.vmax);
    QTest::mouseMove(surface_, QPoint(300, 250));
    // The rectangle lies over the sheet, in blue; the curves stay.
    const QImage dragging = plot_->grab(QRect(surface_->mapTo(plot_, QPoint()), surface_->size())).toImage();
    const QRgb navy = graficos::palette_colour(1).rgb();
    int on_edge = 0;
    for (int x = 200; x <= 300; ++x)
        on_edge += dragging.pixel(x, 250) == navy;
    QVERIFY(on_edge > 20);
    QTest::mouseRelease(surface_, Qt::LeftButton, {}, QPoint(300, 250));
}

void tst_frmgraficos::a_click_a_line_and_escape_restore_the_range() {
    const PlotRange before = range();
    for (const QPoint& to : {QPoint(200, 150), QPoint(201, 151), QPoint(300, 150), QPoint(200, 300)}) {
        drag(QPoint(200, 150), to);
        QVERIFY(range() == before);
        QVERIFY(plot_->escena().range == before);
    }
    QTest::mousePress(surface_, Qt::LeftButton, {}, QPoint(200, 150));
    QTest::mouseMove(surface_, QPoint(300, 250));
    QTest::keyClick(surface_, Qt::Key_Escape);
    QVERIFY(range() == before);
    QTest::mouseRelease(surface_, Qt::LeftButton, {}, QPoint(300, 250));
    QVERIFY(range() == before);
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmgraficos::the_coordinates_under_the_pointer_are_shown() {
    QSignalSpy status(&w_->estado, &ApplicationState::coordinates_changed);
    const QPoint at(321, 123);
    QTest::mouseMove(plot_->windowHandle(), surface_->mapTo(plot_, at - QPoint(5, 5)));
    QTest::mouseMove(plot_->windowHandle(), surface_->mapTo(plot_, at));
    const graficos::Point p = graficos::to_data(at, QRectF(surface_->rect()), range());
    const QString v = QString::fromStdString(tavo::Format(p.x, "####0.0000"));
    const QString pressure = QString::fromStdString(tavo::Format(p.y, "####0.0000"));
    QCOMPARE(surface_->toolTip(), "(" + v + "," + pressure + ")");
    QVERIFY(!status.empty());
    QVERIFY(status.back().front().toString().contains(v));
    QVERIFY(status.back().front().toString().contains(pressure));
}

void tst_frmgraficos::refused_ranges_leave_the_plot_and_warn() {
    const PlotRange drawn = plot_->escena().range;
    for (const auto& [wanted, text] : {std::pair{PlotRange{0, 7, 5, 7}, 162},
                                       {PlotRange{2, 0, 2, 7}, 164},
                                       {PlotRange{0, 0, 5, 1.5e8}, 165},
                                       {PlotRange{0, 0, 1.5e8, 7}, 166}}) {
        w_->mensajes.vistos.clear();
        range() = wanted;
        plot_->dibuja();
        QCOMPARE(w_->mensajes.vistos.size(), 1U);
        QCOMPARE(w_->mensajes.vistos[0].texto, w_->estado.texto(text) + '\n' + w_->estado.texto(163));
        QCOMPARE(w_->mensajes.vistos[0].estilo, 16);
        QCOMPARE(w_->mensajes.vistos[0].titulo, "Advertencia");
        QVERIFY(plot_->escena().range == drawn);
        QCOMPARE(plot_->escena().curves.size(), 5U);
        QCOMPARE(control<QLabel>(plot_, "x1y0")->text(), "5.00");
    }
    w_->mensajes.vistos.clear();
    range() = {2, 0, 2, 7};
    for (int width = 900; width > 800; width -= 20)
        plot_->resize(width, 600);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);  // not at every size
    range() = w_->estado.default_range;
    plot_->resize(700, 600);
    QCOMPARE(w_->mensajes.vistos.size(), 1U);
    QCOMPARE(plot_->escena().curves.size(), 5U);
}

void tst_frmgraficos::the_keyboard_moves_zooms_and_goes_back() {
    QSignalSpy coordinates(&w_->estado, &ApplicationState::coordinates_changed);
    QSignalSpy status(&w_->estado, &ApplicationState::status_changed);
    QTest::keyClick(surface_, Qt::Key_Right);  // from the middle
    QVERIFY(coordinates.back().front().toString().contains("2.5500"));
    QTest::keyClick(surface_, Qt::Key_Up, Qt::ShiftModifier);
    QVERIFY(coordinates.back().front().toString().contains("40.0000"));
    QTest::keyClick(surface_, Qt::Key_Return);
    QVERIFY(status.back().front().toString().contains("P5 = "));
    plot_->actualiza();  // the reading belongs to the curves before
    QVERIFY(status.back().front().toString().isEmpty());

    const PlotRange start = range();
    QTest::keyClick(surface_, Qt::Key_Plus);
    const PlotRange closer = range();
    QVERIFY(std::abs((closer.vmax - closer.vmin) / (start.vmax - start.vmin) - 0.8) < 1e-9);
    QTest::keyClick(surface_, Qt::Key_Plus);
    QTest::keyClick(surface_, Qt::Key_Backspace);
    QVERIFY(range() == closer);
    QTest::keyClick(surface_, Qt::Key_Backspace);
    QVERIFY(range() == start);
    QTest::keyClick(surface_, Qt::Key_Backspace);  // nothing before it but the first
    QTest::keyClick(surface_, Qt::Key_Minus);
    QVERIFY(range().vmax - range().vmin > 5.0);
    QTest::keyClick(surface_, Qt::Key_Home);
    QVERIFY(range() == w_->estado.default_range);

    // However often: the range stays one that can be drawn, without a box.
    for (int i = 0; i < 200; ++i)
        QTest::keyClick(surface_, Qt::Key_Plus);
    for (int i = 0; i < 200; ++i)
        QTest::keyClick(surface_, Qt::Key_Minus);
    QVERIFY(graficos::check(range()) == graficos::RangeFault::None);
    QVERIFY(w_->mensajes.vistos.empty());
}

void tst_frmgraficos::updating_keeps_the_current_smallest_volume() {
    drag(QPoint(100, 80), QPoint(400, 300));
    const double vmin = range().vmin;
    QVERIFY(vmin > 0.0);
    plot_->actualiza();
    QCOMPARE(range().vmin, vmin);
    QCOMPARE(range().vmax, 5.0);
    QCOMPARE(range().pmin, w_->estado.default_range.pmin);
    QCOMPARE(range().pmax, w_->estado.default_range.pmax);
    QCOMPARE(w_->estado.default_range.vmin, 0.0);
}

void tst_frmgraficos::points_without_a_pressure_are_told() {
    QSignalSpy status(&w_->estado, &ApplicationState::status_changed);
    tavo::EquationSlot& slot = w_->slot(2);
    slot.equation = tavo::EquationOfState::Dieterici;
    slot.parameters = true;
    slot.gas.a = -1e6;
    plot_->dibuja();
    QCOMPARE(plot_->escena().curves.size(), 5U);
    QCOMPARE(status.size(), 1);
    QVERIFY(status.front().front().toString().contains('2'));
}

void tst_frmgraficos::pictures_are_copied_and_saved() {
    QTest::keySequence(surface_, QKeySequence::Copy);
    QCOMPARE(curve_colours(QGuiApplication::clipboard()->image()), (std::set{1, 2, 3, 4, 5}));

    const std::filesystem::path folder = w_->hogar.path();
    const auto save = [&](const char* name) {
        w_->archivos.respuesta = QString::fromStdString((folder / name).string());
        QTest::keySequence(surface_, QKeySequence::Save);
        return std::filesystem::exists(folder / name);
    };
    QVERIFY(save("a.png"));
    QCOMPARE(QImage(w_->archivos.respuesta).size(), QSize(1200, 800));
    QVERIFY(save("a.svg"));
    QVERIFY(w_->hogar.read("a.svg").contains("<svg"));
    QVERIFY(save("a.pdf"));
    QVERIFY(w_->hogar.read("a.pdf").startsWith("%PDF"));
    QVERIFY(w_->mensajes.vistos.empty());

    QVERIFY(!save("a.gif"));
    QVERIFY(!save("missing/a.png"));
    QCOMPARE(w_->mensajes.vistos.size(), 2U);
    QVERIFY(w_->mensajes.vistos[1].texto.contains("a.png"));
    w_->archivos.respuesta.clear();
    QTest::keySequence(surface_, QKeySequence::Save);
    QCOMPARE(w_->mensajes.vistos.size(), 2U);
}

void tst_frmgraficos::the_command_line_draws_through_the_same_painting() {
    const std::string file = (w_->hogar.path() / "b.png").string();
    graficos::PlotArguments arguments{file, {}, {}, {}};
    for (const char* t : {"260", "280", "300", "320", "340"})
        arguments.rows.push_back(std::string("CO2;PENG-ROBINSON;") + t + ";1");
    ApplicationState other(w_->hogar.path());
    other.load_languages();
    graficos::draw(arguments, other);
    const graficos::Picture same{plot_->escena(), "V (l)", "P (atm.)", {}};
    QCOMPARE(QImage(QString::fromStdString(file)).convertToFormat(QImage::Format_RGB32),
             graficos::image(same, {1200, 800}));
}

QTEST_MAIN(tst_frmgraficos)
#include "tst_frmgraficos.moc"

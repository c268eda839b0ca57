#include "windows/plots/pintar.h"

#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace graficos {

namespace {

constexpr double GAP = 6.0;  // the grid of the program's spacing
constexpr double CURVE_WIDTH = 2.0;
constexpr double TIE_WIDTH = 1.5;
constexpr double MARK_SPACING = 110.0;  // along a curve
constexpr double TICK = 5.0;
constexpr double LEGEND_LINE = 28.0;
constexpr double LEGEND_LEADING = 2.0;
constexpr int DIVISIONS = 10;
const QColor PAPER(Qt::white);
const QColor INK(Qt::black);
const QColor GRID(224, 224, 224);
const QColor QUIET(96, 96, 96);

QPen pen(const QColor& colour, double width) {
    return QPen(colour, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

QPen dots(const QColor& colour, double offset) {
    QPen result(colour, CURVE_WIDTH, Qt::CustomDashLine, Qt::FlatCap, Qt::RoundJoin);
    result.setDashPattern({1.0, 1.5});
    result.setDashOffset(offset / CURVE_WIDTH);
    return result;
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// Ticks that leave room for their numbers.
Ticks volume_ticks(const Escena& escena, const QRectF& plot, const QFontMetricsF& metrics) {
    const double room = metrics.horizontalAdvance(QStringLiteral("00000.00"));
    const int most = std::clamp(static_cast<int>(plot.width() / room), 2, DIVISIONS);
    return ticks(escena.range.vmin, escena.range.vmax, most);
}

Ticks pressure_ticks(const Escena& escena, double height, const QFontMetricsF& metrics) {
    const int most = std::clamp(static_cast<int>(height / (2.0 * metrics.height())), 2, DIVISIONS);
    return ticks(escena.range.pmin, escena.range.pmax, most);
}

std::vector<QPointF> mapped(const Stroke& stroke, const QRectF& plot, const PlotRange& range) {
    std::vector<QPointF> points;
    points.reserve(stroke.points.size());
    std::ranges::transform(stroke.points, std::back_inserter(points),
                           [&](Point p) { return to_surface(p, plot, range); });
    return points;
}

double path_length(const std::vector<QPointF>& points) {
    double length = 0.0;
    for (std::size_t i = 1; i < points.size(); ++i)
        length += std::hypot(points[i].x() - points[i - 1].x(), points[i].y() - points[i - 1].y());
    return length;
}

void polyline(QPainter& painter, const std::vector<QPointF>& points) {
    painter.drawPolyline(points.data(), static_cast<int>(points.size()));
}

/// The part of a segment inside the range, in pixels, or nothing.
void clipped_line(QPainter& painter, Point a, Point b, const QRectF& plot, const PlotRange& range) {
    if (const auto piece = clip(a, b, range))
        painter.drawLine(to_surface(piece->front(), plot, range), to_surface(piece->back(), plot, range));
}

/// Segments inside the co-volume are there, in the colour of the sheet: beneath the grid, so that they hide nothing.
void hidden_segments(QPainter& painter, const Curve& curve, const QRectF& plot, const PlotRange& range) {
    painter.setPen(pen(PAPER, CURVE_WIDTH));
    for (const Segment& s : curve.segments)
        if (!s.visible && s.defined)
            clipped_line(painter, s.from, s.to, plot, range);
}

void grid(QPainter& painter, const QRectF& plot) {
    painter.setPen(pen(GRID, 1.0));
    for (int i = 0; i <= DIVISIONS; ++i) {
        const double x = plot.left() + plot.width() * i / DIVISIONS;
        const double y = plot.top() + plot.height() * i / DIVISIONS;
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
}

void axes(QPainter& painter, const QRectF& plot, const PlotRange& range) {
    painter.setPen(pen(QUIET, 1.0));
    if (clip({range.vmin, 0.0}, {range.vmax, 0.0}, range) && range.pmin * range.pmax < 0.0)
        clipped_line(painter, {range.vmin, 0.0}, {range.vmax, 0.0}, plot, range);
    painter.setPen(pen(INK, 1.0));
    painter.drawLine(plot.topLeft(), plot.bottomLeft());
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
}

void volume_numbers(QPainter& painter, const Disposicion& where, const Escena& escena, const QFontMetricsF& metrics) {
    const Ticks marks = volume_ticks(escena, where.plot, metrics);
    for (const double v : marks.values) {
        const double x = to_surface({v, escena.range.pmin}, where.plot, escena.range).x();
        painter.drawLine(QPointF(x, where.plot.bottom()), QPointF(x, where.plot.bottom() + TICK));
        const QString number = text(tick_text(v, marks.step));
        const double width = metrics.horizontalAdvance(number);
        const QRectF place(x - width / 2.0, where.x0y0x.top(), width, where.x0y0x.height());
        const QRectF guarded = place.adjusted(-GAP, 0.0, GAP, 0.0);
        if (!guarded.intersects(where.x0y0x) && !guarded.intersects(where.x1y0))
            painter.drawText(place, Qt::AlignCenter, number);
    }
}

void pressure_numbers(QPainter& painter, const Disposicion& where, const Escena& escena, const QFontMetricsF& metrics) {
    const Ticks marks = pressure_ticks(escena, where.plot.height(), metrics);
    for (const double p : marks.values) {
        const double y = to_surface({escena.range.vmin, p}, where.plot, escena.range).y();
        painter.drawLine(QPointF(where.plot.left() - TICK, y), QPointF(where.plot.left(), y));
        const QRectF place(where.x0y1.left(), y - metrics.height() / 2.0, where.x0y1.width(), metrics.height());
        if (!place.intersects(where.x0y0y) && !place.intersects(where.x0y1))
            painter.drawText(place, Qt::AlignRight | Qt::AlignVCenter, text(tick_text(p, marks.step)));
    }
}

void end_texts(QPainter& painter, const Disposicion& where, const Escena& escena, const QString& v_title,
               const QString& p_title) {
    painter.setPen(INK);
    painter.drawText(where.x0y0x, Qt::AlignCenter, text(escena.end_labels[0]));
    painter.drawText(where.x0y0y, Qt::AlignRight | Qt::AlignVCenter, text(escena.end_labels[1]));
    painter.drawText(where.x1y0, Qt::AlignCenter, text(escena.end_labels[2]));
    painter.drawText(where.x0y1, Qt::AlignRight | Qt::AlignVCenter, text(escena.end_labels[3]));
    painter.drawText(where.lbx, Qt::AlignCenter, v_title);
    painter.drawText(where.lby, Qt::AlignLeft | Qt::AlignVCenter, p_title);
}

/// Draws one curve with its marks and its tie line, and adds its lines to those that the legend must avoid.
void curve(QPainter& painter, const Curve& c, const QRectF& plot, const PlotRange& range,
           std::vector<std::vector<Point>>& lines) {
    const QColor colour = palette_colour(c.colour);
    double dotted_length = 0.0;
    const double phase = plot.left() + MARK_SPACING * c.row / 5.0;
    std::optional<Point> last;
    std::vector<Point> places;
    for (const Stroke& stroke : strokes(c.segments, range)) {
        const auto points = mapped(stroke, plot, range);
        painter.setPen(stroke.dotted ? dots(colour, dotted_length) : pen(colour, CURVE_WIDTH));
        polyline(painter, points);
        dotted_length = stroke.dotted ? dotted_length + path_length(points) : 0.0;
        std::vector<Point>& line = lines.emplace_back();
        for (const QPointF& p : points)
            line.push_back({p.x(), p.y()});
        if (!stroke.dotted)
            std::ranges::copy(marks(line, MARK_SPACING, phase, last), std::back_inserter(places));
    }
    if (c.bounds.tie_line()) {
        const Point a{c.bounds.lower, c.bounds.pv}, b{c.bounds.upper, c.bounds.pv};
        painter.setPen(pen(colour, TIE_WIDTH));
        clipped_line(painter, a, b, plot, range);
        if (const auto piece = clip(a, b, range)) {
            const QPointF from = to_surface(piece->front(), plot, range), to = to_surface(piece->back(), plot, range);
            lines.push_back({{from.x(), from.y()}, {to.x(), to.y()}});
        }
    }
    for (const Point& p : places)
        pintar_marca(painter, {p.x, p.y}, c.row, colour);
}

/// The texts of a legend and where it goes.
struct Legend {
    std::vector<QString> texts;
    double text_width;
    Placement where;
};

Legend lay_out(std::vector<QString> texts, const QRectF& plot, const QFontMetricsF& metrics,
               const std::vector<std::vector<Point>>& lines) {
    double width = 0.0;
    for (const QString& line : texts)
        width = std::max(width, metrics.horizontalAdvance(line));
    width = std::min(width, plot.width() - LEGEND_LINE - 5.0 * GAP);
    const double rows = static_cast<double>(texts.size());
    const double height = rows * metrics.height() + (rows - 1.0) * LEGEND_LEADING + 2.0 * GAP;
    const Placement where = place_legend(LEGEND_LINE + width + 3.0 * GAP, height,
                                         {plot.x(), plot.y(), plot.width(), plot.height()}, lines, GAP);
    return {std::move(texts), width, where};
}

/// With the whole names of the gases where they hide no curve, else as the shorter of the two hides less.
Legend choose_legend(const Escena& escena, const QRectF& plot, const QFontMetricsF& metrics,
                     const std::vector<std::vector<Point>>& lines) {
    std::vector<QString> whole, brief;
    for (const Curve& c : escena.curves) {
        whole.push_back(text(c.description));
        brief.push_back(text(abbreviated(c.description)));
    }
    Legend result = lay_out(std::move(whole), plot, metrics, lines);
    if (result.where.hidden > 0.0) {
        Legend shorter = lay_out(std::move(brief), plot, metrics, lines);
        if (shorter.where.hidden < result.where.hidden)
            return shorter;
    }
    return result;
}

void legend(QPainter& painter, const Escena& escena, const QRectF& plot, const QFontMetricsF& metrics,
            const std::vector<std::vector<Point>>& lines) {
    if (escena.curves.empty())
        return;
    const Legend chosen = choose_legend(escena, plot, metrics, lines);
    const Rectangle& place = chosen.where.place;
    const QRectF box(place.x, place.y, place.width, place.height);
    if (chosen.text_width < 40.0 || !plot.contains(box))
        return;  // the window is too small for a legend
    painter.setPen(pen(GRID, 1.0));
    painter.setBrush(QColor(255, 255, 255, 225));
    painter.drawRect(box);
    painter.setBrush(Qt::NoBrush);
    double y = box.top() + GAP;
    for (std::size_t i = 0; i < chosen.texts.size(); ++i) {
        const Curve& c = escena.curves[i];
        const double middle = y + metrics.height() / 2.0;
        const double x = box.left() + GAP;
        painter.setPen(pen(palette_colour(c.colour), CURVE_WIDTH));
        painter.drawLine(QPointF(x, middle), QPointF(x + LEGEND_LINE, middle));
        pintar_marca(painter, {x + LEGEND_LINE / 2.0, middle}, c.row, palette_colour(c.colour));
        painter.setPen(INK);
        painter.drawText(QRectF(x + LEGEND_LINE + GAP, y, chosen.text_width + 1.0, metrics.height()),
                         Qt::AlignLeft | Qt::AlignVCenter,
                         metrics.elidedText(chosen.texts[i], Qt::ElideRight, chosen.text_width + 1.0));
        y += metrics.height() + LEGEND_LEADING;
    }
}

}  // namespace

Disposicion disponer(const QRectF& sheet, const Escena& escena, const QFontMetricsF& metrics) {
    const double line = metrics.height();
    double left = 0.0;
    for (const std::string& label : {escena.end_labels[1], escena.end_labels[3]})
        left = std::max(left, metrics.horizontalAdvance(text(label)));
    const Ticks marks = pressure_ticks(escena, std::max(1.0, sheet.height() - 4.0 * line), metrics);
    for (const double p : marks.values)
        left = std::max(left, metrics.horizontalAdvance(text(tick_text(p, marks.step))));
    left = std::ceil(left) + 2.0;

    const auto width_of = [&](std::size_t i) { return metrics.horizontalAdvance(text(escena.end_labels[i])) + 4.0; };
    const double right = std::max(2.0 * GAP, width_of(2) / 2.0 + GAP);
    Disposicion where;
    where.plot = QRectF(
        QPointF(std::round(sheet.left() + GAP + left + TICK + GAP / 2.0), std::round(sheet.top() + line + 2.0 * GAP)),
        QPointF(std::round(sheet.right() - right), std::round(sheet.bottom() - 2.0 * line - 3.0 * GAP)));
    where.plot.setWidth(std::max(1.0, where.plot.width()));
    where.plot.setHeight(std::max(1.0, where.plot.height()));
    const QRectF& plot = where.plot;
    const double column = sheet.left() + GAP;
    const double row = plot.bottom() + TICK + GAP / 2.0;
    where.x0y1 = QRectF(column, plot.top() - line / 2.0, left, line);
    where.x0y0y = QRectF(column, plot.bottom() - line / 2.0, left, line);
    where.x0y0x = QRectF(plot.left() - width_of(0) / 2.0, row, width_of(0), line);
    where.x1y0 = QRectF(plot.right() - width_of(2) / 2.0, row, width_of(2), line);
    where.lbx = QRectF(plot.left(), row + line, plot.width(), line);
    where.lby = QRectF(column, sheet.top() + GAP / 2.0, std::max(1.0, plot.width()), line);
    return where;
}

void pintar(QPainter& painter, const QRectF& sheet, const Escena& escena, const QString& v_title,
            const QString& p_title, AxisTexts texts) {
    const QFontMetricsF metrics(painter.font(), painter.device());
    const Disposicion where = disponer(sheet, escena, metrics);
    painter.save();
    painter.fillRect(sheet, PAPER);
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const Curve& c : escena.curves)
        hidden_segments(painter, c, where.plot, escena.range);
    painter.setRenderHint(QPainter::Antialiasing, false);
    grid(painter, where.plot);
    axes(painter, where.plot, escena.range);
    volume_numbers(painter, where, escena, metrics);
    pressure_numbers(painter, where, escena, metrics);
    if (texts == AxisTexts::Painted)
        end_texts(painter, where, escena, v_title, p_title);
    painter.setRenderHint(QPainter::Antialiasing, true);
    std::vector<std::vector<Point>> lines;
    for (const Curve& c : escena.curves)
        curve(painter, c, where.plot, escena.range, lines);
    legend(painter, escena, where.plot, metrics, lines);
    painter.restore();
}

Point to_data(QPointF point, const QRectF& plot, const PlotRange& range) {
    return {range.vmin + (range.vmax - range.vmin) * (point.x() - plot.left()) / plot.width(),
            range.pmax + (range.pmin - range.pmax) * (point.y() - plot.top()) / plot.height()};
}

QPointF to_surface(Point point, const QRectF& plot, const PlotRange& range) {
    return {plot.left() + plot.width() * (point.x - range.vmin) / (range.vmax - range.vmin),
            plot.top() + plot.height() * (range.pmax - point.y) / (range.pmax - range.pmin)};
}

}  // namespace graficos

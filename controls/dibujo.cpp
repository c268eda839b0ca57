#include "controls/dibujo.h"

#include <QFontMetricsF>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "core/numtext.h"

namespace dibujo {

namespace {

constexpr double LEAST_BETWEEN_TICKS = 3.0;
constexpr double MENISCUS = 0.3;  // height of mercury's cap in widths of the bore

double device_pixels(const QPainter& painter, double width) {
    return std::max(1.0, std::round(width * painter.device()->devicePixelRatio()));
}

QLinearGradient across(const QRectF& body, Run run, std::initializer_list<std::pair<double, QColor>> stops) {
    QLinearGradient result(body.topLeft(), run == Run::Upright ? body.topRight() : body.bottomLeft());
    for (const auto& [at, colour] : stops)
        result.setColorAt(at, colour);
    return result;
}

}  // namespace

double crisp(const QPainter& painter, double at, double width) {
    const double ratio = painter.device()->devicePixelRatio();
    const double offset = std::fmod(device_pixels(painter, width), 2.0) / 2.0;
    return (std::round(at * ratio - offset) + offset) / ratio;
}

QPen pen(const QPainter& painter, const QColor& colour, double width) {
    return QPen(colour, device_pixels(painter, width) / painter.device()->devicePixelRatio(), Qt::SolidLine,
                Qt::FlatCap, Qt::MiterJoin);
}

Density density(const graduacion::Scale& scale, double pixels, double number_size) {
    Density result{scale.numbered, scale.numbered};
    for (int every = scale.numbered; every >= 1; --every)
        if (scale.numbered % every == 0 && every * pixels >= LEAST_BETWEEN_TICKS)
            result.tick = every;
    for (const int every : {10, 5, 2, 1})
        if (every * scale.numbered * pixels >= number_size)
            result.number = every * scale.numbered;
    return result;
}

void draw_scale(QPainter& painter, const Regla& ruler) {
    const QFontMetricsF metrics(painter.font());
    const graduacion::Scale& scale = ruler.scale;
    const double per_unit = ruler.height / (scale.maximum - scale.minimum);
    const Density every = density(scale, scale.graduation * per_unit, metrics.height() * 1.1);
    painter.setPen(pen(painter));
    const double axis = crisp(painter, ruler.x);
    painter.drawLine(QPointF(axis, crisp(painter, ruler.top)), QPointF(axis, crisp(painter, ruler.top + ruler.height)));
    for (const graduacion::Tick& tick : graduacion::ticks(scale)) {
        const auto index = static_cast<int>(std::lround(tick.value / scale.graduation));
        if (index % every.tick != 0)
            continue;
        const double y = ruler.top + (scale.maximum - tick.value) * per_unit;
        const double length = tick.numbered ? TICK : TICK / 2.0;
        painter.drawLine(QPointF(ruler.x, crisp(painter, y)),
                         QPointF(ruler.x + ruler.side * length, crisp(painter, y)));
        const QString number = QString::fromStdString(tavo::to_text(tick.value));
        const double width = metrics.horizontalAdvance(number);
        const double x = ruler.x + ruler.side * (TICK + NUMBER_GAP) - (ruler.side < 0 ? width : 0.0);
        const QRectF place(x, y - metrics.height() / 2.0, width, metrics.height());
        const auto clash = [&](const QRectF& other) { return other.intersects(place); };
        if (index % every.number == 0 && std::ranges::none_of(ruler.taken, clash))
            painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, number);
    }
}

double scale_room(const QLabel* a, const QLabel* b) {
    return std::max(a->width(), b->width()) + NUMBER_GAP + TICK;
}

void put_at_end(QLabel* label, double right, double y) {
    label->move(static_cast<int>(std::lround(right - label->width())),
                static_cast<int>(std::lround(y - label->height() / 2.0)));
}

QPointF beyond_label(const QLabel* label, bool above) {
    const QRectF place(label->geometry());
    return {place.center().x(), above ? place.top() - 10.0 : place.bottom() + 10.0};
}

QLinearGradient metal(const QRectF& body, Run run) {
    return across(body, run,
                  {{0.0, QColor(150, 156, 163)},
                   {0.3, QColor(236, 239, 242)},
                   {0.55, QColor(205, 210, 215)},
                   {1.0, QColor(120, 126, 133)}});
}

QLinearGradient brass(const QRectF& body, Run run) {
    return across(body, run,
                  {{0.0, QColor(151, 112, 40)},
                   {0.3, QColor(250, 226, 150)},
                   {0.55, QColor(216, 174, 82)},
                   {1.0, QColor(128, 92, 28)}});
}

QLinearGradient mercury(const QRectF& body) {
    return across(body, Run::Upright,
                  {{0.0, QColor(92, 98, 105)},
                   {0.32, QColor(226, 230, 234)},
                   {0.5, QColor(168, 174, 181)},
                   {1.0, QColor(74, 80, 87)}});
}

QLinearGradient glass(const QRectF& body) {
    return across(body, Run::Upright,
                  {{0.0, QColor(205, 220, 230)},
                   {0.25, QColor(250, 253, 255)},
                   {0.7, QColor(236, 243, 248)},
                   {1.0, QColor(196, 212, 223)}});
}

QPolygonF arrow(QPointF tip, double degrees, double size) {
    QTransform turn;
    turn.translate(tip.x(), tip.y());
    turn.rotate(degrees);
    return turn.map(QPolygonF({{0.0, 0.0}, {size * 0.6, size}, {-size * 0.6, size}}));
}

void draw_mercury(QPainter& painter, const Tubo& bore, double place, double height, bool pinned) {
    const double bottom = height + 2.0;  // past the surface's edge, which may lie within a device pixel
    const QRectF body(bore.left, place, bore.width, bottom - place);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mercury(body));
    const double cap = std::min(bore.width * MENISCUS, height - place);
    QPainterPath path(QPointF(bore.left, bottom));
    path.lineTo(bore.left, place + cap);
    path.quadTo(bore.left, place, body.center().x(), place);
    path.quadTo(body.right(), place, body.right(), place + cap);
    path.lineTo(body.right(), bottom);
    painter.drawPath(path);
    if (pinned) {
        painter.setBrush(WARNING);
        painter.drawRect(
            QRectF(bore.left - GAP, std::clamp(place - 1.0, 0.0, height - 2.0), bore.width + 2.0 * GAP, 2.0));
    }
}

QRectF mercury_between(const Tubo& bore, double from, double to) {
    return QRectF(bore.left, std::min(from, to), bore.width, std::abs(to - from) + bore.width)
        .adjusted(-1.0, -1.0, 1.0, 1.0);
}

QRectF draw_thermometer(QPainter& painter, const QRectF& bore) {
    const double size = bore.width() / TERMOMETRO.bore;
    const double wall = size * TERMOMETRO.wall, neck = size * TERMOMETRO.neck, radius = size * TERMOMETRO.bulb;
    const QRectF stem = bore.adjusted(-wall, -1.2 * wall - 6.0, wall, neck);
    const QPointF centre(bore.center().x(), bore.bottom() + neck + radius);

    QPainterPath tube;
    tube.addRoundedRect(stem.adjusted(0.0, 0.0, 0.0, radius), stem.width() / 2.0, stem.width() / 2.0);
    QPainterPath bulb;
    bulb.addEllipse(centre, radius, radius);
    painter.setPen(pen(painter));
    painter.setBrush(glass(stem));
    painter.drawPath(tube.united(bulb));

    painter.setPen(pen(painter, QUIET, 0.7));
    painter.setBrush(PAPER);
    painter.drawRoundedRect(bore.adjusted(-0.5, -5.0, 0.5, neck), bore.width() / 2.0, bore.width() / 2.0);

    painter.setPen(Qt::NoPen);
    painter.setBrush(mercury(bore));
    painter.drawRect(QRectF(bore.left(), bore.bottom() - 0.5, bore.width(), neck + radius / 2.0));
    QRadialGradient drop(centre - QPointF(0.3, 0.3) * radius, radius * 1.5);
    drop.setColorAt(0.0, QColor(236, 239, 242));
    drop.setColorAt(0.35, QColor(172, 178, 185));
    drop.setColorAt(1.0, QColor(70, 76, 83));
    painter.setBrush(drop);
    painter.drawEllipse(centre, radius - 2.5, radius - 2.5);
    return stem;
}

}  // namespace dibujo

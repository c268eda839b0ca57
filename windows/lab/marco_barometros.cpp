#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "controls/dibujo.h"
#include "core/numtext.h"
#include "windows/lab/columna.h"

using laboratorio::Instrument;

namespace {

using dibujo::GAP;
using dibujo::TICK;

constexpr double BORE = 9.0;  // on a small sheet
constexpr double GLASS = 3.5;
constexpr double BESIDE = 16.0;                           // between the glass and the scales
constexpr double CISTERN = 34.0;                          // depth of its mercury while the column stands at 0 atm
constexpr double HALF = 30.0;                             // its width
constexpr double RIM = 7.0;                               // glass above the mercury
constexpr double DISH = 3.0;                              // thickness of that glass
constexpr int SINKING = 6;                                // of the surface when the column is full
constexpr laboratorio::Scale TORR{0.0, 1520.0, 20.0, 5};  // 2 atm in mmHg

constexpr double GUIDE = 10.0;        // the slim scale that is dragged: its place
constexpr double GUIDE_ROOM = 24.0;   // and its room
constexpr double RIM_OF_DIAL = 1.14;  // in radii of the face
constexpr double NUMBERS = 0.95;      // outer end of the dial's numbers, in radii; the ticks begin within them
constexpr double FIRST_ANGLE = 225;   // of 0 atm, degrees counter-clockwise from the right
constexpr double SWEEP = 270.0;
constexpr laboratorio::Scale DIAL{0.0, 500.0, 10.0, 5};

/// Mercury in the cistern; its surface sinks a little as the column rises.
class Cubeta final : public QWidget {
public:
    explicit Cubeta(QWidget* padre) : QWidget(padre) {
        setObjectName(QStringLiteral("barometro0"));
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.fillRect(rect(), dibujo::mercury(QRectF(rect())));
        painter.fillRect(QRectF(0.0, 0.0, width(), 1.0), QColor(226, 230, 234));
        // The tube's mouth, seen through the mercury's gleam.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(QColor(255, 255, 255, 120), 1.0));
        const double half = BORE / 2.0 + GLASS;
        const double x = width() / 2.0, y = height() - 10.0;
        painter.drawPolyline(QPolygonF({{x - half, 0.0}, {x - half, y}, {x + half, y}, {x + half, 0.0}}));
    }
};

QFont dial_font(QFont font, double radius) {
    font.setPixelSize(static_cast<int>(std::clamp(radius * 0.13, 8.0, 16.0)));
    return font;
}

/// The needle on its dial, and the mark on the slim scale at the side.
class Esfera final : public Instrumento {
public:
    using Instrumento::Instrumento;
    void set_dial(QPointF centre, double radius, double ticks) {
        centre_ = centre;
        radius_ = radius;
        ticks_ = ticks;
        update();
    }
    QPointF centre() const { return centre_; }
    double radius() const { return radius_; }
    double ticks() const { return ticks_; }  // where they begin, in radii

    /// A point of the dial: value, and distance from the centre in radii.
    QPointF on_dial(double value, double distance) const {
        const double degrees = FIRST_ANGLE - SWEEP * value / DIAL.maximum;
        const double angle = degrees * std::numbers::pi / 180.0;
        return centre_ + distance * radius_ * QPointF(std::cos(angle), -std::sin(angle));
    }

protected:
    void draw(QPainter& painter) const override {
        const QPolygonF body = needle(place());
        painter.setPen(Qt::NoPen);
        painter.setBrush(pinned() ? dibujo::WARNING : dibujo::INK);
        painter.drawPolygon(body);
        const double hub = radius_ * 0.085;
        const QRectF cap(centre_ - QPointF(hub, hub), QSizeF(2.0 * hub, 2.0 * hub));
        painter.setPen(dibujo::pen(painter));
        painter.setBrush(dibujo::brass(cap));
        painter.drawEllipse(cap);
        painter.setPen(Qt::NoPen);
        painter.setBrush(dibujo::ACCENT);
        painter.drawPolygon(mark(place()));
    }

    QRectF between(double from, double to) const override {
        const auto around = [this](double place) { return needle(place).boundingRect() | mark(place).boundingRect(); };
        return (around(from) | around(to)).adjusted(-2.0, -2.0, 2.0, 2.0);
    }

private:
    QPolygonF needle(double place) const {
        const double value = laboratorio::value_at(kind(), place, height());
        const QPointF tip = on_dial(value, ticks_ - 0.02), tail = on_dial(value, -0.2);
        const QPointF along = (tip - tail) / radius_;
        const QPointF across(along.y() * radius_ * 0.028, -along.x() * radius_ * 0.028);
        return QPolygonF({tip, centre_ + across, tail + across * 1.3, tail - across * 1.3, centre_ - across});
    }
    QPolygonF mark(double place) const {
        return dibujo::arrow({GUIDE + 2.0, std::clamp(place, 5.5, height() - 5.5)}, -90.0, 9.0);  // whole at the ends
    }

    QPointF centre_;
    double radius_ = 1.0, ticks_ = 1.0;
};

}  // namespace

MarcoBarometros::MarcoBarometros(QWidget* padre)
    : Lamina(padre),
      barometro0(new Cubeta(this)),
      barometro1(new Columna(Instrument::Barometer, this)),
      Manometro(new Esfera(Instrument::Manometer, this)),
      lbpsmin(range_label("lbpsmin", 0.0, " atm")),
      lbpsmax(range_label("lbpsmax", 2.0, " atm")),
      lbppsmin(range_label("lbppsmin", 0.0, " atm")),
      lbppsmax(range_label("lbppsmax", 500.0, " atm")) {
    setObjectName(QStringLiteral("barometros"));
    adopt(barometro1, "barometro1");
    adopt(Manometro, "Manometro");
    connect(barometro1, &Instrumento::value_changed, this, &MarcoBarometros::sink_surface);
    use(Instrument::Barometer);
}

Instrumento* MarcoBarometros::in_use() const {
    return Manometro->isHidden() ? barometro1 : Manometro;
}

void MarcoBarometros::use(Instrument instrument) {
    const bool manometer = instrument == Instrument::Manometer;
    const std::vector<QWidget*> first{barometro1, barometro0, lbpsmin, lbpsmax}, second{Manometro, lbppsmin, lbppsmax};
    exchange(manometer ? first : second, manometer ? second : first);
}

void MarcoBarometros::arrange() {
    const QFontMetricsF metrics(small_font());
    const QRectF sheet = paper();
    const double line = metrics.height();

    const double left_room = dibujo::scale_room(lbpsmin, lbpsmax);
    const double one_scale = left_room + BESIDE + GLASS + BORE / 2.0 + HALF + DISH;
    const double two_scales = one_scale - HALF - DISH + BORE / 2.0 + GLASS + BESIDE + TICK + dibujo::NUMBER_GAP +
                              metrics.horizontalAdvance(QStringLiteral("mmHg"));
    torr_ = two_scales <= sheet.width() + 4.0;
    const double width = torr_ ? two_scales : one_scale;
    const double top = sheet.top() + 1.7 * line;
    barometro1->setGeometry(
        QRectF(sheet.center().x() - width / 2.0, top, width, sheet.bottom() - CISTERN - DISH - 2.0 - top).toRect());
    static_cast<Columna*>(barometro1)->set_bore(std::round(left_room + BESIDE + GLASS), BORE);
    const QRectF scale(barometro1->geometry());
    const double numbers = scale.left() + left_room - TICK - dibujo::NUMBER_GAP;
    dibujo::put_at_end(lbpsmax, numbers, scale.top());
    dibujo::put_at_end(lbpsmin, numbers, scale.bottom());
    sink_surface();

    Manometro->setGeometry(sheet.adjusted(0.0, 2.0 * GAP, 0.0, -2.0 * GAP).toRect());
    const QRectF surface(Manometro->rect());
    const double room = surface.width() - GUIDE_ROOM;
    const double radius = std::min(room / 2.0, surface.height() / 2.0 - line - GAP) / RIM_OF_DIAL;
    const double number = QFontMetricsF(dial_font(small_font(), radius)).horizontalAdvance(QStringLiteral("400"));
    static_cast<Esfera*>(Manometro)->set_dial({GUIDE_ROOM + room / 2.0, surface.center().y()}, radius,
                                              NUMBERS - (number + 3.0) / radius);
    const QRect place = Manometro->geometry();
    const int x = place.left() + static_cast<int>(GUIDE_ROOM);
    lbppsmax->move(x, place.top() - lbppsmax->height() / 2);
    lbppsmin->move(x, place.bottom() + 1 - lbppsmin->height() / 2);
}

void MarcoBarometros::sink_surface() {
    const QRect scale = barometro1->geometry();
    const double part = barometro1->value() / laboratorio::scale(Instrument::Barometer).maximum;
    const int sunk = static_cast<int>(std::lround(SINKING * std::clamp(part, 0.0, 1.0)));
    const double middle = scale.left() + static_cast<Columna*>(barometro1)->bore().center().x();
    barometro0->setGeometry(static_cast<int>(std::lround(middle - HALF)), scale.bottom() + 1 + sunk,
                            static_cast<int>(2.0 * HALF), static_cast<int>(CISTERN) - sunk);
}

void MarcoBarometros::draw_still(QPainter& painter) const {
    if (in_use() == barometro1)
        draw_barometer(painter);
    else
        draw_manometer(painter);
}

void MarcoBarometros::draw_barometer(QPainter& painter) const {
    const QRectF scale(barometro1->geometry());
    const QRectF bore = static_cast<Columna*>(barometro1)->bore().translated(scale.topLeft());
    const double middle = bore.center().x();

    // The dish: glass, open at the top.
    const QRectF inside(middle - HALF, scale.bottom() - RIM, 2.0 * HALF, RIM + CISTERN);
    const QRectF outside = inside.adjusted(-DISH, 0.0, DISH, DISH);
    painter.setPen(dibujo::pen(painter));
    painter.setBrush(dibujo::glass(outside));
    painter.drawPath([&] {
        QPainterPath path(outside.topLeft());
        for (const QPointF& corner : {outside.bottomLeft(), outside.bottomRight(), outside.topRight(),
                                      inside.topRight(), inside.bottomRight(), inside.bottomLeft(), inside.topLeft()})
            path.lineTo(corner);
        path.closeSubpath();
        return path;
    }());

    // The tube, closed at the top, with nothing above its mercury.
    const QRectF tube = bore.adjusted(-GLASS, -GLASS - 8.0, GLASS, CISTERN - 8.0);
    painter.setBrush(dibujo::glass(tube));
    painter.drawRoundedRect(tube, tube.width() / 2.0, tube.width() / 2.0);
    painter.setPen(dibujo::pen(painter, dibujo::QUIET, 0.7));
    painter.setBrush(dibujo::PAPER);
    painter.drawRoundedRect(bore.adjusted(-0.5, -8.0, 0.5, 0.0), BORE / 2.0, BORE / 2.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(dibujo::mercury(bore));
    painter.drawRect(
        QRectF(bore.left(), scale.bottom() - 0.5, bore.width(), SINKING + 4.5));  // above the sunken surface

    painter.setPen(dibujo::pen(painter));
    const double left = tube.left() - BESIDE;
    dibujo::draw_scale(painter, {laboratorio::scale(Instrument::Barometer),
                                 left,
                                 scale.top(),
                                 scale.height(),
                                 -1,
                                 {QRectF(lbpsmin->geometry()), QRectF(lbpsmax->geometry())}});
    if (!torr_)
        return;
    const double right = tube.right() + BESIDE;
    dibujo::draw_scale(painter, {TORR, right, scale.top(), scale.height(), 1});
    const QFontMetricsF metrics(painter.font());
    painter.drawText(
        QPointF(right + TICK + dibujo::NUMBER_GAP, scale.top() - metrics.height() / 2.0 - metrics.descent() - 1.0),
        QStringLiteral("mmHg"));
}

void MarcoBarometros::draw_manometer(QPainter& painter) const {
    const auto* dial = static_cast<const Esfera*>(Manometro);
    const QRectF surface(Manometro->geometry());
    painter.save();
    painter.translate(surface.topLeft());
    const QPointF centre = dial->centre();
    const double radius = dial->radius();
    const double rim = radius * RIM_OF_DIAL;

    // The pipe, then the brass rim around the face.
    const double end = std::min(surface.height() - centre.y(), rim + radius * 0.55);
    const QRectF pipe(centre.x() - radius * 0.12, centre.y() + rim - 4.0, radius * 0.24, end - rim + 4.0);
    const QRectF nut(centre.x() - radius * 0.2, centre.y() + rim - 2.0, radius * 0.4, radius * 0.18);
    painter.setPen(dibujo::pen(painter));
    painter.setBrush(dibujo::brass(pipe));
    painter.drawRect(pipe);
    painter.setBrush(dibujo::brass(nut));
    painter.drawRect(nut);
    QConicalGradient brass(centre, 60.0);
    for (const auto& [at, colour] : {std::pair(0.0, QColor(252, 232, 164)), std::pair(0.2, QColor(190, 146, 58)),
                                     std::pair(0.45, QColor(138, 100, 32)), std::pair(0.6, QColor(222, 182, 92)),
                                     std::pair(0.8, QColor(160, 120, 44)), std::pair(1.0, QColor(252, 232, 164))})
        brass.setColorAt(at, colour);
    painter.setBrush(brass);
    painter.drawEllipse(centre, rim, rim);
    painter.setBrush(dibujo::PAPER);
    painter.drawEllipse(centre, radius, radius);

    // The dial: an arc with graduations and numbers.
    const double start = dial->ticks();
    painter.setFont(dial_font(painter.font(), radius));
    const QFontMetricsF metrics(painter.font());
    const auto graduation_at = [&](double distance) {  // its length on the dial
        return SWEEP / 180.0 * std::numbers::pi * radius * distance * DIAL.graduation / DIAL.maximum;
    };
    const dibujo::Density every{dibujo::density(DIAL, graduation_at(start), 0.0).tick,
                                dibujo::density(DIAL, graduation_at(NUMBERS - 0.13), 3.2 * metrics.height()).number};
    for (const laboratorio::Tick& tick : laboratorio::ticks(DIAL)) {
        const auto index = static_cast<int>(std::lround(tick.value / DIAL.graduation));
        if (index % every.tick != 0)
            continue;
        const bool number = index % every.number == 0;
        painter.setPen(QPen(dibujo::INK, number ? 1.6 : 1.0, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(dial->on_dial(tick.value, start),
                         dial->on_dial(tick.value, start - (tick.numbered ? 0.12 : 0.07)));
        if (!number)
            continue;
        const QString text = QString::fromStdString(tavo::to_text(tick.value));
        QRectF place(0.0, 0.0, metrics.horizontalAdvance(text), metrics.height());
        const QPointF outwards = dial->on_dial(tick.value, 1.0) - centre;
        const double reach = (std::abs(outwards.x()) * place.width() + std::abs(outwards.y()) * metrics.capHeight()) /
                             (2.0 * radius * radius);  // half of the number's extent along the radius, in radii
        place.moveCenter(dial->on_dial(tick.value, NUMBERS - reach));
        painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
    }
    painter.setPen(QPen(dibujo::INK, 1.0));
    const QRectF ring(centre - QPointF(radius, radius) * start, QSizeF(radius, radius) * 2.0 * start);
    painter.drawArc(ring, static_cast<int>((FIRST_ANGLE - SWEEP) * 16.0), static_cast<int>(SWEEP * 16.0));
    QRectF unit(0.0, 0.0, radius, metrics.height());
    unit.moveCenter(centre + QPointF(0.0, radius * 0.42));
    painter.drawText(unit, Qt::AlignCenter, QStringLiteral("atm"));
    painter.restore();

    // The slim scale: the needle is dragged up and down.
    painter.save();
    painter.setPen(dibujo::pen(painter));
    const double axis = dibujo::crisp(painter, surface.left() + GUIDE);
    painter.drawLine(QPointF(axis, surface.top()), QPointF(axis, surface.bottom()));
    for (const laboratorio::Tick& tick : laboratorio::ticks(DIAL))
        if (tick.numbered) {
            const double at =
                surface.top() + laboratorio::place_of(Instrument::Manometer, tick.value, surface.height());
            const double y = dibujo::crisp(painter, at);
            painter.drawLine(QPointF(axis - (std::fmod(tick.value, 100.0) == 0.0 ? TICK : TICK / 2.0), y),
                             QPointF(axis, y));
        }
    painter.restore();
}

QPointF MarcoBarometros::beyond(bool above) const {
    if (in_use() == barometro1)
        return dibujo::beyond_label(above ? lbpsmax : lbpsmin, above);
    const QRectF surface(Manometro->geometry());
    return {surface.left() + GUIDE, above ? surface.top() - 12.0 : surface.bottom() + 12.0};
}

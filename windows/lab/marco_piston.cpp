#include <QCoreApplication>
#include <QFontMetricsF>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

#include "controls/dibujo.h"
#include "windows/lab/instrumentos.h"

using laboratorio::Instrument;

namespace {

using dibujo::GAP;
using dibujo::TICK;

constexpr double WALL = 8.0;
constexpr double FLOOR = 10.0;
constexpr double FOOT = 16.0;    // how far the base reaches beyond the walls
constexpr double HANDLE = 11.0;  // height of the handle's bar
constexpr int ROD = 10;
constexpr double DOT = 2.1;     // radius of a particle
constexpr double TRAIL = 13.0;  // length of its trail at 300 K
const QColor EMPTY(247, 249, 251);
const QColor SEAL(0x3A, 0x3F, 0x45);

QColor mixed(const QColor& a, const QColor& b, double part) {
    const auto mix = [part](int from, int to) { return static_cast<int>(std::lround(std::lerp(from, to, part))); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

/// Colour of the gas space: the denser the gas, the deeper.
QColor gas_colour(double moles, double litres) {
    if (!(moles > 0.0))
        return EMPTY;
    const double density = litres > 0.0 ? moles / litres : 1e3;
    return mixed(EMPTY, dibujo::ACCENT, std::clamp(0.06 + 0.1 * std::log10(1.0 + 25.0 * density), 0.06, 0.43));
}

QPixmap drawn_ball(double radius, double ratio) {
    const int side = static_cast<int>(std::ceil(2.0 * radius * ratio)) + 2;
    QPixmap result(side, side);
    result.setDevicePixelRatio(ratio);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(dibujo::ACCENT);
    painter.drawEllipse(QPointF(side, side) / (2.0 * ratio), radius, radius);
    return result;
}

/// The space below the piston with the gas in it.
class Espacio final : public Instrumento {
public:
    using Instrumento::Instrumento;

    void set_gas(double moles, double kelvin) {
        if (moles == moles_ && kelvin == kelvin_)
            return;
        moles_ = moles;
        kelvin_ = kelvin;
        particles_ = laboratorio::particles(laboratorio::particle_count(moles));
        update();
    }

protected:
    void draw(QPainter& painter) const override {
        const QRectF space(0.0, place(), width(), height() - place());
        if (space.height() > 0.0)
            draw_gas(painter, space);
        if (pinned())
            painter.fillRect(QRectF(0.0, std::min(place(), height() - 2.0), width(), 2.0), dibujo::WARNING);
    }

    QRectF between(double from, double to) const override {  // all particles move with the piston
        return QRectF(0.0, std::min(from, to) - 1.0, width(), height() - std::min(from, to) + 2.0);
    }

private:
    void draw_gas(QPainter& painter, const QRectF& space) const {
        painter.save();
        painter.setClipRect(space);
        const QColor colour = gas_colour(moles_, value());
        painter.fillRect(space, colour);
        const double radius = std::min(DOT, space.height() / 2.0);
        const QRectF room = space.adjusted(radius, radius, -radius, -radius);
        const double length = TRAIL * laboratorio::trail(kelvin_);
        std::vector<QPointF> dots;
        painter.setPen(Qt::NoPen);
        painter.setBrush(mixed(colour, dibujo::ACCENT, 0.35));  // opaque: translucent shapes take ten times as long
        for (const laboratorio::Particle& p : particles_) {
            const QPointF dot(room.left() + p.x * room.width(), room.bottom() - p.y * room.height());
            const QPointF ahead(p.dx, -p.dy);  // y grows downwards here
            const QPointF aside(ahead.y() * radius * 0.8, -ahead.x() * radius * 0.8);
            const std::array comet{dot + aside, dot - length * ahead, dot - aside};
            painter.drawConvexPolygon(comet.data(), static_cast<int>(comet.size()));
            dots.push_back(dot);
        }
        const QPixmap ball = drawn_ball(radius, painter.device()->devicePixelRatio());
        const QPointF half(ball.deviceIndependentSize().width() / 2.0, ball.deviceIndependentSize().height() / 2.0);
        for (const QPointF& dot : dots)
            painter.drawPixmap(dot - half, ball);
        painter.restore();
    }

    double moles_ = 0.0, kelvin_ = 0.0;
    std::vector<laboratorio::Particle> particles_;
};

/// A part of the piston that goes with it and leaves the mouse to the surface beneath.
class Pieza final : public QWidget {
public:
    using Drawing = void (*)(QPainter&, const QRectF&);
    Pieza(const char* name, Drawing drawing, QWidget* padre) : QWidget(padre), drawing_(drawing) {
        setObjectName(QLatin1String(name));
        setAttribute(Qt::WA_TransparentForMouseEvents);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        drawing_(painter, QRectF(rect()));
    }

private:
    Drawing drawing_;
};

void outlined(QPainter& painter, const QRectF& body, const QBrush& brush) {
    const double half = dibujo::pen(painter).widthF() / 2.0;
    painter.setPen(dibujo::pen(painter));
    painter.setBrush(brush);
    painter.drawRect(body.adjusted(half, half, -half, -half));
}

/// The lower half of the head: the plate that presses on the gas, and a seal at the walls above it.
void draw_lower_half(QPainter& painter, const QRectF& body) {
    const double seal = std::floor(body.height() * 0.45);
    outlined(painter, body.adjusted(4.0, 0.0, -4.0, 0.0), dibujo::metal(body));
    outlined(painter, body.adjusted(0.0, seal, 0.0, 0.0), dibujo::metal(body));
    painter.fillRect(QRectF(0.0, 0.0, 4.0, seal), SEAL);
    painter.fillRect(QRectF(body.width() - 4.0, 0.0, 4.0, seal), SEAL);
}

void draw_upper_half(QPainter& painter, const QRectF& body) {
    outlined(painter, body, dibujo::metal(body));
}

void draw_rod(QPainter& painter, const QRectF& body) {
    const QRectF bar(body.left(), body.top(), body.width(), HANDLE);
    const QRectF rod(body.center().x() - ROD / 2.0, HANDLE - 1.0, ROD, body.height() - HANDLE + 1.0);
    outlined(painter, rod, dibujo::metal(rod));
    painter.setBrush(dibujo::metal(bar, dibujo::Run::Level));
    painter.drawRoundedRect(bar.adjusted(0.5, 0.5, -0.5, -0.5), HANDLE / 2.0, HANDLE / 2.0);
}

double head_height(const QRectF& paper) {
    return 2.0 * std::round(std::clamp(paper.height() * 0.026, 6.0, 11.0));
}

double rod_length(const QRectF& paper) {
    return std::round(std::clamp(paper.height() * 0.17, 26.0, 84.0));
}

}  // namespace

MarcoPiston::MarcoPiston(QWidget* padre)
    : Lamina(padre),
      pctpiston(new Espacio(Instrument::Piston, this)),
      piston1(new Pieza("piston1", draw_lower_half, this)),
      piston2(new Pieza("piston2", draw_upper_half, this)),
      pistonn(new Pieza("pistonn", draw_rod, this)) {
    adopt(pctpiston, "pctpiston");
    connect(pctpiston, &Instrumento::value_changed, this, &MarcoPiston::move_piston);
    setMouseTracking(true);
    renew();
}

void MarcoPiston::set_gas(double moles, double kelvin) {
    static_cast<Espacio*>(pctpiston)->set_gas(moles, kelvin);
}

void MarcoPiston::arrange() {
    const QFontMetricsF metrics(small_font());
    const QRectF sheet = paper();
    const double top = sheet.top() + HANDLE + rod_length(sheet) + head_height(sheet);
    const double bottom = sheet.bottom() - FLOOR;
    const double scale = metrics.horizontalAdvance(QStringLiteral("10")) + dibujo::NUMBER_GAP + TICK + GAP;
    const double around = scale + 2.0 * WALL + FOOT;
    const double bore = std::clamp((bottom - top) * 0.62, 40.0, std::max(40.0, sheet.width() - around));
    const double left = sheet.center().x() - (around + bore) / 2.0 + scale + WALL;
    pctpiston->setGeometry(QRectF(left, top, bore, bottom - top).toRect());
    move_piston();
}

void MarcoPiston::move_piston() {
    const QRect space = pctpiston->geometry();
    const double place = laboratorio::place_of(Instrument::Piston, pctpiston->value(), space.height());
    const int half = static_cast<int>(head_height(paper()) / 2.0);
    const int face = space.top() + static_cast<int>(std::lround(place));
    const int rod = static_cast<int>(rod_length(paper()) + HANDLE);
    const int bar = std::min(space.width() - 8, 64);
    piston1->setGeometry(space.left(), face - half, space.width(), half);
    piston2->setGeometry(space.left(), face - 2 * half, space.width(), half);
    pistonn->setGeometry(space.center().x() - bar / 2, face - 2 * half - rod, bar, rod);
}

void MarcoPiston::draw_still(QPainter& painter) const {
    const QRectF space(pctpiston->geometry());
    const QRectF sheet = paper();
    const double rim = space.top() - head_height(sheet) - GAP;

    painter.setPen(Qt::NoPen);
    painter.setBrush(EMPTY);
    painter.drawRect(QRectF(space.left(), rim, space.width(), space.bottom() - rim));

    painter.setPen(dibujo::pen(painter));
    for (const double x : {space.left() - WALL, space.right()}) {
        const QRectF wall(x, rim, WALL, space.bottom() - rim);
        const QRectF flange =
            x < space.left() ? QRectF(x - 4.0, rim, WALL + 4.0, 6.0) : QRectF(x, rim, WALL + 4.0, 6.0);
        painter.setBrush(dibujo::metal(wall));
        painter.drawRect(wall);
        painter.drawRect(flange);
    }
    const QRectF base(space.left() - WALL - FOOT / 2.0, space.bottom(), space.width() + 2.0 * WALL + FOOT, FLOOR);
    painter.setBrush(dibujo::metal(base, dibujo::Run::Level));
    painter.drawRoundedRect(base, 2.0, 2.0);

    const double axis = space.left() - WALL - GAP;
    dibujo::draw_scale(painter, {laboratorio::scale(Instrument::Piston), axis, space.top(), space.height(), -1});
    const QFontMetricsF metrics(painter.font());
    const QString title = QStringLiteral("V (l)");
    const double y = space.top() - metrics.height() / 2.0 - metrics.descent() - 3.0;
    painter.drawText(QPointF(axis - GAP / 2.0 - metrics.horizontalAdvance(title), y), title);
}

QPointF MarcoPiston::beyond(bool above) const {
    const QRectF space(pctpiston->geometry());
    return {space.right() + WALL + FOOT, above ? space.top() - 12.0 : space.bottom() + 12.0};
}

/// The handle may stand above the surface: whoever takes it there moves the piston by as much as the hand moves.
void MarcoPiston::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !pistonn->geometry().contains(event->position().toPoint())) {
        Lamina::mousePressEvent(event);
        return;
    }
    grip_ = event->position().y() - piston1->geometry().bottom() - 1.0;
    pctpiston->setFocus(Qt::MouseFocusReason);
    pass_on(*event);
}

void MarcoPiston::mouseMoveEvent(QMouseEvent* event) {
    if (grip_) {
        pass_on(*event);
        return;
    }
    const bool over = pistonn->geometry().contains(event->position().toPoint());
    setCursor(over ? Qt::OpenHandCursor : Qt::ArrowCursor);
}

void MarcoPiston::mouseReleaseEvent(QMouseEvent* event) {
    if (!grip_ || event->button() != Qt::LeftButton)
        return;
    pass_on(*event);
    grip_.reset();
}

void MarcoPiston::pass_on(const QMouseEvent& event) {
    const QPointF at = pctpiston->mapFrom(this, event.position()) - QPointF(0.0, *grip_);
    QMouseEvent moved(event.type(), at, event.globalPosition(), event.button(), event.buttons(), event.modifiers());
    QCoreApplication::sendEvent(pctpiston, &moved);
}

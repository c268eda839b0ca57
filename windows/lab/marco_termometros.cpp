#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

#include "controls/dibujo.h"
#include "windows/lab/columna.h"

using laboratorio::Instrument;

namespace {

using dibujo::GAP;
using dibujo::TERMOMETRO;
using dibujo::TICK;

constexpr laboratorio::Scale CELSIUS{0.0, 100.0, 2.0, 5};  // the kelvin scale begins at 0 ºC

constexpr double SLOT = 14.0;  // of the indicator's pointer
constexpr double BEZEL = 7.0;
const QColor COPPER(0xB8, 0x63, 0x2C);
const QColor CONSTANTAN(0x7D, 0x86, 0x90);

/// Pointer of an edgewise indicator: a hairline over the scale and a triangle in the slot.
class Aguja final : public Instrumento {
public:
    using Instrumento::Instrumento;
    void set_reach(double left, double right) {
        left_ = left;
        right_ = right;
        update();
    }
    double left() const { return left_; }
    double right() const { return right_; }

protected:
    void draw(QPainter& painter) const override {
        const double y = std::clamp(place(), 0.5, height() - 0.5);
        const QColor ink = pinned() ? dibujo::WARNING : dibujo::INK;
        painter.setPen(dibujo::pen(painter, ink, 1.5));
        painter.drawLine(QPointF(left_, y), QPointF(right_ - SLOT / 2.0, y));
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        painter.drawPolygon(dibujo::arrow({right_ - SLOT, y}, -90.0, SLOT * 0.8));
    }
    QRectF between(double from, double to) const override {
        return QRectF(left_, std::min(from, to), right_ - left_, std::abs(to - from)).adjusted(-2, -SLOT, 2, SLOT);
    }

private:
    double left_ = 0.0, right_ = 0.0;
};

}  // namespace

MarcoTermometros::MarcoTermometros(QWidget* padre)
    : Lamina(padre),
      termometro(new Columna(Instrument::Thermometer, this)),
      termopar(new Aguja(Instrument::Thermocouple, this)),
      lbtsmin(range_label("lbtsmin", 273.16, " ºK")),
      lbtsmax(range_label("lbtsmax", 373.16, " ºK")),
      lbtpsmin(range_label("lbtpsmin", 0.0, " ºK")),
      lbtpsmax(range_label("lbtpsmax", 1000.0, " ºK")) {
    setObjectName(QStringLiteral("termometros"));
    adopt(termometro, "termometro");
    adopt(termopar, "termopar");
    use(Instrument::Thermometer);
}

Instrumento* MarcoTermometros::in_use() const {
    return termopar->isHidden() ? termometro : termopar;
}

void MarcoTermometros::use(Instrument instrument) {
    const bool thermocouple = instrument == Instrument::Thermocouple;
    const std::vector<QWidget*> first{termometro, lbtsmin, lbtsmax}, second{termopar, lbtpsmin, lbtpsmax};
    exchange(thermocouple ? first : second, thermocouple ? second : first);
}

void MarcoTermometros::arrange() {
    const QFontMetricsF metrics(small_font());
    const QRectF sheet = paper();
    const double line = metrics.height();
    {
        const double size = std::clamp(sheet.height() / 300.0, 1.0, 1.5);
        const double left_room = dibujo::scale_room(lbtsmin, lbtsmax);
        const double right_room = TICK + dibujo::NUMBER_GAP + metrics.horizontalAdvance(QStringLiteral("100"));
        const double width = left_room + 2.0 * GAP + size * (TERMOMETRO.bore + 2.0 * TERMOMETRO.wall) + right_room;
        const double left = sheet.center().x() - width / 2.0;
        const double top = sheet.top() + 1.7 * line;
        const double bottom = sheet.bottom() - size * (TERMOMETRO.neck + 2.0 * TERMOMETRO.bulb) - 2.0;
        termometro->setGeometry(QRectF(left, top, width, bottom - top).toRect());
        static_cast<Columna*>(termometro)
            ->set_bore(std::round(left_room + GAP + size * TERMOMETRO.wall), size * TERMOMETRO.bore);
        const QRectF scale(termometro->geometry());
        dibujo::put_at_end(lbtsmax, scale.left() + left_room - TICK - dibujo::NUMBER_GAP, scale.top());
        dibujo::put_at_end(lbtsmin, scale.left() + left_room - TICK - dibujo::NUMBER_GAP, scale.bottom());
    }
    {
        const double left_room = dibujo::scale_room(lbtpsmin, lbtpsmax) + BEZEL;
        const double width = left_room + GAP + SLOT + BEZEL;
        const double left = sheet.center().x() - width / 2.0;
        const double top = sheet.top() + line / 2.0 + BEZEL;
        const double wires = std::clamp(sheet.height() * 0.24, 46.0, 120.0);
        termopar->setGeometry(QRectF(left, top, width, sheet.bottom() - wires - line / 2.0 - top).toRect());
        static_cast<Aguja*>(termopar)->set_reach(left_room - TICK, width - BEZEL);
        const QRectF scale(termopar->geometry());
        dibujo::put_at_end(lbtpsmax, scale.left() + left_room - TICK - dibujo::NUMBER_GAP, scale.top());
        dibujo::put_at_end(lbtpsmin, scale.left() + left_room - TICK - dibujo::NUMBER_GAP, scale.bottom());
    }
}

void MarcoTermometros::draw_still(QPainter& painter) const {
    if (in_use() == termometro)
        draw_thermometer(painter);
    else
        draw_thermocouple(painter);
}

void MarcoTermometros::draw_thermometer(QPainter& painter) const {
    const QRectF scale(termometro->geometry());
    const QRectF bore = static_cast<Columna*>(termometro)->bore().translated(scale.topLeft());
    const QRectF stem = dibujo::draw_thermometer(painter, bore);
    dibujo::draw_scale(painter, {laboratorio::scale(Instrument::Thermometer),
                                 stem.left() - GAP,
                                 scale.top(),
                                 scale.height(),
                                 -1,
                                 {QRectF(lbtsmin->geometry()), QRectF(lbtsmax->geometry())}});
    dibujo::draw_scale(painter, {CELSIUS, stem.right() + GAP, scale.top(), scale.height(), 1});
    const QFontMetricsF metrics(painter.font());
    painter.drawText(QPointF(stem.right() + GAP + TICK + dibujo::NUMBER_GAP,
                             scale.top() - metrics.height() / 2.0 - metrics.descent() - 1.0),
                     QStringLiteral("ºC"));
}

void MarcoTermometros::draw_thermocouple(QPainter& painter) const {
    const auto* pointer = static_cast<const Aguja*>(termopar);
    const QRectF scale(termopar->geometry());
    const QFontMetricsF metrics(painter.font());
    const QRectF casing = scale.adjusted(0.0, -metrics.height() / 2.0 - BEZEL, 0.0, metrics.height() / 2.0 + BEZEL);
    const double slot = scale.left() + pointer->right() - SLOT;

    // The wires, behind the casing.
    const QPointF junction(casing.center().x(), paper().bottom() - 6.0);
    const double spread = casing.width() * 0.24;
    const double drop = junction.y() - casing.bottom();
    for (const double side : {-1.0, 1.0}) {
        const QPointF start(casing.center().x() + side * spread, casing.bottom());
        QPainterPath wire(start);
        wire.cubicTo(start + QPointF(0.0, drop * 0.45), junction + QPointF(side * spread, -drop * 0.55), junction);
        painter.setBrush(Qt::NoBrush);
        painter.strokePath(wire, QPen(dibujo::INK, 4.2, Qt::SolidLine, Qt::RoundCap));
        painter.strokePath(wire, QPen(side < 0.0 ? COPPER : CONSTANTAN, 2.6, Qt::SolidLine, Qt::RoundCap));
        const QRectF terminal(start.x() - 5.0, start.y() - 1.0, 10.0, 9.0);
        painter.setPen(dibujo::pen(painter));
        painter.setBrush(dibujo::brass(terminal));
        painter.drawRect(terminal);
        painter.drawText(QRectF(start.x() + side * 16.0 - 8.0, start.y() + 1.0, 16.0, metrics.height()),
                         Qt::AlignCenter, side < 0.0 ? QStringLiteral("+") : QStringLiteral("−"));
    }
    QRadialGradient bead(junction - QPointF(1.5, 1.5), 6.0);
    bead.setColorAt(0.0, QColor(245, 232, 214));
    bead.setColorAt(1.0, QColor(120, 92, 70));
    painter.setPen(dibujo::pen(painter));
    painter.setBrush(bead);
    painter.drawEllipse(junction, 4.5, 4.5);

    painter.setBrush(dibujo::metal(casing));
    painter.drawRoundedRect(casing, 4.0, 4.0);
    painter.setBrush(dibujo::PAPER);
    painter.drawRoundedRect(casing.adjusted(4.0, 4.0, -4.0, -4.0), 2.0, 2.0);
    painter.setPen(dibujo::pen(painter, dibujo::QUIET));
    painter.setBrush(QColor(238, 241, 244));
    painter.drawRoundedRect(QRectF(slot, scale.top() - BEZEL, SLOT, scale.height() + 2.0 * BEZEL), 2.0, 2.0);
    dibujo::draw_scale(painter, {laboratorio::scale(Instrument::Thermocouple),
                                 slot - GAP,
                                 scale.top(),
                                 scale.height(),
                                 -1,
                                 {QRectF(lbtpsmin->geometry()), QRectF(lbtpsmax->geometry())}});
}

QPointF MarcoTermometros::beyond(bool above) const {
    if (in_use() == termometro)
        return dibujo::beyond_label(above ? lbtsmax : lbtsmin, above);
    const QRectF scale(termopar->geometry());
    return {scale.right() + 12.0, above ? scale.top() - 6.0 : scale.bottom() + 6.0};
}

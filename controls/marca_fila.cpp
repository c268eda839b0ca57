#include "controls/marca_fila.h"

#include <QPen>
#include <QPolygonF>

#include "core/palette.h"

namespace graficos {

namespace {

constexpr double MARK = 4.0;  // half its size
constexpr double GAP = 3.0;
const QColor PAPER(Qt::white), PAPER_EDGE(192, 192, 192);

QPen pen(const QColor& colour, double width) {
    return QPen(colour, width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
}

}  // namespace

QColor palette_colour(int index) {
    const tavo::Rgb c = tavo::PALETTE.at(static_cast<std::size_t>(index));
    return {c.r, c.g, c.b};
}

void pintar_marca(QPainter& painter, QPointF centre, int row, const QColor& colour) {
    const double x = centre.x(), y = centre.y();
    painter.setPen(pen(colour, 1.5));
    painter.setBrush(PAPER);
    switch (row) {
        case 1:
            painter.drawEllipse(centre, MARK, MARK);
            break;
        case 2:
            painter.drawRect(QRectF(x - MARK, y - MARK, 2.0 * MARK, 2.0 * MARK));
            break;
        case 3:
            painter.drawPolygon(
                QPolygonF({{x, y - MARK - 1.0}, {x + MARK + 1.0, y + MARK - 0.5}, {x - MARK - 1.0, y + MARK - 0.5}}));
            break;
        case 4:
            painter.drawPolygon(
                QPolygonF({{x, y - MARK - 1.5}, {x + MARK + 1.5, y}, {x, y + MARK + 1.5}, {x - MARK - 1.5, y}}));
            break;
        default:
            painter.setPen(pen(colour, 2.0));
            painter.drawLine(QPointF(x - MARK, y - MARK), QPointF(x + MARK, y + MARK));
            painter.drawLine(QPointF(x - MARK, y + MARK), QPointF(x + MARK, y - MARK));
    }
    painter.setBrush(Qt::NoBrush);
}

void pintar_muestra(QPainter& painter, const QRectF& sheet, int row) {
    painter.setPen(QPen(PAPER_EDGE, 1.0));
    painter.setBrush(PAPER);
    painter.drawRoundedRect(sheet, GAP, GAP);
    const QColor colour = palette_colour(tavo::CURVE_COLOURS.at(static_cast<std::size_t>(row - 1)));
    const double middle = sheet.center().y();
    painter.setPen(QPen(colour, 2.0));
    painter.drawLine(QPointF(sheet.left() + GAP, middle), QPointF(sheet.right() - GAP, middle));
    pintar_marca(painter, sheet.center(), row, colour);
}

}  // namespace graficos

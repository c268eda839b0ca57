#pragma once
// Colour and line mark of the five isotherm rows, wherever a row is meant.

#include <QColor>
#include <QPainter>
#include <QPointF>
#include <QRectF>

namespace graficos {

/// Colour of a palette index.
QColor palette_colour(int index);

/// The row's line mark alone, around a point.
void pintar_marca(QPainter& painter, QPointF centre, int row, const QColor& colour);

/// A piece of the row's curve on paper, about 28 x 18.
void pintar_muestra(QPainter& painter, const QRectF& sheet, int row);

}  // namespace graficos

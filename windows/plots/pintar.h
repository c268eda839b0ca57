#pragma once
// Draws a scene: the one way for the screen, picture files and paper. The sheet is white with black ink whatever the
// palette is.

#include <QFontMetricsF>
#include <QPainter>
#include <QRectF>

#include "controls/marca_fila.h"
#include "windows/plots/graficos.h"

namespace graficos {

/// Who writes the axis ends and titles: the painting, or labels that lie over it.
enum class AxisTexts { Painted, LeftOut };

/// Where things are on the sheet.
struct Disposicion {
    QRectF plot;  // the drawing surface, inside its axes
    QRectF x0y0x, x0y0y, x1y0, x0y1, lbx, lby;
};

/// Places everything for the font that will be used.
Disposicion disponer(const QRectF& sheet, const Escena& escena, const QFontMetricsF& metrics);

/// Draws the sheet with the painter's font; lengths are in the painter's units, of which a curve is 2 wide. `v_title`
/// and `p_title` name the axes.
void pintar(QPainter& painter, const QRectF& sheet, const Escena& escena, const QString& v_title,
            const QString& p_title, AxisTexts texts = AxisTexts::Painted);

/// Point of the drawing surface to volume and pressure, and back.
Point to_data(QPointF point, const QRectF& plot, const PlotRange& range);
QPointF to_surface(Point point, const QRectF& plot, const PlotRange& range);

}  // namespace graficos

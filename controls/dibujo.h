#pragma once
// How instruments are drawn: black ink on white paper whatever the palette is, scales, metal, glass and mercury.
// Lengths are in the painter's units.

#include <QColor>
#include <QLabel>
#include <QLinearGradient>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QRectF>

#include <vector>

#include "controls/graduacion.h"

namespace dibujo {

inline constexpr double GAP = 6.0;  // the grid of the program's spacing
inline constexpr double TICK = 9.0;
inline constexpr double NUMBER_GAP = 3.0;  // between a long tick and its number
inline constexpr QColor PAPER(255, 255, 255);
inline constexpr QColor INK(0, 0, 0);
inline constexpr QColor QUIET(110, 116, 122);
inline constexpr QColor WARNING(0xD0, 0x1C, 0x1C);
inline constexpr QColor ACCENT(0x0B, 0x6B, 0xCB);

/// Moves the middle of a line of this width to where it fills whole pixels of the painter's device.
double crisp(const QPainter& painter, double at, double width = 1.0);
/// A pen of whole device pixels, at least one.
QPen pen(const QPainter& painter, const QColor& colour = INK, double width = 1.0);

/// A vertical scale at one side of an instrument.
struct Regla {
    graduacion::Scale scale;
    double x;                        // the ticks' end at the instrument
    double top, height;              // maximum to minimum
    int side;                        // -1: ticks and numbers lie to the left of x, 1: to the right
    std::vector<QRectF> taken = {};  // numbers keep clear of these
};
void draw_scale(QPainter& painter, const Regla& ruler);

/// Room of range labels and ticks at the left of an instrument; a range label in the place of an end's number.
double scale_room(const QLabel* a, const QLabel* b);
void put_at_end(QLabel* label, double right, double y);
QPointF beyond_label(const QLabel* label, bool above);

/// Every how many graduations ticks and numbers find room, where a graduation takes so many pixels.
struct Density {
    int tick, number;
};
Density density(const graduacion::Scale& scale, double pixels, double number_size);

/// A long body of the material whose length runs up and down, or to the right: light falls across it.
enum class Run { Upright, Level };
QLinearGradient metal(const QRectF& body, Run run = Run::Upright);
QLinearGradient brass(const QRectF& body, Run run = Run::Upright);
QLinearGradient mercury(const QRectF& body);
QLinearGradient glass(const QRectF& body);

/// A triangle of this size whose tip is at the point and that looks in the direction (degrees clockwise from up).
QPolygonF arrow(QPointF tip, double degrees, double size);

/// Mercury in a bore (left edge, width), up to a place [below the surface's top] and past the surface's bottom; a red
/// line at its end where the value lies beyond the scale.
struct Tubo {
    double left = 0.0, width = 0.0;
};
void draw_mercury(QPainter& painter, const Tubo& bore, double place, double height, bool pinned);
/// Where two such columns differ.
QRectF mercury_between(const Tubo& bore, double from, double to);

/// Measures of a mercury thermometer on a small sheet.
struct Termometro {
    double bore = 7.0;
    double wall = 5.0;  // of the glass, at each side of the bore
    double bulb = 13.0;
    double neck = 9.0;  // between the scale's end and the bulb
};
inline constexpr Termometro TERMOMETRO{};
/// Glass and bulb, with the mercury below the scale, of a thermometer whose scale runs along this bore; the result is
/// the stem, at whose sides the scales stand.
QRectF draw_thermometer(QPainter& painter, const QRectF& bore);

}  // namespace dibujo

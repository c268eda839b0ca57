#pragma once
// A drawn instrument's moving part: what a hand, keys and a screen reader get from it.

#include <QAccessible>
#include <QWidget>

#include "controls/graduacion.h"

/// A drawing surface whose whole height is the instrument's scale: top maximum, bottom minimum. It shows a value, and
/// tells what the user's hand or keys want it to be. What stands outside the scale (bulb, glass, ticks, numbers) is
/// drawn by the sheet around it.
class Indicador : public QWidget {
    Q_OBJECT
public:
    /// `unit` follows the values as they are spoken, in the scale's own unit: "ºK".
    Indicador(const graduacion::Scale& scale, QString unit, QWidget* padre = nullptr);

    const graduacion::Scale& scale() const { return scale_; }
    double value() const { return value_; }
    /// Draws the value; outside the scale at the nearer limit, looking pinned. What is not a number changes nothing.
    void set_value(double value);
    bool pinned() const { return side() != 0; }
    /// -1 and 1: the value lies below, above the scale.
    int side() const;
    /// The nearest value that hand and keys can give it: one of the scale, where nothing else is said.
    virtual double reachable(double value) const;
    QAccessible::Role role() const { return role_; }

    /// Variable and unit as accessible texts: "Temperatura", "ºK"; the value is spoken as the entry shows it.
    void set_spoken(const QString& name, const QString& value);
    /// The value as last given, or in the scale's own unit; says so when it lies outside the scale.
    QString spoken_value() const;
    /// How to say that the value %1 lies outside the scale.
    void set_outside_text(const QString& pattern) { outside_text_ = pattern; }

signals:
    void MouseDown(double value);
    void MouseMove(double value);  // with the left button down
    void MouseUp();
    void key_step(double value);  // arrow keys a graduation, with Shift a tenth, page keys ten
    void value_changed();         // drawn anew

protected:
    /// Draws what moves, on a surface that shows the sheet beneath.
    virtual void draw(QPainter& painter) const = 0;
    /// Where the drawings of two places of the scale (pixels below its top) differ.
    virtual QRectF between(double from, double to) const = 0;
    /// Pixels from the top of the surface to the value.
    double place() const;
    /// Pointer over the surface, and while it is held.
    void set_cursors(Qt::CursorShape over, Qt::CursorShape held);
    void set_role(QAccessible::Role role) { role_ = role; }

    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void show_coordinate(double value, QPoint global);
    void step(double graduations);
    void go_to(double value);
    double coordinate(const QMouseEvent& event) const;
    QString with_unit(double value) const;

    graduacion::Scale scale_;
    QString unit_;
    double value_;
    Qt::CursorShape over_ = Qt::SizeVerCursor, held_ = Qt::SizeVerCursor;
    QAccessible::Role role_ = QAccessible::Slider;
    double wheel_ = 0.0;  // graduations turned and not yet given
    bool dragging_ = false;
    QString spoken_value_;
    QString outside_text_ = QStringLiteral("%1 (fuera de la escala)");
};

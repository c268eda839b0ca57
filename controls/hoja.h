#pragma once
// The white sheet on which instruments are drawn.

#include <QFrame>
#include <QLabel>
#include <QPixmap>

/// A drawing that stands still, kept as a picture, beneath the widgets that move. White in dark palettes too.
class Hoja : public QFrame {
    Q_OBJECT
public:
    explicit Hoja(QWidget* padre = nullptr);

protected:
    /// Places the children for the sheet's size and font.
    virtual void arrange() = 0;
    /// Draws all that does not move.
    virtual void draw_still(QPainter& painter) const = 0;
    /// Draws over it what comes and goes: marks, the focus.
    virtual void draw_over(QPainter& painter) const = 0;

    /// The sheet without its margin.
    QRectF paper() const;
    /// Font of numbers and labels.
    QFont small_font() const;
    /// Places and draws anew.
    virtual void renew();
    /// A label in black that lets the pointer through.
    QLabel* ink_label(const QString& name, const QString& text);
    /// The frame around what has the focus, in the palette's own colour.
    void draw_focus(QPainter& painter, const QRectF& around) const;

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QPixmap still_;
};

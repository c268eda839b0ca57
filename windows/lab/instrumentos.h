#pragma once
// The five drawn instruments of the laboratory.

#include <QFrame>
#include <QLabel>
#include <QPixmap>
#include <QWidget>

#include <optional>
#include <vector>

#include "controls/texto.h"
#include "windows/lab/laboratorio_logica.h"

/// A drawing surface whose whole height is the instrument's scale: top maximum, bottom minimum. It shows a value, and
/// tells what the user's hand or keys want it to be. What stands outside the scale (bulb, glass, ticks, numbers) is
/// drawn by the frame around it.
class Instrumento : public QWidget {
    Q_OBJECT
public:
    Instrumento(laboratorio::Instrument kind, QWidget* padre = nullptr);

    laboratorio::Instrument kind() const { return kind_; }
    double value() const { return value_; }
    /// Draws the value; outside the scale at the nearer limit, looking pinned. What is not a number changes nothing.
    void set_value(double value);
    bool pinned() const;

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
    void key_step(double value);  // arrow keys a graduation, with Shift a tenth, page keys ten; inside the scale
    void value_changed();         // drawn anew

protected:
    /// Draws what moves, on a surface that shows the frame's drawing beneath.
    virtual void draw(QPainter& painter) const = 0;
    /// Where the drawings of two places of the scale (pixels below its top) differ.
    virtual QRectF between(double from, double to) const = 0;
    /// Pixels from the top of the surface to the value.
    double place() const;

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
    double coordinate(const QMouseEvent& event) const;

    laboratorio::Instrument kind_;
    double value_ = 0.0;
    double wheel_ = 0.0;  // graduations turned and not yet given
    bool dragging_ = false;
    QString spoken_value_;
    QString outside_text_ = QStringLiteral("%1 (fuera de la escala)");
};

/// A white sheet with a drawing that stands still, kept as a picture, beneath the instruments that move.
class Lamina : public QFrame {
    Q_OBJECT
public:
    explicit Lamina(QWidget* padre = nullptr);

    /// Instrument shown.
    virtual Instrumento* in_use() const = 0;
    /// Names and hints for those who do not see the drawing, in the user's language.
    virtual void set_texts(const Texto& texto);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    /// Places the children for the sheet's size and font.
    virtual void arrange() = 0;
    /// Draws all that does not move.
    virtual void draw_still(QPainter& painter) const = 0;
    /// Where a red arrow says that the value lies beyond the scale's end.
    virtual QPointF beyond(bool above) const = 0;

    /// The sheet without its margin.
    QRectF paper() const;
    /// Font of numbers and labels.
    QFont small_font() const;
    /// Places and draws anew.
    void renew();
    /// An instrument of this sheet by its name.
    void adopt(Instrumento* instrument, const char* name);
    QLabel* range_label(const char* name, double limit, const char* unit);
    /// Puts an instrument and its labels in the place of another, with the focus.
    void exchange(const std::vector<QWidget*>& hidden, const std::vector<QWidget*>& shown);

    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QPixmap still_;
    int beyond_ = 0;  // -1 and 1: the value drawn lies below, above the scale
};

/// The cylinder `pctpiston` with its piston (lines piston1, piston2, pistonn) and the gas in it.
class MarcoPiston : public Lamina {
    Q_OBJECT
public:
    explicit MarcoPiston(QWidget* padre = nullptr);

    Instrumento* pctpiston;
    QWidget *piston1, *piston2, *pistonn;  // lower face, upper face, rod with its handle
    /// Number and trails of the particles.
    void set_gas(double moles, double kelvin);
    Instrumento* in_use() const override { return pctpiston; }

protected:
    void arrange() override;
    void draw_still(QPainter& painter) const override;
    QPointF beyond(bool above) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    void move_piston();
    void pass_on(const QMouseEvent& event);

    std::optional<double> grip_;  // from the piston's lower face down to the pointer that holds its handle
};

/// Frame `termometros`: thermometer and thermocouple, the one in use shown, with the labels of its range.
class MarcoTermometros : public Lamina {
    Q_OBJECT
public:
    explicit MarcoTermometros(QWidget* padre = nullptr);

    Instrumento *termometro, *termopar;
    QLabel *lbtsmin, *lbtsmax, *lbtpsmin, *lbtpsmax;
    void use(laboratorio::Instrument instrument);
    Instrumento* in_use() const override;

protected:
    void arrange() override;
    void draw_still(QPainter& painter) const override;
    QPointF beyond(bool above) const override;

private:
    void draw_thermometer(QPainter& painter) const;
    void draw_thermocouple(QPainter& painter) const;
};

/// Frame `barometros`: the mercury barometer with the surface in its cistern (barometro0) and the column (barometro1),
/// and the dial manometer, the one in use shown, with the labels of its range.
class MarcoBarometros : public Lamina {
    Q_OBJECT
public:
    explicit MarcoBarometros(QWidget* padre = nullptr);

    QWidget* barometro0;
    Instrumento *barometro1, *Manometro;
    QLabel *lbpsmin, *lbpsmax, *lbppsmin, *lbppsmax;
    void use(laboratorio::Instrument instrument);
    Instrumento* in_use() const override;

protected:
    void arrange() override;
    void draw_still(QPainter& painter) const override;
    QPointF beyond(bool above) const override;

private:
    void sink_surface();
    void draw_barometer(QPainter& painter) const;
    void draw_manometer(QPainter& painter) const;

    bool torr_ = false;  // there is room for the barometer's second scale
};

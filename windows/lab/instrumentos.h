#pragma once
// The five drawn instruments of the laboratory.

#include <QFrame>
#include <QLabel>
#include <QPixmap>
#include <QWidget>

#include <optional>

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
    /// Draws the value; outside the scale at the nearer limit, looking pinned.
    void set_value(double value);
    bool pinned() const;

    /// Variable and unit as accessible texts: "Temperatura", "ºK"; the value is spoken as the entry shows it.
    void set_spoken(const QString& name, const QString& value);
    QString spoken_value() const { return spoken_value_; }

signals:
    void MouseDown(double value);
    void MouseMove(double value);  // with the left button down
    void MouseUp();
    void key_step(double value);  // arrow keys a graduation, with Shift a tenth, page keys ten; inside the scale

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    void show_coordinate(double value);

    laboratorio::Instrument kind_;
    double value_ = 0.0;
    bool dragging_ = false;
    QString spoken_value_;
};

/// The cylinder `pctpiston` with its piston (lines piston1, piston2, pistonn) and the gas in it.
class MarcoPiston : public QFrame {
    Q_OBJECT
public:
    explicit MarcoPiston(QWidget* padre = nullptr);

    Instrumento* pctpiston;
    /// Number and trails of the particles.
    void set_gas(double moles, double kelvin);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

/// Frame `termometros`: thermometer and thermocouple, the one in use shown, with the labels of its range.
class MarcoTermometros : public QFrame {
    Q_OBJECT
public:
    explicit MarcoTermometros(QWidget* padre = nullptr);

    Instrumento *termometro, *termopar;
    QLabel *lbtsmin, *lbtsmax, *lbtpsmin, *lbtpsmax;
    void use(laboratorio::Instrument instrument);
    Instrumento* in_use() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

/// Frame `barometros`: the mercury barometer with the surface in its cistern (barometro0) and the column (barometro1),
/// and the dial manometer, the one in use shown, with the labels of its range.
class MarcoBarometros : public QFrame {
    Q_OBJECT
public:
    explicit MarcoBarometros(QWidget* padre = nullptr);

    QWidget* barometro0;
    Instrumento *barometro1, *Manometro;
    QLabel *lbpsmin, *lbpsmax, *lbppsmin, *lbppsmax;
    void use(laboratorio::Instrument instrument);
    Instrumento* in_use() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

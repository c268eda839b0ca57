#pragma once
// The five drawn instruments of the laboratory.

#include <QLabel>

#include <optional>
#include <vector>

#include "controls/hoja.h"
#include "controls/indicador.h"
#include "controls/texto.h"
#include "windows/lab/laboratorio_logica.h"

/// One of the five, for which its scale, unit and looks stand.
class Instrumento : public Indicador {
    Q_OBJECT
public:
    explicit Instrumento(laboratorio::Instrument kind, QWidget* padre = nullptr);
    laboratorio::Instrument kind() const { return kind_; }

private:
    laboratorio::Instrument kind_;
};

/// A sheet beneath the instruments of one variable, of which one is in use.
class Lamina : public Hoja {
    Q_OBJECT
public:
    using Hoja::Hoja;

    /// Instrument shown.
    virtual Instrumento* in_use() const = 0;
    /// Names and hints for those who do not see the drawing, in the user's language.
    virtual void set_texts(const Texto& texto);

    QSize minimumSizeHint() const override;
    QSize sizeHint() const override;

protected:
    /// Where a red arrow says that the value lies beyond the scale's end.
    virtual QPointF beyond(bool above) const = 0;

    void renew() override;
    void draw_over(QPainter& painter) const override;
    /// An instrument of this sheet by its name.
    void adopt(Instrumento* instrument, const char* name);
    QLabel* range_label(const char* name, double limit, const char* unit);
    /// Puts an instrument and its labels in the place of another, with the focus.
    void exchange(const std::vector<QWidget*>& hidden, const std::vector<QWidget*>& shown);

private:
    int beyond_ = 0;  // Indicador::side() of the instrument in use, as drawn
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

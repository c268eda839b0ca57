#pragma once
// Mercury in the tube of an instrument, up to the value.

#include "controls/dibujo.h"
#include "windows/lab/instrumentos.h"

class Columna final : public Instrumento {
public:
    using Instrumento::Instrumento;
    /// The tube's bore: left edge and width, in the surface's coordinates.
    void set_bore(double left, double width) {
        tubo_ = {left, width};
        update();
    }
    QRectF bore() const { return {tubo_.left, 0.0, tubo_.width, double(height())}; }

protected:
    void draw(QPainter& painter) const override { dibujo::draw_mercury(painter, tubo_, place(), height(), pinned()); }
    QRectF between(double from, double to) const override { return dibujo::mercury_between(tubo_, from, to); }

private:
    dibujo::Tubo tubo_;
};

#pragma once
// The picture of a model's equation, on paper in both palettes.

#include <QWidget>

#include <memory>

#include "core/slots.h"

class QSvgRenderer;

/// Typeset once and shipped as outlines, so that it is crisp at every scale. The accessible name is the equation as
/// plain text.
class ImagenFormula : public QWidget {
    Q_OBJECT
public:
    explicit ImagenFormula(QWidget* padre = nullptr);
    ~ImagenFormula() override;

    void set_model(tavo::EquationOfState model);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::unique_ptr<QSvgRenderer> picture_;
    tavo::EquationOfState model_ = tavo::EquationOfState::IdealGas;
};

#pragma once
// The boxes of a model's coefficients: txta, txtb, txtc, txtd, txtmu with their labels, as four windows show them.

#include <QLabel>
#include <QWidget>

#include <array>

#include "controls/entrada_numerica.h"
#include "controls/texto.h"
#include "core/slots.h"

/// Boxes that a model does not have are hidden, and nothing moves when the model changes. Values stay whole behind
/// their text until somebody types: a and b "####0.00000", c and d "####0.000000".
class CajasCoeficientes : public QWidget {
    Q_OBJECT
public:
    /// The name and its unit in labels of their own ("a", "l ²atm/mol ²"), or both in one ("a [l ² atm / mol ²]").
    enum class Rotulos { Apart, Joined };

    CajasCoeficientes(Rotulos rotulos, Texto texto, QWidget* padre = nullptr);

    void show_values(tavo::EquationOfState model, const std::array<double, 4>& c, double mu);
    void clear();  // empty boxes, the model's labels stay
    std::array<double, 4> coefficients() const;
    double mu() const;
    /// Boxes a, b, c, d that cannot be typed into; the text can still be copied.
    void set_read_only(const std::array<bool, 4>& boxes);
    EntradaNumerica* box(int k) const;  // 0 to 3
    EntradaNumerica* mu_box() const;

signals:
    void edited(int k);  // a box was left or confirmed with return, and its text had been changed
    void mu_edited();
};

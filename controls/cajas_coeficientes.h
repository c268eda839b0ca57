#pragma once
// The boxes of a model's coefficients: txta, txtb, txtc, txtd, txtmu with their labels, as four windows show them.

#include <QLabel>
#include <QWidget>

#include <array>
#include <optional>

#include "controls/entrada_numerica.h"
#include "controls/texto.h"
#include "core/slots.h"

class QGridLayout;

/// Boxes that a model does not have are hidden, and nothing moves when the model changes. Values stay whole behind
/// their text until somebody types: a and b "####0.00000", c and d "####0.000000", mu "####0.0000".
class CajasCoeficientes : public QWidget {
    Q_OBJECT
public:
    using Coefficients = std::array<double, 4>;
    /// The name and its unit in labels of their own ("a", "l ²atm/mol ²"), or both in one ("a [l ² atm / mol ²]").
    enum class Rotulos { Apart, Joined };

    CajasCoeficientes(Rotulos rotulos, Texto texto, QWidget* padre = nullptr);

    /// In place of whatever stood or was being typed there. No signal.
    void show_values(tavo::EquationOfState model, const Coefficients& c, double mu);
    /// The same, but a text that is being typed stays. Without coefficients the boxes a to d are empty.
    void update_values(tavo::EquationOfState model, const std::optional<Coefficients>& c, double mu);
    void clear();  // empty boxes, the model's labels stay
    /// As they stand in the boxes, in full where nobody typed; those that the model does not have are 0.
    Coefficients coefficients() const;
    /// Of one box; k from 0. A text that was typed back to the one shown stands for the whole value.
    double value(int k) const;
    double mu() const;
    /// Boxes a, b, c, d that cannot be typed into; the text can still be copied.
    void set_read_only(const std::array<bool, 4>& boxes);
    /// Coefficients a to d set by hand look so.
    void set_by_hand(bool by_hand);
    /// What was typed and not told yet is not told any more.
    void forget_edits();
    EntradaNumerica* box(int k) const;  // 0 to 3
    EntradaNumerica* mu_box() const;

signals:
    void edited(int k);  // a box was left or confirmed with return, and its text had been changed
    void mu_edited();

protected:
    void changeEvent(QEvent* event) override;

private:
    /// A box with its caption and unit, and what was shown in it or told of it last.
    struct Row {
        EntradaNumerica* box;
        QLabel* name;
        QLabel* unit;  // null where the caption says it
        QString known_text;
        double known_value;
    };

    Row make_row(QGridLayout* grid, int row, int column, const QString& letter);
    QLabel* make_label(const QString& name);
    void reserve_widths();  // of the longest captions
    void show_labels();
    void show_hints();  // tool tips: all digits of the values
    void tint_boxes();
    static void set_visible(const Row& row, bool visible);
    static void show_value(Row& row, double value, const char* pattern);
    static void show_text(Row& row, const QString& text, double value);
    static bool is_edited(const Row& row);
    static double value_of(const Row& row);
    static bool take_edit(Row& row);  // whether it was edited; it counts as told from now on

    Rotulos rotulos_;
    Texto texto_;
    std::array<Row, 4> rows_{};  // txta, lba, lbunita and so on to d
    Row mu_row_{};               // txtmu, lbmu
    tavo::EquationOfState model_ = tavo::EquationOfState::IdealGas;
    bool by_hand_ = false;
};

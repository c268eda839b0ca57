#pragma once
// The gas's own critical point above the one that a model has with its coefficients.

#include <QLabel>
#include <QWidget>

#include <array>
#include <optional>

#include "controls/texto.h"
#include "core/calcnum.h"
#include "core/slots.h"

/// Tc [K], Pc [atm] and Vc [l/mol] in two lines; "—" for what is not known. Where the model's Tc or Pc differs by more
/// than 2 % from the gas's it stands in another ink, with a mark behind the line: a typing error shows at once. Vc is
/// not compared, since no model of two coefficients can meet all three. Nothing moves when the values change.
class PuntoCritico : public QWidget {
    Q_OBJECT
public:
    explicit PuntoCritico(Texto texto, QWidget* padre = nullptr);

    void show_point(const tavo::GasRecord& gas, const std::optional<tavo::calcnum::CriticalPoint>& model);

protected:
    void changeEvent(QEvent* event) override;

private:
    struct Line {
        QLabel* caption;
        std::array<QLabel*, 3> values;  // Tc, Pc, Vc
    };
    Line make_line(int row, const char* name, int text, const QString& literal);
    void make_header();
    void show_differences();

    Texto texto_;
    Line gas_{};    // lbtcgas, lbpcgas, lbvcgas
    Line model_{};  // lbtcmodelo, lbpcmodelo, lbvcmodelo
    std::array<bool, 3> differs_{};
    QWidget* lbdifiere;
};

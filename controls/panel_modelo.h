#pragma once
// Gas, model, formula and coefficients, as the calculations window and the laboratory show them.

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QWidget>

#include <array>
#include <cstdint>

#include "controls/cajas_coeficientes.h"
#include "controls/imagen_formula.h"
#include "controls/lista_gases.h"
#include "controls/texto.h"
#include "core/slots.h"

/// Shows slot 0 and tells what the user wants changed in it; it loads nothing itself. Boxes that a model does not have
/// are hidden; txtmu belongs to model 6 alone. Nothing moves when the model changes.
class PanelModelo : public QWidget {
    Q_OBJECT
public:
    PanelModelo(Texto texto, QAbstractItemModel* gases, const QStringList& models, QWidget* padre = nullptr);

    std::int16_t gas() const;  // list index + 1; 0: none
    tavo::EquationOfState model() const;
    /// Lists, boxes, labels, units and formula from the slot, without a signal. Coefficients set by hand look so; a
    /// slot without a loaded gas leaves the boxes empty. What is being typed for the same gas and model stays.
    void show_slot(const tavo::EquationSlot& slot);
    /// As they stand in the boxes, in full where nobody typed; those that the model does not have are 0.
    std::array<double, 4> coefficients() const;
    double mu() const;

signals:
    void gas_chosen();
    void model_chosen();
    void coefficients_edited();  // a box was left or confirmed with return, and its text had been changed
    void mu_edited();
    void automatic_wanted();  // the button beside coefficients set by hand

private:
    void cmbgas_Click();
    void cmbecu_Click();
    void btautomatico_Click();

    void make_lists(QAbstractItemModel* gases, const QStringList& models);
    void make_rows();
    void show_by_hand(const tavo::EquationSlot& slot);

    Texto texto_;
    QLabel *Label1, *Label2, *Label5;
    ListaGases* cmbgas;
    QComboBox* cmbecu;
    ImagenFormula* imgformula;
    CajasCoeficientes* cajas_;
    QPushButton* btautomatico;
    std::int16_t shown_gas_ = 0;
    tavo::EquationOfState shown_model_ = tavo::EquationOfState::IdealGas;
    int gas_before_reset_ = -1;
    bool showing_ = false;  // the panel writes its own controls: no handler answers
};

#pragma once
// Gas, model, formula and coefficients, as the calculations window and the laboratory show them.

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QStringList>
#include <QWidget>

#include <cstdint>

#include "controls/entrada_numerica.h"
#include "controls/imagen_formula.h"
#include "controls/lista_gases.h"
#include "controls/texto.h"
#include "core/slots.h"

/// Shows slot 0 and tells what the user wants changed in it; it loads nothing itself. Boxes that a model does not have
/// are hidden; txtmu belongs to model 6 alone.
class PanelModelo : public QWidget {
    Q_OBJECT
public:
    PanelModelo(Texto texto, QAbstractItemModel* gases, const QStringList& models, QWidget* padre = nullptr);

    std::int16_t gas() const;  // list index + 1; 0: none
    tavo::EquationOfState model() const;
    /// Lists, boxes, labels, units and formula from the slot, without a signal. Coefficients set by hand look so.
    void show_slot(const tavo::EquationSlot& slot);
    /// As they stand in the boxes, in full where nobody typed; those that the model does not have are 0.
    std::array<double, 4> coefficients() const;
    double mu() const;

signals:
    void gas_chosen();
    void model_chosen();
    void coefficients_edited();
    void mu_edited();
    void automatic_wanted();  // the button beside coefficients set by hand

private:
    void cmbgas_Click();
    void cmbecu_Click();
    void coefficient_LostFocus();
    void txtmu_LostFocus();
    void btautomatico_Click();

    Texto texto_;
    QLabel *Label1, *Label2, *Label5;
    ListaGases* cmbgas;
    QComboBox* cmbecu;
    ImagenFormula* imgformula;
    EntradaNumerica *txta, *txtb, *txtc, *txtd, *txtmu;
    QLabel *lba, *lbb, *lbc, *lbd, *lbmu;
    QLabel *lbunita, *lbunitb, *lbunitc, *lbunitd;
    QPushButton* btautomatico;
    bool showing_ = false;  // the panel writes its own controls: no handler answers
};

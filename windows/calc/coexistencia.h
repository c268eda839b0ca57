#pragma once
// Coexisting liquid and gas at the state's temperature: six boxes with their captions and units.

#include <QLabel>
#include <QLineEdit>
#include <QWidget>

#include <optional>

#include "controls/etiqueta_unidad.h"
#include "controls/texto.h"
#include "core/calcnum.h"

class QGridLayout;

/// Keeps the whole values behind the boxes: a click on a unit converts from them.
class Coexistencia : public QWidget {
    Q_OBJECT
public:
    explicit Coexistencia(Texto texto, QWidget* padre = nullptr);

    /// Without a molar mass [g/mol] above 0 the densities stay unknown.
    void show_values(const tavo::calcnum::Saturation& saturation, std::optional<double> enthalpy, double molar_mass);
    /// The model has no coexistence at this temperature.
    void show_none();
    /// Nothing is known.
    void clear();

    QString pressure_unit() const { return lbpv->unit(); }
    QString liquid_unit() const { return lbvl->unit(); }
    QString gas_unit() const { return lbvg->unit(); }
    QString enthalpy_unit() const { return lbdh->unit(); }

signals:
    void unit_changed();

private:
    void lbpv_Click();
    void lbvl_Click();
    void lbvg_Click();
    void lbdl_Click();
    void lbdg_Click();
    void lbdh_Click();

    struct Values {
        tavo::calcnum::Saturation saturation;
        std::optional<double> enthalpy;
        double molar_mass;
    };
    enum class State { Empty, None, Known };

    void show_all();
    void show_enthalpy();
    void show_density(QLineEdit* box, const EtiquetaUnidad* unit, double molar_volume);
    void show_number(QLineEdit* box, const EtiquetaUnidad* unit, tavo::Global::UnitFamily family, double value,
                     const char* pattern);

    Texto texto_;
    QLabel *lbbpv, *lbbvl, *lbbvg, *lbbdl, *lbbdg, *lbbdh;
    QLineEdit *txtpv, *txtvl, *txtvg, *txtdl, *txtdg, *txtdh;
    EtiquetaUnidad *lbpv, *lbvl, *lbvg, *lbdl, *lbdg, *lbdh;
    QLabel* lbnota;
    State state_ = State::Empty;
    Values values_{};
};

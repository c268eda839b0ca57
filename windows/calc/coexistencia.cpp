#include "windows/calc/coexistencia.h"

#include <QGridLayout>

#include <utility>

#include "windows/calc/presentar.h"

using presentar::CUATRO_DECIMALES;
using presentar::DOS_DECIMALES;
using tavo::Global::UnitFamily;

Coexistencia::Coexistencia(Texto texto, QWidget* padre) : QWidget(padre), texto_(std::move(texto)) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(6);
    grid->setColumnStretch(1, 1);

    int row = 0;
    const auto line = [&](QLabel*& caption, QLineEdit*& box, EtiquetaUnidad*& unit, const QString& name, int text,
                          UnitFamily family, void (Coexistencia::*handler)()) {
        caption = new QLabel(texto_(text, QString()), this);
        caption->setObjectName(QStringLiteral("lbb") + name);
        box = new QLineEdit(this);
        box->setObjectName(QStringLiteral("txt") + name);
        box->setReadOnly(true);
        box->setAlignment(Qt::AlignRight);
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("00000000.0000")) + 12);
        box->setAccessibleName(spoken(caption->text()));
        caption->setBuddy(box);
        unit = new EtiquetaUnidad(family, this);
        unit->setObjectName(QStringLiteral("lb") + name);
        connect(unit, &EtiquetaUnidad::Click, this, handler);
        connect(unit, &EtiquetaUnidad::Click, this, &Coexistencia::unit_changed);
        grid->addWidget(caption, row, 0);
        grid->addWidget(box, row, 1);
        grid->addWidget(unit, row++, 2);
    };
    line(lbbpv, txtpv, lbpv, QStringLiteral("pv"), 121, UnitFamily::Pressure, &Coexistencia::lbpv_Click);
    line(lbbvl, txtvl, lbvl, QStringLiteral("vl"), 123, UnitFamily::Volume, &Coexistencia::lbvl_Click);
    line(lbbvg, txtvg, lbvg, QStringLiteral("vg"), 122, UnitFamily::Volume, &Coexistencia::lbvg_Click);
    line(lbbdl, txtdl, lbdl, QStringLiteral("dl"), 124, UnitFamily::Density, &Coexistencia::lbdl_Click);
    line(lbbdg, txtdg, lbdg, QStringLiteral("dg"), 125, UnitFamily::Density, &Coexistencia::lbdg_Click);
    line(lbbdh, txtdh, lbdh, QStringLiteral("dh"), 126, UnitFamily::Energy, &Coexistencia::lbdh_Click);

    lbnota = new QLabel(texto_(129, QString()), this);
    lbnota->setObjectName(QStringLiteral("lbnota"));
    lbnota->setAlignment(Qt::AlignRight);
    grid->addWidget(lbnota, row, 0, 1, 3);
}

void Coexistencia::show_values(const tavo::calcnum::Saturation& saturation, std::optional<double> enthalpy,
                               double molar_mass) {
    values_ = {saturation, enthalpy, molar_mass};
    state_ = State::Known;
    show_all();
}

void Coexistencia::show_none() {
    state_ = State::None;
    show_all();
}

void Coexistencia::clear() {
    state_ = State::Empty;
    show_all();
}

void Coexistencia::show_all() {
    lbpv_Click();  // and the enthalpy
    lbvl_Click();
    lbvg_Click();
    lbdl_Click();
    lbdg_Click();
}

void Coexistencia::lbpv_Click() {
    show_number(txtpv, lbpv, UnitFamily::Pressure, values_.saturation.pv, CUATRO_DECIMALES);
    lbdh_Click();  // shown or not by the digits of the pressure
}

void Coexistencia::lbvl_Click() {
    show_number(txtvl, lbvl, UnitFamily::Volume, values_.saturation.vl, CUATRO_DECIMALES);
}

void Coexistencia::lbvg_Click() {
    show_number(txtvg, lbvg, UnitFamily::Volume, values_.saturation.vg, CUATRO_DECIMALES);
}

void Coexistencia::lbdl_Click() {
    show_density(txtdl, lbdl, values_.saturation.vl);
}

void Coexistencia::lbdg_Click() {
    show_density(txtdg, lbdg, values_.saturation.vg);
}

void Coexistencia::lbdh_Click() {
    const bool known = state_ == State::Known;
    if (known && presentar::presion_nula(values_.saturation.pv, lbpv->unit())) {
        txtdh->clear();
        txtdh->setToolTip(texto_(628, QStringLiteral("La presión de vapor es menor que 0.005 %1: elija una unidad "
                                                     "menor para ver la entalpía"))
                              .arg(lbpv->unit()));
    } else if (known && !values_.enthalpy) {
        txtdh->setText(texto_(128, QString()));
        txtdh->setToolTip(texto_(631, QStringLiteral("La entalpía no se puede calcular: falta la presión de vapor "
                                                     "medio grado más arriba o más abajo")));
    } else {
        show_number(txtdh, lbdh, UnitFamily::Energy, values_.enthalpy.value_or(0.0), DOS_DECIMALES);
    }
}

void Coexistencia::show_density(QLineEdit* box, const EtiquetaUnidad* unit, double molar_volume) {
    if (state_ == State::Known && !(values_.molar_mass > 0.0)) {
        box->setText(presentar::DESCONOCIDO);
        box->setToolTip({});
    } else {
        show_number(box, unit, UnitFamily::Density, values_.molar_mass / molar_volume, CUATRO_DECIMALES);
    }
}

void Coexistencia::show_number(QLineEdit* box, const EtiquetaUnidad* unit, UnitFamily family, double value,
                               const char* pattern) {
    switch (state_) {
        case State::Empty:
            box->clear();
            box->setToolTip({});
            return;
        case State::None:
            box->setText(texto_(128, QString()));
            box->setToolTip(
                texto_(630, QStringLiteral("A esta temperatura este modelo no da equilibrio entre líquido y gas")));
            return;
        case State::Known:
            const double shown = presentar::en_unidad(family, value, unit->unit());
            box->setText(presentar::formato(shown, pattern));
            box->setToolTip(presentar::cifras(shown, unit->unit()));
            return;
    }
}

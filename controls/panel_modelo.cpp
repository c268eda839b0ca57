#include "controls/panel_modelo.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

#include <optional>

#include "controls/lista_modelos.h"
#include "core/models.h"

namespace {

constexpr int SPACING = 6;
constexpr int SHORTEST_LIST = 16;  // characters, where the window is too narrow for the whole texts

void keep_place(QWidget* control) {
    QSizePolicy policy = control->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    control->setSizePolicy(policy);
}

/// Whether the loader has filled the record or the user its coefficients.
bool has_coefficients(const tavo::EquationSlot& slot) {
    const tavo::GasRecord& gas = slot.gas;
    return slot.parameters || !gas.name.empty() || gas.tc > 0.0 || gas.pm > 0.0;
}

}  // namespace

PanelModelo::PanelModelo(Texto texto, QAbstractItemModel* gases, const QStringList& models, QWidget* padre)
    : QWidget(padre), texto_(std::move(texto)) {
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SPACING);
    make_lists(gases, models);
    imgformula = new ImagenFormula(this);
    imgformula->setObjectName(QStringLiteral("imgformula"));
    column->addWidget(imgformula);
    make_rows();
    show_slot({});
}

// ---- Layout

void PanelModelo::make_lists(QAbstractItemModel* gases, const QStringList& models) {
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(2 * SPACING);
    grid->setVerticalSpacing(SPACING);
    grid->setColumnStretch(1, 1);
    static_cast<QVBoxLayout*>(layout())->addLayout(grid);
    const QString colon = texto_(440, QStringLiteral("%1:"));
    const auto place = [&](const char* name, const QString& caption, const char* list_name, QComboBox* list) {
        auto* label = new QLabel(colon.arg(caption), this);
        label->setObjectName(QLatin1String(name));
        label->setBuddy(list);
        list->setObjectName(QLatin1String(list_name));
        list->setAccessibleName(caption);
        list->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        grid->addWidget(label, grid->count() / 2, 0);
        grid->addWidget(list, grid->count() / 2, 1);
        return label;
    };
    cmbgas = new ListaGases(gases, this);
    cmbgas->setMinimumContentsLength(SHORTEST_LIST);
    cmbgas->setToolTip(texto_(555, QStringLiteral("Escriba una parte del nombre para buscar el gas")));
    cmbgas->lineEdit()->setPlaceholderText(texto_(557, QStringLiteral("Elija un gas")));
    cmbecu = new ListaModelos(models, this);
    Label1 = place("Label1", texto_(50, QString()), "cmbgas", cmbgas);
    Label2 = place("Label2", texto_(51, QString()), "cmbecu", cmbecu);
    connect(cmbgas, &QComboBox::currentIndexChanged, this, &PanelModelo::cmbgas_Click);
    connect(cmbecu, &QComboBox::currentIndexChanged, this, &PanelModelo::cmbecu_Click);

    // The list loses its choice while the names are exchanged.
    connect(gases, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        gas_before_reset_ = cmbgas->currentIndex();
        showing_ = true;
    });
    connect(gases, &QAbstractItemModel::modelReset, this, [this] {
        cmbgas->set_silently(gas_before_reset_ < cmbgas->count() ? gas_before_reset_ : -1);
        showing_ = false;
    });
}

void PanelModelo::make_rows() {
    auto* column = static_cast<QVBoxLayout*>(layout());
    auto* header = new QHBoxLayout;
    header->setSpacing(SPACING);
    Label5 = new QLabel(texto_(440, QStringLiteral("%1:")).arg(texto_(54, QString())), this);
    Label5->setObjectName(QStringLiteral("Label5"));
    header->addWidget(Label5, 1);
    column->addLayout(header);

    cajas_ = new CajasCoeficientes(CajasCoeficientes::Rotulos::Apart, texto_, this);
    column->addWidget(cajas_);
    Label5->setBuddy(cajas_->box(0));
    connect(cajas_, &CajasCoeficientes::edited, this, &PanelModelo::coefficients_edited);
    connect(cajas_, &CajasCoeficientes::mu_edited, this, &PanelModelo::mu_edited);

    btautomatico = new QPushButton(texto_(640, QStringLiteral("Automáticos")), this);
    btautomatico->setObjectName(QStringLiteral("btautomatico"));
    btautomatico->setToolTip(texto_(641, QStringLiteral("Volver a los coeficientes del gas")));
    btautomatico->setAutoDefault(true);  // with the focus it takes the return key itself
    keep_place(Label5);
    keep_place(btautomatico);
    header->addWidget(btautomatico);
    connect(btautomatico, &QPushButton::clicked, this, &PanelModelo::btautomatico_Click);
}

// ---- Slot and controls

std::int16_t PanelModelo::gas() const {
    return static_cast<std::int16_t>(cmbgas->currentIndex() + 1);
}

tavo::EquationOfState PanelModelo::model() const {
    return static_cast<tavo::EquationOfState>(cmbecu->currentIndex());
}

std::array<double, 4> PanelModelo::coefficients() const {
    return cajas_->coefficients();
}

double PanelModelo::mu() const {
    return cajas_->mu();
}

void PanelModelo::show_slot(const tavo::EquationSlot& slot) {
    const QScopedValueRollback writing(showing_, true);
    if (slot.gas_number != shown_gas_ || slot.equation != shown_model_)
        cajas_->forget_edits();
    shown_gas_ = slot.gas_number;
    shown_model_ = slot.equation;
    if (cmbgas->currentIndex() != slot.gas_number - 1)  // a name that is being typed stays
        cmbgas->set_silently(slot.gas_number - 1);
    cmbecu->setCurrentIndex(static_cast<int>(slot.equation));
    imgformula->set_model(slot.equation);
    std::optional<CajasCoeficientes::Coefficients> values;
    if (has_coefficients(slot))
        values = {slot.gas.a, slot.gas.b, slot.gas.c, slot.gas.d};
    cajas_->update_values(slot.equation, values, slot.mu);
    show_by_hand(slot);
}

void PanelModelo::show_by_hand(const tavo::EquationSlot& slot) {
    const tavo::Model* model = tavo::find_model(slot.equation);
    const bool has_boxes = model && !model->texts.empty();
    Label5->setVisible(has_boxes);
    btautomatico->setVisible(has_boxes);
    cajas_->set_by_hand(slot.parameters);
    if (!slot.parameters && btautomatico->hasFocus())
        cajas_->box(0)->setFocus();  // a button that is switched off would hand the focus to anything
    btautomatico->setEnabled(slot.parameters);
}

// ---- What the user does

void PanelModelo::cmbgas_Click() {
    if (!showing_)
        emit gas_chosen();
}

void PanelModelo::cmbecu_Click() {
    if (!showing_)
        emit model_chosen();
}

void PanelModelo::btautomatico_Click() {
    cajas_->forget_edits();
    emit automatic_wanted();
}

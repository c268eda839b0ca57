#include "windows/calc/frmcalculos.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPainter>
#include <QScopeGuard>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "controls/desplazable.h"
#include "controls/texto_estado.h"
#include "core/gas_database.h"
#include "shell/textos.h"
#include "windows/calc/presentar.h"

using calculos::Phase;
using calculos::Reason;
using calculos::Unsolvable;
using calculos::Variable;

/// A small disc whose colour goes with the sentence beside it, as high as the sentence's first line.
class MarcaEstado : public QWidget {
public:
    explicit MarcaEstado(QWidget* padre) : QWidget(padre) { setFixedSize(12, fontMetrics().lineSpacing() + 10); }

    void set_colour(const QColor& colour) {
        colour_ = colour;
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour_);
        painter.drawEllipse(QRectF(rect()).center(), 5.0, 5.0);
    }

private:
    QColor colour_;
};

namespace {

constexpr int INFORMATION = 64;
constexpr int MARGIN = 12, SPACING = 6;
constexpr int STATE_LINES = 7;
constexpr std::int16_t FIRST_GAS = 1;

// Middle tones: seen on light and on dark windows.
const QColor NOTHING_YET(128, 134, 142), REFUSED(211, 60, 60);

QColor colour_of(Phase phase) {
    switch (phase) {
        case Phase::IdealGas:
        case Phase::Gas:
            return {64, 160, 220};
        case Phase::Liquid:
            return {40, 90, 200};
        case Phase::Supercritical:
        case Phase::Fluid:
            return {140, 95, 200};
        case Phase::SuperheatedLiquid:
        case Phase::Unstable:
        case Phase::SupersaturatedVapour:
            break;
    }
    return {224, 142, 20};  // liquid and gas beside each other would be the stable state
}

}  // namespace

frmcalculos::frmcalculos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QWidget(padre),
      estado_(estado),
      mensajes_(mensajes),
      texto_([&estado](int number, const QString& literal) { return estado.texto(number, literal); }) {
    setObjectName(QStringLiteral("frmcalculos"));
    setWindowTitle(sin_mnemonico(estado_.texto(20)));
    contenido_ = new QWidget;
    grupos_ = new QGridLayout;
    grupos_->setSpacing(MARGIN);

    const auto heading = [this](const QString& text) { return new QLabel(text, contenido_); };
    panel_ = new PanelModelo(texto_, estado_.gas_names(), nombres_modelos(estado_), contenido_);
    grupo_[0] = crear_grupo(heading(estado_.texto(622, QStringLiteral("Gas y ecuación"))), panel_);
    grupo_[1] = crear_grupo(heading(estado_.texto(623, QStringLiteral("Estado"))), crear_estado());
    Labelest = heading(estado_.texto(120));
    Labelest->setObjectName(QStringLiteral("Labelest"));
    coexistencia_ = new Coexistencia(texto_, contenido_);
    grupo_[2] = crear_grupo(Labelest, coexistencia_);
    tabla_ = new TablaModelos(texto_, nombres_modelos(estado_), contenido_);

    auto* column = new QVBoxLayout(contenido_);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(MARGIN);
    column->addLayout(grupos_);
    column->addWidget(tabla_);
    column->addStretch();
    colocar(3);
    desplazable_ = llenar_desplazable(*this, contenido_);

    setFocusProxy(findChild<QWidget*>(QStringLiteral("cmbgas")));
    crear_avisos();
    Form_Load();
}

frmcalculos::~frmcalculos() {
    // The focus wanders while the children go, and entries that it leaves speak.
    for (QObject* speaker : std::initializer_list<QObject*>{qApp, filas_, panel_})
        speaker->disconnect(this);
}

// ---- Layout

QGroupBox* frmcalculos::crear_grupo(QLabel* heading, QWidget* body) {
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    auto* group = new QGroupBox(contenido_);
    group->setAccessibleName(heading->text());
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(MARGIN);
    column->addWidget(heading);
    column->addWidget(body);
    column->addStretch();
    return group;
}

QWidget* frmcalculos::crear_estado() {
    auto* body = new QWidget(contenido_);
    filas_ = new FilasEstado(
        texto_, [this] { return ranura_.gas.pm; }, body);
    btcalcular = new QPushButton(estado_.texto(127), body);
    btcalcular->setObjectName(QStringLiteral("btcalcular"));
    btcalcular->setDefault(true);
    btcalcular->setFocusPolicy(Qt::TabFocus);  // a click leaves no entry: one refused entry, one box
    marcaestado = new MarcaEstado(body);
    marcaestado->setObjectName(QStringLiteral("marcaestado"));
    txtestado = new LineaEstado(STATE_LINES, body);
    txtestado->setObjectName(QStringLiteral("txtestado"));
    txtestado->setAccessibleName(estado_.texto(623, QStringLiteral("Estado")));

    auto* line = new QHBoxLayout;
    line->setSpacing(SPACING);
    line->addWidget(marcaestado, 0, Qt::AlignTop);
    line->addWidget(txtestado, 1);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SPACING);
    column->addWidget(filas_);
    column->addWidget(btcalcular, 0, Qt::AlignRight);
    column->addLayout(line);
    return body;
}

/// Side by side where there is room, or the coexistence below the two others, or one below the other.
void frmcalculos::colocar(int columns) {
    if (columns == columnas_)
        return;
    columnas_ = columns;
    for (QGroupBox* group : grupo_)
        grupos_->removeWidget(group);
    if (columns == 2) {
        grupos_->addWidget(grupo_[0], 0, 0);
        grupos_->addWidget(grupo_[1], 0, 1);
        grupos_->addWidget(grupo_[2], 1, 0, 1, 2);
    } else {
        for (int i = 0; i < static_cast<int>(grupo_.size()); ++i)
            grupos_->addWidget(grupo_[static_cast<std::size_t>(i)], columns == 1 ? i : 0, columns == 1 ? 0 : i);
    }
    for (int i = 0; i < 3; ++i)
        grupos_->setColumnStretch(i, i < columns ? 1 : 0);
}

int frmcalculos::columnas(int width) const {
    const auto of = [this](std::size_t i) { return grupo_[i]->minimumSizeHint().width(); };
    const int room = width - 2 * MARGIN - desplazable_->verticalScrollBar()->sizeHint().width();
    if (of(0) + of(1) + of(2) + 2 * MARGIN <= room)
        return 3;
    return of(0) + of(1) + MARGIN <= room ? 2 : 1;
}

/// With the groups side by side, however they stand now.
QSize frmcalculos::sizeHint() const {
    QSize groups(2 * MARGIN, 0);
    for (const QGroupBox* group : grupo_)
        groups = {groups.width() + group->sizeHint().width(), std::max(groups.height(), group->sizeHint().height())};
    return {groups.width() + 2 * MARGIN + desplazable_->verticalScrollBar()->sizeHint().width(),
            groups.height() + tabla_->sizeHint().height() + 3 * MARGIN};
}

void frmcalculos::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    colocar(columnas(width()));
}

/// The frame grows for the unfolded table as far as its area allows, and goes back.
void frmcalculos::ajustar_marco(bool unfolded) {
    auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (!frame || !frame->mdiArea() || frame->isMaximized())
        return;
    const int border = frame->height() - height();
    int wanted = alto_plegada_;
    if (unfolded) {
        alto_plegada_ = frame->height();
        contenido_->layout()->activate();
        const int room = frame->mdiArea()->viewport()->height();
        wanted = std::min(std::max(contenido_->sizeHint().height() + border, frame->height()), room);
        frame->move(frame->x(), std::min(frame->y(), room - wanted));
    }
    if (wanted > 0)
        frame->resize(frame->width(), wanted);
}

// ---- Wiring

void frmcalculos::crear_avisos() {
    connect(panel_, &PanelModelo::gas_chosen, this, &frmcalculos::cmbgas_Click);
    connect(panel_, &PanelModelo::model_chosen, this, &frmcalculos::cmbecu_Click);
    connect(panel_, &PanelModelo::coefficients_edited, this, &frmcalculos::coeficientes_LostFocus);
    connect(panel_, &PanelModelo::mu_edited, this, &frmcalculos::txtmu_LostFocus);
    connect(panel_, &PanelModelo::automatic_wanted, this, &frmcalculos::btautomatico_Click);
    connect(filas_, &FilasEstado::edited, this, [this] { calcular(Motivo::Entrada); });
    connect(filas_, &FilasEstado::unknown_chosen, this, [this] { calcular(Motivo::Otro); });
    connect(filas_, &FilasEstado::unit_changed, this, &frmcalculos::unidad_Click);
    connect(btcalcular, &QPushButton::clicked, this, &frmcalculos::btcalcular_Click);
    connect(coexistencia_, &Coexistencia::unit_changed, this, [this] { tabla_->set_units(unidades_tabla()); });
    connect(tabla_, &TablaModelos::unfolding, this, &frmcalculos::tabla_Click);
    connect(tabla_, &TablaModelos::copied, this,
            [this] { estado_.set_status(estado_.texto(627, QStringLiteral("Tabla copiada")), 5000); });
    for (const EntradaNumerica* box : findChildren<EntradaNumerica*>())
        connect(box, &QLineEdit::inputRejected, this, [this] {
            estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
        });
    // A click on what takes no focus, such as the button, leaves it where it is: the frame around would take it.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && contenido_->isAncestorOf(now))
            contenido_->setFocusProxy(now);
    });
    connect(&estado_, &ApplicationState::calculation_mode_changed, this, &frmcalculos::modo_Change);
    connect(&estado_, &ApplicationState::gas_removed, this,
            [this](std::int16_t number) { tavo::Global::follow_removal(ranura_, number); });
    connect(&estado_, &ApplicationState::gases_changed, this, &frmcalculos::gases_Change);
}

void frmcalculos::Form_Load() {
    ranura_.equation = tavo::EquationOfState::IdealGas;
    ranura_.temperature = 300.0;
    ranura_.moles = 1.0;
    ranura_.mu = 1.5;
    entrada_ = {Variable::Pressure, 1.0, 300.0, 6.146, 1.0};
    filas_->show_text(Variable::Amount, QStringLiteral("1.000"));
    filas_->show_text(Variable::Temperature, QStringLiteral("300.0000"));
    filas_->show_text(Variable::Volume, QStringLiteral("6.1460"));
    filas_->show_text(Variable::Pressure, QStringLiteral("1.0000"));
    cargar(std::min(FIRST_GAS, estado_.gas_count()), ranura_.equation);
    panel_->show_slot(ranura_);
    tabla_->set_units(unidades_tabla());
    vaciar();
    txtestado->set_outcome(estado_.texto(629, QStringLiteral("Cambie un dato o pulse «%1» para calcular."))
                               .arg(sin_mnemonico(btcalcular->text())));
    marcaestado->set_colour(NOTHING_YET);
    modo_Change(estado_.calculation_mode);
}

void frmcalculos::modo_Change(int mode) {
    if (const auto unknown = calculos::unknown_of_mode(mode)) {
        filas_->set_unknown(*unknown);
        calcular(Motivo::Otro);
    }
}

void frmcalculos::gases_Change() {
    if (ranura_.gas_number > estado_.gas_count())
        tavo::Global::drop_gas(ranura_);
    try {
        calculos::reload(estado_.data(), ranura_);
    } catch (const Unsolvable&) {
        // As with a choice.
    }
    panel_->show_slot(ranura_);
    if (salida_ || fallo_)
        calcular(Motivo::Otro);
}

void frmcalculos::closeEvent(QCloseEvent* event) {
    callar();
    event->accept();
}

void frmcalculos::keyPressEvent(QKeyEvent* event) {
    QWidget* focus = focusWidget();
    const bool in_list = focus && (qobject_cast<QComboBox*>(focus) || qobject_cast<QComboBox*>(focus->parent()));
    if ((event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) || in_list)
        QWidget::keyPressEvent(event);
    else if (auto* button = qobject_cast<QAbstractButton*>(focus))
        button->click();
    else
        btcalcular->click();
}

// ---- What the user does

void frmcalculos::btcalcular_Click() {
    calcular(Motivo::Entrada);
}

void frmcalculos::cmbgas_Click() {
    elegir(panel_->gas(), ranura_.equation);
    if (salida_)  // else the sentence about the calculation says it
        estado_.tell_problem(ranura_.gas_number);
}

void frmcalculos::cmbecu_Click() {
    if (panel_->model() == tavo::EquationOfState::Virial)
        mensajes_.mostrar(estado_.texto(87) + '\r' + estado_.texto(88) + '\r' + estado_.texto(89), INFORMATION, {});
    elegir(ranura_.gas_number, panel_->model());
}

void frmcalculos::cargar(std::int16_t gas, tavo::EquationOfState model) {
    try {
        calculos::choose(estado_.data(), ranura_, gas, model);
    } catch (const Unsolvable&) {
        // The calculation meets the same obstacle and says so.
    }
}

void frmcalculos::elegir(std::int16_t gas, tavo::EquationOfState model) {
    cargar(gas, model);
    panel_->show_slot(ranura_);  // forgets what was being typed for the other one
    calcular(Motivo::Otro);
}

void frmcalculos::coeficientes_LostFocus() {
    const auto [a, b, c, d] = panel_->coefficients();
    calculos::set_coefficients(ranura_, a, b, c, d);
    calcular(Motivo::Otro);
}

void frmcalculos::txtmu_LostFocus() {
    try {
        calculos::set_mu(estado_.data(), ranura_, panel_->mu());
    } catch (const Unsolvable& fallo) {
        if (fallo.reason() == Reason::SmallMu) {
            panel_->show_slot(ranura_);
            mensajes_.mostrar(estado_.texto(93), INFORMATION, {});
            return;
        }
    }
    calcular(Motivo::Otro);
}

void frmcalculos::btautomatico_Click() {
    try {
        calculos::set_automatic(estado_.data(), ranura_);
    } catch (const Unsolvable&) {
        // As with a choice.
    }
    calcular(Motivo::Otro);
}

void frmcalculos::unidad_Click(Variable variable) {
    if (variable == Variable::Amount)
        calcular(Motivo::Otro);
    else if (salida_)
        mostrar_salida();
    else if (fallo_)
        mostrar_fallo();
    else if (rechazada_)
        escribir_fallo(dicho_ = texto_minimo(*rechazada_));
    tabla_->set_units(unidades_tabla());
}

void frmcalculos::tabla_Click(bool unfolded) {
    if (unfolded && !salida_ && !fallo_)
        calcular(Motivo::Otro);
    else
        llenar_tabla();
    ajustar_marco(unfolded);
}

// ---- The calculation

/// The button and the labels take no focus: a coefficient may have been typed and its box not left.
void frmcalculos::tomar_coeficiente() {
    auto* box = qobject_cast<EntradaNumerica*>(focusWidget());
    if (box && panel_->isAncestorOf(box))
        emit box->LostFocus();
}

void frmcalculos::calcular(Motivo motivo) {
    if (calculando_)
        return;  // a coefficient half typed, or an entry that loses the focus to a refused one: both are read here
    const QScopedValueRollback own(calculando_, true);
    tomar_coeficiente();
    filas_->settle();
    tomada_ = validar(motivo);
    const QScopedValueRollback calculating(estado_.calculating, true);
    filas_->set_silent(true);
    const auto listening = qScopeGuard([this] { filas_->set_silent(false); });
    if (tomada_)
        resolver();
    panel_->show_slot(ranura_);
    llenar_tabla();
}

bool frmcalculos::validar(Motivo motivo) {
    for (const Variable variable : calculos::VARIABLES) {
        if (variable == filas_->unknown())
            continue;
        if (calculos::too_small(variable, filas_->value(variable))) {
            rechazar(variable, motivo);
            return false;
        }
    }
    dicho_.clear();
    const auto take = [this](Variable variable, double& into) {
        if (variable != filas_->unknown())
            into = filas_->value(variable);
    };
    entrada_.unknown = filas_->unknown();
    take(Variable::Temperature, entrada_.t);
    take(Variable::Volume, entrada_.v);
    take(Variable::Pressure, entrada_.p);
    return true;
}

void frmcalculos::rechazar(Variable variable, Motivo motivo) {
    const QString sentence = texto_minimo(variable);
    vaciar();
    callar();
    rechazada_ = variable;
    escribir_fallo(sentence);
    if (motivo == Motivo::Otro && dicho_ == sentence)
        return;
    dicho_ = sentence;
    mensajes_.mostrar(sentence, INFORMATION, {});
    filas_->entry(variable)->setFocus();
    filas_->entry(variable)->selectAll();
}

QString frmcalculos::texto_minimo(Variable variable) const {
    const QString unit = unidad(variable);
    const double least = calculos::minimum(variable, unit.toStdString());
    const auto sentence = [&](const QString& text, const QString& number) {
        return text + u' ' + number + u' ' + unit;
    };
    switch (variable) {
        case Variable::Amount:
            return sentence(estado_.texto(420, QStringLiteral("Valor mínimo de la cantidad de materia:")),
                            presentar::formato(least, "##0.00"));
        case Variable::Temperature:
            return sentence(estado_.texto(421, QStringLiteral("Valor mínimo de la temperatura:")),
                            presentar::cifras(least));
        case Variable::Volume:
            return sentence(estado_.texto(422, QStringLiteral("Valor mínimo del volumen:")), presentar::cifras(least));
        case Variable::Pressure:
            break;
    }
    return sentence(estado_.texto(423, QStringLiteral("Valor mínimo de la presión:")), presentar::cifras(least));
}

void frmcalculos::resolver() {
    vaciar();
    try {
        const calculos::InSlot0 own(estado_.slot_table(), ranura_);
        const double amount = filas_->shown_value(Variable::Amount);
        entrada_.n = calculos::moles(amount, unidad(Variable::Amount).toStdString(), estado_.slot_table()[0]);
        salida_ = calculos::solve(estado_.data(), estado_.slot_table(), entrada_);
    } catch (const Unsolvable& fallo) {
        fallo_ = fallo;
    } catch (const tavo::FloatingPointError& fault) {
        fallo_ = Unsolvable(Reason::NotFinite, fault.what());
    }
    if (!salida_) {
        tomada_ = fallo_->reason() != Reason::NoMolarMass;
        mostrar_fallo();
        return;
    }
    entrada_.t = salida_->t;
    entrada_.v = salida_->v;
    entrada_.p = salida_->p;
    const double found = entrada_.unknown == Variable::Temperature ? salida_->t
                         : entrada_.unknown == Variable::Volume    ? salida_->v
                                                                   : salida_->p;
    filas_->show_value(entrada_.unknown, found, presentar::CUATRO_DECIMALES);
    mostrar_salida();
}

void frmcalculos::mostrar_salida() {
    if (salida_->saturation)
        coexistencia_->show_values(*salida_->saturation, salida_->enthalpy, ranura_.gas.pm);
    else
        coexistencia_->show_none();
    const calculos::InSlot0 own(estado_.slot_table(), ranura_);
    txtestado->set_outcome(
        texto_estado(texto_, *salida_, estado_.slot_table(), unidad(Variable::Volume), unidad(Variable::Pressure)));
    marcaestado->set_colour(colour_of(salida_->phase));
    callar();
}

void frmcalculos::mostrar_fallo() {
    const QString sentence = motivo();
    coexistencia_->clear();
    escribir_fallo(sentence);
    en_apuros_ = true;
    estado_.set_status(sentence);
}

/// The main window says no longer that a calculation failed.
void frmcalculos::callar() {
    if (std::exchange(en_apuros_, false))
        estado_.set_status({});
}

QString frmcalculos::motivo() const {
    const QString sentence = texto_fallo(texto_, *fallo_, unidad(Variable::Volume));
    const QString fault = fallo_->reason() == Reason::BadGas ? estado_.gas_problem(ranura_.gas_number) : QString();
    return fault.isEmpty() ? sentence : sentence + u' ' + fault;
}

void frmcalculos::escribir_fallo(const QString& sentence) {
    txtestado->set_fault(sentence);
    marcaestado->set_colour(REFUSED);
}

/// No result is current.
void frmcalculos::vaciar() {
    salida_.reset();
    fallo_.reset();
    rechazada_.reset();
    coexistencia_->clear();
}

void frmcalculos::llenar_tabla() {
    if (!tomada_ || !tabla_->unfolded())
        return tabla_->clear(unidades_tabla());
    const calculos::InSlot0 own(estado_.slot_table(), ranura_);
    tabla_->show_rows(calculos::all_models(estado_.data(), estado_.slot_table(), entrada_), ranura_.equation,
                      ranura_.gas, unidades_tabla());
}

UnidadesTabla frmcalculos::unidades_tabla() const {
    return {filas_->unknown(),
            unidad(filas_->unknown()),
            coexistencia_->pressure_unit(),
            coexistencia_->liquid_unit(),
            coexistencia_->gas_unit(),
            coexistencia_->enthalpy_unit(),
            unidad(Variable::Temperature)};
}

QString frmcalculos::unidad(Variable variable) const {
    return filas_->unit(variable);
}

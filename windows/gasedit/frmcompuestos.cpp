#include "windows/gasedit/frmcompuestos.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <initializer_list>

#include "controls/desplazable.h"
#include "controls/marca_fila.h"
#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "shell/textos.h"

using parametros::Choice;
using parametros::Fault;
using tavo::EquationOfState;

namespace {

constexpr int INFORMATION = 64, YES_NO = 36;
constexpr int MARGIN = 12, SPACING = 6;
const QString NOBODY = QStringLiteral("-----");

/// The row's colour and line mark, as beside the rows themselves.
QIcon muestra(int row, qreal scale) {
    constexpr QSizeF SIZE(30.0, 20.0);
    QPixmap picture((SIZE * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    graficos::pintar_muestra(painter, QRectF(1.0, 1.0, 28.0, 18.0), row);
    return picture;
}

parametros::Coefficients coefficients_of(const tavo::GasRecord& gas) {
    return {gas.a, gas.b, gas.c, gas.d};
}

QLabel* quiet_label(const char* name, QWidget* parent) {
    auto* label = new QLabel(parent);
    label->setObjectName(QLatin1String(name));
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}

}  // namespace

frmcompuestos::frmcompuestos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QWidget(padre),
      estado_(estado),
      mensajes_(mensajes),
      texto_([&estado](int number, const QString& literal) { return estado.texto(number, literal); }) {
    setObjectName(QStringLiteral("frmcompuestos"));
    contenido_ = new QWidget;
    auto* column = new QVBoxLayout(contenido_);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(MARGIN);
    crear_cabecera(column);
    mitades_ = new QBoxLayout(QBoxLayout::LeftToRight);
    mitades_->setSpacing(2 * MARGIN);
    mitades_->addWidget(crear_cajas());
    mitades_->addWidget(crear_rejilla(), 1);
    column->addLayout(mitades_, 1);
    desplazable_ = llenar_desplazable(*this, contenido_);

    setFocusProxy(cmbfila);  // the first one: the tab key comes back here from the last
    Form_Load();
    crear_avisos();
}

frmcompuestos::~frmcompuestos() {
    // The focus wanders while the children go, and entries that it leaves speak.
    for (QObject* speaker : std::initializer_list<QObject*>{qApp, cajas_})
        speaker->disconnect(this);
}

// ---- Layout

void frmcompuestos::crear_cabecera(QBoxLayout* column) {
    cmbfila = new QComboBox(contenido_);
    cmbfila->setObjectName(QStringLiteral("cmbfila"));
    cmbfila->setFocusPolicy(Qt::StrongFocus);
    cmbfila->setIconSize(QSize(30, 20));
    cmbfila->installEventFilter(this);
    Label1 = new QLabel(contenido_);
    Label1->setObjectName(QStringLiteral("Label1"));
    cmbecu = new ListaModelos(nombres_modelos(estado_), contenido_);
    cmbecu->setObjectName(QStringLiteral("cmbecu"));
    Label1->setBuddy(cmbecu);
    auto* line = new QHBoxLayout;
    line->setSpacing(2 * SPACING);
    line->addWidget(cmbfila);
    line->addSpacing(MARGIN);
    line->addWidget(Label1);
    line->addWidget(cmbecu, 1);
    line->addStretch(1);
    column->addLayout(line);
}

QWidget* frmcompuestos::crear_cajas() {
    auto* body = new QWidget(contenido_);
    body->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
    lbgas = quiet_label("lbgas", body);
    QFont bold = lbgas->font();
    bold.setBold(true);
    lbgas->setFont(bold);
    imgformula = new ImagenFormula(body);
    imgformula->setObjectName(QStringLiteral("imgformula"));
    cajas_ = new CajasCoeficientes(CajasCoeficientes::Rotulos::Joined, texto_, body);
    for (int k = 0; k < 4; ++k)
        cajas_->box(k)->set_signed(true);  // B of a virial equation and w of helium are negative
    chkdp = new QCheckBox(body);
    chkdp->setObjectName(QStringLiteral("chkdp"));
    lbnota = quiet_label("lbnota", body);
    lbnota->setMinimumHeight(3 * fontMetrics().lineSpacing());
    lbnota->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    critico_ = new PuntoCritico(texto_, body);
    lbpendiente = quiet_label("lbpendiente", body);
    btaceptar = new QPushButton(body);
    btaceptar->setObjectName(QStringLiteral("btaceptar"));
    btaceptar->setDefault(true);
    btaceptar->setFocusPolicy(Qt::TabFocus);  // a click leaves no entry: one refused exponent, one box
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(SPACING);
    buttons->addWidget(lbpendiente, 1);
    buttons->addWidget(btaceptar);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SPACING);
    column->addWidget(lbgas);
    column->addWidget(imgformula);
    column->addWidget(cajas_);
    column->addWidget(chkdp);
    column->addWidget(lbnota);
    column->addWidget(critico_);
    column->addLayout(buttons);
    column->addStretch();
    return body;
}

QWidget* frmcompuestos::crear_rejilla() {
    auto* body = new QWidget(contenido_);
    tabla_ = new TablaGases(
        texto_, estado_.gas_names(), [this]() -> const tavo::confreg::Text& { return estado_.data(); }, this);
    grid = new RejillaGases(tabla_, body);
    grid->setObjectName(QStringLiteral("grid"));
    lbtemperatura = quiet_label("lbtemperatura", body);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(SPACING);
    column->addWidget(grid, 1);
    column->addWidget(lbtemperatura);
    return body;
}

QSize frmcompuestos::sizeHint() const {
    const QSize content = contenido_->sizeHint();
    const int wrapped = contenido_->heightForWidth(content.width());  // -1 where nothing wraps
    return {content.width() + desplazable_->verticalScrollBar()->sizeHint().width(),
            std::max(content.height(), wrapped) + MARGIN};
}

/// The grid beside the boxes, or below them where the window is too narrow.
void frmcompuestos::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    int needed = 2 * MARGIN + mitades_->spacing() + desplazable_->verticalScrollBar()->sizeHint().width();
    for (int i = 0; i < mitades_->count(); ++i)
        needed += mitades_->itemAt(i)->minimumSize().width();
    mitades_->setDirection(width() < needed ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
}

// ---- Wiring

void frmcompuestos::crear_avisos() {
    connect(cmbfila, &QComboBox::currentIndexChanged, this, &frmcompuestos::cmbfila_Click);
    connect(cmbecu, &QComboBox::currentIndexChanged, this, &frmcompuestos::cmbecu_Click);
    connect(chkdp, &QCheckBox::toggled, this, &frmcompuestos::chkdp_Click);
    connect(cajas_, &CajasCoeficientes::edited, this, &frmcompuestos::coeficientes_LostFocus);
    connect(cajas_, &CajasCoeficientes::mu_edited, this, &frmcompuestos::txtmu_LostFocus);
    connect(grid, &RejillaGases::gas_taken, this, &frmcompuestos::grid_Click);
    connect(grid, &RejillaGases::copied, this,
            [this] { estado_.set_status(estado_.texto(627, QStringLiteral("Tabla copiada")), 5000); });
    connect(btaceptar, &QPushButton::clicked, this, &frmcompuestos::btaceptar_Click);
    for (const EntradaNumerica* box : findChildren<EntradaNumerica*>())
        connect(box, &QLineEdit::inputRejected, this, [this] {
            estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
        });
    // A click on what takes no focus, such as the button, leaves it where it is: the frame around would take it.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && contenido_->isAncestorOf(now))
            contenido_->setFocusProxy(now);
        if (now == grid)
            mostrar_cursor();
    });

    connect(grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
        if (grid->hasFocus())
            mostrar_cursor();
    });
    connect(&estado_, &ApplicationState::current_row_changed, this, &frmcompuestos::mostrar_fila);
    connect(&estado_, &ApplicationState::slot_changed, this, &frmcompuestos::slot_Change);
    connect(&estado_, &ApplicationState::gas_removed, this, &frmcompuestos::gas_Removed);
    connect(&estado_, &ApplicationState::gases_changed, this, &frmcompuestos::gases_Changed);
}

void frmcompuestos::Form_Load() {
    if (estado_.current_row < 1 || estado_.current_row > ROWS)
        estado_.set_current_row(1);
    fila_ = estado_.current_row;
    setWindowTitle(estado_.texto(140));
    Label1->setText(estado_.texto(141));
    chkdp->setText(estado_.texto(142));
    chkdp->setToolTip(estado_.texto(735, QStringLiteral("Los coeficientes del gas en la base de datos; los que no "
                                                        "están se deducen de sus constantes críticas")));
    btaceptar->setText(estado_.texto(65));
    cmbecu->setAccessibleName(spoken(Label1->text()));
    for (int i = 1; i <= ROWS; ++i)
        cmbfila->addItem(muestra(i, devicePixelRatioF()), estado_.texto(144) + u' ' + QString::number(i));
    const QString whose = estado_.texto(737, QStringLiteral("Isoterma a la que se refieren el gas, la ecuación y los "
                                                            "coeficientes"));
    cmbfila->setToolTip(whose);
    cmbfila->setAccessibleName(whose);
    const QString how = estado_.texto(733, QStringLiteral("Pulse un gas, o la tecla Espacio sobre él, para llevarlo a "
                                                          "la isoterma elegida"));
    grid->horizontalHeader()->setToolTip(how);
    grid->setAccessibleName(sin_mnemonico(estado_.texto(140)));
    grid->setAccessibleDescription(how);
    tabla_->reload(estado_.gas_count());
    datosnuevos();
}

// ---- The choice that waits

Choice frmcompuestos::eleccion() const {
    const auto& waiting = pendientes_[static_cast<std::size_t>(fila_)];
    return waiting ? waiting->choice : parametros::choice_of(ranura());
}

Choice frmcompuestos::eleccion_escrita() const {
    Choice choice = eleccion();
    const parametros::Coefficients typed = cajas_->coefficients();
    if (!choice.automatic && (choice.own || typed != parametros::Coefficients{}))
        choice.own = typed;
    if (cajas_->mu() != mostrado_.slot.mu)
        choice.mu = cajas_->mu();
    return choice;
}

void frmcompuestos::guardar(const Choice& choice) {
    pendientes_[static_cast<std::size_t>(fila_)] = Pendiente{choice, ranura().gas_number, ranura().equation};
}

/// Changes the choice and shows it, in place of what was being typed.
template <class Step>
void frmcompuestos::cambiar(const Step& step) {
    Choice choice = eleccion();
    step(choice);
    guardar(choice);
    cajas_->forget_edits();
    datosnuevos();
}

/// What waits for a row goes when the row gets another gas or model elsewhere.
void frmcompuestos::slot_Change(int row) {
    if (row < 1 || row > ROWS)
        return;
    auto& waiting = pendientes_[static_cast<std::size_t>(row)];
    const tavo::EquationSlot& slot = estado_.slot_table()[row];
    const bool another = waiting ? waiting->gas != slot.gas_number || waiting->model != slot.equation
                                 : row == fila_ && (mostrado_.slot.gas_number != slot.gas_number ||
                                                    mostrado_.slot.equation != slot.equation);
    if (another)
        waiting.reset();
    if (row != fila_)
        return;
    if (another)
        cajas_->forget_edits();
    datosnuevos();
}

void frmcompuestos::gas_Removed(std::int16_t number) {
    for (auto& waiting : pendientes_)
        if (waiting) {
            parametros::renumber(waiting->choice, number);
            waiting->gas = tavo::Global::renumbered(waiting->gas, number);
        }
}

void frmcompuestos::gases_Changed() {
    for (auto& waiting : pendientes_)
        if (waiting && waiting->choice.gas > estado_.gas_count())
            waiting->choice.gas = 0;
    tabla_->reload(estado_.gas_count());
    datosnuevos();
}

// ---- Showing

void frmcompuestos::mostrar_fila(int row) {
    fila_ = row;
    cajas_->forget_edits();
    datosnuevos();
}

void frmcompuestos::datosnuevos() {
    const QScopedValueRollback writing(mostrando_, true);
    const Choice choice = eleccion();
    mostrado_ = parametros::shown(choice, ranura(), estado_.data());
    cmbfila->setCurrentIndex(fila_ - 1);
    cmbecu->setCurrentIndex(static_cast<int>(choice.model));
    chkdp->setChecked(choice.automatic);
    chkdp->setEnabled(choice.model != EquationOfState::IdealGas);
    const QString name = estado_.gas_names()->index(choice.gas - 1, 0).data().toString();
    lbgas->setText(estado_.texto(441, QStringLiteral("%1: %2")).arg(estado_.texto(50), name.isEmpty() ? NOBODY : name));
    imgformula->set_model(choice.model);
    mostrar_cajas(mostrado_);
    mostrar_rejilla();
    mostrar_consecuencias();
}

void frmcompuestos::mostrar_cajas(const parametros::Shown& what) {
    const bool automatic = chkdp->isChecked();
    const auto values = what.complete ? std::optional(coefficients_of(what.slot.gas)) : std::nullopt;
    cajas_->update_values(what.slot.equation, values, what.slot.mu);
    cajas_->set_read_only({automatic, automatic, automatic, automatic});
    cajas_->set_by_hand(what.slot.parameters);
}

/// The grid scrolls to its cursor by itself, but may reach below the window.
void frmcompuestos::mostrar_cursor() {
    const QRect row = grid->visualRect(grid->currentIndex());
    const QPoint at = grid->viewport()->mapTo(contenido_, QPoint(0, row.center().y()));
    desplazable_->ensureVisible(at.x(), at.y(), 0, 2 * row.height());
}

void frmcompuestos::mostrar_rejilla() {
    const tavo::EquationSlot& slot = mostrado_.slot;
    tabla_->show_model(slot.equation, slot.temperature, eleccion().mu, estado_.texto(143));
    if (tabla_->set_chosen(slot.gas_number) || !grid->currentIndex().isValid())
        grid->show_gas(slot.gas_number);
    const QString degrees = QString::fromStdString(tavo::to_text(slot.temperature));
    lbtemperatura->setText(
        parametros::follows_temperature(slot.equation)
            ? estado_.texto(732, QStringLiteral("Valores a la temperatura de la isoterma: %1 K")).arg(degrees)
            : QString());
}

/// What follows from the coefficients in the boxes.
void frmcompuestos::mostrar_consecuencias() {
    const Choice choice = eleccion();
    QString note;
    if (mostrado_.fault != Fault::None)
        note = motivo(mostrado_.fault, mostrado_.detail);
    else if (mostrado_.slot.parameters && parametros::follows_temperature(choice.model))
        note = estado_.texto(642, QStringLiteral("Coeficientes puestos a mano: no siguen a la temperatura"));
    lbnota->setText(note);
    critico_->show_point(mostrado_.slot.gas,
                         mostrado_.complete ? tavo::calcnum::critical_point(mostrado_.slot) : std::nullopt);
    lbpendiente->setText(
        parametros::pending(choice, ranura()) ? estado_.texto(736, QStringLiteral("Cambios sin aplicar")) : QString());
}

QString frmcompuestos::motivo(Fault fault, const std::string& detail) const {
    if (fault == Fault::SmallMu)
        return estado_.texto(93);
    const QString known = estado_.gas_problem(eleccion().gas);
    return estado_.texto(613,
                         QStringLiteral("Faltan datos de este gas para el modelo elegido. Elija otro modelo u otro "
                                        "gas.")) +
           u'\n' + (known.isEmpty() ? QString::fromStdString(detail) : known);
}

void frmcompuestos::avisar(const QString& texto) {
    mensajes_.mostrar(texto, INFORMATION, {});
}

// ---- What the user does

void frmcompuestos::cmbfila_Click() {
    if (mostrando_)
        return;
    const int row = cmbfila->currentIndex() + 1;
    estado_.set_current_row(row);  // which comes back to mostrar_fila
    if (row != fila_)
        mostrar_fila(row);
}

void frmcompuestos::cmbecu_Click() {
    if (mostrando_)
        return;
    cambiar([this](Choice& choice) {
        const auto model = static_cast<EquationOfState>(cmbecu->currentIndex());
        parametros::take_model(choice, model, ranura(), estado_.data());
    });
}

void frmcompuestos::chkdp_Click() {
    if (mostrando_)
        return;
    cambiar(
        [this](Choice& choice) { parametros::set_automatic(choice, chkdp->isChecked(), ranura(), estado_.data()); });
}

void frmcompuestos::grid_Click(int row) {
    cambiar([this, row](Choice& choice) {
        parametros::take_gas(choice, static_cast<std::int16_t>(row + 1), ranura(), estado_.data());
    });
    if (mostrado_.fault == Fault::None)  // else the note says it
        estado_.tell_problem(eleccion().gas);
}

void frmcompuestos::coeficientes_LostFocus() {
    Choice choice = eleccion();
    if (choice.automatic)
        return;
    choice.own = cajas_->coefficients();
    choice.mu = mostrado_.slot.mu;
    guardar(choice);
    mostrado_ = parametros::shown(choice, ranura(), estado_.data());
    mostrar_consecuencias();  // the boxes keep their texts
}

void frmcompuestos::txtmu_LostFocus() {
    aceptar_mu();
}

bool frmcompuestos::aceptar_mu() {
    const double mu = cajas_->mu();
    if (mu > 1.0) {
        cambiar([this, mu](Choice& choice) { parametros::take_exponent(choice, mu, ranura(), estado_.data()); });
        return true;
    }
    cajas_->forget_edits();
    mostrar_cajas(mostrado_);
    avisar(estado_.texto(93));
    cajas_->mu_box()->selectAll();
    return false;
}

bool frmcompuestos::cajas_llenas() {
    const auto texts = tavo::find_model(mostrado_.slot.equation)->texts;
    for (std::size_t k = 0; k < texts.size(); ++k) {
        EntradaNumerica* box = cajas_->box(static_cast<int>(k));
        if (!box->text().trimmed().isEmpty())
            continue;
        const QString name = QString::fromUtf8(texts[k].name);
        avisar(estado_.texto(734, QStringLiteral("Falta un número en el coeficiente %1.")).arg(name));
        box->setFocus();
        return false;
    }
    return true;
}

void frmcompuestos::btaceptar_Click() {
    const bool has_mu = mostrado_.slot.equation == EquationOfState::FreeExponent;
    if (has_mu && cajas_->mu() != mostrado_.slot.mu && !aceptar_mu())
        return;
    Choice choice = eleccion();
    if (choice.model != EquationOfState::IdealGas) {
        if (choice.gas < 1)
            return avisar(estado_.texto(730, QStringLiteral("Elija un gas en la tabla antes de aplicar los "
                                                            "coeficientes.")));
        if (!choice.automatic) {
            if (!cajas_llenas())
                return;
            choice.own = cajas_->coefficients();
            choice.mu = mostrado_.slot.mu;
        }
    }
    tavo::EquationSlot& slot = estado_.slot_table()[fila_];
    const bool another_curve = slot.gas_number != choice.gas || slot.equation != choice.model;
    try {
        parametros::apply(choice, slot, estado_.data(), estado_.amount_unit() == AmountUnit::Grams);
    } catch (const tavo::Error& error) {
        const QString sentence =
            estado_.texto(553, QStringLiteral("No se puede cargar el gas de la fila %1.")).arg(fila_);
        const Fault fault = mostrado_.fault == Fault::None ? Fault::BadGas : mostrado_.fault;
        return avisar(sentence + u'\n' + motivo(fault, error.what()));
    }
    pendientes_[static_cast<std::size_t>(fila_)].reset();
    cajas_->forget_edits();
    emit estado_.slot_changed(fila_);
    anunciar_y_dibujar(another_curve);
}

/// Another gas or model wants other ranges; other coefficients are compared in those that are shown. The plot empties
/// the status line as it takes the rows, and tells there what it cannot draw.
void frmcompuestos::anunciar_y_dibujar(bool another_curve) {
    PlotView* plot = estado_.plot();
    if (plot && another_curve)
        plot->actualiza();
    estado_.set_status(estado_.texto(731, QStringLiteral("Coeficientes aplicados a la isoterma %1")).arg(fila_), 5000);
    if (plot)
        plot->dibuja();
}

bool frmcompuestos::puede_cerrar() {
    QStringList rows;
    for (int i = 1; i <= ROWS; ++i) {
        const auto& waiting = pendientes_[static_cast<std::size_t>(i)];
        const tavo::EquationSlot& slot = estado_.slot_table()[i];
        const Choice choice = i == fila_ ? eleccion_escrita() : waiting ? waiting->choice : parametros::choice_of(slot);
        if (parametros::holds_typed_numbers(choice, slot, estado_.data()))
            rows << QString::number(i);
    }
    const QString question = estado_.texto(738, QStringLiteral("Hay coeficientes escritos que no se han aplicado "
                                                               "(isoterma %1). ¿Cerrar la ventana sin aplicarlos?"));
    return rows.isEmpty() ||
           mensajes_.mostrar(question.arg(rows.join(QStringLiteral(", "))), YES_NO, {}) == Respuesta::Si;
}

void frmcompuestos::closeEvent(QCloseEvent* event) {
    event->setAccepted(puede_cerrar());
}

void frmcompuestos::keyPressEvent(QKeyEvent* event) {
    // The box has told its edit before the key comes here; that of the exponent may have been refused.
    const bool in_box = qobject_cast<const EntradaNumerica*>(focusWidget()) && focusWidget() != cajas_->mu_box();
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && in_box)
        btaceptar->click();
    else
        QWidget::keyPressEvent(event);
}

bool frmcompuestos::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel && watched == cmbfila && !cmbfila->hasFocus()) {
        event->ignore();  // the wheel that scrolls past chooses nothing
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

#include "windows/lab/frmoperaciones.h"

#include <QApplication>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimer>

#include <algorithm>
#include <utility>

#include "controls/desplazable.h"
#include "controls/texto_estado.h"
#include "core/gas_database.h"
#include "core/numtext.h"
#include "shell/textos.h"

using calculos::Unsolvable;
using calculos::VARIABLES;

namespace {

constexpr int INFORMATION = 64;
constexpr int STATE_LINES = 8;
constexpr int COLUMN_WIDTH = 320;
constexpr int MARGIN = 12, GAP = 6;
constexpr const char* INSTRUMENT_PATTERN = "###0.00";

using Variable = calculos::Variable;
constexpr std::array MEASURED{Variable::Temperature, Variable::Volume, Variable::Pressure};

/// The two variables that an unknown is calculated from, in the order of their validation.
std::array<Variable, 2> given_for(Variable unknown) {
    switch (unknown) {
        case Variable::Volume:
            return {Variable::Temperature, Variable::Pressure};
        case Variable::Temperature:
            return {Variable::Pressure, Variable::Volume};
        default:
            return {Variable::Temperature, Variable::Volume};
    }
}

double& value_of(calculos::Input& input, Variable variable) {
    switch (variable) {
        case Variable::Temperature:
            return input.t;
        case Variable::Volume:
            return input.v;
        case Variable::Pressure:
            return input.p;
        default:
            return input.n;
    }
}

double value_of(const calculos::Output& output, Variable variable) {
    return variable == Variable::Temperature ? output.t : variable == Variable::Volume ? output.v : output.p;
}

QString format(double x, const char* pattern) {
    return QString::fromStdString(tavo::Format(x, pattern));
}

std::array<double, 4> coefficients(const tavo::EquationSlot& slot) {
    return {slot.gas.a, slot.gas.b, slot.gas.c, slot.gas.d};
}

int caption_number(Variable variable) {
    return 70 + static_cast<int>(variable);
}

/// The button of the instrument in use stands out in every style and palette.
void mark_choice(QToolButton* button) {
    QPalette ink = QApplication::palette(button);
    if (button->isChecked())
        for (const auto group : {QPalette::Active, QPalette::Inactive}) {
            ink.setColor(group, QPalette::Button, ink.color(QPalette::Active, QPalette::Highlight));
            ink.setColor(group, QPalette::ButtonText, ink.color(QPalette::Active, QPalette::HighlightedText));
        }
    button->setPalette(ink);
}

}  // namespace

frmoperaciones::frmoperaciones(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QWidget(padre), estado_(estado), mensajes_(mensajes) {
    setObjectName(QStringLiteral("frmoperaciones"));
    auto* content = new QWidget;
    auto* row = new QHBoxLayout(content);
    row->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    row->setSpacing(MARGIN);
    row->addWidget(crear_columna(content));
    row->addWidget(crear_instrumentos(content), 1);
    llenar_desplazable(*this, content);

    conectar_controles();
    textos_instrumentos();
    Form_Load();
    setFocusProxy(filas_->entry(Variable::Temperature));
}

QSize frmoperaciones::sizeHint() const {
    return {1120, 610};
}

// ---- Layout

/// Gas, model, entries and what the calculation says; scrolls by itself, so that the instruments stay in sight.
QWidget* frmoperaciones::crear_columna(QWidget* padre) {
    auto* column = new QWidget(padre);
    auto* lines = new QVBoxLayout(column);
    lines->setContentsMargins(0, 0, GAP, 0);
    lines->setSpacing(MARGIN);
    panel_ = new PanelModelo(texto(), estado_.gas_names(), nombres_modelos(estado_), column);
    filas_ = new FilasEstado(
        texto(), [this] { return ranura_.gas.pm; }, column);
    lbestado = new LineaEstado(STATE_LINES, column);
    lbestado->setObjectName(QStringLiteral("lbestado"));
    lbestado->setAccessibleName(estado_.texto(623, QStringLiteral("Estado")));
    lines->addWidget(panel_);
    lines->addWidget(filas_);
    lines->addWidget(lbestado);
    lines->addStretch();
    QScrollArea* area = desplazable(column);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setFixedWidth(std::max(COLUMN_WIDTH, column->minimumSizeHint().width()) +
                        area->verticalScrollBar()->sizeHint().width());
    return area;
}

QWidget* frmoperaciones::crear_instrumentos(QWidget* padre) {
    auto* place = new QWidget(padre);
    auto* heading = new QLabel(place);
    heading->setObjectName(QStringLiteral("lbpiston"));
    heading->setAlignment(Qt::AlignCenter);
    piston_ = new MarcoPiston(place);
    QWidget* thermometers = crear_eleccion(bttermometro, "bttermometro", bttermopar, "bttermopar", place);
    termometros = new MarcoTermometros(place);
    termometros->setObjectName(QStringLiteral("termometros"));
    QWidget* barometers = crear_eleccion(btbarometro, "btbarometro", btmanometro, "btmanometro", place);
    barometros = new MarcoBarometros(place);
    barometros->setObjectName(QStringLiteral("barometros"));

    auto* row = new QHBoxLayout(place);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(MARGIN);
    row->addWidget(crear_estacion(heading, piston_, place), 1);
    row->addWidget(crear_estacion(thermometers, termometros, place), 1);
    row->addWidget(crear_estacion(barometers, barometros, place), 1);
    return place;
}

QWidget* frmoperaciones::crear_estacion(QWidget* cabecera, Lamina* marco, QWidget* padre) {
    auto* station = new QWidget(padre);
    auto* column = new QVBoxLayout(station);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(GAP);
    column->addWidget(cabecera);
    column->addWidget(marco, 1);
    cabecera->setFixedHeight(bttermometro->sizeHint().height());
    return station;
}

QWidget* frmoperaciones::crear_eleccion(QToolButton*& one, const char* one_name, QToolButton*& other,
                                        const char* other_name, QWidget* padre) {
    auto* pair = new QWidget(padre);
    auto* row = new QHBoxLayout(pair);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    auto* group = new QButtonGroup(pair);  // exclusive
    const auto button = [&](const char* name) {
        auto* made = new QToolButton(pair);
        made->setObjectName(QLatin1String(name));
        made->setCheckable(true);
        made->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        made->setFocusPolicy(Qt::StrongFocus);
        connect(made, &QToolButton::toggled, made, [made] { mark_choice(made); });
        group->addButton(made);
        row->addWidget(made);
        return made;
    };
    one = button(one_name);
    other = button(other_name);
    return pair;
}

void frmoperaciones::conectar_controles() {
    connect(panel_, &PanelModelo::gas_chosen, this, &frmoperaciones::cmbgas_Click);
    connect(panel_, &PanelModelo::model_chosen, this, &frmoperaciones::cmbecu_Click);
    connect(panel_, &PanelModelo::coefficients_edited, this, &frmoperaciones::coeficientes_LostFocus);
    connect(panel_, &PanelModelo::mu_edited, this, &frmoperaciones::txtmu_LostFocus);
    connect(panel_, &PanelModelo::automatic_wanted, this, &frmoperaciones::btautomatico_Click);
    connect(filas_, &FilasEstado::edited, this, &frmoperaciones::entrada_Change);
    connect(filas_, &FilasEstado::unknown_chosen, this, &frmoperaciones::marcador_Click);
    connect(filas_, &FilasEstado::unit_changed, this, &frmoperaciones::unidad_Click);
    connect(bttermometro, &QToolButton::clicked, this, &frmoperaciones::bttermometro_Click);
    connect(bttermopar, &QToolButton::clicked, this, &frmoperaciones::bttermopar_Click);
    connect(btbarometro, &QToolButton::clicked, this, &frmoperaciones::btbarometro_Click);
    connect(btmanometro, &QToolButton::clicked, this, &frmoperaciones::btmanometro_Click);
    for (Instrumento* instrument : {piston_->pctpiston, termometros->termometro, termometros->termopar,
                                    barometros->barometro1, barometros->Manometro})
        conectar_instrumento(instrument);
    for (const Variable variable : VARIABLES) {
        const laboratorio::Limits& limits = laboratorio::limits(variable);
        filas_->set_range(variable, limits.minimum, limits.maximum);
    }
    qApp->installEventFilter(this);  // for the release of the mouse, wherever
    for (const EntradaNumerica* box : findChildren<EntradaNumerica*>())
        connect(box, &QLineEdit::inputRejected, this, [this] {
            estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
        });
    connect(&estado_, &ApplicationState::gas_removed, this,
            [this](std::int16_t number) { tavo::Global::follow_removal(ranura_, number); });
    connect(&estado_, &ApplicationState::gases_changed, this, &frmoperaciones::gases_Change);
}

void frmoperaciones::conectar_instrumento(Instrumento* instrument) {
    const auto moves = [this, instrument](double value) { instrumento_MouseMove(*instrument, value); };
    connect(instrument, &Instrumento::MouseDown, this, moves);
    connect(instrument, &Instrumento::MouseMove, this, moves);
    connect(instrument, &Instrumento::MouseUp, this, &frmoperaciones::instrumento_MouseUp);
    connect(instrument, &Instrumento::key_step, this,
            [this, instrument](double value) { instrumento_key_step(*instrument, value); });
}

void frmoperaciones::textos_instrumentos() {
    findChild<QLabel*>(QStringLiteral("lbpiston"))->setText(estado_.texto(678, QStringLiteral("Cilindro con pistón")));
    const auto button = [](QToolButton* control, const QString& text, const QString& tip, Instrument instrument,
                           const QString& unit) {
        const laboratorio::Scale& scale = laboratorio::scale(instrument);
        control->setText(text);
        control->setToolTip(
            tip.arg(format(scale.minimum, "##0.00") + u' ' + unit, format(scale.maximum, "##0.00") + u' ' + unit));
    };
    const QString kelvin = QStringLiteral("ºK"), atmospheres = QStringLiteral("atm");
    button(bttermometro, estado_.texto(652, QStringLiteral("Termómetro")),
           estado_.texto(674, QStringLiteral("Mide la temperatura con el termómetro de mercurio, de %1 a %2")),
           Instrument::Thermometer, kelvin);
    button(bttermopar, estado_.texto(653, QStringLiteral("Termopar")),
           estado_.texto(675, QStringLiteral("Mide la temperatura con el termopar, de %1 a %2")),
           Instrument::Thermocouple, kelvin);
    button(btbarometro, estado_.texto(654, QStringLiteral("Barómetro")),
           estado_.texto(676, QStringLiteral("Mide la presión con el barómetro de mercurio, de %1 a %2")),
           Instrument::Barometer, atmospheres);
    button(btmanometro, estado_.texto(655, QStringLiteral("Manómetro")),
           estado_.texto(677, QStringLiteral("Mide la presión con el manómetro, de %1 a %2")), Instrument::Manometer,
           atmospheres);
    for (Lamina* sheet : std::initializer_list<Lamina*>{piston_, termometros, barometros})
        sheet->set_texts(texto());
}

// ---- Load

void frmoperaciones::Form_Load() {
    setWindowTitle(sin_mnemonico(estado_.texto(21)));
    ranura_ = {};
    ranura_.gas_number = estado_.gas_count() > 0 ? 1 : 0;
    filas_->show_text(Variable::Amount, QStringLiteral("1.000"));
    filas_->show_text(Variable::Temperature, QStringLiteral("300.0000"));
    filas_->show_text(Variable::Volume, QStringLiteral("6.1460"));
    filas_->show_text(Variable::Pressure, QStringLiteral("1.0000"));
    filas_->set_unknown(Variable::Pressure);
    termometros->use(estado_.thermocouple_in_use ? Instrument::Thermocouple : Instrument::Thermometer);
    (estado_.thermocouple_in_use ? bttermopar : bttermometro)->setChecked(true);
    barometros->use(estado_.manometer_in_use ? Instrument::Manometer : Instrument::Barometer);
    (estado_.manometer_in_use ? btmanometro : btbarometro)->setChecked(true);
    cambiar(Ocasion::Opening, [this] {
        muestra_ranura();
        elegir();
    });
}

// ---- One change of the state

/// Runs a change over the window's own slot 0; the boxes come when everything is drawn.
template <class Change>
void frmoperaciones::cambiar(Ocasion ocasion, Change&& change) {
    if (estado_.calculating)
        return;
    toma_caja_de_coeficientes();
    {
        const calculos::InSlot0 own(estado_.slot_table(), ranura_);
        const QScopedValueRollback calculating(estado_.calculating, true);
        ocasion_ = ocasion;
        change();
    }
    muestra_estado();
    muestra_cajas();
}

/// A coefficient that is being typed counts, although its box has not been left: spin buttons and unit labels take no
/// focus.
void frmoperaciones::toma_caja_de_coeficientes() {
    auto* box = qobject_cast<EntradaNumerica*>(focusWidget());
    if (box && panel_->isAncestorOf(box))
        emit box->LostFocus();
}

void frmoperaciones::muestra_ranura() {
    panel_->show_slot(ranura());
    mostrada_ = ranura();
}

void frmoperaciones::cargar(std::int16_t gas, tavo::EquationOfState model) {
    try {
        calculos::choose(estado_.data(), ranura(), gas, model);
    } catch (const Unsolvable&) {
        // The calculation says the same.
    }
}

/// Loads the gas and the model of the lists.
void frmoperaciones::elegir() {
    cargar(panel_->gas(), panel_->model());
    muestra_ranura();
    calcular_y_dibujar();
}

void frmoperaciones::cmbgas_Click() {
    cambiar(Ocasion::Decision, [this] { elegir(); });
    if (salida_)  // else the sentence about the calculation says it
        estado_.tell_problem(ranura_.gas_number);
}

void frmoperaciones::cmbecu_Click() {
    if (panel_->model() == tavo::EquationOfState::Virial)
        mensajes_.mostrar(estado_.texto(87) + '\r' + estado_.texto(88) + '\r' + estado_.texto(89), INFORMATION, {});
    cambiar(Ocasion::Decision, [this] { elegir(); });
}

void frmoperaciones::gases_Change() {
    if (ranura_.gas_number > estado_.gas_count())
        tavo::Global::drop_gas(ranura_);
    cambiar(Ocasion::Opening, [this] {
        try {
            calculos::reload(estado_.data(), ranura());
        } catch (const Unsolvable&) {
            // The calculation says the same.
        }
        muestra_ranura();
        calcular_y_dibujar();
    });
}

void frmoperaciones::coeficientes_LostFocus() {
    cambiar(Ocasion::Decision, [this] {
        const auto [a, b, c, d] = panel_->coefficients();
        calculos::set_coefficients(ranura(), a, b, c, d);
        muestra_ranura();
        calcular_y_dibujar();
    });
}

void frmoperaciones::txtmu_LostFocus() {
    cambiar(Ocasion::Decision, [this] {
        try {
            calculos::set_mu(estado_.data(), ranura(), panel_->mu());
        } catch (const Unsolvable& fault) {
            if (fault.reason() == calculos::Reason::SmallMu)
                cajas_ << estado_.texto(93);
        }
        muestra_ranura();
        calcular_y_dibujar();
    });
}

void frmoperaciones::btautomatico_Click() {
    cambiar(Ocasion::Decision, [this] {
        try {
            calculos::set_automatic(estado_.data(), ranura());
        } catch (const Unsolvable&) {
            // The calculation says the same.
        }
        muestra_ranura();
        calcular_y_dibujar();
    });
}

void frmoperaciones::entrada_Change(Variable) {
    cambiar(filas_->stepping() ? Ocasion::Step : Ocasion::Decision, [this] { calcular_y_dibujar(); });
}

void frmoperaciones::marcador_Click() {
    cambiar(Ocasion::Decision, [this] { calcular_y_dibujar(); });
}

/// An amount is another one in another unit; the others are the same state.
void frmoperaciones::unidad_Click(Variable variable) {
    if (variable == Variable::Amount)
        return cambiar(Ocasion::Decision, [this] { calcular_y_dibujar(); });
    pronuncia(variable);
    if (salida_)
        describe();
    else if (fallo_)
        fracasa(motivo());
    muestra_estado();
}

void frmoperaciones::elegir_termometro(bool thermocouple) {
    estado_.thermocouple_in_use = thermocouple;
    termometros->use(thermocouple ? Instrument::Thermocouple : Instrument::Thermometer);
    cambiar(Ocasion::Decision, [this] { actualiza_temperatura(); });
}

void frmoperaciones::elegir_barometro(bool manometer) {
    estado_.manometer_in_use = manometer;
    barometros->use(manometer ? Instrument::Manometer : Instrument::Barometer);
    cambiar(Ocasion::Decision, [this] { actualiza_presion(); });
}

// ---- Instruments in hand

void frmoperaciones::instrumento_MouseMove(const Instrumento& instrument, double value) {
    cambiar(Ocasion::Drag, [&] { mover(instrument, value); });
}

void frmoperaciones::instrumento_key_step(const Instrumento& instrument, double value) {
    cambiar(Ocasion::Step, [&] { mover(instrument, value); });
}

/// The instrument's value becomes the state's; the unknown's instrument follows, the third one stays. What is in hand
/// cannot be the unknown, so another variable takes that over first.
void frmoperaciones::mover(const Instrumento& instrument, double value) {
    const Variable moved = laboratorio::variable(instrument.kind());
    const Variable unknown = laboratorio::unknown_after_drag(instrument.kind(), filas_->unknown());
    if (unknown != filas_->unknown())
        filas_->set_unknown(unknown);
    filas_->show_value(moved, value, INSTRUMENT_PATTERN);
    if (moved == Variable::Temperature)
        emit filas_->entry(moved)->LostFocus();
    calcular();
    if (rechazada_) {
        muestra(moved);
    } else {
        actualiza(moved);
        if (salida_)
            actualiza(unknown);
    }
    dibuja_gas();
}

/// The hand lets go of an instrument, a spin button or whatever it pressed: now the boxes that waited may come.
void frmoperaciones::instrumento_MouseUp() {
    for (const Variable variable : VARIABLES)
        if (std::exchange(aviso(variable).pending, false) && rechazada_.value_or(variable) == variable)
            cajas_ << aviso(variable).sentence;  // of a refused state nothing else is told
    muestra_cajas();
}

void frmoperaciones::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && btmanometro)
        for (QToolButton* button : {bttermometro, bttermopar, btbarometro, btmanometro})
            mark_choice(button);
}

bool frmoperaciones::eventFilter(QObject* watched, QEvent* event) {
    const bool waiting = !cajas_.isEmpty() || std::ranges::any_of(avisos_, &Aviso::pending);
    if (event->type() == QEvent::MouseButtonRelease && waiting)  // what was pressed hears of it first
        QTimer::singleShot(0, this, &frmoperaciones::instrumento_MouseUp);
    return QWidget::eventFilter(watched, event);
}

/// A box would take the release away from what is pressed: it would stay down, or answer to a hand that is gone. The
/// press that leaves an entry is such a case.
bool frmoperaciones::hand_busy() const {
    if (QGuiApplication::mouseButtons().testFlag(Qt::LeftButton))
        return true;
    for (const Variable variable : VARIABLES)
        for (const QToolButton* button : filas_->spin(variable)->findChildren<QToolButton*>())
            if (button->isDown())
                return true;
    return false;
}

// ---- Calculation

void frmoperaciones::calcular() {
    salida_.reset();
    fallo_.reset();
    rechazada_.reset();
    if (!valida(Variable::Amount))
        return;
    if (!completa())
        return fracasa(estado_.texto(679, QStringLiteral("Faltan datos: escriba las otras dos variables.")));
    for (const Variable given : given_for(filas_->unknown()))
        if (!valida(given))
            return;
    resolver();
}

bool frmoperaciones::completa() const {
    for (const Variable given : given_for(filas_->unknown()))
        if (filas_->entry(given)->text().isEmpty())
            return false;
    return true;
}

bool frmoperaciones::valida(Variable variable) {
    const auto refusal =
        laboratorio::refusal(variable, filas_->shown_value(variable), filas_->unit(variable).toStdString());
    if (!refusal) {
        if (variable == Variable::Amount)
            sin_aviso(variable);
        return true;
    }
    const QString limit = QString::fromStdString(tavo::to_text(refusal->limit));
    const QString sentence = estado_.texto(refusal->text) + u' ' + limit + u' ' + filas_->unit(variable);
    rechazada_ = variable;
    fracasa(sentence);
    avisa(variable, refusal->text, sentence);
    return false;
}

void frmoperaciones::resolver() {
    const Variable unknown = filas_->unknown();
    try {
        calculos::Input input{unknown, 0.0, 0.0, 0.0, 0.0};
        input.n =
            calculos::moles(filas_->value(Variable::Amount), filas_->unit(Variable::Amount).toStdString(), ranura());
        for (const Variable given : given_for(unknown))
            value_of(input, given) = filas_->value(given);
        salida_ = calculos::solve(estado_.data(), estado_.slot_table(), input);
        filas_->show_value(unknown, value_of(*salida_, unknown),
                           unknown == Variable::Temperature ? "####0.00" : "####0.0000");
        if (coefficients(ranura()) != coefficients(mostrada_))  // the panel repaints much
            muestra_ranura();
        describe();
    } catch (const Unsolvable& fault) {
        fallo_ = fault;
    } catch (const tavo::FloatingPointError& fault) {
        fallo_ = Unsolvable(calculos::Reason::NotFinite, fault.what());
    }
    if (fallo_)
        fracasa(motivo());
}

void frmoperaciones::calcular_y_dibujar() {
    calcular();
    for (const Variable variable : MEASURED)
        if (rechazada_ || (fallo_ && variable == filas_->unknown()))
            muestra(variable);  // one fault, one box
        else
            actualiza(variable);
    dibuja_gas();
}

// ---- Instruments

Instrumento* frmoperaciones::instrumento(Variable variable) const {
    switch (variable) {
        case Variable::Temperature:
            return termometros->in_use();
        case Variable::Pressure:
            return barometros->in_use();
        default:
            return piston_->pctpiston;
    }
}

/// From the entry into the state and onto the instrument in use; outside its scale it stands at the nearer limit.
void frmoperaciones::actualiza(Variable variable) {
    if (filas_->entry(variable)->text().isEmpty())
        return sin_aviso(variable);
    const double value = filas_->value(variable);
    if (variable == Variable::Temperature && value > 0.0)
        ranura().temperature = value;  // the next calculation loads the coefficients for it
    const Instrument kind = instrumento(variable)->kind();
    if (laboratorio::inside(kind, value)) {
        filas_->show_value(variable, value, INSTRUMENT_PATTERN);
        sin_aviso(variable);
    } else {
        avisa(variable, laboratorio::range_text(kind), estado_.texto(laboratorio::range_text(kind)));
    }
    dibuja(variable);
}

/// Draws it without a new box; a value that has come back to its scale is no longer said to be off it.
void frmoperaciones::muestra(Variable variable) {
    if (rechazada_ != variable && laboratorio::inside(instrumento(variable)->kind(), filas_->value(variable)))
        sin_aviso(variable);
    dibuja(variable);
}

void frmoperaciones::dibuja(Variable variable) {
    if (filas_->entry(variable)->text().isEmpty())
        return;
    instrumento(variable)->set_value(filas_->value(variable));
    pronuncia(variable);
}

void frmoperaciones::dibuja_gas() {
    const tavo::EquationSlot& slot = ranura();
    piston_->set_gas(slot.moles, slot.temperature);
}

/// What a screen reader says of the instrument.
void frmoperaciones::pronuncia(Variable variable) {
    QString caption = sin_mnemonico(estado_.texto(caption_number(variable)));
    while (caption.endsWith(u':') || caption.endsWith(u' ') || caption.endsWith(QChar::Nbsp))
        caption.chop(1);
    instrumento(variable)->set_spoken(caption, filas_->entry(variable)->text() + u' ' + filas_->unit(variable));
}

// ---- Messages

void frmoperaciones::avisa(Variable variable, int number, const QString& sentence) {
    Aviso& one = aviso(variable);
    const bool known = one.number == number;
    one.number = number;
    one.sentence = sentence;
    const bool wanted =
        ocasion_ == Ocasion::Decision || ocasion_ == Ocasion::Drag || (ocasion_ == Ocasion::Step && !known);
    if (!wanted)
        return;
    one.pending = ocasion_ == Ocasion::Drag || hand_busy();
    if (!one.pending)
        cajas_ << sentence;
}

void frmoperaciones::sin_aviso(Variable variable) {
    aviso(variable) = {};
}

void frmoperaciones::describe() {
    frase_ = texto_estado(texto(), *salida_, estado_.slot_table(), filas_->unit(Variable::Volume),
                          filas_->unit(Variable::Pressure));
}

void frmoperaciones::fracasa(const QString& sentence) {
    salida_.reset();
    frase_ = sentence;
}

QString frmoperaciones::motivo() const {
    const QString sentence = texto_fallo(texto(), *fallo_, filas_->unit(Variable::Volume));
    const bool bad_gas = fallo_->reason() == calculos::Reason::BadGas;
    const QString fault = bad_gas ? estado_.gas_problem(panel_->gas()) : QString();
    return fault.isEmpty() ? sentence : sentence + u' ' + fault;
}

/// What the calculation says, and which values are outside their scales, for as long as they are.
void frmoperaciones::muestra_estado() {
    QStringList sentences(frase_);
    for (const Aviso& one : avisos_)
        if (!one.sentence.isEmpty() && one.sentence != frase_)
            sentences << one.sentence;
    if (salida_)
        lbestado->set_outcome(sentences.join(u'\n'));
    else
        lbestado->set_fault(sentences.join(u'\n'));
}

void frmoperaciones::muestra_cajas() {
    if (hand_busy())
        return;
    const QStringList boxes = std::exchange(cajas_, {});
    for (const QString& sentence : boxes)
        mensajes_.mostrar(sentence, INFORMATION, {});
    if (!boxes.isEmpty() && rechazada_ && !qobject_cast<Instrumento*>(focusWidget())) {
        filas_->entry(*rechazada_)->setFocus(Qt::OtherFocusReason);
        filas_->entry(*rechazada_)->selectAll();
    }
}

Texto frmoperaciones::texto() const {
    return [&estado = estado_](int number, const QString& literal) { return estado.texto(number, literal); };
}

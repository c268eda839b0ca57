#include "windows/gasedit/frmgases.h"

#include <QApplication>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

#include "controls/desplazable.h"
#include "controls/lista_modelos.h"
#include "core/calcnum.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/numtext.h"
#include "shell/textos.h"
#include "windows/gasedit/parametros_logica.h"

using tavo::EquationOfState;

namespace {

constexpr int INFORMATION = 64, EXCLAMATION = 48, YES_NO = 36;
constexpr int MARGIN = 12, SPACING = 6;
constexpr int FREE_TEXT = 0, DECIMAL = 2;  // of an entry box
constexpr int LEFT = 0, RIGHT = 1;
constexpr const char* CONSTANT = "####0.0000";

QString format(double x) {
    return QString::fromStdString(tavo::Format(x, CONSTANT));
}

/// Sentences of a changing length that leave everything below them in its place.
class Nota final : public QLabel {
public:
    Nota(int lines, QWidget* padre) : QLabel(padre), lines_(lines) {
        setWordWrap(true);
        setTextFormat(Qt::PlainText);
        setAlignment(Qt::AlignLeft | Qt::AlignTop);
        setTextInteractionFlags(Qt::TextSelectableByMouse);
    }

    QSize sizeHint() const override { return {QLabel::sizeHint().width(), height_of_lines()}; }
    QSize minimumSizeHint() const override { return {0, height_of_lines()}; }
    bool hasHeightForWidth() const override { return false; }

private:
    int height_of_lines() const { return lines_ * fontMetrics().lineSpacing() + 2 * (margin() + frameWidth()); }

    int lines_;
};

}  // namespace

frmgases::frmgases(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QWidget(padre),
      estado_(estado),
      mensajes_(mensajes),
      texto_([&estado](int number, const QString& literal) { return estado.texto(number, literal); }) {
    setObjectName(QStringLiteral("frmgases"));
    setWindowTitle(sin_mnemonico(estado_.texto(190)));
    contenido_ = new QWidget;
    partes_ = new QBoxLayout(QBoxLayout::LeftToRight, contenido_);
    partes_->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    partes_->setSpacing(MARGIN);
    partes_->addWidget(crear_gas(), 1);
    partes_->addWidget(crear_coeficientes(), 1);
    desplazable_ = llenar_desplazable(*this, contenido_);
    setFocusProxy(cmbgas);
    crear_avisos();
    elegir(0);
    cargando_ = false;
}

frmgases::~frmgases() {
    // The focus wanders while the children go, and entries that it leaves speak.
    qApp->disconnect(this);
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
}

// ---- Layout

QWidget* frmgases::crear_gas() {
    auto* body = new QWidget(contenido_);
    auto* column = new QVBoxLayout(body);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(MARGIN);

    const QString caption = estado_.texto(50);
    Label1 = new QLabel(texto_(440, QStringLiteral("%1:")).arg(caption), body);
    Label1->setObjectName(QStringLiteral("Label1"));
    cmbgas = new ListaGases(estado_.gas_names(), body);
    cmbgas->setObjectName(QStringLiteral("cmbgas"));
    cmbgas->setAccessibleName(caption);
    cmbgas->setToolTip(texto_(555, QStringLiteral("Escriba una parte del nombre para buscar el gas")));
    cmbgas->lineEdit()->setPlaceholderText(texto_(557, QStringLiteral("Elija un gas")));
    cmbgas->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    Label1->setBuddy(cmbgas);
    btsel = crear_boton("btsel", estado_.texto(210), &frmgases::btsel_Click);
    auto* choice = new QHBoxLayout;
    choice->setSpacing(SPACING);
    choice->addWidget(Label1);
    choice->addWidget(cmbgas, 1);
    choice->addWidget(btsel);
    column->addLayout(choice);

    lbestado_ = new Nota(2, body);
    lbestado_->setObjectName(QStringLiteral("lbestado"));
    lbestado_->setFrameShape(QFrame::StyledPanel);
    lbestado_->setMargin(SPACING);
    column->addWidget(lbestado_);
    column->addWidget(crear_datos());
    column->addWidget(crear_botones());
    column->addStretch();
    return body;
}

QVBoxLayout* frmgases::crear_grupo(const QString& heading) {
    auto* group = new QGroupBox(contenido_);
    group->setAccessibleName(heading);
    auto* label = new QLabel(heading, group);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    auto* column = new QVBoxLayout(group);
    column->setContentsMargins(MARGIN, MARGIN, MARGIN, MARGIN);
    column->setSpacing(MARGIN);
    column->addWidget(label);
    return column;
}

QWidget* frmgases::crear_datos() {
    auto* column = crear_grupo(texto_(719, QStringLiteral("Datos del gas")));
    auto* grid = new QGridLayout;
    column->addLayout(grid);
    grid->setHorizontalSpacing(MARGIN);
    grid->setVerticalSpacing(MARGIN);
    for (const int side : {0, 1})
        grid->setColumnStretch(side, 1);
    const auto place = [&](textextend*& box, const char* name, int header, int mode) {
        box = crear_caja(name, header, mode);
        const int cell = mode == FREE_TEXT ? 0 : grid->count() + 1;
        grid->addWidget(box, cell / 2, cell % 2, 1, mode == FREE_TEXT ? 2 : 1);
    };
    place(textgas, "textgas", 191, FREE_TEXT);
    place(textpm, "textpm", 192, DECIMAL);
    place(textpc, "textpc", 193, DECIMAL);
    place(texttc, "texttc", 194, DECIMAL);
    place(textvc, "textvc", 195, DECIMAL);
    place(textteb, "textteb", 196, DECIMAL);
    place(texthvap, "texthvap", 197, DECIMAL);
    constantes_ = {{{textpm, &tavo::GasRecord::pm, {}},
                    {textpc, &tavo::GasRecord::pc, {}},
                    {texttc, &tavo::GasRecord::tc, {}},
                    {textvc, &tavo::GasRecord::vc, {}},
                    {textteb, &tavo::GasRecord::teb, {}},
                    {texthvap, &tavo::GasRecord::hv, {}}}};
    pintar_cajas();
    return column->parentWidget();
}

textextend* frmgases::crear_caja(const char* name, int header, int mode) {
    auto* box = new textextend(contenido_);
    box->setObjectName(QLatin1String(name));
    box->setNumberBox(mode);
    box->setSigno(false);  // nothing here is below 0
    box->setAlignment(mode == FREE_TEXT ? LEFT : RIGHT);
    box->setHeader(true);
    box->setHeaderAlignement(LEFT);
    box->setHeaderCaption(estado_.texto(header));
    box->entry()->setAccessibleName(estado_.texto(header));
    connect(box, &textextend::Change, this, [this] {
        if (!cargando_)
            actualizar();
    });
    return box;
}

QWidget* frmgases::crear_botones() {
    auto* body = new QWidget(contenido_);
    auto* row = new QHBoxLayout(body);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(SPACING);
    btvaciar = crear_boton("btvaciar", texto_(720, QStringLiteral("&Vaciar")), &frmgases::btvaciar_Click);
    btvaciar->setToolTip(texto_(721, QStringLiteral("Vacía las casillas para escribir un gas nuevo")));
    btadd = crear_boton("btadd", estado_.texto(207), &frmgases::btadd_Click);
    btmod = crear_boton("btmod", estado_.texto(208), &frmgases::btmod_Click);
    btdel = crear_boton("btdel", estado_.texto(209), &frmgases::btdel_Click);
    row->addWidget(btvaciar);
    row->addStretch();
    for (QPushButton* button : {btadd, btmod, btdel})
        row->addWidget(button);
    return body;
}

QPushButton* frmgases::crear_boton(const char* name, const QString& caption, void (frmgases::*slot)()) {
    auto* button = new QPushButton(caption, contenido_);
    button->setObjectName(QLatin1String(name));
    button->setFocusPolicy(Qt::TabFocus);  // a click leaves no entry: one refused exponent, one box
    connect(button, &QPushButton::clicked, this, slot);
    return button;
}

/// In the window's own colours, light or dark.
void frmgases::pintar_cajas() {
    for (textextend* box : {textgas, textpm, textpc, texttc, textvc, textteb, texthvap}) {
        box->setForeColor(palette().color(QPalette::Text));
        box->setBackColor(palette().color(QPalette::Base));
        box->setHeaderForeColor(palette().color(QPalette::WindowText));
        box->setHeaderBackColor(Qt::transparent);
    }
}

QWidget* frmgases::crear_coeficientes() {
    auto* column = crear_grupo(sin_mnemonico(estado_.texto(54)));
    QWidget* group = column->parentWidget();

    const QString caption = estado_.texto(51);
    Label2 = new QLabel(texto_(440, QStringLiteral("%1:")).arg(caption), group);
    Label2->setObjectName(QStringLiteral("Label2"));
    cmbecu = new ListaModelos(nombres_modelos(estado_), group);
    cmbecu->setObjectName(QStringLiteral("cmbecu"));
    cmbecu->setAccessibleName(caption);
    cmbecu->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    cmbecu->setCurrentIndex(static_cast<int>(EquationOfState::VanDerWaals));
    Label2->setBuddy(cmbecu);
    auto* choice = new QHBoxLayout;
    choice->setSpacing(SPACING);
    choice->addWidget(Label2);
    choice->addWidget(cmbecu, 1);
    column->addLayout(choice);

    imgformula = new ImagenFormula(group);
    imgformula->setObjectName(QStringLiteral("imgformula"));
    column->addWidget(imgformula);
    chkauto = new QCheckBox(estado_.texto(230), group);
    chkauto->setObjectName(QStringLiteral("chkauto"));
    chkauto->setFocusPolicy(Qt::TabFocus);  // as the buttons
    column->addWidget(chkauto);
    cajas_ = new CajasCoeficientes(CajasCoeficientes::Rotulos::Apart, texto_, group);
    column->addWidget(cajas_);
    lbnota_ = new Nota(3, group);
    lbnota_->setObjectName(QStringLiteral("lbnota"));
    column->addWidget(lbnota_);
    punto_ = new PuntoCritico(texto_, group);
    column->addWidget(punto_);
    column->addStretch();
    return group;
}

/// With its two parts side by side, however they stand now.
QSize frmgases::sizeHint() const {
    const QSize left = partes_->itemAt(0)->sizeHint(), right = partes_->itemAt(1)->sizeHint();
    const int bar = desplazable_->verticalScrollBar()->sizeHint().width();
    return {left.width() + right.width() + 3 * MARGIN + bar, std::max(left.height(), right.height()) + 2 * MARGIN};
}

/// Side by side where there is room, else one below the other.
void frmgases::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int least = partes_->itemAt(0)->minimumSize().width() + partes_->itemAt(1)->minimumSize().width();
    const int room = width() - 3 * MARGIN - desplazable_->verticalScrollBar()->sizeHint().width();
    partes_->setDirection(least <= room ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
}

// ---- Wiring

void frmgases::crear_avisos() {
    connect(cmbgas, &QComboBox::currentIndexChanged, this, &frmgases::cmbgas_Click);
    connect(cmbecu, &QComboBox::currentIndexChanged, this, &frmgases::cmbecu_Click);
    connect(chkauto, &QCheckBox::clicked, this, &frmgases::chkauto_Click);
    for (int k = 0; k < 4; ++k) {
        cajas_->box(k)->set_signed(true);  // B of the virial equation, w of helium
        connect(cajas_->box(k), &QLineEdit::textEdited, this, [this, k] { coeficiente_Change(k); });
    }
    connect(cajas_, &CajasCoeficientes::edited, this, &frmgases::actualizar);
    connect(cajas_->mu_box(), &QLineEdit::textEdited, this, &frmgases::actualizar);
    connect(cajas_, &CajasCoeficientes::mu_edited, this, &frmgases::txtmu_LostFocus);
    const auto refused = [this] {
        estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
    };
    for (const Constante& constante : constantes_)
        connect(constante.box, &textextend::refused, this, refused);
    for (const EntradaNumerica* box : findChildren<EntradaNumerica*>())
        connect(box, &QLineEdit::inputRejected, this, refused);
    // A click on what takes no focus, such as a button, leaves it where it is: the frame around would take it.
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
        if (now && contenido_->isAncestorOf(now)) {
            contenido_->setFocusProxy(now);
            desplazable_->ensureWidgetVisible(now);
        }
    });
    // The list loses its choice while the names are exchanged.
    connect(estado_.gas_names(), &QAbstractItemModel::modelAboutToBeReset, this, [this] { cargando_ = true; });
    connect(estado_.gas_names(), &QAbstractItemModel::modelReset, this, [this] {
        cargando_ = false;
        cmbgas->set_silently(gas_ <= cmbgas->count() ? gas_ - 1 : -1);
    });
}

void frmgases::closeEvent(QCloseEvent* event) {
    event->setAccepted(puede_descartar());
}

void frmgases::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        pintar_cajas();
}

void frmgases::keyPressEvent(QKeyEvent* event) {
    auto* button = qobject_cast<QAbstractButton*>(focusWidget());
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->key() == Qt::Key_Escape && modo_ == Modo::Cambiar) {
        if (puede_descartar())
            elegir(gas_);
    } else if (enter && button) {
        button->click();
    } else {
        QWidget::keyPressEvent(event);
    }
}

// ---- What the user does

void frmgases::btadd_Click() {
    editor::StoredGas gas;
    if (!tomar_mu() || !validar(gas))
        return;
    std::int16_t number = 0;
    estado_.edit_gases([&](tavo::confreg::Text& text) { number = editor::add(text, estado_.gas_count(), gas); });
    adoptar(gas, number);
    cmbgas->set_silently(number - 1);
    mostrar_modo();
    informar(estado_.texto(224));
}

void frmgases::btmod_Click() {
    editor::StoredGas gas;
    if (!tomar_mu() || !validar(gas))
        return;
    estado_.edit_gases([&](tavo::confreg::Text& text) { editor::write(text, gas_, gas); });
    adoptar(gas, gas_);
    navegar();
    btsel->setFocus();
    informar(estado_.texto(222));
}

void frmgases::btdel_Click() {
    const QString question = texto_(714, QStringLiteral("¿Eliminar %1 de la base de datos?"));
    if (mensajes_.mostrar(con_valor(question, nombre()), YES_NO, {}) != Respuesta::Si)
        return;
    const std::int16_t count = estado_.gas_count();
    const bool removed =
        estado_.remove_gas(gas_, [&](tavo::confreg::Text& text) { editor::remove(text, gas_, count); });
    if (!removed) {
        if (count == std::numeric_limits<std::int16_t>::max())
            throw tavo::Overflow("the count of gases cannot rise above " + std::to_string(count));
        estado_.set_gas_count(static_cast<std::int16_t>(count + 1));
    }
    navegar();
    btsel->setFocus();
    informar(estado_.texto(removed ? 220 : 221));
}

void frmgases::btsel_Click() {
    if (gas_ == 0) {
        aviso_ = texto_(725, QStringLiteral("Elija antes un gas de la lista"));
        mostrar_modo();
        cmbgas->setFocus();
        return;
    }
    modo_ = Modo::Cambiar;
    aviso_.clear();
    mostrar_modo();
    textgas->entry()->setFocus();
}

void frmgases::btvaciar_Click() {
    if (!puede_descartar())
        return;
    elegir(0);
    textgas->entry()->setFocus();
}

void frmgases::cmbgas_Click() {
    if (cargando_)
        return;
    if (puede_descartar())
        elegir(static_cast<std::int16_t>(cmbgas->currentIndex() + 1));
    else
        cmbgas->set_silently(gas_ - 1);
}

void frmgases::cmbecu_Click() {
    mostrar_conjunto();
}

void frmgases::chkauto_Click(bool checked) {
    const tavo::GasRecord gas = constantes();
    const bool critical = gas.pc > 0.0 && gas.tc > 0.0;
    if (!tomar_mu() || (checked && !critical)) {
        chkauto->setChecked(!checked);
        if (!critical)
            mensajes_.mostrar(estado_.texto(198), EXCLAMATION, {});
        return;
    }
    if (checked)
        borrador_.set_automatic(conjunto());
    else
        borrador_.set_by_hand(conjunto(), gas);
    mostrar_conjunto();
    const auto model = static_cast<EquationOfState>(conjunto());
    if (!checked || !parametros::follows_temperature(model))
        return;
    QString notice = estado_.texto(199);
    if (model == EquationOfState::Virial)
        notice = estado_.texto(87) + '\r' + estado_.texto(88) + '\r' + estado_.texto(89) + '\r' + notice;
    informar(notice);
}

/// An emptied box is "not given".
void frmgases::coeficiente_Change(int k) {
    const EntradaNumerica* box = cajas_->box(k);
    borrador_.type(conjunto(), k, box->text().isEmpty() ? editor::AUTOMATIC : cajas_->value(k));
    actualizar();
}

void frmgases::txtmu_LostFocus() {
    tomar_mu();
}

bool frmgases::tomar_mu() {
    EntradaNumerica* box = cajas_->mu_box();
    if (!box->isModified())
        return true;
    const double mu = cajas_->mu();
    const bool taken = mu > 1.0;
    if (taken)
        borrador_.set_mu(mu);
    box->setModified(false);
    mostrar_conjunto();
    if (!taken)
        informar(estado_.texto(93));
    return taken;
}

// ---- The boxes

QString frmgases::nombre() const {
    const QString name = QString::fromStdString(leido_.name);
    return name.isEmpty() ? QString::number(gas_) : name;
}

bool frmgases::intacta(const Constante& constante) {
    return constante.box->Text() == constante.shown;
}

tavo::GasRecord frmgases::constantes() const {
    tavo::GasRecord gas = leido_;
    gas.name = textgas->Text().trimmed().toStdString();
    for (const Constante& constante : constantes_) {
        if (!intacta(constante))
            gas.*constante.member = constante.box->value();
    }
    return gas;
}

void frmgases::vaciar(std::int16_t number) {
    const QScopedValueRollback writing(cargando_, true);
    textgas->setText({});
    for (const Constante& constante : constantes_)
        constante.box->setText({});
    adoptar({}, number);
}

void frmgases::mostrar(const editor::StoredGas& gas, std::int16_t number) {
    const QScopedValueRollback writing(cargando_, true);
    textgas->setText(QString::fromStdString(gas.constants.name));
    for (const Constante& constante : constantes_)
        constante.box->setText(format(gas.constants.*constante.member));
    adoptar(gas, number);
}

/// From now on the boxes, as they stand, show this gas.
void frmgases::adoptar(const editor::StoredGas& gas, std::int16_t number) {
    gas_ = number;
    leido_ = gas.constants;
    borrador_ = editor::Draft(gas, number);
    for (Constante& constante : constantes_)
        constante.shown = constante.box->Text();
    mostrar_conjunto();
}

void frmgases::elegir(std::int16_t number) {
    navegar();
    cmbgas->set_silently(number - 1);
    vaciar(number);
    mostrar_modo();
    if (number == 0)
        return;
    const tavo::confreg::Text& database = estado_.data();
    std::string section("g");
    section += std::to_string(number);
    try {
        if (database.lineaseccion(section) > 0) {
            mostrar(editor::read(database, number), number);
            aviso_ = estado_.gas_problem(number);
        } else {
            aviso_ = texto_(726, QStringLiteral("El gas %1 no tiene sección en la base de datos")).arg(number);
            estado_.tell_problem(number);
        }
    } catch (const tavo::Error&) {  // the boxes stay empty
        aviso_ = estado_.gas_problem(number);
    }
    mostrar_modo();  // with the name
}

/// Back to the list, without a choice; the boxes stay as they are.
void frmgases::navegar() {
    cmbgas->set_silently(-1);
    gas_ = 0;
    modo_ = Modo::Navegar;
    aviso_.clear();
    mostrar_modo();
}

void frmgases::mostrar_modo() {
    const bool changing = modo_ == Modo::Cambiar;
    for (QPushButton* button : {btadd, btsel})
        button->setEnabled(!changing);
    for (QPushButton* button : {btmod, btdel})
        button->setEnabled(changing);
    lbestado_->setText(aviso_.isEmpty() ? letrero() : aviso_);
    QFont font = this->font();
    font.setBold(changing);
    lbestado_->setFont(font);
    lbestado_->setBackgroundRole(changing ? QPalette::Highlight : QPalette::Window);
    lbestado_->setForegroundRole(changing ? QPalette::HighlightedText : QPalette::WindowText);
    lbestado_->setAutoFillBackground(changing);
}

QString frmgases::letrero() const {
    if (modo_ == Modo::Cambiar)
        return con_valor(texto_(711, QStringLiteral("Se cambia %1")), nombre());
    if (gas_ == 0)
        return texto_(716, QStringLiteral("Escriba los datos de un gas nuevo, o elija uno de la lista"));
    return texto_(722, QStringLiteral("Se ve %1; para cambiarlo o eliminarlo pulse «%2»"))
        .arg(nombre(), sin_mnemonico(btsel->text()));
}

// ---- The coefficients

/// Another set, or another state of it: nothing that was being typed stays.
void frmgases::mostrar_conjunto() {
    const auto model = static_cast<EquationOfState>(conjunto());
    const bool automatic = borrador_.automatic(conjunto());
    imgformula->set_model(model);
    chkauto->setEnabled(model != EquationOfState::IdealGas);
    chkauto->setChecked(automatic);
    cajas_->set_read_only({automatic, automatic, automatic && !tavo::Global::has_acentric_factor(model), automatic});
    cajas_->forget_edits();
    cajas_->mu_box()->setModified(false);
    actualizar();
}

void frmgases::actualizar() {
    editor::Draft draft = borrador_;
    if (cajas_->mu_box()->isModified() && cajas_->mu() > 1.0)
        draft.set_mu(cajas_->mu());  // as one types
    const auto model = static_cast<EquationOfState>(conjunto());
    const editor::ShownSet set = draft.shown(conjunto(), constantes());
    cajas_->update_values(model, set.c, set.mu);
    if (tavo::Global::has_acentric_factor(model) && !borrador_.automatic(conjunto()))
        cajas_->findChild<QLabel*>(QStringLiteral("lba"))->setText(QStringLiteral("a (Tc)"));
    lbnota_->setText(nota(set));
    punto_->show_point(set.slot.gas, tavo::calcnum::critical_point(set.slot));
}

QString frmgases::nota(const editor::ShownSet& set) const {
    const auto model = static_cast<EquationOfState>(conjunto());
    const tavo::GasRecord gas = constantes();
    QStringList sentences;
    if (!set.obstacle.empty() && gas.tc > 0.0 && gas.pc > 0.0)
        sentences << con_valor(texto_(723, QStringLiteral("No hay coeficientes: %1")),
                               QString::fromStdString(set.obstacle));
    if (parametros::follows_temperature(model)) {
        if (borrador_.automatic(conjunto()))
            sentences << texto_(712, QStringLiteral("Valores a 298.15 K"));
        else if (model == EquationOfState::Virial)
            sentences << texto_(724, QStringLiteral("B, C y D puestos a mano no siguen a la temperatura"));
        else
            sentences << texto_(718, QStringLiteral("a es el valor a Tc: a otra temperatura se multiplica por el "
                                                    "factor de w"));
    }
    if (set.acentric == editor::AcentricFactor::Estimated)
        sentences << texto_(713, QStringLiteral("w estimado con la temperatura de ebullición; escriba el suyo si lo "
                                                "conoce"));
    if (set.acentric == editor::AcentricFactor::Unknown)
        sentences << texto_(717, QStringLiteral("w desconocido: se toma 0; escriba el suyo si lo conoce"));
    return sentences.join('\n');
}

// ---- Checks

bool frmgases::validar(editor::StoredGas& gas) {
    if (textgas->Text().trimmed().startsWith('[')) {
        informar(texto_(710, QStringLiteral("El nombre del gas no puede empezar por «[».")));
        textgas->entry()->setFocus();
        return false;
    }
    const auto text = [this](std::size_t i) { return constantes_[i].box->Text().toStdString(); };
    editor::Boxes boxes{textgas->Text().trimmed().toStdString(), text(0), text(1), text(2), text(3), text(4), text(5)};
    gas.constants = leido_;  // its digits stay behind a box that nobody typed into
    if (const auto refusal = editor::take(boxes, gas)) {
        informar(estado_.texto(refusal->text));
        const std::array<textextend*, 4> order{textgas, textpm, textpc, texttc};
        order.at(static_cast<std::size_t>(refusal->box))->entry()->setFocus();
        return false;
    }
    for (std::size_t i = 3; i < constantes_.size(); ++i) {
        if (gas.constants.*constantes_[i].member == 0.0)
            constantes_[i].box->setText(QStringLiteral("0"));
    }
    gas = borrador_.to_store(gas.constants);
    return true;
}

bool frmgases::hay_cambios() const {
    const auto typed = [](const Constante& constante) {
        const bool left_empty = constante.shown.isEmpty() && constante.box->Text() == QStringLiteral("0");
        return !intacta(constante) && !left_empty;
    };
    return textgas->Text().trimmed() != QString::fromStdString(leido_.name) || borrador_.changed() ||
           cajas_->mu_box()->isModified() || std::any_of(constantes_.begin(), constantes_.end(), typed);
}

bool frmgases::puede_descartar() {
    const QString question = texto_(715, QStringLiteral("Lo que ha escrito no se ha guardado. ¿Descartarlo?"));
    return !hay_cambios() || mensajes_.mostrar(question, YES_NO, {}) == Respuesta::Si;
}

void frmgases::informar(const QString& texto) {
    mensajes_.mostrar(texto, INFORMATION, {});
}

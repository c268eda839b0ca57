#include "windows/plots/frmdatos.h"

#include <QAbstractItemView>
#include <QCloseEvent>
#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QScopedValueRollback>

#include <algorithm>

#include "controls/marca_fila.h"
#include "core/errors.h"
#include "core/gas_database.h"
#include "core/models.h"
#include "core/numtext.h"
#include "shell/texto_gases.h"
#include "shell/textos.h"
#include "windows/plots/graficos.h"

/// The colour and line mark of each row's curve, beside the rows.
class MarcasFilas : public QWidget {
public:
    explicit MarcasFilas(QWidget* padre) : QWidget(padre) { setFixedWidth(30); }

    void set_row(int i, QWidget* beside) { rows_.at(static_cast<std::size_t>(i)) = beside; }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        for (std::size_t i = 1; i < rows_.size(); ++i) {
            if (!rows_[i])
                continue;
            const double middle = mapFrom(parentWidget(), rows_[i]->geometry().center()).y() + 0.5;
            const QRectF sheet(1.0, middle - 9.0, width() - 2.0, 18.0);
            graficos::pintar_muestra(painter, sheet, static_cast<int>(i));
        }
    }

private:
    std::array<QWidget*, frmdatos::ROWS + 1> rows_{};
};

namespace {

constexpr double MOST_MOLES = 100.0, MOST_GRAMS = 1000.0;
constexpr double MOST_KELVIN = 1000.0;
constexpr int INFORMATION = 64;
constexpr int SHORTEST_LIST = 16;  // characters, where the screen is too narrow for the whole texts
const QString PLOT_WINDOW = QStringLiteral("frmgraficos");
const QString PARAMETER_WINDOW = QStringLiteral("frmcompuestos");

QString element(const char* name, int i) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(i);
}

QString format(double x, const char* pattern) {
    return QString::fromStdString(tavo::Format(x, pattern));
}

}  // namespace

frmdatos::frmdatos(ApplicationState& estado, Mensajes& mensajes, QWidget* padre)
    : QWidget(padre), estado_(estado), mensajes_(mensajes) {
    setObjectName(QStringLiteral("frmdatos"));
    crear_cabecera();
    for (int i = 1; i <= ROWS; ++i)
        crear_fila(i);
    crear_botones();
    Form_Load();
    textos_ayuda();
    setFocusProxy(Check[1]);

    connect(&estado_, &ApplicationState::plot_window_changed, this,
            [this](bool open) { btactualiza->setText(estado_.texto(open ? 58 : 55)); });
    connect(&estado_, &ApplicationState::slot_changed, this, [this](int i) {
        if (anunciando_ || i < 1 || i > ROWS)
            return;
        fallo_[static_cast<std::size_t>(i)].clear();  // whoever changed the slot has loaded it
        mostrar_eleccion(i);
        mostrar_activa(i);
    });
    // The lists lose their choice while the names are exchanged.
    connect(estado_.gas_names(), &QAbstractItemModel::modelAboutToBeReset, this, [this] { cargando_ = true; });
    connect(estado_.gas_names(), &QAbstractItemModel::modelReset, this, [this] {
        cargando_ = false;
        for (int i = 1; i <= ROWS; ++i)
            mostrar_eleccion(i);
    });
    connect(&estado_, &ApplicationState::gases_changed, this, [this] {
        for (int i = 1; i <= ROWS; ++i) {
            if (ranura(i).gas_number > estado_.gas_count())
                tavo::Global::drop_gas(ranura(i));
            cargar(i, false);
            mostrar_eleccion(i);
            anunciar(i);
        }
    });
}

// ---- Layout

void frmdatos::crear_cabecera() {
    auto* grid = new QGridLayout;
    grid->setObjectName(QStringLiteral("filas"));
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(6);
    grid->setColumnStretch(2, 3);
    grid->setColumnStretch(3, 2);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(12, 12, 12, 12);
    column->setSpacing(12);
    column->addLayout(grid);

    const auto header = [&](const char* name, int place) {
        auto* label = new QLabel(this);
        label->setObjectName(QLatin1String(name));
        grid->addWidget(label, 0, place);
        return label;
    };
    Label1 = header("Label1", 2);
    Label2 = header("Label2", 3);
    Label3 = header("Label3", 4);
    Label4 = header("Label4", 5);
    Line1 = new QFrame(this);
    Line1->setObjectName(QStringLiteral("Line1"));
    Line1->setFrameShape(QFrame::HLine);
    Line1->setFrameShadow(QFrame::Sunken);
    grid->addWidget(Line1, 1, 0, 1, 6);
    shpmarca = new MarcasFilas(this);
    shpmarca->setObjectName(QStringLiteral("shpmarca"));
    grid->addWidget(shpmarca, 2, 1, ROWS, 1);
}

void frmdatos::crear_fila(int i) {
    const auto at = static_cast<std::size_t>(i);
    auto* grid = findChild<QGridLayout*>(QStringLiteral("filas"));
    const auto place = [&](QWidget* control, const char* name) {
        control->setObjectName(element(name, i));
        control->installEventFilter(this);
    };
    const auto number = [&](::UpDown*& spin, const char* box_name, const char* spin_name, int column) {
        auto* box = new EntradaNumerica(this);
        box->setMinimumWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("00000.0000")));
        box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);  // the room belongs to the names
        place(box, box_name);
        spin = new ::UpDown(this);
        spin->setObjectName(element(spin_name, i));
        spin->bind(box);
        auto* pair = new QHBoxLayout;
        pair->setSpacing(0);
        pair->addWidget(box, 1);
        pair->addWidget(spin);
        grid->addLayout(pair, i + 1, column);
        return box;
    };

    Check[at] = new QCheckBox(QStringLiteral("&%1").arg(i), this);
    place(Check[at], "Check");
    grid->addWidget(Check[at], i + 1, 0);
    shpmarca->set_row(i, Check[at]);
    cmbgas[at] = new ListaGases(estado_.gas_names(), this);
    place(cmbgas[at], "cmbgas");
    grid->addWidget(cmbgas[at], i + 1, 2);
    cmbecu[at] = new QComboBox(this);
    place(cmbecu[at], "cmbecu");
    cmbecu[at]->setFocusPolicy(Qt::StrongFocus);
    cmbecu[at]->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    for (QComboBox* list : std::initializer_list<QComboBox*>{cmbgas[at], cmbecu[at]})
        list->setMinimumWidth(list->fontMetrics().horizontalAdvance(QString(SHORTEST_LIST, QLatin1Char('0'))));
    grid->addWidget(cmbecu[at], i + 1, 3);
    txttemp[at] = number(UpDown[at], "txttemp", "UpDown", 4);
    txtmol[at] = number(UpDown1[at], "txtmol", "UpDown1", 5);
    UpDown[at]->set_range(0.0, MOST_KELVIN);

    connect(Check[at], &QCheckBox::toggled, this, [this, i] { Check_Click(i); });
    connect(cmbgas[at], &QComboBox::currentIndexChanged, this, [this, i] { cmbgas_Click(i); });
    connect(cmbecu[at], &QComboBox::currentIndexChanged, this, [this, i] { cmbecu_Click(i); });
    connect(txttemp[at], &QLineEdit::textChanged, this, [this, i] { txttemp_Change(i); });
    connect(txtmol[at], &QLineEdit::textChanged, this, [this, i] { txtmol_Change(i); });
    connect(txtmol[at], &EntradaNumerica::LostFocus, this, [this, i] { txtmol_LostFocus(i); });
    connect(UpDown1[at], &::UpDown::Change, this, [this, i] { UpDown1_Change(i); });
    for (EntradaNumerica* box : {txttemp[at], txtmol[at]})
        connect(box, &QLineEdit::inputRejected, this, [this] {
            estado_.set_status(estado_.texto(554, QStringLiteral("Aquí solo cabe un número con punto decimal")), 5000);
        });
}

void frmdatos::crear_botones() {
    btparametros = new QPushButton(this);
    btparametros->setObjectName(QStringLiteral("btparametros"));
    btparametros->setAutoDefault(true);  // with the focus it takes the return key itself
    btactualiza = new QPushButton(this);
    btactualiza->setObjectName(QStringLiteral("btactualiza"));
    btactualiza->setDefault(true);
    connect(btparametros, &QPushButton::clicked, this, &frmdatos::btparametros_Click);
    connect(btactualiza, &QPushButton::clicked, this, &frmdatos::btactualiza_Click);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(6);
    buttons->addStretch();
    buttons->addWidget(btparametros);
    buttons->addWidget(btactualiza);
    auto* column = static_cast<QVBoxLayout*>(layout());
    column->addStretch();
    column->addLayout(buttons);
}

void frmdatos::textos_ayuda() {
    const QString search = estado_.texto(555, QStringLiteral("Escriba una parte del nombre para buscar el gas"));
    const QString pattern = estado_.texto(556, QStringLiteral("%1, fila %2"));
    for (int i = 1; i <= ROWS; ++i) {
        const auto at = static_cast<std::size_t>(i);
        cmbgas[at]->setToolTip(search);
        cmbgas[at]->lineEdit()->setPlaceholderText(estado_.texto(557, QStringLiteral("Elija un gas")));
        Check[at]->setAccessibleName(pattern.arg(windowTitle()).arg(i));
        cmbgas[at]->setAccessibleName(pattern.arg(Label1->text()).arg(i));
        cmbecu[at]->setAccessibleName(pattern.arg(Label2->text()).arg(i));
        txttemp[at]->setAccessibleName(pattern.arg(Label3->text()).arg(i));
        txtmol[at]->setAccessibleName(pattern.arg(Label4->text()).arg(i));
    }
}

// ---- Load and unload

void frmdatos::Form_Load() {
    setWindowTitle(sin_mnemonico(estado_.texto(14)));
    Label1->setText(sin_mnemonico(estado_.texto(50)));
    Label2->setText(sin_mnemonico(estado_.texto(51)));
    Label3->setText(sin_mnemonico(estado_.texto(52)));
    Label4->setText(sin_mnemonico(estado_.texto(53)));
    btparametros->setText(estado_.texto(54));
    btactualiza->setText(estado_.texto(estado_.plot() ? 58 : 55));

    const bool reopened = estado_.slots_initialised;
    if (!reopened) {
        for (int i = 1; i <= ROWS; ++i) {
            ranura(i).gas_number = 0;
            ranura(i).equation = tavo::EquationOfState::IdealGas;
            ranura(i).temperature = 300.0;
            ranura(i).moles = tavo::Val("1.000");
            ranura(i).active = i == 1;
        }
        estado_.slots_initialised = true;
    }
    llenar_listas();
    mostrar_unidad(estado_.amount_unit());
    for (int i = 1; i <= ROWS; ++i)
        mostrar_fila(i);
    cargando_ = false;
}

void frmdatos::llenar_listas() {
    const QStringList names = nombres_modelos(estado_);
    for (int i = 1; i <= ROWS; ++i) {
        QComboBox* list = cmbecu[static_cast<std::size_t>(i)];
        list->addItems(names);
        list->view()->setMinimumWidth(list->view()->sizeHintForColumn(0));  // whole texts, though the list is narrow
    }
}

void frmdatos::mostrar_fila(int i) {
    const QScopedValueRollback writing(cargando_, true);
    const auto at = static_cast<std::size_t>(i);
    const tavo::EquationSlot& slot = ranura(i);
    mostrar_activa(i);
    mostrar_eleccion(i);
    txttemp[at]->setText(format(slot.temperature, "###0.000"));
    // Without a molar mass the grams that were entered are not in moles; a row that never held any shows its moles.
    const bool grams = estado_.amount_unit() == AmountUnit::Grams && (slot.gas.pm > 0.0 || slot.grams > 0.0);
    txtmol[at]->setText(format(grams ? slot.grams : slot.moles, "###0.000"));
}

void frmdatos::mostrar_eleccion(int i) {
    const QScopedValueRollback writing(cargando_, true);
    const auto at = static_cast<std::size_t>(i);
    cmbgas[at]->set_silently(ranura(i).gas_number - 1);
    cmbecu[at]->setCurrentIndex(static_cast<int>(ranura(i).equation));
}

void frmdatos::mostrar_activa(int i) {
    const QScopedValueRollback writing(cargando_, true);
    Check[static_cast<std::size_t>(i)]->setChecked(ranura(i).active);
    habilitar_fila(i);
}

void frmdatos::habilitar_fila(int i) {
    const auto at = static_cast<std::size_t>(i);
    const std::array<QWidget*, 6> controls{cmbgas[at], cmbecu[at], txttemp[at], UpDown[at], txtmol[at], UpDown1[at]};
    for (QWidget* control : controls)
        control->setEnabled(Check[at]->isChecked());
}

void frmdatos::mostrar_unidad(AmountUnit unit) {
    const bool grams = unit == AmountUnit::Grams;
    Label4->setText(grams ? estado_.texto(402, QStringLiteral("Gramos")) : estado_.texto(401, QStringLiteral("Moles")));
    for (int i = 1; i <= ROWS; ++i)
        UpDown1[static_cast<std::size_t>(i)]->set_range(0.0, grams ? MOST_GRAMS : MOST_MOLES);
}

void frmdatos::Form_Unload() {
    for (int i = 1; i <= ROWS; ++i)
        guardar_cantidad(i);
}

void frmdatos::closeEvent(QCloseEvent* event) {
    Form_Unload();
    event->accept();
}

void frmdatos::keyPressEvent(QKeyEvent* event) {
    // A list keeps the key for its own choice.
    const QWidget* focus = focusWidget();
    const bool in_list =
        focus && (qobject_cast<const QComboBox*>(focus) || qobject_cast<const QComboBox*>(focus->parent()));
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !in_list)
        btactualiza->click();
    else
        QWidget::keyPressEvent(event);
}

/// Amount and mass from the box. Without a molar mass grams say nothing about moles: the row then holds no amount.
void frmdatos::guardar_cantidad(int i) {
    tavo::EquationSlot& slot = ranura(i);
    const double entered = txtmol[static_cast<std::size_t>(i)]->value();
    if (estado_.amount_unit() == AmountUnit::Moles) {
        slot.moles = entered;
        slot.grams = entered * slot.gas.pm;
    } else {
        slot.grams = entered;
        slot.moles = slot.gas.pm > 0.0 ? entered / slot.gas.pm : 0.0;
    }
}

bool frmdatos::eventFilter(QObject* watched, QEvent* event) {
    const auto* models = qobject_cast<const QComboBox*>(watched);
    if (event->type() == QEvent::Wheel && models && !models->isEditable() && !models->hasFocus()) {
        event->ignore();  // the wheel that scrolls past chooses nothing; the lists of gases see to it themselves
        return true;
    }
    if (event->type() == QEvent::FocusIn) {
        const QString name = watched->objectName();
        estado_.set_current_row(name.at(name.size() - 2).digitValue());  // "txttemp(3)"
    }
    return QWidget::eventFilter(watched, event);
}

// ---- What the main window and the plot ask

void frmdatos::copiar_filas() {
    for (int i = 1; i <= ROWS; ++i) {
        const auto at = static_cast<std::size_t>(i);
        tavo::EquationSlot& slot = ranura(i);
        slot.active = Check[at]->isChecked();
        slot.gas_number = static_cast<std::int16_t>(cmbgas[at]->currentIndex() + 1);
        slot.equation = static_cast<tavo::EquationOfState>(cmbecu[at]->currentIndex());
        slot.temperature = txttemp[at]->value();
        cargar(i, false);
        guardar_cantidad(i);
    }
}

void frmdatos::cambiar_unidad(AmountUnit from, AmountUnit to) {
    const QScopedValueRollback writing(cargando_, true);
    for (int i = 1; i <= ROWS && from != to; ++i) {
        EntradaNumerica* box = txtmol[static_cast<std::size_t>(i)];
        tavo::EquationSlot& slot = ranura(i);
        const double entered = box->value();
        const double mass = slot.gas.pm;
        if (from == AmountUnit::Moles) {
            slot.moles = entered;
            slot.grams = entered * mass;
        } else {
            slot.grams = entered;
            slot.moles = mass > 0.0 ? entered / mass : entered;
        }
        if (mass > 0.0)  // without a gas the number stays as it is
            box->setText(format(to == AmountUnit::Grams ? slot.grams : slot.moles, "##0.000"));
    }
    mostrar_unidad(to);
    for (int i = 1; i <= ROWS; ++i) {
        EntradaNumerica* box = txtmol[static_cast<std::size_t>(i)];
        const double most = UpDown1[static_cast<std::size_t>(i)]->maximum();
        if (box->value() > most)
            box->setText(QString::fromStdString(tavo::to_text(most)));
    }
}

void frmdatos::limpiar_filas() {
    for (int i = 1; i <= ROWS; ++i) {
        const int colour = ranura(i).colour;
        ranura(i) = {};
        ranura(i).colour = colour;
        fallo_[static_cast<std::size_t>(i)].clear();
        mostrar_fila(i);
        anunciar(i);
    }
    if (PlotView* plot = estado_.plot())
        plot->limpiar();
}

// ---- Rows

bool frmdatos::cargar(int i, bool reload) {
    tavo::EquationSlot& slot = ranura(i);
    QString& fault = fallo_[static_cast<std::size_t>(i)];
    fault.clear();
    if (slot.gas_number < 1) {
        slot.gas = {};
        return true;
    }
    try {
        tavo::Global::load_slot(estado_.data(), slot, reload);
        return true;
    } catch (const tavo::Error& error) {
        fault = motivo_de_carga(estado_, slot, error);
    }
    if (!slot.parameters)
        slot.gas = {};  // nothing of the gas before
    return false;
}

void frmdatos::anunciar(int i) {
    const QScopedValueRollback own(anunciando_, true);
    emit estado_.slot_changed(i);
}

void frmdatos::cargar_eleccion(int i) {
    const bool loaded = cargar(i, true);
    anunciar(i);
    if (loaded)
        return estado_.tell_problem(ranura(i).gas_number);
    const QString sentence = estado_.texto(553, QStringLiteral("No se puede cargar el gas de la fila %1.")).arg(i);
    avisar(sentence + '\n' + fallo_[static_cast<std::size_t>(i)]);
}

void frmdatos::Check_Click(int i) {
    habilitar_fila(i);
    if (!cargando_)
        ranura(i).active = Check[static_cast<std::size_t>(i)]->isChecked();
}

void frmdatos::cmbgas_Click(int i) {
    if (cargando_)
        return;
    ranura(i).gas_number = static_cast<std::int16_t>(cmbgas[static_cast<std::size_t>(i)]->currentIndex() + 1);
    cargar_eleccion(i);
}

void frmdatos::cmbecu_Click(int i) {
    if (cargando_)
        return;
    ranura(i).equation = static_cast<tavo::EquationOfState>(cmbecu[static_cast<std::size_t>(i)]->currentIndex());
    if (ranura(i).equation == tavo::EquationOfState::Virial)
        avisar(estado_.texto(87) + '\r' + estado_.texto(88) + '\r' + estado_.texto(89));
    cargar_eleccion(i);
}

void frmdatos::txttemp_Change(int i) {
    if (cargando_)
        return;
    EntradaNumerica* box = txttemp[static_cast<std::size_t>(i)];
    if (box->text().isEmpty()) {
        ranura(i).temperature = 0.0;
        anunciar(i);
        return;
    }
    if (box->value() < 0.0) {
        box->setText(QStringLiteral("0"));
        avisar_y_seleccionar(estado_.texto(403, QStringLiteral("Mínima temperatura = 0")), box);
    }
    if (box->value() > MOST_KELVIN) {
        box->setText(QStringLiteral("1000"));
        avisar_y_seleccionar(estado_.texto(404, QStringLiteral("Máxima temperatura = 1000")), box);
    }
    ranura(i).temperature = box->value();
    cargar(i, false);  // coefficients that depend on temperature follow it
    anunciar(i);
}

void frmdatos::txtmol_Change(int i) {
    if (cargando_)
        return;
    const auto at = static_cast<std::size_t>(i);
    EntradaNumerica* box = txtmol[at];
    if (!box->text().isEmpty() && box->value() < 0.0) {
        box->setText(QStringLiteral("0"));
        avisar_y_seleccionar(estado_.texto(405, QStringLiteral("Debes introducir alguna cantidad de gas")), box);
    }
    if (box->value() > UpDown1[at]->maximum()) {
        const QString most = QString::fromStdString(tavo::to_text(UpDown1[at]->maximum()));
        box->setText(most);
        const QString pattern = estado_.texto(441, QStringLiteral("%1: %2"));
        avisar_y_seleccionar(pattern.arg(estado_.texto(406, QStringLiteral("Valor máximo")), most), box);
    }
    ranura(i).equation = static_cast<tavo::EquationOfState>(cmbecu[at]->currentIndex());
    ranura(i).temperature = txttemp[at]->value();
    cargar(i, false);
}

void frmdatos::txtmol_LostFocus(int i) {
    EntradaNumerica* box = txtmol[static_cast<std::size_t>(i)];
    if (box->value() <= 0.0)
        avisar_y_seleccionar(estado_.texto(405, QStringLiteral("Debes introducir alguna cantidad de gas")), box);
}

void frmdatos::UpDown1_Change(int i) {
    EntradaNumerica* box = txtmol[static_cast<std::size_t>(i)];
    box->setText(format(box->value(), "##0.000"));
}

void frmdatos::avisar(const QString& texto) {
    mensajes_.mostrar(texto, INFORMATION, QString());
}

void frmdatos::avisar_y_seleccionar(const QString& texto, EntradaNumerica* caja) {
    avisar(texto);
    caja->selectAll();
}

// ---- Buttons

void frmdatos::btparametros_Click() {
    estado_.show_window(PARAMETER_WINDOW);
}

void frmdatos::btactualiza_Click() {
    const bool redraws = estado_.plot() != nullptr;
    if (!estado_.window(PLOT_WINDOW))  // a new plot takes the rows as it loads, and draws as it is shown
        return;
    if (redraws)
        estado_.plot()->actualiza();
    estado_.show_window(PLOT_WINDOW);
    if (redraws)
        estado_.plot()->dibuja();
    avisar_filas_omitidas();
}

void frmdatos::avisar_filas_omitidas() {
    QStringList sentences;
    for (int i = 1; i <= ROWS; ++i) {
        const tavo::EquationSlot& slot = ranura(i);
        if (!slot.active)
            continue;
        switch (graficos::obstacle(slot)) {
            case graficos::Obstacle::None:
                break;
            case graficos::Obstacle::NoGas:
                sentences << estado_.texto(550, QStringLiteral("La fila %1 no se dibuja: elija un gas.")).arg(i);
                break;
            case graficos::Obstacle::NoCoefficients:
                sentences << estado_.texto(551, QStringLiteral("La fila %1 no se dibuja: %2"))
                                 .arg(QString::number(i), fallo_[static_cast<std::size_t>(i)]);
                break;
            case graficos::Obstacle::NoAmount:
                sentences << estado_
                                 .texto(552, QStringLiteral("La fila %1 no se dibuja: falta la cantidad de gas, o "
                                                            "un gas para convertir los gramos en moles."))
                                 .arg(i);
                break;
        }
    }
    if (!sentences.isEmpty())
        avisar(sentences.join('\n'));
}

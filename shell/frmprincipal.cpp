#include "shell/frmprincipal.h"

#include <QActionGroup>
#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QScopeGuard>
#include <QScreen>
#include <QStackedWidget>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <array>
#include <utility>

#include "controls/iconos.h"
#include "core/errors.h"
#include "core/idiomas.h"
#include "core/palette.h"
#include "shell/area_ventanas.h"
#include "shell/mensajes_qt.h"
#include "shell/primeros_pasos.h"
#include "shell/textos.h"

/// An entry: its menu, captions by number, what it runs and which window it needs (none: always there).
struct frmprincipal::Entrada {
    QString menu, name;
    int caption;
    QString suffix;
    QString icon;
    QString shortcut;
    int tip;
    QString tip_literal;
    QString window;
    void (frmprincipal::*handler)();
};

namespace {

const QChar WARNING_SIGN(0x26A0);
constexpr qsizetype MOST_PROBLEMS = 20;  // in a tool tip

struct Menu {
    QString name, parent;
    int caption;
};

/// The top menus in their order, and the one submenu.
const QList<Menu>& menus() {
    static const QList<Menu> table{
        {"mnuarchivos", "", 1}, {"mnudatos", "", 2},    {"mnuunidades", "mnudatos", 11},
        {"mnugraficos", "", 3}, {"mnucalcular", "", 4}, {"mnusimulaciones", "", 5},
        {"mnutablas", "", 6},   {"mnuidioma", "", 7},   {"mnuayudas", "", 8},
    };
    return table;
}

/// Buttons of the toolbar by position, the keys' menu entries and tool tips; a row without a key is a separator.
struct Boton {
    QString key, menu;
    int tip;
};

const QList<Boton>& botones() {
    static const QList<Boton> table{
        {"nuevo", "mnunuevo", 32},
        {"datos", "mnudato", 14},
        {},
        {"mol", "mnumoles", 33},
        {"gramo", "mnugramos", 34},
        {},
        {"graficas", "mnudibujos", 3},
        {"escala", "mnuescala", 16},
        {},
        {"f", "mnuf", 20},
        {"operaciones", "mnuoperaciones", 21},
        {"tabla", "mnutermo", 23},
        {"tabla1", "mnucrit", 35},
        {"termometro", "mnutermosc", 24},
        {},
        {"ayuda", "mnuayuda", 30},
        {"acercade", "mnuacercade", 31},
        {"salir", "mnusalir", 10},
    };
    return table;
}

/// Keys that the dispatch accepts although no button carries them.
const QList<Boton>& teclas_sin_boton() {
    static const QList<Boton> table{{"p", "mnup", 17}, {"v", "mnuv", 18}, {"t", "mnut", 19}};
    return table;
}

/// Links of the first-steps page: menu entry, its caption and explanation by number.
struct Paso {
    QString menu;
    int caption, explanation;
    QString literal;
};

const QList<Paso>& pasos() {
    static const QList<Paso> table{
        {"mnudato", 14, 502, QStringLiteral("Elija gases, modelos y temperaturas, y dibuje sus isotermas")},
        {"mnuf", 4, 503, QStringLiteral("Calcule P, V o T, la presión de vapor y la entalpía de vaporización")},
        {"mnuoperaciones", 5, 504, QStringLiteral("Mueva el pistón y el termómetro de un laboratorio simulado")},
        {"mnuayuda", 30, 505, QStringLiteral("Lea cómo se usa el programa")},
    };
    return table;
}

QString indexed(const QString& name, int i) {
    return QStringLiteral("%1(%2)").arg(name).arg(i);
}

}  // namespace

const QList<frmprincipal::Entrada>& frmprincipal::entradas() {
    using f = frmprincipal;
    static const QList<Entrada> table{
        {"mnuarchivos", "mnunuevo", 9, "", "nuevo", "Ctrl+N", 509, "Vacía las cinco filas para empezar de nuevo", "",
         &f::mnunuevo_Click},
        {"mnuarchivos", "mnusalir", 10, "", "salir", "Ctrl+Q", 510, "Termina el programa", "", &f::mnusalir_Click},
        {"mnuunidades", "mnumoles", 12, "", "mol", "Ctrl+M", 511, "Da las cantidades de gas en moles", "",
         &f::mnumoles_Click},
        {"mnuunidades", "mnugramos", 13, "", "gramo", "Ctrl+Shift+M", 512, "Da las cantidades de gas en gramos", "",
         &f::mnugramos_Click},
        {"mnudatos", "mnudato", 14, "", "datos", "Ctrl+D", 502,
         "Elija gases, modelos y temperaturas, y dibuje sus isotermas", "frmdatos", &f::mnudato_Click},
        {"mnudatos", "mnugases", 190, "", "gases", "", 513, "Añade, cambia o borra gases de la base de datos",
         "frmgases", &f::mnugases_Click},
        {"mnugraficos", "mnudibujos", 15, "", "graficas", "Ctrl+G", 514, "Muestra las isotermas en el plano P-V",
         "frmgraficos", &f::mnudibujos_Click},
        {"mnugraficos", "mnuescala", 16, "", "escala", "Ctrl+E", 515,
         "Fija los límites de volumen y presión del gráfico", "frmescala", &f::mnuescala_Click},
        {"mnucalcular", "mnup", 17, "", "p", "Ctrl+1", 516, "Calcula la presión a partir del volumen y la temperatura",
         "frmcalculos", &f::mnup_Click},
        {"mnucalcular", "mnuv", 18, "", "v", "Ctrl+2", 517,
         "Calcula el volumen a partir de la temperatura y la presión", "frmcalculos", &f::mnuv_Click},
        {"mnucalcular", "mnut", 19, "", "t", "Ctrl+3", 518,
         "Calcula la temperatura a partir de la presión y el volumen", "frmcalculos", &f::mnut_Click},
        {"mnucalcular", "mnuf", 20, "", "f", "Ctrl+4", 503,
         "Calcule P, V o T, la presión de vapor y la entalpía de vaporización", "frmcalculos", &f::mnuf_Click},
        {"mnusimulaciones", "mnuoperaciones", 21, "", "operaciones", "Ctrl+L", 504,
         "Mueva el pistón y el termómetro de un laboratorio simulado", "frmoperaciones", &f::mnuoperaciones_Click},
        {"mnutablas", "mnucrit", 22, "", "tabla1", "", 519,
         "Muestra las constantes críticas y otros datos de los gases", "frmtabla", &f::mnucrit_Click},
        {"mnutablas", "mnutermo", 23, "", "tabla", "", 520, "Muestra constantes físicas en varias unidades",
         "frmtablaay", &f::mnutermo_Click},
        {"mnutablas", "mnutermosc", 24, "", "termometro", "", 521, "Convierte temperaturas entre cinco escalas",
         "frmtermometro", &f::mnutermosc_Click},
        {"mnuayudas", "mnuayuda", 30, "...", "ayuda", "F1", 505, "Lea cómo se usa el programa", "", &f::mnuayuda_Click},
        {"mnuayudas", "mnuacercade", 31, " ...", "acercade", "", 524, "Muestra la versión y los autores", "frmAbout",
         &f::mnuacercade_Click},
    };
    return table;
}

frmprincipal::frmprincipal(ApplicationState& estado, Mensajes& mensajes,
                           std::function<void(const QString& ventana)> ayuda)
    : estado_(estado),
      mensajes_(mensajes),
      ayuda_(std::move(ayuda)),
      unidades_(new QActionGroup(this)),
      mnuidioma(nullptr),
      Toolbar1(new QToolBar(this)),
      paginas_(new QStackedWidget(this)),
      area_(new AreaVentanas),
      primeros_pasos_(new PrimerosPasos),
      lbestado(new QLabel),
      lbcoordenadas(new QLabel),
      lbunidad(new QLabel),
      lbgases(new QLabel),
      fin_del_mensaje_(new QTimer(this)) {
    setObjectName(QStringLiteral("frmprincipal"));
    setWindowTitle(QStringLiteral("TAVO-GAS"));
    setWindowIcon(icono_del_programa());
    area_->setObjectName(QStringLiteral("area"));
    paginas_->addWidget(primeros_pasos_);
    paginas_->addWidget(area_);
    setCentralWidget(paginas_);

    crear_menus();
    crear_barra();
    crear_linea_de_estado();
    crear_primeros_pasos();

    connect(area_, &AreaVentanas::ocupada_changed, this, [this](bool ocupada) {
        paginas_->setCurrentIndex(ocupada ? 1 : 0);
        if (!ocupada)
            primeros_pasos_->setFocus();
    });
    connect(&estado_, &ApplicationState::show_requested, this, &frmprincipal::mostrar_ventana);
    connect(&estado_, &ApplicationState::plot_window_changed, this, &frmprincipal::habilitar_graficos);
    connect(&estado_, &ApplicationState::amount_unit_changed, this, &frmprincipal::mostrar_unidad);
    connect(&estado_, &ApplicationState::gases_changed, this, &frmprincipal::mostrar_gases);
    connect(&estado_, &ApplicationState::languages_changed, this, &frmprincipal::mostrar_idiomas);
    connect(&estado_, &ApplicationState::status_changed, this, &frmprincipal::mostrar_estado);
    connect(&estado_, &ApplicationState::coordinates_changed, lbcoordenadas, &QLabel::setText);
    tamano_inicial();
    pintar_fondo();
}

frmprincipal::~frmprincipal() {
    // The children go while their frames and this window's slots are still whole.
    disconnect(&estado_, nullptr, this, nullptr);
    disconnect(area_, nullptr, this, nullptr);
    delete takeCentralWidget();
}

void frmprincipal::tamano_inicial() {
    const QRect available = screen()->availableGeometry();
    setMinimumSize(QSize(480, 320).boundedTo(available.size()));  // below it the status line's parts would overlap
    resize(QSize(1180, 760).boundedTo(available.size() * 0.9));
    move(available.center() - rect().center());
    if (available.width() < 1000 || available.height() < 600)
        setWindowState(Qt::WindowMaximized);  // a small screen, or a large scale: every pixel is needed
}

void frmprincipal::crear_menus() {
    QHash<QString, QMenu*> by_name;
    for (const Menu& row : menus()) {
        auto* menu = row.parent.isEmpty() ? menuBar()->addMenu(QString()) : by_name[row.parent]->addMenu(QString());
        menu->setObjectName(row.name);
        menu->installEventFilter(this);
        by_name[row.name] = menu;
        acciones_[row.name] = menu->menuAction();
    }
    mnuidioma = by_name[QStringLiteral("mnuidioma")];

    for (const Entrada& row : entradas()) {
        QAction* action = by_name[row.menu]->addAction(icono(row.icon), QString());
        action->setObjectName(row.name);
        action->setShortcut(QKeySequence(row.shortcut));
        connect(action, &QAction::triggered, this, row.handler);
        acciones_[row.name] = action;
    }
    for (const char* name : {"mnumoles", "mnugramos"}) {
        menu_entry(name)->setCheckable(true);
        unidades_->addAction(menu_entry(name));
    }
}

void frmprincipal::crear_barra() {
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setMovable(false);
    Toolbar1->setIconSize(QSize(24, 24));
    Toolbar1->setToolButtonStyle(Qt::ToolButtonIconOnly);
    addToolBar(Toolbar1);
    setContextMenuPolicy(Qt::DefaultContextMenu);
    for (const Boton& row : botones()) {
        if (row.key.isEmpty()) {
            Toolbar1->addSeparator();
            continue;
        }
        QAction* action = Toolbar1->addAction(icono(row.key), QString());
        action->setObjectName(row.key);
        action->setCheckable(menu_entry(row.menu)->isCheckable());
        connect(action, &QAction::triggered, this, [this, key = row.key] { Toolbar1_ButtonClick(key); });
        Toolbar1->widgetForAction(action)->setObjectName(row.key);
        Toolbar1->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    }
}

void frmprincipal::crear_linea_de_estado() {
    lbestado->setObjectName(QStringLiteral("lbestado"));
    lbcoordenadas->setObjectName(QStringLiteral("lbcoordenadas"));
    lbunidad->setObjectName(QStringLiteral("lbunidad"));
    lbgases->setObjectName(QStringLiteral("lbgases"));
    lbestado->setTextFormat(Qt::PlainText);
    lbestado->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    statusBar()->addWidget(lbestado, 1);
    for (QLabel* label : {lbcoordenadas, lbunidad, lbgases}) {
        label->setContentsMargins(6, 0, 6, 0);
        statusBar()->addPermanentWidget(label);
    }
    // Wide enough from the start, so that the line does not jump under the pointer.
    lbcoordenadas->setMinimumWidth(
        fontMetrics().horizontalAdvance(QStringLiteral("V = 000.0000 l   P = 0000.0000 atm")) + 12);
    lbcoordenadas->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    fin_del_mensaje_->setSingleShot(true);
    connect(fin_del_mensaje_, &QTimer::timeout, lbestado, &QLabel::clear);
}

void frmprincipal::crear_primeros_pasos() {
    for (const Paso& paso : pasos())
        primeros_pasos_->add_enlace(menu_entry(paso.menu));
}

QAction* frmprincipal::menu_entry(const QString& name) const {
    return acciones_.value(name);
}

void frmprincipal::mostrar_idiomas() {
    // An entry may be the one that is being clicked: it goes when its handler has ended.
    const QList<QAction*> old = mnuidioma->actions();
    for (QAction* action : old) {
        mnuidioma->removeAction(action);
        action->setObjectName(QString());
        action->deleteLater();
    }
    const QStringList names = estado_.languages();
    int i = 1;
    for (const QString& name : names) {
        QAction* action = mnuidioma->addAction(como_caption(name));
        action->setObjectName(indexed(QStringLiteral("mnuidiomas"), i));
        action->setCheckable(true);
        action->setChecked(tavo::idiomas::same_language(name.toStdString(), estado_.language().toStdString()));
        action->setStatusTip(con_valor(
            estado_.texto(522, QStringLiteral("Usa el idioma %1 desde el próximo inicio del programa")), name));
        connect(action, &QAction::triggered, this, [this, i] { mnuidiomas_Click(i); });
        ++i;
    }
    mnuidioma->addSeparator()->setObjectName(indexed(QStringLiteral("mnuidiomas"), i));
    QAction* editor = mnuidioma->addAction(icono(QStringLiteral("idioma")), estado_.texto(29));
    editor->setObjectName(indexed(QStringLiteral("mnuidiomas"), i + 1));
    editor->setStatusTip(estado_.texto(523, QStringLiteral("Corrige los textos y añade idiomas")));
    connect(editor, &QAction::triggered, this, [this, i] { mnuidiomas_Click(i + 1); });
}

void frmprincipal::MDIForm_Load() {
    poner_captions();
    poner_textos_de_barra();
    for (std::size_t i = 0; i < tavo::CURVE_COLOURS.size(); ++i)
        estado_.slot_table()[static_cast<int>(i) + 1].colour = tavo::CURVE_COLOURS[i];
    estado_.plot_shown = 0;
    habilitar_graficos(false);
    estado_.set_amount_unit(AmountUnit::Moles);
    estado_.current_row = 1;
    estado_.load_gases();
    mostrar_gases();
    primeros_pasos_->setFocus();
}

void frmprincipal::poner_captions() {
    for (const Menu& row : menus())
        menu_entry(row.name)->setText(estado_.texto(row.caption));
    for (const Entrada& row : entradas()) {
        QAction* action = menu_entry(row.name);
        action->setText(estado_.texto(row.caption) + row.suffix);
        action->setStatusTip(estado_.texto(row.tip, row.tip_literal));
    }
    primeros_pasos_->set_encabezados(
        estado_.texto(532, QStringLiteral("Gases reales, isotermas y equilibrio líquido-vapor")),
        estado_.texto(501, QStringLiteral("Primeros pasos")));
    int i = 1;
    for (const Paso& paso : pasos()) {
        auto* enlace = primeros_pasos_->findChild<Enlace*>(indexed(QStringLiteral("enlace"), i++));
        enlace->set_textos(sin_mnemonico(estado_.texto(paso.caption)), estado_.texto(paso.explanation, paso.literal));
    }
}

void frmprincipal::poner_textos_de_barra() {
    for (const Boton& row : botones()) {
        if (row.key.isEmpty())
            continue;
        const QAction* entry = menu_entry(row.menu);
        QString tip = sin_mnemonico(estado_.texto(row.tip));
        auto* button = Toolbar1->findChild<QAction*>(row.key, Qt::FindDirectChildrenOnly);
        button->setIconText(tip);
        Toolbar1->widgetForAction(button)->setAccessibleName(tip);
        if (!entry->shortcut().isEmpty())
            tip += QStringLiteral(" (%1)").arg(entry->shortcut().toString(QKeySequence::NativeText));
        button->setToolTip(tip);
        button->setStatusTip(entry->statusTip());
    }
}

void frmprincipal::habilitar(const QString& menu, bool possible) {
    menu_entry(menu)->setEnabled(possible);
    for (const Boton& row : botones()) {
        if (row.menu == menu)
            Toolbar1->findChild<QAction*>(row.key, Qt::FindDirectChildrenOnly)->setEnabled(possible);
    }
}

void frmprincipal::habilitar_graficos(bool open) {
    for (const char* menu : {"mnudibujos", "mnuescala"})
        habilitar(QLatin1String(menu), open);
    lbcoordenadas->setVisible(open);  // without a plot its room belongs to the sentences
}

void frmprincipal::Toolbar1_ButtonClick(const QString& key) {
    for (const QList<Boton>* table : {&botones(), &teclas_sin_boton()}) {
        for (const Boton& row : *table) {
            if (!key.isEmpty() && row.key == key)
                menu_entry(row.menu)->trigger();
        }
    }
    mostrar_unidad();  // a click has turned the button's own tick
}

void frmprincipal::mostrar_ventana(QWidget* ventana) {
    if (!ventana->testAttribute(Qt::WA_SetWindowIcon)) {
        for (const Entrada& row : entradas()) {
            if (row.window == ventana->objectName())
                ventana->setWindowIcon(menu_entry(row.name)->icon());
        }
    }
    area_->mostrar(ventana);
}

void frmprincipal::mnunuevo_Click() {
    estado_.plot_shown = 0;
    if (ConditionsView* conditions = estado_.conditions())
        conditions->limpiar_filas();
}

void frmprincipal::mnusalir_Click() {
    close();
}

void frmprincipal::mnugramos_Click() {
    const auto ticks = qScopeGuard([this] { mostrar_unidad(); });
    ConditionsView* conditions = estado_.amount_unit() == AmountUnit::Moles ? estado_.conditions() : nullptr;
    if (conditions)
        conditions->cambiar_unidad(AmountUnit::Moles, AmountUnit::Grams);
    estado_.set_amount_unit(AmountUnit::Grams);
}

void frmprincipal::mnumoles_Click() {
    const auto ticks = qScopeGuard([this] { mostrar_unidad(); });
    ConditionsView* conditions = estado_.amount_unit() == AmountUnit::Grams ? estado_.conditions() : nullptr;
    if (conditions)
        conditions->cambiar_unidad(AmountUnit::Grams, AmountUnit::Moles);
    estado_.set_amount_unit(AmountUnit::Moles);
}

void frmprincipal::mnudato_Click() {
    estado_.show_window(QStringLiteral("frmdatos"));
}

void frmprincipal::mnugases_Click() {
    estado_.show_window(QStringLiteral("frmgases"));
}

void frmprincipal::mnudibujos_Click() {
    estado_.show_window(QStringLiteral("frmgraficos"));
}

void frmprincipal::mnuescala_Click() {
    estado_.show_window(QStringLiteral("frmescala"));
}

void frmprincipal::calcular(int mode) {
    estado_.calculation_mode = mode;
    emit estado_.calculation_mode_changed(mode);
    estado_.show_window(QStringLiteral("frmcalculos"));
}

void frmprincipal::mnup_Click() {
    calcular(1);
}

void frmprincipal::mnuv_Click() {
    calcular(2);
}

void frmprincipal::mnut_Click() {
    calcular(3);
}

void frmprincipal::mnuf_Click() {
    calcular(0);
}

void frmprincipal::mnuoperaciones_Click() {
    estado_.show_window(QStringLiteral("frmoperaciones"));
}

void frmprincipal::mnucrit_Click() {
    estado_.show_window(QStringLiteral("frmtabla"));
}

void frmprincipal::mnutermo_Click() {
    estado_.show_window(QStringLiteral("frmtablaay"));
}

void frmprincipal::mnutermosc_Click() {
    estado_.show_window(QStringLiteral("frmtermometro"));
}

void frmprincipal::mnuayuda_Click() {
    if (ayuda_)
        ayuda_(ventana_activa());
}

QString frmprincipal::ventana_activa() const {
    const QMdiSubWindow* front = area_->currentSubWindow();
    return front && front->widget() ? front->widget()->objectName() : QString();
}

void frmprincipal::mnuacercade_Click() {
    estado_.show_window(QStringLiteral("frmAbout"));
}

void frmprincipal::mnuidiomas_Click(int i) {
    const QStringList names = estado_.languages();
    if (i > names.size()) {
        estado_.show_window(QStringLiteral("frmIdioma"));
        return;
    }
    const auto ticks = qScopeGuard([this] { mostrar_idiomas(); });  // the running program keeps its language
    seleccionar_idioma(names[i - 1]);
}

bool frmprincipal::seleccionar_idioma(const QString& nombre) {
    const QString title = sin_mnemonico(estado_.texto(7));
    if (estado_.language_table().lineaseccion(nombre.toStdString()) == 0) {
        mensajes_.mostrar(estado_.texto(167), 16, title);
        return false;
    }
    try {
        tavo::confreg::escribirclave(estado_.language_path(), "idioma", "idioma", nombre.toStdString(), estado_.site());
    } catch (const tavo::RewriteRefused& error) {
        mensajes_.mostrar(mensaje_de_error(error, estado_), 16, title);
        return false;
    }
    mensajes_.mostrar(estado_.texto(168), 64, title);  // only now: it promises what has been written
    return true;
}

void frmprincipal::mostrar_unidad() {
    const bool moles = estado_.amount_unit() == AmountUnit::Moles;
    menu_entry(QStringLiteral("mnumoles"))->setChecked(moles);
    menu_entry(QStringLiteral("mnugramos"))->setChecked(!moles);
    Toolbar1->findChild<QAction*>(QStringLiteral("mol"))->setChecked(moles);
    Toolbar1->findChild<QAction*>(QStringLiteral("gramo"))->setChecked(!moles);
    lbunidad->setText(moles ? estado_.texto(506, QStringLiteral("Cantidades en moles"))
                            : estado_.texto(507, QStringLiteral("Cantidades en gramos")));
}

/// How many there are; a bad database is told once per version of it, and stays marked.
void frmprincipal::mostrar_gases() {
    const QString count = QString::number(estado_.gas_count());
    const QStringList problems = estado_.gas_problems();
    QString text = con_valor(estado_.texto(508, QStringLiteral("%1 gases")), count);
    if (!problems.isEmpty())
        text += u' ' + WARNING_SIGN;
    lbgases->setText(text);
    QStringList first = problems.first(std::min(problems.size(), MOST_PROBLEMS));
    if (first.size() < problems.size())
        first << QString(QChar(0x2026));
    lbgases->setToolTip(first.join(u'\n'));
    if (std::exchange(problemas_, problems) == problems || problems.isEmpty())
        return;
    const QString more = QString::number(problems.size() - 1);
    estado_.set_status(problems.size() == 1
                           ? problems.front()
                           : estado_.texto(749, QStringLiteral("%1 (y %2 avisos más)")).arg(problems.front(), more));
}

void frmprincipal::mostrar_estado(const QString& text, int milliseconds) {
    statusBar()->clearMessage();  // a menu's tip must not cover what just happened
    lbestado->setText(text);
    lbestado->setToolTip(text);
    if (milliseconds > 0)
        fin_del_mensaje_->start(milliseconds);
    else
        fin_del_mensaje_->stop();
}

void frmprincipal::closeEvent(QCloseEvent* event) {
    for (const char* name : {"frmgases", "frmcompuestos", "frmIdioma"}) {  // they ask before typed data are lost
        QWidget* window = estado_.open_window(QLatin1String(name));
        if (window && !window->close())
            return event->ignore();
    }
    event->accept();
    QCoreApplication::exit(0);
}

void frmprincipal::pintar_fondo() {
    area_->setBackground(palette().color(QPalette::Window).darker(112));
}

void frmprincipal::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        pintar_fondo();
    QMainWindow::changeEvent(event);
}

bool frmprincipal::eventFilter(QObject* watched, QEvent* event) {
    // Menus keep the tips of their disabled entries to themselves.
    const auto* menu = event->type() == QEvent::MouseMove ? qobject_cast<QMenu*>(watched) : nullptr;
    const QAction* pointed = menu ? menu->actionAt(static_cast<QMouseEvent*>(event)->position().toPoint()) : nullptr;
    if (pointed && !pointed->isEnabled())
        statusBar()->showMessage(pointed->statusTip());
    return QMainWindow::eventFilter(watched, event);
}

void frmprincipal::contextMenuEvent(QContextMenuEvent* event) {
    // With the mouse on the free ground only: a right click inside a child window means something else.
    const bool meant = event->reason() == QContextMenuEvent::Keyboard || childAt(event->pos()) == area_->viewport();
    if (!meant || area_->subWindowList().isEmpty())
        return;
    QMenu menu;
    menu.addAction(estado_.texto(530, QStringLiteral("&Cascada")), area_, &QMdiArea::cascadeSubWindows);
    menu.addAction(estado_.texto(531, QStringLiteral("&Mosaico")), area_, &QMdiArea::tileSubWindows);
    menu.addSeparator();
    const QList<QMdiSubWindow*> children = area_->subWindowList();
    for (QMdiSubWindow* child : children)
        menu.addAction(como_caption(child->windowTitle()), this, [this, child] { area_->mostrar(child->widget()); });
    menu.exec(event->globalPos());
}

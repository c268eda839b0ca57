#include "shell/frmayuda.h"

#include <QGuiApplication>
#include <QMenu>
#include <QScreen>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>
#include <array>
#include <utility>

#include "controls/iconos.h"
#include "shell/ayuda/papel_ayuda.h"
#include "shell/textos.h"

namespace {

constexpr std::array ZOOMS{0.6, 0.7, 0.8, 0.9, 1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.5, 3.0};
constexpr int STATUS_SHOWN = 8'000;  // ms
constexpr int CONTENTS = 270;        // width; on a small screen three tenths of the window

bool for_the_browser(const QUrl& address) {
    return address.scheme() == QLatin1String("http") || address.scheme() == QLatin1String("https");
}

}  // namespace

frmayuda::frmayuda(ApplicationState& estado, Impresora& impresora, Exterior& exterior)
    : estado_(estado),
      impresora_(impresora),
      exterior_(exterior),
      barra_(addToolBar(QString())),
      divisor_(new QSplitter),
      fichas_(new QTabWidget),
      contenido_(new PanelContenido),
      indice_(new PanelIndice([this](int k, const QString& literal) { return texto(k, literal); })),
      busqueda_(new PanelBusqueda([this](int k, const QString& literal) { return texto(k, literal); })),
      pagina_(new PaginaAyuda),
      barra_buscar_(new BarraBuscar([this](int k, const QString& literal) { return texto(k, literal); }, pagina_)) {
    setObjectName(QStringLiteral("frmayuda"));
    setWindowIcon(icono(QStringLiteral("ayuda")));
    setContextMenuPolicy(Qt::NoContextMenu);
    crear_barra();
    crear_paneles();
    crear_teclas();

    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    resize(QSize(940, 700).boundedTo(screen.size() * 0.92));
    move(screen.right() - width() - 12, screen.top() + (screen.height() - height()) / 2);
    const int contents = std::min(CONTENTS, width() * 3 / 10);
    divisor_->setSizes({contents, width() - contents});
}

QAction* frmayuda::accion(const char* name, const QString& tip, const QList<QKeySequence>& keys,
                          void (frmayuda::*run)()) {
    auto* action = new QAction(icono(QLatin1String(name)), tip, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    const QString key = keys.isEmpty() ? QString() : keys.front().toString(QKeySequence::NativeText);
    action->setToolTip(key.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, key));
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    barra_->addAction(action);
    barra_->widgetForAction(action)->setObjectName(QLatin1String(name));
    barra_->widgetForAction(action)->setAccessibleName(tip);
    barra_->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
    return action;
}

void frmayuda::crear_barra() {
    barra_->setObjectName(QStringLiteral("barra"));
    barra_->setMovable(false);
    barra_->setIconSize(QSize(24, 24));
    using f = frmayuda;
    mnuatras = accion("atras", texto(757, QStringLiteral("Atrás")), {QKeySequence("Alt+Left")}, &f::atras);
    mnuadelante = accion("adelante", texto(758, QStringLiteral("Adelante")), {QKeySequence("Alt+Right")}, &f::adelante);
    mnuportada =
        accion("portada", texto(759, QStringLiteral("Página inicial")), {QKeySequence("Alt+Home")}, &f::portada);
    barra_->addSeparator();
    mnuanterior = accion("pagina_anterior", texto(760, QStringLiteral("Página anterior")), {QKeySequence("Alt+Up")},
                         &f::pagina_anterior);
    mnusiguiente = accion("pagina_siguiente", texto(761, QStringLiteral("Página siguiente")),
                          {QKeySequence("Alt+Down")}, &f::pagina_siguiente);
    barra_->addSeparator();
    mnubuscar =
        accion("buscar", texto(762, QStringLiteral("Buscar en esta página")), {QKeySequence("Ctrl+F")}, &f::buscar);
    mnuampliar = accion("ampliar", texto(560, QStringLiteral("Ampliar")),
                        {QKeySequence("Ctrl++"), QKeySequence("Ctrl+=")}, &f::ampliar);
    mnureducir = accion("reducir", texto(561, QStringLiteral("Reducir")), {QKeySequence("Ctrl+-")}, &f::reducir);
    mnunormal = accion("tamano_normal", texto(763, QStringLiteral("Tamaño normal de la letra")),
                       {QKeySequence("Ctrl+0")}, &f::tamano_normal);
    barra_->addSeparator();
    mnucopiar = accion("copiar", texto(564, QStringLiteral("Copiar")), {QKeySequence("Ctrl+C")}, &f::copiar);
    mnuimprimir = accion("imprimir", sin_mnemonico(texto(37, QStringLiteral("Im&primir"))), {QKeySequence("Ctrl+P")},
                         &f::imprimir);
}

void frmayuda::crear_paneles() {
    fichas_->setObjectName(QStringLiteral("fichas"));
    contenido_->setObjectName(QStringLiteral("contenido"));
    pagina_->setObjectName(QStringLiteral("pagina"));
    barra_buscar_->setObjectName(QStringLiteral("barra_buscar"));
    fichas_->setDocumentMode(true);
    fichas_->addTab(contenido_, texto(750, QStringLiteral("&Contenido")));
    fichas_->addTab(indice_, texto(751, QStringLiteral("Índic&e")));
    fichas_->addTab(busqueda_, texto(752, QStringLiteral("&Buscar")));
    contenido_->setAccessibleName(spoken(fichas_->tabText(0)));

    auto* right = new QWidget;
    auto* column = new QVBoxLayout(right);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(pagina_, 1);
    column->addWidget(barra_buscar_);
    divisor_->setObjectName(QStringLiteral("divisor"));
    divisor_->addWidget(fichas_);
    divisor_->addWidget(right);
    divisor_->setStretchFactor(1, 1);
    divisor_->setChildrenCollapsible(false);
    setCentralWidget(divisor_);
    statusBar()->setSizeGripEnabled(true);

    pagina_->falta = [this](const QString& page) {
        return con_valor(texto(767, QStringLiteral("La página %1 no está en el archivo de ayuda.")), page);
    };
    pagina_->danada = [this](const QString&) {
        return con_valor(texto(769, QStringLiteral("El archivo de ayuda %1 está dañado y no se puede leer.")), nombre_);
    };
    pagina_->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(pagina_, &QWidget::customContextMenuRequested, this, &frmayuda::menu_de_pagina);
    connect(pagina_, &QTextBrowser::anchorClicked, this, &frmayuda::seguir_enlace);
    connect(pagina_, &QTextBrowser::copyAvailable, mnucopiar, &QAction::setEnabled);
    connect(pagina_, &PaginaAyuda::atras_pedido, this, &frmayuda::atras);
    connect(pagina_, &PaginaAyuda::adelante_pedido, this, &frmayuda::adelante);
    connect(pagina_, &PaginaAyuda::portada_pedida, this, &frmayuda::portada);
    connect(pagina_, &PaginaAyuda::zoom_pedido, this, &frmayuda::cambiar_zoom);
    connect(pagina_, &QTextBrowser::highlighted, this, [this](const QUrl& address) {
        statusBar()->showMessage(for_the_browser(address) ? address.toString() : QString());
    });
    connect(contenido_, &PanelContenido::pagina_elegida, this, &frmayuda::abrir);
    connect(indice_, &PanelIndice::pagina_elegida, this, &frmayuda::abrir);
    connect(busqueda_, &PanelBusqueda::pagina_elegida, this, [this](const QString& page, const QStringList& words) {
        abrir(page);
        pagina_->marcar(words);
    });
    // Who takes a tab with the mouse or by its letter wants to type there; arrow keys go on along the tabs.
    fichas_->tabBar()->installEventFilter(this);
    connect(fichas_, &QTabWidget::currentChanged, this, [this](int i) {
        if (!fichas_->tabBar()->hasFocus())
            fichas_->widget(i)->setFocus();
    });
    mnucopiar->setEnabled(false);
}

void frmayuda::crear_teclas() {
    const auto key = [this](const char* keys, auto run) {
        connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, run);
    };
    key("F3", [this] { barra_buscar_->ir(1); });
    key("Shift+F3", [this] { barra_buscar_->ir(-1); });
    key("Esc", [this] { cerrar(); });
    key("Ctrl+W", [this] { close(); });
    setTabOrder(fichas_, pagina_);
    pagina_->setFocus();
}

bool frmayuda::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::Shortcut)
        return QMainWindow::eventFilter(watched, event);
    watched->event(event);
    fichas_->currentWidget()->setFocus();
    return true;
}

void frmayuda::set_libro(std::shared_ptr<const tavo::chm::ChmFile> libro, const QString& nombre) {
    nombre_ = nombre;
    historial_.vaciar();
    // The panels let go of the old file before it may end.
    pagina_->set_libro(libro);
    contenido_->set_libro(*libro);
    indice_->set_libro(*libro);
    busqueda_->set_libro(*libro);
    libro_ = std::move(libro);
}

void frmayuda::abrir(const QString& page) {
    ir_a(PaginaAyuda::direccion(page));
}

void frmayuda::ir_a(const QUrl& address) {
    statusBar()->clearMessage();
    if (address == historial_.actual()) {
        mostrar({address, 0});
        return;
    }
    historial_.dejar(pagina_->verticalScrollBar()->value());
    historial_.ir(address);
    mostrar({address, 0});
}

/// An address with an anchor shows the anchor, unless the page was left somewhere else.
void frmayuda::mostrar(const Historial::Lugar& place) {
    pagina_->setSource(place.address);
    if (place.scroll > 0 || !place.address.hasFragment())
        pagina_->verticalScrollBar()->setValue(place.scroll);
    barra_buscar_->buscar();
    actualizar();
}

void frmayuda::actualizar() {
    const QString help = sin_mnemonico(texto(30, QStringLiteral("Ay&uda")));
    const QString title = pagina_->documentTitle().simplified();
    setWindowTitle(title.isEmpty() ? help : QStringLiteral("%1 - %2").arg(title, help));
    pagina_->setAccessibleName(title.isEmpty() ? help : title);
    contenido_->seleccionar(pagina());
    mnuatras->setEnabled(historial_.puede(-1));
    mnuadelante->setEnabled(historial_.puede(1));
    const int at = lugar_en_orden(), count = static_cast<int>(libro_->pages().size());
    mnuanterior->setEnabled(at > 0);
    mnusiguiente->setEnabled(at >= 0 && at + 1 < count);
    mnuampliar->setEnabled(pagina_->zoom() < ZOOMS.back());
    mnureducir->setEnabled(pagina_->zoom() > ZOOMS.front());
    mnunormal->setEnabled(pagina_->zoom() != 1.0);
}

int frmayuda::lugar_en_orden() const {
    const std::vector<std::string>& pages = libro_->pages();
    const auto found = std::ranges::find(pages, pagina().toStdString());
    return found == pages.end() ? -1 : static_cast<int>(found - pages.begin());
}

void frmayuda::seguir_enlace(const QUrl& address) {
    if (address.scheme() == PaginaAyuda::direccion({}).scheme()) {
        ir_a(address);
        return;
    }
    if (!for_the_browser(address) || !exterior_.abrir_direccion(address.toString()))
        statusBar()->showMessage(
            con_valor(texto(768, QStringLiteral("La dirección %1 no se ha abierto.")), address.toString()),
            STATUS_SHOWN);
}

void frmayuda::atras() {
    if (!historial_.puede(-1))
        return;
    historial_.dejar(pagina_->verticalScrollBar()->value());
    mostrar(historial_.volver(-1));
}

void frmayuda::adelante() {
    if (!historial_.puede(1))
        return;
    historial_.dejar(pagina_->verticalScrollBar()->value());
    mostrar(historial_.volver(1));
}

void frmayuda::portada() {
    abrir(QString::fromStdString(libro_->default_page()));
}

void frmayuda::vecina(int step) {
    abrir(QString::fromStdString(libro_->pages()[static_cast<std::size_t>(lugar_en_orden() + step)]));
}

void frmayuda::pagina_anterior() {
    vecina(-1);
}

void frmayuda::pagina_siguiente() {
    vecina(1);
}

void frmayuda::buscar() {
    barra_buscar_->abrir();
}

void frmayuda::cambiar_zoom(int steps) {
    const auto now = std::ranges::find(ZOOMS, pagina_->zoom()) - ZOOMS.begin();
    const auto next = std::clamp<std::ptrdiff_t>(now + steps, 0, std::ssize(ZOOMS) - 1);
    pagina_->set_zoom(ZOOMS[static_cast<std::size_t>(next)]);
    actualizar();
}

void frmayuda::ampliar() {
    cambiar_zoom(1);
}

void frmayuda::reducir() {
    cambiar_zoom(-1);
}

void frmayuda::tamano_normal() {
    pagina_->set_zoom(1.0);
    actualizar();
}

void frmayuda::copiar() {
    pagina_->copy();
}

void frmayuda::imprimir() {
    impresora_.imprimir(this, documento_de_pagina(*pagina_, pagina_->documentTitle().simplified(),
                                                  [this](int k, const QString& literal) { return texto(k, literal); }));
}

void frmayuda::cerrar() {
    if (barra_buscar_->isVisible())
        barra_buscar_->cerrar();
    else
        close();
}

void frmayuda::menu_de_pagina(const QPoint& place) {
    QMenu menu(this);
    menu.addActions({mnuatras, mnuadelante});
    menu.addSeparator();
    menu.addActions({mnucopiar, mnuimprimir});
    menu.exec(pagina_->mapToGlobal(place));
}

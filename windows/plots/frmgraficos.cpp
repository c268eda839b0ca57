#include "windows/plots/frmgraficos.h"

#include <QClipboard>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "core/errors.h"
#include "core/models.h"
#include "core/numtext.h"
#include "shell/textos.h"
#include "windows/plots/picture_file.h"

using graficos::Disposicion;
using graficos::to_data;
using graficos::to_surface;

namespace {

constexpr int CRITICAL = 16;
constexpr double VOLUME_DEFAULT = 5.0;  // l
constexpr double ZOOM_STEP = 0.8;
constexpr double CROSS_STEP = 0.01;  // of the surface
constexpr double JITTER = 3.0;       // pixels that a click may move
constexpr int ZOOM_COLOUR = 1;
constexpr int MARGIN = 6;
constexpr std::size_t HISTORY = 100;
const QSize PICTURE(1200, 800);

QString format(double x, const char* pattern) {
    return QString::fromStdString(tavo::Format(x, pattern));
}

}  // namespace

// ---- The drawing surface

SuperficieGrafico::SuperficieGrafico(frmgraficos& ventana, QWidget* padre) : QWidget(padre), ventana_(ventana) {
    setMouseTracking(true);
    setFocusPolicy(Qt::StrongFocus);
    setContextMenuPolicy(Qt::NoContextMenu);
    setCursor(Qt::CrossCursor);
}

void SuperficieGrafico::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    ventana_.pintar_encima(painter);
}

void SuperficieGrafico::mousePressEvent(QMouseEvent* event) {
    ventana_.pctgrafico_MouseDown(event->button(), event->position());
}

void SuperficieGrafico::mouseMoveEvent(QMouseEvent* event) {
    ventana_.pctgrafico_MouseMove(event->buttons(), event->position());
}

void SuperficieGrafico::mouseReleaseEvent(QMouseEvent* event) {
    ventana_.pctgrafico_MouseUp(event->button(), event->position());
}

void SuperficieGrafico::wheelEvent(QWheelEvent* event) {
    const double notches = event->angleDelta().y() / 120.0;
    if (notches != 0.0 && !ventana_.arrastre_)
        ventana_.ampliar(std::pow(ZOOM_STEP, notches), event->position());
    event->accept();
}

void SuperficieGrafico::keyPressEvent(QKeyEvent* event) {
    ventana_.pctgrafico_KeyDown(event);
}

void SuperficieGrafico::leaveEvent(QEvent*) {
    ventana_.estado_.set_coordinates(QString());
}

bool SuperficieGrafico::event(QEvent* event) {
    // The arrow keys and those for copying, saving and printing belong to the plot while it has the focus.
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Save) || key->matches(QKeySequence::Print) ||
            key->key() == Qt::Key_Escape) {
            event->accept();
            return true;
        }
    }
    return QWidget::event(event);
}

// ---- Making the window

frmgraficos::frmgraficos(ApplicationState& estado, Mensajes& mensajes, ElegirArchivo& archivos, Impresora& impresora,
                         QWidget* padre)
    : QWidget(padre), estado_(estado), mensajes_(mensajes), archivos_(archivos), impresora_(impresora) {
    setObjectName(QStringLiteral("frmgraficos"));
    setMinimumSize(300, 180);
    crear_herramientas();
    crear_hoja();
    Form_Load();
    setFocusProxy(pctgrafico);
    connect(&estado_, &ApplicationState::gases_changed, this, &frmgraficos::gases_Change);
}

void frmgraficos::crear_herramientas() {
    herramientas_ = new QWidget(this);
    auto* row = new QHBoxLayout(herramientas_);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    const auto tool = [&](const char* name, int caption, const char* literal, int tip, const char* tip_literal,
                          auto action) {
        auto* button = new QToolButton(herramientas_);
        button->setObjectName(QLatin1String(name));
        button->setText(estado_.texto(caption, QString::fromUtf8(literal)));
        button->setToolTip(estado_.texto(tip, QString::fromUtf8(tip_literal)));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this, action);
        row->addWidget(button);
        return button;
    };
    tool("btampliar", 560, "Ampliar", 570, "Amplía el gráfico (tecla +)", [this] { ampliar(ZOOM_STEP, {}); });
    tool("btreducir", 561, "Reducir", 571, "Reduce el gráfico (tecla -)", [this] { ampliar(1.0 / ZOOM_STEP, {}); });
    tool("btinicial", 562, "Escala inicial", 572, "Vuelve a la escala inicial (tecla Inicio o botón derecho del ratón)",
         [this] { predeterminado(); });
    btanterior = tool("btanterior", 563, "Escala anterior", 573, "Vuelve a la escala anterior (tecla Retroceso)",
                      [this] { anterior(); });
    tool("btcopiar", 564, "Copiar", 574, "Copia la imagen en el portapapeles (Ctrl+C)", [this] { copiar(); });
    tool("btguardar", 565, "Guardar...", 575, "Guarda la imagen en un archivo PNG, SVG o PDF (Ctrl+S)",
         [this] { guardar(); });
    tool("btimprimir", 845, "Imprimir...", 846, "Imprime el gráfico (Ctrl+P)", [this] { imprimir(); });
    row->addStretch();
}

void frmgraficos::crear_hoja() {
    frmgrafico = new QFrame(this);
    frmgrafico->setObjectName(QStringLiteral("frmgrafico"));
    frmgrafico->installEventFilter(this);
    pctgrafico = new SuperficieGrafico(*this, frmgrafico);
    pctgrafico->setObjectName(QStringLiteral("pctgrafico"));
    for (std::size_t i = 0; i < Linev.size(); ++i) {
        Linev[i] = new LineaRejilla(frmgrafico);
        Linev[i]->setObjectName(QStringLiteral("Linev(%1)").arg(i));
        Lineh[i] = new LineaRejilla(frmgrafico);
        Lineh[i]->setObjectName(QStringLiteral("Lineh(%1)").arg(i));
    }
    QPalette paper = palette();
    paper.setColor(QPalette::WindowText, Qt::black);
    const auto label = [&](const char* name, Qt::Alignment alignment) {
        auto* made = new QLabel(frmgrafico);
        made->setObjectName(QLatin1String(name));
        made->setAlignment(alignment);
        made->setPalette(paper);
        made->setAttribute(Qt::WA_TransparentForMouseEvents);
        return made;
    };
    x0y0x = label("x0y0x", Qt::AlignCenter);
    x1y0 = label("x1y0", Qt::AlignCenter);
    x0y0y = label("x0y0y", Qt::AlignRight | Qt::AlignVCenter);
    x0y1 = label("x0y1", Qt::AlignRight | Qt::AlignVCenter);
    lbx = label("lbx", Qt::AlignCenter);
    lby = label("lby", Qt::AlignLeft | Qt::AlignVCenter);
    lbx->setText(estado_.texto(408, QStringLiteral("V (l)")));
    lby->setText(estado_.texto(409, QStringLiteral("P (atm.)")));
}

QSize frmgraficos::sizeHint() const {
    return {900, 600};
}

// ---- Load, unload, resize

void frmgraficos::Form_Load() {
    frmgraficos::actualiza();
    escena_ = graficos::empty_scene(estado_.current_range);
    setWindowTitle(sin_mnemonico(estado_.texto(3)));
    pctgrafico->setAccessibleName(windowTitle());
    btanterior->setEnabled(false);
    estado_.plot_shown = 1;
    emit estado_.plot_window_changed(true);
}

void frmgraficos::Form_Unload() {
    estado_.plot_shown = 0;
    estado_.set_status(QString());
    estado_.set_coordinates(QString());
    emit estado_.plot_window_changed(false);
}

void frmgraficos::closeEvent(QCloseEvent* event) {
    Form_Unload();
    event->accept();
}

void frmgraficos::resizeEvent(QResizeEvent*) {
    const QWidget* outer = parentWidget();
    if (!isMinimized() && !(outer && outer->isMinimized()))
        Form_Resize();
}

void frmgraficos::Form_Resize() {
    colocar();
    // A range that was refused would raise the same warning with every pixel that the window grows.
    if (rechazado_ == estado_.current_range)
        return;
    if (comprueba_rango()) {
        rechazado_.reset();
        dibuja();
    } else {
        rechazado_ = estado_.current_range;
    }
}

/// The curves of the gases as they are now, where the user looks: only a range that was the default follows it.
void frmgraficos::gases_Change() {
    const PlotRange shown = estado_.current_range;
    const bool at_default = shown == estado_.default_range;
    actualiza();
    if (!at_default)
        estado_.current_range = shown;
    if (graficos::check(estado_.current_range) == graficos::RangeFault::None)
        dibuja();
    else
        limpiar();
}

void frmgraficos::colocar() {
    const double left = 0.1 * width() / 3.0;
    herramientas_->setGeometry(static_cast<int>(left), MARGIN, static_cast<int>(0.9 * width()),
                               herramientas_->sizeHint().height());
    const int top = herramientas_->geometry().bottom() + MARGIN;
    frmgrafico->setGeometry(static_cast<int>(left), top, static_cast<int>(0.9 * width()),
                            std::max(1, height() - top - 2 * MARGIN));

    const QRectF sheet(frmgrafico->rect());
    const Disposicion where = graficos::disponer(sheet, escena_, QFontMetricsF(font()));
    pctgrafico->setGeometry(where.plot.toRect());
    x0y0x->setGeometry(where.x0y0x.toAlignedRect());
    x0y0y->setGeometry(where.x0y0y.toAlignedRect());
    x1y0->setGeometry(where.x1y0.toAlignedRect());
    x0y1->setGeometry(where.x0y1.toAlignedRect());
    lbx->setGeometry(where.lbx.toAlignedRect());
    lby->setGeometry(where.lby.toAlignedRect());
    for (std::size_t i = 0; i < Linev.size(); ++i) {
        const double part = static_cast<double>(i) / static_cast<double>(Linev.size() - 1);
        const double x = where.plot.left() + part * where.plot.width();
        const double y = where.plot.bottom() - part * where.plot.height();
        Linev[i]->line = QLineF(x, where.plot.top(), x, where.plot.bottom());
        Lineh[i]->line = QLineF(where.plot.left(), y, where.plot.right(), y);
    }
    sucia_ = true;
    frmgrafico->update();
}

// ---- What others ask of the plot

void frmgraficos::actualiza() {
    estado_.set_status(QString());  // what was read from the curves before is no longer true
    estado_.default_range.vmin = 0.0;
    estado_.default_range.vmax = VOLUME_DEFAULT;
    estado_.current_range.vmax = VOLUME_DEFAULT;
    if (ConditionsView* conditions = estado_.conditions())
        conditions->copiar_filas();
    const auto pressures =
        graficos::default_pressure_range(estado_.slot_table(), estado_.default_range.vmin, estado_.default_range.vmax);
    estado_.default_range.pmin = pressures.min;
    estado_.default_range.pmax = pressures.max;
    estado_.current_range.pmin = pressures.min;
    estado_.current_range.pmax = pressures.max;
}

bool frmgraficos::comprueba_rango() {
    const auto fault = graficos::check(estado_.current_range);
    if (fault != graficos::RangeFault::None) {
        mensajes_.mostrar(estado_.texto(static_cast<int>(fault)) + '\n' + estado_.texto(163), CRITICAL,
                          estado_.texto(407, QStringLiteral("Advertencia")));
        return false;
    }
    mostrar_extremos();
    return true;
}

void frmgraficos::mostrar_extremos() {
    const auto ends = graficos::empty_scene(estado_.current_range).end_labels;
    x0y0x->setText(QString::fromStdString(ends[0]));
    x0y0y->setText(QString::fromStdString(ends[1]));
    x1y0->setText(QString::fromStdString(ends[2]));
    x0y1->setText(QString::fromStdString(ends[3]));
}

void frmgraficos::dibuja() {
    if (!comprueba_rango())
        return;
    const PlotRange& range = estado_.current_range;
    if (escena_.range != range && (historia_.empty() || historia_.back() != escena_.range)) {
        historia_.push_back(escena_.range);
        if (historia_.size() > HISTORY)
            historia_.erase(historia_.begin());
    }
    btanterior->setEnabled(!historia_.empty());
    escena_ = graficos::scene(estado_.slot_table(), range, graficos::descriptions(estado_));
    for (const graficos::Curve& curve : escena_.curves) {
        if (!curve.complete)
            estado_.set_status(estado_
                                   .texto(558, QStringLiteral("Isoterma %1: algunos puntos no tienen presión "
                                                              "calculable y no se dibujan"))
                                   .arg(curve.row));
    }
    colocar();
}

void frmgraficos::limpiar() {
    escena_.curves.clear();
    sucia_ = true;
    frmgrafico->update();
}

void frmgraficos::habilitar(bool enabled) {
    setEnabled(enabled);
}

// ---- Painting

bool frmgraficos::eventFilter(QObject* watched, QEvent* event) {
    if (watched != frmgrafico || event->type() != QEvent::Paint)
        return QWidget::eventFilter(watched, event);
    pintar_hoja();
    return true;
}

void frmgraficos::pintar_hoja() {
    const double ratio = devicePixelRatioF();
    if (sucia_ || hoja_.devicePixelRatio() != ratio) {
        hoja_ = QPixmap((QSizeF(frmgrafico->size()) * ratio).toSize());
        hoja_.setDevicePixelRatio(ratio);
        QPainter painter(&hoja_);
        painter.setFont(font());
        graficos::pintar(painter, QRectF(frmgrafico->rect()), escena_, lbx->text(), lby->text(),
                         graficos::AxisTexts::LeftOut);
        sucia_ = false;
    }
    QPainter painter(frmgrafico);
    painter.drawPixmap(0, 0, hoja_);
}

void frmgraficos::pintar_encima(QPainter& painter) {
    if (cruz_ && pctgrafico->hasFocus()) {
        const QPointF at = to_surface(*cruz_, surface(), escena_.range);
        painter.setPen(QPen(QColor(96, 96, 96), 1.0, Qt::DashLine));
        painter.drawLine(QPointF(0.0, at.y()), QPointF(pctgrafico->width(), at.y()));
        painter.drawLine(QPointF(at.x(), 0.0), QPointF(at.x(), pctgrafico->height()));
    }
    if (arrastre_) {
        QColor shade = graficos::palette_colour(ZOOM_COLOUR);
        painter.setPen(QPen(shade, 1.0, Qt::DotLine));
        shade.setAlpha(12);
        painter.setBrush(shade);
        painter.drawRect(QRectF(arrastre_->desde, arrastre_->hasta).normalized());
    }
}

// ---- Mouse

graficos::Point frmgraficos::data_at(QPointF at) const {
    return to_data(at, surface(), escena_.range);
}

void frmgraficos::pctgrafico_MouseDown(Qt::MouseButton button, QPointF at) {
    if (button == Qt::RightButton) {
        if (arrastre_)
            terminar_arrastre(false, at);
        else
            predeterminado();
    }
    if (button != Qt::LeftButton || arrastre_)
        return;
    arrastre_ = Arrastre{estado_.current_range, at, at};
    const Point corner = data_at(at);
    estado_.current_range.vmin = corner.x;
    estado_.current_range.pmin = corner.y;
}

void frmgraficos::pctgrafico_MouseMove(Qt::MouseButtons buttons, QPointF at) {
    const Point p = data_at(at);
    mostrar_coordenadas(p);
    if (arrastre_ && (buttons & Qt::LeftButton)) {
        arrastre_->hasta = {std::clamp(at.x(), 0.0, surface().width()), std::clamp(at.y(), 0.0, surface().height())};
        pctgrafico->update();
    }
    if (buttons != Qt::NoButton)
        return;
    const QString text = QStringLiteral("(%1,%2)").arg(format(p.x, "####0.0000"), format(p.y, "####0.0000"));
    pctgrafico->setToolTip(text);
    if (QToolTip::isVisible())
        QToolTip::showText(pctgrafico->mapToGlobal(at.toPoint()), text, pctgrafico);
}

void frmgraficos::pctgrafico_MouseUp(Qt::MouseButton button, QPointF at) {
    if (button == Qt::LeftButton && arrastre_)
        terminar_arrastre(true, at);
}

void frmgraficos::terminar_arrastre(bool zoom, QPointF at) {
    const Arrastre drag = *arrastre_;
    arrastre_.reset();
    pctgrafico->update();
    const QPointF moved = at - drag.desde;
    const QPointF end(std::clamp(at.x(), 0.0, surface().width()), std::clamp(at.y(), 0.0, surface().height()));
    const PlotRange wanted = graficos::between({estado_.current_range.vmin, estado_.current_range.pmin}, data_at(end));
    const bool click = std::abs(moved.x()) < JITTER && std::abs(moved.y()) < JITTER;
    if (!zoom || click || wanted.vmin == wanted.vmax || wanted.pmin == wanted.pmax) {
        estado_.current_range = drag.inicial;
        return;
    }
    estado_.current_range = wanted;
    if (comprueba_rango())
        dibuja();
    else
        estado_.current_range = drag.inicial;
}

void frmgraficos::mostrar_coordenadas(Point p) {
    estado_.set_coordinates(
        QStringLiteral("V = %1 l   P = %2 atm").arg(format(p.x, "####0.0000"), format(p.y, "####0.0000")));
}

// ---- Keyboard and commands

void frmgraficos::pctgrafico_KeyDown(QKeyEvent* event) {
    const double step = event->modifiers() & Qt::ShiftModifier ? 10.0 : 1.0;
    if (event->matches(QKeySequence::Copy))
        return copiar();
    if (event->matches(QKeySequence::Save))
        return guardar();
    if (event->matches(QKeySequence::Print))
        return imprimir();
    std::optional<QPointF> cross;
    if (cruz_)
        cross = to_surface(*cruz_, surface(), escena_.range);
    switch (event->key()) {
        case Qt::Key_Left:
            return mover_cruz(-step, 0.0);
        case Qt::Key_Right:
            return mover_cruz(step, 0.0);
        case Qt::Key_Up:
            return mover_cruz(0.0, -step);
        case Qt::Key_Down:
            return mover_cruz(0.0, step);
        case Qt::Key_Plus:
            return ampliar(ZOOM_STEP, cross);
        case Qt::Key_Minus:
            return ampliar(1.0 / ZOOM_STEP, cross);
        case Qt::Key_Home:
            return predeterminado();
        case Qt::Key_Backspace:
            return anterior();
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return leer_curvas();
        case Qt::Key_Escape:
            if (arrastre_)
                terminar_arrastre(false, arrastre_->hasta);
            else
                cruz_.reset();
            return pctgrafico->update();
        default:
            event->ignore();
    }
}

void frmgraficos::mover_cruz(double columns, double rows) {
    QPointF at = surface().center();
    if (cruz_)
        at = to_surface(*cruz_, surface(), escena_.range);
    at += QPointF(columns * CROSS_STEP * surface().width(), rows * CROSS_STEP * surface().height());
    at = {std::clamp(at.x(), 0.0, surface().width()), std::clamp(at.y(), 0.0, surface().height())};
    cruz_ = data_at(at);
    mostrar_coordenadas(*cruz_);
    pctgrafico->update();
}

void frmgraficos::leer_curvas() {
    if (!cruz_)
        mover_cruz(0.0, 0.0);
    QStringList readings;
    for (const graficos::Curve& curve : escena_.curves) {
        try {
            const double p = tavo::pressure(estado_.slot_table(), curve.row, cruz_->x);
            readings << QStringLiteral("P%1 = %2").arg(QString::number(curve.row), format(p, "####0.0000"));
        } catch (const tavo::FloatingPointError&) {
            readings << QStringLiteral("P%1 = -----").arg(curve.row);
        }
    }
    const QString where = QStringLiteral("V = %1 l").arg(format(cruz_->x, "####0.0000"));
    estado_.set_status((QStringList{where} + readings).join(QStringLiteral("   ")));
}

bool frmgraficos::dibuja_si_cabe(const PlotRange& range) {
    constexpr double RESOLUTION = 1e-9;  // below this the numbers of an axis run out of digits
    const bool fine = std::abs(range.vmax - range.vmin) > RESOLUTION * std::abs(range.vmax + range.vmin) &&
                      std::abs(range.pmax - range.pmin) > RESOLUTION * std::abs(range.pmax + range.pmin);
    if (!fine || graficos::check(range) != graficos::RangeFault::None) {
        estado_.set_status(estado_.texto(566, QStringLiteral("El gráfico no se puede ampliar o reducir más")), 5000);
        return false;
    }
    estado_.current_range = range;
    dibuja();
    return true;
}

void frmgraficos::ampliar(double factor, std::optional<QPointF> about) {
    if (!arrastre_)
        dibuja_si_cabe(graficos::scaled(escena_.range, data_at(about.value_or(surface().center())), factor));
}

void frmgraficos::predeterminado() {
    if (arrastre_)
        return;
    estado_.current_range = estado_.default_range;
    if (comprueba_rango())
        dibuja();
}

void frmgraficos::anterior() {
    if (historia_.empty() || arrastre_)
        return;
    const PlotRange back = historia_.back();
    historia_.pop_back();
    auto kept = historia_;
    if (dibuja_si_cabe(back))
        historia_ = std::move(kept);  // going back is no step forward
    btanterior->setEnabled(!historia_.empty());
}

void frmgraficos::copiar() {
    const graficos::Picture picture{escena_, lbx->text(), lby->text(), windowTitle()};
    QGuiApplication::clipboard()->setImage(graficos::image(picture, frmgrafico->size(), 2.0));
    estado_.set_status(estado_.texto(567, QStringLiteral("Imagen copiada")), 5000);
}

void frmgraficos::guardar() {
    const QString title = estado_.texto(568, QStringLiteral("Guardar la imagen"));
    const QString file = archivos_.guardar(this, title, QStringLiteral("isotermas.png"),
                                           QStringLiteral("PNG (*.png);;SVG (*.svg);;PDF (*.pdf)"));
    if (file.isEmpty())
        return;
    try {
        graficos::save({escena_, lbx->text(), lby->text(), windowTitle()}, file, PICTURE);
        estado_.set_status(estado_.texto(569, QStringLiteral("Imagen guardada en %1")).arg(file), 5000);
    } catch (const tavo::Error&) {
        mensajes_.mostrar(estado_
                              .texto(559, QStringLiteral("La imagen no se ha podido guardar en %1. Elija un "
                                                         "archivo terminado en .png, .svg o .pdf en una carpeta "
                                                         "en la que pueda escribir."))
                              .arg(file),
                          CRITICAL, title);
    }
}

void frmgraficos::imprimir() {
    const graficos::Picture picture{escena_, lbx->text(), lby->text(), windowTitle()};
    impresora_.imprimir(this,
                        {picture.title, [picture](QPrinter& printer) { graficos::print(picture, printer); }, true});
}

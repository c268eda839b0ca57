#include "controls/vista_previa.h"

#include <QEvent>
#include <QFile>
#include <QGraphicsView>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QProgressDialog>
#include <QRegularExpression>
#include <QSaveFile>
#include <QScreen>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTemporaryDir>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

#include "controls/iconos.h"

namespace {

constexpr int CRITICAL = 16, YES_NO = 36;
constexpr int MARGIN = 12, SPACING = 6;
constexpr int PATIENCE = 1000;  // milliseconds before a job shows its progress
constexpr double ZOOM_STEP = 1.25;
constexpr double SMALLEST = 0.1, LARGEST = 8.0;  // of the paper's size
constexpr double SCREEN_PART = 0.9;

/// A caption as the title of a box: no mnemonic, no "...".
QString as_title(const QString& caption) {
    QString title = spoken(caption);
    title.remove(QStringLiteral("..."));
    return title;
}

/// A title as the name of a file, in every file system.
QString as_file_name(QString title) {
    static const QRegularExpression forbidden(QStringLiteral("[\\x00-\\x1F/\\\\:*?\"<>|]+"));
    title = title.replace(forbidden, QStringLiteral(" ")).simplified();
    return (title.isEmpty() ? QStringLiteral("tavo-gas") : title) + QStringLiteral(".pdf");
}

QFrame* gap(QWidget* parent) {
    auto* line = new QFrame(parent);
    line->setFrameStyle(QFrame::VLine | QFrame::Sunken);
    return line;
}

/// Whole or not at all.
bool copy_pdf(const QString& pages, const QString& file) {
    QFile source(pages);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = source.readAll();
    if (!bytes.trimmed().endsWith("%%EOF"))
        return false;
    QSaveFile target(file);
    return target.open(QIODevice::WriteOnly) && target.write(bytes) == bytes.size() && target.commit();
}

QPageLayout::Orientation orientation_of(const Documento& documento) {
    return documento.apaisado ? QPageLayout::Landscape : QPageLayout::Portrait;
}

}  // namespace

VistaPrevia::VistaPrevia(Documento documento, Ayudantes ayudantes, QWidget* padre)
    : QDialog(padre),
      documento_(std::move(documento)),
      ayudantes_(std::move(ayudantes)),
      papel_(orientation_of(documento_)) {
    setObjectName(QStringLiteral("VistaPrevia"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowTitle(ayudantes_.texto(821, QStringLiteral("Vista previa: %1")).arg(documento_.titulo));
    vista = new QPrintPreviewWidget(&papel_, this);
    vista->setObjectName(QStringLiteral("vista"));
    vista->setAccessibleName(windowTitle());
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(MARGIN, SPACING, MARGIN, MARGIN);
    rows->setSpacing(SPACING);
    rows->addWidget(crear_herramientas());
    rows->addWidget(vista, 1);
    rows->addWidget(crear_pie());
    connect(vista, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* paper) { documento_.pintar(*paper); });
    connect(vista, &QPrintPreviewWidget::previewChanged, this, &VistaPrevia::vista_Change);
    vista->fitInView();
    resize(VistaPrevia::sizeHint());  // a dialog by itself takes two thirds of the screen at most
    fondo();
    vista->setFocus();
}

VistaPrevia::~VistaPrevia() = default;

// ---- Making the window

QToolButton* VistaPrevia::boton(QHBoxLayout* row, const char* name, const char* icon, const QString& text,
                                const QList<QKeySequence>& keys, void (VistaPrevia::*handler)()) {
    auto* button = new QToolButton;
    button->setObjectName(QLatin1String(name));
    button->setText(text);
    button->setIcon(icono(QLatin1String(icon)));
    button->setAccessibleName(as_title(text));
    button->setToolTip(keys.isEmpty() ? as_title(text)
                                      : QStringLiteral("%1 (%2)").arg(as_title(text),
                                                                      keys.front().toString(QKeySequence::NativeText)));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, handler);
    for (const QKeySequence& key : keys)
        tecla(key, [button] { button->click(); });
    row->addWidget(button);
    return button;
}

void VistaPrevia::tecla(const QKeySequence& key, std::function<void()> action) {
    connect(new QShortcut(key, this), &QShortcut::activated, this, std::move(action));
}

QWidget* VistaPrevia::crear_herramientas() {
    const Texto& texto = ayudantes_.texto;
    auto* tools = new QWidget(this);
    auto* row = new QHBoxLayout(tools);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    btimprimir = boton(row, "btimprimir", "imprimir", texto(810, QStringLiteral("&Imprimir...")), {QKeySequence::Print},
                       &VistaPrevia::btimprimir_Click);
    btpdf = boton(row, "btpdf", "pdf", texto(811, QStringLiteral("&Guardar como PDF...")), {QKeySequence::Save},
                  &VistaPrevia::btpdf_Click);
    for (QToolButton* button : {btimprimir, btpdf})
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    row->addWidget(gap(tools));
    btvertical = boton(row, "btvertical", "hoja_vertical", texto(812, QStringLiteral("&Vertical")), {},
                       &VistaPrevia::btvertical_Click);
    bthorizontal = boton(row, "bthorizontal", "hoja_horizontal", texto(813, QStringLiteral("&Horizontal")), {},
                         &VistaPrevia::bthorizontal_Click);
    row->addWidget(gap(tools));
    btancho = boton(row, "btancho", "al_ancho", texto(814, QStringLiteral("Ajustar al ancho")),
                    {QKeySequence(Qt::CTRL | Qt::Key_1)}, &VistaPrevia::btancho_Click);
    btpagina = boton(row, "btpagina", "a_la_pagina", texto(815, QStringLiteral("Ajustar a la página")),
                     {QKeySequence(Qt::CTRL | Qt::Key_0)}, &VistaPrevia::btpagina_Click);
    btampliar = boton(row, "btampliar", "ampliar", texto(560, QStringLiteral("Ampliar")),
                      {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
                      &VistaPrevia::btampliar_Click);
    btreducir = boton(row, "btreducir", "reducir", texto(561, QStringLiteral("Reducir")),
                      {QKeySequence(Qt::CTRL | Qt::Key_Minus)}, &VistaPrevia::btreducir_Click);
    row->addStretch();
    for (QToolButton* button : {btvertical, bthorizontal, btancho, btpagina})
        button->setCheckable(true);
    return tools;
}

QWidget* VistaPrevia::crear_pie() {
    const Texto& texto = ayudantes_.texto;
    auto* foot = new QWidget(this);
    auto* row = new QHBoxLayout(foot);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(SPACING);
    btanterior = boton(row, "btanterior", "subir", texto(816, QStringLiteral("Página anterior")),
                       {QKeySequence(Qt::Key_PageUp)}, &VistaPrevia::btanterior_Click);
    txtpagina = new QSpinBox;
    txtpagina->setObjectName(QStringLiteral("txtpagina"));
    txtpagina->setAccessibleName(spoken(texto(400, QStringLiteral("Página:"))));
    txtpagina->setButtonSymbols(QSpinBox::NoButtons);
    txtpagina->setAlignment(Qt::AlignCenter);
    txtpagina->setKeyboardTracking(false);
    connect(txtpagina, &QSpinBox::valueChanged, this, &VistaPrevia::ir_a);
    row->addWidget(txtpagina);
    btsiguiente = boton(row, "btsiguiente", "bajar", texto(817, QStringLiteral("Página siguiente")),
                        {QKeySequence(Qt::Key_PageDown)}, &VistaPrevia::btsiguiente_Click);
    lbestado = new QLabel;
    lbestado->setObjectName(QStringLiteral("lbestado"));
    lbestado->setTextFormat(Qt::PlainText);
    lbestado->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    row->addWidget(lbestado, 1);
    btcerrar = new QPushButton(texto(819, QStringLiteral("&Cerrar")));
    btcerrar->setObjectName(QStringLiteral("btcerrar"));
    btcerrar->setAutoDefault(false);
    connect(btcerrar, &QPushButton::clicked, this, &QDialog::reject);
    row->addWidget(btcerrar);
    tecla(QKeySequence(Qt::CTRL | Qt::Key_Home), [this] { ir_a(1); });
    tecla(QKeySequence(Qt::CTRL | Qt::Key_End), [this] { ir_a(vista->pageCount()); });
    return foot;
}

QSize VistaPrevia::sizeHint() const {
    const QSize wanted =
        papel_.pageLayout().orientation() == QPageLayout::Landscape ? QSize(960, 760) : QSize(760, 900);
    const QSize room = (QSizeF(screen()->availableSize()) * SCREEN_PART).toSize();
    return wanted.boundedTo(room).expandedTo(minimumSizeHint());
}

// ---- The view

void VistaPrevia::ir_a(int pagina) {
    if (pagina >= 1 && pagina <= vista->pageCount() && pagina != vista->currentPage())
        vista->setCurrentPage(pagina);
    vista_Change();
}

void VistaPrevia::btanterior_Click() {
    ir_a(vista->currentPage() - 1);
}

void VistaPrevia::btsiguiente_Click() {
    ir_a(vista->currentPage() + 1);
}

void VistaPrevia::vista_Change() {
    const int all = vista->pageCount(), page = vista->currentPage();
    const QStringList around = ayudantes_.texto(818, QStringLiteral("Página %1 de %2")).split(QStringLiteral("%1"));
    {
        const QSignalBlocker quiet(txtpagina);
        txtpagina->setPrefix(around.value(0));
        txtpagina->setSuffix(around.value(1).arg(all));
        txtpagina->setRange(1, std::max(1, all));
        txtpagina->setValue(page);
    }
    btanterior->setEnabled(page > 1);
    btsiguiente->setEnabled(page < all);
    const bool wide = vista->orientation() == QPageLayout::Landscape;
    btvertical->setChecked(!wide);
    bthorizontal->setChecked(wide);
    btancho->setChecked(vista->zoomMode() == QPrintPreviewWidget::FitToWidth);
    btpagina->setChecked(vista->zoomMode() == QPrintPreviewWidget::FitInView);
    btampliar->setEnabled(vista->zoomFactor() < LARGEST);
    btreducir->setEnabled(vista->zoomFactor() > SMALLEST);
}

void VistaPrevia::btvertical_Click() {
    vista->setOrientation(QPageLayout::Portrait);
    vista_Change();
}

void VistaPrevia::bthorizontal_Click() {
    vista->setOrientation(QPageLayout::Landscape);
    vista_Change();
}

void VistaPrevia::btancho_Click() {
    vista->fitToWidth();
    vista_Change();
}

void VistaPrevia::btpagina_Click() {
    vista->fitInView();
    vista_Change();
}

void VistaPrevia::btampliar_Click() {
    escalar(ZOOM_STEP);
}

void VistaPrevia::btreducir_Click() {
    escalar(1.0 / ZOOM_STEP);
}

void VistaPrevia::escalar(double factor) {
    vista->setZoomFactor(std::clamp(vista->zoomFactor() * factor, SMALLEST, LARGEST));
    vista_Change();
}

/// The paper lies on the palette's dark ground.
void VistaPrevia::fondo() {
    if (auto* view = vista->findChild<QGraphicsView*>())
        view->setBackgroundBrush(palette().color(QPalette::Mid));
}

void VistaPrevia::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        fondo();
}

void VistaPrevia::resizeEvent(QResizeEvent* event) {
    QDialog::resizeEvent(event);
    mostrar_estado(estado_);
}

void VistaPrevia::mostrar_estado(const QString& text) {
    estado_ = text;
    lbestado->setText(lbestado->fontMetrics().elidedText(text, Qt::ElideMiddle, lbestado->width()));
    lbestado->setToolTip(text);
}

// ---- Onto paper, into a file

/// Draws the document; what takes longer shows how far it has come and can be stopped.
VistaPrevia::Trabajo VistaPrevia::componer(Papel& papel, int total) {
    QProgressDialog progress(ayudantes_.texto(824, QStringLiteral("Preparando las páginas...")),
                             ayudantes_.texto(825, QStringLiteral("Cancelar")), 0, total, this);
    progress.setWindowTitle(documento_.titulo);
    progress.setWindowModality(Qt::WindowModal);
    progress.setMinimumDuration(PATIENCE);
    int drawn = 0;
    papel.al_pasar_pagina = [&](int pages) {
        drawn = pages;
        progress.setValue(pages);
        return !progress.wasCanceled();
    };
    documento_.pintar(papel);
    papel.al_pasar_pagina = nullptr;
    if (progress.wasCanceled())
        return {Final::Cancelado, drawn};
    const QPrinter::PrinterState state = papel.printerState();
    return {state == QPrinter::Error || state == QPrinter::Aborted ? Final::Fallado : Final::Hecho, drawn + 1};
}

void VistaPrevia::btimprimir_Click() {
    const Texto& texto = ayudantes_.texto;
    const QString title = as_title(btimprimir->text());
    if (!ayudantes_.impresoras.hay()) {
        const QString question = texto(
            820,
            QStringLiteral("En este equipo no hay ninguna impresora instalada. ¿Quiere guardar las páginas como PDF?"));
        if (ayudantes_.mensajes.mostrar(question, YES_NO, title) == Respuesta::Si)
            btpdf_Click();
        return;
    }
    Papel job(QPageLayout::Portrait);
    job.setPageLayout(papel_.pageLayout());
    job.setDocName(documento_.titulo);
    if (!ayudantes_.impresoras.elegir(this, job, vista->currentPage()))
        return;
    const int total = job.fromPage() > 0 ? job.toPage() - job.fromPage() + 1 : vista->pageCount();
    const Trabajo done = componer(job, total);
    switch (done.final) {
        case Final::Hecho:
            return mostrar_estado(texto(826, QStringLiteral("Enviado a la impresora %1")).arg(job.printerName()));
        case Final::Cancelado:
            return mostrar_estado(texto(829, QStringLiteral("Cancelado: la impresora ha recibido %1 de %2 páginas"))
                                      .arg(done.paginas)
                                      .arg(total));
        case Final::Fallado:
            ayudantes_.mensajes.mostrar(
                texto(823, QStringLiteral("La impresora %1 no ha aceptado el trabajo. Compruebe que está encendida y "
                                          "conectada e inténtelo de nuevo."))
                    .arg(job.printerName()),
                CRITICAL, title);
    }
}

void VistaPrevia::btpdf_Click() {
    const Texto& texto = ayudantes_.texto;
    const QString title = as_title(btpdf->text());
    const QString file =
        ayudantes_.archivos.guardar(this, title, as_file_name(documento_.titulo), QStringLiteral("PDF (*.pdf)"));
    if (file.isEmpty())
        return;
    // A printer does not tell that a disk is full, and leaves half a file: first beside, then in one go.
    const QTemporaryDir beside;
    const QString pages = beside.filePath(QStringLiteral("paginas.pdf"));
    Papel job(QPageLayout::Portrait);
    job.setPageLayout(papel_.pageLayout());
    job.setOutputFormat(QPrinter::PdfFormat);
    job.setOutputFileName(pages);
    job.setDocName(documento_.titulo);
    job.setCreator(QStringLiteral("TAVO-GAS"));
    const Final end = componer(job, vista->pageCount()).final;
    if (end == Final::Cancelado)
        return mostrar_estado(texto(828, QStringLiteral("Cancelado: no se ha guardado nada")));
    if (end == Final::Hecho && copy_pdf(pages, file))
        return mostrar_estado(texto(827, QStringLiteral("PDF guardado en %1")).arg(file));
    ayudantes_.mensajes.mostrar(
        texto(822, QStringLiteral("No se ha podido escribir %1. Elija otro nombre, o una carpeta en la que "
                                  "pueda escribir y con espacio libre."))
            .arg(file),
        CRITICAL, title);
}

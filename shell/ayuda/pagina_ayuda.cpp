#include "shell/ayuda/pagina_ayuda.h"

#include <QAbstractTextDocumentLayout>
#include <QApplication>
#include <QMouseEvent>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

#include "shell/ayuda/imagenes_ayuda.h"

namespace {

constexpr auto SCHEME = "ayuda";
constexpr double LETTER = 1.1;  // of the program's own
constexpr double COLUMN = 46;   // widest column of text, in heights of its letters
constexpr int MARGIN = 28;      // least room beside it
constexpr double PX_PER_PT = 96.0 / 72.0;
const QColor LINK(0x0B, 0x4F, 0xA8), FOUND(0xFF, 0xE9, 0x9A), CURRENT(0xFF, 0xB6, 0x4A);

/// Lengths that a page gives, in points and `zoom` times as large.
QTextCharFormat scaled(QTextCharFormat format, double zoom) {
    if (format.hasProperty(QTextFormat::FontPixelSize)) {
        const double pixels = format.intProperty(QTextFormat::FontPixelSize);
        format.clearProperty(QTextFormat::FontPixelSize);
        format.setFontPointSize(zoom * pixels / PX_PER_PT);
    } else if (format.hasProperty(QTextFormat::FontPointSize)) {
        format.setFontPointSize(zoom * format.fontPointSize());
    }
    return format;
}

void scale_fonts(QTextDocument* document, double zoom) {
    struct Piece {
        int begin, length;
        QTextCharFormat format;
    };
    QList<Piece> pieces;
    for (QTextBlock block = document->begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextFragment fragment = it.fragment();
            const QTextCharFormat format = fragment.charFormat();
            if (format.hasProperty(QTextFormat::FontPixelSize) || format.hasProperty(QTextFormat::FontPointSize))
                pieces.append({fragment.position(), fragment.length(), format});
        }
    }
    QTextCursor cursor(document);
    cursor.beginEditBlock();
    for (const Piece& piece : pieces) {
        cursor.setPosition(piece.begin);
        cursor.setPosition(piece.begin + piece.length, QTextCursor::KeepAnchor);
        cursor.setCharFormat(scaled(piece.format, zoom));
    }
    cursor.endEditBlock();
}

/// The toolkit follows only links to style sheets that name their type, which pages may leave out.
QString with_style_types(QString html) {
    static const QRegularExpression link(QStringLiteral(R"(<link(?=[^>]*\bstylesheet\b)(?![^>]*\btype\b))"),
                                         QRegularExpression::CaseInsensitiveOption);
    return html.replace(link, QStringLiteral("<link type=\"text/css\""));
}

QString as_html(const QString& sentence) {
    return QStringLiteral("<html><body><p>%1</p></body></html>").arg(sentence.toHtmlEscaped());
}

}  // namespace

PaginaAyuda::PaginaAyuda(QWidget* padre) : QTextBrowser(padre) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setFrameShape(QFrame::NoFrame);
    document()->setDocumentMargin(0);
    dibujante_ =
        new ImagenesAyuda([this](const QString& name) { return imagen(actual_.resolved(QUrl(name))); }, document());
    poner_papel();
    poner_letra();
}

void PaginaAyuda::set_libro(std::shared_ptr<const tavo::chm::ChmFile> libro) {
    libro_ = std::move(libro);
    imagenes_.clear();
}

QUrl PaginaAyuda::direccion(const QString& page) {
    QUrl url;
    url.setScheme(QLatin1String(SCHEME));
    const qsizetype hash = page.indexOf(u'#');
    QString path = page.left(hash);
    if (!path.startsWith(u'/'))
        path.prepend(u'/');
    url.setPath(path);
    if (hash >= 0)
        url.setFragment(page.mid(hash + 1));
    return url;
}

QString PaginaAyuda::pagina() const {
    const auto found = libro_ ? libro_->find(actual_.path().toStdString()) : std::nullopt;
    return found ? QString::fromStdString(*found) : QString();
}

std::optional<std::string> PaginaAyuda::leer(const QUrl& name) const {
    return libro_ && name.scheme() == QLatin1String(SCHEME) ? libro_->read(name.path().toStdString()) : std::nullopt;
}

QString PaginaAyuda::texto_de_pagina(const QUrl& name) const {
    const QString file = name.fileName();
    try {
        const auto bytes = leer(name);
        if (!bytes)
            return as_html(falta ? falta(file) : file);
        const QString text = with_style_types(QString::fromStdString(tavo::chm::decode_page(*bytes)));
        return text.isEmpty() ? as_html({}) : text;
    } catch (const tavo::chm::DamagedHelp&) {
        return as_html(danada ? danada(file) : file);
    }
}

QString PaginaAyuda::texto_de_estilo(const QUrl& name) const {
    try {
        return QString::fromStdString(tavo::chm::decode_page(leer(name).value_or(std::string())));
    } catch (const tavo::chm::DamagedHelp&) {
        return {};  // a page reads without its style
    }
}

QImage PaginaAyuda::imagen(const QUrl& name) {
    const QString key = name.path();
    const auto known = imagenes_.constFind(key);
    if (known != imagenes_.constEnd())
        return *known;
    QImage image;
    try {
        if (const auto bytes = leer(name))
            image = imagen_de(QByteArray::fromStdString(*bytes));
    } catch (const tavo::chm::DamagedHelp&) {
        image = {};
    }
    imagenes_.insert(key, image);
    return image;
}

QVariant PaginaAyuda::loadResource(int type, const QUrl& name) {
    // What is missing is an empty value, not none: for none the toolkit would look on the disk.
    const QUrl url = actual_.resolved(name);
    switch (type) {
        case QTextDocument::HtmlResource:
            leida_ = true;
            return texto_de_pagina(url);
        case QTextDocument::StyleSheetResource:
            return texto_de_estilo(url);
        case QTextDocument::ImageResource:
            return imagen(url);
        default:
            return QByteArray();
    }
}

void PaginaAyuda::doSetSource(const QUrl& name, QTextDocument::ResourceType) {
    leida_ = false;
    actual_ = name;
    QTextBrowser::doSetSource(name, QTextDocument::HtmlResource);
    if (leida_)
        preparar();
}

/// What a page needs after its text was read.
void PaginaAyuda::preparar() {
    marcas_.clear();
    pintar_marcas();
    if (zoom_ != 1.0)
        scale_fonts(document(), zoom_);
    poner_margenes();
    if (actual_.hasFragment())
        scrollToAnchor(actual_.fragment());
}

void PaginaAyuda::set_zoom(double zoom) {
    if (zoom == zoom_)
        return;
    const int first = cursorForPosition(QPoint(viewport()->width() / 2, 4)).position();
    const QList<Tramo> marks = marcas_;
    zoom_ = zoom;
    dibujante_->set_zoom(zoom);
    poner_letra();
    if (actual_.isEmpty())
        return;
    reload();
    preparar();
    marcas_ = marks;
    pintar_marcas();
    QTextCursor cursor(document());
    cursor.setPosition(std::min(first, document()->characterCount() - 1));
    QScrollBar* bar = verticalScrollBar();
    bar->setValue(first == 0 ? 0 : bar->value() + cursorRect(cursor).top());
}

void PaginaAyuda::poner_letra() {
    QFont letter = QApplication::font();
    letter.setPointSizeF(LETTER * QFontInfo(letter).pointSizeF() * zoom_);
    setFont(letter);
}

void PaginaAyuda::poner_papel() {
    QPalette paper;
    for (const auto& [role, ink] : {std::pair{QPalette::Base, QColor(Qt::white)},
                                    {QPalette::AlternateBase, QColor(0xF2, 0xF5, 0xF9)},
                                    {QPalette::Text, QColor(Qt::black)},
                                    {QPalette::Link, LINK},
                                    {QPalette::LinkVisited, LINK}})
        paper.setColor(role, ink);
    setPalette(paper);
}

void PaginaAyuda::poner_margenes() {
    const int column = qRound(COLUMN * fontMetrics().height());
    const int side = std::max(MARGIN, (viewport()->width() - column) / 2);
    QTextFrameFormat frame = document()->rootFrame()->frameFormat();
    if (frame.leftMargin() == side && frame.topMargin() == MARGIN)
        return;
    frame.setMargin(side);
    frame.setTopMargin(MARGIN);
    frame.setBottomMargin(MARGIN);
    document()->rootFrame()->setFrameFormat(frame);
}

void PaginaAyuda::resizeEvent(QResizeEvent* event) {
    poner_margenes();
    QTextBrowser::resizeEvent(event);
}

void PaginaAyuda::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::BackButton)
        emit atras_pedido();
    else if (event->button() == Qt::ForwardButton)
        emit adelante_pedido();
    else
        QTextBrowser::mousePressEvent(event);
}

void PaginaAyuda::wheelEvent(QWheelEvent* event) {
    if (!event->modifiers().testFlag(Qt::ControlModifier)) {
        QTextBrowser::wheelEvent(event);
        return;
    }
    rueda_ += event->angleDelta().y();
    if (const int steps = rueda_ / QWheelEvent::DefaultDeltasPerStep) {
        rueda_ -= steps * QWheelEvent::DefaultDeltasPerStep;
        emit zoom_pedido(steps);
    }
    event->accept();
}

qsizetype PaginaAyuda::marcar(const QStringList& words) {
    const TextoPlegado text(document()->toPlainText());
    marcas_.clear();
    for (const QString& word : words)
        marcas_.append(text.find(word));
    std::ranges::sort(marcas_, {}, &Tramo::begin);
    const int in_sight = cursorForPosition(QPoint(0, 0)).position();
    const auto next = std::ranges::find_if(marcas_, [&](const Tramo& mark) { return mark.begin >= in_sight; });
    marca_ = next == marcas_.end() ? 0 : next - marcas_.begin();
    pintar_marcas();
    return marcas_.size();
}

void PaginaAyuda::ir_a_marca(int step) {
    if (marcas_.isEmpty())
        return;
    marca_ = (marca_ + step + marcas_.size()) % marcas_.size();
    pintar_marcas();
}

void PaginaAyuda::pintar_marcas() {
    QList<ExtraSelection> selections;
    for (qsizetype i = 0; i < marcas_.size(); ++i) {
        ExtraSelection found;
        found.cursor = QTextCursor(document());
        found.cursor.setPosition(static_cast<int>(marcas_[i].begin));
        found.cursor.setPosition(static_cast<int>(marcas_[i].begin + marcas_[i].length), QTextCursor::KeepAnchor);
        found.format.setBackground(i == marca_ ? CURRENT : FOUND);
        found.format.setForeground(Qt::black);
        selections.append(found);
    }
    setExtraSelections(selections);
    if (marcas_.isEmpty())
        return;
    const QRect place = cursorRect(selections[marca_].cursor);
    const int height = viewport()->height();
    if (place.top() < height / 10 || place.bottom() > height * 9 / 10)  // with lines around it
        verticalScrollBar()->setValue(verticalScrollBar()->value() + place.top() - height / 3);
}

std::unique_ptr<QTextDocument> PaginaAyuda::copia_para(QPaintDevice* device, const QSizeF& size) {
    std::unique_ptr<QTextDocument> copy(document()->clone());
    new ImagenesAyuda([this](const QString& name) { return imagen(actual_.resolved(QUrl(name))); }, copy.get());
    scale_fonts(copy.get(), 1.0 / zoom_);
    QFont letter = font();
    letter.setPointSizeF(letter.pointSizeF() / zoom_);
    copy->setDefaultFont(letter);
    QTextFrameFormat frame = copy->rootFrame()->frameFormat();
    frame.setMargin(0);
    copy->rootFrame()->setFrameFormat(frame);
    copy->documentLayout()->setPaintDevice(device);
    copy->setPageSize(size);
    return copy;
}

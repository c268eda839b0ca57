#include "shell/ayuda/imagenes_ayuda.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QImageReader>
#include <QPainter>
#include <QPixmapCache>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace {

constexpr double DPI = 96.0;          // of the sizes that pages give
constexpr double MISSING_SIZE = 16;   // side of the frame that stands for a missing picture
constexpr double SMALLEST_ROOM = 64;  // a narrower column scrolls instead of shrinking its pictures further

/// Device units of a document per pixel of its page.
double scale_of(const QTextDocument* document) {
    const QPaintDevice* device = document->documentLayout()->paintDevice();
    return device ? device->logicalDpiY() / DPI : 1.0;
}

/// Width and height that a page leaves to a picture at a position; an endless height where it has no pages.
QSizeF room_of(const QTextDocument* document, int position, double scale) {
    const QTextFrameFormat frame = document->rootFrame()->frameFormat();
    const QTextBlockFormat block = document->findBlock(position).blockFormat();
    const QSizeF page = document->pageSize();
    const double beside = frame.leftMargin() + frame.rightMargin() + block.leftMargin() + block.rightMargin() +
                          block.indent() * document->indentWidth();
    const double width = document->textWidth() - scale * beside;
    const double height = page.height() - scale * (frame.topMargin() + frame.bottomMargin());
    return {std::max(width, SMALLEST_ROOM * scale), page.height() > 0 ? height : 1e9};
}

/// Of width and height one or both may be given; a picture keeps its shape when one is.
QSizeF size_given(const QTextImageFormat& format, const QSize& natural) {
    const bool has_width = format.hasProperty(QTextFormat::ImageWidth) && format.width() > 0;
    const bool has_height = format.hasProperty(QTextFormat::ImageHeight) && format.height() > 0;
    QSizeF size(natural);
    if (has_width && has_height)
        return {format.width(), format.height()};
    if (has_width)
        return size * (format.width() / size.width());
    return has_height ? size * (format.height() / size.height()) : size;
}

QPixmap shrunk(const QImage& image, const QSize& size) {
    const QString key =
        QStringLiteral("tavo-ayuda-%1-%2x%3").arg(image.cacheKey()).arg(size.width()).arg(size.height());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = QPixmap::fromImage(image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

}  // namespace

ImagenesAyuda::ImagenesAyuda(Fuente fuente, QTextDocument* document) : QObject(document), fuente_(std::move(fuente)) {
    document->documentLayout()->registerHandler(QTextFormat::ImageObject, this);
}

QSizeF ImagenesAyuda::intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) {
    const double scale = scale_of(document);
    const QTextImageFormat picture = format.toImageFormat();
    const QImage image = fuente_(picture.name());
    if (image.isNull())
        return QSizeF(MISSING_SIZE, MISSING_SIZE) * scale;
    const QSizeF size = size_given(picture, image.size()) * (scale * zoom_);
    const QSizeF room = room_of(document, position, scale);
    return size * std::min({1.0, room.width() / size.width(), room.height() / size.height()});
}

void ImagenesAyuda::drawObject(QPainter* painter, const QRectF& rect, QTextDocument*, int, const QTextFormat& format) {
    const QImage image = fuente_(format.toImageFormat().name());
    painter->save();
    painter->setRenderHint(QPainter::SmoothPixmapTransform);
    const double ratio = painter->device()->devicePixelRatioF();
    const QSize pixels = (rect.size() * ratio).toSize();
    if (image.isNull()) {
        painter->setPen(QPen(Qt::lightGray, 1));
        painter->drawRect(rect.adjusted(1, 1, -1, -1));
    } else if (pixels.width() < image.width()) {
        // Shrunk to the pixels of the screen once, and put on whole pixels: painting would leave out lines.
        QPixmap pixmap = shrunk(image, pixels);
        pixmap.setDevicePixelRatio(ratio);
        painter->drawPixmap(QPointF(std::round(rect.x() * ratio), std::round(rect.y() * ratio)) / ratio, pixmap);
    } else {
        painter->drawImage(rect, image);
    }
    painter->restore();
}

QImage imagen_de(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    const QByteArray format = QImageReader::imageFormat(&buffer);
    constexpr std::array allowed{"png", "jpeg", "gif", "bmp"};
    if (std::ranges::none_of(allowed, [&](const char* name) { return format == name; }))
        return {};
    QImage image = QImageReader(&buffer, format).read();
    // A picture of few colours would keep to them, or to worse ones, when it is made smaller.
    return image.isNull() ? image : std::move(image).convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

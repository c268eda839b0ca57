#pragma once
// Draws the pictures of a help page: sharp at every scale, never wider than the text, from the help file alone.

#include <QImage>
#include <QObject>
#include <QTextObjectInterface>

#include <functional>

class QTextDocument;
class QTextImageFormat;

class ImagenesAyuda final : public QObject, public QTextObjectInterface {
    Q_OBJECT
    Q_INTERFACES(QTextObjectInterface)
public:
    /// Where pictures come from, by the name that the page gives; a null image where there is none.
    using Fuente = std::function<QImage(const QString& name)>;

    /// Takes over the pictures of the document, which owns it from now on.
    ImagenesAyuda(Fuente fuente, QTextDocument* document);

    void set_zoom(double zoom) { zoom_ = zoom; }

    QSizeF intrinsicSize(QTextDocument* document, int position, const QTextFormat& format) override;
    void drawObject(QPainter* painter, const QRectF& rect, QTextDocument* document, int position,
                    const QTextFormat& format) override;

private:
    Fuente fuente_;
    double zoom_ = 1.0;
};

/// The picture of these bytes: PNG, JPEG, GIF or BMP, which cannot refer to other files. Null for anything else.
QImage imagen_de(const QByteArray& bytes);

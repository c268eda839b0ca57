#include "controls/iconos.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>
#include <QSvgRenderer>

namespace {

QByteArray source(const QString& name) {
    QFile file(QStringLiteral(":/iconos/%1.svg").arg(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

struct Inks {
    QColor line, accent;
};

/// Line and accent colour for a palette: the text's own ink, and a blue that keeps its contrast on the window colour.
Inks inks(QIcon::Mode mode) {
    const QPalette palette = QApplication::palette();
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    Inks result{
        palette.color(QPalette::Active, mode == QIcon::Selected ? QPalette::HighlightedText : QPalette::WindowText),
        dark ? QColor(0x5A, 0xB4, 0xFF) : QColor(0x0B, 0x6B, 0xCB)};
    if (mode == QIcon::Selected)
        result.accent = result.line;
    return result;
}

class EngineOfLines final : public QIconEngine {
public:
    explicit EngineOfLines(QString name) : name_(std::move(name)), source_(source(name_)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
        if (mode == QIcon::Disabled) {
            // Faded as one picture: faded strokes would show where they cross.
            const qreal ratio = painter->device()->devicePixelRatio();
            const double opacity = painter->opacity();
            painter->setOpacity(opacity * 0.35);
            painter->drawPixmap(rect, pixmap(rect.size() * ratio, QIcon::Normal, state));
            painter->setOpacity(opacity);
            return;
        }
        const Inks ink = inks(mode);
        QByteArray svg = source_;
        svg.replace("currentColor", ink.line.name().toLatin1());
        svg.replace("accentColor", ink.accent.name().toLatin1());
        QSvgRenderer renderer(svg);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        renderer.render(painter, centred(rect));
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        const Inks ink = inks(mode);
        const QString key = QStringLiteral("tavo-icono-%1-%2x%3-%4-%5%6")
                                .arg(name_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(mode)
                                .arg(ink.line.name(), ink.accent.name());
        QPixmap drawn;
        if (QPixmapCache::find(key, &drawn))
            return drawn;
        drawn = QPixmap(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        painter.end();
        QPixmapCache::insert(key, drawn);
        return drawn;
    }

    QIconEngine* clone() const override { return new EngineOfLines(*this); }
    bool isNull() override { return source_.isEmpty(); }
    QString iconName() override { return name_; }

private:
    /// The largest square in the middle: the drawings are square.
    static QRectF centred(const QRect& rect) {
        const int side = qMin(rect.width(), rect.height());
        QRect square(0, 0, side, side);
        square.moveCenter(rect.center());
        return square;
    }

    QString name_;
    QByteArray source_;
};

}  // namespace

QIcon icono(const QString& name) {
    auto* engine = new EngineOfLines(name);
    if (!engine->isNull())
        return QIcon(engine);
    delete engine;
    return {};
}

QIcon icono_del_programa() {
    return icono(QStringLiteral("tavo-gas"));
}

#include <QEvent>
#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

#include "core/numtext.h"
#include "windows/lab/dibujo.h"

namespace {

constexpr double RADIUS = 6.0;
constexpr double MARGIN = 10.0;
constexpr double ARROW = 9.0;
constexpr QColor EDGE(168, 173, 179);
constexpr QSize SMALLEST(150, 220);
constexpr QSize PREFERRED(260, 420);

/// -1 and 1: the value lies below, above the scale.
int side(const Instrumento& instrument) {
    if (!instrument.pinned())
        return 0;
    return instrument.value() > laboratorio::scale(instrument.kind()).maximum ? 1 : -1;
}

}  // namespace

Lamina::Lamina(QWidget* padre) : QFrame(padre) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QFont Lamina::small_font() const {
    QFont result = font();
    result.setPixelSize(std::max(9, static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * 0.92))));
    return result;
}

/// Wide enough for a range label in a larger font.
QSize Lamina::minimumSizeHint() const {
    const QFontMetrics metrics(small_font());
    return SMALLEST.expandedTo(
        {metrics.horizontalAdvance(QStringLiteral("373.16 ºK 1400")) + 62, metrics.height() * 14});
}

QSize Lamina::sizeHint() const {
    return PREFERRED.expandedTo(minimumSizeHint());
}

QRectF Lamina::paper() const {
    return QRectF(rect()).adjusted(MARGIN, MARGIN, -MARGIN, -MARGIN);
}

void Lamina::adopt(Instrumento* instrument, const char* name) {
    instrument->setObjectName(QLatin1String(name));
    connect(instrument, &Instrumento::value_changed, this, [this, instrument] {
        if (instrument == in_use() && side(*instrument) != beyond_) {
            beyond_ = side(*instrument);
            update();  // with the instrument, which marks its scale's end
        }
    });
}

QLabel* Lamina::range_label(const char* name, double limit, const char* unit) {
    auto* label = new QLabel(QString::fromStdString(tavo::Format(limit, "##0.00")) + QString::fromUtf8(unit), this);
    label->setObjectName(QLatin1String(name));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette ink = label->palette();
    ink.setColor(QPalette::WindowText, dibujo::INK);  // the paper is white in dark palettes too
    label->setPalette(ink);
    return label;
}

void Lamina::exchange(const std::vector<QWidget*>& hidden, const std::vector<QWidget*>& shown) {
    const bool focus = hidden.front()->hasFocus();
    for (QWidget* widget : shown)
        widget->show();
    if (focus)
        shown.front()->setFocus();
    for (QWidget* widget : hidden)
        widget->hide();
    renew();
}

void Lamina::set_texts(const Texto& texto) {
    const std::array names{texto(651, QStringLiteral("Pistón")), texto(652, QStringLiteral("Termómetro")),
                           texto(653, QStringLiteral("Termopar")), texto(654, QStringLiteral("Barómetro")),
                           texto(655, QStringLiteral("Manómetro"))};
    const QString outside = texto(650, QStringLiteral("%1 (fuera de la escala)"));
    const QString hint = texto(
        656, QStringLiteral("%1: se arrastra con el ratón o se mueve con las flechas, Re Pág, Av Pág, Inicio y Fin"));
    for (Instrumento* instrument : findChildren<Instrumento*>()) {
        instrument->set_outside_text(outside);
        instrument->setAccessibleDescription(hint.arg(names.at(static_cast<std::size_t>(instrument->kind()))));
    }
}

void Lamina::renew() {
    for (QLabel* label : findChildren<QLabel*>()) {
        label->setFont(small_font());
        label->resize(label->sizeHint());
    }
    arrange();
    beyond_ = side(*in_use());
    still_ = {};
    update();
}

void Lamina::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    renew();
}

void Lamina::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        renew();
}

void Lamina::paintEvent(QPaintEvent*) {
    const double ratio = devicePixelRatioF();
    if (still_.isNull() || still_.devicePixelRatio() != ratio) {
        still_ = QPixmap((QSizeF(size()) * ratio).toSize());
        still_.setDevicePixelRatio(ratio);
        still_.fill(Qt::transparent);
        QPainter painter(&still_);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setFont(small_font());
        painter.setPen(QPen(EDGE, 1.0));
        painter.setBrush(dibujo::PAPER);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), RADIUS, RADIUS);
        draw_still(painter);
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, still_);
    painter.setRenderHint(QPainter::Antialiasing);
    if (const int at = side(*in_use()); at != 0) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(dibujo::WARNING);
        painter.drawPolygon(dibujo::arrow(beyond(at > 0), at > 0 ? 0.0 : 180.0, ARROW));
    }
    if (in_use()->hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0), RADIUS, RADIUS);
    }
}

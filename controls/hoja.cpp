#include "controls/hoja.h"

#include <QEvent>
#include <QFontInfo>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

#include "controls/dibujo.h"

namespace {
constexpr double RADIUS = 6.0;
constexpr double MARGIN = 10.0;
constexpr QColor EDGE(168, 173, 179);
}  // namespace

Hoja::Hoja(QWidget* padre) : QFrame(padre) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

QFont Hoja::small_font() const {
    QFont result = font();
    result.setPixelSize(std::max(9, static_cast<int>(std::lround(QFontInfo(font()).pixelSize() * 0.92))));
    return result;
}

QRectF Hoja::paper() const {
    return QRectF(rect()).adjusted(MARGIN, MARGIN, -MARGIN, -MARGIN);
}

QLabel* Hoja::ink_label(const QString& name, const QString& text) {
    auto* label = new QLabel(text, this);
    label->setObjectName(name);
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    QPalette ink = label->palette();
    ink.setColor(QPalette::WindowText, dibujo::INK);
    label->setPalette(ink);
    return label;
}

void Hoja::renew() {
    for (QLabel* label : findChildren<QLabel*>()) {
        label->setFont(small_font());
        label->resize(label->sizeHint());
    }
    arrange();
    still_ = {};
    update();
}

void Hoja::resizeEvent(QResizeEvent* event) {
    QFrame::resizeEvent(event);
    renew();
}

void Hoja::changeEvent(QEvent* event) {
    QFrame::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange)
        renew();
}

void Hoja::draw_focus(QPainter& painter, const QRectF& around) const {
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(around.adjusted(1.0, 1.0, -1.0, -1.0), RADIUS, RADIUS);
}

void Hoja::paintEvent(QPaintEvent*) {
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
    draw_over(painter);
}

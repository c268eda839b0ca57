#include "shell/primeros_pasos.h"

#include <QAction>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPainter>
#include <QVBoxLayout>

#include "controls/desplazable.h"
#include "controls/iconos.h"

namespace {

constexpr int MARGIN = 12;
constexpr int ICON = 32;

QFont scaled(QFont font, double factor) {
    font.setPointSizeF(font.pointSizeF() * factor);
    return font;
}

}  // namespace

Enlace::Enlace(QAction* action, QWidget* parent) : QAbstractButton(parent) {
    setIcon(action->icon());
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEnabled(action->isEnabled());
    connect(this, &QAbstractButton::clicked, action, &QAction::trigger);
    connect(action, &QAction::changed, this, [this, action] {
        setEnabled(action->isEnabled());
        setStatusTip(action->statusTip());
        setToolTip(action->isEnabled() ? QString() : action->statusTip());
    });
}

void Enlace::set_textos(const QString& title, const QString& explanation) {
    setText(title);
    explanation_ = explanation;
    setAccessibleName(title);
    setAccessibleDescription(explanation);
    updateGeometry();
}

QFont Enlace::title_font() const {
    QFont font = scaled(this->font(), 1.2);
    font.setWeight(QFont::DemiBold);
    return font;
}

QSize Enlace::sizeHint() const {
    const QFontMetrics title(title_font()), line(font());
    const int width = qMax(title.horizontalAdvance(text()), line.horizontalAdvance(explanation_));
    const int height = title.height() + line.height() + 2;
    return {width + ICON + 3 * MARGIN, qMax(height, ICON) + MARGIN};
}

QSize Enlace::minimumSizeHint() const {
    return {ICON + 10 * MARGIN, sizeHint().height()};
}

void Enlace::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QColor ink = palette().color(QPalette::Active, QPalette::WindowText);
    ink.setAlphaF(isEnabled() ? 1.0F : 0.45F);
    QColor tint = palette().color(QPalette::Highlight);
    if (isEnabled() && (hasFocus() || underMouse())) {
        const QRectF frame = QRectF(rect()).adjusted(1, 1, -1, -1);
        painter.setPen(hasFocus() ? QPen(tint, 1.5) : QPen(Qt::NoPen));
        tint.setAlphaF(isDown() ? 0.28F : underMouse() ? 0.16F : 0.08F);
        painter.setBrush(tint);
        painter.drawRoundedRect(frame, 6, 6);
    }

    const QRect icon_rect(MARGIN, (height() - ICON) / 2, ICON, ICON);
    icon().paint(&painter, icon_rect, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);

    const QFontMetrics title(title_font()), line(font());
    const int left = icon_rect.right() + 1 + MARGIN;
    const int room = width() - left - MARGIN;
    const int top = (height() - title.height() - line.height() - 2) / 2;
    painter.setPen(ink);
    painter.setFont(title_font());
    painter.drawText(QPoint(left, top + title.ascent()), title.elidedText(text(), Qt::ElideRight, room));
    ink.setAlphaF(ink.alphaF() * 0.8F);
    painter.setPen(ink);
    painter.setFont(font());
    painter.drawText(QPoint(left, top + title.height() + 2 + line.ascent()),
                     line.elidedText(explanation_, Qt::ElideRight, room));
}

void Enlace::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            click();
            return;
        case Qt::Key_Down:
            focusNextChild();
            return;
        case Qt::Key_Up:
            focusPreviousChild();
            return;
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

void Enlace::enterEvent(QEnterEvent* event) {
    update();
    QAbstractButton::enterEvent(event);
}

void Enlace::leaveEvent(QEvent* event) {
    update();
    QAbstractButton::leaveEvent(event);
}

PrimerosPasos::PrimerosPasos(QWidget* parent)
    : QWidget(parent), cabecera_(new QWidget), linea_(new QLabel), encabezado_(new QLabel), enlaces_(new QVBoxLayout) {
    auto* sign = new QLabel;
    sign->setPixmap(icono_del_programa().pixmap(QSize(64, 64), devicePixelRatioF()));
    auto* name = new QLabel(QStringLiteral("TAVO-GAS"));
    name->setFont(scaled(font(), 2.0));
    encabezado_->setFont(scaled(font(), 1.4));
    linea_->setWordWrap(true);
    linea_->setMinimumWidth(320);

    auto* head_text = new QVBoxLayout;
    head_text->setSpacing(0);
    head_text->addStretch();
    head_text->addWidget(name);
    head_text->addWidget(linea_);
    head_text->addStretch();
    auto* head = new QHBoxLayout(cabecera_);
    head->setContentsMargins(0, 0, 0, 24);
    head->setSpacing(18);
    head->addWidget(sign);
    head->addLayout(head_text, 1);

    enlaces_->setSpacing(6);
    auto* sheet = new QWidget;
    sheet->setMaximumWidth(660);
    auto* column = new QVBoxLayout(sheet);
    column->setContentsMargins(12, 12, 12, 12);
    column->addStretch(2);
    column->addWidget(cabecera_);
    column->addWidget(encabezado_);
    column->addSpacing(6);
    column->addLayout(enlaces_);
    column->addStretch(3);

    auto* centred = new QWidget;
    auto* row = new QHBoxLayout(centred);
    row->setContentsMargins(0, 0, 0, 0);
    row->addStretch(1);
    row->addWidget(sheet, 100);
    row->addStretch(1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(desplazable(centred));
}

void PrimerosPasos::set_encabezados(const QString& line_under_name, const QString& heading) {
    linea_->setText(line_under_name);
    encabezado_->setText(heading);
}

void PrimerosPasos::resizeEvent(QResizeEvent* event) {
    const int links = enlaces_->sizeHint().height() + encabezado_->sizeHint().height() + 4 * MARGIN;
    cabecera_->setVisible(height() >= links + cabecera_->sizeHint().height());
    QWidget::resizeEvent(event);
}

Enlace* PrimerosPasos::add_enlace(QAction* action) {
    auto* enlace = new Enlace(action, this);
    enlace->setObjectName(QStringLiteral("enlace(%1)").arg(enlaces_->count() + 1));
    enlaces_->addWidget(enlace);
    if (!focusProxy() && enlace->isEnabled())
        setFocusProxy(enlace);
    return enlace;
}

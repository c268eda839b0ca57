#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

#include "core/numtext.h"
#include "windows/lab/dibujo.h"
#include "windows/lab/instrumento_accesible.h"

using laboratorio::Instrument;

namespace {

constexpr double WHEEL_NOTCH = 120.0;  // eighths of a degree

QString with_unit(Instrument kind, double value) {
    const auto unit = [&] {
        switch (laboratorio::variable(kind)) {
            case laboratorio::Variable::Volume:
                return QStringLiteral(" l");
            case laboratorio::Variable::Temperature:
                return QStringLiteral(" ºK");
            default:
                return QStringLiteral(" atm");
        }
    };
    return QString::fromStdString(tavo::Format(value, "##0.00")) + unit();
}

}  // namespace

Instrumento::Instrumento(Instrument kind, QWidget* padre)
    : QWidget(padre), kind_(kind), value_(laboratorio::scale(kind).minimum) {
    install_instrument_accessibility();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(kind == Instrument::Piston ? Qt::OpenHandCursor : Qt::SizeVerCursor);
}

bool Instrumento::pinned() const {
    return !laboratorio::inside(kind_, value_);
}

double Instrumento::place() const {
    return laboratorio::place_of(kind_, value_, height());
}

void Instrumento::set_value(double value) {
    if (!std::isfinite(value) || value == value_)
        return;
    const double from = place();
    value_ = value;
    update(between(from, place()).toAlignedRect());
    emit value_changed();
    if (QAccessible::isActive()) {
        QAccessibleValueChangeEvent event(this, value);
        QAccessible::updateAccessibility(&event);
    }
}

void Instrumento::set_spoken(const QString& name, const QString& value) {
    setAccessibleName(name);
    spoken_value_ = value;
}

QString Instrumento::spoken_value() const {
    const QString text = spoken_value_.isEmpty() ? with_unit(kind_, value_) : spoken_value_;
    return pinned() ? outside_text_.arg(text) : text;
}

void Instrumento::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
}

double Instrumento::coordinate(const QMouseEvent& event) const {
    return laboratorio::value_at(kind_, event.position().y(), height());
}

void Instrumento::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    dragging_ = true;
    if (kind_ == Instrument::Piston)
        setCursor(Qt::ClosedHandCursor);
    emit MouseDown(coordinate(*event));
}

void Instrumento::mouseMoveEvent(QMouseEvent* event) {
    const double value = coordinate(*event);
    show_coordinate(value, event->globalPosition().toPoint());
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton))
        emit MouseMove(value);
}

void Instrumento::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_)
        return;
    dragging_ = false;
    if (kind_ == Instrument::Piston)
        setCursor(Qt::OpenHandCursor);
    emit MouseUp();
}

void Instrumento::show_coordinate(double value, QPoint global) {
    setToolTip(with_unit(kind_, value));
    if (QToolTip::isVisible())  // a tip in sight would keep the old number
        QToolTip::showText(global, toolTip(), this);
}

/// From a value outside the scale a step begins at the limit.
void Instrumento::step(double graduations) {
    const double start = laboratorio::pinned(kind_, value_);
    const double end = laboratorio::pinned(kind_, start + graduations * laboratorio::scale(kind_).graduation);
    if (end != value_)
        emit key_step(end);
}

void Instrumento::keyPressEvent(QKeyEvent* event) {
    constexpr double ALL = 1e6;  // graduations, more than any scale has
    const bool shift = event->modifiers().testFlag(Qt::ShiftModifier);
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    const double arrow = shift ? 0.1 : 1.0;
    switch (plain ? event->key() : 0) {
        case Qt::Key_Up:
        case Qt::Key_Right:
            return step(arrow);
        case Qt::Key_Down:
        case Qt::Key_Left:
            return step(-arrow);
        case Qt::Key_PageUp:
            return step(10.0);
        case Qt::Key_PageDown:
            return step(-10.0);
        case Qt::Key_Home:
            return step(-ALL);
        case Qt::Key_End:
            return step(ALL);
        default:
            QWidget::keyPressEvent(event);
    }
}

void Instrumento::wheelEvent(QWheelEvent* event) {
    if (!hasFocus()) {
        event->ignore();  // the window scrolls
        return;
    }
    wheel_ += event->angleDelta().y() / WHEEL_NOTCH;
    const double notches = std::trunc(wheel_);
    wheel_ -= notches;
    if (notches != 0.0)
        step(notches * (event->modifiers().testFlag(Qt::ShiftModifier) ? 0.1 : 1.0));
    event->accept();
}

void Instrumento::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    wheel_ = 0.0;
    if (parentWidget())
        parentWidget()->update();  // which draws the focus frame
}

void Instrumento::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (parentWidget())
        parentWidget()->update();
}

#include "controls/indicador.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>
#include <utility>

#include "controls/indicador_accesible.h"
#include "core/numtext.h"

namespace {
constexpr double WHEEL_NOTCH = 120.0;  // eighths of a degree
}

Indicador::Indicador(const graduacion::Scale& scale, QString unit, QWidget* padre)
    : QWidget(padre), scale_(scale), unit_(std::move(unit)), value_(scale.minimum) {
    install_indicator_accessibility();
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setCursor(over_);
}

void Indicador::set_cursors(Qt::CursorShape over, Qt::CursorShape held) {
    over_ = over;
    held_ = held;
    setCursor(over_);
}

int Indicador::side() const {
    if (graduacion::inside(scale_, value_))
        return 0;
    return value_ > scale_.maximum ? 1 : -1;
}

double Indicador::reachable(double value) const {
    return graduacion::pinned(scale_, value);
}

QString Indicador::with_unit(double value) const {
    return QString::fromStdString(tavo::Format(value, "##0.00")) + u' ' + unit_;
}

double Indicador::place() const {
    return graduacion::place_of(scale_, value_, height());
}

void Indicador::set_value(double value) {
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

void Indicador::set_spoken(const QString& name, const QString& value) {
    setAccessibleName(name);
    spoken_value_ = value;
}

QString Indicador::spoken_value() const {
    const QString text = spoken_value_.isEmpty() ? with_unit(value_) : spoken_value_;
    return pinned() ? outside_text_.arg(text) : text;
}

void Indicador::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
}

double Indicador::coordinate(const QMouseEvent& event) const {
    return reachable(graduacion::value_at(scale_, event.position().y(), height()));
}

void Indicador::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    dragging_ = true;
    setCursor(held_);
    emit MouseDown(coordinate(*event));
}

void Indicador::mouseMoveEvent(QMouseEvent* event) {
    const double value = coordinate(*event);
    show_coordinate(value, event->globalPosition().toPoint());
    if (dragging_ && event->buttons().testFlag(Qt::LeftButton))
        emit MouseMove(value);
}

void Indicador::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || !dragging_)
        return;
    dragging_ = false;
    setCursor(over_);
    emit MouseUp();
}

void Indicador::show_coordinate(double value, QPoint global) {
    setToolTip(with_unit(value));
    if (QToolTip::isVisible())  // a tip in sight would keep the old number
        QToolTip::showText(global, toolTip(), this);
}

/// From a value out of reach a step begins at the limit.
void Indicador::step(double graduations) {
    const double end = reachable(reachable(value_) + graduations * scale_.graduation);
    go_to(end);
}

void Indicador::go_to(double value) {
    if (value != value_)
        emit key_step(value);
}

void Indicador::keyPressEvent(QKeyEvent* event) {
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
            return go_to(scale_.minimum);
        case Qt::Key_End:
            return go_to(scale_.maximum);
        default:
            QWidget::keyPressEvent(event);
    }
}

void Indicador::wheelEvent(QWheelEvent* event) {
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

void Indicador::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    wheel_ = 0.0;
    if (parentWidget())
        parentWidget()->update();  // which draws the focus frame
}

void Indicador::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    if (parentWidget())
        parentWidget()->update();
}

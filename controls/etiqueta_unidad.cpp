#include "controls/etiqueta_unidad.h"

#include <QKeyEvent>

#include <algorithm>

#include "controls/enlace.h"

EtiquetaUnidad::EtiquetaUnidad(tavo::Global::UnitFamily family, QWidget* padre) : QLabel(padre), family_(family) {
    enlace::prepare(this);
    const auto base = tavo::Global::unit_labels(family).front();
    setText(QString::fromUtf8(base));
    underline();
}

void EtiquetaUnidad::set_unit(const QString& unit) {
    setText(unit);
}

void EtiquetaUnidad::set_silent(bool silent) {
    silent_ = silent;
    underline();
}

QSize EtiquetaUnidad::sizeHint() const {
    int widest = 0;
    for (const std::string_view label : tavo::Global::unit_labels(family_)) {
        const QString text = QString::fromUtf8(label);
        widest = std::max(widest, fontMetrics().horizontalAdvance(text));
    }
    const QSize own = QLabel::sizeHint();
    const int margins = own.width() - fontMetrics().horizontalAdvance(text());
    return {widest + std::max(margins, 2), own.height()};
}

void EtiquetaUnidad::step(int steps) {
    if (silent_)
        return;
    const auto labels = tavo::Global::unit_labels(family_);
    const QString from = text();
    const auto shown = std::find(labels.begin(), labels.end(), from.toStdString());
    const auto count = static_cast<std::ptrdiff_t>(labels.size());
    const std::ptrdiff_t at = shown == labels.end() ? 0 : (shown - labels.begin() + steps + count) % count;
    const std::string_view to = labels[static_cast<std::size_t>(at)];
    setText(QString::fromUtf8(to));
    emit Click(from, text());
}

void EtiquetaUnidad::mouseReleaseEvent(QMouseEvent* event) {
    if (enlace::clicked(this, event))
        step(1);
}

void EtiquetaUnidad::keyPressEvent(QKeyEvent* event) {
    if (enlace::chosen(event) || event->key() == Qt::Key_Down)
        return step(1);
    if (event->key() == Qt::Key_Up)
        return step(-1);
    QLabel::keyPressEvent(event);
}

void EtiquetaUnidad::enterEvent(QEnterEvent* event) {
    QLabel::enterEvent(event);
    underline();
}

void EtiquetaUnidad::leaveEvent(QEvent* event) {
    QLabel::leaveEvent(event);
    underline();
}

void EtiquetaUnidad::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    underline();
}

void EtiquetaUnidad::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    underline();
}

void EtiquetaUnidad::underline() {
    enlace::show_look(this, silent_);
}

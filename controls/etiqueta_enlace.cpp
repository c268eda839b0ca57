#include "controls/etiqueta_enlace.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include "controls/enlace.h"

EtiquetaEnlace::EtiquetaEnlace(const QString& text, QWidget* padre) : QLabel(padre) {
    enlace::prepare(this);
    setText(text);
    show_look();
}

void EtiquetaEnlace::show_look() {
    enlace::show_look(this, false);
    setForegroundRole(QPalette::Link);
}

bool EtiquetaEnlace::event(QEvent* event) {
    const bool handled = QLabel::event(event);
    switch (event->type()) {
        case QEvent::Enter:
        case QEvent::Leave:
        case QEvent::FocusIn:
        case QEvent::FocusOut:
            show_look();
            break;
        default:
            break;
    }
    return handled;
}

void EtiquetaEnlace::mouseReleaseEvent(QMouseEvent* event) {
    if (enlace::clicked(this, event))
        emit Click();
}

void EtiquetaEnlace::keyPressEvent(QKeyEvent* event) {
    if (enlace::chosen(event))
        emit Click();
    else
        QLabel::keyPressEvent(event);
}

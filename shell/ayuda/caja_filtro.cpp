#include "shell/ayuda/caja_filtro.h"

#include <QAbstractItemView>
#include <QCoreApplication>
#include <QKeyEvent>

CajaFiltro::CajaFiltro(const QString& prompt, QWidget* padre) : QLineEdit(padre) {
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    setToolTip(prompt);
    setClearButtonEnabled(true);
}

void CajaFiltro::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            if (lista_) {
                QCoreApplication::sendEvent(lista_, event);
                return;
            }
            [[fallthrough]];
        default:
            QLineEdit::keyPressEvent(event);
    }
}

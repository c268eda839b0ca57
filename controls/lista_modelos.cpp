#include "controls/lista_modelos.h"

#include <QAbstractItemView>
#include <QWheelEvent>

namespace {

constexpr int SHORTEST_LIST = 16;  // characters, where the window is too narrow for the whole texts

}  // namespace

ListaModelos::ListaModelos(const QStringList& models, QWidget* padre) : QComboBox(padre) {
    addItems(models);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumContentsLength(SHORTEST_LIST);
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    view()->setMinimumWidth(view()->sizeHintForColumn(0));
}

void ListaModelos::wheelEvent(QWheelEvent* event) {
    if (hasFocus())
        QComboBox::wheelEvent(event);
    else
        event->ignore();
}

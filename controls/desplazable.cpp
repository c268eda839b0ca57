#include "controls/desplazable.h"

#include <QVBoxLayout>

QScrollArea* desplazable(QWidget* content) {
    auto* area = new QScrollArea;
    area->setFrameShape(QFrame::NoFrame);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidget(content);
    return area;
}

QScrollArea* llenar_desplazable(QWidget& window, QWidget* content) {
    QScrollArea* area = desplazable(content);
    for (QWidget* ground : {area->viewport(), content})
        ground->setAutoFillBackground(false);
    auto* whole = new QVBoxLayout(&window);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->addWidget(area);
    return area;
}

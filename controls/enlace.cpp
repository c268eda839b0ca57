#include "controls/enlace.h"

#include <QKeyEvent>
#include <QMouseEvent>

namespace enlace {

void prepare(QLabel* label) {
    label->setTextFormat(Qt::PlainText);
    label->setFocusPolicy(Qt::TabFocus);
}

void show_look(QLabel* label, bool silent, bool bold) {
    QFont font;  // names no other property: those follow the desktop
    font.setUnderline(!silent && (label->underMouse() || label->hasFocus()));
    font.setBold(bold);
    label->setFont(font);
    label->setForegroundRole(silent ? QPalette::PlaceholderText : QPalette::WindowText);
    label->setCursor(silent ? Qt::ArrowCursor : Qt::PointingHandCursor);
}

bool clicked(const QLabel* label, const QMouseEvent* event) {
    return event->button() == Qt::LeftButton && label->rect().contains(event->position().toPoint());
}

bool chosen(const QKeyEvent* event) {
    return event->key() == Qt::Key_Space || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
}

}  // namespace enlace

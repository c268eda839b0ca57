#include "controls/enlace.h"

#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace enlace {

namespace {

constexpr const char* LINK = "enlace";  // property of a label that answers to a click

/// To a screen reader such a label is a button, which it can press.
class AccessibleLink : public QAccessibleWidget {
public:
    explicit AccessibleLink(QWidget* label) : QAccessibleWidget(label, QAccessible::Button) {}

    QString text(QAccessible::Text which) const override {
        const QString given = QAccessibleWidget::text(which);
        return which == QAccessible::Name && given.isEmpty() ? static_cast<QLabel*>(widget())->text() : given;
    }

    QStringList actionNames() const override { return QStringList(pressAction()) + QAccessibleWidget::actionNames(); }

    void doAction(const QString& name) override {
        if (name != pressAction())
            return QAccessibleWidget::doAction(name);
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier);
        QCoreApplication::sendEvent(widget(), &press);
    }
};

QAccessibleInterface* accessible(const QString&, QObject* object) {
    auto* label = qobject_cast<QLabel*>(object);
    return label && label->property(LINK).toBool() ? new AccessibleLink(label) : nullptr;
}

}  // namespace

void prepare(QLabel* label) {
    static const bool installed = [] {
        QAccessible::installFactory(accessible);
        return true;
    }();
    label->setProperty(LINK, installed);
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

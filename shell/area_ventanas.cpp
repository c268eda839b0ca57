#include "shell/area_ventanas.h"

#include <QAction>
#include <QDialog>
#include <QEvent>
#include <QMdiSubWindow>
#include <QMenu>
#include <QScreen>
#include <QShortcut>
#include <QStyle>

#include <algorithm>

namespace {

/// The rectangle moved, and if need be shrunk, to lie inside the bounds.
QRect inside(QRect rect, const QRect& bounds) {
    rect.setSize(rect.size().boundedTo(bounds.size()));
    rect.moveLeft(std::clamp(rect.left(), bounds.left(), bounds.right() + 1 - rect.width()));
    rect.moveTop(std::clamp(rect.top(), bounds.top(), bounds.bottom() + 1 - rect.height()));
    return rect;
}

}  // namespace

AreaVentanas::AreaVentanas(QWidget* parent) : QMdiArea(parent) {
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setFrameShape(QFrame::NoFrame);
    for (const Qt::Key key : {Qt::Key_F4, Qt::Key_W})
        new QShortcut(QKeySequence(Qt::CTRL | key), this, [this] { closeActiveSubWindow(); });
}

void AreaVentanas::mostrar(QWidget* ventana) {
    if (qobject_cast<QDialog*>(ventana)) {
        mostrar_dialogo(ventana);
        return;
    }
    QMdiSubWindow* sub = sub_ventana_de(ventana);
    if (!sub) {
        emit ocupada_changed(true);
        sub = alojar(ventana);
    }
    if (sub->isMinimized())
        sub->showNormal();
    setActiveSubWindow(sub);
    ventana->setFocus();
}

void AreaVentanas::mostrar_dialogo(QWidget* dialogo) {
    if (!dialogo->parentWidget()) {
        dialogo->setParent(window(), dialogo->windowFlags() | Qt::Dialog);
        dialogo->installEventFilter(this);
        const auto known = lugares_.constFind(dialogo->objectName());
        if (known != lugares_.constEnd())
            dialogo->setGeometry(inside(known->geometry, screen()->availableGeometry()));
    }
    dialogo->show();
    dialogo->raise();
    dialogo->activateWindow();
}

QMdiSubWindow* AreaVentanas::sub_ventana_de(QWidget* ventana) const {
    for (QMdiSubWindow* sub : subWindowList()) {
        if (sub->widget() == ventana)
            return sub;
    }
    return nullptr;
}

QMdiSubWindow* AreaVentanas::alojar(QWidget* ventana) {
    auto* sub = addSubWindow(ventana);
    sub->setObjectName(ventana->objectName() + QStringLiteral("_marco"));
    sub->setWindowIcon(ventana->windowIcon());
    ventana->installEventFilter(this);
    // The area has the keys for closing; those of a frame's own menu work only while it is maximised.
    for (QAction* action : sub->systemMenu()->actions())
        action->setShortcuts(QList<QKeySequence>());
    // The frame goes with its window, whichever of the two is closed.
    connect(ventana, &QObject::destroyed, sub, &QObject::deleteLater);
    connect(sub, &QObject::destroyed, &oyente_, [this, sub] {
        QList<QMdiSubWindow*> rest = subWindowList();
        rest.removeAll(sub);
        if (rest.isEmpty())
            emit ocupada_changed(false);
    });

    const Lugar known = lugares_.value(ventana->objectName());
    const QSize minimum = sub->minimumSizeHint().expandedTo(sub->minimumSize());
    sub->setGeometry(known.geometry.isValid() ? inside(known.geometry, viewport()->rect())
                                              : lugar_nuevo(sub->sizeHint().expandedTo(minimum), minimum));
    // A window that cannot be seen whole in its frame gets all there is.
    const QSize room = viewport()->size();
    if (known.maximised || minimum.width() > room.width() || minimum.height() > room.height())
        sub->showMaximized();
    else
        sub->show();
    return sub;
}

QRect AreaVentanas::lugar_nuevo(const QSize& size, const QSize& minimum) const {
    const QRect bounds = viewport()->rect();
    const int step = style()->pixelMetric(QStyle::PM_TitleBarHeight) + 6;
    const QList<QMdiSubWindow*> others = subWindowList();
    const auto taken = [&](const QPoint& corner) {
        return std::any_of(others.begin(), others.end(),
                           [&](const QMdiSubWindow* other) { return other->isVisible() && other->pos() == corner; });
    };
    // A large window rather shrinks than hides the title of the one below it.
    const auto at_step = [&](qsizetype i) {
        const QPoint corner = QPoint(step, step) * static_cast<double>(i);
        const QSize room = bounds.size() - QSize(corner.x(), corner.y());
        return inside(QRect(corner, size.boundedTo(room).expandedTo(minimum)), bounds);
    };
    // As many steps as there are others always find a free corner, unless the area is too small for the steps.
    qsizetype i = 0;
    while (i < others.size() && taken(at_step(i).topLeft()))
        ++i;
    return at_step(i);
}

bool AreaVentanas::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Hide && watched->isWidgetType()) {
        const auto* ventana = static_cast<QWidget*>(watched);
        if (const QMdiSubWindow* sub = qobject_cast<QMdiSubWindow*>(ventana->parentWidget())) {
            const QRect normal = sub->isMaximized() ? sub->normalGeometry() : sub->geometry();
            if (!sub->isMinimized())
                lugares_[ventana->objectName()] = {normal, sub->isMaximized()};
        } else if (ventana->isWindow()) {
            lugares_[ventana->objectName()] = {ventana->geometry(), false};
        }
    }
    return QMdiArea::eventFilter(watched, event);
}

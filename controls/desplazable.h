#pragma once
// Windows on screens that are smaller than they are.

#include <QScrollArea>

/// A scroll area for `content`, without a frame; the focus goes to what it holds, never to itself.
QScrollArea* desplazable(QWidget* content);

/// Fills `window` with such an area, through which the window's own ground shows.
QScrollArea* llenar_desplazable(QWidget& window, QWidget* content);

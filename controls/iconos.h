#pragma once
// The program's icons: line drawings on a 24-unit grid that take their ink from the palette, so that a change from a
// light to a dark palette shows at the next repaint.

#include <QIcon>
#include <QString>

/// Icon of a toolbar key or menu entry ("nuevo", "datos", ...); a null icon for an unknown name.
QIcon icono(const QString& name);

/// The program's own icon, in fixed colours.
QIcon icono_del_programa();

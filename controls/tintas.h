#pragma once
// Inks that say something, legible on light and dark windows.

#include <QPalette>

/// For what is wrong or missing.
inline QColor fault_ink(const QPalette& palette) {
    const bool dark = palette.color(QPalette::Window).lightness() < 128;
    return dark ? QColor(255, 150, 140) : QColor(165, 20, 20);
}

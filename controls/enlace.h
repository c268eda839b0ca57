#pragma once
// What labels that answer to a click have in common.

#include <QLabel>

namespace enlace {

/// Plain text, a tab stop, a button to a screen reader; a click leaves the focus where it is. To be called before the
/// text is set: Qt then asks what the label is, and keeps the answer.
void prepare(QLabel* label);
/// Underlined under the pointer and with the focus, a hand; neither while it is silent, but grey.
void show_look(QLabel* label, bool silent, bool bold = false);
/// The left button was let go over the label.
bool clicked(const QLabel* label, const QMouseEvent* event);
/// Space or return.
bool chosen(const QKeyEvent* event);

}  // namespace enlace

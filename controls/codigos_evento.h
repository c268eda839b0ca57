#pragma once
// Keys and mouse buttons by the numbers that the events of forms carry.

#include <QKeyEvent>

#include <cstdint>

/// 1 shift, 2 control, 4 alt.
std::int16_t shift_of(Qt::KeyboardModifiers keys);

/// 1 left, 2 right, 4 middle.
std::int16_t button_of(Qt::MouseButtons buttons);

/// The number of the key on the keyboard: letters and digits by their capitals, F1 to F24 from 112; 0 for a key
/// without one.
std::int16_t key_code(const QKeyEvent& event);

/// The character that a key types, 8 for backspace, 13 for the enter keys; 0 for all keys that are commands.
std::int16_t key_ascii(const QKeyEvent& event);

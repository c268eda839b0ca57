#include "controls/codigos_evento.h"

#include <algorithm>
#include <array>

std::int16_t shift_of(Qt::KeyboardModifiers keys) {
    return static_cast<std::int16_t>((keys & Qt::ShiftModifier ? 1 : 0) | (keys & Qt::ControlModifier ? 2 : 0) |
                                     (keys & Qt::AltModifier ? 4 : 0));
}

std::int16_t button_of(Qt::MouseButtons buttons) {
    return static_cast<std::int16_t>((buttons & Qt::LeftButton ? 1 : 0) | (buttons & Qt::RightButton ? 2 : 0) |
                                     (buttons & Qt::MiddleButton ? 4 : 0));
}

std::int16_t key_code(const QKeyEvent& event) {
    struct Code {
        int key;
        std::int16_t code;
    };
    constexpr std::array CODES{
        Code{Qt::Key_Backspace, 8}, Code{Qt::Key_Tab, 9},       Code{Qt::Key_Backtab, 9},   Code{Qt::Key_Return, 13},
        Code{Qt::Key_Enter, 13},    Code{Qt::Key_Shift, 16},    Code{Qt::Key_Control, 17},  Code{Qt::Key_Alt, 18},
        Code{Qt::Key_Pause, 19},    Code{Qt::Key_CapsLock, 20}, Code{Qt::Key_Escape, 27},   Code{Qt::Key_PageUp, 33},
        Code{Qt::Key_PageDown, 34}, Code{Qt::Key_End, 35},      Code{Qt::Key_Home, 36},     Code{Qt::Key_Left, 37},
        Code{Qt::Key_Up, 38},       Code{Qt::Key_Right, 39},    Code{Qt::Key_Down, 40},     Code{Qt::Key_Print, 44},
        Code{Qt::Key_Insert, 45},   Code{Qt::Key_Delete, 46},   Code{Qt::Key_NumLock, 144}, Code{Qt::Key_Plus, 187},
        Code{Qt::Key_Comma, 188},   Code{Qt::Key_Minus, 189},   Code{Qt::Key_Period, 190}};
    const int key = event.key();
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return static_cast<std::int16_t>(112 + key - Qt::Key_F1);
    const auto found = std::find_if(CODES.begin(), CODES.end(), [key](const Code& row) { return row.key == key; });
    if (found != CODES.end())
        return found->code;
    return static_cast<std::int16_t>(key < 0x100 ? key : 0);
}

std::int16_t key_ascii(const QKeyEvent& event) {
    const auto keys = event.modifiers();
    if (keys & Qt::ControlModifier && !(keys & Qt::AltModifier))  // both together are the third level of a keyboard
        return 0;
    if (event.key() == Qt::Key_Backspace)
        return 8;
    if (event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter)
        return 13;
    const QString typed = event.text();
    return !typed.isEmpty() && typed.front() >= u' ' && typed.front() != QChar(0x7F)
               ? static_cast<std::int16_t>(typed.front().unicode())
               : std::int16_t{0};
}

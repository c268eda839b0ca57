#pragma once
// What the entry box of the editing windows lets in. Standard library only; texts are UTF-16 as the widgets hold them.

#include <cstdint>
#include <string_view>

/// What may be typed.
enum class Filtro : std::int16_t { Free = 0, Integer = 1, Decimal = 2, Letters = 3 };

namespace reglas {

inline constexpr int TWIPS_PER_PIXEL = 15;  // 1440 twips and 96 logical pixels to the inch
inline constexpr int TIP_MARGIN = 100;      // twips of a box that its frame takes from the text

constexpr bool is_number(Filtro mode) {
    return mode == Filtro::Integer || mode == Filtro::Decimal;
}

/// The key as it goes on: itself, or 0 when the mode drops it. Letters pass in the number modes: what they make of the
/// text is undone by `change`.
std::int16_t filter_key(Filtro mode, bool signo, std::int16_t key);

/// Whether every character of a text that comes in at once (paste, drop, input method) would pass as a key, and in an
/// integer none is the letter of an exponent.
bool may_enter(Filtro mode, bool signo, std::u16string_view text);

/// Blanks around, a sign in front or a "-" behind, digits with at most one "." (alone, it begins a fraction), an
/// exponent with e or E. No thousands separators: what passes is what the program's number reader reads whole.
bool is_numeric(std::u16string_view text);

/// The text that stands after a change: the new one, or the previous one when a number mode does not take it. "-"
/// stands, a number may be begun with it; "5-" stands too, "12-" does not.
std::u16string_view change(Filtro mode, std::u16string_view text, std::u16string_view previous);

/// The same for a change made by the user, who brings in what `before` does not hold.
bool may_become(Filtro mode, bool signo, std::u16string_view before, std::u16string_view after);

/// The text that a box is left with: "0" for an empty number or a lone "-".
std::u16string_view on_leaving(Filtro mode, std::u16string_view text);

/// Whether a text of that width is hidden in part by its box, so that the tool tip shows it whole [pixels].
constexpr bool needs_tip(int text_width, int box_width) {
    return box_width * TWIPS_PER_PIXEL - TIP_MARGIN < text_width * TWIPS_PER_PIXEL;
}

}  // namespace reglas

#pragma once
// Numbers and text, independent of every locale. One place for the whole program.

#include <string>
#include <string_view>

namespace tavo {

/// Leading number of a text: blanks are skipped, then the longest prefix that is a number (sign, digits, ".",
/// exponent) is read. 0 when there is none. Overflowing text gives the largest finite value of its sign.
double Val(std::string_view text);

/// Number in one of the patterns in use: "0", "#" and "." as in "####0.0000", "##0.00", "###" (no digits for 0).
/// Rounds half away from zero on the shortest decimal value of x. Never shows "-0.00".
/// NaN or an infinity gives the empty text.
std::string Format(double x, std::string_view pattern);

/// Plain number-to-text: at most 15 significant digits, shortest form ("0.1", "1E+16", "-3").
std::string to_text(double x);

/// 17 significant digits in the shorter of fixed and exponent notation, without trailing zeros: what tavo-calc prints.
std::string to_text17(double x);

}  // namespace tavo

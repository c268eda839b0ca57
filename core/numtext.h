#pragma once
// Numbers and text, independent of every locale. One place for the whole program.

#include <string>
#include <string_view>

namespace tavo {

/// Leading number of a text: white space before it is skipped, then the longest prefix that is a number (sign, digits,
/// ".", exponent) is read; a blank inside ends it. 0 when there is none. Overflowing text gives the largest finite
/// value of its sign, underflowing text 0.
double Val(std::string_view text);

/// Number in one of the patterns in use: "0", "#" and "." as in "####0.0000", "##0.00", "###" (no digits for 0).
/// Rounds half away from zero on the shortest decimal value of x: 1.005 in "0.00" is "1.01". Never shows "-0.00".
/// NaN or an infinity gives the empty text; a pattern of other characters throws InvalidArgument.
std::string Format(double x, std::string_view pattern);

/// Plain number-to-text: at most 15 significant digits, shortest form ("0.1", "1E+16", "-3"); plain notation for
/// 1e-4 <= |x| < 1e15, else an exponent of two or three digits ("1.5E-07").
std::string to_text(double x);

/// The same with at most `digits` significant digits (1 to 15): with 4 digits "0.04322" for 0.0432159, "1235000" for
/// 1234567.
std::string significant(double x, int digits);

/// 17 significant digits in the shorter of fixed and exponent notation, without trailing zeros: what tavo-calc prints.
std::string to_text17(double x);

}  // namespace tavo

#include "core/numtext.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

#include "core/errors.h"

namespace tavo {

namespace {

bool is_digit(char c) {
    return c >= '0' && c <= '9';
}

std::size_t digits_from(std::string_view text, std::size_t at) {
    while (at < text.size() && is_digit(text[at]))
        ++at;
    return at;
}

/// Length of the longest unsigned number that `text` begins with: digits, ".", exponent. 0 for none.
std::size_t number_length(std::string_view text) {
    const std::size_t integer = digits_from(text, 0);
    std::size_t end = integer;
    std::size_t digits = integer;
    if (end < text.size() && text[end] == '.') {
        end = digits_from(text, end + 1);
        digits += end - integer - 1;
    }
    if (digits == 0)
        return 0;
    if (end < text.size() && (text[end] == 'e' || text[end] == 'E')) {
        std::size_t exponent = end + 1;
        if (exponent < text.size() && (text[exponent] == '+' || text[exponent] == '-'))
            ++exponent;
        if (const std::size_t stop = digits_from(text, exponent); stop > exponent)
            end = stop;
    }
    return end;
}

/// Whether a number that does not fit a double is too large (else it is too small).
bool is_huge(std::string_view number) {
    const std::size_t e = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, e);
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(std::min(mantissa.find_first_of("123456789"), mantissa.size()));
    const bool small = e + 1 < number.size() && number[e + 1] == '-';
    long exponent = 0;
    const char* digits = number.data() + std::min(e + 1, number.size());
    if (digits < number.data() + number.size() && (*digits == '-' || *digits == '+'))
        ++digits;
    if (std::from_chars(digits, number.data() + number.size(), exponent).ec == std::errc::result_out_of_range)
        return !small;
    return point - first + (small ? -exponent : exponent) > 0;
}

/// A finite number other than 0 as 0.d1d2d3... x 10^point.
struct Decimal {
    std::string digits;
    long point = 0;
};

/// From the scientific form that to_chars writes ("1.2345e-07").
Decimal decimal(std::string_view scientific) {
    Decimal result;
    const std::size_t e = scientific.find('e');
    for (const char c : scientific.substr(0, e))
        if (is_digit(c))
            result.digits += c;
    const char* exponent = scientific.data() + e + 1;
    std::from_chars(*exponent == '+' ? exponent + 1 : exponent, scientific.data() + scientific.size(), result.point);
    ++result.point;
    return result;
}

Decimal shortest_decimal(double x) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), x, std::chars_format::scientific).ptr;
    return decimal({buffer.data(), end});
}

Decimal rounded_decimal(double x, int significant) {
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), x, std::chars_format::scientific, significant - 1).ptr;
    Decimal result = decimal({buffer.data(), end});
    result.digits.erase(result.digits.find_last_not_of('0') + 1);
    return result;
}

/// Digits of x 10^places, rounded half up; "" for 0.
std::string round_at(const Decimal& x, long places) {
    const long keep = x.point + places;
    if (keep < 0)
        return {};
    const auto kept = static_cast<std::size_t>(keep);
    std::string digits = x.digits.substr(0, kept);
    const bool up = kept < x.digits.size() && x.digits[kept] >= '5';
    digits.resize(kept, '0');
    if (up) {
        auto digit = digits.rbegin();
        for (; digit != digits.rend() && *digit == '9'; ++digit)
            *digit = '0';
        if (digit == digits.rend())
            digits.insert(digits.begin(), '1');
        else
            ++*digit;
    }
    digits.erase(0, std::min(digits.find_first_not_of('0'), digits.size()));
    return digits;
}

long zeros(std::string_view pattern) {
    return std::count(pattern.begin(), pattern.end(), '0');
}

std::string exponent_form(const Decimal& x) {
    std::string text = x.digits.substr(0, 1);
    if (x.digits.size() > 1)
        text += "." + x.digits.substr(1);
    const long exponent = x.point - 1;
    const std::string magnitude = std::to_string(std::labs(exponent));
    return text + (exponent < 0 ? "E-" : "E+") + (magnitude.size() < 2 ? "0" : "") + magnitude;
}

std::string plain_form(const Decimal& x) {
    if (x.point <= 0)
        return "0." + std::string(static_cast<std::size_t>(-x.point), '0') + x.digits;
    const auto point = static_cast<std::size_t>(x.point);
    if (x.digits.size() <= point)
        return x.digits + std::string(point - x.digits.size(), '0');
    return x.digits.substr(0, point) + "." + x.digits.substr(point);
}

/// "nan", "inf" and "-inf" appear in error sentences only.
std::string not_finite(double x) {
    if (std::isnan(x))
        return "nan";
    return x > 0.0 ? "inf" : "-inf";
}

}  // namespace

double Val(std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t\r\n"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);
    const std::string_view number = text.substr(0, number_length(text));
    if (number.empty())
        return 0.0;
    double x = 0.0;
    if (std::from_chars(number.data(), number.data() + number.size(), x).ec == std::errc::result_out_of_range)
        x = is_huge(number) ? std::numeric_limits<double>::max() : 0.0;
    return negative ? 0.0 - x : x;
}

std::string Format(double x, std::string_view pattern) {
    if (pattern.find_first_not_of("#0.") != std::string_view::npos ||
        std::count(pattern.begin(), pattern.end(), '.') > 1)
        throw InvalidArgument("number pattern \"" + std::string(pattern) + "\" has other characters than # 0 .");
    if (!std::isfinite(x))
        return {};

    const std::size_t point = std::min(pattern.find('.'), pattern.size());
    const std::string_view decimals = pattern.substr(std::min(point + 1, pattern.size()));
    const auto places = static_cast<long>(decimals.size());
    const std::string scaled = x == 0.0 ? std::string() : round_at(shortest_decimal(x), places);

    const std::size_t whole = scaled.size() > decimals.size() ? scaled.size() - decimals.size() : 0;
    const auto least = static_cast<std::size_t>(zeros(pattern.substr(0, point)));
    std::string text = scaled.substr(0, whole);
    text.insert(0, least > whole ? least - whole : 0, '0');
    if (!decimals.empty()) {
        std::string fraction = scaled.substr(whole);
        fraction.insert(0, decimals.size() - fraction.size(), '0');
        // A "#" after the point shows a digit only where it is not a trailing zero.
        const std::size_t needed = decimals.find_last_of('0') + 1;
        fraction.resize(std::max(fraction.find_last_not_of('0') + 1, needed));
        text += "." + fraction;
    }
    return x < 0.0 && !scaled.empty() ? "-" + text : text;
}

std::string to_text(double x) {
    return significant(x, 15);
}

std::string significant(double x, int digits) {
    if (!std::isfinite(x))
        return not_finite(x);
    if (x == 0.0)
        return "0";
    const Decimal value = rounded_decimal(std::fabs(x), digits);
    const bool plain = value.point > -4 && value.point <= 15;  // 1e-4 <= |x| < 1e15
    return (x < 0.0 ? "-" : "") + (plain ? plain_form(value) : exponent_form(value));
}

std::string to_text17(double x) {
    if (!std::isfinite(x))
        return not_finite(x);
    std::array<char, 40> buffer{};
    const auto end = std::to_chars(buffer.begin(), buffer.end(), x, std::chars_format::general, 17).ptr;
    return x == 0.0 ? "0" : std::string(buffer.data(), end);
}

}  // namespace tavo

#include "windows/reference/termometria.h"

#include <algorithm>
#include <cmath>

#include "core/numtext.h"
#include "core/units.h"

namespace termometria {

namespace {
constexpr double LOWEST = -50.0, HIGHEST = 110.0;  // ºC
constexpr double TOO_LONG = 1e15;                  // to be shown with all its digits

bool known(int index) {
    return index >= 0 && index < SCALES;
}
}  // namespace

double convert(int from, int to, double t) {
    if (!known(from) || !known(to))
        return 0.0;
    const auto unit = [](int index) { return UNITS[static_cast<std::size_t>(index)]; };
    return tavo::Global::convertirtemperatura(t, unit(from), unit(to));
}

Values convert_to_all(int from, double t) {
    Values values{};
    for (int to = 0; to < SCALES; ++to)
        values[static_cast<std::size_t>(to)] = convert(from, to, t);
    return values;
}

graduacion::Scale scale(int index) {
    return {convert(CELSIUS, index, LOWEST), convert(CELSIUS, index, HIGHEST), 1.0, 10};
}

bool is_temperature(int scale, std::string_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    if (text.starts_with('.'))
        text.remove_prefix(1);
    const bool begins = !text.empty() && text.front() >= '0' && text.front() <= '9';
    return begins &&
           std::ranges::all_of(convert_to_all(scale, tavo::Val(text)), [](double t) { return std::abs(t) < TOO_LONG; });
}

bool below_absolute_zero(const Values& values) {
    return tavo::Format(values[KELVIN], FORMAT).starts_with('-');
}

}  // namespace termometria

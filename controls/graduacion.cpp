#include "controls/graduacion.h"

#include <algorithm>
#include <cmath>

namespace graduacion {

bool inside(const Scale& scale, double value) {
    return value >= scale.minimum && value <= scale.maximum;
}

double pinned(const Scale& scale, double value) {
    return std::clamp(value, scale.minimum, scale.maximum);
}

double value_at(const Scale& scale, double y, double height) {
    return height > 0.0 ? std::lerp(scale.maximum, scale.minimum, y / height) : scale.minimum;
}

double place_of(const Scale& scale, double value, double height) {
    return height * (scale.maximum - pinned(scale, value)) / (scale.maximum - scale.minimum);
}

std::vector<Tick> ticks(const Scale& s) {
    constexpr double SLACK = 1e-9;  // of a graduation: 2.0 / 0.05 may fall short of 40
    const auto first = static_cast<int>(std::ceil(s.minimum / s.graduation - SLACK));
    const auto last = static_cast<int>(std::floor(s.maximum / s.graduation + SLACK));
    std::vector<Tick> result;
    for (int k = first; k <= last; ++k)
        result.push_back({std::clamp(k * s.graduation, s.minimum, s.maximum), k % s.numbered == 0});
    return result;
}

}  // namespace graduacion

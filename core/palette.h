#pragma once
// The 16-colour console palette by index, which several windows use.

#include <array>
#include <cstdint>

namespace tavo {

struct Rgb {
    std::uint8_t r, g, b;
};

inline constexpr std::array<Rgb, 16> PALETTE{{
    {0, 0, 0},
    {0, 0, 128},
    {0, 128, 0},
    {0, 128, 128},
    {128, 0, 0},
    {128, 0, 128},
    {128, 128, 0},
    {192, 192, 192},
    {128, 128, 128},
    {0, 0, 255},
    {0, 255, 0},
    {0, 255, 255},
    {255, 0, 0},
    {255, 0, 255},
    {255, 255, 0},
    {255, 255, 255},
}};

/// Palette index of the curve of isotherm slot 1 to 5.
inline constexpr std::array<int, 5> CURVE_COLOURS{9, 2, 12, 13, 6};

}  // namespace tavo

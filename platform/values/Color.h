#pragma once
/// A colour is the 32-bit value 0x00RRGGBB.

#include <cstdint>

namespace platform {

using Color = std::uint32_t;

/// The colour with these components; only their low 8 bits count.
constexpr Color RGB(int red, int green, int blue) {
  return static_cast<Color>((red & 0xFF) << 16 | (green & 0xFF) << 8 | (blue & 0xFF));
}

/// A pixel in memory: a colour whose upper byte is 255, as window systems store an opaque one.
using OpaqueColor = std::uint32_t;
constexpr OpaqueColor Opaque(Color color) { return 0xFF000000 | color; }
constexpr OpaqueColor OpaqueRGB(int red, int green, int blue) { return Opaque(RGB(red, green, blue)); }
constexpr Color ColorOf(OpaqueColor pixel) { return pixel & 0x00FFFFFF; }

constexpr int Red(Color color) { return static_cast<int>((color >> 16) & 0xFF); }
constexpr int Green(Color color) { return static_cast<int>((color >> 8) & 0xFF); }
constexpr int Blue(Color color) { return static_cast<int>(color & 0xFF); }

constexpr Color kBlack = 0x000000;
constexpr Color kWhite = 0xFFFFFF;

}  // namespace platform

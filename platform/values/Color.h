#pragma once
/// A colour is the 32-bit value 0xFFRRGGBB, as window systems store an opaque pixel.

#include <cstdint>

namespace platform {

using Color = std::uint32_t;

/// The colour of the low 24 bits, 0xRRGGBB.
constexpr Color Opaque(std::uint32_t rgb) { return 0xFF000000 | rgb; }
/// The colour with these components; only their low 8 bits count.
constexpr Color RGB(int red, int green, int blue) {
  return Opaque(static_cast<std::uint32_t>((red & 0xFF) << 16 | (green & 0xFF) << 8 | (blue & 0xFF)));
}

constexpr int Red(Color color) { return static_cast<int>((color >> 16) & 0xFF); }
constexpr int Green(Color color) { return static_cast<int>((color >> 8) & 0xFF); }
constexpr int Blue(Color color) { return static_cast<int>(color & 0xFF); }

constexpr Color kBlack = RGB(0, 0, 0);
constexpr Color kWhite = RGB(255, 255, 255);

}  // namespace platform

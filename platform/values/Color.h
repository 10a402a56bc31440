#pragma once
/// A colour is the 32-bit value 0x00RRGGBB.

#include <cstdint>

namespace platform {

using Color = std::uint32_t;

/// The colour with these components; only their low 8 bits count.
constexpr Color RGB(int red, int green, int blue) {
  return (static_cast<Color>(red & 0xFF) << 16) | (static_cast<Color>(green & 0xFF) << 8) |
         static_cast<Color>(blue & 0xFF);
}

constexpr int Red(Color color) { return static_cast<int>((color >> 16) & 0xFF); }
constexpr int Green(Color color) { return static_cast<int>((color >> 8) & 0xFF); }
constexpr int Blue(Color color) { return static_cast<int>(color & 0xFF); }

constexpr Color kBlack = 0x000000;
constexpr Color kWhite = 0xFFFFFF;

}  // namespace platform

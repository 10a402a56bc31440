#pragma once
/// Converts samples of any depth to the 256 grey levels of a picture.

#include <array>
#include <cstdint>
#include <span>
#include <vector>

#include "platform/values/Color.h"

namespace platform {

/// The levels of a plane of more than 8 bits: level = 255 (v - lower) / (upper - lower), to the nearest, halves upward;
/// at least 0 and at most 255. `lower` is 0, or the plane's lowest value if that is negative. `upper` is the highest
/// value, unless that is more than twice as far from `lower` as the 99.9th percentile (nearest rank over all pixels):
/// then it is at twice the percentile's distance, so that a few hot pixels do not make a map black. A percentile equal
/// to `lower` is ignored. Not-a-number counts as the lowest value. Infinite values become 0 or 255; the highest value
/// is the highest finite one. If all values are equal to `lower`, all levels are 0. Instantiated for std::int8_t,
/// std::uint16_t, std::int16_t, std::uint32_t, std::int32_t, std::uint64_t, std::int64_t, float and double.
template <class Sample>
std::vector<std::uint8_t> ScaledToLevels(std::span<const Sample> samples);

/// The level of each sample value of `bits` bits, 1 to 8, scaled so that the largest value is 255 and rounded to
/// nearest. Eight bits stay as they are. Entries past the largest value are 255.
std::array<std::uint8_t, 256> LevelsOfBits(int bits);

/// Composites `levels` on white, in place, with `alpha` from 0 (transparent) to 255 (opaque). `premultiplied`: the
/// levels are already multiplied by alpha. Both spans have the same size.
void CompositeOnWhite(std::span<std::uint8_t> levels, std::span<const std::uint8_t> alpha, bool premultiplied);

/// One level composited on white: (level * alpha + 255 * (255 - alpha)) / 255, rounded to nearest.
constexpr int OverWhite(int level, int alpha) { return (level * alpha + 127) / 255 + 255 - alpha; }
constexpr OpaqueColor ColorOverWhite(OpaqueColor color, int alpha) {
  return OpaqueRGB(OverWhite(Red(color), alpha), OverWhite(Green(color), alpha), OverWhite(Blue(color), alpha));
}

}  // namespace platform

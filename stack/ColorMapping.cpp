#include "stack/ColorMapping.h"

#include <algorithm>

#include "platform/Errors.h"
#include "stack/PixelStream.h"

LevelColors ComposeColors(const Curve& curve, std::span<const platform::Color> tableRow) {
  LevelColors composed;
  std::transform(curve.begin(), curve.end(), composed.colors.begin(), [&](std::int32_t index) {
    return index >= 0 && static_cast<std::size_t>(index) < tableRow.size() ? tableRow[static_cast<std::size_t>(index)]
                                                                           : LevelColors::kInvalid;
  });
  return composed;
}

namespace {

/// Colours one row and tells whether all its levels and colours were valid. That is asked once for the row, as failures
/// are rare.
bool ColorRow(const std::int32_t* in, const LevelColors& colors, platform::Color* out, int width) {
  const platform::Color* table = colors.colors.data();
  std::uint64_t seenLevels = 0, seenColors = 0;
  int x = 0;
  for (; x + kPixelsPerLine <= width; x += kPixelsPerLine) {
    RequestForReading(in + x);
    RequestForWriting(out + x);
#pragma GCC unroll 8
    for (int i = x; i < x + kPixelsPerLine; i += 2) {
      const std::uint64_t levels = LoadPair(in + i);
      const std::uint64_t pair = table[levels & 0xFF] | std::uint64_t{table[levels >> 32 & 0xFF]} << 32;
      StorePair(pair, out + i);
      seenLevels |= levels;
      seenColors |= pair;
    }
  }
  for (; x < width; ++x) {
    const auto level = static_cast<std::uint32_t>(in[x]);
    out[x] = table[level & 0xFF];
    seenLevels |= level;
    seenColors |= out[x];
  }
  constexpr std::uint64_t badLevel = 0xFFFFFF00FFFFFF00, badColor = 0xFF000000FF000000;
  return (seenLevels & badLevel) == 0 && (seenColors & badColor) == 0;
}

}  // namespace

void ColorPlane(platform::PlaneView<const std::int32_t> levels, const LevelColors& colors,
                platform::PlaneView<platform::Color> target) {
  const int width = std::min(levels.width, target.width);
  const int height = std::min(levels.height, target.height);
  for (int y = 0; y < height; ++y) {
    const std::int32_t* in = levels.Row(y);
    if (ColorRow(in, colors, target.Row(y), width)) continue;
    const std::int32_t* bad = std::find_if(in, in + width, [&](std::int32_t level) {
      return level < 0 || level > 255 || colors.colors[static_cast<std::size_t>(level)] > platform::kWhite;
    });
    platform::ThrowOutOfBounds("grey level", *bad, 255);
  }
}

#include "stack/ColorMapping.h"

#include <algorithm>

#include "platform/Errors.h"

LevelColors ComposeColors(const Curve& curve, std::span<const platform::Color> tableRow) {
  LevelColors composed;
  std::transform(curve.begin(), curve.end(), composed.colors.begin(), [&](std::int32_t index) {
    return index >= 0 && static_cast<std::size_t>(index) < tableRow.size() ? tableRow[static_cast<std::size_t>(index)]
                                                                           : LevelColors::kInvalid;
  });
  return composed;
}

void ColorPlane(platform::PlaneView<const std::int32_t> levels, const LevelColors& colors,
                platform::PlaneView<platform::Color> target) {
  const int width = std::min(levels.width, target.width);
  const int height = std::min(levels.height, target.height);
  for (int y = 0; y < height; ++y) {
    const std::int32_t* in = levels.Row(y);
    platform::Color* out = target.Row(y);
    // Failures are rare: the row is coloured first, and whether it might be is asked at its end.
    std::uint32_t seenLevels = 0;
    platform::Color seenColors = 0;
    for (int x = 0; x < width; ++x) {
      const auto level = static_cast<std::uint32_t>(in[x]);
      const platform::Color color = colors.colors[level & 0xFF];
      out[x] = color;
      seenLevels |= level;
      seenColors |= color;
    }
    if (seenLevels > 0xFF || (seenColors & LevelColors::kInvalid) != 0) {
      const std::int32_t* bad = std::find_if(in, in + width, [&](std::int32_t level) {
        return level < 0 || level > 255 || colors.colors[static_cast<std::size_t>(level)] == LevelColors::kInvalid;
      });
      platform::ThrowOutOfBounds("grey level", *bad, 255);
    }
  }
}

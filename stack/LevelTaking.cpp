#include "stack/LevelTaking.h"

#include <algorithm>
#include <cstddef>

#include "platform/Errors.h"
#include "stack/PixelStream.h"

namespace {

std::uint32_t LevelOf(std::uint8_t level) { return level; }

std::uint32_t LevelOf(platform::Color color) {
  return std::max(std::max((color >> 16) & 0xFF, (color >> 8) & 0xFF), color & 0xFF);
}

/// One row; returns its highest level.
template <class Pixel>
std::uint32_t TakeRow(const Pixel* pixels, int width, const platform::Color* table, std::int32_t* displayed,
                      std::int32_t* original, platform::Color* shown) {
  std::uint32_t highest = 0;
  int x = 0;
  for (; x + kPixelsPerLine <= width; x += kPixelsPerLine) {
    RequestForReading(pixels + x);
    RequestForWriting(displayed + x);
    RequestForWriting(original + x);
    RequestForWriting(shown + x);
#pragma GCC unroll 8
    for (int i = x; i < x + kPixelsPerLine; i += 2) {
      const std::uint64_t first = LevelOf(pixels[i]), second = LevelOf(pixels[i + 1]);
      const std::uint64_t pair = first | second << 32;
      StorePair(pair, displayed + i);
      StorePair(pair, original + i);
      StorePair(table[first] | std::uint64_t{table[second]} << 32, shown + i);
      highest = std::max(highest, static_cast<std::uint32_t>(std::max(first, second)));
    }
  }
  for (; x < width; ++x) {
    const std::uint32_t level = LevelOf(pixels[x]);
    displayed[x] = original[x] = static_cast<std::int32_t>(level);
    shown[x] = table[level];
    highest = std::max(highest, level);
  }
  return highest;
}

}  // namespace

int TakeLevels(platform::Picture& picture, std::span<const platform::Color> tableRow,
               platform::PlaneView<std::int32_t> displayed, platform::PlaneView<std::int32_t> original,
               platform::PlaneView<platform::Color> shown) {
  if (tableRow.size() < 256) platform::ThrowOutOfBounds("colour table", 255, static_cast<int>(tableRow.size()) - 1);
  const int width = std::min({picture.Width(), displayed.width, original.width, shown.width});
  const int height = std::min({picture.Height(), displayed.height, original.height, shown.height});
  if (width <= 0 || height <= 0) return -1;

  const std::span<const std::uint8_t> greyLevels = picture.GreyLevels();
  const auto pixels = greyLevels.empty() ? picture.Pixels() : platform::PlaneView<platform::Color>();
  std::uint32_t highest = 0;
  for (int y = 0; y < height; ++y) {
    const auto takeRow = [&](const auto* row) {
      return TakeRow(row, width, tableRow.data(), displayed.Row(y), original.Row(y), shown.Row(y));
    };
    const std::ptrdiff_t offset = static_cast<std::ptrdiff_t>(y) * picture.Width();
    highest = std::max(highest, greyLevels.empty() ? takeRow(pixels.Row(y)) : takeRow(greyLevels.data() + offset));
  }
  return static_cast<int>(highest);
}

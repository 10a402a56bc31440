#include "stack/LevelTaking.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

int TakeLevels(platform::Picture& picture, platform::PlaneView<std::uint8_t> displayed,
               platform::PlaneView<std::uint8_t> original) {
  const int width = std::min({picture.Width(), displayed.width, original.width});
  const int height = std::min({picture.Height(), displayed.height, original.height});
  if (width <= 0 || height <= 0) return -1;

  const std::span<const std::uint8_t> greyLevels = picture.GreyLevels();
  const auto pixels = greyLevels.empty() ? picture.Pixels() : platform::PlaneView<platform::OpaqueColor>();
  std::uint8_t highest = 0;
  for (int y = 0; y < height; ++y) {
    std::uint8_t* const levels = displayed.Row(y);
    if (greyLevels.empty())
      std::transform(pixels.Row(y), pixels.Row(y) + width, levels, [](platform::Color color) {
        return static_cast<std::uint8_t>(std::max({color >> 16 & 0xFF, color >> 8 & 0xFF, color & 0xFF}));
      });
    else
      std::copy_n(greyLevels.data() + static_cast<std::ptrdiff_t>(y) * picture.Width(), width, levels);
    std::copy_n(levels, width, original.Row(y));
    highest =
        std::accumulate(levels, levels + width, highest, [](std::uint8_t a, std::uint8_t b) { return std::max(a, b); });
  }
  return highest;
}

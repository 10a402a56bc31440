#include <gtest/gtest.h>

#include <vector>

#include "composite/Mixing.h"

namespace {

using platform::Color;
using Levels = std::vector<std::uint8_t>;
using Planes = std::array<platform::PlaneView<const std::uint8_t>, 3>;

Planes Views(const std::array<Levels, 3>& levels, int width, int height) {
  Planes views;
  for (std::size_t i = 0; i < 3; ++i) views[i] = {levels[i].data(), width, height, width};
  return views;
}

TEST(Mixing, TakesEachPixelOfRowsOfAnyWidth) {
  const Curve straight = DisplayCurve(0, 255);
  Curve inverse;
  for (int i = 0; i < 256; ++i) inverse[static_cast<std::size_t>(i)] = 255 - i;
  for (int width = 1; width <= 70; ++width) {
    std::array<Levels, 3> wide;
    for (std::size_t channel = 0; channel < 3; ++channel)
      for (int i = 0; i < 2 * width; ++i)
        wide[channel].push_back(static_cast<std::uint8_t>(i * 29 + static_cast<int>(channel) * 101));
    // The target has a row more and a column less.
    std::vector<Color> mixed(static_cast<std::size_t>(3 * width), 1), expected = mixed;
    for (std::size_t i = 0; i < static_cast<std::size_t>(2 * width); ++i)
      if (i % static_cast<std::size_t>(width) + 1 < static_cast<std::size_t>(width))
        expected[i] = platform::OpaqueRGB(wide[0][i], 255 - wide[1][i], wide[2][i]);
    MixPlanes(Views(wide, width, 2), {straight, inverse, straight}, true, {mixed.data(), width - 1, 3, width});
    ASSERT_EQ(mixed, expected) << width;
  }
}

TEST(Mixing, CutsComponentsToEightBits) {
  const std::array<Levels, 3> levels{Levels{16}, {32}, {48}};
  const Curve straight = DisplayCurve(0, 255);
  Curve odd = straight;
  odd[16] = -57;  // 0xC7 in its low bits; 255 + 57 is 0x138
  Color mixed = 1;
  for (const auto& [additive, color] : {std::pair{true, 0xC72030U}, {false, 0x38DFCFU}}) {
    MixPlanes(Views(levels, 1, 1), {odd, straight, straight}, additive, {&mixed, 1, 1, 1});
    EXPECT_EQ(mixed, platform::Opaque(color));
  }
}

}  // namespace

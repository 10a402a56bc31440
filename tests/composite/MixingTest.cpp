#include <gtest/gtest.h>

#include <vector>

#include "composite/Mixing.h"

namespace {

using platform::Color;
using Levels = std::vector<std::uint8_t>;
using Planes = std::array<platform::PlaneView<const std::uint8_t>, 3>;

Planes Views(const std::array<Levels, 3>& levels, int width, int height, int pitch) {
  Planes views;
  for (std::size_t i = 0; i < 3; ++i) views[i] = {levels[i].data(), width, height, pitch};
  return views;
}

class Mixing : public testing::Test {
 protected:
  std::array<Levels, 3> planes{Levels{0, 255, 16, 1}, Levels{0, 255, 32, 0}, Levels{0, 255, 48, 255}};
  Planes views = Views(planes, 2, 2, 2);
  Curve straight = DisplayCurve(0, 255);
  std::vector<Color> target = std::vector<Color>(4, 1);
};

TEST_F(Mixing, CutsComponentsToEightBits) {
  Curve odd = straight;
  odd[16] = -57;  // 0xC7 in its low bits; 255 + 57 is 0x138
  MixPlanes(views, {odd, straight, straight}, true, {target.data(), 2, 2, 2});
  EXPECT_EQ(target[2], 0xC72030u);
  MixPlanes(views, {odd, straight, straight}, false, {target.data(), 2, 2, 2});
  EXPECT_EQ(target[2], 0x38DFCFu);
}

TEST_F(Mixing, LeavesOutWhatLiesBeyondTheTarget) {
  std::vector<Color> wide(6, 1);
  MixPlanes(views, {straight, straight, straight}, true, {wide.data(), 1, 5, 1});
  EXPECT_EQ(wide, (std::vector<Color>{0x000000, 0x102030, 1, 1, 1, 1}));
}

TEST_F(Mixing, TakesEachPixelOfRowsOfAnyWidth) {
  Curve inverse;
  for (int i = 0; i < 256; ++i) inverse[static_cast<std::size_t>(i)] = 255 - i;
  for (int width = 1; width <= 70; ++width) {
    std::array<Levels, 3> wide;
    for (std::size_t channel = 0; channel < 3; ++channel)
      for (int i = 0; i < 2 * width; ++i)
        wide[channel].push_back(static_cast<std::uint8_t>(i * 29 + static_cast<int>(channel) * 101));
    std::vector<Color> mixed(static_cast<std::size_t>(2 * width)), expected = mixed;
    for (std::size_t i = 0; i < expected.size(); ++i)
      expected[i] = platform::RGB(wide[0][i], 255 - wide[1][i], wide[2][i]);
    MixPlanes(Views(wide, width, 2, width), {straight, inverse, straight}, true, {mixed.data(), width, 2, width});
    ASSERT_EQ(mixed, expected) << width;
  }
}

}  // namespace

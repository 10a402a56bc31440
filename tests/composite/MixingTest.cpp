#include <gtest/gtest.h>

#include <vector>

#include "composite/Mixing.h"
#include "platform/Errors.h"

namespace {

using platform::Color;
using Levels = std::vector<std::int32_t>;
using Planes = std::array<platform::PlaneView<const std::int32_t>, 3>;

class Mixing : public testing::Test {
 protected:
  Planes Views() const {
    Planes views;
    for (std::size_t i = 0; i < 3; ++i) views[i] = {planes[i].data(), 2, 2, 2};
    return views;
  }

  std::array<Levels, 3> planes{Levels{0, 255, 16, 1}, Levels{0, 255, 32, 0}, Levels{0, 255, 48, 255}};
  Curve straight = DisplayCurve(0, 255);
  std::vector<Color> target = std::vector<Color>(4, 1);
};

TEST_F(Mixing, CutsComponentsToEightBits) {
  Curve odd = straight;
  odd[16] = -57;  // 0xC7 in its low bits; 255 + 57 is 0x138
  MixPlanes(Views(), {odd, straight, straight}, true, {target.data(), 2, 2, 2});
  EXPECT_EQ(target[2], 0xC72030u);
  MixPlanes(Views(), {odd, straight, straight}, false, {target.data(), 2, 2, 2});
  EXPECT_EQ(target[2], 0x38DFCFu);
}

TEST_F(Mixing, LeavesOutWhatLiesBeyondTheTarget) {
  std::vector<Color> wide(6, 1);
  MixPlanes(Views(), {straight, straight, straight}, true, {wide.data(), 1, 5, 1});
  EXPECT_EQ(wide, (std::vector<Color>{0x000000, 0x102030, 1, 1, 1, 1}));
}

TEST_F(Mixing, RefusesALevelOutsideTheCurves) {
  for (std::size_t channel = 0; channel < 3; ++channel)
    for (const std::int32_t bad : {-1, 256, INT32_MIN}) {
      const auto good = std::exchange(planes[channel][3], bad);
      EXPECT_THROW(MixPlanes(Views(), {straight, straight, straight}, true, {target.data(), 2, 2, 2}),
                   platform::OutOfBoundsException);
      planes[channel][3] = good;
    }
}

}  // namespace

#include <gtest/gtest.h>

#include <vector>

#include "platform/Errors.h"
#include "stack/ColorMapping.h"

namespace {

using platform::Color;

std::vector<Color> Row257() {
  std::vector<Color> row(257);
  for (std::size_t i = 0; i < row.size(); ++i) row[i] = static_cast<Color>(0x010203 * (i % 64) + i);
  return row;
}

TEST(ColorMapping, ColoursTheCommonPartOnly) {
  const auto row = Row257();
  const LevelColors colors = ComposeColors(DisplayCurve(0, 255), row);
  const std::vector<std::int32_t> levels(20, 9);
  std::vector<Color> target(20, 1);
  // 5 by 4 levels on 3 by 2 pixels that lie in rows of 5.
  ColorPlane({levels.data(), 5, 4, 5}, colors, {target.data(), 3, 2, 5});
  std::vector<Color> expected(20, 1);
  for (const std::size_t i : {0, 1, 2, 5, 6, 7}) expected[i] = row[9];
  EXPECT_EQ(target, expected);
}

TEST(ColorMapping, RefusesLevelsOutsideTableAndCurve) {
  Curve curve = DisplayCurve(0, 255);
  curve[7] = -1;
  curve[8] = 257;
  curve[9] = 256;
  const LevelColors colors = ComposeColors(curve, Row257());
  std::vector<Color> target(4);
  for (const std::int32_t bad : {7, 8, -1, 256, 65536, INT32_MIN}) {
    std::vector<std::int32_t> levels{1, 2, 3, bad};
    EXPECT_THROW(ColorPlane({levels.data(), 2, 2, 2}, colors, {target.data(), 2, 2, 2}), platform::OutOfBoundsException)
        << bad;
  }
  // What is invalid in the curve does no harm where no level asks for it.
  std::vector<std::int32_t> levels{1, 2, 3, 9};
  ColorPlane({levels.data(), 2, 2, 2}, colors, {target.data(), 2, 2, 2});
  EXPECT_EQ(target[3], Row257()[256]);
}

}  // namespace

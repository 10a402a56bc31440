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

Curve StraightCurve() {
  return DisplayCurve(0, 255);
}

TEST(ColorMapping, GoesThroughCurveAndTable) {
  const auto row = Row257();
  Curve curve = StraightCurve();
  curve[3] = 200;
  curve[4] = 256;
  const LevelColors colors = ComposeColors(curve, row);
  const std::vector<std::int32_t> levels{0, 3, 4, 255, 17, 3};
  std::vector<Color> target(6, 1);
  ColorPlane({levels.data(), 3, 2, 3}, colors, {target.data(), 3, 2, 3});
  EXPECT_EQ(target, (std::vector<Color>{row[0], row[200], row[256], row[255], row[17], row[200]}));
}

TEST(ColorMapping, ColoursTheCommonPartOnly) {
  const auto row = Row257();
  const LevelColors colors = ComposeColors(StraightCurve(), row);
  const std::vector<std::int32_t> levels(20, 9);
  std::vector<Color> target(20, 1);
  // 5 by 4 levels on 3 by 2 pixels that lie in rows of 5.
  ColorPlane({levels.data(), 5, 4, 5}, colors, {target.data(), 3, 2, 5});
  std::vector<Color> expected(20, 1);
  for (const std::size_t i : {0, 1, 2, 5, 6, 7}) expected[i] = row[9];
  EXPECT_EQ(target, expected);
}

TEST(ColorMapping, RefusesLevelsOutsideTableAndCurve) {
  Curve curve = StraightCurve();
  curve[7] = -1;
  curve[8] = 257;
  const LevelColors colors = ComposeColors(curve, Row257());
  std::vector<Color> target(4);
  for (const std::int32_t bad : {7, 8, -1, 256, 65536, INT32_MIN}) {
    std::vector<std::int32_t> levels{1, 2, 3, bad};
    EXPECT_THROW(ColorPlane({levels.data(), 2, 2, 2}, colors, {target.data(), 2, 2, 2}), platform::OutOfBoundsException)
        << bad;
  }
  // What is invalid in the curve does no harm where no level asks for it.
  std::vector<std::int32_t> levels{1, 2, 3, 9};
  EXPECT_NO_THROW(ColorPlane({levels.data(), 2, 2, 2}, colors, {target.data(), 2, 2, 2}));
}

}  // namespace

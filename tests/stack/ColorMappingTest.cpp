#include <vector>

#include "platform/values/Errors.h"
#include "stack/ColorMapping.h"
#include "tests/stack/EveryTarget.h"

namespace {

using platform::Color;
using Levels = std::vector<std::uint8_t>;

/// Each component of each entry differs from its neighbours'.
std::vector<Color> Row257() {
  std::vector<Color> row(257);
  for (std::size_t i = 0; i < row.size(); ++i)
    row[i] = static_cast<Color>((i * 7 % 256) << 16 | (i * 31 % 256) << 8 | (255 - i % 256));
  return row;
}

class ColorMappingOnEveryTarget : public EveryTarget {};

TEST_P(ColorMappingOnEveryTarget, ColoursEachPixelOfRowsOfAnyWidth) {
  const auto row = Row257();
  const LevelColors colors = ComposeColors(DisplayCurve(0, 255), row);
  constexpr int height = 3;
  for (int width = 1; width <= 200; ++width) {
    // Rows that begin anywhere, so that every level occurs at every position of a step.
    const int inPitch = width + 5, outPitch = width + 3;
    Levels levels(static_cast<std::size_t>(inPitch * height));
    for (std::size_t i = 0; i < levels.size(); ++i) levels[i] = static_cast<std::uint8_t>(i * 37 + i / 256);
    std::vector<Color> target(static_cast<std::size_t>(outPitch * height), 1), expected = target;
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        expected[static_cast<std::size_t>(y * outPitch + x)] =
            platform::Opaque(row[levels[static_cast<std::size_t>(y * inPitch + x)]]);
    ColorPlane({levels.data(), width, height, inPitch}, colors, {target.data(), width, height, outPitch});
    ASSERT_EQ(target, expected) << width;
  }
}

FOR_EVERY_TARGET(ColorMappingOnEveryTarget);

TEST(ColorMapping, ColoursTheCommonPartOnly) {
  const auto row = Row257();
  const LevelColors colors = ComposeColors(DisplayCurve(0, 255), row);
  const Levels levels(20, 9);
  std::vector<Color> target(20, 1);
  // 5 by 4 levels on 3 by 2 pixels of pitch 5.
  ColorPlane({levels.data(), 5, 4, 5}, colors, {target.data(), 3, 2, 5});
  std::vector<Color> expected(20, 1);
  for (const std::size_t i : {0, 1, 2, 5, 6, 7}) expected[i] = platform::Opaque(row[9]);
  EXPECT_EQ(target, expected);
}

TEST(ColorMapping, ThrowsForAnIndexOutsideTheTableThatALevelUses) {
  Curve curve = DisplayCurve(0, 255);
  curve[7] = -1;
  curve[8] = 257;
  curve[9] = 256;
  const LevelColors colors = ComposeColors(curve, Row257());
  constexpr int width = 131;
  std::vector<Color> target(width);
  for (std::size_t x = 0; x < width; ++x)
    for (const int bad : {7, 8}) {
      Levels levels(width, 9);
      levels[x] = static_cast<std::uint8_t>(bad);
      EXPECT_THROW(ColorPlane({levels.data(), width, 1, width}, colors, {target.data(), width, 1, width}),
                   platform::OutOfBoundsException);
    }
  // An invalid entry of the curve is harmless if no level uses it.
  const Levels levels(width, 9);
  ColorPlane({levels.data(), width, 1, width}, colors, {target.data(), width, 1, width});
  EXPECT_EQ(target, std::vector<Color>(width, platform::Opaque(Row257()[256])));
}

}  // namespace

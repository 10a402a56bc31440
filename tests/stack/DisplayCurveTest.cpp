#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <numeric>

#include "stack/DisplayCurve.h"

namespace {

struct Row {
  int setting;
  std::array<int, 7> entries;  ///< at 1, 32, 64, 128, 192, 254, 255
};

TEST(DisplayCurve, TellingRows) {
  constexpr std::array<std::size_t, 7> places{1, 32, 64, 128, 192, 254, 255};
  // Computed apart from this program, in doubles in the same order; -25, -20, 20 and 25 lie beyond the main slider.
  for (const Row& row : {Row{-25, {0, 0, 0, 1, 3, 137, 254}}, Row{-20, {0, 0, 1, 3, 10, 197, 255}},
                         Row{-10, {0, 4, 9, 25, 64, 246, 254}}, Row{-5, {0, 10, 22, 58, 120, 251, 255}},
                         Row{-1, {0, 23, 49, 106, 174, 253, 255}}, Row{0, {1, 32, 64, 128, 192, 254, 255}},
                         Row{1, {1, 42, 81, 149, 206, 254, 255}}, Row{5, {3, 83, 135, 197, 232, 254, 254}},
                         Row{10, {8, 143, 191, 229, 245, 254, 255}}, Row{20, {57, 232, 245, 251, 253, 254, 255}},
                         Row{25, {117, 247, 251, 253, 254, 254, 255}}}) {
    const Curve curve = DisplayCurve(row.setting, 255);
    for (std::size_t i = 0; i < places.size(); ++i)
      EXPECT_EQ(curve[places[i]], row.entries[i]) << row.setting << " at " << places[i];
  }
}

TEST(DisplayCurve, SumsOfWholeCurves) {
  // The sum over all entries, computed apart from this program.
  const auto sum = [](int setting, int maximum) {
    const Curve curve = DisplayCurve(setting, maximum);
    return std::accumulate(curve.begin(), curve.end(), 0);
  };
  EXPECT_EQ(sum(-25, 255), 1352);
  EXPECT_EQ(sum(-13, 255), 8317);
  EXPECT_EQ(sum(0, 255), 255 * 128);
  EXPECT_EQ(sum(7, 255), 48525);
  EXPECT_EQ(sum(25, 255), 63673);
}

TEST(DisplayCurve, StretchesToTheMaximum) {
  const Curve straight = DisplayCurve(0, 100);
  EXPECT_EQ(straight[0], 0);
  EXPECT_EQ(straight[50], 127);
  EXPECT_EQ(straight[100], 255);
  EXPECT_EQ(straight[101], 255);
  const Curve bowed = DisplayCurve(5, 100);
  EXPECT_EQ(bowed[5], 38);
  EXPECT_EQ(bowed[50], 196);
  EXPECT_EQ(bowed[100], 254);
  // Beyond its pole, above the maximum, a curve bowed downward is negative.
  EXPECT_EQ(DisplayCurve(-10, 100)[50], 25);
  EXPECT_EQ(DisplayCurve(-10, 100)[255], -57);
}

TEST(DisplayCurve, HasAResultForEveryMaximumAndSetting) {
  const Curve zeros{};
  for (const int setting : {-25, 0, 25}) EXPECT_EQ(DisplayCurve(setting, -1), zeros);
  // A black species: 0 / 0 is 0, everything above is at the upper limit.
  EXPECT_EQ(DisplayCurve(0, 0)[0], 0);
  EXPECT_EQ(DisplayCurve(0, 0)[1], 255);
  for (const int setting : {INT_MIN, -3, 3, INT_MAX}) {
    EXPECT_EQ(DisplayCurve(setting, 0)[0], 0);
    const Curve curve = DisplayCurve(setting, 255);
    EXPECT_LE(*std::max_element(curve.begin(), curve.end()), 255);
  }
}

TEST(DisplayCurve, Range) {
  EXPECT_TRUE(CurveSettingInRange(-25, -1));
  EXPECT_TRUE(CurveSettingInRange(25, 255));
  EXPECT_FALSE(CurveSettingInRange(-26, 0));
  EXPECT_FALSE(CurveSettingInRange(26, 0));
  EXPECT_FALSE(CurveSettingInRange(0, -2));
  EXPECT_FALSE(CurveSettingInRange(0, 256));
}

}  // namespace

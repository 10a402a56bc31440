#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <numeric>

#include "stack/DisplayCurve.h"

namespace {

struct Row {
  int setting;
  std::array<int, 7> entries;  ///< at 1, 32, 64, 128, 192, 254, 255
  int sum;                     ///< of all entries
};

TEST(DisplayCurve, SampledEntries) {
  constexpr std::array<std::size_t, 7> places{1, 32, 64, 128, 192, 254, 255};
  // Computed independently, in doubles in the same order; -25, -20, 20 and 25 are beyond the main slider.
  for (const Row& row :
       {Row{-25, {0, 0, 0, 1, 3, 137, 254}, 1352}, Row{-20, {0, 0, 1, 3, 10, 197, 255}, 3023},
        Row{-13, {0, 2, 5, 14, 39, 239, 255}, 8317}, Row{-10, {0, 4, 9, 25, 64, 246, 254}, 12003},
        Row{-5, {0, 10, 22, 58, 120, 251, 255}, 19892}, Row{-1, {0, 23, 49, 106, 174, 253, 255}, 28849},
        Row{0, {1, 32, 64, 128, 192, 254, 255}, 32640}, Row{1, {1, 42, 81, 149, 206, 254, 255}, 36177},
        Row{5, {3, 83, 135, 197, 232, 254, 254}, 45133}, Row{7, {4, 106, 159, 212, 239, 254, 255}, 48525},
        Row{10, {8, 143, 191, 229, 245, 254, 255}, 53022}, Row{20, {57, 232, 245, 251, 253, 254, 255}, 62003},
        Row{25, {117, 247, 251, 253, 254, 254, 255}, 63673}}) {
    const Curve curve = DisplayCurve(row.setting, 255);
    EXPECT_EQ(std::accumulate(curve.begin(), curve.end(), 0), row.sum) << row.setting;
    for (std::size_t i = 0; i < places.size(); ++i)
      EXPECT_EQ(curve[places[i]], row.entries[i]) << row.setting << " at " << places[i];
  }
}

TEST(DisplayCurve, StretchesToTheMaximum) {
  constexpr struct {
    int setting, maximum, level, entry;
  } kEntries[] = {{0, 100, 0, 0},
                  {0, 100, 50, 127},
                  {0, 100, 100, 255},
                  {0, 100, 101, 255},
                  {5, 100, 5, 38},
                  {5, 100, 50, 196},
                  {5, 100, 100, 254},
                  {-10, 100, 50, 25},
                  {-10, 100, 255, -57},  // beyond its pole,
                                         // which is below
                  {0, 0, 0, 0},
                  {0, 0, 1, 255},
                  {-3, 0, 0, 0},
                  {3, 0, 0, 0},
                  {-25, -1, 9, 0},
                  {0, -1, 255, 0},
                  {25, -1, 255, 0}};  // a black species, and none
  for (const auto& [setting, maximum, level, entry] : kEntries)
    EXPECT_EQ(DisplayCurve(setting, maximum)[static_cast<std::size_t>(level)], entry)
        << setting << " up to " << maximum << " at " << level;
  for (const int setting : {INT_MIN, INT_MAX}) {
    const Curve curve = DisplayCurve(setting, 255);
    EXPECT_LE(*std::max_element(curve.begin(), curve.end()), 255);
  }
}

}  // namespace

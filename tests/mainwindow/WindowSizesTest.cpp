#include <gtest/gtest.h>

#include <optional>
#include <vector>

#include "mainwindow/WindowSizes.h"

using namespace platform;

// A screen of 600 by 620 with a menu bar of 20 above: two windows a row, two rows, and no room for a third.
TEST(WindowSizes, SpeciesWindowsFillRowsFromTheBottomLeft) {
  const ScreenArea screen{10, 20, 600, 620};
  const Size window{258, 257};
  PlacementCursor cursor = FirstPosition(screen);
  std::vector<std::optional<Point>> positions;
  for (int i = 0; i < 6; ++i) {
    const Placement placement = PlaceSpeciesWindow(cursor, screen, window);
    positions.push_back(placement.position);
    cursor = placement.next;
  }
  const std::vector<std::optional<Point>> expected{Point{10, 383},  Point{268, 383}, Point{10, 104},
                                                   Point{268, 104}, std::nullopt,    std::nullopt};
  EXPECT_EQ(positions, expected);

  // The highest row that fits touches the top with its title.
  EXPECT_TRUE(PlaceSpeciesWindow({10, 20 + 257 + 22}, screen, window).position);
  EXPECT_FALSE(PlaceSpeciesWindow({10, 20 + 257 + 21}, screen, window).position);
  // A window wider than the screen wraps at once and is a row higher.
  EXPECT_EQ(PlaceSpeciesWindow(FirstPosition(screen), screen, {601, 100}).position, (Point{10, 418}));
}

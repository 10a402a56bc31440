#include <gtest/gtest.h>

#include <limits>

#include "mainwindow/CursorGeometry.h"

using namespace platform;

namespace {

constexpr double kZooms[] = {0.5, 1, 2, 3, 4, 5};
constexpr int kHighest = std::numeric_limits<int>::max();
constexpr int kLowest = std::numeric_limits<int>::min();

}  // namespace

TEST(CursorGeometry, CanvasPositionsMeanImagePixels) {
  EXPECT_EQ(ImagePixelAt(101, 40, 0.5), (Point{202, 80}));
  EXPECT_EQ(ImagePixelAt(101, 40, 3), (Point{33, 13}));
  EXPECT_EQ(ImagePixelAt(-1, -6, 5), (Point{-1, -2}));
  EXPECT_EQ(ImagePixelAt(kHighest, kLowest, 0.5), (Point{kHighest, kLowest}));
  EXPECT_EQ(CanvasSizeOf(255, 256, 0.5), (Size{127, 128}));
}

TEST(CursorGeometry, RestoredSquare) {
  EXPECT_EQ(SquareUnderMark(100, 50, 0, 1), (RestoredSquare{94, 44, 14, 94, 44, 14}));
  EXPECT_EQ(SquareUnderMark(101, 7, 40, 3), (RestoredSquare{20, -11, 28, 60, -33, 84}));
  EXPECT_EQ(SquareUnderMark(101, 40, 5, 0.5), (RestoredSquare{190, 68, 27, 95, 34, 14}));
  EXPECT_EQ(SquareUnderMark(3, 4, 0, 5), (RestoredSquare{-1, -1, 4, -5, -5, 20}));
  for (const double zoom : kZooms)
    for (const int extreme : {kHighest, kLowest}) SquareUnderMark(extreme, extreme, extreme, zoom);
}

TEST(CursorGeometry, MarksReachTheLimitsOfIntAndLargeCirclesAreThicker) {
  EXPECT_EQ(SmallCross(kHighest, kLowest)[1].to.x, kHighest);
  EXPECT_EQ(CircleAround(10, 20, 4).oval, (Rect{6, 16, 9, 9}));
  EXPECT_EQ(CircleAround(10, 20, 4).pen, 1);
  EXPECT_EQ(CircleAround(10, 20, 5).pen, 2);
}

TEST(CursorGeometry, TicksChangeSizeAndColour) {
  for (const auto& [size, width, height, grown] :
       {std::tuple{10, 512, 512, 11}, {150, 512, 512, 150}, {128, 256, 300, 128}, {40, 51, 300, 25}})
    EXPECT_EQ(GrownCursorSize(size, width, height), grown) << size;
  for (const auto& [size, shrunk] : {std::pair{100, 95}, {2, 1}, {1, 1}}) EXPECT_EQ(ShrunkCursorSize(size), shrunk);
  for (const auto& [color, next] : {std::pair{0x808080U, 0U}, {0, 0xFFFFFF}, {0xFF0000, 0x808080}, {0x01FFFF, 0}})
    EXPECT_EQ(NextCursorColor(color), next);
}

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "mainwindow/MedianMark.h"
#include "mainwindow/Stroke.h"

using namespace platform;

namespace {

constexpr int kHighest = std::numeric_limits<int>::max();

struct Drawing {
  LineEnds x1, y1, x2, y2;
  void Begin(Point p) { AppendPress(x1, y1, x2, y2, p); }
  void Extend(Point from, Point to) { AppendStep(x1, y1, x2, y2, from, to); }
  bool Undo() { return RemoveStroke(x1, y1, x2, y2); }
  int Rows() const {
    EXPECT_TRUE(x1.Ubound() == y1.Ubound() && x1.Ubound() == x2.Ubound() && x1.Ubound() == y2.Ubound());
    return x1.Ubound() + 1;
  }
};

std::vector<Point> Stamps(Point from, Point to) {
  std::vector<Point> stamps;
  ForEachStamp(from, to, [&](Point p) { stamps.push_back(p); });
  return stamps;
}

}  // namespace

// A square of zoom by zoom positions means one pixel, at the borders of the image and left of it too.
TEST(Stroke, PositionsRoundHalvesUpward) {
  for (const int zoom : {1, 2, 3, 4, 5})
    for (int pixel = -3; pixel <= 3; ++pixel)
      for (int x = pixel * zoom; x < (pixel + 1) * zoom; ++x)
        EXPECT_EQ(StrokePixelAt(x, -x, zoom).x, pixel) << x << " at " << zoom;
  EXPECT_EQ(StrokePixelAt(3, -3, 0.5), (Point{6, -6}));
  EXPECT_EQ(StrokePixelAt(kHighest, -kHighest, 0.5), (Point{kHighest, -kHighest - 1}));
}

TEST(Stroke, StampsOfAStep) {
  EXPECT_EQ(Stamps({10, 10}, {14, 12}), (std::vector<Point>{{10, 10}, {11, 11}, {12, 11}, {13, 12}, {14, 12}}));
  // Halves round upward here too, so the way back differs.
  EXPECT_EQ(Stamps({13, 12}, {10, 10}), (std::vector<Point>{{13, 12}, {12, 11}, {11, 11}, {10, 10}}));
  EXPECT_EQ(Stamps({kHighest - 1, -kHighest}, {kHighest, -kHighest}),
            (std::vector<Point>{{kHighest - 1, -kHighest}, {kHighest, -kHighest}}));
  EXPECT_EQ(StampAt({3, -2}, 5), (Rect{15, -10, 5, 5}));
  EXPECT_EQ(StampAt({3, -3}, 0.5), (Rect{1, -1, 1, 1}));
  EXPECT_EQ(StampAt({kHighest, 0}, 5).x, kHighest);
}

TEST(Stroke, UndoStopsAtARowThatAddsUpToTheMarker) {
  Drawing drawing;
  drawing.Begin({0, 0});
  drawing.Extend({0, 0}, {-30, -10});
  // The sum is -40 in 32 bits, but far more in full.
  drawing.Extend({kHighest, kHighest}, {kHighest, 2147483611});
  drawing.Extend({-30, -10}, {5, 5});
  EXPECT_TRUE(drawing.Undo());
  EXPECT_EQ(drawing.Rows(), 2);
  EXPECT_TRUE(drawing.Undo());
  EXPECT_EQ(drawing.Rows(), 0);

  // A press at such a position leaves its marker, and a single marker stays.
  drawing.Begin({-20, 0});
  EXPECT_TRUE(drawing.Undo());
  EXPECT_EQ(drawing.Rows(), 1);
  EXPECT_FALSE(drawing.Undo());
}

TEST(MedianMark, IsTheMiddleMarkOrTheTruncatedMeanOfTwo) {
  const std::pair<std::vector<std::size_t>, int> cases[] = {
      {{}, 0}, {{100}, 100}, {{10, 21}, 15}, {{0, 1, 255}, 1}, {{3, 200, 255, 254}, 227}};
  for (const auto& [levels, median] : cases) {
    bool marked[256] = {};
    for (const std::size_t level : levels) marked[level] = true;
    EXPECT_EQ(MedianMark(marked), median);
  }
}

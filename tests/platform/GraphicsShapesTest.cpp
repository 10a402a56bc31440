#include <gtest/gtest.h>

#include <limits>
#include <random>

#include "tests/support/Drawn.h"

namespace platform {
namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

Ref<Picture> Canvas(int width, int height) { return NewPicture(width, height, 32); }

/// The line of the textbook, with its running error, walked from end to end; the pen is stamped at each step.
void PlotByError(RGBSurface to, int x, int y, int x2, int y2, int penWidth, int penHeight) {
  const int dx = std::abs(x2 - x), sx = x < x2 ? 1 : -1;
  const int dy = -std::abs(y2 - y), sy = y < y2 ? 1 : -1;
  int error = dx + dy;
  for (;;) {
    for (int j = 0; j < penHeight; ++j)
      for (int i = 0; i < penWidth; ++i) to.Pixel(x + i, y + j, kBlack);
    if (x == x2 && y == y2) return;
    const int twice = 2 * error;
    if (twice >= dy) error += dy, x += sx;
    if (twice <= dx) error += dx, y += sy;
  }
}

TEST(Lines, AreThoseOfTheTextbookUnderEveryClip) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    const auto any = [&](int low, int high) { return low + static_cast<int>(random() % unsigned(high - low + 1)); };
    const int x1 = any(-60, 90), y1 = any(-60, 90), x2 = any(-60, 90), y2 = any(-60, 90);
    const auto drawn = Canvas(33, 29);
    const auto expected = Canvas(33, 29);
    auto g = drawn->Graphics();
    g.PenWidth = any(1, 3);
    g.PenHeight = any(1, 3);
    g.DrawLine(x1, y1, x2, y2);
    PlotByError(expected->RGBSurface(), x1, y1, x2, y2, g.PenWidth, g.PenHeight);
    ASSERT_EQ(Difference(drawn, expected), "") << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2;
  }
}

TEST(Lines, MayReachToTheEndsOfTheNumbers) {
  const auto picture = Canvas(4, 4);
  picture->Graphics().DrawLine(kLowest, kLowest, kHighest, kHighest);
  EXPECT_EQ(Drawn(picture), "#...\n.#..\n..#.\n...#\n");
  // Over 2^32 - 1 steps the line rises by one row, in its middle, which is at x = 0.
  const auto low = Canvas(3, 2);
  low->Graphics().DrawLine(kLowest, 0, kHighest, 1);
  EXPECT_EQ(Drawn(low), "...\n###\n");
  const auto high = Canvas(3, 3);
  high->Graphics().DrawLine(1, kHighest, 1, kLowest);
  high->Graphics().DrawLine(kHighest, 2, kLowest, 2);
  EXPECT_EQ(Drawn(high), ".#.\n.#.\n###\n");
}

TEST(Rectangles, FrameTheInsideAndFillTheWhole) {
  const auto picture = Canvas(7, 5);
  auto g = picture->Graphics();
  g.PenWidth = 2;
  g.DrawRect(1, 0, 6, 4);
  EXPECT_EQ(Drawn(picture), ".######\n.##..##\n.##..##\n.######\n.......\n");
  g.ForeColor = kWhite;
  g.FillRect(-3, 1, 100, 1);
  const std::string drawn = ".######\n.......\n.##..##\n.######\n.......\n";
  EXPECT_EQ(Drawn(picture), drawn);
  g.ForeColor = kBlack;
  const Rect nothing[] = {
      {0, 0, 0, 5}, {2, 2, -1, 3}, {kHighest, 0, kHighest, 5}, {3, kLowest, 1, kHighest}, {kLowest, 0, kHighest, 5}};
  for (const auto& [x, y, w, h] : nothing) g.FillRect(x, y, w, h), g.DrawRect(x, y, w, h), g.DrawOval(x, y, w, h);
  EXPECT_EQ(Drawn(picture), drawn);
}

TEST(Ovals, HaveHardEdgesInTheOldRenderer) {
  const auto draw = [](int w, int h, int pen) {
    const auto picture = Canvas(w, h);
    auto g = picture->Graphics();
    g.UseOldRenderer = true;
    g.PenWidth = g.PenHeight = pen;
    g.DrawOval(0, 0, w, h);
    return Drawn(picture);
  };
  EXPECT_EQ(draw(5, 5, 1), ".###.\n#...#\n#...#\n#...#\n.###.\n");
  EXPECT_EQ(draw(5, 5, 2), ".###.\n#####\n##.##\n#####\n.###.\n");
  EXPECT_EQ(draw(1, 1, 1), "#\n");
  // The top row reaches to u = 9 half pixels, as 81 * 16 <= 256 * (16 - 9) < 121 * 16; the row below it reaches to the
  // side, and its pixels below that top row are free.
  EXPECT_EQ(draw(16, 4, 1), "...##########...\n###..........###\n###..........###\n...##########...\n");
}

TEST(Ovals, CoverTheAreaOfARingInTheSmoothRenderer) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    const int size = 48;
    const int deviceSize = static_cast<int>(size * scale);
    Picture memory(deviceSize, deviceSize);
    const auto pixels = memory.Pixels();
    Graphics g(pixels, scale, size, size);
    g.FillRect(0, 0, size, size);
    g.ForeColor = kWhite;
    g.PenWidth = g.PenHeight = 2;
    g.DrawOval(4, 4, 40, 40);
    double sum = 0.0;
    for (int y = 0; y < deviceSize; ++y) {
      for (int x = 0; x < deviceSize; ++x) {
        sum += Red(pixels(x, y)) / 255.0;
        ASSERT_EQ(pixels(x, y), pixels(deviceSize - 1 - x, y));
        ASSERT_EQ(pixels(x, y), pixels(x, deviceSize - 1 - y));
        const bool inside = std::min(x, y) >= 4 * scale && std::max(x, y) < 44 * scale;
        if (!inside) {
          ASSERT_EQ(pixels(x, y), kBlack);
        }
      }
    }
    // pi * (20^2 - 18^2) = 238.76 square pixels.
    EXPECT_NEAR(sum / (scale * scale), 238.76, 0.5) << scale;
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(5 * scale)), kWhite) << "the middle of the pen";
  }
}

TEST(Ovals, DrawUnderAClipWhatTheyDrawWithout) {
  for (const bool hard : {false, true}) {
    const auto whole = Canvas(30, 30);
    const auto pieces = Canvas(30, 30);
    const auto draw = [hard](Graphics g) {
      g.UseOldRenderer = hard;
      g.PenWidth = 3;
      g.DrawOval(-8, 3, 35, 24);
      g.DrawOval(-1000000000, -999999990, 2000000020, 2000000000);
    };
    draw(whole->Graphics());
    for (int y = 0; y < 30; y += 7) {
      for (int x = 0; x < 30; x += 11) {
        auto g = pieces->Graphics();
        g.Clip(x, y, 11, 7);
        draw(g);
      }
    }
    EXPECT_EQ(Difference(whole, pieces), "") << hard;
  }
}

TEST(Surfaces, MapLogicalPixelsWithoutGapsOrOverlaps) {
  Picture memory(6, 3);
  std::vector<Rect> touched;
  Graphics g(memory.Pixels(), 1.5, 4, 2, &touched);
  for (int x = 0; x < 4; ++x) {
    g.ForeColor = RGB(0, 0, x + 1);
    g.FillRect(x, 0, 1, 2);
  }
  // Edges lie at round(0, 1.5, 3, 4.5, 6).
  constexpr Color row[] = {1, 1, 2, 3, 3, 4};
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 6; ++x) EXPECT_EQ(memory.Pixels()(x, y), row[x]);
  touched.clear();
  g.DrawLine(-5, 1, 2, 1);
  g.FillRect(3, 1, 10, 10);
  g.DrawOval(9, 9, 4, 4);
  g.Clip(1, 0, 2, 5);
  g.FillRect(0, 0, 4, 1);
  EXPECT_EQ(touched, (std::vector<Rect>{{0, 1, 3, 1}, {3, 1, 1, 1}, {1, 0, 2, 1}}));
  Graphics nothing;
  nothing.FillRect(0, 0, 10, 10);
  nothing.DrawOval(0, 0, 10, 10);
  nothing.DrawString("Fe", 0, 0);
}

}  // namespace
}  // namespace platform

// Lines, rectangles, ovals and pictures drawn on pictures.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "platform/pictures/Graphics.h"
#include "tests/support/Noise.h"

namespace platform {
namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

std::mt19937 random_(1);
int Any(int low, int high) { return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1)); }

Ref<Picture> Canvas(int width, int height) { return NewPicture(width, height, 32); }

/// One character a pixel: '#' for black, '.' for white, '?' for anything else; a line a row.
std::string Drawn(const Ref<Picture>& picture) {
  std::string rows;
  for (int y = 0; y < picture->Height(); ++y) {
    for (int x = 0; x < picture->Width(); ++x) {
      const Color color = picture->Pixels()(x, y);
      rows += color == kBlack ? '#' : color == kWhite ? '.' : '?';
    }
    rows += '\n';
  }
  return rows;
}

/// The first pixel at which two pictures of the same size differ, or "".
std::string Difference(const Ref<Picture>& a, const Ref<Picture>& b) {
  for (int y = 0; y < a->Height(); ++y)
    for (int x = 0; x < a->Width(); ++x)
      if (a->Pixels()(x, y) != b->Pixels()(x, y)) return "at " + std::to_string(x) + ", " + std::to_string(y);
  return "";
}

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
  for (int round = 0; round < 3000; ++round) {
    const int x1 = Any(-60, 90), y1 = Any(-60, 90), x2 = Any(-60, 90), y2 = Any(-60, 90);
    const auto drawn = Canvas(33, 29);
    const auto expected = Canvas(33, 29);
    auto g = drawn->Graphics();
    g.PenWidth = Any(1, 3);
    g.PenHeight = Any(1, 3);
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
    const int size = 48, deviceSize = static_cast<int>(size * scale);
    Picture memory(deviceSize, deviceSize);
    const auto pixels = memory.Pixels();
    Graphics g(pixels, scale, size, size);
    g.PenWidth = g.PenHeight = 2;
    g.DrawOval(4, 4, 40, 40);
    double sum = 0.0;
    for (int y = 0; y < deviceSize; ++y)
      for (int x = 0; x < deviceSize; ++x) {
        sum += 1 - Red(pixels(x, y)) / 255.0;
        ASSERT_EQ(pixels(x, y), pixels(deviceSize - 1 - x, y));
        ASSERT_EQ(pixels(x, y), pixels(x, deviceSize - 1 - y));
      }
    EXPECT_NEAR(sum / (scale * scale), 238.76, 0.5) << "pi (20^2 - 18^2) square pixels, at " << scale;
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(5 * scale)), kBlack) << "the middle of the pen";
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(4 * scale) - 1), kWhite);
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

/// A picture of one row, of grey levels.
Ref<Picture> Row(std::vector<std::uint8_t> levels) {
  const int width = static_cast<int>(levels.size());
  return MakeRef<Picture>(width, 1, std::move(levels));
}

std::vector<int> Levels(const Ref<Picture>& picture) {
  std::vector<int> levels;
  for (int x = 0; x < picture->Width(); ++x) levels.push_back(Green(picture->Pixels()(x, 0)));
  return levels;
}

std::vector<int> Scaled(const Ref<Picture>& picture, int width, bool hard, int sx = 0, int sw = Graphics::kOwnSize) {
  const auto target = NewPicture(width, 1, 32);
  auto g = target->Graphics();
  g.UseOldRenderer = hard;
  g.DrawPicture(picture, 0, 0, width, 1, sx, 0, sw, 1);
  return Levels(target);
}

TEST(DrawPicture, RepeatsPixelsInTheOldRenderer) {
  EXPECT_EQ(Scaled(Row({10, 20}), 6, true), (std::vector<int>{10, 10, 10, 20, 20, 20}));
  // Three middles in five pixels: at 5/6, 15/6 and 25/6.
  EXPECT_EQ(Scaled(Row({0, 1, 2, 3, 4}), 3, true), (std::vector<int>{0, 2, 4}));
  EXPECT_EQ(Scaled(Row({0, 1, 2, 3}), 2, true), (std::vector<int>{1, 3}));
}

TEST(DrawPicture, InterpolatesInTheSmoothRenderer) {
  EXPECT_EQ(Scaled(Row({0, 100}), 4, false), (std::vector<int>{0, 25, 75, 100}));
  EXPECT_EQ(Scaled(Row({0, 100, 30, 51}), 2, false), (std::vector<int>{50, 41})) << "halves go upward";
  const auto square = MakeRef<Picture>(2, 2, std::vector<std::uint8_t>{0, 255, 255, 255});
  const auto target = NewPicture(1, 1, 32);
  target->Graphics().DrawPicture(square, 0, 0, 1, 1);
  EXPECT_EQ(target->Pixels()(0, 0), RGB(191, 191, 191));
}

TEST(DrawPicture, LeavesTheTargetWhereTheSourceLiesOutside) {
  EXPECT_EQ(Scaled(Row({10, 20}), 8, true, -1, 4), (std::vector<int>{255, 255, 10, 10, 20, 20, 255, 255}));
  EXPECT_EQ(Scaled(Row({0, 100}), 8, false, -1, 4), (std::vector<int>{255, 255, 0, 25, 75, 100, 255, 255}));
  EXPECT_EQ(Scaled(Row({0, 100}), 2, false, 5, 2), (std::vector<int>{255, 255}));
}

TEST(DrawPicture, TakesItsOwnSizeAndDrawsNothingOfNothing) {
  const auto picture = Noise(5, 4);
  const auto copy = NewPicture(5, 4, 32);
  auto g = copy->Graphics();
  g.DrawPicture(nullptr, 0, 0);
  g.DrawPicture(picture, 0, 0, 0, 4);
  g.DrawPicture(picture, 0, 0, 5, 4, 0, 0, -1, 4);
  g.DrawPicture(NewPicture(0, 0, 32), 0, 0, 5, 4);
  EXPECT_EQ(Difference(copy, NewPicture(5, 4, 32)), "");
  g.DrawPicture(picture, 0, 0);
  EXPECT_EQ(Difference(copy, picture), "");
}

TEST(Surfaces, ShowUnderAClipWhatTheyShowWithout) {
  const auto picture = Noise(23, 17);
  for (int round = 0; round < 200; ++round) {
    const double scales[] = {1.0, 1.25, 1.5, 2.0};
    const Rect target{Any(-20, 20), Any(-20, 20), Any(1, 60), Any(1, 60)};
    const Rect source{Any(-5, 10), Any(-5, 10), Any(1, 30), Any(1, 30)};
    const auto draw = [&](const Ref<Picture>& on, int clipX) {
      Graphics g(on->Pixels(), scales[round % 4], 40, 40);
      g.UseOldRenderer = round % 8 < 4;
      if (clipX >= 0) g.Clip(clipX, 0, 13, 40);
      g.DrawPicture(picture, target.x, target.y, target.width, target.height, source.x, source.y, source.width,
                    source.height);
      g.PenWidth = 3;
      g.DrawOval(target.x, target.y, target.width, target.height);
      g.DrawOval(-1000000000, -999999990, 2000000020, 2000000000);
    };
    const auto whole = Canvas(80, 80), pieces = Canvas(80, 80);
    draw(whole, -1);
    for (int clipX = 0; clipX < 40; clipX += 13) draw(pieces, clipX);
    ASSERT_EQ(Difference(whole, pieces), "") << round;
  }
}

TEST(DrawPicture, MixesByTheMask) {
  const auto picture = Row({200, 200, 200});
  picture->Mask()->Pixels()(0, 0) = kBlack;
  picture->Mask()->Pixels()(2, 0) = RGB(51, 51, 51);
  const auto target = Row({100, 100, 100, 100, 100, 100});
  auto g = target->Graphics();
  g.DrawPicture(picture, 0, 0);
  EXPECT_EQ(Levels(target), (std::vector<int>{200, 100, 180, 100, 100, 100}));
  g.UseOldRenderer = true;
  g.DrawPicture(picture, 0, 0, 6, 1);
  EXPECT_EQ(Levels(target), (std::vector<int>{200, 200, 180, 100, 180, 180}));
}

TEST(DrawPicture, StaysWithinNumbersForHugeRectangles) {
  const auto picture = Noise(3, 3);
  for (const bool hard : {false, true}) {
    const auto target = NewPicture(4, 4, 32);
    auto g = target->Graphics();
    g.UseOldRenderer = hard;
    g.DrawPicture(picture, -2147483647, -2147483647, 2147483647, 2147483647);
    EXPECT_EQ(Difference(target, NewPicture(4, 4, 32)), "") << "it ends just before the surface";
    g.DrawPicture(picture, 0, 0, 4, 4, -2147483647, 0, 2147483647, 2147483647);
    EXPECT_EQ(Difference(target, NewPicture(4, 4, 32)), "");
    // The middle pixel of the picture is 700 million pixels wide here.
    g.DrawPicture(picture, -1050000000, -1050000000, 2100000000, 2100000000);
    EXPECT_EQ(target->Pixels()(2, 2), picture->Pixels()(1, 1));
  }
}

TEST(Pictures, MakeColoursOfGreyLevelsWhenAsked) {
  const auto picture = Row({0, 128, 255});
  EXPECT_EQ(picture->Pixels()(1, 0), RGB(128, 128, 128));
  EXPECT_TRUE(picture->GreyLevels().empty());
  auto surface = picture->RGBSurface();
  surface.Pixel(3, 0, kWhite);
  EXPECT_EQ(surface.Pixel(-1, 0), kBlack);
  EXPECT_EQ(NewPicture(-3, 5, 32)->Width(), 0);
}

}  // namespace
}  // namespace platform

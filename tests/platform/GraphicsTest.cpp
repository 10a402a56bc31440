// Lines, rectangles, ovals and pictures drawn on pictures.

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>
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

/// Bresenham's line with its running error, computed from end to end; the pen is stamped at each step.
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

TEST(Lines, AreBresenhamsUnderEveryClip) {
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

/// All of a small picture, a row of text for each row of pixels.
struct Case {
  const char* name;
  int width, height;
  void (*draw)(Graphics&);
  const char* drawn;
};

const Case kCases[] = {
    {"line to the ends of the numbers", 4, 4, [](Graphics& g) { g.DrawLine(kLowest, kLowest, kHighest, kHighest); },
     "#...\n.#..\n..#.\n...#\n"},
    // Over 2^32 - 1 steps the line rises by one row, at its centre, which is at x = 0.
    {"line that rises by one", 3, 2, [](Graphics& g) { g.DrawLine(kLowest, 0, kHighest, 1); }, "...\n###\n"},
    {"lines backwards", 3, 3,
     [](Graphics& g) { g.DrawLine(1, kHighest, 1, kLowest), g.DrawLine(kHighest, 2, kLowest, 2); }, ".#.\n.#.\n###\n"},
    {"frame", 7, 5, [](Graphics& g) { g.PenWidth = 2, g.DrawRect(1, 0, 6, 4); },
     ".######\n.##..##\n.##..##\n.######\n.......\n"},
    {"filled", 3, 3, [](Graphics& g) { g.FillRect(-3, 1, 100, 1); }, "...\n###\n...\n"},
    {"nothing", 4, 1,
     [](Graphics& g) {
       for (const Rect& r : {Rect{0, 0, 0, 5},
                             {2, 0, -1, 3},
                             {kHighest, 0, kHighest, 5},
                             {3, kLowest, 1, kHighest},
                             {kLowest, 0, kHighest, 5}})
         g.FillRect(r.x, r.y, r.width, r.height), g.DrawRect(r.x, r.y, r.width, r.height),
             g.DrawOval(r.x, r.y, r.width, r.height);
     },
     "....\n"},
    {"oval", 5, 5, [](Graphics& g) { g.DrawOval(0, 0, 5, 5); }, ".###.\n#...#\n#...#\n#...#\n.###.\n"},
    {"thick oval", 5, 5, [](Graphics& g) { g.PenWidth = g.PenHeight = 2, g.DrawOval(0, 0, 5, 5); },
     ".###.\n#####\n##.##\n#####\n.###.\n"},
    {"smallest oval", 1, 1, [](Graphics& g) { g.DrawOval(0, 0, 1, 1); }, "#\n"},
    // The top row reaches to u = 9 half pixels, as 81 * 16 <= 256 * (16 - 9) < 121 * 16; the row below it reaches to
    // the side, and its pixels below that top row are free.
    {"flat oval", 16, 4, [](Graphics& g) { g.DrawOval(0, 0, 16, 4); },
     "...##########...\n###..........###\n###..........###\n...##########...\n"},
};

TEST(Shapes, HaveHardEdgesInTheOldRenderer) {
  for (const Case& c : kCases) {
    const auto picture = Canvas(c.width, c.height);
    auto g = picture->Graphics();
    g.UseOldRenderer = true;
    c.draw(g);
    EXPECT_EQ(Drawn(picture), c.drawn) << c.name;
  }
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
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(5 * scale)), kBlack) << "the centre of the pen";
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(4 * scale) - 1), kWhite);
  }
}

TEST(Ovals, DoNotDependOnTheOneDrawnBefore) {
  struct Oval {
    int w, h, pen;
  };
  const std::vector<Oval> ovals = {{20, 20, 1}, {20, 20, 3}, {20, 21, 3}, {22, 21, 3}};
  const auto draw = [&](std::size_t i) {
    auto picture = Canvas(30, 30);
    auto g = picture->Graphics();
    g.PenWidth = g.PenHeight = ovals[i].pen;
    g.DrawOval(2, 2, ovals[i].w, ovals[i].h);
    return picture;
  };
  std::vector<Ref<Picture>> forth;
  for (std::size_t i = 0; i < ovals.size(); ++i) forth.push_back(draw(i));
  for (std::size_t i = ovals.size(); i-- > 0;) EXPECT_EQ(Difference(draw(i), forth[i]), "") << i;
}

TEST(Surfaces, SetTheUpperByteAndFillInTheirBackgroundFirst) {
  const auto icon = Canvas(6, 6);
  icon->Graphics().DrawOval(0, 0, 6, 6);
  const auto masked = Canvas(16, 12);
  masked->Mask()->Graphics().FillRect(3, 3, 9, 5);
  const std::vector<std::function<void(Graphics&)>> paints = {
      [](Graphics&) {},
      [](Graphics& g) { g.FillRect(1, 1, 3, 3); },
      [](Graphics& g) { g.FillRect(-1, -1, 30, 30); },
      [](Graphics& g) { g.DrawOval(1, 1, 12, 9); },
      [](Graphics& g) { g.UseOldRenderer = true, g.DrawOval(1, 1, 12, 9); },
      [&](Graphics& g) { g.DrawPicture(icon, 5, 5); },
      [&](Graphics& g) { g.DrawPicture(icon, 0, 0, 16, 12); },
      [&](Graphics& g) { g.UseOldRenderer = true, g.DrawPicture(icon, 0, 0, 16, 12); },
      [&](Graphics& g) { g.DrawPicture(Canvas(16, 12), 0, 0); },
      [&](Graphics& g) { g.DrawPicture(masked, 0, 0); },
  };
  for (std::size_t i = 0; i < paints.size(); ++i) {
    const auto expected = Canvas(16, 12);
    auto plain = expected->Graphics();
    plain.ForeColor = 0xABCDEF;
    plain.FillRect(0, 0, 16, 12);
    plain.ForeColor = kBlack;
    paints[i](plain);

    const auto drawn = Canvas(16, 12);
    const auto pixels = drawn->Pixels();
    Graphics g(pixels, 1.0, 16, 12, 0xFF000000);
    std::optional<Color> background = 0xABCDEF;
    g.FillFirst(background);
    paints[i](g);
    EXPECT_EQ(background.has_value(), i == 0);
    if (background) continue;
    for (int y = 0; y < 12; ++y)
      for (int x = 0; x < 16; ++x) ASSERT_EQ(pixels(x, y), expected->Pixels()(x, y) | 0xFF000000) << i;
  }
}

TEST(Surfaces, MapLogicalPixelsWithoutGapsOrOverlaps) {
  Picture memory(6, 3);
  std::vector<Rect> touched;
  Graphics g(memory.Pixels(), 1.5, 4, 2, 0, &touched);
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

const struct {
  std::vector<std::uint8_t> source;
  bool hard;
  int sx, sw;
  std::vector<int> drawn;
} kScaled[] = {
    {{10, 20}, true, 0, 2, {10, 10, 10, 20, 20, 20}},
    {{0, 1, 2, 3, 4}, true, 0, 5, {0, 2, 4}},  // three centres in five pixels: at 5/6, 15/6 and 25/6
    {{0, 1, 2, 3}, true, 0, 4, {1, 3}},
    {{10, 20}, true, -1, 4, {255, 255, 10, 10, 20, 20, 255, 255}},  // what lies outside the source stays
    {{0, 100}, false, 0, 2, {0, 25, 75, 100}},
    {{0, 100, 30, 51}, false, 0, 4, {50, 41}},  // halves round upward
    {{0, 100}, false, -1, 4, {255, 255, 0, 25, 75, 100, 255, 255}},
    {{0, 100}, false, 5, 2, {255, 255}},
    {{0, 100}, false, 0, -1, {255, 255}},
};

TEST(DrawPicture, RepeatsOrInterpolatesPixels) {
  for (const auto& c : kScaled) {
    const int width = static_cast<int>(c.drawn.size());
    const auto target = Canvas(width, 1);
    auto g = target->Graphics();
    g.UseOldRenderer = c.hard;
    g.DrawPicture(Row(c.source), 0, 0, width, 1, c.sx, 0, c.sw, 1);
    EXPECT_EQ(Levels(target), c.drawn) << c.hard << " from " << c.sx;
  }
  const auto square = MakeRef<Picture>(2, 2, std::vector<std::uint8_t>{0, 255, 255, 255});
  const auto target = Canvas(1, 1);
  auto g = target->Graphics();
  g.DrawPicture(nullptr, 0, 0);
  g.DrawPicture(Canvas(0, 0), 0, 0, 1, 1);
  EXPECT_EQ(target->Pixels()(0, 0), kWhite);
  g.DrawPicture(square, 0, 0, 1, 1);
  EXPECT_EQ(target->Pixels()(0, 0), RGB(191, 191, 191));
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
    const auto target = Canvas(4, 4);
    auto g = target->Graphics();
    g.UseOldRenderer = hard;
    g.DrawPicture(picture, -kHighest, -kHighest, kHighest, kHighest);  // ends just before the surface
    g.DrawPicture(picture, 0, 0, 4, 4, -kHighest, 0, kHighest, kHighest);
    EXPECT_EQ(Difference(target, Canvas(4, 4)), "");
    // The centre pixel of the picture is 700 million pixels wide here.
    g.DrawPicture(picture, -1050000000, -1050000000, 2100000000, 2100000000);
    EXPECT_EQ(target->Pixels()(2, 2), picture->Pixels()(1, 1));
  }
}

}  // namespace
}  // namespace platform

// Lines, rectangles, ovals and pictures drawn on pictures.

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "platform/pictures/Graphics.h"

namespace platform {
namespace {

std::mt19937 random_(1);
int Any(int low, int high) { return low + static_cast<int>(random_() % static_cast<unsigned>(high - low + 1)); }

Ref<Picture> Canvas(int width, int height) { return NewPicture(width, height, 32); }

/// One character a pixel: '#' for black, '.' for white, '?' for anything else; a line a row.
std::string Drawn(const Ref<Picture>& picture) {
  std::string rows;
  for (int y = 0; y < picture->Height(); ++y) {
    for (int x = 0; x < picture->Width(); ++x) {
      const Color color = picture->RGBSurface().Pixel(x, y);
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
    {"frame", 7, 5, [](Graphics& g) { g.PenWidth = 2, g.DrawRect(1, 0, 6, 4); },
     ".######\n.##..##\n.##..##\n.######\n.......\n"},
    {"filled", 3, 3, [](Graphics& g) { g.FillRect(-3, 1, 100, 1); }, "...\n###\n...\n"},
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
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(5 * scale)), Opaque(kBlack))
        << "the centre of the pen";
    EXPECT_EQ(pixels(static_cast<int>(24 * scale), static_cast<int>(4 * scale) - 1), Opaque(kWhite));
  }
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
  EXPECT_EQ(target->Pixels()(0, 0), Opaque(kWhite));
  g.DrawPicture(square, 0, 0, 1, 1);
  EXPECT_EQ(target->Pixels()(0, 0), OpaqueRGB(191, 191, 191));
}

TEST(DrawPicture, MixesByTheMask) {
  const auto picture = Row({200, 200, 200});
  picture->Mask()->Pixels()(0, 0) = Opaque(kBlack);
  picture->Mask()->Pixels()(2, 0) = OpaqueRGB(51, 51, 51);
  const auto target = Row({100, 100, 100, 100, 100, 100});
  auto g = target->Graphics();
  g.DrawPicture(picture, 0, 0);
  EXPECT_EQ(Levels(target), (std::vector<int>{200, 100, 180, 100, 100, 100}));
  g.UseOldRenderer = true;
  g.DrawPicture(picture, 0, 0, 6, 1);
  EXPECT_EQ(Levels(target), (std::vector<int>{200, 200, 180, 100, 180, 180}));
}

/// One of the operations that may cover a surface of 8 by 6, and those that may not.
void DrawAnything(Graphics& g, const Ref<Picture>& picture) {
  g.ForeColor = RGB(Any(0, 255), 0, 0);
  g.UseOldRenderer = Any(0, 1) == 1;
  g.NoClip();
  if (Any(0, 5) == 0) g.Clip(Any(0, 1), Any(0, 1), Any(6, 9), Any(5, 7));
  switch (Any(0, 4)) {
    case 0:
      return g.FillRect(Any(-1, 1), Any(-1, 0), Any(7, 10), Any(6, 8));
    case 1:
      return g.DrawLine(Any(-1, 8), Any(-1, 6), Any(-1, 8), Any(-1, 6));
    case 2:
      return g.DrawOval(Any(-3, 3), Any(-3, 3), Any(1, 12), Any(1, 12));
    case 3:
      return g.DrawPicture(picture, Any(-1, 0), Any(-1, 0));
    default:
      return g.DrawPicture(picture, 0, 0, 8, 6, Any(0, 1), Any(0, 1), Any(7, 9), Any(5, 7));
  }
}

TEST(Backdrop, ShowsWhatThePixelsWould) {
  int unwritten = 0;
  for (int round = 0; round < 20000; ++round) {
    const auto picture = Canvas(Any(7, 9), Any(5, 7));
    for (int i = 0; i < picture->Width() * picture->Height(); ++i)
      picture->Pixels().data[i] = Opaque(static_cast<std::uint32_t>(i * 1000));
    if (Any(0, 3) == 0) picture->Mask()->RGBSurface().Pixel(1, 1, kBlack);
    const auto copy = Canvas(picture->Width(), picture->Height());
    if (Any(0, 3) == 0) copy->CopyWhenAsked(picture);
    const auto plain = Canvas(8, 6), lazy = Canvas(8, 6);
    lazy->Graphics().FillRect(0, 0, 8, 6);
    auto expected = plain->Graphics(), g = lazy->Graphics();
    std::optional<Backdrop> backdrop{{Opaque(kWhite), nullptr}};
    g.UseBackdrop(backdrop);
    for (int i = Any(0, 3); i > 0; --i) {
      const auto state = random_;
      DrawAnything(expected, Any(0, 1) == 0 ? picture : copy);
      random_ = state;
      DrawAnything(g, Any(0, 1) == 0 ? picture : copy);
    }
    unwritten += backdrop && backdrop->pixels;
    g.WriteBackdrop();
    ASSERT_EQ(Difference(lazy, plain), "") << "round " << round;
  }
  EXPECT_GT(unwritten, 30) << "pictures of the surface's size are not copied";
}

}  // namespace
}  // namespace platform

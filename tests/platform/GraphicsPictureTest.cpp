#include <gtest/gtest.h>

#include <random>

#include "tests/support/Drawn.h"

namespace platform {
namespace {

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

TEST(DrawPicture, RestoresASquareToTheVeryPixels) {
  const auto picture = Noise(23, 17);
  for (const bool hard : {false, true}) {
    for (const int zoom : {1, 2, 3, 4, 5}) {
      const auto whole = NewPicture(23 * zoom, 17 * zoom, 32);
      auto g = whole->Graphics();
      g.UseOldRenderer = hard;
      g.DrawPicture(picture, 0, 0, 23 * zoom, 17 * zoom);
      const auto marked = NewPicture(23 * zoom, 17 * zoom, 32);
      auto restored = marked->Graphics();
      restored.UseOldRenderer = hard;
      for (int sx = -3; sx < 25; sx += 7)
        for (int sy = -3; sy < 25; sy += 7)
          restored.DrawPicture(picture, sx * zoom, sy * zoom, 7 * zoom, 7 * zoom, sx, sy, 7, 7);
      EXPECT_EQ(Difference(whole, marked), "") << zoom << hard;
    }
  }
}

TEST(DrawPicture, DrawsUnderAClipWhatItDrawsWithout) {
  const auto picture = Noise(23, 17);
  std::mt19937 random(3);
  for (int round = 0; round < 200; ++round) {
    const auto any = [&](int low, int high) { return low + static_cast<int>(random() % unsigned(high - low + 1)); };
    const double scales[] = {1.0, 1.25, 1.5, 2.0};
    const double scale = scales[round % 4];
    const int x = any(-20, 20), y = any(-20, 20), w = any(1, 60), h = any(1, 60);
    const int sx = any(-5, 10), sy = any(-5, 10), sw = any(1, 30), sh = any(1, 30);
    const auto draw = [&](const Ref<Picture>& target, int clipX) {
      Graphics g(target->Pixels(), scale, 40, 40);
      g.UseOldRenderer = round % 8 < 4;
      if (clipX >= 0) g.Clip(clipX, 0, 13, 40);
      g.DrawPicture(picture, x, y, w, h, sx, sy, sw, sh);
    };
    const auto whole = NewPicture(80, 80, 32);
    const auto pieces = NewPicture(80, 80, 32);
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

#include <gtest/gtest.h>

#include <vector>

#include "platform/Errors.h"
#include "stack/LevelTaking.h"

namespace {

using platform::Color;

struct Planes {
  explicit Planes(int size)
      : displayed(static_cast<std::size_t>(size), -1), original(displayed), shown(displayed.size()) {}
  std::vector<std::int32_t> displayed, original;
  std::vector<Color> shown;
};

std::vector<Color> Table() {
  std::vector<Color> table(257);
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<Color>(0x20000 + i);
  return table;
}

int Take(platform::Picture& picture, Planes& planes) {
  const int w = picture.Width(), h = picture.Height();
  return TakeLevels(picture, Table(), {planes.displayed.data(), w, h, w}, {planes.original.data(), w, h, w},
                    {planes.shown.data(), w, h, w});
}

TEST(LevelTaking, TakesTheLargestComponent) {
  constexpr Color colors[] = {0xFF0000, 0x00C800, 0x0000FE, 0x102030, 0x302010, 0x000000};
  constexpr int levels[] = {255, 200, 254, 48, 48, 0};
  platform::Picture picture(19, 2);
  Planes planes(38);
  for (int i = 0; i < 38; ++i) picture.Pixels()(i % 19, i / 19) = colors[i % 6];
  EXPECT_EQ(Take(picture, planes), 255);
  EXPECT_EQ(planes.original, planes.displayed);
  for (std::size_t i = 0; i < 38; ++i) {
    EXPECT_EQ(planes.displayed[i], levels[i % 6]) << i;
    EXPECT_EQ(planes.shown[i], Table()[static_cast<std::size_t>(levels[i % 6])]) << i;
  }
}

TEST(LevelTaking, TakesGreyLevelsWithoutMakingColours) {
  platform::Picture picture(2, 3, {1, 0, 77, 3, 4, 5});
  Planes planes(6);
  EXPECT_EQ(Take(picture, planes), 77);
  EXPECT_EQ(planes.displayed, (std::vector<std::int32_t>{1, 0, 77, 3, 4, 5}));
  EXPECT_FALSE(picture.GreyLevels().empty());
}

TEST(LevelTaking, KeepsToTheCommonPart) {
  platform::Picture picture(4, 3, std::vector<std::uint8_t>{9, 8, 7, 6, 5, 4, 3, 2, 1, 1, 1, 200});
  Planes planes(12);
  EXPECT_EQ(TakeLevels(picture, Table(), {planes.displayed.data(), 4, 3, 4}, {planes.original.data(), 3, 2, 4},
                       {planes.shown.data(), 4, 3, 4}),
            9);
  EXPECT_EQ(planes.original, (std::vector<std::int32_t>{9, 8, 7, -1, 5, 4, 3, -1, -1, -1, -1, -1}));

  platform::Picture nothing(0, 5);
  EXPECT_EQ(Take(nothing, planes), -1);
  const std::vector<Color> shortTable(255);
  EXPECT_THROW(TakeLevels(picture, shortTable, {}, {}, {}), platform::OutOfBoundsException);
}

}  // namespace

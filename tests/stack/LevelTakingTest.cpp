#include <gtest/gtest.h>

#include <vector>

#include "stack/LevelTaking.h"

namespace {

using platform::Color;
using Levels = std::vector<std::uint8_t>;

struct Planes {
  explicit Planes(int size) : displayed(static_cast<std::size_t>(size), 99), original(displayed) {}
  Levels displayed, original;
};

int Take(platform::Picture& picture, Planes& planes) {
  const int w = picture.Width(), h = picture.Height();
  return TakeLevels(picture, {planes.displayed.data(), w, h, w}, {planes.original.data(), w, h, w});
}

TEST(LevelTaking, FindsTheHighestLevelWhereverItLies) {
  constexpr int width = 83;
  for (int x = 0; x < width; ++x)
    for (const int component : {0, 8, 16}) {
      Levels levels(width * 2, 40);
      levels[static_cast<std::size_t>(width + x)] = 201;
      platform::Picture grey(width, 2, levels), colored(width, 2);
      for (int i = 0; i < width * 2; ++i) colored.Pixels()(i % width, i / width) = platform::OpaqueRGB(40, 20, 4);
      colored.Pixels()(x, 1) = platform::Opaque(201U << component);
      for (platform::Picture* picture : {&grey, &colored}) {
        Planes planes(width * 2);
        ASSERT_EQ(Take(*picture, planes), 201) << x << ", " << component;
        ASSERT_EQ(planes.displayed, levels);
        ASSERT_EQ(planes.original, levels);
      }
    }
}

TEST(LevelTaking, KeepsToTheCommonPart) {
  platform::Picture picture(4, 3, Levels{9, 8, 7, 6, 5, 4, 3, 2, 1, 1, 1, 200});
  Planes planes(12);
  EXPECT_EQ(TakeLevels(picture, {planes.displayed.data(), 4, 3, 4}, {planes.original.data(), 3, 2, 4}), 9);
  EXPECT_EQ(planes.original, (Levels{9, 8, 7, 99, 5, 4, 3, 99, 99, 99, 99, 99}));

  platform::Picture nothing(0, 5);
  EXPECT_EQ(Take(nothing, planes), -1);
}

}  // namespace

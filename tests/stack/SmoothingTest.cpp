#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "platform/values/Errors.h"
#include "platform/values/Parallel.h"
#include "stack/Smoothing.h"
#include "tests/stack/EveryTarget.h"

namespace {

using Levels = std::vector<std::uint8_t>;

SmoothJob JobOf(const Levels& original, Levels& smoothed, int width, int height) {
  return {{original.data(), width, height, width}, {smoothed.data(), width, height, width}, 0};
}

/// The filter by its definition, value by value.
Levels PlainSmooth(const Levels& original, int w, int h, int level) {
  std::vector<double> source(original.begin(), original.end()), target(source.size());
  for (int pass = 0; pass < level; ++pass) {
    const auto s = [&](int x, int y) { return source[static_cast<std::size_t>(y * w + x)]; };
    const auto d = [&](int x, int y) -> double& { return target[static_cast<std::size_t>(y * w + x)]; };
    for (int x = 1; x <= w - 2; ++x) {
      d(x, 0) = (2 * s(x - 1, 0) + s(x - 1, 1) + 2 * s(x, 0) + s(x, 1) + 2 * s(x + 1, 0) + s(x + 1, 1)) / 9.0;
      for (int y = 1; y <= h - 2; ++y)
        d(x, y) = (s(x - 1, y - 1) + s(x - 1, y) + s(x - 1, y + 1) + s(x, y - 1) + s(x, y) + s(x, y + 1) +
                   s(x + 1, y - 1) + s(x + 1, y) + s(x + 1, y + 1)) /
                  9.0;
      d(x, h - 1) = (2 * s(x - 1, h - 2) + s(x - 1, h - 1) + 2 * s(x, h - 2) + s(x, h - 1) + 2 * s(x + 1, h - 2) +
                     s(x + 1, h - 1)) /
                    9.0;
    }
    for (int y = 1; y <= h - 2; ++y) {
      d(0, y) = (2 * s(0, y - 1) + 2 * s(0, y) + 2 * s(0, y + 1) + s(1, y - 1) + s(1, y) + s(1, y + 1)) / 9.0;
      d(w - 1, y) = (s(w - 2, y - 1) + s(w - 2, y) + s(w - 2, y + 1) + 2 * s(w - 1, y - 1) + 2 * s(w - 1, y) +
                     2 * s(w - 1, y + 1)) /
                    9.0;
    }
    for (const int x : {0, w - 1})
      for (const int y : {0, h - 1}) {
        const int nextX = x == 0 ? 1 : w - 2, nextY = y == 0 ? 1 : h - 2;
        d(x, y) = (4 * s(x, y) + 2 * s(nextX, y) + 2 * s(x, nextY) + s(nextX, nextY)) / 9.0;
      }
    std::swap(source, target);
  }
  return Levels(source.begin(), source.end());
}

/// Every small one, and some that take several vectors per strip, with strips of every remainder and incomplete ones.
std::vector<int> Widths() {
  std::vector<int> widths{256, 257, 264, 265, 275, 284, 387, 512, 515, 600};
  for (int w = 2; w <= 67; ++w) widths.push_back(w);
  return widths;
}

class SmoothingOnEveryTarget : public EveryTarget {};

TEST_P(SmoothingOnEveryTarget, EqualsThePlainLoopBitForBit) {
  std::mt19937 random(7);
  Levels original, smoothed;
  for (const int w : Widths()) {
    for (int h = 2; h <= (w <= 67 ? 67 : 8); ++h) {
      const int level = (5 * w + 3 * h) % 25 + 1;
      original.resize(static_cast<std::size_t>(w * h));
      // Noise, now and then a constant plane, bright specks on black, black and white, or one bright pixel anywhere.
      const int kind = (w + 2 * h) % 6;
      const auto constant = static_cast<std::uint8_t>(random());
      for (auto& value : original) {
        const auto noise = static_cast<std::uint8_t>(random());
        value = noise;
        if (kind == 0) value = constant;
        if (kind == 1) value = noise < 3 ? 255 : 0;
        if (kind == 2) value = noise & 1 ? 255 : 0;
        if (kind == 3) value = 20;
      }
      if (kind == 3) original[random() % original.size()] = 255;
      smoothed.assign(original.size(), 77);
      SmoothJob job = JobOf(original, smoothed, w, h);
      SmoothPlanes({&job, 1}, level);

      const Levels expected = PlainSmooth(original, w, h, level);
      ASSERT_EQ(smoothed, expected) << w << " by " << h << ", level " << level;
      ASSERT_EQ(job.maximum, *std::max_element(expected.begin(), expected.end()));
    }
  }
}

TEST_P(SmoothingOnEveryTarget, StaysEqualThroughManyPasses) {
  // One bright pixel in a corner, more passes than SplitNinth is used for, and a plane longer than they reach.
  constexpr int w = 330, h = 9;
  Levels original(w * h, 0), smoothed(w * h);
  original[0] = 255;
  for (const int level : {40, 300, 320}) {
    SmoothJob job = JobOf(original, smoothed, w, h);
    SmoothPlanes({&job, 1}, level);
    EXPECT_EQ(smoothed, PlainSmooth(original, w, h, level)) << level;
  }
}

FOR_EVERY_TARGET(SmoothingOnEveryTarget);

TEST(Smoothing, TruncatesOnceAfterAllPasses) {
  // 2 by 2 with one 9: the ninths are 4 2 2 1, then 25 20 20 16 eighty-firsts of 9. Truncation in between would lose
  // the 2.
  const Levels original{9, 0, 0, 0};
  Levels smoothed(4);
  SmoothJob job = JobOf(original, smoothed, 2, 2);
  SmoothPlanes({&job, 1}, 2);
  EXPECT_EQ(smoothed, (Levels{2, 2, 2, 1}));
}

TEST(Smoothing, OfSeveralPlanesOnSeveralCoresKeepsToEachPlane) {
  constexpr int width = 35, height = 21, pitch = 48, count = 7;
  std::mt19937 random(3);
  Levels originals(pitch * height * count), smoothed(originals.size(), 251);
  for (auto& value : originals) value = static_cast<std::uint8_t>(random());
  std::vector<SmoothJob> jobs;
  for (int i = 0; i < count; ++i)
    jobs.push_back({{&originals[static_cast<std::size_t>(i * pitch * height)], width, height, pitch},
                    {&smoothed[static_cast<std::size_t>(i * pitch * height)], width, height, pitch}});
  platform::SetParallelism(3);
  SmoothPlanes(jobs, 4);
  platform::SetParallelism(0);
  for (const SmoothJob& job : jobs) {
    Levels plane;
    for (int y = 0; y < height; ++y) plane.insert(plane.end(), job.original.Row(y), job.original.Row(y) + width);
    const Levels expected = PlainSmooth(plane, width, height, 4);
    for (int i = 0; i < pitch * height; ++i)
      ASSERT_EQ(job.smoothed.data[i],
                i % pitch < width ? expected[static_cast<std::size_t>(i / pitch * width + i % pitch)] : 251);
  }
}

}  // namespace

/// Rendering planes of 1024 by 1024, compared with copying as many bytes: recolouring one plane repeatedly and twelve
/// in turn, mixing three, and taking the grey levels of a picture.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

#include "composite/Mixing.h"
#include "platform/pictures/Picture.h"
#include "stack/ColorMapping.h"
#include "stack/LevelTaking.h"
#include "stack/PlaneStack.h"

namespace {

using platform::Color;

constexpr int kSize = 1024;
constexpr int kSpecies = 12;
constexpr std::size_t kPixels = std::size_t{kSize} * kSize;

std::vector<Color> Table() {
  std::vector<Color> table(257);
  for (std::size_t i = 0; i < table.size(); ++i) table[i] = static_cast<Color>(i * 0x010101);
  return table;
}

PlaneStack& Stack() {
  static PlaneStack stack = [] {
    PlaneStack made;
    made.Redim(kSpecies - 1, kSize - 1, kSize - 1);
    std::mt19937 random(1);
    for (int species = 0; species < kSpecies; ++species)
      for (int y = 0; y < kSize; ++y)
        for (int x = 0; x < kSize; ++x) made.Plane(species)(x, y) = static_cast<std::uint8_t>(random());
    return made;
  }();
  return stack;
}

/// Copies `bytes` bytes from each of several buffers in turn to another one.
void Copy(benchmark::State& state, std::size_t bytes, int buffers) {
  std::vector<std::vector<char>> from(static_cast<std::size_t>(buffers), std::vector<char>(bytes, 1));
  std::vector<char> to(bytes);
  std::size_t turn = 0;
  for (auto _ : state) {
    std::memcpy(to.data(), from[turn++ % from.size()].data(), bytes);
    benchmark::ClobberMemory();
  }
}

void Recolour(benchmark::State& state, int planes) {
  auto picture = platform::NewPicture(kSize, kSize, 32);
  const PlaneStack& stack = Stack();
  const auto table = Table();
  int turn = 0;
  for (auto _ : state) {
    const LevelColors colors = ComposeColors(DisplayCurve(3, 255), table);
    ColorPlane(stack.Plane(turn++ % planes), colors, picture->Pixels());
    benchmark::ClobberMemory();
  }
}

BENCHMARK_CAPTURE(Copy, OnePlane, kPixels * sizeof(Color), 1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Recolour, OnePlane, 1)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Copy, TwelveInTurn, kPixels * sizeof(Color), kSpecies)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Recolour, TwelveInTurn, kSpecies)->Unit(benchmark::kMicrosecond);

void Mix(benchmark::State& state) {
  auto picture = platform::NewPicture(kSize, kSize, 32);
  const std::array<Curve, 3> curves{DisplayCurve(0, 255), DisplayCurve(5, 255), DisplayCurve(-5, 255)};
  const PlaneStack& stack = Stack();
  int turn = 0;
  for (auto _ : state) {
    const auto next = [&] { return stack.Plane(turn++ % kSpecies); };
    MixPlanes({next(), next(), next()}, curves, true, picture->Pixels());
    benchmark::ClobberMemory();
  }
}
// Per pixel: three bytes read and four written.
BENCHMARK_CAPTURE(Copy, AsMuchAsAMix, kPixels * 7 / 2, kSpecies / 2)->Unit(benchmark::kMicrosecond);
BENCHMARK(Mix)->Unit(benchmark::kMicrosecond);

void Take(benchmark::State& state, bool grey) {
  std::mt19937 random(1);
  std::vector<std::uint8_t> levels(kPixels);
  for (auto& level : levels) level = static_cast<std::uint8_t>(random());
  platform::Picture picture(kSize, kSize, levels);
  if (!grey) picture.Pixels();
  PlaneStack &displayed = Stack(), original;
  original.Redim(kSpecies - 1, kSize - 1, kSize - 1);
  for (int species = 0; species < kSpecies; ++species)
    std::fill_n(original.Plane(species).data, original.Plane(species).pitch * kSize, 0);
  auto shown = platform::NewPicture(kSize, kSize, 32);
  const LevelColors colors = ComposeColors(DisplayCurve(0, 255), Table());
  int turn = 0;
  for (auto _ : state) {
    const int species = turn++ % kSpecies;
    benchmark::DoNotOptimize(TakeLevels(picture, displayed.Plane(species), original.Plane(species)));
    ColorPlane(displayed.Plane(species), colors, shown->Pixels());
  }
}
// Per pixel: four bytes read and two written, then one read and four written.
BENCHMARK_CAPTURE(Copy, AsMuchAsTakingColours, kPixels * 11 / 2, kSpecies)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Take, FromColours, false)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(Take, FromGreyLevels, true)->Unit(benchmark::kMicrosecond);

}  // namespace

/// Saving a map as PNG, compared with the toolkit's writer and its defaults. Both write to a file; ours also flushes it
/// to the disk.

#include <benchmark/benchmark.h>

#include <QImage>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>

#include "platform/pictures/PNGu.h"

namespace platform {
namespace {

constexpr int kSize = 1024;
/// The counts that give the brightest grey level.
constexpr int kFullScale = 70;

/// A realistic map: grains of different composition, counts with statistical noise, coloured from black over blue, red
/// and yellow to white.
const Ref<Picture>& Map() {
  static const Ref<Picture> map = [] {
    std::mt19937 random(42);
    struct Grain {
      int x, y, level;
    };
    std::vector<Grain> grains;
    for (int i = 0; i < 60; ++i)
      grains.push_back(
          {static_cast<int>(random() % kSize), static_cast<int>(random() % kSize), static_cast<int>(random() % 200)});
    auto picture = NewPicture(kSize, kSize, 32);
    for (int y = 0; y < kSize; ++y) {
      for (int x = 0; x < kSize; ++x) {
        const auto distance = [&](const Grain& grain) { return std::hypot(grain.x - x, grain.y - y); };
        const Grain& nearest = *std::min_element(
            grains.begin(), grains.end(), [&](const Grain& a, const Grain& b) { return distance(a) < distance(b); });
        std::poisson_distribution<int> counts((nearest.level + 10) * kFullScale / 255.0);
        const int level = std::min(counts(random) * 255 / kFullScale, 255);
        const auto ramp = [level](int from) { return std::clamp((level - from) * 4, 0, 255); };
        picture->Pixels()(x, y) = OpaqueRGB(ramp(64), ramp(128),
                                            level < 64    ? ramp(0)
                                            : level < 192 ? 255 - ramp(64)
                                                          : ramp(192));
      }
    }
    return picture;
  }();
  return map;
}

std::filesystem::path Target(const char* name) { return std::filesystem::temp_directory_path() / name; }

void Report(benchmark::State& state, const std::filesystem::path& path) {
  state.counters["bytes"] = static_cast<double>(std::filesystem::file_size(path));
  std::filesystem::remove(path);
}

void SaveByToolkit(benchmark::State& state) {
  const auto pixels = Map()->Pixels();
  const QImage image(reinterpret_cast<const uchar*>(pixels.data), kSize, kSize, QImage::Format_RGB32);
  const auto path = Target("vornalite-bench-toolkit.png");
  for (auto _ : state) benchmark::DoNotOptimize(image.save(path.c_str(), "PNG"));
  Report(state, path);
}
BENCHMARK(SaveByToolkit)->Unit(benchmark::kMillisecond)->UseRealTime();

void Save(benchmark::State& state) {
  const auto path = Target("vornalite-bench-save.png");
  const auto file = MakeRef<FolderItem>(path);
  for (auto _ : state) benchmark::DoNotOptimize(PNGu::SavePicture(file, Map(), -1.0F));
  Report(state, path);
}
BENCHMARK(Save)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
}  // namespace platform

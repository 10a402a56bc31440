/// Smoothing twelve maps on one core and on all, compared with its limit: copying a plane of doubles once per pass.

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>
#include <vector>

#include "platform/values/Parallel.h"
#include "stack/PlaneStack.h"
#include "stack/Smoothing.h"

namespace {

constexpr int kSpecies = 12;

void Sizes(benchmark::internal::Benchmark* bench) {
  bench->ArgNames({"size", "level"})->ArgsProduct({{256, 512, 1024}, {1, 5, 25}});
  bench->Unit(benchmark::kMillisecond)->UseRealTime();
}

void CopyPlanes(benchmark::State& state) {
  const auto values = static_cast<std::size_t>(state.range(0) * state.range(0));
  const auto passes = static_cast<int>(state.range(1));
  std::vector<double> from(values, 1.0), to(values);
  for (auto _ : state) {
    for (int pass = 0; pass < kSpecies * passes; ++pass) {
      std::memcpy(to.data(), from.data(), values * sizeof(double));
      benchmark::ClobberMemory();
      from.swap(to);
    }
  }
}
BENCHMARK(CopyPlanes)->Apply(Sizes);

void Smooth(benchmark::State& state, int threads) {
  const auto size = static_cast<int>(state.range(0));
  PlaneStack original, smoothed;
  original.Redim(kSpecies - 1, size - 1, size - 1);
  smoothed.Redim(kSpecies - 1, size - 1, size - 1);
  std::mt19937 random(1);
  std::vector<SmoothJob> jobs;
  for (int species = 0; species < kSpecies; ++species) {
    const auto plane = original.Plane(species);
    for (int y = 0; y < size; ++y)
      for (int x = 0; x < size; ++x) plane(x, y) = static_cast<std::uint8_t>(random());
    jobs.push_back({plane, smoothed.Plane(species)});
  }
  platform::SetParallelism(threads);
  SmoothPlanes(jobs, 1);  // so that all memory has been touched
  for (auto _ : state) SmoothPlanes(jobs, static_cast<int>(state.range(1)));
  platform::SetParallelism(0);
}
BENCHMARK_CAPTURE(Smooth, OneCore, 1)->Apply(Sizes);
BENCHMARK_CAPTURE(Smooth, AllCores, 0)->Apply(Sizes);

}  // namespace

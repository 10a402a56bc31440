#include "platform/pictures/GreyScaling.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <type_traits>

namespace platform {

namespace {

template <class Sample>
struct Range {
  Sample lowest = 0;
  Sample highest = std::numeric_limits<Sample>::lowest();
};

/// Every comparison with not-a-number is false, so such samples are ignored.
template <class Sample, class Counts>
Range<Sample> RangeOf(std::span<const Sample> samples, Counts counts) {
  Range<Sample> range;
  for (const Sample sample : samples) {
    range.lowest = counts(sample) && sample < range.lowest ? sample : range.lowest;
    range.highest = counts(sample) && sample > range.highest ? sample : range.highest;
  }
  return range;
}

template <class Sample>
Range<Sample> FiniteRangeOf(std::span<const Sample> samples) {
  const Range<Sample> range = RangeOf(samples, [](Sample) { return true; });
  if constexpr (std::is_floating_point_v<Sample>)
    if (std::isinf(range.lowest) || std::isinf(range.highest))
      return RangeOf(samples, [](Sample sample) { return !std::isinf(sample); });
  return range;
}

/// The 99.9th percentile by nearest rank: of n samples the (n / 1000 + 1)-th largest. `lowest` if fewer samples than
/// that are larger than it. One pass that keeps the largest samples seen so far.
template <class Sample>
Sample PercentileOf(std::span<const Sample> samples, Sample lowest) {
  const std::size_t rank = samples.size() / 1000 + 1;
  std::vector<Sample> largest;
  largest.reserve(2 * rank);
  const auto dropSmaller = [&largest, rank] {
    const auto last = largest.begin() + static_cast<std::ptrdiff_t>(rank) - 1;
    std::nth_element(largest.begin(), last, largest.end(), std::greater<>());
    largest.resize(rank);
    return largest.back();
  };
  Sample bound = lowest;
  for (const Sample sample : samples) {
    if (!(sample > bound)) continue;  // not-a-number too
    largest.push_back(sample);
    if (largest.size() == 2 * rank) bound = dropSmaller();
  }
  return largest.size() < rank ? lowest : dropSmaller();
}

/// The scaling as a function of one value. For whole numbers of up to 32 bits every product is exact in a double, and a
/// quotient that is not a half differs from one by more than the rounding error, so the result is exact.
class Scaler {
 public:
  Scaler(double lowest, double percentile, double highest) : shrink_(highest - lowest > 1e300 ? 0x1p-16 : 1.0) {
    lowest_ = lowest * shrink_;
    range_ = highest * shrink_ - lowest_;
    const double limit = 2 * (percentile * shrink_ - lowest_);
    if (limit > 0) range_ = std::min(range_, limit);
  }
  bool Flat() const { return !(range_ > 0); }
  std::uint8_t operator()(double value) const {
    double level = (value * shrink_ - lowest_) * 255.0 / range_;
    level = level > 0 ? level : 0;  // not-a-number too
    level = level < 255 ? level : 255;
    const int whole = static_cast<int>(level);
    return static_cast<std::uint8_t>(whole + (level - whole >= 0.5 ? 1 : 0));
  }

 private:
  double shrink_;  // keeps the range of the largest doubles finite
  double lowest_;
  double range_;
};

}  // namespace

template <class Sample>
std::vector<std::uint8_t> ScaledToLevels(std::span<const Sample> samples) {
  std::vector<std::uint8_t> levels(samples.size());
  const Range<Sample> range = FiniteRangeOf(samples);
  const Sample percentile = PercentileOf(samples, range.lowest);
  const Scaler scale(static_cast<double>(range.lowest), static_cast<double>(percentile),
                     static_cast<double>(range.highest));
  if (scale.Flat()) return levels;
  if constexpr (sizeof(Sample) <= 2) {
    // Few distinct values: one table look-up per sample instead of one division.
    std::vector<std::uint8_t> table(static_cast<std::size_t>(range.highest - range.lowest) + 1);
    for (std::size_t i = 0; i < table.size(); ++i)
      table[i] = scale(static_cast<double>(range.lowest) + static_cast<double>(i));
    std::transform(samples.begin(), samples.end(), levels.begin(),
                   [&](Sample sample) { return table[static_cast<std::size_t>(sample - range.lowest)]; });
  } else {
    std::transform(samples.begin(), samples.end(), levels.begin(),
                   [&](Sample sample) { return scale(static_cast<double>(sample)); });
  }
  return levels;
}

template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::int8_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::uint16_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::int16_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::uint32_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::int32_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::uint64_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const std::int64_t>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const float>);
template std::vector<std::uint8_t> ScaledToLevels(std::span<const double>);

std::array<std::uint8_t, 256> LevelsOfBits(int bits) {
  std::array<std::uint8_t, 256> levels;
  levels.fill(255);
  const int fullScale = (1 << bits) - 1;
  for (int value = 0; value <= fullScale; ++value)
    levels[static_cast<std::size_t>(value)] = static_cast<std::uint8_t>((value * 255 + fullScale / 2) / fullScale);
  return levels;
}

void CompositeOnWhite(std::span<std::uint8_t> levels, std::span<const std::uint8_t> alpha, bool premultiplied) {
  for (std::size_t i = 0; i < levels.size(); ++i)
    levels[i] = static_cast<std::uint8_t>(premultiplied ? std::min(levels[i] + 255 - alpha[i], 255)
                                                        : OverWhite(levels[i], alpha[i]));
}

}  // namespace platform

#pragma once
/// Rounding and conversion of doubles, with a defined result for every value.

#include <cmath>
#include <cstdint>
#include <limits>

namespace platform {

/// Truncates toward zero. Not-a-number gives 0; values outside the range, infinities included, give the nearer end of
/// it.
constexpr std::int32_t ToInt32(double value) {
  if (value != value) return 0;
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

/// Rounds to the nearest whole number, halves upward: 2.5 gives 3 and -2.5 gives -2.
inline double Round(double value) {
  const double below = std::floor(value);
  return value - below >= 0.5 ? below + 1.0 : below;
}

}  // namespace platform

#pragma once
/// Doubles and whole numbers, with a defined result for every value.

#include <cmath>
#include <cstdint>
#include <limits>

namespace platform {

/// Truncates toward zero. Not-a-number is 0; what lies outside the range, infinity too, is the nearer end of it.
constexpr std::int32_t ToInt32(double value) {
  if (value != value) return 0;
  if (value >= 2147483647.0) return std::numeric_limits<std::int32_t>::max();
  if (value <= -2147483648.0) return std::numeric_limits<std::int32_t>::min();
  return static_cast<std::int32_t>(value);
}

/// Nearest whole number; halves go upward, so that 2.5 is 3 and -2.5 is -2.
inline double Round(double value) {
  const double below = std::floor(value);
  return value - below >= 0.5 ? below + 1.0 : below;
}

}  // namespace platform

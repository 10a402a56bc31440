#include "stack/DisplayCurve.h"

#include <cmath>
#include <cstdlib>

#include "platform/values/Numbers.h"

namespace {

/// 3 to the power of (2 s - 1) / 10 for s = 1 to 25, rounded to the nearest double. The power functions of different
/// machines differ by an ulp, which would change some levels by one.
constexpr std::array<double, 25> kPowersOfThree = {
    1.1161231740339044, 1.3903891703159093, 1.7320508075688772, 2.157669279974593,  2.6878753795222865,
    3.348369522101714,  4.171167510947728,  5.196152422706632,  6.473007839923779,  8.063626138566859,
    10.04510856630514,  12.513502532843182, 15.588457268119896, 19.419023519771343, 24.190878415700578,
    30.135325698915423, 37.540507598529544, 46.76537180435969,  58.25707055931402,  72.57263524710173,
    90.40597709674623,  112.62152279558863, 140.29611541307906, 174.77121167794206, 217.7179057413053};

double PowerOfThree(int setting) {
  const double size = std::fabs(static_cast<double>(setting));
  if (size <= kPowersOfThree.size()) return kPowersOfThree[static_cast<std::size_t>(size) - 1];
  return std::pow(3.0, (2.0 * size - 1.0) / 10.0);
}

/// Limits to 255 and truncates. Not-a-number, as in 0 / 0 for a maximum of 0, gives 0.
std::int32_t Entry(double value) { return platform::ToInt32(value > 255.0 ? 255.0 : value); }

}  // namespace

bool CurveSettingInRange(int setting, int maximum) {
  return setting >= -25 && setting <= 25 && maximum >= -1 && maximum <= 255;
}

Curve DisplayCurve(int setting, int maximum) {
  Curve curve{};
  if (maximum == -1) return curve;
  if (setting == 0) {
    for (int i = 0; i < 256; ++i)
      curve[static_cast<std::size_t>(i)] = Entry(static_cast<double>(i * 255) / static_cast<double>(maximum));
    return curve;
  }
  // The hyperbola through (0, 0) and (1, 1) with its centre at (0.5 - t, 0.5 + t), or mirrored, and the strength k.
  const double k = PowerOfThree(setting) - 1.0;
  const double t = std::sqrt(1.0 / k + 0.25);
  for (int i = 0; i < 256; ++i) {
    const double x = static_cast<double>(i) / static_cast<double>(maximum);
    curve[static_cast<std::size_t>(i)] = setting < 0 ? Entry((-1.0 / (k * ((x - t) - 0.5)) - t + 0.5) * 255.0)
                                                     : Entry((-1.0 / (k * ((x + t) - 0.5)) + t + 0.5) * 255.0);
  }
  return curve;
}

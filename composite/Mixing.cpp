#include "composite/Mixing.h"

#include <algorithm>

#include "platform/Errors.h"

namespace {

/// What each level of a channel contributes to a colour.
using Contribution = std::array<platform::Color, 256>;

Contribution ContributionOf(const Curve& curve, bool rgb, int shift) {
  Contribution contribution;
  std::transform(curve.begin(), curve.end(), contribution.begin(), [=](std::int32_t output) {
    const std::uint32_t value = static_cast<std::uint32_t>(output);
    return ((rgb ? value : 255 - value) & 0xFF) << shift;
  });
  return contribution;
}

[[noreturn]] void ThrowBadLevel(const std::int32_t* row, int width) {
  platform::ThrowOutOfBounds("grey level", *std::find_if(row, row + width, [](int g) { return g < 0 || g > 255; }),
                             255);
}

}  // namespace

void MixPlanes(const std::array<platform::PlaneView<const std::int32_t>, 3>& levels, const std::array<Curve, 3>& curves,
               bool rgb, platform::PlaneView<platform::Color> target) {
  const Contribution red = ContributionOf(curves[0], rgb, 16);
  const Contribution green = ContributionOf(curves[1], rgb, 8);
  const Contribution blue = ContributionOf(curves[2], rgb, 0);
  const int width = std::min({levels[0].width, levels[1].width, levels[2].width, target.width});
  const int height = std::min({levels[0].height, levels[1].height, levels[2].height, target.height});
  for (int y = 0; y < height; ++y) {
    const std::int32_t *a = levels[0].Row(y), *b = levels[1].Row(y), *c = levels[2].Row(y);
    platform::Color* out = target.Row(y);
    // Failures are rare: the row is mixed first, and whether all its levels were good is asked at its end.
    std::uint32_t seenA = 0, seenB = 0, seenC = 0;
    for (int x = 0; x < width; ++x) {
      const auto levelA = static_cast<std::uint32_t>(a[x]);
      const auto levelB = static_cast<std::uint32_t>(b[x]);
      const auto levelC = static_cast<std::uint32_t>(c[x]);
      out[x] = red[levelA & 0xFF] | green[levelB & 0xFF] | blue[levelC & 0xFF];
      seenA |= levelA;
      seenB |= levelB;
      seenC |= levelC;
    }
    if (seenA > 0xFF) ThrowBadLevel(a, width);
    if (seenB > 0xFF) ThrowBadLevel(b, width);
    if (seenC > 0xFF) ThrowBadLevel(c, width);
  }
}

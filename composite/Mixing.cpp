#include "composite/Mixing.h"

#include <algorithm>

namespace {

/// The contribution of each level of a channel to a colour.
using Contribution = std::array<platform::OpaqueColor, 256>;

Contribution ContributionOf(const Curve& curve, bool rgb, int shift) {
  Contribution contribution;
  std::transform(curve.begin(), curve.end(), contribution.begin(), [=](std::int32_t output) {
    const std::uint32_t value = static_cast<std::uint32_t>(output);
    return platform::Opaque(((rgb ? value : 255 - value) & 0xFF) << shift);
  });
  return contribution;
}

}  // namespace

void MixPlanes(const std::array<platform::PlaneView<const std::uint8_t>, 3>& levels, const std::array<Curve, 3>& curves,
               bool rgb, platform::PlaneView<platform::OpaqueColor> target) {
  const Contribution red = ContributionOf(curves[0], rgb, 16), green = ContributionOf(curves[1], rgb, 8),
                     blue = ContributionOf(curves[2], rgb, 0);
  const int width = std::min({levels[0].width, levels[1].width, levels[2].width, target.width});
  const int height = std::min({levels[0].height, levels[1].height, levels[2].height, target.height});
  for (int y = 0; y < height; ++y) {
    const std::uint8_t *const a = levels[0].Row(y), *const b = levels[1].Row(y), *const c = levels[2].Row(y);
    platform::OpaqueColor* const out = target.Row(y);
#pragma GCC unroll 8
    for (int x = 0; x < width; ++x) out[x] = red[a[x]] | green[b[x]] | blue[c[x]];
  }
}

#include "composite/Mixing.h"

#include <algorithm>

#include "platform/Errors.h"
#include "stack/PixelStream.h"

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

struct Mixer {
  Contribution red, green, blue;

  /// Mixes one row and tells whether all its levels were valid. That is asked once for the row, as failures are rare.
  bool MixRow(const std::array<const std::int32_t*, 3>& in, platform::Color* out, int width) const {
    const auto [a, b, c] = in;
    std::uint64_t seen = 0;
    int x = 0;
    for (; x + kPixelsPerLine <= width; x += kPixelsPerLine) {
      RequestForReading(a + x);
      RequestForReading(b + x);
      RequestForReading(c + x);
      RequestForWriting(out + x);
#pragma GCC unroll 8
      for (int i = x; i < x + kPixelsPerLine; i += 2) {
        const std::uint64_t levelsA = LoadPair(a + i), levelsB = LoadPair(b + i), levelsC = LoadPair(c + i);
        const std::uint64_t first = red[levelsA & 0xFF] | green[levelsB & 0xFF] | blue[levelsC & 0xFF];
        const std::uint64_t second =
            red[levelsA >> 32 & 0xFF] | green[levelsB >> 32 & 0xFF] | blue[levelsC >> 32 & 0xFF];
        StorePair(first | second << 32, out + i);
        seen |= levelsA | levelsB | levelsC;
      }
    }
    for (; x < width; ++x) {
      const auto levelA = static_cast<std::uint32_t>(a[x]);
      const auto levelB = static_cast<std::uint32_t>(b[x]);
      const auto levelC = static_cast<std::uint32_t>(c[x]);
      out[x] = red[levelA & 0xFF] | green[levelB & 0xFF] | blue[levelC & 0xFF];
      seen |= levelA | levelB | levelC;
    }
    return (seen & 0xFFFFFF00FFFFFF00) == 0;
  }
};

}  // namespace

void MixPlanes(const std::array<platform::PlaneView<const std::int32_t>, 3>& levels, const std::array<Curve, 3>& curves,
               bool rgb, platform::PlaneView<platform::Color> target) {
  const Mixer mixer{ContributionOf(curves[0], rgb, 16), ContributionOf(curves[1], rgb, 8),
                    ContributionOf(curves[2], rgb, 0)};
  const int width = std::min({levels[0].width, levels[1].width, levels[2].width, target.width});
  const int height = std::min({levels[0].height, levels[1].height, levels[2].height, target.height});
  for (int y = 0; y < height; ++y) {
    const std::array<const std::int32_t*, 3> in{levels[0].Row(y), levels[1].Row(y), levels[2].Row(y)};
    if (mixer.MixRow(in, target.Row(y), width)) continue;
    for (const std::int32_t* row : in) {
      const std::int32_t* bad =
          std::find_if(row, row + width, [](std::int32_t level) { return level < 0 || level > 255; });
      if (bad != row + width) platform::ThrowOutOfBounds("grey level", *bad, 255);
    }
  }
}

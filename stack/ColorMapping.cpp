#include "stack/ColorMapping.h"

#include <algorithm>
#include <cstring>

#include "platform/values/Errors.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "stack/ColorMapping.cpp"
#include <hwy/foreach_target.h>
// The order matters: foreach_target.h comes first.
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace {
namespace HWY_NAMESPACE {

#if HWY_TARGET == HWY_AVX3_DL

/// 64 pixels at a time: the 256 values of one colour component fit into four registers, and one instruction looks up 64
/// indices in two of them.
class VectorRow {
 public:
  static constexpr int kPixels = 64;

  explicit VectorRow(const LevelColors& colors) : blue_(colors, 0), green_(colors, 8), red_(colors, 16) {}

  void operator()(const std::uint8_t* levels, platform::OpaqueColor* out) const {
    // Groups of four levels are permuted first, so that the pixels are in order after interleaving within 128-bit
    // lanes.
    const __m512i order = _mm512_setr_epi32(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15);
    const __m512i index = _mm512_permutexvar_epi32(order, _mm512_loadu_si512(levels));
    const __m512i blue = blue_.LookUp(index), green = green_.LookUp(index), red = red_.LookUp(index);
    const __m512i opaque = _mm512_set1_epi8(-1);
    const __m512i lowBlueGreen = _mm512_unpacklo_epi8(blue, green), highBlueGreen = _mm512_unpackhi_epi8(blue, green);
    const __m512i lowRed = _mm512_unpacklo_epi8(red, opaque), highRed = _mm512_unpackhi_epi8(red, opaque);
    _mm512_storeu_si512(out, _mm512_unpacklo_epi16(lowBlueGreen, lowRed));
    _mm512_storeu_si512(out + 16, _mm512_unpackhi_epi16(lowBlueGreen, lowRed));
    _mm512_storeu_si512(out + 32, _mm512_unpacklo_epi16(highBlueGreen, highRed));
    _mm512_storeu_si512(out + 48, _mm512_unpackhi_epi16(highBlueGreen, highRed));
  }

 private:
  class Component {
   public:
    Component(const LevelColors& colors, int shift) {
      std::array<std::uint8_t, 256> bytes{};
      std::transform(colors.colors.begin(), colors.colors.end(), bytes.begin(),
                     [shift](platform::OpaqueColor color) { return static_cast<std::uint8_t>(color >> shift); });
      std::memcpy(quarters_, bytes.data(), bytes.size());
    }
    __m512i LookUp(__m512i index) const {
      return _mm512_mask_blend_epi8(_mm512_movepi8_mask(index),
                                    _mm512_permutex2var_epi8(quarters_[0], index, quarters_[1]),
                                    _mm512_permutex2var_epi8(quarters_[2], index, quarters_[3]));
    }

   private:
    __m512i quarters_[4];
  };
  Component blue_, green_, red_;
};

#else

/// Eight pixels at a time: one load of levels, two colours per store.
class VectorRow {
 public:
  static constexpr int kPixels = 8;

  explicit VectorRow(const LevelColors& colors) : table_(colors.colors.data()) {}

  void operator()(const std::uint8_t* levels, platform::OpaqueColor* out) const {
    std::uint64_t eight;
    std::memcpy(&eight, levels, sizeof(eight));
#pragma GCC unroll 4
    for (int i = 0; i < kPixels; i += 2) {
      const platform::OpaqueColor pair[] = {table_[eight >> (8 * i) & 0xFF], table_[eight >> (8 * i + 8) & 0xFF]};
      std::memcpy(out + i, pair, sizeof(pair));
    }
  }

 private:
  const platform::OpaqueColor* table_;
};

#endif

void ColorRows(platform::PlaneView<const std::uint8_t> levels, const LevelColors& colors,
               platform::PlaneView<platform::OpaqueColor> target) {
  const VectorRow colorStep(colors);
  for (int y = 0; y < target.height; ++y) {
    const std::uint8_t* in = levels.Row(y);
    platform::OpaqueColor* out = target.Row(y);
    int x = 0;
    for (; x + VectorRow::kPixels <= target.width; x += VectorRow::kPixels) colorStep(in + x, out + x);
    for (; x < target.width; ++x) out[x] = colors.colors[in[x]];
  }
}

}  // namespace HWY_NAMESPACE
}  // namespace
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace {
HWY_EXPORT(ColorRows);
}

LevelColors ComposeColors(const Curve& curve, std::span<const platform::Color> tableRow) {
  LevelColors composed;
  std::transform(curve.begin(), curve.end(), composed.colors.begin(), [&](std::int32_t index) {
    const auto entry = static_cast<std::size_t>(index);
    return index >= 0 && entry < tableRow.size() ? platform::Opaque(tableRow[entry]) : LevelColors::kInvalid;
  });
  return composed;
}

void ColorPlane(platform::PlaneView<const std::uint8_t> levels, const LevelColors& colors,
                platform::PlaneView<platform::OpaqueColor> target) {
  target.width = std::min(levels.width, target.width);
  target.height = std::min(levels.height, target.height);
  const auto isInvalid = [&](std::uint8_t level) { return colors.colors[level] == LevelColors::kInvalid; };
  if (std::find(colors.colors.begin(), colors.colors.end(), LevelColors::kInvalid) != colors.colors.end())
    for (int y = 0; y < target.height; ++y) {
      const std::uint8_t* row = levels.Row(y);
      const std::uint8_t* bad = std::find_if(row, row + target.width, isInvalid);
      if (bad != row + target.width) platform::ThrowOutOfBounds("colour of the grey level", *bad, 255);
    }
  HWY_DYNAMIC_DISPATCH(ColorRows)(levels, colors, target);
}
#endif

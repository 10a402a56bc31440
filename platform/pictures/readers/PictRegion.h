#pragma once
/// Regions: sets of pixels of any shape, which mask a raster.

#include <cstdint>
#include <span>
#include <vector>

#include "platform/pictures/readers/PictInput.h"

namespace platform::pict {

/// Rows of inversion points. Each row is its y, the x positions at which inside and outside swap from this row on, and
/// an end mark.
struct Region {
  static constexpr std::int16_t kEndMark = 0x7FFF;
  std::vector<std::int16_t> words;
};

/// Reads a region, including its size field.
Region ReadRegion(Input& input);

/// The part of a region between two columns, row by row.
class RegionRows {
 public:
  RegionRows(Region region, int left, int right);
  /// 1 for each pixel from `left` to `right` that lies in the region, else 0. Rows must be requested from the top down.
  std::span<const std::uint8_t> Row(int y);

 private:
  Region region_;
  std::size_t next_ = 0;  // index in `words` of the next row of inversion points
  int left_;
  std::vector<std::uint8_t> changes_;  // 1 where inside and outside swap
  std::vector<std::uint8_t> inside_;
};

}  // namespace platform::pict

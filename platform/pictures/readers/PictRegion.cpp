#include "platform/pictures/readers/PictRegion.h"

#include <algorithm>
#include <utility>

namespace platform::pict {

Region ReadRegion(Input& input) {
  const std::size_t size = input.Word();
  if (size < 10) throw ReadFailure("truncated or damaged: a region of " + std::to_string(size) + " bytes");
  const Rect box = input.Rectangle();
  Input rows = input.Part(size - 10);
  Region region;
  if (rows.Left() == 0)  // a rectangle
    for (const int y : {box.top, box.bottom})
      for (const int word : {y, box.left, box.right, int{Region::kEndMark}})
        region.words.push_back(static_cast<std::int16_t>(word));
  while (rows.Left() >= 2) region.words.push_back(rows.SignedWord());
  return region;
}

RegionRows::RegionRows(Region region, int left, int right)
    : region_(std::move(region)),
      left_(left),
      changes_(static_cast<std::size_t>(right - left)),
      inside_(changes_.size()) {}

std::span<const std::uint8_t> RegionRows::Row(int y) {
  const std::vector<std::int16_t>& words = region_.words;
  if (next_ >= words.size() || words[next_] > y) return inside_;
  while (next_ < words.size() && words[next_] <= y) {
    for (++next_; next_ < words.size() && words[next_] != Region::kEndMark; ++next_) {
      // Points left of the columns decide whether the first column is inside.
      const auto column = static_cast<std::size_t>(std::max(words[next_] - left_, 0));
      if (column < changes_.size()) changes_[column] ^= 1;
    }
    ++next_;
  }
  std::uint8_t state = 0;
  for (std::size_t x = 0; x < changes_.size(); ++x) inside_[x] = state ^= changes_[x];
  return inside_;
}

}  // namespace platform::pict

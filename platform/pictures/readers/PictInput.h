#pragma once
/// The bytes of a PICT, read in order. All numbers are big-endian.

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/pictures/readers/ReaderTools.h"

namespace platform::pict {

/// In drawing coordinates; `right` and `bottom` are exclusive.
struct Rect {
  int top = 0;
  int left = 0;
  int bottom = 0;
  int right = 0;

  int Width() const { return right - left; }
  int Height() const { return bottom - top; }
  bool Empty() const { return right <= left || bottom <= top; }
  bool operator==(const Rect&) const = default;
  bool Contains(const Rect& other) const {
    return other.top >= top && other.left >= left && other.bottom <= bottom && other.right <= right;
  }
};

/// Reading past the end throws ReadFailure.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  /// Bytes read so far.
  std::size_t Position() const { return position_; }
  /// Bytes left to read.
  std::size_t Left() const { return bytes_.size() - position_; }

  std::span<const std::uint8_t> Take(std::size_t count) {
    if (count > Left()) throw ReadFailure("truncated: the data of the PICT end too early");
    position_ += count;
    return bytes_.subspan(position_ - count, count);
  }
  void Skip(std::size_t count) { Take(count); }
  std::uint8_t Byte() { return Take(1)[0]; }
  std::uint16_t Word() {
    const auto bytes = Take(2);
    return static_cast<std::uint16_t>(bytes[0] << 8 | bytes[1]);
  }
  std::int16_t SignedWord() { return static_cast<std::int16_t>(Word()); }
  std::uint32_t Long() {
    const std::uint32_t high = Word();
    return high << 16 | Word();
  }
  Rect Rectangle() {
    Rect rect;
    for (int* side : {&rect.top, &rect.left, &rect.bottom, &rect.right}) *side = SignedWord();
    return rect;
  }

 private:
  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;
};

}  // namespace platform::pict

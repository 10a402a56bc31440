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
  /// The bytes from `begin` up to, not including, `end`. The source must outlive the input.
  Input(ByteSource& source, std::uint64_t begin, std::uint64_t end) : source_(&source), position_(begin), end_(end) {}
  /// The position in the source.
  std::uint64_t Position() const { return position_; }
  /// Bytes left to read.
  std::uint64_t Left() const { return end_ - position_; }

  void Skip(std::uint64_t count) {
    if (count > Left()) throw ReadFailure("truncated: the data of the PICT end too early");
    position_ += count;
  }
  /// The next bytes as a separate input; this one continues after them.
  Input Part(std::uint64_t count) {
    Skip(count);
    return {*source_, position_ - count, position_};
  }
  /// The rest as a source for a reader of another format.
  ByteSource Rest() const { return {*source_, position_, Left()}; }
  /// Fills `target`.
  void Read(std::span<std::uint8_t> target) {
    Skip(target.size());
    if (source_->Read(position_ - target.size(), target.data(), target.size()) != target.size())
      throw ReadFailure("truncated: the data of the PICT end too early");
  }
  std::uint8_t Byte() {
    Skip(1);
    return static_cast<std::uint8_t>(source_->Byte(position_ - 1));
  }
  std::uint16_t Word() {
    const int high = Byte();
    return static_cast<std::uint16_t>(high << 8 | Byte());
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
  ByteSource* source_;
  std::uint64_t position_;
  std::uint64_t end_;
};

}  // namespace platform::pict

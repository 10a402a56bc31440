#pragma once
/// The stack's memory: one plane of grey levels per species, indexed species, x, y. It behaves like an array of 32-bit
/// integers with three upper bounds (-1 is an empty dimension; a change of bounds keeps the values that stay in range,
/// new ones are 0; a bad index throws OutOfBoundsException). A level is stored in one byte, so storing a value outside
/// 0 to 255 throws OutOfBoundsException too. Pixel loops use Plane, which gives rows of bytes.

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/values/PlaneView.h"

class PlaneStack {
 public:
  using Level = std::uint8_t;

  /// A level that can be read and stored as a 32-bit integer.
  class Reference {
   public:
    explicit Reference(Level& level) : level_(level) {}
    operator std::int32_t() const { return level_; }
    Reference& operator=(std::int32_t value);

   private:
    Level& level_;
  };

  PlaneStack() = default;
  PlaneStack(PlaneStack&&) noexcept = default;
  PlaneStack& operator=(PlaneStack&&) noexcept = default;

  /// Upper bound of a dimension: 1 species, 2 x, 3 y.
  int Ubound(int dimension) const;
  /// Does not reallocate if the bounds are unchanged. The pages of new planes are not touched before they are written.
  void Redim(int species, int x, int y);

  Reference operator()(int species, int x, int y);
  std::int32_t operator()(int species, int x, int y) const;

  /// The plane of a species, rows contiguous.
  platform::PlaneView<Level> Plane(int species);
  platform::PlaneView<const Level> Plane(int species) const;

 private:
  /// The memory of a plane. It lies in a block that it shares with others, which is freed with the last of them.
  using Memory = std::shared_ptr<Level>;
  static void Append(std::vector<Memory>& planes, std::size_t count, int width, int height);
  void Check(int species, int x, int y) const;

  std::vector<Memory> planes_;
  int width_ = 0;
  int height_ = 0;
};

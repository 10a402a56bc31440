#pragma once
/// Arrays that are declared by their upper bound: an upper bound of -1 is an empty array, one of 20 has 21 entries. A
/// change of bounds keeps the entries that stay in range and gives new ones their start value (0, false, empty, nil).
/// A bad index throws OutOfBoundsException.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

#include "platform/values/Errors.h"

namespace platform {

/// One dimension. Grows at its end in amortised constant time.
template <class T>
class Array {
 public:
  Array() = default;
  explicit Array(int upperBound) { Redim(upperBound); }
  Array(std::initializer_list<T> values) {
    for (const T& value : values) Append(value);
  }
  Array(const Array& other) { *this = other; }
  Array(Array&& other) noexcept { swap(other); }
  Array& operator=(const Array& other) {
    if (this == &other) return *this;
    auto copy = std::make_unique<T[]>(static_cast<std::size_t>(other.count_));
    std::copy(other.begin(), other.end(), copy.get());
    values_ = std::move(copy);
    count_ = capacity_ = other.count_;
    return *this;
  }
  Array& operator=(Array&& other) noexcept {
    swap(other);
    return *this;
  }

  int Ubound() const { return count_ - 1; }
  bool Empty() const { return count_ == 0; }

  T& operator()(int index) { return values_[Checked(index)]; }
  const T& operator()(int index) const { return values_[Checked(index)]; }

  void Redim(int upperBound) {
    if (upperBound < -1) ThrowOutOfBounds("Redim", upperBound, -1);
    const int count = upperBound + 1;
    Reserve(count);
    for (int i = count; i < count_; ++i) values_[static_cast<std::size_t>(i)] = T();
    count_ = count;
  }
  void Append(T value) {
    if (count_ == capacity_) Reserve(std::max(8, capacity_ * 2));
    values_[static_cast<std::size_t>(count_++)] = std::move(value);
  }
  void Remove(int index) {
    Checked(index);
    std::move(begin() + index + 1, end(), begin() + index);
    values_[static_cast<std::size_t>(--count_)] = T();
  }
  /// Removes the last entry and returns it.
  T Pop() {
    T last = std::move((*this)(Ubound()));
    Remove(Ubound());
    return last;
  }
  /// Index of the first entry equal to value, or -1. Strings are equal regardless of letter case.
  int IndexOf(const T& value) const {
    const T* found = std::find(begin(), end(), value);
    return found == end() ? -1 : static_cast<int>(found - begin());
  }
  /// Sorts ascending; equal entries keep their order.
  void Sort() { std::stable_sort(begin(), end()); }

  T* begin() { return values_.get(); }
  T* end() { return values_.get() + count_; }
  const T* begin() const { return values_.get(); }
  const T* end() const { return values_.get() + count_; }
  std::span<T> Values() { return {begin(), end()}; }
  std::span<const T> Values() const { return {begin(), end()}; }

  void swap(Array& other) noexcept {
    values_.swap(other.values_);
    std::swap(count_, other.count_);
    std::swap(capacity_, other.capacity_);
  }

 private:
  std::size_t Checked(int index) const {
    if (index < 0 || index >= count_) ThrowOutOfBounds("array", index, count_ - 1);
    return static_cast<std::size_t>(index);
  }
  void Reserve(int capacity) {
    // The second condition is for the compiler, which otherwise warns that entries are moved to a null pointer.
    if (capacity <= capacity_ || capacity == 0) return;
    auto grown = std::make_unique<T[]>(static_cast<std::size_t>(capacity));
    std::move(begin(), end(), grown.get());
    values_ = std::move(grown);
    capacity_ = capacity;
  }

  std::unique_ptr<T[]> values_;
  int count_ = 0;
  int capacity_ = 0;
};

/// Two or three dimensions; the last index varies fastest. The memory of a new array of numbers is not touched before
/// it is written, so a large array costs nothing until it is used.
template <class T, int Rank>
class ArrayN {
 public:
  using Bounds = std::array<int, Rank>;

  ArrayN() { bounds_.fill(-1); }
  template <class... Index>
  explicit ArrayN(int first, Index... rest) : ArrayN() {
    Redim(first, rest...);
  }

  /// Upper bound of a dimension; the first dimension is 1.
  int Ubound(int dimension) const {
    if (dimension < 1 || dimension > Rank) ThrowOutOfBounds("dimension", dimension, Rank);
    return bounds_[static_cast<std::size_t>(dimension - 1)];
  }

  template <class... Index>
  T& operator()(Index... index) {
    return values_.get()[Offset({static_cast<int>(index)...})];
  }
  template <class... Index>
  const T& operator()(Index... index) const {
    return values_.get()[Offset({static_cast<int>(index)...})];
  }

  template <class... Index>
  void Redim(Index... upperBounds) {
    static_assert(sizeof...(upperBounds) == Rank);
    const Bounds wanted{static_cast<int>(upperBounds)...};
    if (wanted == bounds_) return;
    std::size_t count = 1;
    for (int bound : wanted) {
      if (bound < -1) ThrowOutOfBounds("Redim", bound, -1);
      count *= static_cast<std::size_t>(bound + 1);
    }
    Memory values = Allocate(count);
    if (!Empty(bounds_) && !Empty(wanted)) {
      const auto run = static_cast<std::size_t>(std::min(bounds_.back(), wanted.back())) + 1;
      Bounds index{};
      do {
        T* from = values_.get() + Place(index, bounds_);
        // New memory holds zeroes already; a run of zeroes is not copied, so that its memory stays untouched.
        if (!kPlain || std::any_of(from, from + run, [](const T& value) { return value != T(); }))
          std::move(from, from + run, values.get() + Place(index, wanted));
      } while (NextRun(index, bounds_, wanted));
    }
    bounds_ = wanted;
    values_ = std::move(values);
  }

 private:
  static constexpr bool kPlain = std::is_arithmetic_v<T>;
  struct Free {
    void operator()(T* values) const {
      if constexpr (kPlain)
        std::free(values);
      else
        delete[] values;
    }
  };
  using Memory = std::unique_ptr<T, Free>;
  static Memory Allocate(std::size_t count) {
    if constexpr (kPlain) {
      auto* values = static_cast<T*>(std::calloc(std::max<std::size_t>(count, 1), sizeof(T)));
      if (!values) throw std::bad_alloc();
      return Memory(values);
    } else {
      return Memory(new T[count]());
    }
  }

  static bool Empty(const Bounds& bounds) {
    return std::any_of(bounds.begin(), bounds.end(), [](int bound) { return bound < 0; });
  }
  static std::size_t Place(const Bounds& index, const Bounds& bounds) {
    std::size_t place = 0;
    for (std::size_t d = 0; d < Rank; ++d)
      place = place * static_cast<std::size_t>(bounds[d] + 1) + static_cast<std::size_t>(index[d]);
    return place;
  }
  /// Advances to the next run along the last dimension that lies within both bounds; false if there is none.
  static bool NextRun(Bounds& index, const Bounds& a, const Bounds& b) {
    for (std::size_t d = Rank - 1; d-- > 0;) {
      if (++index[d] <= std::min(a[d], b[d])) return true;
      index[d] = 0;
    }
    return false;
  }
  std::size_t Offset(const Bounds& index) const {
    for (std::size_t d = 0; d < Rank; ++d)
      if (index[d] < 0 || index[d] > bounds_[d]) ThrowOutOfBounds("array", index[d], bounds_[d]);
    return Place(index, bounds_);
  }

  Bounds bounds_;
  Memory values_;
};

template <class T>
using Array2 = ArrayN<T, 2>;
template <class T>
using Array3 = ArrayN<T, 3>;

}  // namespace platform

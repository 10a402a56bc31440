#pragma once
/// A view of a plane of values that it does not own: rows one after the other, `pitch` elements from the start of one
/// row to the start of the next. Assertions check the indices, so a release build pays nothing for them.

#include <cassert>
#include <cstddef>

namespace platform {

template <class T>
struct PlaneView {
  T* data = nullptr;
  int width = 0;
  int height = 0;
  std::ptrdiff_t pitch = 0;

  T* Row(int y) const {
    assert(y >= 0 && y < height);
    return data + y * pitch;
  }
  T& operator()(int x, int y) const {
    assert(x >= 0 && x < width);
    return Row(y)[x];
  }
  operator PlaneView<const T>() const { return {data, width, height, pitch}; }
};

}  // namespace platform

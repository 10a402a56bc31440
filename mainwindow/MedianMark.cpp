#include "mainwindow/MedianMark.h"

#include <array>
#include <cstddef>

int MedianMark(std::span<const bool, 256> marked) {
  std::array<int, 256> levels{};
  std::size_t count = 0;
  for (int level = 0; level < 256; ++level)
    if (marked[static_cast<std::size_t>(level)]) levels[count++] = level;
  return count == 0 ? 0 : (levels[(count - 1) / 2] + levels[count / 2]) / 2;
}

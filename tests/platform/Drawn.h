#pragma once
/// Pictures as text, one character a pixel, for tests that compare drawings.

#include <string>

#include "platform/Graphics.h"

namespace platform {

/// '#' for black, '.' for white, '?' for anything else; a line a row.
inline std::string Drawn(const Ref<Picture>& picture) {
  std::string rows;
  for (int y = 0; y < picture->Height(); ++y) {
    for (int x = 0; x < picture->Width(); ++x) {
      const Color color = picture->Pixels()(x, y);
      rows += color == kBlack ? '#' : color == kWhite ? '.' : '?';
    }
    rows += '\n';
  }
  return rows;
}

/// The first pixel at which two pictures of the same size differ, or "".
inline std::string Difference(const Ref<Picture>& a, const Ref<Picture>& b) {
  for (int y = 0; y < a->Height(); ++y)
    for (int x = 0; x < a->Width(); ++x)
      if (a->Pixels()(x, y) != b->Pixels()(x, y)) return "at " + std::to_string(x) + ", " + std::to_string(y);
  return "";
}

}  // namespace platform

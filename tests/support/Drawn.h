#pragma once
/// Pictures for tests that compare drawings.

#include <random>
#include <string>

#include "platform/pictures/Graphics.h"

namespace platform {

/// One character a pixel: '#' for black, '.' for white, '?' for anything else; a line a row.
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

/// A picture of colours that hardly repeat.
inline Ref<Picture> Noise(int width, int height) {
  std::mt19937 random(7);
  auto picture = NewPicture(width, height, 32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) picture->Pixels()(x, y) = random() & kWhite;
  return picture;
}

/// The first pixel at which two pictures of the same size differ, or "".
inline std::string Difference(const Ref<Picture>& a, const Ref<Picture>& b) {
  for (int y = 0; y < a->Height(); ++y)
    for (int x = 0; x < a->Width(); ++x)
      if (a->Pixels()(x, y) != b->Pixels()(x, y)) return "at " + std::to_string(x) + ", " + std::to_string(y);
  return "";
}

}  // namespace platform

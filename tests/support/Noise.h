#pragma once

#include <random>

#include "platform/pictures/Graphics.h"

namespace platform {

/// A picture of random colours.
inline Ref<Picture> Noise(int width, int height) {
  std::mt19937 random(7);
  auto picture = NewPicture(width, height, 32);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) picture->Pixels()(x, y) = random() & kWhite;
  return picture;
}

}  // namespace platform

#pragma once
/// How a picture becomes a plane of grey levels.

#include <cstdint>

#include "platform/pictures/Picture.h"
#include "platform/values/PlaneView.h"

/// Takes the grey level of each pixel, which is the largest of its red, green and blue, into both planes, over the part
/// that the picture and the planes have in common. Returns the highest level, -1 for an empty picture. A picture made
/// from grey levels is not asked for its colours.
int TakeLevels(platform::Picture& picture, platform::PlaneView<std::uint8_t> displayed,
               platform::PlaneView<std::uint8_t> original);

#pragma once
/// Extracts a plane of grey levels from a picture.

#include <cstdint>

#include "platform/pictures/Picture.h"
#include "platform/values/PlaneView.h"

/// Writes the grey level of each pixel, which is the largest of its red, green and blue, to both planes, over the area
/// that the picture and the planes have in common. Returns the highest level, -1 for an empty picture. The colours of a
/// picture of grey levels are not computed.
int TakeLevels(platform::Picture& picture, platform::PlaneView<std::uint8_t> displayed,
               platform::PlaneView<std::uint8_t> original);

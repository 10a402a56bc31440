#pragma once
/// How a picture becomes a plane of grey levels.

#include <cstdint>
#include <span>

#include "platform/Color.h"
#include "platform/Picture.h"
#include "platform/PlaneView.h"

/// Takes the grey level of each pixel, which is the largest of its red, green and blue, into both planes, and its
/// colour in the table into `shown`, over the part that the picture and all three have in common. Returns the highest
/// level, -1 for an empty picture. A picture made from grey levels is not asked for its colours. `tableRow` has 256
/// entries or more; fewer throw OutOfBoundsException.
int TakeLevels(platform::Picture& picture, std::span<const platform::Color> tableRow,
               platform::PlaneView<std::int32_t> displayed, platform::PlaneView<std::int32_t> original,
               platform::PlaneView<platform::Color> shown);

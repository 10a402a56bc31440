#pragma once
/// Maps grey levels to colours through the display curve and a colour table.

#include <array>
#include <cstdint>
#include <span>

#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "stack/DisplayCurve.h"

using ColorTable = std::array<platform::Color, 256>;

/// The colour of each grey level: display curve and colour table combined.
struct LevelColors {
  /// Marks a level that the curve maps outside the table. No opaque colour has that value.
  static constexpr platform::OpaqueColor kInvalid = 0;
  std::array<platform::OpaqueColor, 256> colors;
};

LevelColors ComposeColors(const Curve& curve, std::span<const platform::Color> tableRow);

/// Colours the area that `levels` and `target` have in common. Throws OutOfBoundsException, with nothing coloured, if
/// the curve maps a level in it outside the table.
void ColorPlane(platform::PlaneView<const std::uint8_t> levels, const LevelColors& colors,
                platform::PlaneView<platform::OpaqueColor> target);

#pragma once
/// From grey levels to colours: through the display curve, then through a colour table.

#include <array>
#include <cstdint>
#include <span>

#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "stack/DisplayCurve.h"

using ColorTable = std::array<platform::Color, 256>;

/// The colour of each grey level, curve and table in one step.
struct LevelColors {
  /// Stands for a level that the curve takes outside the table. No colour has a value in its upper byte.
  static constexpr platform::Color kInvalid = 0xFF000000;
  std::array<platform::Color, 256> colors;
};

LevelColors ComposeColors(const Curve& curve, std::span<const platform::Color> tableRow);

/// Colours the part that `levels` and `target` have in common. A level there that the curve takes outside the table
/// throws OutOfBoundsException, and nothing is coloured.
void ColorPlane(platform::PlaneView<const std::uint8_t> levels, const LevelColors& colors,
                platform::PlaneView<platform::Color> target);

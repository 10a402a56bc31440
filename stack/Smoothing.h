#pragma once
/// Smoothing of grey-level planes: repeated passes of a 3 by 3 mean.
///
/// A pass replaces each value by the sum of the 3 by 3 values around it divided by 9.0, in double precision. Beyond the
/// left, top and right edge the edge is repeated. The bottom row is deliberately different: the row above it counts
/// twice and the bottom row itself once, except in the two corners, which repeat the edge like the upper ones. Values
/// are truncated once, after the last pass.

#include <cstdint>
#include <span>

#include "platform/values/PlaneView.h"

struct SmoothJob {
  platform::PlaneView<const std::uint8_t> original;
  platform::PlaneView<std::uint8_t> smoothed;  ///< of the same size, in separate memory
  int maximum = -1;                            ///< result: the largest smoothed level
};

/// Runs `level` passes (1 or more) over each plane. The planes are distributed over the cores; the result depends
/// neither on their number nor on the processor. Needs memory for two rows of doubles per pass. Throws
/// OutOfBoundsException for a plane smaller than 2 by 2.
void SmoothPlanes(std::span<SmoothJob> jobs, int level);

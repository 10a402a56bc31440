#pragma once
/// Mixes three planes into one picture, each channel through its own curve.

#include <array>
#include <cstdint>

#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "stack/DisplayCurve.h"

/// Sets every pixel of `target` to the colour whose red, green and blue are the values of the three curves for the
/// levels of the three planes at that pixel. If `rgb` is false (CMY), each component is subtracted from 255. Only the
/// low 8 bits of a component count. Levels outside the target are ignored.
void MixPlanes(const std::array<platform::PlaneView<const std::uint8_t>, 3>& levels, const std::array<Curve, 3>& curves,
               bool rgb, platform::PlaneView<platform::OpaqueColor> target);

#pragma once
/// The mix of three planes into one picture, each channel through its own curve.

#include <array>
#include <cstdint>

#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "stack/DisplayCurve.h"

/// Every pixel of `target` becomes the colour whose red, green and blue are what the three curves give for the levels
/// of the three planes at its place; unless `rgb`, each is taken from 255, so that a strong signal takes its colour out
/// of white. Components are cut to 8 bits. Levels beyond the target are left out.
void MixPlanes(const std::array<platform::PlaneView<const std::uint8_t>, 3>& levels, const std::array<Curve, 3>& curves,
               bool rgb, platform::PlaneView<platform::Color> target);

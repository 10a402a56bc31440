#pragma once
/// The display curve maps a grey level to an index into a colour table.

#include <array>
#include <cstdint>

using Curve = std::array<std::int32_t, 256>;

/// Whether the setting is in -25 to 25 and the maximum in -1 to 255.
bool CurveSettingInRange(int setting, int maximum);

/// The curve that maps 0 to 0 and `maximum` to 255: a straight line for the setting 0, a hyperbola below it for a
/// negative setting and above it for a positive one. A maximum of -1 gives a curve of zeros. No entry is above 255; for
/// a negative setting, entries of levels above the maximum may be negative.
Curve DisplayCurve(int setting, int maximum);

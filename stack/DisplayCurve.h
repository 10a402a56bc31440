#pragma once
/// The display curve maps a grey level to an index into a colour table.

#include <array>
#include <cstdint>

using Curve = std::array<std::int32_t, 256>;

/// The settings and maxima that a curve is meant for: -25 to 25, and -1 to 255.
bool CurveSettingInRange(int setting, int maximum);

/// The curve that takes 0 to 0 and `maximum` to 255, straight for the setting 0, a hyperbola bowed below the straight
/// line for a negative setting and above it for a positive one. A maximum of -1 gives a curve of zeros. No entry is
/// above 255; entries above the maximum may be negative when the setting is.
Curve DisplayCurve(int setting, int maximum);

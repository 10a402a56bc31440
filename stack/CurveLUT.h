#pragma once

#include "stack/DisplayCurve.h"

namespace Globals {

/// Fills `c` with the display curve for a setting (-25 to 25) and a maximum (-1 to 255), see DisplayCurve. Values out
/// of range raise the message "error in LUTcurve" and are used nevertheless.
void CurveLUT(Curve& c, std::int32_t setting, std::int32_t maximum);

}  // namespace Globals

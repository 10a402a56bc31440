#pragma once

#include "stack/DisplayCurve.h"

namespace Globals {

/// Fills the display curve for a setting (-25 to 25) and a maximum (-1 to 255), as DisplayCurve tells. Values outside
/// get the message "error in LUTcurve" and are used as they are.
void CurveLUT(Curve& c, std::int32_t setting, std::int32_t maximum);

}  // namespace Globals

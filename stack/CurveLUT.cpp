#include "stack/CurveLUT.h"

#include "platform/widgets/Dialogs.h"

void Globals::CurveLUT(Curve& c, std::int32_t setting, std::int32_t maximum) {
  if (!CurveSettingInRange(setting, maximum)) platform::MsgBox("error in LUTcurve");
  c = DisplayCurve(setting, maximum);
}

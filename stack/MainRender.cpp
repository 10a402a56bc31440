// Main's display: the shown species in colour, the colour bar, and the controls that drive them.

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Dialogs.h"
#include "stack/ColorMapping.h"
#include "stack/CurveLUT.h"

using namespace platform;

Curve Main::SpeciesCurve(std::int32_t species, std::int32_t setting, bool scaled) const {
  Curve curve;
  Globals::CurveLUT(curve, setting, species < 0 ? -1 : scaled ? TIFmax(species) : 255);
  return curve;
}

void Main::ColorSpecies(std::int32_t species, PlaneView<OpaqueColor> target) const {
  const Curve curve = SpeciesCurve(species, Slider_colors.Value(), CB_ScaleUp.Value());
  ColorPlane(TIFarray.Plane(species), ComposeColors(curve, Globals::LutRow(SelectedLUT)), target);
}

void Main::Update_cvTIF() {
  try {
    if (currTIF) ColorSpecies(SelectedRow, currTIFrgb.Pixels());
    cvTIF.Refresh();
    SpeciesName.Refresh();
  } catch (...) {
    ReportFailure("exception in update_cvTIF", "Update_cvTIF, species " + Str(SelectedRow));
  }
}

void Main::LUTchanged() {
  cvColorBar.Refresh();
  Update_cvTIF();
}

void Main::cvColorBar_Paint(Graphics& g) {
  Curve curve;
  Globals::CurveLUT(curve, Slider_colors.Value(), 255);
  for (int y = 1; y <= 254; ++y) {
    g.ForeColor = Globals::lut(SelectedLUT, curve[static_cast<std::size_t>(255 - y)]);
    g.DrawLine(1, y, g.Width() - 2, y);
  }
  g.ForeColor = kBlack;
  g.DrawRect(0, 0, g.Width(), g.Height());
}

void Main::Slider_colors_ValueChanged() {
  ST_ScaleColors.Text(Str(Slider_colors.Value()));
  ST_ScaleColors.Refresh();
  Update_cvTIF();
  cvColorBar.Refresh();
}

void Main::PB_ResetColors_Action() { Slider_colors.Value(0); }  // repaints nothing if it is 0 already

void Main::CB_ScaleUp_Action() { Update_cvTIF(); }

bool Main::ChooseColorTable(int n) {
  App::Instance().UncheckAllColors();
  Menu::Item("Colorsc" + Str(n)).Checked(true);
  SelectedLUT = n - 1;
  LUTchanged();
  return false;
}

bool Main::_Colorsc1_Action() { return ChooseColorTable(1); }
bool Main::_Colorsc2_Action() { return ChooseColorTable(2); }
bool Main::_Colorsc3_Action() { return ChooseColorTable(3); }
bool Main::_Colorsc4_Action() { return ChooseColorTable(4); }
bool Main::_Colorsc5_Action() { return ChooseColorTable(5); }
bool Main::_Colorsc6_Action() { return ChooseColorTable(6); }
bool Main::_Colorsc7_Action() { return ChooseColorTable(7); }
bool Main::_Colorsc8_Action() { return ChooseColorTable(8); }
bool Main::_Colorsc9_Action() { return ChooseColorTable(9); }
bool Main::_Colorsc10_Action() { return ChooseColorTable(10); }
bool Main::_Colorsc11_Action() { return ChooseColorTable(11); }
bool Main::_Colorsc12_Action() { return ChooseColorTable(12); }
bool Main::_Colorsc13_Action() { return ChooseColorTable(13); }
bool Main::_Colorsc14_Action() { return ChooseColorTable(14); }
bool Main::_Colorsc15_Action() { return ChooseColorTable(15); }
bool Main::_Colorsc16_Action() { return ChooseColorTable(16); }
bool Main::_Colorsc17_Action() { return ChooseColorTable(17); }
bool Main::_Colorsc18_Action() { return ChooseColorTable(18); }
bool Main::_Colorsc19_Action() { return ChooseColorTable(19); }
bool Main::_Colorsc20_Action() { return ChooseColorTable(20); }

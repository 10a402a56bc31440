// The composite: choice of the three species and computation of the picture.

#include <array>

#include "composite/Mixing.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Dialogs.h"

using namespace platform;

void WindowRGB::LoadData() {
  try {
    Main& main = Main::Instance();
    RGBready = false;
    ExistsArray.Redim(0);
    NameArray.Redim(-1);
    for (PopM& menu : popM) {
      menu.DeleteAllRows();
      menu.AddRow("-None-");
    }
    ExistsArray(0) = -1;
    for (std::int32_t i = 0; i <= main.TIFubound(); ++i) {
      if (!main.TIFexists(i)) continue;
      const String name = main.SpeciesLB.Cell(i, Main::kSpeciesColumn);
      ExistsArray.Append(i);
      NameArray.Append(name);
      for (PopM& menu : popM) menu.AddRow(name);
    }
    if (ExistsArray.Ubound() >= kChannels) {
      for (int i = 0; i < kChannels; ++i) popM[i].ListIndex(i + 1);
    } else {
      if (ExistsArray.Ubound() < 0) MsgBox("error in WindowRGB.open");
      for (PopM& menu : popM) menu.ListIndex(0);
    }
    RGBimage = NewPicture(main.InTIFwidth, main.InTIFheight, 32);
    drawRGBimage = NewPicture(main.InTIFwidth, main.InTIFheight, 32);
    RGBrgbsurface = RGBimage->RGBSurface();
    RGBready = true;
    UpdateRGB();
  } catch (...) {
    ReportFailure("exception in open", "LoadData, cluster " + Main::Instance().FrameName);
  }
}

void WindowRGB::UpdateRGB() {
  if (!RGBready) return;
  try {
    const Main& main = Main::Instance();
    std::array<PlaneView<const std::uint8_t>, kChannels> planes;
    std::array<Curve, kChannels> curves;
    for (std::size_t i = 0; i < kChannels; ++i) {
      // A channel without a species reads the first available one through a curve of zeros.
      const int row = popM[i].ListIndex();
      curves[i] = main.SpeciesCurve(ExistsArray(row), sliderRGB[i].Value(), CB_scale.Value());
      planes[i] = main.TIFarray.Plane(ExistsArray(row == 0 ? 1 : row));
    }
    MixPlanes(planes, curves, isRGB, RGBrgbsurface.Pixels());
    Canvas1.Refresh(true);
  } catch (...) {
    ReportFailure("exception in updatergb", "UpdateRGB, cluster " + Main::Instance().FrameName);
  }
}

#include "composite/WindowRGB.h"

#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "mainwindow/Main.h"
#include "mainwindow/WindowSizes.h"
#include "platform/widgets/Application.h"

using namespace platform;

WindowRGB::WindowRGB()
    : SingletonWindow({.title = "RGB Composite Image",
                       .width = 296,
                       .height = 502,
                       .minWidth = 296,
                       .minHeight = 430,
                       .visible = false,
                       .resizeable = false,
                       .menuBar = &Menu::Menu::Instance()}) {
  CreateControls();
  AddMenuHandlers();
}

void WindowRGB::CreateControls() {
  const auto LT = kLockLeftTop;
  Window::CreateControls({
      // control, name, left, top, width, height, locks, page, text, about, index
      {&sliderRGB[0], "SliderRGB", 167, 55, 90, 16, LT, kNoPage, "", "", 0},
      {&sliderRGB[1], "SliderRGB", 167, 83, 90, 16, LT, kNoPage, "", "", 1},
      {&PB_reset, "PB_reset", 179, 139, 69, 20, LT, kNoPage, "Reset", "Sets the three curves to 0"},
      {&sliderRGB[2], "SliderRGB", 167, 111, 90, 16, LT, kNoPage, "", "", 2},
      {&CB_scale, "CB_scale", 20, 139, 140, 20, LT, kNoPage, "Scale Up Colors",
       "Stretches each species to its own highest level"},
      {&popM[0], "PopM", 20, 51, 90, 20, LT, kNoPage, "", "", 0},
      {&Rectangle1, "Rectangle1", 139, 52, 16, 16, LT, kNoPage},
      {&Rectangle2, "Rectangle2", 139, 80, 16, 16, LT, kNoPage},
      {&Rectangle3, "Rectangle3", 139, 108, 16, 16, LT, kNoPage},
      {&StaticText1, "StaticText1", 114, 51, 20, 20, LT, kNoPage, "R"},
      {&popM[1], "PopM", 20, 79, 90, 20, LT, kNoPage, "", "", 1},
      {&StaticText2, "StaticText2", 114, 79, 20, 20, LT, kNoPage, "G"},
      {&popM[2], "PopM", 20, 107, 90, 20, LT, kNoPage, "", "", 2},
      {&StaticText3, "StaticText3", 114, 107, 20, 20, LT, kNoPage, "B"},
      {&Canvas1, "Canvas1", 20, 195, 256, 256, LT, kNoPage, "", "Composite"},
      {&sTslider[0], "STslider", 257, 51, 30, 20, kLockNone, kNoPage, "0", "", 0},
      {&sTslider[1], "STslider", 257, 79, 30, 20, kLockNone, kNoPage, "0", "", 1},
      {&sTslider[2], "STslider", 257, 107, 30, 20, kLockNone, kNoPage, "0", "", 2},
      {&PB_SaveImage, "PB_SaveImage", 176, 463, 100, 20, kLockRightBottom, kNoPage, "Save Image",
       "Saves the composite"},
      {&PB_close, "PB_close", 20, 462, 100, 20, kLockLeftBottom, kNoPage, "Close", "Hides the composite"},
      {&RGB_CMY, "RGB_CMY", 20, 14, 90, 20, LT, kNoPage, "", "Mixing of colors"},
      {&Lightness, "Lightness", 186, 14, 90, 16, LT, kNoPage, "", "Lightness: does nothing yet"},
  });
  const SliderSettings curve{
      .minimum = -20, .value = 0, .maximum = 20, .lineStep = 1, .pageStep = 1, .liveScroll = false};
  Lightness.Setup(curve);
  for (SliderRGB& slider : sliderRGB) slider.Setup(curve);
  Rectangle1.FillColor(RGB(255, 0, 0));
  Rectangle2.FillColor(RGB(0, 255, 0));
  Rectangle3.FillColor(RGB(0, 0, 255));
  NameChannels();
  RGB_CMY.AddRow("RGB");
  RGB_CMY.AddRow("CMY");
  RGB_CMY.ListIndex(0);

  for (int i = 0; i < kChannels; ++i) {
    sliderRGB[i].ValueChanged = [this, i] { SliderRGB_ValueChanged(i); };
    popM[i].Change = [this, i] { PopM_Change(i); };
  }
  PB_reset.Action = Handler(this, &WindowRGB::PB_reset_Action);
  CB_scale.Action = Handler(this, &WindowRGB::CB_scale_Action);
  RGB_CMY.Change = Handler(this, &WindowRGB::RGB_CMY_Change);
  Canvas1.Paint = Handler(this, &WindowRGB::Canvas1_Paint);
  PB_SaveImage.Action = Handler(this, &WindowRGB::PB_SaveImage_Action);
  PB_close.Action = Handler(this, &WindowRGB::PB_close_Action);
}

void WindowRGB::AddMenuHandlers() {
  AddMenuHandler("FileClose", Handler(this, &WindowRGB::_FileClose_Action));
  AddMenuHandler("FileSaveImage", Handler(this, &WindowRGB::_FileSaveImage_Action));
}

void WindowRGB::Event_Open() {
  Window256Height = Height();
  Window256Width = Width();
}

bool WindowRGB::Event_CancelClose(bool appQuitting) {
  if (appQuitting) return false;
  Hide();
  return true;
}

bool WindowRGB::_FileClose_Action() {
  Hide();
  return true;
}

bool WindowRGB::_FileSaveImage_Action() {
  SaveImage();
  return true;
}

void WindowRGB::PB_SaveImage_Action() { SaveImage(); }

void WindowRGB::PB_close_Action() { Hide(); }

void WindowRGB::SliderRGB_ValueChanged(int index) {
  sTslider[index].Text(Str(sliderRGB[index].Value()));
  sTslider[index].Refresh(true);
  if (RGBready) UpdateRGB();
}

void WindowRGB::PB_reset_Action() {
  RGBready = false;
  for (SliderRGB& slider : sliderRGB) slider.Value(0);
  RGBready = true;
  UpdateRGB();
}

void WindowRGB::CB_scale_Action() {
  CB_scale.Refresh(true);
  UpdateRGB();
}

void WindowRGB::PopM_Change(int index) {
  popM[index].Refresh(true);
  UpdateRGB();
}

void WindowRGB::RGB_CMY_Change() {
  isRGB = RGB_CMY.ListIndex() == 0;
  StaticText1.Text(isRGB ? "R" : "C");
  StaticText2.Text(isRGB ? "G" : "M");
  StaticText3.Text(isRGB ? "B" : "Y");
  Rectangle1.FillColor(isRGB ? RGB(255, 0, 0) : RGB(0, 255, 255));
  Rectangle2.FillColor(isRGB ? RGB(0, 255, 0) : RGB(255, 0, 255));
  Rectangle3.FillColor(isRGB ? RGB(0, 0, 255) : RGB(255, 255, 0));
  Title(isRGB ? "RGB Composite Image" : "CMY Composite Image");
  NameChannels();
  UpdateRGB();
}

/// Sets the accessible names of the channels' controls to the colours of this mode.
void WindowRGB::NameChannels() {
  const char* const names[2][kChannels] = {{"Cyan", "Magenta", "Yellow"}, {"Red", "Green", "Blue"}};
  RectControl* const swatches[] = {&Rectangle1, &Rectangle2, &Rectangle3};
  for (int i = 0; i < kChannels; ++i) {
    const String color = names[isRGB][i];
    sliderRGB[i].About(color + " curve");
    sTslider[i].About("Value of the " + Lowercase(color) + " curve");
    popM[i].About("Species in " + Lowercase(color));
    swatches[i]->About(color);
  }
}

void WindowRGB::Canvas1_Paint(Graphics& g) {
  if (RGBimage) Map().Paint(g);
}

void WindowRGB::WResize() {
  const Main& main = Main::Instance();
  const auto fit = FitComposite({Window256Width, Window256Height}, {Canvas1.Width(), Canvas1.Height()}, main.InTIFwidth,
                                main.InTIFheight, Globals::Zoom);
  if (!fit) return;
  Width(fit->window.width);
  Height(fit->window.height);
  Canvas1.Width(fit->canvas.width);
  Canvas1.Height(fit->canvas.height);
}

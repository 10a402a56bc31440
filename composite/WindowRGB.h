#pragma once

#include <cstdint>

#include "mainwindow/MapView.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Inputs.h"
#include "platform/widgets/Window.h"

/// Three species of the stack mixed into one picture.
///
///   +---------------------------------+
///   | [RGB v]             --Lightness-- |
///   | [PopM 0 v] R #  --SliderRGB 0--  0 |
///   | [PopM 1 v] G #  --SliderRGB 1--  0 |
///   | [PopM 2 v] B #  --SliderRGB 2--  0 |
///   | [ ] Scale Up Colors   (Reset)     |
///   |  Canvas1                          |
///   | (Close)            (Save Image)   |
///   +---------------------------------+
class WindowRGB : public platform::SingletonWindow<WindowRGB>, public MapWindow {
 public:
  WindowRGB();

  platform::Array<std::int32_t> ExistsArray;  ///< row of PopM to stack index; entry 0 is -1, for "-None-"
  platform::Ref<platform::Picture> RGBimage;  ///< the composite; nil until the first LoadData
  platform::RGBSurface RGBrgbsurface;         ///< pixel access to RGBimage
  bool RGBready = false;                      ///< false while code moves the controls
  std::int32_t Window256Height = 0;           ///< size of the window at opening, with its canvas of 256 by 256
  std::int32_t Window256Width = 0;
  platform::Array<platform::String> NameArray;    ///< names of the rows of PopM from row 1 on
  platform::Ref<platform::Picture> drawRGBimage;  ///< RGBimage with the drawing on it, as last painted
  bool isRGB = true;                              ///< RGB mode; CMY otherwise

  static constexpr int kChannels = 3;
  /// Control arrays; a control's position in its array is its Index.
  class SliderRGB : public platform::Slider {};
  class PopM : public platform::PopupMenu {};
  class STslider : public platform::StaticText {};

  platform::PopupMenu RGB_CMY;
  platform::Slider Lightness;  ///< has no effect yet
  PopM popM[kChannels];
  platform::StaticText StaticText1, StaticText2, StaticText3;
  platform::Rectangle Rectangle1, Rectangle2, Rectangle3;
  SliderRGB sliderRGB[kChannels];
  STslider sTslider[kChannels];
  platform::CheckBox CB_scale;
  platform::PushButton PB_reset;
  platform::Canvas Canvas1;
  platform::PushButton PB_close, PB_SaveImage;

  void Event_Open() override;
  bool Event_CancelClose(bool appQuitting) override;
  MapView Map() override { return {MapView::In::Composite, Canvas1, RGBimage, drawRGBimage}; }
  void WResize() override;
  /// Adopts the species and the size of the current stack, and computes the composite.
  void LoadData();
  /// Computes every pixel of the composite from the controls and the stack, and repaints it.
  void UpdateRGB();
  /// Saves the composite as a PNG file in the output folder.
  void SaveImage();

  void AddMenuHandlers();
  bool _FileClose_Action();
  bool _FileSaveImage_Action();

  void SliderRGB_ValueChanged(int index);
  void PopM_Change(int index);
  void PB_reset_Action();
  void CB_scale_Action();
  void RGB_CMY_Change();
  void Canvas1_Paint(platform::Graphics& g);
  void PB_SaveImage_Action();
  void PB_close_Action();

 private:
  void CreateControls();
  void NameChannels();
};

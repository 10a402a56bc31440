#pragma once

#include <cstdint>

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Window.h"

/// The modal dialog in which the user picks the drawing colour. The caller sets selectedcolor, calls ShowModal and, if
/// NotCancelled is then true, uses selectedcolor.
///
///   +-------------------------------+
///   | [ sample bar      ] | (Other...) |
///   | [ ] [ ] [ ] [ ]     |          |
///   | [ ] [ ] [ ] [ ]     | (Cancel) |
///   | [ ] [ ] [ ] [ ]     | (OK)     |
///   +-------------------------------+
class WindowSelectColor : public platform::SingletonWindow<WindowSelectColor> {
 public:
  WindowSelectColor();

  platform::Array<std::int32_t> color12;  ///< the fields' colours, upper bound 11; index is column * 3 + row
  platform::Color selectedcolor = platform::kBlack;
  bool NotCancelled = false;

  platform::Canvas Canvas1;
  platform::PushButton PBok, PBcancel, PBother;
  platform::Separator Separator1;

  void Event_Open() override;
  bool Event_CancelClose(bool appQuitting) override;
  void AddMenuHandlers() {}
  void OpenWindow() {}

  void Canvas1_Paint(platform::Graphics& g);
  bool Canvas1_MouseDown(int x, int y);
  void PBok_Action();
  void PBcancel_Action();
  void PBother_Action();

 private:
  void CreateControls();
};

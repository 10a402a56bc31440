#pragma once

#include "platform/widgets/Displays.h"
#include "platform/widgets/Window.h"

/// Names the program and its version. Closed by its close button, made anew at the next use.
class WindowAbout : public platform::SingletonWindow<WindowAbout> {
 public:
  WindowAbout();

  platform::StaticText StaticText1, StaticText2, StaticText3, StaticText4, StaticText5;

  void Event_Open() override;
  void AddMenuHandlers() {}

 private:
  void CreateControls();
};

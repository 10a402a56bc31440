#pragma once

#include "platform/widgets/Displays.h"
#include "platform/widgets/Window.h"

/// Shows the name and version of the program in an ordinary window. Closing destroys it; the next use recreates it.
class WindowAbout : public platform::SingletonWindow<WindowAbout> {
 public:
  WindowAbout();

  platform::StaticText StaticText1, StaticText2, StaticText3, StaticText4, StaticText5;

  void Event_Open() override;
  void AddMenuHandlers() {}

 private:
  void CreateControls();
};

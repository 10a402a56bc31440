#pragma once

#include <cstdint>

#include "platform/widgets/Buttons.h"
#include "platform/widgets/Listbox.h"
#include "platform/widgets/Window.h"

/// A list of numbered lines, for debugging. Shown at start if kShowDebuggingLog in App.cpp is true.
class TextLogWindow : public platform::SingletonWindow<TextLogWindow> {
 public:
  TextLogWindow();

  std::int32_t LineNumber = 0;  ///< number of the last line written

  platform::PushButton ClearButton;
  platform::Listbox ListBox1;

  /// Appends a line and keeps it in view.
  void Add(const platform::String& text);

  void Event_Open() override;
  void AddMenuHandlers() {}
  void ClearButton_Action();

 private:
  void CreateControls();
};

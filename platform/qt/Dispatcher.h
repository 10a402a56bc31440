#pragma once

#include <QElapsedTimer>
#include <deque>
#include <functional>

#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Application.h"

namespace platform {

/// State of the event thread.
struct Running {
  int depth = 0;     ///< nesting depth of handlers since the last nested loop
  int waiting = 0;   ///< handlers that wait for a nested loop to end
  int painting = 0;  ///< nesting depth of the toolkit's paints
  bool posted = false;
  bool reporting = false;
  bool updatingMenus = false;
  bool opened = false;  ///< the application's open event was raised
  bool quitting = false;
  int status = 0;
  bool pumped = false;       ///< since the handler began
  QElapsedTimer sinceBegin;  ///< since the outermost handler began, or continued after a nested loop
  QElapsedTimer sincePump;
  std::deque<std::function<void()>> soon;
  Application* application = nullptr;
};
extern Running running;

/// Schedules the waiting work to be run by the event loop.
void WakeUp();

}  // namespace platform

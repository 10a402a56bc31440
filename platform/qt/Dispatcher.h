#pragma once

#include <QElapsedTimer>
#include <deque>
#include <functional>

#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Application.h"

namespace platform {

/// State of the event thread.
struct Running {
  int depth = 0;     ///< handlers within one another since the last nested loop
  int waiting = 0;   ///< handlers below that wait for a nested loop
  int painting = 0;  ///< paints of the toolkit within one another
  bool posted = false;
  bool reporting = false;
  bool updatingMenus = false;
  bool opened = false;  ///< the application's open event has come
  bool quitting = false;
  int status = 0;
  bool pumped = false;       ///< since the handler began
  QElapsedTimer sinceBegin;  ///< of the outermost handler, or of its going on after a nested loop
  QElapsedTimer sincePump;
  std::deque<std::function<void()>> soon;
  Application* application = nullptr;
};
extern Running running;

/// Has the work that waits run by the event loop.
void WakeUp();

}  // namespace platform

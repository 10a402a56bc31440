#pragma once

#include <string>

#include "tools/xdriver/XScreen.h"

namespace xdriver {

struct Area {
  int x = 0, y = 0, width = 0, height = 0;  ///< content, on the screen
};

/// Whether a title equals `wanted`, or matches it if that is "/" and a regular expression.
bool TitleIs(const std::string& found, const std::string& wanted);

/// The topmost visible window of that title (TITLE of the usage), or 0.
Window FindWindow(XScreen& screen, const std::string& title);

/// The same, but throws Impossible if there is none.
Window NeedWindow(XScreen& screen, const std::string& title);

/// Throws Impossible if the window has vanished.
Area AreaOf(XScreen& screen, Window window);

/// Waits until the window is on top at the position on the screen; throws Impossible after 10 seconds.
void AwaitOnTop(XScreen& screen, Window window, int x, int y);

/// Has the window manager activate the window; false if it did not.
bool Activate(XScreen& screen, Window window);

/// Has the window manager move the content of the window to that position on the screen; false if it did not.
bool Put(XScreen& screen, Window window, int x, int y);

/// Pings the program as window managers do; false if it does not reply within the limit in seconds. A program that
/// handles events during its work also replies then.
bool Ping(XScreen& screen, Window window, double limit);

/// Waits until the window manager has handled all earlier events; false after the limit in seconds.
bool AwaitManager(XScreen& screen, double limit);

}  // namespace xdriver

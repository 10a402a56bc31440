#pragma once

#include <string>

#include "tools/xdriver/XScreen.h"

namespace xdriver {

struct Place {
  int x = 0, y = 0, width = 0, height = 0;  ///< content, on the screen
};

/// Whether a title is the wanted one, or matches it if that is "/" and a regular expression.
bool TitleIs(const std::string& found, const std::string& wanted);

/// The topmost window on the screen that bears the title (TITLE of the usage), or 0.
Window FindWindow(XScreen& screen, const std::string& title);

/// The same, but throws Impossible if there is none.
Window NeedWindow(XScreen& screen, const std::string& title);

/// Throws Impossible if the window has vanished.
Place PlaceOf(XScreen& screen, Window window);

/// Waits until the position on the screen shows the window; throws Impossible if it does not.
void AwaitOnTop(XScreen& screen, Window window, int x, int y);

/// Has the window manager give the window the keyboard; false if it did not.
bool Activate(XScreen& screen, Window window);

/// Has the window manager put the content of the window there on the screen; false if it did not.
bool Put(XScreen& screen, Window window, int x, int y);

/// Asks the program whether it is alive, as window managers do; false if it does not reply within the limit in seconds.
/// A program that handles events in between also replies in the midst of its work.
bool Ping(XScreen& screen, Window window, double limit);

/// Waits until the window manager has handled all earlier events; false if it has not within the limit in seconds.
bool AwaitManager(XScreen& screen, double limit);

}  // namespace xdriver

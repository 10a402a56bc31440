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

/// Has the window manager give the window the keyboard; false if it did not.
bool Activate(XScreen& screen, Window window);

/// Has the window manager put the content of the window there on the screen; false if it did not.
bool Put(XScreen& screen, Window window, int x, int y);

/// Waits until the program has handled all earlier input to the window; false if it has not within the limit in
/// seconds for each answer.
bool Ping(XScreen& screen, Window window, double limit);

}  // namespace xdriver

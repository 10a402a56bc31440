#pragma once

#include <X11/Xlib.h>

#include <chrono>
#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace xdriver {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// An action that cannot be attempted: no display, no such window, no such key.
struct Impossible : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// A connection to the display, with its properties and messages.
class XScreen {
 public:
  /// Throws Impossible if there is no display.
  XScreen();
  ~XScreen();
  XScreen(const XScreen&) = delete;
  XScreen& operator=(const XScreen&) = delete;

  Display* X() const { return display_; }
  Window Root() const { return root_; }

  /// The atom of that name, created if there is none.
  Atom Named(const std::string& name);

  /// The items of a property of 32-bit format (windows, atoms, numbers); empty if there is none.
  std::vector<unsigned long> Numbers(Window window, const std::string& property);

  /// Replaces a property by items of 32 bits.
  void SetNumbers(Window window, Atom property, Atom type, const std::vector<unsigned long>& numbers);

  /// The window's title; empty if it has none.
  std::string Title(Window window);

  /// Sends a message about `window` to `destination`; `data` holds up to five items of 32 bits.
  void Send(Window destination, Window window, const std::string& type, std::vector<unsigned long> data, long mask = 0);

  /// Passes events to `wanted` until it returns true; false after the limit in seconds.
  bool WaitForEvent(const std::function<bool(XEvent&)>& wanted, double limit);

 private:
  Display* display_;
  Window root_ = 0;
  std::map<std::string, Atom> atoms_;
};

/// Polls the condition, at least once, with a pause in between; false if it did not hold within the limit in seconds.
bool WaitUntil(const std::function<bool()>& condition, double limit,
               std::chrono::milliseconds pause = std::chrono::milliseconds(10));

}  // namespace xdriver

#pragma once

#include "platform/values/String.h"

namespace platform {

/// The part of a screen that is free of menu bar and dock, logical pixels.
class Screen {
 public:
  explicit Screen(int index) : index_(index) {}
  int AvailableLeft() const;
  int AvailableTop() const;
  int AvailableWidth() const;
  int AvailableHeight() const;

 private:
  int index_;
};

/// The state of a key now, at any time, also in the middle of a handler.
namespace Keyboard {
bool AsyncShiftKey();
/// Control is also the key of the shortcuts: from a shortcut on, a hold of it counts as released.
bool AsyncControlKey();
/// Whether the hold of Control that AsyncControlKey last returned true for became a shortcut.
bool ControlBecameShortcut();
bool AsyncOptionKey();
}  // namespace Keyboard

/// Sixtieths of a second since some fixed moment.
int Ticks();

}  // namespace platform

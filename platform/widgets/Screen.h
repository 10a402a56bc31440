#pragma once

#include "platform/values/String.h"

namespace platform {

/// The part of a screen not covered by menu bar and dock, in logical pixels.
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

/// The current state of a key, even while a handler runs.
namespace Keyboard {
bool AsyncShiftKey();
/// Control is also the key of the shortcuts: once a shortcut is pressed, it counts as released until it is pressed
/// again.
bool AsyncControlKey();
/// Whether the last press of Control that AsyncControlKey reported turned out to be for a shortcut.
bool ControlBecameShortcut();
bool AsyncOptionKey();
}  // namespace Keyboard

/// Sixtieths of a second since a fixed moment.
int Ticks();

}  // namespace platform

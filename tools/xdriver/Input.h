#pragma once

#include <string>
#include <vector>

#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// Moves the pointer to the position on the screen.
void MoveTo(XScreen& screen, int x, int y);

/// Presses or releases a button at the pointer. Like that of a key, the request is sent with the next one that is
/// flushed, so that all presses and releases of a double click arrive together, however busy the machine is.
void Button(XScreen& screen, unsigned button, bool down);

/// Moves the pointer to the position on the screen and presses the button there. Waits before if this could make a
/// double click with the last press of an earlier call.
void Press(XScreen& screen, unsigned button, int x, int y);

/// The key of a symbol, and whether that needs Shift.
struct FoundKey {
  KeyCode code = 0;
  bool shifted = false;
};

/// Finds "s", "Return" or "Control"; throws Impossible if the keyboard has no such key.
FoundKey FindKey(XScreen& screen, const std::string& key);

/// Presses or releases a key.
void Key(XScreen& screen, KeyCode code, bool down);

/// Splits "Control+Shift+s" into its keys.
std::vector<std::string> KeysOf(const std::string& combination);

/// Presses and releases "Control+Shift+s", adding Shift if the last symbol needs it.
void PressCombination(XScreen& screen, const std::string& combination);

/// Holds keys down for its lifetime.
class HeldKeys {
 public:
  HeldKeys(XScreen& screen, const std::vector<std::string>& keys);
  ~HeldKeys();
  HeldKeys(const HeldKeys&) = delete;
  HeldKeys& operator=(const HeldKeys&) = delete;

 private:
  XScreen& screen_;
  std::vector<KeyCode> codes_;
};

}  // namespace xdriver

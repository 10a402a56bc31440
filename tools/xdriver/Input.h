#pragma once

#include <string>
#include <vector>

#include "tools/xdriver/XScreen.h"

namespace xdriver {

/// Moves the pointer to the position on the screen.
void MoveTo(XScreen& screen, int x, int y);

/// Presses or releases a button of the pointer, where that is. As for keys, the request goes out with the next one that
/// waits, so that the halves of a click or of a double click come together, however busy the machine is.
void Button(XScreen& screen, unsigned button, bool down);

/// Moves the pointer to the position on the screen and presses the button there; later if the press could be taken for
/// the second half of a double click, with one of an earlier call as the first.
void Press(XScreen& screen, unsigned button, int x, int y);

/// The key that bears the symbol, and whether it does so only together with Shift.
struct KeyPlace {
  KeyCode code = 0;
  bool shifted = false;
};

/// Finds "s", "Return" or "Control"; throws Impossible if the keyboard has no such key.
KeyPlace FindKey(XScreen& screen, const std::string& key);

/// Presses or releases a key.
void Key(XScreen& screen, KeyCode code, bool down);

/// "Control+Shift+s" as its keys.
std::vector<std::string> KeysOf(const std::string& combination);

/// Presses and releases "Control+Shift+s", with Shift also where the last symbol needs it.
void PressCombination(XScreen& screen, const std::string& combination);

/// Keys that stay down as long as this lives.
class Held {
 public:
  Held(XScreen& screen, const std::vector<std::string>& keys);
  ~Held();
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  XScreen& screen_;
  std::vector<KeyCode> codes_;
};

}  // namespace xdriver

#include "tools/xdriver/Input.h"

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/extensions/XTest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <thread>

#include "tools/xdriver/Windows.h"

namespace xdriver {

void MoveTo(XScreen& screen, int x, int y) {
  XTestFakeMotionEvent(screen.X(), DefaultScreen(screen.X()), x, y, CurrentTime);
  XSync(screen.X(), False);
}

void Button(XScreen& screen, unsigned button, bool down) {
  XTestFakeButtonEvent(screen.X(), button, down, CurrentTime);
}

// A property of the root window holds the time and position of the last press, for the next call of the program.
void Press(XScreen& screen, unsigned button, int x, int y) {
  constexpr unsigned long kApart = 500;  // milliseconds; longer than any toolkit's default double-click time
  constexpr int kFar = 20;               // pixels; farther than any toolkit allows between two clicks of a double click
  const auto now = [] {
    return static_cast<unsigned long>(
               std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch()).count()) &
           0x7FFFFFFF;
  };
  const auto last = screen.Numbers(screen.Root(), "_XDRIVER_LAST_PRESS");
  const auto far = [](unsigned long before, int here) { return std::abs(static_cast<int>(before) - here) > kFar; };
  if (last.size() == 3 && now() >= last[0] && now() - last[0] < kApart && !far(last[1], x) && !far(last[2], y))
    std::this_thread::sleep_for(std::chrono::milliseconds(kApart - (now() - last[0])));
  MoveTo(screen, x, y);
  Button(screen, button, true);
  XSync(screen.X(), False);
  screen.SetNumbers(screen.Root(), screen.Named("_XDRIVER_LAST_PRESS"), XA_CARDINAL,
                    {now(), static_cast<unsigned long>(x), static_cast<unsigned long>(y)});
}

FoundKey FindKey(XScreen& screen, const std::string& key) {
  static const std::map<std::string, const char*> kShort = {
      {"Control", "Control_L"}, {"Shift", "Shift_L"}, {"Alt", "Alt_L"}, {"Meta", "Super_L"}};
  const auto found = kShort.find(key);
  // A printable character is its own symbol.
  const KeySym symbol = key.size() == 1 ? static_cast<unsigned char>(key[0])
                                        : XStringToKeysym(found == kShort.end() ? key.c_str() : found->second);
  const KeyCode code = symbol ? XKeysymToKeycode(screen.X(), symbol) : KeyCode{0};
  if (!code) throw Impossible("no key \"" + key + "\"");
  return {code, XkbKeycodeToKeysym(screen.X(), code, 0, 0) != symbol};
}

void Key(XScreen& screen, KeyCode code, bool down) { XTestFakeKeyEvent(screen.X(), code, down, CurrentTime); }

std::vector<std::string> KeysOf(const std::string& combination) {
  std::vector<std::string> keys(1);
  for (const char letter : combination) {
    if (letter == '+' && !keys.back().empty())
      keys.emplace_back();
    else
      keys.back() += letter;
  }
  return keys;
}

HeldKeys::HeldKeys(XScreen& screen, const std::vector<std::string>& keys) : screen_(screen) {
  for (const std::string& key : keys) codes_.push_back(FindKey(screen, key).code);
  for (const KeyCode code : codes_) Key(screen_, code, true);
}

HeldKeys::~HeldKeys() {
  for (auto code = codes_.rbegin(); code != codes_.rend(); ++code) Key(screen_, *code, false);
}

void PressCombination(XScreen& screen, const std::string& combination) {
  std::vector<std::string> keys = KeysOf(combination);
  const FoundKey last = FindKey(screen, keys.back());
  keys.pop_back();
  if (last.shifted && std::find(keys.begin(), keys.end(), "Shift") == keys.end()) keys.push_back("Shift");
  const HeldKeys held(screen, keys);
  Key(screen, last.code, true);
  Key(screen, last.code, false);
}

}  // namespace xdriver

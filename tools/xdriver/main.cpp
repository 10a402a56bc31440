/// Drives a program on an X display as a person would: finds windows by title, moves the pointer, presses buttons and
/// keys, drags files onto a window from a source of its own, and takes pictures of the screen. Each call is one action;
/// see kUsage. Positions are relative to the content of the window, in pixels.

#include <X11/Xlib.h>

#include <cstddef>
#include <cstdio>
#include <exception>
#include <string>
#include <utility>
#include <vector>

#include "tools/xdriver/Bitmap.h"
#include "tools/xdriver/DragSource.h"
#include "tools/xdriver/Input.h"
#include "tools/xdriver/Windows.h"
#include "tools/xdriver/XScreen.h"

namespace xdriver {
namespace {

constexpr const char* kUsage = R"(xdriver ACTION...
  list                                  titles and places of all windows, topmost last
  wait TITLE [SECONDS]                  until a window of that title is on the screen; prints its number
  gone TITLE [SECONDS]                  until there is none
  geometry TITLE                        x y width height of its content on the screen
  raise | activate | close TITLE        activate brings back an icon if it gets a number; close as the
                                        frame's button does
  place TITLE X Y                       puts its content there on the screen
  idle TITLE [SECONDS]                  until the program and the window manager have handled all earlier input, all
                                        that changed is on the screen, and no work goes on; TITLE names a
                                        window that takes files except while work goes on. With 0 SECONDS asks once.
  ping TITLE [SECONDS]                  until the program replies that it is alive, as it does also during work
  move TITLE X Y                        the pointer
  click TITLE X Y [BUTTON [COUNT]]      COUNT 2 is a double click; two calls never make one
  press TITLE X Y [BUTTON]              and hold
  release [BUTTON]                      where the pointer is
  key COMBINATION...                    such as s, Return, Control+Shift+s
  keydown | keyup KEY
  drop [--mods A+B] TITLE X Y FILE...   a real drag of the files from a window of our own
  shot [--half] TITLE FILE [X Y WIDTH HEIGHT]
                                        picture of what is on the screen there, as PNG; at half its
                                        size and with fewer colours, for a small file
  shows TITLE X Y PICTURE [SECONDS]     until the window shows exactly the picture of that PNG file there
  differs TITLE X Y PICTURE [SECONDS]   until it does not
  frames TITLE X Y WIDTH HEIGHT COUNT [SECONDS]
                                        prints "watching"; until the picture there has changed that often
TITLE is the whole title, "/" and a regular expression for all of it, the number of a window (0x...), or "root" for
the screen.
Ends with 0 when done, 1 when refused or not within the limit, 2 when it cannot be tried.
)";

/// The words after the action's name; a missing one that has no default ends the call with the usage.
class Words {
 public:
  explicit Words(std::vector<std::string> words) : words_(std::move(words)) {}
  bool More() const { return next_ < words_.size(); }
  std::string Text() {
    if (!More()) throw Impossible(std::string("a word is missing\n") + kUsage);
    return words_[next_++];
  }
  int Number() { return std::stoi(Text()); }
  int Number(int otherwise) { return More() ? Number() : otherwise; }
  std::vector<std::string> Rest() { return {words_.begin() + static_cast<std::ptrdiff_t>(next_), words_.end()}; }

 private:
  std::vector<std::string> words_;
  std::size_t next_ = 0;
};

/// Reads TITLE X Y; the result is on the screen.
struct Target {
  Window window = 0;
  int x = 0, y = 0;
};

Target ReadTarget(XScreen& screen, Words& words) {
  Target target;
  target.window = NeedWindow(screen, words.Text());
  const Place place = PlaceOf(screen, target.window);
  target.x = place.x + words.Number();
  target.y = place.y + words.Number();
  return target;
}

/// Reads TITLE X Y for the pointer: the window must be on top there.
Target ReadPointed(XScreen& screen, Words& words) {
  const Target target = ReadTarget(screen, words);
  AwaitOnTop(screen, target.window, target.x, target.y);
  return target;
}

// While the program works it refuses files, even where it lets the toolkit handle events in between. A drag that it
// accepts has therefore come through its own event loop, after all earlier events. What that loop still had to do then
// is done at the second acceptance, also for windows that the manager shows in between; the third comes after the
// repaint of these. An exposed pixel makes the toolkit paint at once whatever it had put off.
bool AwaitIdle(XScreen& screen, Window window, double limit) {
  constexpr int kRounds = 3;
  constexpr double kReply = 60;  // seconds
  DragSource source(screen, {"any.tif"});
  return WaitUntil(
      [&] {
        for (int round = 0; round < kRounds; ++round) {
          if (!AwaitManager(screen, kReply)) throw Impossible("the window manager does not reply");
          for (const Window shown : screen.Numbers(screen.Root(), "_NET_CLIENT_LIST"))
            XClearArea(screen.X(), shown, 0, 0, 1, 1, True);
          if (!source.Accepted(window, kReply)) return false;
        }
        return true;
      },
      limit);
}

void List(XScreen& screen) {
  for (const Window window : screen.Numbers(screen.Root(), "_NET_CLIENT_LIST_STACKING")) {
    const Place place = PlaceOf(screen, window);
    std::printf("%d %d %d %d %s\n", place.x, place.y, place.width, place.height, screen.Title(window).c_str());
  }
}

bool DropFiles(XScreen& screen, Words& words) {
  std::string title = words.Text(), keys;
  if (title == "--mods") {
    keys = words.Text();
    title = words.Text();
  }
  const Window window = NeedWindow(screen, title);
  const Place place = PlaceOf(screen, window);
  const int x = place.x + words.Number(), y = place.y + words.Number();
  const Held held(screen, keys.empty() ? std::vector<std::string>() : KeysOf(keys));
  const bool taken = DragSource(screen, words.Rest()).DragTo(window, x, y);
  std::puts(taken ? "accepted" : "refused");
  return taken;
}

/// Does the action; false if it was refused or did not come about within its limit.
bool Act(XScreen& screen, const std::string& action, Words& words) {
  constexpr int kLimit = 30;  // seconds, where the call names none
  if (action == "list") {
    List(screen);
  } else if (action == "wait" || action == "gone") {
    const std::string title = words.Text();
    Window window = 0;
    const bool reached = WaitUntil(
        [&] {
          window = FindWindow(screen, title);
          return (window != 0) == (action == "wait");
        },
        words.Number(kLimit));
    if (window) std::printf("0x%lx\n", window);
    return reached;
  } else if (action == "geometry") {
    const Place place = PlaceOf(screen, NeedWindow(screen, words.Text()));
    std::printf("%d %d %d %d\n", place.x, place.y, place.width, place.height);
  } else if (action == "raise") {
    XRaiseWindow(screen.X(), NeedWindow(screen, words.Text()));
    XSync(screen.X(), False);
  } else if (action == "activate") {
    const std::string title = words.Text();
    return Activate(screen, title.starts_with("0x") ? std::stoul(title, nullptr, 16) : NeedWindow(screen, title));
  } else if (action == "place") {
    const Window window = NeedWindow(screen, words.Text());
    const int x = words.Number();
    return Put(screen, window, x, words.Number());
  } else if (action == "close") {
    const Window window = NeedWindow(screen, words.Text());
    screen.Send(window, window, "WM_PROTOCOLS", {screen.Named("WM_DELETE_WINDOW"), CurrentTime});
  } else if (action == "idle") {
    const Window window = NeedWindow(screen, words.Text());
    return AwaitIdle(screen, window, words.Number(kLimit));
  } else if (action == "ping") {
    const Window window = NeedWindow(screen, words.Text());
    return Ping(screen, window, words.Number(kLimit));
  } else if (action == "move") {
    const Target target = ReadPointed(screen, words);
    MoveTo(screen, target.x, target.y);
  } else if (action == "click") {
    const Target target = ReadPointed(screen, words);
    const auto button = static_cast<unsigned>(words.Number(1));
    Press(screen, button, target.x, target.y);
    for (int count = words.Number(1); count > 1; --count) {
      Button(screen, button, false);
      Button(screen, button, true);
    }
    Button(screen, button, false);
  } else if (action == "press") {
    const Target target = ReadPointed(screen, words);
    Press(screen, static_cast<unsigned>(words.Number(1)), target.x, target.y);
  } else if (action == "release") {
    Button(screen, static_cast<unsigned>(words.Number(1)), false);
  } else if (action == "key") {
    for (const std::string& combination : words.Rest()) PressCombination(screen, combination);
  } else if (action == "keydown" || action == "keyup") {
    Key(screen, FindKey(screen, words.Text()).code, action == "keydown");
  } else if (action == "drop") {
    return DropFiles(screen, words);
  } else if (action == "shot") {
    std::string title = words.Text();
    const bool half = title == "--half";
    if (half) title = words.Text();
    Place place = PlaceOf(screen, NeedWindow(screen, title));
    const std::string path = words.Text();
    if (words.More()) {
      place.x += words.Number();
      place.y += words.Number();
      place.width = words.Number();
      place.height = words.Number();
    }
    const Bitmap shot = Shoot(screen, place);
    WritePng(half ? Halved(shot) : shot, path);
  } else if (action == "shows" || action == "differs") {
    const Target at = ReadTarget(screen, words);
    const Bitmap wanted = ReadPng(words.Text());
    Bitmap shown;
    const bool reached = WaitUntil(
        [&] {
          shown = Shoot(screen, {at.x, at.y, wanted.width, wanted.height});
          return (shown == wanted) == (action == "shows");
        },
        words.Number(kLimit));
    if (!reached && action == "shows") ReportDifference(shown, wanted);
    return reached;
  } else if (action == "frames") {
    const Window window = NeedWindow(screen, words.Text());
    Place inside;
    for (int* number : {&inside.x, &inside.y, &inside.width, &inside.height}) *number = words.Number();
    const int count = words.Number();
    return AwaitFrames(screen, window, inside, count, words.Number(kLimit));
  } else {
    throw Impossible(std::string("no such action\n") + kUsage);
  }
  return true;
}

}  // namespace
}  // namespace xdriver

int main(int argc, char** argv) {
  try {
    xdriver::Words words(std::vector<std::string>(argv + 1, argv + argc));
    const std::string action = words.Text();
    xdriver::XScreen screen;
    return xdriver::Act(screen, action, words) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "xdriver: %s\n", failure.what());
    return 2;
  }
}

/// Drives a program on an X display as a person would: finds windows by title, moves the pointer, presses buttons and
/// keys, drags files onto a window, takes screenshots. Each call is one action; see kUsage. Positions are relative to
/// the content of the window, in pixels.

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
  list                                  x y width height and title of all windows, topmost last
  wait TITLE [SECONDS]                  until a window of that title is on the screen; prints its number
  gone TITLE [SECONDS]                  until there is none
  geometry TITLE                        x y width height of its content on the screen
  raise | activate | close TITLE        activate restores a minimised window if it gets a number; close
                                        acts like the frame's button
  place TITLE X Y                       moves its content there on the screen
  idle TITLE [SECONDS]                  until the program and the window manager have handled all earlier
                                        input and the screen shows the result; TITLE names a window that
                                        accepts files except during work. With 0 SECONDS checks once.
  ping TITLE [SECONDS]                  until the program replies to a ping, as it does also during its work
  move TITLE X Y                        the pointer
  click TITLE X Y [BUTTON [COUNT]]      COUNT 2 is a double click; two calls never make one
  press TITLE X Y [BUTTON]              and hold
  release [BUTTON]                      where the pointer is
  key COMBINATION...                    such as s, Return, Control+Shift+s
  keydown | keyup KEY
  drop [--mods A+B] TITLE X Y FILE...   drags the files onto it from another window
  shot [--half] TITLE FILE [X Y WIDTH HEIGHT]
                                        a screenshot, as PNG; with --half at half the size and with
                                        fewer colours, for a small file
  shows TITLE X Y FILE [SECONDS]        until the window shows exactly the picture of that PNG file there
  differs TITLE X Y FILE [SECONDS]      until it does not
  frames TITLE X Y WIDTH HEIGHT COUNT [SECONDS]
                                        prints "watching"; until that area has changed COUNT times
TITLE is the whole title, "/" and a regular expression for all of it, the number of a window (0x...), or "root" for
the screen.
Exit status: 0 done, 1 refused or not within the limit, 2 it cannot be attempted.
)";

/// The arguments after the action's name; reading a missing one that has no default throws Impossible with the usage.
class Arguments {
 public:
  explicit Arguments(std::vector<std::string> arguments) : arguments_(std::move(arguments)) {}
  bool More() const { return next_ < arguments_.size(); }
  std::string Text() {
    if (!More()) throw Impossible(std::string("an argument is missing\n") + kUsage);
    return arguments_[next_++];
  }
  int Number() { return std::stoi(Text()); }
  int Number(int otherwise) { return More() ? Number() : otherwise; }
  std::vector<std::string> Rest() {
    return {arguments_.begin() + static_cast<std::ptrdiff_t>(next_), arguments_.end()};
  }

 private:
  std::vector<std::string> arguments_;
  std::size_t next_ = 0;
};

/// A window and a position on the screen.
struct Target {
  Window window = 0;
  int x = 0, y = 0;
};

/// Reads TITLE X Y.
Target ReadTarget(XScreen& screen, Arguments& arguments) {
  Target target;
  target.window = NeedWindow(screen, arguments.Text());
  const Area area = AreaOf(screen, target.window);
  target.x = area.x + arguments.Number();
  target.y = area.y + arguments.Number();
  return target;
}

/// The same for the pointer: waits until the window is on top there.
Target ReadPointed(XScreen& screen, Arguments& arguments) {
  const Target target = ReadTarget(screen, arguments);
  AwaitOnTop(screen, target.window, target.x, target.y);
  return target;
}

// The program refuses files while a handler runs, even if the toolkit handles events during that. A drag that it
// accepts has therefore come through its event loop, after all earlier events. The second acceptance comes after the
// work that was pending at the first, such as showing windows, the third after their repaint. Exposing a pixel makes
// the toolkit paint at once what it had deferred.
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
    const Area area = AreaOf(screen, window);
    std::printf("%d %d %d %d %s\n", area.x, area.y, area.width, area.height, screen.Title(window).c_str());
  }
}

bool DropFiles(XScreen& screen, Arguments& arguments) {
  std::string title = arguments.Text(), keys;
  if (title == "--mods") {
    keys = arguments.Text();
    title = arguments.Text();
  }
  const Window window = NeedWindow(screen, title);
  const Area area = AreaOf(screen, window);
  const int x = area.x + arguments.Number(), y = area.y + arguments.Number();
  const HeldKeys held(screen, keys.empty() ? std::vector<std::string>() : KeysOf(keys));
  const bool taken = DragSource(screen, arguments.Rest()).DragTo(window, x, y);
  std::puts(taken ? "accepted" : "refused");
  return taken;
}

/// Performs the action; false if it was refused or not done within its limit.
bool Act(XScreen& screen, const std::string& action, Arguments& arguments) {
  constexpr int kLimit = 30;  // seconds, where the call names none
  if (action == "list") {
    List(screen);
  } else if (action == "wait" || action == "gone") {
    const std::string title = arguments.Text();
    Window window = 0;
    const bool reached = WaitUntil(
        [&] {
          window = FindWindow(screen, title);
          return (window != 0) == (action == "wait");
        },
        arguments.Number(kLimit));
    if (window) std::printf("0x%lx\n", window);
    return reached;
  } else if (action == "geometry") {
    const Area area = AreaOf(screen, NeedWindow(screen, arguments.Text()));
    std::printf("%d %d %d %d\n", area.x, area.y, area.width, area.height);
  } else if (action == "raise") {
    XRaiseWindow(screen.X(), NeedWindow(screen, arguments.Text()));
    XSync(screen.X(), False);
  } else if (action == "activate") {
    const std::string title = arguments.Text();
    return Activate(screen, title.starts_with("0x") ? std::stoul(title, nullptr, 16) : NeedWindow(screen, title));
  } else if (action == "place") {
    const Window window = NeedWindow(screen, arguments.Text());
    const int x = arguments.Number();
    return Put(screen, window, x, arguments.Number());
  } else if (action == "close") {
    const Window window = NeedWindow(screen, arguments.Text());
    screen.Send(window, window, "WM_PROTOCOLS", {screen.Named("WM_DELETE_WINDOW"), CurrentTime});
  } else if (action == "idle") {
    const Window window = NeedWindow(screen, arguments.Text());
    return AwaitIdle(screen, window, arguments.Number(kLimit));
  } else if (action == "ping") {
    const Window window = NeedWindow(screen, arguments.Text());
    return Ping(screen, window, arguments.Number(kLimit));
  } else if (action == "move") {
    const Target target = ReadPointed(screen, arguments);
    MoveTo(screen, target.x, target.y);
  } else if (action == "click") {
    const Target target = ReadPointed(screen, arguments);
    const auto button = static_cast<unsigned>(arguments.Number(1));
    Press(screen, button, target.x, target.y);
    for (int count = arguments.Number(1); count > 1; --count) {
      Button(screen, button, false);
      Button(screen, button, true);
    }
    Button(screen, button, false);
  } else if (action == "press") {
    const Target target = ReadPointed(screen, arguments);
    Press(screen, static_cast<unsigned>(arguments.Number(1)), target.x, target.y);
  } else if (action == "release") {
    Button(screen, static_cast<unsigned>(arguments.Number(1)), false);
  } else if (action == "key") {
    for (const std::string& combination : arguments.Rest()) PressCombination(screen, combination);
  } else if (action == "keydown" || action == "keyup") {
    Key(screen, FindKey(screen, arguments.Text()).code, action == "keydown");
  } else if (action == "drop") {
    return DropFiles(screen, arguments);
  } else if (action == "shot") {
    std::string title = arguments.Text();
    const bool half = title == "--half";
    if (half) title = arguments.Text();
    Area area = AreaOf(screen, NeedWindow(screen, title));
    const std::string path = arguments.Text();
    if (arguments.More()) {
      area.x += arguments.Number();
      area.y += arguments.Number();
      area.width = arguments.Number();
      area.height = arguments.Number();
    }
    const Bitmap shot = Shoot(screen, area);
    WritePng(half ? Halved(shot) : shot, path);
  } else if (action == "shows" || action == "differs") {
    const Target at = ReadTarget(screen, arguments);
    const Bitmap wanted = ReadPng(arguments.Text());
    Bitmap shown;
    const bool reached = WaitUntil(
        [&] {
          shown = Shoot(screen, {at.x, at.y, wanted.width, wanted.height});
          return (shown == wanted) == (action == "shows");
        },
        arguments.Number(kLimit));
    if (!reached && action == "shows") ReportDifference(shown, wanted);
    return reached;
  } else if (action == "frames") {
    const Window window = NeedWindow(screen, arguments.Text());
    Area inside;
    for (int* number : {&inside.x, &inside.y, &inside.width, &inside.height}) *number = arguments.Number();
    const int count = arguments.Number();
    return AwaitFrames(screen, window, inside, count, arguments.Number(kLimit));
  } else {
    throw Impossible(std::string("no such action\n") + kUsage);
  }
  return true;
}

}  // namespace
}  // namespace xdriver

int main(int argc, char** argv) {
  try {
    xdriver::Arguments arguments(std::vector<std::string>(argv + 1, argv + argc));
    const std::string action = arguments.Text();
    xdriver::XScreen screen;
    return xdriver::Act(screen, action, arguments) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "xdriver: %s\n", failure.what());
    return 2;
  }
}

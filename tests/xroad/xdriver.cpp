/// Drives a program on an X display as a person would: finds windows by title, moves the pointer, presses buttons and
/// keys, drags files onto a window from a source of its own, and takes pictures of the screen. Each call is one action;
/// see kUsage. Positions are relative to the content of the window, in pixels.

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <png.h>
#include <poll.h>

#include <algorithm>
#include <cctype>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <functional>
#include <map>
#include <regex>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

constexpr const char* kUsage = R"(xdriver ACTION...
  list                                  titles and places of all windows, topmost last
  wait TITLE [SECONDS]                  until a window of that title is on the screen; prints its number
  gone TITLE [SECONDS]                  until there is none
  geometry TITLE                        x y width height of its content on the screen
  raise | activate | close TITLE        close as its frame's button does
  place TITLE X Y                       puts its content there on the screen
  ping TITLE [SECONDS]                  until the program has handled all earlier input
  move TITLE X Y                        the pointer
  click TITLE X Y [BUTTON [COUNT]]      COUNT 2 is a double click; two calls never make one
  press TITLE X Y [BUTTON]              and hold
  release [BUTTON]                      where the pointer is
  drag TITLE X Y X2 Y2 [BUTTON]         press, move in steps, release
  key COMBINATION...                    such as s, Return, Control+Shift+s
  keydown | keyup KEY
  drop [--mods A+B] TITLE X Y FILE...   a real drag of the files from a window of our own
  shot [--half] TITLE FILE [X Y WIDTH HEIGHT]
                                        picture of what is on the screen there, as PNG; at half its
                                        size and with fewer colours, for a small file
  shows TITLE X Y PICTURE [SECONDS]     until the window shows exactly the picture of that PNG file there
  differs TITLE X Y PICTURE [SECONDS]   until it does not
  frames TITLE X Y WIDTH HEIGHT END [SECONDS]
                                        counts the pictures that follow one another there until the title is END
TITLE is the whole title, "/" and a regular expression for all of it, the number of a window (0x...), or "root" for
the screen.
Ends with 0 when done, 1 when refused or not within the limit, 2 when it cannot be tried.
)";

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

/// What cannot be tried: no display, no such window, no such key.
struct Impossible : std::runtime_error {
  using std::runtime_error::runtime_error;
};

struct Place {
  int x = 0, y = 0, width = 0, height = 0;  ///< content, on the screen
};

/// A connection to the display with the small change that all actions need.
class XScreen {
 public:
  XScreen() : display_(XOpenDisplay(nullptr)) {
    if (!display_) throw Impossible("no display");
    // A window may vanish between two requests about it; the requests fail then and nothing else does.
    XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
    root_ = DefaultRootWindow(display_);
  }
  ~XScreen() { XCloseDisplay(display_); }
  XScreen(const XScreen&) = delete;
  XScreen& operator=(const XScreen&) = delete;

  Display* X() const { return display_; }
  Window Root() const { return root_; }

  Atom Named(const std::string& name) {
    Atom& atom = atoms_[name];
    if (!atom) atom = XInternAtom(display_, name.c_str(), False);
    return atom;
  }

  /// The items of a property of 32-bit format (windows, atoms, numbers); empty if there is none.
  std::vector<unsigned long> Numbers(Window window, const std::string& property) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0, rest = 0;
    unsigned char* data = nullptr;
    std::vector<unsigned long> numbers;
    if (XGetWindowProperty(display_, window, Named(property), 0, 1 << 16, False, AnyPropertyType, &type, &format,
                           &count, &rest, &data) == Success &&
        format == 32) {
      const auto* values = reinterpret_cast<unsigned long*>(data);
      numbers.assign(values, values + count);
    }
    if (data) XFree(data);
    return numbers;
  }

  void SetNumbers(Window window, Atom property, Atom type, const std::vector<unsigned long>& numbers) {
    XChangeProperty(display_, window, property, type, 32, PropModeReplace,
                    reinterpret_cast<const unsigned char*>(numbers.data()), static_cast<int>(numbers.size()));
  }

  std::string Title(Window window) {
    for (const char* property : {"_NET_WM_NAME", "WM_NAME"}) {
      XTextProperty text;
      if (!XGetTextProperty(display_, window, &text, Named(property)) || !text.value) continue;
      const std::string title(reinterpret_cast<char*>(text.value), text.nitems);
      XFree(text.value);
      return title;
    }
    return {};
  }

  /// Sends a message about `window` to `destination`.
  void Send(Window destination, Window window, const std::string& type, std::vector<unsigned long> data,
            long mask = 0) {
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = Named(type);
    event.xclient.format = 32;
    data.resize(5);
    for (std::size_t i = 0; i < 5; ++i) event.xclient.data.l[i] = static_cast<long>(data[i]);
    XSendEvent(display_, destination, False, mask, &event);
    XFlush(display_);
  }

  /// Hands events to `wanted` until it takes one; false if it took none within the limit.
  bool WaitForEvent(const std::function<bool(XEvent&)>& wanted, double limit) {
    const auto end = Clock::now() + Seconds(limit);
    for (;;) {
      while (XPending(display_)) {
        XEvent event;
        XNextEvent(display_, &event);
        if (wanted(event)) return true;
      }
      const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
      if (left.count() <= 0) return false;
      pollfd connection{ConnectionNumber(display_), POLLIN, 0};
      poll(&connection, 1, static_cast<int>(left.count()));
    }
  }

 private:
  Display* display_;
  Window root_ = 0;
  std::map<std::string, Atom> atoms_;
};

bool WaitUntil(const std::function<bool()>& condition, double limit,
               std::chrono::milliseconds pause = std::chrono::milliseconds(10)) {
  const auto end = Clock::now() + Seconds(limit);
  while (!condition()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(pause);
  }
  return true;
}

// Windows

bool TitleIs(const std::string& found, const std::string& wanted) {
  return wanted.starts_with('/') ? std::regex_match(found, std::regex(wanted.substr(1))) : found == wanted;
}

/// The topmost window on the screen that bears the title, or 0.
Window FindWindow(XScreen& screen, const std::string& title) {
  if (title == "root") return screen.Root();
  const Window number = title.starts_with("0x") ? std::stoul(title, nullptr, 16) : 0;
  const auto windows = screen.Numbers(screen.Root(), "_NET_CLIENT_LIST_STACKING");
  for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(screen.X(), *window, &attributes) || attributes.map_state != IsViewable) continue;
    if (number ? *window == number : TitleIs(screen.Title(*window), title)) return *window;
  }
  return 0;
}

Window NeedWindow(XScreen& screen, const std::string& title) {
  const Window window = FindWindow(screen, title);
  if (!window) throw Impossible("no window \"" + title + "\"");
  return window;
}

Place PlaceOf(XScreen& screen, Window window) {
  Place place;
  XWindowAttributes attributes;
  Window child;
  if (!XGetWindowAttributes(screen.X(), window, &attributes)) throw Impossible("the window vanished");
  XTranslateCoordinates(screen.X(), window, screen.Root(), 0, 0, &place.x, &place.y, &child);
  place.width = attributes.width;
  place.height = attributes.height;
  return place;
}

/// Asks the window manager for something about the window.
void AskManager(XScreen& screen, Window window, const std::string& type, const std::vector<unsigned long>& data) {
  screen.Send(screen.Root(), window, type, data, SubstructureRedirectMask | SubstructureNotifyMask);
}

bool Activate(XScreen& screen, Window window) {
  AskManager(screen, window, "_NET_ACTIVE_WINDOW", {2, CurrentTime, 0});
  return WaitUntil(
      [&] { return screen.Numbers(screen.Root(), "_NET_ACTIVE_WINDOW") == std::vector<unsigned long>{window}; }, 5);
}

/// The window manager keeps the content where it is told, whatever the frame around it.
bool Put(XScreen& screen, Window window, int x, int y) {
  constexpr unsigned long kStaticGravity = 10, kHasX = 1 << 8, kHasY = 1 << 9, kFromPager = 2 << 12;
  AskManager(
      screen, window, "_NET_MOVERESIZE_WINDOW",
      {kStaticGravity | kHasX | kHasY | kFromPager, static_cast<unsigned long>(x), static_cast<unsigned long>(y)});
  return WaitUntil(
      [&] {
        const Place place = PlaceOf(screen, window);
        return place.x == x && place.y == y;
      },
      5);
}

/// One ping may be answered while input that came with it still waits; at the second answer that has been handled.
bool Ping(XScreen& screen, Window window, double limit) {
  XSelectInput(screen.X(), screen.Root(), StructureNotifyMask | SubstructureNotifyMask);
  const auto start = static_cast<unsigned long>(Clock::now().time_since_epoch().count()) & 0x3FFFFFFF;
  for (unsigned long stamp = start; stamp < start + 2; ++stamp) {
    screen.Send(window, window, "WM_PROTOCOLS", {screen.Named("_NET_WM_PING"), stamp, window});
    const auto answered = [&](XEvent& event) {
      return event.type == ClientMessage && event.xclient.message_type == screen.Named("WM_PROTOCOLS") &&
             event.xclient.window == screen.Root() && static_cast<unsigned long>(event.xclient.data.l[1]) == stamp;
    };
    if (!screen.WaitForEvent(answered, limit)) return false;
  }
  return true;
}

// Pointer and keys

void MoveTo(XScreen& screen, int x, int y) {
  XTestFakeMotionEvent(screen.X(), DefaultScreen(screen.X()), x, y, CurrentTime);
  XSync(screen.X(), False);
}

void Button(XScreen& screen, unsigned button, bool down) {
  XTestFakeButtonEvent(screen.X(), button, down, CurrentTime);
  XSync(screen.X(), False);
}

/// Waits until a press can no longer pass for the second half of a double click with a press of an earlier call. Time
/// and place of the last press are kept at the root window.
void KeepClicksApart(XScreen& screen, int x, int y) {
  constexpr unsigned long kApart = 500;  // milliseconds; longer than the double-click time of any toolkit's default
  constexpr int kFar = 20;               // pixels; farther than any toolkit lets the halves of a double click be
  const auto now = [] {
    return static_cast<unsigned long>(
               std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now().time_since_epoch()).count()) &
           0x7FFFFFFF;
  };
  const auto last = screen.Numbers(screen.Root(), "_XDRIVER_LAST_PRESS");
  const auto far = [](unsigned long before, int place) { return std::abs(static_cast<int>(before) - place) > kFar; };
  if (last.size() == 3 && now() >= last[0] && now() - last[0] < kApart && !far(last[1], x) && !far(last[2], y))
    std::this_thread::sleep_for(std::chrono::milliseconds(kApart - (now() - last[0])));
  screen.SetNumbers(screen.Root(), screen.Named("_XDRIVER_LAST_PRESS"), XA_CARDINAL,
                    {now(), static_cast<unsigned long>(x), static_cast<unsigned long>(y)});
}

/// The key that bears the symbol, and whether it does so only together with Shift.
struct KeyPlace {
  KeyCode code = 0;
  bool shifted = false;
};

KeyPlace FindKey(XScreen& screen, const std::string& key) {
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

void Key(XScreen& screen, KeyCode code, bool down) {
  XTestFakeKeyEvent(screen.X(), code, down, CurrentTime);
  XSync(screen.X(), False);
}

/// "Control+Shift+s" as its keys.
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

/// Keys that stay down as long as this lives.
class Held {
 public:
  Held(XScreen& screen, const std::vector<std::string>& keys) : screen_(screen) {
    for (const std::string& key : keys) codes_.push_back(FindKey(screen, key).code);
    for (const KeyCode code : codes_) Key(screen_, code, true);
  }
  ~Held() {
    for (auto code = codes_.rbegin(); code != codes_.rend(); ++code) Key(screen_, *code, false);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  XScreen& screen_;
  std::vector<KeyCode> codes_;
};

void PressCombination(XScreen& screen, const std::string& combination) {
  std::vector<std::string> keys = KeysOf(combination);
  const KeyPlace last = FindKey(screen, keys.back());
  keys.pop_back();
  if (last.shifted && std::find(keys.begin(), keys.end(), "Shift") == keys.end()) keys.push_back("Shift");
  const Held held(screen, keys);
  Key(screen, last.code, true);
  Key(screen, last.code, false);
}

/// Each step waits until the window has had it; a toolkit may pass over moves that come faster.
void Drag(XScreen& screen, Window window, int x, int y, int x2, int y2, unsigned button) {
  constexpr int kLongestStep = 6;  // pixels
  const int steps = std::max(1, std::max(std::abs(x2 - x), std::abs(y2 - y)) / kLongestStep);
  MoveTo(screen, x, y);
  KeepClicksApart(screen, x, y);
  Button(screen, button, true);
  for (int i = 1; i <= steps; ++i) {
    MoveTo(screen, x + (x2 - x) * i / steps, y + (y2 - y) * i / steps);
    Ping(screen, window, 2);
  }
  Button(screen, button, false);
}

// Pictures

/// Rows of red, green and blue, one byte each.
struct Bitmap {
  int width = 0, height = 0;
  std::vector<unsigned char> bytes;
  bool operator==(const Bitmap&) const = default;
};

/// What is on the screen at the place; parts off the screen are cut away.
Bitmap Shoot(XScreen& screen, const Place& place) {
  const Place whole = PlaceOf(screen, screen.Root());
  const int x0 = std::max(place.x, 0), y0 = std::max(place.y, 0);
  const int x1 = std::min(place.x + place.width, whole.width), y1 = std::min(place.y + place.height, whole.height);
  if (x0 >= x1 || y0 >= y1) throw Impossible("that place is off the screen");
  XImage* image = XGetImage(screen.X(), screen.Root(), x0, y0, static_cast<unsigned>(x1 - x0),
                            static_cast<unsigned>(y1 - y0), AllPlanes, ZPixmap);
  if (!image || image->red_mask != 0xFF0000 || image->blue_mask != 0xFF) throw Impossible("no screen of 24 bits");
  Bitmap shot{image->width, image->height, {}};
  shot.bytes.reserve(static_cast<std::size_t>(image->width) * static_cast<std::size_t>(image->height) * 3);
  for (int y = 0; y < image->height; ++y)
    for (int x = 0; x < image->width; ++x) {
      const unsigned long pixel = XGetPixel(image, x, y);
      for (const int shift : {16, 8, 0}) shot.bytes.push_back(static_cast<unsigned char>(pixel >> shift));
    }
  XDestroyImage(image);
  return shot;
}

/// Each pixel is the mean of four, in 32 steps a channel.
Bitmap Halved(const Bitmap& bitmap) {
  Bitmap half{bitmap.width / 2, bitmap.height / 2, {}};
  const auto row = static_cast<std::size_t>(bitmap.width) * 3;
  for (std::size_t y = 0; y < static_cast<std::size_t>(half.height); ++y)
    for (std::size_t x = 0; x < static_cast<std::size_t>(half.width); ++x)
      for (std::size_t channel = 0; channel < 3; ++channel) {
        const unsigned char* at = &bitmap.bytes[2 * y * row + 6 * x + channel];
        const int step = (at[0] + at[3] + at[row] + at[row + 3]) / 4 / 8;
        half.bytes.push_back(static_cast<unsigned char>(step * 255 / 31));
      }
  return half;
}

void WritePng(const Bitmap& bitmap, const std::string& path) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  png.width = static_cast<png_uint_32>(bitmap.width);
  png.height = static_cast<png_uint_32>(bitmap.height);
  png.format = PNG_FORMAT_RGB;
  if (!png_image_write_to_file(&png, path.c_str(), 0, bitmap.bytes.data(), 0, nullptr))
    throw Impossible("cannot write " + path + ": " + png.message);
}

Bitmap ReadPng(const std::string& path) {
  png_image png{};
  png.version = PNG_IMAGE_VERSION;
  Bitmap bitmap;
  if (png_image_begin_read_from_file(&png, path.c_str())) {
    png.format = PNG_FORMAT_RGB;
    bitmap = {static_cast<int>(png.width), static_cast<int>(png.height),
              std::vector<unsigned char>(PNG_IMAGE_SIZE(png))};
    if (png_image_finish_read(&png, nullptr, bitmap.bytes.data(), 0, nullptr)) return bitmap;
  }
  throw Impossible("cannot read " + path + ": " + png.message);
}

/// Tells how a picture that was waited for differs from what is shown.
void ReportDifference(const Bitmap& shown, const Bitmap& wanted) {
  int count = 0, x = 0, y = 0;
  for (int i = 0; i < wanted.width * wanted.height && shown.width == wanted.width; ++i) {
    const auto at = static_cast<std::ptrdiff_t>(i) * 3;
    if (i / wanted.width < shown.height &&
        std::equal(wanted.bytes.begin() + at, wanted.bytes.begin() + at + 3, shown.bytes.begin() + at))
      continue;
    if (count++ == 0) x = i % wanted.width, y = i / wanted.width;
  }
  std::fprintf(stderr, "xdriver: %d x %d pixels shown, %d x %d wanted; %d differ, the first at %d, %d\n", shown.width,
               shown.height, wanted.width, wanted.height, count, x, y);
}

/// Counts how often the place in the window gets another picture until the window bears the title `end`; -1 if it
/// never does.
int CountFrames(XScreen& screen, Window window, const Place& inside, const std::string& end, double limit) {
  int frames = 0;
  Bitmap last;
  const bool ended = WaitUntil(
      [&] {
        const bool over = TitleIs(screen.Title(window), end);  // asked first, so that the last picture counts
        const Place place = PlaceOf(screen, window);
        Bitmap now = Shoot(screen, {place.x + inside.x, place.y + inside.y, inside.width, inside.height});
        if (now != last) ++frames;
        last = std::move(now);
        return over;
      },
      limit, std::chrono::milliseconds(1));
  return ended ? frames : -1;
}

// Drag and drop between programs (XDND, version 5)

std::string UriList(const std::vector<std::string>& files) {
  std::string list;
  for (const std::string& file : files) {
    list += "file://";
    for (const char letter : std::filesystem::absolute(file).lexically_normal().string()) {
      const auto byte = static_cast<unsigned char>(letter);
      char code[4];
      std::snprintf(code, sizeof code, "%%%02X", byte);
      const bool plain = byte < 0x80 && (std::isalnum(byte) || std::strchr("/-._~", letter));
      list += plain ? std::string(1, letter) : code;
    }
    list += "\r\n";
  }
  return list;
}

/// A small invisible window in a corner of the screen from which files are dragged. It owns the selection that holds
/// their names, follows the pointer with messages to the window below it, and serves the names when they are asked for.
class DragSource {
 public:
  DragSource(XScreen& screen, const std::vector<std::string>& files) : screen_(screen), uris_(UriList(files)) {}

  /// Drags to the position on the screen, which belongs to `target`, and drops there. True if the target took it.
  bool DragTo(Window target, int x, int y) {
    if (screen_.Numbers(target, "XdndAware").empty()) return false;
    XRaiseWindow(screen_.X(), target);
    if (!WaitUntil([&] { return IsAt(target, x, y); }, 2)) throw Impossible("the window is not at that position");
    MakeWindow(x, y);
    TakePointer();
    const bool willing = Approach(target, x, y);
    Button(screen_, 1, false);
    if (!WaitFor([&](XEvent& event) { return event.type == ButtonRelease && (time_ = event.xbutton.time, true); }, 5))
      throw Impossible("the drag was not released");
    XUngrabPointer(screen_.X(), time_);
    if (!willing) {
      Tell(target, "XdndLeave", {});
      XSync(screen_.X(), False);
      return false;
    }
    Tell(target, "XdndDrop", {0, time_});
    bool taken = false;
    constexpr double kLongestDrop = 120;  // seconds; the target answers when it has handled the drop
    const bool finished = WaitFor(
        [&](XEvent& event) {
          if (!IsMessage(event, "XdndFinished")) return false;
          taken = event.xclient.data.l[1] & 1;
          return true;
        },
        kLongestDrop);
    return finished && taken;
  }

 private:
  void MakeWindow(int targetX, int targetY) {
    constexpr int kSize = 8;
    const Place whole = PlaceOf(screen_, screen_.Root());
    corner_ = {targetX > whole.width / 2 ? 0 : whole.width - kSize,
               targetY > whole.height / 2 ? 0 : whole.height - kSize, kSize, kSize};
    XSetWindowAttributes attributes{};
    attributes.override_redirect = True;
    attributes.event_mask = PropertyChangeMask | ButtonPressMask | ButtonReleaseMask;
    window_ = XCreateWindow(screen_.X(), screen_.Root(), corner_.x, corner_.y, kSize, kSize, 0, 0, InputOnly, nullptr,
                            CWOverrideRedirect | CWEventMask, &attributes);
    XMapRaised(screen_.X(), window_);
    const Atom copy = screen_.Named("XdndActionCopy"), move = screen_.Named("XdndActionMove");
    screen_.SetNumbers(window_, screen_.Named("XdndActionList"), XA_ATOM, {copy, move});
    screen_.SetNumbers(window_, screen_.Named("XdndTypeList"), XA_ATOM, {screen_.Named("text/uri-list")});
  }

  /// Presses the button on the source and keeps the pointer, as any drag source does.
  void TakePointer() {
    MoveTo(screen_, corner_.x + 4, corner_.y + 4);
    Button(screen_, 1, true);
    const auto pressed = [&](XEvent& event) { return event.type == ButtonPress && (time_ = event.xbutton.time, true); };
    if (!WaitFor(pressed, 5)) {
      Button(screen_, 1, false);
      throw Impossible("something else holds the pointer");
    }
    XSetSelectionOwner(screen_.X(), screen_.Named("XdndSelection"), window_, time_);
    XGrabPointer(screen_.X(), window_, False, ButtonReleaseMask | PointerMotionMask, GrabModeAsync, GrabModeAsync, 0, 0,
                 time_);
  }

  /// Enters the target and moves over it to the position; true if it would take the drop there.
  bool Approach(Window target, int x, int y) {
    constexpr unsigned long kVersion = 5;
    Tell(target, "XdndEnter",
         {std::min(kVersion, screen_.Numbers(target, "XdndAware")[0]) << 24, screen_.Named("text/uri-list")});
    bool willing = false;
    for (const int away : {3, 1, 0}) {
      MoveTo(screen_, x - away, y);
      Tell(target, "XdndPosition",
           {0, static_cast<unsigned long>(x - away) << 16 | static_cast<unsigned long>(y), time_,
            screen_.Named("XdndActionCopy")});
      const bool answered = WaitFor(
          [&](XEvent& event) {
            if (!IsMessage(event, "XdndStatus")) return false;
            willing = event.xclient.data.l[1] & 1;
            return true;
          },
          10);
      if (!answered) return false;
    }
    return willing;
  }

  /// Whether the position shows the target, or a frame around it with nothing else on top.
  bool IsAt(Window target, int x, int y) {
    for (Window at = screen_.Root(); at != 0;) {
      if (at == target) return true;
      int insideX, insideY;
      Window child = 0;
      if (!XTranslateCoordinates(screen_.X(), screen_.Root(), at, x, y, &insideX, &insideY, &child)) return false;
      at = child;
    }
    return false;
  }

  void Tell(Window target, const std::string& type, std::vector<unsigned long> data) {
    data.insert(data.begin(), window_);
    screen_.Send(target, target, type, std::move(data));
  }

  bool IsMessage(const XEvent& event, const std::string& type) {
    return event.type == ClientMessage && event.xclient.message_type == screen_.Named(type);
  }

  /// Serves requests for the file names until the wanted event comes.
  bool WaitFor(const std::function<bool(XEvent&)>& wanted, double limit) {
    return screen_.WaitForEvent(
        [&](XEvent& event) {
          if (event.type != SelectionRequest) return wanted(event);
          Serve(event.xselectionrequest);
          return false;
        },
        limit);
  }

  void Serve(const XSelectionRequestEvent& request) {
    XEvent answer{};
    answer.xselection.type = SelectionNotify;
    answer.xselection.requestor = request.requestor;
    answer.xselection.selection = request.selection;
    answer.xselection.target = request.target;
    answer.xselection.time = request.time;
    answer.xselection.property = request.property ? request.property : request.target;
    const Atom uriList = screen_.Named("text/uri-list");
    if (request.target == uriList)
      XChangeProperty(screen_.X(), request.requestor, answer.xselection.property, uriList, 8, PropModeReplace,
                      reinterpret_cast<const unsigned char*>(uris_.data()), static_cast<int>(uris_.size()));
    else if (request.target == screen_.Named("TARGETS"))
      screen_.SetNumbers(request.requestor, answer.xselection.property, XA_ATOM, {uriList});
    else
      answer.xselection.property = 0;
    XSendEvent(screen_.X(), request.requestor, False, 0, &answer);
    XFlush(screen_.X());
  }

  XScreen& screen_;
  std::string uris_;
  Window window_ = 0;
  Place corner_;
  Time time_ = CurrentTime;
};

// Actions

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
  constexpr int kLimit = 10;  // seconds, where the call names none
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
    return Activate(screen, NeedWindow(screen, words.Text()));
  } else if (action == "place") {
    const Window window = NeedWindow(screen, words.Text());
    const int x = words.Number();
    return Put(screen, window, x, words.Number());
  } else if (action == "close") {
    const Window window = NeedWindow(screen, words.Text());
    screen.Send(window, window, "WM_PROTOCOLS", {screen.Named("WM_DELETE_WINDOW"), CurrentTime});
  } else if (action == "ping") {
    const Window window = NeedWindow(screen, words.Text());
    return Ping(screen, window, words.Number(kLimit));
  } else if (action == "move") {
    const Target target = ReadTarget(screen, words);
    MoveTo(screen, target.x, target.y);
  } else if (action == "click") {
    const Target target = ReadTarget(screen, words);
    const auto button = static_cast<unsigned>(words.Number(1));
    MoveTo(screen, target.x, target.y);
    KeepClicksApart(screen, target.x, target.y);
    for (int count = words.Number(1); count > 0; --count) {
      Button(screen, button, true);
      Button(screen, button, false);
    }
  } else if (action == "press") {
    const Target target = ReadTarget(screen, words);
    MoveTo(screen, target.x, target.y);
    KeepClicksApart(screen, target.x, target.y);
    Button(screen, static_cast<unsigned>(words.Number(1)), true);
  } else if (action == "release") {
    Button(screen, static_cast<unsigned>(words.Number(1)), false);
  } else if (action == "drag") {
    const Target from = ReadTarget(screen, words);
    const Place place = PlaceOf(screen, from.window);
    const int x = place.x + words.Number(), y = place.y + words.Number();
    Drag(screen, from.window, from.x, from.y, x, y, static_cast<unsigned>(words.Number(1)));
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
    const std::string end = words.Text();
    const int frames = CountFrames(screen, window, inside, end, words.Number(kLimit));
    std::printf("%d\n", frames);
    return frames >= 0;
  } else {
    throw Impossible(std::string("no such action\n") + kUsage);
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    Words words(std::vector<std::string>(argv + 1, argv + argc));
    const std::string action = words.Text();
    XScreen screen;
    return Act(screen, action, words) ? 0 : 1;
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "xdriver: %s\n", failure.what());
    return 2;
  }
}

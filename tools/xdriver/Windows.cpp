#include "tools/xdriver/Windows.h"

#include <algorithm>
#include <regex>

namespace xdriver {

bool TitleIs(const std::string& found, const std::string& wanted) {
  return wanted.starts_with('/') ? std::regex_match(found, std::regex(wanted.substr(1))) : found == wanted;
}

Window FindWindow(XScreen& screen, const std::string& title) {
  if (title == "root") return screen.Root();
  const Window number = title.starts_with("0x") ? std::stoul(title, nullptr, 16) : 0;
  const auto windows = screen.Numbers(screen.Root(), "_NET_CLIENT_LIST_STACKING");
  for (auto window = windows.rbegin(); window != windows.rend(); ++window) {
    XWindowAttributes attributes;
    if (!XGetWindowAttributes(screen.X(), *window, &attributes) || attributes.map_state != IsViewable) continue;
    // Mutter keeps minimised windows mapped.
    const auto states = screen.Numbers(*window, "_NET_WM_STATE");
    if (std::ranges::find(states, screen.Named("_NET_WM_STATE_HIDDEN")) != states.end()) continue;
    if (number ? *window == number : TitleIs(screen.Title(*window), title)) return *window;
  }
  return 0;
}

Window NeedWindow(XScreen& screen, const std::string& title) {
  const Window window = FindWindow(screen, title);
  if (!window) throw Impossible("no window \"" + title + "\"");
  return window;
}

Area AreaOf(XScreen& screen, Window window) {
  Area area;
  XWindowAttributes attributes;
  Window child;
  if (!XGetWindowAttributes(screen.X(), window, &attributes)) throw Impossible("the window vanished");
  XTranslateCoordinates(screen.X(), window, screen.Root(), 0, 0, &area.x, &area.y, &child);
  area.width = attributes.width;
  area.height = attributes.height;
  return area;
}

namespace {

/// Whether the window is on top at the position.
bool IsOnTop(XScreen& screen, Window window, int x, int y) {
  for (Window at = screen.Root(); at != 0;) {
    if (at == window) return true;
    int insideX, insideY;
    Window child = 0;
    if (!XTranslateCoordinates(screen.X(), screen.Root(), at, x, y, &insideX, &insideY, &child)) return false;
    at = child;
  }
  return false;
}

/// Sends the window manager a request about the window.
void AskManager(XScreen& screen, Window window, const std::string& type, const std::vector<unsigned long>& data) {
  screen.Send(screen.Root(), window, type, data, SubstructureRedirectMask | SubstructureNotifyMask);
}

}  // namespace

void AwaitOnTop(XScreen& screen, Window window, int x, int y) {
  constexpr double kLimit = 10;  // seconds
  if (!WaitUntil([&] { return IsOnTop(screen, window, x, y); }, kLimit))
    throw Impossible("the window is not on top at that position");
}

bool Activate(XScreen& screen, Window window) {
  AskManager(screen, window, "_NET_ACTIVE_WINDOW", {2, CurrentTime, 0});
  return WaitUntil(
      [&] { return screen.Numbers(screen.Root(), "_NET_ACTIVE_WINDOW") == std::vector<unsigned long>{window}; }, 30);
}

// Static gravity makes this the position of the content, whatever the frame around it.
bool Put(XScreen& screen, Window window, int x, int y) {
  constexpr unsigned long kStaticGravity = 10, kHasX = 1 << 8, kHasY = 1 << 9, kFromPager = 2 << 12;
  AskManager(
      screen, window, "_NET_MOVERESIZE_WINDOW",
      {kStaticGravity | kHasX | kHasY | kFromPager, static_cast<unsigned long>(x), static_cast<unsigned long>(y)});
  return WaitUntil(
      [&] {
        const Area area = AreaOf(screen, window);
        return area.x == x && area.y == y;
      },
      30);
}

bool Ping(XScreen& screen, Window window, double limit) {
  XSelectInput(screen.X(), screen.Root(), StructureNotifyMask | SubstructureNotifyMask);
  const auto stamp = static_cast<unsigned long>(Clock::now().time_since_epoch().count()) & 0x3FFFFFFF;
  screen.Send(window, window, "WM_PROTOCOLS", {screen.Named("_NET_WM_PING"), stamp, window});
  const auto answered = [&](XEvent& event) {
    return event.type == ClientMessage && event.xclient.message_type == screen.Named("WM_PROTOCOLS") &&
           event.xclient.window == screen.Root() && static_cast<unsigned long>(event.xclient.data.l[1]) == stamp;
  };
  return screen.WaitForEvent(answered, limit);
}

// The window manager replies to a request for the frame extents of an unmapped window by setting a property.
bool AwaitManager(XScreen& screen, double limit) {
  const Window window = XCreateSimpleWindow(screen.X(), screen.Root(), 0, 0, 1, 1, 0, 0, 0);
  XSelectInput(screen.X(), window, PropertyChangeMask);
  AskManager(screen, window, "_NET_REQUEST_FRAME_EXTENTS", {});
  const auto answered = [&](XEvent& event) { return event.type == PropertyNotify && event.xproperty.window == window; };
  const bool handled = screen.WaitForEvent(answered, limit);
  XDestroyWindow(screen.X(), window);
  return handled;
}

}  // namespace xdriver

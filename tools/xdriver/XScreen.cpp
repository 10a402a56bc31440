#include "tools/xdriver/XScreen.h"

#include <X11/Xutil.h>
#include <poll.h>

#include <thread>

namespace xdriver {

XScreen::XScreen() : display_(XOpenDisplay(nullptr)) {
  if (!display_) throw Impossible("no display");
  // A window may vanish between two requests about it; then those fail, and the program continues.
  XSetErrorHandler([](Display*, XErrorEvent*) { return 0; });
  root_ = DefaultRootWindow(display_);
}

XScreen::~XScreen() { XCloseDisplay(display_); }

Atom XScreen::Named(const std::string& name) {
  Atom& atom = atoms_[name];
  if (!atom) atom = XInternAtom(display_, name.c_str(), False);
  return atom;
}

std::vector<unsigned long> XScreen::Numbers(Window window, const std::string& property) {
  Atom type = 0;
  int format = 0;
  unsigned long count = 0, rest = 0;
  unsigned char* data = nullptr;
  std::vector<unsigned long> numbers;
  if (XGetWindowProperty(display_, window, Named(property), 0, 1 << 16, False, AnyPropertyType, &type, &format, &count,
                         &rest, &data) == Success &&
      format == 32) {
    const auto* values = reinterpret_cast<unsigned long*>(data);
    numbers.assign(values, values + count);
  }
  if (data) XFree(data);
  return numbers;
}

void XScreen::SetNumbers(Window window, Atom property, Atom type, const std::vector<unsigned long>& numbers) {
  XChangeProperty(display_, window, property, type, 32, PropModeReplace,
                  reinterpret_cast<const unsigned char*>(numbers.data()), static_cast<int>(numbers.size()));
}

std::string XScreen::Title(Window window) {
  for (const char* property : {"_NET_WM_NAME", "WM_NAME"}) {
    XTextProperty text;
    if (!XGetTextProperty(display_, window, &text, Named(property)) || !text.value) continue;
    std::string title(reinterpret_cast<char*>(text.value), text.nitems);
    XFree(text.value);
    return title;
  }
  return {};
}

void XScreen::Send(Window destination, Window window, const std::string& type, std::vector<unsigned long> data,
                   long mask) {
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

bool XScreen::WaitForEvent(const std::function<bool(XEvent&)>& wanted, double limit) {
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

bool WaitUntil(const std::function<bool()>& condition, double limit, std::chrono::milliseconds pause) {
  const auto end = Clock::now() + Seconds(limit);
  while (!condition()) {
    if (Clock::now() > end) return false;
    std::this_thread::sleep_for(pause);
  }
  return true;
}

}  // namespace xdriver

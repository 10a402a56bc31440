#include "tools/xdriver/DragSource.h"

#include <X11/Xatom.h>

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <utility>

#include "tools/xdriver/Input.h"

namespace xdriver {
namespace {

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

}  // namespace

DragSource::DragSource(XScreen& screen, const std::vector<std::string>& files)
    : screen_(screen), uris_(UriList(files)) {}

bool DragSource::DragTo(Window target, int x, int y) {
  if (screen_.Numbers(target, "XdndAware").empty()) return false;
  XRaiseWindow(screen_.X(), target);
  AwaitOnTop(screen_, target, x, y);
  MakeWindow(x, y);
  TakePointer();
  const bool accepted = Approach(target, x, y);
  Button(screen_, 1, false);
  if (!WaitFor([&](XEvent& event) { return event.type == ButtonRelease && (time_ = event.xbutton.time, true); }, 5))
    throw Impossible("the release of the button did not arrive");
  XUngrabPointer(screen_.X(), time_);
  if (!accepted) {
    Send(target, "XdndLeave", {});
    XSync(screen_.X(), False);
    return false;
  }
  Send(target, "XdndDrop", {0, time_});
  bool taken = false;
  constexpr double kLongestDrop = 120;  // seconds; the target replies when it has handled the drop
  const bool finished = WaitFor(
      [&](XEvent& event) {
        if (!IsMessage(event, "XdndFinished")) return false;
        taken = event.xclient.data.l[1] & 1;
        return true;
      },
      kLongestDrop);
  return finished && taken;
}

bool DragSource::Accepted(Window target, double limit) {
  const Area area = AreaOf(screen_, target);
  const int x = area.x + area.width / 2, y = area.y + area.height / 2;
  if (!window_) {
    MakeWindow(x, y);
    XSetSelectionOwner(screen_.X(), screen_.Named("XdndSelection"), window_, CurrentTime);
  }
  Enter(target);
  const bool accepted = Over(target, x, y, limit);
  Send(target, "XdndLeave", {});
  return accepted;
}

void DragSource::MakeWindow(int targetX, int targetY) {
  constexpr int kSize = 8;
  const Area whole = AreaOf(screen_, screen_.Root());
  corner_ = {targetX > whole.width / 2 ? 0 : whole.width - kSize, targetY > whole.height / 2 ? 0 : whole.height - kSize,
             kSize, kSize};
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

void DragSource::TakePointer() {
  MoveTo(screen_, corner_.x + 4, corner_.y + 4);
  Button(screen_, 1, true);
  const auto pressed = [&](XEvent& event) { return event.type == ButtonPress && (time_ = event.xbutton.time, true); };
  if (!WaitFor(pressed, 5)) {
    Button(screen_, 1, false);
    throw Impossible("another program has grabbed the pointer");
  }
  XSetSelectionOwner(screen_.X(), screen_.Named("XdndSelection"), window_, time_);
  XGrabPointer(screen_.X(), window_, False, ButtonReleaseMask | PointerMotionMask, GrabModeAsync, GrabModeAsync, 0, 0,
               time_);
}

bool DragSource::Approach(Window target, int x, int y) {
  constexpr double kLimit = 30;  // seconds
  Enter(target);
  bool accepted = false;
  for (const int away : {3, 1, 0}) {
    MoveTo(screen_, x - away, y);
    accepted = Over(target, x - away, y, kLimit);
  }
  return accepted;
}

void DragSource::Enter(Window target) {
  constexpr unsigned long kVersion = 5;
  const auto aware = screen_.Numbers(target, "XdndAware");
  if (aware.empty()) throw Impossible("the window does not accept drops");
  Send(target, "XdndEnter", {std::min(kVersion, aware[0]) << 24, screen_.Named("text/uri-list")});
}

bool DragSource::Over(Window target, int x, int y, double limit) {
  Send(
      target, "XdndPosition",
      {0, static_cast<unsigned long>(x) << 16 | static_cast<unsigned long>(y), time_, screen_.Named("XdndActionCopy")});
  bool accepted = false;
  WaitFor(
      [&](XEvent& event) {
        if (!IsMessage(event, "XdndStatus")) return false;
        accepted = event.xclient.data.l[1] & 1;
        return true;
      },
      limit);
  return accepted;
}

void DragSource::Send(Window target, const std::string& type, std::vector<unsigned long> data) {
  data.insert(data.begin(), window_);
  screen_.Send(target, target, type, std::move(data));
}

bool DragSource::IsMessage(const XEvent& event, const std::string& type) {
  return event.type == ClientMessage && event.xclient.message_type == screen_.Named(type);
}

bool DragSource::WaitFor(const std::function<bool(XEvent&)>& wanted, double limit) {
  return screen_.WaitForEvent(
      [&](XEvent& event) {
        if (event.type != SelectionRequest) return wanted(event);
        Serve(event.xselectionrequest);
        return false;
      },
      limit);
}

void DragSource::Serve(const XSelectionRequestEvent& request) {
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

}  // namespace xdriver

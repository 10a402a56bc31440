// The sizes of a window: that of its content, and that of the frame, which shows the content or a part of it.

#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/qt/ScrollingContent.h"

namespace platform {

namespace {

/// The least width or height to which the user can reduce the view if it shows only a part of the content.
constexpr int kLeastView = 150;

/// The border that the window manager adds to the frame; until the frame is on the screen, that of another window.
QMargins BorderOf(const QWidget& frame) {
  QWindowList handles = QGuiApplication::topLevelWindows();
  if (frame.windowHandle()) handles.prepend(frame.windowHandle());
  for (const QWindow* handle : handles)
    if (const QMargins border = handle->frameMargins(); !border.isNull()) return border;
  return {};
}

/// The area of the screen that the view of a window may cover.
QRect RoomFor(const NativeWindow& window) {
  const QScreen* screen = window.frame->screen();
  const QRect usable = screen ? screen->availableGeometry() : QRect(0, 0, QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
  return usable.marginsRemoved(BorderOf(*window.frame)).adjusted(0, window.barHeight, 0, 0);
}

bool HasPosition(const QWidget& frame) { return frame.isVisible() || frame.testAttribute(Qt::WA_Moved); }

bool Holds(QSize room, QSize size) { return size.boundedTo(room) == size; }

}  // namespace

void NativeWindow::Arrange() {
  if (bar) bar->setGeometry(0, 0, frame->width(), barHeight);
  scrolling->setGeometry(0, barHeight, view.width(), view.height());
  content->resize(ContentSize());
}

void NativeWindow::Adopt(int newWidth, int newHeight) {
  const int widthChange = newWidth - settings.width, heightChange = newHeight - settings.height;
  settings.width = newWidth;
  settings.height = newHeight;
  Arrange();
  if (widthChange == 0 && heightChange == 0) return;
  for (NativeControl* control : controls)
    if (control->page == kNoPage) control->Follow(widthChange, heightChange);
  const auto notify = [this] { Raise([](Window& resized) { resized.Event_Resized(); }); };
  if (!HandlerRuns()) return notify();
  RunSoon([guard = QPointer<QWidget>(frame.get()), notify] {
    if (guard) notify();
  });
}

void NativeWindow::FollowFrame() {
  const QSize before = std::exchange(view, frame->size() - QSize(0, barHeight));
  // A side that the user did not change keeps the size of its content, unless the content filled the view: then it
  // still does when a scroll bar appears or vanishes beside it.
  const int barBeside = settings.height > before.height() ? scrolling->BarExtent() : 0;
  const int barBelow = settings.width > before.width() ? scrolling->BarExtent() : 0;
  const bool follows = settings.resizeable && view != before;
  const bool wider = follows && (view.width() != before.width() || settings.width == before.width() - barBeside);
  const bool higher = follows && (view.height() != before.height() || settings.height == before.height() - barBelow);
  const auto width = [this](int room) {
    return std::clamp(room, settings.minWidth, std::max(settings.minWidth, settings.maxWidth));
  };
  const auto height = [this](int room) {
    return std::clamp(room, settings.minHeight, std::max(settings.minHeight, settings.maxHeight));
  };
  QSize whole(wider ? width(view.width()) : settings.width, higher ? height(view.height()) : settings.height);
  if (wider && whole.height() > view.height()) whole.setWidth(width(view.width() - scrolling->BarExtent()));
  if (higher && whole.width() > view.width()) whole.setHeight(height(view.height() - scrolling->BarExtent()));
  Adopt(whole.width(), whole.height());
}

QSize NativeWindow::FittingView(QSize whole) const {
  const QRect place = RoomFor(*this);
  QSize room = place.size();
  if (Holds(room, whole)) return whole;
  if (!settings.resizeable && HasPosition(*frame)) {
    // It keeps its position and ends at the edge of the screen.
    const QPoint beyond = place.bottomRight() + QPoint(1, 1) - Place();
    room = room.boundedTo(QSize(beyond.x(), beyond.y()).expandedTo({kLeastView, kLeastView}));
  }
  // The view grows by its scroll bars if the screen has room for them.
  const int down = whole.height() > room.height() ? scrolling->BarExtent() : 0;
  const int across = whole.width() + down > room.width() ? scrolling->BarExtent() : 0;
  return (whole + QSize(down, across)).boundedTo(room);
}

void NativeWindow::FitFrame() {
  // An X11 window cannot be empty, so the frame is at least one pixel.
  const QSize size = (FittingView(ContentSize()) + QSize(0, barHeight)).expandedTo({1, 1});
  view = size - QSize(0, barHeight);
  // Widen the limits first.
  frame->setMinimumSize(frame->minimumSize().boundedTo(size));
  frame->setMaximumSize(frame->maximumSize().expandedTo(size));
  frame->resize(size);
  Arrange();
  SetLimits();
  if (Holds(view, ContentSize()) || !settings.resizeable || !HasPosition(*frame)) return;
  const QRect room = RoomFor(*this);
  const QPoint place = Place(), last = room.bottomRight() + QPoint(1, 1) - QPoint(view.width(), view.height());
  const QPoint within(std::max(room.left(), std::min(place.x(), last.x())),
                      std::max(room.top(), std::min(place.y(), last.y())));
  if (within != place) SetPlace(within.x(), within.y());
}

void NativeWindow::SetLimits() {
  const QSize whole = ContentSize();
  QSize least = settings.resizeable ? whole.boundedTo({settings.minWidth, settings.minHeight}) : whole;
  QSize most = settings.resizeable ? whole.expandedTo({settings.maxWidth, settings.maxHeight}) : whole;
  if (!Holds(view, whole)) {
    if (view.width() < whole.width()) least.setWidth(std::min(least.width(), kLeastView));
    if (view.height() < whole.height()) least.setHeight(std::min(least.height(), kLeastView));
    most += QSize(scrolling->BarExtent(), scrolling->BarExtent());
  }
  frame->setMinimumSize(least.width(), least.height() + barHeight);
  frame->setMaximumSize(most.width(), most.height() + barHeight);
}

void NativeWindow::SetSize(int newWidth, int newHeight) {
  const QSize size = QSize(newWidth, newHeight).expandedTo({0, 0});
  if (size == ContentSize()) return;
  // Position and border of a window that has just been shown are known when it is exposed.
  if (FittingView(size) != size) AwaitExposure(*this);
  Adopt(size.width(), size.height());
  FitFrame();
}

}  // namespace platform

#include "platform/widgets/Control.h"

#include <algorithm>
#include <cmath>

#include "platform/qt/NativeCursor.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/widgets/MouseCursor.h"

namespace platform {

Control::Control() = default;
Control::~Control() = default;

platform::Window& Control::Window() const {
  if (!window_) ThrowNil("a control was used before it was created");
  return *window_;
}

RectControl::RectControl() = default;
RectControl::~RectControl() = default;

NativeControl& RectControl::NeedNative() const {
  if (!native_) ThrowNil("a control was used before it was created");
  return *native_;
}

int RectControl::Left() const { return NeedNative().place.x; }
int RectControl::Top() const { return NeedNative().place.y; }
int RectControl::Width() const { return NeedNative().place.width; }
int RectControl::Height() const { return NeedNative().place.height; }

void RectControl::Top(int top) {
  Rect place = NeedNative().place;
  place.y = top;
  native_->SetPlace(place);
}

void RectControl::Width(int width) {
  Rect place = NeedNative().place;
  place.width = std::max(0, width);
  native_->SetPlace(place);
}

void RectControl::Height(int height) {
  Rect place = NeedNative().place;
  place.height = std::max(0, height);
  native_->SetPlace(place);
}

bool RectControl::Enabled() const { return NeedNative().widget->isEnabledTo(native_->window.content); }
void RectControl::Enabled(bool enabled) { NeedNative().widget->setEnabled(enabled); }

bool RectControl::Visible() const { return NeedNative().visible; }

void RectControl::Visible(bool visible) {
  NeedNative().visible = visible;
  native_->SyncVisible();
}

void RectControl::MouseCursor(const platform::MouseCursor& cursor) {
  NeedNative().widget->setCursor(cursor.Shape().cursor);
}

void RectControl::Font(TextFont font) { NeedNative().SetFont(font); }
void RectControl::About(const String& about) { NeedNative().SetAbout(ToQString(about)); }
void RectControl::Refresh(bool) { NeedNative().Refresh(); }

NativeControl::NativeControl(NativeWindow& owner, QWidget* newWidget) : window(owner), widget(newWidget) {
  owner.controls.push_back(this);
}

NativeControl::~NativeControl() {
  std::erase(window.controls, this);
  delete widget;
}

void NativeControl::SetPlace(const Rect& newPlace) {
  place = newPlace;
  widget->setGeometry(place.x, place.y, std::max(0, place.width), std::max(0, place.height));
}

void NativeControl::Follow(int widthChange, int heightChange) {
  Rect followed = place;
  if (locks.right) (locks.left ? followed.width : followed.x) += widthChange;
  if (locks.bottom) (locks.top ? followed.height : followed.y) += heightChange;
  if (followed != place) SetPlace(followed);
}

void NativeControl::SetAbout(const QString& about) { widget->setAccessibleName(about); }
void NativeControl::SetFont(TextFont font) { widget->setFont(SystemFont(font)); }
void NativeControl::Refresh() { PutOnScreen(window, *widget); }
bool NativeControl::OnShownPage() const { return page == kNoPage || (window.panel && window.panel->value == page); }
void NativeControl::SyncVisible() { widget->setVisible(visible && OnShownPage()); }
QPoint PixelOf(const QPointF& position) {
  return {static_cast<int>(std::floor(position.x())), static_cast<int>(std::floor(position.y()))};
}

void NativeControl::RaiseFromUser(std::function<void()> event) {
  if (!GateClosed()) return Raise(event);
  RunSoon([guard = widget, this, event = std::move(event)] {
    if (guard) Raise(event);
  });
}

bool NativeControl::WindowClosed() const { return window.closed; }

}  // namespace platform

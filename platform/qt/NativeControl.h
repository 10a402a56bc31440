#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

#include "platform/pictures/Graphics.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Control.h"

namespace platform {

/// The toolkit's side of a control with a place. All controls are children of the window's content, also those on a
/// page: their place is that in the window.
struct NativeControl {
  NativeControl(NativeWindow& owner, QWidget* newWidget);
  virtual ~NativeControl();
  NativeControl(const NativeControl&) = delete;

  virtual void SetPlace(const Rect& newPlace);
  /// Follows a change of size of what it stands on, by the locks.
  void Follow(int widthChange, int heightChange);
  virtual void SetFont(TextFont font);
  /// See RectControl::About.
  virtual void SetAbout(const QString& about);
  virtual void Refresh();
  /// Shows or hides the widget by the control's own wish and its page.
  void SyncVisible();
  bool OnShownPage() const;

  /// Raises an event of the control unless its window is closed.
  template <class Event, class... Arguments>
  void Raise(const Event& event, Arguments&&... arguments) {
    if (event && !WindowClosed()) Dispatch([&] { event(std::forward<Arguments>(arguments)...); });
  }
  /// The same for an event that answers; `fallback` where nobody does.
  template <class Event, class... Arguments>
  bool Ask(const Event& event, Arguments&&... arguments) {
    bool answer = false;
    if (event && !WindowClosed()) Dispatch([&] { answer = event(std::forward<Arguments>(arguments)...); });
    return answer;
  }
  /// Raises an event that the user has set off. One that comes while a handler lets the screen be served, as from
  /// assistive technology, waits for the end of the handler.
  void RaiseFromUser(std::function<void()> event);
  bool WindowClosed() const;

  NativeWindow& window;
  QPointer<QWidget> widget;
  Rect place;
  Locks locks;
  int page = kNoPage;
  bool visible = true;
};

/// A set of pages; the controls on them move with it.
struct NativePanel : NativeControl {
  explicit NativePanel(NativeWindow& owner);
  void SetPlace(const Rect& newPlace) override;
  void SetValue(int newValue);

  int count = 1;
  int value = 0;
};

/// The pixel that holds the position. Rounding would put the last half of the last pixel outside.
QPoint PixelOf(const QPointF& position);
/// The fonts of controls.
QFont SystemFont(TextFont font);
/// The font, narrowed or made somewhat smaller where the text would not fit into the width otherwise.
QFont FittingFont(const QFont& font, const QString& text, int width);

}  // namespace platform

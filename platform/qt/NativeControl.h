#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

#include "platform/pictures/Graphics.h"
#include "platform/widgets/Application.h"
#include "platform/widgets/Control.h"

namespace platform {

/// The toolkit's implementation of a RectControl. All controls are children of the window's content, even those on a
/// page: `place` is in the coordinates of the window's content.
struct NativeControl {
  NativeControl(NativeWindow& owner, QWidget* newWidget);
  virtual ~NativeControl();
  NativeControl(const NativeControl&) = delete;

  virtual void SetPlace(const Rect& newPlace);
  /// Moves and resizes the control, according to its locks, after a change of size of its window or panel.
  void Follow(int widthChange, int heightChange);
  virtual void SetFont(TextFont font);
  /// See RectControl::About.
  virtual void SetAbout(const QString& about);
  virtual void Refresh();
  /// Shows the widget if the control is visible and its page is shown, else hides it.
  void SyncVisible();
  bool OnShownPage() const;

  /// Raises an event of the control unless its window is closed.
  template <class Event, class... Arguments>
  void Raise(const Event& event, Arguments&&... arguments) {
    if (event && !WindowClosed()) Dispatch([&] { event(std::forward<Arguments>(arguments)...); });
  }
  /// The same for an event that returns a bool; false if there is no handler or it throws.
  template <class Event, class... Arguments>
  bool Ask(const Event& event, Arguments&&... arguments) {
    bool answer = false;
    if (event && !WindowClosed()) Dispatch([&] { answer = event(std::forward<Arguments>(arguments)...); });
    return answer;
  }
  /// Raises an event caused by the user. If it arrives while a handler pumps paints, as from assistive technology, it
  /// is delayed until the handler has ended.
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

/// The pixel that contains the position. Rounding would move positions in the second half of the last pixel outside.
QPoint PixelOf(const QPointF& position);
/// The fonts of controls.
QFont SystemFont(TextFont font);
/// The font, condensed or made slightly smaller if the text would not fit into the width otherwise.
QFont FittingFont(const QFont& font, const QString& text, int width);

}  // namespace platform

#pragma once
/// The base of all controls. A control is a member of its window and lives as long as the window. The window calls
/// CreateControl once; before that every operation except setting events throws NilObjectException.

#include <functional>
#include <memory>

#include "platform/values/String.h"

namespace platform {

class Window;
class Control;

/// The toolkit's implementation of a control and of a window.
struct NativeControl;
struct NativeWindow;

/// The edges of the window that a control keeps its distance from when the window's size changes: left and right
/// together stretch it, right alone moves it; likewise top and bottom.
struct Locks {
  bool left = false, top = false, right = false, bottom = false;
};
inline constexpr Locks kLockNone{};
inline constexpr Locks kLockLeftTop{.left = true, .top = true};
inline constexpr Locks kLockLeftBottom{.left = true, .bottom = true};
inline constexpr Locks kLockRight{.right = true};
inline constexpr Locks kLockRightBottom{.right = true, .bottom = true};
inline constexpr Locks kLockAll{.left = true, .top = true, .right = true, .bottom = true};

enum class TextFont {
  System,      ///< the normal font of controls
  SmallSystem  ///< the small one
};

constexpr int kNoPage = -1;

class Control {
 public:
  Control();
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  /// The name that, together with the index in a control array, identifies the control within its window.
  const String& Name() const { return name_; }
  int Index() const { return index_; }
  void Index(int index) { index_ = index; }
  /// The window that contains the control.
  platform::Window& Window() const;

  /// Raised when the window opens, before the window's own open event, in the order of creation.
  std::function<void()> Open;

 private:
  friend class platform::Window;
  String name_;
  int index_ = 0;
  platform::Window* window_ = nullptr;
};

/// A control with a position and size, in logical pixels of the window's content even if the control is on a page.
class RectControl : public Control {
 public:
  RectControl();
  ~RectControl() override;

  int Left() const;
  int Top() const;
  void Top(int top);
  int Width() const;
  void Width(int width);
  int Height() const;
  void Height(int height);
  bool Enabled() const;
  void Enabled(bool enabled);
  /// Whether the control is visible when its window and its page are.
  bool Visible() const;
  void Visible(bool visible);
  void MouseCursor(const class MouseCursor& cursor);
  void Font(TextFont font);
  /// Describes the control to assistive technology: its accessible name and, on a button, its tool tip if it has no
  /// caption; otherwise its accessible description.
  void About(const String& about);

  /// Repaints the control. It is on the screen when the call returns, even during a long handler or just after the
  /// window was first shown. No click, key, drop or timer is delivered meanwhile: clicks and keys wait for the end of
  /// the handler, and are dropped if it takes half a second or longer.
  void Refresh(bool eraseBackground = true);

  /// The toolkit's implementation; nullptr before CreateControl.
  NativeControl* Native() const { return native_.get(); }
  NativeControl& NeedNative() const;

 protected:
  /// Creates the toolkit's implementation. Called once, by the window.
  virtual std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) = 0;

 private:
  friend class platform::Window;
  std::unique_ptr<NativeControl> native_;
};

/// One row of a window's table of controls.
struct ControlRow {
  RectControl* control;
  const char* name;
  int left, top, width, height;
  Locks locks;
  int page;  ///< page of the window's page panel, or kNoPage
  const char* text = "";
  const char* about = "";  ///< see RectControl::About
  int index = 0;           ///< position in a control array
};

}  // namespace platform

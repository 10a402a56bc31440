#pragma once
/// What all controls share. A control is a member of its window; CreateControl of the window brings it to life, once,
/// and it lives as long as the window. Before that every operation but setting events throws NilObjectException.

#include <functional>
#include <memory>

#include "platform/values/String.h"

namespace platform {

class Window;
class Control;

/// The toolkit's side of a control and of a window.
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

  /// The name by which the control is found within its window, together with its index in a control array.
  const String& Name() const { return name_; }
  int Index() const { return index_; }
  void Index(int index) { index_ = index; }
  /// The window that the control stands in.
  platform::Window& Window() const;

  /// The control has been made; comes before the window's own open event, in the order of making.
  std::function<void()> Open;

 private:
  friend class platform::Window;
  String name_;
  int index_ = 0;
  platform::Window* window_ = nullptr;
};

/// A control with a place. Sizes and places are logical pixels of the window's content, whatever panel it stands on.
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
  /// Whether the control is to be seen when its window and its page are.
  bool Visible() const;
  void Visible(bool visible);
  void MouseCursor(const class MouseCursor& cursor);
  void Font(TextFont font);
  /// What the control is, for assistive technology: the name of a control without a caption, and then the tool tip of a
  /// button; the description of one with a caption.
  void About(const String& about);

  /// Repaints the control; it is on the screen when the call returns, also while a long handler runs and just after
  /// the window was first shown. No click, key, drop or timer is delivered meanwhile: clicks and keys wait for the end
  /// of the handler, and are dropped if it takes half a second or longer.
  void Refresh(bool eraseBackground = true);

  /// The toolkit's side; nil before CreateControl.
  NativeControl* Native() const { return native_.get(); }
  NativeControl& NeedNative() const;

 protected:
  /// Makes the toolkit's side. Called once, by the window.
  virtual std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) = 0;

 private:
  friend class platform::Window;
  std::unique_ptr<NativeControl> native_;
};

/// Where a control stands: one row of a window's table of controls.
struct ControlRow {
  RectControl* control;
  const char* name;
  int left, top, width, height;
  Locks locks;
  int page;  ///< page of the window's page panel, or kNoPage
  const char* text = "";
  const char* about = "";  ///< see RectControl::About
  int index = 0;           ///< place in a control array
};

}  // namespace platform

#pragma once
/// Windows. One list owns all open windows, including hidden ones, in the order of their creation.

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>

#include "platform/pictures/DragItem.h"
#include "platform/widgets/Control.h"
#include "platform/widgets/MenuBar.h"

namespace platform {

enum class Frame { Document, MovableModal };

/// Options of a window. Sizes are those of the content, in logical pixels, without menu bar and frame. If the usable
/// screen cannot hold the content, the frame shows a part of it, with scroll bars; sizes and positions remain those of
/// the whole content.
struct WindowSettings {
  String title{};
  int width = 300, height = 200;
  int minWidth = 64, minHeight = 64;
  int maxWidth = 32000, maxHeight = 32000;
  bool visible = true;  ///< shown when it is opened
  Frame frame = Frame::Document;
  bool resizeable = true;                ///< by the user; code can always set the size
  platform::MenuBar* menuBar = nullptr;  ///< shown in the window; its shortcuts work without it too
  bool centered = false;                 ///< on the main screen, when first shown
};

using MenuHandlers = std::map<String, std::function<bool()>>;

class Window {
 public:
  explicit Window(const WindowSettings& settings);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Shows the window and brings it to the front. During a handler a hidden window comes up with the next refresh or
  /// pump, or at the end, so that it has the size that the handler gives it.
  void Show();
  void Hide();
  /// Closes the window: it leaves the list at once and is destroyed after the current event.
  void Close();
  /// Shows the window, blocks input to all others, and returns when it is hidden.
  void ShowModal();
  /// Makes a visible window the active one when the running event has ended and the windows shown by that are on the
  /// screen; they stay above it where the window manager allows that.
  void ActivateSoon();
  /// Moves the keyboard focus from the controls to the window itself.
  void SetFocus();
  bool Visible() const;
  void Visible(bool visible);
  int Left() const;
  void Left(int left);  ///< of the content, screen coordinates
  int Top() const;
  void Top(int top);
  int Width() const;
  /// Controls follow by their locks at once. A size outside the limits is set nevertheless.
  void Width(int width);
  int Height() const;
  void Height(int height);
  int MinWidth() const;
  void MinWidth(int width);
  int MinHeight() const;
  void MinHeight(int height);
  int MaxWidth() const;
  void MaxWidth(int width);
  String Title() const;
  void Title(const String& title);
  platform::MenuBar* MenuBar() const;
  void MenuBar(platform::MenuBar* bar);
  /// Repaints the whole window; see RectControl::Refresh.
  void Refresh();
  /// If the window shows only a part of its content, scrolls so that the control is visible.
  void Reveal(const RectControl& control);
  /// Scrolls back to the position before the first Reveal since the last EndReveal.
  void EndReveal();
  /// Accepts drops of files of the registered type of that name.
  void AcceptFileDrop(const String& typeName);

  /// The control with that name (and index in a control array), or nullptr.
  Control* FindControl(const String& name, int index = 0) const;
  /// All controls, in the order of their creation.
  const std::vector<Control*>& Controls() const { return controls_; }

  // Events. Each is run by Dispatch, which reports uncaught exceptions.
  virtual void Event_Open() {}
  /// The user or Quit asks the window to close. Returning true prevents it.
  virtual bool Event_CancelClose(bool /*appQuitting*/) { return false; }
  virtual void Event_Resized() {}  ///< after the handler that changed the size, if one did
  /// A key that no control used, as a string of one character; the codes of the arrows are left 28, right 29, up 30,
  /// down 31.
  virtual bool Event_KeyDown(const String& /*key*/) { return false; }
  virtual void Event_DropObject(DragItem& /*items*/, int /*action*/) {}
  virtual void Event_EnableMenuItems() {}
  virtual void Event_Activate() {}
  virtual void Event_Deactivate() {}

  const MenuHandlers& Handlers() const { return handlers_; }
  NativeWindow& Native() const { return *native_; }

 protected:
  void CreateControl(const ControlRow& row);
  void CreateControls(std::initializer_list<ControlRow> rows);
  /// For a control without a position, such as a timer.
  void CreateControl(Control& control, const char* name);
  void AddMenuHandler(const String& item, std::function<bool()> handler) { handlers_[item] = std::move(handler); }
  /// Whether the window has left the list and will be destroyed after the current event.
  bool Closed() const;

 private:
  friend struct NativeWindow;
  friend void OpenWindow(std::unique_ptr<Window> window);
  std::vector<Control*> controls_;
  MenuHandlers handlers_;
  std::unique_ptr<NativeWindow> native_;
};

/// The list of open windows.
int WindowCount();
Window& WindowAt(int index);

/// Adds a new window to the list, raises the open events of its controls, then its own, and shows it if its settings
/// say so.
void OpenWindow(std::unique_ptr<Window> window);
/// Creates a window of class W and opens it.
template <class W>
W& New() {
  auto window = std::make_unique<W>();
  W& made = *window;
  OpenWindow(std::move(window));
  return made;
}

/// Calls `visit` for each open window of class W, in the order of the list.
template <class W, class Visit>
void ForEachWindow(Visit visit) {
  for (int i = 0; i < WindowCount(); ++i)
    if (auto* window = dynamic_cast<W*>(&WindowAt(i))) visit(*window);
}

/// A window class with one implicit instance, created at its first use and recreated at the next use after it was
/// closed.
template <class W>
class SingletonWindow : public Window {
 public:
  static W& Instance() { return instance_ && !instance_->Closed() ? static_cast<W&>(*instance_) : New<W>(); }

 protected:
  explicit SingletonWindow(const WindowSettings& settings) : Window(settings) { instance_ = this; }
  ~SingletonWindow() override {
    if (instance_ == this) instance_ = nullptr;
  }

 private:
  static inline SingletonWindow* instance_ = nullptr;
};

}  // namespace platform

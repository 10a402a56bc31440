#pragma once
/// Windows. All open windows, also hidden ones, stand in one list in the order of their making; the list owns them.

#include <functional>
#include <initializer_list>
#include <map>
#include <memory>

#include "platform/pictures/DragItem.h"
#include "platform/widgets/Control.h"
#include "platform/widgets/MenuBar.h"

namespace platform {

enum class Frame { Document, MovableModal };

/// What a window is made with. Sizes are those of the content, logical pixels; the menu bar and frame come on top.
struct WindowSettings {
  String title{};
  int width = 300, height = 200;
  int minWidth = 64, minHeight = 64;
  int maxWidth = 32000, maxHeight = 32000;
  bool visible = true;  ///< shown as soon as it is made
  Frame frame = Frame::Document;
  bool resizeable = true;                ///< by the user; code can always set the size
  platform::MenuBar* menuBar = nullptr;  ///< shown in the window; without one its keys work all the same
  bool centered = false;                 ///< on the main screen, at the first showing
};

using MenuHandlers = std::map<String, std::function<bool()>>;

class Window {
 public:
  explicit Window(const WindowSettings& settings);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Shows the window and brings it to the front.
  void Show();
  void Hide();
  /// Ends the window: it leaves the list at once, and its object ends after the running event.
  void Close();
  /// Shows the window, keeps all others from the user, and returns when it has been hidden.
  void ShowModal();
  /// Gives the keyboard to the window itself, away from any control.
  void SetFocus();
  bool Visible() const;
  void Visible(bool visible);
  int Left() const;
  void Left(int left);  ///< of the content, screen coordinates
  int Top() const;
  void Top(int top);
  int Width() const;
  /// Controls follow by their locks at once. A size beyond the present limits is set all the same.
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
  /// Accepts drops of files of the registered type of that name.
  void AcceptFileDrop(const String& typeName);

  /// The control of that name (and index in a control array), or nullptr.
  Control* FindControl(const String& name, int index = 0) const;
  /// All controls, in the order of their making.
  const std::vector<Control*>& Controls() const { return controls_; }

  // Events. Each is dispatched inside one handler that reports an uncaught failure.
  virtual void Event_Open() {}
  /// The window is asked to close. True keeps it.
  virtual bool Event_CancelClose(bool /*appQuitting*/) { return false; }
  virtual void Event_Resized() {}
  /// A key that no control used, as a string of one character: arrows left 28, right 29, up 30, down 31.
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
  /// A control without a place, such as a timer.
  void CreateControl(Control& control, const char* name);
  void AddMenuHandler(const String& item, std::function<bool()> handler) { handlers_[item] = std::move(handler); }
  /// The window has left the list and ends after the running event.
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

/// Puts a newly made window into the list, raises the open events of its controls, then its own, and shows it if it is
/// made visible.
void OpenWindow(std::unique_ptr<Window> window);
/// Makes a window of class W and opens it.
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

/// A window class with one implicit instance, made at its first reference and made anew after it was closed.
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

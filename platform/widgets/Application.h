#pragma once

#include <functional>

#include "platform/widgets/MenuBar.h"
#include "platform/widgets/MouseCursor.h"
#include "platform/widgets/Window.h"

namespace platform {

/// Starts the toolkit; of the words of the command line it gets the program's name alone. Before any window or
/// application object; once. Chooses X11 where the desktop is Wayland (which
/// does not let windows place themselves) unless the user's environment says otherwise, sets the fixed light look,
/// installs text drawing and the tidy handling of uncaught failures. The toolkit ends with the application object, and
/// all windows with it.
void StartToolkit(char** argv);

class Application {
 public:
  Application();
  virtual ~Application();

  /// The event loop has started.
  virtual void Event_Open() {}
  /// The menus are brought up to date.
  virtual void Event_EnableMenuItems() {}

  /// Passes true to each window's Event_CancelClose, unless one of them keeps the program, closes all windows and ends
  /// the event loop after the running event. Safe in any handler.
  void Quit(int status = 0);
  /// Raises Event_Open. From then on the menus are brought up to date, and a window with a menu bar that is hidden when
  /// no other one is visible becomes an icon, from which the user can bring it back; its Visible is false until then.
  void Open();
  /// Opens the application and runs the event loop until Quit. Returns the status.
  int Run();

  void MenuBar(platform::MenuBar* bar);
  platform::MenuBar* MenuBar() const { return menuBar_; }
  platform::ResourceFork ResourceFork() const { return {}; }
  const MenuHandlers& Handlers() const { return handlers_; }
  /// Brings the menus up to date now.
  void UpdateMenus();
  /// The window in front: the active one, or the one last active and visible; nullptr if there is none.
  Window* FrontWindow() const;
  /// Handles a chosen menu item, as MenuBar.h tells. True if somebody handled it.
  bool ChooseMenuItem(const String& name);

  static Application* Current();

 protected:
  void AddMenuHandler(const String& item, std::function<bool()> handler) { handlers_[item] = std::move(handler); }

 private:
  MenuHandlers handlers_;
  platform::MenuBar* menuBar_ = nullptr;
};

/// Runs one event. An exception ends it and is reported in a message, never passed on to the toolkit. At its end what
/// was drawn on live surfaces is put on the screen and the menus are brought up to date.
void Dispatch(const std::function<void()>& event);

/// Runs long work on another thread and returns when it has ended. Meanwhile the windows are painted and the window
/// system is answered, but no click, key or timer comes in. The work must not touch a window, nor anything that a Paint
/// handler reads. What it throws is thrown here.
void AwaitWork(const std::function<void()>& work);

/// A handler of an event as a method of the window: `PB.Action = Handler(this, &Main::PB_Action)`.
template <class W, class R, class... Arguments>
std::function<R(Arguments...)> Handler(W* window, R (W::*method)(Arguments...)) {
  return [window, method](Arguments... arguments) { return (window->*method)(arguments...); };
}

}  // namespace platform

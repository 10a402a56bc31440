#pragma once

#include <functional>

#include "platform/widgets/MenuBar.h"
#include "platform/widgets/MouseCursor.h"
#include "platform/widgets/Window.h"

namespace platform {

/// Starts the toolkit, which gets only the program's name from `argv`. Call it once, before any window or application
/// object is created. On a Wayland desktop, where windows cannot position themselves, it chooses X11 unless the user's
/// environment says otherwise. It also sets the fixed light look and installs text drawing. The destructor of the
/// application object ends the toolkit and all windows.
void StartToolkit(char** argv);

class Application {
 public:
  Application();
  virtual ~Application();

  /// The event loop has started.
  virtual void Event_Open() {}
  /// Called to update the menus.
  virtual void Event_EnableMenuItems() {}

  /// Calls each window's Event_CancelClose(true); unless one of them returns true, closes all windows and ends the
  /// event loop after the current event. Can be called in any handler.
  void Quit(int status = 0);
  /// Raises Event_Open. From then on the menus are updated, and hiding the last visible window with a menu bar
  /// minimises it instead, so that the user can bring it back; its Visible is false until then.
  void Open();
  /// Opens the application and runs the event loop until Quit. Returns the status.
  int Run();

  void MenuBar(platform::MenuBar* bar);
  platform::MenuBar* MenuBar() const { return menuBar_; }
  platform::ResourceFork ResourceFork() const { return {}; }
  const MenuHandlers& Handlers() const { return handlers_; }
  /// Updates the menus now.
  void UpdateMenus();
  /// The window in front: the active one, or the visible one that was active last; nullptr if there is none.
  Window* FrontWindow() const;
  /// Handles a chosen menu item as described in MenuBar.h. Returns true if a handler accepted it.
  bool ChooseMenuItem(const String& name);

  static Application* Current();

 protected:
  void AddMenuHandler(const String& item, std::function<bool()> handler) { handlers_[item] = std::move(handler); }

 private:
  MenuHandlers handlers_;
  platform::MenuBar* menuBar_ = nullptr;
};

/// Runs the handler of one event. An exception ends it and is reported in a message; it never reaches the toolkit.
/// Afterwards, what was drawn on live surfaces is put on the screen and the menus are updated.
void Dispatch(const std::function<void()>& event);

/// Runs long work on another thread and returns when it has finished. Meanwhile windows are painted and the window
/// system is served, but no click, key or timer is delivered. The work must not access a window or anything that a
/// Paint handler reads. Its exceptions are rethrown here.
void AwaitWork(const std::function<void()>& work);

/// A handler of an event as a method of the window: `PB.Action = Handler(this, &Main::PB_Action)`.
template <class W, class R, class... Arguments>
std::function<R(Arguments...)> Handler(W* window, R (W::*method)(Arguments...)) {
  return [window, method](Arguments... arguments) { return (window->*method)(arguments...); };
}

}  // namespace platform

#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "platform/qt/NativeControl.h"
#include "platform/widgets/Window.h"

class QEventLoop;
class QMenuBar;

namespace platform {

struct NativePanel;

/// The toolkit's window: a menu bar, if any, above a content of exactly the window's size.
struct NativeWindow {
  NativeWindow(Window& owner, const WindowSettings& wanted);
  ~NativeWindow();
  NativeWindow(const NativeWindow&) = delete;

  void Show();
  /// Hides the window. One with menus leaves the screen at the end of the running event: if no other window with menus
  /// is left by then, it becomes an icon, so that the user can get at the menus again.
  void Hide();
  /// Takes the window off the screen at once.
  void Leave();
  void ShowModal();
  /// Shows the window at the end of the running event, so that it appears at its final size and place.
  void ShowSoon();
  bool Visible() const;
  void SetSize(int newWidth, int newHeight);
  void SetLimits();
  void SetPlace(int left, int top);
  QPoint Place() const;
  void SetMenuBar(platform::MenuBar* menuBar);
  /// Makes the bar as high as its font needs; the content keeps its size and place.
  void FitMenuBar();
  int BarHeight() const { return barHeight; }

  /// The content got a size: places bar and content, lets the controls follow, tells the window.
  void Adopt(int newWidth, int newHeight);
  void SyncActive();
  /// The user may have brought back a window that was hidden as an icon.
  void SyncAway();
  void AskToClose();
  /// A key that no control used. True if it did something.
  bool KeyDown(class QKeyEvent& key);
  void AcceptDrops(const String& typeName);
  bool Accepts(const class QMimeData& data) const;
  /// Takes the files of a drop; the window hears of them when the source of the drag has its answer.
  void TakeDrop(const QMimeData& data);
  /// No event of the window is raised any more.
  void Retire();
  /// Raises an event of the window unless it is closed.
  void Raise(const std::function<void(Window&)>& event);

  Window& window;
  WindowSettings settings;  ///< sizes and limits are kept up to date here
  std::unique_ptr<QWidget> frame;
  QWidget* content = nullptr;
  QMenuBar* bar = nullptr;
  platform::MenuBar* menuBar = nullptr;
  std::vector<NativeControl*> controls;
  NativePanel* panel = nullptr;
  std::vector<String> acceptedTypes;
  int barHeight = 0;
  unsigned long long lastInFront = 0;  ///< the greater, the later it was in front; 0 never
  bool opened = false;
  bool closed = false;
  bool showSoon = false;
  bool away = false;            ///< hidden for the program: an icon, or about to leave the screen
  bool active = false;          ///< as last told to the window
  bool awaitsExposure = false;  ///< shown, and not exposed since
  QEventLoop* modalLoop = nullptr;

 private:
  void Arrange();
  void AttachMenus();
};

/// The window that a widget stands in, or nullptr.
NativeWindow* NativeWindowOf(const QWidget* widget);
/// Makes the window the front one.
void BringToFront(NativeWindow& window);
/// Shows the windows that wait for the end of the event.
void ShowWaitingWindows();
/// Takes the hidden windows off the screen, or makes the first one an icon if no window with menus is visible.
void SettleAwayWindows();
/// Ends closed windows unless a handler has begun.
void EndClosedWindows();
bool WindowsWaitForTheirEnd();
/// Ends all windows; nothing of the system runs meanwhile.
void EndAllWindows();

}  // namespace platform

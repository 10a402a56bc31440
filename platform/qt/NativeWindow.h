#pragma once

#include <QPointer>
#include <QWidget>
#include <vector>

#include "platform/pictures/FolderItem.h"
#include "platform/qt/NativeControl.h"
#include "platform/widgets/Window.h"

class QEventLoop;
class QMenuBar;

namespace platform {

struct NativePanel;
class ScrollingContent;

/// The toolkit's implementation of a window: a menu bar, if any, above a content of exactly the window's size. If the
/// usable screen cannot hold the content, the frame shows a part of it, with scroll bars.
struct NativeWindow {
  NativeWindow(Window& owner, const WindowSettings& wanted);
  ~NativeWindow();
  NativeWindow(const NativeWindow&) = delete;

  void Show();
  /// Hides the window. A window with menus is hidden at the end of the current event; if no other window with menus is
  /// visible then, it is minimised instead, so that the user can reach the menus.
  void Hide();
  /// Removes the window from the screen at once.
  void Leave();
  void ShowModal();
  /// Shows the window at the end of the current event, so that it appears with its final size and position.
  void ShowSoon();
  bool Visible() const;
  void SetSize(int newWidth, int newHeight);
  void SetLimits();
  void SetPlace(int left, int top);
  QPoint Place() const;
  void SetMenuBar(platform::MenuBar* menuBar);
  /// Fits the height of the bar to its font; the content keeps its size and position.
  void FitMenuBar();

  /// Handles a new size of the frame that the user or the window manager has set: the content follows within its
  /// limits.
  void FollowFrame();
  /// Sets the size of the content: lets the controls follow and raises Event_Resized.
  void Adopt(int newWidth, int newHeight);
  void SyncActive();
  /// Handles the user's restoring of a window that was minimised instead of hidden.
  void SyncAway();
  void AskToClose();
  /// Handles a key that no control used. Returns true if it had an effect.
  bool KeyDown(class QKeyEvent& key);
  void AcceptDrops(const String& typeName);
  /// The files of a drag that are of a type which the window accepts.
  std::vector<Ref<FolderItem>> AcceptedFiles(const class QMimeData& data) const;
  /// Raises the window's event for the files of a drop, if any, after the source of the drag has got its reply.
  void TakeDrop(std::vector<Ref<FolderItem>> dropped);
  /// From now on no event of the window is raised.
  void Retire();
  /// Raises an event of the window unless it is closed.
  void Raise(const std::function<void(Window&)>& event);

  Window& window;
  WindowSettings settings;  ///< its sizes and limits are the current ones
  std::unique_ptr<QWidget> frame;
  ScrollingContent* scrolling = nullptr;  ///< below the menu bar, shows the content or a part of it
  QWidget* content = nullptr;
  QSize view;  ///< last known size of the frame without menu bar
  QMenuBar* bar = nullptr;
  platform::MenuBar* menuBar = nullptr;
  std::vector<NativeControl*> controls;
  NativePanel* panel = nullptr;
  std::vector<String> acceptedTypes;
  int barHeight = 0;
  unsigned long long lastInFront = 0;  ///< the larger, the more recently it was in front; 0: never
  bool opened = false;
  bool closed = false;
  bool showSoon = false;
  bool activateSoon = false;
  bool away = false;            ///< hidden as far as the program is concerned: minimised, or about to be hidden
  bool active = false;          ///< whether Event_Activate was raised last
  bool awaitsExposure = false;  ///< shown, but not exposed since
  QEventLoop* modalLoop = nullptr;

 private:
  /// Positions bar and content in the frame.
  void Arrange();
  QSize ContentSize() const { return {settings.width, settings.height}; }
  /// The view of a content of that size: as large as the content if the usable screen can hold it.
  QSize FittingView(QSize whole) const;
  /// Gives the frame the size that fits the content.
  void FitFrame();
  void AttachMenus();
};

/// Makes the window the front one.
void BringToFront(NativeWindow& window);
/// Shows the windows for which ShowSoon was called, then activates the one for which ActivateSoon was called.
void ShowWaitingWindows();
/// Removes hidden windows from the screen, or minimises the first one if no window with menus is visible.
void SettleAwayWindows();
/// Destroys closed windows unless a handler has begun.
void EndClosedWindows();
bool WindowsWaitForTheirEnd();
/// Destroys all windows without raising events.
void EndAllWindows();

}  // namespace platform

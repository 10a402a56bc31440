#include "platform/widgets/Screen.h"

#include <QGuiApplication>
#include <QKeyEvent>
#include <QScreen>
#include <algorithm>
#include <chrono>

#include "platform/qt/NativeMenus.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Application.h"

namespace platform {

int heldKeys = -1;

namespace {

QRect Available(int index) {
  const auto screens = QGuiApplication::screens();
  const QScreen* screen = index > 0 && index < screens.size() ? screens[index] : QGuiApplication::primaryScreen();
  return screen ? screen->availableGeometry() : QRect();
}

bool Held(Qt::KeyboardModifier key) {
  const int held = heldKeys >= 0 ? heldKeys : static_cast<int>(QGuiApplication::queryKeyboardModifiers());
  return (held & key) != 0;
}

/// State of the Control key: held for the cursor or for a shortcut.
struct ControlHold {
  bool reported = false;                ///< AsyncControlKey returned true since it was pressed
  bool forShortcut = false;             ///< a shortcut was pressed since then
  bool reportedBecameShortcut = false;  ///< a reported press became a shortcut; kept after the release
};
ControlHold hold;

/// Whether the key with Control is a shortcut, even of a disabled item.
bool IsShortcut(const QKeyEvent& key) {
  Application* application = Application::Current();
  if (!(key.modifiers() & Qt::ControlModifier) || !application || !application->MenuBar()) return false;
  const auto& items = application->MenuBar()->Items();
  return std::any_of(items.begin(), items.end(), [&](const auto& item) {
    const QAction* action = item->NativeItem().action;
    return action && !action->shortcut().isEmpty() && action->shortcut()[0].key() == key.key();
  });
}

/// Observes key events before any widget handles them.
class ShortcutWatch : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() != QEvent::ShortcutOverride && event->type() != QEvent::KeyPress &&
        event->type() != QEvent::KeyRelease)
      return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (key.key() == Qt::Key_Control) {
      hold.forShortcut = false;  // on a press too: another program may have received the release
      if (event->type() == QEvent::KeyRelease) hold.reported = false;
    } else if (event->type() != QEvent::KeyRelease && IsShortcut(key)) {
      hold.forShortcut = true;
      hold.reportedBecameShortcut |= hold.reported;
    }
    return false;
  }
};

}  // namespace

void WatchShortcuts() { qApp->installEventFilter(new ShortcutWatch(qApp)); }

int Screen::AvailableLeft() const { return Available(index_).left(); }
int Screen::AvailableTop() const { return Available(index_).top(); }
int Screen::AvailableWidth() const { return Available(index_).width(); }
int Screen::AvailableHeight() const { return Available(index_).height(); }

bool Keyboard::AsyncShiftKey() { return Held(Qt::ShiftModifier); }

bool Keyboard::AsyncControlKey() {
  const bool held = Held(Qt::ControlModifier);
  if (!held) hold.reported = hold.forShortcut = false;
  if (!held || hold.forShortcut) return false;
  hold.reported = true;
  hold.reportedBecameShortcut = false;
  return true;
}

bool Keyboard::ControlBecameShortcut() { return hold.reportedBecameShortcut; }

bool Keyboard::AsyncOptionKey() { return Held(Qt::AltModifier); }

int Ticks() {
  using Sixtieths = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;
  static const auto start = std::chrono::steady_clock::now() - std::chrono::seconds(1);
  return static_cast<int>(std::chrono::duration_cast<Sixtieths>(std::chrono::steady_clock::now() - start).count());
}

}  // namespace platform

#include <QGuiApplication>
#include <QScreen>
#include <chrono>

#include "platform/widgets/Screen.h"
#include "platform/qt/NativeToolkit.h"

namespace platform {

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

#ifdef Q_OS_MACOS
constexpr auto kControlKey = Qt::MetaModifier;  // Qt calls the command key Control there
#else
constexpr auto kControlKey = Qt::ControlModifier;
#endif

}  // namespace

int Screen::AvailableLeft() const { return Available(index_).left(); }
int Screen::AvailableTop() const { return Available(index_).top(); }
int Screen::AvailableWidth() const { return Available(index_).width(); }
int Screen::AvailableHeight() const { return Available(index_).height(); }

bool Keyboard::AsyncShiftKey() { return Held(Qt::ShiftModifier); }
bool Keyboard::AsyncControlKey() { return Held(kControlKey); }
bool Keyboard::AsyncOptionKey() { return Held(Qt::AltModifier); }

int Ticks() {
  using Sixtieths = std::chrono::duration<std::int64_t, std::ratio<1, 60>>;
  static const auto start = std::chrono::steady_clock::now() - std::chrono::seconds(1);
  return static_cast<int>(std::chrono::duration_cast<Sixtieths>(std::chrono::steady_clock::now() - start).count());
}

}  // namespace platform

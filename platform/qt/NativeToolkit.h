#pragma once
/// What the parts of the toolkit's side share: the state of the running event, the gate that keeps input out while a
/// handler runs, work that waits until no handler runs, and conversions.

#include <QAccessible>
#include <QColor>
#include <QImage>
#include <QRect>
#include <QString>
#include <functional>

#include "platform/pictures/Picture.h"
#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "platform/values/String.h"

class QPaintEvent;
class QWidget;

namespace platform {

struct NativeWindow;

QString ToQString(const String& text);
String FromQString(const QString& text);
/// The text with its ampersands doubled, so that none marks an access key.
QString WithoutAccessKey(const String& text);
inline QColor ToQColor(Color color) { return QColor::fromRgb(color | 0xFF000000U); }
/// A copy of the pixels. The picture keeps none of the image's alpha.
Ref<Picture> ToPicture(const QImage& image);
/// A copy of part of the pixels, opaque, as the toolkit wants them: a colour of ours has the unused byte 0.
QImage OpaqueImage(PlaneView<const Color> pixels, const QRect& part);
/// A copy, transparent where the picture's mask says so.
QImage ToQImage(const Ref<Picture>& picture);

/// What assistive technology takes a widget of no class of its own for. The toolkit has no role for those.
void SetRole(QWidget& widget, QAccessible::Role role);
/// Makes the roles known. Once, at the start.
void InstallRoles();

/// Whether a handler runs now. One that waits for the answer to a modal window or a dialog does not.
bool HandlerRuns();
/// Whether a handler has begun and not ended, be it waiting or not.
bool HandlerBegun();
/// Whether input is kept out at the moment.
bool GateClosed();

/// Whether the application has been opened and does not quit.
bool ApplicationRuns();

/// Calls `work` from the event loop as soon as no handler runs, in the order of the calls.
void RunSoon(std::function<void()> work);
/// Runs the event with the failure guard alone, without what ends an event.
void Guarded(const std::function<void()>& event);

/// Lets the toolkit serve paints, exposes and the window manager. Input waits for the end of the handler; once the
/// handler has run for half a second it is dropped.
void PumpUnderGate();
/// Pumps if a handler has been running for some time since it began or since the last pump.
void PumpIfDue();
/// Repaints a widget of the window; it is on the screen at the return. Outside a visible window it does nothing.
void PutOnScreen(NativeWindow& window, QWidget& widget);
/// Waits, up to a second, until a window that was just shown can be painted.
void AwaitExposure(NativeWindow& window);

/// While it lives a nested event loop serves the user: input passes, and handlers run as outermost ones.
class NestedLoop {
 public:
  NestedLoop();
  ~NestedLoop();
  NestedLoop(const NestedLoop&) = delete;

 private:
  int depth_;
  bool closed_;
  int painting_;
};

/// While it lives the toolkit is inside a paint of its own: nothing else may be painted or shown.
class PaintScope {
 public:
  PaintScope();
  ~PaintScope();
  PaintScope(const PaintScope&) = delete;
};
bool InsidePaint();

/// Watches the keyboard for shortcuts, which the Control key alone does not show.
void WatchShortcuts();

/// Keys held by a test in the user's place; bits of Qt::KeyboardModifier. Below 0: the real keyboard counts.
extern int heldKeys;

}  // namespace platform

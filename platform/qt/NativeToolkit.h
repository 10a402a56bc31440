#pragma once
/// Shared by the files of platform/qt: queries about the current event, work to be run when no handler runs, waiting
/// for the screen, and conversions.

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
inline QColor ToQColor(Color color) { return QColor::fromRgb(color); }
/// A copy of the pixels, without the image's alpha.
Ref<Picture> ToPicture(const QImage& image);
/// A copy with alpha from the picture's mask.
QImage ToQImage(const Ref<Picture>& picture);

/// Sets the accessible role of a widget for whose class Qt has none.
void SetRole(QWidget& widget, QAccessible::Role role);
/// Installs the factory for these roles. Once, at the start.
void InstallRoles();

/// Whether a handler is running. One that waits for a modal window or a dialog does not count.
bool HandlerRuns();
/// Whether a handler has begun and not ended, even if it waits.
bool HandlerBegun();
/// Whether input is blocked.
bool GateClosed();

/// Whether the application has been opened and is not quitting.
bool ApplicationRuns();

/// Queues work to be run by the event loop as soon as no handler runs.
void RunSoon(std::function<void()> work);
/// Runs the event and reports an exception, without the steps that end an event in Dispatch.
void RunReported(const std::function<void()>& event);

/// Processes paints, expose events and messages of the window manager. Input waits for the end of the handler; once the
/// handler has run for half a second it is dropped.
void PumpUnderGate();
/// Pumps if a handler has been running for some time since it began or since the last pump.
void PumpIfDue();
/// Paints what has changed in the window, if the widget in it is visible; it is on the screen when the call returns.
/// During a paint of the toolkit it is painted later.
void PutOnScreen(NativeWindow& window, const QWidget& widget);
/// Waits up to a second until a window that was just shown is exposed.
void AwaitExposure(NativeWindow& window);

/// The scope of a nested event loop: input is not blocked, and handlers run as outermost ones.
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

/// The scope of a paint by the toolkit: nothing else may be painted or shown.
class PaintScope {
 public:
  PaintScope();
  ~PaintScope();
  PaintScope(const PaintScope&) = delete;
};
bool InsidePaint();

/// Installs the event filter that distinguishes Control held for a shortcut from Control held for the cursor.
void WatchShortcuts();

/// Modifier keys simulated by a test: bits of Qt::KeyboardModifier. Below 0, the real keyboard is read.
extern int heldKeys;

}  // namespace platform

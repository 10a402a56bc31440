#include "platform/qt/EventGate.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPointer>
#include <QWindow>

#include "platform/qt/Dispatcher.h"
#include "platform/qt/NativeWindow.h"

namespace platform {

InputGate* gate = nullptr;

namespace {

void NoteFront(QObject* receiver) {
  if (auto* window = qobject_cast<QWindow*>(receiver))
    for (int i = 0; i < WindowCount(); ++i)
      if (WindowAt(i).Native().frame->windowHandle() == window) BringToFront(WindowAt(i).Native());
}
void HoldBack(QObject* receiver, const QMouseEvent& release) {
  RunSoon([target = QPointer<QObject>(receiver), event = std::shared_ptr<QMouseEvent>(release.clone())] {
    if (target) QCoreApplication::sendEvent(target, event.get());
  });
}

}  // namespace

bool InputGate::eventFilter(QObject* receiver, QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: {
      const auto button = static_cast<QMouseEvent*>(event)->button();
      if (closed_) {
        swallowed_ |= button;
        return true;
      }
      swallowed_ &= ~Qt::MouseButtons(button);
      NoteFront(receiver);
      return false;
    }
    case QEvent::MouseButtonRelease: {
      const auto* release = static_cast<QMouseEvent*>(event);
      if (swallowed_ & release->button()) {
        swallowed_ &= ~Qt::MouseButtons(release->button());
        return true;
      }
      if (closed_) HoldBack(receiver, *release);
      return closed_;
    }
    case QEvent::MouseMove:
      return closed_ || (static_cast<QMouseEvent*>(event)->buttons() & swallowed_);
    case QEvent::ShortcutOverride:
      if (closed_) {
        event->accept();  // so that no shortcut is matched
        return true;
      }
      NoteFront(receiver);
      if (running.application && !HandlerRuns()) running.application->UpdateMenus();
      return false;
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::InputMethod:
    case QEvent::ContextMenu:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonRelease:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::TabletPress:
    case QEvent::TabletMove:
    case QEvent::TabletRelease:
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel:
    case QEvent::NativeGesture:
      return closed_;
    case QEvent::Close:
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      if (closed_) event->ignore();
      return closed_;
    case QEvent::Quit:
      if (receiver != qApp || !running.application) return false;
      RunSoon([] {
        if (running.application && !running.quitting) Dispatch([] { running.application->Quit(); });
      });
      return true;
    default:
      return false;
  }
}

}  // namespace platform

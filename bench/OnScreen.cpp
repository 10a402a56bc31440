#include "bench/OnScreen.h"

#include <xcb/xcb.h>

#include <QApplication>
#include <QPainter>
#include <QSet>
#include <QWidget>
#include <QWindow>
#include <cstdlib>
#include <memory>

namespace bench {

namespace {

/// Records which windows are painted.
class PaintWatch : public QObject {
 public:
  PaintWatch() { qApp->installEventFilter(this); }
  QSet<const QWidget*> painted;

 protected:
  bool eventFilter(QObject* receiver, QEvent* event) override {
    if (event->type() == QEvent::Paint && receiver->isWidgetType())
      painted.insert(static_cast<QWidget*>(receiver)->window());
    return false;
  }
};

}  // namespace

void AwaitServer() {
  const auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (!x11) return;
  // The server handles the requests of a connection in order: any reply means that all earlier ones are done.
  std::free(xcb_get_input_focus_reply(x11->connection(), xcb_get_input_focus(x11->connection()), nullptr));
}

void AwaitNewWindows(int count, const std::function<void()>& act) {
  QSet<const QWidget*> before;
  for (const QWidget* window : QApplication::topLevelWidgets())
    if (window->windowHandle() && window->windowHandle()->isExposed()) before.insert(window);
  PaintWatch watch;
  act();
  while ((watch.painted - before).size() < count) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  AwaitServer();
}

ToolkitImage::ToolkitImage(int width, int height, QPoint position) : image(width, height, QImage::Format_RGB32) {
  image.fill(Qt::gray);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setFixedSize(width, height);
  move(position);
  AwaitNewWindows(1, [this] { show(); });
}

void ToolkitImage::paintEvent(QPaintEvent*) { QPainter(this).drawImage(0, 0, image); }

}  // namespace bench

#pragma once
/// Waits for the screen.

#include <QImage>
#include <QWidget>
#include <functional>

namespace bench {

/// Returns when the X server has handled all requests of this program; without an X server at once.
void AwaitServer();

/// Calls `act` and processes events until `count` windows have been painted that were not exposed before.
void AwaitNewWindows(int count, const std::function<void()>& act);

/// A window that shows an image by the toolkit alone.
class ToolkitImage : public QWidget {
 public:
  /// The window is on the screen when this returns.
  ToolkitImage(int width, int height, QPoint position);
  QImage image;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace bench

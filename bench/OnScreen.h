#pragma once
/// What the benches ask the screen itself.

#include <QImage>
#include <QWidget>
#include <functional>

namespace bench {

/// Returns when the X server has carried out everything that this program asked of it. Elsewhere at once.
void AwaitServer();

/// Acts, and handles events until so many windows have been painted that were not there before or not yet painted.
void AwaitNewWindows(int count, const std::function<void()>& act);

/// An image that the toolkit alone puts on the screen, in a window of its own.
class ToolkitImage : public QWidget {
 public:
  /// Shown at that place when it returns.
  ToolkitImage(int width, int height, QPoint place);
  QImage image;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace bench

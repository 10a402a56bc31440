#pragma once

#include <QPoint>
#include <QScrollArea>
#include <optional>

namespace platform {

/// The content of a window, or as much of it as the frame has room for, with scroll bars. Keys are left to the window.
class ScrollingContent : public QScrollArea {
 public:
  explicit ScrollingContent(QWidget* frame);

  /// The width of a scroll bar.
  int BarExtent() const;
  /// See Window::Reveal.
  void Reveal(const QWidget& control);
  void EndReveal();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  QPoint Scrolled() const;
  std::optional<QPoint> scrolledFrom_;  ///< the position to which EndReveal returns
};

}  // namespace platform

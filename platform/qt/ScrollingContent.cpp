#include "platform/qt/ScrollingContent.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>
#include <QWheelEvent>
#include <QWindow>
#include <utility>

#include "platform/qt/NativeToolkit.h"

namespace platform {

ScrollingContent::ScrollingContent(QWidget* frame) : QScrollArea(frame) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  SetRole(*this, QAccessible::Pane);
  const auto parts = findChildren<QWidget*>(Qt::FindDirectChildrenOnly);  // viewport, places of the scroll bars
  for (QWidget* part : parts) SetRole(*part, QAccessible::Pane);
  setWidget(new QWidget);
}

int ScrollingContent::BarExtent() const { return style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this); }

QPoint ScrollingContent::Scrolled() const { return {horizontalScrollBar()->value(), verticalScrollBar()->value()}; }

void ScrollingContent::Reveal(const QWidget& control) {
  if (!scrolledFrom_) scrolledFrom_ = Scrolled();
  const QRect place = control.geometry();
  ensureVisible(place.center().x(), place.center().y(), place.width() / 2 + 1, place.height() / 2 + 1);
}

void ScrollingContent::EndReveal() {
  const auto position = std::exchange(scrolledFrom_, std::nullopt);
  if (!position) return;
  horizontalScrollBar()->setValue(position->x());
  verticalScrollBar()->setValue(position->y());
}

void ScrollingContent::keyPressEvent(QKeyEvent* event) { event->ignore(); }

void ScrollingContent::wheelEvent(QWheelEvent* event) {
  const QPoint before = Scrolled();
  QScrollArea::wheelEvent(event);
  if (Scrolled() == before) return;
  // The pointer is over another part of the content now, as if it had moved. The window system does not report that.
  QWindow* frame = window()->windowHandle();
  const QPointF at = event->globalPosition();
  QMouseEvent move(QEvent::MouseMove, frame->mapFromGlobal(at), at, Qt::NoButton, event->buttons(), event->modifiers());
  QCoreApplication::sendEvent(frame, &move);
}

}  // namespace platform

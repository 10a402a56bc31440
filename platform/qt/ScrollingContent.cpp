#include "platform/qt/ScrollingContent.h"

#include <QKeyEvent>
#include <QScrollBar>
#include <QStyle>
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

}  // namespace platform

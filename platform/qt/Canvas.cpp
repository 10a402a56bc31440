#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "platform/qt/NativeCanvas.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/qt/NativeWindow.h"
#include "platform/values/Memory.h"
#include "platform/values/Numbers.h"

namespace platform {

namespace {

std::vector<NativeCanvas*> canvases;

class CanvasWidget : public QWidget {
 public:
  CanvasWidget(QWidget* parent, NativeCanvas& native) : QWidget(parent), native_(native) {
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
    SetRole(*this, QAccessible::Graphic);
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    const PaintScope scope;
    RunReported([this, event] {
      native_.FitBacking();
      if (native_.dirty) native_.Compose();
      native_.Show(event->region());
    });
  }

  void showEvent(QShowEvent* event) override {
    if (!event->spontaneous()) native_.dirty = true;
  }
  void hideEvent(QHideEvent* event) override {
    if (!event->spontaneous()) native_.FitBacking();
  }

  void mousePressEvent(QMouseEvent* event) override {
    const QPoint at = PixelOf(event->position());
    if (event->button() != Qt::LeftButton || !rect().contains(at)) return;
    native_.window.content->setFocus();
    native_.dragging = native_.Ask(native_.canvas.MouseDown, at.x(), at.y());
  }
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }

  void mouseMoveEvent(QMouseEvent* event) override {
    const QPoint at = PixelOf(event->position());
    if (native_.dragging && (event->buttons() & Qt::LeftButton)) {
      native_.Raise(native_.canvas.MouseDrag, at.x(), at.y());
    } else if (!event->buttons() && rect().contains(at)) {
      native_.SyncInside();
      native_.Raise(native_.canvas.MouseMove, at.x(), at.y());
    }
  }

  void mouseReleaseEvent(QMouseEvent* event) override {
    const QPoint at = PixelOf(event->position());
    if (event->button() != Qt::LeftButton || !native_.dragging) return;
    native_.dragging = false;
    native_.Raise(native_.canvas.MouseUp, at.x(), at.y());
  }

  void enterEvent(QEnterEvent*) override { native_.SyncInside(); }
  void leaveEvent(QEvent*) override { native_.SyncInside(); }

 private:
  NativeCanvas& native_;
};

}  // namespace

NativeCanvas::NativeCanvas(NativeWindow& owner, Canvas& control) : NativeControl(owner, nullptr), canvas(control) {
  widget = new CanvasWidget(owner.content, *this);
  canvases.push_back(this);
}

NativeCanvas::~NativeCanvas() { std::erase(canvases, this); }

void NativeCanvas::SetPlace(const Rect& newPlace) {
  NativeControl::SetPlace(newPlace);
  widget->update();
}

void NativeCanvas::FitBacking() {
  const double wantedRatio = widget->devicePixelRatioF();
  const int width = std::max(0, place.width), height = std::max(0, place.height);
  if (width == live.Width() && height == live.Height() && wantedRatio == ratio && widget->isVisible() == seen) return;
  ratio = wantedRatio;
  seen = widget->isVisible();
  // Release the old image first. If there is no memory for the new one, there is none, and the next paint does not
  // retry.
  pixels = nullptr;
  backdrop.reset();
  deviceWidth = deviceHeight = 0;
  SetLiveSurface(width, height);
  dirty = true;
  if (!seen) return;
  const int newWidth = static_cast<int>(std::ceil(width * ratio));
  const int newHeight = static_cast<int>(std::ceil(height * ratio));
  const std::size_t area = static_cast<std::size_t>(newWidth) * static_cast<std::size_t>(newHeight);
  pixels = std::static_pointer_cast<OpaqueColor>(AllocateZeroed(area * sizeof(OpaqueColor)));
  deviceWidth = newWidth;
  deviceHeight = newHeight;
  SetLiveSurface(width, height);
}

void NativeCanvas::SetLiveSurface(int width, int height) {
  Graphics surface({pixels.get(), deviceWidth, deviceHeight, deviceWidth}, ratio, width, height, &touched);
  surface.ForeColor = live.ForeColor;
  surface.PenWidth = live.PenWidth;
  surface.PenHeight = live.PenHeight;
  surface.UseBackdrop(backdrop);
  surface.UseOldRenderer = live.UseOldRenderer;
  surface.TextSize = live.TextSize;
  live = surface;
  touched.clear();
}

void NativeCanvas::Compose() {
  dirty = false;
  touched.clear();
  backdrop = {widget->palette().color(QPalette::Window).rgb(), nullptr};
  Graphics g({pixels.get(), deviceWidth, deviceHeight, deviceWidth}, ratio, live.Width(), live.Height());
  g.UseBackdrop(backdrop);
  Raise(canvas.Paint, g);
}

void NativeCanvas::Refresh() {
  dirty = true;
  if (InsidePaint()) return widget->update();
  if (window.showSoon) window.Show();
  if (!widget->isVisible()) return;
  AwaitExposure(window);
  if (dirty) {  // else the first paint of the window has just done it
    FitBacking();
    Compose();
    widget->repaint();
  }
  PumpIfDue();
}

void NativeCanvas::Flush() {
  if (touched.empty()) return;
  QRegion region;
  // If a logical pixel is not a whole number of device pixels, the border of the rectangle extends into the next one.
  const int rim = ratio == std::floor(ratio) ? 0 : 1;
  for (const Rect& rect : touched)
    region += QRect(rect.x, rect.y, rect.width, rect.height).adjusted(-rim, -rim, rim, rim);
  touched.clear();
  if (!dirty && widget->isVisible()) widget->repaint(region);
}

void NativeCanvas::Show(const QRegion& region) {
  QPainter painter(widget);
  painter.scale(1.0 / ratio, 1.0 / ratio);  // from here on device pixels
  // A canvas can begin within a device pixel. Qt would round the position of each band by itself.
  const QTransform origin = painter.deviceTransform();
  painter.translate(Round(origin.dx()) - origin.dx(), Round(origin.dy()) - origin.dy());
  const QImage image(reinterpret_cast<const uchar*>(Shown()), deviceWidth, deviceHeight, QImage::Format_RGB32);
  for (const QRect& rect : region) {
    const QRectF device(rect.x() * ratio, rect.y() * ratio, rect.width() * ratio, rect.height() * ratio);
    const QRect part = device.toAlignedRect().intersected({0, 0, deviceWidth, deviceHeight});
    if (backdrop && !backdrop->pixels)
      painter.fillRect(part, QColor::fromRgb(backdrop->color));
    else
      painter.drawImage(part.topLeft(), image, part);
  }
}

void NativeCanvas::SyncInside() {
  if (HandlerRuns())
    return RunSoon([guard = widget, this] {
      if (guard) SyncInside();
    });
  const bool isInside = widget->underMouse();
  if (isInside == inside) return;
  inside = isInside;
  Raise(inside ? canvas.MouseEnter : canvas.MouseExit);
}

Graphics& Canvas::Graphics() {
  auto& native = static_cast<NativeCanvas&>(NeedNative());
  native.FitBacking();
  return native.live;
}

Ref<Picture> Canvas::Image() const {
  const auto& native = static_cast<NativeCanvas&>(NeedNative());
  auto picture = MakeRef<Picture>(native.deviceWidth, native.deviceHeight);
  const auto copy = picture->Pixels();
  const std::ptrdiff_t area = std::ptrdiff_t{copy.width} * copy.height;
  if (const OpaqueColor* const shown = native.Shown())
    std::copy_n(shown, area, copy.data);
  else if (native.backdrop)
    std::fill_n(copy.data, area, native.backdrop->color);
  return picture;
}

std::unique_ptr<NativeControl> Canvas::MakeNative(NativeWindow& window, const String&) {
  return std::make_unique<NativeCanvas>(window, *this);
}

void FlushCanvases() {
  if (InsidePaint()) return;
  for (std::size_t i = 0; i < canvases.size(); ++i) canvases[i]->Flush();
}

}  // namespace platform

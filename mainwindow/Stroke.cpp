#include "mainwindow/Stroke.h"

using namespace platform;

namespace {

/// The marker row lies outside every image, so painting it shows nothing.
constexpr Point kMarker{-10, -10};
constexpr std::int64_t kMarkerSum = -40;

int StampSide(double zoom) { return ToInt32(std::max(zoom, 1.0)); }

}  // namespace

Point StrokePixelAt(int canvasX, int canvasY, double zoom) {
  return {ToInt32(Round((canvasX - zoom / 2.0) / zoom)), ToInt32(Round((canvasY - zoom / 2.0) / zoom))};
}

Rect StampAt(Point pixel, double zoom) {
  const int side = StampSide(zoom);
  return {ToInt32(pixel.x * zoom), ToInt32(pixel.y * zoom), side, side};
}

void AppendPress(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2, Point pressed) {
  AppendStep(x1, y1, x2, y2, kMarker, kMarker);
  AppendStep(x1, y1, x2, y2, pressed, pressed);
}

void AppendStep(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2, Point from, Point to) {
  x1.Append(from.x);
  y1.Append(from.y);
  x2.Append(to.x);
  y2.Append(to.y);
}

bool RemoveStroke(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2) {
  if (x1.Ubound() <= 0) return false;
  std::int64_t sum = 0;
  do {
    sum = std::int64_t{x1.Pop()} + x2.Pop() + y1.Pop() + y2.Pop();
  } while (sum != kMarkerSum && !x1.Empty());
  return true;
}

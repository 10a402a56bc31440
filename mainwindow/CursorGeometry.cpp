#include "mainwindow/CursorGeometry.h"

#include <algorithm>
#include <cmath>

#include "platform/values/Numbers.h"

using namespace platform;

namespace {

/// Distance of the ends of the small cross from its centre, and of the beginning of its arms.
constexpr int kCrossReach = 6;
constexpr int kCrossGap = 2;
constexpr double kLargestRadius = 150.0;
constexpr int kThickPenFrom = 5;

/// A saturating sum; a double represents every sum of two 32-bit integers.
int Plus(int value, int offset) { return ToInt32(static_cast<double>(value) + offset); }

}  // namespace

Point ImagePixelAt(int canvasX, int canvasY, double zoom) {
  return {ToInt32(std::floor(canvasX / zoom)), ToInt32(std::floor(canvasY / zoom))};
}

Size CanvasSizeOf(int imageWidth, int imageHeight, double zoom) {
  return {ToInt32(imageWidth * zoom), ToInt32(imageHeight * zoom)};
}

RestoredSquare SquareUnderMark(int canvasX, int canvasY, int radius, double zoom) {
  const double s = std::max(kCrossReach, radius);
  RestoredSquare square;
  square.e = ToInt32(std::ceil((2.0 * s + 1.0) / zoom + 1.0));
  square.sx = ToInt32(std::floor((canvasX - s) / zoom));
  square.sy = ToInt32(std::floor((canvasY - s) / zoom));
  square.dx = ToInt32(std::ceil(zoom * square.sx));
  square.dy = ToInt32(std::ceil(zoom * square.sy));
  square.de = ToInt32(std::ceil(zoom * square.e));
  return square;
}

std::array<Line, 4> SmallCross(int x, int y) {
  return {Line{{Plus(x, -kCrossGap), y}, {Plus(x, -kCrossReach), y}},
          Line{{Plus(x, kCrossGap), y}, {Plus(x, kCrossReach), y}},
          Line{{x, Plus(y, -kCrossGap)}, {x, Plus(y, -kCrossReach)}},
          Line{{x, Plus(y, kCrossGap)}, {x, Plus(y, kCrossReach)}}};
}

CircleMark CircleAround(int x, int y, int radius) {
  const int diameter = ToInt32(2.0 * radius + 1.0);
  return {{ToInt32(static_cast<double>(x) - radius), ToInt32(static_cast<double>(y) - radius), diameter, diameter},
          radius >= kThickPenFrom ? 2 : 1};
}

int GrownCursorSize(int radius, int canvasWidth, int canvasHeight) {
  return ToInt32(
      std::min({std::max(radius + 1.0, radius * 1.05), canvasWidth / 2.0, canvasHeight / 2.0, kLargestRadius}));
}

int ShrunkCursorSize(int radius) { return ToInt32(std::max(std::min(radius - 1.0, radius * 0.95), 1.0)); }

Color NextCursorColor(Color color) {
  switch (Red(color)) {
    case 0:
      return kWhite;
    case 255:
      return RGB(128, 128, 128);
    default:
      return kBlack;
  }
}

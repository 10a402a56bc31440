#include "mainwindow/WindowSizes.h"

#include <algorithm>

#include "mainwindow/CursorGeometry.h"
#include "platform/values/Numbers.h"

using namespace platform;

namespace {

/// The size of the canvas in the opening layout, and the margin to its right in Main.
constexpr int kLaidOutCanvas = 256;
constexpr int kRightMargin = 20;
/// The title bar of a species window.
constexpr int kTitleHeight = 22;

/// A saturating sum.
int Plus(int size, int margin) { return ToInt32(static_cast<double>(size) + margin); }

/// Whether the canvas has the exact, untruncated size.
bool Fits(Size canvas, int imageWidth, int imageHeight, double zoom) {
  return canvas.width == imageWidth * zoom && canvas.height == imageHeight * zoom;
}

}  // namespace

MainChange FitMain(const MainMeasures& before, int imageWidth, int imageHeight, double zoom) {
  MainChange change;
  change.canvas = CanvasSizeOf(imageWidth, imageHeight, zoom);
  change.nameDown = change.canvas.height - before.canvas.height;

  const int height = std::max(change.canvas.height, kLaidOutCanvas);
  const int oldHeight = std::max(before.canvas.height, kLaidOutCanvas);
  if (height != oldHeight) {
    change.windowHeight = Plus(height, before.windowAtOpening.height - kLaidOutCanvas);
    change.stripDown = height - oldHeight;
  }

  const int laidOutWidth = before.windowAtOpening.width - before.canvasLeft - kRightMargin;
  const int width = std::max(change.canvas.width, laidOutWidth);
  if (width != std::max(before.canvas.width, laidOutWidth))
    change.windowWidth = Plus(width, before.canvasLeft + kRightMargin);
  return change;
}

std::optional<WindowFit> FitComposite(Size windowAtOpening, Size canvas, int imageWidth, int imageHeight, double zoom) {
  if (Fits(canvas, imageWidth, imageHeight, zoom)) return std::nullopt;
  const auto side = [](int atOpening, double canvasSide) {
    return ToInt32(atOpening - kLaidOutCanvas + std::max<double>(kLaidOutCanvas, canvasSide));
  };
  return WindowFit{{side(windowAtOpening.width, imageWidth * zoom), side(windowAtOpening.height, imageHeight * zoom)},
                   CanvasSizeOf(imageWidth, imageHeight, zoom)};
}

WindowFit SpeciesWindowFit(int imageWidth, int imageHeight, double zoom) {
  return {{ToInt32(imageWidth * zoom + 2.0), ToInt32(imageHeight * zoom + 1.0)},
          CanvasSizeOf(imageWidth, imageHeight, zoom)};
}

std::optional<WindowFit> FitSpeciesWindow(Size canvas, int imageWidth, int imageHeight, double zoom) {
  if (Fits(canvas, imageWidth, imageHeight, zoom)) return std::nullopt;
  return SpeciesWindowFit(imageWidth, imageHeight, zoom);
}

PlacementCursor FirstPosition(const ScreenArea& screen) {
  return {screen.left, std::int64_t{screen.top} + screen.height};
}

Placement PlaceSpeciesWindow(const PlacementCursor& cursor, const ScreenArea& screen, Size window) {
  PlacementCursor next = cursor;
  const std::int64_t rowHeight = std::int64_t{window.height} + kTitleHeight;
  if (std::int64_t{screen.left} + screen.width < next.x + window.width) {
    next.x = screen.left;
    next.y -= rowHeight;
  }
  if (screen.top > next.y - rowHeight) return {std::nullopt, next};
  const Point position{static_cast<int>(next.x), static_cast<int>(next.y - window.height)};
  next.x += window.width;
  return {position, next};
}

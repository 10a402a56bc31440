#pragma once
/// Positions and sizes of the linked cursor. `zoom` is canvas pixels per image pixel; sizes are truncated to whole
/// pixels.

#include <array>

#include "platform/values/Color.h"
#include "platform/values/Geometry.h"

/// The image pixel under a position on the canvas.
platform::Point ImagePixelAt(int canvasX, int canvasY, double zoom);

/// The size of the canvas that shows an image of that size.
platform::Size CanvasSizeOf(int imageWidth, int imageHeight, double zoom);

/// The area to restore under a cursor mark: the square of `e` image pixels at sx, sy, which is the square of `de`
/// canvas pixels at dx, dy. Both are rounded outward with a margin of one image pixel.
struct RestoredSquare {
  int sx = 0, sy = 0, e = 0;
  int dx = 0, dy = 0, de = 0;
  friend bool operator==(const RestoredSquare&, const RestoredSquare&) = default;
};
/// For a mark at a canvas position: a circle of that radius, or the small cross if the radius is 0.
RestoredSquare SquareUnderMark(int canvasX, int canvasY, int radius, double zoom);

/// The arms of the small cross: left, right, up, down. Its centre stays open.
std::array<platform::Line, 4> SmallCross(int x, int y);

struct CircleMark {
  platform::Rect oval;
  int pen = 1;
};
CircleMark CircleAround(int x, int y, int radius);

/// The radius of the circle after one tick of growth, limited by the canvas and to 150; and after one tick of
/// shrinking.
int GrownCursorSize(int radius, int canvasWidth, int canvasHeight);
int ShrunkCursorSize(int radius);

/// The next colour of the cursor, chosen by the red of this one: grey, black, white, grey.
platform::Color NextCursorColor(platform::Color color);

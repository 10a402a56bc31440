#pragma once
/// Places and sizes of the linked cursor. `zoom` is canvas pixels per image pixel; sizes become whole by truncation.

#include <array>

#include "platform/values/Color.h"
#include "platform/pictures/Graphics.h"

struct Point {
  int x = 0, y = 0;
  friend bool operator==(const Point&, const Point&) = default;
};

struct Size {
  int width = 0, height = 0;
  friend bool operator==(const Size&, const Size&) = default;
};

/// The image pixel under a position on the canvas.
Point ImagePixelAt(int canvasX, int canvasY, double zoom);

/// The size of the canvas that shows an image of that size.
Size CanvasSizeOf(int imageWidth, int imageHeight, double zoom);

/// What wipes a cursor mark off the canvas: the square of `e` image pixels at sx, sy covers the mark, and the square of
/// `de` canvas pixels at dx, dy is restored for it. Both are rounded outward with a margin of one image pixel.
struct RestoredSquare {
  int sx = 0, sy = 0, e = 0;
  int dx = 0, dy = 0, de = 0;
  friend bool operator==(const RestoredSquare&, const RestoredSquare&) = default;
};
/// For the mark at a canvas position: a circle of that radius, or the small cross for radius 0.
RestoredSquare SquareUnderMark(int canvasX, int canvasY, int radius, double zoom);

struct Line {
  Point from, to;
  friend bool operator==(const Line&, const Line&) = default;
};
/// The arms of the small cross: left, right, up, down. Its middle stays open.
std::array<Line, 4> SmallCross(int x, int y);

struct CircleMark {
  platform::Rect oval;
  int pen = 1;
};
CircleMark CircleAround(int x, int y, int radius);

/// The radius of the circle after one tick of growth, bounded by the canvas and by 150; and after one of shrinking.
int GrownCursorSize(int radius, int canvasWidth, int canvasHeight);
int ShrunkCursorSize(int radius);

/// The next colour of the cursor, by the red of this one: grey, black, white, grey.
platform::Color NextCursorColor(platform::Color color);

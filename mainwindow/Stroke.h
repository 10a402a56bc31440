#pragma once
/// Strokes of the freehand drawing. The drawing is four parallel arrays of line ends in image pixels; each stroke is a
/// marker row, the point of the press as a line of zero length, and one row for each step of the drag.

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/values/Array.h"
#include "platform/values/Geometry.h"
#include "platform/values/Numbers.h"

/// The image pixel whose centre is nearest to a position on the canvas. Halves are rounded upward, so at zoom 1 it is
/// the pixel under the pointer. (The cursor uses ImagePixelAt.)
platform::Point StrokePixelAt(int canvasX, int canvasY, double zoom);

/// The square of canvas pixels that marks an image pixel of a stroke while it is being drawn.
platform::Rect StampAt(platform::Point pixel, double zoom);

/// Calls stamp(pixel) for each image pixel of the step, both ends included. `from` and `to` must differ.
template <class Stamp>
void ForEachStamp(platform::Point from, platform::Point to, Stamp stamp) {
  const double dx = static_cast<double>(to.x) - from.x;
  const double dy = static_cast<double>(to.y) - from.y;
  const auto steps = static_cast<std::int64_t>(std::max(std::fabs(dx), std::fabs(dy)));
  for (std::int64_t k = 0; k <= steps; ++k) {
    const double part = static_cast<double>(k) / static_cast<double>(steps);
    stamp(platform::Point{platform::ToInt32(from.x + platform::Round(part * dx)),
                          platform::ToInt32(from.y + platform::Round(part * dy))});
  }
}

using LineEnds = platform::Array<std::int32_t>;

/// Appends the marker and the point of the press.
void AppendPress(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2, platform::Point pressed);

/// Appends one step of the drag.
void AppendStep(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2, platform::Point from, platform::Point to);

/// Removes the last stroke: rows from the end up to and including the first whose four numbers have the sum of the
/// marker's, or all rows. A step outside the image can have that sum and ends the undo early, which is intended.
/// During a stroke it removes what has been drawn so far; the rest then counts as part of the stroke before. Returns
/// false, with nothing changed, if there is at most one row.
bool RemoveStroke(LineEnds& x1, LineEnds& y1, LineEnds& x2, LineEnds& y2);

#pragma once
/// The picture onto which the rasters of a PICT are painted.

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "platform/pictures/readers/PictInput.h"
#include "platform/pictures/readers/PictRegion.h"

namespace platform::pict {

/// Source and destination of a raster.
struct Placement {
  Rect bounds;                      ///< the rectangle of the whole raster
  Rect source;                      ///< the part that is shown, in the coordinates of `bounds`
  Rect destination;                 ///< the rectangle to which it is scaled, in drawing coordinates
  std::optional<Region> mask = {};  ///< if given, only its pixels are painted; in drawing coordinates
};

/// Paints one raster. Each pixel of the destination gets the colour of the source pixel under its centre.
class RowPainter {
 public:
  /// Paints nothing.
  RowPainter() = default;
  /// `pixels` is the canvas, `area` its rectangle, `shown` the part of the destination within it.
  RowPainter(const Placement& placement, PlaneView<OpaqueColor> pixels, const Rect& area, const Rect& shown);
  /// Paints the destination rows of row `y` of the raster. Call it for all rows in order, from bounds.top down.
  void Paint(int y, std::span<const OpaqueColor> row);

 private:
  Placement placement_;
  PlaneView<OpaqueColor> pixels_;
  Rect area_;
  Rect shown_;                // in drawing coordinates
  int next_ = 0;              // the next row of `shown_` to be painted
  std::vector<int> columns_;  // for each column of `shown_` the column of the raster, or -1
  std::optional<RegionRows> mask_;
};

/// The drawing area: white, allocated when the first raster is painted.
class Canvas {
 public:
  /// `area` in drawing coordinates. `fileBytes` limits the work: more pixels than a file of that size can reasonably
  /// draw are refused.
  Canvas(const Rect& area, std::size_t fileBytes) : area_(area), fileBytes_(fileBytes) {}
  /// Changes the area; only before the first raster.
  void SetArea(const Rect& area);
  RowPainter Begin(const Placement& placement);
  /// Counts decoded or painted pixels; throws ReadFailure when there are too many.
  void CountWork(double pixels);
  /// Nil until a raster is painted.
  const Ref<Picture>& Painted() const { return picture_; }

  /// Where the last QuickTime image was painted.
  Rect quickTime;

 private:
  Rect area_;
  std::size_t fileBytes_;
  double work_ = 0;
  Ref<Picture> picture_;
};

}  // namespace platform::pict

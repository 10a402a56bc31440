#pragma once
/// The picture that a PICT draws, onto which its rasters are painted.

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "platform/pictures/readers/PictInput.h"
#include "platform/pictures/readers/PictRegion.h"

namespace platform::pict {

/// Where the pixels of a raster go.
struct Placement {
  Rect bounds;                      ///< of all pixels of the raster
  Rect source;                      ///< the part that is shown, in the coordinates of `bounds`
  Rect destination;                 ///< where it is shown, scaled to this size, in drawing coordinates
  std::optional<Region> mask = {};  ///< if there is one, only its pixels are painted; in drawing coordinates
};

/// Paints one raster. Each pixel of the destination takes the colour of the source pixel that lies below its centre.
class RowPainter {
 public:
  /// Paints nothing.
  RowPainter() = default;
  /// `pixels` is the canvas, `area` its rectangle, `shown` the part of the destination that lies in it.
  RowPainter(const Placement& placement, PlaneView<Color> pixels, const Rect& area, const Rect& shown);
  /// Paints wherever row `y` of the raster goes. To be called for all rows, from bounds.top down.
  void Paint(int y, std::span<const Color> row);

 private:
  Placement placement_;
  PlaneView<Color> pixels_;
  Rect area_;
  Rect shown_;                // in drawing coordinates
  int next_ = 0;              // the next row of `shown_` to be painted
  std::vector<int> columns_;  // for each column of `shown_` that of the raster, or -1
  std::optional<RegionRows> mask_;
};

/// White, and made when the first raster is painted.
class Canvas {
 public:
  /// `area` in drawing coordinates. `fileBytes` limits the work: what that many bytes cannot reasonably draw is
  /// refused.
  Canvas(const Rect& area, std::size_t fileBytes) : area_(area), fileBytes_(fileBytes) {}
  /// Changes the area of a canvas on which nothing is painted yet.
  void SetArea(const Rect& area);
  RowPainter Begin(const Placement& placement);
  /// Counts pixels that are decoded or painted; throws when they are too many.
  void CountWork(double pixels);
  /// Nil as long as nothing was painted.
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

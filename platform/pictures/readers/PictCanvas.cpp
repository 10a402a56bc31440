#include "platform/pictures/readers/PictCanvas.h"

#include <algorithm>
#include <cstdint>

namespace platform::pict {

namespace {

/// No PICT compresses more: run lengths reach 512 pixels per byte, JPEG in a PICT less than 1000.
constexpr double kPixelsPerByte = 4096;

/// `length` source pixels are scaled to `count` pixels: the source pixel under the centre of pixel `i`.
int SourcePixel(int i, int count, int length) {
  return static_cast<int>((2 * std::int64_t{i} + 1) * length / (2 * std::int64_t{count}));
}

}  // namespace

RowPainter::RowPainter(const Placement& placement, PlaneView<OpaqueColor> pixels, const Rect& area, const Rect& shown)
    : placement_(placement), pixels_(pixels), area_(area), shown_(shown), next_(shown.top) {
  const auto& [bounds, source, destination, mask] = placement_;
  columns_.reserve(static_cast<std::size_t>(shown.Width()));
  for (int x = shown.left; x < shown.right; ++x) {
    const int column = source.left + SourcePixel(x - destination.left, destination.Width(), source.Width());
    columns_.push_back(column >= bounds.left && column < bounds.right ? column - bounds.left : -1);
  }
  if (mask) mask_.emplace(*mask, shown.left, shown.right);
}

void RowPainter::Paint(int y, std::span<const OpaqueColor> row) {
  const auto& [bounds, source, destination, mask] = placement_;
  for (; next_ < shown_.bottom; ++next_) {
    const int from = source.top + SourcePixel(next_ - destination.top, destination.Height(), source.Height());
    if (from > y) return;
    if (from < y) continue;  // above the raster
    OpaqueColor* target = pixels_.Row(next_ - area_.top) + (shown_.left - area_.left);
    const auto inside = mask_ ? mask_->Row(next_) : std::span<const std::uint8_t>();
    for (std::size_t i = 0; i < columns_.size(); ++i)
      if (columns_[i] >= 0 && (inside.empty() || inside[i])) target[i] = row[static_cast<std::size_t>(columns_[i])];
  }
}

void Canvas::SetArea(const Rect& area) {
  if (!picture_) area_ = area;
}

RowPainter Canvas::Begin(const Placement& placement) {
  const Rect& to = placement.destination;
  const Rect shown{std::max(to.top, area_.top), std::max(to.left, area_.left), std::min(to.bottom, area_.bottom),
                   std::min(to.right, area_.right)};
  if (placement.source.Empty() || shown.Empty()) return {};
  CountWork(static_cast<double>(shown.Width()) * shown.Height());
  if (!picture_) {
    CheckSize(area_.Width(), area_.Height(), 2 * sizeof(OpaqueColor));
    CheckPlausible(area_.Width(), area_.Height(), fileBytes_, kPixelsPerByte);
    picture_ = MakeRef<Picture>(area_.Width(), area_.Height());
  }
  return {placement, picture_->Pixels(), area_, shown};
}

void Canvas::CountWork(double pixels) {
  work_ += pixels;
  if (work_ > std::min(kPixelsPerByte * static_cast<double>(fileBytes_), static_cast<double>(kMaximumPixels)))
    throw ReadFailure("truncated or damaged: " + std::to_string(fileBytes_) + " bytes cannot hold all these pixels");
}

}  // namespace platform::pict

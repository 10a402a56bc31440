#include "platform/pictures/Picture.h"

#include <algorithm>
#include <cassert>

#include "platform/pictures/Graphics.h"
#include "platform/values/Memory.h"

namespace platform {

namespace {

std::size_t Area(int width, int height) { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }

}  // namespace

Picture::Picture(int width, int height) : width_(std::max(width, 0)), height_(std::max(height, 0)) {}

Picture::Picture(int width, int height, std::vector<std::uint8_t> levels)
    : width_(std::max(width, 0)), height_(std::max(height, 0)), levels_(std::move(levels)) {
  assert(levels_.size() == Area(width_, height_));
}

PlaneView<OpaqueColor> Picture::Pixels() {
  if (!pixels_) {
    const std::size_t area = Area(width_, height_);
    auto pixels = std::static_pointer_cast<OpaqueColor>(AllocateZeroed(area * sizeof(OpaqueColor)));
    if (copied_)
      std::copy_n(copied_->PixelsToRead().data, area, pixels.get());
    else if (levels_.empty())
      std::fill_n(pixels.get(), area, Opaque(kWhite));
    else
      std::transform(levels_.begin(), levels_.end(), pixels.get(),
                     [](std::uint8_t level) { return OpaqueRGB(level, level, level); });
    pixels_ = std::move(pixels);
    copied_ = nullptr;
    levels_ = {};
  }
  return {pixels_.get(), width_, height_, width_};
}

void Picture::CopyWhenAsked(const Ref<Picture>& other) {
  assert(other->width_ == width_ && other->height_ == height_);
  pixels_ = nullptr;
  levels_ = {};
  copied_ = other;
}

platform::Graphics Picture::Graphics() { return platform::Graphics(Pixels()); }

platform::RGBSurface Picture::RGBSurface() {
  const PlaneView<OpaqueColor> pixels = Pixels();
  return {pixels, pixels_};
}

Ref<Picture> Picture::Mask() {
  if (!mask_) mask_ = MakeRef<Picture>(width_, height_);
  return mask_;
}

Ref<Picture> NewPicture(int width, int height, int /*depth*/) { return MakeRef<Picture>(width, height); }

}  // namespace platform

#include "platform/pictures/Picture.h"

#include <algorithm>
#include <cassert>

#include "platform/pictures/Graphics.h"

namespace platform {

namespace {

std::size_t Area(int width, int height) { return static_cast<std::size_t>(width) * static_cast<std::size_t>(height); }

}  // namespace

Picture::Picture(int width, int height) : width_(std::max(width, 0)), height_(std::max(height, 0)) {}

Picture::Picture(int width, int height, std::vector<std::uint8_t> levels)
    : width_(std::max(width, 0)), height_(std::max(height, 0)), levels_(std::move(levels)) {
  assert(levels_.size() == Area(width_, height_));
}

PlaneView<Color> Picture::Pixels() {
  if (copied_) {
    const PlaneView<const Color> from = copied_->PixelsToRead();
    pixels_ = std::make_shared<std::vector<Color>>(from.data, from.data + Area(width_, height_));
    copied_ = nullptr;
  } else if (!pixels_ && levels_.empty()) {
    pixels_ = std::make_shared<std::vector<Color>>(Area(width_, height_), kWhite);
  } else if (!pixels_) {
    pixels_ = std::make_shared<std::vector<Color>>(levels_.size());
    std::transform(levels_.begin(), levels_.end(), pixels_->begin(), [](Color level) { return level * 0x010101; });
    levels_ = {};
  }
  return {pixels_->data(), width_, height_, width_};
}

void Picture::CopyWhenAsked(const Ref<Picture>& other) {
  assert(other->width_ == width_ && other->height_ == height_);
  pixels_ = nullptr;
  levels_ = {};
  copied_ = other;
}

platform::Graphics Picture::Graphics() { return platform::Graphics(Pixels()); }

platform::RGBSurface Picture::RGBSurface() {
  const PlaneView<Color> pixels = Pixels();
  return {pixels, pixels_};
}

Ref<Picture> Picture::Mask() {
  if (!mask_) mask_ = MakeRef<Picture>(width_, height_);
  return mask_;
}

Ref<Picture> NewPicture(int width, int height, int /*depth*/) { return MakeRef<Picture>(width, height); }

}  // namespace platform

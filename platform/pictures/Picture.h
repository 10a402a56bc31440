#pragma once
/// Pictures in plain memory, an OpaqueColor per pixel, rows one after the other without gaps.

#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "platform/values/Color.h"
#include "platform/values/PlaneView.h"
#include "platform/values/Ref.h"

namespace platform {

class Graphics;
class RGBSurface;

class Picture {
 public:
  /// White, `width` by `height` pixels. Negative sizes count as 0. The memory is allocated at the first access to the
  /// pixels.
  Picture(int width, int height);
  /// A picture whose three components are equal at every pixel. `levels` holds width * height grey levels, row by row;
  /// the colours are computed at the first access to the pixels.
  Picture(int width, int height, std::vector<std::uint8_t> levels);

  int Width() const { return width_; }
  int Height() const { return height_; }

  /// All pixels, for pixel loops. The view is valid for the lifetime of the picture, or until CopyWhenAsked.
  PlaneView<OpaqueColor> Pixels();
  /// The same for reading, without making the copy of CopyWhenAsked. The view may not be kept.
  PlaneView<const OpaqueColor> PixelsToRead() { return copied_ ? copied_->PixelsToRead() : Pixels(); }
  /// The same, kept alive.
  std::shared_ptr<const OpaqueColor> SharedPixels() { return copied_ ? copied_->SharedPixels() : (Pixels(), pixels_); }
  /// Makes this picture a copy of another one of its size. The pixels are copied at the first call of Pixels(),
  /// Graphics() or RGBSurface(); until then this picture shows the other one's, changes included.
  void CopyWhenAsked(const Ref<Picture>& other);
  /// The grey levels of a picture that was created from them, until the first access to its pixels; then empty.
  std::span<const std::uint8_t> GreyLevels() const { return levels_; }

  /// A drawing surface on the picture: black, pen of 1, smooth renderer. It draws straight into the pixels.
  platform::Graphics Graphics();
  /// Pixel access. It keeps the pixels alive, even after the picture is destroyed.
  platform::RGBSurface RGBSurface();

  /// The mask makes parts transparent when the picture is drawn: black shows, white hides, grey mixes. It has the
  /// picture's size and is created, all white, at the first call.
  Ref<Picture> Mask();
  bool HasMask() const { return static_cast<bool>(mask_); }

 private:
  int width_;
  int height_;
  // The source of the pixels until the first access to them: another picture, grey levels, or neither (white).
  Ref<Picture> copied_;
  std::vector<std::uint8_t> levels_;
  std::shared_ptr<OpaqueColor> pixels_;
  Ref<Picture> mask_;
};

/// Pixel access to a picture, without a repaint. Reading outside the picture gives black; writing there does nothing.
class RGBSurface {
 public:
  RGBSurface() = default;
  /// On pixels that `owner` keeps alive.
  RGBSurface(PlaneView<OpaqueColor> pixels, std::shared_ptr<const void> owner)
      : pixels_(pixels), owner_(std::move(owner)) {}

  Color Pixel(int x, int y) const { return Inside(x, y) ? ColorOf(pixels_(x, y)) : kBlack; }
  void Pixel(int x, int y, Color color) {
    if (Inside(x, y)) pixels_(x, y) = Opaque(color);
  }
  /// All pixels of the picture, for pixel loops.
  PlaneView<OpaqueColor> Pixels() const { return pixels_; }

 private:
  bool Inside(int x, int y) const { return x >= 0 && y >= 0 && x < pixels_.width && y < pixels_.height; }
  PlaneView<OpaqueColor> pixels_;
  std::shared_ptr<const void> owner_;
};

/// A new white picture. The depth is always 32.
Ref<Picture> NewPicture(int width, int height, int depth);

}  // namespace platform

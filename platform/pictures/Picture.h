#pragma once
/// Pictures in plain memory, 32 bits a pixel, 0x00RRGGBB, rows one after the other without gaps.

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
  /// White, `width` by `height` pixels. Negative sizes count as 0. The memory is taken when somebody first asks for the
  /// pixels.
  Picture(int width, int height);
  /// A picture whose three components are equal at every pixel. `levels` holds width * height grey levels, row by row;
  /// the colours are made when somebody first asks for them.
  Picture(int width, int height, std::vector<std::uint8_t> levels);

  int Width() const { return width_; }
  int Height() const { return height_; }

  /// All pixels, for pixel loops. The view stays valid as long as the picture, unless it becomes a copy.
  PlaneView<Color> Pixels();
  /// The same to be read at once.
  PlaneView<const Color> PixelsToRead() { return copied_ ? copied_->PixelsToRead() : Pixels(); }
  /// Makes this picture a copy of another one of its size. The pixels are copied when somebody first asks for them with
  /// Pixels(), Graphics() or RGBSurface(): until then it shows what the other one shows.
  void CopyWhenAsked(const Ref<Picture>& other);
  /// The grey levels of a picture that was made from them and has not been asked for its colours; empty otherwise.
  std::span<const std::uint8_t> GreyLevels() const { return levels_; }

  /// A drawing surface on the picture: black, pen of 1, smooth renderer. What it draws is in the picture at once.
  platform::Graphics Graphics();
  /// Pixel access. It keeps the pixels alive, also when the picture has gone.
  platform::RGBSurface RGBSurface();

  /// The mask makes parts transparent when the picture is drawn: black shows, white hides, grey mixes. It has the
  /// picture's size and is made, all white, at the first request.
  Ref<Picture> Mask();
  bool HasMask() const { return static_cast<bool>(mask_); }

 private:
  int width_;
  int height_;
  // Where the pixels come from, while nobody has asked for them: another picture, grey levels, or white.
  Ref<Picture> copied_;
  std::vector<std::uint8_t> levels_;
  std::shared_ptr<std::vector<Color>> pixels_;
  Ref<Picture> mask_;
};

/// Pixel access to a picture, without a repaint. A read outside the picture is black; a write outside does nothing.
class RGBSurface {
 public:
  RGBSurface() = default;
  /// On pixels that `owner` keeps alive.
  RGBSurface(PlaneView<Color> pixels, std::shared_ptr<const void> owner) : pixels_(pixels), owner_(std::move(owner)) {}

  Color Pixel(int x, int y) const { return Inside(x, y) ? pixels_(x, y) : kBlack; }
  void Pixel(int x, int y, Color color) {
    if (Inside(x, y)) pixels_(x, y) = color;
  }
  /// All pixels of the picture, for pixel loops.
  PlaneView<Color> Pixels() const { return pixels_; }

 private:
  bool Inside(int x, int y) const { return x >= 0 && y >= 0 && x < pixels_.width && y < pixels_.height; }
  PlaneView<Color> pixels_;
  std::shared_ptr<const void> owner_;
};

/// A new white picture. The depth is always 32.
Ref<Picture> NewPicture(int width, int height, int depth);

}  // namespace platform

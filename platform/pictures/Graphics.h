#pragma once
/// A drawing surface: a picture, a canvas or the cell of a list. Coordinates are logical pixels from its top left
/// corner. Drawing is clipped to the surface. Lines, rectangles and ovals are exact: the same pixels on every machine.

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "platform/pictures/Picture.h"
#include "platform/values/Color.h"
#include "platform/values/Geometry.h"
#include "platform/values/PlaneView.h"
#include "platform/values/String.h"

namespace platform {

/// What a surface shows instead of its pixels: one colour, or the pixels of a picture of its size.
struct Backdrop {
  OpaqueColor color = Opaque(kBlack);
  std::shared_ptr<const OpaqueColor> pixels;  ///< if nil, the colour
};

class Graphics {
 public:
  /// A null surface: all drawing is discarded.
  Graphics() = default;
  /// Draws into `device`, which has `scale` device pixels per logical pixel; the surface has `width` by `height`
  /// logical pixels. If `touched` is given, each drawing operation appends the logical rectangle that it may have
  /// changed.
  Graphics(PlaneView<OpaqueColor> device, double scale, int width, int height, std::vector<Rect>* touched = nullptr);
  explicit Graphics(PlaneView<OpaqueColor> pixels) : Graphics(pixels, 1.0, pixels.width, pixels.height) {}

  Color ForeColor = kBlack;
  int PenWidth = 1;   ///< horizontal size of the pen of lines, rectangles and ovals, logical pixels
  int PenHeight = 1;  ///< vertical size of that pen
  /// Whether scaled pictures and ovals show hard pixel edges; otherwise they are smoothed. Lines never are.
  bool UseOldRenderer = false;

  int Width() const { return width_; }
  int Height() const { return height_; }

  /// Draws a line including both end points. A pen larger than one pixel extends to the right and below. Lines are
  /// never smoothed.
  void DrawLine(int x1, int y1, int x2, int y2);
  /// Draws the frame along the inside of the rectangle.
  void DrawRect(int x, int y, int w, int h);
  void FillRect(int x, int y, int w, int h);
  /// Draws the outline of the ellipse inscribed in the rectangle; the pen lies inside it. Smoothed unless
  /// UseOldRenderer is set.
  void DrawOval(int x, int y, int w, int h);
  /// Draws text on one line in the system font, with its baseline at y.
  void DrawString(const String& text, int x, int y);
  /// Width of the text in logical pixels.
  double StringWidth(const String& text) const;
  /// Scales the source rectangle of the picture to the target rectangle; kOwnSize means the picture's own size. Nil
  /// draws nothing. Each target pixel depends on the two rectangles only, so a clip does not change the pixels within
  /// it.
  void DrawPicture(const Ref<Picture>& picture, int x, int y, int w = kOwnSize, int h = kOwnSize, int sx = 0,
                   int sy = 0, int sw = kOwnSize, int sh = kOwnSize);
  static constexpr int kOwnSize = -10000;

  /// Clips drawing to a rectangle of the surface, until NoClip.
  void Clip(int x, int y, int w, int h);
  void NoClip();

  /// From now on, an operation that covers the whole surface with one colour, or with a picture that is not scaled,
  /// only sets `backdrop`, without writing a pixel. The next other operation writes the backdrop to the pixels first
  /// and resets it. As long as the backdrop is a picture, the surface shows that picture's later changes too.
  /// `backdrop` must outlive the surface.
  void UseBackdrop(std::optional<Backdrop>& backdrop) { backdrop_ = &backdrop; }
  /// Writes the backdrop, if there is one, to the pixels.
  void WriteBackdrop();

  /// The pixels behind the surface and their scale, for the platform's own text drawing.
  PlaneView<OpaqueColor> Device() const { return device_; }
  double Scale() const { return scale_; }
  /// Size of the surface's font, logical pixels; text operations use it.
  int TextSize = 12;

 private:
  struct Span {
    std::int64_t x0, x1, y0, y1;  // device pixels, ends excluded
  };
  /// ToDevice: the device pixels of a logical rectangle. Visible: the part of them that is within the surface and the
  /// clip.
  Span ToDevice(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) const;
  Span Visible(const Span& span) const;
  /// Whether device pixels are the whole surface, and it has a backdrop to set.
  bool IsBackdrop(const Span& area) const;
  void Fill(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h);
  void Touch(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h);
  void DrawHardOval(int x, int y, int w, int h);
  void DrawSmoothOval(int x, int y, int w, int h);

  PlaneView<OpaqueColor> device_;
  double scale_ = 1.0;
  int width_ = 0;
  int height_ = 0;
  Rect clip_;
  std::vector<Rect>* touched_ = nullptr;
  std::optional<Backdrop>* backdrop_ = nullptr;
};

/// The functions that draw text, set once at start by platform/qt. Without them text is not drawn and has width 0.
struct TextDrawing {
  void (*draw)(const Graphics& surface, const Rect& clip, const String& text, int x, int y) = nullptr;
  double (*width)(const Graphics& surface, const String& text) = nullptr;
};
void SetTextDrawing(TextDrawing drawing);

}  // namespace platform

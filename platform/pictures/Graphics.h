#pragma once
/// A drawing surface: on a picture, on a canvas or on the cell of a list. All coordinates are logical pixels of the
/// surface, the origin its top left corner. What lies outside is not drawn. Lines, rectangles and ovals are exact: the
/// same pixels on every machine.

#include <cstdint>
#include <vector>

#include "platform/values/Color.h"
#include "platform/pictures/Picture.h"
#include "platform/values/PlaneView.h"
#include "platform/values/String.h"

namespace platform {

struct Rect {
  int x = 0, y = 0, width = 0, height = 0;
  friend bool operator==(const Rect&, const Rect&) = default;
};

class Graphics {
 public:
  /// A surface without pixels: everything may be drawn on it, and nothing comes of it.
  Graphics() = default;
  /// On memory at device resolution: `scale` device pixels a logical pixel, `width` by `height` logical pixels. When
  /// `touched` is given, each drawing operation appends the logical rectangle that it may have changed.
  Graphics(PlaneView<Color> device, double scale, int width, int height, std::vector<Rect>* touched = nullptr);
  explicit Graphics(PlaneView<Color> pixels) : Graphics(pixels, 1.0, pixels.width, pixels.height) {}

  Color ForeColor = kBlack;
  int PenWidth = 1;   ///< horizontal size of the pen of lines, rectangles and ovals, logical pixels
  int PenHeight = 1;  ///< vertical size of that pen
  /// True: scaled pictures and ovals show hard pixel edges. False: they are smoothed. Lines never are.
  bool UseOldRenderer = false;

  int Width() const { return width_; }
  int Height() const { return height_; }

  /// Both ends belong to the line. A pen of more than one pixel hangs to the right and below. Lines are never smoothed:
  /// their ends are whole pixels.
  void DrawLine(int x1, int y1, int x2, int y2);
  /// The frame along the inside of the rectangle.
  void DrawRect(int x, int y, int w, int h);
  void FillRect(int x, int y, int w, int h);
  /// The outline of the ellipse within the rectangle; the pen lies inside it. Smoothed unless UseOldRenderer is set.
  void DrawOval(int x, int y, int w, int h);
  /// Text on one line, its baseline at y, in the system font of the surface.
  void DrawString(const String& text, int x, int y);
  /// Width of the text in logical pixels.
  double StringWidth(const String& text) const;
  /// Scales the source rectangle of the picture to the target rectangle; kOwnSize for a size stands for the picture's
  /// own. Nil draws nothing. Each target pixel depends on the two rectangles alone, so that drawing under a clip gives
  /// the very pixels that drawing without it gives.
  void DrawPicture(const Ref<Picture>& picture, int x, int y, int w = kOwnSize, int h = kOwnSize, int sx = 0,
                   int sy = 0, int sw = kOwnSize, int sh = kOwnSize);
  static constexpr int kOwnSize = -10000;

  /// Confines drawing to a rectangle of the surface, until NoClip.
  void Clip(int x, int y, int w, int h);
  void NoClip();

  /// The pixels behind the surface and their scale, for the platform's own text drawing.
  PlaneView<Color> Device() const { return device_; }
  double Scale() const { return scale_; }
  /// Size of the surface's font, logical pixels; text operations use it.
  int TextSize = 12;

 private:
  struct Span {
    std::int64_t x0, x1, y0, y1;  // device pixels, ends excluded
  };
  /// The device pixels of a logical rectangle, wherever it lies; and those of them that may be drawn on.
  Span ToDevice(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h) const;
  Span Visible(const Span& span) const;
  void Fill(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h);
  void Touch(std::int64_t x, std::int64_t y, std::int64_t w, std::int64_t h);
  void DrawHardOval(int x, int y, int w, int h);
  void DrawSmoothOval(int x, int y, int w, int h);

  PlaneView<Color> device_;
  double scale_ = 1.0;
  int width_ = 0;
  int height_ = 0;
  Rect clip_;
  std::vector<Rect>* touched_ = nullptr;
};

/// How text gets onto a surface: set once by the toolkit at start. Without it text is not drawn and has no width.
struct TextDrawing {
  void (*draw)(const Graphics& surface, const Rect& clip, const String& text, int x, int y) = nullptr;
  double (*width)(const Graphics& surface, const String& text) = nullptr;
};
void SetTextDrawing(TextDrawing drawing);

}  // namespace platform

#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "platform/qt/NativeControl.h"
#include "platform/widgets/Canvas.h"

namespace platform {

struct NativeCanvas : NativeControl {
  NativeCanvas(NativeWindow& owner, Canvas& control);
  ~NativeCanvas() override;

  void SetPlace(const Rect& newPlace) override;
  void Refresh() override;
  /// Fits the backing image to the canvas's size and the screen's resolution; a new image still has to be painted. A
  /// hidden canvas has no image.
  void FitBacking();
  /// Recreates the live surface on the image, keeping its colour, pen and renderer.
  void SetLiveSurface(int width, int height);
  /// Paints everything into the backing image.
  void Compose();
  /// Updates the touched rectangles on the screen.
  void Flush();
  /// Copies a region of what the canvas shows to the widget.
  void Show(const QRegion& region);
  /// The pixels that the canvas shows; nil if it shows one colour, or nothing.
  const OpaqueColor* Shown() const { return backdrop ? backdrop->pixels.get() : pixels.get(); }
  /// Raises MouseEnter or MouseExit if the pointer has entered or left the canvas.
  void SyncInside();

  Canvas& canvas;
  std::shared_ptr<OpaqueColor> pixels;  ///< deviceWidth * deviceHeight, or nil
  int deviceWidth = 0, deviceHeight = 0;
  double ratio = 1.0;
  bool seen = false;  ///< the canvas was visible when the image was made
  /// What the canvas shows instead of its image, which is then out of date. So a map at its own size takes no copy.
  std::optional<Backdrop> backdrop;
  Graphics live;
  std::vector<Rect> touched;
  bool dirty = true;    ///< the image must be painted before it is shown
  bool inside = false;  ///< whether MouseEnter was the last of the two events
  bool dragging = false;
};

}  // namespace platform

#pragma once

#include <vector>

#include "platform/qt/NativeControl.h"
#include "platform/widgets/Canvas.h"

namespace platform {

struct NativeCanvas : NativeControl {
  NativeCanvas(NativeWindow& owner, Canvas& control);
  ~NativeCanvas() override;

  void SetPlace(const Rect& newPlace) override;
  void Refresh() override;
  /// Makes the backing image fit the canvas's size and the screen's resolution; a new one awaits a paint. A canvas that
  /// is hidden has none.
  void FitBacking();
  /// Makes the live surface one on the image, keeping its colour, pen and renderer.
  void SetLiveSurface(int width, int height);
  /// Paints everything into the backing image.
  void Compose();
  /// Puts the touched rectangles on the screen.
  void Flush();
  /// Copies a region of the backing image to the widget.
  void Show(const QRegion& region);
  /// Tells the canvas when the pointer has come or gone.
  void SyncInside();

  Canvas& canvas;
  std::vector<Color> pixels;
  int deviceWidth = 0, deviceHeight = 0;
  double ratio = 1.0;
  bool seen = false;  ///< the canvas was visible when the image was made
  Graphics live;
  std::vector<Rect> touched;
  bool dirty = true;    ///< a paint is due before the image may be seen
  bool inside = false;  ///< the pointer is on the canvas, as last told
  bool dragging = false;
  bool recording = false;
  std::vector<Rect> repaints;
};

}  // namespace platform

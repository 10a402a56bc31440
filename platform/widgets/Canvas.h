#pragma once

#include "platform/pictures/Graphics.h"
#include "platform/widgets/Control.h"

namespace platform {

/// A surface that the program paints. It keeps a backing image at device resolution, into which Paint and, outside a
/// paint, Graphics() draw; the screen is updated from it. So a paint erases what was drawn outside paints; exposing or
/// restoring the window only copies the image. A picture that a paint draws unscaled over the whole canvas is not
/// copied into the image: until the next paint or drawing the canvas shows the picture itself, changes included.
class Canvas : public RectControl {
 public:
  /// The live surface. Its colour, pen and renderer (initially black, 1, smooth) persist from one use to the next.
  /// Drawings reach the screen with FlushCanvases, which also runs at the end of every dispatched event; only the
  /// touched rectangles are updated. Drawings on a hidden canvas are lost: it is painted when it is shown again.
  platform::Graphics& Graphics();
  /// A copy of the backing image, in device pixels, for tests.
  Ref<Picture> Image() const;

  /// Draws everything. `g` is a new surface on the backing image, which is filled with the window's background.
  std::function<void(platform::Graphics& g)> Paint;
  /// Mouse positions are relative to the canvas, in logical pixels. If MouseDown returns true, MouseDrag and MouseUp
  /// follow.
  std::function<bool(int x, int y)> MouseDown;
  std::function<void(int x, int y)> MouseDrag;
  std::function<void(int x, int y)> MouseUp;
  /// The pointer moved with no button pressed.
  std::function<void(int x, int y)> MouseMove;
  std::function<void()> MouseEnter;
  std::function<void()> MouseExit;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// Puts on the screen, at once, what was drawn on live surfaces since the last call.
void FlushCanvases();

}  // namespace platform

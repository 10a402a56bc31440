#pragma once

#include "platform/pictures/Graphics.h"
#include "platform/widgets/Control.h"

namespace platform {

/// A surface that the program paints. It keeps a backing image at device resolution: Paint draws into it, Graphics()
/// outside a paint draws into the same image, and what the screen needs is copied from it. So a paint wipes what was
/// drawn outside, an expose brings back just what was there, and nothing is painted twice.
class Canvas : public RectControl {
 public:
  /// The live surface. Its colour, pen and renderer stay as they were last set (black, 1, smooth at first) from one use
  /// to the next. What is drawn on it reaches the screen with FlushCanvases, which ends every dispatched event too;
  /// only the touched rectangles are put on the screen. Drawing on a hidden canvas is lost: the next showing paints.
  platform::Graphics& Graphics();
  /// A copy of the backing image, in device pixels, for tests.
  Ref<Picture> Image() const;

  /// Draw everything. `g` is a fresh surface on the backing image, which holds the window's background.
  std::function<void(platform::Graphics& g)> Paint;
  /// Mouse positions are relative to the canvas, logical pixels. True claims the drag: MouseDrag and MouseUp follow.
  std::function<bool(int x, int y)> MouseDown;
  std::function<void(int x, int y)> MouseDrag;
  std::function<void(int x, int y)> MouseUp;
  /// The pointer moved with no button down.
  std::function<void(int x, int y)> MouseMove;
  std::function<void()> MouseEnter;
  std::function<void()> MouseExit;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

/// Puts on the screen, at once, what was drawn on live surfaces since the last call.
void FlushCanvases();

}  // namespace platform

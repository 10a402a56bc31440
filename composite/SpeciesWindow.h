#pragma once

#include <cstdint>

#include "platform/widgets/Canvas.h"
#include "platform/widgets/Window.h"

/// One species of the stack in a window of its own: a snapshot in the colours that were in use when it was opened. Any
/// number of them can be open; the linked cursor and the drawing appear on all.
class SpeciesWindow : public platform::Window {
 public:
  SpeciesWindow();

  std::int32_t MyIndex = 0;                      ///< stack index of the species
  platform::Ref<platform::Picture> MyImage;      ///< the species in colour, in the size of the stack
  platform::Ref<platform::Picture> drawMyImage;  ///< the same with the drawing on it, as last painted

  platform::Canvas cv;

  /// Fits the window to the size of the stack and the zoom; the picture stays as it is.
  void WResize();
  void Apply(const struct WindowFit& fit);
  void cv_Paint(platform::Graphics& g);
  void AddMenuHandlers() {}

 private:
  void CreateControls();
};

#pragma once

#include <cstdint>

#include "mainwindow/MapView.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Window.h"

/// One species of the stack in a window of its own: a snapshot in the colours that were in use when it was opened. Any
/// number of them can be open; the linked cursor and the drawing appear on all.
class SpeciesWindow : public platform::Window, public MapWindow {
 public:
  SpeciesWindow();

  std::int32_t MyIndex = 0;                      ///< stack index of the species
  platform::Ref<platform::Picture> MyImage;      ///< the species in colour, in the size of the stack
  platform::Ref<platform::Picture> drawMyImage;  ///< the same with the drawing on it, as last painted

  platform::Canvas cv;

  MapView Map() override { return {MapView::In::SpeciesWindow, cv, MyImage, drawMyImage}; }
  /// The picture stays as it is.
  void WResize() override;
  void Apply(const struct WindowFit& fit);
  void cv_Paint(platform::Graphics& g);
  void AddMenuHandlers() {}

 private:
  void CreateControls();
};

#pragma once

#include "platform/pictures/Graphics.h"
#include "platform/pictures/Picture.h"
#include "platform/widgets/Canvas.h"

/// A map on the screen: its canvas and the pictures behind it, which are nil before the first load.
struct MapView {
  enum class In { Main, Composite, SpeciesWindow };

  In in;
  platform::Canvas& canvas;
  platform::Ref<platform::Picture> base;   ///< the map alone
  platform::Ref<platform::Picture> drawn;  ///< of the size of `base`: the map with the drawing, as last painted

  /// The one of the two pictures that the canvas shows now.
  const platform::Ref<platform::Picture>& Shown() const;
  /// Paints the map, scaled to its canvas, with the drawing on it if the drawing is shown; hard-edged or smooth
  /// according to "Exact Pixels". `drawn` does not change while the drawing is hidden. Nil pictures throw
  /// NilObjectException.
  void Paint(platform::Graphics& g) const;
};

/// A window that shows a map.
class MapWindow {
 public:
  virtual MapView Map() = 0;
  /// Resizes the window to the size of the stack and the zoom.
  virtual void WResize() = 0;

 protected:
  ~MapWindow() = default;
};

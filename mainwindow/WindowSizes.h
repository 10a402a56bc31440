#pragma once
/// How windows follow the size of the images and the zoom, and where species windows go. All numbers are logical
/// pixels; sizes are truncated to whole pixels.

#include <cstdint>
#include <optional>

#include "platform/values/Geometry.h"

/// The layout of Main before a change of size.
struct MainMeasures {
  platform::Size windowAtOpening;
  int canvasLeft = 0;
  platform::Size canvas;
};
/// The change of layout. While the image is no larger than the opening layout allows, the strip and the lists under it
/// keep their positions, and the window its size.
struct MainChange {
  platform::Size canvas;
  int nameDown = 0;                 ///< shift of the name under the image
  int stripDown = 0;                ///< shift of the strip and the lists
  std::optional<int> windowHeight;  ///< the new height and minimum height
  std::optional<int> windowWidth;   ///< the new width, minimum and maximum width
};
MainChange FitMain(const MainMeasures& before, int imageWidth, int imageHeight, double zoom);

/// Sizes of a window and of the canvas in it.
struct WindowFit {
  platform::Size window, canvas;
};

/// For the composite window, whose size at opening is for a canvas of 256 by 256. nullopt if the canvas fits already;
/// it never does if its exact size has half pixels.
std::optional<WindowFit> FitComposite(platform::Size windowAtOpening, platform::Size canvas, int imageWidth,
                                      int imageHeight, double zoom);

/// A species window for images of that size: one column wider than the canvas on each side, one row higher at the
/// bottom.
WindowFit SpeciesWindowFit(int imageWidth, int imageHeight, double zoom);

/// The same for an open window; nullopt if its canvas fits already.
std::optional<WindowFit> FitSpeciesWindow(platform::Size canvas, int imageWidth, int imageHeight, double zoom);

/// The usable part of a screen.
struct ScreenArea {
  int left = 0, top = 0, width = 0, height = 0;
};
/// The left and bottom edge of the next species window. The windows form rows from the bottom left upward.
struct PlacementCursor {
  std::int64_t x = 0, y = 0;
};
PlacementCursor FirstPosition(const ScreenArea& screen);

struct Placement {
  std::optional<platform::Point> position;  ///< left and top of the window; nullopt if it does not fit
  PlacementCursor next;
};
Placement PlaceSpeciesWindow(const PlacementCursor& cursor, const ScreenArea& screen, platform::Size window);

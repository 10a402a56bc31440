#pragma once
/// How windows follow the size of the images and the zoom, and where species windows go. All numbers are logical
/// pixels; sizes become whole by truncation.

#include <cstdint>
#include <optional>

#include "mainwindow/CursorGeometry.h"

/// What stands in Main before a change of size.
struct MainMeasures {
  Size windowAtOpening;
  int canvasLeft = 0;
  Size canvas;
};
/// The change. The strip and the lists under the image keep their place, and the window its size, while the image is no
/// larger than the opening layout allows.
struct MainChange {
  Size canvas;
  int nameDown = 0;                 ///< how far the name under the image moves down
  int stripDown = 0;                ///< how far the strip and the lists move down
  std::optional<int> windowHeight;  ///< the new height and least height
  std::optional<int> windowWidth;   ///< the new width, least and greatest width
};
MainChange FitMain(const MainMeasures& before, int imageWidth, int imageHeight, double zoom);

/// Sizes of a window and of the canvas in it.
struct WindowFit {
  Size window, canvas;
};

/// For the composite window, whose size at opening goes with a canvas of 256 by 256. Nothing if the canvas fits; a
/// canvas of half pixels never does.
std::optional<WindowFit> FitComposite(Size windowAtOpening, Size canvas, int imageWidth, int imageHeight, double zoom);

/// A species window for images of that size: one column more than the canvas at each side, one row more below.
WindowFit SpeciesWindowFit(int imageWidth, int imageHeight, double zoom);

/// The same for a window that is open; nothing if its canvas fits.
std::optional<WindowFit> FitSpeciesWindow(Size canvas, int imageWidth, int imageHeight, double zoom);

/// The usable part of a screen.
struct ScreenArea {
  int left = 0, top = 0, width = 0, height = 0;
};
/// Where the next species window goes: its left and bottom edge. The windows form rows from the bottom left upward.
struct PlacementCursor {
  std::int64_t x = 0, y = 0;
};
PlacementCursor FirstPlace(const ScreenArea& screen);

struct Placement {
  std::optional<Point> place;  ///< left and top of the window; nothing if there is no room
  PlacementCursor next;
};
Placement PlaceSpeciesWindow(const PlacementCursor& cursor, const ScreenArea& screen, Size window);

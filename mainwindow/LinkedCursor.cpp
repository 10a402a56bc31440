#include "mainwindow/LinkedCursor.h"

#include <vector>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "mainwindow/CursorGeometry.h"
#include "mainwindow/Main.h"

using namespace platform;

namespace {

/// Restores a square of the canvas. The whole picture is drawn, scaled as in a paint, but clipped to the square, so the
/// pixels are the same as after a paint at any zoom and with either renderer. A nil picture restores nothing.
void Restore(Graphics& g, const Ref<Picture>& picture, const RestoredSquare& square) {
  if (!picture) return;
  g.Clip(square.dx, square.dy, square.de, square.de);
  g.DrawPicture(picture, 0, 0, g.Width(), g.Height(), 0, 0, picture->Width(), picture->Height());
  g.NoClip();
}

void DrawSmallCross(Graphics& g, int x, int y) {
  g.PenHeight = g.PenWidth = 1;
  for (const auto& [from, to] : SmallCross(x, y)) g.DrawLine(from.x, from.y, to.x, to.y);
}

void DrawCircle(Graphics& g, int x, int y) {
  const auto [oval, pen] = CircleAround(x, y, Globals::fCursorSize);
  g.PenHeight = g.PenWidth = pen;
  g.DrawOval(oval.x, oval.y, oval.width, oval.height);
}

}  // namespace

void Globals::fCursorRedraw(int x, int y, bool restore, bool draw) {
  const Main& main = Main::Instance();
  const std::vector<MapWindow*> windows = App::MapWindows();
  if (restore) {
    const RestoredSquare square = SquareUnderMark(fCursorXold, fCursorYold, fCursorOldSize, Zoom);
    for (MapWindow* window : windows) {
      const MapView map = window->Map();
      Graphics& g = map.canvas.Graphics();
      g.UseOldRenderer = Menu::SizeExact();
      if (map.in != MapView::In::Main || main.ShowsMap()) {
        Restore(g, map.Shown(), square);
      } else {
        g.ForeColor = Main::kNoMap;
        g.FillRect(square.dx, square.dy, square.de, square.de);
      }
    }
  }

  if (!draw) return;
  const bool circles = main.CursorChosen >= 3;
  for (MapWindow* window : windows) {
    const MapView map = window->Map();
    if (map.in == MapView::In::Main && !circles) continue;  // the pointer itself marks the position
    Graphics& g = map.canvas.Graphics();
    // A circle does not change the colour and the renderer of the composite's surface.
    if (map.in != MapView::In::Composite || !circles) {
      g.ForeColor = fCursorColor;
      g.UseOldRenderer = false;
    }
    if (circles)
      DrawCircle(g, x, y);
    else
      DrawSmallCross(g, x, y);
  }
  fCursorXold = x;
  fCursorYold = y;
  fCursorOldSize = circles ? fCursorSize : 0;
}

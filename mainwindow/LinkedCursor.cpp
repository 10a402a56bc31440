#include "mainwindow/LinkedCursor.h"

#include <vector>

#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "composite/SpeciesWindow.h"
#include "composite/WindowRGB.h"
#include "mainwindow/CursorGeometry.h"
#include "mainwindow/Main.h"
#include "mainwindow/Overlay.h"

using namespace platform;

namespace {

/// A live surface and the picture that its canvas shows.
struct Map {
  Graphics* surface;
  Ref<Picture> picture;
};

/// Restores a square of the canvas. The whole picture is drawn, scaled as in a paint, but clipped to the square, so the
/// pixels are the same as after a paint at any zoom and with either renderer. A nil picture restores nothing.
void Restore(const Map& map, const RestoredSquare& square) {
  if (!map.picture) return;
  Graphics& g = *map.surface;
  g.Clip(square.dx, square.dy, square.de, square.de);
  g.DrawPicture(map.picture, 0, 0, g.Width(), g.Height(), 0, 0, map.picture->Width(), map.picture->Height());
  g.NoClip();
}

void DrawSmallCross(Graphics& g, int x, int y) {
  g.ForeColor = Globals::fCursorColor;
  g.UseOldRenderer = false;
  g.PenHeight = g.PenWidth = 1;
  for (const auto& [from, to] : SmallCross(x, y)) g.DrawLine(from.x, from.y, to.x, to.y);
}

}  // namespace

void Globals::fCursorRedraw(int x, int y, bool restore, bool draw) {
  Main& main = Main::Instance();
  WindowRGB& composite = WindowRGB::Instance();
  const Map shown{&main.cvTIF.Graphics(), ShownPicture(main.currTIF, main.drawcurrTIF)};
  const Map mixed{&composite.Canvas1.Graphics(), ShownPicture(composite.RGBimage, composite.drawRGBimage)};
  std::vector<Map> species;
  ForEachWindow<SpeciesWindow>([&](SpeciesWindow& window) {
    species.push_back({&window.cv.Graphics(), ShownPicture(window.MyImage, window.drawMyImage)});
  });

  if (restore) {
    const bool exact = Menu::SizeExact();
    shown.surface->UseOldRenderer = mixed.surface->UseOldRenderer = exact;
    for (const Map& map : species) map.surface->UseOldRenderer = exact;

    const RestoredSquare square = SquareUnderMark(fCursorXold, fCursorYold, fCursorOldSize, Zoom);
    if (main.ShowsMap()) {
      Restore(shown, square);
    } else {
      shown.surface->ForeColor = Main::kNoMap;
      shown.surface->FillRect(square.dx, square.dy, square.de, square.de);
    }
    Restore(mixed, square);
    for (const Map& map : species) Restore(map, square);
  }

  if (!draw) return;
  fCursorXold = x;
  fCursorYold = y;
  if (main.CursorChosen < 3) {
    // On cvTIF the pointer itself marks the position.
    DrawSmallCross(*mixed.surface, x, y);
    for (const Map& map : species) DrawSmallCross(*map.surface, x, y);
    fCursorOldSize = 0;
    return;
  }
  const auto [oval, pen] = CircleAround(x, y, fCursorSize);
  shown.surface->ForeColor = fCursorColor;
  shown.surface->UseOldRenderer = false;
  shown.surface->PenHeight = shown.surface->PenWidth = pen;
  // The colour and the renderer of the composite's surface are not changed.
  mixed.surface->PenHeight = mixed.surface->PenWidth = pen;
  for (const Map& map : species) {
    map.surface->ForeColor = fCursorColor;
    map.surface->UseOldRenderer = false;
    map.surface->PenHeight = map.surface->PenWidth = pen;
  }
  const auto drawCircle = [&oval = oval](Graphics& g) { g.DrawOval(oval.x, oval.y, oval.width, oval.height); };
  drawCircle(*shown.surface);
  drawCircle(*mixed.surface);
  for (const Map& map : species) drawCircle(*map.surface);
  fCursorOldSize = fCursorSize;
}

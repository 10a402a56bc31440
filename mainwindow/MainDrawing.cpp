// Freehand lines over all maps, in image pixels.

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "mainwindow/Main.h"
#include "mainwindow/Stroke.h"
#include "mainwindow/WindowSelectColor.h"

using namespace platform;

namespace {

void Stamp(Graphics& g, Point pixel) {
  const Rect stamp = StampAt(pixel, Globals::Zoom);
  g.FillRect(stamp.x, stamp.y, stamp.width, stamp.height);
}

/// Calls draw(surface) for the live surface of each map, its colour set to the drawing's. What is stamped there stays
/// until the next paint.
template <class Draw>
void OnAllMaps(Draw draw) {
  for (MapWindow* window : App::MapWindows()) {
    Graphics& g = window->Map().canvas.Graphics();
    g.ForeColor = Globals::DrawColor;
    draw(g);
  }
}

/// The swatch of the colour button.
Ref<Picture> MakeSwatch() {
  Ref<Picture> swatch = NewPicture(14, 14, 32);
  Graphics g = swatch->Graphics();
  g.ForeColor = Globals::DrawColor;
  g.FillRect(0, 0, 14, 14);
  g.ForeColor = kBlack;
  g.DrawRect(0, 0, 14, 14);
  return swatch;
}

}  // namespace

void Main::BeginStroke(int X, int Y) {
  const Point pixel = StrokePixelAt(X, Y, Globals::Zoom);
  InX = pixel.x;
  InY = pixel.y;
  AppendPress(Globals::x1Draw, Globals::y1Draw, Globals::x2Draw, Globals::y2Draw, pixel);
  OnAllMaps([pixel](Graphics& g) { Stamp(g, pixel); });
}

void Main::ContinueStroke(int X, int Y) {
  const Point from{InX, InY};
  const Point to = StrokePixelAt(X, Y, Globals::Zoom);
  if (to == from) return;
  AppendStep(Globals::x1Draw, Globals::y1Draw, Globals::x2Draw, Globals::y2Draw, from, to);
  OnAllMaps([&](Graphics& g) { ForEachStamp(from, to, [&g](Point pixel) { Stamp(g, pixel); }); });
  InX = to.x;
  InY = to.y;
}

void Main::PBdraw_Action() { PPbuttons.Value(kPageDrawing); }

void Main::PBundraw_Action() { PPbuttons.Value(kPageNormal); }

void Main::PBdrawUndo_Action() { DrawUndo(); }

bool Main::_EditUndo_Action() {
  DrawUndo();
  return true;
}

void Main::DrawUndo() {
  if (RemoveStroke(Globals::x1Draw, Globals::y1Draw, Globals::x2Draw, Globals::y2Draw))
    App::Instance().RefreshAllMaps();
}

void Main::PBdrawClearAll_Action() {
  for (auto* coordinates : {&Globals::x1Draw, &Globals::y1Draw, &Globals::x2Draw, &Globals::y2Draw})
    coordinates->Redim(-1);
  App::Instance().RefreshAllMaps();
}

void Main::CB_ShowDrawing_Open() { Globals::ShowDraw = CB_ShowDrawing.Value(); }

void Main::CB_ShowDrawing_Action() {
  Globals::ShowDraw = CB_ShowDrawing.Value();
  App::Instance().RefreshAllMaps();
}

void Main::BB_sel_color_Open() {
  Globals::DrawColor = 0x808080;
  BB_sel_color.Icon(MakeSwatch());
}

void Main::BB_sel_color_Action() {
  WindowSelectColor& picker = WindowSelectColor::Instance();
  picker.selectedcolor = Globals::DrawColor;
  picker.ShowModal();
  if (!picker.NotCancelled) return;
  Globals::DrawColor = picker.selectedcolor;
  BB_sel_color.Icon(MakeSwatch());
  // Species windows take the new colour at their next paint.
  for (MapWindow* window : App::MapWindows())
    if (const MapView map = window->Map(); map.in != MapView::In::SpeciesWindow) map.canvas.Refresh(true);
}

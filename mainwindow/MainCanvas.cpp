// cvTIF: painting, the mouse outside drawing mode, the keys that are polled, the cursor buttons.

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "mainwindow/CursorGeometry.h"
#include "mainwindow/LinkedCursor.h"
#include "mainwindow/Main.h"
#include "mainwindow/Resources.h"
#include "platform/widgets/Dialogs.h"
#include "platform/widgets/Screen.h"

using namespace platform;

namespace {

constexpr int kArrow = 1, kX = 2, kCircles = 3;

}  // namespace

void Main::cvTIF_Open() { Globals::ShowDraw = true; }

bool Main::ShowsMap() const { return SelectedRow <= TIFubound() && currTIF && TIFexists(SelectedRow); }

String Main::SpeciesTitle(std::int32_t species) const {
  const String name = SpeciesLB.Cell(species, kSpeciesColumn);
  return SmoothLevel == 0 ? name : name + " (sm" + Str(SmoothLevel) + ")";
}

void Main::cvTIF_Paint(Graphics& g) {
  try {
    if (ShowsMap()) {
      Map().Paint(g);
      SpeciesName.Text(SpeciesTitle(SelectedRow));
    } else {
      g.ForeColor = kNoMap;
      g.FillRect(0, 0, g.Width(), g.Height());
      SpeciesName.Text(" ");
    }
  } catch (...) {
    ReportFailure("Something really bad happened in cvTIF.paint, but I dont know what.",
                  "cvTIF_Paint, species " + Str(SelectedRow));
  }
}

void Main::cvTIF_MouseEnter() {
  if (!IsActive) return;
  if (PPbuttons.Value() == kPageNormal) {
    if (CursorChosen == kX) {
      cvTIF.MouseCursor(Resources::fcursorcrossX());
    } else if (CursorChosen == kCircles) {
      cvTIF.MouseCursor(Resources::fcursorNone());
    } else {
      CursorChosen = kArrow;
      cvTIF.MouseCursor(Resources::fcursorwhitearrow());
    }
    Timer1.Enabled(true);
  } else if (PPbuttons.Value() == kPageDrawing) {
    cvTIF.MouseCursor(Resources::fcursorpen());
  }
}

void Main::cvTIF_MouseExit() {
  if (PPbuttons.Value() != kPageNormal) return;
  if (TIFready)
    for (int i = 0; i < SpeciesLB.ListCount(); ++i) SpeciesLB.Cell(i, kCurColumn, "-");
  Globals::fCursorRedraw(0, 0, true, false);
  Timer1.Enabled(false);
}

void Main::cvTIF_MouseMove(int X, int Y) {
  if (!IsActive || PPbuttons.Value() != kPageNormal) return;
  ForgetShortcut();
  if (TIFready) {
    const auto [x, y] = ImagePixelAt(X, Y, Globals::Zoom);
    for (int i = 0; i < SpeciesLB.ListCount(); ++i) SpeciesLB.Cell(i, kCurColumn, Str(TIFarray(i, x, y)));
  }
  SpeciesLB.InvalidateCell(-1, kMarksColumn);
  Globals::fCursorRedraw(X, Y, true, true);
}

void Main::MarkClicks() {
  for (int i = 0; i < SpeciesLB.ListCount(); ++i) Clicks(PhaseEditNb, i, TIFarray(i, InX, InY)) = true;
  SpeciesLB.InvalidateCell(-1, kMarksColumn);
}

bool Main::cvTIF_MouseDown(int X, int Y) {
  if (PPbuttons.Value() == kPageDrawing) {
    BeginStroke(X, Y);
    return true;
  }
  if (PPbuttons.Value() != kPageNormal) return false;
  if (TIFready) {
    const Point pixel = ImagePixelAt(X, Y, Globals::Zoom);
    InX = pixel.x;
    InY = pixel.y;
    MarkClicks();
  }
  return true;
}

void Main::cvTIF_MouseDrag(int X, int Y) {
  if (PPbuttons.Value() == kPageDrawing) {
    ContinueStroke(X, Y);
  } else if (PPbuttons.Value() == kPageNormal) {
    const auto [x, y] = ImagePixelAt(X, Y, Globals::Zoom);
    if ((x == InX && y == InY) || x < 0 || x >= InTIFwidth || y < 0 || y >= InTIFheight) return;
    // Marks the pixel that the pointer leaves, not the one that it enters.
    MarkClicks();
    InX = x;
    InY = y;
  }
}

void Main::cvTIF_MouseUp(int /*X*/, int /*Y*/) { App::Instance().RefreshAllMaps(); }

bool Main::ForgetShortcut() {
  if (!sizeBeforeControl || !Keyboard::ControlBecameShortcut()) return false;
  Globals::fCursorSize = *sizeBeforeControl;
  sizeBeforeControl.reset();
  return true;
}

void Main::Timer1_Action() {
  bool redraw = true;
  const bool restored = ForgetShortcut();
  const bool control = Keyboard::AsyncControlKey();
  if (!control) sizeBeforeControl.reset();
  if (control) {
    if (!sizeBeforeControl) sizeBeforeControl = Globals::fCursorSize;
    Globals::fCursorSize = GrownCursorSize(Globals::fCursorSize, cvTIF.Width(), cvTIF.Height());
  } else if (Keyboard::AsyncOptionKey()) {
    Globals::fCursorSize = ShrunkCursorSize(Globals::fCursorSize);
  } else if (Keyboard::AsyncShiftKey()) {
    if (!Globals::fCursorShiftPressed) {
      Globals::fCursorColor = NextCursorColor(Globals::fCursorColor);
      Globals::fCursorShiftPressed = true;
    }
  } else {
    redraw = restored;
    Globals::fCursorShiftPressed = false;
  }
  if (redraw) Globals::fCursorRedraw(Globals::fCursorXold, Globals::fCursorYold, true, true);
}

// Choosing a style. The pointer changes at the next entry into cvTIF.

namespace {

enum class Renderer { Default, Old, New };

/// An icon of 20 by 20 pixels from a picture of the resources and its mask.
Ref<Picture> MakeIcon(const Ref<Picture>& picture, const Ref<Picture>& mask, Renderer renderer) {
  Ref<Picture> icon = NewPicture(20, 20, 32);
  Graphics g = icon->Graphics();
  Graphics m = icon->Mask()->Graphics();
  if (renderer != Renderer::Default) g.UseOldRenderer = m.UseOldRenderer = renderer == Renderer::Old;
  g.DrawPicture(picture, 1, 1);
  m.DrawPicture(mask, 1, 1);
  return icon;
}

}  // namespace

void Main::BBcursorX_Open() {
  BBcursorX.Icon(MakeIcon(Resources::xCursorpict(), Resources::xCursorpict(), Renderer::Old));
}

void Main::BBcursorX_Action() { CursorChosen = kX; }

void Main::BBcursorArrow_Open() {
  BBcursorArrow.Icon(MakeIcon(Resources::arrowCursorpict(), Resources::arrowCursorpictmask(), Renderer::Default));
}

void Main::BBcursorArrow_Action() { CursorChosen = kArrow; }

void Main::BBcursorCircles_Open() {
  BBcursorCircles.Icon(MakeIcon(Resources::circleCursor(), Resources::circleCursormask(), Renderer::New));
}

void Main::BBcursorCircles_Action() { CursorChosen = kCircles; }

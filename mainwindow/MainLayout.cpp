// Main as a window: opening, closing, sizes, pages, keys.

#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "catalogue/WindowOverview.h"
#include "mainwindow/Main.h"
#include "mainwindow/WindowSizes.h"

using namespace platform;

void Main::Event_Open() {
  WindowDefaultWidth = Width();
  WindowDefaultHeight = Height();
  SelectedRow = -1;
  SelectedLUT = 10;
  SmoothLevel = 0;
  Globals::Zoom = 1.0;
  TIFready = false;
  PhaseEditNb = 0;
  Timer1.Enabled(false);
  Timer1.Mode(Timer::kModeMultiple);
}

bool Main::Event_CancelClose(bool appQuitting) {
  if (appQuitting) return false;
  WindowOverview::Instance().UncheckAll();
  Hide();
  HideComposite();
  CloseAllSpeciesWindows();
  WindowOverview::Instance().Visible(true);
  return true;
}

bool Main::_FileClose_Action() {
  // Unlike the close box, this leaves the species windows open.
  WindowOverview::Instance().UncheckAll();
  HideComposite();
  Hide();
  WindowOverview::Instance().Visible(true);
  return true;
}

void Main::Event_Resized() {
  LB_Phases.Height(Height() - LB_Phases.Top() - 15);
  SpeciesLB.Height(Height() - SpeciesLB.Top() - 15);
}

void Main::Event_EnableMenuItems() { Menu::Item("EditUndo").Enabled(PPbuttons.Value() == kPageDrawing); }

void Main::WResize() {
  const MainChange change = FitMain({.windowAtOpening = {WindowDefaultWidth, WindowDefaultHeight},
                                     .canvasLeft = cvTIF.Left(),
                                     .canvas = {cvTIF.Width(), cvTIF.Height()}},
                                    InTIFwidth, InTIFheight, Globals::Zoom);
  SpeciesName.Top(SpeciesName.Top() + change.nameDown);
  if (change.windowHeight) {
    Height(*change.windowHeight);
    MinHeight(*change.windowHeight);
    for (RectControl* control : std::initializer_list<RectControl*>{&SpeciesLB, &LB_Phases, &PPbuttons})
      control->Top(control->Top() + change.stripDown);
  }
  if (change.windowWidth) {
    Width(*change.windowWidth);
    MinWidth(*change.windowWidth);
    MaxWidth(*change.windowWidth);
  }
  cvTIF.Height(change.canvas.height);
  cvTIF.Width(change.canvas.width);
}

void Main::ProgressShow() {
  PPbuttons.Value(kPageLoading);
  Reveal(STstatus);
  Reveal(Progress);
}

void Main::ProgressHide() {
  PPbuttons.Value(kPageNormal);
  EndReveal();
}

bool Main::Event_KeyDown(const String& key) {
  constexpr int kUp = 30;
  constexpr int kDown = 31;
  const int code = Asc(key);
  if (code != kUp && code != kDown) return false;
  const int count = SpeciesLB.ListCount();
  const int next = code == kDown ? SelectedRow + 1 : SelectedRow + count - 1;
  SelectSpecies(count == 0 ? next : next % count);
  SpeciesLB.Reveal(SelectedRow);
  return false;
}

void Main::MoveSelection(std::int32_t species) {
  SpeciesLB.InvalidateCell(SelectedRow, -1);
  SelectedRow = species;
  SpeciesLB.InvalidateCell(SelectedRow, -1);
}

void Main::SelectSpecies(std::int32_t species) {
  MoveSelection(species);
  Update_cvTIF();
}

// Main's commands for the species windows and the composite.

#include "appcore/Globals.h"
#include "composite/SpeciesWindow.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "mainwindow/WindowSizes.h"
#include "platform/widgets/Screen.h"

using namespace platform;

void Main::CloseAllSpeciesWindows() {
  // From the last to the first, since closing removes the window from the list.
  for (int i = WindowCount() - 1; i >= 0; --i)
    if (auto* window = dynamic_cast<SpeciesWindow*>(&WindowAt(i))) window->Close();
}

void Main::ShowAllSpecies() {
  const Screen screen(0);
  const ScreenArea area{screen.AvailableLeft(), screen.AvailableTop(), screen.AvailableWidth(),
                        screen.AvailableHeight()};
  PlacementCursor cursor = FirstPosition(area);
  CloseAllSpeciesWindows();
  for (std::int32_t i = 0; i <= TIFubound(); ++i) {
    if (!TIFexists(i)) continue;
    SpeciesWindow& window = New<SpeciesWindow>();
    window.MyIndex = i;
    window.MyImage = NewPicture(InTIFwidth, InTIFheight, 32);
    window.drawMyImage = NewPicture(InTIFwidth, InTIFheight, 32);
    const WindowFit fit = SpeciesWindowFit(InTIFwidth, InTIFheight, Globals::Zoom);
    window.Apply(fit);
    // A window that does not fit keeps the position that the window system chose.
    const Placement placement = PlaceSpeciesWindow(cursor, area, fit.window);
    cursor = placement.next;
    if (placement.position) {
      window.Left(placement.position->x);
      window.Top(placement.position->y);
    }
    window.Title(SpeciesTitle(i));
    ColorSpecies(i, window.MyImage->Pixels());
  }
  ActivateSoon();  // the linked cursor follows the pointer only while Main is active
}

void Main::PB_AllSpecies_Action() { ShowAllSpecies(); }

void Main::PB_SpeciesUpdate_Action() { ShowAllSpecies(); }

void Main::PB_SpeciesClose_Action() { CloseAllSpeciesWindows(); }

void Main::HideComposite() { WindowRGB::Instance().Hide(); }

void Main::PB_RGB_Action() {
  WindowRGB::Instance().Show();
  WindowRGB::Instance().LoadData();
}

#include "composite/SpeciesWindow.h"

#include "appcore/Globals.h"
#include "mainwindow/Main.h"
#include "mainwindow/WindowSizes.h"
#include "platform/widgets/Application.h"

using namespace platform;

SpeciesWindow::SpeciesWindow() : Window({.title = "-", .width = 258, .height = 257, .resizeable = false}) {
  CreateControls();
  AddMenuHandlers();
}

void SpeciesWindow::CreateControls() {
  CreateControl({&cv, "cv", 1, 0, 256, 256, kLockLeftTop, kNoPage, "", "Map"});
  cv.Paint = Handler(this, &SpeciesWindow::cv_Paint);
}

void SpeciesWindow::cv_Paint(Graphics& g) {
  // At natural size first; the scaled map is drawn over it.
  g.DrawPicture(MyImage, 0, 0);
  if (MyImage) Map().Paint(g);
}

void SpeciesWindow::WResize() {
  const Main& main = Main::Instance();
  if (const auto fit = FitSpeciesWindow({cv.Width(), cv.Height()}, main.InTIFwidth, main.InTIFheight, Globals::Zoom))
    Apply(*fit);
}

void SpeciesWindow::Apply(const WindowFit& fit) {
  Width(fit.window.width);
  Height(fit.window.height);
  cv.Width(fit.canvas.width);
  cv.Height(fit.canvas.height);
}

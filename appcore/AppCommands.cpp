#include <utility>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "catalogue/WindowOverview.h"
#include "composite/SpeciesWindow.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "output/WindowAbout.h"
#include "platform/widgets/Dialogs.h"

using namespace platform;

void App::AddMenuHandlers() {
  AddMenuHandler("FileQuit", Handler(this, &App::_FileQuit_Action));
  AddMenuHandler("AppleAbout", Handler(this, &App::_AppleAbout_Action));
  AddMenuHandler("FileNewClear", Handler(this, &App::_FileNewClear_Action));
  AddMenuHandler("MenuWindowOverview", Handler(this, &App::_MenuWindowOverview_Action));
  AddMenuHandler("MenuWindowMain", Handler(this, &App::_MenuWindowMain_Action));
  AddMenuHandler("MenuWindowRGB", Handler(this, &App::_MenuWindowRGB_Action));
  AddMenuHandler("Window100", Handler(this, &App::_Window100_Action));
  AddMenuHandler("Window50", Handler(this, &App::_Window50_Action));
  AddMenuHandler("window200", Handler(this, &App::_window200_Action));
  AddMenuHandler("window300", Handler(this, &App::_window300_Action));
  AddMenuHandler("window400", Handler(this, &App::_window400_Action));
  AddMenuHandler("optionsrawImage", Handler(this, &App::_optionsrawImage_Action));
  AddMenuHandler("optionsSmooth1", Handler(this, &App::_optionsSmooth1_Action));
  AddMenuHandler("optionsSmooth2", Handler(this, &App::_optionsSmooth2_Action));
  AddMenuHandler("optionsSmooth3", Handler(this, &App::_optionsSmooth3_Action));
  AddMenuHandler("optionsSmooth4", Handler(this, &App::_optionsSmooth4_Action));
  AddMenuHandler("optionsSmooth5", Handler(this, &App::_optionsSmooth5_Action));
  AddMenuHandler("FileChangeSaveLocation", Handler(this, &App::_FileChangeSaveLocation_Action));
  AddMenuHandler("SizeExact", Handler(this, &App::_SizeExact_Action));
  AddMenuHandler("Window500", Handler(this, &App::_Window500_Action));
  AddMenuHandler("OptionsSmooth25", Handler(this, &App::_OptionsSmooth25_Action));
  AddMenuHandler("OptionsSmooth20", Handler(this, &App::_OptionsSmooth20_Action));
  AddMenuHandler("OptionsSmooth15", Handler(this, &App::_OptionsSmooth15_Action));
  AddMenuHandler("OptionsSmooth10", Handler(this, &App::_OptionsSmooth10_Action));
}

void App::UncheckAllColors() {
  for (int n = 1; n <= 20; ++n) Menu::Item("Colorsc" + Str(n)).Checked(false);
}

void App::UncheckAllSmooth() {
  for (const char* item :
       {"OptionsRawImage", "OptionsSmooth1", "OptionsSmooth2", "OptionsSmooth3", "OptionsSmooth4", "OptionsSmooth5"})
    Menu::Item(item).Checked(false);
}

void App::UncheckAllZoom() {
  for (const char* item : {"Window50", "Window100", "Window200", "Window300", "Window400", "Window500"})
    Menu::Item(item).Checked(false);
}

std::vector<MapWindow*> App::MapWindows() {
  std::vector<MapWindow*> windows{&Main::Instance(), &WindowRGB::Instance()};
  ForEachWindow<SpeciesWindow>([&](SpeciesWindow& window) { windows.push_back(&window); });
  return windows;
}

void App::ResizeWindows() {
  UncheckAllZoom();
  for (MapWindow* window : MapWindows()) window->WResize();
}

void App::SmoothChanged(std::int32_t level) {
  UncheckAllSmooth();
  Main::Instance().Smooth(level);
  if (WindowRGB::Instance().Visible()) WindowRGB::Instance().UpdateRGB();
  Main::Instance().Update_cvTIF();
}

void App::RefreshAllMaps() {
  for (MapWindow* window : MapWindows()) window->Map().canvas.Refresh(true);
}

bool App::_FileQuit_Action() {
  Quit();
  return false;
}

bool App::_AppleAbout_Action() {
  WindowAbout::Instance().Visible(true);
  return false;
}

bool App::_FileNewClear_Action() {
  // Empties the stack, not the catalogue; the fields that describe the stack keep their values.
  Main& main = Main::Instance();
  main.TIFarray.Redim(-1, -1, -1);
  main.TIFarrOriginal.Redim(-1, -1, -1);
  main.SpeciesLB.DeleteAllRows();
  main.currTIF = nullptr;
  main.Title("Vornalite");
  main.Refresh();
  return false;
}

bool App::_MenuWindowOverview_Action() {
  WindowOverview::Instance().Show();
  return false;
}

bool App::_MenuWindowMain_Action() {
  Main::Instance().Show();
  return false;
}

bool App::_MenuWindowRGB_Action() {
  WindowRGB::Instance().Show();
  return false;
}

bool App::SetZoom(double zoom, const char* item) {
  Globals::Zoom = zoom;
  ResizeWindows();
  Menu::Item(item).Checked(true);
  return false;
}

bool App::_Window50_Action() { return SetZoom(0.5, "Window50"); }
bool App::_Window100_Action() { return SetZoom(1.0, "Window100"); }
bool App::_window200_Action() { return SetZoom(2.0, "Window200"); }
bool App::_window300_Action() { return SetZoom(3.0, "Window300"); }
bool App::_window400_Action() { return SetZoom(4.0, "Window400"); }
bool App::_Window500_Action() { return SetZoom(5.0, "Window500"); }

bool App::_SizeExact_Action() {
  MenuItem& exact = Menu::Item("SizeExact");
  exact.Checked(!exact.Checked());
  std::vector<MapWindow*> windows = MapWindows();
  std::swap(windows[0], windows[1]);  // the composite first
  for (MapWindow* window : windows) window->Map().canvas.Refresh(true);
  return false;
}

bool App::SetSmoothing(std::int32_t level, const char* item) {
  SmoothChanged(level);
  Menu::Item(item).Checked(true);
  return false;
}

bool App::_optionsrawImage_Action() { return SetSmoothing(0, "OptionsRawImage"); }
bool App::_optionsSmooth1_Action() { return SetSmoothing(1, "OptionsSmooth1"); }
bool App::_optionsSmooth2_Action() { return SetSmoothing(2, "OptionsSmooth2"); }
bool App::_optionsSmooth3_Action() { return SetSmoothing(3, "OptionsSmooth3"); }
bool App::_optionsSmooth4_Action() { return SetSmoothing(4, "OptionsSmooth4"); }
bool App::_optionsSmooth5_Action() { return SetSmoothing(5, "OptionsSmooth5"); }
bool App::_OptionsSmooth10_Action() { return SetSmoothing(10, "OptionsSmooth10"); }
bool App::_OptionsSmooth15_Action() { return SetSmoothing(15, "OptionsSmooth15"); }
bool App::_OptionsSmooth20_Action() { return SetSmoothing(20, "OptionsSmooth20"); }
bool App::_OptionsSmooth25_Action() { return SetSmoothing(25, "OptionsSmooth25"); }

bool App::_FileChangeSaveLocation_Action() {
  SelectFolderDialog dialog;
  dialog.ActionButtonCaption = "Select";
  dialog.Title = "Choose a Folder as Default Save Location";
  dialog.InitialDirectory = Globals::OutputFolder;
  if (const Ref<FolderItem> folder = dialog.ShowModal()) Globals::OutputFolder = folder;
  return false;
}

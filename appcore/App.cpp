#include "appcore/App.h"

#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "catalogue/FileTypes.h"
#include "catalogue/WindowOverview.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "output/TextLogWindow.h"
#include "stack/ColorTables.h"

using namespace platform;

namespace {

App* theApp = nullptr;

/// Whether the window of the debugging log is shown at start.
constexpr bool kShowDebuggingLog = false;

void LoadColorTables() {
  const Array<String> lines = ColorTableLines();
  for (int table = 0; table < 20; ++table) {
    const ParsedTable parsed = ParseColorTable(lines(table));
    Globals::lutname(table) = parsed.name;
    for (int level = 0; level < 256; ++level)
      Globals::lut(table, level) = parsed.colors[static_cast<std::size_t>(level)];
  }
}

}  // namespace

App::App() { theApp = this; }

App::~App() { theApp = nullptr; }

App& App::Instance() {
  if (!theApp) ThrowNil("there is no application object");
  return *theApp;
}

void App::Event_Open() {
  LoadColorTables();
  for (int table = 0; table < 20; ++table) Menu::Item("Colorsc" + Str(table + 1)).Text(Globals::lutname(table));
  if (kShowDebuggingLog) TextLogWindow::Instance().Visible(true);

  for (const char* item : {"Colorsc11", "OptionsRawImage", "Window100", "SizeExact"}) Menu::Item(item).Checked(true);

  Globals::OutputFolder = DesktopFolder();
  Globals::fCursorSize = 40;
  Globals::fCursorColor = RGB(128, 128, 128);
}

void App::Event_EnableMenuItems() {
  // The first call creates both windows, hidden.
  const bool mainVisible = Main::Instance().Visible();
  for (const char* item :
       {"MenuWindowMain", "Window50", "Window100", "Window200", "Window300", "Window400", "Window500", "SizeExact",
        "OptionsSmooth1", "OptionsSmooth2", "OptionsSmooth3", "OptionsSmooth4", "OptionsSmooth5", "OptionsSmooth10",
        "OptionsSmooth15", "OptionsSmooth20", "OptionsSmooth25", "OptionsRawImage"})
    Menu::Item(item).Enabled(mainVisible);
  // The item brings the window to the front; it does not open a hidden one.
  Menu::Item("MenuWindowRGB").Enabled(WindowRGB::Instance().Visible());
}

namespace {

/// The start sequence up to the event loop.
std::unique_ptr<App> MakeApp(char** argv) {
  StartToolkit(argv);
  Globals::CreateArrays();
  FileTypes::_Initialize();
  auto app = std::make_unique<App>();
  app->MenuBar(&Menu::Menu::Instance());
  app->AddMenuHandlers();
  WindowOverview::Instance();
  return app;
}

}  // namespace

int _Main(char** argv) { return MakeApp(argv)->Run(); }

StartedApp::StartedApp(char** argv) : app_(MakeApp(argv)) { app_->Open(); }

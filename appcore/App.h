#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "platform/widgets/Application.h"

class MapWindow;

/// The application: start-up, the state of the menus, and the commands that are not specific to one window.
class App : public platform::Application {
 public:
  App();
  ~App() override;
  /// The one application object, created by _Main.
  static App& Instance();

  void Event_Open() override;
  void Event_EnableMenuItems() override;

  // Clear check marks of the menus.
  void UncheckAllColors();
  void UncheckAllSmooth();  ///< the raw image and levels 1 to 5 only; the higher levels keep their marks
  void UncheckAllZoom();

  /// The windows that show a map: Main, WindowRGB, then the species windows in the order of the window list. Creates
  /// Main and WindowRGB if they do not exist.
  static std::vector<MapWindow*> MapWindows();

  /// Resizes the windows that show a map to the size of the stack and the zoom.
  void ResizeWindows();
  /// Smooths the stack at a level and shows the result.
  void SmoothChanged(std::int32_t level);
  /// Repaints every map at once.
  void RefreshAllMaps();

  /// Registers the handlers of the commands below by the names of their items.
  void AddMenuHandlers();

  bool _FileQuit_Action();
  bool _AppleAbout_Action();
  bool _FileNewClear_Action();
  bool _MenuWindowOverview_Action();
  bool _MenuWindowMain_Action();
  bool _MenuWindowRGB_Action();
  bool _Window100_Action();
  bool _Window50_Action();
  bool _window200_Action();
  bool _window300_Action();
  bool _window400_Action();
  bool _optionsrawImage_Action();
  bool _optionsSmooth1_Action();
  bool _optionsSmooth2_Action();
  bool _optionsSmooth3_Action();
  bool _optionsSmooth4_Action();
  bool _optionsSmooth5_Action();
  bool _FileChangeSaveLocation_Action();
  bool _SizeExact_Action();
  bool _Window500_Action();
  bool _OptionsSmooth25_Action();
  bool _OptionsSmooth20_Action();
  bool _OptionsSmooth15_Action();
  bool _OptionsSmooth10_Action();

 private:
  /// The menu commands; they check their item and return what a menu handler returns.
  bool SetZoom(double zoom, const char* item);
  bool SetSmoothing(std::int32_t level, const char* item);
};

/// The program: creates the global arrays, the file types, the application and the first window, in this order, and
/// runs the event loop. Returns the exit status.
int _Main(char** argv);

/// The same sequence up to, but without, the event loop, with App's open event raised; for programs that drive the
/// windows themselves. The application lives as long as this object.
class StartedApp {
 public:
  explicit StartedApp(char** argv);

 private:
  std::unique_ptr<App> app_;
};

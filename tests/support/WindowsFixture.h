#pragma once
/// The running program for tests: its real windows on the toolkit's offscreen platform, driven through events. The
/// state of the program is global, so every test needs a process of its own, as CTest gives it.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "appcore/App.h"
#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "catalogue/WindowOverview.h"
#include "composite/SpeciesWindow.h"
#include "composite/WindowRGB.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Dialogs.h"
#include "tests/support/Testing.h"

namespace user = platform::testing;

using LevelAt = std::function<int(int x, int y)>;

class WindowsTest : public ::testing::Test {
 protected:
  WindowsTest();
  ~WindowsTest() override;

  /// Writes an 8-bit grey TIFF of that size into the folder of this test and returns its path.
  std::string WriteMap(const std::string& name, int width, int height, const LevelAt& level);
  /// Writes a map file: the count of species at all ten positions, size 8, names of up to five bytes each.
  std::string WriteMapFile(const std::string& name, const std::vector<std::string>& species);
  std::string WriteBytes(const std::string& name, const std::string& bytes);
  std::string PathOf(const std::string& name) const { return (folder / name).string(); }

  /// Drops files on the Overview window.
  void Drop(const std::vector<std::string>& paths);
  /// Clicks the check box of a row of the Overview window.
  void CheckRow(int row);
  /// Writes a map for each species as map_<species>.tif, drops them and checks the row. Levels come from `level(species
  /// index)`.
  void LoadCluster(const std::vector<std::string>& species, int width, int height,
                   const std::function<LevelAt(int)>& level);
  /// Three species of a size with the levels below.
  void LoadThree(int width, int height);
  static int Level(int species, int x, int y) { return (x * 7 + y * 3 + species * 50) % 256; }
  /// Opens the composite and the species windows; Main stays in front.
  void OpenEverything();
  /// The canvases of Main, the composite and the species windows.
  std::vector<platform::Canvas*> AllCanvases();

  static platform::Color PixelOf(platform::Canvas& canvas, int x, int y);
  WindowOverview& overview() { return WindowOverview::Instance(); }
  Main& main() { return Main::Instance(); }
  WindowRGB& composite() { return WindowRGB::Instance(); }
  std::vector<SpeciesWindow*> speciesWindows();
  /// A cell of the Overview list.
  std::string Cell(int row, int column) { return overview().ListBox1.Cell(row, column).Utf8(); }

  std::filesystem::path folder;       ///< of this test, empty at first; also the output folder
  std::vector<std::string> messages;  ///< all messages shown since the start
};

#include "tests/WindowsFixture.h"

#include <unistd.h>

#include <cstdint>
#include <fstream>

using namespace platform;

namespace {

void PutNumber(std::string& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

/// An uncompressed grey TIFF of one strip: header, one directory, pixels.
std::string GreyTiff(int width, int height, const LevelAt& level) {
  const std::pair<std::uint32_t, std::uint32_t> tags[] = {
      {256, width},  {257, height},
      {258, 8},      {259, 1},
      {262, 1},      {273, 8 + 2 + 12 * 8 + 4},
      {278, height}, {279, static_cast<std::uint32_t>(width) * height}};
  std::string bytes = "II*";
  PutNumber(bytes, 0, 1);
  PutNumber(bytes, 8, 4);
  PutNumber(bytes, 8, 2);
  for (const auto& [tag, value] : tags) {
    PutNumber(bytes, tag, 2);
    PutNumber(bytes, 4, 2);
    PutNumber(bytes, 1, 4);
    PutNumber(bytes, value, 4);
  }
  PutNumber(bytes, 0, 4);
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) bytes += static_cast<char>(level(x, y));
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  ::testing::InitGoogleTest(&argc, argv);
  if (::testing::GTEST_FLAG(list_tests)) return RUN_ALL_TESTS();
  const StartedApp app(argv);
  return RUN_ALL_TESTS();
}

WindowsTest::WindowsTest() {
  const auto* info = ::testing::UnitTest::GetInstance()->current_test_info();
  folder = std::filesystem::temp_directory_path() / ("vornalite-" + std::to_string(::getpid()) + "-" + info->name());
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  Globals::OutputFolder = MakeRef<FolderItem>(folder);
  Dialogs().msgBox = [this](const String& text) { messages.push_back(text.Utf8()); };
  user::ProcessEvents();
}

WindowsTest::~WindowsTest() {
  Dialogs() = {};
  std::filesystem::remove_all(folder);
}

std::string WindowsTest::WriteBytes(const std::string& name, const std::string& bytes) {
  std::ofstream(folder / name, std::ios::binary) << bytes;
  return PathOf(name);
}

std::string WindowsTest::WriteMap(const std::string& name, int width, int height, const LevelAt& level) {
  return WriteBytes(name, GreyTiff(width, height, level));
}

void WindowsTest::Drop(const std::vector<std::string>& paths) { user::Drop(overview(), paths); }

void WindowsTest::CheckRow(int row) { user::ClickCellCheck(overview().ListBox1, row, WindowOverview::kCluster); }

void WindowsTest::LoadCluster(const std::vector<std::string>& species, int width, int height,
                              const std::function<LevelAt(int)>& level) {
  std::vector<std::string> paths;
  for (std::size_t i = 0; i < species.size(); ++i)
    paths.push_back(WriteMap("map_" + species[i] + ".tif", width, height, level(static_cast<int>(i))));
  Drop(paths);
  CheckRow(overview().ListBox1.ListCount() - 1);
  user::Activate(main());
}

void WindowsTest::LoadThree(int width, int height) {
  LoadCluster({"Al", "Fe", "Mg"}, width, height,
              [](int species) { return [species](int x, int y) { return Level(species, x, y); }; });
}

void WindowsTest::OpenEverything() {
  for (PushButton* button : {&main().PB_RGB, &main().PB_AllSpecies}) {
    user::Click(*button);
    user::Activate(main());
  }
}

std::vector<Canvas*> WindowsTest::AllCanvases() {
  std::vector<Canvas*> canvases{&main().cvTIF, &composite().Canvas1};
  for (SpeciesWindow* window : speciesWindows()) canvases.push_back(&window->cv);
  return canvases;
}

Color WindowsTest::PixelOf(Canvas& canvas, int x, int y) { return canvas.Image()->RGBSurface().Pixel(x, y); }

std::vector<SpeciesWindow*> WindowsTest::speciesWindows() {
  std::vector<SpeciesWindow*> windows;
  ForEachWindow<SpeciesWindow>([&](SpeciesWindow& window) { windows.push_back(&window); });
  return windows;
}

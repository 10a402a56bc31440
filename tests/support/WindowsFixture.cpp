#include "tests/support/WindowsFixture.h"

#include <unistd.h>

#include <cstdint>
#include <fstream>

using namespace platform;

namespace {

/// An uncompressed little-endian grey TIFF of one strip: header, eight entries, pixels.
std::string GreyTiff(int width, int height, const LevelAt& level) {
  const auto w = static_cast<std::uint32_t>(width), h = static_cast<std::uint32_t>(height);
  std::vector<std::uint32_t> words{0x002A4949, 10, 8 << 16};  // the directory begins at byte 10 with its count
  for (const auto& [tag, value] :
       {std::pair{256U, w}, {257, h}, {258, 8}, {259, 1}, {262, 1}, {273, 112}, {278, h}, {279, w * h}})
    words.insert(words.end(), {tag | 4 << 16, 1, value});
  words.push_back(0);
  std::string bytes(reinterpret_cast<const char*>(words.data()), 4 * words.size());
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

std::string WindowsTest::WriteMapFile(const std::string& name, const std::vector<std::string>& species) {
  std::string bytes(4808 + species.size() * (128 + 1224) + 8, '\0');
  for (const std::size_t at : {1390, 1394, 1746, 1750, 2144, 2148, 2570, 2820, 4292, 4556})
    bytes[at] = static_cast<char>(species.size());
  for (const std::size_t at : {2172, 2174, 2498, 2502}) bytes[at] = 8;
  for (std::size_t i = 0; i < species.size(); ++i)
    bytes.replace(i == 0 ? 3072 : 4808 + i * 128 + (i - 1) * 1224, species[i].size(), species[i]);
  return WriteBytes(name, bytes);
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
  std::vector<Canvas*> canvases;
  for (MapWindow* window : App::MapWindows()) canvases.push_back(&window->Map().canvas);
  return canvases;
}

Color WindowsTest::PixelOf(Canvas& canvas, int x, int y) { return canvas.Image()->RGBSurface().Pixel(x, y); }

std::vector<SpeciesWindow*> WindowsTest::speciesWindows() {
  std::vector<SpeciesWindow*> windows;
  ForEachWindow<SpeciesWindow>([&](SpeciesWindow& window) { windows.push_back(&window); });
  return windows;
}

// Saving, the log, About.

#include "output/TextLogWindow.h"
#include "output/WindowAbout.h"
#include "platform/widgets/Screen.h"
#include "tests/support/FileCalls.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class ExportTest : public WindowsTest {
 protected:
  std::vector<std::string> Saved() {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      if (entry.path().extension() != ".tif") names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
  }
};

TEST_F(ExportTest, MapsAreSavedUnderFreeNamesWithoutZoomAndDrawing) {
  LoadThree(20, 10);
  user::ChooseMenu("Window300");
  user::Click(main().PBdraw);
  user::Click(main().cvTIF, 10, 10);
  user::Click(main().PBundraw);
  user::Click(main().PB_SaveImage);
  user::Key(main(), "Ctrl+S");
  EXPECT_EQ(Saved(), (std::vector<std::string>{"map_(Al).png", "map_(Al)_02.png"}));
  const auto picture = FolderItem(folder / "map_(Al).png").OpenAsPicture();
  ASSERT_TRUE(picture);
  ASSERT_EQ(picture->Width(), 20);
  for (int y = 0; y < 10; ++y)
    for (int x = 0; x < 20; ++x) ASSERT_EQ(picture->RGBSurface().Pixel(x, y), Globals::lut(10, Level(0, x, y)));
  main().TIFexists(0) = false;
  user::Click(main().PB_SaveImage);
  EXPECT_EQ(Saved().size(), 2u);
  EXPECT_TRUE(messages.empty());
}

TEST_F(ExportTest, CompositesCarryTheirThreeSpecies) {
  LoadThree(20, 10);
  user::Click(main().PB_RGB);
  user::ChooseRow(composite().popM[1], 0);
  user::Click(composite().PB_SaveImage);
  user::Activate(composite());
  user::ChooseMenu("FileSaveImage");  // goes to the window in front
  EXPECT_EQ(Saved(), (std::vector<std::string>{"map_(Al+_+Mg).png", "map_(Al+_+Mg)_02.png"}));
  const auto picture = FolderItem(folder / "map_(Al+_+Mg).png").OpenAsPicture();
  EXPECT_EQ(picture->RGBSurface().Pixel(4, 3), composite().RGBrgbsurface.Pixel(4, 3));
}

TEST_F(ExportTest, NumbersFillGapsAndRunOutAt99) {
  LoadThree(4, 4);
  WriteBytes("map_(Al).png", "mine");
  for (int n = 2; n <= 99; ++n)
    WriteBytes("map_(Al)_" + std::string(n < 10 ? "0" : "") + std::to_string(n) + ".png", "");
  std::filesystem::remove(folder / "map_(Al)_57.png");
  user::Click(main().PB_SaveImage);
  EXPECT_GT(std::filesystem::file_size(folder / "map_(Al)_57.png"), 0u);
  EXPECT_TRUE(messages.empty());
  WriteBytes("map_(Al)_100.png", "");
  user::Click(main().PB_SaveImage);
  EXPECT_EQ(messages, std::vector<std::string>{"filename increment exceeds 99"});
  EXPECT_GT(std::filesystem::file_size(folder / "map_(Al)_100.png"), 0u);
  EXPECT_EQ(std::filesystem::file_size(folder / "map_(Al).png"), 4u);
}

TEST_F(ExportTest, ANameTakenWhileThePictureIsWrittenStartsTheNumberingAgain) {
  LoadThree(4, 4);
  std::filesystem::create_symlink("nowhere", folder / "map_(Al)_02.png");
  bool taken = false;
  fileCalls.flush = [&] {
    if (!std::exchange(taken, true)) WriteBytes("map_(Al).png", "theirs");
    return 0;
  };
  user::Click(main().PB_SaveImage);
  fileCalls = {};
  EXPECT_EQ(Saved(), (std::vector<std::string>{"map_(Al).png", "map_(Al)_02.png", "map_(Al)_03.png"}));
  EXPECT_EQ(std::filesystem::file_size(folder / "map_(Al).png"), 6u);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "map_(Al)_02.png"));
  // Any other failure ends the save.
  int tries = 0;
  fileCalls.flush = [&] {
    ++tries;
    return EIO;
  };
  user::Click(main().PB_SaveImage);
  fileCalls = {};
  EXPECT_EQ(tries, 1);
  EXPECT_EQ(Saved().size(), 3u);
  EXPECT_TRUE(messages.empty());
}

TEST_F(ExportTest, AFolderThatIsGoneIsToldAndNothingIsLost) {
  LoadThree(4, 4);
  Globals::OutputFolder = MakeRef<FolderItem>(folder / "gone");
  user::Click(main().PB_SaveImage);
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_NE(messages[0].find(PathOf("gone") + " does not exist any more. Choose another"), std::string::npos);
  EXPECT_TRUE(Saved().empty());
  EXPECT_TRUE(main().TIFready);
}

TEST_F(ExportTest, TheLogNumbersItsLines) {
  auto& log = TextLogWindow::Instance();
  EXPECT_EQ(log.Top() + log.Height(), Screen(0).AvailableTop() + Screen(0).AvailableHeight());
  EXPECT_EQ(log.Left() + log.Width(), Screen(0).AvailableLeft() + Screen(0).AvailableWidth());
  for (int i = 0; i < 30; ++i) log.Add("line");
  EXPECT_EQ(log.ListBox1.Cell(29, 0).Utf8(), "30: line");
  const Rect last = user::CellRect(log.ListBox1, 29, 0);
  EXPECT_GE(last.y, 0);
  EXPECT_LE(last.y + last.height, log.ListBox1.Height());
  user::Click(log.ClearButton);
  log.Add("again");
  EXPECT_EQ(log.ListBox1.ListCount(), 1);
  EXPECT_EQ(log.ListBox1.Cell(0, 0).Utf8(), "1: again");
}

TEST_F(ExportTest, AboutIsMadeAnewAfterItWasClosed) {
  user::ChooseMenu("AppleAbout");
  ASSERT_TRUE(WindowAbout::Instance().Visible());
  EXPECT_EQ(WindowAbout::Instance().StaticText2.Text().Utf8(), "Version: 0.0.1");
  EXPECT_TRUE(user::CaptionFits(WindowAbout::Instance().StaticText5));
  const int windows = WindowCount();
  user::CloseButton(WindowAbout::Instance());
  EXPECT_EQ(WindowCount(), windows - 1);
  user::ChooseMenu("AppleAbout");
  EXPECT_EQ(WindowCount(), windows);
}

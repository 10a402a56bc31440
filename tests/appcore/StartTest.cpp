// Start, state of the menus, commands.

#include "tests/support/WindowsFixture.h"

using namespace platform;

namespace {

bool Enabled(const char* item) { return Menu::Item(item).Enabled(); }
bool Checked(const char* item) { return Menu::Item(item).Checked(); }

}  // namespace

class StartTest : public WindowsTest {};

TEST_F(StartTest, OnlyOverviewIsOnScreenAndStateHasItsStartValues) {
  EXPECT_TRUE(overview().Visible());
  EXPECT_FALSE(main().Visible());
  EXPECT_FALSE(composite().Visible());
  EXPECT_EQ(WindowCount(), 3);  // Main and WindowRGB are made by the first update of the menus
  EXPECT_EQ(overview().Title().Utf8(), "Overview");
  EXPECT_EQ(Globals::fCursorSize, 40);
  EXPECT_EQ(Globals::fCursorColor, 0x808080u);
  EXPECT_EQ(Globals::DrawColor, 0x808080u);
  EXPECT_EQ(main().SelectedRow, -1);
  EXPECT_EQ(main().SelectedLUT, 10);
  EXPECT_EQ(Globals::lutname(10).Utf8(), "11 Rainbow-(Dark->Light)");
  EXPECT_EQ(Menu::Item("Colorsc11").Text().Utf8(), "11 Rainbow-(Dark->Light)");
  EXPECT_EQ(main().PPbuttons.Value(), Main::kPageLoading);
  EXPECT_TRUE(messages.empty());
}

TEST_F(StartTest, MenusFollowWhatIsOnScreen) {
  const auto dependOnMain = {"MenuWindowMain", "Window50",        "Window500",      "SizeExact",
                             "OptionsSmooth1", "OptionsSmooth25", "OptionsRawImage"};
  for (const char* item : dependOnMain) EXPECT_FALSE(Enabled(item)) << item;
  for (const char* item : {"Colorsc11", "OptionsRawImage", "Window100", "SizeExact"})
    EXPECT_TRUE(Checked(item)) << item;
  for (const char* item : {"FileLoadSettings", "FileSaveSettings", "EditDeleteSelection", "MenuWindowOverview"})
    EXPECT_TRUE(Enabled(item)) << item;
  for (const char* item :
       {"EditUndo", "EditCut", "EditCopy", "EditPaste", "EditClear", "MenuWindowResults", "MenuWindowRGB"})
    EXPECT_FALSE(Enabled(item)) << item;

  LoadThree(20, 20);
  App::Instance().UpdateMenus();
  for (const char* item : dependOnMain) EXPECT_TRUE(Enabled(item)) << item;
  EXPECT_FALSE(Enabled("EditUndo"));
  EXPECT_FALSE(Enabled("MenuWindowRGB"));
  user::Click(main().PBdraw);
  EXPECT_TRUE(Enabled("EditUndo"));
  user::Activate(overview());
  EXPECT_FALSE(Enabled("EditUndo"));
  user::Activate(main());
  user::Click(main().PBundraw);
  user::Click(main().PB_RGB);
  EXPECT_TRUE(Enabled("MenuWindowRGB"));
  composite().Hide();
  App::Instance().UpdateMenus();
  EXPECT_FALSE(Enabled("MenuWindowRGB"));

  user::ChooseMenu("EditDeleteSelection");  // no handler anywhere
  EXPECT_EQ(overview().ListBox1.ListCount(), 1);
}

TEST_F(StartTest, HigherSmoothingLevelsKeepTheirMarks) {
  LoadThree(20, 20);
  for (const char* item : {"OptionsSmooth3", "OptionsSmooth10", "OptionsSmooth20"}) user::ChooseMenu(item);
  EXPECT_EQ(main().SmoothLevel, 20);
  EXPECT_FALSE(Checked("OptionsRawImage"));
  EXPECT_FALSE(Checked("OptionsSmooth3"));
  EXPECT_TRUE(Checked("OptionsSmooth10"));
  EXPECT_TRUE(Checked("OptionsSmooth20"));
}

TEST_F(StartTest, ColorItemsWorkOnlyWithMainInFront) {
  LoadThree(20, 20);
  user::Activate(overview());
  user::ChooseMenu("Colorsc3");
  EXPECT_EQ(main().SelectedLUT, 10);
  EXPECT_TRUE(Checked("Colorsc11"));
  user::Activate(main());
  user::ChooseMenu("Colorsc3");
  EXPECT_EQ(main().SelectedLUT, 2);
  EXPECT_FALSE(Checked("Colorsc11"));
  EXPECT_TRUE(Checked("Colorsc3"));
  EXPECT_EQ(PixelOf(main().cvTIF, 0, 0), Globals::lut(2, 0));
}

TEST_F(StartTest, NewClearEmptiesTheStackAndNotTheCatalogue) {
  LoadThree(20, 20);
  user::Key(main(), "Ctrl+N");
  EXPECT_EQ(main().Title().Utf8(), "Vornalite");
  EXPECT_EQ(main().SpeciesLB.ListCount(), 0);
  EXPECT_FALSE(main().currTIF);
  EXPECT_EQ(main().TIFarray.Ubound(1), -1);
  EXPECT_TRUE(main().TIFready);
  EXPECT_EQ(PixelOf(main().cvTIF, 3, 3), 0x999999u);
  EXPECT_EQ(overview().ListBox1.ListCount(), 1);
  // The mouse and the keys find nothing and say nothing.
  user::MouseMove(main().cvTIF, 4, 4);
  user::Click(main().cvTIF, 5, 5);
  user::Key(main(), "Down");
  EXPECT_TRUE(messages.empty());
  // The row counts as loaded: checking it again shows an empty window.
  CheckRow(0);
  CheckRow(0);
  EXPECT_TRUE(main().Visible());
  EXPECT_EQ(main().SpeciesLB.ListCount(), 0);
}

TEST_F(StartTest, CloseLeavesSpeciesWindowsAndTheCloseBoxClosesThem) {
  LoadThree(20, 20);
  user::Click(main().PB_AllSpecies);
  ASSERT_EQ(speciesWindows().size(), 3u);
  user::Activate(main());
  user::Key(main(), "Ctrl+W");
  EXPECT_FALSE(main().Visible());
  EXPECT_EQ(speciesWindows().size(), 3u);
  EXPECT_FALSE(overview().ListBox1.CellCheck(0, WindowOverview::kCluster));
  CheckRow(0);
  EXPECT_TRUE(main().Visible());
  user::CloseButton(main());
  EXPECT_FALSE(main().Visible());
  EXPECT_EQ(speciesWindows().size(), 0u);
  EXPECT_TRUE(overview().Visible());
  user::CloseButton(overview());
  EXPECT_FALSE(overview().Visible());
  user::ChooseMenu("MenuWindowOverview");
  EXPECT_TRUE(overview().Visible());
}

TEST_F(StartTest, OutputFolderChangesOnlyWhenOneIsChosen) {
  const auto before = Globals::OutputFolder;
  const auto chosen = MakeRef<FolderItem>(folder / "chosen");
  Ref<FolderItem> answer;
  Dialogs().selectFolder = [&](const FolderItemDialog& dialog) {
    EXPECT_EQ(dialog.Title.Utf8(), "Choose a Folder as Default Save Location");
    EXPECT_EQ(dialog.ActionButtonCaption.Utf8(), "Select");
    EXPECT_TRUE(dialog.InitialDirectory == before);
    return answer;
  };
  user::ChooseMenu("FileChangeSaveLocation");
  EXPECT_TRUE(Globals::OutputFolder == before);
  answer = chosen;
  user::ChooseMenu("FileChangeSaveLocation");
  EXPECT_TRUE(Globals::OutputFolder == chosen);
}

// The windows after the start, and their closing and reopening.

#include "mainwindow/WindowSelectColor.h"
#include "output/TextLogWindow.h"
#include "tests/support/Story.h"

using namespace platform;

class StartStory : public Story {};

TEST_F(StartStory, TheProgramStarts) {
  WindowSelectColor::Instance();
  FromNothing();
  Stop("only Overview is on the screen, and nothing is loaded");
  for (const char* item : {"FileLoadSettings", "FileSaveSettings", "EditDeleteSelection", "FileSaveImage", "Colorsc3"})
    user::ChooseMenu(item);
  Stop("items without a handler in front are chosen");
  user::ChooseMenu("AppleAbout");
  Stop("About is shown");
  user::Key(*App::Instance().FrontWindow(), "Ctrl+W");
  Stop("Close has no handler in About");
  user::CloseButton(*App::Instance().FrontWindow());
  user::ChooseMenu("AppleAbout");
  Stop("About is closed and shown again");
  auto& log = TextLogWindow::Instance();
  for (int i = 0; i < 30; ++i) log.Add("line");
  Stop("the log shows its last line");
  user::Click(log.ClearButton);
  log.Add("again");
  Stop("and counts from 1 after it was cleared");
}

TEST_F(StartStory, MapsAreSavedUnderFreeNames) {
  LoadThree(20, 10);
  user::ChooseMenu("Window300");
  user::Click(main().PBdraw);
  user::Click(main().cvTIF, 10, 10);
  user::Click(main().PBundraw);
  WriteBytes("map_(Al)_02.png", "mine");
  user::Click(main().PB_SaveImage);
  user::Key(main(), "Ctrl+S");
  Stop("without zoom and drawing");
  main().TIFexists(0) = false;
  main().SpeciesLB.Refresh();
  user::Click(main().PB_SaveImage);
  Stop("a species that is missing is not saved");
  user::Key(main(), "Down");
  Ref<FolderItem> answer;
  Dialogs().selectFolder = [&](const FolderItemDialog& dialog) {
    Note("\"" + dialog.Title.Utf8() + "\", \"" + dialog.ActionButtonCaption.Utf8() + "\"");
    EXPECT_TRUE(dialog.InitialDirectory == Globals::OutputFolder);
    return answer;
  };
  for (const char* name : {"", "gone"}) {
    if (*name) answer = MakeRef<FolderItem>(folder / name);
    user::ChooseMenu("FileChangeSaveLocation");
    user::Click(main().PB_SaveImage);
    Stop(*name ? "a folder that does not exist" : "no other folder is chosen");
  }
}

TEST_F(StartStory, WindowsCloseAndComeBack) {
  LoadThree(20, 16);
  OpenEverything();
  Stop("everything is open, Main in front");
  user::EndSession();
  Stop("the end of a session closes nothing");
  user::Key(main(), "Ctrl+W");
  Stop("Close in Main: the composite closes, the species windows stay");
  CheckRow(0);
  Stop("the row is checked again");
  user::Click(main().PB_RGB);
  CheckRow(0);
  Stop("the row is unchecked: Main and the composite close");
  CheckRow(0);
  user::Click(main().PB_RGB);
  user::Activate(composite());
  user::Key(composite(), "Ctrl+W");
  Stop("Close in the composite");
  user::Activate(*speciesWindows()[1]);
  user::Key(*speciesWindows()[1], "Ctrl+W");
  Stop("Close has no handler in a species window");
  user::CloseButton(*speciesWindows()[1]);
  Stop("the close box of the second species window");
  user::Activate(overview());
  user::Key(overview(), "Ctrl+W");
  Stop("Close in Overview");
  user::ChooseMenu("MenuWindowOverview");
  user::CloseButton(overview());
  user::ChooseMenu("MenuWindowMain");
  user::Click(main().PB_RGB);
  Stop("the close box of Overview, Main in front with the composite");
  user::CloseButton(main());
  Stop("the close box of Main: all maps close, Overview is shown");
  user::CloseButton(overview());
  EXPECT_FALSE(overview().Visible());
  Stop("the close box of Overview, the last window with menus: it is minimised");
  user::ChooseMenu("MenuWindowOverview");
  Stop("Overview in the menu Window");
  CheckRow(0);
  OpenEverything();
  user::ChooseMenu("FileQuit");
  Stop("Quit closes all windows");
}

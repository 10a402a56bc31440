// What every window holds when the program has started, and the windows that come and go.

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
}

TEST_F(StartStory, ClosingTakesWindowsWithIt) {
  LoadThree(20, 16);
  OpenEverything();
  Stop("everything is open, Main in front");
  user::Key(main(), "Ctrl+W");
  Stop("Close in Main: the composite goes, the species windows stay");
  CheckRow(0);
  Stop("the row is checked again");
  user::Click(main().PB_RGB);
  CheckRow(0);
  Stop("the row is unchecked: Main goes, and the composite");
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
  Stop("the close box of Main: all maps go, Overview comes");
  user::CloseButton(overview());
  EXPECT_FALSE(overview().Visible());
  Stop("the close box of Overview, the last window with menus: it becomes an icon");
  user::ChooseMenu("MenuWindowOverview");
  Stop("Overview in the menu Window");
}

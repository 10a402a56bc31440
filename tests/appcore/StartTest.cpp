// Commands that no story tells.

#include "tests/support/WindowsFixture.h"

using namespace platform;

class StartTest : public WindowsTest {};

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

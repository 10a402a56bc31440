// Saving under names that are taken.

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
  int tries = 0;  // of the first save, two for its files and one for the folder
  fileCalls.flush = [&] {
    if (tries++ == 0) WriteBytes("map_(Al).png", "theirs");
    return tries > 3 ? EIO : 0;
  };
  user::Click(main().PB_SaveImage);
  const std::vector<std::string> names{"map_(Al).png", "map_(Al)_02.png", "map_(Al)_03.png"};
  EXPECT_EQ(Saved(), names);
  EXPECT_EQ(std::filesystem::file_size(folder / "map_(Al).png"), 6u);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "map_(Al)_02.png"));
  user::Click(main().PB_SaveImage);  // any other failure ends the save
  fileCalls = {};
  EXPECT_EQ(tries, 4);
  EXPECT_EQ(Saved(), names);
  EXPECT_TRUE(messages.empty());
}

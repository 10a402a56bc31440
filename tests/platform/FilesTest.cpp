#include <gtest/gtest.h>

#include "platform/pictures/FolderItem.h"
#include "tests/support/Folder.h"

namespace platform {
namespace {

TEST(FolderItem, ShowsComposedNamesAndKeepsTheBytesOfThePath) {
  const Folder folder;
  for (const auto& [bytes, shown] : {std::pair{"Fe\u0301.tif", "F\u00e9.tif"}, {"M\xFCnze.tif", "M\uFFFDnze.tif"}}) {
    const FolderItem file(folder.Write(bytes, ""));
    EXPECT_TRUE(file.DisplayName().Identical(shown));
    EXPECT_TRUE(file.IsReadable());
  }
  EXPECT_TRUE(FolderItem("/data/run7/").DisplayName().Identical("run7"));
}

TEST(FolderItem, FallsBackToTheHomeFolder) {
  const Folder home;
  ASSERT_EQ(setenv("HOME", home.Path().c_str(), 1), 0);
  ASSERT_EQ(setenv("XDG_CONFIG_HOME", (home.Path() / "none").c_str(), 1), 0);
  EXPECT_EQ(DesktopFolder()->Path(), home.Path());
  std::filesystem::create_directory(home.Path() / "Desktop");
  EXPECT_EQ(DesktopFolder()->Path(), home.Path() / "Desktop");
}

}  // namespace
}  // namespace platform

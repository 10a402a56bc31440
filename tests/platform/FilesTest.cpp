#include <gtest/gtest.h>

#include <limits>

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

TEST(FolderItem, FindsParentsAndChildren) {
  const Folder folder;
  const auto here = MakeRef<FolderItem>(folder.Path());
  EXPECT_TRUE(here->Exists() && !here->IsReadable()) << "a folder is not a file";
  const auto child = here->Child("\u00b5m_(Fe).png");
  EXPECT_FALSE(child->Exists() || child->IsReadable());
  EXPECT_EQ(child->Path(), folder.Path() / "\u00b5m_(Fe).png");
  EXPECT_EQ(here->Child("/etc")->Path().parent_path(), folder.Path());
  EXPECT_THROW(child->Child("Fe.png"), NilObjectException);
  EXPECT_EQ(FolderItem("/").Parent(), nullptr);
  EXPECT_EQ(FolderItem("/data/run7/").Parent()->Path(), "/data");
  EXPECT_EQ(FolderItem("Fe.tif").Parent()->Path(), std::filesystem::current_path());
}

TEST(FolderItem, FallsBackToTheHomeFolder) {
  const Folder home;
  ASSERT_EQ(setenv("HOME", home.Path().c_str(), 1), 0);
  ASSERT_EQ(setenv("XDG_CONFIG_HOME", (home.Path() / "none").c_str(), 1), 0);
  EXPECT_EQ(DesktopFolder()->Path(), home.Path());
  std::filesystem::create_directory(home.Path() / "Desktop");
  EXPECT_EQ(DesktopFolder()->Path(), home.Path() / "Desktop");
}

TEST(BinaryStream, ReadsNumbersInBothOrders) {
  const Folder folder;
  const FolderItem item(folder.Write("map.xray", "\x01\x02\xFE\xFF\x05"));
  EXPECT_EQ(item.OpenAsBinaryFile(true), nullptr);
  EXPECT_EQ(BinaryStream::Open(folder.Path()), nullptr);
  EXPECT_EQ(BinaryStream::Open(folder.Path() / "none"), nullptr);
  const auto stream = item.OpenAsBinaryFile(false);
  EXPECT_EQ(stream->ReadShort(), 0x0102);
  stream->LittleEndian = true;
  EXPECT_EQ(stream->ReadShort(), -2);
  EXPECT_EQ(stream->ReadShort(), 0) << "one byte is not a number";
  EXPECT_EQ(stream->Position(), 6);
  stream->Position(3);
  EXPECT_EQ(stream->Read(std::numeric_limits<int>::max()), (std::vector<std::uint8_t>{0xFF, 0x05}));
  stream->Position(-1);
  EXPECT_TRUE(stream->Read(3).empty());
  stream->Position(std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(stream->ReadShort(), 0);
  EXPECT_EQ(stream->Position(), std::numeric_limits<std::int64_t>::max());
  stream->Position(0);
  stream->Close();
  EXPECT_EQ(stream->ReadShort(), 0);
}

}  // namespace
}  // namespace platform

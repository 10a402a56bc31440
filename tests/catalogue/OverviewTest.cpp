// Drops, rows, boxes and colours of the Overview window.

#include <sys/stat.h>

#include "tests/support/WindowsFixture.h"

using namespace platform;

class OverviewTest : public WindowsTest {
 protected:
  static int Constant(int, int) { return 7; }
  std::string Map(const std::string& name) { return WriteMap(name, 4, 4, Constant); }
  /// A map file: the count at all ten positions, size 8, names five bytes each.
  std::string MapFile(const std::string& name, const std::vector<std::string>& species) {
    std::string bytes(4808 + species.size() * (128 + 1224) + 8, '\0');
    for (int at : {1390, 1394, 1746, 1750, 2144, 2148, 2570, 2820, 4292, 4556})
      bytes[static_cast<std::size_t>(at)] = static_cast<char>(species.size());
    for (int at : {2172, 2174, 2498, 2502}) bytes[static_cast<std::size_t>(at)] = 8;
    for (std::size_t i = 0; i < species.size(); ++i)
      bytes.replace(i == 0 ? 3072 : 4808 + i * 128 + (i - 1) * 1224, species[i].size(), species[i]);
    return WriteBytes(name, bytes);
  }
};

TEST_F(OverviewTest, MapFilesBecomeOneRowEachInNameOrder) {
  Drop({MapFile("b.xray", {"Fe", "Mg"}), MapFile("A.XRAY", {"Si", "", "TiKaX"})});
  ASSERT_EQ(overview().ListBox1.ListCount(), 2);
  EXPECT_EQ(Cell(0, 1), "A");
  EXPECT_EQ(Cell(1, 1), "b");
  EXPECT_EQ(Cell(0, 2), ", Fe, Mg, Si, TiKaX");  // an empty name takes its place, though nobody holds it
}

TEST_F(OverviewTest, RefusedDropsAddNothing) {
  Drop({Map("a_Fe.tif"), MapFile("b.xray", {"Fe"})});
  ASSERT_EQ(messages.size(), 1u);
  EXPECT_EQ(messages[0],
            "You cannot drag a combination of \".xray\" and other files. Stay with one file type at a time and I won't "
            "complain. Several files of the same type is OK, though.");
  // None readable: the event ends in a failure, which names a file.
  Drop({PathOf("gone_Fe.tif"), PathOf("gone_Mg.tif")});
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_NE(messages[1].find(PathOf("gone_Mg.tif") + ": there is no such file"), std::string::npos);
  EXPECT_EQ(overview().ListBox1.ListCount(), 0);
  EXPECT_EQ(Globals::FileDropCount, 0);
  for (const char* name : {"a.tif", "a.bmp", "a.png", "a.pct", "a.gif", "a.jpg", "a.xray"})
    EXPECT_TRUE(user::WouldAccept(overview(), {PathOf(name)})) << name;
  EXPECT_FALSE(user::WouldAccept(overview(), {}));
  EXPECT_FALSE(user::WouldAccept(overview(), {WriteBytes("notes.txt", "x"), WriteBytes("a.im", "x")}));
  EXPECT_FALSE(user::WouldAccept(main(), {Map("a_Fe.tif")}));
  // What cannot be read among others is left out with a line on standard error alone; a pipe is not waited for.
  std::filesystem::create_directory(folder / "folder.tif");
  std::filesystem::create_symlink("nowhere", folder / "link.tif");
  ASSERT_EQ(mkfifo(PathOf("pipe.tif").c_str(), 0600), 0);
  ::testing::internal::CaptureStderr();
  Drop({Map("a_Fe.tif"), PathOf("folder.tif"), PathOf("link.tif"), PathOf("pipe.tif"), Map("a_Mg.tif")});
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "vornalite: " + PathOf("folder.tif") + ": a folder, not a file\n" +         //
                "vornalite: " + PathOf("link.tif") + ": a link that leads nowhere\n" +  //
                "vornalite: " + PathOf("pipe.tif") + ": a pipe or a device, not a file\n");
  EXPECT_EQ(Cell(0, 2), "Fe, Mg");
  EXPECT_EQ(messages.size(), 2u);
}

TEST_F(OverviewTest, AMapFileThatHasGoneCanStillBeDeletedFromTheList) {
  Drop({MapFile("gone.xray", {"Fe"})});
  std::filesystem::remove(folder / "gone.xray");
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  ASSERT_EQ(messages.size(), 1u);  // the update fails on the file, and no paint after it does
  EXPECT_NE(messages[0].find(PathOf("gone.xray") + " cannot be opened: there is no such file. Put the file back or"),
            std::string::npos);
  user::ClickCell(overview().ListBox1, 0, WindowOverview::kSpecies, 40, 8);
  user::Click(overview().PBdeleteselection);
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(overview().ListBox1.ListCount(), 1);
  EXPECT_EQ(Cell(0, 2), "Fe, Mg");
}

TEST_F(OverviewTest, ShortSpeciesNamesUniteNumberedOnes) {
  Drop({Map("a_Fe_1.tif"), Map("a_Mg_2.tif")});
  EXPECT_EQ(Cell(0, 2), "Fe_1, Mg_2");
  Drop({Map("b_Fe_3.tif"), Map("b_Mg_4.tif")});
  EXPECT_TRUE(overview().STredmissing.Visible());
  ASSERT_TRUE(overview().CBnoSpeciesExtensions.Enabled());
  user::Click(overview().CBnoSpeciesExtensions);
  EXPECT_EQ(Cell(0, 2), "Fe, Mg");
  EXPECT_FALSE(overview().STredmissing.Visible());
  CheckRow(1);
  EXPECT_TRUE(main().TIFready);
  EXPECT_TRUE(messages.empty());
}

TEST_F(OverviewTest, TipsTellPresentAndMissingSpeciesApart) {
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  EXPECT_EQ(user::TipOf(overview().ListBox1, 0, WindowOverview::kSpecies).Utf8(), "Present: Fe, Mg");
  Drop({Map("b_Ca.tif"), Map("b_Fe.tif")});
  EXPECT_EQ(user::TipOf(overview().ListBox1, 1, WindowOverview::kSpecies).Utf8(), "Present: Ca, Fe\nMissing: Mg");
  EXPECT_EQ(user::TipOf(overview().ListBox1, 1, WindowOverview::kCluster).Utf8(), "");
}

TEST_F(OverviewTest, TheEmptyListSaysWhatToDo) {
  const std::string hint = "Drop the maps of one field of view here";
  const auto grey = [&] {
    const auto shot = user::Shot(overview().ListBox1);
    int dark = 0;
    for (int x = 100; x < 500; ++x)
      for (int y = 180; y < 250; ++y) dark += shot->RGBSurface().Pixel(x, y) != kWhite;
    return dark > 50;
  };
  EXPECT_TRUE(grey());
  EXPECT_EQ(user::DescriptionOf(overview().ListBox1).Utf8(), hint);
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  EXPECT_FALSE(grey());
  EXPECT_EQ(user::DescriptionOf(overview().ListBox1).Utf8(), "");
  overview().ListBox1.Selected(0, true);
  user::Click(overview().PBdeleteselection);
  EXPECT_TRUE(grey());
  EXPECT_EQ(user::DescriptionOf(overview().ListBox1).Utf8(), hint);
}

// Drops, rows, boxes and colours of the Overview window.

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
  bool RedIn(int row) {
    const auto shot = user::Shot(overview().ListBox1);
    const Rect cell = user::CellRect(overview().ListBox1, row, WindowOverview::kSpecies);
    for (int y = cell.y; y < cell.y + cell.height; ++y)
      for (int x = cell.x; x < cell.x + cell.width; ++x) {
        const Color c = shot->RGBSurface().Pixel(x, y);
        if (Red(c) > 200 && Green(c) < 120 && Blue(c) < 120) return true;
      }
    return false;
  }
};

TEST_F(OverviewTest, OneDropIsOneClusterAndNumbersOnlyRise) {
  Drop({Map("map_Fe.tif"), Map("map_Mg.tif"), Map("map_Si.tif")});
  ASSERT_EQ(overview().ListBox1.ListCount(), 1);
  EXPECT_EQ(Cell(0, 1), "map");
  EXPECT_EQ(Cell(0, 2), "Fe, Mg, Si");
  EXPECT_EQ(Cell(0, 0), "2");  // one for the row, one for the update
  Drop({Map("spot_Ca.tif"), Map("spot_Fe.tif")});
  EXPECT_EQ(Cell(0, 2), "Ca, Fe, Mg, Si");
  EXPECT_EQ(Globals::FileDropCount, 5);
  EXPECT_EQ(Cell(0, 0), "4");
  EXPECT_EQ(Cell(1, 0), "5");
  EXPECT_EQ(Globals::ooo.Ubound(1), 1);
  EXPECT_EQ(Globals::ooo.Ubound(2), 2);
  EXPECT_FALSE(Globals::ooo(1, 2));
  EXPECT_TRUE(overview().STredmissing.Visible());
  EXPECT_TRUE(RedIn(0));
  EXPECT_TRUE(RedIn(1));
}

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
  Drop({PathOf("gone_Fe.tif"), PathOf("gone_Mg.tif")});  // none readable: the event ends in a failure
  EXPECT_EQ(messages.size(), 2u);
  EXPECT_EQ(overview().ListBox1.ListCount(), 0);
  EXPECT_EQ(Globals::FileDropCount, 0);
  EXPECT_FALSE(user::WouldAccept(overview(), {}));
  EXPECT_FALSE(user::WouldAccept(overview(), {WriteBytes("notes.txt", "x"), WriteBytes("a.im", "x")}));
  EXPECT_FALSE(user::WouldAccept(main(), {Map("a_Fe.tif")}));
  // One unreadable file among others is left out without a word.
  Drop({Map("a_Fe.tif"), PathOf("gone.tif"), Map("a_Mg.tif")});
  EXPECT_EQ(Cell(0, 2), "Fe, Mg");
  EXPECT_EQ(messages.size(), 2u);
}

TEST_F(OverviewTest, AMapFileThatHasGoneCanStillBeDeletedFromTheList) {
  Drop({MapFile("gone.xray", {"Fe"})});
  std::filesystem::remove(folder / "gone.xray");
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  EXPECT_EQ(messages.size(), 1u);  // the update fails on the file, and no paint after it does
  user::ClickCell(overview().ListBox1, 0, WindowOverview::kSpecies, 40, 8);
  user::Click(overview().PBdeleteselection);
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(overview().ListBox1.ListCount(), 1);
  EXPECT_EQ(Cell(0, 2), "Fe, Mg");
}

TEST_F(OverviewTest, BoxesAreRadioButtonsThatMayAllBeOff) {
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  Drop({Map("b_Fe.tif"), Map("b_Mg.tif")});
  auto& list = overview().ListBox1;
  CheckRow(0);
  EXPECT_TRUE(main().Visible());
  EXPECT_EQ(main().FrameName.Utf8(), "a");
  CheckRow(1);
  EXPECT_FALSE(list.CellCheck(0, 1));
  EXPECT_TRUE(list.CellCheck(1, 1));
  EXPECT_EQ(main().FrameName.Utf8(), "b");
  CheckRow(1);
  EXPECT_FALSE(list.CellCheck(1, 1));
  EXPECT_FALSE(main().Visible());
  EXPECT_TRUE(messages.empty());
}

TEST_F(OverviewTest, DeletingRowsBringsTheRestUpToDate) {
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  Drop({Map("b_Ca.tif"), Map("b_Fe.tif")});
  Drop({Map("c_Fe.tif"), Map("c_Ti.tif")});
  EXPECT_FALSE(overview().PBdeleteselection.Enabled());
  CheckRow(2);
  const String loaded = main().currFileNb;
  user::ClickCell(overview().ListBox1, 1, WindowOverview::kSpecies, 40, 8);
  EXPECT_TRUE(overview().PBdeleteselection.Enabled());
  user::Click(overview().PBdeleteselection);
  ASSERT_EQ(overview().ListBox1.ListCount(), 2);
  EXPECT_EQ(Cell(1, 1), "c");
  EXPECT_EQ(Cell(1, 2), "Fe, Mg, Ti");
  EXPECT_NE(main().currFileNb, loaded);  // renumbered, so loaded anew
  EXPECT_EQ(main().currFileNb.Utf8(), Cell(1, 0));
  user::Activate(overview());
  user::Key(overview(), "Ctrl+A");
  EXPECT_EQ(overview().ListBox1.SelCount(), 2);
  user::Click(overview().PBdeleteselection);
  EXPECT_EQ(overview().ListBox1.ListCount(), 0);
  EXPECT_FALSE(overview().PBdeleteselection.Enabled());
  EXPECT_FALSE(overview().STredmissing.Visible());
  EXPECT_FALSE(overview().CBnoSpeciesExtensions.Enabled());
  EXPECT_FALSE(main().Visible());
  EXPECT_EQ(Globals::oooShortSpeciesNames.Ubound(), -1);
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
  EXPECT_FALSE(RedIn(0));
  CheckRow(1);
  EXPECT_TRUE(main().TIFready);
  EXPECT_TRUE(messages.empty());
}

TEST_F(OverviewTest, HeadingsSortTheRowsAndNotTheFiles) {
  Drop({Map("b_Fe.tif"), Map("b_Mg.tif")});
  Drop({Map("a_Fe.tif"), Map("a_Mg.tif")});
  user::ClickHeader(overview().ListBox1, WindowOverview::kCluster);
  EXPECT_EQ(Cell(0, 1), "a");
  EXPECT_EQ(Cell(1, 1), "b");
  EXPECT_EQ(Globals::ooo(0, 0)->DisplayName().Utf8(), "b_Fe.tif");
}

TEST_F(OverviewTest, ADropWhileAClusterIsOnDisplayChangesNothingInMain) {
  LoadThree(8, 8);
  const std::string title = main().Title().Utf8();
  const Color pixel = PixelOf(main().cvTIF, 3, 3);
  Drop({Map("z_Ag.tif"), Map("z_Zn.tif")});
  EXPECT_EQ(main().Title().Utf8(), title);
  EXPECT_EQ(main().SpeciesLB.ListCount(), 3);
  EXPECT_EQ(PixelOf(main().cvTIF, 3, 3), pixel);
  EXPECT_TRUE(overview().ListBox1.CellCheck(0, 1));
  EXPECT_NE(main().currFileNb.Utf8(), Cell(0, 0));
}

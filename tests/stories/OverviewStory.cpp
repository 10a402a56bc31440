// Clusters are dropped, shown, sorted, renamed and deleted; map files, missing species, refused drops.

#include <sys/stat.h>

#include "tests/support/Story.h"

using namespace platform;

class OverviewStory : public Story {
 protected:
  std::string Map(const std::string& name, int level = 7) {
    return WriteMap(name, 4, 4, [level](int, int) { return level; });
  }
};

TEST_F(OverviewStory, ClustersComeAndGo) {
  Drop({Map("map_Fe_1.tif"), Map("map_Mg_2.tif"), Map("map_Si_3.tif")});
  Stop("one drop is one cluster");
  Drop({Map("spot_Ca_1.tif"), Map("spot_Fe_2.tif")});
  Stop("a second cluster: missing species are red");
  Drop({Map("map_Fe_1.tif"), WriteMapFile("line.xray", {"Fe"})});
  Stop("kinds of files that do not go together are refused");
  Drop({WriteMapFile("line.xray", {"Fe", "Ti"}), WriteMapFile("AREA.XRAY", {"Mg", "", "TiKaX"})});
  Stop("map files become a cluster each, by name");
  user::ClickCell(overview().ListBox1, 1, WindowOverview::kCluster, 60, 8);
  Stop("the second row is selected");
  user::Click(overview().CBnoSpeciesExtensions);
  Stop("short names unite species");
  user::ClickHeader(overview().ListBox1, WindowOverview::kCluster);
  Stop("the rows are sorted by cluster");
  user::ClickHeader(overview().ListBox1, WindowOverview::kSpecies);
  Stop("equal cells are in the order of the numbers");
  user::Key(overview(), "Ctrl+A");
  Stop("all rows are selected");
  user::Click(overview().PBdeleteselection);
  Stop("all rows are deleted");
}

TEST_F(OverviewStory, DropsWithUnreadableFiles) {
  for (const char* name : {"a.tif", "a.bmp", "a.png", "a.pct", "a.gif", "a.jpg", "a.xray", "a.txt", "a.im"})
    Note(std::string(name) + (user::WouldAccept(overview(), {PathOf(name)}) ? " is accepted" : " is refused"));
  EXPECT_FALSE(user::WouldAccept(overview(), {}));
  EXPECT_FALSE(user::WouldAccept(main(), {Map("a_Fe.tif")}));
  const std::string longName = "a cluster with <b> a name longer than its column";
  Drop({Map(longName + " chromium counts of the second run.tif"), Map(longName + " Fe.tif")});
  CheckRow(0);
  Stop("names that are too long for their cells");
  Drop({PathOf("gone_Fe.tif"), PathOf("gone_Mg.tif")});
  Stop("no file of the drop exists");
  std::filesystem::create_directory(folder / "folder.tif");
  std::filesystem::create_symlink("nowhere", folder / "link.tif");
  ASSERT_EQ(mkfifo(PathOf("pipe.tif").c_str(), 0600), 0);
  NoteErrors([&] {
    Drop({Map("a_Fe.tif"), PathOf("folder.tif"), PathOf("link.tif"), PathOf("pipe.tif"), Map("a_Mg.tif")});
  });
  Stop("only files are taken, without waiting for a pipe");
  Drop({WriteMapFile("gone.xray", {"Fe"})});
  std::filesystem::remove(folder / "gone.xray");
  Drop({Map("b_Fe.tif"), Map("b_Mg.tif")});
  Stop("a map file of the list is gone");
  user::ClickCell(overview().ListBox1, 2, WindowOverview::kSpecies, 40, 8);
  user::Click(overview().PBdeleteselection);
  Stop("its row is deleted");
  for (int i = 0; i < 18; ++i) Drop({Map(std::to_string(i) + "_Fe.tif"), Map(std::to_string(i) + "_Mg.tif")});
  user::Click(overview().ListBox1, 10, 404);
  Stop("the box of a row that is seen in part is checked where it is");
}

TEST_F(OverviewStory, OneRowIsShownOrNone) {
  Drop({Map("a_Fe.tif", 60), Map("a_Mg.tif", 120)});
  Drop({Map("b_Ca.tif", 180), Map("b_Fe.tif", 240)});
  Stop("two clusters");
  CheckRow(0);
  Stop("the first is shown, which lacks the species on display");
  user::Click(main().BBcursorCircles);
  for (const int x : {1, 3}) user::MouseMove(main().cvTIF, x, x);
  user::MouseLeave(main().cvTIF);
  Stop("a circle has passed over the grey map");
  user::Key(main(), "Down");
  Stop("the next species");
  CheckRow(1);
  Stop("the second is shown, on the same species");
  CheckRow(1);
  Stop("none is shown");
  CheckRow(1);
  Stop("shown again without a load");
  Drop({Map("c_Ag.tif"), Map("c_Zn.tif")});
  Stop("a drop changes nothing in Main");
  user::ClickCell(overview().ListBox1, 0, WindowOverview::kSpecies, 40, 8);
  user::Click(overview().PBdeleteselection);
  Stop("a row above is deleted: what is shown is loaded again");
  user::ClickCell(overview().ListBox1, 0, WindowOverview::kSpecies, 40, 8);
  user::Click(overview().PBdeleteselection);
  Stop("the row on display is deleted");
}

// Maps on the screen: loading, species, curve and colours, zoom, smoothing, and what a failure leaves.

#include "platform/values/Parallel.h"
#include "tests/support/Story.h"

using namespace platform;

class MapStory : public Story {
 protected:
  /// Notes what the progress page shows each time that a map is put on the screen.
  void WatchProgress() {
    main().cvTIF.Paint = [this, paint = main().cvTIF.Paint](Graphics& g) {
      paint(g);
      Main& m = main();
      if (m.PPbuttons.Value() == Main::kPageLoading)
        Note("species " + std::to_string(m.SelectedRow) + ": \"" + m.STstatus.Text().Utf8() + "\" " +
             std::to_string(m.Progress.Value()) + " of " + std::to_string(m.Progress.Maximum()));
    };
  }
};

TEST_F(MapStory, AClusterIsLoadedAndExamined) {
  WatchProgress();
  LoadThree(20, 16);
  Stop("three species are loaded");
  user::Key(main(), "Up");
  Stop("Up from the first species is the last");
  user::ClickCell(main().SpeciesLB, 1, Main::kSpeciesColumn, 20, 10);
  Stop("a click on the name of the second species");
  user::ClickCell(main().SpeciesLB, 0, Main::kMarksColumn, 20, 10);
  user::ClickCell(main().SpeciesLB, 0, Main::kRColumn, 10, 10);
  for (PushButton* inert : {&main().PB_ClearClickM, &main().PB_PhasesEdit, &main().PB_PhasesUpdate})
    user::Click(*inert);
  Stop("the strips, the boxes and the buttons without a function change nothing");
  user::ClickCellCheck(main().LB_Phases, 1, 2);
  user::Click(main().Checkbox1);
  Stop("boxes without a function can be checked");
  user::Activate(main());
  user::ChooseMenu("Colorsc7");
  Stop("grey scale");
  main().Slider_colors.Value(-10);
  Stop("a bent curve");
  user::Click(main().CB_ScaleUp);
  Stop("scaled up");
  user::Click(main().PB_ResetColors);
  Stop("Reset straightens the curve and leaves the scale");
  user::Key(main(), "Ctrl+3");
  Stop("smoothed at level 3, showing each species");
  user::MouseMove(main().cvTIF, 0, 0);
  Stop("the smoothed levels under the pointer");
  user::MouseLeave(main().cvTIF);
  user::ChooseMenu("OptionsSmooth10");
  user::ChooseMenu("OptionsRawImage");
  Stop("the raw image: the check mark of level 10 stays");
  user::ChooseMenu("Window300");
  Stop("three times as large");
  user::ChooseMenu("SizeExact");
  Stop("with soft pixels");
  user::Key(main(), "Ctrl+=");
  user::Key(main(), "Ctrl+N");
  Stop("New/Clear leaves an empty Main");
  user::MouseMove(main().cvTIF, 4, 4);
  user::Click(main().cvTIF, 5, 5);
  user::Key(main(), "Down");
  user::MouseLeave(main().cvTIF);
  Stop("the mouse and the keys have no effect");
  CheckRow(0);
  CheckRow(0);
  Stop("the row counts as loaded: Main comes back empty");
}

TEST_F(MapStory, MainFollowsImageZoomAndFonts) {
  main().Show();
  user::ChooseMenu("Window200");
  Stop("a zoom before any load");
  user::ChooseMenu("Window100");
  LoadThree(512, 512);
  Stop("a large image");
  user::ChooseMenu("Window200");
  Stop("at 200 %");
  LoadThree(128, 128);
  user::ChooseMenu("Window100");
  Stop("a small one");
  user::Click(main().SpeciesLB, 70, 108);
  Stop("a partly visible row is selected without scrolling");
  user::Key(main(), "Up");
  user::Key(main(), "Down");
  Stop("keys bring it into view");
  main().SpeciesLB.Reveal(0);
  LoadThree(255, 255);
  Stop("a load brings it into view");
  user::ClickCell(main().LB_Phases, 0, 4, 5, 5);
  user::Key(main(), "Down");
  Stop("a click on the phases leaves the arrows to the map");
  main().Height(700);
  Stop("a taller window");
  user::ChangeMenuFont(30);
  Stop("large fonts");
  user::MouseMove(main().cvTIF, 3, 4);
  Stop("the pointer is where it was");
  user::MouseLeave(main().cvTIF);
  user::ChangeMenuFont(12);
  Stop("small fonts");
}

TEST_F(MapStory, AnotherClusterKeepsTheSettings) {
  LoadThree(12, 12);
  user::Key(main(), "Up");
  user::ChooseMenu("OptionsSmooth3");
  main().Clicks(0, 1, 77) = true;
  main().SpeciesLB.Refresh();
  Stop("the third species is smoothed, a mark is set");
  LoadThree(16, 16);
  Stop("another cluster: selection, level and mark are kept");
  user::Activate(overview());
  user::Key(overview(), "Ctrl+A");
  user::Click(overview().PBdeleteselection);
  const auto flat = [](int, int) { return 3; };
  Drop({WriteMap("b_Ca.tif", 12, 12, flat), WriteMap("b_Ti.tif", 12, 12, flat)});
  overview().ListBox1.Cell(0, WindowOverview::kCluster, "other");
  CheckRow(0);
  Stop("of two species the first is selected; the name of the row differs from its cluster's");
  LoadThree(4, 4);
  main().TIFmax(0) = 300;
  user::Click(main().CB_ScaleUp);
  Stop("a highest level out of range");
  main().SelectedRow = 7;
  NoteErrors([&] { user::Click(main().CB_ScaleUp); });
  main().SpeciesLB.Refresh();
  Stop("a selection out of range");
}

TEST_F(MapStory, WhatFailuresLeave) {
  LoadCluster({"Al", "Fe", "Mg"}, 1, 7,
              [](int species) { return [species](int, int y) { return 40 * species + 20 * y; }; });
  user::Key(main(), "Down");
  user::Click(main().CB_ScaleUp);
  Stop("maps of one column");
  user::Key(main(), "Ctrl+1");
  Stop("which cannot be smoothed");
  user::Key(main(), "Up");
  Stop("the species after the failure is unchanged");
  user::Key(main(), "Down");
  user::Key(main(), "Ctrl+0");
  Stop("the raw image");
  user::Key(main(), "Up");
  main().TIFarrOriginal.Redim(1, 0, 6);
  user::ChooseMenu("OptionsRawImage");
  Stop("the third species fails while the second is on the screen: the first is selected again");
  Drop({WriteMap("b_Al.tif", 6, 6, [](int, int) { return 90; }), WriteMap("b_Fe.tif", 6, 7, [](int, int) { return 9; }),
        WriteBytes("b_Mg.tif", "no picture")});
  SetParallelism(4);
  NoteErrors([&] { CheckRow(1); });
  SetParallelism(0);
  Stop("a map of another size ends the load on the progress page");
  user::MouseMove(main().cvTIF, 2, 2);
  user::Click(main().cvTIF, 2, 2);
  user::Key(main(), "Up");
  user::ClickCell(main().SpeciesLB, 1, Main::kSpeciesColumn, 20, 10);
  Stop("the mouse does nothing there, the keys select");
  main().Clicks.Redim(0, -1, 255);
  main().SpeciesLB.Refresh();
  Stop("each cell whose paint fails reports it");
}

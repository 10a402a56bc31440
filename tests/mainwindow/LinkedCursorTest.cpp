// The canvas, the mouse and the linked cursor, through real mouse and key events.

#include <random>

#include "mainwindow/LinkedCursor.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class LinkedCursorTest : public WindowsTest {
 protected:
  static std::vector<Color> PixelsOf(Canvas& canvas) {
    const auto image = canvas.Image();
    const auto view = image->Pixels();
    return {view.data, view.data + view.pitch * view.height};
  }
  std::string Cur(int row) { return main().SpeciesLB.Cell(row, Main::kCurColumn).Utf8(); }
  void WaitForTick() {
    int ticks = 0;
    const auto action = main().Timer1.Action;
    main().Timer1.Action = [&] {
      action();
      ++ticks;
    };
    ASSERT_TRUE(user::WaitUntil([&] { return ticks > 0; }));
    main().Timer1.Action = action;
  }
};

TEST_F(LinkedCursorTest, EverySpeciesTellsItsLevelUnderThePointer) {
  LoadThree(60, 40);
  for (const auto& [item, x, y, imageX, imageY] :
       {std::tuple{"Window100", 20, 30, 20, 30}, {"Window300", 100, 40, 33, 13}, {"Window50", 20, 15, 40, 30}}) {
    user::ChooseMenu(item);
    user::MouseMove(main().cvTIF, x, y);
    for (int species = 0; species < 3; ++species)
      EXPECT_EQ(Cur(species), std::to_string(Level(species, imageX, imageY))) << item;
  }
  EXPECT_TRUE(main().Timer1.Enabled());
  EXPECT_EQ(main().CursorChosen, 1);
  user::MouseLeave(main().cvTIF);
  EXPECT_EQ(Cur(0), "-");
  EXPECT_EQ(Cur(2), "-");
  EXPECT_FALSE(main().Timer1.Enabled());
  // An inactive window lets the mouse pass.
  user::Activate(overview());
  user::MouseMove(main().cvTIF, 5, 5);
  EXPECT_EQ(Cur(0), "-");
}

TEST_F(LinkedCursorTest, MarksAreDrawnOnAllMaps) {
  LoadThree(60, 60);
  OpenEverything();
  ASSERT_EQ(speciesWindows().size(), 3u);
  const auto bare = PixelsOf(main().cvTIF);
  user::MouseMove(main().cvTIF, 30, 20);
  EXPECT_EQ(PixelsOf(main().cvTIF), bare);  // the pointer itself shows the place there
  for (Canvas* canvas : AllCanvases()) {
    if (canvas == &main().cvTIF) continue;
    for (const auto& [x, y] : {std::pair{28, 20}, {24, 20}, {32, 20}, {36, 20}, {30, 18}, {30, 14}, {30, 22}, {30, 26}})
      EXPECT_EQ(PixelOf(*canvas, x, y), 0x808080u);
    EXPECT_NE(PixelOf(*canvas, 30, 20), 0x808080u);
    EXPECT_NE(PixelOf(*canvas, 23, 20), 0x808080u);
  }
  user::Click(main().BBcursorCircles);
  EXPECT_EQ(main().CursorChosen, 3);
  Globals::fCursorSize = 10;
  user::MouseMove(main().cvTIF, 31, 30);
  for (Canvas* canvas : AllCanvases()) EXPECT_EQ(PixelOf(*canvas, 31, 20), 0x808080u);
  // A paint wipes the marks.
  user::MousePress(main().cvTIF, 31, 30);
  user::MouseRelease(main().cvTIF, 31, 30);
  EXPECT_EQ(PixelsOf(main().cvTIF), bare);
}

TEST_F(LinkedCursorTest, NoTraceOfAMarkIsLeftAtAnyZoom) {
  LoadThree(67, 53);
  Globals::x1Draw = {-10, 3, 3}, Globals::x2Draw = {-10, 3, 60};
  Globals::y1Draw = {-10, 4, 4}, Globals::y2Draw = {-10, 4, 44};
  OpenEverything();
  std::mt19937 random(7);
  for (const char* zoom : {"Window50", "Window100", "Window200", "Window300", "Window400", "Window500"}) {
    user::ChooseMenu(zoom);
    for (const bool exact : {true, false}) {
      if (Menu::SizeExact() != exact) user::ChooseMenu("SizeExact");
      App::Instance().RefreshAllMaps();
      std::vector<std::vector<Color>> fresh;
      for (Canvas* canvas : AllCanvases()) fresh.push_back(PixelsOf(*canvas));
      for (const int style : {1, 3}) {
        main().CursorChosen = style;
        for (int step = 0; step < 25; ++step) {
          Globals::fCursorSize = 1 + static_cast<int>(random() % 40);
          Globals::fCursorRedraw(static_cast<int>(random() % main().cvTIF.Width()),
                                 static_cast<int>(random() % main().cvTIF.Height()), true, true);
        }
        Globals::fCursorRedraw(0, 0, true, false);
        const auto canvases = AllCanvases();
        for (std::size_t i = 0; i < canvases.size(); ++i)
          ASSERT_EQ(PixelsOf(*canvases[i]), fresh[i])
              << zoom << " exact " << exact << " style " << style << " map " << i;
      }
    }
  }
}

TEST_F(LinkedCursorTest, AnAbsentSpeciesStaysGreyUnderTheCursor) {
  LoadThree(40, 40);
  main().TIFexists(1) = false;
  user::Key(main(), "Down");
  user::Click(main().BBcursorCircles);
  for (int x = 5; x < 35; x += 6) user::MouseMove(main().cvTIF, x, x);
  user::MouseLeave(main().cvTIF);
  for (Color pixel : PixelsOf(main().cvTIF)) ASSERT_EQ(pixel, 0x999999u);
}

TEST_F(LinkedCursorTest, AMoveRepaintsOnlyTheSquares) {
  LoadThree(300, 300);
  OpenEverything();
  user::MouseMove(main().cvTIF, 50, 50);
  for (Canvas* canvas : AllCanvases()) user::TakeRepaints(*canvas);
  user::MouseMove(main().cvTIF, 200, 150);
  for (Canvas* canvas : AllCanvases()) {
    int area = 0;
    for (const Rect& part : user::TakeRepaints(*canvas)) area += part.width * part.height;
    EXPECT_LE(area, 2 * 16 * 16);
  }
}

TEST_F(LinkedCursorTest, HeldKeysChangeSizeAndColour) {
  LoadThree(256, 256);
  user::Click(main().BBcursorCircles);
  user::MouseMove(main().cvTIF, 100, 100);
  for (const auto& [control, option, size] : {std::tuple{true, false, 42}, {true, true, 44}, {false, true, 41}}) {
    user::HoldKeys(false, control, option);
    WaitForTick();
    EXPECT_EQ(Globals::fCursorSize, size) << "Control goes before Option";
  }
  user::HoldKeys(true, false, false);
  WaitForTick();
  WaitForTick();
  EXPECT_EQ(Globals::fCursorColor, 0x000000u);
  EXPECT_EQ(PixelOf(main().cvTIF, 100, 100 - 41), kBlack);
  user::HoldKeys(false, false, false);
  WaitForTick();
  user::HoldKeys(true, false, false);
  WaitForTick();
  EXPECT_EQ(Globals::fCursorColor, 0xFFFFFFu);
  user::HoldKeys(false, false, false);
}

TEST_F(LinkedCursorTest, ClicksMarkTheLevelsOfAllSpeciesOneStepBehind) {
  LoadThree(40, 40);
  Main& m = main();
  user::MousePress(m.cvTIF, 3, 2);
  for (int species = 0; species < 3; ++species) EXPECT_TRUE(m.Clicks(0, species, Level(species, 3, 2)));
  user::MouseDragTo(m.cvTIF, 4, 2);
  EXPECT_FALSE(m.Clicks(0, 0, Level(0, 4, 2)));
  user::MouseDragTo(m.cvTIF, 5, 2);
  EXPECT_TRUE(m.Clicks(0, 0, Level(0, 4, 2)));
  user::MouseDragTo(m.cvTIF, 500, 2);  // outside: not accepted
  EXPECT_EQ(m.InX, 5);
  user::MouseRelease(m.cvTIF, 500, 2);
  EXPECT_FALSE(m.Clicks(0, 0, Level(0, 5, 2)));
  user::ChooseMenu("Window200");
  user::Click(m.cvTIF, 21, 31);
  EXPECT_TRUE(m.Clicks(0, 1, Level(1, 10, 15)));
}

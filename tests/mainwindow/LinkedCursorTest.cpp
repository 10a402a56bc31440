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

TEST_F(LinkedCursorTest, ControlHeldForAShortcutLeavesTheCircleAsItWas) {
  LoadThree(256, 256);
  user::Click(main().BBcursorCircles);
  user::MouseMove(main().cvTIF, 100, 100);
  int x = 100;
  for (const char* shortcut : {"Ctrl+3", "Ctrl+C"}) {  // one that is enabled, one that is not
    user::HoldKeys(false, true, false);
    WaitForTick();
    EXPECT_EQ(Globals::fCursorSize, 42);
    user::Key(main(), shortcut);
    user::MouseMove(main().cvTIF, ++x, 100);
    EXPECT_EQ(Globals::fCursorSize, 40) << shortcut;
    WaitForTick();
    EXPECT_EQ(Globals::fCursorSize, 40) << "the key is still down after " << shortcut;
    user::HoldKeys(false, false, false);
    WaitForTick();
  }
  // Released before the next tick; then a hold of its own.
  user::HoldKeys(false, true, false);
  WaitForTick();
  user::Key(main(), "Ctrl+0");
  user::HoldKeys(false, false, false);
  WaitForTick();
  EXPECT_EQ(Globals::fCursorSize, 40);
  EXPECT_EQ(Globals::fCursorOldSize, 40);
  user::HoldKeys(false, true, false);
  user::Key(main(), "Ctrl+Down");  // no shortcut
  WaitForTick();
  EXPECT_EQ(Globals::fCursorSize, 42);
  user::HoldKeys(false, false, false);
  WaitForTick();
  EXPECT_EQ(Globals::fCursorSize, 42);
}

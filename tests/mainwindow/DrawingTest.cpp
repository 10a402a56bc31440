// Freehand drawing over all maps, and the colour picker.

#include "mainwindow/WindowSelectColor.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class DrawingTest : public WindowsTest {
 protected:
  void Open(int size) {
    LoadThree(size, size);
    OpenEverything();
    user::Click(main().PBdraw);
    Globals::DrawColor = 0xFF00FF;
  }
  void Stroke(int x1, int y1, int x2, int y2) {
    user::MousePress(main().cvTIF, x1, y1);
    user::MouseDragTo(main().cvTIF, x2, y2);
    user::MouseRelease(main().cvTIF, x2, y2);
  }
  int Rows() { return Globals::x1Draw.Ubound() + 1; }
};

TEST_F(DrawingTest, AStrokeShowsOnAllMapsWhileDrawnAndAfter) {
  for (const auto& [zoom, scale] : {std::pair{"Window100", 1.0}, {"Window500", 5.0}, {"Window50", 0.5}}) {
    Open(60);
    user::ChooseMenu(zoom);
    user::Click(main().PBdrawClearAll);
    const auto canvas = [scale = scale](int image) { return static_cast<int>((image + 0.5) * scale); };
    user::MousePress(main().cvTIF, canvas(10), canvas(10));
    EXPECT_EQ(Rows(), 2);
    user::MouseDragTo(main().cvTIF, canvas(20), canvas(15));
    EXPECT_EQ(Rows(), 3);
    for (Canvas* map : AllCanvases())
      for (const auto& [x, y] : {std::pair{10, 10}, {14, 12}, {20, 15}})
        EXPECT_EQ(PixelOf(*map, static_cast<int>(x * scale), static_cast<int>(y * scale)), 0xFF00FFu) << zoom;
    user::MouseRelease(main().cvTIF, canvas(20), canvas(15));
    if (scale < 1) continue;  // half of the image pixels of a line are not seen then
    EXPECT_EQ(std::vector<int>(Globals::y2Draw.begin(), Globals::y2Draw.end()), (std::vector<int>{-10, 10, 15}));
    for (Canvas* map : AllCanvases()) {
      const int side = static_cast<int>(scale);
      for (const auto& [x, y] : {std::pair{10, 10}, {14, 12}, {20, 15}})
        for (int i = 0; i < side * side; ++i)
          EXPECT_EQ(PixelOf(*map, x * side + i % side, y * side + i / side), 0xFF00FFu) << zoom;
    }
  }
  EXPECT_TRUE(messages.empty());
}

TEST_F(DrawingTest, UndoShowAndClear) {
  Open(60);
  Stroke(10, 10, 20, 10);
  Stroke(10, 30, 20, 30);
  EXPECT_EQ(Rows(), 6);
  user::Key(main(), "Ctrl+Z");
  EXPECT_EQ(Rows(), 3);
  for (Canvas* map : AllCanvases()) {
    EXPECT_EQ(PixelOf(*map, 15, 10), 0xFF00FFu);
    EXPECT_NE(PixelOf(*map, 15, 30), 0xFF00FFu);
  }
  user::Click(main().PBundraw);
  user::Click(main().CB_ShowDrawing);
  EXPECT_FALSE(Globals::ShowDraw);
  for (Canvas* map : AllCanvases()) EXPECT_NE(PixelOf(*map, 15, 10), 0xFF00FFu);
  user::Click(main().CB_ShowDrawing);
  for (Canvas* map : AllCanvases()) EXPECT_EQ(PixelOf(*map, 15, 10), 0xFF00FFu);
  user::Click(main().PBdraw);
  user::Click(main().PBdrawUndo);
  EXPECT_EQ(Rows(), 0);
  user::Click(main().PBdrawUndo);
  Stroke(10, 10, 20, 10);
  user::Click(main().PBdrawClearAll);
  EXPECT_EQ(Rows(), 0);
  EXPECT_NE(PixelOf(main().cvTIF, 15, 10), 0xFF00FFu);
}

TEST_F(DrawingTest, UndoInTheMiddleOfAStrokeNeverFails) {
  Open(60);
  user::MousePress(main().cvTIF, 10, 10);
  user::Key(main(), "Ctrl+Z");
  user::MouseDragTo(main().cvTIF, 20, 10);
  user::MouseDragTo(main().cvTIF, 30, 10);
  user::MouseRelease(main().cvTIF, 30, 10);
  user::Key(main(), "Ctrl+Z");
  EXPECT_EQ(Rows(), 0);
  EXPECT_NE(PixelOf(main().cvTIF, 15, 10), 0xFF00FFu);
  EXPECT_TRUE(messages.empty());
}

TEST_F(DrawingTest, LinesKeepTheirPlaceOverAnotherCluster) {
  Open(60);
  Stroke(10, 10, 50, 10);
  LoadThree(30, 30);
  EXPECT_EQ(Rows(), 3);
  EXPECT_EQ(PixelOf(main().cvTIF, 29, 10), 0xFF00FFu);
}

TEST_F(DrawingTest, PickerTakesAFieldOnOkAndNothingOnCancel) {
  Open(40);
  Stroke(10, 10, 20, 10);
  const Color before = PixelOf(main().cvTIF, 15, 10);
  auto& picker = WindowSelectColor::Instance();
  // The dialog runs its own event loop, which comes to what the user does in it.
  const auto choose = [&](const std::function<void()>& act) {
    bool acted = false;
    std::function<void()> whenShown = [&] {
      if (!picker.Visible()) return user::Post(whenShown);
      acted = true;
      user::ProcessEvents();  // the first paint
      act();
    };
    user::Post(whenShown);
    user::Click(main().BB_sel_color);
    EXPECT_TRUE(acted);
    EXPECT_FALSE(picker.Visible());
  };
  choose([&] {
    EXPECT_EQ(PixelOf(picker.Canvas1, 60, 20), 0xFF00FFu);  // the sample bar shows the present colour
    user::Click(picker.Canvas1, 15, 55);
    user::Click(picker.Canvas1, 105, 85);
    EXPECT_EQ(PixelOf(picker.Canvas1, 60, 20), 0xFF0000u);
    user::Click(picker.Canvas1, 31, 55);  // the gap hits nothing
    user::Click(picker.PBcancel);
  });
  EXPECT_EQ(Globals::DrawColor, 0xFF00FFu);
  EXPECT_EQ(PixelOf(main().cvTIF, 15, 10), before);
  choose([&] {
    user::Click(picker.Canvas1, 15, 55);
    user::Click(picker.Canvas1, 105, 85);
    user::Key(picker, "Return");
  });
  EXPECT_EQ(Globals::DrawColor, 0xFF0000u);
  EXPECT_EQ(PixelOf(main().cvTIF, 15, 10), 0xFF0000u);
  EXPECT_EQ(PixelOf(speciesWindows()[0]->cv, 15, 10), 0xFF00FFu);  // until its next paint
  choose([&] { user::Key(picker, "Escape"); });
  EXPECT_EQ(Globals::DrawColor, 0xFF0000u);
  // "Other..." ends the dialog either way.
  bool confirm = false;
  Dialogs().selectColor = [&](Color& color, const String& prompt) {
    EXPECT_EQ(prompt.Utf8(), "Select Color...");
    if (confirm) color = 0x123456;
    return confirm;
  };
  choose([&] {
    user::Click(picker.Canvas1, 15, 55);
    user::Click(picker.PBother);
  });
  EXPECT_EQ(Globals::DrawColor, 0xFF0000u);
  confirm = true;
  choose([&] { user::Click(picker.PBother); });
  EXPECT_EQ(Globals::DrawColor, 0x123456u);
}

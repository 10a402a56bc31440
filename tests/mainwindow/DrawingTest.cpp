// Freehand drawing over all maps at every zoom.

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
  int Rows() { return Globals::x1Draw.Ubound() + 1; }
};

TEST_F(DrawingTest, ThePictureWithTheDrawingHoldsTheMapAndTheLines) {
  Open(40);
  const auto differing = [&] {
    std::vector<std::pair<int, int>> places;
    for (int y = 0; y < 40; ++y)
      for (int x = 0; x < 40; ++x)
        if (main().drawcurrTIF->RGBSurface().Pixel(x, y) != main().currTIF->RGBSurface().Pixel(x, y))
          places.push_back({x, y});
    return places;
  };
  EXPECT_TRUE(differing().empty());
  main().SelectSpecies(2);
  EXPECT_TRUE(differing().empty());
  user::MousePress(main().cvTIF, 5, 8);
  user::MouseDragTo(main().cvTIF, 7, 8);
  user::MouseRelease(main().cvTIF, 7, 8);
  EXPECT_EQ(differing(), (std::vector<std::pair<int, int>>{{5, 8}, {6, 8}, {7, 8}}));
  user::Click(main().PBdrawClearAll);
  EXPECT_TRUE(differing().empty());
  // What is drawn on the one does not show on the other.
  main().SelectSpecies(1);
  main().drawcurrTIF->Graphics().FillRect(3, 4, 1, 1);
  EXPECT_EQ(differing(), (std::vector<std::pair<int, int>>{{3, 4}}));
}

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

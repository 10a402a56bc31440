// Drawing on all maps, and the colour picker.

#include "mainwindow/WindowSelectColor.h"
#include "tests/support/Story.h"

using namespace platform;

class DrawingStory : public Story {
 protected:
  void Stroke(int x1, int y1, int x2, int y2) {
    user::MousePress(main().cvTIF, x1, y1);
    user::MouseDragTo(main().cvTIF, x2, y2);
    user::MouseRelease(main().cvTIF, x2, y2);
  }
  /// Opens the picker and acts in it.
  void Pick(const std::function<void(WindowSelectColor&)>& act) {
    auto& picker = WindowSelectColor::Instance();
    std::function<void()> whenShown = [&] {
      if (!picker.Visible()) return user::Later(whenShown);
      user::ProcessEvents();
      act(picker);
    };
    user::Later(whenShown);
    user::Click(main().BB_sel_color);
    EXPECT_FALSE(picker.Visible());
  }
};

TEST_F(DrawingStory, LinesAreDrawnOnAllMaps) {
  LoadThree(40, 30);
  OpenEverything();
  user::Click(main().PBdraw);
  Stop("the drawing page");
  user::Activate(overview());
  Stop("Overview in front has nothing to undo");
  user::Activate(main());
  user::MousePress(main().cvTIF, 10, 10);
  Stop("a press stamps a pixel, with the pen as pointer");
  user::MouseDragTo(main().cvTIF, 20, 15);
  Stop("a drag stamps eleven pixels in all");
  user::MouseRelease(main().cvTIF, 20, 15);
  Stroke(5, 25, 35, 25);
  Stop("a second stroke");
  user::Key(main(), "Ctrl+Z");
  Stop("undone");
  user::ChooseMenu("Window200");
  Stop("the line keeps its position at 200 %");
  user::ChooseMenu("Window500");
  Stop("at 500 %");
  Stroke(12, 17, 33, 17);
  Stop("drawn at 500 %");
  user::ChooseMenu("Window50");
  Stop("at 50 %");
  user::MousePress(main().cvTIF, 3, 4);
  user::MouseDragTo(main().cvTIF, 12, 4);
  Stop("drawn at 50 %");
  user::MouseRelease(main().cvTIF, 12, 4);
  Stop("the paint skips every other pixel of the map, and with it this line");
  user::ChooseMenu("Window100");
  user::MousePress(main().cvTIF, 10, 10);
  user::Key(main(), "Ctrl+Z");
  user::MouseDragTo(main().cvTIF, 14, 10);
  user::MouseDragTo(main().cvTIF, 18, 10);
  user::MouseRelease(main().cvTIF, 18, 10);
  Stop("undo in the middle of a stroke, at 100 %");
  for (int i = 0; i < 2; ++i) user::Key(main(), "Ctrl+Z");
  user::Key(main(), "Down");
  Stop("another species under the remaining lines");
  user::Click(main().PBundraw);
  user::Click(main().CB_ShowDrawing);
  Stop("hidden");
  user::Click(main().CB_ShowDrawing);
  user::Click(main().PBdraw);
  Stop("shown, and drawing again");
  Pick([&](WindowSelectColor& picker) {
    Stop("the picker");
    user::Click(picker.Canvas1, 105, 85);
    Stop("red is chosen");
    user::Click(picker.Canvas1, 31, 55);
    user::Click(picker.Canvas1, 60, 15);
    Stop("a click on a gap or the sample chooses nothing");
    user::CloseButton(picker);
  });
  Stop("its close box changes nothing");
  Pick([&](WindowSelectColor& picker) {
    user::Click(picker.Canvas1, 105, 85);
    user::Key(picker, "Return");
  });
  Stop("Return confirms red: the species windows follow at their next paint");
  Pick([&](WindowSelectColor& picker) {
    user::Click(picker.Canvas1, 15, 55);
    user::CloseButton(picker);
  });
  Stop("the close box still changes nothing");
  Pick([&](WindowSelectColor& picker) {
    user::Click(picker.Canvas1, 15, 55);
    user::Key(picker, "Escape");
  });
  bool confirm = false;
  Dialogs().selectColor = [&](Color& color, const String& prompt) {
    Note("the system's chooser: " + prompt.Utf8());
    color = 0x123456;
    return confirm;
  };
  Pick([&](WindowSelectColor& picker) { user::Click(picker.PBother); });
  Stop("neither Escape nor a cancelled chooser changes anything");
  confirm = true;
  Pick([&](WindowSelectColor& picker) { user::Click(picker.PBother); });
  Stop("another colour");
  LoadThree(24, 24);
  Stop("another cluster, the same lines");
  user::Click(main().PBdraw);
  user::Click(main().PBdrawUndo);
  user::Click(main().PBdrawUndo);
  Stop("nothing is left to undo");
  Stroke(3, 3, 9, 3);
  user::Click(main().PBdrawClearAll);
  Stop("all is cleared");
}

// The linked cursor over all maps, click marks, held keys, and the pointers.

#include "tests/support/Story.h"

using namespace platform;

class CursorStory : public Story {};

TEST_F(CursorStory, TheCursorMarksAllMaps) {
  LoadThree(60, 48);
  OpenEverything();
  Stop("all maps are open");
  user::MouseMove(main().cvTIF, 30, 20);
  Stop("the pointer enters: an arrow, and small crosses elsewhere");
  user::MouseMove(main().cvTIF, 31, 22);
  Stop("it moves");
  user::Click(main().cvTIF, 31, 22);
  Stop("a click marks the levels at 31,22 and erases the crosses");
  user::MousePress(main().cvTIF, 10, 5);
  Stop("a press marks the levels at 10,5");
  user::MouseDragTo(main().cvTIF, 11, 5);
  user::MouseDragTo(main().cvTIF, 12, 5);
  user::MouseDragTo(main().cvTIF, 500, 5);
  Stop("a drag marks 11,5, one step behind; outside nothing is marked");
  user::MouseRelease(main().cvTIF, 500, 5);
  user::RightClick(main().cvTIF, 40, 40);
  Stop("the release erases the crosses, a right click does nothing");
  user::MouseMove(main().cvTIF, 12, 6);
  user::MouseLeave(main().cvTIF);
  Stop("the pointer has left");
  user::Click(main().BBcursorX);
  user::MouseMove(main().cvTIF, 20, 20);
  Stop("the X style");
  user::MouseLeave(main().cvTIF);
  user::Click(main().BBcursorCircles);
  Globals::fCursorSize = 9;
  user::MouseMove(main().cvTIF, 40, 24);
  Stop("circles");
  user::MouseLeave(main().cvTIF);
  user::ChooseMenu("Window200");
  user::MouseMove(main().cvTIF, 41, 31);
  Stop("at 200 % the pixel is 20,15");
  user::MouseLeave(main().cvTIF);
  user::ChooseMenu("Window300");
  user::ChooseMenu("SizeExact");
  Stop("soft pixels at 300 %");
  for (const auto& [x, y] : {std::pair{7, 50}, {100, 140}, {178, 3}}) user::MouseMove(main().cvTIF, x, y);
  user::MouseLeave(main().cvTIF);
  Stop("no trace of the circles");
  user::Activate(overview());
  user::MouseMove(main().cvTIF, 50, 50);
  Stop("an inactive Main ignores the mouse");
}

TEST_F(CursorStory, EveryMapAtThisScale) {
  LoadThree(256, 256);
  OpenEverything();
  Stop("all maps are open");
  user::MouseMove(main().cvTIF, 30, 252);
  Stop("crosses");
  user::MousePress(main().cvTIF, 255, 255);
  user::MouseRelease(main().cvTIF, 255, 255);
  Stop("marks");
  user::Click(main().BBcursorCircles);
  for (const auto& [x, y] : {std::pair{255, 255}, {0, 255}, {255, 0}, {130, 255}}) user::MouseMove(main().cvTIF, x, y);
  Stop("a circle over the lower edge");
  user::MouseLeave(main().cvTIF);
  Stop("no trace of it");
}

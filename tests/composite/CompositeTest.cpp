// The mix that the composite window shows.

#include "tests/support/WindowsFixture.h"

using namespace platform;

class CompositeTest : public WindowsTest {};

TEST_F(CompositeTest, ASliderChangesTheMixOnceAtItsRelease) {
  LoadThree(20, 16);
  user::Click(main().PB_RGB);
  const auto mixed = [&] { return PixelOf(composite().Canvas1, 4, 3); };
  user::ChooseRow(composite().RGB_CMY, 1);
  auto& slider = composite().sliderRGB[0];
  const Color before = mixed();
  EXPECT_EQ(before, RGB(255 - Level(0, 4, 3), 255 - Level(1, 4, 3), 255 - Level(2, 4, 3)));
  user::MousePress(slider, slider.Width() / 2, slider.Height() / 2);
  for (int x = slider.Width() / 2; x < slider.Width() - 12; x += 4) user::MouseDragTo(slider, x, slider.Height() / 2);
  EXPECT_EQ(mixed(), before);
  user::MouseRelease(slider, slider.Width() - 12, slider.Height() / 2);
  EXPECT_LT(Red(mixed()), Red(before));
  EXPECT_GT(slider.Value(), 5);
}

TEST_F(CompositeTest, ExactPixelsRepaintsTheCompositeFirst) {
  LoadThree(40, 40);
  OpenEverything();
  std::vector<Canvas*> painted, expected{&composite().Canvas1, &main().cvTIF};
  for (SpeciesWindow* window : speciesWindows()) expected.push_back(&window->cv);
  for (Canvas* canvas : expected)
    canvas->Paint = [&painted, canvas, paint = canvas->Paint](Graphics& g) {
      painted.push_back(canvas);
      paint(g);
    };
  user::ChooseMenu("SizeExact");
  EXPECT_EQ(painted, expected);
}

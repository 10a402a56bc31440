// The composite window and the species windows.

#include "platform/widgets/Screen.h"
#include "stack/DisplayCurve.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class CompositeTest : public WindowsTest {
 protected:
  /// Every pixel of the composite against `color`(levels at the pixel).
  void ExpectComposite(const std::function<Color(int x, int y)>& color) {
    for (int y = 0; y < main().InTIFheight; ++y)
      for (int x = 0; x < main().InTIFwidth; ++x) {
        ASSERT_EQ(composite().RGBrgbsurface.Pixel(x, y), color(x, y)) << x << ", " << y;
        ASSERT_EQ(PixelOf(composite().Canvas1, x, y), color(x, y)) << x << ", " << y;
      }
  }
};

TEST_F(CompositeTest, ChannelsStartAtTheFirstSpeciesThereAre) {
  LoadThree(20, 16);
  user::Click(main().PB_RGB);
  EXPECT_TRUE(composite().Visible());
  EXPECT_EQ(composite().popM[2].ListCount(), 4);
  EXPECT_EQ(composite().NameArray(1).Utf8(), "Fe");
  ExpectComposite([](int x, int y) { return RGB(Level(0, x, y), Level(1, x, y), Level(2, x, y)); });
  user::ChooseRow(composite().RGB_CMY, 1);
  EXPECT_EQ(composite().Title().Utf8(), "CMY Composite Image");
  EXPECT_EQ(composite().StaticText2.Text().Utf8(), "M");
  EXPECT_EQ(composite().Rectangle3.FillColor(), 0xFFFF00u);
  ExpectComposite([](int x, int y) { return RGB(255 - Level(0, x, y), 255 - Level(1, x, y), 255 - Level(2, x, y)); });
  user::ChooseRow(composite().popM[0], 0);
  user::ChooseRow(composite().popM[2], 2);
  ExpectComposite([](int x, int y) { return RGB(255, 255 - Level(1, x, y), 255 - Level(1, x, y)); });
  user::ChooseRow(composite().RGB_CMY, 0);
  composite().sliderRGB[1].Value(-7);
  EXPECT_EQ(composite().sTslider[1].Text().Utf8(), "-7");
  const Curve curve = DisplayCurve(-7, 255);
  ExpectComposite(
      [&](int x, int y) { return RGB(0, curve[static_cast<std::size_t>(Level(1, x, y))], Level(1, x, y)); });
  user::Click(composite().PB_reset);
  EXPECT_EQ(composite().sTslider[1].Text().Utf8(), "0");
  ExpectComposite([](int x, int y) { return RGB(0, Level(1, x, y), Level(1, x, y)); });
  composite().Lightness.Value(9);
  ExpectComposite([](int x, int y) { return RGB(0, Level(1, x, y), Level(1, x, y)); });
}

TEST_F(CompositeTest, ScaleUpStretchesEachChannelToItsOwnHighest) {
  LoadCluster({"Al", "Fe", "Mg"}, 8, 8, [](int species) { return [species](int, int) { return 51 * (species + 1); }; });
  user::Click(main().PB_RGB);
  user::Click(composite().CB_scale);
  ExpectComposite([](int, int) { return kWhite; });
}

TEST_F(CompositeTest, GapsInTheStackAreSkippedAndSmoothingIsFollowed) {
  Drop(
      {WriteMap("a_Al.tif", 5, 5, [](int, int) { return 1; }), WriteMap("a_Fe.tif", 5, 5, [](int, int) { return 2; })});
  LoadCluster({"Ca", "Fe", "Si"}, 5, 5, [](int species) { return [species](int x, int) { return species * 60 + x; }; });
  user::Click(main().PB_RGB);
  EXPECT_EQ(composite().ExistsArray(1), 1);  // Al is missing
  ExpectComposite([](int x, int) { return RGB(x, 60 + x, 120 + x); });
  user::Activate(main());
  user::ChooseMenu("OptionsSmooth1");
  ExpectComposite(
      [&](int x, int y) { return RGB(main().TIFarray(1, x, y), main().TIFarray(2, x, y), main().TIFarray(3, x, y)); });
}

TEST_F(CompositeTest, FewSpeciesStartEmptyAndNoneFails) {
  LoadCluster({"Al", "Fe"}, 4, 4, [](int) { return [](int, int) { return 200; }; });
  user::Click(main().PB_RGB);
  ExpectComposite([](int, int) { return kBlack; });
  user::ChooseRow(composite().RGB_CMY, 1);
  ExpectComposite([](int, int) { return kWhite; });
  main().TIFexists(0) = main().TIFexists(1) = false;
  user::Activate(main());
  user::Click(main().PB_RGB);
  EXPECT_EQ(messages, std::vector<std::string>{"exception in updatergb"});
}

TEST_F(CompositeTest, AStackOfAnotherSizeUnderAnOldComposite) {
  LoadThree(30, 30);
  user::Click(main().PB_RGB);
  LoadThree(12, 50);
  EXPECT_EQ(composite().Canvas1.Width(), 12);
  EXPECT_EQ(composite().RGBimage->Width(), 30);
  user::ChooseMenu("OptionsSmooth1");  // walks the new size over the old picture
  EXPECT_TRUE(messages.empty());
  EXPECT_EQ(composite().RGBrgbsurface.Pixel(3, 3),
            RGB(main().TIFarray(0, 3, 3), main().TIFarray(1, 3, 3), main().TIFarray(2, 3, 3)));
}

TEST_F(CompositeTest, WindowFollowsZoomAndHides) {
  LoadThree(256, 256);
  user::Click(main().PB_RGB);
  user::ChooseMenu("Window200");
  EXPECT_EQ(composite().Width(), 552);
  EXPECT_EQ(composite().Height(), 758);
  EXPECT_EQ(composite().PB_close.Top(), 462 + 256);
  user::ChooseMenu("Window50");
  EXPECT_EQ(composite().Width(), 296);
  EXPECT_EQ(composite().Height(), 502);
  EXPECT_EQ(composite().Canvas1.Width(), 128);
  composite().sliderRGB[0].Value(4);
  user::CloseButton(composite());
  EXPECT_FALSE(composite().Visible());
  user::Click(main().PB_RGB);
  EXPECT_EQ(composite().sliderRGB[0].Value(), 4);
}

TEST_F(CompositeTest, ASliderTellsOnceAtRelease) {
  LoadThree(20, 20);
  user::Click(main().PB_RGB);
  auto& slider = composite().sliderRGB[0];
  int told = 0;
  const auto handler = slider.ValueChanged;
  slider.ValueChanged = [&] {
    ++told;
    handler();
  };
  user::MousePress(slider, slider.Width() / 2, slider.Height() / 2);
  for (int x = slider.Width() / 2; x < slider.Width() - 12; x += 4) user::MouseDragTo(slider, x, slider.Height() / 2);
  EXPECT_EQ(told, 0);
  user::MouseRelease(slider, slider.Width() - 12, slider.Height() / 2);
  EXPECT_EQ(told, 1);
  EXPECT_GT(slider.Value(), 5);
}

TEST_F(CompositeTest, SpeciesWindowsAreSnapshotsInRowsFromTheBottomLeft) {
  LoadThree(300, 200);
  user::ChooseMenu("OptionsSmooth2");
  user::Click(main().PB_AllSpecies);
  auto windows = speciesWindows();
  ASSERT_EQ(windows.size(), 3u);
  const Screen screen(0);
  const int perRow = screen.AvailableWidth() / 302;
  for (int i = 0; i < 3; ++i) {
    SpeciesWindow& window = *windows[static_cast<std::size_t>(i)];
    EXPECT_EQ(window.Width(), 302);
    EXPECT_EQ(window.Height(), 201);
    // The offscreen platform keeps a frame of two pixels on its screen.
    EXPECT_EQ(window.Left(), std::max(2, screen.AvailableLeft() + i % perRow * 302));
    EXPECT_EQ(window.Top(), screen.AvailableTop() + screen.AvailableHeight() - 201 - i / perRow * 223);
    EXPECT_EQ(window.Title().Utf8(), std::vector<std::string>({"Al (sm2)", "Fe (sm2)", "Mg (sm2)"})[i]);
    EXPECT_EQ(PixelOf(window.cv, 7, 9), Globals::lut(10, main().TIFarray(i, 7, 9)));
  }
  const Color before = PixelOf(windows[1]->cv, 7, 9);
  user::Activate(main());
  user::ChooseMenu("Colorsc3");
  user::ChooseMenu("Window200");
  EXPECT_EQ(windows[1]->cv.Width(), 600);
  EXPECT_EQ(PixelOf(windows[1]->cv, 14, 18), before);
  user::Click(main().PB_SpeciesUpdate);
  windows = speciesWindows();
  EXPECT_EQ(PixelOf(windows[1]->cv, 14, 18), Globals::lut(2, main().TIFarray(1, 7, 9)));
  user::CloseButton(*windows[0]);
  EXPECT_EQ(speciesWindows().size(), 2u);
  user::MouseMove(main().cvTIF, 50, 50);  // a closed window has dropped out
  user::Activate(main());
  user::Click(main().PB_SpeciesClose);
  EXPECT_TRUE(speciesWindows().empty());
}

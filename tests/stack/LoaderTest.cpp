// From a checked row to the stack and its colours.

#include "platform/values/Memory.h"
#include "platform/values/Parallel.h"
#include "stack/DisplayCurve.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class LoaderTest : public WindowsTest {
 protected:
  static LevelAt Flat(int level) {
    return [level](int, int) { return level; };
  }
  /// What the program does when a load fails: a message, then all windows close.
  void ExpectQuitWithCode(int code) {
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages.back(), "Error in Open_LoadNew.\nCode " + std::to_string(code));
    user::ProcessEvents();
    EXPECT_EQ(WindowCount(), 0);
  }
};

TEST_F(LoaderTest, StackAndDisplayHoldWhatTheFilesHold) {
  LoadThree(30, 20);
  Main& m = main();
  EXPECT_TRUE(m.TIFready);
  EXPECT_EQ(m.PPbuttons.Value(), Main::kPageNormal);
  EXPECT_EQ(m.TIFarray.Ubound(1), 2);
  EXPECT_EQ(m.TIFarray.Ubound(2), 29);
  EXPECT_EQ(m.TIFarray.Ubound(3), 19);
  EXPECT_EQ(m.SelectedRow, 0);
  EXPECT_EQ(m.SpeciesName.Text().Utf8(), "Al");
  EXPECT_EQ(m.Progress.Maximum(), 3);
  for (int species = 0; species < 3; ++species) {
    int highest = 0;
    for (int y = 0; y < 20; ++y)
      for (int x = 0; x < 30; ++x) {
        const int level = Level(species, x, y);
        highest = std::max(highest, level);
        ASSERT_EQ(m.TIFarray(species, x, y), level);
        ASSERT_EQ(m.TIFarrOriginal(species, x, y), level);
        if (species == 0) {
          ASSERT_EQ(PixelOf(m.cvTIF, x, y), Globals::lut(10, level));
        }
      }
    EXPECT_EQ(m.TIFmax(species), highest);
  }
  // The title tells the time of the load: two numbers.
  EXPECT_EQ(m.Title().Utf8().find_first_not_of("0123456789 "), std::string::npos);
}

TEST_F(LoaderTest, SelectionSmoothingAndMarksSurviveAnotherCluster) {
  LoadThree(12, 12);
  user::Key(main(), "Down");
  user::Key(main(), "Down");
  user::ChooseMenu("OptionsSmooth3");
  main().Clicks(0, 1, 77) = true;
  LoadThree(16, 16);
  EXPECT_EQ(main().SelectedRow, 2);
  EXPECT_EQ(main().SmoothLevel, 3);
  EXPECT_EQ(main().SpeciesName.Text().Utf8(), "Mg (sm3)");
  EXPECT_TRUE(main().Clicks(0, 1, 77));
  EXPECT_EQ(main().TIFarrOriginal(0, 5, 5), 50);
  // A union that has shrunk below the selection goes back to the first species.
  user::Activate(overview());
  user::Key(overview(), "Ctrl+A");
  user::Click(overview().PBdeleteselection);
  LoadCluster({"Ca", "Ti"}, 12, 12, [](int) { return Flat(3); });
  EXPECT_EQ(main().SelectedRow, 0);
  EXPECT_TRUE(messages.empty());
}

TEST_F(LoaderTest, ShowingAgainDoesNotLoadAgain) {
  LoadThree(8, 8);
  const String before = main().Title();
  main().TIFarray(0, 0, 0) = 123;
  CheckRow(0);
  EXPECT_FALSE(main().Visible());
  CheckRow(0);
  EXPECT_TRUE(main().Visible());
  EXPECT_EQ(main().TIFarray(0, 0, 0), 123);
  // Each showing and hiding appends a time.
  EXPECT_EQ(Left(main().Title(), Len(before)), before);
  EXPECT_GE(Len(main().Title()), Len(before) + 6);
}

TEST_F(LoaderTest, AMapOfAnotherSizeIsNamedWithBothSizes) {
  Drop({WriteMap("a_Al.tif", 6, 6, Flat(1)), WriteMap("a_Fe.tif", 6, 7, Flat(2)), WriteMap("a_Mg.tif", 6, 6, Flat(3))});
  ::testing::internal::CaptureStderr();
  CheckRow(0);
  EXPECT_TRUE(::testing::internal::GetCapturedStderr().ends_with(
      "vornalite: " + PathOf("a_Fe.tif") + " has 6 x 7 pixels, but " + PathOf("a_Al.tif") + " has 6 x 6 pixels\n"));
}

TEST_F(LoaderTest, AFirstFileThatIsGoneEndsTheProgramWithCode3) {
  Drop({WriteMap("a_Al.tif", 6, 6, Flat(1)), WriteMap("a_Fe.tif", 6, 6, Flat(2))});
  std::filesystem::remove(folder / "a_Al.tif");
  ::testing::internal::CaptureStderr();
  CheckRow(0);
  EXPECT_TRUE(::testing::internal::GetCapturedStderr().ends_with(
      "vornalite: Open_LoadNew, Code 3: " + PathOf("a_Al.tif") + " could not be opened\n"));
  ExpectQuitWithCode(3);
}

TEST_F(LoaderTest, ALaterFileThatIsNoPictureEndsTheProgramWithCode6) {
  Drop({WriteMap("a_Al.tif", 6, 6, Flat(1)), WriteBytes("a_Fe.tif", "no picture at all")});
  CheckRow(0);
  ExpectQuitWithCode(6);
}

TEST_F(LoaderTest, AStackThatMemoryDoesNotHoldEndsTheProgramWithCode4) {
  LoadThree(64, 64);
  // Enough for the pictures of another cluster, whose planes take the place of those that stand.
  constexpr double kPixels = 64 * 64, kPictures = 100 * kPixels;
  SetParallelism(1);
  LimitAvailableMemory(kPictures);
  LoadThree(64, 64);
  EXPECT_TRUE(messages.empty());
  EXPECT_TRUE(main().TIFready);
  LimitAvailableMemory(kPixels);
  Drop({WriteMap("a_Al.tif", 64, 64, Flat(1)), WriteMap("a_Fe.tif", 64, 64, Flat(2))});
  CheckRow(2);
  ExpectQuitWithCode(4);
}

TEST_F(LoaderTest, FilesBehindAWrongSizeAreNotReported) {
  Drop(
      {WriteMap("a_Al.tif", 6, 6, Flat(1)), WriteMap("a_Fe.tif", 6, 7, Flat(2)), WriteBytes("a_Mg.tif", "no picture")});
  SetParallelism(4);
  ::testing::internal::CaptureStderr();
  CheckRow(0);
  EXPECT_EQ(::testing::internal::GetCapturedStderr().find("a_Mg"), std::string::npos);
  EXPECT_EQ(messages.size(), 1u);
}

TEST_F(LoaderTest, FilesOpenedAheadKeepTheirOrder) {
  SetParallelism(5);
  const std::vector<std::string> species{"Al", "Ca", "Fe", "K", "Mg", "Na", "Si", "Ti"};
  // The first ones take longest to read.
  LoadCluster(species, 300, 200, [](int number) -> LevelAt {
    return [number](int x, int y) { return number < 3 ? (x * y + number) % 256 : 10 * number; };
  });
  for (int number = 0; number < 8; ++number)
    ASSERT_EQ(main().TIFarray(number, 3, 1), number < 3 ? 3 + number : 10 * number);
}

TEST_F(LoaderTest, ASingleFileIsNotMatchedAndEndsWithCode3) {
  Drop({WriteMap("Fe.tif", 6, 6, Flat(1))});
  EXPECT_EQ(Cell(0, 2), "Fe_tif");
  ::testing::internal::CaptureStderr();
  CheckRow(0);
  EXPECT_TRUE(::testing::internal::GetCapturedStderr().ends_with(
      "vornalite: Open_LoadNew, Code 3: no file was found for species Fe_tif\n"));
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0], "Wrong TIFexist flags\nt-f \nFe\nFe_tif");
  ExpectQuitWithCode(3);
}

TEST_F(LoaderTest, AClusterWithoutAnySpeciesEndsWithCode3) {
  // What differs between the names is not allowed in a name: both species are left without one.
  Drop({WriteMap("a..tif", 6, 6, Flat(1)), WriteMap("a,.tif", 6, 6, Flat(1))});
  CheckRow(0);
  ASSERT_EQ(messages.size(), 3u);
  EXPECT_EQ(messages[0], "Wrong TIFexist flags\nf-t \n, \n");
  EXPECT_EQ(messages[1], "Nothing exists.");
  ExpectQuitWithCode(3);
}

TEST_F(LoaderTest, ARenamedClusterIsToldAndLoads) {
  Drop({WriteMap("b_Al.tif", 4, 4, Flat(1)), WriteMap("b_Fe.tif", 4, 4, Flat(2))});
  overview().ListBox1.Cell(0, WindowOverview::kCluster, "other");
  CheckRow(0);
  EXPECT_EQ(messages, std::vector<std::string>{"error in Main-Open_LoadNew"});
  EXPECT_EQ(main().FrameName.Utf8(), "other");
  EXPECT_TRUE(main().TIFready);
  main().TIFmax(0) = 300;
  user::Click(main().CB_ScaleUp);
  EXPECT_EQ(messages.back(), "error in LUTcurve");
  ::testing::internal::CaptureStderr();
  main().SelectedRow = 7;
  user::Click(main().CB_ScaleUp);
  EXPECT_EQ(messages.back(), "exception in update_cvTIF");
  EXPECT_TRUE(::testing::internal::GetCapturedStderr().starts_with("vornalite: Update_cvTIF, species 7: "));
}

TEST_F(LoaderTest, OnePixelLoadsAndSmoothingItFails) {
  LoadCluster({"Al", "Fe"}, 1, 1, [](int species) { return Flat(100 + species); });
  EXPECT_TRUE(main().TIFready);
  EXPECT_EQ(main().TIFarray.Ubound(2), 0);
  EXPECT_EQ(PixelOf(main().cvTIF, 0, 0), Globals::lut(10, 100));
  user::ChooseMenu("OptionsSmooth1");
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(main().PPbuttons.Value(), Main::kPageNormal);
}

TEST_F(LoaderTest, CurveScaleAndReset) {
  LoadCluster({"Al", "Fe"}, 4, 4, [](int species) { return Flat(species == 0 ? 100 : 40); });
  Main& m = main();
  user::Click(m.CB_ScaleUp);
  EXPECT_EQ(PixelOf(m.cvTIF, 1, 1), Globals::lut(10, 255));
  user::Key(m, "Down");
  EXPECT_EQ(PixelOf(m.cvTIF, 1, 1), Globals::lut(10, 255));
  user::Click(m.CB_ScaleUp);
  m.Slider_colors.Value(5);
  EXPECT_EQ(m.ST_ScaleColors.Text().Utf8(), "5");
  EXPECT_EQ(PixelOf(m.cvTIF, 1, 1), Globals::lut(10, DisplayCurve(5, 255)[40]));
  // The bar shows level 255 - y at y, through the curve, within its frame.
  EXPECT_EQ(PixelOf(m.cvColorBar, 10, 255 - 64), Globals::lut(10, 135));
  EXPECT_EQ(PixelOf(m.cvColorBar, 0, 100), kBlack);
  user::Click(m.PB_ResetColors);
  EXPECT_EQ(m.Slider_colors.Value(), 0);
  EXPECT_EQ(m.ST_ScaleColors.Text().Utf8(), "0");
  EXPECT_EQ(PixelOf(m.cvTIF, 1, 1), Globals::lut(10, 40));
}

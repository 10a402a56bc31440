// Loading and smoothing as commands on the whole stack, where no story covers them.

#include "platform/values/Memory.h"
#include "platform/values/Parallel.h"
#include "platform/widgets/Screen.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

/// A load that fails ends the program with messages, of which the last one has a code.
struct FailingLoad {
  const char* name;
  std::vector<const char*> sixBySix, noPicture, gone;  ///< the files of the drop: maps of 6 x 6 pixels, and others
  std::vector<std::string> messages;                   ///< before the last one
  int code;
  std::string error;  ///< the end of the line on standard error

  friend std::ostream& operator<<(std::ostream& stream, const FailingLoad& load) { return stream << load.name; }
};

class FailingLoads : public WindowsTest, public ::testing::WithParamInterface<FailingLoad> {};

TEST_P(FailingLoads, EndTheProgram) {
  const FailingLoad& load = GetParam();
  std::vector<std::string> paths;
  const auto flat = [](int, int) { return 1; };
  for (const char* name : load.sixBySix) paths.push_back(WriteMap(name, 6, 6, flat));
  for (const char* name : load.noPicture) paths.push_back(WriteBytes(name, "no picture at all"));
  for (const char* name : load.gone) paths.push_back(WriteMap(name, 6, 6, flat));
  Drop(paths);
  for (const char* name : load.gone) std::filesystem::remove(folder / name);
  ::testing::internal::CaptureStderr();
  CheckRow(0);
  EXPECT_TRUE(::testing::internal::GetCapturedStderr().ends_with(load.error + "\n"));
  std::vector<std::string> expected = load.messages;
  expected.push_back("Error in Open_LoadNew.\nCode " + std::to_string(load.code));
  EXPECT_EQ(messages, expected);
  user::ProcessEvents();
  EXPECT_EQ(WindowCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    , FailingLoads,
    ::testing::Values(
        FailingLoad{"FirstFileGone", {"a_Fe.tif"}, {}, {"a_Al.tif"}, {}, 3, "/a_Al.tif could not be opened"},
        FailingLoad{"LaterFileNoPicture", {"a_Al.tif"}, {"a_Fe.tif"}, {}, {}, 6, "/a_Fe.tif could not be opened"},
        FailingLoad{"ASingleFileIsNotMatched",
                    {"Fe.tif"},
                    {},
                    {},
                    {"Wrong TIFexist flags\nt-f \nFe\nFe_tif"},
                    3,
                    "Code 3: no file was found for species Fe_tif"},
        // The characters that differ are not allowed in names: both species have no name.
        FailingLoad{
            "NoSpecies", {"a..tif", "a,.tif"}, {}, {}, {"Wrong TIFexist flags\nf-t \n, \n", "Nothing exists."}, 3, ""}),
    [](const auto& load) { return load.param.name; });

class StackCommandsTest : public WindowsTest {};

TEST_F(StackCommandsTest, AStackLargerThanTheMemoryEndsTheProgramWithCode4) {
  LoadThree(64, 64);
  // Enough for the pictures of another cluster, whose planes replace those in memory.
  constexpr double kPixels = 64 * 64, kPictures = 100 * kPixels;
  SetParallelism(1);
  LimitAvailableMemory(kPictures);
  LoadThree(64, 64);
  EXPECT_TRUE(messages.empty());
  LimitAvailableMemory(kPixels);
  CheckRow(1);
  CheckRow(0);
  EXPECT_EQ(messages, std::vector<std::string>{"Error in Open_LoadNew.\nCode 4"});
  user::ProcessEvents();
  EXPECT_EQ(WindowCount(), 0);
}

TEST_F(StackCommandsTest, FilesOpenedAheadKeepTheirOrder) {
  SetParallelism(5);
  // The first ones take longest to read.
  LoadCluster({"Al", "Ca", "Fe", "K", "Mg", "Na", "Si", "Ti"}, 300, 200, [](int number) -> LevelAt {
    return [number](int x, int y) { return number < 3 ? (x * y + number) % 256 : 10 * number; };
  });
  for (int number = 0; number < 8; ++number)
    ASSERT_EQ(main().TIFarray(number, 3, 1), number < 3 ? 3 + number : 10 * number);
}

TEST_F(StackCommandsTest, ProgressIsInViewWhereTheScreenCannotHoldTheMap) {
  LoadThree(60, Screen(0).AvailableHeight());
  EXPECT_EQ(user::ShownPart(main()).y, 0);
  user::Wheel(main().cvTIF, 5, 5, -1);
  const int scrolled = user::ShownPart(main()).y;
  EXPECT_GT(scrolled, 0);
  int inView = 0;
  main().cvTIF.Paint = [&](Graphics&) {
    const Rect part = user::ShownPart(main());
    const int top = main().Progress.Top();
    inView += main().PPbuttons.Value() == Main::kPageLoading && part.y <= top && top + 12 <= part.y + part.height;
  };
  user::ChooseMenu("OptionsSmooth2");
  EXPECT_GE(inView, 3) << "a paint a map";
  EXPECT_EQ(user::ShownPart(main()).y, scrolled);
  inView = 0;
  LoadThree(61, Screen(0).AvailableHeight());
  EXPECT_GE(inView, 3);
  EXPECT_EQ(user::ShownPart(main()).y, scrolled);
}

// Smoothing as a command on the whole stack.

#include "platform/values/Parallel.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class SmoothCommandTest : public WindowsTest {};

TEST_F(SmoothCommandTest, LevelsStartFromTheOriginalEachTime) {
  LoadCluster({"Al", "Fe"}, 3, 3, [](int) { return [](int x, int y) { return x == 1 && y == 1 ? 90 : 9; }; });
  user::ChooseMenu("OptionsSmooth1");
  // (90 + 8 * 9) / 9 in the middle. A corner counts itself four times, its neighbours twice, the middle once.
  EXPECT_EQ(main().TIFarray(0, 1, 1), 18);
  EXPECT_EQ(main().TIFarray(0, 0, 0), 18);
  // Bottom edge: the row above counts twice, so the middle weighs double.
  EXPECT_EQ(main().TIFarray(0, 1, 2), 27);
  for (const auto& [x, y] : {std::pair{1, 0}, {0, 1}, {2, 1}}) EXPECT_EQ(main().TIFarray(0, x, y), 18);
  EXPECT_EQ(main().TIFmax(0), 27);
  user::ChooseMenu("OptionsSmooth1");
  EXPECT_EQ(main().TIFarray(0, 1, 2), 27);
  user::ChooseMenu("OptionsRawImage");
  EXPECT_EQ(main().TIFarray(0, 1, 1), 90);
  EXPECT_EQ(main().TIFmax(0), 90);
  EXPECT_EQ(main().TIFarrOriginal(0, 1, 1), 90);
  EXPECT_TRUE(messages.empty());
}

TEST_F(SmoothCommandTest, ALevelBelowZeroShowsTheSecondWorkPlane) {
  LoadThree(4, 4);
  main().temp2(2, 1) = 41.9;
  main().Smooth(-1);
  EXPECT_EQ(main().TIFarray(1, 2, 1), 41);
  EXPECT_EQ(main().TIFarray(1, 0, 0), 0);
  EXPECT_EQ(main().TIFmax(1), 41);
}

TEST_F(SmoothCommandTest, AWrongSelectionIsToldAndRestored) {
  LoadThree(4, 4);
  main().SelectedRow = -1;
  main().Smooth(1);
  EXPECT_EQ(messages, std::vector<std::string>{"Wrong selection at end. 02310."});
  EXPECT_EQ(main().SelectedRow, -1);
}

TEST_F(SmoothCommandTest, AFailureTouchesNoSpeciesBehindTheOneThatFails) {
  SetParallelism(3);
  LoadThree(1, 7);  // too narrow to be smoothed
  const std::int32_t maximum[] = {main().TIFmax(0), main().TIFmax(1), main().TIFmax(2)};
  user::Click(main().CB_ScaleUp);
  const Color shown = PixelOf(main().cvTIF, 0, 6);
  user::ChooseMenu("OptionsSmooth1");
  EXPECT_EQ(messages.size(), 1u);
  EXPECT_EQ(main().TIFmax(0), maximum[0]);
  EXPECT_EQ(main().TIFmax(1), -1) << "the walk begins behind the selected species";
  EXPECT_EQ(main().TIFmax(2), maximum[2]);
  main().Update_cvTIF();
  EXPECT_EQ(PixelOf(main().cvTIF, 0, 6), shown);
  SetParallelism(0);
  // The second species is on the screen when the third one fails.
  main().TIFarrOriginal.Redim(1, 0, 6);
  user::ChooseMenu("OptionsRawImage");
  EXPECT_EQ(messages.size(), 2u);
  EXPECT_EQ(main().SelectedRow, 0);
}

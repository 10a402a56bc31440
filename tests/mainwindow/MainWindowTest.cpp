// Layout of Main, species list, keys.

#include "mainwindow/CursorGeometry.h"
#include "tests/support/WindowsFixture.h"

using namespace platform;

class MainWindowTest : public WindowsTest {
 protected:
  struct Places {
    int width, height, strip, lists, name;
    Size canvas;
    friend bool operator==(const Places&, const Places&) = default;
  };
  Places places() {
    Main& m = main();
    EXPECT_EQ(m.SpeciesLB.Top(), m.LB_Phases.Top());
    EXPECT_EQ(m.SpeciesLB.Height(), m.Height() - m.SpeciesLB.Top() - 15);
    return {m.Width(),         m.Height(),          m.PPbuttons.Top(),
            m.SpeciesLB.Top(), m.SpeciesName.Top(), {m.cvTIF.Width(), m.cvTIF.Height()}};
  }
};

TEST_F(MainWindowTest, TheWindowFollowsImageAndZoom) {
  LoadThree(512, 512);
  EXPECT_EQ(places(), (Places{970, 808, 554, 679, 526, {512, 512}}));
  EXPECT_EQ(main().MinHeight(), 808);
  user::ChooseMenu("Window200");
  EXPECT_EQ(places(), (Places{1104, 1320, 1066, 1191, 1038, {1024, 1024}}));
  EXPECT_EQ(main().MaxWidth(), 1104);
  EXPECT_EQ(user::Shot(main())->Width(), 1104);
  EXPECT_EQ(main().MinWidth(), 1104);
  LoadThree(128, 128);
  user::ChooseMenu("Window100");
  EXPECT_EQ(places(), (Places{970, 552, 298, 423, 142, {128, 128}}));
  LoadThree(255, 255);
  user::ChooseMenu("Window50");
  EXPECT_EQ(main().cvTIF.Width(), 127);
  user::ChooseMenu("Window300");
  EXPECT_TRUE(Menu::Item("Window300").Checked() && !Menu::Item("Window50").Checked());
  const Color first = PixelOf(main().cvTIF, 0, 0);
  EXPECT_EQ(PixelOf(main().cvTIF, 2, 0), first);
  user::ChooseMenu("SizeExact");
  EXPECT_NE(PixelOf(main().cvTIF, 2, 0), first);  // mixed with its neighbour
  user::Key(main(), "Ctrl+=");
  EXPECT_EQ(main().cvTIF.Width(), 255);
}

TEST_F(MainWindowTest, ZoomBeforeAnyLoadIsPutRightByTheNext) {
  main().Show();
  user::ChooseMenu("Window200");
  EXPECT_EQ(places(), (Places{970, 552, 298, 423, 14, {0, 0}}));
  user::ChooseMenu("Window100");
  LoadThree(256, 256);
  EXPECT_EQ(places(), (Places{970, 552, 298, 423, 270, {256, 256}}));
}

TEST_F(MainWindowTest, GrowingByHandMakesTheListsTaller) {
  LoadThree(100, 100);
  main().Height(700);
  EXPECT_EQ(main().SpeciesLB.Height(), 700 - 423 - 15);
  EXPECT_EQ(main().SpeciesLB.Width(), 574);
  EXPECT_EQ(main().PPbuttons.Top(), 298);
}

TEST_F(MainWindowTest, EveryCaptionIsReadable) {
  Main& m = main();
  WindowOverview& o = overview();
  WindowRGB& c = composite();
  const std::vector<RectControl*> controls{&m.PB_RGB,           &m.PB_SaveImage,
                                           &m.StaticText1,      &m.CB_ScaleUp,
                                           &m.PB_ResetColors,   &m.PBdraw,
                                           &m.CB_ShowDrawing,   &m.PB_AllSpecies,
                                           &m.PB_SpeciesUpdate, &m.PB_SpeciesClose,
                                           &m.PB_ClearClickM,   &m.Checkbox1,
                                           &m.PB_PhasesEdit,    &m.PB_PhasesUpdate,
                                           &m.StaticText2,      &m.StaticText4,
                                           &m.StaticText5,      &m.StaticText6,
                                           &m.StaticText7,      &m.StaticText8,
                                           &m.ST_ScaleColors,   &m.BB_sel_color,
                                           &m.PBundraw,         &m.PBdrawUndo,
                                           &m.PBdrawClearAll,   &o.PBdeleteselection,
                                           &o.STredmissing,     &o.CBnoSpeciesExtensions,
                                           &c.CB_scale,         &c.PB_reset,
                                           &c.PB_SaveImage,     &c.PB_close};
  for (RectControl* control : controls) EXPECT_TRUE(user::CaptionFits(*control)) << control->Name().Utf8();
}

TEST_F(MainWindowTest, ClicksAndKeysSelectSpecies) {
  LoadThree(40, 40);
  Main& m = main();
  user::ClickCell(m.SpeciesLB, 2, Main::kSpeciesColumn, 20, 10);
  EXPECT_EQ(m.SelectedRow, 2);
  EXPECT_EQ(PixelOf(m.cvTIF, 1, 1), Globals::lut(10, 110));
  user::ClickCell(m.SpeciesLB, 1, Main::kMarksColumn, 20, 10);  // the strip selects nothing
  user::ClickCell(m.SpeciesLB, 1, Main::kRColumn, 10, 10);
  EXPECT_EQ(m.SelectedRow, 2);
  // The list has not kept the keyboard: arrows reach the window, and wrap around at both ends.
  user::Key(m, "Down");
  EXPECT_EQ(m.SelectedRow, 0);
  user::Key(m, "Up");
  EXPECT_EQ(m.SelectedRow, 2);
  user::Key(m, "Up");
  EXPECT_EQ(m.SelectedRow, 1);
  EXPECT_EQ(m.SpeciesName.Text().Utf8(), "Fe");
  // Also after a button was pressed.
  user::Click(m.PB_ClearClickM);
  user::Key(m, "Up");
  EXPECT_EQ(m.SelectedRow, 0);
}

TEST_F(MainWindowTest, StripsShowMarksBracketsAndMedian) {
  LoadThree(40, 40);
  Main& m = main();
  for (int level : {10, 21, 100}) m.Clicks(0, 0, level) = true;
  m.Clicks(0, 1, 1) = true;
  m.Height(800);
  m.Refresh();
  const auto shot = user::Shot(m.SpeciesLB);
  const auto pixel = [&](int row, int column, int x, int y) {
    const Rect cell = user::CellRect(m.SpeciesLB, row, column);
    return shot->RGBSurface().Pixel(cell.x + x, cell.y + y);
  };
  constexpr int kStrip = Main::kMarksColumn, kName = Main::kSpeciesColumn;
  constexpr Color kGround = 0xF0F0F0, kRed = 0xFF0000, kGreen = 0x00FF00, kRing = 0x999999;
  EXPECT_EQ(m.MedianClick(0), 21);
  const struct {
    int row, column, x, y;
    Color color;
  } expected[] = {{0, kStrip, 100, 11, kWhite},     {0, kStrip, 100, 12, kBlack},
                  {0, kStrip, 100, 15, kBlack},     {0, kStrip, 100, 19, kBlack},
                  {0, kStrip, 100, 20, kWhite},     {0, kStrip, 20, 15, kGreen},
                  {0, kStrip, 22, 15, kGreen},      {0, kStrip, 23, 15, kWhite},
                  {0, kStrip, 60, 5, kGround},      {0, kStrip, 60, 26, kGround},
                  {0, kStrip, 0, 5, kRed},          {0, kStrip, 0, 10, kRed},
                  {0, kStrip, 0, 15, kGround},      {0, kStrip, 0, 26, kRed},
                  {0, kStrip, 255, 5, kRed},        {0, kStrip, 255, 10, kRed},
                  {0, kStrip, 255, 15, kGround},    {0, kStrip, 255, 26, kRed},
                  {0, kStrip, 249, 5, kGround},     {0, kStrip, 250, 5, kRed},
                  {0, kName, 2, 2, 0xD5E8FF},  // the selected row
                  {1, kName, 2, 2, kWhite},         {1, kStrip, 1, 15, kBlack},
                  {1, kStrip, 2, 15, kWhite},  // no median bar here
                  {0, Main::kRColumn, 3, 8, kRing}, {0, Main::kRColumn, 17, 22, kRing}};
  for (const auto& [row, column, x, y, color] : expected)
    EXPECT_EQ(pixel(row, column, x, y), color) << row << ' ' << column << ' ' << x << ' ' << y;
}

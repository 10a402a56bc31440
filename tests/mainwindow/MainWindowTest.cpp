// Layout of Main, species list, keys.

#include "mainwindow/CursorGeometry.h"
#include "tests/WindowsFixture.h"

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
  EXPECT_EQ(main().MinWidth(), 1104);
  LoadThree(128, 128);
  user::ChooseMenu("Window100");
  EXPECT_EQ(places(), (Places{970, 552, 298, 423, 142, {128, 128}}));
  LoadThree(255, 255);
  user::ChooseMenu("Window50");
  EXPECT_EQ(main().cvTIF.Width(), 127);
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
  LoadThree(40, 40);
  Main& m = main();
  for (RectControl* control : std::initializer_list<RectControl*>{
           &m.PB_RGB,         &m.PB_SaveImage,   &m.StaticText1,   &m.CB_ScaleUp,       &m.PB_ResetColors,
           &m.PBdraw,         &m.CB_ShowDrawing, &m.PB_AllSpecies, &m.PB_SpeciesUpdate, &m.PB_SpeciesClose,
           &m.PB_ClearClickM, &m.Checkbox1,      &m.PB_PhasesEdit, &m.PB_PhasesUpdate,  &m.StaticText2,
           &m.StaticText4,    &m.StaticText5,    &m.StaticText6,   &m.StaticText7,      &m.StaticText8,
           &m.ST_ScaleColors})
    EXPECT_TRUE(user::CaptionFits(*control)) << control->Name().Utf8();
  user::Click(m.PBdraw);
  for (RectControl* control :
       std::initializer_list<RectControl*>{&m.BB_sel_color, &m.PBundraw, &m.PBdrawUndo, &m.PBdrawClearAll})
    EXPECT_TRUE(user::CaptionFits(*control)) << control->Name().Utf8();
  WindowOverview& o = overview();
  for (RectControl* control :
       std::initializer_list<RectControl*>{&o.PBdeleteselection, &o.STredmissing, &o.CBnoSpeciesExtensions})
    EXPECT_TRUE(user::CaptionFits(*control)) << control->Name().Utf8();
}

TEST_F(MainWindowTest, ControlsThatStandReadyDoNothing) {
  LoadThree(40, 40);
  user::Click(main().cvTIF, 5, 5);
  const auto before = user::Shot(main());
  for (RectControl* control :
       std::initializer_list<RectControl*>{&main().PB_ClearClickM, &main().PB_PhasesEdit, &main().PB_PhasesUpdate})
    user::Click(*control);
  EXPECT_TRUE(main().Clicks(0, 0, (5 * 7 + 5 * 3) % 256));
  EXPECT_EQ(main().PPbuttons.Value(), Main::kPageNormal);
  EXPECT_TRUE(messages.empty());
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
  constexpr int kStrip = Main::kMarksColumn;
  EXPECT_EQ(m.MedianClick(0), 21);
  for (int y : {12, 15, 19}) EXPECT_EQ(pixel(0, kStrip, 100, y), kBlack) << y;
  EXPECT_EQ(pixel(0, kStrip, 100, 11), kWhite);
  EXPECT_EQ(pixel(0, kStrip, 100, 20), kWhite);
  EXPECT_EQ(pixel(0, kStrip, 20, 15), 0x00FF00u);
  EXPECT_EQ(pixel(0, kStrip, 22, 15), 0x00FF00u);
  EXPECT_EQ(pixel(0, kStrip, 23, 15), kWhite);
  EXPECT_EQ(pixel(0, kStrip, 60, 5), RGB(240, 240, 240));
  EXPECT_EQ(pixel(0, kStrip, 60, 26), RGB(240, 240, 240));
  for (int x : {0, 255}) {
    EXPECT_EQ(pixel(0, kStrip, x, 5), 0xFF0000u);
    EXPECT_EQ(pixel(0, kStrip, x, 10), 0xFF0000u);
    EXPECT_EQ(pixel(0, kStrip, x, 26), 0xFF0000u);
    EXPECT_NE(pixel(0, kStrip, x, 15), 0xFF0000u);
  }
  EXPECT_EQ(pixel(0, kStrip, 250, 5), 0xFF0000u);
  EXPECT_EQ(pixel(0, kStrip, 249, 5), RGB(240, 240, 240));
  EXPECT_EQ(pixel(0, Main::kSpeciesColumn, 2, 2), 0xD5E8FFu);  // the selected row
  EXPECT_EQ(pixel(1, Main::kSpeciesColumn, 2, 2), kWhite);
  EXPECT_EQ(pixel(1, kStrip, 1, 15), kBlack);  // median bars stand in the selected row alone
  EXPECT_EQ(pixel(1, kStrip, 2, 15), kWhite);
  EXPECT_EQ(pixel(0, Main::kRColumn, 3, 8), 0x999999u);
  EXPECT_EQ(pixel(0, Main::kRColumn, 17, 22), 0x999999u);
}

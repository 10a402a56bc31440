// Layout of Main, species list, keys.

#include "mainwindow/CursorGeometry.h"
#include "platform/values/Numbers.h"
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

TEST_F(MainWindowTest, ExactPixelsRepaintsTheCompositeFirst) {
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
  EXPECT_EQ(main().LB_Phases.Height(), 700 - 423 - 15);
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

TEST_F(MainWindowTest, OnlyKeysAndALoadScrollTheSpeciesList) {
  LoadThree(40, 40);
  Main& m = main();
  const auto third = [&] { return user::CellRect(m.SpeciesLB, 2, Main::kSpeciesColumn); };
  const Rect cell = third();
  ASSERT_GT(cell.y + cell.height, m.SpeciesLB.Height()) << "the row is seen in part";
  user::Click(m.SpeciesLB, cell.x + 20, cell.y + 8);
  EXPECT_EQ(m.SelectedRow, 2);
  EXPECT_EQ(third(), cell);
  user::Key(m, "Down");
  user::Key(m, "Up");
  EXPECT_EQ(m.SelectedRow, 2);
  EXPECT_LT(third().y, cell.y);
  m.SpeciesLB.Reveal(0);
  LoadThree(40, 40);
  EXPECT_LT(third().y, cell.y);
}

TEST_F(MainWindowTest, ThePhasesListLeavesTheArrowsToTheMap) {
  LoadThree(40, 40);
  user::ClickCell(main().LB_Phases, 0, 4, 5, 5);
  for (const int row : {1, 2, 0}) {
    user::Key(main(), "Down");
    EXPECT_EQ(main().SelectedRow, row);
  }
}

TEST_F(MainWindowTest, MenuItemsThatCanBeCheckedLookAlike) {
  main().Show();
  for (const bool again : {false, true}) {
    for (const char* item : {"OptionsRawImage", "OptionsSmooth3", "OptionsSmooth25", "Colorsc1", "Colorsc11",
                             "Window50", "Window100", "SizeExact"})
      EXPECT_TRUE(user::HasCheckBox(item)) << item << again;
    for (const char* item : {"FileSaveImage", "MenuWindowMain"}) EXPECT_FALSE(user::HasCheckBox(item)) << item;
    for (const char* item : {"Colorsc1", "Window50", "SizeExact"}) user::ChooseMenu(item);
  }
}

TEST_F(MainWindowTest, TheMenuBarFollowsItsFont) {
  LoadThree(40, 40);
  for (const int pixels : {30, 12}) {
    user::ChangeMenuFont(pixels);
    EXPECT_TRUE(user::MenuTitlesFit(main())) << pixels;
    EXPECT_TRUE(user::MenuTitlesFit(overview())) << pixels;
    EXPECT_EQ(main().Height(), 552);
    EXPECT_EQ(user::Shot(main())->Height(), 552);
    user::MouseMove(main().cvTIF, 3, 4);
    EXPECT_EQ(main().SpeciesLB.Cell(1, Main::kCurColumn).Utf8(), std::to_string(Level(1, 3, 4)));
  }
}

TEST_F(MainWindowTest, ListsHaveAFrameOnAllSides) {
  LoadThree(40, 40);
  const auto shot = user::Shot(main());
  const double scale = shot->Height() / static_cast<double>(main().Height());
  const auto pixel = [&](double x, double y) {
    return shot->RGBSurface().Pixel(static_cast<int>(Round(x * scale)), static_cast<int>(Round(y * scale)));
  };
  for (const Listbox* list : {&main().SpeciesLB, &main().LB_Phases}) {
    const int left = list->Left(), top = list->Top(), right = left + list->Width(), bottom = top + list->Height();
    const Color frame = pixel(left + 20, top);
    EXPECT_NE(frame, kWhite);
    EXPECT_EQ(pixel(left + 20, bottom - 1 / scale), frame);
    EXPECT_EQ(pixel(left, top + 60), frame);
    EXPECT_EQ(pixel(right - 1 / scale, top + 60), frame);
  }
}

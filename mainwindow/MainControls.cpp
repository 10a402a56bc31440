// The controls of Main: layout and event handlers.

#include "appcore/Menu.h"
#include "mainwindow/Main.h"
#include "platform/widgets/Application.h"

using namespace platform;

Main::Main()
    : SingletonWindow({.title = "Main",
                       .width = 970,
                       .height = 552,
                       .minWidth = 970,
                       .minHeight = 552,
                       .maxWidth = 970,
                       .maxHeight = 32000,
                       .visible = false,
                       .menuBar = &Menu::Menu::Instance()}) {
  Clicks.Redim(0, -1, 255);
  RangeLo.Redim(0, -1);
  RangeHi.Redim(0, -1);
  CreateControls();
  Layout();
  BindControls();
  AddMenuHandlers();
}

void Main::CreateControls() {
  const auto LT = kLockLeftTop;
  const auto no = kLockNone;
  // In the order of creation, which is the stacking order.
  const ControlRow rows[] = {
      // control, name, left, top, width, height, locks, page, text, about
      {&PPbuttons, "PPbuttons", 0, 298, 970, 116, no, kNoPage, "", "Buttons"},
      {&SpeciesName, "SpeciesName", 64, 270, 250, 20, LT, kNoPage, "", "Species shown"},
      {&SpeciesLB, "SpeciesLB", 20, 423, 574, 114, LT, kNoPage, "", "Species list"},
      {&cvColorBar, "cvColorBar", 20, 14, 20, 256, no, kNoPage, "", "Color bar"},
      {&Progress, "Progress", 20, 351, 300, 12, LT, kPageLoading, "", "Progress"},
      {&cvTIF, "cvTIF", 60, 14, 256, 256, LT, kNoPage, "", "Map of the selected species"},
      {&STstatus, "STstatus", 332, 346, 160, 20, LT, kPageLoading, "Loading Images...", "Progress"},
      {&PB_RGB, "PB_RGB", 870, 324, 80, 18, LT, kPageNormal, "RGB / CMY", "Opens the composite of three species"},
      {&PB_SaveImage, "PB_SaveImage", 870, 379, 80, 18, LT, kPageNormal, "Save Image", "Saves this map"},
      {&BB_sel_color, "BB_sel_color", 20, 365, 100, 18, no, kPageDrawing, "Drawing Color",
       "Chooses the color of the drawing"},
      {&PBundraw, "PBundraw", 254, 321, 80, 18, LT, kPageDrawing, "Done", "Leaves the drawing mode"},
      {&PBdrawUndo, "PBdrawUndo", 20, 321, 80, 18, no, kPageDrawing, "Undo", "Removes the last stroke of the drawing"},
      {&PBdrawClearAll, "PBdrawClearAll", 139, 321, 80, 18, no, kPageDrawing, "Clear All", "Removes the whole drawing"},
      {&BBcursorX, "BBcursorX", 170, 325, 24, 24, no, kPageNormal, "", "Cursor: cross"},
      {&BBcursorArrow, "BBcursorArrow", 147, 325, 24, 24, no, kPageNormal, "", "Cursor: arrow"},
      {&BBcursorCircles, "BBcursorCircles", 193, 325, 24, 24, no, kPageNormal, "", "Cursor: circle"},
      {&StaticText1, "StaticText1", 137, 354, 100, 46, no, kPageNormal, "Shift - Color\nCtrl - Larger\nOpt - Smaller",
       "Keys that change the cursor"},
      {&CB_ScaleUp, "CB_ScaleUp", 33, 320, 80, 18, LT, kPageNormal, "Scale Up",
       "Stretches each map to its own highest level"},
      {&PB_ResetColors, "PB_ResetColors", 30, 379, 80, 18, LT, kPageNormal, "Reset", "Sets the color scaling to 0"},
      {&Slider_colors, "Slider_colors", 33, 347, 60, 18, LT, kPageNormal, "", "Color scaling"},
      {&ST_ScaleColors, "ST_ScaleColors", 90, 345, 30, 20, no, kPageNormal, "0", "Value of the color scaling"},
      {&PBdraw, "PBdraw", 254, 321, 80, 18, LT, kPageNormal, "Edit", "Draws on the maps"},
      {&CB_ShowDrawing, "CB_ShowDrawing", 254, 350, 80, 18, no, kPageNormal, "Show", "Shows the drawing on the maps"},
      {&PB_AllSpecies, "PB_AllSpecies", 478, 321, 80, 18, no, kPageNormal, "Show All",
       "Opens a window for each species"},
      {&PB_SpeciesUpdate, "PB_SpeciesUpdate", 478, 350, 80, 18, no, kPageNormal, "Update",
       "Brings the species windows up to date"},
      {&PB_SpeciesClose, "PB_SpeciesClose", 478, 379, 80, 18, no, kPageNormal, "Close All",
       "Closes the species windows"},
      {&PB_ClearClickM, "PB_ClearClickM", 366, 321, 80, 18, no, kPageNormal, "Clear All",
       "Click marks: does nothing yet"},
      {&Checkbox1, "Checkbox1", 702, 379, 80, 18, no, kPageNormal, "Show", "Phases: does nothing yet"},
      {&PB_PhasesEdit, "PB_PhasesEdit", 702, 321, 80, 18, no, kPageNormal, "Edit", "Phases: does nothing yet"},
      {&PB_PhasesUpdate, "PB_PhasesUpdate", 702, 350, 80, 18, no, kPageNormal, "Update", "Phases: does nothing yet"},
      {&StaticText2, "StaticText2", 702, 301, 80, 14, no, kPageNormal, "Phases"},
      {&StaticText3, "StaticText3", 590, 301, 80, 14, no, kPageNormal, "", "Empty heading"},
      {&StaticText4, "StaticText4", 478, 301, 80, 14, no, kPageNormal, "Species"},
      {&StaticText5, "StaticText5", 366, 301, 80, 14, no, kPageNormal, "Click Marks"},
      {&StaticText6, "StaticText6", 254, 301, 80, 14, no, kPageNormal, "Drawings"},
      {&StaticText7, "StaticText7", 147, 301, 80, 14, no, kPageNormal, "Cursor"},
      {&StaticText8, "StaticText8", 30, 301, 80, 14, no, kPageNormal, "Color Scaling"},
      {&LB_Phases, "LB_Phases", 606, 423, 300, 114, LT, kNoPage, "", "Phases list"},
  };
  for (const ControlRow& row : rows) {
    CreateControl(row);
    if (row.control == &PPbuttons) PPbuttons.PanelCount(3);
    if (row.page != kNoPage) row.control->Font(TextFont::SmallSystem);
    if (row.control == &PBdrawClearAll) CreateControl(Timer1, "Timer1");
  }
}

void Main::Layout() {
  SpeciesLB.Setup({.columnWidths = "0,0,130,257,50,30,50,21,21",
                   .headings = {"#", "invSp", "Species", "Click Marks", "Min", "Cur", "Max", "R", "M"},
                   .defaultRowHeight = 32,
                   .gridLines = true});
  LB_Phases.Setup({.columnWidths = "0,40,40,40,*", .headings = {"#", "Edit", "Show", "Color", "Name"}});
  Progress.Maximum(100);
  STstatus.Font(TextFont::System);
  STstatus.TextColor(RGB(0xFF, 0, 0));
  Slider_colors.Setup({.minimum = -10, .value = 0, .maximum = 10, .lineStep = 1, .pageStep = 1, .liveScroll = true});
  ST_ScaleColors.Align(TextAlign::Center);
  ST_ScaleColors.Enabled(false);
  StaticText1.MultiLine(true);
  for (StaticText* heading :
       {&StaticText2, &StaticText3, &StaticText4, &StaticText5, &StaticText6, &StaticText7, &StaticText8})
    heading->Bold(true);
  PBundraw.Default(true);
  CB_ShowDrawing.Value(true);
}

void Main::BindControls() {
  cvColorBar.Paint = Handler(this, &Main::cvColorBar_Paint);

  cvTIF.Open = Handler(this, &Main::cvTIF_Open);
  cvTIF.Paint = Handler(this, &Main::cvTIF_Paint);
  cvTIF.MouseEnter = Handler(this, &Main::cvTIF_MouseEnter);
  cvTIF.MouseExit = Handler(this, &Main::cvTIF_MouseExit);
  cvTIF.MouseMove = Handler(this, &Main::cvTIF_MouseMove);
  cvTIF.MouseDown = Handler(this, &Main::cvTIF_MouseDown);
  cvTIF.MouseDrag = Handler(this, &Main::cvTIF_MouseDrag);
  cvTIF.MouseUp = Handler(this, &Main::cvTIF_MouseUp);
  Timer1.Action = Handler(this, &Main::Timer1_Action);

  CB_ScaleUp.Action = Handler(this, &Main::CB_ScaleUp_Action);
  Slider_colors.ValueChanged = Handler(this, &Main::Slider_colors_ValueChanged);
  PB_ResetColors.Action = Handler(this, &Main::PB_ResetColors_Action);

  BBcursorX.Open = Handler(this, &Main::BBcursorX_Open);
  BBcursorX.Action = Handler(this, &Main::BBcursorX_Action);
  BBcursorArrow.Open = Handler(this, &Main::BBcursorArrow_Open);
  BBcursorArrow.Action = Handler(this, &Main::BBcursorArrow_Action);
  BBcursorCircles.Open = Handler(this, &Main::BBcursorCircles_Open);
  BBcursorCircles.Action = Handler(this, &Main::BBcursorCircles_Action);

  PBdraw.Action = Handler(this, &Main::PBdraw_Action);
  PBundraw.Action = Handler(this, &Main::PBundraw_Action);
  PBdrawUndo.Action = Handler(this, &Main::PBdrawUndo_Action);
  PBdrawClearAll.Action = Handler(this, &Main::PBdrawClearAll_Action);
  CB_ShowDrawing.Open = Handler(this, &Main::CB_ShowDrawing_Open);
  CB_ShowDrawing.Action = Handler(this, &Main::CB_ShowDrawing_Action);
  BB_sel_color.Open = Handler(this, &Main::BB_sel_color_Open);
  BB_sel_color.Action = Handler(this, &Main::BB_sel_color_Action);

  PB_AllSpecies.Action = Handler(this, &Main::PB_AllSpecies_Action);
  PB_SpeciesUpdate.Action = Handler(this, &Main::PB_SpeciesUpdate_Action);
  PB_SpeciesClose.Action = Handler(this, &Main::PB_SpeciesClose_Action);
  PB_RGB.Action = Handler(this, &Main::PB_RGB_Action);
  PB_SaveImage.Action = Handler(this, &Main::PB_SaveImage_Action);

  SpeciesLB.Open = Handler(this, &Main::SpeciesLB_Open);
  SpeciesLB.CellClick = Handler(this, &Main::SpeciesLB_CellClick);
  SpeciesLB.CellTextPaint = Handler(this, &Main::SpeciesLB_CellTextPaint);
  SpeciesLB.CellBackgroundPaint = Handler(this, &Main::SpeciesLB_CellBackgroundPaint);
  SpeciesLB.GotFocus = Handler(this, &Main::SpeciesLB_GotFocus);
  LB_Phases.Open = Handler(this, &Main::LB_Phases_Open);
}

void Main::AddMenuHandlers() {
  bool (Main::*const colors[])() = {
      &Main::_Colorsc1_Action,  &Main::_Colorsc2_Action,  &Main::_Colorsc3_Action,  &Main::_Colorsc4_Action,
      &Main::_Colorsc5_Action,  &Main::_Colorsc6_Action,  &Main::_Colorsc7_Action,  &Main::_Colorsc8_Action,
      &Main::_Colorsc9_Action,  &Main::_Colorsc10_Action, &Main::_Colorsc11_Action, &Main::_Colorsc12_Action,
      &Main::_Colorsc13_Action, &Main::_Colorsc14_Action, &Main::_Colorsc15_Action, &Main::_Colorsc16_Action,
      &Main::_Colorsc17_Action, &Main::_Colorsc18_Action, &Main::_Colorsc19_Action, &Main::_Colorsc20_Action};
  int n = 0;
  for (auto color : colors) AddMenuHandler("Colorsc" + Str(++n), Handler(this, color));
  AddMenuHandler("FileClose", Handler(this, &Main::_FileClose_Action));
  AddMenuHandler("FileSaveImage", Handler(this, &Main::_FileSaveImage_Action));
  AddMenuHandler("EditUndo", Handler(this, &Main::_EditUndo_Action));
}

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "mainwindow/MapView.h"
#include "platform/pictures/PictureSequence.h"
#include "platform/widgets/Buttons.h"
#include "platform/widgets/Canvas.h"
#include "platform/widgets/Displays.h"
#include "platform/widgets/Inputs.h"
#include "platform/widgets/Listbox.h"
#include "platform/widgets/Timer.h"
#include "platform/widgets/Window.h"
#include "stack/DisplayCurve.h"
#include "stack/PlaneStack.h"

/// The working window: one species of the loaded cluster on cvTIF, and the stack behind it.
///
///   +----+--------------------------------------------------------------+
///   | b  |                                                              |
///   | a  |  cvTIF                                                       |
///   | r  |                                                              |
///   |    +----------------                                              |
///   |     SpeciesName                                                   |
///   |  PPbuttons: 0 loading | 1 normal | 2 drawing                      |
///   |  Color Scaling  Cursor  Drawings  Click Marks  Species     Phases |
///   |  SpeciesLB                                   LB_Phases            |
///   +-------------------------------------------------------------------+
///
/// The handlers are defined by subject: loading, smoothing and rendering in stack/, saving in output/, species windows
/// in composite/, the rest beside this file.
class Main : public platform::SingletonWindow<Main>, public MapWindow {
 public:
  Main();

  // ---- State --------------------------------------------------------------------------------------------------------

  std::int32_t SelectedRow = -1;  ///< species on display, which is also the marked row of SpeciesLB
  platform::Array3<bool> Clicks;  ///< click marks: phase, species, grey level
  std::int32_t InTIFwidth = 0;    ///< width of the stack, image pixels
  std::int32_t InTIFheight = 0;
  PlaneStack TIFarray;   ///< grey levels as displayed, after smoothing: species, x, y
  std::int32_t InX = 0;  ///< image pixel of the last press or accepted drag step on cvTIF
  std::int32_t InY = 0;
  platform::Ref<platform::Picture> currTIF;  ///< the shown species in colour; nil while no stack is being shown
  std::int32_t SelectedLUT = 10;             ///< colour table in use, a row of Globals::lut
  PlaneStack TIFarrOriginal;                 ///< grey levels as loaded, never smoothed
  platform::Array2<double> temp1;            ///< smoothing work planes, x by y; used only by a level below 0
  platform::Array2<double> temp2;
  std::int32_t SmoothLevel = 0;         ///< passes of smoothing applied; 0 is the raw image
  bool TIFready = false;                ///< true only while a complete stack is loaded
  std::int32_t PhaseEditNb = 0;         ///< phase plane of Clicks that is edited; stays 0
  std::int32_t WindowDefaultWidth = 0;  ///< size of the window at opening
  std::int32_t WindowDefaultHeight = 0;
  platform::Array2<std::int32_t> RangeLo;  ///< left and right bracket of the strips: phase, species
  platform::Array2<std::int32_t> RangeHi;
  platform::String currFileNb;                   ///< number of the catalogue row that is in the stack
  platform::Array<bool> TIFexists;               ///< species held by the stack
  platform::Array<std::int32_t> TIFmax;          ///< highest level of each species in TIFarray, -1 if it is not held
  platform::String FrameName;                    ///< name of the loaded cluster
  platform::RGBSurface currTIFrgb;               ///< pixel access to currTIF
  platform::Ref<platform::Picture> drawcurrTIF;  ///< currTIF with the drawing on it, as the last paint composed it
  platform::RGBSurface xdrawcurrTIFrgb;          ///< never assigned
  bool IsActive = false;                         ///< this is the active window
  std::int32_t CursorChosen = 0;                 ///< 0 not chosen yet, 1 arrow, 2 X, 3 circles
  std::int32_t dbtimer = 0;                      ///< Ticks at which the timing shown in the title began

  // ---- Controls, from top to bottom ---------------------------------------------------------------------------------

  platform::Canvas cvColorBar;
  platform::Canvas cvTIF;
  platform::StaticText SpeciesName;

  platform::PagePanel PPbuttons;
  static constexpr int kPageLoading = 0, kPageNormal = 1, kPageDrawing = 2;
  // Page 0.
  platform::ProgressBar Progress;
  platform::StaticText STstatus;
  // Page 1, group by group; the last four of these do nothing yet.
  platform::StaticText StaticText8, StaticText7, StaticText6, StaticText5, StaticText4, StaticText3, StaticText2;
  platform::CheckBox CB_ScaleUp;
  platform::Slider Slider_colors;
  platform::StaticText ST_ScaleColors;
  platform::PushButton PB_ResetColors;
  platform::BevelButton BBcursorArrow, BBcursorX, BBcursorCircles;
  platform::StaticText StaticText1;
  platform::PushButton PBdraw;
  platform::CheckBox CB_ShowDrawing;
  platform::PushButton PB_AllSpecies, PB_SpeciesUpdate, PB_SpeciesClose;
  platform::PushButton PB_RGB, PB_SaveImage;
  platform::PushButton PB_ClearClickM, PB_PhasesEdit, PB_PhasesUpdate;
  platform::CheckBox Checkbox1;
  // Page 2.
  platform::PushButton PBdrawUndo, PBdrawClearAll, PBundraw;
  platform::BevelButton BB_sel_color;

  platform::Listbox SpeciesLB;
  static constexpr int kSpeciesColumn = 2, kMarksColumn = 3, kCurColumn = 5, kRColumn = 7, kMColumn = 8;
  platform::Listbox LB_Phases;
  platform::Timer Timer1{50};  ///< polls the modifier keys while the pointer is on cvTIF

  // ---- The window ---------------------------------------------------------------------------------------------------

  void Event_Open() override;
  bool Event_CancelClose(bool appQuitting) override;
  void Event_Resized() override;
  void Event_Activate() override { IsActive = true; }
  void Event_Deactivate() override { IsActive = false; }
  void Event_EnableMenuItems() override;
  /// Arrow down and up step through the species.
  bool Event_KeyDown(const platform::String& key) override;
  /// Loads dropped files without the catalogue. Never called: the window accepts no file type.
  void Event_DropObject(platform::DragItem& items, int action) override;
  void CondShortName();

  void WResize() override;
  void ProgressShow();  ///< the page with the progress bar
  void ProgressHide();  ///< the page of the working buttons
  /// Closes every species window.
  void CloseAllSpeciesWindows();

  // ---- Stack --------------------------------------------------------------------------------------------------------

  /// Loads the cluster of a catalogue row into the stack and shows it; a negative row hides the window. A failure is
  /// reported with the number of the stage at which it occurred, and ends the program.
  void Open_LoadNew(std::int32_t row);
  std::int32_t TIFubound() const { return TIFexists.Ubound(); }
  std::int32_t PhaseUbound() const { return 0; }
  platform::String tf(bool flag) const { return flag ? "t" : "f"; }
  /// Rebuilds TIFarray from TIFarrOriginal with `level` passes of smoothing, showing each species as it is done.
  void Smooth(std::int32_t level);
  /// The display curve of a species, up to its highest level if `scaled` and to 255 otherwise; all zero for species -1.
  Curve SpeciesCurve(std::int32_t species, std::int32_t setting, bool scaled) const;
  /// Recolours currTIF for SelectedRow and repaints it.
  void Update_cvTIF();
  /// To be called after a change of SelectedLUT.
  void LUTchanged();
  /// Shows another species: marks its row of the list and recolours the map.
  void SelectSpecies(std::int32_t species);

  // ---- Canvas, cursor, species list, drawing ------------------------------------------------------------------------

  MapView Map() override { return {MapView::In::Main, cvTIF, currTIF, drawcurrTIF}; }
  /// Whether cvTIF shows a map; a plain grey square otherwise.
  bool ShowsMap() const;
  static constexpr platform::Color kNoMap = 0x999999;
  /// Median grey level of a species' click marks; 0 if it has none.
  std::int32_t MedianClick(std::int32_t row);
  /// Removes the last stroke.
  void DrawUndo();
  /// Saves the shown species as a PNG file in the output folder.
  void SaveImage();

  // ---- Menu handlers ------------------------------------------------------------------------------------------------

  void AddMenuHandlers();
  bool _FileClose_Action();
  bool _FileSaveImage_Action();
  bool _EditUndo_Action();
  bool _Colorsc1_Action();
  bool _Colorsc2_Action();
  bool _Colorsc3_Action();
  bool _Colorsc4_Action();
  bool _Colorsc5_Action();
  bool _Colorsc6_Action();
  bool _Colorsc7_Action();
  bool _Colorsc8_Action();
  bool _Colorsc9_Action();
  bool _Colorsc10_Action();
  bool _Colorsc11_Action();
  bool _Colorsc12_Action();
  bool _Colorsc13_Action();
  bool _Colorsc14_Action();
  bool _Colorsc15_Action();
  bool _Colorsc16_Action();
  bool _Colorsc17_Action();
  bool _Colorsc18_Action();
  bool _Colorsc19_Action();
  bool _Colorsc20_Action();

  // ---- Control handlers ---------------------------------------------------------------------------------------------

  void cvColorBar_Paint(platform::Graphics& g);

  void cvTIF_Open();
  void cvTIF_Paint(platform::Graphics& g);
  void cvTIF_MouseEnter();
  void cvTIF_MouseExit();
  void cvTIF_MouseMove(int X, int Y);
  bool cvTIF_MouseDown(int X, int Y);
  void cvTIF_MouseDrag(int X, int Y);
  void cvTIF_MouseUp(int X, int Y);
  void Timer1_Action();

  void CB_ScaleUp_Action();
  void Slider_colors_ValueChanged();
  void PB_ResetColors_Action();
  void BBcursorX_Open();
  void BBcursorX_Action();
  void BBcursorArrow_Open();
  void BBcursorArrow_Action();
  void BBcursorCircles_Open();
  void BBcursorCircles_Action();
  void PBdraw_Action();
  void PBundraw_Action();
  void PBdrawUndo_Action();
  void PBdrawClearAll_Action();
  void CB_ShowDrawing_Open();
  void CB_ShowDrawing_Action();
  void BB_sel_color_Open();
  void BB_sel_color_Action();
  void PB_AllSpecies_Action();
  void PB_SpeciesUpdate_Action();
  void PB_SpeciesClose_Action();
  void PB_RGB_Action();
  void PB_SaveImage_Action();

  void SpeciesLB_Open();
  bool SpeciesLB_CellClick(int row, int column, int x, int y);
  bool SpeciesLB_CellTextPaint(platform::Graphics& g, int row, int column, int x, int y);
  bool SpeciesLB_CellBackgroundPaint(platform::Graphics& g, int row, int column);
  void SpeciesLB_GotFocus();
  void LB_Phases_Open();

 private:
  void Layout();
  void CreateControls();
  void BindControls();

  // Loading and smoothing.
  struct ClusterFiles;
  void LoadCluster(std::int32_t row, int& code);
  ClusterFiles GatherFiles(std::int32_t row);
  void MatchSpecies(std::int32_t row, ClusterFiles& files);
  void CheckFlags(const ClusterFiles& files);
  void CheckMemory() const;
  void ResizeStack(int species);
  void FillSpeciesRows(int species);
  platform::PictureSequence OpenOthers(const ClusterFiles& files, int first) const;
  bool LoadPictures(const ClusterFiles& files, int first, const platform::Ref<platform::Picture>& opened,
                    platform::PictureSequence& others);

  /// Smooths the species from step `step` on, as many as there are cores; returns the step after the last one.
  int SmoothFrom(int step, std::int32_t startRow, std::int32_t level);
  void ShowSmoothedSpecies(std::int32_t species, int step);
  void SmoothFromWorkPlane(std::int32_t species);

  // The shown species.
  /// Makes a species the one on display and moves the mark of its row in the list; the map stays as it is.
  void MoveSelection(std::int32_t species);
  /// Colours a species by the slider, the scaling and the colour table in use.
  void ColorSpecies(std::int32_t species, platform::PlaneView<platform::OpaqueColor> target) const;
  /// Name of a species as shown with its map, followed by the level of smoothing if there is any.
  platform::String SpeciesTitle(std::int32_t species) const;
  bool ChooseColorTable(int n);

  // Species windows and composite.
  /// Closes the species windows and opens one for each species of the stack, in rows from the bottom left of the
  /// screen.
  void ShowAllSpecies();
  void HideComposite();

  // Mouse and drawing.
  void MarkClicks();
  /// Restores the size of the circle from before Control was pressed, if that was for a shortcut; true if it did.
  bool ForgetShortcut();
  void BeginStroke(int X, int Y);
  void ContinueStroke(int X, int Y);
  void PaintClickStrip(platform::Graphics& g, std::int32_t row);

  std::optional<std::int32_t> sizeBeforeControl;  ///< fCursorSize when Control was pressed, while it is held
};

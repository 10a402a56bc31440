#include "catalogue/WindowOverview.h"

#include "appcore/Globals.h"
#include "appcore/Menu.h"
#include "mainwindow/Main.h"
#include "platform/values/Numbers.h"
#include "platform/widgets/Application.h"

using namespace platform;

WindowOverview::WindowOverview()
    : SingletonWindow({.title = "Overview",
                       .width = 630,
                       .height = 474,
                       .minWidth = 500,
                       .minHeight = 300,
                       .menuBar = &Menu::Menu::Instance()}) {
  CreateControls();
  AddMenuHandlers();
}

void WindowOverview::CreateControls() {
  Window::CreateControls({
      // control, name, left, top, width, height, locks, page, text, about
      {&ListBox1, "ListBox1", 20, 14, 590, 408, kLockAll, kNoPage, "", "List of clusters"},
      {&PBdeleteselection, "PBdeleteselection", 20, 434, 120, 20, kLockLeftBottom, kNoPage, "Delete Selection",
       "Removes the selected clusters from the list"},
      {&STredmissing, "STredmissing", 152, 434, 160, 20, kLockLeftBottom, kNoPage, "Species in Red: Missing"},
      {&CBnoSpeciesExtensions, "CBnoSpeciesExtensions", 324, 434, 150, 20, kLockLeftBottom, kNoPage,
       "Short Species Names", "Removes numbers and short suffixes from the names"},
  });
  ListBox1.Setup({.columnWidths = "0,200,*",
                  .headings = {"x", "File/Cluster Name", "Species Contained"},
                  .multipleSelection = true,
                  .hint = "Drop the maps of one field of view here"});
  PBdeleteselection.Enabled(false);
  CBnoSpeciesExtensions.Enabled(false);
  STredmissing.Visible(false);

  ListBox1.Open = Handler(this, &WindowOverview::ListBox1_Open);
  ListBox1.Change = Handler(this, &WindowOverview::ListBox1_Change);
  ListBox1.HeaderPressed = Handler(this, &WindowOverview::ListBox1_HeaderPressed);
  ListBox1.CellTextPaint = Handler(this, &WindowOverview::ListBox1_CellTextPaint);
  ListBox1.CellBackgroundPaint = Handler(this, &WindowOverview::ListBox1_CellBackgroundPaint);
  ListBox1.CellTip = Handler(this, &WindowOverview::ListBox1_CellTip);
  ListBox1.CellAction = Handler(this, &WindowOverview::ListBox1_CellAction);
  PBdeleteselection.Action = Handler(this, &WindowOverview::PBdeleteselection_Action);
  CBnoSpeciesExtensions.Action = Handler(this, &WindowOverview::CBnoSpeciesExtensions_Action);
}

void WindowOverview::AddMenuHandlers() {
  AddMenuHandler("EditSelectAll", Handler(this, &WindowOverview::_EditSelectAll_Action));
  AddMenuHandler("FileClose", Handler(this, &WindowOverview::_FileClose_Action));
}

void WindowOverview::Event_Open() {
  for (const char* type :
       {"image/tiff", "image/x-bmp", "Image/png", "Image/pict", "Image/gif", "Image/jpeg", "data/vantage-xray"})
    AcceptFileDrop(type);
  Globals::FileDropCount = 0;
}

bool WindowOverview::Event_CancelClose(bool appQuitting) {
  if (appQuitting) return false;
  Hide();
  return true;
}

bool WindowOverview::_EditSelectAll_Action() {
  for (int row = 0; row < ListBox1.ListCount(); ++row) ListBox1.Selected(row, true);
  return true;
}

bool WindowOverview::_FileClose_Action() {
  Hide();
  return true;
}

// The list.

void WindowOverview::ListBox1_Open() {
  ListBox1.ColumnAlignment(kCluster, Listbox::kAlignLeft);
  ListBox1.ColumnAlignment(kSpecies, Listbox::kAlignLeft);
  ListBox1.ColumnType(kCluster, Listbox::kTypeCheckBox);
}

void WindowOverview::ListBox1_Change() { PBdeleteselection.Enabled(ListBox1.SelCount() > 0); }

bool WindowOverview::ListBox1_HeaderPressed(int column) {
  // Equal cells of the pressed column are then ordered by row number, compared as text.
  if (column > 0) ListBox1.PressHeader(kNumber);
  return false;
}

bool WindowOverview::ListBox1_CellTextPaint(Graphics& g, int row, int column, int x, int y) {
  g.UseOldRenderer = false;
  // If UpdateShortNames fails, for instance because a map file has gone, the rows just added have no entry in the
  // table: their cells stay empty until an update succeeds.
  if (column != kSpecies || row > Globals::oooSpeciesExist.Ubound(1)) return false;
  int pen = x;
  const Array<String>& species = Globals::oooShortSpeciesNames;
  for (int i = 0; i <= species.Ubound(); ++i) {
    g.ForeColor = Globals::oooSpeciesExist(row, i) ? kBlack : RGB(0xFF, 0, 0);
    if (i == species.Ubound()) {
      g.DrawString(species(i), pen, y);
    } else {
      const String text = species(i) + ", ";
      g.DrawString(text, pen, y);
      pen = ToInt32(pen + g.StringWidth(text));
    }
  }
  return true;
}

std::optional<String> WindowOverview::ListBox1_CellTip(int row, int column) {
  if (column != kSpecies) return std::nullopt;
  if (row > Globals::oooSpeciesExist.Ubound(1)) return String();
  Array<String> present, missing;
  for (int i = 0; i <= Globals::oooShortSpeciesNames.Ubound(); ++i)
    (Globals::oooSpeciesExist(row, i) ? present : missing).Append(Globals::oooShortSpeciesNames(i));
  const String tip = "Present: " + Join(present, ", ");
  return missing.Empty() ? tip : tip + EndOfLine() + "Missing: " + Join(missing, ", ");
}

bool WindowOverview::ListBox1_CellBackgroundPaint(Graphics& g, int row, int column) {
  g.UseOldRenderer = true;
  if (row % 2 == 1) {
    g.ForeColor = RGB(0xED, 0xF3, 0xFE);
    g.FillRect(0, 0, g.Width(), g.Height());
  }
  if (column == kCluster) {
    g.ForeColor = RGB(0xD9, 0xD9, 0xD9);
    g.DrawLine(g.Width() - 1, 0, g.Width() - 1, g.Height());
  }
  return false;
}

void WindowOverview::ListBox1_CellAction(int row, int column) {
  if (column != kCluster) return;
  // The boxes act as radio buttons that may all be off; the tag remembers the checked row.
  const bool checked = ListBox1.CellCheck(row, kCluster);
  const bool wasShown = ListBox1.CellTag(row, kCluster);
  if (checked == wasShown) return;
  UncheckAll();
  if (checked) {
    ListBox1.CellCheck(row, kCluster, true);
    ListBox1.CellTag(row, kCluster, true);
  }
  CheckForDisplayFileChange();
}

void WindowOverview::UncheckAll() {
  for (int row = 0; row < ListBox1.ListCount(); ++row) {
    ListBox1.CellCheck(row, kCluster, false);
    ListBox1.CellTag(row, kCluster, false);
  }
}

void WindowOverview::CheckForDisplayFileChange() {
  int shown = -1;
  for (int row = 0; row < ListBox1.ListCount(); ++row)
    if (ListBox1.CellCheck(row, kCluster)) shown = row;
  ListBox1.Refresh();
  Main::Instance().Open_LoadNew(shown);
}

// Deleting rows.

void WindowOverview::PBdeleteselection_Action() { RemoveSpecies(); }

void WindowOverview::RemoveSpecies() {
  Array<int> rows;
  for (int row = 0; row < ListBox1.ListCount(); ++row)
    if (ListBox1.Selected(row)) rows.Append(row);
  // From the last row to the first, so that the remaining numbers stay valid.
  while (!rows.Empty()) Remove1Species(rows.Pop());
  UpdateShortNames();
  CheckForDisplayFileChange();
}

void WindowOverview::Remove1Species(int row) {
  auto& files = Globals::ooo;
  for (int r = row + 1; r <= files.Ubound(1); ++r)
    for (int c = 0; c <= files.Ubound(2); ++c) files(r - 1, c) = files(r, c);
  files.Redim(files.Ubound(1) - 1, files.Ubound(2));
  ListBox1.RemoveRow(row);
}

void WindowOverview::CBnoSpeciesExtensions_Action() { UpdateShortNames(); }

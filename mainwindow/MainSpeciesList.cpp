// The species list: selection, click marks, the strips.

#include "mainwindow/Main.h"
#include "mainwindow/MedianMark.h"
#include "platform/widgets/Dialogs.h"

using namespace platform;

namespace {

// The strip of a species within its cell: one pixel per grey level.
constexpr int kStripLeft = 0;
constexpr int kStripTop = 5;
constexpr int kStripWidth = 256;
constexpr int kStripHeight = 22;
constexpr Color kSelected = 0xD5E8FF;
constexpr Color kStripBorder = RGB(240, 240, 240);
constexpr Color kMedian = 0x00FF00;
constexpr Color kMissing = RGB(255, 0, 0);
constexpr Color kBracket = RGB(255, 0, 0);
constexpr Color kBox = 0x999999;

/// A bracket of the full height of the strip at grey level `x`; the serifs reach `serif` pixels sideways.
void DrawBracket(Graphics& g, int x, int serif) {
  g.DrawLine(x, kStripTop, x, kStripTop + 5);
  g.DrawLine(x, kStripTop, x + serif, kStripTop);
  g.DrawLine(x, kStripTop + 16, x, kStripTop + 21);
  g.DrawLine(x, kStripTop + 21, x + serif, kStripTop + 21);
}

}  // namespace

void Main::SpeciesLB_Open() {
  for (int column = 0; column < SpeciesLB.ColumnCount(); ++column)
    SpeciesLB.ColumnAlignment(column, column == kCurColumn ? Listbox::kAlignRight : Listbox::kAlignCenter);
}

void Main::LB_Phases_Open() {
  LB_Phases.ColumnType(1, Listbox::kTypeCheckBox);
  LB_Phases.ColumnType(2, Listbox::kTypeCheckBox);
  LB_Phases.ColumnType(4, Listbox::kTypeEditable);
  LB_Phases.AddRow("");
  LB_Phases.AddRow("");
}

void Main::SpeciesLB_GotFocus() { SetFocus(); }

bool Main::SpeciesLB_CellClick(int row, int column, int /*x*/, int y) {
  if (column == 1 || column == kSpeciesColumn) {
    if (row != SelectedRow) SelectSpecies(row);
  } else if (column == kMarksColumn && y >= 5 && y <= 27) {
    MedianClick(row);
  }
  return true;
}

bool Main::SpeciesLB_CellTextPaint(Graphics& g, int row, int column, int x, int y) {
  try {
    if ((column != 0 && column != kSpeciesColumn) || row > TIFubound()) return false;
    g.ForeColor = TIFexists(row) ? kBlack : kMissing;
    g.DrawString(SpeciesLB.Cell(row, column), x, y);
    return true;
  } catch (...) {
    ReportFailure("Error in celltextpaint." + EndOfLine() + "Row=" + Str(row) + " TIFubound=" + Str(TIFubound()),
                  "SpeciesLB_CellTextPaint, row " + Str(row) + ", column " + Str(column));
    return false;
  }
}

bool Main::SpeciesLB_CellBackgroundPaint(Graphics& g, int row, int column) {
  try {
    if (row > RangeLo.Ubound(2)) return false;
    if (row == SelectedRow) {
      g.ForeColor = kSelected;
      g.FillRect(0, 0, g.Width(), g.Height());
    }
    if (column == kMarksColumn) {
      PaintClickStrip(g, row);
    } else if (column == kRColumn || column == kMColumn) {
      g.ForeColor = kWhite;
      g.FillRect(3, kStripTop + 3, 15, 15);
      g.ForeColor = kBox;
      g.DrawRect(3, kStripTop + 3, 15, 15);
      g.DrawString(column == kRColumn ? "R" : "M", 6, kStripTop + 15);
    }
  } catch (...) {
    ReportFailure("Something really bad happened in cellbackgroundpaint, but I dont know what.",
                  "SpeciesLB_CellBackgroundPaint, row " + Str(row) + ", column " + Str(column));
  }
  return false;
}

void Main::PaintClickStrip(Graphics& g, std::int32_t row) {
  g.UseOldRenderer = true;
  g.ForeColor = kWhite;
  g.FillRect(kStripLeft, kStripTop, kStripWidth, kStripHeight);
  g.ForeColor = kStripBorder;
  g.DrawRect(kStripLeft, kStripTop, kStripWidth, kStripHeight);
  if (row == SelectedRow) {
    const std::int32_t median = MedianClick(row);
    if (median > 1) {
      g.ForeColor = kMedian;
      g.FillRect(median - 1, kStripTop, 3, kStripHeight);
    }
  }
  g.ForeColor = kBracket;
  DrawBracket(g, RangeLo(PhaseEditNb, row) + kStripLeft, 5);
  DrawBracket(g, RangeHi(PhaseEditNb, row) + kStripLeft, -5);
  g.ForeColor = kBlack;
  for (int level = 0; level <= 255; ++level)
    if (Clicks(PhaseEditNb, row, level)) g.DrawLine(level, 12, level, 19);
  g.UseOldRenderer = false;
}

std::int32_t Main::MedianClick(std::int32_t row) {
  return MedianMark(std::span<const bool, 256>(&Clicks(PhaseEditNb, row, 0), 256));
}

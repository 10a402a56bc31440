#pragma once

#include <optional>
#include <vector>

#include "platform/pictures/Graphics.h"
#include "platform/widgets/Control.h"

namespace platform {

/// Options of a list, fixed at its creation.
struct ListboxSettings {
  String columnWidths{};           ///< logical pixels, comma-separated; "*" takes the rest, 0 hides the column
  std::vector<String> headings{};  ///< one per column; if empty, there is no heading row
  int defaultRowHeight = 20;
  bool gridLines = false;  ///< in both directions
  bool multipleSelection = false;
  String hint{};  ///< shown in the list, and described to assistive technology, while it has no rows
};

/// Rows of cells of text. Rows and columns are numbered from 0; one out of range throws OutOfBoundsException. The
/// colours are always black on white, whatever the desktop's theme.
class Listbox : public RectControl {
 public:
  static constexpr int kAlignLeft = 1, kAlignCenter = 2, kAlignRight = 3;
  static constexpr int kTypeText = 0, kTypeCheckBox = 2, kTypeEditable = 3;

  void Setup(const ListboxSettings& settings);

  void AddRow(const String& text);  ///< text goes into column 0
  void RemoveRow(int row);
  void DeleteAllRows();
  int ListCount() const;
  int ColumnCount() const;
  int SelCount() const;
  bool Selected(int row) const;
  void Selected(int row, bool selected);
  String Cell(int row, int column) const;
  void Cell(int row, int column, const String& text);
  bool CellTag(int row, int column) const;
  void CellTag(int row, int column, bool tag);
  bool CellCheck(int row, int column) const;
  /// Does not raise CellAction.
  void CellCheck(int row, int column, bool checked);
  /// Schedules a repaint of a cell; -1 means all rows or all columns. A row or column that does not exist is ignored.
  void InvalidateCell(int row, int column);
  void ColumnAlignment(int column, int alignment);
  void ColumnType(int column, int type);
  /// Scrolls so that the row is the first visible one, or to the end.
  void ScrollPosition(int row);
  /// Scrolls as little as needed to make the row visible; a row that does not exist is ignored.
  void Reveal(int row);
  /// Acts as a press of the heading by the user: raises HeaderPressed, then sorts by that column, ascending and
  /// regardless of letter case; equal rows keep their order.
  void PressHeader(int column);

  std::function<void()> GotFocus;
  /// A mouse press in a cell, x and y relative to it. Returning true suppresses the normal click.
  std::function<bool(int row, int column, int x, int y)> CellClick;
  /// Draws the text of a cell; x and y are the beginning of the baseline according to the alignment. If it returns
  /// false, the list draws the text.
  std::function<bool(Graphics& g, int row, int column, int x, int y)> CellTextPaint;
  /// Draws behind the text. `g` has the origin and the size of the cell.
  std::function<bool(Graphics& g, int row, int column)> CellBackgroundPaint;
  /// The tool tip of a cell. Without the handler, or if it returns nullopt, the tip is the cell's text if that does not
  /// fit into the cell.
  std::function<std::optional<String>(int row, int column)> CellTip;
  /// The selection changed.
  std::function<void()> Change;
  /// The user pressed a heading. Returning true suppresses the list's own sort. Headings can be pressed only if this is
  /// set.
  std::function<bool(int column)> HeaderPressed;
  /// The user changed a check box or an editable cell.
  std::function<void(int row, int column)> CellAction;

 protected:
  std::unique_ptr<NativeControl> MakeNative(NativeWindow& window, const String& text) override;
};

}  // namespace platform

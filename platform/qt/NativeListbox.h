#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <vector>

#include "platform/qt/NativeControl.h"
#include "platform/widgets/Listbox.h"

namespace platform {

struct NativeListbox;

/// The cells of a list.
class CellModel : public QAbstractTableModel {
 public:
  struct Cell {
    String text;
    bool tag = false;
    bool checked = false;
  };
  struct Column {
    int width = 0;  ///< below 0: takes the rest
    int alignment = Listbox::kAlignLeft;
    int type = Listbox::kTypeText;
    QString heading;
  };

  explicit CellModel(NativeListbox& owner) : owner_(owner) {}

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// A change by the user.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  void SetColumns(std::vector<Column> columns);
  Column& ColumnAt(int column);
  Cell& At(int row, int column);
  void CheckBounds(int row, int column) const;
  void Changed(int row, int column);
  void Append(const String& text);
  void Remove(int row);
  void Clear();
  void Sort(int column);

 private:
  NativeListbox& owner_;
  std::vector<Column> columns_;
  std::vector<std::vector<Cell>> rows_;
};

struct NativeListbox : NativeControl {
  NativeListbox(NativeWindow& owner, Listbox& control);
  ~NativeListbox() override;

  void Refresh() override;
  void Setup(const ListboxSettings& wanted);
  /// Gives the columns their widths; the one that takes the rest follows the list.
  void FitColumns();
  int SelCount() const;
  std::vector<int> SelectedRows() const;
  /// Makes the change, then raises Change if other rows are selected than before.
  void ChangeSelection(const std::function<void()>& change);
  /// Describes an empty list by its hint.
  void SyncHint();
  /// Where a cell's text begins in the cell.
  int TextLeft(int column) const;
  /// The tool tip of a cell as rich text, or empty.
  QString Tip(int row, int column);
  QRect IndicatorRect(const QModelIndex& index) const;
  bool IsCheckBox(int column) const;
  void Toggle(const QModelIndex& index);
  void PaintCell(QPainter& painter, const QRect& rect, const QModelIndex& index, bool selected, bool framed);

  Listbox& list;
  ListboxSettings settings;
  std::unique_ptr<CellModel> model;
  QTableView* view = nullptr;
  std::vector<int> knownSelection;
  bool selectionSettles = false;  ///< rows come or go; the selection is compared when they have
  int wantedTop = -1;             ///< row to be first when the list gets on the screen
};

}  // namespace platform

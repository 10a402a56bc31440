#pragma once

#include <QRegion>
#include <QStandardItemModel>
#include <QTableView>
#include <vector>

#include "platform/qt/NativeControl.h"
#include "platform/widgets/Listbox.h"

namespace platform {

struct NativeListbox;

/// The cells of a list. Text and check marks are data of the items, and so is a tag of the program's own.
class CellModel : public QStandardItemModel {
 public:
  struct Column {
    int width = 0;  ///< below 0: takes the remaining width
    int alignment = Listbox::kAlignLeft;
    int type = Listbox::kTypeText;
  };

  explicit CellModel(NativeListbox& owner) : owner_(owner) {}

  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  /// A change by the user.
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;

  void SetColumns(std::vector<Column> columns, const QStringList& headings);
  Column& ColumnAt(int column);
  QStandardItem& At(int row, int column) const;
  void CheckBounds(int row, int column) const;
  void Append(const String& text);

 private:
  NativeListbox& owner_;
  std::vector<Column> columns_;
};

struct NativeListbox : NativeControl {
  NativeListbox(NativeWindow& owner, Listbox& control);
  ~NativeListbox() override;

  void Refresh() override;
  /// Repaints an area of the viewport when the handler has ended or pumps; until then the list is not painted with
  /// every refresh of another control.
  void Invalidate(const QRect& area);
  void Setup(const ListboxSettings& wanted);
  /// Sets the widths of the columns; one column may take the remaining width.
  void FitColumns();
  int SelCount() const;
  std::vector<int> SelectedRows() const;
  /// Applies the change, then raises Change if the selection differs from before.
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
  QRegion stale;  ///< of the viewport, to be repainted; follows the cells when the list scrolls
  std::vector<int> knownSelection;
  bool selectionSettles = false;  ///< rows are being added or removed; the selection is compared afterwards
  int wantedTop = -1;             ///< the first visible row when the list is shown
};

}  // namespace platform

#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeToolkit.h"

namespace platform {

namespace {

class Cell : public QStandardItem {
 public:
  /// Sorting ignores letter case.
  bool operator<(const QStandardItem& other) const override { return FromQString(text()) < FromQString(other.text()); }
};

}  // namespace

QVariant CellModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::ToolTipRole) return owner_.Tip(index.row(), index.column());
  QVariant value = QStandardItemModel::data(index, role);
  if (role != Qt::CheckStateRole) return value;
  return owner_.IsCheckBox(index.column()) ? QVariant(value.toInt()) : QVariant();
}

Qt::ItemFlags CellModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  const int type = columns_[static_cast<std::size_t>(index.column())].type;
  if (type == Listbox::kTypeCheckBox) flags |= Qt::ItemIsUserCheckable;
  if (type == Listbox::kTypeEditable) flags |= Qt::ItemIsEditable;
  return flags;
}

bool CellModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role == Qt::EditRole && value.toString() == index.data(role).toString()) return true;
  if (!QStandardItemModel::setData(index, value, role)) return false;
  owner_.RaiseFromUser([this, row = index.row(), column = index.column()] {
    if (owner_.list.CellAction) owner_.list.CellAction(row, column);
  });
  return true;
}

void CellModel::SetColumns(std::vector<Column> columns, const QStringList& headings) {
  clear();
  columns_ = std::move(columns);
  setColumnCount(static_cast<int>(columns_.size()));
  setHorizontalHeaderLabels(headings);
}

CellModel::Column& CellModel::ColumnAt(int column) {
  if (column < 0 || column >= columnCount()) ThrowOutOfBounds("list column", column, columnCount() - 1);
  return columns_[static_cast<std::size_t>(column)];
}

void CellModel::CheckBounds(int row, int column) const {
  if (row < 0 || row >= rowCount()) ThrowOutOfBounds("list row", row, rowCount() - 1);
  if (column < 0 || column >= columnCount()) ThrowOutOfBounds("list column", column, columnCount() - 1);
}

QStandardItem& CellModel::At(int row, int column) const {
  CheckBounds(row, column);
  return *item(row, column);
}

void CellModel::Append(const String& text) {
  QList<QStandardItem*> cells;
  for (int i = 0; i < columnCount(); ++i) cells.append(new Cell);
  cells.front()->setText(ToQString(text));
  appendRow(cells);
}

}  // namespace platform

#include <algorithm>
#include <numeric>

#include "platform/qt/NativeListbox.h"
#include "platform/qt/NativeToolkit.h"
#include "platform/widgets/Listbox.h"

namespace platform {

namespace {

Qt::Alignment AlignmentOf(int alignment) {
  return alignment == Listbox::kAlignCenter  ? Qt::AlignCenter
         : alignment == Listbox::kAlignRight ? Qt::AlignRight | Qt::AlignVCenter
                                             : Qt::AlignLeft | Qt::AlignVCenter;
}

}  // namespace

int CellModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int CellModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant CellModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount() || index.column() >= columnCount()) return {};
  const Cell& cell = rows_[static_cast<std::size_t>(index.row())][static_cast<std::size_t>(index.column())];
  const Column& column = columns_[static_cast<std::size_t>(index.column())];
  if (role == Qt::ToolTipRole) return owner_.Tip(index.row(), index.column());
  if (role == Qt::DisplayRole || role == Qt::EditRole) return ToQString(cell.text);
  if (role == Qt::CheckStateRole && column.type == Listbox::kTypeCheckBox)
    return static_cast<int>(cell.checked ? Qt::Checked : Qt::Unchecked);
  return {};
}

QVariant CellModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const Column& column = columns_[static_cast<std::size_t>(section)];
  if (role == Qt::DisplayRole) return column.heading;
  if (role == Qt::TextAlignmentRole) {
    // A heading has no margin to keep from the edge at its right.
    const bool left = column.alignment != Listbox::kAlignCenter && column.alignment != Listbox::kAlignRight;
    return static_cast<int>(left ? AlignmentOf(column.alignment) : Qt::AlignCenter);
  }
  return {};
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
  if (!index.isValid()) return false;
  Cell& cell = At(index.row(), index.column());
  if (role == Qt::CheckStateRole) {
    cell.checked = value.toInt() == Qt::Checked;
  } else if (role == Qt::EditRole) {
    const String text = FromQString(value.toString());
    if (text.Identical(cell.text)) return true;
    cell.text = text;
  } else {
    return false;
  }
  Changed(index.row(), index.column());
  owner_.RaiseFromUser([this, row = index.row(), column = index.column()] {
    if (owner_.list.CellAction) owner_.list.CellAction(row, column);
  });
  return true;
}

void CellModel::SetColumns(std::vector<Column> columns) {
  beginResetModel();
  columns_ = std::move(columns);
  rows_.clear();
  endResetModel();
}

void CellModel::CheckBounds(int row, int column) const {
  if (row < 0 || row >= rowCount()) ThrowOutOfBounds("list row", row, rowCount() - 1);
  if (column < 0 || column >= columnCount()) ThrowOutOfBounds("list column", column, columnCount() - 1);
}

CellModel::Column& CellModel::ColumnAt(int column) {
  if (column < 0 || column >= columnCount()) ThrowOutOfBounds("list column", column, columnCount() - 1);
  return columns_[static_cast<std::size_t>(column)];
}

CellModel::Cell& CellModel::At(int row, int column) {
  CheckBounds(row, column);
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

void CellModel::Changed(int row, int column) { emit dataChanged(index(row, column), index(row, column)); }

void CellModel::Append(const String& text) {
  beginInsertRows({}, rowCount(), rowCount());
  rows_.emplace_back(columns_.size());
  rows_.back().front().text = text;
  endInsertRows();
}

void CellModel::Remove(int row) {
  CheckBounds(row, 0);
  beginRemoveRows({}, row, row);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
}

void CellModel::Clear() {
  if (rows_.empty()) return;
  beginRemoveRows({}, 0, rowCount() - 1);
  rows_.clear();
  endRemoveRows();
}

void CellModel::Sort(int column) {
  std::vector<int> order(rows_.size());
  std::iota(order.begin(), order.end(), 0);
  const auto text = [&](int row) -> const String& {
    return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)].text;
  };
  std::stable_sort(order.begin(), order.end(), [&](int a, int b) { return text(a) < text(b); });

  emit layoutAboutToBeChanged();
  std::vector<std::vector<Cell>> sorted;
  std::vector<int> newRow(rows_.size());
  for (const int row : order) {
    newRow[static_cast<std::size_t>(row)] = static_cast<int>(sorted.size());
    sorted.push_back(std::move(rows_[static_cast<std::size_t>(row)]));
  }
  rows_ = std::move(sorted);
  const QModelIndexList old = persistentIndexList();
  QModelIndexList moved;
  for (const QModelIndex& at : old) moved.push_back(index(newRow[static_cast<std::size_t>(at.row())], at.column()));
  changePersistentIndexList(old, moved);
  emit layoutChanged();
}

}  // namespace platform

#include "ui/framework/qt/list_model.h"

#include <QApplication>
#include <QIcon>
#include <algorithm>

#include "ui/framework/list_view.h"
#include "ui/framework/qt/native.h"
#include "ui/framework/qt/qt_text.h"

namespace celldesk {

int ListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int ListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= static_cast<int>(rows_.size())) return {};
  const std::size_t record = rows_[static_cast<std::size_t>(index.row())];
  switch (role) {
    case Qt::DisplayRole: {
      std::u16string buffer;
      return ToQt(list_.owner().ColumnText(record, index.column(), buffer));
    }
    case Qt::FontRole: {
      const FontRole font = list_.owner().ItemFont(record);
      return font == FontRole::kNormal ? QVariant() : QVariant(FontOf(fonts_, font, QApplication::font()));
    }
    case Qt::DecorationRole: {
      if (index.column() != icon_column_ || icons_.isEmpty()) return {};
      const int image = list_.owner().ItemImage(record);
      return image >= 0 && image < icons_.size() ? QVariant(icons_[image]) : QVariant();
    }
    default:
      return {};
  }
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section >= static_cast<int>(columns_.size())) return {};
  if (role == Qt::DisplayRole) return ToQt(columns_[static_cast<std::size_t>(section)].caption);
  if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

void ListModel::SetColumns(std::vector<ColumnSpec> columns) {
  beginResetModel();
  columns_ = std::move(columns);
  endResetModel();
}

void ListModel::SetRows(std::span<const std::uint32_t> rows) {
  beginResetModel();
  std::vector<std::uint32_t>(rows.begin(), rows.end()).swap(rows_);
  const auto last = std::max_element(rows_.begin(), rows_.end());
  shown_.assign(last == rows_.end() ? 0 : *last + 1, false);
  for (const std::uint32_t record : rows_) shown_[record] = true;
  endResetModel();
}

int ListModel::Append(std::size_t record) {
  const int row = static_cast<int>(rows_.size());
  beginInsertRows({}, row, row);
  rows_.push_back(static_cast<std::uint32_t>(record));
  MarkShown(record, true);
  endInsertRows();
  return row;
}

void ListModel::Remove(int row) {
  beginRemoveRows({}, row, row);
  MarkShown(rows_[static_cast<std::size_t>(row)], false);
  rows_.erase(rows_.begin() + row);
  endRemoveRows();
}

void ListModel::Clear() {
  beginResetModel();
  rows_.clear();
  shown_.clear();
  endResetModel();
}

void ListModel::SetRecord(int row, std::size_t record) {
  MarkShown(rows_[static_cast<std::size_t>(row)], false);
  rows_[static_cast<std::size_t>(row)] = static_cast<std::uint32_t>(record);
  MarkShown(record, true);
  Changed(row, row);
}

bool ListModel::Shows(std::size_t record) const { return record < shown_.size() && shown_[record]; }

void ListModel::Reorder(std::vector<std::uint32_t> rows) {
  emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
  std::vector<int> row_of(shown_.size(), -1);
  for (std::size_t i = 0; i < rows.size(); ++i) row_of[rows[i]] = static_cast<int>(i);
  const QModelIndexList before = persistentIndexList();
  QModelIndexList after;
  after.reserve(before.size());
  for (const QModelIndex& old : before) {
    after.append(index(row_of[rows_[static_cast<std::size_t>(old.row())]], old.column()));
  }
  rows_ = std::move(rows);
  changePersistentIndexList(before, after);
  emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

void ListModel::Changed(int first, int last) {
  if (columns_.empty() || first > last) return;
  emit dataChanged(index(first, 0), index(last, static_cast<int>(columns_.size()) - 1));
}

void ListModel::MarkShown(std::size_t record, bool shown) {
  if (record >= shown_.size()) shown_.resize(record + 1, false);
  shown_[record] = shown;
}

}  // namespace celldesk

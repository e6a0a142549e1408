#pragma once

#include <QAbstractTableModel>
#include <cstdint>
#include <span>
#include <vector>

#include "ui/framework/font.h"
#include "ui/framework/token_list.h"

namespace celldesk {

class ListView;

/// The rows of a ListView as record indexes; everything else is asked of the owner when it is drawn.
class ListModel : public QAbstractTableModel {
 public:
  explicit ListModel(ListView& list, QObject* parent) : QAbstractTableModel(parent), list_(list) {}

  int rowCount(const QModelIndex& parent) const override;
  int columnCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  void SetColumns(std::vector<ColumnSpec> columns);
  const std::vector<ColumnSpec>& columns() const { return columns_; }
  void SetIcons(QList<QIcon> icons, int column) {
    icons_ = std::move(icons);
    icon_column_ = column;
  }
  void SetFonts(const FontSet* fonts) { fonts_ = fonts; }

  const std::vector<std::uint32_t>& rows() const { return rows_; }
  void Reserve(std::size_t rows) { rows_.reserve(rows); }
  void SetRows(std::span<const std::uint32_t> rows);
  int Append(std::size_t record);
  void Remove(int row);
  void Clear();
  void SetRecord(int row, std::size_t record);
  bool Shows(std::size_t record) const;
  /// Replaces the order; selection and focus follow their records.
  void Reorder(std::vector<std::uint32_t> rows);
  void Changed(int first, int last);

 private:
  void MarkShown(std::size_t record, bool shown);

  ListView& list_;
  std::vector<ColumnSpec> columns_;
  std::vector<std::uint32_t> rows_;
  std::vector<bool> shown_;  // by record
  QList<QIcon> icons_;
  int icon_column_ = 0;
  const FontSet* fonts_ = nullptr;
};

}  // namespace celldesk

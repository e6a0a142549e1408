#pragma once

#include <QTableView>

namespace celldesk {

class ListView;

/// The table widget of a ListView: whole rows, the row under the pointer drawn hot, keys and clicks as
/// notifications.
class ListTable : public QTableView {
 public:
  ListTable(ListView& list, QWidget* parent);

  void SetEmptyText(const QString& text);
  const QString& empty_text() const { return empty_text_; }
  int hot_row() const { return hot_row_; }
  /// Wide enough for every column, as far as a small screen allows.
  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

 private:
  void SetHotRow(int row);

  ListView& list_;
  QString empty_text_;
  int hot_row_ = -1;
};

}  // namespace celldesk

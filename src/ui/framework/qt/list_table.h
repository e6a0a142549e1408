#pragma once

#include <QTableView>

#include "ui/framework/qt/list_search.h"

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
  /// Where typed letters are looked for until a click on a header says which column counts.
  void set_search_column(int column) { search_column_ = column; }
  /// The place on the screen where the menu of the last request belongs.
  QPoint menu_place() const { return menu_place_; }
  /// Selects the next row that begins with what was typed.
  void keyboardSearch(const QString& letters) override;
  /// True for a column that fits itself to its texts.
  bool FitsColumn(int column) const;
  /// A text of such a column takes this much room.
  void NeedRoom(int column, int width);
  /// Wide enough for every column, as far as a small screen allows.
  QSize sizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
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
  void PaintFocus();
  bool Find(const QString& letters);
  void AskForMenu(const QPoint& place);
  void AskForMenuByKey();

  ListView& list_;
  QString empty_text_;
  int hot_row_ = -1;
  int search_column_ = 0;
  ListSearch search_;
  QPoint menu_place_;
};

}  // namespace celldesk

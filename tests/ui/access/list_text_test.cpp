// What a list's cells show of texts that are wider than their columns.

#include <gtest/gtest.h>

#include <QAbstractItemDelegate>
#include <QHelpEvent>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QToolTip>
#include <set>

#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

class ListText : public testing::Test {
 protected:
  ListText() { window_.Load(); }

  QTableView& table() { return *window_.inbox().list().native()->table; }
  QModelIndex Cell(int row, int column) { return table().model()->index(row, column); }
  /// The width that the cell's text takes as it is drawn.
  int Wanted(const QModelIndex& cell) { return Drawn(cell).width(); }
  int DrawnHeight(const QModelIndex& cell) { return Drawn(cell).height(); }
  QSize Drawn(const QModelIndex& cell) {
    QStyleOptionViewItem option;
    option.initFrom(&table());
    option.rect = table().visualRect(cell);
    return table().itemDelegate()->sizeHint(option, cell);
  }
  void Hover(const QModelIndex& cell) {
    const QPoint place = table().visualRect(cell).center();
    QHelpEvent event(QEvent::ToolTip, place, table().viewport()->mapToGlobal(place));
    QApplication::sendEvent(table().viewport(), &event);
  }

  SmsWindow window_;
};

TEST_F(ListText, OfADateIsDrawnWhole) {
  table().setColumnWidth(SmsColumns::kDate, 100);
  ASSERT_GT(table().model()->rowCount(), 2);
  for (int row = 0; row < table().model()->rowCount(); ++row) {
    EXPECT_LE(Wanted(Cell(row, SmsColumns::kDate)), 100) << row;
  }
}

TEST_F(ListText, OfAllDatesOfAColumnHasOneSize) {
  table().setColumnWidth(SmsColumns::kDate, 100);
  std::set<int> sizes;
  // The first round finds the longest date, the second is what stays on the screen.
  for (const bool counts : {false, true}) {
    for (int row = 0; row < table().model()->rowCount(); ++row) {
      const int size = DrawnHeight(Cell(row, SmsColumns::kDate));
      if (counts) sizes.insert(size);
    }
  }
  EXPECT_EQ(sizes.size(), 1u);
  table().setColumnWidth(SmsColumns::kDate, 300);
  EXPECT_GT(DrawnHeight(Cell(0, SmsColumns::kDate)), *sizes.begin())
      << "with room it is drawn as large as all";
}

TEST_F(ListText, IsNotDrawnTooSmallToRead) {
  table().setColumnWidth(SmsColumns::kDate, 40);
  EXPECT_GT(Wanted(Cell(0, SmsColumns::kDate)), 40) << "rather cut than tiny";
}

TEST_F(ListText, ThatIsCutShowsWholeInAToolTip) {
  table().setColumnWidth(SmsColumns::kDate, 40);
  const QModelIndex cell = Cell(0, SmsColumns::kDate);
  Hover(cell);
  EXPECT_EQ(QToolTip::text(), cell.data().toString());
  table().setColumnWidth(SmsColumns::kDate, 300);
  Hover(cell);
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 30000)) << "nothing is cut now";
}

}  // namespace
}  // namespace celldesk

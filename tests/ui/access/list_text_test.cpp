// What a list's cells show of texts that are wider than their columns.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAbstractItemDelegate>
#include <QHelpEvent>
#include <QScrollBar>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QToolTip>

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
  /// Paints, and gives the columns the room that their texts asked for.
  void Paint() {
    table().grab();
    QApplication::processEvents();
  }
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
  Paint();
  ASSERT_GT(table().model()->rowCount(), 2);
  for (int row = 0; row < table().model()->rowCount(); ++row) {
    EXPECT_LE(Wanted(Cell(row, SmsColumns::kDate)), table().columnWidth(SmsColumns::kDate)) << row;
  }
}

TEST_F(ListText, ThatNeedsRoomLeavesTheWidthsThatAreKeptAlone) {
  Paint();
  EXPECT_GT(table().columnWidth(SmsColumns::kDate), 100);
  EXPECT_THAT(window_.inbox().list().Widths(), testing::ElementsAre(30, 120, 100, 370));
  window_.ShowFolder(kOutboxTab);
  window_.ShowFolder(kInboxTab);
  EXPECT_GT(table().columnWidth(SmsColumns::kDate), 100) << "without being painted first";
}

TEST_F(ListText, ThatNeedsRoomTakesItFromTheLastColumn) {
  WidgetOf(&window_.frame())->resize(640, 480);
  Paint();
  EXPECT_FALSE(table().horizontalScrollBar()->isVisible());
}

TEST_F(ListText, LeavesTheWidthThatTheUserChose) {
  table().setColumnWidth(SmsColumns::kDate, 60);
  Paint();
  EXPECT_EQ(table().columnWidth(SmsColumns::kDate), 60);
  EXPECT_EQ(window_.inbox().list().Widths()[SmsColumns::kDate], 60);
}

TEST_F(ListText, OfAMemoryShrinksInANarrowColumn) {
  const QModelIndex cell = Cell(0, SmsColumns::kMemory);
  const int whole = Wanted(cell), high = DrawnHeight(cell);
  table().setColumnWidth(SmsColumns::kMemory, whole - 3);
  EXPECT_LE(Wanted(cell), whole - 3);
  table().setColumnWidth(SmsColumns::kMemory, 16);
  EXPECT_GE(DrawnHeight(cell), high / 2) << "rather cut than tiny";
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

TEST(ListIndex, BesideItsIconIsDrawnWhole) {
  WindowSession session(PhoneWith({{1, "1", u"One"}, {250, "2", u"Two"}}, 250));
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  session.Command(command::kLoadData);
  ASSERT_EQ(session.sim().list().RowCount(), 2);
  QTableView& book = *session.sim().list().native()->table;
  book.grab();
  QApplication::processEvents();
  const int icon_and_gaps = 19;
  EXPECT_GE(book.columnWidth(0), icon_and_gaps + book.fontMetrics().horizontalAdvance("250"));
  EXPECT_EQ(session.sim().list().Widths()[0], 40);
}

}  // namespace
}  // namespace celldesk

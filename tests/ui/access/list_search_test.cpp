// Typed letters find rows.

#include "ui/framework/qt/list_search.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QTest>

#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

class ListSearchTest : public testing::Test {
 protected:
  // The pause that ends a search is longer than any test.
  ListSearchTest()
      : session_(PhoneWith({{1, "+4420", u"Anna Berg"},
                            {2, "+4410", u"Anna Zander"},
                            {3, "0815", u"Ben"},
                            {4, "+4930", u"\u00C9mile"},
                            {5, "112", u"Bert"}})) {
    EXPECT_TRUE(session_.Start());
    QApplication::setKeyboardInputInterval(1000000);
    session_.Command(command::kConnect);
    session_.Command(command::kLoadData);
  }

  ListView& list() { return session_.sim().list(); }
  QTableView* table() { return list().native()->table; }
  void Type(const char* letters) { QTest::keyClicks(table(), QString::fromUtf8(letters)); }
  std::vector<int> Selected() { return list().SelectedRows(); }

  WindowSession session_;
};

TEST_F(ListSearchTest, GoesToTheNextRowWhoseNameBeginsSo) {
  Type("b");
  EXPECT_THAT(Selected(), ElementsAre(2));
  EXPECT_EQ(list().FocusedRow(), 2);
}

TEST_F(ListSearchTest, GoesRoundThroughTheRowsOfOneLetter) {
  Type("b");
  Type("b");
  EXPECT_THAT(Selected(), ElementsAre(4));
  Type("B");
  EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(ListSearchTest, TakesLettersInQuickSuccessionForOneText) {
  Type("ber");
  EXPECT_THAT(Selected(), ElementsAre(4));
}

TEST_F(ListSearchTest, TakesABlankWithinAName) {
  Type("anna z");
  EXPECT_THAT(Selected(), ElementsAre(1));
}

TEST_F(ListSearchTest, LeavesABlankThatLeadsNowhereToTheSelection) {
  Type("ben");
  Type(" ");
  EXPECT_EQ(list().FocusedRow(), 2);
  Type("t");
  EXPECT_EQ(list().FocusedRow(), 2) << "bent is nobody";
}

TEST_F(ListSearchTest, StaysWhereNoRowBeginsSo) {
  Type("b");
  Type("q");
  EXPECT_THAT(Selected(), ElementsAre(2));
}

TEST_F(ListSearchTest, BeginsAnewAfterAPause) {
  QApplication::setKeyboardInputInterval(0);
  Type("b");
  Type("a");
  EXPECT_THAT(Selected(), ElementsAre(0));
}

TEST_F(ListSearchTest, LooksInTheColumnThatTheListIsSortedBy) {
  ClickHeader(list(), 2);
  Type("0");
  ASSERT_EQ(Selected().size(), 1u);
  EXPECT_THAT(WindowSession::Rows(session_.sim())[static_cast<std::size_t>(Selected().front())],
              testing::EndsWith("|0815"));
}

TEST_F(ListSearchTest, LeavesKeysWithControlToTheCommands) {
  QTest::keyClick(table(), Qt::Key_B, Qt::ControlModifier);
  EXPECT_TRUE(Selected().empty());
}

TEST_F(ListSearchTest, FindsNothingInAnEmptyList) {
  list().Clear();
  Type("a");
  EXPECT_EQ(list().FocusedRow(), -1);
}

TEST(ListSearch, IsUnderWayUntilThePause) {
  int count = 1;
  char program[] = "celldesk";
  char* arguments[] = {program, nullptr};
  const Application application(count, arguments);
  ListSearch search;
  QApplication::setKeyboardInputInterval(1000000);
  EXPECT_FALSE(search.IsUnderWay());
}

TEST(ListSearchInInbox, LooksForTheSender) {
  SmsWindow window;
  QApplication::setKeyboardInputInterval(1000000);
  window.LoadNames();
  window.Load();
  const std::string last = SmsWindow::Cell(window.inbox(), window.inbox().list().RowCount() - 1, 1);
  QTest::keyClicks(window.inbox().list().native()->table, QString::fromStdString(last));
  ASSERT_EQ(window.inbox().list().SelectedCount(), 1u);
  EXPECT_EQ(SmsWindow::Cell(window.inbox(), window.inbox().list().SelectedRows().front(), 1), last);
}

TEST(ListSearchInChooser, LooksForTheName) {
  SmsWindow window;
  QApplication::setKeyboardInputInterval(1000000);
  window.LoadNames();
  window.InDialog(command::kNew, [&](Dialog& outer) {
    window.InDialog([&] { outer.Dispatch(Message::kCommand, editor::kBrowse, 0); },
                    [](Dialog& inner) {
                      ListView& list = inner.List(chooser::kList);
                      std::u16string buffer;
                      const auto last = list.RecordAt(list.RowCount() - 1);
                      const std::u16string name(list.owner().ColumnText(last, 2, buffer));
                      QTest::keyClicks(list.native()->table, QString::fromStdU16String(name));
                      EXPECT_EQ(list.FocusedRow(), list.RowCount() - 1);
                    });
  });
}

}  // namespace
}  // namespace celldesk

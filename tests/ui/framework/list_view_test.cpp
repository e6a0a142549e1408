#include "ui/framework/list_view.h"

#include <QHeaderView>
#include <QTest>
#include <algorithm>
#include <numeric>

#include "ui/framework/framework_fixture.h"
#include "ui/framework/qt/list_model.h"
#include "ui/framework/qt/list_table.h"
#include "ui/user_actions.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kColumns = 108;

/// A page with a list of numbered records; record n reads "n", "name n", "-n".
class ListOwner : public Dialog {
 public:
  ListOwner() : Dialog(180) {}

  ListView& list() { return List(1000); }

  std::u16string_view ColumnText(std::size_t record, int column, std::u16string& buffer) override {
    ++texts_asked;
    const std::string text = column == 1 ? "name " + std::to_string(record) : std::to_string(record);
    buffer = std::u16string(text.begin(), text.end());
    return column == 2 ? std::u16string_view() : std::u16string_view(buffer);
  }
  FontRole ItemFont(std::size_t record) override {
    return record == 2 ? FontRole::kStruckOut : FontRole::kNormal;
  }
  int ItemImage(std::size_t record) override { return static_cast<int>(record) - 1; }
  int Compare(std::size_t record1, std::size_t record2) override {
    if (list().sort_column() == 2) return 0;
    return static_cast<int>(record1) - static_cast<int>(record2);
  }
  MessageResult OnNotify(int, const Notification& notification) override {
    if (notification.code == NotifyCode::kSelectionChanged) {
      ++selection_changes;
    } else {
      notes.push_back({notification.code, notification.row});
    }
    return 0;
  }
  void OnCommand(int command, LongParameter) override { commands.push_back(command); }

  int texts_asked = 0;
  int selection_changes = 0;
  std::vector<std::pair<NotifyCode, int>> notes;
  std::vector<int> commands;
};

class ListViewTest : public FrameworkTest {
 protected:
  ListViewTest() {
    EXPECT_TRUE(fonts_.Create(u"", 0));
    EXPECT_TRUE(owner_.CreateModeless(nullptr));
    list().BuildColumns(kColumns);
    list().SetFonts(fonts_);
    list().EnableSorting(true);
    owner_.Show(true);
    WidgetOf(&owner_)->resize(400, 200);
    application().PumpMessages();
  }

  ListView& list() { return owner_.list(); }
  void Fill(std::initializer_list<std::size_t> records) {
    for (const std::size_t record : records) list().AddRow(record);
  }
  std::vector<std::size_t> Records() {
    std::vector<std::size_t> records;
    for (int row = 0; row < list().RowCount(); ++row) records.push_back(list().RecordAt(row));
    return records;
  }
  QVariant Data(int row, int column, int role) {
    return list().native()->model->data(list().native()->model->index(row, column), role);
  }

  FontSet fonts_;
  ListOwner owner_;
};

TEST_F(ListViewTest, BuildsItsColumns) {
  EXPECT_EQ(list().ColumnCount(), 3);
  EXPECT_THAT(list().Widths(), ElementsAre(40, 170, 170));
  EXPECT_EQ(HeaderText(list(), 2), "Number");
}

TEST_F(ListViewTest, MeasuresItsHeaderInTheFontItIsDrawnIn) {
  const QHeaderView& header = *list().native()->table->horizontalHeader();
  QHeaderView usual(Qt::Horizontal);
  usual.setModel(list().native()->model);
  EXPECT_EQ(header.sizeHint().height(), usual.sizeHint().height());
  for (int column = 0; column < list().ColumnCount(); ++column) {
    EXPECT_GE(header.sectionSizeHint(column),
              header.fontMetrics().horizontalAdvance(QString::fromStdString(HeaderText(list(), column))));
    EXPECT_LE(header.sectionSizeHint(column), usual.sectionSizeHint(column));
  }
}

TEST_F(ListViewTest, HasRowsThatAreEasilyRead) {
  list().AddRow(0);
  EXPECT_GE(list().native()->table->rowHeight(0), 24);
}

TEST_F(ListViewTest, HasRowsForAPenWhereThereIsATouchScreen) {
  const std::unique_ptr<QPointingDevice> screen(QTest::createTouchDevice());
  ListOwner owner;
  ASSERT_TRUE(owner.CreateModeless(nullptr));
  owner.list().BuildColumns(kColumns);
  owner.list().AddRow(0);
  EXPECT_GE(owner.list().native()->table->rowHeight(0), 32);
}

TEST_F(ListViewTest, SetsWidthsFromTheLeft) {
  list().SetWidths({60, 70});
  EXPECT_THAT(list().Widths(), ElementsAre(60, 70, 170));
  list().SetWidths({61, 71, 81, 91});
  EXPECT_THAT(list().Widths(), ElementsAre(61, 71, 81));
  list().SetWidths({});
  EXPECT_THAT(list().Widths(), ElementsAre(61, 71, 81));
}

TEST_F(ListViewTest, AsksTextsFontsAndImagesOfItsOwner) {
  list().SetImages({"entry", "entry_changed"});
  Fill({7, 2, 1});
  EXPECT_EQ(Data(0, 1, Qt::DisplayRole).toString().toStdString(), "name 7");
  EXPECT_EQ(Data(0, 2, Qt::DisplayRole).toString().toStdString(), "") << "no text is an empty one";
  EXPECT_FALSE(Data(0, 0, Qt::FontRole).isValid());
  EXPECT_TRUE(Data(1, 0, Qt::FontRole).value<QFont>().strikeOut());
  EXPECT_FALSE(Data(0, 0, Qt::DecorationRole).isValid()) << "image 6 does not exist";
  EXPECT_TRUE(Data(1, 0, Qt::DecorationRole).isValid());
  EXPECT_TRUE(Data(2, 0, Qt::DecorationRole).isValid());
  EXPECT_FALSE(Data(2, 1, Qt::DecorationRole).isValid()) << "the first column's alone";
}

TEST_F(ListViewTest, ShowsImagesInTheColumnThatHasRoomForThem) {
  list().SetImages({"entry", "entry_changed"}, 1);
  Fill({2});
  EXPECT_FALSE(Data(0, 0, Qt::DecorationRole).isValid());
  EXPECT_TRUE(Data(0, 1, Qt::DecorationRole).isValid());
}

TEST_F(ListViewTest, WantsRoomForEveryColumnOnASmallScreen) {
  list().SetWidths({100, 150, 120});
  const int wanted = list().native()->table->sizeHint().width();
  EXPECT_GE(wanted, 370);
  EXPECT_LT(wanted, 420);
  list().SetWidths({500, 500, 500});
  EXPECT_EQ(list().native()->table->sizeHint().width(), 600);
}

TEST_F(ListViewTest, KeepsRowsAndRecords) {
  Fill({5, 3, 9});
  EXPECT_EQ(list().RowCount(), 3);
  EXPECT_THAT(Records(), ElementsAre(5, 3, 9));
  EXPECT_TRUE(list().Shows(3));
  EXPECT_FALSE(list().Shows(4));
  EXPECT_EQ(list().RowOf(9), 2);
  EXPECT_EQ(list().RowOf(4), -1);
  list().RemoveRow(1);
  EXPECT_FALSE(list().Shows(3));
  list().SetRecordAt(0, 4);
  EXPECT_TRUE(list().Shows(4));
  EXPECT_FALSE(list().Shows(5));
  list().RemoveRow(7);
  list().RemoveRow(-1);
  EXPECT_THAT(Records(), ElementsAre(4, 9));
  list().Clear();
  EXPECT_EQ(list().RowCount(), 0);
  EXPECT_FALSE(list().Shows(4));
}

TEST_F(ListViewTest, ReplacesAllRowsAtOnce) {
  Fill({5, 3});
  list().Select(0, true);
  list().SetRows(std::vector<std::uint32_t>{9, 0, 4});
  EXPECT_THAT(Records(), ElementsAre(9, 0, 4));
  EXPECT_TRUE(list().Shows(0));
  EXPECT_FALSE(list().Shows(5));
  EXPECT_EQ(list().SelectedCount(), 0u);
  EXPECT_EQ(list().AddRow(5), 3);
  list().SetRows({});
  EXPECT_EQ(list().RowCount(), 0);
  EXPECT_FALSE(list().Shows(9));
}

TEST_F(ListViewTest, SelectsRowsByClick) {
  Fill({5, 3, 9, 1});
  ClickRow(list(), 1);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(1));
  EXPECT_EQ(list().FocusedRow(), 1);
  ClickRow(list(), 3, Qt::ControlModifier);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(1, 3));
  ClickRow(list(), 0, Qt::ShiftModifier);
  EXPECT_EQ(list().SelectedCount(), list().SelectedRows().size());
  ClickRow(list(), 2);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(2));
  EXPECT_GT(owner_.selection_changes, 0);
}

TEST_F(ListViewTest, ClearsTheSelectionOneRowAfterTheOther) {
  Fill({5, 3, 9});
  for (const int row : {0, 1, 2}) list().Select(row, true);
  owner_.selection_changes = 0;
  list().ClearSelection();
  EXPECT_EQ(owner_.selection_changes, 3);
  EXPECT_EQ(list().SelectedCount(), 0u);
}

TEST_F(ListViewTest, SortsByTheClickedHeader) {
  Fill({5, 3, 9});
  ClickHeader(list(), 1);
  EXPECT_THAT(Records(), ElementsAre(3, 5, 9));
  EXPECT_EQ(list().sort_column(), 1);
  ClickHeader(list(), 1);
  EXPECT_THAT(Records(), ElementsAre(9, 5, 3));
  EXPECT_TRUE(list().descending());
  ClickHeader(list(), 2);
  EXPECT_THAT(Records(), ElementsAre(9, 5, 3)) << "equal rows keep their order";
  EXPECT_TRUE(list().descending()) << "a new column keeps the direction";
  EXPECT_EQ(HeaderText(list(), 2), "Numberv");
}

TEST_F(ListViewTest, StaysSortedWhenNewRowsCome) {
  Fill({5, 3, 9});
  ClickHeader(list(), 1);
  list().SetRows(std::vector<std::uint32_t>{8, 2, 6});
  EXPECT_THAT(Records(), ElementsAre(2, 6, 8));
  list().AddRow(4);
  EXPECT_THAT(Records(), ElementsAre(2, 6, 8, 4)) << "a row that comes does not move the others";
  list().SortAgain();
  EXPECT_THAT(Records(), ElementsAre(2, 4, 6, 8));
}

TEST_F(ListViewTest, KeepsTheGivenOrderUntilAHeaderIsClicked) {
  list().SetRows(std::vector<std::uint32_t>{8, 2, 6});
  list().SortAgain();
  EXPECT_THAT(Records(), ElementsAre(8, 2, 6));
}

TEST_F(ListViewTest, FlipsOnAFirstClickOnTheFirstColumn) {
  Fill({5, 3, 9});
  ClickHeader(list(), 0);
  EXPECT_THAT(Records(), ElementsAre(9, 5, 3));
}

TEST_F(ListViewTest, SortsOnlyWhereThatIsEnabled) {
  Fill({5, 3, 9});
  list().EnableSorting(false);
  ClickHeader(list(), 0);
  EXPECT_THAT(Records(), ElementsAre(5, 3, 9));
  EXPECT_EQ(HeaderText(list(), 0), "ID");
}

TEST_F(ListViewTest, KeepsSelectionAndFocusWithTheirRecords) {
  Fill({5, 3, 9});
  ClickRow(list(), 0);
  ClickRow(list(), 2, Qt::ControlModifier);
  ClickHeader(list(), 1);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(1, 2));
  EXPECT_EQ(list().RecordAt(list().FocusedRow()), 9u);
}

TEST_F(ListViewTest, OpensOnADoubleClickWithExactlyOneRowSelected) {
  Fill({5, 3, 9});
  DoubleClickRow(list(), 1);
  EXPECT_THAT(owner_.commands, ElementsAre(2006));
  owner_.commands.clear();
  ClickRow(list(), 0);
  ClickRow(list(), 1, Qt::ControlModifier);
  const QRect place = list().native()->table->visualRect(list().native()->model->index(1, 0));
  QTest::mouseDClick(list().native()->table->viewport(), Qt::LeftButton, Qt::ControlModifier, place.center());
  EXPECT_THAT(owner_.commands, IsEmpty());
}

TEST_F(ListViewTest, OpensNothingBelowItsRows) {
  Fill({5});
  ClickRow(list(), 0);
  const QWidget* viewport = list().native()->table->viewport();
  QTest::mouseDClick(list().native()->table->viewport(), Qt::LeftButton, {},
                     viewport->rect().bottomLeft() - QPoint(-5, 5));
  EXPECT_THAT(owner_.commands, IsEmpty());
}

TEST_F(ListViewTest, TellsOfClicksAndKeys) {
  Fill({5, 3, 9});
  ClickRow(list(), 2);
  PressKey(list(), Qt::Key_Delete);
  PressKey(list(), Qt::Key_Space);
  PressKey(list(), Qt::Key_Return);
  PressKey(list(), Qt::Key_Enter);
  EXPECT_THAT(owner_.notes,
              ElementsAre(std::pair(NotifyCode::kClick, 2), std::pair(NotifyCode::kDeleteKey, 2),
                          std::pair(NotifyCode::kClick, 2)));
  EXPECT_THAT(owner_.commands, ElementsAre(1, 1));
}

TEST_F(ListViewTest, MovesByKey) {
  Fill({5, 3, 9});
  PressKey(list(), Qt::Key_Down);
  PressKey(list(), Qt::Key_Down);
  EXPECT_EQ(list().FocusedRow(), 1);
  PressKey(list(), Qt::Key_End);
  EXPECT_EQ(list().FocusedRow(), 2);
  PressKey(list(), Qt::Key_Home);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(0));
}

TEST_F(ListViewTest, TakesKeysWithoutRows) {
  for (const Qt::Key key : {Qt::Key_Home, Qt::Key_End, Qt::Key_Down, Qt::Key_Space, Qt::Key_PageDown})
    PressKey(list(), key);
  EXPECT_EQ(list().FocusedRow(), -1);
  EXPECT_THAT(owner_.notes, IsEmpty());
}

TEST_F(ListViewTest, RedrawsARowOrAllThatIsVisible) {
  Fill({5, 3, 9});
  application().PumpMessages();
  owner_.texts_asked = 0;
  list().Redraw(1);
  application().PumpMessages();
  EXPECT_GT(owner_.texts_asked, 0);
  owner_.texts_asked = 0;
  list().Redraw(-1);
  application().PumpMessages();
  EXPECT_GE(owner_.texts_asked, 9);
  owner_.texts_asked = 0;
  list().UpdateNow();
  EXPECT_GE(owner_.texts_asked, 9) << "at once";
}

TEST_F(ListViewTest, AsksOnlyForWhatIsVisible) {
  list().Reserve(100000);
  for (std::size_t record = 0; record < 100000; ++record) list().AddRow(record);
  owner_.texts_asked = 0;
  list().UpdateNow();
  EXPECT_LT(owner_.texts_asked, 200);
}

TEST_F(ListViewTest, WorksWithAHundredThousandRows) {
  for (std::size_t record = 0; record < 100000; ++record) list().AddRow(99999 - record);
  ClickHeader(list(), 1);
  EXPECT_EQ(list().RecordAt(0), 0u);
  EXPECT_EQ(list().RecordAt(99999), 99999u);
  list().native()->table->selectAll();
  EXPECT_EQ(list().SelectedCount(), 100000u);
  list().ClearSelection();
  EXPECT_EQ(list().SelectedCount(), 0u);
  PressKey(list(), Qt::Key_End);
  EXPECT_EQ(list().FocusedRow(), 99999);
  list().Clear();
  EXPECT_EQ(list().RowCount(), 0);
}

TEST_F(ListViewTest, PicksSingleRowsInTheAssignmentStyle) {
  Fill({5, 3, 9});
  list().SetAssignmentStyle(true);
  ClickRow(list(), 0);
  ClickRow(list(), 2, Qt::ControlModifier);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(2));
  list().SetAssignmentStyle(false);
  ClickRow(list(), 0);
  ClickRow(list(), 2, Qt::ControlModifier);
  EXPECT_THAT(list().SelectedRows(), ElementsAre(0, 2));
}

}  // namespace
}  // namespace celldesk

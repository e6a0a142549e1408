#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLabel>

#include "config/settings_store.h"
#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;

std::vector<std::uint8_t> Bytes(const std::vector<std::uint16_t>& widths) {
  std::vector<std::uint8_t> bytes;
  for (const std::uint16_t width : widths) {
    bytes.push_back(static_cast<std::uint8_t>(width & 0xFF));
    bytes.push_back(static_cast<std::uint8_t>(width >> 8));
  }
  return bytes;
}

simulator::PhoneMemory Unsorted() {
  return PhoneWith({{2, "300", u"Bert"}, {9, "100", u"Carl"}, {10, "200", u"Anna"}}, 12);
}

TEST(AddressList, HasItsColumnsAndTheirWidths) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  ListView& list = session.sim().list();
  EXPECT_EQ(list.ColumnCount(), 3);
  EXPECT_EQ(HeaderText(list, 0), "ID");
  EXPECT_EQ(HeaderText(list, 1), "Name");
  EXPECT_EQ(HeaderText(list, 2), "Number");
  EXPECT_THAT(list.Widths(), ElementsAre(40, 170, 170));
}

TEST(AddressList, SortsIdsByValueAndTextsByTheUsersOrder) {
  BookWindow window(Unsorted());
  window.Load();
  ListView& list = window.sim().list();
  ClickHeader(list, 1);
  EXPECT_THAT(window.SimRows(), ElementsAre("10|Anna|200", "2|Bert|300", "9|Carl|100"));
  EXPECT_EQ(HeaderText(list, 1), "Name^");
  ClickHeader(list, 2);
  EXPECT_THAT(window.SimRows(), ElementsAre("9|Carl|100", "10|Anna|200", "2|Bert|300"));
  ClickHeader(list, 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Bert|300", "9|Carl|100", "10|Anna|200"));
}

TEST(AddressList, FlipsTheDirectionOnTheSameHeaderAndKeepsItForAnother) {
  BookWindow window(Unsorted());
  window.Load();
  ListView& list = window.sim().list();
  ClickHeader(list, 1);
  ClickHeader(list, 1);
  EXPECT_THAT(window.SimRows(), ElementsAre("9|Carl|100", "2|Bert|300", "10|Anna|200"));
  EXPECT_EQ(HeaderText(list, 1), "Namev");
  ClickHeader(list, 2);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Bert|300", "10|Anna|200", "9|Carl|100"));
  EXPECT_EQ(HeaderText(list, 2), "Numberv");
  EXPECT_EQ(HeaderText(list, 1), "Name");
}

TEST(AddressList, StaysSortedByTheHeaderWhenItIsLoadedAgain) {
  BookWindow window(Unsorted());
  window.Load();
  ClickHeader(window.sim().list(), 1);
  window.Load();
  EXPECT_THAT(window.SimRows(), ElementsAre("10|Anna|200", "2|Bert|300", "9|Carl|100"));
  EXPECT_EQ(HeaderText(window.sim().list(), 1), "Name^");
}

TEST(AddressList, SortsDescendingOnTheFirstClickOnTheFirstColumn) {
  BookWindow window(Unsorted());
  window.Load();
  ClickHeader(window.sim().list(), 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("10|Anna|200", "9|Carl|100", "2|Bert|300"));
}

TEST(AddressList, EditsTheEntryOfTheClickedRowAfterSorting) {
  BookWindow window(Unsorted());
  window.Load();
  ClickHeader(window.sim().list(), 1);
  std::string name;
  window.InNextDialog([&](Dialog& dialog) {
    name = Utf8(dialog.Text(edit_dialog::kName));
    dialog.EndDialog(kIdCancel);
  });
  DoubleClickRow(window.sim().list(), 0);
  EXPECT_EQ(name, "Anna");
}

TEST(AddressList, ShowsWhichEntriesWaitForTheUpload) {
  BookWindow window(Unsorted());
  window.Load();
  EXPECT_EQ(window.sim().ItemImage(1), 0);
  window.SimEntry(1).flags |= AddressEntry::kModified;
  EXPECT_EQ(window.sim().ItemImage(1), 1);
}

TEST(AddressList, KeepsItsWidthsWhenTheFolderIsLeft) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.sim().list().SetWidths({50, 111, 222});
  ClickTab(session.frame(), 1);
  EXPECT_EQ(session.registry.BinaryAt(u"AddressCols"), Bytes({50, 111, 222}));
  EXPECT_THAT(session.phone_book().list().Widths(), ElementsAre(50, 111, 222))
      << "both books share one value";
}

// As a second window does.
TEST(AddressList, LeavesTheWidthsThatAnotherWindowStoredMeanwhile) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.registry.PutBinary(u"AddressCols", Bytes({60, 70, 80}));
  ClickTab(session.frame(), 2);
  EXPECT_EQ(session.registry.BinaryAt(u"AddressCols"), Bytes({60, 70, 80}));
  ClickTab(session.frame(), 0);
  EXPECT_THAT(session.sim().list().Widths(), ElementsAre(60, 70, 80));
}

TEST(AddressList, StoresItsWidthsWhereNoneOfItsColumnsAreStored) {
  for (const bool other_number : {false, true}) {
    WindowSession session;
    if (other_number) session.registry.PutBinary(u"AddressCols", Bytes({60, 70}));
    ASSERT_TRUE(session.Start());
    ClickTab(session.frame(), 2);
    EXPECT_EQ(session.registry.BinaryAt(u"AddressCols"), Bytes({40, 170, 170}));
  }
}

TEST(AddressList, KeepsItsWidthsAtTheEndOfTheProgram) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.sim().list().SetWidths({50, 111, 222});
  session.Command(command::kExit);
  EXPECT_EQ(session.registry.BinaryAt(u"AddressCols"), Bytes({50, 111, 222}));
}

TEST(AddressList, RestoresTheStoredWidths) {
  WindowSession session;
  session.registry.PutBinary(u"AddressCols", Bytes({60, 70, 80}));
  ASSERT_TRUE(session.Start());
  EXPECT_THAT(session.sim().list().Widths(), ElementsAre(60, 70, 80));
}

TEST(AddressList, IgnoresWidthsForAnotherNumberOfColumns) {
  for (const std::vector<std::uint16_t>& stored :
       std::vector<std::vector<std::uint16_t>>{{}, {60}, {60, 70}, {60, 70, 80, 90}}) {
    WindowSession session;
    session.registry.PutBinary(u"AddressCols", Bytes(stored));
    ASSERT_TRUE(session.Start());
    EXPECT_THAT(session.sim().list().Widths(), ElementsAre(40, 170, 170)) << stored.size();
  }
}

TEST(AddressList, IgnoresWidthsOfAnotherType) {
  WindowSession session;
  session.registry.PutString(u"AddressCols", u"abc");
  ASSERT_TRUE(session.Start());
  EXPECT_THAT(session.sim().list().Widths(), ElementsAre(40, 170, 170));
}

TEST(AddressList, TellsAnEmptyFolderWhatToDoNext) {
  WindowSession session;
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  session.Command(command::kLoadData);
  EXPECT_EQ(session.sim().list().RowCount(), 0);
  // Drawing it must not need a row.
  session.sim().list().UpdateNow();
}

std::string Counts(BookWindow& window) {
  window.Pump();
  return static_cast<QLabel*>(ControlOf(window.frame(), QStringLiteral("status_right")))
      ->text()
      .toStdString();
}

TEST(AddressList, CountsItsRowsAndTheSelectionInTheStatusLine) {
  BookWindow window(Unsorted());
  window.Load();
  EXPECT_EQ(Counts(window), "3 items");
  ClickRow(window.sim().list(), 0);
  ClickRow(window.sim().list(), 2, Qt::ShiftModifier);
  EXPECT_EQ(Counts(window), "3 items, 3 selected");
}

TEST(AddressList, CountsOneRowInTheSingular) {
  BookWindow window(PhoneWith({{2, "300", u"Bert"}}, 12));
  window.Load();
  EXPECT_EQ(Counts(window), "1 item");
  ClickRow(window.sim().list(), 0);
  EXPECT_EQ(Counts(window), "1 item, 1 selected");
}

TEST(AddressList, EnablesTheButtonsOfTheSelectionAtTheNextIdleTime) {
  BookWindow window(Unsorted());
  window.Load();
  QWidget* button = ControlOf(window.frame(), QStringLiteral("button_2003"));
  EXPECT_FALSE(button->isEnabled());
  ClickRow(window.sim().list(), 1);
  window.Pump();
  EXPECT_TRUE(button->isEnabled());
  window.sim().list().ClearSelection();
  window.Pump();
  EXPECT_FALSE(button->isEnabled());
}

}  // namespace
}  // namespace celldesk

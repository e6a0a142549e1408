#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ui/window/book_window.h"

namespace celldesk {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(AddressDelete, NamesTheOneEntry) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(window.LastBox(),
              IsQuestion("Do you really want to delete address 'Bert'?", BoxIcon::kQuestion, false));
  EXPECT_THAT(window.SimRows(), ElementsAre("1|Anna|+447700900101", "4|Carl|0044"));
  EXPECT_EQ(window.SimEntry(1).flags, AddressEntry::kModified);
  EXPECT_TRUE(window.SimEntry(1).id.empty());
  window.Command(command::kUpload);
  EXPECT_THAT(window.TakeWrites(), ElementsAre("AT+CPBW=2"));
  EXPECT_THAT(window.PhoneEntries("SM"), ElementsAre("1|Anna|+447700900101", "4|Carl|0044"));
}

TEST(AddressDelete, CountsSeveralEntries) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 0);
  ClickRow(window.sim().list(), 2, Qt::ControlModifier);
  window.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(window.LastBox(),
              IsQuestion("Do you really want to delete 2 items?", BoxIcon::kQuestion, false));
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Bert|112"));
  EXPECT_EQ(window.SimEntry(0).flags, AddressEntry::kModified);
  EXPECT_EQ(window.SimEntry(3).flags, AddressEntry::kModified);
}

TEST(AddressDelete, ChangesNothingOnNo) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.CommandAnswering(command::kDelete, kAnswerNo);
  EXPECT_EQ(window.sim().list().RowCount(), 3);
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressDelete, AsksNothingWithoutASelection) {
  BookWindow window(ThreeEntries());
  window.Load();
  EXPECT_FALSE(window.IsEnabled(command::kDelete));
  window.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_EQ(window.sim().list().RowCount(), 3);
}

TEST(AddressDelete, IsTheDeleteKeyTheAcceleratorTheButtonAndTheMenuItem) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickRow(window.sim().list(), 1);
  window.Pump();
  PressKey(window.sim().list(), Qt::Key_Delete);
  PressKey(window.sim().list(), Qt::Key_D, Qt::ControlModifier);
  ClickBarButton(window.frame(), command::kDelete);
  PickMenuItem(window.frame(), command::kDelete);
  const std::string question = "Do you really want to delete address 'Bert'?";
  EXPECT_THAT(window.TakeAsked(), ElementsAre(question, question, question, question));
}

TEST(AddressDelete, DeletesTheRightRowsOfASortedList) {
  BookWindow window(ThreeEntries());
  window.Load();
  ClickHeader(window.sim().list(), 0);
  EXPECT_THAT(window.SimRows(), ElementsAre("4|Carl|0044", "2|Bert|112", "1|Anna|+447700900101"));
  WindowSession::SelectRows(window.sim(), {0, 2});
  window.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(window.SimRows(), ElementsAre("2|Bert|112"));
  EXPECT_FALSE(window.SimEntry(1).is_modified());
}

TEST(AddressDeleteAll, EmptiesListAndBookOnYes) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_THAT(window.LastBox(),
              IsQuestion("Do you really want to delete all items?", BoxIcon::kQuestion, false));
  EXPECT_EQ(window.sim().list().RowCount(), 0);
  for (const AddressEntry& entry : window.sim().book().entries())
    EXPECT_EQ(entry.flags, AddressEntry::kModified);
}

TEST(AddressDeleteAll, EmptiesTheEntriesOnNoTooAndKeepsTheRows) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.CommandAnswering(command::kDeleteAll, kAnswerNo);
  EXPECT_THAT(window.SimRows(), ElementsAre("||", "||", "||"));
  for (const AddressEntry& entry : window.sim().book().entries())
    EXPECT_EQ(entry.flags, AddressEntry::kModified);
}

TEST(AddressDeleteAll, ErasesEverySlotAtTheNextUpload) {
  BookWindow window(ThreeEntries());
  window.Load();
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  window.CommandAnswering(command::kUpload, kAnswerYes);
  EXPECT_THAT(window.TakeWrites(),
              ElementsAre("AT+CPBW=1", "AT+CPBW=2", "AT+CPBW=3", "AT+CPBW=4", "AT+CPBW=5"));
  EXPECT_THAT(window.PhoneEntries("SM"), IsEmpty());
  EXPECT_FALSE(window.sim().book().IsModified());
}

TEST(AddressDeleteAll, LeavesTheOtherBookAlone) {
  BookWindow window(PhoneWith({{1, "1", u"A"}}, 5, {{1, "2", u"B"}}, 5));
  window.Load();
  window.ShowFolder(1);
  window.Load();
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_THAT(window.SimRows(), ElementsAre("1|A|1"));
  EXPECT_FALSE(window.sim().book().IsModified());
  EXPECT_TRUE(window.phone_book().book().IsModified());
}

}  // namespace
}  // namespace celldesk

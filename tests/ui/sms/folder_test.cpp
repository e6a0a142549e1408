#include <QWidget>

#include "config/settings_store.h"
#include "ui/framework/menu_state.h"
#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kLoseChanges =
    "You made changes that will be lost if you load new SMS from your mobile phone.\rDo you want to "
    "continue?";
constexpr const char* kDeleteAllQuestion = "Do you really want to delete all items?";

std::string DeleteNewQuestion(int count) {
  return "You requested to delete " + std::to_string(count) +
         " new items. These items will be deleted (without undo).\rDo you want to continue?";
}

bool IsButtonEnabled(SmsWindow& window, int command) {
  return ControlOf(window.frame(), QStringLiteral("button_%1").arg(command))->isEnabled();
}

MenuState Menu(SmsWindow& window) { return window.frame().Surface().QueryState(); }

// Makes the row's message one that was written here and not stored yet.
void MakeNew(SmsFolderView& folder, int row) { folder.MessageAt(row).flags |= kMessageNew; }

TEST(SmsFolderView, BothFoldersAreEmptyUntilTheFirstLoad) {
  SmsWindow window;
  EXPECT_THAT(SmsWindow::Rows(window.inbox()), IsEmpty());
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(SmsWindow::Rows(window.outbox()), IsEmpty());
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty());
}

TEST(SmsFolderView, LoadShowsTheReceivedMessagesInListingOrder) {
  SmsWindow window;
  window.Load();
  EXPECT_THAT(
      SmsWindow::Rows(window.inbox()),
      ElementsAre("SM|+447700900101|4.1.2026 18:30:00|Coffee at ten?",
                  "SM|07700900999|3.1.2026 09:12:45|Who are you?",
                  "SM|+447700900102|10.1.2026 19:02:10|Message delivery SUCCESS, status(0x0,Short message "
                  "received by the SME)severity(Short message transaction completed)."));
  EXPECT_THAT(window.TakePhoneLines(),
              ElementsAre("AT+CPMS=\"SM\",\"SM\"", "AT+CMGL=4", "AT+CPMS=\"ME\",\"ME\"", "AT+CMGL=4"));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsFolderView, TheOtherFolderShowsItsPartOfTheSameModel) {
  SmsWindow window;
  window.Load();
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(SmsWindow::Rows(window.outbox()),
              ElementsAre("SM|+447700900102|24:0 hours|Train is late", "ME|0123||Done"));
  EXPECT_EQ(window.messages().count(), 5);
}

TEST(SmsFolderView, ANewLoadReplacesTheRowsOfBothFolders) {
  SmsWindow window;
  window.Load();
  window.ShowFolder(kOutboxTab);
  window.phone().memory().FindStore("SM")->messages.erase(1);
  window.phone().memory().FindStore("ME")->messages.clear();
  window.Load();
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late"));
  window.ShowFolder(kInboxTab);
  EXPECT_EQ(window.inbox().list().RowCount(), 2);
  EXPECT_EQ(SmsWindow::Cell(window.inbox(), 0, 3), "Who are you?");
}

TEST(SmsFolderView, LoadWaitsHalfASecondBeforeItListens) {
  SmsWindow window;
  window.Load();
  const auto& pauses = window.waiter.pauses();
  ASSERT_GE(pauses.size(), 3U);
  EXPECT_EQ(pauses[pauses.size() - 3], std::chrono::milliseconds(500));
}

TEST(SmsFolderView, TheStatusLineCountsTheMessagesThatArrive) {
  SmsWindow window;
  std::vector<std::string> seen;
  for (int ms = 1; ms < 3000; ms += 1) {
    window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(ms), [&] {
      if (window.application->frame() == nullptr) return;
      if (seen.empty() || seen.back() != window.StatusLine()) seen.push_back(window.StatusLine());
    });
  }
  window.Load();
  EXPECT_EQ(seen.front(), "Reading Inbox... 0");
  EXPECT_THAT(seen, testing::Contains("Reading Inbox... 4"));
  EXPECT_EQ(window.StatusLine(), "Connected to COM1:");
}

TEST(SmsFolderView, TheOtherFolderIsWholeEvenWhenItIsShownDuringTheLoad) {
  SmsWindow window;
  window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(1200),
                     [&] { window.frame().pages().Select(kOutboxTab); });
  window.Load();
  EXPECT_EQ(window.frame().pages().Current(), kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done"));
  window.ShowFolder(kInboxTab);
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
}

TEST(SmsFolderView, LoadAsksBeforeItDropsChangesAndNoKeepsThem) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.Command(command::kDelete);
  window.TakePhoneLines();
  window.CommandAnswering(command::kLoadData, kAnswerNo);
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kLoseChanges));
  EXPECT_EQ(window.LastBox().icon, BoxIcon::kQuestion);
  EXPECT_EQ(window.LastBox().buttons, BoxButtons::kYesNo);
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty());
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), kMessageInUse | kMessageChanged | kMessageToDelete);
  window.CommandAnswering(command::kLoadData, kAnswerYes);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), kMessageInUse);
}

TEST(SmsFolderView, LoadDoesNothingWithoutAConnection) {
  SmsWindow window;
  window.Load();
  window.Command(command::kDisconnect);
  window.TakePhoneLines();
  window.Load();
  window.Command(command::kUpload);
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
  EXPECT_THAT(window.TakePhoneLines(), IsEmpty());
}

TEST(SmsFolderView, FontsTellWhatWillHappenToAMessage) {
  SmsWindow window;
  window.Load();
  EXPECT_EQ(window.inbox().ItemFont(window.inbox().list().RecordAt(0)), FontRole::kNormal);
  EXPECT_EQ(window.inbox().ItemFont(window.inbox().list().RecordAt(1)), FontRole::kBold);
  EXPECT_EQ(window.inbox().ItemImage(window.inbox().list().RecordAt(0)), 0);
  EXPECT_EQ(window.inbox().ItemImage(window.inbox().list().RecordAt(1)), 1);
  window.Select(window.inbox(), {1});
  window.Command(command::kDelete);
  EXPECT_EQ(window.inbox().ItemFont(window.inbox().list().RecordAt(1)), FontRole::kStruckOut);
}

TEST(SmsFolderView, ImagesLeaveTheNarrowMemoryColumnToItsText) {
  SmsWindow window;
  window.Load();
  const QAbstractItemModel* model = window.inbox().list().native()->table->model();
  EXPECT_FALSE(model->index(0, 0).data(Qt::DecorationRole).isValid());
  EXPECT_TRUE(model->index(0, 1).data(Qt::DecorationRole).isValid());
}

TEST(SmsFolderView, DeleteTwiceLeavesAMessageUnmarkedAndChanged) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.Command(command::kDelete);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
  window.Command(command::kDelete);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 3U);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsFolderView, DeleteMarksEverySelectedMessageOnly) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0, 2});
  window.Command(command::kDelete);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 0x21U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 2), 7U);
}

TEST(SmsFolderView, DeleteWithNothingSelectedDoesNothing) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {});
  window.Command(command::kDelete);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 1U);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsFolderView, DeleteOfOneNewAndTwoStoredAsksAboutThreeAndRemovesTheNewOne) {
  SmsWindow window;
  window.Load();
  MakeNew(window.inbox(), 1);
  window.Select(window.inbox(), {0, 1, 2});
  window.CommandAnswering(command::kDelete, kAnswerYes);
  EXPECT_THAT(window.TakeAsked(), ElementsAre(DeleteNewQuestion(3)));
  EXPECT_EQ(window.LastBox().buttons, BoxButtons::kYesNo);
  ASSERT_EQ(window.inbox().list().RowCount(), 2);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 7U);
  EXPECT_EQ(window.messages().At(1).flags, 0U);
}

TEST(SmsFolderView, RefusingToDeleteNewMessagesLeavesEveryMark) {
  SmsWindow window;
  window.Load();
  MakeNew(window.inbox(), 1);
  window.Select(window.inbox(), {0, 1});
  window.CommandAnswering(command::kDelete, kAnswerNo);
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 1U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 0x21U | kMessageNew);
}

TEST(SmsFolderView, TheDeleteKeyDeletes) {
  SmsWindow window;
  window.Load();
  ClickRow(window.inbox().list(), 0);
  PressKey(window.inbox().list(), Qt::Key_Delete);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
}

TEST(SmsFolderView, DeleteAllMarksAndNeverUnmarks) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.Command(command::kDelete);
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kDeleteAllQuestion));
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 0x27U);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 2), 7U);
  window.ShowFolder(kOutboxTab);
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 1U);
}

TEST(SmsFolderView, DeleteAllRemovesNewMessagesAtOnce) {
  SmsWindow window;
  window.Load();
  MakeNew(window.inbox(), 0);
  MakeNew(window.inbox(), 1);
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  ASSERT_EQ(window.inbox().list().RowCount(), 1);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 7U);
  EXPECT_EQ(window.messages().At(0).flags, 0U);
}

TEST(SmsFolderView, DeleteAllAnsweredNoChangesNothing) {
  SmsWindow window;
  window.Load();
  window.CommandAnswering(command::kDeleteAll, kAnswerNo);
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 0), 1U);
}

TEST(SmsFolderView, DeleteAllOnAnEmptyListAsksAndChangesNothing) {
  SmsWindow window;
  window.CommandAnswering(command::kDeleteAll, kAnswerYes);
  EXPECT_THAT(window.TakeAsked(), ElementsAre(kDeleteAllQuestion));
  EXPECT_FALSE(window.messages().IsChanged());
}

TEST(SmsFolderView, ShowNamesIsOnFirstAndToggles) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 1), ElementsAre("Anna", "07700900999", "Ben"));
  EXPECT_TRUE(Menu(window).IsChecked(command::kShowNames));
  window.Command(command::kShowNames);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 1),
              ElementsAre("+447700900101", "07700900999", "+447700900102"));
  EXPECT_FALSE(Menu(window).IsChecked(command::kShowNames));
  window.Command(command::kShowNames);
  EXPECT_EQ(SmsWindow::Cell(window.inbox(), 0, 1), "Anna");
}

TEST(SmsFolderView, TheNamesSwitchBelongsToItsFolder) {
  SmsWindow window;
  window.LoadNames();
  window.Load();
  window.Command(command::kShowNames);
  window.ShowFolder(kOutboxTab);
  EXPECT_EQ(SmsWindow::Cell(window.outbox(), 0, 1), "Ben");
}

TEST(SmsFolderView, SenderHeaderSortsByTimeAndDateHeaderByDisplayedText) {
  SmsWindow window;
  window.Load();
  ClickHeader(window.inbox().list(), 1);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("3.1.2026 09:12:45", "4.1.2026 18:30:00", "10.1.2026 19:02:10"));
  ClickHeader(window.inbox().list(), 2);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("10.1.2026 19:02:10", "3.1.2026 09:12:45", "4.1.2026 18:30:00"));
}

TEST(SmsFolderView, AClickOnTheSortedHeaderTurnsTheOrder) {
  SmsWindow window;
  window.Load();
  ClickHeader(window.inbox().list(), 1);
  ClickHeader(window.inbox().list(), 1);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("10.1.2026 19:02:10", "4.1.2026 18:30:00", "3.1.2026 09:12:45"));
  ClickHeader(window.inbox().list(), 3);
  EXPECT_EQ(SmsWindow::Cell(window.inbox(), 0, 3), "Who are you?");
}

TEST(SmsFolderView, BothFoldersStaySortedByTheirHeadersWhenTheyAreLoadedAgain) {
  SmsWindow window;
  window.Load();
  ClickHeader(window.inbox().list(), 2);
  window.ShowFolder(kOutboxTab);
  ClickHeader(window.outbox().list(), 1);
  window.Load();
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Done", "Train is late"));
  window.ShowFolder(kInboxTab);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("10.1.2026 19:02:10", "3.1.2026 09:12:45", "4.1.2026 18:30:00"));
}

TEST(SmsFolderView, MessagesWithoutTimeStandLastInBothDirections) {
  SmsWindow window;
  window.Load();
  window.inbox().MessageAt(0).deliver.timestamp.MarkSet(false);
  ClickHeader(window.inbox().list(), 1);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("3.1.2026 09:12:45", "10.1.2026 19:02:10", ""));
  ClickHeader(window.inbox().list(), 1);
  EXPECT_THAT(SmsWindow::Column(window.inbox(), 2),
              ElementsAre("10.1.2026 19:02:10", "3.1.2026 09:12:45", ""));
}

TEST(SmsFolderView, OutboxSortsByValidityAndNotByBody) {
  SmsWindow window;
  window.Load();
  window.ShowFolder(kOutboxTab);
  ClickHeader(window.outbox().list(), 1);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Done", "Train is late"));
  ClickHeader(window.outbox().list(), 3);
  ClickHeader(window.outbox().list(), 3);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Done", "Train is late"));
}

TEST(SmsFolderView, InboxMenuFollowsTheSelection) {
  SmsWindow window;
  window.Load();
  const auto enabled = [&](std::vector<int> rows) {
    window.Select(window.inbox(), rows);
    const MenuState menu = Menu(window);
    std::string text;
    for (const int one : {command::kOpen, command::kDelete, command::kReply, command::kForward})
      text += menu.IsEnabled(one) ? '1' : '0';
    return text;
  };
  EXPECT_EQ(enabled({}), "0000");
  EXPECT_EQ(enabled({1}), "1111");
  EXPECT_EQ(enabled({0, 2}), "1100");
}

TEST(SmsFolderView, OutboxMenuFollowsTheSelection) {
  SmsWindow window;
  window.Load();
  window.ShowFolder(kOutboxTab);
  const auto enabled = [&](std::vector<int> rows) {
    window.Select(window.outbox(), rows);
    const MenuState menu = Menu(window);
    std::string text;
    for (const int one :
         {command::kOpen, command::kDelete, command::kReply, command::kForward, command::kNew})
      text += menu.IsEnabled(one) ? '1' : '0';
    return text;
  };
  EXPECT_EQ(enabled({}), "00001");
  EXPECT_EQ(enabled({1}), "11011");
  EXPECT_EQ(enabled({0, 1}), "11011");
}

TEST(SmsFolderView, ButtonsAreEnabledByAnySelectionAndTheConnection) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {});
  for (const int one : {command::kDelete, command::kReply, command::kForward})
    EXPECT_FALSE(IsButtonEnabled(window, one)) << one;
  window.Select(window.inbox(), {0, 1});
  for (const int one :
       {command::kDelete, command::kReply, command::kForward, command::kLoadData, command::kUpload})
    EXPECT_TRUE(IsButtonEnabled(window, one)) << one;
  window.Command(command::kDisconnect);
  EXPECT_FALSE(IsButtonEnabled(window, command::kLoadData));
  EXPECT_FALSE(IsButtonEnabled(window, command::kUpload));
}

TEST(SmsFolderView, NothingElseStartsWhileMessagesAreRead) {
  SmsWindow window;
  std::vector<bool> enabled;
  window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(900), [&] {
    const MenuState menu = Menu(window);
    for (const int one : {command::kDelete, command::kDeleteAll, command::kLoadData, command::kUpload,
                          command::kDisconnect, command::kOpen})
      enabled.push_back(menu.IsEnabled(one));
    window.frame().OnCommand(command::kDeleteAll, 0);
  });
  window.Load();
  EXPECT_THAT(enabled, testing::Each(false));
  EXPECT_EQ(enabled.size(), 6U);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
}

TEST(SmsFolderView, IgnoresCommandsOfOthers) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  for (const int one :
       {command::kItemAssignment, command::kAllItems, command::kSend, command::kSendSms, 2001, 2055})
    window.Command(one);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_FALSE(window.messages().IsChanged());
}

TEST(SmsFolderView, KeepsItsColumnWidthsUnderItsOwnName) {
  SmsWindow window;
  window.inbox().list().SetWidths({31, 121, 101, 371});
  window.ShowFolder(kOutboxTab);
  window.outbox().list().SetWidths({32, 122, 102, 372});
  window.ShowFolder(kSimTab);
  const SettingsStore store(window.registry);
  EXPECT_THAT(store.LoadColumnWidths(u"InboxCols", 4), ElementsAre(31, 121, 101, 371));
  EXPECT_THAT(store.LoadColumnWidths(u"OutboxCols", 4), ElementsAre(32, 122, 102, 372));
}

TEST(SmsFolderView, ShowsTheColumnsOfItsFolder) {
  SmsWindow window;
  const auto captions = [](ListView& list) {
    std::vector<std::string> texts;
    for (int column = 0; column < list.ColumnCount(); ++column) texts.push_back(HeaderText(list, column));
    return texts;
  };
  EXPECT_THAT(captions(window.inbox().list()), ElementsAre("M", "Sender", "Date", "Message Body"));
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(captions(window.outbox().list()), ElementsAre("M", "Recipient", "Validity", "Message Body"));
}

TEST(SmsFolderView, LeavingAsksAboutChangedMessages) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {0});
  window.Command(command::kDelete);
  window.CommandAnswering(command::kDisconnect, kAnswerNo);
  EXPECT_THAT(window.TakeAsked(), ElementsAre("You changed SMS message(s). Do you want to exit?"));
  EXPECT_TRUE(window.frame().IsConnected());
  window.CommandAnswering(command::kDisconnect, kAnswerYes);
  EXPECT_FALSE(window.frame().IsConnected());
}

TEST(SmsFolderView, AMessageThatWasOnlyOpenedIsNoChange) {
  SmsWindow window;
  window.Load();
  window.Select(window.inbox(), {1});
  window.InDialog(command::kOpen, [](Dialog&) {});
  EXPECT_EQ(SmsWindow::Flags(window.inbox(), 1), 1U);
  window.Command(command::kDisconnect);
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

}  // namespace
}  // namespace celldesk

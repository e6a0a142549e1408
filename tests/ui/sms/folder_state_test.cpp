#include "ui/framework/qt/list_table.h"
#include "ui/framework/qt/native.h"
#include "ui/sms/editor_window.h"

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kConnectFirst = "Connect (Services menu), then Load Data";
constexpr const char* kLoadFirst = "Load Data (Services menu) fetches the phone's messages";

std::string EmptyTextOf(SmsFolderView& folder) {
  EXPECT_EQ(folder.list().RowCount(), 0);
  return folder.list().native()->table->empty_text().toStdString();
}

/// Writes and sends a message in the folder that is shown.
void Write(SmsWindow& window, const QString& text) {
  window.InDialog(command::kNew, [&](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("0123"));
    TypeText(dialog, editor::kBody, text);
    Give(dialog, command::kSend);
  });
}

TEST(SmsFolderView, AnEmptyFolderSaysWhatToDoNext) {
  SmsWindow window{simulator::PhoneMemory()};
  EXPECT_EQ(EmptyTextOf(window.inbox()), kLoadFirst);
  window.ShowFolder(kOutboxTab);
  EXPECT_EQ(EmptyTextOf(window.outbox()), kLoadFirst);
  window.Load();
  EXPECT_EQ(EmptyTextOf(window.outbox()), "No messages. New writes one");
  window.ShowFolder(kInboxTab);
  EXPECT_EQ(EmptyTextOf(window.inbox()), "No messages");
  window.Command(command::kDisconnect);
  EXPECT_EQ(EmptyTextOf(window.inbox()), kConnectFirst);
  window.ShowFolder(kOutboxTab);
  EXPECT_EQ(EmptyTextOf(window.outbox()), kConnectFirst);
  window.Command(command::kConnect);
  EXPECT_EQ(EmptyTextOf(window.outbox()), "No messages. New writes one");
}

TEST(SmsFolderView, AFolderWhoseLoadFailedStillSaysToLoad) {
  SmsWindow window{simulator::PhoneMemory()};
  ASSERT_TRUE(window.phone().AddFault("AT+CPMS=#1:error"));
  window.Load();
  EXPECT_EQ(EmptyTextOf(window.inbox()), kLoadFirst);
}

TEST(SmsFolderView, AMessageWrittenAfterAFailedLoadHasItsRowAtOnce) {
  EditorWindow window;
  ASSERT_TRUE(window.phone().AddFault("AT+CMGL=4#2:error"));
  window.Load();
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late"));
  Write(window, QStringLiteral("new"));
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "new"));
  EXPECT_THAT(window.outbox().list().SelectedRows(), ElementsAre(1));
  window.ShowFolder(kInboxTab);
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "new"));
}

TEST(SmsFolderView, AMessageWrittenBeforeTheFirstLoadHasItsRowAtOnce) {
  SmsWindow window;
  window.ShowFolder(kOutboxTab);
  Write(window, QStringLiteral("early"));
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("early"));
}

TEST(SmsFolderView, AFolderHiddenDuringALoadShowsAllOfItAndNothingTwice) {
  EditorWindow window;
  window.ShowFolder(kInboxTab);
  window.Load();
  window.Select(window.inbox(), {0});
  window.InDialog(command::kReply, [](Dialog& dialog) { Give(dialog, command::kSend); });
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "Coffee at ten?"));
}

TEST(SmsFolderView, ALoadThatFailsAtOnceLeavesBothFoldersEmpty) {
  EditorWindow window;
  ASSERT_TRUE(window.phone().AddFault("AT+CPMS=#1:error"));
  window.Load();
  EXPECT_THAT(window.TakeAsked(), ElementsAre("ERROR"));
  EXPECT_THAT(window.OutboxTexts(), IsEmpty());
  window.ShowFolder(kInboxTab);
  EXPECT_THAT(window.InboxTexts(), IsEmpty());
}

TEST(SmsFolderView, AnUploadRefusedItsDownloadKeepsTheSkippedMessage) {
  EditorWindow window;
  Write(window, QStringLiteral("waits"));
  ASSERT_TRUE(window.phone().AddFault("PDU#1:cms-error:38"));
  window.boxes.Answer(kAnswerNo);  // do not retry
  window.boxes.Answer(kAnswerNo);  // do not lose the change
  window.Command(command::kUpload);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "waits"));
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 27U);
  window.Command(command::kUpload);
  EXPECT_EQ(window.SentBodies().size(), 1U);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done"));
}

TEST(SmsFolderView, AnUploadAfterTheRefusedDownloadSendsNothingAgain) {
  EditorWindow window;
  Write(window, QStringLiteral("sent"));
  Write(window, QStringLiteral("skipped"));
  ASSERT_TRUE(window.phone().AddFault("PDU#2:cms-error:38"));
  for (int i = 0; i < 2; ++i) window.boxes.Answer(kAnswerNo);
  window.Command(command::kUpload);
  EXPECT_EQ(window.SentBodies().size(), 1U);
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), kMessageInUse);
  window.Command(command::kUpload);
  EXPECT_EQ(window.SentBodies().size(), 2U);
}

}  // namespace
}  // namespace celldesk

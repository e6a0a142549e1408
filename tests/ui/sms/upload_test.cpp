#include <QCursor>
#include <QGuiApplication>

#include "config/settings_store.h"
#include "ui/sms/sms_window.h"

namespace celldesk {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* kCentreField = "0791447700090000";

void Give(Dialog& dialog, int command) {
  dialog.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
}

std::string SendQuestion(const std::string& text, const std::string& number, const std::string& error) {
  return "When sending SMS \"" + text + "\"  for " + number + " there was an error: '" + error +
         "' .\r Do you want to retry?";
}

/// The Outbox loaded from a phone; messages are written and uploaded.
class UploadWindow : public SmsWindow {
 public:
  explicit UploadWindow(simulator::PhoneMemory memory = PhoneWithMessages(), simulator::Profile profile = {})
      : SmsWindow(std::move(memory), std::move(profile)) {
    Load();
    ShowFolder(kOutboxTab);
    TakePhoneLines();
  }
  /// A new message, ended with Send; `save_to` is the place in the "Save to:" list.
  SmsMessage& Write(const QString& number, const QString& text, int save_to = 0) {
    InDialog(command::kNew, [&](Dialog& dialog) {
      TypeText(dialog, editor::kRecipient, number);
      TypeText(dialog, editor::kBody, text);
      PickChoice(dialog, editor::kSaveTo, save_to);
      Give(dialog, command::kSend);
    });
    return outbox().MessageAt(outbox().list().RowCount() - 1);
  }
  void Upload() { Command(command::kUpload); }
};

TEST(SmsUpload, SendsANewMessageByteForByteAndReloads) {
  UploadWindow window;
  const std::string pdu = Utf8(window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi")).pdu_text);
  window.Upload();
  EXPECT_THAT(window.SentBodies(), ElementsAre(kCentreField + pdu));
  EXPECT_THAT(window.phone().received_bytes(),
              HasSubstr("AT+CMGS=" + std::to_string(pdu.size() / 2) + "\r" + kCentreField + pdu + "\x1A"));
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done"));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
  EXPECT_FALSE(window.messages().IsChanged());
}

TEST(SmsUpload, SendsWithoutTheCentreWhenTheAdapterIsUsed) {
  simulator::Profile profile = *simulator::MakeProfile("no-smsc");
  WindowSession session(PhoneWithMessages(), profile);
  Settings settings;
  settings.centre = u"+447700900000";
  settings.use_adapter = true;
  SettingsStore(session.registry).Save(settings);
  ASSERT_TRUE(session.Start());
  session.Command(command::kConnect);
  session.ShowFolder(kOutboxTab);
  session.InNextDialog([](Dialog& dialog) {
    TypeText(dialog, editor::kRecipient, QStringLiteral("+447700900555"));
    TypeText(dialog, editor::kBody, QStringLiteral("Hi"));
    Give(dialog, command::kSend);
  });
  session.Command(command::kNew);
  const std::string pdu = Utf8(session.frame().outbox().MessageAt(0).pdu_text);
  session.Command(command::kUpload);
  ASSERT_EQ(session.phone().memory().sent.size(), 1U);
  EXPECT_EQ(session.phone().memory().sent.front().body, pdu);
  EXPECT_THAT(session.phone().received_bytes(),
              HasSubstr("AT+CMGS=" + std::to_string(pdu.size() / 2) + "\r" + pdu + "\x1A"));
}

TEST(SmsUpload, StoresAndSendsAMessageMarkedForBoth) {
  UploadWindow window;
  window.Write(QStringLiteral("0123456"), QStringLiteral("both"), 2);
  window.Upload();
  EXPECT_EQ(window.SentBodies().size(), 1U);
  EXPECT_THAT(SmsWindow::Rows(window.outbox()), Contains("ME|0123456|7 days|both"));
  EXPECT_EQ(window.messages().At(window.messages().count() - 1).flags, kMessageInUse);
}

TEST(SmsUpload, ASavedMessageIsStoredAndNotSent) {
  UploadWindow window;
  window.Select(window.outbox(), {0});
  window.InDialog(command::kOpen, [](Dialog& dialog) {
    TypeText(dialog, editor::kBody, QStringLiteral("!"));
    PickChoice(dialog, editor::kSaveTo, 2);
    Give(dialog, command::kSave);
  });
  window.Upload();
  EXPECT_THAT(window.SentBodies(), IsEmpty());
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late", "Done", "Train is late!"));
}

TEST(SmsUpload, DeletedMessagesVanishInBothFolders) {
  UploadWindow window;
  window.Select(window.outbox(), {0});
  window.Command(command::kDelete);
  window.ShowFolder(kInboxTab);
  window.Select(window.inbox(), {1, 2});
  window.Command(command::kDelete);
  window.Upload();
  EXPECT_THAT(window.InboxTexts(), ElementsAre("Coffee at ten?"));
  window.ShowFolder(kOutboxTab);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Done"));
  EXPECT_EQ(window.phone().memory().FindStore("SM")->messages.size(), 1U);
}

TEST(SmsUpload, WithNothingPendingOnlyReloads) {
  UploadWindow window;
  window.Upload();
  EXPECT_THAT(window.TakePhoneLines(),
              ElementsAre("AT+CPMS=\"SM\",\"SM\"", "AT+CMGL=4", "AT+CPMS=\"ME\",\"ME\"", "AT+CMGL=4"));
  EXPECT_THAT(window.TakeAsked(), IsEmpty());
}

TEST(SmsUpload, TheStatusLineCountsWhatIsDone) {
  UploadWindow window;
  window.Write(QStringLiteral("0123456"), QStringLiteral("one"));
  window.Write(QStringLiteral("0123456"), QStringLiteral("two"));
  std::vector<std::string> seen;
  for (int ms = 1; ms < 8000; ms += 5) {
    window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(ms), [&] {
      if (window.application->frame() == nullptr) return;
      if (seen.empty() || seen.back() != window.StatusLine()) seen.push_back(window.StatusLine());
    });
  }
  window.Upload();
  EXPECT_EQ(seen.front(), "Uploading Outbox...");
  EXPECT_THAT(seen, Contains("Uploading Outbox... 1"));
  EXPECT_THAT(seen, Contains("Reading Outbox... 0"));
}

TEST(SmsUpload, AMessageToTheOwnNumberComesBack) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900123"), QStringLiteral("Note to self"));
  window.Upload();
  window.ShowFolder(kInboxTab);
  EXPECT_THAT(window.InboxTexts(), Contains("Note to self"));
}

TEST(SmsUpload, AskingNamesTextRecipientAndErrorAndOffersThreeAnswers) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  ASSERT_TRUE(window.phone().AddFault("PDU:cms-error:38"));
  window.boxes.Answer(kAnswerCancel);
  window.Upload();
  const std::vector<BoxQuestion>& asked = window.boxes.asked();
  ASSERT_GE(asked.size(), 2U);
  EXPECT_EQ(Utf8(asked[asked.size() - 2].text), SendQuestion("Hi", "+447700900555", "+CMS ERROR: 38"));
  EXPECT_EQ(asked[asked.size() - 2].buttons, BoxButtons::kYesNoCancel);
  EXPECT_EQ(asked[asked.size() - 2].icon, BoxIcon::kInformation);
  EXPECT_EQ(asked.back().caption, u"Communication error");
  EXPECT_EQ(asked.back().text, u"+CMS ERROR: 38");
}

// Its last octet would hold no bits and is not written; this phone wants all of them.
TEST(SmsUpload, ATextThatAPhoneRefusesForItsLastOctetWaitsAndGoesOutWithALetterMore) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Room 11"));
  const std::string longer =
      Utf8(window.Write(QStringLiteral("+447700900555"), QStringLiteral("Room 11x")).pdu_text);
  window.boxes.Answer(kAnswerNo);
  window.boxes.Answer(kAnswerNo);
  window.Upload();
  EXPECT_THAT(window.TakeAsked(), Contains(SendQuestion("Room 11", "+447700900555", "+CMS ERROR: 304")));
  EXPECT_THAT(window.SentBodies(), ElementsAre(kCentreField + longer));
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 27U);
}

TEST(SmsUpload, YesSendsAgain) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  ASSERT_TRUE(window.phone().AddFault("PDU#1:cms-error:38"));
  window.boxes.Answer(kAnswerYes);
  window.Upload();
  EXPECT_EQ(window.SentBodies().size(), 1U);
  EXPECT_EQ(window.TakeAsked().size(), 1U);
  EXPECT_FALSE(window.messages().IsChanged());
}

TEST(SmsUpload, NoSkipsTheMessageAndGoesOnWithTheNext) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("one"));
  const std::string second =
      Utf8(window.Write(QStringLiteral("+447700900555"), QStringLiteral("two")).pdu_text);
  ASSERT_TRUE(window.phone().AddFault("PDU#1:cms-error:38"));
  window.boxes.Answer(kAnswerNo);
  window.boxes.Answer(kAnswerNo);
  window.Upload();
  EXPECT_THAT(window.SentBodies(), ElementsAre(kCentreField + second));
  EXPECT_THAT(window.TakeAsked(),
              ElementsAre(SendQuestion("one", "+447700900555", "+CMS ERROR: 38"),
                          testing::StartsWith("You made changes that will be lost if you load new SMS")));
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 27U);
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 3), kMessageInUse);
}

TEST(SmsUpload, CancelStopsTheUploadAndKeepsWhatIsLeft) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("one"));
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("two"));
  ASSERT_TRUE(window.phone().AddFault("PDU#1:cms-error:38"));
  window.boxes.Answer(kAnswerCancel);
  window.Upload();
  EXPECT_THAT(window.SentBodies(), IsEmpty());
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 27U);
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 3), 27U);
  EXPECT_EQ(window.TakeAsked().size(), 2U);
  window.Upload();
  EXPECT_EQ(window.SentBodies().size(), 2U);
}

TEST(SmsUpload, AMessageWhoseAnswerIsLostIsSentAgainOnlyWhenTheUserSaysSo) {
  for (const int answer : {kAnswerNo, kAnswerCancel}) {
    UploadWindow window;
    window.Write(QStringLiteral("+447700900555"), QStringLiteral("once"));
    ASSERT_TRUE(window.phone().AddFault("PDU#1:silence"));
    window.boxes.Answer(answer);
    window.Upload();
    EXPECT_EQ(window.SentBodies().size(), 1U);
  }
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("twice"));
  ASSERT_TRUE(window.phone().AddFault("PDU#1:silence"));
  window.boxes.Answer(kAnswerYes);
  window.Upload();
  EXPECT_EQ(window.SentBodies().size(), 2U);
}

TEST(SmsUpload, AStoreThatFailsIsAskedAboutAndNotSentWhenSkipped) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"), 1);
  ASSERT_TRUE(window.phone().AddFault("PDU#1:cms-error:322"));
  window.boxes.Answer(kAnswerNo);
  window.boxes.Answer(kAnswerNo);
  window.Upload();
  EXPECT_THAT(window.TakeAsked().front(), HasSubstr("+CMS ERROR: 322"));
  EXPECT_THAT(window.SentBodies(), IsEmpty());
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 155U);
}

TEST(SmsUpload, ADeletionWhoseMemoryCannotBeSelectedStopsTheUpload) {
  UploadWindow window;
  window.Select(window.outbox(), {0});
  window.Command(command::kDelete);
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  ASSERT_TRUE(window.phone().AddFault("AT+CPMS=#1:error"));
  window.Upload();
  EXPECT_THAT(window.TakeAsked(), ElementsAre("ERROR"));
  EXPECT_EQ(window.LastBox().caption, u"Communication error");
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 0), 7U);
  EXPECT_EQ(SmsWindow::Flags(window.outbox(), 2), 27U);
}

TEST(SmsUpload, RowsOfDeletedMessagesGoEvenWhenTheUploadFailsLater) {
  UploadWindow window;
  window.Select(window.outbox(), {0});
  window.Command(command::kDelete);
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  ASSERT_TRUE(window.phone().AddFault("PDU:error"));
  window.boxes.Answer(kAnswerCancel);
  window.Upload();
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Done", "Hi"));
}

TEST(SmsUpload, AFailedDownloadKeepsWhatItProduced) {
  UploadWindow window;
  ASSERT_TRUE(window.phone().AddFault("AT+CMGL=4#2:error"));
  window.Load();
  EXPECT_THAT(window.TakeAsked(), ElementsAre("ERROR"));
  EXPECT_EQ(window.LastBox().caption, u"Communication error");
  EXPECT_EQ(window.LastBox().buttons, BoxButtons::kOk);
  EXPECT_THAT(window.OutboxTexts(), ElementsAre("Train is late"));
  window.ShowFolder(kInboxTab);
  EXPECT_EQ(window.inbox().list().RowCount(), 3);
}

TEST(SmsUpload, APhoneThatSaysNothingIsReportedAsSuch) {
  UploadWindow window;
  ASSERT_TRUE(window.phone().AddFault("*:silence"));
  window.Load();
  EXPECT_EQ(window.LastBox().caption, u"Communication error");
  EXPECT_FALSE(window.LastBox().text.empty());
  EXPECT_EQ(window.StatusLine(), "Connected to COM1:");
}

TEST(SmsUpload, TheWaitCursorEndsWithEveryProcedure) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  ASSERT_TRUE(window.phone().AddFault("PDU#1:error"));
  window.boxes.Answer(kAnswerYes);
  window.Upload();
  EXPECT_THAT(window.waiter.wait_cursor(), ElementsAre(false, true));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(SmsUpload, AnExitAskedForDuringTheUploadWaitsForItsEnd) {
  UploadWindow window;
  window.Write(QStringLiteral("+447700900555"), QStringLiteral("Hi"));
  window.waiter.Post(window.waiter.now() + std::chrono::milliseconds(100),
                     [&] { window.frame().Dispatch(Message::kClose, 0, 0); });
  window.boxes.Answer(kAnswerYes);
  window.Upload();
  EXPECT_EQ(window.SentBodies().size(), 1U);
  EXPECT_FALSE(window.frame().IsAttached());
}

}  // namespace
}  // namespace celldesk

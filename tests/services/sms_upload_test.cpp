#include "sms_fixture.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;

std::string Store(const std::string& memory, const std::string& answer) {
  return Select(memory) + "> AT+CMGW=16\\r\n> 0180" + kHiPdu + "\\x1a\n" + answer;
}

std::string Send(const std::string& answer) {
  return Select("SM") + "> AT+CMGS=16\\r\n> 0180" + kHiPdu + "\\x1a\n" + answer;
}

constexpr const char* kOk = "< OK\n";
constexpr const char* kError = "< +CMS ERROR: 500\n";

/// A session whose view answers with `answers`, one after the other, and then stops.
struct UploadSession : SmsSession {
  explicit UploadSession(const std::string& script, std::vector<UploadAnswer> answers = {})
      : SmsSession(script) {
    service.SetProgress(
        [this, answers](SmsMessage& message, int position) {
          EXPECT_EQ(&message, &service.messages().At(position));
          asked.push_back(position);
          return asked.size() <= answers.size() ? answers[asked.size() - 1] : UploadAnswer::kStop;
        },
        &list);
  }

  std::vector<int> asked;
  RecordingList list;
};

TEST(SmsService, UploadsNothingWhenNothingWasChanged) {
  UploadSession session("");
  AddMessage(session.service, 1 | 4 | 8 | 128);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
}

TEST(SmsService, UploadDeletesAMarkedMessageAndClearsItsRecord) {
  UploadSession session(Select("SM") + "> AT+CMGD=0\\r\n< OK\n");
  AddMessage(session.service, 1 | 2 | 4 | 8 | 128);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.service.messages().count(), 1);
  EXPECT_EQ(session.service.messages().At(0).flags, 0U);
  EXPECT_EQ(session.service.messages().At(0).text, u"");
}

TEST(SmsService, UploadStopsAtADeleteThatFails) {
  UploadSession session(Select("SM", "< ERROR\n"), {UploadAnswer::kRetry});
  AddMessage(session.service, 1 | 2 | 4);
  AddMessage(session.service, 1 | 2 | 4);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
  EXPECT_EQ(session.service.messages().At(0).flags, 7U);
  EXPECT_TRUE(session.asked.empty());
}

TEST(SmsService, UploadStoresAMessage) {
  UploadSession session(Store("ME", kOk));
  SmsMessage& message = AddMessage(session.service, 147, 1);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 1U);
}

TEST(SmsService, UploadSendsAMessage) {
  UploadSession session(Send(kOk));
  SmsMessage& message = AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 1U);
}

TEST(SmsService, UploadStoresAndThenSendsAMessageMarkedForBoth) {
  UploadSession session(Store("SM", kOk) + Send(kOk));
  SmsMessage& message = AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 1U);
}

TEST(SmsService, UploadKeepsTheSendFlagOfAMessageThatWasOnlyStored) {
  UploadSession session(Store("SM", kOk) + Send(kError));
  SmsMessage& message = AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
  EXPECT_EQ(message.flags, 27U);
}

TEST(SmsService, UploadEncodesAMessageBeforeItIsSent) {
  UploadSession session(Send(kOk));
  SmsMessage& message = AddMessage(session.service, 27);
  message.pdu_text.clear();
  EXPECT_EQ(session.service.UploadAll(), S_OK);
}

TEST(SmsService, UploadAsksAboutAMessageThatCannotBeEncoded) {
  UploadSession session("", {UploadAnswer::kSkip});
  AddMessage(session.service, 27).first_octet = 0;
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.asked, (std::vector<int>{0}));
}

TEST(SmsService, UploadGoesThroughTheRecordsInOrder) {
  UploadSession session(Send(kOk) + Select("SM") + "> AT+CMGD=0\\r\n< OK\n" + Store("ME", kOk));
  AddMessage(session.service, 27);
  AddMessage(session.service, 1);
  AddMessage(session.service, 1 | 2 | 4);
  AddMessage(session.service, 147, 1);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_FALSE(session.service.messages().IsChanged());
}

TEST(SmsService, UploadTriesAgainAsOftenAsTheUserWants) {
  UploadSession session(Send(kError) + Send(kError) + Send(kOk),
                        {UploadAnswer::kRetry, UploadAnswer::kRetry});
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.asked, (std::vector<int>{0, 0}));
}

TEST(SmsService, UploadTriesAStoreAgain) {
  UploadSession session(Store("SM", kError) + Store("SM", kOk) + Send(kOk), {UploadAnswer::kRetry});
  AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
}

TEST(SmsService, UploadGoesOnWithTheNextMessageAfterASkip) {
  UploadSession session(Send(kError) + Send(kOk), {UploadAnswer::kSkip});
  SmsMessage& skipped = AddMessage(session.service, 27);
  SmsMessage& sent = AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(skipped.flags, 27U);
  EXPECT_EQ(sent.flags, 1U);
}

TEST(SmsService, UploadDoesNotSendAMessageWhoseStoreWasSkipped) {
  UploadSession session(Store("SM", kError), {UploadAnswer::kSkip});
  SmsMessage& message = AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 155U);
}

TEST(SmsService, UploadTellsTheViewOfEveryRecordItIsDoneWith) {
  UploadSession session(Select("SM") + "> AT+CMGD=0\\r\n< OK\n" + Send(kOk) + Send(kError),
                        {UploadAnswer::kSkip});
  AddMessage(session.service, 1 | 2 | 4);
  AddMessage(session.service, 1);
  AddMessage(session.service, 27);
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.list.rows, (std::vector<int>{0, 2, 3}));
}

TEST(SmsService, UploadHasTheStatusOfItsLastOperation) {
  UploadSession session(Send(kError) + Select("SM", "< ERROR\n"), {UploadAnswer::kSkip});
  AddMessage(session.service, 27);
  AddMessage(session.service, 1 | 2 | 4);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
}

TEST(SmsService, UploadSendsAMessageOnceWhenItsAnswerIsLost) {
  UploadSession session(Send(""), {UploadAnswer::kSkip});
  SmsMessage& message = AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 27U);
  EXPECT_EQ(session.asked.size(), 1U);
}

TEST(SmsService, UploadSendsNothingASecondTimeInALaterUpload) {
  UploadSession session(Send(kOk) + Send(kError) + Send(kOk), {UploadAnswer::kSkip});
  AddMessage(session.service, 27);
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
}

TEST(SmsService, UploadStoresNothingASecondTimeWhenOnlyTheSendingIsTriedAgain) {
  UploadSession session(Store("SM", kOk) + Send(kError) + Send(kError) + Send(kOk), {UploadAnswer::kRetry});
  SmsMessage& message = AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
  EXPECT_EQ(message.flags, 27U);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(message.flags, 1U);
}

TEST(SmsService, UploadStopsOnAnyOtherAnswer) {
  for (const auto answer : {UploadAnswer::kStop, UploadAnswer{0}, UploadAnswer{99}}) {
    UploadSession session(Send(kError), {answer});
    AddMessage(session.service, 27);
    SmsMessage& next = AddMessage(session.service, 27);
    EXPECT_EQ(session.service.UploadAll(), E_FAIL);
    EXPECT_EQ(next.flags, 27U);
    EXPECT_EQ(session.engine.response().text(), u"+CMS ERROR: 500");
  }
}

TEST(SmsService, UploadStopsAtAFailureWhenNobodyIsAsked) {
  SmsSession session(Store("SM", kError) + Send(kError));
  SmsMessage& stored = AddMessage(session.service, 147);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
  stored.flags = 0;
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
}

TEST(SmsService, UploadSendsNothingWhoseStoreFailedWhenNobodyIsAsked) {
  SmsSession session(Store("SM", kError));
  const SmsMessage& message = AddMessage(session.service, 155);
  EXPECT_EQ(session.service.UploadAll(), E_FAIL);
  EXPECT_EQ(message.flags, 155U);
}

TEST(SmsService, UploadHidesTheWaitCursorWhileItAsksAndRepaintsThen) {
  UploadSession session(Send(kError), {UploadAnswer::kSkip});
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
  EXPECT_EQ(session.waiter.wait_cursor(), (std::vector<bool>{false, true}));
  EXPECT_EQ(session.list.repaints, 1);
}

TEST(SmsService, UploadAsksWithoutAViewToo) {
  SmsSession session(Send(kError));
  session.service.SetProgress([](SmsMessage&, int) { return UploadAnswer::kSkip; }, nullptr);
  AddMessage(session.service, 27);
  EXPECT_EQ(session.service.UploadAll(), S_OK);
}

}  // namespace
}  // namespace celldesk

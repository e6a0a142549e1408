#include <algorithm>

#include "ui/sms/pending_messages.h"

namespace celldesk {
namespace {

using testing::Contains;

const std::vector<std::string>& Kinds() {
  static const std::vector<std::string> kKinds = {
      "error",       "cms-error:500",    "cme-error:100", "silence",        "half-line", "noise",
      "unsolicited", "unsolicited:RING", "wrong-index",   "duplicate-line", "late",      "split",
      "split:3,60",  "delay:1000",       "delay:9500",    "hang-up",        "hang-up:3", "hang-up-back"};
  return kKinds;
}

bool EndsTheLine(const std::string& kind) { return kind.starts_with("hang-up"); }

// The listing of the two memories, command by command.
const std::vector<std::string>& ListingSteps() {
  static const std::vector<std::string> kSteps = {"AT+CPMS=#1", "AT+CMGL#1", "AT+CPMS=#2", "AT+CMGL#2"};
  return kSteps;
}

// One upload that deletes "Coffee at ten?", stores "Kept" and sends "Sent once", then lists.
const std::vector<std::string>& UploadSteps() {
  static const std::vector<std::string> kSteps = {"AT+CPMS=#1", "AT+CMGD#1",  "AT+CPMS=#2", "AT+CMGW#1",
                                                  "PDU#1",      "AT+CPMS=#3", "AT+CMGS#1",  "PDU#2",
                                                  "AT+CPMS=#4", "AT+CMGL#1",  "AT+CMGL#2"};
  return kSteps;
}

/// Everything that could stay behind after a procedure that went wrong.
void ExpectAtRest(SmsWindow& window) {
  EXPECT_FALSE(window.frame().IsBusy());
  EXPECT_EQ(window.StatusLine(), "Connected to COM1:");
  EXPECT_TRUE(window.frame().Surface().QueryState().IsEnabled(command::kLoadData));
}

/// Brings the line back and reads the phone anew: what it holds in both folders.
std::vector<std::string> TextsAfterRecovery(SmsWindow& window) {
  window.phone().ClearFaults();
  window.line.Return();
  MessageBoxScript yes;
  for (int i = 0; i < 2; ++i) yes.Answer(kAnswerYes);
  window.Command(command::kDisconnect);
  EXPECT_FALSE(window.frame().IsConnected());
  window.Command(command::kConnect);
  EXPECT_TRUE(window.frame().IsConnected());
  window.Command(command::kLoadData);
  std::vector<std::string> texts = window.InboxTexts();
  window.ShowFolder(kOutboxTab);
  const std::vector<std::string> outgoing = window.OutboxTexts();
  texts.insert(texts.end(), outgoing.begin(), outgoing.end());
  return texts;
}

class ListingFault : public testing::TestWithParam<std::string> {};

TEST_P(ListingFault, EndsAtRestSaysSoAndLosesNothingInThePhone) {
  for (const std::string& step : ListingSteps()) {
    SCOPED_TRACE(step + ":" + GetParam());
    SmsWindow window;
    const simulator::PhoneMemory before = window.phone().memory();
    ASSERT_TRUE(window.phone().AddFault(step + ":" + GetParam()));
    window.Load();
    ExpectAtRest(window);
    const std::vector<std::string> asked = window.TakeAsked();
    EXPECT_LE(asked.size(), 1U);
    if (EndsTheLine(GetParam())) {
      EXPECT_EQ(asked.size(), 1U);
      EXPECT_EQ(window.LastBox().caption, u"Communication error");
    }
    EXPECT_EQ(window.phone().memory().FindStore("SM")->messages.size(),
              before.FindStore("SM")->messages.size());
    EXPECT_EQ(TextsAfterRecovery(window).size(), 5U);
  }
}

INSTANTIATE_TEST_SUITE_P(EveryKind, ListingFault, testing::ValuesIn(Kinds()));

/// The Inbox with one message to delete, one to store and one to send.
class PendingWindow : public SmsWindow {
 public:
  PendingWindow() {
    Load();
    Select(inbox(), {0});
    Command(command::kDelete);
    MakePending(messages(), u"Kept", kLeftToStore);
    sent_pdu_ = Utf8(MakePending(messages(), u"Sent once", kLeftToSend).pdu_text);
  }

  int TimesSent() { return celldesk::TimesSent(*this, sent_pdu_); }

 private:
  std::string sent_pdu_;
};

TEST(SmsUpload, CarriesOutEverythingThatIsPendingInOneGo) {
  PendingWindow window;
  window.Command(command::kUpload);
  EXPECT_EQ(window.TimesSent(), 1);
  const std::vector<std::string> texts = TextsAfterRecovery(window);
  EXPECT_EQ(texts.size(), 5U);
  EXPECT_THAT(texts, Contains("Kept"));
  EXPECT_THAT(texts, testing::Not(Contains("Coffee at ten?")));
}

class UploadFault : public testing::TestWithParam<std::string> {};

// Whatever goes wrong: what was to be sent is sent or still waits, and never sent twice without a Yes; what
// was to be stored is stored or still waits; nothing leaves the phone but what was marked.
void WalkUploadSteps(const std::string& kind, int answer) {
  for (const std::string& step : UploadSteps()) {
    SCOPED_TRACE(step + ":" + kind);
    PendingWindow window;
    ASSERT_TRUE(window.phone().AddFault(step + ":" + kind));
    for (int i = 0; i < 4; ++i) window.boxes.Answer(answer);
    window.Command(command::kUpload);
    ExpectAtRest(window);
    EXPECT_TRUE(window.TimesSent() == 1 || IsPending(window, u"Sent once", kMessageToSend));
    EXPECT_TRUE(TimesStored(window, u"Kept") > 0 || IsPending(window, u"Kept", kMessageToStore));
    EXPECT_GE(TextsAfterRecovery(window).size(), 4U);
    EXPECT_LE(window.TimesSent(), 1);
  }
}

TEST_P(UploadFault, SkippingLosesNothingAndSendsNothingTwice) { WalkUploadSteps(GetParam(), kAnswerNo); }

INSTANTIATE_TEST_SUITE_P(EveryKind, UploadFault, testing::ValuesIn(Kinds()));

TEST(SmsUpload, StoppingAtAFailureLosesNothingAndSendsNothingTwice) {
  for (const char* kind : {"error", "silence", "late", "hang-up"}) WalkUploadSteps(kind, kAnswerCancel);
}

// With Yes to every question a message is sent once more at most for each of them.
TEST(SmsUpload, IsSentOnceForEachYesAtMost) {
  for (const std::string kind : {"error", "silence", "half-line", "late", "delay:9500"}) {
    for (const std::string step : {"AT+CMGW#1", "PDU#1", "AT+CPMS=#3", "AT+CMGS#1", "PDU#2"}) {
      SCOPED_TRACE(step + ":" + kind);
      PendingWindow window;
      ASSERT_TRUE(window.phone().AddFault(std::string(step) + ":" + kind));
      for (int i = 0; i < 2; ++i) window.boxes.Answer(kAnswerYes);
      window.Command(command::kUpload);
      ExpectAtRest(window);
      const auto asked = window.TakeAsked();
      const auto yes = std::count_if(asked.begin(), asked.end(), [](const std::string& text) {
        return text.starts_with("When sending SMS \"Sent once\"");
      });
      EXPECT_LE(window.TimesSent(), 1 + yes);
    }
  }
}

}  // namespace
}  // namespace celldesk

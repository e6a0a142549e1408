#include "sms_fixture.h"

namespace celldesk {
namespace {

using namespace std::chrono_literals;

constexpr std::u16string_view kCentre = u"+1234567890";
constexpr const char* kCentreField = "06912143658709";

std::string Pdu(const std::string& centre) { return "> " + centre + kHiPdu + "\\x1a\n"; }

/// A session with a centre set.
struct SubmitSession : SmsSession {
  explicit SubmitSession(const std::string& script, std::u16string_view centre = kCentre)
      : SmsSession(script) {
    EXPECT_EQ(service.SetCentre(centre), S_OK);
  }
};

TEST(SmsService, DeletesAMessageFromItsMemory) {
  SmsSession session(Select("ME") + "> AT+CMGD=17\\r\n< OK\n");
  SmsMessage& message = AddMessage(session.service, kMessageInUse, 1);
  message.memory_index = 17;
  EXPECT_EQ(session.service.Delete(message), S_OK);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

/// An answer is missed; it comes with that to the next selection, whose own takes half a second more.
void MissAnAnswer(SmsSession& session) {
  ResponseLine line;
  EXPECT_EQ(session.engine.WaitLine(line, 1ms), E_FAIL);
}
std::string SelectLate(const std::string& memory, const std::string& own) {
  return Select(memory, "< OK\n= 500\n< " + own + "\n");
}

TEST(SmsService, DeletesNothingWhenTheMemoryIsRefusedBehindALateAnswer) {
  SmsSession session(SelectLate("ME", "+CMS ERROR: 302"));
  MissAnAnswer(session);
  EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse, 1)), E_FAIL);
  EXPECT_EQ(session.phone.writes().size(), 1U);
}

TEST(SmsService, KeepsTheStoreFlagWhenStoringFailsBehindALateAnswer) {
  SubmitSession session(SelectLate("ME", "OK") + "> AT+CMGW=16\\r\n" + Pdu(kCentreField) +
                        "< +CMS ERROR: 322\n");
  MissAnAnswer(session);
  SmsMessage& message = AddMessage(session.service, 147, 1);
  EXPECT_EQ(session.service.Store(message), E_FAIL);
  EXPECT_EQ(message.flags, 147U);
}

TEST(SmsService, FailsWhenThePhoneRefusesTheMessageBehindALateAnswer) {
  SubmitSession session(SelectLate("SM", "OK") + "> AT+CMGS=16\\r\n" + Pdu(kCentreField) +
                        "< +CMS ERROR: 500\n");
  MissAnAnswer(session);
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
}

// Nothing that is said before the message answers it, but a refusal of the command.
TEST(SmsService, TakesNoOkBeforeTheMessageForItsAnswer) {
  SubmitSession session(Select("ME") + "> AT+CMGW=16\\r\n< OK\n<< > \n" + Pdu(kCentreField) +
                        "< +CMS ERROR: 322\n");
  EXPECT_EQ(session.service.Store(AddMessage(session.service, 147, 1)), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"+CMS ERROR: 322");
}

TEST(SmsService, KeepsTheRefusalThatCameBeforeTheMessage) {
  SubmitSession session(Select("ME") + "> AT+CMGW=16\\r\n< +CMS ERROR: 302\n" + Pdu(kCentreField) + "< OK\n");
  EXPECT_EQ(session.service.Store(AddMessage(session.service, 147, 1)), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"+CMS ERROR: 302");
}

TEST(SmsService, NeverLooksAtTheAnswerToADelete) {
  for (const std::string answer : {"< ERROR\n", "< +CMS ERROR: 321\n", ""}) {
    SmsSession session(Select("SM") + "> AT+CMGD=0\\r\n" + answer);
    EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse)), S_OK);
    EXPECT_EQ(session.waiter.now(), answer == "< ERROR\n" ? 0ms : 3000ms);
  }
}

TEST(SmsService, DeletesNothingWhenTheMemoryIsRefused) {
  SmsSession session(Select("SM", "< ERROR\n"));
  EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse)), E_FAIL);
}

TEST(SmsService, DeletesNoMessageThatIsInNoMemory) {
  SmsSession session;
  EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse, -1)), E_FAIL);
}

TEST(SmsService, FailsWhenADeleteCannotBeWritten) {
  SmsSession session(Select("SM", "= 10\n< OK\n"));
  session.waiter.Post(5ms, [&] { session.ports.line.write_status = E_FAIL; });
  EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse)), E_FAIL);
}

TEST(SmsService, DropsStaleLinesBeforeADelete) {
  SmsSession session(Select("SM") + "> AT+CMGD=0\\r\n< OK\n");
  session.phone.Say("ERROR\r");
  session.waiter.Pause(1ms);
  EXPECT_EQ(session.service.Delete(AddMessage(session.service, kMessageInUse)), S_OK);
}

TEST(SmsService, SendsTheCentreThePduAndCtrlZ) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n<< \\r\\n> \n" + Pdu(kCentreField) +
                        "< +CMGS: 183\n< OK\n");
  SmsMessage& message = AddMessage(session.service, 27, 1);
  EXPECT_EQ(session.service.Send(message), S_OK);
  EXPECT_EQ(message.flags, 27U);
  EXPECT_EQ(session.waiter.pauses(), Milliseconds({400, 800}));
  EXPECT_EQ(session.waiter.waits().back().timeout, 9000ms);
}

TEST(SmsService, SendsThePduAloneWithTheAdapter) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu("") + "< OK\n");
  session.service.SetOptions(false, false, true, 0);
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

TEST(SmsService, LooksAtNoCentreWithTheAdapter) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu("") + "< OK\n", u"+12345678901234567");
  session.service.SetOptions(false, false, true, 0);
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

TEST(SmsService, DropsStaleLinesBeforeItSends) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu(kCentreField) + "< OK\n");
  session.phone.Say("ERROR\r");
  session.waiter.Pause(1ms);
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

// A late "OK" that comes with the answer to the selection would count as that of the network.
TEST(SmsService, DropsLateAnswersBeforeItSends) {
  SubmitSession session(Select("SM", "< OK\n< +CPMS: 3,10,3,10\n< OK\n") + "> AT+CMGS=16\\r\n" +
                        Pdu(kCentreField) + "< +CMS ERROR: 500\n");
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
  EXPECT_EQ(session.engine.response().text(), u"+CMS ERROR: 500");
}

// Taken for a refusal of the command it would have the user try again what was sent.
TEST(SmsService, TakesNoLateErrorForTheRefusalOfASending) {
  SubmitSession session(Select("SM", "< OK\n< ERROR\n") + "> AT+CMGS=16\\r\n" + Pdu(kCentreField) + "< OK\n");
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

struct CentreCase {
  std::u16string_view number;
  const char* field;
};

class SmsServiceCentre : public testing::TestWithParam<CentreCase> {};

TEST_P(SmsServiceCentre, IsSentAsAnAddressField) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu(GetParam().field) + "< OK\n",
                        GetParam().number);
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

INSTANTIATE_TEST_SUITE_P(Numbers, SmsServiceCentre,
                         testing::Values(CentreCase{u"+123456789012", "0791214365870921"},
                                         CentreCase{u"+1234567890", "06912143658709"},
                                         CentreCase{u"+1234567", "0591214365F7"},
                                         CentreCase{u"+1234567890123456", "09912143658709214365"}));

TEST(SmsService, SendsAnEmptyFieldWhenNoCentreIsSet) {
  SmsSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu("0180") + "< OK\n");
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), S_OK);
}

TEST(SmsService, SendsNothingByACentreOfMoreThan16Digits) {
  SubmitSession session(Select("SM"), u"+12345678901234567");
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
}

TEST(SmsService, FailsWhenThePhoneRefusesTheMessage) {
  for (const std::string answer : {"< ERROR\n", "< +CMS ERROR: 500\n"}) {
    SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu(kCentreField) + answer);
    EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
    EXPECT_EQ(session.waiter.now(), 1200ms);
  }
}

TEST(SmsService, FailsAfter9SecondsOfSilence) {
  SubmitSession session(Select("SM") + "> AT+CMGS=16\\r\n" + Pdu(kCentreField) + "= 8999\n< +CMGS: 1\n");
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
  EXPECT_EQ(session.waiter.now(), 1200ms + 8999ms + 9000ms);
}

TEST(SmsService, FailsWhereverTheLineBreaksWhileItSends) {
  for (const auto when : {399ms, 1199ms}) {
    SubmitSession session(Select("SM") + (when > 400ms ? "> AT+CMGS=16\\r\n" : ""));
    session.waiter.Post(when, [&] { session.ports.line.write_status = E_FAIL; });
    EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
    EXPECT_EQ(session.waiter.now(), when + 1ms);
  }
}

TEST(SmsService, SendsNothingWhenTheSimIsRefused) {
  SubmitSession session(Select("SM", "< ERROR\n"));
  EXPECT_EQ(session.service.Send(AddMessage(session.service, 27)), E_FAIL);
  EXPECT_TRUE(session.waiter.pauses().empty());
}

TEST(SmsService, RoundsTheLengthOfAnOddPduDown) {
  SubmitSession session(Select("SM") + "> AT+CMGS=1\\r\n> " + kCentreField + "ABC\\x1a\n< OK\n");
  SmsMessage& message = AddMessage(session.service, 27);
  message.pdu_text = u"ABC";
  EXPECT_EQ(session.service.Send(message), S_OK);
}

TEST(SmsService, StoresIntoTheMessagesOwnMemory) {
  SubmitSession session(Select("ME") + "> AT+CMGW=16\\r\n<< \\r\\n> \n" + Pdu(kCentreField) +
                        "< +CMGW: 4\n< OK\n");
  SmsMessage& message = AddMessage(session.service, 147, 1);
  EXPECT_EQ(session.service.Store(message), S_OK);
  EXPECT_EQ(message.flags, 147U - 128U);
  EXPECT_EQ(session.waiter.pauses(), Milliseconds({800}));
  EXPECT_EQ(session.waiter.waits().back().timeout, 9000ms);
}

TEST(SmsService, DropsStaleLinesOnlyAfterTheSelectionWhenItStores) {
  SubmitSession session(Select("ME", "< OK\n< ERROR\n") + "> AT+CMGW=16\\r\n" + Pdu(kCentreField) + "< OK\n");
  EXPECT_EQ(session.service.Store(AddMessage(session.service, 147, 1)), S_OK);
}

TEST(SmsService, KeepsTheStoreFlagWhenStoringFails) {
  SubmitSession session(Select("ME") + "> AT+CMGW=16\\r\n" + Pdu(kCentreField) + "< +CMS ERROR: 322\n");
  SmsMessage& message = AddMessage(session.service, 147, 1);
  EXPECT_EQ(session.service.Store(message), E_FAIL);
  EXPECT_EQ(message.flags, 147U);
}

TEST(SmsService, StoresNoMessageThatIsInNoMemory) {
  SubmitSession session("");
  EXPECT_EQ(session.service.Store(AddMessage(session.service, 147, -1)), E_FAIL);
}

}  // namespace
}  // namespace celldesk

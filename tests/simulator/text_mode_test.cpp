#include "simulator/text_mode.h"

#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

const std::string kCentre = "0791447700090000";
const std::string kDeliver = kCentre + "040C914477000910100000621050210000000AE8329BFD4697D9EC37";
const std::string kSubmit = kCentre + "11000C914477000910320000A705E8329BFD06";
const std::string kReport = kCentre + "06110C91447700091032621050210000006210502100000000";
const std::string kBinary = kCentre + "040C9144770009101000046210502100000003010203";

SimulatedPhone TextPhone(std::string_view profiles = "default") {
  PhoneMemory memory;
  auto& messages = memory.FindStore("SM")->messages;
  messages[1] = {MessageStatus::kReceivedUnread, kDeliver};
  messages[2] = {MessageStatus::kReceivedRead, kReport};
  messages[3] = {MessageStatus::kStoredUnsent, kSubmit};
  messages[4] = {MessageStatus::kReceivedRead, kBinary};
  messages[5] = {MessageStatus::kReceivedRead, "07"};
  memory.FindPhonebook("ME")->entries[1] = {"07700900101", 129, u"Anna"};
  SimulatedPhone phone = QuietPhone(profiles, memory);
  static_cast<void>(Ask(phone, "AT+CMGF=1"));
  return phone;
}

TEST(TextMode, ListsByStatusWords) {
  const struct {
    std::string_view status;
    std::vector<std::string> lines;
  } kTable[] = {
      {"REC UNREAD", {R"(+CMGL: 1,"REC UNREAD","+447700900101",,"26/01/05,12:00:00+00")", "hellohello"}},
      {"STO UNSENT", {R"(+CMGL: 3,"STO UNSENT","+447700900123",)", "hello"}},
      {"rec read",
       {R"(+CMGL: 2,"REC READ",6,17,"+447700900123",145,"26/01/05,12:00:00+00","26/01/05,12:00:00+00",0)",
        R"(+CMGL: 4,"REC READ","+447700900101",,"26/01/05,12:00:00+00")", "010203",
        R"(+CMGL: 5,"REC READ","",)", ""}}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = TextPhone();
    EXPECT_EQ(Ask(phone, "AT+CMGL=\"" + std::string(row.status) + '"'), Answer(row.lines)) << row.status;
  }
}

TEST(TextMode, WithoutAStatusTheUnreadAreListed) {
  SimulatedPhone phone = TextPhone();
  EXPECT_NE(Ask(phone, "AT+CMGL").find("\"REC UNREAD\""), std::string::npos);
  EXPECT_EQ(Ask(phone, "AT+CMGL"), kOk);
}

TEST(TextMode, AllMeansAll) {
  SimulatedPhone phone = TextPhone();
  const std::string list = Ask(phone, "AT+CMGL=\"ALL\"");
  for (const int index : {1, 2, 3, 4, 5}) {
    EXPECT_NE(list.find("+CMGL: " + std::to_string(index) + ','), list.npos) << index;
  }
}

TEST(TextMode, HeadersAreShownOnDemand) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(Ask(phone, "AT+CSDH=1"), kOk);
  EXPECT_EQ(
      Ask(phone, "AT+CMGR=1"),
      Answer(
          {R"(+CMGR: "REC UNREAD","+447700900101",,"26/01/05,12:00:00+00",145,4,0,0,"+447700900000",145,10)",
           "hellohello"}));
  EXPECT_EQ(
      Ask(phone, "AT+CMGR=3"),
      Answer({R"(+CMGR: "STO UNSENT","+447700900123",,145,17,0,0,167,"+447700900000",145,5)", "hello"}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=\"STO UNSENT\""),
            Answer({R"(+CMGL: 3,"STO UNSENT","+447700900123",,145,5)", "hello"}));
}

TEST(TextMode, ReadsReportsAndDamagedMessages) {
  SimulatedPhone phone = TextPhone();
  EXPECT_EQ(
      Ask(phone, "AT+CMGR=2"),
      Answer(
          {R"(+CMGR: "REC READ",6,17,"+447700900123",145,"26/01/05,12:00:00+00","26/01/05,12:00:00+00",0)"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=5"), Answer({R"(+CMGR: "REC READ","",)", ""}));
}

TEST(TextMode, NamesASenderWhomThePhoneKnows) {
  SimulatedPhone phone = TextPhone("alpha-names");
  EXPECT_EQ(Ask(phone, "AT+CMGR=1"),
            Answer({R"(+CMGR: "REC UNREAD","+447700900101","Anna","26/01/05,12:00:00+00")", "hellohello"}));
}

TEST(TextMode, SendsAText) {
  SimulatedPhone phone = TextPhone();
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=\"+447700900999\"", "hello"), Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kCentre + "11000C914477000990990000A705E8329BFD06");
}

TEST(TextMode, TheTypeMakesANumberInternational) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(AskWithBody(phone, "AT+CMGS=\"447700900999\",145", "hello"), Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kCentre + "11000C914477000990990000A705E8329BFD06");
}

TEST(TextMode, EveryLineOfATextIsAskedFor) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(Ask(phone, "AT+CMGW=\"1234\""), kPrompt);
  EXPECT_EQ(BytesOf(phone.Receive("a\r")), kPrompt);
  EXPECT_EQ(BytesOf(phone.Receive("b\x1A")), Answer({"+CMGW: 6"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=6"), Answer({R"(+CMGR: "STO UNSENT","1234",)", "a\nb"}));
}

TEST(TextMode, StoresWithAStatus) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(AskWithBody(phone, "AT+CMGW=\"+447700900101\",145,\"REC UNREAD\"", "hellohello"),
            Answer({"+CMGW: 6"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=6"),
            Answer({R"(+CMGR: "REC UNREAD","+447700900101",,"26/01/05,12:00:00+00")", "hellohello"}));
}

TEST(TextMode, TheParametersShapeTheMessage) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(Ask(phone, "AT+CSMP=49,10,1,8"), kOk);
  ASSERT_EQ(AskWithBody(phone, "AT+CMGS=\"1234\"", "20AC"), Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kCentre +
                                                "310004812143"
                                                "01080A0220AC");
  ASSERT_EQ(Ask(phone, "AT+CSMP=1,10,0,0"), kOk);
  ASSERT_EQ(AskWithBody(phone, "AT+CMGS=\"1234\"", "A"), Answer({"+CMGS: 2"}));
  EXPECT_EQ(phone.memory().sent.at(1).body, kCentre + "01000481214300000141");
}

TEST(TextMode, TextsFollowTheCharacterSet) {
  SimulatedPhone phone = TextPhone();
  ASSERT_EQ(Ask(phone, "AT+CSCS=\"UCS2\""), kOk);
  ASSERT_EQ(AskWithBody(phone, "AT+CMGW=\"0031003200330034\"", "00E400E4"), Answer({"+CMGW: 6"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=6"), Answer({R"(+CMGR: "STO UNSENT","0031003200330034",)", "00E400E4"}));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=\"1234\"", "xyz"), CmsError(305));
}

TEST(TextMode, ATextLongerThanAMessageIsRefused) {
  SimulatedPhone phone = TextPhone();
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=\"1234\"", std::string(160, 'a')), Answer({"+CMGS: 1"}));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=\"1234\"", std::string(161, 'a')), CmsError(305));
}

}  // namespace
}  // namespace celldesk::simulator

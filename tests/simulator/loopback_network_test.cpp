#include "simulator/loopback_network.h"

#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

const std::string kCentre = "0791447700090000";
const std::string kToSelf = "11000C914477000910320000A705E8329BFD06";
const std::string kToSelfNational = "11000B817007900021F30000A705E8329BFD06";
const std::string kReported = "31000C914477000999990000A705E8329BFD06";
const std::string kBoth = "31000C914477000910320000A705E8329BFD06";
const std::string kArrived = "040C9144770009103200006210502100000005E8329BFD06";
const std::string kReport = "06010C91447700099999621050210000006210502100000000";

const std::map<int, StoredMessage>& Sim(const SimulatedPhone& phone) {
  return phone.memory().FindStore("SM")->messages;
}

std::string Send(SimulatedPhone& phone, const std::string& tpdu) {
  return AskWithBody(phone, "AT+CMGS=" + std::to_string(tpdu.size() / 2), kCentre + tpdu);
}

StoredMessage Unread(const std::string& tpdu) { return {MessageStatus::kReceivedUnread, kCentre + tpdu}; }

TEST(LoopbackNetwork, AMessageToTheOwnNumberComesBack) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Send(phone, kToSelf), Answer({"+CMGS: 1"}));
  ASSERT_EQ(Sim(phone).size(), 1U);
  EXPECT_EQ(Sim(phone).at(1), Unread(kArrived));
}

TEST(LoopbackNetwork, TheOwnNumberIsKnownInItsNationalFormToo) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Send(phone, kToSelfNational), Answer({"+CMGS: 1"}));
  ASSERT_EQ(Sim(phone).size(), 1U);
  EXPECT_EQ(Sim(phone).at(1), Unread(kArrived));
}

TEST(LoopbackNetwork, AReportFollowsWhenAsked) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Send(phone, kReported), Answer({"+CMGS: 1"}));
  ASSERT_EQ(Sim(phone).size(), 1U);
  EXPECT_EQ(Sim(phone).at(1), Unread(kReport));
}

TEST(LoopbackNetwork, ANoticeFollowsTheReplyWhenAsked) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CNMI=2,1,0,2"), kOk);
  EXPECT_EQ(Send(phone, kBoth), Answer({"+CMGS: 1"}) + "\r\n+CMTI: \"SM\",1\r\n\r\n+CDSI: \"SM\",2\r\n");
}

TEST(LoopbackNetwork, AMessageMayGoStraightToTheClient) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CNMI=2,2,0,1"), kOk);
  EXPECT_EQ(Send(phone, kToSelf), Answer({"+CMGS: 1"}) + "\r\n+CMT: ,24\r\n" + kCentre + kArrived + "\r\n");
  const std::string report = Send(phone, kReported);
  EXPECT_NE(report.find("\r\n+CDS: 25\r\n" + kCentre + "06020C91447700099999"), report.npos);
  EXPECT_TRUE(Sim(phone).empty());
}

TEST(LoopbackNetwork, AMessageMayGoStraightToTheClientAsText) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CMGF=1;+CNMI=2,2,0,1"), kOk);
  EXPECT_EQ(BytesOf(phone.DeliverMessage("+447700900101", u"hi")),
            "\r\n+CMT: \"+447700900101\",,\"26/01/05,12:00:00+00\"\r\nhi\r\n");
  ASSERT_EQ(Ask(phone, "AT+CSMP=49,167,0,0"), kOk);
  const std::string sent = AskWithBody(phone, "AT+CMGS=\"1234\"", "x");
  EXPECT_NE(sent.find("\r\n+CDS: 6,1,\"1234\",129,\"26/01/05,12:00:00+00\",\"26/01/05,12:00:00+00\",0\r\n"),
            sent.npos);
}

TEST(LoopbackNetwork, NoticesWaitUntilTheyAreWanted) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CNMI=0,1,0,2"), kOk);
  EXPECT_EQ(Send(phone, kToSelf), Answer({"+CMGS: 1"}));
  EXPECT_EQ(Ask(phone, "AT+CNMI=2"), kOk + "\r\n+CMTI: \"SM\",1\r\n");
}

TEST(LoopbackNetwork, WaitingNoticesMayBeDropped) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CNMI=0,1,0,2"), kOk);
  static_cast<void>(Send(phone, kToSelf));
  EXPECT_EQ(Ask(phone, "AT+CNMI=2,1,0,2,1"), kOk);
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(LoopbackNetwork, WhatFindsNoRoomWaitsInTheNetwork) {
  PhoneMemory memory;
  memory.FindStore("SM")->capacity = 1;
  SimulatedPhone phone = QuietPhone("default", memory);
  static_cast<void>(Send(phone, kBoth));
  EXPECT_EQ(Sim(phone).size(), 1U);
  EXPECT_EQ(phone.memory().waiting.size(), 1U);
  ASSERT_EQ(Ask(phone, "AT+CMGD=1"), kOk);
  EXPECT_TRUE(phone.memory().waiting.empty());
  EXPECT_EQ(Sim(phone).at(1).pdu.substr(16, 2), "06");
}

TEST(LoopbackNetwork, ArrivalsGoToTheReceivingMemory) {
  SimulatedPhone phone = QuietPhone();
  static_cast<void>(Ask(phone, "AT+CPMS=\"SM\",\"SM\",\"ME\";+CNMI=2,1"));
  EXPECT_EQ(BytesOf(phone.DeliverMessage("+447700900101", u"hello")), "\r\n+CMTI: \"ME\",1\r\n");
  EXPECT_EQ(phone.memory().FindStore("ME")->messages.at(1),
            Unread("040C9144770009101000006210502100000005E8329BFD06"));
}

TEST(LoopbackNetwork, ANoticeMayComeAtAnyTime) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(BytesOf(phone.Notify("RING")), "\r\nRING\r\n");
}

TEST(LoopbackNetwork, TheStandardCommandTypeIsTakenToo) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Send(phone, "0200000000048121430000"), Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.size(), 1U);
  EXPECT_TRUE(Sim(phone).empty());
}

TEST(SameNumber, ComparesNationalAndInternationalForms) {
  EXPECT_TRUE(SameNumber("+447700900123", "+447700900123"));
  EXPECT_TRUE(SameNumber("+447700900123", "07700900123"));
  EXPECT_FALSE(SameNumber("+447700900123", "+447700900124"));
  EXPECT_FALSE(SameNumber("+447700900123", "+17700900123"));
  EXPECT_FALSE(SameNumber("112", "00112"));
  EXPECT_FALSE(SameNumber("", "112"));
}

}  // namespace
}  // namespace celldesk::simulator

#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

const std::string kCentre = "0791447700090000";
const std::string kDeliver = "040C914477000910100000621050210000000AE8329BFD4697D9EC37";  // 28 octets
const std::string kSubmit = "11000C914477000910320000A705E8329BFD06";                     // to the own number
const std::string kElsewhere = "11000C914477000999990000A705E8329BFD06";
const std::string kReport = "06110C91447700091032621050210000006210502100000000";

StoredMessage Stored(MessageStatus status, const std::string& tpdu) { return {status, kCentre + tpdu}; }

/// One message of each status.
PhoneMemory FourMessages() {
  PhoneMemory memory;
  auto& messages = memory.FindStore("SM")->messages;
  messages[1] = Stored(MessageStatus::kReceivedUnread, kDeliver);
  messages[2] = Stored(MessageStatus::kReceivedRead, kReport);
  messages[4] = Stored(MessageStatus::kStoredUnsent, kSubmit);
  messages[7] = Stored(MessageStatus::kStoredSent, kElsewhere);
  return memory;
}

const std::map<int, StoredMessage>& Sim(const SimulatedPhone& phone) {
  return phone.memory().FindStore("SM")->messages;
}

std::vector<int> IndexesIn(const SimulatedPhone& phone) {
  std::vector<int> indexes;
  for (const auto& [index, message] : Sim(phone)) indexes.push_back(index);
  return indexes;
}

TEST(MessageCommands, ListsEveryMessage) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(Ask(phone, "AT+CMGL=4"),
            Answer({"+CMGL: 1,0,,28", kCentre + kDeliver, "+CMGL: 2,1,,25", kCentre + kReport,
                    "+CMGL: 4,2,,19", kCentre + kSubmit, "+CMGL: 7,3,,19", kCentre + kElsewhere}));
}

TEST(MessageCommands, ListsOneStatus) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(Ask(phone, "AT+CMGL=1"), Answer({"+CMGL: 2,1,,25", kCentre + kReport}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=2"), Answer({"+CMGL: 4,2,,19", kCentre + kSubmit}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=3"), Answer({"+CMGL: 7,3,,19", kCentre + kElsewhere}));
  EXPECT_EQ(Ask(phone, "AT+CMGL"), Answer({"+CMGL: 1,0,,28", kCentre + kDeliver}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=0"), kOk);
}

TEST(MessageCommands, AListedMessageIsRead) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  static_cast<void>(Ask(phone, "AT+CMGL=4"));
  EXPECT_EQ(Sim(phone).at(1).status, MessageStatus::kReceivedRead);
  EXPECT_EQ(Sim(phone).at(4).status, MessageStatus::kStoredUnsent);
}

TEST(MessageCommands, AnEmptyMemoryListsNothing) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "AT+CMGL=4"), kOk);
}

TEST(MessageCommands, ReadsOneMessage) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(Ask(phone, "AT+CMGR=1"), Answer({"+CMGR: 0,,28", kCentre + kDeliver}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=1"), Answer({"+CMGR: 1,,28", kCentre + kDeliver}));
}

TEST(MessageCommands, AnswersEachAsItShould) {
  const struct {
    std::string_view line;
    std::string answer;
  } kTable[] = {
      {"AT+CMGL=?", Answer({"+CMGL: (0-4)"})},
      {"AT+CMGL=5", CmsError(304)},
      {"AT+CMGL=x", CmsError(304)},
      {"AT+CMGF=1;+CMGL=?", Answer({R"(+CMGL: ("REC UNREAD","REC READ","STO UNSENT","STO SENT","ALL"))"})},
      {"AT+CMGF=1;+CMGL=4", CmsError(305)},
      {"AT+CMGR=?", kOk},
      {"AT+CMGR=3", CmsError(321)},
      {"AT+CMGR=-1", CmsError(321)},
      {"AT+CMGR=x", CmsError(321)},
      {"AT+CMGR=2147483647", CmsError(321)},
      {"AT+CMGR=-2147483648", CmsError(321)},
      {"AT+CMGD=?", Answer({"+CMGD: (1,2,4,7),(0-4)"})},
      {"AT+CMGD=3", CmsError(321)},
      {"AT+CMGD=1,5", CmsError(302)},
      {"AT+CMGD", CmsError(302)},
      {"AT+CMGS=?", kOk},
      {"AT+CMGS", CmsError(302)},
      {"AT+CMGS=x", CmsError(304)},
      {"AT+CMGS=0", CmsError(304)},
      {"AT+CMGS=165", CmsError(304)},
      {"AT+CMGS=10", kPrompt},
      {"AT+CMGW=?", kOk},
      {"AT+CMGW=x", CmsError(304)},
      {"AT+CMGW=10,4", CmsError(304)},
      {"AT+CMGW=10", kPrompt},
      {"AT+CMGF=1;+CMGS=\"+447700900999\"", kPrompt},
      {"AT+CMGF=1;+CMGS", CmsError(302)},
      {"AT+CMGF=1;+CMGS=\"nobody\"", CmsError(305)},
      {"AT+CMGF=1;+CMGW", kPrompt},
      {"AT+CMGF=1;+CMGW=\"1234\",129,\"NEVER\"", CmsError(305)},
      {"AT+CMSS=?", kOk},
      {"AT+CMSS=3", CmsError(321)},
      {"AT+CMSS=1", CmsError(302)},
      {"AT+CMSS=4,\"nobody\"", CmsError(305)},
  };
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone("default", FourMessages());
    EXPECT_EQ(Ask(phone, row.line), row.answer) << row.line;
  }
}

TEST(MessageCommands, DeletionFlagsTakeEverMoreAlong) {
  const struct {
    std::string_view line;
    std::vector<int> left;
  } kTable[] = {{"AT+CMGD=4", {1, 2, 7}}, {"AT+CMGD=4,0", {1, 2, 7}}, {"AT+CMGD=0,1", {1, 4, 7}},
                {"AT+CMGD=0,2", {1, 4}},  {"AT+CMGD=0,3", {1}},       {"AT+CMGD=0,4", {}}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone("default", FourMessages());
    EXPECT_EQ(Ask(phone, row.line), kOk) << row.line;
    EXPECT_EQ(IndexesIn(phone), row.left) << row.line;
  }
}

TEST(MessageCommands, StoresAtTheFirstFreeIndex) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 3"}));
  EXPECT_EQ(Sim(phone).at(3), Stored(MessageStatus::kStoredUnsent, kSubmit));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 5"}));
}

TEST(MessageCommands, StoresWithTheStatusThatIsAsked) {
  const struct {
    std::string_view line;
    std::string tpdu;
    MessageStatus status;
  } kTable[] = {{"AT+CMGW=19,2", kSubmit, MessageStatus::kStoredUnsent},
                {"AT+CMGW=19,3", kSubmit, MessageStatus::kStoredSent},
                {"AT+CMGW=28,0", kDeliver, MessageStatus::kReceivedUnread},
                {"AT+CMGW=28,1", kDeliver, MessageStatus::kReceivedRead},
                {"AT+CMGW=28", kDeliver, MessageStatus::kReceivedRead},
                {"AT+CMGW=25", kReport, MessageStatus::kReceivedRead}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone();
    EXPECT_EQ(AskWithBody(phone, row.line, kCentre + row.tpdu), Answer({"+CMGW: 1"})) << row.line;
    EXPECT_EQ(Sim(phone).at(1), Stored(row.status, row.tpdu)) << row.line;
  }
}

TEST(MessageCommands, ABodyThatDoesNotFitIsRefused) {
  const struct {
    std::string_view line;
    std::string body;
  } kTable[] = {{"AT+CMGS=18", kCentre + kSubmit},        // the length counts an octet too few
                {"AT+CMGS=20", kCentre + kSubmit},        // and one too many
                {"AT+CMGS=27", kCentre + kSubmit},        // the centre field must not be counted
                {"AT+CMGS=19", kSubmit},                  // no centre field
                {"AT+CMGS=19", kCentre + kSubmit + "0"},  // half an octet
                {"AT+CMGS=19", "hello"},
                {"AT+CMGS=19", ""},
                {"AT+CMGS=28", kCentre + kDeliver},  // not a message to send
                {"AT+CMGW=18", kCentre + kSubmit},
                {"AT+CMGW=19,1", kCentre + kSubmit},  // not a received one
                {"AT+CMGW=28,2", kCentre + kDeliver}};
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone();
    EXPECT_EQ(AskWithBody(phone, row.line, row.body), CmsError(304)) << row.line << ' ' << row.body;
    EXPECT_TRUE(Sim(phone).empty());
    EXPECT_TRUE(phone.memory().sent.empty());
    EXPECT_EQ(Ask(phone, "AT"), kOk);
  }
}

TEST(MessageCommands, AFullMemoryStoresNothing) {
  PhoneMemory memory = FourMessages();
  memory.FindStore("SM")->capacity = 7;
  for (int index = 1; index <= 7; ++index) {
    memory.FindStore("SM")->messages[index] = Stored(MessageStatus::kReceivedRead, kDeliver);
  }
  SimulatedPhone phone = QuietPhone("default", memory);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), CmsError(322));
  ASSERT_EQ(Ask(phone, "AT+CMGD=5"), kOk);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 5"}));
}

TEST(MessageCommands, EscapeGivesABodyUp) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CMGS=19"), kPrompt);
  EXPECT_EQ(BytesOf(phone.Receive(kCentre + "11\x1B")), kOk);
  EXPECT_TRUE(phone.memory().sent.empty());
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(MessageCommands, ABodyMayHaveSmallDigitsAndBlanks) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=1,2", "00\n01"), CmsError(304));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", "07 91447700090000 11000c914477000910320000a705e8329bfd06"),
            Answer({"+CMGW: 1"}));
  EXPECT_EQ(Sim(phone).at(1), Stored(MessageStatus::kStoredUnsent, kSubmit));
}

TEST(MessageCommands, SendsAndCountsReferences) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=19", kCentre + kElsewhere), Answer({"+CMGS: 1"}));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=19", "00" + kElsewhere), Answer({"+CMGS: 2"}));
  EXPECT_EQ(phone.memory().sent,
            (std::vector<SentMessage>{{1, kCentre + kElsewhere}, {2, "00" + kElsewhere}}));
  EXPECT_TRUE(Sim(phone).empty());
}

TEST(MessageCommands, ReferencesBeginAgainAfter255) {
  PhoneMemory memory;
  memory.last_reference = 255;
  SimulatedPhone phone = QuietPhone("default", memory);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=19", kCentre + kElsewhere), Answer({"+CMGS: 0"}));
}

TEST(MessageCommands, SendsAStoredMessage) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(Ask(phone, "AT+CMSS=7"), Answer({"+CMSS: 1"}));
  EXPECT_EQ(phone.memory().sent, (std::vector<SentMessage>{{1, kCentre + kElsewhere}}));
  ASSERT_EQ(Ask(phone, "AT+CMSS=4"), Answer({"+CMSS: 2"}));
  EXPECT_EQ(Sim(phone).at(4).status, MessageStatus::kStoredSent);
}

TEST(MessageCommands, SendsAStoredMessageElsewhere) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  EXPECT_EQ(Ask(phone, "AT+CMSS=4,\"447700909999\",145"), Answer({"+CMSS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kCentre + "11000C914477000999990000A705E8329BFD06");
  EXPECT_EQ(Sim(phone).size(), 4U);
}

TEST(MessageCommands, MemoriesAreSeparate) {
  SimulatedPhone phone = QuietPhone("default", FourMessages());
  ASSERT_EQ(Ask(phone, "AT+CPMS=\"ME\",\"ME\""), Answer({"+CPMS: 0,100,0,100,4,30"}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=4"), kOk);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 1"}));
  EXPECT_EQ(Ask(phone, "AT+CMGL=4"), Answer({"+CMGL: 1,2,,19", kCentre + kSubmit}));
  EXPECT_EQ(Sim(phone).size(), 4U);
}

TEST(MessageCommands, ADamagedMessageIsListedAsItIs) {
  PhoneMemory memory;
  memory.FindStore("SM")->messages[1] = {MessageStatus::kReceivedRead, "0791AB"};
  memory.FindStore("SM")->messages[2] = {MessageStatus::kReceivedRead, ""};
  SimulatedPhone phone = QuietPhone("default", memory);
  EXPECT_EQ(Ask(phone, "AT+CMGL=4"), Answer({"+CMGL: 1,1,,3", "0791AB", "+CMGL: 2,1,,0", ""}));
}

}  // namespace
}  // namespace celldesk::simulator

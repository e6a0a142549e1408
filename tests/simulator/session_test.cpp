// Whole conversations, as clients have them.

#include <gtest/gtest.h>

#include "phone_driver.h"
#include "simulator/sample_memory.h"

namespace celldesk::simulator {
namespace {

const std::string kCentre = "0791447700090000";
const std::string kSubmit = "11000C914477000910320000A705E8329BFD06";

/// Sends each piece and compares the answer to the piece.
void Converse(SimulatedPhone& phone, const std::vector<std::pair<std::string, std::string>>& pieces) {
  for (const auto& [bytes, answer] : pieces) EXPECT_EQ(BytesOf(phone.Receive(bytes)), answer) << bytes;
}

TEST(Session, AClientConnects) {
  SimulatedPhone phone{SampleMemory()};
  Converse(phone, {{"ATZE0V1\r", "ATZE0V1\r\r\nOK\r\n"},
                   {"AT+CPBS=?\r\n", Answer({R"(+CPBS: ("SM","ME","ON","DC","RC","MC"))"})},
                   {"AT+CPBS=\"SM\"\r\n", kOk},
                   {"AT+CPBR=?\r\n", Answer({"+CPBR: (1-250),40,20"})},
                   {"AT+CPBS=\"ME\"\r\n", kOk},
                   {"AT+CPBR=?\r\n", Answer({"+CPBR: (1-500),40,20"})},
                   {"AT+CPMS=?\r", Answer({R"(+CPMS: ("SM","ME"),("SM","ME"),("SM","ME"))"})},
                   {"AT+CMGW=?\r", kOk}});
}

TEST(Session, AClientReadsABookInChunks) {
  SimulatedPhone phone = QuietPhone("default", SampleMemory());
  Converse(phone, {{"AT+CPBS=\"SM\"\r\n", kOk},
                   {"AT+CPBR=21,40\r\n", Answer({"+CPBR: 21,\"07700900109\",129,\"Ice cream \x01"
                                                 "5\""})},
                   {"AT+CPBR=41,60\r\n", kOk},
                   {"AT+CPBR=81,100\r\n", Answer({"+CPBR: 100,\"+447700900110\",145,\"S\x0Cren\""})},
                   {"AT+CPBR=241,250\r\n", Answer({R"(+CPBR: 250,"*#100#",129,"My number")"})}});
}

TEST(Session, AClientUploadsChangedEntries) {
  SimulatedPhone phone = QuietPhone("default", SampleMemory());
  Converse(phone, {{"AT+CPBS=\"SM\"\r\n", kOk},
                   {"AT+CPBW=1,\"+447700900101\",145,\"Anna W.\"\r", kOk},
                   {"AT+CPBW=2\r", kOk},
                   {"AT+CPBW=6,\"0770\",129,\"New\"\r", kOk}});
  const auto& entries = phone.memory().FindPhonebook("SM")->entries;
  EXPECT_EQ(entries.at(1).name, u"Anna W.");
  EXPECT_FALSE(entries.contains(2));
  EXPECT_EQ(entries.at(6), (PhonebookEntry{"0770", 129, u"New"}));
}

TEST(Session, AClientThatDoesNotWaitForThePrompt) {
  SimulatedPhone phone = QuietPhone();
  const std::string answer = BytesOf(phone.Receive("AT+CMGS=19\r" + kCentre + kSubmit + "\x1A"));
  EXPECT_EQ(answer, kPrompt + Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kCentre + kSubmit);
}

TEST(Session, AClientDeletesStoresAndSends) {
  SimulatedPhone phone = QuietPhone("default", SampleMemory());
  Converse(phone, {{"AT+CPMS=\"ME\",\"ME\"\r", Answer({"+CPMS: 3,100,3,100,5,30"})},
                   {"AT+CMGD=2\r", kOk},
                   {"AT+CMGW=19\r", kPrompt},
                   {kCentre + kSubmit + "\x1A", Answer({"+CMGW: 2"})},
                   {"AT+CPMS=\"SM\",\"SM\"\r", Answer({"+CPMS: 5,30,5,30,5,30"})},
                   {"AT+CMGS=19\r", kPrompt},
                   {kCentre + kSubmit + "\x1A", Answer({"+CMGS: 5"})}});
  EXPECT_EQ(phone.memory().FindStore("SM")->messages.at(5).status, MessageStatus::kReceivedUnread);
}

TEST(Session, AnUploadStopsAtAFaultAndGoesOnLater) {
  SimulatedPhone phone = QuietPhone("default", SampleMemory());
  ASSERT_TRUE(phone.AddFault("AT+CPBW#2:error"));
  Converse(phone, {{"AT+CPBW=1\r", kOk}, {"AT+CPBW=2\r", kError}, {"AT+CPBW=2\r", kOk}});
  EXPECT_FALSE(phone.memory().FindPhonebook("SM")->entries.contains(2));
}

TEST(Session, ReplyLinesSeenOnRealPhonesCanBeScripted) {
  const struct {
    std::string_view command;
    std::string_view line;
  } kTable[] = {
      {"AT+CPBR=16", R"(+CPBR: 16,"",,"00530074",,,,,,,)"},
      {"AT+CPBR=23",
       R"(+CPBR: 23,"Primary Number",145,"Name",3,"0123456789",145,2,"0123456789",145,1,"E-Mail",255)"},
      {"AT+CPBR=?", "+CPBR: (1-<maxloc>),(),()"},
      {"AT+CPBR=?", "+CPBR: (1-250),50,14,,,,40,20"},
      {"AT+CPBS?", R"(+CPBS: "ME")"},
      {"AT+CPMS=?", R"(+CPMS: (ME", "SR"), ("ME", "SR"), ("ME"))"},
      {"AT+CPMS=?", R"(+CPMS: (("SM","BM","SR"),("SM")))"},
      {"AT+CPMS?", R"(+CPMS: ,,,,,,,,)"},
      {"AT+CMGR=3", "+CMGR: ,,27"},
      {"AT+CSCA?", "+CSCA: 002B0033003800300036,145"},
      {"AT+CNUM", R"(+CNUM: "",+79139131234,145)"},
  };
  for (const auto& row : kTable) {
    PhoneMemory memory;
    memory.replies[std::string(row.command)] = {std::string(row.line)};
    SimulatedPhone phone = QuietPhone("default", memory);
    EXPECT_EQ(Ask(phone, row.command), Answer({std::string(row.line)})) << row.command;
  }
}

TEST(Session, RandomEditsLeaveTheBookAClientExpects) {
  SimulatedPhone phone = QuietPhone();
  std::map<int, PhonebookEntry> expected;
  std::mt19937 random(5);
  for (int step = 0; step < 2000; ++step) {
    const int location = static_cast<int>(random() % 250) + 1;
    if (random() % 3 == 0) {
      ASSERT_EQ(Ask(phone, "AT+CPBW=" + std::to_string(location)), kOk);
      expected.erase(location);
      continue;
    }
    std::string septets;
    for (auto length = 1 + random() % 20; length > 0; --length)
      septets += static_cast<char>('A' + random() % 26);
    const std::string number = std::to_string(random());
    std::string line = "AT+CPBW=" + std::to_string(location);
    line += ",\"" + number + "\",129,\"" + septets + '"';
    ASSERT_EQ(Ask(phone, line), kOk);
    expected[location] = {number, 129, FromSeptets(septets)};
  }
  EXPECT_EQ(phone.memory().FindPhonebook("SM")->entries, expected);
  std::vector<std::string> lines;
  lines.reserve(expected.size());
  for (const auto& [location, entry] : expected) {
    lines.push_back("+CPBR: " + std::to_string(location) + ",\"" + entry.number + "\",129,\"" +
                    ToSeptets(entry.name) + '"');
  }
  EXPECT_EQ(Ask(phone, "AT+CPBR=1,250"), Answer(lines));
}

TEST(Session, EveryNameOfTheDefaultAlphabetSurvivesTheLine) {
  for (int code = 0; code < 0x80; ++code) {
    // CR ends the line and a quote before the closing one ends the text; the escape needs its second septet.
    if (code == '\r' || code == 0x1B) continue;
    SimulatedPhone phone = QuietPhone();
    const std::string name = std::string("a") + static_cast<char>(code) + "b";
    ASSERT_EQ(Ask(phone, "AT+CPBW=1,\"1\",129,\"" + name + '"'), kOk) << code;
    EXPECT_EQ(Ask(phone, "AT+CPBR=1"), Answer({"+CPBR: 1,\"1\",129,\"" + name + '"'})) << code;
  }
}

}  // namespace
}  // namespace celldesk::simulator

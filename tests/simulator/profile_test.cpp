#include "simulator/profile.h"

#include <gtest/gtest.h>

#include <set>

#include "phone_driver.h"
#include "simulator/sample_memory.h"

namespace celldesk::simulator {
namespace {

const std::string kCentre = "0791447700090000";
const std::string kSubmit = "11000C914477000999990000A705E8329BFD06";
const std::string kDeliver = "040C914477000910100000621050210000000AE8329BFD4697D9EC37";

PhoneMemory SmallMemory() {
  PhoneMemory memory;
  auto& entries = memory.FindPhonebook("SM")->entries;
  entries[1] = {"+447700900101", 145, u"Anna"};
  entries[2] = {"", 129, u"Nobody"};
  auto& messages = memory.FindStore("SM")->messages;
  messages[1] = {MessageStatus::kReceivedRead, kCentre + kDeliver};
  messages[3] = {MessageStatus::kStoredSent, kCentre + kSubmit};
  memory.FindStore("ME")->messages[1] = {MessageStatus::kStoredUnsent, kCentre + kSubmit};
  return memory;
}

TEST(Profile, NamesAreDifferentAndEveryOneCanBeMade) {
  std::set<std::string_view> names;
  for (const ProfileInfo& info : Profiles()) {
    EXPECT_TRUE(names.insert(info.name).second) << info.name;
    EXPECT_TRUE(MakeProfile(info.name).has_value()) << info.name;
    EXPECT_FALSE(info.description.empty()) << info.name;
  }
  EXPECT_EQ(Profiles().front().name, "default");
}

TEST(Profile, AnUnknownNameMakesNone) {
  EXPECT_FALSE(MakeProfile("").has_value());
  EXPECT_FALSE(MakeProfile("nothing").has_value());
  EXPECT_FALSE(MakeProfile("slow,nothing").has_value());
}

TEST(Profile, EveryProfileAnswersAnAttentionWithOk) {
  for (const ProfileInfo& info : Profiles()) {
    SimulatedPhone phone = QuietPhone(info.name, SampleMemory());
    EXPECT_NE(Ask(phone, "AT").find("OK"), std::string::npos) << info.name;
  }
}

TEST(Profile, ShowsItsHabit) {
  const struct {
    std::string_view profile;
    std::string_view line;
    std::string answer;
  } kTable[] = {
      {"default", "AT+CMGR=1", Answer({"+CMGR: 1,,28", kCentre + kDeliver})},
      {"no-alpha", "AT+CMGR=1", Answer({"+CMGR: 1,28", kCentre + kDeliver})},
      {"no-alpha", "AT+CMGL=3", Answer({"+CMGL: 3,3,19", kCentre + kSubmit})},
      {"alpha-names", "AT+CMGR=1", Answer({R"(+CMGR: 1,"Anna",28)", kCentre + kDeliver})},
      {"alpha-names", "AT+CMGR=3", Answer({"+CMGR: 3,,19", kCentre + kSubmit})},
      {"padded-names", "AT+CPBR=1", Answer({R"(+CPBR: 1,"+447700900101",145,"Anna                ")"})},
      {"empty-lists", "AT+CPBS=?", Answer({"+CPBS: ()"})},
      {"empty-lists", "AT+CPBR=?", Answer({"+CPBR: (),40,20"})},
      {"empty-lists", "AT+CPMS=?", Answer({"+CPMS: (),(),()"})},
      {"empty-replies", "AT+CPMS=?", Answer({"+CPMS: "})},
      {"bare-lists", "AT+CPBS=?", Answer({R"(+CPBS: "ME","SM")"})},
      {"bare-lists", "AT+CPMS=?", Answer({R"(+CPMS: "ME","SM","SM")"})},
      {"no-lengths", "AT+CPBR=?", Answer({"+CPBR: (1-250)"})},
      {"prompt-crlf", "AT+CMGS=19", "\r\n> \r\n"},
      {"prompt-bare", "AT+CMGS=19", "> "},
      {"cme-errors", "AT+CPBS=\"XX\"", CmeError(3)},
      {"cme-errors", "AT+NOTHING", kError},
      {"not-found", "AT+CPBR=9", kError},
      {"not-found", "AT+CPBR=9,10", kOk},
      {"not-found,cme-errors", "AT+CPBR=9", CmeError(22)},
      {"no-me", "AT+CPBS=?", Answer({R"(+CPBS: ("SM","ON","DC","RC","MC"))"})},
      {"no-me", "AT+CPBS=\"ME\"", kError},
      {"no-me", "AT+CPMS=?", Answer({R"(+CPMS: ("SM"),("SM"),("SM"))"})},
      {"no-me", "AT+CPMS=\"ME\",\"ME\"", CmsError(302)},
      {"mt-union", "AT+CPMS=?", Answer({R"(+CPMS: ("SM","ME","MT"),("SM","ME","MT"),("SM","ME","MT"))"})},
      {"mt-union", "AT+CPMS=\"MT\"", Answer({"+CPMS: 3,130,2,30,2,30"})},
      {"one-slot", "AT+CPBR=?", Answer({"+CPBR: (1-1),40,20"})},
      {"one-slot", "AT+CPBS?", Answer({R"(+CPBS: "SM",1,1)"})},
      {"one-slot", "AT+CPMS?", Answer({R"(+CPMS: "SM",1,1,"SM",1,1,"SM",1,1)"})},
      {"one-slot", "AT+CMGL=4", Answer({"+CMGL: 1,1,,28", kCentre + kDeliver})},
      {"storage-full", "AT+CPBS?", Answer({R"(+CPBS: "SM",2,2)"})},
      {"storage-full", "AT+CPBW=5,\"1\"", kError},
      {"storage-full", "AT+CPBW=1,\"1\"", kOk},
      {"storage-full", "AT+CPMS?", Answer({R"(+CPMS: "SM",2,2,"SM",2,2,"SM",2,2)"})},
      {"no-store", "AT+CMGW=?", kError},
      {"no-store", "AT+CMGW=19", kError},
      {"no-smsc", "AT+CMGR=1", Answer({"+CMGR: 1,,28", kDeliver})},
      {"no-plus", "AT+CPBR=1", Answer({R"(+CPBR: 1,"447700900101",145,"Anna")"})},
      {"no-counts", "AT+CPBS?", Answer({R"(+CPBS: "SM")"})},
      {"missing-types", "AT+CPBR=2", Answer({R"(+CPBR: 2,"",,"Nobody")"})},
      {"trailing-comma", "AT+CPBR=1", Answer({R"(+CPBR: 1,"+447700900101",145,"Anna",)"})},
      {"index-zero", "AT+CMGL=3", Answer({"+CMGL: 2,3,,19", kCentre + kSubmit})},
      {"index-zero", "AT+CMGR=0", Answer({"+CMGR: 1,,28", kCentre + kDeliver})},
      {"index-zero", "AT+CMGD=?", Answer({"+CMGD: (0,2),(0-4)"})},
      {"huge-range", "AT+CPBR=?", Answer({"+CPBR: (1-65535),20,100"})},
      {"huge-range", "AT+CPBR=65535", kOk},
      {"bad-range", "AT+CPBR=?", Answer({"+CPBR: (5-1),40,20"})},
      {"no-space", "AT+CPBR=1", Answer({R"(+CPBR:1,"+447700900101",145,"Anna")"})},
      {"doubled-cr", "AT+CMGF?", "\r\r\n+CMGF: 0\r\r\n\r\r\nOK\r\r\n"},
      {"chatty", "AT", "\r\n+PSBEARER: 24, 0\r\n" + kOk + "\r\n^BOOT: 37478870,0,0,0,77\r\n"},
  };
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone(row.profile, SmallMemory());
    EXPECT_EQ(Ask(phone, row.line), row.answer) << row.profile << ' ' << row.line;
  }
}

TEST(Profile, LooseListsHaveBlanksAfterCommas) {
  SimulatedPhone phone = QuietPhone("loose-lists");
  EXPECT_EQ(Ask(phone, "AT+CPMS=?"),
            Answer({"+CPMS: (\"SM\", \"ME\", \"SM_P\", \"ME_P\"), (\"SM\", \"ME\", \"SM_P\", \"ME_P\"), "
                    "(\"SM\", \"ME\", \"SM_P\", \"ME_P\")"}));
}

TEST(Profile, WithoutTheCentreFieldBodiesAreTheMessageAlone) {
  SimulatedPhone phone = QuietPhone("no-smsc");
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=19", kSubmit), Answer({"+CMGS: 1"}));
  EXPECT_EQ(phone.memory().sent.at(0).body, kSubmit);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kSubmit), Answer({"+CMGW: 1"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=1"), Answer({"+CMGR: 2,,19", kSubmit}));
  EXPECT_EQ(AskWithBody(phone, "AT+CMGS=19", kCentre + kSubmit), CmsError(304));
}

TEST(Profile, AUnionNumbersTheStoresOneAfterAnother) {
  SimulatedPhone phone = QuietPhone("mt-union", SmallMemory());
  ASSERT_EQ(Ask(phone, "AT+CPMS=\"MT\",\"MT\""), Answer({"+CPMS: 3,130,3,130,2,30"}));
  EXPECT_EQ(Ask(phone, "AT+CMGR=31"), Answer({"+CMGR: 2,,19", kCentre + kSubmit}));
  EXPECT_EQ(Ask(phone, "AT+CMGD=?"), Answer({"+CMGD: (1,3,31),(0-4)"}));
  EXPECT_EQ(Ask(phone, "AT+CMGD=31"), kOk);
  EXPECT_TRUE(phone.memory().FindStore("ME")->messages.empty());
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 2"}));
}

TEST(Profile, FullStorageStoresNoMessage) {
  SimulatedPhone phone = QuietPhone("storage-full", SmallMemory());
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), CmsError(322));
  ASSERT_EQ(Ask(phone, "AT+CMGD=1"), kOk);
  EXPECT_EQ(AskWithBody(phone, "AT+CMGW=19", kCentre + kSubmit), Answer({"+CMGW: 1"}));
}

TEST(Profile, ASlowPhoneTakesItsTime) {
  SimulatedPhone phone(SmallMemory(), MakeProfile("slow").value_or(Profile()));
  static_cast<void>(phone.Receive("ATE0\r"));
  int delay = 0;
  for (const Emission& emission : phone.Receive("AT+CPBR=1,20\r")) delay += emission.delay_ms;
  EXPECT_EQ(delay, 400 + 3 * 20);
}

TEST(Profile, HabitsAddUp) {
  SimulatedPhone phone = QuietPhone("no-plus,no-space,padded-names", SmallMemory());
  EXPECT_EQ(Ask(phone, "AT+CPBR=1"), Answer({R"(+CPBR:1,"447700900101",145,"Anna                ")"}));
}

TEST(Profile, AHabitLeavesTheMemoryAsItIs) {
  for (const ProfileInfo& info : Profiles()) {
    SimulatedPhone phone = QuietPhone(info.name, SampleMemory());
    static_cast<void>(Ask(phone, "AT+CPBR=?;+CPMS=?"));
    EXPECT_EQ(phone.memory(), SampleMemory()) << info.name;
  }
}

}  // namespace
}  // namespace celldesk::simulator

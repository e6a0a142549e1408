// Parsers meet damaged input: they end, they refuse or understand, and what they understand they write again.

#include <gtest/gtest.h>

#include <random>

#include "phone_driver.h"
#include "simulator/ascii.h"
#include "simulator/phone_state.h"
#include "simulator/sample_memory.h"
#include "simulator/tpdu.h"

namespace celldesk::simulator {
namespace {

/// The text with a few bytes changed, added or taken away.
std::string Damaged(std::string text, std::mt19937& random) {
  for (auto count = 1 + random() % 4; count > 0 && !text.empty(); --count) {
    const std::size_t at = random() % text.size();
    switch (random() % 3) {
      case 0:
        text[at] = static_cast<char>(random());
        break;
      case 1:
        text.insert(at, 1, static_cast<char>(random()));
        break;
      default:
        text.erase(at, 1 + random() % 3);
    }
  }
  return text;
}

TEST(Robustness, ATpduThatIsUnderstoodIsWrittenAgain) {
  const std::vector<std::pair<std::string, bool>> whole = {
      {*FromHex("31000C914477000910320000A705E8329BFD06"), true},
      {*FromHex("190004812143000462105021000000020141"), true},
      {*FromHex("040C914477000910320000621050210000000AE8329BFD4697D9EC37"), false},
      {*FromHex("06110C91447700091032621050210000006210502100000000"), false}};
  std::mt19937 random(1);
  int understood = 0;
  for (int round = 0; round < 40000; ++round) {
    const auto& [octets, from_phone] = whole[static_cast<std::size_t>(round) % whole.size()];
    const std::string damaged = Damaged(octets, random);
    const auto tpdu = ParseTpdu(damaged, from_phone);
    if (!tpdu || tpdu->kind == TpduKind::kCommand) continue;
    ++understood;
    static_cast<void>(TextOf(*tpdu));
    static_cast<void>(tpdu->address.Text());
    const auto again = ParseTpdu(WriteTpdu(*tpdu), from_phone);
    ASSERT_TRUE(again.has_value()) << ToHex(damaged);
    EXPECT_EQ(WriteTpdu(*again), WriteTpdu(*tpdu)) << ToHex(damaged);
  }
  EXPECT_GT(understood, 1000);
}

TEST(Robustness, AStateThatIsUnderstoodIsSavedAgain) {
  const std::string whole = SaveState(SampleMemory());
  std::mt19937 random(2);
  int understood = 0;
  for (int round = 0; round < 3000; ++round) {
    const auto memory = LoadState(Damaged(whole, random));
    if (!memory) continue;
    ++understood;
    const auto again = LoadState(SaveState(*memory));
    ASSERT_TRUE(again.has_value());
    EXPECT_EQ(SaveState(*again), SaveState(*memory));
  }
  EXPECT_GT(understood, 100);
}

TEST(Robustness, APhoneAnswersAfterAnyConversation) {
  const std::vector<std::string> lines = {
      "ATZE0V1\r",          "AT+CPBS=\"ME\"\r",     "AT+CPBR=1,500\r",
      "AT+CPBW=3,\"1\"\r",  "AT+CMGF=1\r",          "AT+CMGL=\"ALL\"\r",
      "AT+CMGS=19\r",       "0791447700090000\x1A", "AT+CNMI=2,2,0,1\r",
      "AT+CSCS=\"UCS2\"\r", "AT+CMSS=4\r",          "AT+CMGW=\"1\"\rtext\x1A",
      "AT+CPMS=\"MT\"\r",   "AT+CMGD=1,4\r",        "AT+CCLK=\"26/01/05,12:00:00\"\r"};
  std::mt19937 random(3);
  for (const ProfileInfo& info : Profiles()) {
    SimulatedPhone phone = QuietPhone(info.name, SampleMemory());
    for (int round = 0; round < 200; ++round) {
      static_cast<void>(phone.Receive(Damaged(lines[random() % lines.size()], random)));
    }
    phone.ResetLine();
    const std::string answer = BytesOf(phone.Receive("\rATZE0\rATI\r"));
    EXPECT_NE(answer.find("Corvane"), answer.npos) << info.name;
    EXPECT_EQ(LoadState(SaveState(phone.memory())), phone.memory()) << info.name;
  }
}

TEST(Robustness, EveryFaultOnEveryStepLeavesAPhoneThatAnswers) {
  const std::string conversation =
      "ATZE0V1\rAT+CPBS=?\r\nAT+CPBS=\"SM\"\r\nAT+CPBR=?\r\nAT+CPBR=1,20\r\nAT+CPMS=?\rAT+CMGL=4\r"
      "AT+CMGS=19\r079144770009000011000C914477000910320000A705E8329BFD06\x1A";
  for (const std::string& kind : FaultKindNames()) {
    for (int step = 1; step <= 9; ++step) {
      SimulatedPhone phone{SampleMemory()};
      ASSERT_TRUE(phone.AddFault(std::to_string(step) + ':' + kind));
      static_cast<void>(phone.Receive(conversation));
      phone.ClearFaults();
      phone.ResetLine();
      static_cast<void>(phone.Receive("\rATZE0\r"));
      EXPECT_EQ(Ask(phone, "AT+CSQ"), Answer({"+CSQ: 21,99"})) << kind << ' ' << step;
    }
  }
}

}  // namespace
}  // namespace celldesk::simulator

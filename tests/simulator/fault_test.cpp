#include "simulator/fault.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

PhoneMemory SmallMemory() {
  PhoneMemory memory;
  auto& entries = memory.FindPhonebook("SM")->entries;
  entries[1] = {"111", 129, u"A"};
  entries[2] = {"222", 129, u"B"};
  return memory;
}

const std::string kFirst = R"(+CPBR: 1,"111",129,"A")";
const std::string kSecond = R"(+CPBR: 2,"222",129,"B")";

/// A phone that answers "AT+CPBR=1,2" under a fault.
SimulatedPhone FaultyPhone(std::string_view fault) {
  SimulatedPhone phone = QuietPhone("default", SmallMemory());
  EXPECT_TRUE(phone.AddFault(fault)) << fault;
  return phone;
}

std::string FaultyAnswer(std::string_view fault) {
  SimulatedPhone phone = FaultyPhone(fault);
  return Ask(phone, "AT+CPBR=1,2");
}

TEST(Fault, ReadsItsText) {
  const struct {
    std::string_view text;
    FaultKind kind;
    int line;
    std::string_view prefix;
    int occurrence;
    std::string_view argument;
  } kTable[] = {
      {"3:error", FaultKind::kError, 3, "", 0, ""},
      {"*:silence", FaultKind::kSilence, 0, "", 0, ""},
      {"*#2:silence", FaultKind::kSilence, 0, "", 2, ""},
      {"AT+CPBR=1#1:cms-error:322", FaultKind::kMessageError, 0, "AT+CPBR=1", 1, "322"},
      {"AT+CMGL:cme-error:14", FaultKind::kPhoneError, 0, "AT+CMGL", 0, "14"},
      {"PDU:half-line", FaultKind::kHalfLine, 0, "PDU", 0, ""},
      {"1:unsolicited:+CMTI: \"SM\",3", FaultKind::kUnsolicited, 1, "", 0, "+CMTI: \"SM\",3"},
      {"1:wrong-index:-5", FaultKind::kWrongIndex, 1, "", 0, "-5"},
      {"1:duplicate-line", FaultKind::kDuplicateLine, 1, "", 0, ""},
      {"1:late", FaultKind::kLate, 1, "", 0, ""},
      {"1:noise:3", FaultKind::kNoise, 1, "", 0, "3"},
      {"1:split:5,100", FaultKind::kSplit, 1, "", 0, "5,100"},
      {"1:delay:9000", FaultKind::kDelay, 1, "", 0, "9000"},
      {"1:hang-up:4", FaultKind::kHangUp, 1, "", 0, "4"},
      {"1:hang-up-back", FaultKind::kHangUpBack, 1, "", 0, ""},
      {"AT+CPBW=1,\"*#100#\":error", FaultKind::kError, 0, "AT+CPBW=1,\"*#100#\"", 0, ""},
  };
  for (const auto& row : kTable) {
    const auto fault = ParseFault(row.text);
    ASSERT_TRUE(fault.has_value()) << row.text;
    EXPECT_EQ(fault->kind, row.kind) << row.text;
    EXPECT_EQ(fault->line, row.line) << row.text;
    EXPECT_EQ(fault->prefix, row.prefix) << row.text;
    EXPECT_EQ(fault->occurrence, row.occurrence) << row.text;
    EXPECT_EQ(fault->argument, row.argument) << row.text;
  }
}

TEST(Fault, RefusesATextThatIsNone) {
  for (const std::string_view text : {"", "error", ":error", "1:", "1:nothing", "0:error", "-1:error",
                                      "AT#-1:error", "1:cms-error:x", "1:split:-1", "1:noise:1,x"}) {
    EXPECT_FALSE(ParseFault(text).has_value()) << text;
  }
}

TEST(Fault, EveryKindHasAName) {
  for (const std::string& name : FaultKindNames()) EXPECT_TRUE(ParseFault("1:" + name).has_value()) << name;
  EXPECT_EQ(FaultKindNames().size(), 14U);
}

TEST(FaultPlan, FindsTheFaultsOfEachLine) {
  FaultPlan plan;
  for (const std::string_view text : {"2:error", "AT+CPBR:silence", "at+cpbr#2:late", "*:noise"}) {
    plan.Add(ParseFault(text).value());
  }
  const auto kinds = [&plan](std::string_view line) {
    std::vector<FaultKind> found;
    for (const Fault& fault : plan.Next(line)) found.push_back(fault.kind);
    return found;
  };
  EXPECT_EQ(kinds("AT"), (std::vector{FaultKind::kNoise}));
  EXPECT_EQ(kinds("AT+CPBR=1"), (std::vector{FaultKind::kError, FaultKind::kSilence, FaultKind::kNoise}));
  EXPECT_EQ(kinds("AT+CPBR=2"), (std::vector{FaultKind::kSilence, FaultKind::kLate, FaultKind::kNoise}));
  EXPECT_EQ(kinds("AT+CPBR=3"), (std::vector{FaultKind::kSilence, FaultKind::kNoise}));
  plan.Clear();
  EXPECT_TRUE(kinds("AT+CPBR=4").empty());
}

TEST(Fault, BendsTheReply) {
  const struct {
    std::string_view fault;
    std::string answer;
  } kTable[] = {
      {"2:error", kError},
      {"2:cms-error", CmsError(500)},
      {"2:cms-error:38", CmsError(38)},
      {"2:cme-error", CmeError(100)},
      {"2:cme-error:14", CmeError(14)},
      {"2:silence", ""},
      {"2:half-line", "\r\n" + kFirst + "\r\n" + kSecond.substr(0, kSecond.size() / 2)},
      {"2:half-line:5", "\r\n+CP"},
      {"2:duplicate-line", Answer({kFirst, kFirst, kSecond, kSecond})},
      {"2:unsolicited:RING", Answer({"RING", kFirst, "RING", kSecond, "RING"})},
      {"2:unsolicited",
       Answer({R"(+CMTI: "SM",1)", kFirst, R"(+CMTI: "SM",1)", kSecond, R"(+CMTI: "SM",1)"})},
      {"2:wrong-index:777", Answer({R"(+CPBR: 777,"111",129,"A")", R"(+CPBR: 777,"222",129,"B")"})},
      {"2:wrong-index", Answer({R"(+CPBR: -1,"111",129,"A")", R"(+CPBR: 0,"222",129,"B")"})},
      {"2:split", Answer({kFirst, kSecond})},
      {"2:split:7", Answer({kFirst, kSecond})},
      {"2:delay:50", Answer({kFirst, kSecond})},
      {"2:hang-up", ""},
      {"2:hang-up:6", "\r\n+CPB"},
      {"3:error", Answer({kFirst, kSecond})},
  };
  for (const auto& row : kTable) EXPECT_EQ(FaultyAnswer(row.fault), row.answer) << row.fault;
}

TEST(Fault, AnInjectedErrorIsNotCarriedOut) {
  SimulatedPhone phone = FaultyPhone("AT+CPBW#1:error");
  EXPECT_EQ(Ask(phone, "AT+CPBW=1"), kError);
  EXPECT_TRUE(phone.memory().FindPhonebook("SM")->entries.contains(1));
  EXPECT_EQ(Ask(phone, "AT+CPBW=1"), kOk);
  EXPECT_FALSE(phone.memory().FindPhonebook("SM")->entries.contains(1));
}

TEST(Fault, ALostReplyIsCarriedOut) {
  SimulatedPhone phone = FaultyPhone("AT+CPBW:silence");
  EXPECT_EQ(Ask(phone, "AT+CPBW=1"), "");
  EXPECT_FALSE(phone.memory().FindPhonebook("SM")->entries.contains(1));
}

TEST(Fault, ALateReplyComesWithTheNext) {
  SimulatedPhone phone = FaultyPhone("2:late");
  EXPECT_EQ(Ask(phone, "AT+CPBR=1"), "");
  EXPECT_EQ(Ask(phone, "AT+CPBR=2"), Answer({kFirst}) + Answer({kSecond}));
}

TEST(Fault, ASplitReplyComesInPieces) {
  SimulatedPhone phone = FaultyPhone("2:split:7");
  EXPECT_EQ(phone.Receive("AT+CPBR=1\r"),
            (std::vector<Emission>{{0, "\r\n+CPBR"}, {60, Answer({kFirst}).substr(7)}}));
}

TEST(Fault, EverySplitOfAReplyKeepsItsBytes) {
  const std::string whole = Answer({kFirst, kSecond});
  for (std::size_t at = 1; at <= whole.size() + 3; ++at) {
    EXPECT_EQ(FaultyAnswer("2:split:" + std::to_string(at)), whole) << at;
  }
}

TEST(Fault, AReplyMayComeByteByByte) {
  SimulatedPhone phone = FaultyPhone("2:split:0,5");
  const auto emissions = phone.Receive("AT\r");
  ASSERT_EQ(emissions.size(), kOk.size());
  EXPECT_EQ(emissions.back(), (Emission{5, "\n"}));
}

TEST(Fault, ADelayedReplyComesLater) {
  SimulatedPhone phone = FaultyPhone("2:delay:9000");
  EXPECT_EQ(phone.Receive("AT\r"), (std::vector<Emission>{{9000, kOk}}));
}

TEST(Fault, AHangUpEndsTheReply) {
  SimulatedPhone phone = FaultyPhone("2:hang-up:3");
  EXPECT_EQ(phone.Receive("AT\r"), (std::vector<Emission>{{0, "\r\nO", LineEvent::kHangUp}}));
  SimulatedPhone returning = FaultyPhone("2:hang-up-back");
  EXPECT_EQ(returning.Receive("AT\r"), (std::vector<Emission>{{0, "", LineEvent::kHangUpBack}}));
}

TEST(Fault, NoiseAddsBytesAndTakesNone) {
  const std::string whole = Answer({kFirst, kSecond});
  const std::string noisy = FaultyAnswer("2:noise:20");
  EXPECT_EQ(noisy.size(), whole.size() + 20);
  EXPECT_EQ(noisy.front(), '\0');
  EXPECT_TRUE(std::any_of(noisy.begin(), noisy.end(),
                          [](char byte) { return static_cast<unsigned char>(byte) >= 0x80; }));
  std::string without;
  std::size_t at = 0;
  for (const char byte : noisy) {
    if (at < whole.size() && byte == whole[at]) {
      without += byte;
      ++at;
    }
  }
  EXPECT_EQ(without, whole);
}

TEST(Fault, NoiseIsTheSameForTheSameSeed) {
  const auto noisy = [](unsigned seed) {
    SimulatedPhone phone(SmallMemory(), Profile(), seed);
    EXPECT_TRUE(phone.AddFault("*:noise"));
    return BytesOf(phone.Receive("AT+CPBR=1,2\r"));
  };
  EXPECT_EQ(noisy(7), noisy(7));
  EXPECT_NE(noisy(7), noisy(8));
}

TEST(Fault, FaultsOfOneStepAddUp) {
  SimulatedPhone phone = FaultyPhone("2:duplicate-line");
  ASSERT_TRUE(phone.AddFault("2:wrong-index:9"));
  EXPECT_EQ(Ask(phone, "AT+CPBR=1"), Answer({R"(+CPBR: 9,"111",129,"A")", R"(+CPBR: 9,"111",129,"A")"}));
}

TEST(Fault, ThePromptMayStayAway) {
  SimulatedPhone phone = FaultyPhone("AT+CMGS:silence");
  EXPECT_EQ(Ask(phone, "AT+CMGS=19"), "");
  EXPECT_EQ(BytesOf(phone.Receive("00\x1A")), CmsError(304));
}

TEST(Fault, ABodyIsAStepOfItsOwn) {
  SimulatedPhone phone = FaultyPhone("PDU#1:cms-error:38");
  ASSERT_EQ(Ask(phone, "AT+CMGS=19"), kPrompt);
  EXPECT_EQ(BytesOf(phone.Receive("079144770009000011000C914477000999990000A705E8329BFD06\x1A")),
            CmsError(38));
  EXPECT_TRUE(phone.memory().sent.empty());
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(Fault, ARefusedMessageCommandLeavesNoBodyBehind) {
  SimulatedPhone phone = FaultyPhone("AT+CMGS#1:error");
  EXPECT_EQ(Ask(phone, "AT+CMGS=19"), kError);
  EXPECT_EQ(BytesOf(phone.Receive("079144770009000011000C914477000999990000A705E8329BFD06\x1A")), "");
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(Fault, FaultsCanBeTakenBack) {
  SimulatedPhone phone = FaultyPhone("*:silence");
  phone.ClearFaults();
  EXPECT_EQ(Ask(phone, "AT"), kOk);
  EXPECT_FALSE(phone.AddFault("no fault"));
}

}  // namespace
}  // namespace celldesk::simulator

#include <gtest/gtest.h>

#include "phone_driver.h"

namespace celldesk::simulator {
namespace {

TEST(BasicCommands, EchoIsOnUntilSwitchedOff) {
  SimulatedPhone phone;
  EXPECT_EQ(Ask(phone, "AT"), "AT\r" + kOk);
  EXPECT_EQ(Ask(phone, "ATE0"), "ATE0\r" + kOk);
  EXPECT_EQ(Ask(phone, "AT"), kOk);
  EXPECT_EQ(Ask(phone, "ATE1"), kOk);
  EXPECT_EQ(Ask(phone, "AT"), "AT\r" + kOk);
}

TEST(BasicCommands, TheEchoComesWithEveryPieceOfALine) {
  SimulatedPhone phone;
  EXPECT_EQ(BytesOf(phone.Receive("A")), "A");
  EXPECT_EQ(BytesOf(phone.Receive("T\r")), "T\r" + kOk);
}

TEST(BasicCommands, AResetWithEchoOffIsOneLine) {
  SimulatedPhone phone;
  EXPECT_EQ(Ask(phone, "ATZE0V1"), "ATZE0V1\r" + kOk);
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(BasicCommands, AResetForgetsTheSettings) {
  for (const std::string_view reset : {"ATZ", "AT&F"}) {
    SimulatedPhone phone = QuietPhone();
    ASSERT_EQ(Ask(phone, "AT+CMGF=1;+CMEE=2;+CSCS=\"UCS2\";+CPBS=\"ME\""), kOk);
    ASSERT_EQ(Ask(phone, reset), kOk);
    EXPECT_TRUE(phone.session().echo);
    EXPECT_FALSE(phone.session().text_mode);
    EXPECT_EQ(phone.session().error_level, 0);
    EXPECT_EQ(phone.session().character_set, CharacterSet::kGsm);
    EXPECT_EQ(phone.session().phonebook, "SM");
  }
}

TEST(BasicCommands, ResultCodesAreNumbersWithoutWords) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "ATV0"), "0\r");
  EXPECT_EQ(Ask(phone, "AT+NOTHING"), "4\r");
  EXPECT_EQ(Ask(phone, "AT+CSQ"), "\r\n+CSQ: 21,99\r\n0\r");
  EXPECT_EQ(Ask(phone, "ATV1"), kOk);
}

TEST(BasicCommands, AQuietPhoneGivesNoResultCodes) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "ATQ1"), "");
  EXPECT_EQ(Ask(phone, "AT+CSQ"), "\r\n+CSQ: 21,99\r\n");
  EXPECT_EQ(Ask(phone, "AT+NOTHING"), "");
  EXPECT_EQ(Ask(phone, "ATQ0"), kOk);
}

TEST(BasicCommands, AnswersEachAsItShould) {
  const struct {
    std::string_view line;
    std::string answer;
  } kTable[] = {
      {"ATI", Answer({"Corvane", "Simulated Phone", "1.0"})},
      {"ATE2", kError},
      {"ATV7", kError},
      {"ATX4", kOk},
      {"ATH", kOk},
      {"AT&C1&D2&K0", kOk},
      {"ATS0=2", kOk},
      {"ATS0?", Answer({"000"})},
      {"ATS7=256", kError},
      {"ATD123", kError},
      {"ATY", kError},
      {"AT+NOTHING", kError},
      {"AT+NOTHING=?", kError},
      {"AT^SYSINFO", kError},
      {"at", kOk},
      {"aT e0", kOk},
  };
  for (const auto& row : kTable) {
    SimulatedPhone phone = QuietPhone();
    EXPECT_EQ(Ask(phone, row.line), row.answer) << row.line;
  }
}

TEST(BasicCommands, ARegisterKeepsItsValue) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "ATS7=30"), kOk);
  EXPECT_EQ(Ask(phone, "ATS7?"), Answer({"030"}));
}

TEST(BasicCommands, ALineEndsAtItsFirstFailure) {
  SimulatedPhone phone = QuietPhone();
  EXPECT_EQ(Ask(phone, "AT+CSQ;+NOTHING;+CMGF=1"), "\r\n+CSQ: 21,99\r\n" + kError);
  EXPECT_EQ(Ask(phone, "AT+CMGF?"), Answer({"+CMGF: 0"}));
}

TEST(BasicCommands, TheLastLineIsRepeated) {
  SimulatedPhone phone = QuietPhone();
  ASSERT_EQ(Ask(phone, "AT+CSQ"), Answer({"+CSQ: 21,99"}));
  EXPECT_EQ(BytesOf(phone.Receive("A/")), Answer({"+CSQ: 21,99"}));
}

TEST(BasicCommands, TheWholeCommandSetIsListed) {
  SimulatedPhone phone = QuietPhone();
  const std::string list = Ask(phone, "AT+CLAC");
  for (const std::string_view name : {"ATZ", "AT&F", "AT+CGMI", "AT+CPBR", "AT+CMGL", "AT+CNMI", "AT+CMSS"}) {
    EXPECT_NE(list.find(std::string(name) + "\r\n"), list.npos) << name;
  }
  EXPECT_EQ(Ask(phone, "AT+CLAC=?"), kOk);
}

TEST(SimulatedPhone, AnswersTheSameHoweverTheBytesArrive) {
  const std::string bytes = "ATZE0V1\rAT+CPBS=?\r\nAT+CPBR=1,20\r\nAT+CMGL=4\r";
  SimulatedPhone whole;
  const std::string expected = BytesOf(whole.Receive(bytes));
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    SimulatedPhone phone;
    const std::string first = BytesOf(phone.Receive(bytes.substr(0, cut)));
    EXPECT_EQ(first + BytesOf(phone.Receive(bytes.substr(cut))), expected) << cut;
  }
}

TEST(SimulatedPhone, RemembersWhatItReceived) {
  SimulatedPhone phone = QuietPhone();
  static_cast<void>(AskWithBody(phone, "AT+CMGS=1", "00"));
  EXPECT_EQ(phone.received_lines(), (std::vector<std::string>{"ATE0", "AT+CMGS=1", "PDU 00"}));
  EXPECT_EQ(phone.received_bytes(), "ATE0\rAT+CMGS=1\r00\x1A");
}

TEST(SimulatedPhone, ALeavingClientTakesItsUnfinishedLineAlong) {
  SimulatedPhone phone = QuietPhone();
  static_cast<void>(phone.Receive("AT+CMGS=20\r0011"));
  phone.ResetLine();
  EXPECT_EQ(Ask(phone, "AT"), kOk);
}

TEST(SimulatedPhone, EndsOnAnyBytes) {
  SimulatedPhone phone;
  std::string bytes;
  unsigned state = 1;
  for (int i = 0; i < 20000; ++i) {
    state = state * 1664525 + 1013904223;
    bytes += i % 40 == 0 ? std::string("\rAT+CPBW=1,\"") : std::string(1, static_cast<char>(state >> 24));
  }
  static_cast<void>(phone.Receive(bytes));
  phone.ResetLine();
  EXPECT_NE(BytesOf(phone.Receive("\rATE0\r")).find("OK"), std::string::npos);
}

}  // namespace
}  // namespace celldesk::simulator

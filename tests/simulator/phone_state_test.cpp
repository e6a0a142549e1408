#include "simulator/phone_state.h"

#include <gtest/gtest.h>

#include "simulator/sample_memory.h"

namespace celldesk::simulator {
namespace {

constexpr std::string_view kHeader = "celldesk-phone-state 1\n";

PhoneMemory Loaded(std::string_view body) {
  std::string error;
  const auto memory = LoadState(std::string(kHeader) + std::string(body), &error);
  EXPECT_TRUE(memory.has_value()) << error;
  return memory.value_or(PhoneMemory());
}

std::string ErrorOf(std::string_view text) {
  std::string error;
  EXPECT_FALSE(LoadState(text, &error).has_value()) << text;
  return error;
}

TEST(PhoneState, AnEmptyAndAFilledMemorySurviveTheRoundTrip) {
  for (const PhoneMemory& memory : {PhoneMemory(), SampleMemory()}) {
    EXPECT_EQ(LoadState(SaveState(memory)), memory);
  }
}

TEST(PhoneState, EverythingRareSurvivesTheRoundTrip) {
  PhoneMemory memory;
  memory.model = "A \"quoted\" \\ name";
  memory.last_reference = 255;
  Phonebook& book = *memory.FindPhonebook("SM");
  book.range_text = "nonsense";
  book.first = 0;
  book.entries[7] = {"", 129, u"line\nend \u20AC \"x\" \u0001"};
  memory.phonebooks.emplace_back().name = "EN";
  memory.FindStore("ME")->messages[0] = {MessageStatus::kStoredSent, "00"};
  memory.sent = {{1, "00AB"}, {2, "not hex \x1A"}};
  memory.waiting = {"0011"};
  memory.replies["AT+CPBR=?"] = {"+CPBR: (1-99999999),40,20", "second"};
  EXPECT_EQ(LoadState(SaveState(memory)), memory);
}

TEST(PhoneState, ReadsAHandWrittenText) {
  const PhoneMemory memory = Loaded(
      "# a comment\n"
      "\n"
      "own-number \"+447700900999\"\r\n"
      "[phonebook SM]\n"
      "  last 3\n"
      "entry 2 \"112\" 129 \"Notruf \xC3\xA4\"\n"
      "[messages ME]\n"
      "message 4 1 0011\n"
      "[replies]\n"
      "AT+CPBS=? \"+CPBS: ()\"\n");
  EXPECT_EQ(memory.own_number, "+447700900999");
  EXPECT_EQ(memory.FindPhonebook("SM")->last, 3);
  EXPECT_EQ(memory.FindPhonebook("SM")->entries.at(2).name, u"Notruf \u00E4");
  EXPECT_EQ(memory.FindStore("ME")->messages.at(4).status, MessageStatus::kReceivedRead);
  EXPECT_EQ(memory.replies.at("AT+CPBS=?"), std::vector<std::string>{"+CPBS: ()"});
}

TEST(PhoneState, BooksThatATextLeavesOutAreThoseOfAnEmptyPhone) {
  EXPECT_EQ(Loaded(""), PhoneMemory());
  EXPECT_EQ(Loaded("[phonebook ON]\n").FindPhonebook("ON")->entries.size(), 0U);
}

TEST(PhoneState, NamesTheLineItDoesNotUnderstand) {
  EXPECT_EQ(ErrorOf(""), "line 1: ");
  EXPECT_EQ(ErrorOf("something else\n"), "line 1: something else");
  const std::string_view kBad[] = {"colour \"red\"",
                                   "reference 256",
                                   "reference x",
                                   "model",
                                   "model \"open",
                                   "model \"a\" b",
                                   "model \"\\xZZ\"",
                                   "[phonebook SM",
                                   "[phonebook]",
                                   "[nothing]",
                                   "[phonebook SM]\nentry 1 \"1\" 300 \"x\"",
                                   "[phonebook SM]\nentry -1 \"1\" 129 \"x\"",
                                   "[phonebook SM]\ncolour 1",
                                   "[messages SM]\nmessage 1 4 00",
                                   "[messages SM]\ncolour 1",
                                   "[sent]\nx \"00\"",
                                   "[replies]\nAT"};
  for (const std::string_view bad : kBad) {
    const auto last = bad.substr(bad.find('\n') + 1);
    const std::string line = bad.find('\n') == bad.npos ? "line 2: " : "line 3: ";
    EXPECT_EQ(ErrorOf(std::string(kHeader) + std::string(bad) + '\n'), line + std::string(last));
  }
}

TEST(PhoneState, TheTextIsReadable) {
  PhoneMemory memory;
  memory.FindPhonebook("SM")->entries[3] = {"+447700900101", 145, u"J\u00E4ger"};
  memory.FindStore("SM")->messages[9] = {MessageStatus::kStoredUnsent, "0011"};
  const std::string text = SaveState(memory);
  EXPECT_NE(text.find("\nentry 3 \"+447700900101\" 145 \"J\xC3\xA4ger\"\n"), text.npos);
  EXPECT_NE(text.find("\nmessage 9 2 0011\n"), text.npos);
  EXPECT_TRUE(text.starts_with(kHeader));
}

}  // namespace
}  // namespace celldesk::simulator

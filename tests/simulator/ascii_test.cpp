#include "simulator/ascii.h"

#include <gtest/gtest.h>

namespace celldesk::simulator {
namespace {

TEST(Ascii, CapitalsAreOfAsciiLettersOnly) {
  EXPECT_EQ(ToUpper("at+cpbr=1,\"\xE4z\""), "AT+CPBR=1,\"\xE4Z\"");
  EXPECT_EQ(ToUpper('z'), 'Z');
  EXPECT_EQ(ToUpper('{'), '{');
}

TEST(Ascii, ComparesBeginningsWithoutRegardToCase) {
  EXPECT_TRUE(StartsWithIgnoringCase("at+cpbr", "AT+C"));
  EXPECT_TRUE(StartsWithIgnoringCase("anything", ""));
  EXPECT_FALSE(StartsWithIgnoringCase("AT", "AT+"));
  EXPECT_FALSE(StartsWithIgnoringCase("ATX", "ATY"));
}

TEST(Ascii, TrimsBlanksAtBothEnds) {
  EXPECT_EQ(Trim(" \ta b\r\n"), "a b");
  EXPECT_EQ(Trim(" \r\n"), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(Ascii, ReadsWholeNumbersOnly) {
  EXPECT_EQ(ParseNumber("250"), 250);
  EXPECT_EQ(ParseNumber("-3"), -3);
  EXPECT_EQ(ParseNumber("+3"), 3);
  EXPECT_EQ(ParseNumber("2147483647"), 2147483647);
  for (const std::string_view text : {"", "-", "+", "3x", " 3", "3.5", "2147483648"}) {
    EXPECT_FALSE(ParseNumber(text).has_value()) << text;
  }
}

TEST(Ascii, HexadecimalSurvivesTheRoundTrip) {
  std::string octets;
  for (int value = 0; value < 256; ++value) octets += static_cast<char>(value);
  EXPECT_EQ(FromHex(ToHex(octets)), octets);
  EXPECT_EQ(ToHex("\x0A\xFF"), "0AFF");
  EXPECT_EQ(FromHex("0aFf"), "\x0A\xFF");
  EXPECT_EQ(FromHex(""), "");
}

TEST(Ascii, RefusesHexadecimalThatIsNone) {
  for (const std::string_view text : {"0", "0G", "G0", "-1", "+1", " 1", "0x"}) {
    EXPECT_FALSE(FromHex(text).has_value()) << text;
  }
  EXPECT_FALSE(FromHex(std::string(2, '\0')).has_value());
}

TEST(Ascii, SplitsAndJoins) {
  EXPECT_EQ(Split("a,,b", ','), (std::vector<std::string>{"a", "", "b"}));
  EXPECT_EQ(Split("", ','), std::vector<std::string>{""});
  EXPECT_EQ(Join({"a", "", "b"}, ", "), "a, , b");
  EXPECT_EQ(Join({}, ","), "");
  EXPECT_EQ(Quoted("a\"b"), "\"a\"b\"");
  EXPECT_EQ(QuotedList({"SM", "ME"}), "\"SM\",\"ME\"");
  EXPECT_EQ(QuotedList({}), "");
}

}  // namespace
}  // namespace celldesk::simulator

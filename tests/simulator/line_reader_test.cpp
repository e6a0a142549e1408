#include "simulator/line_reader.h"

#include <gtest/gtest.h>

#include <vector>

namespace celldesk::simulator {
namespace {

std::vector<std::string> LinesOf(LineReader& reader, std::string_view bytes) {
  std::vector<std::string> lines;
  for (const char byte : bytes) {
    if (const auto input = reader.Push(byte)) lines.push_back(input->text);
  }
  return lines;
}

std::vector<std::string> LinesOf(std::string_view bytes) {
  LineReader reader;
  return LinesOf(reader, bytes);
}

using Lines = std::vector<std::string>;

TEST(LineReader, EndsALineAtACarriageReturn) {
  EXPECT_EQ(LinesOf("AT+CSQ\r"), Lines{"+CSQ"});
  EXPECT_EQ(LinesOf("AT+CSQ"), Lines{});
  EXPECT_EQ(LinesOf("AT\r"), Lines{""});
}

TEST(LineReader, IgnoresLineFeedsAroundLines) {
  EXPECT_EQ(LinesOf("AT+CSQ\r\nAT+CREG?\r\n"), (Lines{"+CSQ", "+CREG?"}));
}

TEST(LineReader, IgnoresWhatStandsBeforeTheAttention) {
  EXPECT_EQ(LinesOf("0791AB\x1A\x80\xFF"
                    "at+csq\r"),
            Lines{"+csq"});
}

TEST(LineReader, IgnoresALineWithoutAttention) { EXPECT_EQ(LinesOf("HELLO\r\r\rA\r"), Lines{}); }

TEST(LineReader, ABackspaceErasesOutsideQuotesAndIsALetterInside) {
  EXPECT_EQ(LinesOf("AT+CSX\bQ\r"), Lines{"+CSQ"});
  EXPECT_EQ(LinesOf("\b\bAT\r"), Lines{""});
  EXPECT_EQ(LinesOf("AT=\"a\b\"\r"), Lines{"=\"a\b\""});
}

TEST(LineReader, ABackspaceErasesInsideQuotesWhenItIsNoLetter) {
  LineReader reader;
  reader.set_backspace_is_text(false);
  EXPECT_EQ(LinesOf(reader, "AT=\"ab\b\"\r"), Lines{"=\"a\""});
}

TEST(LineReader, KeepsNulAndLineFeedInsideQuotesOnly) {
  using std::string_literals::operator""s;
  EXPECT_EQ(LinesOf("A\0T=\"\0\n\"\r"s), Lines{"=\"\0\n\""s});
}

TEST(LineReader, RepeatsTheLastLineAtOnce) {
  EXPECT_EQ(LinesOf("AT+CSQ\rA/a/"), (Lines{"+CSQ", "+CSQ", "+CSQ"}));
}

TEST(LineReader, ABodyEndsAtCtrlZ) {
  LineReader reader;
  reader.ExpectBody(false);
  EXPECT_EQ(LinesOf(reader,
                    "\n00 11\r\n22\x1A"
                    "AT\r"),
            (Lines{"001122", ""}));
}

TEST(LineReader, ABodyIsGivenUpAtEscape) {
  LineReader reader;
  reader.ExpectBody(false);
  for (const char byte : std::string_view("0011")) EXPECT_FALSE(reader.Push(byte).has_value());
  const auto input = reader.Push('\x1B');
  ASSERT_TRUE(input.has_value());
  EXPECT_EQ(input->kind, InputKind::kCancelled);
}

TEST(LineReader, ATextBodyKeepsItsLinesAndAsksForEach) {
  LineReader reader;
  reader.ExpectBody(true);
  std::vector<InputKind> kinds;
  std::string text;
  for (const char byte : std::string_view("ab\bc\r\nd\x1A")) {
    if (const auto input = reader.Push(byte)) {
      kinds.push_back(input->kind);
      text = input->text;
    }
  }
  EXPECT_EQ(kinds, (std::vector{InputKind::kBodyLineEnd, InputKind::kBody}));
  EXPECT_EQ(text, "ac\nd");
}

TEST(LineReader, AResetForgetsTheUnfinishedLineAndBody) {
  LineReader reader;
  EXPECT_EQ(LinesOf(reader, "AT+CPBR"), Lines{});
  reader.Reset();
  EXPECT_EQ(LinesOf(reader, "AT\r"), Lines{""});
  reader.ExpectBody(false);
  reader.Reset();
  EXPECT_EQ(LinesOf(reader, "ATI\r"), Lines{"I"});
}

TEST(LineReader, AnEndlessLineStaysBounded) {
  EXPECT_LE(LinesOf("AT" + std::string(100000, 'x') + "\r")[0].size(), 4096U);
}

}  // namespace
}  // namespace celldesk::simulator

#include "platform/vdir/vcard_lines.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Every line as "name|parameters|value".
std::vector<std::string> Lines(std::string_view bytes, bool fold_keeps_blank = false) {
  VcardLines lines(bytes);
  lines.set_fold_keeps_blank(fold_keeps_blank);
  std::vector<std::string> result;
  while (const auto line = lines.Next()) {
    result.push_back(std::string(line->name) + "|" + std::string(line->parameters) + "|" +
                     std::string(line->value));
  }
  return result;
}

TEST(VcardLines, SplitsNameParametersAndValue) {
  EXPECT_THAT(Lines("TEL;TYPE=CELL,VOICE;X=1:+420:603\r\nN:Smith;John\r\nFN;:\r\n"),
              ElementsAre("TEL|TYPE=CELL,VOICE;X=1|+420:603", "N||Smith;John", "FN||"));
}

TEST(VcardLines, EndsLinesAtCrLfLfAndCr) {
  const std::vector<std::string> expected = {"A||1", "B||2", "C||3"};
  EXPECT_EQ(Lines("A:1\r\nB:2\r\nC:3\r\n"), expected);
  EXPECT_EQ(Lines("A:1\nB:2\nC:3"), expected);
  EXPECT_EQ(Lines("A:1\rB:2\rC:3\r"), expected);
  EXPECT_EQ(Lines("A:1\r\r\nB:2\r\r\n\nC:3\n\n\n"), expected);
}

TEST(VcardLines, LeavesLinesWithoutAColonOut) {
  EXPECT_THAT(Lines("hello\nA:1\n\nTEL;CELL\nB:2\nend"), ElementsAre("A||1", "B||2"));
  EXPECT_THAT(Lines(""), IsEmpty());
  EXPECT_THAT(Lines("\r\n \r\n"), IsEmpty());
}

TEST(VcardLines, DropsTheGroup) {
  EXPECT_THAT(Lines("item1.TEL;type=pref:1\na.b.N:2\n.FN:3\nX.:4\nTEL;X=a.b:5\n"),
              ElementsAre("TEL|type=pref|1", "N||2", "FN||3", "||4", "TEL|X=a.b|5"));
}

TEST(VcardLines, PassesOverAByteOrderMark) {
  EXPECT_THAT(Lines("\xEF\xBB\xBF"
                    "A:1\n"),
              ElementsAre("A||1"));
}

TEST(VcardLines, JoinsFoldedLines) {
  EXPECT_THAT(Lines("NOTE:one\r\n  two\r\n\tthree\r\nA:1\r\n"), ElementsAre("NOTE||one twothree", "A||1"));
  EXPECT_THAT(Lines("TE\n L;TYPE=CE\n LL:1\n 2"), ElementsAre("TEL|TYPE=CELL|12"));
}

TEST(VcardLines, KeepsTheBlankOfAFoldWhereItIsText) {
  EXPECT_THAT(Lines("NOTE:one\r\n two\r\n\tthree\r\n", true), ElementsAre("NOTE||one two\tthree"));
}

TEST(VcardLines, AColonBetweenQuotesBelongsToTheParameters) {
  EXPECT_THAT(Lines("TEL;X=\"a:b;c\";Y=\"d\":1:2\n"), ElementsAre("TEL|X=\"a:b;c\";Y=\"d\"|1:2"));
}

TEST(VcardLines, AQuoteThatNobodyClosedHidesNothing) {
  EXPECT_THAT(Lines("TEL;X=\"a:1\nA:2\n"), ElementsAre("TEL|X=\"a|1", "A||2"));
}

TEST(VcardLines, JoinsQuotedPrintableLinesAtASoftBreak) {
  EXPECT_THAT(Lines("N;ENCODING=QUOTED-PRINTABLE:Sm=\r\nith;=\r\nJohn\r\nA:1\r\n"),
              ElementsAre("N|ENCODING=QUOTED-PRINTABLE|Smith;John", "A||1"));
  EXPECT_THAT(Lines("N;QUOTED-PRINTABLE:a= \t\r\n\r\nA:1\r\n"), ElementsAre("N|QUOTED-PRINTABLE|a", "A||1"));
  EXPECT_THAT(Lines("N;encoding=quoted-printable:a=\n b=\nA:1\n"),
              ElementsAre("N|encoding=quoted-printable|a bA:1"));
}

TEST(VcardLines, AnEqualsSignAtTheEndIsNoSoftBreakElsewhere) {
  EXPECT_THAT(Lines("PHOTO;ENCODING=BASE64:AAA=\r\nA:1=\r\nB:2\r\n"),
              ElementsAre("PHOTO|ENCODING=BASE64|AAA=", "A||1=", "B||2"));
  EXPECT_THAT(Lines("N;X=\"QUOTED-PRINTABLE\":a=\nA:1\n"),
              ElementsAre("N|X=\"QUOTED-PRINTABLE\"|a=", "A||1"));
}

TEST(VcardLines, ASoftBreakAtTheEndOfTheFileEndsTheLine) {
  EXPECT_THAT(Lines("N;QUOTED-PRINTABLE:a="), ElementsAre("N|QUOTED-PRINTABLE|a="));
  EXPECT_THAT(Lines("N;QUOTED-PRINTABLE:a=\n"), ElementsAre("N|QUOTED-PRINTABLE|a="));
  EXPECT_THAT(Lines("N;QUOTED-PRINTABLE:a=\n\n"), ElementsAre("N|QUOTED-PRINTABLE|a"));
}

/// `count` times `piece` behind `start`: at this size anything that is not linear would not come to an end.
std::string Many(std::string_view start, std::string_view piece, std::size_t count = 1'000'000) {
  std::string bytes(start);
  bytes.reserve(start.size() + piece.size() * count);
  for (std::size_t i = 0; i < count; ++i) bytes += piece;
  return bytes;
}

TEST(VcardLines, MillionsOfFoldsSoftBreaksAndQuotesAreReadInLinearTime) {
  EXPECT_EQ(Lines(Many("N:", "\n x")).at(0).size(), 1'000'003U);
  EXPECT_EQ(Lines(Many("N", "\n =")).size(), 0U);
  EXPECT_EQ(Lines(Many("N;QUOTED-PRINTABLE:", "x=\n")).at(0).size(), 1'000'020U);
  EXPECT_EQ(Lines(Many("N;QUOTED-PRINTABLE:", "=\n ")).size(), 1U);
  EXPECT_EQ(Lines(Many("N;QUOTED-PRINTABLE:" + std::string(1'000'000, ' '), "\n "), true).size(), 1U);
  EXPECT_EQ(Lines(Many("N;X=\"", "=\n \"")).size(), 0U);
  EXPECT_EQ(Lines(Many("", "\r\r")).size(), 0U);
  EXPECT_EQ(Lines(Many("", ":\n")).size(), 1'000'000U);
}

}  // namespace
}  // namespace celldesk

#include "ui/framework/token_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace celldesk {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TokenList, EndsEachTokenAtASemicolon) {
  EXPECT_THAT(ParseTokens(u"Address-SIM;Address-MT;Inbox;Outbox;"),
              ElementsAre(u"Address-SIM", u"Address-MT", u"Inbox", u"Outbox"));
}

TEST(TokenList, KeepsEmptyTokens) {
  EXPECT_THAT(ParseTokens(u";New;;Delete;"), ElementsAre(u"", u"New", u"", u"Delete"));
  EXPECT_THAT(ParseTokens(u""), IsEmpty());
  EXPECT_THAT(ParseTokens(u";"), ElementsAre(u""));
}

TEST(TokenList, TakesALastTokenWithoutItsEnd) { EXPECT_THAT(ParseTokens(u"a;b"), ElementsAre(u"a", u"b")); }

TEST(TokenList, ResolvesEscapes) {
  EXPECT_THAT(ParseTokens(u"Na#;me;"), ElementsAre(u"Na;me"));
  EXPECT_THAT(ParseTokens(u"No# 1;x##y;#a;"), ElementsAre(u"No#1", u"x#y", u"a"));
}

TEST(TokenList, KeepsAnEscapeSignAtTheVeryEnd) { EXPECT_THAT(ParseTokens(u"ab#"), ElementsAre(u"ab#")); }

TEST(TokenList, StopsBeforeATokenThatBeginsWithACarriageReturn) {
  EXPECT_THAT(ParseTokens(u"a;b;\rc;"), ElementsAre(u"a", u"b"));
  EXPECT_THAT(ParseTokens(u"a;b\rc;"), ElementsAre(u"a", u"b\rc")) << "inside a token it is text";
  EXPECT_THAT(ParseTokens(u"\ra;"), IsEmpty());
}

TEST(ColumnList, PairsWidthsAndCaptions) {
  EXPECT_THAT(ParseColumns(u"40;ID;170;Name;170;Number;"),
              ElementsAre(ColumnSpec{40, u"ID"}, ColumnSpec{170, u"Name"}, ColumnSpec{170, u"Number"}));
}

TEST(ColumnList, ReadsSignsAndBlanksAndIgnoresWhatFollowsTheDigits) {
  EXPECT_THAT(ParseColumns(u"  30px;A;-5;B;+7;C;"),
              ElementsAre(ColumnSpec{30, u"A"}, ColumnSpec{-5, u"B"}, ColumnSpec{7, u"C"}));
}

TEST(ColumnList, TakesNoWidthFromATokenWithoutDigits) {
  EXPECT_THAT(ParseColumns(u"wide;A;;B;"), ElementsAre(ColumnSpec{0, u"A"}, ColumnSpec{0, u"B"}));
}

TEST(ColumnList, EscapesCaptionsToo) {
  EXPECT_THAT(ParseColumns(u"40;ID;50;Na#;me;"),
              ElementsAre(ColumnSpec{40, u"ID"}, ColumnSpec{50, u"Na;me"}));
}

TEST(ColumnList, LeavesOutAWidthWithoutCaption) {
  EXPECT_THAT(ParseColumns(u"40;ID;50;"), ElementsAre(ColumnSpec{40, u"ID"}));
}

}  // namespace
}  // namespace celldesk

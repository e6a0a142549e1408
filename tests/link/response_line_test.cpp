#include "link/response_line.h"

#include <gtest/gtest.h>

#include "util/number_text.h"

namespace celldesk {
namespace {

ResponseLine Line(std::u16string text) {
  ResponseLine line;
  line.Take(std::move(text));
  return line;
}

TEST(ResponseLine, StartsEmpty) {
  ResponseLine line;
  EXPECT_EQ(line.text(), u"");
  EXPECT_EQ(line.rest(), u"");
  EXPECT_FALSE(IsOk(line));
  EXPECT_EQ(Field(line, 0), u"");
}

TEST(ResponseLine, TakingALineSetsTheCursorToItsStart) {
  ResponseLine line = Line(u"+CPBR: 1");
  ASSERT_TRUE(StartsWith(line, u"+CPBR:"));
  line.Take(u"+CPBR: 2");
  EXPECT_EQ(line.rest(), u"+CPBR: 2");
}

TEST(ResponseLine, ClearEmptiesTextAndCursor) {
  ResponseLine line = Line(u"+CPBR: 1");
  ASSERT_TRUE(StartsWith(line, u"+CPBR:"));
  line.Clear();
  EXPECT_EQ(line.text(), u"");
  EXPECT_EQ(line.rest(), u"");
}

TEST(ResponseLine, APrefixMatchMovesTheCursorBehindTheLiteral) {
  ResponseLine line = Line(u"+CPBR: 1,\"2\"");
  EXPECT_TRUE(StartsWith(line, u"+CPBR:"));
  EXPECT_EQ(line.rest(), u" 1,\"2\"");
  EXPECT_EQ(line.text(), u"+CPBR: 1,\"2\"");
}

TEST(ResponseLine, AFailedMatchLeavesTheCursor) {
  ResponseLine line = Line(u"+CPBR: 1");
  ASSERT_TRUE(StartsWith(line, u"+CPBR:"));
  EXPECT_FALSE(StartsWith(line, u"+CMGL:"));
  EXPECT_EQ(line.rest(), u" 1");
}

TEST(ResponseLine, AMatchBeginsAtTheLinesFirstCharacterNotAtTheCursor) {
  ResponseLine line = Line(u"+CPBR: 1");
  ASSERT_TRUE(StartsWith(line, u"+CP"));
  EXPECT_FALSE(StartsWith(line, u"BR:"));
  EXPECT_TRUE(StartsWith(line, u"+CPBR:"));
}

TEST(ResponseLine, AMatchIsExact) {
  ResponseLine line = Line(u"+CPBR: 1");
  EXPECT_FALSE(StartsWith(line, u"+cpbr:"));
  EXPECT_FALSE(StartsWith(line, u"+CPBR: 12"));
  EXPECT_TRUE(StartsWith(line, u"+CPBR: 1"));
  EXPECT_TRUE(StartsWith(line, u""));
}

TEST(ResponseLine, FinalResultsAreKnownByTheirBeginning) {
  struct {
    const char16_t* text;
    bool ok;
    bool error;
  } const cases[] = {
      {u"OK", true, false},
      {u"OKAY", true, false},
      {u"O", false, false},
      {u"ok", false, false},
      {u" OK", false, false},
      {u"\nOK", false, false},
      {u"ERROR", false, true},
      {u"ERROR: 5", false, true},
      {u"ERRO", false, false},
      {u"+CMS ERROR: 500", false, false},
      {u"+CME ERROR: 10", false, false},
      {u"", false, false},
  };
  for (const auto& c : cases) {
    ResponseLine line = Line(c.text);
    EXPECT_EQ(IsOk(line), c.ok);
    EXPECT_EQ(IsError(line), c.error);
  }
}

struct FieldCase {
  const char16_t* text;
  std::size_t n;
  const char16_t* field;
};

class ResponseLineField : public testing::TestWithParam<FieldCase> {};

TEST_P(ResponseLineField, IsTakenFromTheCursor) {
  const auto& [text, n, field] = GetParam();
  ResponseLine line = Line(std::u16string(u"+X:") + text);
  ASSERT_TRUE(StartsWith(line, u"+X:"));
  EXPECT_EQ(Field(line, n), field);
  EXPECT_EQ(line.rest(), text);
}

INSTANTIATE_TEST_SUITE_P(Plain, ResponseLineField,
                         testing::Values(FieldCase{u" 1,22,333", 0, u"1"}, FieldCase{u" 1,22,333", 1, u"22"},
                                         FieldCase{u" 1,22,333", 2, u"333"}, FieldCase{u"   7", 0, u"7"},
                                         FieldCase{u"1 ,2", 0, u"1 "}, FieldCase{u"1, 2", 1, u" 2"}));

INSTANTIATE_TEST_SUITE_P(Quoted, ResponseLineField,
                         testing::Values(FieldCase{u" 1,\"+49\",145,\"Lee, Ann\"", 1, u"+49"},
                                         FieldCase{u" 1,\"+49\",145,\"Lee, Ann\"", 2, u"145"},
                                         FieldCase{u" 1,\"+49\",145,\"Lee, Ann\"", 3, u"Lee, Ann"},
                                         FieldCase{u"\"a,b\",\"c,d\",e", 2, u"e"},
                                         FieldCase{u"\"\",x", 0, u""}, FieldCase{u"\"\",x", 1, u"x"},
                                         FieldCase{u"\"open", 0, u"open"}, FieldCase{u"\"", 0, u""},
                                         FieldCase{u"\"a\"junk,b", 0, u"a"},
                                         FieldCase{u"\"a\"junk,b", 1, u"b"}, FieldCase{u" \"a\"", 0, u"a"}));

INSTANTIATE_TEST_SUITE_P(BlankBeforeAQuoteAfterACommaBelongsToTheField, ResponseLineField,
                         testing::Values(FieldCase{u"1, \"a\"", 1, u" \"a\""},
                                         FieldCase{u"1, \"a,b\",2", 2, u"b\""}));

INSTANTIATE_TEST_SUITE_P(Missing, ResponseLineField,
                         testing::Values(FieldCase{u"1,2", 2, u""}, FieldCase{u"1,2", 9, u""},
                                         FieldCase{u"1,", 1, u""}, FieldCase{u"", 0, u""},
                                         FieldCase{u"", 1, u""}, FieldCase{u"   ", 0, u""},
                                         FieldCase{u"\"open,1", 1, u""}, FieldCase{u"\"a\"", 1, u""}));

// The search for a field's end begins at its second character.
INSTANTIATE_TEST_SUITE_P(AnEmptyFieldHoldsItsSeparator, ResponseLineField,
                         testing::Values(FieldCase{u"1,,145", 1, u",145"}, FieldCase{u"1,,145,x", 1, u",145"},
                                         FieldCase{u"1,,145", 2, u"145"}, FieldCase{u",a", 0, u",a"},
                                         FieldCase{u"1,,", 1, u","}, FieldCase{u"1,,", 2, u""}));

TEST(ResponseLine, FieldsOfALineWithoutAPrefixBeginAtItsStart) {
  const ResponseLine line = Line(u" a,b");
  EXPECT_EQ(Field(line, 0), u"a");
  EXPECT_EQ(Field(line, 1), u"b");
}

TEST(ResponseLine, AFieldBeyondTheLastConvertsToZero) {
  const ResponseLine line = Line(u"1,2");
  EXPECT_EQ(ParseDecimal(Field(line, 2)), 0);
}

TEST(ResponseLine, OtherQuotesAndSeparatorsCanBeChosen) {
  ResponseLine line(u'<', u'>', u';');
  line.Take(u"<a;b>;\"c\"");
  EXPECT_EQ(Field(line, 0), u"a;b");
  EXPECT_EQ(Field(line, 1), u"\"c\"");
}

TEST(ResponseLine, EveryFieldLiesInsideTheText) {
  const std::u16string_view alphabet = u"\",a ";
  for (unsigned code = 0; code < 4096; ++code) {
    std::u16string text;
    for (unsigned i = 0, rest = code; i < 6; ++i, rest /= 4) text += alphabet[rest % 4];
    const ResponseLine line = Line(text);
    for (std::size_t n = 0; n < 7; ++n) {
      const auto field = Field(line, n);
      if (field.empty()) continue;
      EXPECT_GE(field.data(), line.text().data());
      EXPECT_LE(field.data() + field.size(), line.text().data() + line.text().size());
    }
  }
}

TEST(RangeBound, GivesBothBounds) {
  EXPECT_EQ(RangeBound(u"(1-250)", false), u"1");
  EXPECT_EQ(RangeBound(u"(1-250)", true), u"250");
  EXPECT_EQ(RangeBound(u"x(10-20)y", false), u"10");
  EXPECT_EQ(RangeBound(u"x(10-20)y", true), u"20");
}

TEST(RangeBound, IsEmptyWhenACharacterIsMissing) {
  for (const auto* text : {u"1-250", u"(1-250", u"1-250)", u"(250)", u"", u")-(", u"-(1)"}) {
    EXPECT_EQ(RangeBound(text, false), u"");
    EXPECT_EQ(RangeBound(text, true), u"");
    EXPECT_EQ(ParseDecimal(RangeBound(text, true)), 0);
  }
}

TEST(RangeBound, MayHaveEmptyBounds) {
  EXPECT_EQ(RangeBound(u"(-)", false), u"");
  EXPECT_EQ(RangeBound(u"(-5)", true), u"5");
  EXPECT_EQ(RangeBound(u"(5-)", false), u"5");
  EXPECT_EQ(RangeBound(u"(5-)9)", true), u"");
  EXPECT_EQ(RangeBound(u"(1)-5)", true), u"5");
}

}  // namespace
}  // namespace celldesk

#include "util/field_text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "util/number_text.h"
#include "util/windows1250.h"

namespace celldesk {
namespace {

FieldBytes Bytes(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::string Encoded(std::u16string_view text) {
  std::string bytes;
  AppendField(bytes, text);
  return bytes;
}

/// Every field of every line that a reader finds, a line's fields joined by "|".
std::vector<std::u16string> Lines(std::string_view text) {
  FieldReader reader(Bytes(text));
  std::vector<std::u16string> lines;
  do {
    std::u16string line;
    while (const auto field = reader.Next()) line += *field + u"|";
    lines.push_back(line);
  } while (reader.NextLine());
  return lines;
}

using Expected = std::vector<std::u16string>;

TEST(AppendField, ClosesAFieldAndEscapesTheTwoSpecialCharacters) {
  EXPECT_EQ(Encoded(u""), ";");
  EXPECT_EQ(Encoded(u"A#B;C"), "A# B#;C;");
  EXPECT_EQ(Encoded(u"##"), "# # ;");
  EXPECT_EQ(Encoded(u"# "), "#  ;");
  EXPECT_EQ(Encoded(u"a\r\nb"), "a\r\nb;");
}

TEST(AppendField, WritesWindows1250) { EXPECT_EQ(Encoded(u"\u010d\u0161\u0416"), "\xE8\x9A\x16;"); }

TEST(AppendField, EscapesACharacterWhoseByteIsSpecial) {
  EXPECT_EQ(Encoded(u"\u043b\u0423"), "#;# ;");  // low bytes 3B and 23
}

TEST(AppendNumber, WritesDecimal) {
  std::string bytes;
  AppendNumber(bytes, 250);
  AppendNumber(bytes, -2147483647 - 1);
  AppendLineEnd(bytes);
  EXPECT_EQ(bytes, "250;-2147483648;\r\n");
}

TEST(CopyField, ResolvesEscapes) {
  EXPECT_EQ(CopyField(Bytes("A# B#;C;rest"), 0), u"A#B;C");
  EXPECT_EQ(CopyField(Bytes("#a##;"), 0), u"a#");
  EXPECT_EQ(CopyField(Bytes("ab;cd;"), 3), u"cd");
  EXPECT_EQ(CopyField(Bytes(";"), 0), u"");
  EXPECT_EQ(CopyField(Bytes("open"), 0), u"open");
  EXPECT_EQ(CopyField(Bytes("end#"), 0), u"end#");
  EXPECT_EQ(CopyField(Bytes("x"), 7), u"");
  EXPECT_EQ(CopyField(Bytes("\xE8;"), 0), u"\u010d");
}

TEST(AfterField, StandsAfterTheClosingSemicolon) {
  EXPECT_EQ(AfterField(Bytes("a#;b;c"), 0), 5U);
  EXPECT_EQ(AfterField(Bytes("a#;b;c"), 5), std::nullopt);
  EXPECT_EQ(AfterField(Bytes("a##;b;c"), 0), 4U);
  EXPECT_EQ(AfterField(Bytes("a###;b;c"), 0), 7U);
  EXPECT_EQ(AfterField(Bytes("#;b;c"), 1), 2U);
  EXPECT_EQ(AfterField(Bytes("a#;"), 0), std::nullopt);
  EXPECT_EQ(AfterField(Bytes("a#"), 0), std::nullopt);
  EXPECT_EQ(AfterField(Bytes(""), 0), std::nullopt);
  EXPECT_EQ(AfterField(Bytes("a;"), 9), std::nullopt);
}

TEST(AfterLine, NeedsAClosedFieldBeforeTheLineEnd) {
  EXPECT_EQ(AfterLine(Bytes("a;b;\r\nc;"), 0), 6U);
  EXPECT_EQ(AfterLine(Bytes("a;b;\r\nc;"), 4), 6U);
  EXPECT_EQ(AfterLine(Bytes("a;b\r\nc;\r\nd;"), 0), 9U);
  EXPECT_EQ(AfterLine(Bytes("a\r\nb;\r\nc;"), 1), 7U);
  EXPECT_EQ(AfterLine(Bytes("a#;\r\nb;\r\nc;"), 0), 9U);
  EXPECT_EQ(AfterLine(Bytes("a;b;"), 0), 4U);
  EXPECT_EQ(AfterLine(Bytes(""), 0), 0U);
}

TEST(FieldReader, GivesTheFieldsOfEachLine) {
  EXPECT_EQ(Lines("a;b;\r\nc;;d;\r\n"), (Expected{u"a|b|", u"c||d|"}));
  EXPECT_EQ(Lines(""), (Expected{u""}));
}

TEST(FieldReader, EndsAtAFieldThatIsNotClosed) {
  EXPECT_EQ(Lines("a;b"), (Expected{u"a|"}));
  EXPECT_EQ(Lines("a;\r\nb;c\r\n"), (Expected{u"a|", u"b|"}));
}

TEST(FieldReader, TakesLineEndsInsideAField) {
  EXPECT_EQ(Lines("a;one\r\ntwo;\r\nb;\r\n"), (Expected{u"a|one\r\ntwo|", u"b|"}));
  EXPECT_EQ(Lines("a;\none;\r\n"), (Expected{u"a|\none|"}));
  EXPECT_EQ(Lines("a;x#;\r\ny;\r\nb;\r\n"), (Expected{u"a|x;\r\ny|", u"b|"}));
}

TEST(FieldReader, SkipsBlankLinesAndComments) {
  EXPECT_EQ(Lines("a;\r\n\r\n\r\nb;\r\n"), (Expected{u"a|", u"b|"}));
  EXPECT_EQ(Lines("a;\r\n// one\r\n\r\n//two;\r\n\r\nb;\r\n"), (Expected{u"a|", u"b|"}));
  EXPECT_EQ(Lines("a;\r\n//one\r\n/two;\r\nb;\r\n"), (Expected{u"a|", u"b|"}));
  EXPECT_EQ(Lines("a;\r\n/one;\r\nb;\r\n"), (Expected{u"a|", u"/one|", u"b|"}));
  EXPECT_EQ(Lines("a;\r\n//to the end"), (Expected{u"a|"}));
}

TEST(FieldReader, EndsAtALineThatBeginsWithAnAt) {
  EXPECT_EQ(Lines("a;\r\n@b;\r\nc;\r\n"), (Expected{u"a|"}));
  EXPECT_EQ(Lines("a;\r\n//c\r\n@b;\r\nc;\r\n"), (Expected{u"a|"}));
  EXPECT_EQ(Lines("a;\r\n @b;\r\n"), (Expected{u"a|", u" @b|"}));
}

TEST(FieldReader, ReadsBackWhatWasWritten) {
  for (const std::u16string text : {u"", u"#", u";", u"# ", u" #", u"#;", u";#", u";;##", u"a\r\nb", u"\n",
                                    u"//", u"@", u"\u010d\u00e9", u";\r\n;\r\n"}) {
    const std::string bytes = Encoded(text) + Encoded(u"next") + "\r\n";
    FieldReader reader(Bytes(bytes));
    EXPECT_EQ(reader.Next(), text);
    EXPECT_EQ(reader.Next(), u"next");
    EXPECT_EQ(reader.Next(), std::nullopt);
    EXPECT_FALSE(reader.NextLine());
  }
}

/// The rule of a field's text, one byte after the other.
std::u16string PlainText(std::string_view field) {
  std::u16string text;
  for (std::size_t i = 0; i < field.size(); ++i) {
    const auto character = [&](std::size_t at) {
      return FromWindows1250(static_cast<std::uint8_t>(field[at]));
    };
    if (field[i] != '#' || i + 1 == field.size()) {
      text += character(i);
    } else {
      ++i;
      text += field[i] == ' ' ? u'#' : character(i);
    }
  }
  return text;
}

TEST(FieldReader, TakesTheTextOfEveryFieldByTheRule) {
  constexpr std::string_view kBytes = "ab #;#\xE8\r10-+";
  std::mt19937 random(29);
  std::u16string text;
  for (int i = 0; i < 2000; ++i) {
    std::string field(random() % 40, ' ');
    for (char& byte : field) byte = kBytes[random() % kBytes.size()];
    const FieldReader reader(Bytes(field));
    reader.Take(Bytes(field), text);
    EXPECT_EQ(text, PlainText(field));
    InlineText<6> inline_text;
    reader.Take(Bytes(field), inline_text);
    EXPECT_EQ(inline_text, text);
    EXPECT_EQ(reader.Number(Bytes(field)), ParseDecimal(text)) << field;
  }
}

TEST(FieldReader, UsesTheRoomOfTheText) {
  std::u16string text(100, u'x');
  const char16_t* const room = text.data();
  const FieldReader reader(Bytes("A# B;;"));
  reader.Take(Bytes("A# B"), text);
  EXPECT_EQ(text, u"A#B");
  reader.Take(Bytes(""), text);
  EXPECT_EQ(text, u"");
  EXPECT_EQ(text.data(), room);
}

TEST(FieldReader, GivesFieldsAsTheyStandInTheFile) {
  constexpr std::string_view kText = "A# B;x;\r\ny;";
  FieldReader reader(Bytes(kText));
  const auto first = reader.NextBytes();
  ASSERT_TRUE(first.has_value());
  EXPECT_EQ(first->size(), 4U);
  EXPECT_EQ(static_cast<const void*>(first->data()), kText.data());
  EXPECT_EQ(reader.Next(), u"x");
  EXPECT_FALSE(reader.NextBytes().has_value());
  EXPECT_TRUE(reader.NextLine());
  EXPECT_EQ(reader.Next(), u"y");
  EXPECT_FALSE(reader.NextBytes().has_value());
}

}  // namespace
}  // namespace celldesk

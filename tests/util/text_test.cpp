#include "util/text.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

TEST(Text, FormatFillsTextsAndNumbersInOrder) {
  EXPECT_EQ(Format(u"AT+CPMS=\"%s\",\"%s\"\r", {u"SM", u"ME"}), u"AT+CPMS=\"SM\",\"ME\"\r");
  EXPECT_EQ(Format(u"%i/%u", {-7, 4'000'000'000U}), u"-7/4000000000");
  EXPECT_EQ(Format(u"%d", {0}), u"0");
}

TEST(Text, FormatPrintsTheLowestNumberWhole) { EXPECT_EQ(Format(u"%i", {-2147483647 - 1}), u"-2147483648"); }

TEST(Text, FormatPrefixesEveryHexadecimalValueZeroIncluded) {
  EXPECT_EQ(Format(u"%#2x", {0x46}), u"0x46");
  EXPECT_EQ(Format(u"%#2x", {0}), u"0x0");
  EXPECT_EQ(Format(u"%#06X", {0xAB}), u"0X00AB");
  EXPECT_EQ(Format(u"%x %X", {0xbeefU, 0xffffffffU}), u"beef FFFFFFFF");
}

TEST(Text, FormatPadsWithBlanksOrZeros) {
  EXPECT_EQ(Format(u"%02i:%02i", {9, 12}), u"09:12");
  EXPECT_EQ(Format(u"[%5i][%-5i]", {42, 42}), u"[   42][42   ]");
  EXPECT_EQ(Format(u"[%-05i]", {42}), u"[42   ]");
  EXPECT_EQ(Format(u"[%05i]", {-42}), u"[-0042]");
  EXPECT_EQ(Format(u"[%5s][%-5s]", {u"ab", u"ab"}), u"[   ab][ab   ]");
}

TEST(Text, FormatTakesPrecisionAsLeastDigitsAndMostCharacters) {
  EXPECT_EQ(Format(u"[%6.3i]", {7}), u"[   007]");
  EXPECT_EQ(Format(u"[%.2s][%4.2s][%.s]", {u"abc", u"abc", u"abc"}), u"[ab][  ab][]");
}

TEST(Text, FormatPrintsCharactersAndPercentSigns) {
  EXPECT_EQ(Format(u"%c%c 100%%", {u'o', u'k'}), u"ok 100%");
  EXPECT_EQ(Format(u"[%3c]", {u'x'}), u"[  x]");
}

TEST(Text, FormatPrintsAnUnknownConversionAsItself) {
  EXPECT_EQ(Format(u"%02i%:%02i", {5, 7}), u"05:07");
  EXPECT_EQ(Format(u"%q%i", {3}), u"q3");
}

TEST(Text, FormatDropsAnUnfinishedConversion) {
  EXPECT_EQ(Format(u"ab%", {1}), u"ab");
  EXPECT_EQ(Format(u"ab%-05.2", {1}), u"ab");
}

TEST(Text, FormatPrintsMissingAndMismatchedArgumentsAsNothingOrZero) {
  EXPECT_EQ(Format(u"[%s][%i][%c][%x]", {}), u"[][0][][0]");
  EXPECT_EQ(Format(u"[%s][%i][%c]", {5, u"five", u"c"}), u"[][0][]");
}

TEST(Text, FormatTakesOwnedAndBorrowedTexts) {
  const std::u16string owned = u"owned";
  EXPECT_EQ(Format(u"%s %s", {owned, std::u16string_view(u"view")}), u"owned view");
}

TEST(Text, FormatCutsAtItsLimit) {
  const std::u16string long_text(2000, u'x');
  EXPECT_EQ(Format(u"%s", {long_text}).size(), kFormatLimit);
  EXPECT_EQ(Format(u"ab%i", {12345}, 4), u"ab12");
  EXPECT_EQ(Format(u"%999999999999999999999s", {u""}, 8), u"        ");
  EXPECT_EQ(Format(u"%.99999i", {1}, 5), u"00000");
  EXPECT_EQ(Format(u"abc", {}, 0), u"");
}

TEST(Text, TrimTakesBlanksTabsAndLineEndsFromBothEnds) {
  EXPECT_EQ(Trim(u" \t\r\na b\n\r\t "), u"a b");
  EXPECT_EQ(Trim(u"ab"), u"ab");
  EXPECT_EQ(Trim(u" \t\r\n"), u"");
  EXPECT_EQ(Trim(u""), u"");
}

TEST(Text, TrimLeavesOtherControlCharacters) { EXPECT_EQ(Trim(u"\v ab\f"), u"\v ab\f"); }

TEST(Text, WidenAsciiReplacesOctetsBeyondSevenBits) {
  EXPECT_EQ(WidenAscii("SME busy"), u"SME busy");
  EXPECT_EQ(WidenAscii("a\x80\xFF"), u"a\uFFFD\uFFFD");
  EXPECT_EQ(WidenAscii(""), u"");
}

struct Utf8Pair {
  std::string narrow;
  std::u16string wide;
};

class Utf8 : public testing::TestWithParam<Utf8Pair> {};

TEST_P(Utf8, ConvertsThereAndBack) {
  EXPECT_EQ(FromUtf8(GetParam().narrow), GetParam().wide);
  EXPECT_EQ(ToUtf8(GetParam().wide), GetParam().narrow);
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, Utf8,
    testing::Values(Utf8Pair{"", u""}, Utf8Pair{std::string("a\0b", 3), std::u16string(u"a\0b", 3)},
                    Utf8Pair{"\x7F\xC2\x80", u"\u007F\u0080"},
                    Utf8Pair{"\xDF\xBF\xE0\xA0\x80", u"\u07FF\u0800"},
                    Utf8Pair{"\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", u"\uD7FF\uE000\uFFFF"},
                    Utf8Pair{"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", u"\U00010000\U0010FFFF"}));

TEST(Text, FromUtf8ReplacesMalformedInput) {
  const std::vector<Utf8Pair> cases = {
      {"\x80", u"\uFFFD"},                                // continuation without a lead
      {"\xC0\xAF", u"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x9F\x80", u"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xF0\x8F\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // overlong
      {"\xED\xA0\x80", u"\uFFFD\uFFFD\uFFFD"},            // surrogate
      {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},  // beyond U+10FFFF
      {"\xF5", u"\uFFFD"},
      {"\xE2\x82", u"\uFFFD"},    // cut
      {"\xE2\x82z", u"\uFFFDz"},  // cut by another character
      {"\xF0\x9F\x98", u"\uFFFD"},
  };
  for (const auto& [narrow, wide] : cases)
    EXPECT_EQ(FromUtf8(narrow), wide) << testing::PrintToString(narrow);
}

TEST(Text, ToUtf8ReplacesLoneSurrogates) {
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D}), "\xEF\xBF\xBD");
  EXPECT_EQ(ToUtf8(std::u16string{0xDE00, u'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, u'a'}),
            "\xEF\xBF\xBD"
            "a");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, 0xE000}), "\xEF\xBF\xBD\xEE\x80\x80");
  EXPECT_EQ(ToUtf8(std::u16string{0xD83D, 0xD83D, 0xDE00}), "\xEF\xBF\xBD\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace celldesk

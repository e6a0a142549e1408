#include "util/number_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace celldesk {
namespace {

TEST(NumberText, SizesShowInByteKiloAndMegabyte) {
  EXPECT_EQ(SizeText(0), u"0 byte");
  EXPECT_EQ(SizeText(1), u"1 byte");
  EXPECT_EQ(SizeText(1023), u"1023 byte");
  EXPECT_EQ(SizeText(1024), u"1,00 kB");
  EXPECT_EQ(SizeText(1536), u"1,50 kB");
  EXPECT_EQ(SizeText(1048575), u"1023,99 kB");
  EXPECT_EQ(SizeText(1048576), u"1,00 MB");
  EXPECT_EQ(SizeText(3'000'000), u"2,86 MB");
}

TEST(NumberText, SizeFractionsWrapInThirtyTwoBits) {
  EXPECT_EQ(SizeText(42'949'672), u"40,95 MB");
  EXPECT_EQ(SizeText(42'949'673), u"40,00 MB");  // 4,294,967,300 wraps to 4
  EXPECT_EQ(SizeText(0xFFFFFFFFU), u"4095,95 MB");
}

TEST(NumberText, WithoutDecimalsTheValueIsTruncated) {
  EXPECT_EQ(NumberText(2.5, 0), u"2");
  EXPECT_EQ(NumberText(-2.9, 0), u"-2");
}

TEST(NumberText, FractionsAreRoundedAndIntegerPartsAreNot) {
  EXPECT_EQ(NumberText(2.375, 2), u"2.38");
  EXPECT_EQ(NumberText(-3.25, 1), u"-3.3");
  EXPECT_EQ(NumberText(1.999, 2), u"1.00");
  EXPECT_EQ(NumberText(2.03125, 3), u"2.031");
}

TEST(NumberText, TheSignBetweenMinusOneAndZeroIsLost) { EXPECT_EQ(NumberText(-0.5, 2), u"0.50"); }

TEST(NumberText, ExtremeValuesAreHeldAtTheLimits) {
  EXPECT_EQ(NumberText(1e20, 0), u"2147483647");
  EXPECT_EQ(NumberText(-1e20, 0), u"-2147483648");
  EXPECT_EQ(NumberText(std::nan(""), 0), u"0");
  EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity(), 2), u"2147483647.00");
  EXPECT_EQ(NumberText(0.5, 30), u"0.500000000");
  EXPECT_EQ(NumberText(7.5, -1), u"7");
}

TEST(NumberText, ParseNumberTurnsCommasOfTheCallersTextIntoPoints) {
  std::u16string text = u"3,14";
  EXPECT_DOUBLE_EQ(ParseNumber(text), 3.14);
  EXPECT_EQ(text, u"3.14");
  text = u"1,5,7";
  EXPECT_DOUBLE_EQ(ParseNumber(text), 1.5);
  EXPECT_EQ(text, u"1.5.7");
}

double Parsed(std::u16string text) { return ParseNumber(text); }

TEST(NumberText, ParseNumberReadsWhatStandsAtTheStart) {
  EXPECT_EQ(Parsed(u" \t\n-2.5e1x"), -25);
  EXPECT_EQ(Parsed(u"+7 8"), 7);
  EXPECT_EQ(Parsed(u".5"), 0.5);
  EXPECT_EQ(Parsed(u"12e"), 12);
}

TEST(NumberText, ParseNumberOfNoNumberIsZero) {
  for (const char16_t* text : {u"", u"   ", u"abc", u"+-3", u"--3", u"-", u"inf", u"\u0663"}) {
    EXPECT_EQ(Parsed(text), 0) << testing::PrintToString(std::u16string(text));
  }
}

TEST(NumberText, ParseNumberBeyondTheRangeIsInfiniteOrZero) {
  EXPECT_EQ(Parsed(u"1e999"), HUGE_VAL);
  EXPECT_EQ(Parsed(u"-1e999"), -HUGE_VAL);
  EXPECT_EQ(Parsed(u"1e-999"), 0);
  EXPECT_EQ(Parsed(u"1E-999"), 0);
}

TEST(NumberText, ParseHexTakesEitherCase) {
  EXPECT_EQ(ParseHex(u"1F"), 31U);
  EXPECT_EQ(ParseHex(u"1f"), 31U);
  EXPECT_EQ(ParseHex(u"abcdef09"), 0xABCDEF09U);
  EXPECT_EQ(ParseHex(u""), 0U);
}

TEST(NumberText, ParseHexKeepsThirtyTwoBitsAndNeverFails) {
  EXPECT_EQ(ParseHex(u"123456789"), 0x23456789U);
  EXPECT_EQ(ParseHex(u"g"), 16U);
  EXPECT_EQ(ParseHex(u" "), 0x20U - 0x57U);
}

TEST(NumberText, HexTextIsLowerCaseWithoutLeadingZeros) {
  EXPECT_EQ(HexText(0), u"0");
  EXPECT_EQ(HexText(0xBEEF), u"beef");
  EXPECT_EQ(HexText(0xFFFFFFFFU), u"ffffffff");
}

TEST(NumberText, ParseDecimalStopsAtTheFirstOtherCharacter) {
  EXPECT_EQ(ParseDecimal(u"42,17"), 42);
  EXPECT_EQ(ParseDecimal(u" \t\v\f\r\n-8"), -8);
  EXPECT_EQ(ParseDecimal(u"+9"), 9);
  EXPECT_EQ(ParseDecimal(u""), 0);
  EXPECT_EQ(ParseDecimal(u"-"), 0);
  EXPECT_EQ(ParseDecimal(u"x1"), 0);
  EXPECT_EQ(ParseDecimal(u"\b1"), 0);
}

TEST(NumberText, ParseDecimalHoldsLargeValuesAtTheLimits) {
  EXPECT_EQ(ParseDecimal(u"2147483647"), 2147483647);
  EXPECT_EQ(ParseDecimal(u"2147483648"), 2147483647);
  EXPECT_EQ(ParseDecimal(u"-2147483648"), -2147483647 - 1);
  EXPECT_EQ(ParseDecimal(u"-99999999999999999999999999"), -2147483647 - 1);
}

TEST(NumberText, ParseDecimalAtAdvancesPastWhatItRead) {
  std::size_t position = 1;
  EXPECT_EQ(ParseDecimalAt(u"x 12.7", position), 12);
  EXPECT_EQ(position, 4U);
}

TEST(NumberText, ParseDecimalAtStaysWithoutDigits) {
  std::size_t position = 1;
  EXPECT_EQ(ParseDecimalAt(u"x  -y", position), 0);
  EXPECT_EQ(position, 1U);
  position = 9;
  EXPECT_EQ(ParseDecimalAt(u"x", position), 0);
  EXPECT_EQ(position, 9U);
}

TEST(NumberText, DecimalTextShowsTheSign) {
  EXPECT_EQ(DecimalText(0), u"0");
  EXPECT_EQ(DecimalText(-120), u"-120");
}

TEST(NumberText, DecimalTextReachesTheLimitsOf32Bits) {
  EXPECT_EQ(DecimalText(std::numeric_limits<std::int32_t>::max()), u"2147483647");
  EXPECT_EQ(DecimalText(std::numeric_limits<std::int32_t>::min()), u"-2147483648");
  EXPECT_EQ(DecimalText(9), u"9");
  EXPECT_EQ(DecimalText(10), u"10");
  EXPECT_EQ(DecimalText(100), u"100");
  EXPECT_EQ(DecimalText(1005), u"1005");
  EXPECT_EQ(DecimalText(-10070), u"-10070");
}

TEST(NumberText, TakeDecimalWritesTheSameIntoATextOfItsOwn) {
  for (const std::int32_t value : {0, 7, -7, 12345678, 123456789, std::numeric_limits<std::int32_t>::min()}) {
    InlineText<6> text = u"former";
    TakeDecimal(value, text);
    EXPECT_EQ(text, DecimalText(value));
  }
}

}  // namespace
}  // namespace celldesk

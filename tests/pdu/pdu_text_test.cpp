#include "pdu/pdu_text.h"

#include <gtest/gtest.h>

#include <array>

namespace celldesk {
namespace {

TEST(PduText, DigitsOfUpperCaseHexadecimalHaveTheirValues) {
  const std::u16string_view digits = u"0123456789ABCDEF";
  for (std::uint8_t value = 0; value < 16; ++value) {
    EXPECT_EQ(HexDigitValue(digits[value]), value);
    EXPECT_EQ(HexDigit(value), digits[value]);
  }
}

TEST(PduText, NulIsZeroAndLowerCaseIsMisread) {
  EXPECT_EQ(HexDigitValue(u'\0'), 0);
  EXPECT_EQ(HexDigitValue(u'a'), 0x2A);
  EXPECT_EQ(HexDigitValue(u' '), 0xF0);
  EXPECT_EQ(ReadOctetAt(u"a1", 0), 0xA1);
  EXPECT_EQ(ReadOctetAt(u"1a", 0), 0x3A);
}

TEST(PduText, CharactersBeyondEightBitsAreMisreadLikeTheOthers) {
  for (const char16_t character : {u'\u00FF', u'\u0100', u'\uFFFF'}) {
    std::array<std::uint8_t, 1> octet{};
    ReadOctets(octet, std::u16string{u'0', character}, 0);
    EXPECT_EQ(octet[0], HexDigitValue(character));
  }
}

TEST(PduText, OctetsAreReadByTheirIndex) {
  EXPECT_EQ(ReadOctetAt(u"12AB0F", 0), 0x12);
  EXPECT_EQ(ReadOctetAt(u"12AB0F", 1), 0xAB);
  EXPECT_EQ(ReadOctetAt(u"12AB0F", 2), 0x0F);
}

TEST(PduText, OctetsBeyondTheEndReadAsZero) {
  EXPECT_EQ(ReadOctetAt(u"12AB", 2), 0);
  EXPECT_EQ(ReadOctetAt(u"12A", 1), 0);
  EXPECT_EQ(ReadOctetAt(u"1", 0), 0);
  EXPECT_EQ(ReadOctetAt(u"", 0), 0);
  EXPECT_EQ(ReadOctetAt(u"12AB", std::size_t{1} << 62), 0);
}

TEST(PduText, ReadingAnOctetAdvances) {
  std::uint8_t octet = 0;
  std::size_t position = 1;
  EXPECT_EQ(ReadOctet(octet, u"12AB", position), S_OK);
  EXPECT_EQ(octet, 0xAB);
  EXPECT_EQ(position, 2U);
}

TEST(PduText, ReadingFailsWhenCharactersLessOctetsAreOneOrLess) {
  for (const std::size_t start : {std::size_t{3}, std::size_t{4}, std::size_t{99}}) {
    std::uint8_t octet = 0x5A;
    std::size_t position = start;
    EXPECT_EQ(ReadOctet(octet, u"12AB", position), E_FAIL);
    EXPECT_EQ(octet, 0x5A);
    EXPECT_EQ(position, start);
  }
  std::uint8_t octet = 0;
  std::size_t position = 0;
  EXPECT_EQ(ReadOctet(octet, u"1", position), E_FAIL);
  EXPECT_EQ(ReadOctet(octet, u"", position), E_FAIL);
}

TEST(PduText, ReadingALittleBeyondTheEndGivesZero) {
  std::uint8_t octet = 0x5A;
  std::size_t position = 2;
  EXPECT_EQ(ReadOctet(octet, u"12AB", position), S_OK);
  EXPECT_EQ(octet, 0);
  EXPECT_EQ(position, 3U);
}

TEST(PduText, OctetsAreWrittenInUpperCase) {
  std::u16string text(6, u'-');
  WriteOctetAt(text, 0xAF, 1);
  EXPECT_EQ(text, u"--AF--");
  std::size_t position = 0;
  WriteOctet(text, 0x05, position);
  EXPECT_EQ(text, u"05AF--");
  EXPECT_EQ(position, 1U);
}

TEST(PduText, WritesBeyondTheEndAreDropped) {
  std::u16string text(3, u'-');
  std::size_t position = 1;
  WriteOctet(text, 0xAF, position);
  WriteOctet(text, 0xAF, position);
  WriteBcdAt(text, 12, 1);
  EXPECT_EQ(text, u"---");
  EXPECT_EQ(position, 3U);
}

TEST(PduText, SemiOctetsHaveTheirUnitsFirst) {
  EXPECT_EQ(ReadBcdAt(u"0021", 1), 12);
  EXPECT_EQ(ReadBcdAt(u"0F", 0), 150);
  EXPECT_EQ(ReadBcdAt(u"21", 1), 0);
  std::u16string text(4, u'-');
  WriteBcdAt(text, 37, 1);
  EXPECT_EQ(text, u"--73");
}

TEST(PduText, EveryPairOfDigitsReadsBack) {
  std::u16string text(2, u'-');
  for (std::uint8_t value = 0; value < 100; ++value) {
    WriteBcdAt(text, value, 0);
    EXPECT_EQ(ReadBcdAt(text, 0), value);
  }
}

TEST(PduText, ALengthThatCannotBeHadIsReported) {
  std::u16string text = u"ab";
  EXPECT_EQ(ResizeText(text, text.max_size() + 1), E_OUTOFMEMORY);
  EXPECT_EQ(text, u"ab");
  EXPECT_EQ(ResizeText(text, 1), S_OK);
  EXPECT_EQ(text, u"a");
}

TEST(PduText, ACopyMayBePartOfTheText) {
  std::u16string text = u"0123456789";
  EXPECT_EQ(AssignText(text, std::u16string_view(text).substr(3, 4)), S_OK);
  EXPECT_EQ(text, u"3456");
}

}  // namespace
}  // namespace celldesk

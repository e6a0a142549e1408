#include "pdu/address.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

struct Address {
  Status status;
  std::u16string number;
  std::uint8_t toa;
  std::size_t position;
};

Address Read(std::u16string_view text, std::size_t position = 0) {
  Address address{S_OK, u"before", 0xEE, position};
  address.status = ReadAddress(address.toa, address.number, text, address.position);
  return address;
}

std::u16string Written(std::u16string_view number, std::uint8_t toa) {
  std::u16string text(40, u'\0');
  std::size_t position = 0;
  WriteAddress(text, number, toa, position);
  EXPECT_EQ(position, AddressOctets(number.size()));
  return text.substr(0, text.find(u'\0'));
}

std::u16string WrittenSmsc(std::u16string_view number, std::uint8_t toa) {
  std::u16string text(20, u'\0');
  std::size_t position = 0;
  WriteSmscAddress(text, number, toa, position);
  return text.substr(0, text.find(u'\0'));
}

Address Made(std::u16string_view input) {
  Address address{S_OK, u"before", 0xEE, 0};
  address.status = MakeAddress(address.number, address.toa, input);
  return address;
}

TEST(Address, OddDigitsAreReadWithoutTheirFiller) {
  const Address address = Read(u"0B912143658709F1");
  EXPECT_EQ(address.status, S_OK);
  EXPECT_EQ(address.number, u"12345678901");
  EXPECT_EQ(address.toa, 0x91);
  EXPECT_EQ(address.position, 8U);
}

TEST(Address, AnAddressInsideAPduIsReadFromItsPosition) {
  const Address address = Read(u"11000C912460102143650000", 2);
  EXPECT_EQ(address.number, u"420601123456");
  EXPECT_EQ(address.position, 10U);
}

TEST(Address, AnEmptyAddressReadsAsEmpty) {
  const Address address = Read(u"00810000");
  EXPECT_EQ(address.status, S_OK);
  EXPECT_EQ(address.number, u"");
  EXPECT_EQ(address.toa, 0x81);
  EXPECT_EQ(address.position, 2U);
}

TEST(Address, CharactersAreCopiedAsTheyStand) { EXPECT_EQ(Read(u"0491B*a#").number, u"*B#a"); }

TEST(Address, CharactersBeyondTheEndReadAsZeroDigits) {
  const Address address = Read(u"049121");
  EXPECT_EQ(address.status, S_OK);
  EXPECT_EQ(address.number, u"1200");
  EXPECT_EQ(Read(u"FF912").number, u"02" + std::u16string(253, u'0'));
}

TEST(Address, AMissingFieldFails) {
  EXPECT_EQ(Read(u"").status, E_FAIL);
  EXPECT_EQ(Read(u"0").status, E_FAIL);
  const Address without_type = Read(u"05");
  EXPECT_EQ(without_type.status, E_FAIL);
  EXPECT_EQ(without_type.number, u"before");
}

TEST(Address, OddDigitsAreWrittenWithFillerZeroAndReadBack) {
  EXPECT_EQ(Written(u"12345", 0x91), u"0591214305");
  const Address address = Read(u"0591214305");
  EXPECT_EQ(address.number, u"12345");
  EXPECT_EQ(address.toa, 0x91);
}

TEST(Address, EvenDigitsAreSwappedInPairs) {
  EXPECT_EQ(Written(u"420601123456", 0x91), u"0C91246010214365");
  EXPECT_EQ(Written(u"", 0x81), u"0081");
}

TEST(Address, EveryLengthReadsBack) {
  std::u16string number;
  for (int length = 0; length <= 30; ++length) {
    const Address address = Read(Written(number, 0x85));
    EXPECT_EQ(address.number, number);
    EXPECT_EQ(address.toa, 0x85);
    number += static_cast<char16_t>(u'0' + length * 7 % 10);
  }
}

TEST(Address, WritingBeyondTheTextIsDropped) {
  std::u16string text(7, u'\0');
  std::size_t position = 0;
  WriteAddress(text, u"123456", 0x91, position);
  EXPECT_EQ(text, u"0691214");
  EXPECT_EQ(position, 5U);
}

TEST(Address, CentreAddressCountsOctetsAndFillsWithF) {
  EXPECT_EQ(WrittenSmsc(u"123456789012", 145), u"0791214365870921");
  EXPECT_EQ(WrittenSmsc(u"1234567890", 145), u"06912143658709");
  EXPECT_EQ(WrittenSmsc(u"123", 145), u"039121F3");
}

TEST(Address, AnEmptyCentreGivesLengthOneAndTheType) { EXPECT_EQ(WrittenSmsc(u"", 0x80), u"0180"); }

TEST(Address, OnlyInternationalNumbersShowAPlus) {
  EXPECT_EQ(AddressForDisplay(u"420601", 0x91), u"+420601");
  EXPECT_EQ(AddressForDisplay(u"420601", 0x10), u"+420601");
  EXPECT_EQ(AddressForDisplay(u"420601", 0x81), u"420601");
  EXPECT_EQ(AddressForDisplay(u"420601", 0xB1), u"420601");
  EXPECT_EQ(AddressForDisplay(u"", 0x91), u"+");
}

TEST(Address, ATypedPlusMakesAnInternationalNumber) {
  const Address address = Made(u" +420601123456 ");
  EXPECT_EQ(address.status, S_OK);
  EXPECT_EQ(address.number, u"420601123456");
  EXPECT_EQ(address.toa, 0x91);
  EXPECT_EQ(Made(u"+").number, u"");
  EXPECT_EQ(Made(u"+").status, S_OK);
}

TEST(Address, ATypedZeroIsKept) {
  const Address address = Made(u"0601123456");
  EXPECT_EQ(address.number, u"0601123456");
  EXPECT_EQ(address.toa, 0x81);
  EXPECT_EQ(Made(u"0").status, S_OK);
}

TEST(Address, OtherNumbersNeedFourCharacters) {
  EXPECT_EQ(Made(u"\t1234\r\n").number, u"1234");
  EXPECT_EQ(Made(u"1234").toa, 0x85);
  for (const char16_t* input : {u"123", u"", u"  12 "}) {
    const Address address = Made(input);
    EXPECT_EQ(address.status, E_FAIL);
    EXPECT_EQ(address.number, u"");
    EXPECT_EQ(address.toa, 0);
  }
}

TEST(Address, OtherControlCharactersAreNotTrimmed) { EXPECT_EQ(Made(u"\v123").number, u"\v123"); }

TEST(Address, AShownNumberMakesTheSameAddressAgain) {
  for (const char16_t* input : {u"+420601123456", u"0601123456", u"90123"}) {
    const Address address = Made(input);
    EXPECT_EQ(AddressForDisplay(address.number, address.toa), input);
  }
}

}  // namespace
}  // namespace celldesk

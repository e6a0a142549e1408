#include "pdu/timestamp.h"

#include <gtest/gtest.h>

#include <string>

namespace celldesk {
namespace {

DateTime Read(std::u16string_view text, std::size_t position = 0) {
  DateTime value;
  const std::size_t start = position;
  EXPECT_EQ(ReadTimestamp(value, text, position), S_OK);
  EXPECT_EQ(position, start + kTimestampOctets);
  return value;
}

std::u16string Written(const CalendarTime& fields) {
  std::u16string text(14, u'\0');
  std::size_t position = 0;
  WriteTimestamp(text, DateTime(fields, false), position);
  EXPECT_EQ(position, kTimestampOctets);
  return text;
}

TEST(Timestamp, DigitsAreSwappedAndTheZoneIsIgnored) {
  const CalendarTime expected{1999, 1, 0, 3, 12, 34, 56, 0};
  EXPECT_EQ(Read(u"99103021436500").fields, expected);
  EXPECT_EQ(Read(u"99103021436580").fields, expected);
  EXPECT_TRUE(Read(u"99103021436500").is_set());
}

TEST(Timestamp, YearsBelow98AreOfThisCentury) {
  EXPECT_EQ(Read(u"89101000000000").fields.year, 1998);
  EXPECT_EQ(Read(u"99101000000000").fields.year, 1999);
  EXPECT_EQ(Read(u"00101000000000").fields.year, 2000);
  EXPECT_EQ(Read(u"79101000000000").fields.year, 2097);
}

TEST(Timestamp, OldFieldsAreCleared) {
  DateTime value({2001, 3, 4, 5, 6, 7, 8, 9}, false);
  std::size_t position = 0;
  ASSERT_EQ(ReadTimestamp(value, u"10303060708000", position), S_OK);
  EXPECT_EQ(value.fields, (CalendarTime{2001, 3, 0, 3, 6, 7, 8, 0}));
}

TEST(Timestamp, ATextThatIsTooShortFailsAndChangesNothing) {
  DateTime value({2001, 3, 4, 5, 6, 7, 8, 9}, false);
  for (const auto& [text, start] :
       {std::pair<std::u16string, std::size_t>{u"", 0}, {u"99103021436", 0}, {u"99103021436500", 3}}) {
    std::size_t position = start;
    EXPECT_EQ(ReadTimestamp(value, text, position), E_FAIL);
    EXPECT_EQ(position, start);
  }
  EXPECT_EQ(value.fields.year, 2001);
  EXPECT_FALSE(value.is_set());
}

TEST(Timestamp, OctetsBeyondTheEndReadAsZero) {
  EXPECT_EQ(Read(u"991030214365").fields, (CalendarTime{1999, 1, 0, 3, 12, 34, 56, 0}));
  EXPECT_EQ(Read(u"99103021436500", 2).fields, (CalendarTime{2003, 12, 0, 34, 56, 0, 0, 0}));
}

TEST(Timestamp, IsWrittenWithZoneZero) {
  EXPECT_EQ(Written({1999, 1, 0, 3, 12, 34, 56, 0}), u"99103021436500");
  EXPECT_EQ(Written({2000, 12, 6, 31, 23, 59, 1, 999}), u"00211332951000");
}

TEST(Timestamp, EveryYearOfTheRangeReadsBack) {
  for (std::uint16_t year = 1998; year <= 2097; ++year) {
    EXPECT_EQ(Read(Written({year, 7, 0, 8, 9, 10, 11, 0})).fields.year, year);
  }
}

TEST(Timestamp, YearsOutOfRangeAreKeptToEightBits) {
  EXPECT_EQ(Written({1967, 9, 0, 26, 0, 0, 0, 0}).substr(0, 2), u"76");
  EXPECT_EQ(Written({2105, 1, 0, 1, 0, 0, 0, 0}).substr(0, 2), u"5A");
}

}  // namespace
}  // namespace celldesk

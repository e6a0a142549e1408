#include "util/calendar_time.h"

#include <gtest/gtest.h>

namespace celldesk {
namespace {

constexpr FileTime kDay = 864'000'000'000;

CalendarTime Date(std::uint16_t year, std::uint16_t month, std::uint16_t day) {
  CalendarTime time;
  time.year = year;
  time.month = month;
  time.day = day;
  return time;
}

TEST(CalendarTime, DiffersInEachField) {
  const CalendarTime time{2026, 11, 6, 21, 14, 30, 5, 120};
  for (auto field :
       {&CalendarTime::year, &CalendarTime::month, &CalendarTime::day_of_week, &CalendarTime::day,
        &CalendarTime::hour, &CalendarTime::minute, &CalendarTime::second, &CalendarTime::milliseconds}) {
    CalendarTime other = time;
    EXPECT_EQ(other, time);
    ++(other.*field);
    EXPECT_NE(other, time);
  }
}

TEST(CalendarTime, TheCountStartsOnMondayTheFirstOfJanuary1601) {
  const auto time = ToCalendarTime(0);
  ASSERT_TRUE(time);
  CalendarTime expected = Date(1601, 1, 1);
  expected.day_of_week = 1;
  EXPECT_EQ(*time, expected);
  EXPECT_EQ(ToFileTime(expected), 0U);
}

TEST(CalendarTime, KnownCountsConvertBothWays) {
  const CalendarTime unix_epoch{1970, 1, 4, 1, 0, 0, 0, 0};
  EXPECT_EQ(ToFileTime(unix_epoch), 116'444'736'000'000'000U);
  EXPECT_EQ(ToCalendarTime(116'444'736'000'000'000U), unix_epoch);
  const CalendarTime leap{2000, 2, 2, 29, 23, 59, 58, 999};
  EXPECT_EQ(ToFileTime(leap), 125'963'423'989'990'000U);
  EXPECT_EQ(ToCalendarTime(125'963'423'989'990'000U), leap);
}

TEST(CalendarTime, ADayHasTheLengthBetweenTwoDaysOfJanuary1998) {
  EXPECT_EQ(*ToFileTime(Date(1998, 1, 2)) - *ToFileTime(Date(1998, 1, 1)), kDay);
}

TEST(CalendarTime, StepsBelowAMillisecondAreDropped) {
  EXPECT_EQ(ToCalendarTime(9'999)->milliseconds, 0);
  EXPECT_EQ(ToCalendarTime(10'000)->milliseconds, 1);
}

TEST(CalendarTime, EveryDayOfFourCenturiesAndMoreFollowsTheOneBefore) {
  CalendarTime expected = Date(1601, 1, 1);
  expected.day_of_week = 1;
  const int month_lengths[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  for (FileTime count = 0; expected.year < 2102; count += kDay) {
    ASSERT_EQ(ToCalendarTime(count), expected);
    ASSERT_EQ(ToFileTime(expected), count);
    const bool leap = expected.year % 4 == 0 && (expected.year % 100 != 0 || expected.year % 400 == 0);
    const int length = month_lengths[expected.month - 1] + (expected.month == 2 && leap ? 1 : 0);
    expected.day_of_week = static_cast<std::uint16_t>((expected.day_of_week + 1) % 7);
    if (++expected.day <= length) continue;
    expected.day = 1;
    if (++expected.month <= 12) continue;
    expected.month = 1;
    ++expected.year;
  }
}

TEST(CalendarTime, TheLastDayIsInTheYear30827) {
  CalendarTime last = Date(30827, 12, 31);
  last.hour = 23;
  last.minute = 59;
  last.second = 59;
  last.milliseconds = 999;
  const auto count = ToFileTime(last);
  ASSERT_TRUE(count);
  EXPECT_EQ(ToCalendarTime(*count)->year, 30827);
  EXPECT_EQ(ToCalendarTime(*count + 10'000), std::nullopt);
  EXPECT_EQ(ToCalendarTime(~FileTime{0}), std::nullopt);
}

TEST(CalendarTime, FieldsOutOfRangeDoNotConvert) {
  const CalendarTime good{2001, 3, 0, 5, 9, 5, 7, 0};
  ASSERT_TRUE(ToFileTime(good));
  const auto refused = [&good](std::uint16_t CalendarTime::*field, std::uint16_t value) {
    CalendarTime bad = good;
    bad.*field = value;
    return !ToFileTime(bad).has_value();
  };
  EXPECT_TRUE(refused(&CalendarTime::year, 1600));
  EXPECT_TRUE(refused(&CalendarTime::year, 30828));
  EXPECT_TRUE(refused(&CalendarTime::month, 0));
  EXPECT_TRUE(refused(&CalendarTime::month, 13));
  EXPECT_TRUE(refused(&CalendarTime::day, 0));
  EXPECT_TRUE(refused(&CalendarTime::day, 32));
  EXPECT_TRUE(refused(&CalendarTime::hour, 24));
  EXPECT_TRUE(refused(&CalendarTime::minute, 60));
  EXPECT_TRUE(refused(&CalendarTime::second, 60));
  EXPECT_TRUE(refused(&CalendarTime::milliseconds, 1000));
}

TEST(CalendarTime, MonthsHaveTheirOwnLengths) {
  EXPECT_TRUE(ToFileTime(Date(2000, 2, 29)));
  EXPECT_TRUE(ToFileTime(Date(2004, 2, 29)));
  EXPECT_FALSE(ToFileTime(Date(1900, 2, 29)));
  EXPECT_FALSE(ToFileTime(Date(2001, 2, 29)));
  EXPECT_TRUE(ToFileTime(Date(2001, 4, 30)));
  const std::uint16_t short_months[] = {4, 6, 9, 11};
  for (const std::uint16_t month : short_months) EXPECT_FALSE(ToFileTime(Date(2001, month, 31)));
}

TEST(CalendarTime, TheDayOfWeekIsNotLookedAt) {
  CalendarTime time = Date(2001, 3, 5);
  const auto count = ToFileTime(time);
  time.day_of_week = 99;
  EXPECT_EQ(ToFileTime(time), count);
}

}  // namespace
}  // namespace celldesk

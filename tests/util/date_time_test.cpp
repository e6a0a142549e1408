#include "util/date_time.h"

#include <gtest/gtest.h>

#include "support/fake_locale.h"

namespace celldesk {
namespace {

/// Formats that are longer than the program takes.
class WordyLocale : public FakeLocale {
 public:
  std::u16string DateText(const CalendarTime&, bool) const override { return std::u16string(100, u'd'); }
  std::u16string TimeText(const CalendarTime&) const override { return std::u16string(100, u't'); }
};

DateTime Moment(DateTimeKind kind) {
  DateTime value({2001, 3, 1, 5, 9, 5, 7, 0}, true);
  value.SetKind(kind);
  return value;
}

DateTime Parsed(DateTimeKind kind, std::u16string_view text) {
  DateTime value;
  value.SetKind(kind);
  const bool complete = value.Parse(text);
  EXPECT_EQ(complete, value.is_set());
  return value;
}

CalendarTime Fields(std::uint16_t year, std::uint16_t month, std::uint16_t day, std::uint16_t hour = 0,
                    std::uint16_t minute = 0, std::uint16_t second = 0) {
  return {year, month, 0, day, hour, minute, second, 0};
}

TEST(DateTime, StartsEmpty) {
  const DateTime value;
  EXPECT_EQ(value.kind(), DateTimeKind::kDate);
  EXPECT_EQ(value.compare_mask(), 0x70U);
  EXPECT_EQ(value.fields, CalendarTime());
  EXPECT_FALSE(value.is_set());
}

TEST(DateTime, FromACountIsSetWhenTheCountConverts) {
  const DateTime value(FileTime{0});
  EXPECT_TRUE(value.is_set());
  EXPECT_EQ(value.fields.year, 1601);
  EXPECT_EQ(value.kind(), DateTimeKind::kDate);
  EXPECT_FALSE(DateTime(~FileTime{0}).is_set());
}

TEST(DateTime, FromRawFieldsTakesTheSetFlag) {
  const CalendarTime fields{2001, 3, 1, 5, 9, 5, 7, 123};
  EXPECT_TRUE(DateTime(fields, true).is_set());
  EXPECT_FALSE(DateTime(fields, false).is_set());
  EXPECT_EQ(DateTime(fields, false).fields, fields);
}

TEST(DateTime, EachKindBringsItsMask) {
  const std::pair<int, unsigned> masks[] = {{16, 0x70}, {17, 0x07}, {18, 0x77}, {19, 0x70},
                                            {32, 0x07}, {33, 0x70}, {34, 0x77}};
  for (const auto& [kind, mask] : masks) {
    DateTime value({}, true);
    value.SetKind(static_cast<DateTimeKind>(kind));
    EXPECT_EQ(static_cast<int>(value.kind()), kind);
    EXPECT_EQ(value.compare_mask(), mask) << kind;
    EXPECT_TRUE(value.is_set());
  }
}

TEST(DateTime, AKindWithoutAMaskLeavesTheMask) {
  DateTime value = Moment(DateTimeKind::kTime);
  value.SetKind(static_cast<DateTimeKind>(25));
  EXPECT_EQ(static_cast<int>(value.kind()), 25);
  EXPECT_EQ(value.compare_mask(), 0x07U);
}

TEST(DateTime, KindsOutOfRangeLeaveTheMaskAndKeepTheLowFifteenBits) {
  const std::pair<unsigned, unsigned> kinds[] = {{0, 0}, {15, 15}, {35, 35}, {0x8010, 16}, {0xFFFF, 0x7FFF}};
  for (const auto& [given, kept] : kinds) {
    DateTime value = Moment(DateTimeKind::kTime);
    value.SetKind(static_cast<DateTimeKind>(given));
    EXPECT_EQ(static_cast<unsigned>(value.kind()), kept);
    EXPECT_EQ(value.compare_mask(), 0x07U) << given;
    EXPECT_TRUE(value.is_set());
  }
}

TEST(DateTime, SetNowTakesTheUsersClockOrUtc) {
  const CalendarTime local{2001, 3, 1, 5, 10, 5, 7, 250};
  const CalendarTime utc{2001, 3, 1, 5, 9, 5, 7, 250};
  FakeLocale locale;
  locale.set_now(local);
  locale.set_utc_now(utc);
  DateTime value;
  value.SetNow(locale, true);
  EXPECT_TRUE(value.is_set());
  EXPECT_EQ(value.fields, local);
  value.SetNow(locale, false);
  EXPECT_EQ(value.fields, utc);
}

TEST(DateTime, CountsConvertBothWays) {
  const DateTime value = Moment(DateTimeKind::kDateAndTime);
  DateTime back;
  EXPECT_TRUE(back.FromFileTime(value.ToFileTime()));
  EXPECT_EQ(back.fields, value.fields);
}

TEST(DateTime, AnUnsetOrImpossibleValueCountsZero) {
  DateTime value = Moment(DateTimeKind::kDate);
  value.MarkSet(false);
  EXPECT_EQ(value.ToFileTime(), 0U);
  value.MarkSet(true);
  value.fields.month = 13;
  EXPECT_EQ(value.ToFileTime(), 0U);
}

TEST(DateTime, AFailedConversionClearsTheSetFlag) {
  DateTime value = Moment(DateTimeKind::kDate);
  EXPECT_FALSE(value.FromFileTime(~FileTime{0}));
  EXPECT_FALSE(value.is_set());
}

TEST(DateTime, AddDaysCrossesMonthsAndLeapDays) {
  DateTime value(Fields(2000, 3, 1), false);
  EXPECT_TRUE(value.AddDays(-1));
  EXPECT_EQ(value.fields.day, 29);
  EXPECT_EQ(value.fields.month, 2);
  EXPECT_EQ(value.fields.day_of_week, 2);
  EXPECT_FALSE(value.is_set());
  EXPECT_TRUE(value.AddDays(366));
  EXPECT_EQ(value.Format(), u"1.3.2001");
}

TEST(DateTime, AddDaysBeyondTheCalendarChangesNothing) {
  DateTime first(Fields(1601, 1, 1), true);
  EXPECT_TRUE(first.AddDays(-1));
  EXPECT_TRUE(first.AddDays(-2'000'000'000));
  EXPECT_EQ(first.fields, Fields(1601, 1, 1));
  DateTime last(Fields(30827, 12, 31), true);
  EXPECT_TRUE(last.AddDays(1));
  EXPECT_TRUE(last.AddDays(2'000'000'000));
  EXPECT_EQ(last.fields, Fields(30827, 12, 31));
  DateTime impossible(Fields(2001, 2, 30), true);
  EXPECT_TRUE(impossible.AddDays(1));
  EXPECT_EQ(impossible.fields, Fields(2001, 2, 30));
}

TEST(DateTime, CompareOfDatesIgnoresTheHour) {
  DateTime left(Fields(2001, 3, 5, 9), true);
  const DateTime right(Fields(2001, 3, 5, 17), true);
  EXPECT_EQ(left.Compare(right), 0);
  left.SetKind(DateTimeKind::kDateAndTime);
  EXPECT_EQ(left.Compare(right), -8);
}

TEST(DateTime, CompareGivesTheFirstDifferingField) {
  DateTime left(Fields(2001, 3, 5, 9, 5, 7), true);
  left.SetKind(DateTimeKind::kDateAndTime);
  EXPECT_EQ(left.Compare(DateTime(Fields(1999, 12, 31, 23, 59, 59), true)), 2);
  EXPECT_EQ(left.Compare(DateTime(Fields(2001, 4, 1), true)), -1);
  EXPECT_EQ(left.Compare(DateTime(Fields(2001, 3, 1, 23), true)), 4);
  EXPECT_EQ(left.Compare(DateTime(Fields(2001, 3, 5, 9, 6), true)), -1);
  EXPECT_EQ(left.Compare(DateTime(Fields(2001, 3, 5, 9, 5, 1), true)), 6);
}

TEST(DateTime, CompareNeverLooksAtDayOfWeekAndMilliseconds) {
  DateTime left({2001, 3, 1, 5, 9, 5, 7, 1}, true);
  left.SetKind(DateTimeKind::kDateAndTime);
  EXPECT_EQ(left.Compare(DateTime({2001, 3, 6, 5, 9, 5, 7, 999}, true)), 0);
}

TEST(DateTime, CompareOfTimesIgnoresTheDate) {
  EXPECT_EQ(Moment(DateTimeKind::kTime).Compare(DateTime(Fields(1967, 9, 26, 9, 5, 7), true)), 0);
}

TEST(DateTime, FormatFollowsTheKind) {
  EXPECT_EQ(Moment(DateTimeKind::kDate).Format(), u"5.3.2001");
  EXPECT_EQ(Moment(DateTimeKind::kTime).Format(), u"09:05:07");
  EXPECT_EQ(Moment(DateTimeKind::kDateAndTime).Format(), u"5.3.2001 09:05:07");
  EXPECT_EQ(Moment(DateTimeKind::kCompactDate).Format(), u"20010305");
  EXPECT_EQ(Moment(DateTimeKind::kLocaleDate).Format(), u"");
}

TEST(DateTime, FormatIgnoresTheSetFlag) {
  DateTime value = Moment(DateTimeKind::kDate);
  value.MarkSet(false);
  EXPECT_EQ(value.Format(), u"5.3.2001");
}

TEST(DateTime, FormatLocaleShowsTheUsersDateAndTime) {
  const FakeLocale locale;
  const DateTime value = Moment(DateTimeKind::kDate);
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleTime, true), u"09:05:07");
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleDate, true), u"5.3.2001");
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleDate, false), u"5 March 2001");
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleDateAndTime, true), u"5.3.2001 09:05:07");
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kDate, true), u"");
}

TEST(DateTime, FormatLocaleHoldsItsLimits) {
  const WordyLocale locale;
  const DateTime value = Moment(DateTimeKind::kDate);
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleDate, true).size(), 64U);
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleTime, true).size(), 64U);
  EXPECT_EQ(value.FormatLocale(locale, DateTimeKind::kLocaleDateAndTime, true).size(), 128U);
}

TEST(DateTime, ParseOfADateTakesAnySeparator) {
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1.2.2000").fields, Fields(2000, 2, 1));
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1-2-99").fields, Fields(1999, 2, 1));
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1/2/66").fields, Fields(2066, 2, 1));
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1.2.1000").fields, Fields(2900, 2, 1));
}

TEST(DateTime, ParseCompletesShortYears) {
  const std::pair<const char16_t*, int> years[] = {
      {u"1.1.67", 1967}, {u"1.1.0", 2000}, {u"1.1.90", 1990}, {u"1.1.1990", 3890}, {u"1.1.1991", 1991}};
  for (const auto& [text, year] : years) EXPECT_EQ(Parsed(DateTimeKind::kDate, text).fields.year, year);
}

TEST(DateTime, ParseSkipsOneSeparatorOnly) {
  // The second point stands where the month should begin, so the month is 0 and the year 2.
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1..2").fields, Fields(2002, 0, 1));
}

TEST(DateTime, ParseReadsAFieldThatEndsWithTheText) {
  EXPECT_EQ(Parsed(DateTimeKind::kDate, u"1.2.").fields, Fields(2000, 2, 1));
  EXPECT_FALSE(Parsed(DateTimeKind::kDate, u"1.2").is_set());
  EXPECT_FALSE(Parsed(DateTimeKind::kDate, u"1").is_set());
  EXPECT_FALSE(Parsed(DateTimeKind::kDate, u"").is_set());
}

TEST(DateTime, ParseOfATimeCarriesThePlaceholderDate) {
  EXPECT_EQ(Parsed(DateTimeKind::kTime, u"12:30:15").fields, Fields(1967, 9, 26, 12, 30, 15));
  EXPECT_FALSE(Parsed(DateTimeKind::kTime, u"12:30").is_set());
  EXPECT_FALSE(Parsed(DateTimeKind::kTime, u"12").is_set());
}

TEST(DateTime, ParseOfDateAndTimeNeedsAllSixFields) {
  EXPECT_EQ(Parsed(DateTimeKind::kDateAndTime, u"5.3.2001 09:05:07").fields, Fields(2001, 3, 5, 9, 5, 7));
  for (const char16_t* text : {u"5.3.2001 09:05", u"5.3.2001 09", u"5.3.2001", u"5.3"}) {
    EXPECT_FALSE(Parsed(DateTimeKind::kDateAndTime, text).is_set());
  }
}

TEST(DateTime, ParseOfACompactDateTakesEightCharacters) {
  EXPECT_EQ(Parsed(DateTimeKind::kCompactDate, u"20001231").fields, Fields(2000, 12, 31));
  EXPECT_FALSE(Parsed(DateTimeKind::kCompactDate, u" 2001231").is_set());
  EXPECT_FALSE(Parsed(DateTimeKind::kCompactDate, u"2000123").is_set());
  EXPECT_FALSE(Parsed(DateTimeKind::kCompactDate, u"200012310").is_set());
}

TEST(DateTime, ParseOfAnyHigherKindReadsNothing) {
  const DateTime value = Parsed(DateTimeKind::kLocaleDate, u"1.2.2000");
  EXPECT_TRUE(value.is_set());
  EXPECT_EQ(value.fields, CalendarTime());
}

TEST(DateTime, ParseOfAKindBelowTheDateFails) {
  for (const unsigned kind : {0U, 1U, 15U}) {
    EXPECT_FALSE(Parsed(static_cast<DateTimeKind>(kind), u"1.2.2000").is_set()) << kind;
  }
}

TEST(DateTime, AFailedParseClearsWhatWasThere) {
  DateTime value = Moment(DateTimeKind::kCompactDate);
  EXPECT_FALSE(value.Parse(u"x"));
  EXPECT_FALSE(value.is_set());
  EXPECT_EQ(value.fields, CalendarTime());
}

TEST(DateTime, FormatOfAParsedTextIsTheText) {
  for (const char16_t* text : {u"5.3.2001 09:05:07", u"31.12.1999 23:59:59"}) {
    EXPECT_EQ(Parsed(DateTimeKind::kDateAndTime, text).Format(), text);
  }
}

}  // namespace
}  // namespace celldesk

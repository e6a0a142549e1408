#include "util/calendar_time.h"

namespace celldesk {
namespace {

constexpr FileTime kStepsPerMillisecond = 10'000;
constexpr FileTime kMillisecondsPerDay = 86'400'000;
constexpr FileTime kStepsPerDay = kStepsPerMillisecond * kMillisecondsPerDay;
constexpr int kFirstYear = 1601;
constexpr int kLastYear = 30827;
constexpr std::uint32_t kDaysPer400Years = 146'097;

constexpr bool IsLeapYear(int year) { return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0); }

constexpr int DaysInMonth(int year, int month) {
  if (month == 2) return IsLeapYear(year) ? 29 : 28;
  return month == 4 || month == 6 || month == 9 || month == 11 ? 30 : 31;
}

/// Days from 1 March 1600; years are counted from March, so that a leap day is the last of its year.
constexpr std::uint32_t DaysSinceMarch1600(int year, int month, int day) {
  const auto years = static_cast<std::uint32_t>(year - 1600 - (month <= 2 ? 1 : 0));
  const auto months = static_cast<std::uint32_t>((month + 9) % 12);
  return years * 365 + years / 4 - years / 100 + years / 400 + (153 * months + 2) / 5 +
         static_cast<std::uint32_t>(day) - 1;
}

constexpr std::uint32_t kEpoch = DaysSinceMarch1600(kFirstYear, 1, 1);
constexpr std::uint32_t kDayCount = DaysSinceMarch1600(kLastYear, 12, 31) - kEpoch + 1;

bool InRange(const CalendarTime& time) {
  return time.year >= kFirstYear && time.year <= kLastYear && time.month >= 1 && time.month <= 12 &&
         time.day >= 1 && time.day <= DaysInMonth(time.year, time.month) && time.hour < 24 &&
         time.minute < 60 && time.second < 60 && time.milliseconds < 1000;
}

constexpr std::uint16_t Field(std::uint32_t value) { return static_cast<std::uint16_t>(value); }

void SetDate(CalendarTime& time, std::uint32_t days) {
  const std::uint32_t since_march = days + kEpoch;
  const std::uint32_t era = since_march / kDaysPer400Years;
  const std::uint32_t day_of_era = since_march % kDaysPer400Years;
  const std::uint32_t year_of_era =
      (day_of_era - day_of_era / 1460 + day_of_era / 36524 - day_of_era / 146096) / 365;
  const std::uint32_t day_of_year = day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
  const std::uint32_t months = (5 * day_of_year + 2) / 153;
  time.day = Field(day_of_year - (153 * months + 2) / 5 + 1);
  time.month = Field(months < 10 ? months + 3 : months - 9);
  time.year = Field(1600 + era * 400 + year_of_era + (time.month <= 2 ? 1 : 0));
  time.day_of_week = Field((days + 1) % 7);  // 1 January 1601 was a Monday
}

void SetTimeOfDay(CalendarTime& time, std::uint32_t milliseconds) {
  time.milliseconds = Field(milliseconds % 1000);
  time.second = Field(milliseconds / 1000 % 60);
  time.minute = Field(milliseconds / 60'000 % 60);
  time.hour = Field(milliseconds / 3'600'000);
}

}  // namespace

std::optional<FileTime> ToFileTime(const CalendarTime& time) {
  if (!InRange(time)) return std::nullopt;
  const FileTime days = DaysSinceMarch1600(time.year, time.month, time.day) - kEpoch;
  const FileTime seconds = (time.hour * 60U + time.minute) * 60U + time.second;
  return days * kStepsPerDay + (seconds * 1000 + time.milliseconds) * kStepsPerMillisecond;
}

std::optional<CalendarTime> ToCalendarTime(FileTime count) {
  const FileTime days = count / kStepsPerDay;
  if (days >= kDayCount) return std::nullopt;
  CalendarTime time;
  SetDate(time, static_cast<std::uint32_t>(days));
  SetTimeOfDay(time, static_cast<std::uint32_t>(count % kStepsPerDay / kStepsPerMillisecond));
  return time;
}

}  // namespace celldesk

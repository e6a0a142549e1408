#pragma once

#include <cstdint>
#include <optional>

namespace celldesk {

/// Calendar fields, laid out and meant as the window manager's SYSTEMTIME: year 1601 on, month 1-12,
/// day of week 0 (Sunday) to 6, no zone.
struct CalendarTime {
  std::uint16_t year = 0;
  std::uint16_t month = 0;
  std::uint16_t day_of_week = 0;
  std::uint16_t day = 0;
  std::uint16_t hour = 0;
  std::uint16_t minute = 0;
  std::uint16_t second = 0;
  std::uint16_t milliseconds = 0;

  friend bool operator==(const CalendarTime&, const CalendarTime&) = default;
};

/// 100-nanosecond steps since 1 January 1601.
using FileTime = std::uint64_t;

/// The count for `time`, or none when a field is out of range (day_of_week is not looked at). Years
/// 1601-30827.
std::optional<FileTime> ToFileTime(const CalendarTime& time);

/// The fields for `count` (day of week included), or none when the count is beyond year 30827.
std::optional<CalendarTime> ToCalendarTime(FileTime count);

}  // namespace celldesk

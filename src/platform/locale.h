#pragma once

#include <string>
#include <string_view>

#include "util/calendar_time.h"

namespace celldesk {

/// The user's formats, collation and clock. Used on the interface thread.
class Locale {
 public:
  virtual ~Locale() = default;

  /// The date in the user's short or long format.
  virtual std::u16string DateText(const CalendarTime& time, bool short_format) const = 0;
  /// The time in the user's format (with seconds).
  virtual std::u16string TimeText(const CalendarTime& time) const = 0;
  /// The time separator, at most 7 characters; empty when it cannot be had.
  virtual std::u16string TimeSeparator() const = 0;
  /// Negative, zero or positive as `left` sorts before, with or after `right` for the user.
  virtual int Compare(std::u16string_view left, std::u16string_view right) const = 0;
  /// The present time, by the user's clock or UTC, with day of week and milliseconds.
  virtual CalendarTime Now(bool local) const = 0;
};

}  // namespace celldesk

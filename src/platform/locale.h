#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "util/calendar_time.h"

namespace celldesk {

/// Text number `index` of a sequence; `buffer` may hold it.
using TextAt = std::function<std::u16string_view(std::size_t index, std::u16string& buffer)>;

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
  /// The place of each of `count` texts in the order of Compare, from 0; texts that Compare finds equal share
  /// one. Each text is asked for once.
  virtual std::vector<std::uint32_t> Ranks(std::size_t count, const TextAt& text_at) const;
  /// The present time, by the user's clock or UTC, with day of week and milliseconds.
  virtual CalendarTime Now(bool local) const = 0;
};

}  // namespace celldesk

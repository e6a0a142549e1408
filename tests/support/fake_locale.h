#pragma once

#include "platform/locale.h"

namespace celldesk {

/// Fixed formats, whatever the machine: date "5.3.2001" short and "5 March 2001" long, time "09:05:07",
/// separator ":", comparison by code units. The clock stands until a test moves it.
class FakeLocale : public Locale {
 public:
  /// Local time; UTC is what set_utc_now gave, else the same. Starts at Wednesday 5 March 2003 09:05:07.
  void set_now(const CalendarTime& now) { local_now_ = utc_now_ = now; }
  void set_utc_now(const CalendarTime& now) { utc_now_ = now; }
  void set_time_separator(std::u16string_view separator) { separator_ = separator; }

  std::u16string DateText(const CalendarTime& time, bool short_format) const override;
  std::u16string TimeText(const CalendarTime& time) const override;
  std::u16string TimeSeparator() const override { return separator_; }
  int Compare(std::u16string_view left, std::u16string_view right) const override;
  CalendarTime Now(bool local) const override { return local ? local_now_ : utc_now_; }

 private:
  std::u16string separator_ = u":";
  CalendarTime local_now_{2003, 3, 3, 5, 9, 5, 7, 0};
  CalendarTime utc_now_ = local_now_;
};

}  // namespace celldesk

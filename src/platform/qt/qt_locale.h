#pragma once

#include <memory>
#include <string_view>

#include "platform/locale.h"

namespace celldesk {

/// The user's formats, collation and clock as the toolkit knows them.
class QtLocale : public Locale {
 public:
  /// The user's own.
  QtLocale();
  /// Those of a language and country ("cs_CZ").
  explicit QtLocale(std::u16string_view name);
  ~QtLocale() override;

  /// Empty when `time` holds no date.
  std::u16string DateText(const CalendarTime& time, bool short_format) const override;
  /// The locale's short format with seconds in it. Empty when `time` holds no time of day.
  std::u16string TimeText(const CalendarTime& time) const override;
  /// What stands between hours and minutes.
  std::u16string TimeSeparator() const override;
  int Compare(std::u16string_view left, std::u16string_view right) const override;
  /// By one collation key a text, where the collation has keys.
  std::vector<std::uint32_t> Ranks(std::size_t count, const TextAt& text_at) const override;
  CalendarTime Now(bool local) const override;

 private:
  struct Formats;
  std::unique_ptr<Formats> formats_;
};

}  // namespace celldesk

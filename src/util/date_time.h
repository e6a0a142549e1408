#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "util/calendar_time.h"

namespace celldesk {

class Locale;

/// How a DateTime is shown, parsed and compared.
enum class DateTimeKind : std::uint32_t {
  kDate = 16,
  kTime = 17,
  kDateAndTime = 18,
  kCompactDate = 19,
  kLocaleTime = 32,
  kLocaleDate = 33,
  kLocaleDateAndTime = 34,
};

/// The program's date and time: calendar fields, a "set" flag, a kind and a comparison mask.
class DateTime {
 public:
  static constexpr std::uint32_t kSetFlag = 0x8000;
  static constexpr std::uint32_t kYear = 0x40, kMonth = 0x20, kDay = 0x10, kHour = 0x04, kMinute = 0x02,
                                 kSecond = 0x01;

  /// Empty: kind 16, mask 0x70, all fields 0, not set.
  DateTime() = default;
  /// From a count; set exactly when the count converts. Kind 16.
  explicit DateTime(FileTime count);
  /// From raw calendar fields and a set flag. Kind 16.
  DateTime(const CalendarTime& fields, bool set);

  /// Takes the low 15 bits of `kind`, and the mask that goes with it; a kind without a mask of its own leaves
  /// the mask.
  void SetKind(DateTimeKind kind);
  DateTimeKind kind() const { return static_cast<DateTimeKind>(flags_ & 0x7FFF); }
  std::uint32_t compare_mask() const { return compare_mask_; }

  bool is_set() const { return (flags_ & kSetFlag) != 0; }
  void MarkSet(bool set);
  /// All calendar fields 0; the flags stay.
  void ClearFields() { fields = CalendarTime{}; }

  /// The current time by the user's clock (`local`) or UTC; marks the value set.
  void SetNow(const Locale& locale, bool local);

  /// 0 when not set or not convertible.
  FileTime ToFileTime() const;
  /// False, and not set, when the count does not convert.
  bool FromFileTime(FileTime count);
  /// Adds `days` through the 64-bit count, whether set or not; always true.
  bool AddDays(int days);

  /// This value's first differing field minus the other's, over the fields of this value's mask; else 0.
  int Compare(const DateTime& other) const;

  /// Text by kind 16 to 19, ignoring the set flag; empty for any other kind.
  std::u16string Format() const;
  /// Text in the user's format: kind 32 the time, 33 the date (short when `short_date`, else long), 34 the
  /// date, a blank and the time; empty for any other kind.
  std::u16string FormatLocale(const Locale& locale, DateTimeKind kind, bool short_date) const;

  /// Fills the value from `text` by its kind; false, and not set, when a field is missing or the kind is
  /// below
  /// 16. A kind above 19 is set without reading.
  bool Parse(std::u16string_view text);

  CalendarTime fields;

 private:
  bool ParseDate(std::u16string_view text, std::size_t& position);
  bool ParseTime(std::u16string_view text, std::size_t& position);
  bool ParseCompactDate(std::u16string_view text);

  std::uint32_t flags_ = 16;
  std::uint32_t compare_mask_ = 0x70;
};

}  // namespace celldesk

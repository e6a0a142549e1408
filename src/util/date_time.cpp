#include "util/date_time.h"

#include <algorithm>
#include <array>

#include "platform/locale.h"
#include "util/number_text.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::uint32_t kKindMask = 0x7FFF;
constexpr std::size_t kLocaleTextLimit = 64;
constexpr std::size_t kLocaleTextsLimit = 128;
// The length of a day in 100-nanosecond steps: 2 January 1998 less 1 January 1998.
constexpr std::int64_t kDayLength = 864'000'000'000;
// More days than the calendar has; as many still fit a 64-bit count.
constexpr int kCalendarDays = 10'675'000;

struct ComparedField {
  std::uint32_t bit;
  std::uint16_t CalendarTime::*field;
};

constexpr std::array<ComparedField, 6> kComparedFields = {{{DateTime::kYear, &CalendarTime::year},
                                                           {DateTime::kMonth, &CalendarTime::month},
                                                           {DateTime::kDay, &CalendarTime::day},
                                                           {DateTime::kHour, &CalendarTime::hour},
                                                           {DateTime::kMinute, &CalendarTime::minute},
                                                           {DateTime::kSecond, &CalendarTime::second}}};

/// A number and the one separator after it, whatever that is; false when the number would end beyond the
/// text.
bool ReadField(std::u16string_view text, std::size_t& position, std::int32_t& value) {
  if (position > text.size()) return false;
  value = ParseDecimalAt(text, position);
  ++position;
  return true;
}

bool ReadField(std::u16string_view text, std::size_t& position, std::uint16_t& field) {
  std::int32_t value = 0;
  if (!ReadField(text, position, value)) return false;
  field = static_cast<std::uint16_t>(value);
  return true;
}

std::uint16_t FullYear(std::int32_t year) {
  if (year < 67) return static_cast<std::uint16_t>(year + 2000);
  return static_cast<std::uint16_t>(year < 1991 ? year + 1900 : year);
}

std::uint16_t CompactField(std::u16string_view digits) {
  return static_cast<std::uint16_t>(ParseDecimal(digits));
}

}  // namespace

DateTime::DateTime(FileTime count) { FromFileTime(count); }

DateTime::DateTime(const CalendarTime& calendar, bool set) : fields(calendar) { MarkSet(set); }

void DateTime::SetKind(DateTimeKind kind) {
  flags_ = (flags_ & ~kKindMask) | (static_cast<std::uint32_t>(kind) & kKindMask);
  switch (kind) {
    case DateTimeKind::kDate:
    case DateTimeKind::kCompactDate:
    case DateTimeKind::kLocaleDate:
      compare_mask_ = 0x70;
      break;
    case DateTimeKind::kTime:
    case DateTimeKind::kLocaleTime:
      compare_mask_ = 0x07;
      break;
    case DateTimeKind::kDateAndTime:
    case DateTimeKind::kLocaleDateAndTime:
      compare_mask_ = 0x77;
      break;
  }
}

void DateTime::MarkSet(bool set) { flags_ = set ? flags_ | kSetFlag : flags_ & ~kSetFlag; }

void DateTime::SetNow(const Locale& locale, bool local) {
  fields = locale.Now(local);
  MarkSet(true);
}

FileTime DateTime::ToFileTime() const { return is_set() ? celldesk::ToFileTime(fields).value_or(0) : 0; }

bool DateTime::FromFileTime(FileTime count) {
  const auto converted = ToCalendarTime(count);
  if (converted) fields = *converted;
  MarkSet(converted.has_value());
  return converted.has_value();
}

bool DateTime::AddDays(int days) {
  const auto start = celldesk::ToFileTime(fields);
  if (!start) return true;
  const std::int64_t distance = std::clamp(days, -kCalendarDays, kCalendarDays) * kDayLength;
  const auto moved = ToCalendarTime(*start + static_cast<FileTime>(distance));
  if (moved) fields = *moved;
  return true;
}

int DateTime::Compare(const DateTime& other) const {
  for (const auto& [bit, field] : kComparedFields) {
    if ((compare_mask_ & bit) == 0) continue;
    const int difference = fields.*field - other.fields.*field;
    if (difference != 0) return difference;
  }
  return 0;
}

std::u16string DateTime::Format() const {
  const CalendarTime& f = fields;
  switch (kind()) {
    case DateTimeKind::kDate:
      return celldesk::Format(u"%i.%i.%i", {f.day, f.month, f.year});
    case DateTimeKind::kTime:
      return celldesk::Format(u"%02i:%02i%:%02i", {f.hour, f.minute, f.second});
    case DateTimeKind::kDateAndTime:
      return celldesk::Format(u"%i.%i.%i %02i:%02i%:%02i",
                              {f.day, f.month, f.year, f.hour, f.minute, f.second});
    case DateTimeKind::kCompactDate:
      return celldesk::Format(u"%04i%02i%02i", {f.year, f.month, f.day});
    default:
      return {};
  }
}

std::u16string DateTime::FormatLocale(const Locale& locale, DateTimeKind kind, bool short_date) const {
  std::u16string text;
  if (kind == DateTimeKind::kLocaleDate || kind == DateTimeKind::kLocaleDateAndTime) {
    text = locale.DateText(fields, short_date).substr(0, kLocaleTextLimit);
  }
  if (kind == DateTimeKind::kLocaleDateAndTime) text += u' ';
  if (kind == DateTimeKind::kLocaleTime || kind == DateTimeKind::kLocaleDateAndTime) {
    text += locale.TimeText(fields).substr(0, kLocaleTextLimit);
  }
  return text.substr(0, kLocaleTextsLimit);
}

bool DateTime::Parse(std::u16string_view text) {
  ClearFields();
  std::size_t position = 0;
  bool complete = true;
  switch (kind()) {
    case DateTimeKind::kDate:
      complete = ParseDate(text, position);
      break;
    case DateTimeKind::kTime:
      // The placeholder date that time-only values carry.
      fields.year = 1967;
      fields.month = 9;
      fields.day = 26;
      complete = ParseTime(text, position);
      break;
    case DateTimeKind::kDateAndTime:
      complete = ParseDate(text, position) && ParseTime(text, position);
      break;
    case DateTimeKind::kCompactDate:
      complete = ParseCompactDate(text);
      break;
    default:
      complete = kind() > DateTimeKind::kCompactDate;
      break;
  }
  MarkSet(complete);
  return complete;
}

bool DateTime::ParseDate(std::u16string_view text, std::size_t& position) {
  std::int32_t year = 0;
  if (!ReadField(text, position, fields.day) || !ReadField(text, position, fields.month) ||
      !ReadField(text, position, year)) {
    return false;
  }
  fields.year = FullYear(year);
  return true;
}

bool DateTime::ParseTime(std::u16string_view text, std::size_t& position) {
  return ReadField(text, position, fields.hour) && ReadField(text, position, fields.minute) &&
         ReadField(text, position, fields.second);
}

bool DateTime::ParseCompactDate(std::u16string_view text) {
  if (text.size() != 8 || text.front() == u' ') return false;
  fields.year = CompactField(text.substr(0, 4));
  fields.month = CompactField(text.substr(4, 2));
  fields.day = CompactField(text.substr(6, 2));
  return true;
}

}  // namespace celldesk

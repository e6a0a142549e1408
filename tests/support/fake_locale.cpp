#include "support/fake_locale.h"

namespace celldesk {
namespace {

std::u16string Digits(unsigned value, std::size_t width) {
  std::u16string text;
  for (; value != 0 || text.size() < width; value /= 10)
    text.insert(text.begin(), static_cast<char16_t>(u'0' + value % 10));
  return text;
}

constexpr std::u16string_view kMonths[] = {u"January",   u"February", u"March",    u"April",
                                           u"May",       u"June",     u"July",     u"August",
                                           u"September", u"October",  u"November", u"December"};

std::u16string_view MonthName(unsigned month) {
  return month >= 1 && month <= 12 ? kMonths[month - 1] : std::u16string_view();
}

}  // namespace

std::u16string FakeLocale::DateText(const CalendarTime& time, bool short_format) const {
  const std::u16string day = Digits(time.day, 1), year = Digits(time.year, 1);
  if (short_format) return day + u"." + Digits(time.month, 1) + u"." + year;
  return day + u" " + std::u16string(MonthName(time.month)) + u" " + year;
}

std::u16string FakeLocale::TimeText(const CalendarTime& time) const {
  return Digits(time.hour, 2) + separator_ + Digits(time.minute, 2) + separator_ + Digits(time.second, 2);
}

int FakeLocale::Compare(std::u16string_view left, std::u16string_view right) const {
  const int order = left.compare(right);
  return (order > 0) - (order < 0);
}

}  // namespace celldesk

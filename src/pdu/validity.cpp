#include "pdu/validity.h"

#include "pdu/sms_message.h"
#include "platform/locale.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr int kHoursText = 157;
constexpr int kDaysText = 158;
constexpr int kWeeksText = 159;
constexpr int kTillText = 160;

std::u16string HoursText(int minutes, std::u16string_view separator, TextSource texts) {
  return Format(texts(kHoursText), {Format(u"%i%s%i", {minutes / 60, separator, minutes % 60})});
}

}  // namespace

std::uint8_t SnapValidity(std::uint8_t value) {
  std::size_t upper = 1;
  while (value > kValidityPresets[upper].value) ++upper;
  const int low = kValidityPresets[upper - 1].value;
  const int high = kValidityPresets[upper].value;
  return static_cast<std::uint8_t>(value >= (low + high) / 2 ? high : low);
}

std::u16string RelativeValidityText(std::uint8_t value, const Locale& locale, TextSource texts) {
  const std::u16string separator = locale.TimeSeparator();
  if (separator.empty()) return {};
  if (value < 144) return HoursText((value + 1) * 5, separator, texts);
  if (value < 168) return HoursText((value - 119) * 30, separator, texts);
  if (value <= 196) return Format(texts(kDaysText), {value - 166});
  return Format(texts(kWeeksText), {value - 192});
}

std::u16string ValidityText(const SmsMessage& message, const Locale& locale, TextSource texts) {
  switch (ValidityFormatOf(message.first_octet)) {
    case ValidityFormat::kRelative:
      return RelativeValidityText(message.submit.relative_validity, locale, texts);
    case ValidityFormat::kAbsolute:
      return Format(texts(kTillText), {message.submit.absolute_validity.FormatLocale(
                                          locale, DateTimeKind::kLocaleDateAndTime, true)});
    default:
      return {};
  }
}

}  // namespace celldesk

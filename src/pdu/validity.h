#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "pdu/text_source.h"
#include "util/date_time.h"

namespace celldesk {

class Locale;
class SmsMessage;

/// Validity-period format of an SMS-SUBMIT: bits 4-3 of its first octet (GSM 03.40 9.2.3.3).
enum class ValidityFormat : std::uint8_t { kNone = 0, kEnhanced = 1, kRelative = 2, kAbsolute = 3 };

/// The format in a first octet.
constexpr ValidityFormat ValidityFormatOf(std::uint32_t first_octet) {
  return static_cast<ValidityFormat>((first_octet >> 3) & 3);
}

/// A relative validity period that the user may choose, and the number of its text.
struct ValidityPreset {
  int text;
  std::uint8_t value;
};

/// The choices in the order they are offered: 1 hour, 12 hours, 1 day, 1 week, maximum.
inline constexpr std::array<ValidityPreset, 5> kValidityPresets = {
    {{152, 11}, {153, 143}, {154, 167}, {155, 173}, {156, 255}}};

/// The preset value nearest to a relative validity period; a tie goes up, values below the first preset give
/// it.
std::uint8_t SnapValidity(std::uint8_t value);

/// A relative validity period (GSM 03.40 9.2.3.12.1) as the user reads it, by texts 157 to 159 ("%s hours",
/// "%i days", "%i weeks"). Empty, whatever the period, when the time separator cannot be had.
std::u16string RelativeValidityText(std::uint8_t value, const Locale& locale, TextSource texts);

/// The validity period of a message to be sent: relative as above, absolute by text 160 ("till %s") with the
/// user's short date and time, otherwise empty.
std::u16string ValidityText(const SmsMessage& message, const Locale& locale, TextSource texts);

}  // namespace celldesk

// Input: octets 0-4 the bits of the first octet, reference, TOA, relative validity and the number's length
// (low 5 bits); then the number's digits and, for each octet left, a character of the text by its GSM code.
// Property: a text of up to 160 characters of the GSM alphabet always encodes, decode of encode is the
// identity, and the PDU is whole octets of upper-case hexadecimal: as many as the fields take, but for a last
// octet that only the highest bits of the last character reach into and that would be 0 (an ending "@", for
// one).

#include <algorithm>
#include <cstdint>

#include "fuzz/property.h"
#include "pdu/gsm_alphabet.h"
#include "pdu/sms_message.h"
#include "pdu/validity.h"

namespace {

using namespace celldesk;

constexpr std::size_t kHead = 5;
constexpr std::uint32_t kSettableBits = 0xB8;

SmsMessage Composed(const std::uint8_t* data, std::size_t size) {
  SmsMessage message;
  message.storage_status = kStoredUnsent;
  message.first_octet = 0x01U | (data[0] & kSettableBits);
  message.submit.reference = data[1];
  message.submit.toa = data[2];
  message.submit.relative_validity = data[3];
  message.submit.absolute_validity = DateTime({2001, 3, 0, 5, 9, 5, 7, 0}, true);
  const std::size_t digits = std::min<std::size_t>(data[4] & 0x1F, size - kHead);
  for (std::size_t i = kHead; i < kHead + digits; ++i) {
    message.submit.number += static_cast<char16_t>(u'0' + data[i] % 10);
  }
  for (std::size_t i = kHead + digits; i < size; ++i) message.text += GsmToWide(data[i] & 0x7F);
  return message;
}

std::size_t ValidityOctets(const SmsMessage& message) {
  const ValidityFormat format = ValidityFormatOf(message.first_octet);
  if (format == ValidityFormat::kRelative) return 1;
  return format == ValidityFormat::kAbsolute ? 7 : 0;
}

/// Octets of the septets that are written.
std::size_t TextOctets(const std::u16string& text) {
  if (text.empty()) return 0;
  const std::size_t begin = 7 * (text.size() - 1);
  const unsigned bits_in_first = 8 - begin % 8;
  const bool reaches_on = bits_in_first < 7 && WideToGsm(text.back()) >> bits_in_first != 0;
  return begin / 8 + (reaches_on ? 2 : 1);
}

std::size_t WantedOctets(const SmsMessage& message) {
  constexpr std::size_t kSingleOctets = 7;  // first, reference, number's length, TOA, PID, DCS, text's length
  return kSingleOctets + (message.submit.number.size() + 1) / 2 + ValidityOctets(message) +
         TextOctets(message.text);
}

void CheckSame(const SmsMessage& left, const SmsMessage& right) {
  HOLDS(left.first_octet == right.first_octet);
  HOLDS(left.submit.reference == right.submit.reference);
  HOLDS(left.submit.toa == right.submit.toa);
  HOLDS(left.submit.number == right.submit.number);
  HOLDS(left.text == right.text);
  switch (ValidityFormatOf(left.first_octet)) {
    case ValidityFormat::kRelative:
      HOLDS(left.submit.relative_validity == right.submit.relative_validity);
      break;
    case ValidityFormat::kAbsolute:
      HOLDS(left.submit.absolute_validity.fields == right.submit.absolute_validity.fields);
      break;
    default:
      break;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < kHead) return 0;
  SmsMessage message = Composed(data, size);
  const Status status = message.Encode();
  if (Failed(status)) {
    HOLDS(message.text.size() > 160);
    HOLDS(message.pdu_text.empty());
    return 0;
  }
  HOLDS(message.pdu_text.size() == 2 * WantedOctets(message));
  HOLDS(message.pdu_text.find_first_not_of(u"0123456789ABCDEF") == std::u16string::npos);
  if (message.text.size() > 255) return 0;  // the length octet has wrapped
  SmsMessage back;
  back.storage_status = kStoredUnsent;
  back.pdu_text = message.pdu_text;
  back.tpdu_length = static_cast<std::int16_t>(message.pdu_text.size() / 2);
  HOLDS(back.Decode() == S_OK);
  CheckSame(message, back);
  return 0;
}

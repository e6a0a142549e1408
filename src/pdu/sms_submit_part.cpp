#include "pdu/sms_submit_part.h"

#include <array>
#include <span>

#include "pdu/address.h"
#include "pdu/gsm_alphabet.h"
#include "pdu/pdu_text.h"
#include "pdu/septets.h"
#include "pdu/timestamp.h"
#include "pdu/validity.h"

namespace celldesk {
namespace {

constexpr std::size_t kBufferOctets = 256;

constexpr std::size_t ValidityOctets(ValidityFormat format) {
  if (format == ValidityFormat::kRelative) return 1;
  return format == ValidityFormat::kAbsolute ? kTimestampOctets : 0;
}

void WriteValidity(std::span<char16_t> pdu, ValidityFormat format, const SmsSubmit& submit,
                   std::size_t& position) {
  if (format == ValidityFormat::kRelative) WriteOctet(pdu, submit.relative_validity, position);
  if (format == ValidityFormat::kAbsolute) WriteTimestamp(pdu, submit.absolute_validity, position);
}

/// The length octet wraps above 255 characters; the septets follow whole. At most 8/7 septets for each octet
/// of the buffer come here.
void WriteUserData(std::span<char16_t> pdu, std::u16string_view text, std::size_t position) {
  std::array<std::uint8_t, kBufferOctets * 8 / 7> septets;
  WideToGsmBytes(septets.data(), text.data(), text.size());
  WriteOctet(pdu, static_cast<std::uint8_t>(text.size()), position);
  PackSeptets(pdu, std::span(septets).first(text.size()), position);
}

}  // namespace

Status SmsSubmitPart::DecodeSubmit() {
  std::size_t position = 0;
  Status status = ReadFirstOctet(position, SmsType::kSubmit);
  if (!Failed(status)) status = ReadOctet(submit.reference, pdu_text, position);
  if (!Failed(status)) status = ReadAddress(submit.toa, submit.number, pdu_text, position);
  if (!Failed(status)) status = ReadOctet(pid, pdu_text, position);
  if (!Failed(status)) status = ReadOctet(dcs, pdu_text, position);
  if (!Failed(status)) status = ReadValidity(position);
  if (!Failed(status)) status = ReadUserData(position);
  return status;
}

Status SmsSubmitPart::ReadValidity(std::size_t& position) {
  switch (ValidityFormatOf(first_octet)) {
    case ValidityFormat::kRelative:
      return ReadOctet(submit.relative_validity, pdu_text, position);
    case ValidityFormat::kAbsolute:
      return ReadTimestamp(submit.absolute_validity, pdu_text, position);
    default:
      return S_OK;
  }
}

std::size_t SmsSubmitPart::EncodedOctets() const {
  constexpr std::size_t kSingleOctets = 5;  // first octet, reference, PID, DCS, user-data length
  return kSingleOctets + AddressOctets(submit.number.size()) + ValidityOctets(ValidityFormatOf(first_octet)) +
         OctetsOfSeptets(text.size());
}

Status SmsSubmitPart::EncodeSubmit() {
  if (EncodedOctets() > kBufferOctets) return E_FAIL;
  // A last octet without bits is never written: the text then ends before it.
  std::array<char16_t, 2 * kBufferOctets> pdu{};
  std::size_t position = 0;
  WriteOctet(pdu, static_cast<std::uint8_t>(first_octet), position);
  WriteOctet(pdu, submit.reference, position);
  WriteAddress(pdu, submit.number, submit.toa, position);
  WriteOctet(pdu, pid, position);
  WriteOctet(pdu, dcs, position);
  WriteValidity(pdu, ValidityFormatOf(first_octet), submit, position);
  WriteUserData(pdu, text, position);
  std::u16string_view encoded(pdu.data(), 2 * EncodedOctets());
  while (encoded.ends_with(u'\0')) encoded.remove_suffix(1);
  return AssignText(pdu_text, encoded);
}

void SmsSubmitPart::ClearSubmit() {
  submit.reference = 0;
  submit.toa = 0;
  submit.number.clear();
  submit.absolute_validity.MarkSet(false);
  submit.relative_validity = 0;
}

}  // namespace celldesk

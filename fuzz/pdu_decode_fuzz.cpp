// Input: octet 0 the storage status (low 2 bits), octets 1-2 the TPDU length (low first), then the PDU text,
// one character for each octet. Property: whatever the text, decoding stays inside it, answers a known
// status, keeps the text it was given, and gives the same message each time; a decoded SMS-SUBMIT encodes to
// a text that decodes to the same fields.

#include <cstdint>

#include "fuzz/property.h"
#include "pdu/sms_message.h"
#include "pdu/validity.h"

namespace {

using namespace celldesk;

bool IsKnown(Status status) { return status == S_OK || status == E_FAIL || status == E_NOTIMPL; }

void CheckFields(const SmsMessage& message) {
  HOLDS(message.first_octet <= 0xFF);
  HOLDS(message.text.size() <= 255);
  HOLDS(message.submit.number.size() <= 255);
  HOLDS(message.deliver.number.size() <= 255);
  HOLDS(message.report.number.size() <= 255);
  HOLDS(message.report.status <= 0xFF);
  HOLDS(!message.StatusText().empty() && !message.SeverityText().empty());
  HOLDS(message.Timestamp() == nullptr || message.is_received());
}

void CheckSame(const SmsMessage& left, const SmsMessage& right) {
  HOLDS(left.first_octet == right.first_octet);
  HOLDS(left.text == right.text);
  HOLDS(left.submit.number == right.submit.number && left.submit.toa == right.submit.toa);
  HOLDS(left.submit.reference == right.submit.reference);
  HOLDS(left.submit.relative_validity == right.submit.relative_validity);
  HOLDS(left.deliver.number == right.deliver.number && left.deliver.toa == right.deliver.toa);
  HOLDS(left.deliver.timestamp.fields == right.deliver.timestamp.fields);
  HOLDS(left.report.number == right.report.number && left.report.status == right.report.status);
}

bool IsPlainNumber(const std::u16string& number) {
  return number.find_first_not_of(u"0123456789ABCDEF") == std::u16string::npos;
}

/// Only numbers of hexadecimal digits are written as they were read, and an absolute validity only when its
/// digits were decimal; both are the caller's to see to.
void CheckRoundTrip(SmsMessage message) {
  const bool absolute = ValidityFormatOf(message.first_octet) == ValidityFormat::kAbsolute;
  if (message.type() != SmsType::kSubmit || absolute || !IsPlainNumber(message.submit.number)) return;
  const Status status = message.Encode();
  if (Failed(status)) return;
  SmsMessage back;
  back.storage_status = kStoredUnsent;
  back.pdu_text = message.pdu_text;
  back.tpdu_length = static_cast<std::int16_t>(message.pdu_text.size() / 2);
  HOLDS(back.Decode() == S_OK);
  CheckSame(message, back);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 3) return 0;
  SmsMessage message;
  message.storage_status = data[0] & 3;
  message.tpdu_length = static_cast<std::int16_t>(data[1] | (data[2] << 8));
  message.pdu_text.assign(data + 3, data + size);
  const std::u16string given = message.pdu_text;
  const Status status = message.Decode();
  HOLDS(IsKnown(status));
  HOLDS(message.pdu_text == given);
  CheckFields(message);
  SmsMessage again;
  again.storage_status = message.storage_status;
  again.tpdu_length = message.tpdu_length;
  again.pdu_text = given;
  HOLDS(again.Decode() == status);
  CheckSame(message, again);
  if (!Failed(status) && !message.is_received()) CheckRoundTrip(message);
  return 0;
}

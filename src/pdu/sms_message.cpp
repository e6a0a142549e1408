#include "pdu/sms_message.h"

#include "pdu/delivery_status.h"
#include "util/text.h"

namespace celldesk {

SmsMessage::SmsMessage(const SmsMessage& other) : SmsMessage() { *this = other; }

SmsMessage& SmsMessage::operator=(const SmsMessage& other) {
  SmsPdu::operator=(other);
  flags = other.flags;
  memory = other.memory;
  memory_index = other.memory_index;
  storage_status = other.storage_status;
  if (is_received()) {
    if (type() == SmsType::kDeliver) deliver = other.deliver;
    if (type() == SmsType::kStatusReport) report = other.report;
  } else if (type() == SmsType::kSubmit) {
    submit = other.submit;
  }
  return *this;
}

void SmsMessage::Clear() {
  flags = 0;
  memory = -1;
  memory_index = 0;
  storage_status = 0;
  ClearPdu();
  ClearSubmit();
  ClearDeliver();
  ClearStatusReport();
}

Status SmsMessage::Decode() {
  std::size_t position = 0;
  if (const Status status = ReadFirstOctet(position); Failed(status)) return status;
  switch (type()) {
    case SmsType::kDeliver:
      return is_received() ? DecodeDeliver() : DecodeStoredDeliver();
    case SmsType::kSubmit:
      return is_received() ? DecodeReceivedSubmit() : DecodeSubmit();
    case SmsType::kStatusReport:
      return is_received() ? DecodeStatusReport() : DecodeStoredStatusReport();
    default:
      return E_FAIL;
  }
}

Status SmsMessage::Encode() {
  switch (type()) {
    case SmsType::kDeliver:
      return EncodeStoredDeliver();
    case SmsType::kSubmit:
      return EncodeSubmit();
    case SmsType::kStatusReport:
      return EncodeStoredStatusReport();
    default:
      return S_OK;
  }
}

const DateTime* SmsMessage::Timestamp() const {
  if (!is_received()) return nullptr;
  if (type() == SmsType::kDeliver) return &deliver.timestamp;
  return type() == SmsType::kStatusReport ? &report.timestamp : nullptr;
}

std::uint8_t SmsMessage::Reference() const {
  if (is_received()) return type() == SmsType::kStatusReport ? report.reference : 0;
  return type() == SmsType::kSubmit ? submit.reference : 0;
}

std::u16string SmsMessage::StatusText() const { return WidenAscii(DeliveryStatusText(report.status)); }

std::u16string SmsMessage::SeverityText() const { return WidenAscii(DeliverySeverityText(report.status)); }

std::u16string SmsMessage::DeliveryReportText(TextSource texts) const {
  const std::u16string sentence = texts(DeliverySentence(report.status));
  return Format(sentence, {report.status, StatusText(), SeverityText()});
}

}  // namespace celldesk

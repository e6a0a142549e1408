#include "pdu/sms_status_report_part.h"

#include "pdu/address.h"
#include "pdu/pdu_text.h"
#include "pdu/timestamp.h"

namespace celldesk {

Status SmsStatusReportPart::DecodeStatusReport() {
  std::size_t position = 0;
  Status status = ReadFirstOctet(position, SmsType::kStatusReport);
  if (!Failed(status)) status = ReadOctet(report.reference, pdu_text, position);
  if (!Failed(status)) status = ReadAddress(report.toa, report.number, pdu_text, position);
  if (!Failed(status)) status = ReadTimestamp(report.timestamp, pdu_text, position);
  if (!Failed(status)) status = ReadTimestamp(report.discharge, pdu_text, position);
  std::uint8_t octet = 0;
  if (!Failed(status)) status = ReadOctet(octet, pdu_text, position);
  if (!Failed(status)) report.status = octet;
  return status;
}

void SmsStatusReportPart::ClearStatusReport() {
  report.reference = 0;
  report.toa = 0;
  report.number.clear();
  report.timestamp.MarkSet(false);
  report.discharge.MarkSet(false);
  report.status = 0;
}

}  // namespace celldesk

#include "pdu/sms_deliver_part.h"

#include "pdu/address.h"
#include "pdu/pdu_text.h"
#include "pdu/timestamp.h"

namespace celldesk {

Status SmsDeliverPart::DecodeDeliver() {
  std::size_t position = 0;
  Status status = ReadFirstOctet(position, SmsType::kDeliver);
  if (!Failed(status)) status = ReadAddress(deliver.toa, deliver.number, pdu_text, position);
  if (!Failed(status)) status = ReadOctet(pid, pdu_text, position);
  if (!Failed(status)) status = ReadOctet(dcs, pdu_text, position);
  if (!Failed(status)) status = ReadTimestamp(deliver.timestamp, pdu_text, position);
  if (!Failed(status)) status = ReadUserData(position);
  return status;
}

void SmsDeliverPart::ClearDeliver() {
  deliver.toa = 0;
  deliver.number.clear();
  deliver.timestamp.MarkSet(false);
}

}  // namespace celldesk

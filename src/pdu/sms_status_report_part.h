#pragma once

#include "pdu/sms_pdu.h"
#include "util/date_time.h"

namespace celldesk {

/// The fields of a received status report (SMS-STATUS-REPORT, GSM 03.40 9.2.2.3).
struct SmsStatusReport {
  std::uint8_t reference = 0;  ///< of the message reported on
  std::uint8_t toa = 0;        ///< type of the recipient's address
  std::u16string number;       ///< the recipient
  DateTime timestamp;          ///< when the centre received the message
  DateTime discharge;          ///< when the message was delivered or given up
  std::uint32_t status = 0;    ///< TP-Status, 8 bits (GSM 03.40 9.2.3.15)
};

class SmsStatusReportPart : public virtual SmsPdu {
 public:
  ~SmsStatusReportPart() override = default;

  SmsStatusReport report;

 protected:
  /// Decodes `pdu_text`; `text` stays, fields read before a failure keep their new values.
  Status DecodeStatusReport();
  void ClearStatusReport();
};

}  // namespace celldesk

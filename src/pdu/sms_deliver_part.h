#pragma once

#include "pdu/sms_pdu.h"
#include "util/date_time.h"

namespace celldesk {

/// The fields of a received message (SMS-DELIVER, GSM 03.40 9.2.2.1).
struct SmsDeliver {
  std::uint8_t toa = 0;   ///< type of the originator's address
  std::u16string number;  ///< the originator
  DateTime timestamp;     ///< when the centre received the message, its local time
};

class SmsDeliverPart : public virtual SmsPdu {
 public:
  ~SmsDeliverPart() override = default;

  SmsDeliver deliver;

 protected:
  /// Decodes `pdu_text`; fields read before a failure keep their new values.
  Status DecodeDeliver();
  void ClearDeliver();
};

}  // namespace celldesk

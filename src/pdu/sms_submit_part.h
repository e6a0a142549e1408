#pragma once

#include "pdu/sms_pdu.h"
#include "util/date_time.h"

namespace celldesk {

/// The fields of a message to send (SMS-SUBMIT, GSM 03.40 9.2.2.2).
struct SmsSubmit {
  std::uint8_t reference = 0;          ///< message reference
  std::uint8_t toa = 0;                ///< type of the destination's address
  std::u16string number;               ///< the destination
  DateTime absolute_validity;          ///< with the absolute validity-period format
  std::uint8_t relative_validity = 0;  ///< with the relative format
};

class SmsSubmitPart : public virtual SmsPdu {
 public:
  ~SmsSubmitPart() override = default;

  SmsSubmit submit;

 protected:
  /// Decodes `pdu_text`; fields read before a failure keep their new values.
  Status DecodeSubmit();
  /// Encodes into `pdu_text`, the TPDU alone. E_FAIL, nothing changed, for more than fits 256 octets.
  Status EncodeSubmit();
  void ClearSubmit();

 private:
  Status ReadValidity(std::size_t& position);
  std::size_t EncodedOctets() const;
};

}  // namespace celldesk

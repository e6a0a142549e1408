#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "util/object.h"
#include "util/status.h"

namespace celldesk {

/// Message type indicator: bits 1-0 of a TPDU's first octet (GSM 03.40 9.2.3.1).
enum class SmsType : std::uint8_t { kDeliver = 0, kSubmit = 1, kStatusReport = 2, kReserved = 3 };

/// Bits of a first octet that the program sets.
inline constexpr std::uint32_t kStatusReportRequest = 0x20;
inline constexpr std::uint32_t kReplyPath = 0x80;

/// What all message types share. Each type part derives from it virtually, so that a message holds it once.
class SmsPdu : public Object {
 public:
  /// Octets of the TPDU without the service-centre part, as the phone reported; 0 when unknown.
  std::int16_t tpdu_length = 0;
  /// The message in hexadecimal, as read from the phone or as encoded.
  std::u16string pdu_text;
  /// The phonebook name that the phone listed with the message; empty when none.
  std::u16string phone_alpha;
  /// The TPDU's first octet in the low 8 bits.
  std::uint32_t first_octet = 0;
  /// Protocol identifier and data coding scheme; user data is septets whatever the latter says.
  std::uint8_t pid = 0;
  std::uint8_t dcs = 0;
  /// The decoded user data, or the text to send.
  std::u16string text;

  SmsType type() const { return static_cast<SmsType>(first_octet & 3); }

 protected:
  /// Sets `position` to the octet after the first octet and stores that. The service-centre part is skipped
  /// by its length, which is what `pdu_text` has more than `tpdu_length` octets. E_FAIL for a text that is
  /// too short.
  Status ReadFirstOctet(std::size_t& position);
  /// As ReadFirstOctet, and E_FAIL for another type than `expected`.
  Status ReadFirstOctet(std::size_t& position, SmsType expected);
  /// Reads length and septets at `position` into `text`; septets missing at the end give "@".
  Status ReadUserData(std::size_t position);
  void ClearPdu();
};

}  // namespace celldesk

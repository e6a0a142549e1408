#pragma once

#include <cstdint>
#include <string>

#include "pdu/sms_deliver_part.h"
#include "pdu/sms_other_parts.h"
#include "pdu/sms_status_report_part.h"
#include "pdu/sms_submit_part.h"
#include "pdu/text_source.h"

namespace celldesk {

/// Where a message stands in a phone's memory, the <stat> of GSM 07.05 in PDU mode.
inline constexpr std::int32_t kReceivedUnread = 0;
inline constexpr std::int32_t kReceivedRead = 1;
inline constexpr std::int32_t kStoredUnsent = 2;
inline constexpr std::int32_t kStoredSent = 3;

/// Bits of a message's flag word.
inline constexpr std::uint32_t kMessageInUse = 1;
inline constexpr std::uint32_t kMessageChanged = 2;
inline constexpr std::uint32_t kMessageToDelete = 4;
inline constexpr std::uint32_t kMessageToSend = 8;
inline constexpr std::uint32_t kMessageNew = 16;
inline constexpr std::uint32_t kMessageNotOpened = 32;
inline constexpr std::uint32_t kMessageToStore = 128;

/// One short message: its PDU, the decoded fields of the type it has, and where the phone keeps it. A new one
/// is cleared. Used by one thread at a time.
class SmsMessage : public SmsSubmitPart,
                   public SmsReceivedSubmitPart,
                   public SmsDeliverPart,
                   public SmsStoredDeliverPart,
                   public SmsStatusReportPart,
                   public SmsStoredStatusReportPart {
 public:
  SmsMessage() noexcept {}  // NOLINT(modernize-use-equals-default): nothing is zeroed beforehand
  SmsMessage(const SmsMessage& other);
  /// Copies the storage facts, the flags and the PDU; of the type parts only the one that the source's
  /// direction and type select, the others keep their values.
  SmsMessage& operator=(const SmsMessage& other);
  ~SmsMessage() override = default;

  /// Back to a new message, but that date and time values are only marked as not set.
  void Clear();

  /// Fills the type part selected by storage status and type from `pdu_text`, using `tpdu_length`. E_FAIL for
  /// a reserved type or a missing field, E_NOTIMPL for a combination that is not handled, E_OUTOFMEMORY.
  /// Fields decoded before a failure keep their new values.
  Status Decode();

  /// Produces `pdu_text` (the TPDU alone, without service centre) of an SMS-SUBMIT; the storage status is not
  /// looked at. E_NOTIMPL for deliver and status report; S_OK, nothing changed, for the reserved type;
  /// E_FAIL, nothing changed, for a text that does not fit 256 octets.
  Status Encode();

  /// Storage status 0 or 1; any other is a stored message.
  bool is_received() const { return storage_status == kReceivedUnread || storage_status == kReceivedRead; }

  /// The centre's time stamp of a received message or status report (lives in this message); none for others.
  const DateTime* Timestamp() const;
  /// The message reference of a received status report or a stored SMS-SUBMIT; 0 for others.
  std::uint8_t Reference() const;

  /// What the report's status says ("SME busy"; "<Reserved>" for an unknown one).
  std::u16string StatusText() const;
  /// How final the status is, by its class; "<Unknown>" for classes 0x80 and above.
  std::u16string SeverityText() const;
  /// The sentence about the report's status, by texts 124, 178, 179 and 348 of `texts`.
  std::u16string DeliveryReportText(TextSource texts) const;

  std::uint32_t flags = 0;
  std::int16_t memory = -1;        ///< index into "SM", "ME", "MT", "BM", "TA", "SR"; -1 in no phone memory
  std::uint16_t memory_index = 0;  ///< the index within that memory
  std::int32_t storage_status = 0;
};

}  // namespace celldesk

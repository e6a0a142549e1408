#include "services/sms_listing.h"

#include "services/reply_field.h"
#include "util/number_text.h"
#include "util/text.h"

namespace celldesk {
namespace {

std::uint32_t FlagsFor(const SmsMessage& message) {
  if (message.storage_status == kReceivedUnread) return kMessageInUse | kMessageNotOpened;
  const bool known = message.storage_status > kReceivedUnread && message.storage_status <= kStoredSent;
  return known ? kMessageInUse : message.flags;
}

/// Whether a line can be a PDU whose TPDU has this many octets.
bool CanBePdu(std::u16string_view line, int tpdu_length) {
  return line.size() % 2 == 0 && static_cast<int>(line.size() / 2) >= tpdu_length &&
         line.find_first_not_of(u"0123456789ABCDEFabcdef") == std::u16string_view::npos;
}

}  // namespace

void SmsListing::TakeLine(ResponseLine& line) {
  if (StartsWith(line, u"+CMGL:")) {
    OpenRecord(line);
  } else if (open_ != kNone && !line.text().empty()) {
    // Where a read ends between the two carriage returns of a doubled line end, an empty line comes first.
    TakePdu(line.text());
  }
}

void SmsListing::OpenRecord(const ResponseLine& line) {
  if (open_ != kNone) all_pdus_came_ = false;
  open_ = store_.Append();
  SmsMessage& message = store_.At(open_);
  message.memory = static_cast<std::int16_t>(memory_);
  message.memory_index = static_cast<std::uint16_t>(ParseDecimal(ReplyField(line, 0)));
  message.storage_status = static_cast<std::int16_t>(ParseDecimal(ReplyField(line, 1)));
  const std::u16string_view length = ReplyField(line, 3);
  const bool has_alpha = !length.empty();
  if (has_alpha) message.phone_alpha = ReplyField(line, 2);
  message.tpdu_length = static_cast<std::int16_t>(ParseDecimal(has_alpha ? length : ReplyField(line, 2)));
}

void SmsListing::TakePdu(std::u16string_view pdu) {
  SmsMessage& message = store_.At(open_);
  if (!CanBePdu(Trim(pdu), message.tpdu_length)) all_pdus_came_ = false;
  message.pdu_text = pdu;
  message.flags = FlagsFor(message);
  // A message that does not decode stays, with what could be read of it.
  static_cast<void>(message.Decode());
  if (observer_ != nullptr) {
    observer_->RowRead(open_);
    observer_->Repaint();
  }
  open_ = kNone;
}

}  // namespace celldesk

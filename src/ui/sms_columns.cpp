#include "ui/sms_columns.h"

#include "data/message_memory.h"
#include "pdu/address.h"
#include "pdu/validity.h"
#include "platform/locale.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kTimeHeader = 1;

// Times are compared in steps of 2^20 file time units, about a tenth of a second.
constexpr int kTimeShift = 20;

template <typename Value>
int Order(Value left, Value right) {
  return (left > right) - (left < right);
}

bool IsReport(const SmsMessage& message) { return message.type() == SmsType::kStatusReport; }

}  // namespace

bool BelongsTo(SmsFolder folder, const SmsMessage& message) {
  if ((message.flags & kMessageInUse) == 0) return false;
  if (folder == SmsFolder::kInbox) return message.is_received();
  return message.storage_status == kStoredUnsent || message.storage_status == kStoredSent;
}

std::u16string NumberFor(SmsFolder folder, const SmsMessage& message) {
  if (folder == SmsFolder::kOutbox) return AddressForDisplay(message.submit.number, message.submit.toa);
  if (IsReport(message)) return AddressForDisplay(message.report.number, message.report.toa);
  if (message.type() != SmsType::kDeliver) return {};
  return AddressForDisplay(message.deliver.number, message.deliver.toa);
}

FontRole FontFor(const SmsMessage& message) {
  const auto has = [&message](std::uint32_t flag) { return (message.flags & flag) != 0; };
  if (has(kMessageToDelete)) return FontRole::kStruckOut;
  if (has(kMessageToSend) && has(kMessageToStore)) return FontRole::kBoldItalic;
  if (has(kMessageToSend)) return FontRole::kItalic;
  return has(kMessageToStore) || has(kMessageNotOpened) ? FontRole::kBold : FontRole::kNormal;
}

std::u16string_view SmsColumns::Text(const SmsMessage& message, int column, bool names,
                                     std::u16string& buffer) const {
  const bool inbox = folder_ == SmsFolder::kInbox;
  switch (column) {
    case kMemory:
      if (!IsMessageMemory(message.memory)) return {};
      return kMessageMemories[static_cast<std::size_t>(message.memory)];
    case kNumber:
      return buffer = Number(message, names);
    case kDate:
      return buffer = inbox ? Date(message) : ValidityText(message, locale_, LoadString);
    case kBody:
      if (!inbox || message.type() == SmsType::kDeliver) return message.text;
      return buffer = IsReport(message) ? message.DeliveryReportText(LoadString) : std::u16string();
    default:
      return {};
  }
}

std::u16string SmsColumns::Number(const SmsMessage& message, bool names) const {
  std::u16string number = NumberFor(folder_, message);
  if (!names) return number;
  std::u16string name = books_.NameOf(number);
  return name.empty() ? number : name;
}

std::u16string SmsColumns::Date(const SmsMessage& message) const {
  const DateTime* time = message.Timestamp();
  if (time == nullptr || !time->is_set()) return {};
  return time->FormatLocale(locale_, DateTimeKind::kLocaleDateAndTime, true);
}

int SmsColumns::Compare(const SmsMessage& left, const SmsMessage& right, int header, bool names) const {
  const bool inbox = folder_ == SmsFolder::kInbox;
  if (header == kTimeHeader) return inbox ? CompareTimes(left, right) : CompareValidities(left, right);
  if (!IsOrdered(header)) return 0;
  std::u16string left_buffer, right_buffer;
  return locale_.Compare(Text(left, header, names, left_buffer), Text(right, header, names, right_buffer));
}

bool SmsColumns::SortsLast(const SmsMessage& message, int header) const {
  if (header != kTimeHeader) return false;
  if (folder_ == SmsFolder::kOutbox && ValidityFormatOf(message.first_octet) != ValidityFormat::kAbsolute) {
    return false;
  }
  const DateTime* time = TimeOf(message);
  return time == nullptr || time->ToFileTime() == 0;
}

// The Outbox's bodies have no order.
bool SmsColumns::IsOrdered(int header) const { return folder_ == SmsFolder::kInbox || header != kOutboxBody; }

const DateTime* SmsColumns::TimeOf(const SmsMessage& message) const {
  return folder_ == SmsFolder::kInbox ? message.Timestamp() : &message.submit.absolute_validity;
}

int SmsColumns::CompareTimes(const SmsMessage& left, const SmsMessage& right) const {
  if (SortsLast(left, kTimeHeader) || SortsLast(right, kTimeHeader)) return 0;
  return Order(TimeOf(left)->ToFileTime() >> kTimeShift, TimeOf(right)->ToFileTime() >> kTimeShift);
}

int SmsColumns::CompareValidities(const SmsMessage& left, const SmsMessage& right) const {
  const ValidityFormat format = ValidityFormatOf(left.first_octet);
  if (const int order = Order(format, ValidityFormatOf(right.first_octet)); order != 0) return order;
  if (format == ValidityFormat::kRelative) {
    return Order(left.submit.relative_validity, right.submit.relative_validity);
  }
  return format == ValidityFormat::kAbsolute ? CompareTimes(left, right) : 0;
}

SortKey SmsColumns::TimeKey(const SmsMessage& message) const {
  const DateTime* time = TimeOf(message);
  const FileTime count = time == nullptr ? 0 : time->ToFileTime();
  return {.value = count >> kTimeShift, .last = count == 0};
}

SortKey SmsColumns::ValidityKey(const SmsMessage& message) const {
  const ValidityFormat format = ValidityFormatOf(message.first_octet);
  SortKey key;
  if (format == ValidityFormat::kAbsolute) key = TimeKey(message);
  if (format == ValidityFormat::kRelative) key.value = message.submit.relative_validity;
  key.group = static_cast<std::uint64_t>(format);
  return key;
}

std::vector<std::uint64_t> SmsColumns::SortKeys(std::span<const SmsMessage* const> messages, int header,
                                                bool names, bool descending) const {
  std::vector<std::uint32_t> ranks(messages.size());
  if (header != kTimeHeader && IsOrdered(header)) {
    ranks = locale_.Ranks(messages.size(), [&](std::size_t i, std::u16string& buffer) {
      return messages[i] == nullptr ? std::u16string_view() : Text(*messages[i], header, names, buffer);
    });
  }
  std::vector<std::uint64_t> keys(messages.size(), SortKey::kNone);
  for (std::size_t i = 0; i < messages.size(); ++i) {
    if (messages[i] == nullptr) continue;
    SortKey key{.value = ranks[i]};
    if (header == kTimeHeader) {
      key = folder_ == SmsFolder::kInbox ? TimeKey(*messages[i]) : ValidityKey(*messages[i]);
    }
    keys[i] = key.Packed(descending);
  }
  return keys;
}

}  // namespace celldesk

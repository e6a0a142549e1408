#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "pdu/sms_message.h"
#include "ui/address_books.h"
#include "ui/framework/font.h"
#include "ui/framework/sort_key.h"

namespace celldesk {

class Locale;

enum class SmsFolder { kInbox, kOutbox };

/// True when the message is one of the folder's: in use, and received (Inbox) or stored (Outbox).
bool BelongsTo(SmsFolder folder, const SmsMessage& message);

/// Whom the message is from (received, reported on) or to, as a number for the user; empty when it has none.
std::u16string NumberFor(SmsFolder folder, const SmsMessage& message);

/// The font that tells an item's flags: struck out, to be sent, to be stored, not yet opened.
FontRole FontFor(const SmsMessage& message);

/// What the columns of an SMS folder show, computed when it is asked for, and the orders of its headers.
class SmsColumns {
 public:
  static constexpr int kMemory = 0, kNumber = 1, kDate = 2, kBody = 3;            // Inbox
  static constexpr int kRecipient = kNumber, kValidity = 2, kOutboxBody = kBody;  // Outbox

  /// Books and locale are borrowed for the object's life.
  SmsColumns(SmsFolder folder, const AddressBooks& books, const Locale& locale)
      : folder_(folder), books_(books), locale_(locale) {}

  /// The text of one cell, in `buffer` or in the message itself. With `names` a number that is in an address
  /// book shows as its name.
  std::u16string_view Text(const SmsMessage& message, int column, bool names, std::u16string& buffer) const;

  /// Negative, zero or positive by the order of header `header`: header 1 orders by time stamp (Inbox) or
  /// validity (Outbox), header 2 by the displayed text of its column. A message without a valid time equals
  /// any other there. Names are shown as `names` says.
  int Compare(const SmsMessage& left, const SmsMessage& right, int header, bool names) const;
  /// True for a message whose place in the order of `header` is not said by Compare: its time is not valid.
  bool SortsLast(const SmsMessage& message, int header) const;
  /// A packed SortKey for each message, in the order of Compare and SortsLast; a null one comes last.
  std::vector<std::uint64_t> SortKeys(std::span<const SmsMessage* const> messages, int header, bool names,
                                      bool descending) const;

 private:
  std::u16string Number(const SmsMessage& message, bool names) const;
  std::u16string Date(const SmsMessage& message) const;
  const DateTime* TimeOf(const SmsMessage& message) const;
  int CompareTimes(const SmsMessage& left, const SmsMessage& right) const;
  int CompareValidities(const SmsMessage& left, const SmsMessage& right) const;
  bool IsOrdered(int header) const;
  SortKey TimeKey(const SmsMessage& message) const;
  SortKey ValidityKey(const SmsMessage& message) const;

  SmsFolder folder_;
  const AddressBooks& books_;
  const Locale& locale_;
};

}  // namespace celldesk

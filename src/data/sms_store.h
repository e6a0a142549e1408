#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "pdu/sms_message.h"
#include "util/object.h"

namespace celldesk {

/// The messages of both folders in one array. A message keeps its position and its address until the array
/// is cleared, so rows and dialogs may hold on to either. Interface thread only.
class SmsStore : public Object {
 public:
  /// Most messages that are kept.
  static constexpr int kLimit = 65536;

  int count() const { return static_cast<int>(messages_.size()); }
  /// `position` is below the count.
  SmsMessage& At(int position) { return *messages_[static_cast<std::size_t>(position)]; }
  const SmsMessage& At(int position) const { return *messages_[static_cast<std::size_t>(position)]; }

  /// A new record at the end of the array, and its position; in an array that cannot grow the last record,
  /// cleared. The record is not in use yet.
  int Append();
  /// The same for a record made before.
  int Append(std::unique_ptr<SmsMessage> message);
  /// The first position that holds no message in use, the count when all do, -1 when the array is full.
  int FirstFree() const;
  /// A cleared record at a position that FirstFree gave.
  SmsMessage& MakeAt(int position);
  /// Clears the record at `position`: it belongs to no folder from now on. The others stay where they are.
  void Remove(int position) { At(position).Clear(); }
  /// Destroys every record.
  void Clear() { messages_.clear(); }

  /// True when any message was changed here since it was read.
  bool IsChanged() const;
  /// A message reference for a new message: the highest in use and one, in 8 bits.
  std::uint8_t NewReference() const;
  /// Messages that wait to be stored in this memory of the phone.
  int CountToStore(int memory) const;

 private:
  std::vector<std::unique_ptr<SmsMessage>> messages_;
};

}  // namespace celldesk

#include "data/sms_store.h"

#include <algorithm>
#include <utility>

namespace celldesk {
namespace {

using MessagePointer = std::unique_ptr<SmsMessage>;

bool IsInUse(const MessagePointer& message) { return (message->flags & kMessageInUse) != 0; }

}  // namespace

int SmsStore::Append() {
  if (count() < kLimit) {
    messages_.push_back(std::make_unique<SmsMessage>());
  } else {
    messages_.back()->Clear();
  }
  return count() - 1;
}

int SmsStore::Append(MessagePointer message) {
  if (count() < kLimit) {
    messages_.push_back(std::move(message));
  } else {
    *messages_.back() = *message;
  }
  return count() - 1;
}

int SmsStore::FirstFree() const {
  const auto found = std::find_if_not(messages_.begin(), messages_.end(), IsInUse);
  const auto position = static_cast<int>(found - messages_.begin());
  return position < kLimit ? position : -1;
}

SmsMessage& SmsStore::MakeAt(int position) {
  if (position >= count()) return At(Append());
  At(position).Clear();
  return At(position);
}

bool SmsStore::IsChanged() const {
  return std::any_of(messages_.begin(), messages_.end(),
                     [](const MessagePointer& message) { return (message->flags & kMessageChanged) != 0; });
}

std::uint8_t SmsStore::NewReference() const {
  std::uint8_t highest = 0;
  for (const MessagePointer& message : messages_) {
    if (IsInUse(message)) highest = std::max(highest, message->Reference());
  }
  return static_cast<std::uint8_t>(highest + 1);
}

int SmsStore::CountToStore(int memory) const {
  return static_cast<int>(std::count_if(messages_.begin(), messages_.end(), [memory](const auto& message) {
    return (message->flags & kMessageToStore) != 0 && message->memory == memory;
  }));
}

}  // namespace celldesk

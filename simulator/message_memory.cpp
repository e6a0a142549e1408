#include "simulator/message_memory.h"

#include <algorithm>

namespace celldesk::simulator {
namespace {

constexpr int kHighestPlace = 65535;
constexpr int kNoPlace = -1;

}  // namespace

std::vector<std::string> MessageMemory::Names(const Phone& phone) {
  std::vector<std::string> names;
  for (const MessageStore& store : phone.memory.stores) {
    if (!phone.profile.Hides(store.name)) names.push_back(store.name);
  }
  names.insert(names.end(), phone.profile.union_memories.begin(), phone.profile.union_memories.end());
  return names;
}

MessageMemory::MessageMemory(Phone& phone, const std::string& name) : next_shift_(phone.profile.index_shift) {
  const auto& unions = phone.profile.union_memories;
  const bool is_union = std::find(unions.begin(), unions.end(), name) != unions.end();
  for (MessageStore& store : phone.memory.stores) {
    if ((is_union || store.name == name) && !phone.profile.Hides(store.name)) AddPart(phone, store);
  }
}

void MessageMemory::AddPart(Phone& phone, MessageStore& store) {
  const int capacity = phone.profile.single_slot ? 1 : store.capacity;
  const auto room = phone.rooms.find("messages " + store.name);
  parts_.push_back({&store, next_shift_, capacity, room == phone.rooms.end() ? capacity : room->second});
  next_shift_ += capacity;
}

bool MessageMemory::Shows(const Part& part, int place) { return place < part.store->first + part.capacity; }

bool MessageMemory::HasRoom(const Part& part) {
  const auto& messages = part.store->messages;
  const auto end = messages.lower_bound(part.store->first + part.capacity);
  return std::distance(messages.begin(), end) < part.room;
}

int MessageMemory::capacity() const {
  int sum = 0;
  for (const Part& part : parts_) sum += part.room;
  return sum;
}

std::vector<int> MessageMemory::Indexes() const {
  std::vector<int> indexes;
  for (const Part& part : parts_) {
    for (const auto& [place, message] : part.store->messages) {
      if (Shows(part, place)) indexes.push_back(place + part.shift);
    }
  }
  return indexes;
}

int MessageMemory::PlaceOf(const Part& part, int index) {
  const long long place = static_cast<long long>(index) - part.shift;
  return place < 0 || place > kHighestPlace ? kNoPlace : static_cast<int>(place);
}

StoredMessage* MessageMemory::Find(int index) const {
  for (const Part& part : parts_) {
    const auto found = part.store->messages.find(PlaceOf(part, index));
    if (found != part.store->messages.end() && Shows(part, found->first)) return &found->second;
  }
  return nullptr;
}

std::optional<int> MessageMemory::Add(StoredMessage message) {
  for (const Part& part : parts_) {
    if (!HasRoom(part)) continue;
    int place = part.store->first;
    while (part.store->messages.contains(place)) ++place;
    part.store->messages[place] = std::move(message);
    return place + part.shift;
  }
  return std::nullopt;
}

bool MessageMemory::Remove(int index) {
  for (const Part& part : parts_) {
    const int place = PlaceOf(part, index);
    if (Shows(part, place) && part.store->messages.erase(place) == 1) return true;
  }
  return false;
}

}  // namespace celldesk::simulator

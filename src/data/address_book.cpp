#include "data/address_book.h"

#include <algorithm>
#include <new>

namespace celldesk {
namespace {

std::size_t RoomFor(int count) {
  return (static_cast<std::size_t>(count) / AddressBook::kGrowBy + 1) * AddressBook::kGrowBy;
}

}  // namespace

int PhonebookMemory::Capacity() const {
  return Held(std::max<std::int64_t>(std::int64_t{last} - first + 1, 0));
}

AddressBook::AddressBook(std::u16string_view memory_name, bool ignore_select_errors) {
  memory_.name = memory_name;
  memory_.ignore_select_errors = ignore_select_errors;
}

AddressEntry& AddressBook::At(int position) {
  if (Failed(Reach(position))) return entries_.empty() ? nowhere_ : entries_.back();
  return entries_[static_cast<std::size_t>(position)];
}

void AddressBook::Reserve(int count) {
  try {
    entries_.reserve(RoomFor(std::clamp(count, 0, kLimit)));
  } catch (const std::bad_alloc&) {
    // It is room beforehand: what needs it later says so.
    return;
  }
}

Status AddressBook::Resize(int count) {
  count = std::max(count, 0);
  if (count > kLimit) return E_OUTOFMEMORY;
  const bool shrinks = count < this->count();
  try {
    const std::size_t steps = RoomFor(count);
    const std::size_t present = entries_.capacity();
    if (steps > present) entries_.reserve(std::max(steps, present + present / 2));
    entries_.resize(static_cast<std::size_t>(count));
    // One garbled index makes a book as large as it can be.
    if (shrinks && present > 2 * steps) entries_.shrink_to_fit();
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  }
  if (count == 0) std::vector<AddressEntry>().swap(entries_);
  return S_OK;
}

void AddressBook::ClearAll() {
  for (AddressEntry& entry : entries_) entry.Clear();
}

void AddressBook::MarkAll(std::uint32_t flags) {
  for (AddressEntry& entry : entries_) entry.flags = flags;
}

void AddressBook::Erase(int position) {
  if (Failed(Reach(position))) return;
  AddressEntry& entry = At(position);
  entry.Clear();
  entry.flags = AddressEntry::kModified;
}

bool AddressBook::IsModified() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const AddressEntry& e) { return e.is_modified(); });
}

int AddressBook::FirstFree(int from) const {
  for (int position = std::max(from, 0); position < count(); ++position) {
    if (!entries_[static_cast<std::size_t>(position)].is_occupied()) return position;
  }
  return count();
}

const AddressEntry* AddressBook::FindNumber(std::u16string_view number) const {
  if (number.empty()) return nullptr;
  const auto found = std::find_if(entries_.begin(), entries_.end(), [number](const AddressEntry& entry) {
    return entry.is_occupied() && entry.number == number;
  });
  return found == entries_.end() ? nullptr : &*found;
}

}  // namespace celldesk

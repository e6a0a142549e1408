#include "data/entry_editing.h"

#include <algorithm>

#include "util/number_text.h"

namespace celldesk {
namespace {

constexpr int kUnknownLimit = 40;

bool IsFree(const AddressBook& book, int position, std::u16string_view own_id) {
  if (position >= book.count()) return true;
  const AddressEntry& entry = book.entries()[static_cast<std::size_t>(position)];
  return !entry.is_occupied() || entry.id == own_id;
}

/// True when the slot of this id is none of the memory's and yet the entry's own: it stands there, or nothing
/// is known of the memory and nobody else does.
bool StandsBeyondTheMemory(const AddressBook& book, std::u16string_view own_id) {
  const int position = book.memory().PositionOf(ParseDecimal(own_id));
  const int capacity = book.memory().Capacity();
  if (own_id.empty() || position < capacity || position >= AddressBook::kLimit) return false;
  if (position >= book.count()) return capacity == 0;
  return book.entries()[static_cast<std::size_t>(position)].id == own_id;
}

}  // namespace

int NameLimit(const AddressBook& book) {
  return book.memory().name_length < 1 ? kUnknownLimit : book.memory().name_length;
}

int NumberLimit(const AddressBook& book) {
  return book.memory().number_length < 1 ? kUnknownLimit : book.memory().number_length;
}

std::vector<std::u16string> AssignableIds(const AddressBook& book, std::u16string_view own_id) {
  std::vector<std::u16string> ids;
  const int slots = std::min(book.memory().Capacity(), AddressBook::kLimit);
  for (int position = 0; position < slots; ++position) {
    if (IsFree(book, position, own_id)) ids.push_back(DecimalText(book.memory().IndexAt(position)));
  }
  if (StandsBeyondTheMemory(book, own_id)) ids.emplace_back(own_id);
  return ids;
}

Status PrepareNew(AddressBook& book, std::optional<int>& position) {
  position.reset();
  const int capacity = book.memory().Capacity();
  const Status status = book.Resize(capacity);
  if (Failed(status)) return status;
  const int free = book.FirstFree();
  if (free < book.count() || capacity == 0) position = free;
  return S_OK;
}

AddressEntry NewEntryAt(const AddressBook& book, int position) {
  AddressEntry entry;
  entry.id = DecimalText(book.memory().IndexAt(position));
  return entry;
}

bool TakeFields(AddressEntry& entry, std::u16string_view id, std::u16string_view name,
                std::u16string_view number) {
  if (name.empty() && number.empty()) return false;
  if (entry.id != id || entry.name != name || entry.number != number) entry.flags |= AddressEntry::kModified;
  entry.flags |= AddressEntry::kOccupied;
  entry.id = id;
  entry.name = name;
  entry.number = number;
  return true;
}

bool ReplacesAnother(const AddressBook& book, int position, const AddressEntry& edited) {
  const int target = book.memory().PositionOf(ParseDecimal(edited.id));
  if (edited.id.empty() || target == position || target < 0 || target >= book.count()) return false;
  return book.entries()[static_cast<std::size_t>(target)].is_occupied();
}

std::optional<int> Place(AddressBook& book, int position, const AddressEntry& edited) {
  if (edited.id.empty()) return std::nullopt;
  const AddressEntry entry = edited;  // `edited` may stand in the book, which grows and is erased below
  const int target = book.memory().PositionOf(ParseDecimal(entry.id));
  if (Failed(book.Reach(target))) return std::nullopt;
  if (target != position) book.Erase(position);
  book.At(target) = entry;
  return target;
}

}  // namespace celldesk

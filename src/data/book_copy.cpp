#include "data/book_copy.h"

namespace celldesk {
namespace {

/// `position` is moved to the first free slot from there on; no slot before it is free.
Status CopyEntry(const AddressEntry& entry, AddressBook& destination, int& position, RowObserver& observer) {
  position = destination.FirstFree(position);
  const Status status = destination.Reach(position);
  if (Failed(status)) return status;
  AddressEntry& copy = destination.At(position);
  copy = entry;
  copy.flags |= AddressEntry::kModified;
  observer.RowRead(position);
  return S_OK;
}

Status CopyOccupied(const AddressBook& source, AddressBook& destination, RowObserver& observer) {
  int position = 0;
  for (const AddressEntry& entry : source.entries()) {
    if (!entry.is_occupied()) continue;
    const Status status = CopyEntry(entry, destination, position, observer);
    if (Failed(status)) return status;
  }
  return S_OK;
}

}  // namespace

Status CopyEntries(const AddressBook& source, std::span<const int> selected, AddressBook& destination,
                   RowObserver& observer) {
  if (selected.empty()) return CopyOccupied(source, destination, observer);
  int free = 0;
  for (const int position : selected) {
    if (position < 0 || position >= source.count()) continue;
    const Status status =
        CopyEntry(source.entries()[static_cast<std::size_t>(position)], destination, free, observer);
    if (Failed(status)) return status;
  }
  return S_OK;
}

}  // namespace celldesk

#include "data/item_assignment.h"

#include <utility>

#include "util/number_text.h"

namespace celldesk {

void ItemAssignment::Enter() {
  for (int position = 0; position < book_.count(); ++position) {
    AddressEntry& entry = book_.At(position);
    entry.saved_id = std::exchange(entry.id, {});
    entry.flags &= ~AddressEntry::kAssigned;
  }
  given_ = 0;
  active_ = true;
}

bool ItemAssignment::Assign(int position) {
  if (!active_ || position < 0 || position >= book_.count()) return false;
  AddressEntry& entry = book_.At(position);
  if (entry.is_assigned()) return false;
  entry.id = DecimalText(book_.memory().IndexAt(given_++));
  entry.flags |= AddressEntry::kAssigned;
  return true;
}

void ItemAssignment::LeaveDropping() {
  for (int position = 0; position < book_.count(); ++position) {
    AddressEntry& entry = book_.At(position);
    entry.id = std::exchange(entry.saved_id, {});
    entry.flags &= ~AddressEntry::kAssigned;
  }
  active_ = false;
}

Status ItemAssignment::LeaveKeeping(std::span<const int> rows, RowObserver& observer) {
  AddressBook reordered(book_.memory().name, false);
  const Status status = Reorder(rows, reordered);
  if (Failed(status)) return status;
  TakeOver(reordered, observer);
  active_ = false;
  return S_OK;
}

// The new book is as long as the old one: slots that nobody moves to are erased in the phone.
Status ItemAssignment::Reorder(std::span<const int> rows, AddressBook& reordered) {
  int given = given_;
  Status status = reordered.Resize(book_.count());
  for (const int row : rows) {
    AddressEntry entry = book_.At(row);
    if (entry.id.empty()) entry.id = DecimalText(book_.memory().IndexAt(given++));
    const int position = book_.memory().PositionOf(ParseDecimal(entry.id));
    if (!Failed(status)) status = reordered.Reach(position);
    if (Failed(status)) return status;
    reordered.At(position) = entry;
  }
  return status;
}

void ItemAssignment::TakeOver(AddressBook& reordered, RowObserver& observer) {
  for (int position = 0; position < reordered.count(); ++position) {
    AddressEntry& entry = book_.At(position);
    entry = reordered.At(position);
    entry.saved_id.clear();
    entry.flags = (entry.flags & AddressEntry::kOccupied) | AddressEntry::kModified;
    observer.RowRead(position);
  }
}

}  // namespace celldesk

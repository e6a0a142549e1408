#pragma once

#include <span>

#include "data/address_book.h"
#include "data/row_observer.h"

namespace celldesk {

/// Item assignment: the user picks rows one after the other, and they get the slot indexes in that order.
/// Interface thread only.
class ItemAssignment {
 public:
  /// The book is borrowed for the assignment's life.
  explicit ItemAssignment(AddressBook& book) : book_(book) {}

  bool active() const { return active_; }

  /// Puts every entry's id aside and starts to count at the memory's first index.
  void Enter();
  /// Gives the entry at `position` the next index; false when the mode is off or the entry has one already.
  bool Assign(int position);
  /// Every entry gets back the id it had.
  void LeaveDropping();
  /// Moves the entries to the slots of their new ids, those not picked following in the order of `rows` (the
  /// positions that the list shows, from its top), and marks the whole book modified. `observer` is told of
  /// every position. On E_OUTOFMEMORY the mode and the book stay as they are.
  Status LeaveKeeping(std::span<const int> rows, RowObserver& observer);

 private:
  Status Reorder(std::span<const int> rows, AddressBook& reordered);
  void TakeOver(AddressBook& reordered, RowObserver& observer);

  AddressBook& book_;
  int given_ = 0;  // indexes given so far
  bool active_ = false;
};

}  // namespace celldesk

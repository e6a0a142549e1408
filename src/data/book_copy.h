#pragma once

#include <span>

#include "data/address_book.h"
#include "data/row_observer.h"

namespace celldesk {

/// Copies the entries at `selected`, or with none selected every entry that `source` holds, into the free
/// slots of `destination`, ids and all, and marks them modified; `observer` (the destination's list) is told
/// of each. E_OUTOFMEMORY, with what was copied so far, when the destination cannot grow any further.
Status CopyEntries(const AddressBook& source, std::span<const int> selected, AddressBook& destination,
                   RowObserver& observer);

}  // namespace celldesk

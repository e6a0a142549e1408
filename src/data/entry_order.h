#pragma once

#include "data/address_entry.h"
#include "platform/locale.h"

namespace celldesk {

/// Columns of an address book list.
enum class AddressColumn { kId, kName, kNumber };

/// Negative, zero or positive as `left` stands before, with or after `right`: ids by their decimal values,
/// texts by the user's collation. A descending order negates the result.
int CompareEntries(const AddressEntry& left, const AddressEntry& right, AddressColumn column, bool descending,
                   const Locale& locale);

}  // namespace celldesk

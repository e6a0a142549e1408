#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "data/address_entry.h"
#include "platform/locale.h"

namespace celldesk {

/// Columns of an address book list.
enum class AddressColumn { kId, kName, kNumber };

/// What a list shows of the entry in the column; valid as long as the entry is unchanged.
std::u16string_view EntryText(const AddressEntry& entry, AddressColumn column);

/// Negative, zero or positive as `left` stands before, with or after `right`: ids by their decimal values,
/// texts by the user's collation. A descending order negates the result.
int CompareEntries(const AddressEntry& left, const AddressEntry& right, AddressColumn column, bool descending,
                   const Locale& locale);

/// For each entry a 32-bit number; their order is the ascending order of the entries, equal numbers are equal
/// entries.
std::vector<std::uint32_t> EntryPlaces(std::span<const AddressEntry* const> entries, AddressColumn column,
                                       const Locale& locale);

}  // namespace celldesk

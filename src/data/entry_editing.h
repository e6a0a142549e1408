#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "data/address_book.h"

namespace celldesk {

/// What "New" and "Edit" do to a book around their dialog. Interface thread only.

/// Longest name and number that the edit dialog takes: the phone's own limits, 40 where it told none.
int NameLimit(const AddressBook& book);
int NumberLimit(const AddressBook& book);

/// The indexes, in decimal, that the dialog offers for an entry with the id `own_id`: the memory's free slots
/// and the entry's own. Slots beyond the book's count are free; at most AddressBook::kLimit are listed. An
/// entry that stands beyond the memory keeps its own slot, and so does one whose phone was never asked.
std::vector<std::u16string> AssignableIds(const AddressBook& book, std::u16string_view own_id);

/// Makes the book as long as the phone's memory and finds the `position` for a new entry: the first free one,
/// 0 in a book whose phone was never asked (which it leaves empty), none when the memory is full.
/// E_OUTOFMEMORY, and none, when the memory is larger than a book can be.
Status PrepareNew(AddressBook& book, std::optional<int>& position);

/// A new entry for the slot at `position`, as the dialog starts with it.
AddressEntry NewEntryAt(const AddressBook& book, int position);

/// Takes what the dialog's fields hold into `entry`: occupied from now on, and modified if any text differs.
/// False, with the entry unchanged, when name and number are both empty, which counts as Cancel.
bool TakeFields(AddressEntry& entry, std::u16string_view id, std::u16string_view name,
                std::u16string_view number);

/// True when Place would overwrite another entry than the one at `position`.
bool ReplacesAnother(const AddressBook& book, int position, const AddressEntry& edited);

/// Puts `edited`, which came from `position`, to the slot that its id names, replacing what stands there; a
/// position left behind is erased. The new position; none, and nothing changed, when the id is empty or names
/// no slot that a book can have.
std::optional<int> Place(AddressBook& book, int position, const AddressEntry& edited);

}  // namespace celldesk

#pragma once

#include <functional>
#include <string_view>

#include "data/address_book.h"
#include "data/row_observer.h"
#include "platform/file.h"
#include "util/field_text.h"
#include "util/status.h"

namespace celldesk {

/// The book that an address book file is read into, and the list that shows it. Both are borrowed for the
/// reading; a null book reads nothing.
struct AddressBookTarget {
  AddressBook* book = nullptr;
  RowObserver* observer = nullptr;
};

/// Gives the target for the memory named in the file ("SM" or "ME"). A reading into one chosen view ignores
/// the name.
using ChooseAddressBook = std::function<AddressBookTarget(std::u16string_view memory)>;

/// Writes the book's entries to a ".adr" file, replacing an existing one. Fails with the system's error code
/// as a status; what was written before stays.
Status WriteAddressBookFile(FileSystem& files, std::u16string_view path, const AddressBook& book);

/// Adds the entries of a ".adr" file to the target. The memory's range is taken from the file, ids are given
/// anew by position, and an entry whose slot is taken goes to the first free one. E_INVALIDARG for a file of
/// another kind, E_OUTOFMEMORY when the book is full or memory is short, otherwise the system's error code as
/// a status.
Status ReadAddressBookFile(FileSystem& files, std::u16string_view path, const ChooseAddressBook& choose);

/// The same from the bytes of a file.
Status ReadAddressBook(FieldBytes bytes, const ChooseAddressBook& choose);

}  // namespace celldesk

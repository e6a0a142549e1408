#pragma once

#include <optional>
#include <span>

#include "data/address_book.h"
#include "data/row_observer.h"
#include "link/at_engine.h"
#include "util/status.h"

namespace celldesk {

/// What a phonebook procedure tells the view that started it.
class PhonebookObserver : public RowObserver {
 public:
  /// Before an upload: the progress runs from `first` to `last`.
  virtual void SetProgressRange(int first, int last) = 0;
  /// The entry that comes next, of how many.
  virtual void ShowProgress(int current, int total) = 0;
  virtual void SetProgressPosition(int position) = 0;
};

/// The phonebook procedures of GSM 07.07 8.11 to 8.14, each a fixed sequence of commands on the memory that
/// the book names. Failures are those of the engine; E_NOTIMPL means that the phone rejects the memory. A
/// result such as "+CME ERROR" is not known here and ends in a time-out. The book and the observer (which may
/// be null) are borrowed for the call. While one runs the interface lives on, and nobody else may use the
/// link or change the book.

/// Asks which memories there are and how large the book's own is, and keeps the answers in the book.
Status QueryPhonebook(AtEngine& engine, AddressBook& book);

/// Selects the book's memory. Always S_OK for a book that ignores selection errors.
Status SelectPhonebook(AtEngine& engine, const AddressBook& book);

/// Empties the book, makes it as long as the memory, and reads the memory in blocks of 20. A block that fails
/// does not end the reading; the status is the last block's. E_OUTOFMEMORY, and nothing read, for a memory
/// larger than a book can be. Entries at an index before the first or beyond what a book holds are left out.
Status ReadPhonebook(AtEngine& engine, AddressBook& book, PhonebookObserver* observer);

/// Writes every modified entry and erases every modified empty slot: of the whole book, or of the positions
/// in `selection` alone, in that order. Ends at the first failure; entries written until then are no longer
/// modified.
Status WritePhonebook(AtEngine& engine, AddressBook& book, PhonebookObserver* observer,
                      std::optional<std::span<const int>> selection);

}  // namespace celldesk

#pragma once

#include <string>
#include <vector>

#include "services/phonebook_transfer.h"
#include "util/number_text.h"

namespace celldesk {

/// A view that writes down, as short texts, what it is told.
class RecordingView : public PhonebookObserver {
 public:
  void RowRead(int position) override { rows.push_back(position); }
  void Repaint() override { repainted_after.push_back(static_cast<int>(rows.size())); }
  void SetProgressRange(int first, int last) override {
    progress.push_back("range " + std::to_string(first) + " " + std::to_string(last));
  }
  void ShowProgress(int current, int total) override {
    progress.push_back(std::to_string(current) + " of " + std::to_string(total));
  }
  void SetProgressPosition(int position) override { progress.push_back("at " + std::to_string(position)); }

  std::vector<int> rows;
  std::vector<int> repainted_after;  ///< how many rows had been told at each repaint
  std::vector<std::string> progress;
};

/// The book of a memory of `last` slots from `first`; not yet read.
inline AddressBook QueriedBook(int first, int last, std::u16string_view memory = u"SM", bool ignore = false) {
  AddressBook book(memory, ignore);
  book.memory().first = first;
  book.memory().last = last;
  return book;
}

/// Puts an entry that differs from the phone into the slot at `position`.
inline void Change(AddressBook& book, int position, std::u16string_view name, std::u16string_view number) {
  AddressEntry& entry = book.At(position);
  entry.id = DecimalText(book.memory().IndexAt(position));
  entry.name = name;
  entry.number = number;
  entry.flags = AddressEntry::kOccupied | AddressEntry::kModified;
}

}  // namespace celldesk

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "data/address_book.h"
#include "data/row_observer.h"
#include "util/number_text.h"

namespace celldesk {

/// Remembers what a list would have been told.
class RecordingObserver : public RowObserver {
 public:
  void RowRead(int position) override { rows.push_back(position); }
  void Repaint() override { ++repaints; }

  std::vector<int> rows;
  int repaints = 0;
};

/// Fills the slot at `position` as a download does: id by position, occupied, not modified.
inline void Fill(AddressBook& book, int position, std::u16string_view name, std::u16string_view number) {
  AddressEntry& entry = book.At(position);
  entry.id = DecimalText(book.memory().IndexAt(position));
  entry.name = name;
  entry.number = number;
  entry.flags = AddressEntry::kOccupied;
}

/// A loaded book of `last` slots from 1, all free and unchanged.
inline AddressBook LoadedBook(int last, std::u16string_view memory = u"SM") {
  AddressBook book(memory, true);
  book.memory().last = last;
  EXPECT_EQ(book.Resize(last), S_OK);
  book.MarkAll(0);
  return book;
}

/// The names in array order, empty slots as "".
inline std::vector<std::u16string> Names(const AddressBook& book) {
  std::vector<std::u16string> names;
  for (const AddressEntry& entry : book.entries()) names.emplace_back(entry.name);
  return names;
}

inline std::vector<std::u16string> Ids(const AddressBook& book) {
  std::vector<std::u16string> ids;
  for (const AddressEntry& entry : book.entries()) ids.emplace_back(entry.id);
  return ids;
}

inline std::vector<std::uint32_t> Flags(const AddressBook& book) {
  std::vector<std::uint32_t> flags;
  for (const AddressEntry& entry : book.entries()) flags.push_back(entry.flags);
  return flags;
}

}  // namespace celldesk

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "data/address_entry.h"
#include "util/object.h"
#include "util/status.h"

namespace celldesk {

/// What is known of the phonebook memory that a book is bound to (GSM 07.07 8.11, 8.12). The numbers are the
/// phone's own, however odd.
struct PhonebookMemory {
  std::u16string name;                ///< "SM" or "ME"
  bool ignore_select_errors = false;  ///< a failed memory selection is no error
  std::u16string supported;           ///< the phone's list of memories, e.g. "(\"SM\",\"ME\")"
  int first = 1;                      ///< lowest index
  int last = 0;                       ///< highest index; 0 until the phone was asked
  int number_length = 0;              ///< longest number; 0 until the phone was asked
  int name_length = 0;                ///< longest name; 0 until the phone was asked

  /// Number of slots: 0 until the phone was asked and for a range that ends before it begins.
  int Capacity() const;
  /// Index of the slot at `position`, and back. Held at the limits of 32 bits.
  int IndexAt(int position) const { return Held(std::int64_t{first} + position); }
  int PositionOf(int index) const { return Held(std::int64_t{index} - first); }

 private:
  static int Held(std::int64_t value) {
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<std::int64_t>(value, Limits::min(), Limits::max()));
  }
};

/// The entries of one phone memory: position k is the phone's slot first + k. Interface thread only.
class AddressBook : public Object {
 public:
  /// Most entries that a book holds. Larger growth fails with E_OUTOFMEMORY, so that a phone (or a file)
  /// that claims millions of slots costs no more than some megabytes.
  static constexpr int kLimit = 65536;
  /// Least step of the array's allocation; a large array grows by half, so that filling it entry by entry
  /// stays linear.
  static constexpr int kGrowBy = 124;

  AddressBook(std::u16string_view memory_name, bool ignore_select_errors);

  PhonebookMemory& memory() { return memory_; }
  const PhonebookMemory& memory() const { return memory_; }
  bool loaded() const { return loaded_; }
  void set_loaded(bool loaded) { loaded_ = loaded; }

  int count() const { return static_cast<int>(entries_.size()); }
  const std::vector<AddressEntry>& entries() const { return entries_; }
  /// The entry at `position`; a position at or beyond the count grows the book to it. Where that fails (and
  /// for a negative position) the last entry stands in, and in an empty book an entry of no position.
  /// Borrowed until the book changes its size.
  AddressEntry& At(int position);
  /// Grows the book so that `position` exists, with new (modified) entries; E_OUTOFMEMORY, and the book as it
  /// was, beyond the limit or for a negative position.
  Status Reach(int position) {
    if (position < 0 || position >= kLimit) return E_OUTOFMEMORY;
    return position < count() ? S_OK : Resize(position + 1);
  }
  /// Makes room for `count` entries beforehand, as far as the limit and memory allow; the count stays.
  void Reserve(int count);
  /// Makes the count `count` (negative: 0). New entries are modified, those beyond are destroyed;
  /// E_OUTOFMEMORY, and the book as it was, beyond the limit.
  Status Resize(int count);

  /// Clears every entry; the count stays.
  void ClearAll();
  /// Sets every entry's flags to `flags`.
  void MarkAll(std::uint32_t flags);
  /// Clears the entry at `position` and marks it modified: the next upload erases the slot in the phone.
  /// A position that no book can have is left alone.
  void Erase(int position);
  /// True when any entry differs from the phone.
  bool IsModified() const;
  /// The first position from `from` on that holds no entry; the count when there is none.
  int FirstFree(int from = 0) const;
  /// The first entry with exactly this number, or null. Borrowed until the book changes.
  const AddressEntry* FindNumber(std::u16string_view number) const;

 private:
  PhonebookMemory memory_;
  bool loaded_ = false;
  std::vector<AddressEntry> entries_;
  AddressEntry nowhere_;
};

}  // namespace celldesk

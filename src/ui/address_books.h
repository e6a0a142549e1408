#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "data/address_book.h"

namespace celldesk {

/// Both address books together, to find who has a number. The books are borrowed for the object's life.
class AddressBooks {
 public:
  static constexpr int kCount = 2;

  AddressBooks(const AddressBook& sim, const AddressBook& phone) : books_{&sim, &phone} {}

  /// 0 is the SIM card's book, 1 the phone's.
  const AddressBook& At(int book) const { return *books_[static_cast<std::size_t>(book)]; }
  /// The first entry with exactly this number, the SIM card's book first, or null. Borrowed until a book
  /// changes.
  const AddressEntry* FindNumber(std::u16string_view number) const;
  /// The name that goes with a number; empty when there is none.
  std::u16string NameOf(std::u16string_view number) const;

 private:
  std::array<const AddressBook*, kCount> books_;
};

}  // namespace celldesk

#include "ui/address_books.h"

namespace celldesk {

const AddressEntry* AddressBooks::FindNumber(std::u16string_view number) const {
  if (number.empty()) return nullptr;
  for (const AddressBook* book : books_) {
    if (const AddressEntry* entry = book->FindNumber(number)) return entry;
  }
  return nullptr;
}

std::u16string AddressBooks::NameOf(std::u16string_view number) const {
  const AddressEntry* entry = FindNumber(number);
  return std::u16string(entry == nullptr ? std::u16string_view() : entry->name.view());
}

}  // namespace celldesk

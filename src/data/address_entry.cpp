#include "data/address_entry.h"

namespace celldesk {

AddressEntry::AddressEntry(const AddressEntry& other)
    : id(other.id), saved_id(other.saved_id), name(other.name), number(other.number), flags(other.flags) {}

AddressEntry& AddressEntry::operator=(const AddressEntry& other) {
  id = other.id;
  saved_id = other.saved_id;
  name = other.name;
  number = other.number;
  flags = other.flags;
  return *this;
}

void AddressEntry::Clear() {
  id.clear();
  saved_id.clear();
  name.clear();
  number.clear();
  flags = 0;
}

}  // namespace celldesk

// Input: the bytes of an address book file. Property: reading ends with a known status, holds no more text
// than twice the file and no more slots than a book can have, and every entry has the index of its slot. What
// was read, written and read again is the same book, but for texts that begin with a line end; from then on
// nothing changes any more, byte for byte.

#include <cstdint>
#include <string>
#include <vector>

#include "data/address_book_file.h"
#include "fuzz/memory_file.h"
#include "fuzz/property.h"
#include "util/number_text.h"

namespace {

using namespace celldesk;

Status Read(const std::string& file, AddressBook& book) {
  MemoryFile files;
  files.content = file;
  return ReadAddressBookFile(files, u"", [&book](std::u16string_view /*memory*/) {
    return AddressBookTarget{&book, nullptr};
  });
}

std::string Written(const AddressBook& book) {
  MemoryFile files;
  HOLDS(WriteAddressBookFile(files, u"", book) == S_OK);
  return files.content;
}

std::vector<const AddressEntry*> EntriesOf(const AddressBook& book) {
  std::vector<const AddressEntry*> entries;
  for (const AddressEntry& entry : book.entries()) {
    if (entry.is_occupied()) entries.push_back(&entry);
  }
  return entries;
}

void CheckBook(const AddressBook& book, std::size_t size) {
  HOLDS(book.count() <= AddressBook::kLimit);
  std::size_t characters = 0;
  for (int position = 0; position < book.count(); ++position) {
    const AddressEntry& entry = book.entries()[static_cast<std::size_t>(position)];
    characters += entry.name.size() + entry.number.size();
    if (entry.is_occupied()) HOLDS(entry.id == DecimalText(book.memory().IndexAt(position)));
    HOLDS(entry.is_modified());
  }
  HOLDS(characters <= 2 * size);  // a bare line feed is read as two characters
}

bool IsKept(const AddressBook& book) {
  for (const AddressEntry* entry : EntriesOf(book)) {
    if (entry->name.view().starts_with(u"\r\n") || entry->number.view().starts_with(u"\r\n")) return false;
  }
  return true;
}

void CheckSame(const AddressBook& left, const AddressBook& right) {
  HOLDS(left.memory().first == right.memory().first && left.memory().last == right.memory().last);
  const auto entries = EntriesOf(left);
  const auto others = EntriesOf(right);
  HOLDS(entries.size() == others.size());
  for (std::size_t i = 0; i < entries.size(); ++i) {
    HOLDS(entries[i]->id == others[i]->id);
    HOLDS(entries[i]->name == others[i]->name);
    HOLDS(entries[i]->number == others[i]->number);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  AddressBook book(u"SM", true);
  const Status status = Read(std::string(data, data + size), book);
  HOLDS(status == S_OK || status == E_INVALIDARG || status == E_OUTOFMEMORY);
  if (Failed(status)) HOLDS(status != E_INVALIDARG || book.count() == 0);
  CheckBook(book, size);
  const std::string first = Written(book);
  AddressBook again(u"SM", true);
  HOLDS(Read(first, again) == S_OK);
  if (IsKept(book)) CheckSame(book, again);
  const std::string second = Written(again);
  AddressBook third(u"SM", true);
  HOLDS(Read(second, third) == S_OK);
  HOLDS(Written(third) == second);
  return 0;
}

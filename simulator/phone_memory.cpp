#include "simulator/phone_memory.h"

#include <algorithm>

namespace celldesk::simulator {
namespace {

template <class Items>
auto FindNamed(Items& items, std::string_view name) -> decltype(items.data()) {
  const auto found =
      std::find_if(items.begin(), items.end(), [&](const auto& item) { return item.name == name; });
  return found == items.end() ? nullptr : &*found;
}

Phonebook MakeBook(std::string name, int last, bool read_only) {
  Phonebook book;
  book.name = std::move(name);
  book.last = last;
  book.read_only = read_only;
  return book;
}

MessageStore MakeStore(std::string name, int capacity) {
  MessageStore store;
  store.name = std::move(name);
  store.capacity = capacity;
  return store;
}

}  // namespace

PhoneMemory::PhoneMemory() {
  phonebooks = {MakeBook("SM", 250, false), MakeBook("ME", 500, false), MakeBook("ON", 5, false),
                MakeBook("DC", 10, true),   MakeBook("RC", 10, true),   MakeBook("MC", 10, true)};
  phonebooks[2].entries[1] = {own_number, kInternational, u"Own number"};
  stores = {MakeStore("SM", 30), MakeStore("ME", 100)};
}

Phonebook* PhoneMemory::FindPhonebook(std::string_view name) { return FindNamed(phonebooks, name); }

const Phonebook* PhoneMemory::FindPhonebook(std::string_view name) const {
  return FindNamed(phonebooks, name);
}

MessageStore* PhoneMemory::FindStore(std::string_view name) { return FindNamed(stores, name); }

const MessageStore* PhoneMemory::FindStore(std::string_view name) const { return FindNamed(stores, name); }

}  // namespace celldesk::simulator

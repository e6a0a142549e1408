#pragma once

#include <string>
#include <vector>

#include "simulator/phone.h"

namespace celldesk::simulator {

/// A phonebook as the phone's habits let a client see it. Borrows the phone for one command.
class PhonebookView {
 public:
  /// Names of the books that can be selected, in order.
  static std::vector<std::string> Names(const Phone& phone);

  PhonebookView(Phone& phone, const std::string& name);

  bool exists() const { return book_ != nullptr; }
  bool read_only() const { return book_->read_only; }
  const BookLimits& limits() const { return limits_; }
  bool InRange(int location) const { return location >= limits_.first && location <= limits_.last; }
  int used() const;
  int total() const;
  std::string RangeText() const;

  const PhonebookEntry* Find(int location) const;
  /// The first location without an entry; nothing when all are taken.
  std::optional<int> FreeLocation() const;
  bool HasRoomFor(int location) const;
  void Put(int location, PhonebookEntry entry) { book_->entries[location] = std::move(entry); }
  void Erase(int location) { book_->entries.erase(location); }

 private:
  Phone& phone_;
  Phonebook* book_ = nullptr;
  BookLimits limits_;
};

}  // namespace celldesk::simulator

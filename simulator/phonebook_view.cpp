#include "simulator/phonebook_view.h"

namespace celldesk::simulator {

std::vector<std::string> PhonebookView::Names(const Phone& phone) {
  std::vector<std::string> names;
  for (const Phonebook& book : phone.memory.phonebooks) {
    if (!phone.profile.Hides(book.name)) names.push_back(book.name);
  }
  return names;
}

PhonebookView::PhonebookView(Phone& phone, const std::string& name) : phone_(phone) {
  if (phone.profile.Hides(name)) return;
  book_ = phone.memory.FindPhonebook(name);
  if (!book_) return;
  limits_ = {book_->first, book_->last, book_->number_length, book_->name_length};
  const bool is_main = name == "SM" || name == "ME";
  if (is_main && phone.profile.book_limits) limits_ = *phone.profile.book_limits;
  if (phone.profile.single_slot) limits_.last = limits_.first;
}

int PhonebookView::used() const {
  const auto& entries = book_->entries;
  return static_cast<int>(
      std::distance(entries.lower_bound(limits_.first), entries.upper_bound(limits_.last)));
}

int PhonebookView::total() const {
  const auto room = phone_.rooms.find("book " + book_->name);
  return room == phone_.rooms.end() ? limits_.last - limits_.first + 1 : room->second;
}

std::string PhonebookView::RangeText() const {
  if (!book_->range_text.empty()) return book_->range_text;
  return '(' + std::to_string(limits_.first) + '-' + std::to_string(limits_.last) + ')';
}

const PhonebookEntry* PhonebookView::Find(int location) const {
  const auto found = book_->entries.find(location);
  return found == book_->entries.end() ? nullptr : &found->second;
}

std::optional<int> PhonebookView::FreeLocation() const {
  for (int location = limits_.first; location <= limits_.last; ++location) {
    if (!Find(location)) return location;
  }
  return std::nullopt;
}

bool PhonebookView::HasRoomFor(int location) const { return Find(location) != nullptr || used() < total(); }

}  // namespace celldesk::simulator

#pragma once

#include <cstdint>
#include <string>

namespace celldesk {

/// One phonebook slot. A new entry is an empty slot that differs from the phone: the next upload erases it
/// there.
struct AddressEntry {
  static constexpr std::uint32_t kOccupied = 1;  ///< the slot holds an entry
  static constexpr std::uint32_t kModified = 2;  ///< differs from the phone; written by the next upload
  static constexpr std::uint32_t kAssigned = 4;  ///< has got an id in the present item assignment

  static constexpr int kInternational = 145;  ///< type of a number with a "+"
  static constexpr int kOtherNumber = 129;

  AddressEntry() = default;
  ~AddressEntry() = default;
  /// A copy takes the four texts and the flags; the number type stays the destination's own.
  AddressEntry(const AddressEntry& other);
  AddressEntry& operator=(const AddressEntry& other);
  AddressEntry(AddressEntry&&) noexcept = default;
  AddressEntry& operator=(AddressEntry&&) noexcept = default;

  bool is_occupied() const { return (flags & kOccupied) != 0; }
  bool is_modified() const { return (flags & kModified) != 0; }
  bool is_assigned() const { return (flags & kAssigned) != 0; }

  /// Empties the texts and the flags.
  void Clear();

  std::u16string id;        ///< the slot's index in the phone as decimal text; empty while it has none
  std::u16string saved_id;  ///< the id put aside during item assignment; empty otherwise
  std::u16string name;
  std::u16string number;  ///< with a leading "+" when of international type
  int number_type = 0;    ///< the type octet that the phone reported
  std::uint32_t flags = kModified;
};

}  // namespace celldesk

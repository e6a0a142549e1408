#pragma once

#include <cstdint>

#include "util/inline_text.h"

namespace celldesk {

/// One phonebook slot. A new entry is an empty slot that differs from the phone: the next upload erases it
/// there.
struct AddressEntry {
  static constexpr std::uint32_t kOccupied = 1;  ///< the slot holds an entry
  static constexpr std::uint32_t kModified = 2;  ///< differs from the phone; written by the next upload
  static constexpr std::uint32_t kAssigned = 4;  ///< has got an id in the present item assignment

  static constexpr int kInternational = 145;  ///< type of a number with a "+"
  static constexpr int kOtherNumber = 129;

  AddressEntry() noexcept {}  // NOLINT(modernize-use-equals-default): nothing is zeroed beforehand
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

  InlineText<6> id;        ///< the slot's index in the phone as decimal text; empty while it has none
  InlineText<6> saved_id;  ///< the id put aside during item assignment; empty otherwise
  InlineText<22> name;
  InlineText<14> number;  ///< with a leading "+" when of international type
  int number_type = 0;    ///< the type octet that the phone reported
  std::uint32_t flags = kModified;
};

}  // namespace celldesk

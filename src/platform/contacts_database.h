#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "util/status.h"

namespace celldesk {

/// A property of a contact: a text. The numbers are those of the handheld's contacts database, whose low word
/// (0x001F) says "text".
using ContactPropertyId = std::uint32_t;
inline constexpr ContactPropertyId kContactSurname = 0x3A11001F;
inline constexpr ContactPropertyId kContactSecondName = 0x4024001F;
inline constexpr ContactPropertyId kContactGivenName = 0x3A06001F;
inline constexpr ContactPropertyId kContactMobileNumber = 0x3A1C001F;
inline constexpr ContactPropertyId kContactBusinessNumber = 0x3A08001F;
inline constexpr ContactPropertyId kContactHomeNumber = 0x3A09001F;
inline constexpr ContactPropertyId kContactCompany = 0x3A16001F;
inline constexpr ContactPropertyId kContactFileAs = 0x4013001F;

/// One property of a record that is read; no text when the record does not have it.
struct ContactProperty {
  ContactPropertyId id = 0;
  std::optional<std::u16string> text;

  friend bool operator==(const ContactProperty&, const ContactProperty&) = default;
};
using ContactRecord = std::vector<ContactProperty>;

/// An open contacts database, closed with the object. Interface thread only.
class ContactsTable {
 public:
  virtual ~ContactsTable() = default;
  /// About how many records there are to read, for a progress range; none when that cannot be told.
  virtual std::optional<int> Count() = 0;
  /// The `requested` properties, in that order, of the next record; none after the last one and when it
  /// cannot be read. The records are those of the moment of opening, each once; one that has gone since is
  /// left out.
  virtual std::optional<ContactRecord> ReadNext(std::span<const ContactPropertyId> requested) = 0;
  /// Adds a record, whole or not at all; existing ones are never looked at. A property without text is left
  /// out. E_INVALIDARG for a property that is none of the above, else the system's error code as a status.
  virtual Status Append(std::span<const ContactProperty> properties) = 0;
};

/// Opens contacts databases by name. Interface thread only.
class ContactsDatabase {
 public:
  virtual ~ContactsDatabase() = default;
  /// Null when there is no database of this name or it may not be read.
  virtual std::unique_ptr<ContactsTable> Open(std::u16string_view name) = 0;
};

}  // namespace celldesk

#pragma once

#include <optional>
#include <string_view>

#include "platform/contacts_database.h"
#include "platform/vdir/vcard_lines.h"

namespace celldesk {

/// Reads contacts from the bytes of a vCard file (versions 2.1, 3.0 and 4.0). Any bytes are taken, in time
/// and memory in proportion to their number. Only whole vCards count: one whose end is missing, because its
/// file was cut short, could hold half a number.
class VcardReader {
 public:
  /// `bytes` is borrowed for the object's life.
  explicit VcardReader(std::string_view bytes) : lines_(bytes) {}

  /// The properties of the next vCard, none of them empty; none after the last. A vCard inside another (the
  /// agent of vCard 2.1) is passed over.
  std::optional<ContactRecord> Next();

 private:
  VcardLines lines_;
};

}  // namespace celldesk

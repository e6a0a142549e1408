#pragma once

#include <span>
#include <string>
#include <string_view>

#include "platform/contacts_database.h"

namespace celldesk {

/// True when a vCard has a place for each of the properties.
bool CanWriteVcard(std::span<const ContactProperty> properties);

/// A vCard 3.0 (RFC 2426) in UTF-8 with these properties, each at most once, and the unique identifier `uid`.
/// Without a file-as name the formatted name is made of the name parts, else it is the company or a number.
/// Line ends in a text stay; other control characters become blanks.
std::string WriteVcard(std::span<const ContactProperty> properties, std::string_view uid);

}  // namespace celldesk

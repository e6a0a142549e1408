#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/vdir/vcard_reader.h"

namespace celldesk {

/// A vCard with these lines, which end in LF.
inline std::string Vcard(std::string_view lines, std::string_view version = "3.0") {
  return "BEGIN:VCARD\r\nVERSION:" + std::string(version) + "\r\n" + std::string(lines) + "END:VCARD\r\n";
}

inline std::vector<ContactRecord> ReadVcards(std::string_view bytes) {
  std::vector<ContactRecord> contacts;
  VcardReader reader(bytes);
  while (auto contact = reader.Next()) contacts.push_back(std::move(*contact));
  return contacts;
}

}  // namespace celldesk

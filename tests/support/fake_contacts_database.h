#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/contacts_database.h"

namespace celldesk {

/// Contacts databases in memory, by name. A record is a list of properties as it was appended.
class FakeContactsDatabase : public ContactsDatabase {
 public:
  using Records = std::vector<ContactRecord>;

  std::unique_ptr<ContactsTable> Open(std::u16string_view name) override;

  std::map<std::u16string, Records, std::less<>> databases;
  bool can_open = true;
  bool can_count = true;
  std::optional<int> readable;                           ///< records beyond this many cannot be read
  std::optional<int> appendable;                         ///< so many more appends succeed, then none
  std::vector<std::vector<ContactPropertyId>> requests;  ///< of every ReadNext
  int opened = 0;                                        ///< tables opened so far
  int open_tables = 0;                                   ///< open now
};

}  // namespace celldesk

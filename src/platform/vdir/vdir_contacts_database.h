#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/contacts_database.h"
#include "platform/whole_files.h"

namespace celldesk {

/// Contacts as one vCard file each in a folder ("vdir"), which other address books and synchronisers share.
/// The database's name is the folder's path. Files are only ever added: one that is there is never changed.
class VdirContactsDatabase : public ContactsDatabase {
 public:
  /// Gives a unique identifier for each new contact; empty when none can be had.
  using MakeUid = std::function<std::string()>;

  /// `files` is borrowed for the life of the object and its tables.
  explicit VdirContactsDatabase(WholeFiles& files);
  VdirContactsDatabase(WholeFiles& files, MakeUid make_uid);

  std::unique_ptr<ContactsTable> Open(std::u16string_view name) override;

 private:
  WholeFiles& files_;
  MakeUid make_uid_;
};

}  // namespace celldesk

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "platform/contacts_database.h"
#include "platform/file.h"
#include "platform/file_adder.h"

namespace celldesk {

/// Contacts as vCard files in a folder ("vdir"), which other address books and synchronisers share. The
/// database's name is the folder's path. Files are only ever added: one that is there is never changed.
class VdirContactsDatabase : public ContactsDatabase {
 public:
  /// Gives a unique identifier for a new contact; empty when none can be had.
  using MakeUid = std::function<std::string()>;

  /// `files` and `adder` are borrowed for the life of the object and its tables.
  VdirContactsDatabase(FileSystem& files, FileAdder& adder);
  VdirContactsDatabase(FileSystem& files, FileAdder& adder, MakeUid make_uid);

  /// The table's count is that of the files; one that turns out to hold no vCard is passed over.
  std::unique_ptr<ContactsTable> Open(std::u16string_view name) override;

 private:
  FileSystem& files_;
  FileAdder& adder_;
  MakeUid make_uid_;
};

}  // namespace celldesk

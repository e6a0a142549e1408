#pragma once

#include <string>
#include <utility>
#include <vector>

#include "data/safety_copies.h"
#include "ui/program_services.h"

namespace celldesk {

class AddressBookView;
class SmsFolderView;

/// Copies what the folders hold into the backups folder of the user's data, before a command replaces or
/// empties it or changes the phone. A copy that cannot be written stops nothing.
class FolderCopies {
 public:
  explicit FolderCopies(const ProgramServices& services);

  /// The folders to be copied; borrowed for the object's life.
  void AddBook(const AddressBookView& view) { books_.push_back(&view); }
  void AddMessages(const SmsFolderView& view) { folders_.push_back(&view); }

  /// Copies every folder with content.
  void Save();
  /// What to tell about the first copy that could not be written, once; otherwise empty.
  std::u16string TakeNotice() { return std::exchange(notice_, {}); }

 private:
  std::vector<CopySource> Sources() const;

  ProgramServices services_;
  SafetyCopies copies_;
  std::vector<const AddressBookView*> books_;
  std::vector<const SmsFolderView*> folders_;
  std::u16string notice_;
  bool failed_ = false;
};

}  // namespace celldesk

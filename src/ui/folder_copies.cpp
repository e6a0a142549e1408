#include "ui/folder_copies.h"

#include <algorithm>

#include "data/address_book_file.h"
#include "platform/locale.h"
#include "platform/shell.h"
#include "ui/address_book_view.h"
#include "ui/commands.h"
#include "ui/file_errors.h"
#include "ui/resources/resources.h"
#include "ui/sms_exchange.h"
#include "ui/sms_folder_view.h"
#include "util/text.h"

namespace celldesk {
namespace {

constexpr std::u16string_view kBackups = u"/backups";

bool HasEntries(const AddressBook& book) {
  return std::ranges::any_of(book.entries(), &AddressEntry::is_occupied);
}

}  // namespace

FolderCopies::FolderCopies(const ProgramServices& services)
    : services_(services), copies_(services.files, services.shell.DataFolder() + std::u16string(kBackups)) {}

void FolderCopies::Save() {
  const Status status = copies_.Save(Sources(), services_.locale.Now(true));
  if (!Failed(status) || failed_) return;
  failed_ = true;
  notice_ = Format(LoadString(text::kNoCopy), {FileErrorText(status)});
}

std::vector<CopySource> FolderCopies::Sources() const {
  std::vector<CopySource> sources;
  FileSystem& files = services_.files;
  for (const AddressBookView* view : books_) {
    if (!HasEntries(view->book())) continue;
    sources.push_back({view->title() + u".adr", [&files, view](std::u16string_view path) {
                         return WriteAddressBookFile(files, path, view->book());
                       }});
  }
  for (const SmsFolderView* view : folders_) {
    if (MessagesOf(*view).empty()) continue;
    sources.push_back({view->title() + u".sms", [&files, view](std::u16string_view path) {
                         return WriteSmsFile(files, path, view->title(), MessagesOf(*view), LoadString);
                       }});
  }
  return sources;
}

}  // namespace celldesk

#include "ui/address_book_exchange.h"

#include "data/address_book_file.h"
#include "data/book_copy.h"
#include "platform/contacts_database.h"
#include "ui/address_book_view.h"
#include "ui/commands.h"
#include "ui/file_errors.h"
#include "ui/framework/file_dialog.h"
#include "ui/import_options.h"
#include "ui/questions.h"
#include "ui/resources/resources.h"
#include "util/text.h"

namespace celldesk {
namespace {

/// Places in the lists of choices. Of the imports the even ones replace the book, the odd ones add to it.
enum ImportChoice { kLoadFromFile, kAddFromFile, kImportContacts, kAddContacts, kImportBook, kAddBook };
enum ExportChoice { kSaveToFile, kSaveToContacts, kAddToBook };

constexpr std::u16string_view kExtension = u"adr";

FileQuestion QuestionFor(FileDialogKind kind) {
  return {kind, LoadString(text::kBookFilter), std::u16string(kExtension)};
}

}  // namespace

void AddressBookExchange::Import() {
  Window& owner = frame_.window();
  if (view_.book().IsModified() && !Ask(owner, LoadString(text::kBookChanged), BoxIcon::kWarning)) return;
  const std::u16string& partner = partner_.book().memory().name;
  const auto choice =
      ImportOptions(Format(LoadString(text::kImportChoices), {partner, partner})).Choose(owner);
  if (!choice) return;
  switch (*choice) {
    case kLoadFromFile:
    case kAddFromFile:
      return LoadFile(*choice == kLoadFromFile);
    case kImportContacts:
    case kAddContacts:
      return LoadContacts(*choice == kImportContacts);
    case kImportBook:
      view_.EmptyBook();
      return Copy(partner_, view_);
    case kAddBook:
      return Copy(partner_, view_);
    default:
      return;
  }
}

void AddressBookExchange::Export() {
  const std::u16string& partner = partner_.book().memory().name;
  const auto choice =
      ImportOptions(Format(LoadString(text::kExportChoices), {partner})).Choose(frame_.window());
  if (!choice) return;
  switch (*choice) {
    case kSaveToFile:
      return SaveFile();
    case kSaveToContacts:
      return SaveContacts();
    case kAddToBook:
      return Copy(view_, partner_);
    default:
      return;
  }
}

// The reader asks for its target once it knows the file for an address book.
void AddressBookExchange::LoadFile(bool replace) {
  const auto path = ChooseFile(&frame_.window(), QuestionFor(FileDialogKind::kOpen));
  if (!path) return;
  const Status status = ReadAddressBookFile(services_.files, *path, [&](std::u16string_view /*memory*/) {
    if (replace) view_.EmptyBook();
    view_.MarkChanged();
    return AddressBookTarget{&view_.book(), &view_};
  });
  TellFileError(frame_.window(), status, *path);
}

void AddressBookExchange::SaveFile() {
  const auto path = ChooseFile(&frame_.window(), QuestionFor(FileDialogKind::kSave));
  if (!path) return;
  TellFileError(frame_.window(), WriteAddressBookFile(services_.files, *path, view_.book()), *path);
}

bool AddressBookExchange::HasContacts() {
  const std::u16string name = ContactsDatabaseName(services_.registry);
  const auto table = name.empty() ? nullptr : services_.contacts.Open(name);
  return table != nullptr && table->Count().has_value();
}

void AddressBookExchange::LoadContacts(bool replace) {
  if (!HasContacts()) return;
  if (replace) view_.EmptyBook();
  view_.MarkChanged();
  ImportFromContacts(services_.registry, services_.contacts, view_.book(), {view_, *this});
}

void AddressBookExchange::SaveContacts() {
  ExportToContacts(services_.registry, services_.contacts, view_.book(), {view_, *this});
}

void AddressBookExchange::Copy(AddressBookView& source, AddressBookView& destination) {
  destination.MarkChanged();
  const Status status =
      CopyEntries(source.book(), source.SelectedPositions(), destination.book(), destination);
  TellFileError(frame_.window(), status, {});
}

void AddressBookExchange::OpenProgress(ContactsTransfer transfer, int lowest, int highest) {
  const std::u16string title =
      LoadString(transfer == ContactsTransfer::kExport ? text::kExportingBook : text::kLoadingBook);
  progress_.Create(&frame_.window());
  progress_.SetCaption(title);
  progress_.SetLine(title);
  progress_.SetRange(lowest, highest);
  progress_.SetPosition(lowest);
}

void AddressBookExchange::AdvanceProgress() { progress_.SetPosition(-1); }
void AddressBookExchange::CloseProgress() { progress_.Close(); }

}  // namespace celldesk

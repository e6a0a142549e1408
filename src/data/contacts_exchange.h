#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "data/address_book.h"
#include "data/row_observer.h"
#include "platform/contacts_database.h"
#include "platform/registry.h"
#include "util/status.h"

namespace celldesk {

/// Where the name of the contacts database is kept: a string under this key of the local machine.
inline constexpr std::u16string_view kContactsDatabaseKey = u"\\Explorer\\Database";
inline constexpr std::u16string_view kContactsDatabaseValue = u"ContactsDatabase";

/// The name of the contacts database; empty when there is none.
std::u16string ContactsDatabaseName(Registry& registry);
/// Stores the name that `make_name` gives unless a value, even an empty one, is there already; without
/// calling it then. An empty name is not stored. The system's error code as a status.
Status OfferContactsDatabase(Registry& registry, const std::function<std::u16string()>& make_name);

enum class ContactsTransfer {
  kExport,  ///< "Exporting address book..."
  kImport,  ///< "Loading address book..."
};

/// The progress window of an exchange; every change shows at once. Between Open and Close only.
class ContactsProgress {
 public:
  virtual ~ContactsProgress() = default;
  /// Opens under the title of `transfer`, at `lowest`; the range of an empty book ends before it begins.
  virtual void OpenProgress(ContactsTransfer transfer, int lowest, int highest) = 0;
  /// One step further.
  virtual void AdvanceProgress() = 0;
  virtual void CloseProgress() = 0;
};

/// The list that shows the book, which repaints after every 6th step, and the progress window.
struct ContactsExchangeView {
  RowObserver& list;
  ContactsProgress& progress;
};

/// Writes every entry that `book` holds as a new contact: the name as surname and file-as name, the number as
/// mobile number. Contacts that are there are never looked at, so a second export doubles them. Nothing is
/// reported: without a database nothing happens, a failed write ends the export and the contacts written
/// before stay.
void ExportToContacts(Registry& registry, ContactsDatabase& database, const AddressBook& book,
                      ContactsExchangeView view);

/// Adds every contact with a number of at least 4 characters to the book's free slots and tells the list of
/// each. The id of a new entry is its position, not its index: item assignment numbers it before an upload.
/// Nothing is reported: without a database nothing happens, a record that cannot be read ends the import, and
/// so does a book that cannot grow any further.
void ImportFromContacts(Registry& registry, ContactsDatabase& database, AddressBook& book,
                        ContactsExchangeView view);

}  // namespace celldesk

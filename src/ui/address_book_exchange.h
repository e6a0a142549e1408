#pragma once

#include "data/contacts_exchange.h"
#include "ui/framework/progress_dialog.h"
#include "ui/program_services.h"

namespace celldesk {

class AddressBookView;
class FrameServices;

/// Import and Export of an address book folder: from and to files, the contacts database and the other book.
/// Made for one command.
class AddressBookExchange : private ContactsProgress {
 public:
  /// All are borrowed for the object's life; `partner` is the other address book folder.
  AddressBookExchange(FrameServices& frame, const ProgramServices& services, AddressBookView& view,
                      AddressBookView& partner)
      : frame_(frame), services_(services), view_(view), partner_(partner) {}

  /// Asks about unsaved changes, then where from. What is in the book goes only once there is something to
  /// replace it: a cancelled dialog, a file that cannot be used and a missing database leave it alone.
  void Import();
  /// Asks where to.
  void Export();

 private:
  void LoadFile(bool replace);
  void SaveFile();
  void LoadContacts(bool replace);
  void SaveContacts();
  bool HasContacts();
  void Copy(AddressBookView& source, AddressBookView& destination);

  void OpenProgress(ContactsTransfer transfer, int lowest, int highest) override;
  void AdvanceProgress() override;
  void CloseProgress() override;

  FrameServices& frame_;
  ProgramServices services_;
  AddressBookView& view_;
  AddressBookView& partner_;
  ProgressDialog progress_;
};

}  // namespace celldesk

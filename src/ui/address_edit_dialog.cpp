#include "ui/address_edit_dialog.h"

#include "data/entry_editing.h"
#include "ui/resources/resources.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 200;
constexpr int kName = 1001, kNumber = 1002, kAssignment = 1003;

}  // namespace

AddressEditDialog::AddressEditDialog(const AddressBook& book, const AddressEntry& entry, int title)
    : Dialog(kTemplate), book_(book), entry_(entry), title_(title) {}

bool AddressEditDialog::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  SetTitle(LoadString(title_));
  SetLimit(kName, NameLimit(book_));
  SetLimit(kNumber, NumberLimit(book_));
  FillAssignments();
  UpdateData(false);
  FocusControl(kName);
  return false;
}

// An entry whose id is not offered (its slot is another's, or none of the memory's) begins without a choice.
void AddressEditDialog::FillAssignments() {
  int own = -1;
  for (const std::u16string& id : AssignableIds(book_, entry_.id)) {
    AddChoice(kAssignment, id, 0);
    if (id == entry_.id) own = ChoiceCount(kAssignment) - 1;
  }
  SelectChoice(kAssignment, own);
}

bool AddressEditDialog::UpdateData(bool save) {
  if (save) return TakeFields(entry_, Text(kAssignment), Text(kName), Text(kNumber));
  SetText(kName, entry_.name);
  SetText(kNumber, entry_.number);
  return true;
}

// An entry without name and number counts as Cancel.
void AddressEditDialog::OnCommand(int command, LongParameter parameter) {
  if (command == kIdOk) {
    EndDialog(UpdateData(true) ? kIdOk : kIdCancel);
    return;
  }
  Dialog::OnCommand(command, parameter);
}

}  // namespace celldesk

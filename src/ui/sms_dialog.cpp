#include "ui/sms_dialog.h"

#include <algorithm>

#include "ui/commands.h"
#include "ui/framework/application.h"
#include "ui/framework/menu_state.h"
#include "ui/resources/resources.h"
#include "ui/sms_folder_view.h"
#include "util/text.h"

namespace celldesk {

SmsDialog::SmsDialog(int template_number, SmsFolderView& folder, int row)
    : Dialog(template_number), folder_(folder), row_(row) {}

bool SmsDialog::OnInitDialog(int /*focus*/, LongParameter /*parameter*/) {
  if (HasRow()) SelectRow();
  ShowMessage();
  return true;
}

void SmsDialog::OnCommand(int command, LongParameter parameter) {
  switch (command) {
    case command::kNext:
      Step(1);
      break;
    case command::kPrevious:
      Step(-1);
      break;
    case command::kDelete:
      if (HasRow()) Delete();
      break;
    default:
      Dialog::OnCommand(command, parameter);
      break;
  }
}

// The settings must not change under a message that is being written.
void SmsDialog::OnInitMenuPopup(MenuState& menu, int /*index*/) {
  for (const int command : {command::kNext, command::kPrevious, command::kDelete}) {
    menu.Enable(command, HasRow());
  }
  menu.Enable(command::kSettings, false);
}

SmsMessage& SmsDialog::message() { return folder_.MessageAt(row_); }

std::u16string SmsDialog::CounterText(std::size_t length) {
  return Format(LoadString(text::kCounter), {static_cast<int>(length), kTextLimit});
}

void SmsDialog::SelectRow() {
  ListView& list = folder_.list();
  list.ClearSelection();
  list.Select(row_, true);
  list.SetFocusedRow(row_);
}

void SmsDialog::Step(int by) {
  if (!HasRow()) return;
  const int next = row_ + by;
  if (next < 0 || next >= folder_.list().RowCount()) {
    Application::Get()->Beep();
    return;
  }
  row_ = next;
  SelectRow();
  ShowMessage();
}

void SmsDialog::Delete() {
  const int rows = folder_.list().RowCount();
  if (!folder_.DeleteSelected(*this)) {
    MoveOnAfterRefusal();
  } else if (folder_.list().RowCount() < rows) {
    ShowWhatTookItsPlace();
  } else {
    ShowMessage();
  }
}

// A refused deletion moves on, an accepted one stays: this pairing is intended.
void SmsDialog::MoveOnAfterRefusal() {
  const bool is_last = row_ + 1 >= folder_.list().RowCount();
  if (is_last && row_ == 0) {
    EndDialog(kIdCancel);
  } else {
    Step(is_last ? -1 : 1);
  }
}

// A new message is gone at once; its row shows the one behind it now.
void SmsDialog::ShowWhatTookItsPlace() {
  row_ = std::min(row_, folder_.list().RowCount() - 1);
  if (!HasRow()) {
    EndDialog(kIdCancel);
    return;
  }
  SelectRow();
  ShowMessage();
}

}  // namespace celldesk

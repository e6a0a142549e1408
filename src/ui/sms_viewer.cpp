#include "ui/sms_viewer.h"

#include "ui/commands.h"
#include "ui/framework/command_surface.h"
#include "ui/sms_columns.h"
#include "ui/sms_folder_view.h"

namespace celldesk {
namespace {

constexpr int kTemplate = 202, kMenu = 198;
constexpr int kDate = 1001, kFrom = 1002, kBody = 1003, kCounter = 1004;

}  // namespace

SmsViewer::SmsViewer(SmsFolderView& folder, int row) : SmsDialog(kTemplate, folder, row) {}

bool SmsViewer::OnInitDialog(int focus, LongParameter parameter) {
  Surface().SetMenu(kMenu);
  Surface().SetCommandBar(text::kViewerToolTips);
  SmsDialog::OnInitDialog(focus, parameter);
  FocusControl(kBody);
  return false;
}

void SmsViewer::OnCommand(int command, LongParameter parameter) {
  if (command == command::kReply || command == command::kForward) {
    EndDialog(command);
  } else {
    SmsDialog::OnCommand(command, parameter);
  }
}

void SmsViewer::ShowMessage() {
  const std::size_t record = folder().list().RecordAt(row());
  std::u16string buffer;
  SetText(kDate, folder().ColumnText(record, SmsColumns::kDate, buffer));
  SetText(kFrom, folder().ColumnText(record, SmsColumns::kNumber, buffer));
  const std::u16string body(folder().ColumnText(record, SmsColumns::kBody, buffer));
  SetText(kBody, body);
  SetText(kCounter, CounterText(body.size()));
  const bool marked = (message().flags & kMessageToDelete) != 0;
  for (const int field : {kDate, kFrom, kBody}) {
    SetControlFont(field, folder().fonts(), marked ? FontRole::kFieldStruckOut : FontRole::kField);
  }
  message().flags &= ~kMessageNotOpened;
  folder().list().Redraw(row());
}

}  // namespace celldesk

#pragma once

#include "ui/sms_dialog.h"

namespace celldesk {

/// Shows the received messages of a folder one by one, read-only. Ends with OK, Cancel, Reply or Forward.
class SmsViewer : public SmsDialog {
 public:
  SmsViewer(SmsFolderView& folder, int row);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;

 protected:
  void ShowMessage() override;
};

}  // namespace celldesk

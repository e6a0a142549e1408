#pragma once

#include <cstddef>

#include "pdu/sms_message.h"
#include "ui/framework/dialog.h"

namespace celldesk {

class SmsFolderView;

/// What viewer and editor share: they show the selected message of a folder, step through its list and mark
/// its messages for deletion.
class SmsDialog : public Dialog {
 public:
  /// Longest text of one message.
  static constexpr int kTextLimit = 160;

  /// `row` is a row of the folder's list, or -1 for a message that is not in it. The folder is borrowed for
  /// the dialog's life.
  SmsDialog(int template_number, SmsFolderView& folder, int row);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;

 protected:
  /// Shows the message of the present row in the controls.
  virtual void ShowMessage() = 0;

  SmsFolderView& folder() const { return folder_; }
  int row() const { return row_; }
  bool HasRow() const { return row_ >= 0; }
  /// The present row's message; there is one.
  SmsMessage& message();
  /// "%i/160" for a text of this length.
  static std::u16string CounterText(std::size_t length);

 private:
  void SelectRow();
  void Step(int by);
  void Delete();
  void MoveOnAfterRefusal();
  void ShowWhatTookItsPlace();

  SmsFolderView& folder_;
  int row_;
};

}  // namespace celldesk

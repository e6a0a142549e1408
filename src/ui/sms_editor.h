#pragma once

#include "ui/sms_dialog.h"
#include "ui/sms_editor_state.h"

namespace celldesk {

/// Writes a message to send: a new one, or the messages of the Outbox one by one. Ends with OK, Cancel, Send
/// or Save.
class SmsEditor : public SmsDialog {
 public:
  /// For the folder's message in `row`.
  SmsEditor(SmsFolderView& folder, int row);
  /// For a new message.
  SmsEditor(SmsFolderView& folder, const SmsDraft& draft);

  bool OnInitDialog(int focus, LongParameter parameter) override;
  void OnCommand(int command, LongParameter parameter) override;
  MessageResult OnNotify(int control_id, const Notification& notification) override;
  void OnInitMenuPopup(MenuState& menu, int index) override;
  /// Takes the fields into the state, or shows the state in them.
  bool UpdateData(bool save) override;

 protected:
  void ShowMessage() override;

 private:
  void MakeChoices();
  bool OffersMemory(int memory) const;
  bool CanSave() const;
  void ShowRecipient();
  void ShowSaveTo();
  void ShowTextFacts();
  void EnableFields();
  void DropName();
  void TakeChange(int control_id);
  void ChooseAddress();

  void Finish(int command);
  bool IsUsable();
  bool MakeMessage();
  void Complete(SmsMessage& message, int command);

  SmsEditorState state_;
  bool showing_ = false;  // fields change because the state is shown, not because the user types
};

}  // namespace celldesk

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ui/sms/sms_window.h"

namespace celldesk {

inline void Give(Dialog& dialog, int command) {
  dialog.Dispatch(Message::kCommand, static_cast<WordParameter>(command), 0);
}

inline std::string BodyOf(Dialog& dialog) { return TextOf(dialog, editor::kBody); }
inline std::string RecipientOf(Dialog& dialog) { return TextOf(dialog, editor::kRecipient); }

inline std::string ChosenText(Dialog& dialog, int id) {
  return Utf8(dialog.ChoiceText(id, dialog.SelectedChoice(id)));
}

/// The Outbox loaded.
class EditorWindow : public SmsWindow {
 public:
  explicit EditorWindow(simulator::PhoneMemory memory = PhoneWithMessages(), simulator::Profile profile = {})
      : SmsWindow(std::move(memory), std::move(profile)) {
    LoadNames();
    Load();
    ShowFolder(kOutboxTab);
    TakePhoneLines();
  }
  void Open(int row, const Work& work) {
    Select(outbox(), {row});
    InDialog(command::kOpen, work);
  }
  void New(const Work& work) { InDialog(command::kNew, work); }
  /// A new message with these contents, ended by `command`.
  void Write(const QString& number, const QString& text, int command) {
    New([&](Dialog& dialog) {
      TypeText(dialog, editor::kRecipient, number);
      TypeText(dialog, editor::kBody, text);
      Give(dialog, command);
    });
  }
  SmsMessage& Last() { return outbox().MessageAt(outbox().list().RowCount() - 1); }
};

inline simulator::PhoneMemory PhoneWithOutgoing(const std::vector<simulator::StoredMessage>& sim,
                                                const std::vector<simulator::StoredMessage>& phone = {}) {
  simulator::PhoneMemory memory = PhoneWith({{1, "+447700900101", u"Anna"}});
  int index = 0;
  for (const auto& message : sim) Put(memory, "SM", ++index, message);
  index = 0;
  for (const auto& message : phone) Put(memory, "ME", ++index, message);
  return memory;
}

}  // namespace celldesk

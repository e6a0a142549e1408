#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "ui/commands.h"
#include "ui/sms/sample_messages.h"
#include "ui/user_actions.h"
#include "ui/window_session.h"

namespace celldesk {

/// Controls of viewer, editor and chooser.
namespace viewer {
inline constexpr int kDate = 1001, kFrom = 1002, kBody = 1003, kCounter = 1004;
}
namespace editor {
inline constexpr int kRecipient = 1001, kBrowse = 1002, kBody = 1003, kCounter = 1004, kReading = 1005,
                     kNoValidity = 1010, kRelative = 1011, kRelativeChoice = 1012, kAbsolute = 1013,
                     kAbsoluteTime = 1014, kReplyPath = 1015, kReport = 1016, kSaveTo = 1053;
}
namespace chooser {
inline constexpr int kList = 1001;
}

/// The window on a phone with messages: connected, the Inbox shown.
class SmsWindow : public WindowSession {
 public:
  using Work = std::function<void(Dialog& dialog)>;

  explicit SmsWindow(simulator::PhoneMemory memory = PhoneWithMessages(), simulator::Profile profile = {});

  SmsFolderView& inbox() { return frame().inbox(); }
  SmsFolderView& outbox() { return frame().outbox(); }
  SmsStore& messages() { return inbox().sms().messages(); }
  /// Loads what the shown folder shows.
  void Load() { Command(command::kLoadData); }
  /// The SIM book too, for the names.
  void LoadNames();
  /// Gives the command with this answer to its first question.
  void CommandAnswering(int command, int answer);
  void Select(SmsFolderView& folder, const std::vector<int>& rows);

  /// "M|number|date|text" of every row, in display order.
  static std::vector<std::string> Rows(SmsFolderView& folder);
  static std::string Cell(SmsFolderView& folder, int row, int column);
  std::vector<std::string> InboxTexts() { return Column(inbox(), 3); }
  std::vector<std::string> OutboxTexts() { return Column(outbox(), 3); }
  static std::vector<std::string> Column(SmsFolderView& folder, int column);
  /// The flag word of a row's message.
  static std::uint32_t Flags(SmsFolderView& folder, int row) { return folder.MessageAt(row).flags; }

  /// Gives the command and works the dialog that it opens; the test fails when none opens. A dialog that is
  /// left open is cancelled.
  void InDialog(int command, const Work& work);
  /// The same for a dialog that `action` opens.
  void InDialog(const std::function<void()>& action, const Work& work);

  /// Lines the phone received since the last call.
  std::vector<std::string> TakePhoneLines();
  const BoxQuestion& LastBox() { return boxes.asked().back(); }
  /// Bodies the network saw, in order.
  std::vector<std::string> SentBodies();
  int beeps() { return application->beeps(); }
  std::string StatusLine() { return Utf8(frame().StatusText()); }

 private:
  std::size_t lines_seen_ = 0;
};

/// Picks an entry of a choice list as a user does.
void PickChoice(const Window& window, int id, int index);
/// Types into a text field, behind what is there.
void TypeText(const Window& window, int id, const QString& text);
/// Clicks a check box or radio button.
void ClickSwitch(const Window& window, int id);
/// The font of a control: "plain", "struck", "underlined".
std::string FontName(const Window& window, int id);
/// Saves a picture of the window when the environment names a folder (CELLDESK_SCREENSHOTS).
void Photograph(const Window& window, const QString& name);

/// "text" of a control in UTF-8.
std::string TextOf(const Dialog& dialog, int id);

}  // namespace celldesk

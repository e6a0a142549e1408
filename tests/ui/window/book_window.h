#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "ui/commands.h"
#include "ui/user_actions.h"
#include "ui/window_session.h"

namespace celldesk {

/// The program's caption, which every box carries but the communication error.
inline constexpr std::u16string_view kProgramCaption = u"Corvane Cell Desk";
inline constexpr std::u16string_view kCommunicationCaption = u"Communication error";

/// A question with Yes and No as it is to look.
MATCHER_P3(IsQuestion, text, icon, default_no, "") {
  return Utf8(arg.text) == text && arg.icon == icon && arg.default_no == default_no &&
         arg.buttons == BoxButtons::kYesNo && arg.caption == kProgramCaption;
}

/// An error under the program's caption.
MATCHER_P(IsErrorBox, text, "") {
  return Utf8(arg.text) == text && arg.icon == BoxIcon::kStop && arg.buttons == BoxButtons::kOk &&
         arg.caption == kProgramCaption;
}

/// The phone's last line after a failed procedure.
MATCHER_P(IsCommunicationError, text, "") {
  return Utf8(arg.text) == text && arg.icon == BoxIcon::kInformation && arg.buttons == BoxButtons::kOk &&
         arg.caption == kCommunicationCaption;
}

/// The window with a connected phone, whose SIM entries are in the first folder when loaded.
class BookWindow : public WindowSession {
 public:
  explicit BookWindow(simulator::PhoneMemory memory = {}, simulator::Profile profile = {})
      : WindowSession(std::move(memory), std::move(profile)) {
    if (!Start()) return;
    Command(command::kConnect);
    TakeAsked();
  }

  /// Loads the book of the folder that is shown.
  void Load() {
    Command(command::kLoadData);
    phone_lines_ = phone().received_lines().size();
  }
  /// Asks everything with this answer, then gives the command.
  void CommandAnswering(int command, int answer) {
    boxes.Answer(answer);
    Command(command);
  }
  /// Lines the phone received since the last call or Load.
  std::vector<std::string> TakePhoneLines() {
    const auto& all = phone().received_lines();
    std::vector<std::string> news(all.begin() + static_cast<std::ptrdiff_t>(phone_lines_), all.end());
    phone_lines_ = all.size();
    return news;
  }
  /// The "AT+CPBW" lines among them.
  std::vector<std::string> TakeWrites() {
    std::vector<std::string> writes;
    for (std::string& command : TakePhoneLines())
      if (command.starts_with("AT+CPBW=")) writes.push_back(std::move(command));
    return writes;
  }
  /// Whether the menu gives this command now.
  bool IsEnabled(int command) { return frame().Surface().QueryState().IsEnabled(command); }
  /// "location|name|number" of a memory of the phone.
  std::vector<std::string> PhoneEntries(std::string_view memory) {
    std::vector<std::string> entries;
    for (const auto& [location, entry] : phone().memory().FindPhonebook(memory)->entries)
      entries.push_back(std::to_string(location) + "|" + Utf8(entry.name) + "|" + entry.number);
    return entries;
  }
  const BoxQuestion& LastBox() { return boxes.asked().back(); }
  std::vector<std::string> SimRows() { return Rows(sim()); }
  AddressEntry& SimEntry(int position) { return sim().book().At(position); }

 private:
  std::size_t phone_lines_ = 0;
};

/// Controls of the edit dialog.
namespace edit_dialog {
inline constexpr int kName = 1001, kNumber = 1002, kMemory = 1003;
}

inline simulator::PhoneMemory ThreeEntries(int last = 5) {
  return PhoneWith({{1, "+447700900101", u"Anna"}, {2, "112", u"Bert"}, {4, "0044", u"Carl"}}, last);
}

}  // namespace celldesk

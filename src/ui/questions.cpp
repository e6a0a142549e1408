#include "ui/questions.h"

#include "link/at_engine.h"
#include "ui/commands.h"
#include "ui/resources/resources.h"

namespace celldesk {

bool Ask(Window& owner, std::u16string_view text, BoxIcon icon, bool default_no) {
  return ShowMessageBox(&owner, {std::u16string(text), {}, BoxButtons::kYesNo, icon, default_no}) ==
         kAnswerYes;
}

void Tell(Window& owner, std::u16string_view text, BoxIcon icon) {
  ShowMessageBox(&owner, {std::u16string(text), {}, BoxButtons::kOk, icon, false});
}

std::u16string LastErrorText(AtEngine& engine) {
  const std::u16string_view line = engine.response().text();
  return line.empty() ? LoadString(text::kNoAnswer) : std::u16string(line);
}

void TellCommunicationError(Window& owner, AtEngine& engine) {
  ShowMessageBox(&owner, {LastErrorText(engine), LoadString(text::kCommunicationError), BoxButtons::kOk,
                          BoxIcon::kInformation, false});
}

}  // namespace celldesk

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

void TellCommunicationError(Window& owner, AtEngine& engine) {
  std::u16string line(engine.response().text());
  if (line.empty()) line = LoadString(text::kNoAnswer);
  ShowMessageBox(
      &owner, {line, LoadString(text::kCommunicationError), BoxButtons::kOk, BoxIcon::kInformation, false});
}

}  // namespace celldesk

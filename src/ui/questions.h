#pragma once

#include <string>
#include <string_view>

#include "ui/framework/message_box.h"

namespace celldesk {

class AtEngine;
class Window;

/// Asks with Yes and No under the program's caption; true on Yes.
bool Ask(Window& owner, std::u16string_view text, BoxIcon icon, bool default_no = false);

/// Tells something with OK under the program's caption.
void Tell(Window& owner, std::u16string_view text, BoxIcon icon);

/// The phone's last line, or, when it never said anything, that it does not answer.
std::u16string LastErrorText(AtEngine& engine);

/// After a failed phone procedure: LastErrorText under "Communication error".
void TellCommunicationError(Window& owner, AtEngine& engine);

}  // namespace celldesk

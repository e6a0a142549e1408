#pragma once

#include <string_view>

#include "ui/framework/message_box.h"

namespace celldesk {

class AtEngine;
class Window;

/// Asks with Yes and No under the program's caption; true on Yes.
bool Ask(Window& owner, std::u16string_view text, BoxIcon icon, bool default_no = false);

/// Tells something with OK under the program's caption.
void Tell(Window& owner, std::u16string_view text, BoxIcon icon);

/// After a failed phone procedure: the phone's last line under "Communication error", or, when it never said
/// anything, that it does not answer.
void TellCommunicationError(Window& owner, AtEngine& engine);

}  // namespace celldesk

#pragma once

#include <span>
#include <string_view>

#include "simulator/phone.h"

namespace celldesk::simulator {

struct CommandEntry {
  std::string_view name;
  Reply (*handle)(Phone& phone, const Command& command);
};

std::span<const CommandEntry> BasicCommands();
std::span<const CommandEntry> IdentityCommands();
std::span<const CommandEntry> NetworkCommands();
std::span<const CommandEntry> PhonebookCommands();
std::span<const CommandEntry> MessageSettingCommands();
std::span<const CommandEntry> MessageCommands();

/// Carries one command out; one that no table names answers an error.
Reply Execute(Phone& phone, const Command& command);

/// Carries out the commands of a line one after another until one fails; the replies become one.
Reply ExecuteLine(Phone& phone, std::string_view line);

/// Carries out the message command that asked for this body.
Reply ExecuteBody(Phone& phone, std::string_view body);

}  // namespace celldesk::simulator

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "simulator/phone_memory.h"

namespace celldesk::simulator {

/// The phone's memory as readable UTF-8 text (docs/formats/phone_state.md).
std::string SaveState(const PhoneMemory& memory);

/// The memory a text describes. Nothing when a line is not understood; `error`, when given, then names it.
std::optional<PhoneMemory> LoadState(std::string_view text, std::string* error = nullptr);

}  // namespace celldesk::simulator

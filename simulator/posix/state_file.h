#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace celldesk::simulator {

/// The whole file; nothing when there is none or it cannot be read.
std::optional<std::string> ReadFile(const std::string& path);

/// Puts the text in place of the file at one stroke: a reader sees the old text or the new one.
[[nodiscard]] bool ReplaceFile(const std::string& path, std::string_view text);

}  // namespace celldesk::simulator

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/simulated_phone.h"

namespace celldesk::simulator {

/// A phone with its echo already off.
inline SimulatedPhone QuietPhone(std::string_view profiles = "default", PhoneMemory memory = {}) {
  SimulatedPhone phone(std::move(memory), MakeProfile(profiles).value_or(Profile()));
  static_cast<void>(phone.Receive("ATE0\r"));
  return phone;
}

/// All bytes that answer a command line.
inline std::string Ask(SimulatedPhone& phone, std::string_view line) {
  return BytesOf(phone.Receive(std::string(line) + '\r'));
}

/// A command, the prompt unseen, and its body.
inline std::string AskWithBody(SimulatedPhone& phone, std::string_view line, std::string_view body) {
  static_cast<void>(Ask(phone, line));
  return BytesOf(phone.Receive(std::string(body) + '\x1A'));
}

inline const std::string kOk = "\r\nOK\r\n";
inline const std::string kError = "\r\nERROR\r\n";
inline const std::string kPrompt = "\r\n> ";

/// Information lines and OK.
inline std::string Answer(const std::vector<std::string>& lines) {
  std::string bytes = "\r\n";
  for (const std::string& line : lines) bytes += line + "\r\n";
  return bytes + kOk;
}

inline std::string CmsError(int code) { return "\r\n+CMS ERROR: " + std::to_string(code) + "\r\n"; }
inline std::string CmeError(int code) { return "\r\n+CME ERROR: " + std::to_string(code) + "\r\n"; }

}  // namespace celldesk::simulator

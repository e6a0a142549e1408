#include "simulator/command_table.h"

#include <array>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

std::array<std::span<const CommandEntry>, 6> Tables() {
  return {BasicCommands(),     IdentityCommands(),       NetworkCommands(),
          PhonebookCommands(), MessageSettingCommands(), MessageCommands()};
}

std::string Canonical(const Command& command) {
  std::string text = "AT" + command.name;
  if (command.form == CommandForm::kTest) return text + "=?";
  if (command.form == CommandForm::kRead) return text + '?';
  for (std::size_t i = 0; i < command.arguments.size(); ++i) text += (i == 0 ? "=" : ",") + command.Text(i);
  return text;
}

const std::vector<std::string>* FixedReply(const Phone& phone, const Command& command) {
  for (const auto* replies : {&phone.memory.replies, &phone.profile.replies}) {
    const auto found = replies->find(Canonical(command));
    if (found != replies->end()) return &found->second;
  }
  return nullptr;
}

Reply ListCommands() {
  std::vector<std::string> lines;
  for (const auto& table : Tables()) {
    for (const CommandEntry& entry : table) lines.push_back("AT" + std::string(entry.name));
  }
  return Ok(std::move(lines));
}

}  // namespace

Reply Execute(Phone& phone, const Command& command) {
  if (const auto* lines = FixedReply(phone, command)) return Ok(*lines);
  if (command.name == "+CLAC") return command.form == CommandForm::kTest ? Ok() : ListCommands();
  for (const auto& table : Tables()) {
    for (const CommandEntry& entry : table) {
      if (entry.name == command.name) return entry.handle(phone, command);
    }
  }
  return Error();
}

Reply ExecuteLine(Phone& phone, std::string_view line) {
  Reply all;
  for (const Command& command : ParseCommandLine(line)) {
    Reply reply = Execute(phone, command);
    all.lines.insert(all.lines.end(), reply.lines.begin(), reply.lines.end());
    all.result = reply.result;
    all.code = reply.code;
    all.wants_body = reply.wants_body;
    if (!all.ok() || all.wants_body) break;
  }
  return all;
}

}  // namespace celldesk::simulator

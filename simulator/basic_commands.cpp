#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"

namespace celldesk::simulator {
namespace {

Reply ResetSession(Phone& phone, const Command&) {
  phone.Reset();
  return Ok();
}

/// A switch of V.250: no number means 0.
Reply SetSwitch(bool& value, const Command& command) {
  const int number = command.Number(0, 0);
  if (number != 0 && number != 1) return Error();
  value = number == 1;
  return Ok();
}

Reply SetEcho(Phone& phone, const Command& command) { return SetSwitch(phone.session.echo, command); }

Reply SetVerbose(Phone& phone, const Command& command) { return SetSwitch(phone.session.verbose, command); }

Reply SetQuiet(Phone& phone, const Command& command) { return SetSwitch(phone.session.quiet, command); }

Reply ShowIdentity(Phone& phone, const Command&) {
  return Ok({phone.memory.manufacturer, phone.memory.model, phone.memory.revision});
}

Reply Accept(Phone&, const Command&) { return Ok(); }

Reply Register(Phone& phone, const Command& command) {
  std::string& value = phone.session.registers[command.name];
  if (command.form == CommandForm::kRead)
    return Ok({std::string(3 - std::min<std::size_t>(3, value.size()), '0') + value});
  const int number = command.Number(0, 0);
  if (number < 0 || number > 255) return Error();
  value = std::to_string(number);
  return Ok();
}

constexpr std::array<CommandEntry, 22> kCommands{
    {{"Z", ResetSession}, {"&F", ResetSession}, {"E", SetEcho},   {"V", SetVerbose}, {"Q", SetQuiet},
     {"I", ShowIdentity}, {"X", Accept},        {"H", Accept},    {"L", Accept},     {"M", Accept},
     {"&C", Accept},      {"&D", Accept},       {"&K", Accept},   {"&S", Accept},    {"&W", Accept},
     {"S0", Register},    {"S3", Register},     {"S4", Register}, {"S5", Register},  {"S6", Register},
     {"S7", Register},    {"S12", Register}}};

}  // namespace

std::span<const CommandEntry> BasicCommands() { return kCommands; }

}  // namespace celldesk::simulator

#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"

namespace celldesk::simulator {
namespace {

/// A number between 0 and `highest` that can be asked, listed and set.
Reply NumberSetting(const Command& command, int& value, int highest) {
  switch (command.form) {
    case CommandForm::kRead:
      return Ok({command.name + ": " + std::to_string(value)});
    case CommandForm::kTest:
      return Ok({command.name + ": (0-" + std::to_string(highest) + ')'});
    case CommandForm::kExecute:
      value = 0;
      return Ok();
    case CommandForm::kSet:
      break;
  }
  const int number = command.Number(0, 0);
  if (number < 0 || number > highest) return PhoneError(kOperationNotSupported);
  value = number;
  return Ok();
}

Reply ErrorLevel(Phone& phone, const Command& command) {
  return NumberSetting(command, phone.session.error_level, 2);
}

Reply SignalQuality(Phone&, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CSQ: (0-31,99),(99)"});
  return command.form == CommandForm::kExecute ? Ok({"+CSQ: 21,99"}) : Error();
}

Reply ShowRegistration(const Command& command, int& notice) {
  if (command.form != CommandForm::kRead) return NumberSetting(command, notice, 2);
  return Ok({command.name + ": " + std::to_string(notice) + ",1" + (notice == 2 ? R"(,"0001","0001")" : "")});
}

Reply Registration(Phone& phone, const Command& command) {
  return ShowRegistration(command, phone.session.registration_notice);
}

Reply PacketRegistration(Phone& phone, const Command& command) {
  return ShowRegistration(command, phone.session.packet_registration_notice);
}

Reply PacketAttachment(Phone&, const Command& command) {
  if (command.form == CommandForm::kRead) return Ok({"+CGATT: 0"});
  if (command.form == CommandForm::kTest) return Ok({"+CGATT: (0)"});
  return command.Number(0, kNoNumber) == 0 ? Ok() : PhoneError(kOperationNotSupported);
}

Reply Operator(Phone& phone, const Command& command) {
  constexpr std::array<std::string_view, 3> kNames{"Loopback", "Loop", "00101"};
  int& format = phone.session.operator_format;
  if (command.form == CommandForm::kRead) {
    return Ok(
        {"+COPS: 0," + std::to_string(format) + ',' + Quoted(kNames[static_cast<std::size_t>(format)])});
  }
  if (command.form == CommandForm::kTest) return Ok({R"(+COPS: (2,"Loopback","Loop","00101"),,(0-4),(0-2))"});
  const int wanted = command.Number(1, format);
  if (command.form != CommandForm::kSet || wanted < 0 || wanted > 2) return PhoneError(kOperationNotAllowed);
  format = wanted;
  return Ok();
}

Reply Pin(Phone&, const Command& command) {
  if (command.form == CommandForm::kRead) return Ok({"+CPIN: READY"});
  return command.form == CommandForm::kTest ? Ok() : PhoneError(kOperationNotAllowed);
}

Reply Functionality(Phone&, const Command& command) {
  if (command.form == CommandForm::kRead) return Ok({"+CFUN: 1"});
  if (command.form == CommandForm::kTest) return Ok({"+CFUN: (1),(0)"});
  return command.Number(0, 1) == 1 ? Ok() : PhoneError(kOperationNotSupported);
}

Reply Activity(Phone&, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CPAS: (0)"});
  return command.form == CommandForm::kExecute ? Ok({"+CPAS: 0"}) : Error();
}

Reply Battery(Phone&, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CBC: (0-3),(0-100)"});
  return command.form == CommandForm::kExecute ? Ok({"+CBC: 0,80"}) : Error();
}

Reply Clock(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok();
  if (command.form == CommandForm::kRead) return Ok({"+CCLK: " + Quoted(ClockText(phone.Time()))});
  const auto time = ParseClockText(command.Text(0));
  if (!time) return PhoneError(kInvalidText);
  phone.clock_shift += *time - phone.Time();
  return Ok();
}

Reply Characters(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({R"(+CSCS: ("GSM","UCS2","HEX","IRA"))"});
  if (command.form == CommandForm::kRead) {
    return Ok({"+CSCS: " + Quoted(CharacterSetName(phone.session.character_set))});
  }
  const auto set = ParseCharacterSet(command.Text(0));
  if (!set) return PhoneError(kOperationNotSupported);
  phone.session.character_set = *set;
  return Ok();
}

constexpr std::array<CommandEntry, 12> kCommands{{{"+CMEE", ErrorLevel},
                                                  {"+CSQ", SignalQuality},
                                                  {"+CREG", Registration},
                                                  {"+CGREG", PacketRegistration},
                                                  {"+CGATT", PacketAttachment},
                                                  {"+COPS", Operator},
                                                  {"+CPIN", Pin},
                                                  {"+CFUN", Functionality},
                                                  {"+CPAS", Activity},
                                                  {"+CBC", Battery},
                                                  {"+CCLK", Clock},
                                                  {"+CSCS", Characters}}};

}  // namespace

std::span<const CommandEntry> NetworkCommands() { return kCommands; }

}  // namespace celldesk::simulator

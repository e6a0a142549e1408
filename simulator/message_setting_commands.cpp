#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"
#include "simulator/message_memory.h"
#include "simulator/tpdu.h"

namespace celldesk::simulator {
namespace {

Reply Format(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CMGF: (0,1)"});
  if (command.form == CommandForm::kRead) return Ok({"+CMGF: " + std::to_string(phone.session.text_mode)});
  const int mode = command.Number(0, 0);
  if (mode != 0 && mode != 1) return MessageError(kMessageNotAllowed);
  phone.session.text_mode = mode == 1;
  return Ok();
}

Reply Centre(Phone& phone, const Command& command) {
  std::string& centre = phone.memory.centre;
  if (command.form == CommandForm::kTest) return Ok();
  if (command.form == CommandForm::kRead) {
    return Ok(
        {"+CSCA: " + Quoted(phone.LineNumber(centre)) + ',' + std::to_string(MakeAddress(centre).type)});
  }
  std::string number = phone.NumberText(command.Text(0));
  if (command.form != CommandForm::kSet || !IsDialNumber(number)) return MessageError(kMessageNotAllowed);
  if (command.Number(1, kNational) == kInternational && !number.starts_with('+')) number.insert(0, 1, '+');
  centre = number;
  return Ok();
}

Reply Parameters(Phone& phone, const Command& command) {
  TextParameters& text = phone.session.text;
  if (command.form == CommandForm::kTest) return Ok();
  if (command.form == CommandForm::kRead) {
    return Ok({"+CSMP: " + std::to_string(text.first_octet) + ',' + std::to_string(text.validity) + ',' +
               std::to_string(text.protocol) + ',' + std::to_string(text.coding)});
  }
  TextParameters wanted = text;
  wanted.first_octet = command.Number(0, text.first_octet);
  wanted.validity = command.Number(1, text.validity);
  wanted.protocol = command.Number(2, text.protocol);
  wanted.coding = command.Number(3, text.coding);
  for (const int octet : {wanted.first_octet, wanted.validity, wanted.protocol, wanted.coding}) {
    if (octet < 0 || octet > 255) return MessageError(kInvalidTextParameter);
  }
  if ((wanted.first_octet & 3) != 1) return MessageError(kInvalidTextParameter);
  text = wanted;
  return Ok();
}

Reply ShowHeader(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CSDH: (0,1)"});
  if (command.form == CommandForm::kRead)
    return Ok({"+CSDH: " + std::to_string(phone.session.show_text_header)});
  const int shown = command.Number(0, 0);
  if (shown != 0 && shown != 1) return MessageError(kMessageNotAllowed);
  phone.session.show_text_header = shown == 1;
  return Ok();
}

Reply Service(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CSMS: (0,1)"});
  if (command.form == CommandForm::kRead) {
    return Ok({"+CSMS: " + std::to_string(phone.session.message_service) + ",1,1,1"});
  }
  const int service = command.Number(0, 0);
  if (service != 0 && service != 1) return MessageError(kMessageNotAllowed);
  phone.session.message_service = service;
  return Ok({"+CSMS: 1,1,1"});
}

void ReleaseBuffered(Phone& phone) {
  const auto& modes = phone.session.notification;
  if (modes[0] == 0) return;
  auto& buffered = phone.buffered_notices;
  if (modes[4] == 0) phone.notices.insert(phone.notices.end(), buffered.begin(), buffered.end());
  buffered.clear();
}

Reply Notification(Phone& phone, const Command& command) {
  constexpr std::array<int, 5> kHighest{3, 3, 3, 2, 1};
  auto& modes = phone.session.notification;
  if (command.form == CommandForm::kTest) return Ok({"+CNMI: (0-3),(0-3),(0-3),(0-2),(0,1)"});
  if (command.form == CommandForm::kRead) {
    std::string line = "+CNMI: ";
    for (const int mode : modes) line += std::to_string(mode) + ',';
    line.pop_back();
    return Ok({line});
  }
  auto wanted = modes;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    wanted[i] = command.Number(i, wanted[i]);
    if (wanted[i] < 0 || wanted[i] > kHighest[i]) return MessageError(kMessageNotAllowed);
  }
  modes = wanted;
  ReleaseBuffered(phone);
  return Ok();
}

std::string Counts(Phone& phone, const std::string& name) {
  const MessageMemory memory(phone, name);
  return std::to_string(memory.used()) + ',' + std::to_string(memory.capacity());
}

Reply MemoryList(const Phone& phone) {
  const std::string list = '(' + QuotedList(MessageMemory::Names(phone)) + ')';
  return Ok({"+CPMS: " + Join({list, list, list}, ",")});
}

Reply Memories(Phone& phone, const Command& command) {
  auto& names = phone.session.message_memory;
  if (command.form == CommandForm::kTest) return MemoryList(phone);
  if (command.form == CommandForm::kRead) {
    std::string line = "+CPMS: ";
    for (const std::string& name : names) line += Quoted(name) + ',' + Counts(phone, name) + ',';
    line.pop_back();
    return Ok({line});
  }
  auto wanted = names;
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (command.Has(i)) wanted[i] = ToUpper(command.Text(i));
    if (!MessageMemory(phone, wanted[i]).exists()) return MessageError(kMessageNotAllowed);
  }
  names = wanted;
  return Ok(
      {"+CPMS: " + Join({Counts(phone, names[0]), Counts(phone, names[1]), Counts(phone, names[2])}, ",")});
}

Reply Broadcast(Phone&, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok({"+CSCB: (0,1)"});
  return command.form == CommandForm::kRead ? Ok({R"(+CSCB: 0,"","")"}) : Ok();
}

constexpr std::array<CommandEntry, 8> kCommands{{{"+CMGF", Format},
                                                 {"+CSCA", Centre},
                                                 {"+CSMP", Parameters},
                                                 {"+CSDH", ShowHeader},
                                                 {"+CSMS", Service},
                                                 {"+CNMI", Notification},
                                                 {"+CPMS", Memories},
                                                 {"+CSCB", Broadcast}}};

}  // namespace

std::span<const CommandEntry> MessageSettingCommands() { return kCommands; }

}  // namespace celldesk::simulator

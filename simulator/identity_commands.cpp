#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"

namespace celldesk::simulator {
namespace {

Reply Show(const Command& command, const std::string& line) {
  if (command.form == CommandForm::kTest) return Ok();
  return command.form == CommandForm::kExecute ? Ok({line}) : Error();
}

Reply Manufacturer(Phone& phone, const Command& command) { return Show(command, phone.memory.manufacturer); }

Reply Model(Phone& phone, const Command& command) { return Show(command, phone.memory.model); }

Reply Revision(Phone& phone, const Command& command) { return Show(command, phone.memory.revision); }

Reply Serial(Phone& phone, const Command& command) { return Show(command, phone.memory.serial); }

Reply Subscriber(Phone& phone, const Command& command) { return Show(command, phone.memory.subscriber); }

Reply Capabilities(Phone&, const Command& command) { return Show(command, "+GCAP: +CGSM"); }

Reply OwnNumbers(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok();
  Reply reply;
  const Phonebook* book = phone.memory.FindPhonebook("ON");
  if (!book) return reply;
  for (const auto& [location, entry] : book->entries) {
    reply.lines.push_back("+CNUM: " + Quoted(phone.Line(entry.name)) + ',' +
                          Quoted(phone.LineNumber(entry.number)) + ',' + std::to_string(entry.type));
  }
  return reply;
}

constexpr std::array<CommandEntry, 11> kCommands{{{"+CGMI", Manufacturer},
                                                  {"+CGMM", Model},
                                                  {"+CGMR", Revision},
                                                  {"+CGSN", Serial},
                                                  {"+GMI", Manufacturer},
                                                  {"+GMM", Model},
                                                  {"+GMR", Revision},
                                                  {"+GSN", Serial},
                                                  {"+GCAP", Capabilities},
                                                  {"+CIMI", Subscriber},
                                                  {"+CNUM", OwnNumbers}}};

}  // namespace

std::span<const CommandEntry> IdentityCommands() { return kCommands; }

}  // namespace celldesk::simulator

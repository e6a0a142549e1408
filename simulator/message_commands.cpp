#include <algorithm>
#include <array>

#include "simulator/ascii.h"
#include "simulator/command_table.h"
#include "simulator/loopback_network.h"
#include "simulator/message_memory.h"
#include "simulator/text_mode.h"

namespace celldesk::simulator {
namespace {

constexpr int kAllMessages = 4;
constexpr int kLongestTpdu = 164;

MessageMemory ReadMemory(Phone& phone) { return MessageMemory(phone, phone.session.message_memory[0]); }

/// The name field of PDU mode with the comma before it.
std::string NameField(const Phone& phone, const StoredMessage& message) {
  if (phone.profile.alpha == AlphaField::kAbsent) return {};
  const auto tpdu = ParseStored(message);
  const std::string name = tpdu ? AlphaText(phone, tpdu->address.Text()) : std::string();
  return name.empty() ? "," : ',' + Quoted(name);
}

std::vector<std::string> PduLines(const Phone& phone, const std::string& head, const StoredMessage& message) {
  const LinePdu pdu = MakeLinePdu(phone, message.pdu);
  return {head + std::to_string(static_cast<int>(message.status)) + NameField(phone, message) + ',' +
              std::to_string(pdu.length),
          pdu.text};
}

void MarkRead(StoredMessage& message) {
  if (message.status == MessageStatus::kReceivedUnread) message.status = MessageStatus::kReceivedRead;
}

/// The status a listing asks for, 4 for all; nothing when it is none.
std::optional<int> WantedStatus(const Phone& phone, const Command& command) {
  if (!phone.session.text_mode) {
    const int status = command.Number(0, 0);
    return status >= 0 && status <= kAllMessages ? std::optional(status) : std::nullopt;
  }
  const std::string text = command.arguments.empty() ? "REC UNREAD" : ToUpper(command.Text(0));
  if (text == "ALL") return kAllMessages;
  for (int status = 0; status < kAllMessages; ++status) {
    if (StatusText(static_cast<MessageStatus>(status)) == text) return status;
  }
  return std::nullopt;
}

Reply List(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) {
    return Ok({phone.session.text_mode ? R"(+CMGL: ("REC UNREAD","REC READ","STO UNSENT","STO SENT","ALL"))"
                                       : "+CMGL: (0-4)"});
  }
  const auto wanted = WantedStatus(phone, command);
  if (!wanted) return MessageError(phone.session.text_mode ? kInvalidTextParameter : kInvalidPduParameter);
  Reply reply;
  const MessageMemory memory = ReadMemory(phone);
  for (const int index : memory.Indexes()) {
    StoredMessage& message = *memory.Find(index);
    if (*wanted != kAllMessages && *wanted != static_cast<int>(message.status)) continue;
    const auto lines = phone.session.text_mode
                           ? ListText(phone, index, message)
                           : PduLines(phone, "+CMGL: " + std::to_string(index) + ',', message);
    reply.lines.insert(reply.lines.end(), lines.begin(), lines.end());
    MarkRead(message);
  }
  return reply;
}

Reply Read(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok();
  StoredMessage* message = ReadMemory(phone).Find(command.Number(0, kNoNumber));
  if (!message) return MessageError(kInvalidMemoryIndex);
  Reply reply =
      Ok(phone.session.text_mode ? ReadText(phone, *message) : PduLines(phone, "+CMGR: ", *message));
  MarkRead(*message);
  return reply;
}

/// Whether a deletion flag of GSM 07.05 takes messages of this status along.
bool FlagTakes(int flag, MessageStatus status) {
  switch (status) {
    case MessageStatus::kReceivedRead:
      return flag >= 1;
    case MessageStatus::kStoredSent:
      return flag >= 2;
    case MessageStatus::kStoredUnsent:
      return flag >= 3;
    case MessageStatus::kReceivedUnread:
      break;
  }
  return flag >= 4;
}

Reply DeletionRange(const MessageMemory& memory) {
  std::vector<std::string> indexes;
  for (const int index : memory.Indexes()) indexes.push_back(std::to_string(index));
  return Ok({"+CMGD: (" + Join(indexes, ",") + "),(0-4)"});
}

Reply Delete(Phone& phone, const Command& command) {
  MessageMemory memory = ReadMemory(phone);
  if (command.form == CommandForm::kTest) return DeletionRange(memory);
  const int flag = command.Number(1, 0);
  if (command.form != CommandForm::kSet || flag < 0 || flag > 4) return MessageError(kMessageNotAllowed);
  if (flag == 0 && !memory.Remove(command.Number(0, kNoNumber))) return MessageError(kInvalidMemoryIndex);
  for (const int index : memory.Indexes()) {
    if (FlagTakes(flag, memory.Find(index)->status)) static_cast<void>(memory.Remove(index));
  }
  DeliverWaiting(phone);
  return Ok();
}

std::string Destination(const Phone& phone, const Command& command, std::size_t field) {
  std::string number = phone.NumberText(command.Text(field));
  const bool international = command.Number(field + 1, kNational) == kInternational;
  if (international && !number.empty() && !number.starts_with('+')) number.insert(0, 1, '+');
  return number;
}

Reply AskForBody(Phone& phone, BodyRequest request) {
  phone.body = std::move(request);
  return WantBody();
}

bool IsLength(int length) { return length >= 1 && length <= kLongestTpdu; }

Reply Send(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok();
  if (command.form != CommandForm::kSet) return MessageError(kMessageNotAllowed);
  BodyRequest request;
  request.send = true;
  if (phone.session.text_mode) {
    request.destination = Destination(phone, command, 0);
    const bool valid = !request.destination.empty() && IsDialNumber(request.destination);
    return valid ? AskForBody(phone, request) : MessageError(kInvalidTextParameter);
  }
  request.length = command.Number(0, kNoNumber);
  return IsLength(request.length) ? AskForBody(phone, request) : MessageError(kInvalidPduParameter);
}

/// The status a message is stored with; nothing when none is given. False for one that does not exist.
bool ReadStatus(const Command& command, std::size_t field, std::optional<MessageStatus>& status) {
  if (!command.Has(field)) return true;
  const std::string text = ToUpper(command.Text(field));
  for (int value = 0; value < kAllMessages; ++value) {
    const auto candidate = static_cast<MessageStatus>(value);
    if (text != StatusText(candidate) && text != std::to_string(value)) continue;
    status = candidate;
    return true;
  }
  return false;
}

Reply Store(Phone& phone, const Command& command) {
  if (!phone.profile.can_store) return Error();
  if (command.form == CommandForm::kTest) return Ok();
  BodyRequest request;
  if (phone.session.text_mode) {
    request.destination = Destination(phone, command, 0);
    const bool valid = ReadStatus(command, 2, request.status) && IsDialNumber(request.destination);
    return valid ? AskForBody(phone, request) : MessageError(kInvalidTextParameter);
  }
  request.length = command.Number(0, kNoNumber);
  const bool valid = ReadStatus(command, 1, request.status) && IsLength(request.length);
  return valid ? AskForBody(phone, request) : MessageError(kInvalidPduParameter);
}

Reply SendStored(Phone& phone, const Command& command) {
  if (command.form == CommandForm::kTest) return Ok();
  const MessageMemory memory(phone, phone.session.message_memory[1]);
  StoredMessage* message = memory.Find(command.Number(0, kNoNumber));
  if (!message) return MessageError(kInvalidMemoryIndex);
  auto tpdu = ParseStored(*message);
  if (!tpdu || tpdu->kind != TpduKind::kSubmit) return MessageError(kMessageNotAllowed);
  const std::string destination = Destination(phone, command, 1);
  if (!IsDialNumber(destination)) return MessageError(kInvalidTextParameter);
  std::string body = message->pdu;
  if (!destination.empty()) {
    tpdu->address = MakeAddress(destination);
    body = ToHex(WriteCentre(phone.memory.centre) + WriteTpdu(*tpdu));
  }
  message->status = MessageStatus::kStoredSent;
  return Ok({"+CMSS: " + std::to_string(Submit(phone, *tpdu, body))});
}

Reply Acknowledge(Phone&, const Command& command) {
  return command.form == CommandForm::kTest ? Ok({"+CNMA: (0-2)"}) : Ok();
}

constexpr std::array<CommandEntry, 7> kCommands{{{"+CMGL", List},
                                                 {"+CMGR", Read},
                                                 {"+CMGD", Delete},
                                                 {"+CMGS", Send},
                                                 {"+CMGW", Store},
                                                 {"+CMSS", SendStored},
                                                 {"+CNMA", Acknowledge}}};

}  // namespace

std::span<const CommandEntry> MessageCommands() { return kCommands; }

}  // namespace celldesk::simulator

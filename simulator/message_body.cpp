#include "simulator/ascii.h"
#include "simulator/command_table.h"
#include "simulator/loopback_network.h"
#include "simulator/message_memory.h"
#include "simulator/text_mode.h"

namespace celldesk::simulator {
namespace {

/// A body of PDU mode taken apart.
struct PduBody {
  std::string centre;  // octets of the field, its length octet first
  std::string tpdu;
};

std::optional<PduBody> SplitBody(const Phone& phone, const BodyRequest& request, std::string_view text) {
  const auto octets = FromHex(text);
  if (!octets) return std::nullopt;
  const std::size_t centre = phone.profile.centre_in_pdu ? CentreSize(*octets) : 0;
  if (octets->size() != centre + static_cast<std::size_t>(request.length)) return std::nullopt;
  return PduBody{centre == 0 ? std::string(1, '\0') : octets->substr(0, centre), octets->substr(centre)};
}

/// A message stored without a status is taken for what its type says.
MessageStatus StatusOf(const BodyRequest& request, const std::string& tpdu) {
  if (request.status) return *request.status;
  const bool submitted = !tpdu.empty() && (tpdu[0] & 3) == 1;
  return submitted ? MessageStatus::kStoredUnsent : MessageStatus::kReceivedRead;
}

Reply StoreMessage(Phone& phone, MessageStatus status, const std::string& octets) {
  const StoredMessage message{status, ToHex(octets)};
  if (!ParseStored(message)) return MessageError(kInvalidPduParameter);
  const auto index = MessageMemory(phone, phone.session.message_memory[1]).Add(message);
  if (!index) return MessageError(kMemoryFull);
  return Ok({"+CMGW: " + std::to_string(*index)});
}

Reply SendMessage(Phone& phone, const Tpdu& tpdu, const std::string& body) {
  return Ok({"+CMGS: " + std::to_string(Submit(phone, tpdu, body))});
}

Reply ExecutePdu(Phone& phone, const BodyRequest& request, std::string_view text) {
  const auto body = SplitBody(phone, request, text);
  if (!body) return MessageError(kInvalidPduParameter);
  if (!request.send) return StoreMessage(phone, StatusOf(request, body->tpdu), body->centre + body->tpdu);
  const auto tpdu = ParseTpdu(body->tpdu, true);
  return tpdu ? SendMessage(phone, *tpdu, std::string(text)) : MessageError(kInvalidPduParameter);
}

Reply StoreText(Phone& phone, const BodyRequest& request, Tpdu tpdu) {
  const MessageStatus status = request.status.value_or(MessageStatus::kStoredUnsent);
  const bool received = status == MessageStatus::kReceivedUnread || status == MessageStatus::kReceivedRead;
  if (received) tpdu = DeliverOf(tpdu, request.destination, phone.Time());
  return StoreMessage(phone, status, WriteCentre(phone.memory.centre) + WriteTpdu(tpdu));
}

Reply ExecuteText(Phone& phone, const BodyRequest& request, std::string_view text) {
  const auto tpdu = ComposeText(phone, request.destination, text);
  if (!tpdu) return MessageError(kInvalidTextParameter);
  if (!request.send) return StoreText(phone, request, *tpdu);
  return SendMessage(phone, *tpdu, ToHex(WriteCentre(phone.memory.centre) + WriteTpdu(*tpdu)));
}

}  // namespace

Reply ExecuteBody(Phone& phone, std::string_view body) {
  if (!phone.body) return Error();
  const BodyRequest request = *std::exchange(phone.body, std::nullopt);
  return phone.session.text_mode ? ExecuteText(phone, request, body) : ExecutePdu(phone, request, Trim(body));
}

}  // namespace celldesk::simulator

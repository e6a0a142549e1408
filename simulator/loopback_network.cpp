#include "simulator/loopback_network.h"

#include "simulator/ascii.h"
#include "simulator/message_memory.h"
#include "simulator/text_mode.h"

namespace celldesk::simulator {
namespace {

bool IsReport(const std::string& pdu) {
  const std::string octets = FromHex(pdu).value_or("");
  const std::size_t at = CentreSize(octets);
  return at < octets.size() && (octets[at] & 3) == 2;
}

/// Stores a PDU that arrived and announces its index; false when there is no room.
bool StoreArrived(Phone& phone, const std::string& pdu) {
  const std::string& name = phone.session.message_memory[2];
  const auto index = MessageMemory(phone, name).Add({MessageStatus::kReceivedUnread, pdu});
  if (!index) return false;
  const bool report = IsReport(pdu);
  const int wanted = phone.session.notification[report ? 3 : 1];
  const bool announced = report ? wanted == 2 : wanted == 1;
  if (announced) {
    phone.Announce({(report ? "+CDSI: " : "+CMTI: ") + Quoted(name) + ',' + std::to_string(*index)});
  }
  return true;
}

/// Straight to the client, past every memory.
bool IsRoutedDirectly(const Phone& phone, const Tpdu& tpdu) {
  if (tpdu.kind == TpduKind::kStatusReport) return phone.session.notification[3] == 1;
  return phone.session.notification[1] == 2;
}

}  // namespace

int Submit(Phone& phone, const Tpdu& tpdu, const std::string& body) {
  PhoneMemory& memory = phone.memory;
  memory.last_reference = (memory.last_reference + 1) % 256;
  memory.sent.push_back({memory.last_reference, body});
  if (tpdu.kind == TpduKind::kSubmit && SameNumber(tpdu.address.Text(), memory.own_number)) {
    Arrive(phone, DeliverOf(tpdu, memory.own_number, phone.Time()));
  }
  if (tpdu.wants_report()) Arrive(phone, ReportOf(tpdu, memory.last_reference, phone.Time()));
  return memory.last_reference;
}

void Arrive(Phone& phone, const Tpdu& tpdu) {
  const std::string pdu = ToHex(WriteCentre(phone.memory.centre) + WriteTpdu(tpdu));
  if (IsRoutedDirectly(phone, tpdu)) {
    phone.Announce(DirectNotice(phone, tpdu, pdu));
  } else if (!StoreArrived(phone, pdu)) {
    phone.memory.waiting.push_back(pdu);
  }
}

void DeliverWaiting(Phone& phone) {
  auto& waiting = phone.memory.waiting;
  while (!waiting.empty() && StoreArrived(phone, waiting.front())) waiting.erase(waiting.begin());
}

LinePdu MakeLinePdu(const Phone& phone, const std::string& pdu) {
  const std::size_t octets = pdu.size() / 2;
  const std::size_t centre = CentreSize(FromHex(pdu.substr(0, 2)).value_or(""));
  if (centre > octets) return {static_cast<int>(octets), pdu};
  return {static_cast<int>(octets - centre), phone.profile.centre_in_pdu ? pdu : pdu.substr(centre * 2)};
}

std::optional<Tpdu> ParseStored(const StoredMessage& message) {
  const auto octets = FromHex(message.pdu);
  if (!octets || CentreSize(*octets) > octets->size()) return std::nullopt;
  const bool from_phone =
      message.status == MessageStatus::kStoredUnsent || message.status == MessageStatus::kStoredSent;
  return ParseTpdu(std::string_view(*octets).substr(CentreSize(*octets)), from_phone);
}

}  // namespace celldesk::simulator

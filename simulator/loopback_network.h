#pragma once

#include <string>

#include "simulator/phone.h"
#include "simulator/tpdu.h"

namespace celldesk::simulator {

/// The network takes a message: it is logged as it was handed over, a message to the phone's own number comes
/// back, and a report follows when one was asked for. Returns the message reference.
int Submit(Phone& phone, const Tpdu& tpdu, const std::string& body);

/// A message or a report reaches the phone: stored or shown at once as +CNMI says. One that finds no room
/// waits in the network.
void Arrive(Phone& phone, const Tpdu& tpdu);

/// Delivers what waited and now finds room.
void DeliverWaiting(Phone& phone);

/// A PDU as it stands on the line, and the octets of its TPDU.
struct LinePdu {
  int length = 0;
  std::string text;
};
LinePdu MakeLinePdu(const Phone& phone, const std::string& pdu);

/// The TPDU inside a stored PDU; nothing when it is damaged.
std::optional<Tpdu> ParseStored(const StoredMessage& message);

}  // namespace celldesk::simulator

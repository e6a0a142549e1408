#pragma once

#include <optional>
#include <string>
#include <vector>

#include "simulator/phone.h"
#include "simulator/tpdu.h"

namespace celldesk::simulator {

/// "REC UNREAD", "REC READ", "STO UNSENT", "STO SENT".
std::string_view StatusText(MessageStatus status);

/// The name of a number in the phone's books, on the line; empty when unknown or not wanted by the profile.
std::string AlphaText(const Phone& phone, const std::string& number);

/// A message as text mode lists it (GSM 07.05 3.4.2) and reads it (3.4.3), the text in the last line.
std::vector<std::string> ListText(const Phone& phone, int index, const StoredMessage& message);
std::vector<std::string> ReadText(const Phone& phone, const StoredMessage& message);

/// The lines that hand a message to the client at once (+CMT, +CDS), in the present mode.
Notice DirectNotice(const Phone& phone, const Tpdu& tpdu, const std::string& pdu);

/// A message out of a body of text mode; nothing when the text cannot be read or is too long.
std::optional<Tpdu> ComposeText(const Phone& phone, const std::string& destination, std::string_view body);

}  // namespace celldesk::simulator

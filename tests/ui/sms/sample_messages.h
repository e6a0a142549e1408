#pragma once

#include <string>
#include <string_view>

#include "pdu/sms_message.h"
#include "simulator/phone_memory.h"

namespace celldesk {

/// Messages as a phone keeps them.
simulator::StoredMessage ReceivedMessage(std::string_view from, std::string_view clock,
                                         std::u16string_view text, bool read = true);
/// `first_octet` tells validity (0x11 relative, 0x01 none), report and reply path.
simulator::StoredMessage OutgoingMessage(std::string_view to, std::u16string_view text, bool sent = false,
                                         int first_octet = 0x11, std::string_view validity = "\xA7");
simulator::StoredMessage DeliveryReport(std::string_view about, std::string_view clock, int status);

/// Puts a message into a memory of the phone.
void Put(simulator::PhoneMemory& memory, std::string_view store, int index,
         const simulator::StoredMessage& message);

/// A phone with three received messages (one unread, one report) and two outgoing ones, some of whose numbers
/// are in its SIM phonebook:
///   SM 1 received from Anna, SM 2 unread from a stranger, SM 3 report about Ben,
///   SM 4 unsent to Ben, ME 1 sent to 0123 (no validity).
simulator::PhoneMemory PhoneWithMessages();

/// A record as a listing leaves it.
SmsMessage ReceivedRecord(std::u16string_view number, const CalendarTime& time, std::u16string_view text);
SmsMessage OutgoingRecord(std::u16string_view number, std::u16string_view text);

}  // namespace celldesk

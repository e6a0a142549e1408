#include "ui/sms/sample_messages.h"

#include "pdu/address.h"
#include "simulator/ascii.h"
#include "simulator/tpdu.h"
#include "ui/window_session.h"

namespace celldesk {
namespace {

using simulator::MessageStatus;
using simulator::StoredMessage;
using simulator::Tpdu;

constexpr std::string_view kCentre = "+447700900000";

Tpdu SubmitTo(std::string_view number, std::u16string_view text) {
  Tpdu tpdu;
  tpdu.address = simulator::MakeAddress(number);
  SetText(tpdu, text);
  return tpdu;
}

StoredMessage Stored(MessageStatus status, const Tpdu& tpdu, std::string_view centre) {
  return {status, simulator::ToHex(simulator::WriteCentre(centre) + WriteTpdu(tpdu))};
}

simulator::PhoneSeconds At(std::string_view clock) { return simulator::ParseClockText(clock).value_or(0); }

}  // namespace

StoredMessage ReceivedMessage(std::string_view from, std::string_view clock, std::u16string_view text,
                              bool read) {
  const Tpdu tpdu = DeliverOf(SubmitTo("", text), from, At(clock));
  return Stored(read ? MessageStatus::kReceivedRead : MessageStatus::kReceivedUnread, tpdu, kCentre);
}

StoredMessage OutgoingMessage(std::string_view to, std::u16string_view text, bool sent, int first_octet,
                              std::string_view validity) {
  Tpdu tpdu = SubmitTo(to, text);
  tpdu.first_octet = first_octet;
  tpdu.validity = validity;
  return Stored(sent ? MessageStatus::kStoredSent : MessageStatus::kStoredUnsent, tpdu, "");
}

StoredMessage DeliveryReport(std::string_view about, std::string_view clock, int status) {
  Tpdu tpdu = ReportOf(SubmitTo(about, u""), 7, At(clock));
  tpdu.status = status;
  return Stored(MessageStatus::kReceivedRead, tpdu, kCentre);
}

void Put(simulator::PhoneMemory& memory, std::string_view store, int index, const StoredMessage& message) {
  memory.FindStore(store)->messages[index] = message;
}

simulator::PhoneMemory PhoneWithMessages() {
  simulator::PhoneMemory memory = PhoneWith({{1, "+447700900101", u"Anna"}, {2, "+447700900102", u"Ben"}});
  Put(memory, "SM", 1, ReceivedMessage("+447700900101", "26/01/04,18:30:00+00", u"Coffee at ten?"));
  Put(memory, "SM", 2, ReceivedMessage("07700900999", "26/01/03,09:12:45+00", u"Who are you?", false));
  Put(memory, "SM", 3, DeliveryReport("+447700900102", "26/01/10,19:02:10+00", 0));
  Put(memory, "SM", 4, OutgoingMessage("+447700900102", u"Train is late"));
  Put(memory, "ME", 1, OutgoingMessage("0123", u"Done", true, 0x01, ""));
  return memory;
}

SmsMessage ReceivedRecord(std::u16string_view number, const CalendarTime& time, std::u16string_view text) {
  SmsMessage message;
  message.flags = kMessageInUse;
  message.memory = 0;
  message.storage_status = kReceivedRead;
  static_cast<void>(MakeAddress(message.deliver.number, message.deliver.toa, number));
  message.deliver.timestamp = DateTime(time, true);
  message.text = text;
  return message;
}

SmsMessage OutgoingRecord(std::u16string_view number, std::u16string_view text) {
  SmsMessage message;
  message.flags = kMessageInUse;
  message.memory = 0;
  message.storage_status = kStoredUnsent;
  message.first_octet = 0x01;
  static_cast<void>(MakeAddress(message.submit.number, message.submit.toa, number));
  message.text = text;
  return message;
}

}  // namespace celldesk

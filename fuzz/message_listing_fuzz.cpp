// Input: octet 0 where the reads of the line end, then the phone's replies, separated by octets 255, to the
// questions for message memories and to the listing. Property: no more messages than "+CMGL:" lines, none of
// them changed here or waiting to be deleted, stored or sent; the PDU of each is a line of the phone's; every
// memory is one that the phone reads from; nothing but questions is sent; the messages are the same however
// the replies are cut.

#include <algorithm>
#include <cstdint>

#include "fuzz/fed_session.h"
#include "fuzz/property.h"
#include "services/sms_service.h"

namespace {

using namespace celldesk;

/// What is compared of a listing.
struct Listing {
  FedSession session;
  SmsService service{session.engine};
  Status queried;
  Status listed;

  Listing(std::uint8_t cuts, const std::vector<std::u16string>& answers)
      : session(cuts, answers), queried(service.QueryCapabilities()), listed(service.ListAll(nullptr)) {}
};

void CheckMessages(Listing& listing, const std::vector<std::u16string>& answers) {
  const SmsStore& store = listing.service.messages();
  HOLDS(static_cast<std::size_t>(store.count()) <= CountLines(answers, u"+CMGL:"));
  std::u16string said;
  for (const std::u16string& answer : answers) said += answer;
  for (int position = 0; position < store.count(); ++position) {
    const SmsMessage& message = store.At(position);
    HOLDS((message.flags & ~(kMessageInUse | kMessageNotOpened)) == 0);
    HOLDS(said.find(message.pdu_text) != std::u16string::npos);
    HOLDS(IsMessageMemory(message.memory));
    const auto name = kMessageMemories[static_cast<std::size_t>(message.memory)];
    HOLDS(listing.service.read_memories().find(name) != std::u16string::npos);
  }
  HOLDS(!store.IsChanged());
}

void CheckSame(const SmsMessage& left, const SmsMessage& right) {
  HOLDS(left.memory == right.memory && left.memory_index == right.memory_index);
  HOLDS(left.storage_status == right.storage_status && left.tpdu_length == right.tpdu_length);
  HOLDS(left.phone_alpha == right.phone_alpha && left.pdu_text == right.pdu_text);
  HOLDS(left.flags == right.flags && left.text == right.text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const auto answers = AnswersOf(data + 1, size - 1);
  Listing listing(data[0], answers);
  for (const char* command : {"AT+CMGD", "AT+CMGS", "AT+CMGW=1", "AT+CPBW"}) {
    HOLDS(listing.session.sent().find(command) == std::string::npos);
  }
  CheckMessages(listing, answers);

  Listing uncut(0, answers);
  HOLDS(listing.queried == uncut.queried && listing.listed == uncut.listed);
  HOLDS(listing.session.sent() == uncut.session.sent());
  HOLDS(listing.service.messages().count() == uncut.service.messages().count());
  for (int position = 0; position < listing.service.messages().count(); ++position) {
    CheckSame(listing.service.messages().At(position), uncut.service.messages().At(position));
  }
  return 0;
}

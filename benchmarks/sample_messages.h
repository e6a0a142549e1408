#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace celldesk {
class SmsMessage;
}

namespace celldesk::bench {

/// One message as a phone lists it.
struct ListedMessage {
  std::int32_t storage_status = 0;
  std::int16_t tpdu_length = 0;  // octets
  std::string pdu;               // hexadecimal, service centre field first
};

/// Twenty messages as people send them: 17 received ones, 2 sent ones and a stored draft. Numbers and texts
/// are invented; a TPDU has 76 octets in the mean, a text 65 characters.
const std::vector<ListedMessage>& SampleMessages();

/// Fills `message` with what the phone lists, not decoded yet.
void TakeListed(SmsMessage& message, const ListedMessage& listed);

}  // namespace celldesk::bench

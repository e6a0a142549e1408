#pragma once

#include <string>
#include <vector>

namespace celldesk {

/// celldesk-pdu encode --to NUMBER --text TEXT ...: prints the PDU of a message to send and the length of its
/// TPDU in octets. Returns the exit status: 1, with the reason on standard error, when that cannot be done.
int RunEncode(const std::vector<std::string>& arguments);

}  // namespace celldesk

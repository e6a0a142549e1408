#pragma once

#include <string>
#include <vector>

namespace celldesk {

/// celldesk-pdu decode [--json] [STATUS LENGTH HEX]: decodes what the arguments give, or every line of
/// standard input. Returns the exit status: 1 when something could not be read.
int RunDecode(const std::vector<std::string>& arguments);

}  // namespace celldesk

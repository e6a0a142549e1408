#pragma once

#include <string>

namespace celldesk {

/// A random UUID (RFC 4122, version 4) in lower case; empty when the machine gives no random numbers.
std::string RandomUid();

}  // namespace celldesk

#pragma once

#include <cstddef>
#include <span>
#include <string_view>

#include "util/date_time.h"
#include "util/status.h"

namespace celldesk {

/// Octets of a time stamp (GSM 03.40 9.2.3.11).
inline constexpr std::size_t kTimestampOctets = 7;

/// Reads a time stamp at octet `position` into `value`, sets it, and advances. Years are 1998 to 2097; the
/// centre's local time is kept as sent, the zone is dropped. E_FAIL, nothing changed, when the characters of
/// `text` less the octets of `position` are below 12; octets missing beyond that read as 0.
Status ReadTimestamp(DateTime& value, std::u16string_view text, std::size_t& position);

/// Writes `value` as a time stamp with zone 0 and advances; whether it is set is not looked at.
void WriteTimestamp(std::span<char16_t> text, const DateTime& value, std::size_t& position);

}  // namespace celldesk

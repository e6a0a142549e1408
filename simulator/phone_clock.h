#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace celldesk::simulator {

/// Seconds since 1 January 1970 in the phone's own local time, which the phone gives as zone +00.
using PhoneSeconds = std::int64_t;

/// "26/01/05,12:00:00+00", as +CCLK shows it.
std::string ClockText(PhoneSeconds time);
std::optional<PhoneSeconds> ParseClockText(std::string_view text);

/// Seven octets of a service centre time stamp (GSM 03.40 9.2.3.11).
std::string TimestampOctets(PhoneSeconds time);

/// The same form as ClockText, out of seven octets.
std::string TimestampText(std::string_view octets);

}  // namespace celldesk::simulator

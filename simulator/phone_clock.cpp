#include "simulator/phone_clock.h"

#include <array>
#include <chrono>

#include "simulator/ascii.h"

namespace celldesk::simulator {
namespace {

constexpr std::string_view kPunctuation = "//,::";

std::array<int, 6> CalendarFields(PhoneSeconds time) {
  using std::chrono::floor;
  const std::chrono::sys_seconds point{std::chrono::seconds(time)};
  const auto day = floor<std::chrono::days>(point);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(point - day);
  return {static_cast<int>(date.year()) % 100,       static_cast<int>(unsigned{date.month()}),
          static_cast<int>(unsigned{date.day()}),    static_cast<int>(clock.hours().count()),
          static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count())};
}

std::string TwoDigits(int value) {
  return {static_cast<char>('0' + value / 10), static_cast<char>('0' + value % 10)};
}

/// Semi-octets stand in reverse order: 26 is the octet 0x62.
char SwappedOctet(int value) { return static_cast<char>(value % 10 << 4 | value / 10); }

std::string SwappedDigits(char octet) {
  std::string digits = ToHex(std::string_view(&octet, 1));
  std::swap(digits[0], digits[1]);
  return digits;
}

}  // namespace

std::string ClockText(PhoneSeconds time) {
  std::string text;
  const auto fields = CalendarFields(time);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    text += TwoDigits(fields[i]);
    if (i < kPunctuation.size()) text += kPunctuation[i];
  }
  return text + "+00";
}

std::optional<PhoneSeconds> ParseClockText(std::string_view text) {
  std::array<int, 6> fields{};
  if (text.size() < 17) return std::nullopt;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const auto value = ParseNumber(text.substr(i * 3, 2));
    if (!value || (i < kPunctuation.size() && text[i * 3 + 2] != kPunctuation[i])) return std::nullopt;
    fields[i] = *value;
  }
  const std::chrono::year_month_day date{std::chrono::year(2000 + fields[0]),
                                         std::chrono::month(static_cast<unsigned>(fields[1])),
                                         std::chrono::day(static_cast<unsigned>(fields[2]))};
  if (!date.ok() || fields[3] > 23 || fields[4] > 59 || fields[5] > 59) return std::nullopt;
  const std::chrono::sys_seconds point =
      std::chrono::sys_days(date) + std::chrono::seconds(fields[3] * 3600 + fields[4] * 60 + fields[5]);
  return point.time_since_epoch().count();
}

std::string TimestampOctets(PhoneSeconds time) {
  std::string octets;
  for (const int field : CalendarFields(time)) octets += SwappedOctet(field);
  return octets + '\0';
}

std::string TimestampText(std::string_view octets) {
  std::string text;
  for (std::size_t i = 0; i < 6 && i < octets.size(); ++i) {
    text += SwappedDigits(octets[i]);
    if (i < kPunctuation.size()) text += kPunctuation[i];
  }
  if (octets.size() < 7) return text;
  const bool west = octets[6] & 8;
  return text + (west ? '-' : '+') + SwappedDigits(static_cast<char>(octets[6] & 0xF7));
}

}  // namespace celldesk::simulator
